#include "inventory/UsedIn.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"

#include <QLocale>

namespace {

// A quantity as the number it is, with the locale's decimal point: no mask, no grouping, no
// exponent (2, 0.5, 0.333333333333333).
QString PlainNumber(const Field& f) {
    if (f.IsNull())
        return QString();
    QLocale loc;
    loc.setNumberOptions(QLocale::OmitGroupSeparator);
    return loc.toString(f.Double(), 'f', QLocale::FloatingPointShortest);
}

} // namespace

QString UsedInStatement(qint32 itemId) {
    return QStringLiteral("SELECT QtyPer, MasterPNo, ItemName, ItemDescription, BoardPos  FROM "
                          "tblStockItems") +
           QStringLiteral(" INNER JOIN tblUsedIn ON tblStockItems.ItemID=tblUsedIn.ParentID") +
           QStringLiteral(" WHERE tblUsedIn.ChildID=") + QString::number(itemId);
}

QString UsedInCaption(const QString& field) {
    if (field == QLatin1String("ItemDescription"))
        return QStringLiteral("Description");
    if (field == QLatin1String("BoardPos"))
        return QStringLiteral("Ref/Position");
    return field;
}

UsedInData LoadUsedIn(qint32 itemId) {
    UsedInData data;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(UsedInStatement(itemId));
    const int fields = rs.FieldCount();
    int qtyPer = -1;
    for (int i = 0; i < fields; ++i) {
        data.keys << rs.FieldName(i);
        if (data.keys.last() == QLatin1String("QtyPer"))
            qtyPer = i;
    }
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList row;
        row.reserve(fields);
        for (int i = 0; i < fields; ++i)
            row << (i == qtyPer ? PlainNumber(rs.Fields(i)) : rs.Fields(i).Text());
        data.rows << row;
    }
    return data;
}
