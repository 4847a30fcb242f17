#include "inventory/OnOrder.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"

double RefreshOnOrderQty(qint32 itemId, Database* db) {
    Database own;
    if (db == nullptr || !db->IsOpen()) {
        own = DBEngine::OpenDatabase(gDbPath);
        db = &own;
    }
    const QString id = QString::number(itemId);
    double total = 0;
    Recordset rs = db->OpenRecordset(QStringLiteral(" SELECT * FROM tblPODetail WHERE POStockID=") +
                                     id + QStringLiteral(" AND POQty <> PORecieved"));
    while (!rs.Eof()) {
        // An over-receipt gives a negative term.
        total += ParseLocaleNumber(rs.Fields(QStringLiteral("POQty")).Value()) -
                 ParseLocaleNumber(rs.Fields(QStringLiteral("PORecieved")).Value());
        rs.MoveNext();
    }
    rs.Close();
    const QString written = SqlNumber(total, QStringLiteral("0.0#"));
    db->Execute(QStringLiteral("UPDATE tblStockItems SET OnOrderQty = ") + written +
                QStringLiteral(" WHERE ItemID = ") + id);
    return written.toDouble(); // statement text always carries "."
}
