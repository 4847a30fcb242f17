#include "foundation/Upgrades.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"

#include <functional>

// Widening a column ("ALTER TABLE ... ALTER COLUMN ... Double") changes nothing in these files:
// a column holds any number or text of any length. Those statements are therefore not sent; the
// probes and the other statements of each step run as they always did.

namespace {

void ignoringErrors(const std::function<void()>& f) {
    try {
        f();
    } catch (const DbError&) {
    }
}

bool probeFails(Database& db, const QString& sql) {
    try {
        Recordset rs = db.OpenRecordset(sql);
        return false;
    } catch (const DbError&) {
        return true;
    }
}

void runIgnoringErrors(Database& db, const QStringList& statements) {
    for (const QString& sql : statements)
        ignoringErrors([&] { db.Execute(sql); });
}

} // namespace

void UpgradeUnitsOfMeasure() {
    Database db = DBEngine::OpenDatabase(gDbPath);
    if (!probeFails(db, QStringLiteral("SELECT UOM3 FROM tblStockItems WHERE ItemID = 0")))
        return;
    runIgnoringErrors(
        db, {
                QStringLiteral("ALTER TABLE tblStockItems ADD COLUMN UOM1 TEXT(25) COLLATE NOCASE"),
                QStringLiteral("ALTER TABLE tblStockItems ADD COLUMN UOM2 TEXT(25) COLLATE NOCASE"),
                QStringLiteral("ALTER TABLE tblStockItems ADD COLUMN UOM3 TEXT(25) COLLATE NOCASE"),
            });
    Pause(100);
    // The quantities AllocQty, OrderedQty, ShippedQty, DespQty, HistQty, MinOrQty, Qty,
    // OnOrderQty, Trigger and WOQty are widened to Double here: nothing to send (see above).
    Pause(100);
    db.Close();
    // The workstation's settings file may be missing or read-only: errors are ignored here.
    ignoringErrors([] {
        Database cfg = DBEngine::OpenDatabase(gUserCfgPath);
        // ParaVal_1 and ParaVal_2 widened to 250 characters: nothing to send.
    });
    Pause(100);
    ShowProcessingBar();
}

void UpgradeTo31A() {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT DB_Ver FROM dbStatus"));
    if (!rs.Eof()) {
        if (rs.Fields(QStringLiteral("DB_Ver")).Text().compare(QStringLiteral("31A")) >= 0)
            return;
        rs.Edit();
    } else {
        rs.AddNew();
    }
    rs.SetField(QStringLiteral("DB_Ver"), QStringLiteral("31A"));
    rs.Update();
    rs.Close();
    // SellAt widened to Double: nothing to send.
    Pause(250);
}

bool UpgradeTo32A() {
    Database db = DBEngine::OpenDatabase(gDbPath);
    bool rowExists = false;
    {
        Recordset rs = db.OpenRecordset(QStringLiteral("SELECT DB_Ver FROM dbStatus"));
        if (!rs.Eof()) {
            rowExists = true;
            if (rs.Fields(QStringLiteral("DB_Ver")).Text().compare(QStringLiteral("32A")) >= 0)
                return true;
        }
    }
    MsgBox(QStringLiteral("The software needs to install some updates to your database") +
               QStringLiteral("\n\n") +
               QStringLiteral("You MUST ensure that no other users are logged in to your database "
                              "before continuing") +
               QStringLiteral("\n\n") + QStringLiteral("Click OK when you're ready to continue"),
           vbInformation, QStringLiteral("Install Updates"));
    try {
        db.BeginTrans();
        for (const char* sql : {
                 "ALTER TABLE tblDespatch ADD COLUMN TotalTax REAL",
                 "ALTER TABLE tblDespatch ADD COLUMN Delivery REAL",
                 "ALTER TABLE tblDespatch ADD COLUMN InvoiceNo INTEGER",
                 "ALTER TABLE tblDespatch ADD COLUMN TaxRate REAL",
                 "ALTER TABLE tblDespDetail ADD COLUMN SellAtPrice REAL",
                 "ALTER TABLE tblItemHistory ADD COLUMN HistID2 REAL",
             })
            db.Execute(QString::fromLatin1(sql));
        // The late-delivery reports and the invoice list join on these two.
        db.Execute(
            QStringLiteral("CREATE INDEX IF NOT EXISTS ixHistID2 ON tblItemHistory (HistID2)"));
        db.Execute(
            QStringLiteral("CREATE INDEX IF NOT EXISTS ixDespInvoice ON tblDespatch (InvoiceNo)"));
        if (rowExists)
            db.Execute(QStringLiteral("UPDATE dbStatus SET DB_Ver = '32A'"));
        else
            db.Execute(QStringLiteral("INSERT INTO dbStatus") + QStringLiteral("(DB_VER)") +
                       QStringLiteral(" VALUES ") + QStringLiteral("('32A')"));
        db.CommitTrans();
    } catch (const DbError& e) {
        MsgBox(
            QString::number(e.Number()) + QStringLiteral(" ") +
                QStringLiteral("The updates failed to install. The error reported by the "
                               "windows database driver is:-") +
                QStringLiteral("\n") + e.Description() + QStringLiteral("\n\n") +
                QStringLiteral("If the error is caused by another user then you need to make "
                               "sure that no other users are logged into the Inventory database") +
                QStringLiteral("\n\n") +
                QStringLiteral("You can not use this version of the software unless these "
                               "updates are completed successfully. Once the software has "
                               "closed you can restart and retry the update again."),
            vbCritical);
        db.Rollback();
        Pause(1000);
        db.Close();
        return false;
    }
    Pause(1000);
    db.Execute(QStringLiteral("UPDATE tblDespatch SET InvoiceNo = DespID"));
    ShowProcessingBar();
    db.Close();
    UpgradeInvoicedColumn();
    return true;
}

void UpgradeInvoicedColumn() {
    Database db = DBEngine::OpenDatabase(gDbPath);
    if (probeFails(db, QStringLiteral("SELECT Invoiced FROM tblDespatch") + FirstRowOnly()))
        ignoringErrors([&] {
            db.Execute(QStringLiteral("ALTER TABLE tblDespatch ADD COLUMN Invoiced TEXT"));
        });
}

void UpgradeParametersTable() {
    Database db = DBEngine::OpenDatabase(gDbPath);
    if (probeFails(db, QStringLiteral("SELECT * FROM tblParameters")))
        ignoringErrors([&] {
            db.Execute(QStringLiteral(
                "CREATE TABLE tblParameters (ParaName TEXT COLLATE NOCASE, f1 TEXT COLLATE NOCASE,"
                "f2 TEXT COLLATE NOCASE, f3 TEXT COLLATE NOCASE, f4 TEXT COLLATE NOCASE, "
                "f5 TEXT COLLATE NOCASE, f6 TEXT COLLATE NOCASE, f7 TEXT COLLATE NOCASE, "
                "f8 TEXT COLLATE NOCASE, f9 TEXT COLLATE NOCASE, f10 TEXT COLLATE NOCASE)"));
        });
}

void UpgradeSettingsWidth() {
    // Opens the workstation's settings file at every start; the widening itself needs no
    // statement here. A missing or read-only file is passed over: the settings and column widths
    // then keep their defaults.
    ignoringErrors([] { Database cfg = DBEngine::OpenDatabase(gUserCfgPath); });
}

bool RunUpgrades() {
    UpgradeUnitsOfMeasure();
    UpgradeTo31A();
    if (!UpgradeTo32A())
        return false;
    UpgradeParametersTable();
    UpgradeSettingsWidth();
    return true;
}
