#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "grids/ColumnState.h"
#include "tests/grids/GridDemo.h"
#include "tests/support/TestSupport.h"

#include <QFile>
#include <QHeaderView>
#include <QTableView>
#include <QTest>

namespace {

int StoredRows(const QString& where = QString()) {
    Database db = DBEngine::OpenDatabase(gUserCfgPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT COUNT(*) AS n FROM ColStat") + where);
    return int(rs.Fields(QStringLiteral("n")).Long());
}

void Store(const QString& pc, const QString& grid, const QString& col, int width) {
    Database db = DBEngine::OpenDatabase(gUserCfgPath);
    db.Execute(QStringLiteral("INSERT INTO ColStat (PcName, AppName, GridName, ColName, ColWidth) "
                              "VALUES (?, ?, ?, ?, ?)"),
               {pc, AppName(), grid, col, width});
}

// The user drags a column border: the header gets its new size in pixels.
void ResizeColumn(GridEX& grid, const QString& key, int pixels) {
    grid.TableView()->horizontalHeader()->resizeSection(grid.Columns()(key).Index() - 1, pixels);
}

} // namespace

class TestColumnState : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { UseTestLocale(); }

    void resizedWidthSurvivesANewGrid() {
        TestData data;
        QVERIFY(data.ok());
        {
            GridDemo first;
            first.Generate(3);
            first.Load();
            ResizeColumn(*first.grid, "Supplier", 150);
            QCOMPARE(first.grid->Columns()("Supplier").Width(), first.grid->PixelsToTwips(150));
            ResizeColumn(*first.grid, "Supplier", 160); // updates, adds no second row
        }
        QCOMPARE(StoredRows(), 1);
        Database db = DBEngine::OpenDatabase(gUserCfgPath);
        Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM ColStat"));
        QCOMPARE(rs.Fields("PcName").Text(), QStringLiteral("TESTPC"));
        QCOMPARE(rs.Fields("AppName").Text(), QStringLiteral("qstk3"));
        QCOMPARE(rs.Fields("GridName").Text(), QStringLiteral("gdxDemo"));
        QCOMPARE(rs.Fields("ColName").Text(), QStringLiteral("Supplier"));
        GridDemo probe;
        QCOMPARE(int(rs.Fields("ColWidth").Long()), probe.grid->PixelsToTwips(160));
        db.Close();

        GridDemo second;
        second.Generate(3);
        second.Load();
        QCOMPARE(second.grid->Columns()("Supplier").Width(), second.grid->PixelsToTwips(160));
        QCOMPARE(second.grid->TableView()->horizontalHeader()->sectionSize(2), 160);
        // Columns nobody resized keep their designed widths.
        QCOMPARE(second.grid->Columns()("PartNo").Width(), 1500);
    }

    void widthsAreKeptApartPerWorkstationAndGrid() {
        TestData data;
        SaveColumnState(QStringLiteral("gdxDemo"), QStringLiteral("PartNo"), 3000);
        gPcName = QStringLiteral("OTHERPC");
        SaveColumnState(QStringLiteral("gdxDemo"), QStringLiteral("PartNo"), 2400);
        SaveColumnState(QStringLiteral("gdxOList"), QStringLiteral("PartNo"), 900);
        QCOMPARE(StoredRows(), 3);

        GridDemo other;
        other.Load();
        QCOMPARE(other.grid->Columns()("PartNo").Width(), 2400);
        GridDemo otherList(QStringLiteral("gdxOList"));
        otherList.Load();
        QCOMPARE(otherList.grid->Columns()("PartNo").Width(), 900);

        gPcName = QStringLiteral("TESTPC");
        GridDemo mine;
        mine.Load();
        QCOMPARE(mine.grid->Columns()("PartNo").Width(), 3000);
        GridDemo mineList(QStringLiteral("gdxOList"));
        mineList.Load();
        QCOMPARE(mineList.grid->Columns()("PartNo").Width(), 1500);
    }

    void unknownStoredKeyIsSkippedAndTheOthersApply() {
        TestData data;
        Store(QStringLiteral("TESTPC"), QStringLiteral("gdxDemo"), QStringLiteral("Vanished"),
              5000);
        Store(QStringLiteral("TESTPC"), QStringLiteral("gdxDemo"), QStringLiteral("Qty"), 2000);
        Store(QStringLiteral("TESTPC"), QStringLiteral("gdxDemo"), QStringLiteral("Gone"), 100);
        Store(QStringLiteral("TESTPC"), QStringLiteral("gdxDemo"), QStringLiteral("Note"), 2500);
        ScriptedBoxes boxes;
        GridDemo demo;
        demo.Load();
        QCOMPARE(demo.grid->Columns()("Qty").Width(), 2000);
        QCOMPARE(demo.grid->Columns()("Note").Width(), 2500);
        QCOMPARE(demo.grid->Columns()("PartNo").Width(), 1500);
        QVERIFY(boxes.shown().isEmpty());
        // Applying stored widths does not write them back.
        QCOMPARE(StoredRows(), 4);
    }

    void missingStoreChangesNothingAndSaysNothing() {
        TestData data;
        ScriptedBoxes boxes;
        QVERIFY(QFile::remove(gUserCfgPath));
        GridDemo demo;
        demo.Generate(2);
        demo.Load();
        QCOMPARE(demo.grid->Columns()("PartNo").Width(), 1500);
        ResizeColumn(*demo.grid, "PartNo", 120);
        SaveColumnState(QStringLiteral("gdxDemo"), QStringLiteral("Qty"), 999);
        QCOMPARE(demo.grid->Columns()("PartNo").Width(), demo.grid->PixelsToTwips(120));
        QVERIFY(!QFile::exists(gUserCfgPath)); // never created at run time
        QVERIFY(boxes.shown().isEmpty());
    }

    void lockedStoreChangesNothingAndSaysNothing() {
        TestData data;
        SaveColumnState(QStringLiteral("gdxDemo"), QStringLiteral("PartNo"), 2000);
        ScriptedBoxes boxes;
        {
            Database other = DBEngine::OpenDatabase(gUserCfgPath);
            other.Execute(QStringLiteral("BEGIN EXCLUSIVE"));
            GridDemo demo;
            demo.Load(); // cannot read: designed widths
            QCOMPARE(demo.grid->Columns()("PartNo").Width(), 1500);
            ResizeColumn(*demo.grid, "Qty", 130); // cannot write: not remembered
            SaveColumnState(QStringLiteral("gdxDemo"), QStringLiteral("PartNo"), 2600);
            other.Execute(QStringLiteral("ROLLBACK"));
        }
        QVERIFY(boxes.shown().isEmpty());
        QCOMPARE(StoredRows(), 1);
        QCOMPARE(StoredRows(QStringLiteral(" WHERE ColName='PartNo' AND ColWidth=2000")), 1);
    }

    void quoteInAKeyStoresNothingQuietly() {
        TestData data;
        ScriptedBoxes boxes;
        SaveColumnState(QStringLiteral("gdxDemo"), QStringLiteral("O'Key"), 1000);
        QCOMPARE(StoredRows(), 0);
        QVERIFY(boxes.shown().isEmpty());
    }

    void gridsThatKeepNoWidthsStoreNothing() {
        TestData data;
        GridDemo report(QStringLiteral("gdxUBView"));
        report.grid->SetSaveColumnState(false);
        report.Load();
        ResizeColumn(*report.grid, "PartNo", 200);
        QCOMPARE(StoredRows(), 0);
    }
};

QTEST_MAIN(TestColumnState)
#include "test_columnstate.moc"
