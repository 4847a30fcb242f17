#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Upgrades.h"
#include "tests/foundation/OldDataFiles.h"
#include "tests/support/TestSupport.h"

#include <QTest>

class TestUpgrades : public QObject {
    Q_OBJECT
private slots:
    void currentAndNewerFilesPassSilently() {
        TestData data;
        ScriptedBoxes boxes; // no answers queued: any message fails the test
        QVERIFY(RunUpgrades());
        Database db = DBEngine::OpenDatabase(gDbPath);
        QCOMPARE(version(db), QStringLiteral("32A"));
        // Versions compare as text: a newer file passes unchanged.
        db.Execute(QStringLiteral("UPDATE dbStatus SET DB_Ver = '40A'"));
        QVERIFY(RunUpgrades());
        QCOMPARE(version(db), QStringLiteral("40A"));
        db.Execute(QStringLiteral("UPDATE dbStatus SET DB_Ver = '31B'"));
        UpgradeTo31A();
        QCOMPARE(version(db), QStringLiteral("31B"));
        QVERIFY(boxes.shown().isEmpty());
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
        QVERIFY(hasColumn(db, QStringLiteral("tblStockItems"), QStringLiteral("UOM1, UOM2, UOM3")));
        QVERIFY(hasColumn(db, QStringLiteral("tblDespatch"),
                          QStringLiteral("TotalTax, Delivery, InvoiceNo, TaxRate, Invoiced")));
        QVERIFY(hasColumn(db, QStringLiteral("tblItemHistory"), QStringLiteral("HistID2")));
        QVERIFY(hasColumn(db, QStringLiteral("tblParameters"), QStringLiteral("ParaName, f10")));
        // Invoice numbers follow the despatch keys; the new price column of old rows reads 0.
        QCOMPARE(SqlRows(QStringLiteral("SELECT DespID, InvoiceNo FROM tblDespatch ORDER BY 1")),
                 QStringList({"5|5", "9|9"}));
        QCOMPARE(SqlRows(QStringLiteral("SELECT SellAtPrice IS NULL, DespQty FROM tblDespDetail")),
                 QStringList{"1|2"});
        QCOMPARE(SqlRows(QStringLiteral("SELECT MasterPNo, Qty, SellAt FROM tblStockItems")),
                 QStringList{"P-1|4|2.5"});

        // A second start finds nothing to do.
        ScriptedBoxes again;
        QVERIFY(RunUpgrades());
        QVERIFY(again.shown().isEmpty());
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
        QCOMPARE(SqlFirst(QStringLiteral("SELECT COUNT(*) FROM tblDespatch")), QStringLiteral("2"));
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
