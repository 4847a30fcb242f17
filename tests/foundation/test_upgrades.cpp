#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Upgrades.h"
#include "tests/foundation/OldDataFiles.h"
#include "tests/support/TestSupport.h"

#include <QTest>

class TestUpgrades : public QObject {
    Q_OBJECT
private slots:
    void currentFilePassesSilently() {
        TestData data;
        ScriptedBoxes boxes; // no answers queued: any message fails the test
        QVERIFY(RunUpgrades());
        QVERIFY(boxes.shown().isEmpty());
        Database db = DBEngine::OpenDatabase(gDbPath);
        QCOMPARE(version(db), QStringLiteral("32A"));
    }

    void oldestFileReachesCurrentStructureWithDataKept() {
        TestData data;
        makeOld(OldFile{});
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QVERIFY(RunUpgrades());
        QCOMPARE(boxes.prompts(), QStringList{kInstallPrompt});
        QCOMPARE(boxes.shown().at(1).title, QStringLiteral("Install Updates"));
        QCOMPARE(boxes.shown().at(1).flags, int(vbInformation));
        QCOMPARE(boxes.processingBars(), 2); // units of measure, then "32A"

        Database db = DBEngine::OpenDatabase(gDbPath);
        QCOMPARE(version(db), QStringLiteral("32A"));
        for (const char* c : {"UOM1", "UOM2", "UOM3"})
            QVERIFY(hasColumn(db, QStringLiteral("tblStockItems"), QLatin1String(c)));
        for (const char* c : {"TotalTax", "Delivery", "InvoiceNo", "TaxRate", "Invoiced"})
            QVERIFY(hasColumn(db, QStringLiteral("tblDespatch"), QLatin1String(c)));
        QVERIFY(hasColumn(db, QStringLiteral("tblItemHistory"), QStringLiteral("HistID2")));
        QVERIFY(hasColumn(db, QStringLiteral("tblParameters"), QStringLiteral("ParaName, f10")));

        // Invoice numbers follow the despatch keys; the new price column of old rows reads 0.
        Recordset inv = db.OpenRecordset(
            QStringLiteral("SELECT DespID, InvoiceNo FROM tblDespatch ORDER BY DespID"));
        QCOMPARE(inv.Fields(QStringLiteral("InvoiceNo")).Long(), 5);
        inv.MoveNext();
        QCOMPARE(inv.Fields(QStringLiteral("InvoiceNo")).Long(), 9);
        Recordset det =
            db.OpenRecordset(QStringLiteral("SELECT SellAtPrice, DespQty FROM tblDespDetail"));
        QVERIFY(det.Fields(0).IsNull());
        QCOMPARE(det.Fields(0).Double(), 0.0);
        QCOMPARE(det.Fields(1).Double(), 2.0);
        Recordset item =
            db.OpenRecordset(QStringLiteral("SELECT MasterPNo, Qty, SellAt FROM tblStockItems"));
        QCOMPARE(item.Fields(0).Text(), QStringLiteral("P-1"));
        QCOMPARE(item.Fields(1).Double(), 4.0);
        QCOMPARE(item.Fields(2).Double(), 2.5);

        // A second start finds nothing to do.
        ScriptedBoxes again;
        QVERIFY(RunUpgrades());
        QVERIFY(again.shown().isEmpty());
        QCOMPARE(version(db), QStringLiteral("32A"));
    }

    void fileWithoutStatusRowGetsOneRow() {
        TestData data;
        OldFile o;
        o.dbVer.clear();
        makeOld(o);
        UpgradeUnitsOfMeasure();
        UpgradeTo31A();
        {
            Database db = DBEngine::OpenDatabase(gDbPath);
            QCOMPARE(version(db), QStringLiteral("31A"));
        }
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QVERIFY(UpgradeTo32A());
        Database db = DBEngine::OpenDatabase(gDbPath);
        QCOMPARE(version(db), QStringLiteral("32A"));
    }

    void versionStepsCompareAsText() {
        TestData data;
        {
            Database db = DBEngine::OpenDatabase(gDbPath);
            db.Execute(QStringLiteral("UPDATE dbStatus SET DB_Ver = '40A'"));
        }
        // A newer file than this program knows passes unchanged.
        ScriptedBoxes boxes;
        QVERIFY(RunUpgrades());
        Database db = DBEngine::OpenDatabase(gDbPath);
        QCOMPARE(version(db), QStringLiteral("40A"));
        db.Execute(QStringLiteral("UPDATE dbStatus SET DB_Ver = '31B'"));
        UpgradeTo31A();
        QCOMPARE(version(db), QStringLiteral("31B"));
    }

    void failed32AStepLeavesFileAsItWas() {
        TestData data;
        OldFile o;
        o.withoutUnits = false;
        o.withoutParameters = false;
        o.historyHasId2 = true; // the last ALTER of the step fails
        o.dbVer = QStringLiteral("31A");
        makeOld(o);
        ScriptedBoxes boxes;
        boxes.answer(vbOK); // Install Updates
        boxes.answer(vbOK); // the failure
        QVERIFY(!RunUpgrades());
        QCOMPARE(boxes.prompts().size(), 2);
        const QString failure = boxes.prompts().at(1);
        QVERIFY(
            failure.startsWith(QStringLiteral("3075 The updates failed to install. The error "
                                              "reported by the windows database driver is:-\n")));
        QVERIFY(failure.contains(QStringLiteral("duplicate column name: HistID2")));
        QVERIFY(failure.endsWith(QStringLiteral(
            "Once the software has closed you can restart and retry the update again.")));
        QCOMPARE(boxes.processingBars(), 0);

        Database db = DBEngine::OpenDatabase(gDbPath);
        QCOMPARE(version(db), QStringLiteral("31A"));
        QVERIFY(!hasColumn(db, QStringLiteral("tblDespatch"), QStringLiteral("TotalTax")));
        QVERIFY(!hasColumn(db, QStringLiteral("tblDespDetail"), QStringLiteral("SellAtPrice")));
        QCOMPARE(
            db.OpenRecordset(QStringLiteral("SELECT COUNT(*) FROM tblDespatch")).Fields(0).Long(),
            2);
    }

    void lockedFileFails32AAndNextStartRetries() {
        TestData data;
        OldFile o;
        o.dbVer = QStringLiteral("31A");
        makeOld(o);
        UpgradeUnitsOfMeasure();
        {
            Database other = DBEngine::OpenDatabase(gDbPath);
            other.BeginTrans(); // another workstation is writing
            ScriptedBoxes boxes;
            boxes.answer(vbOK);
            boxes.answer(vbOK);
            QVERIFY(!UpgradeTo32A());
            QVERIFY(boxes.prompts().at(1).startsWith(QStringLiteral("3218 ")));
            other.Rollback();
        }
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QVERIFY(UpgradeTo32A());
        Database db = DBEngine::OpenDatabase(gDbPath);
        QCOMPARE(version(db), QStringLiteral("32A"));
        QVERIFY(hasColumn(db, QStringLiteral("tblDespatch"), QStringLiteral("Invoiced")));
    }
};

QTEST_GUILESS_MAIN(TestUpgrades)
#include "test_upgrades.moc"
