// Data files of the structures that earlier versions of the program wrote, made from a new file
// for the upgrade and start-up tests.
#pragma once

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"

#include <QString>
#include <QStringList>

inline const QString kInstallPrompt = QStringLiteral(
    "The software needs to install some updates to your database\n\nYou MUST ensure that no other "
    "users are logged in to your database before continuing\n\nClick OK when you're ready to "
    "continue");

inline bool hasColumn(Database& db, const QString& table, const QString& column) {
    try {
        db.OpenRecordset(QStringLiteral("SELECT %1 FROM %2").arg(column, table));
        return true;
    } catch (const DbError&) {
        return false;
    }
}

inline QString version(Database& db) {
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT DB_Ver FROM dbStatus"));
    QStringList all;
    for (; !rs.Eof(); rs.MoveNext())
        all << rs.Fields(0).Text();
    return all.join(QLatin1Char('|'));
}

// Turns the new file into one of an older structure, with some business data in it.
struct OldFile {
    bool withoutUnits = true;
    bool before32A = true;
    bool withoutParameters = true;
    bool historyHasId2 = false; // a half-finished earlier attempt left this column behind
    QString dbVer = QStringLiteral("30A"); // "" for no row
};

inline void makeOld(const OldFile& o) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, Qty, SellAt) "
                              "VALUES (1, 'P-1', 4, 2.5)"));
    db.Execute(QStringLiteral("INSERT INTO tblDespatch (DespID, CustOrderID, DespSeqNo) "
                              "VALUES (5, 1, 1), (9, 2, 1)"));
    db.Execute(QStringLiteral("INSERT INTO tblDespDetail (DespID, DespQty, DespStockID) "
                              "VALUES (5, 2, 1)"));
    db.Execute(QStringLiteral("INSERT INTO tblItemHistory (StockID, HistType, HistQty) "
                              "VALUES (1, 'RX', 4)"));
    if (o.withoutUnits)
        for (const char* c : {"UOM1", "UOM2", "UOM3"})
            db.Execute(QStringLiteral("ALTER TABLE tblStockItems DROP COLUMN ") + QLatin1String(c));
    if (o.before32A) {
        db.Execute(QStringLiteral("DROP INDEX ixHistID2"));
        db.Execute(QStringLiteral("DROP INDEX ixDespInvoice"));
        for (const char* c : {"TotalTax", "Delivery", "InvoiceNo", "TaxRate", "Invoiced"})
            db.Execute(QStringLiteral("ALTER TABLE tblDespatch DROP COLUMN ") + QLatin1String(c));
        db.Execute(QStringLiteral("ALTER TABLE tblDespDetail DROP COLUMN SellAtPrice"));
        if (!o.historyHasId2)
            db.Execute(QStringLiteral("ALTER TABLE tblItemHistory DROP COLUMN HistID2"));
    }
    if (o.withoutParameters) {
        db.Execute(QStringLiteral("DROP INDEX ixParameters"));
        db.Execute(QStringLiteral("DROP TABLE tblParameters"));
    }
    db.Execute(QStringLiteral("DELETE FROM dbStatus"));
    if (!o.dbVer.isEmpty())
        db.Execute(QStringLiteral("INSERT INTO dbStatus (DB_Ver) VALUES (?)"), {o.dbVer});
}
