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
        Database db = DBEngine::OpenDatabase(gUserCfgPath);
        Recordset rs = db.OpenRecordset(
            QStringLiteral("SELECT PcName, AppName, GridName, ColName, ColWidth FROM ColStat"));
        GridDemo probe;
        QCOMPARE(
            rs.Fields(0).Text() + rs.Fields(1).Text() + rs.Fields(2).Text() + rs.Fields(3).Text() +
                QLatin1Char('=') + rs.Fields(4).Text(),
            QStringLiteral("TESTPCqstk3gdxDemoSupplier=%1").arg(probe.grid->PixelsToTwips(160)));
        rs.MoveNext();
        QVERIFY(rs.Eof()); // the second resize updated the row
        db.Close();

        GridDemo second;
        second.Generate(3);
        second.Load();
        QCOMPARE(second.grid->Columns()("Supplier").Width(), second.grid->PixelsToTwips(160));
        QCOMPARE(second.grid->TableView()->horizontalHeader()->sectionSize(2), 160);
        // Columns nobody resized keep their designed widths.
        QCOMPARE(second.grid->Columns()("PartNo").Width(), 1500);
        // A grid that keeps no widths stores nothing.
        GridDemo report(QStringLiteral("gdxUBView"));
        report.grid->SetSaveColumnState(false);
        report.Load();
        ResizeColumn(*report.grid, "PartNo", 200);
        QCOMPARE(StoredRows(), 1);
    }

    void widthsAreKeptApartPerWorkstationAndGrid() {
        TestData data;
        SaveColumnState(QStringLiteral("gdxDemo"), QStringLiteral("PartNo"), 3000);
        gPcName = QStringLiteral("OTHERPC");
        SaveColumnState(QStringLiteral("gdxDemo"), QStringLiteral("PartNo"), 2400);
        SaveColumnState(QStringLiteral("gdxOList"), QStringLiteral("PartNo"), 900);
        QCOMPARE(StoredRows(), 3);
        // The part number's width in a new grid of that name.
        const auto width = [](const char* gridName) {
            GridDemo demo{QLatin1String(gridName)};
            demo.Load();
            return demo.grid->Columns()("PartNo").Width();
        };
        QCOMPARE(width("gdxDemo"), 2400);
        QCOMPARE(width("gdxOList"), 900);
        gPcName = QStringLiteral("TESTPC");
        QCOMPARE(width("gdxDemo"), 3000);
        QCOMPARE(width("gdxOList"), 1500);
    }

    void unknownStoredKeyIsSkippedAndTheOthersApply() {
        TestData data;
        for (const auto& [key, width] :
             {std::pair{"Vanished", 5000}, {"Qty", 2000}, {"Gone", 100}, {"Note", 2500}})
            Store(QStringLiteral("TESTPC"), QStringLiteral("gdxDemo"), QLatin1String(key), width);
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

    // A missing or locked store, or a key the statement cannot hold: designed widths, nothing
    // remembered, nothing said.
    void failingStoresChangeNothingAndSayNothing() {
        TestData data;
        SaveColumnState(QStringLiteral("gdxDemo"), QStringLiteral("PartNo"), 2000);
        ScriptedBoxes boxes;
        SaveColumnState(QStringLiteral("gdxDemo"), QStringLiteral("O'Key"), 1000);
        {
            Database other = DBEngine::OpenDatabase(gUserCfgPath);
            other.Execute(QStringLiteral("BEGIN EXCLUSIVE"));
            GridDemo demo;
            demo.Load(); // cannot read: designed widths
            QCOMPARE(demo.grid->Columns()("PartNo").Width(), 1500);
            ResizeColumn(*demo.grid, "Qty", 130); // cannot write: not remembered
            other.Execute(QStringLiteral("ROLLBACK"));
        }
        QCOMPARE(StoredRows(), 1);
        QCOMPARE(StoredRows(QStringLiteral(" WHERE ColName='PartNo' AND ColWidth=2000")), 1);

        QVERIFY(QFile::remove(gUserCfgPath));
        GridDemo demo;
        demo.Generate(2);
        demo.Load();
        QCOMPARE(demo.grid->Columns()("PartNo").Width(), 1500);
        ResizeColumn(*demo.grid, "PartNo", 120);
        QCOMPARE(demo.grid->Columns()("PartNo").Width(), demo.grid->PixelsToTwips(120));
        QVERIFY(!QFile::exists(gUserCfgPath)); // never created at run time
        QVERIFY(boxes.shown().isEmpty());
    }
};

QTEST_MAIN(TestColumnState)
#include "test_columnstate.moc"
