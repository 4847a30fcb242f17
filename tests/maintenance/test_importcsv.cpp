#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "tests/maintenance/ImportCsvFixture.h"
#include "tests/support/TestSupport.h"

#include <QHash>
#include <QTest>
#include <map>

namespace {

const QString kSummary = QStringLiteral(
    "%1 records were imported successfully\n\n%2 duplicate or invalid records were ignored\n\nThe "
    "data grid now shows the status of each record");

QString summary(int imported, int ignored) {
    return kSummary.arg(imported).arg(ignored);
}

// The stock row of a part number, its columns joined by "|", or "<none>".
QString item(const QString& pno) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT ItemID, MasterPNo, ItemName, ItemDescription, Category, Location, "
                       "Qty, Trigger, SellAt, AllowDiscount, AllocQty, OnOrderQty, BuyNow FROM "
                       "tblStockItems WHERE MasterPNo = ?"),
        {pno});
    if (rs.Eof())
        return QStringLiteral("<none>");
    QStringList out;
    for (int i = 0; i < rs.FieldCount(); ++i)
        out << rs.Fields(i).Text();
    return out.join(QLatin1Char('|'));
}

// The supplier rows of an item: "SupplierID/SupplierPNo/PrimeSupplier/PriceEach", by SupplierID.
QStringList suppliers(qint64 itemId) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT SupplierID, SupplierPNo, PrimeSupplier, PriceEach FROM "
                       "tblItemSupplier WHERE ItemID = ? ORDER BY SupplierID"),
        {itemId});
    QStringList out;
    for (; !rs.Eof(); rs.MoveNext())
        out << QStringList{rs.Fields(0).Text(), rs.Fields(1).Text(), rs.Fields(2).Text(),
                           rs.Fields(3).Text()}
                   .join(QLatin1Char('/'));
    return out;
}

// Column 0 of rows 1 to the last.
QStringList statuses(const FlexCells& g) {
    QStringList out;
    for (int r = 1; r < g.Rows(); ++r)
        out << g.TextMatrix(r, 0);
    return out;
}

void read(const TestData& data, FlexCells& grid, const QByteArray& csv) {
    QVERIFY(ReadCsv(WriteFile(data.path(QStringLiteral("in.csv")), csv), grid));
}

} // namespace

class TestImportCsv : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { UseTestLocale(); }

    void linesSplitIntoCells() {
        QCOMPARE(SplitCsvLine(QStringLiteral("a,\"b,c\",d")), QStringList({"a", "b,c", "d"}));
        QCOMPARE(SplitCsvLine(QStringLiteral("\"say \"\"hi\"\"\",x")),
                 QStringList({"say \"hi\"", "x"}));
        QCOMPARE(SplitCsvLine(QStringLiteral("a,,c")), QStringList({"a", "", "c"}));
        QCOMPARE(SplitCsvLine(QStringLiteral("x")), QStringList({"x"}));
        // An empty line is one empty cell.
        QCOMPARE(SplitCsvLine(QString()), QStringList({""}));
        // A quote left open keeps every later comma: that tail is never shown, and at the start
        // of a line it leaves nothing at all.
        QCOMPARE(SplitCsvLine(QStringLiteral("a,\"b,c,d")), QStringList({"a"}));
        QCOMPARE(SplitCsvLine(QStringLiteral("\"b,c,d")), QStringList());
        QCOMPARE(SplitCsvLine(QStringLiteral("a,1 \"inch\" bolt,2")), QStringList({"a"}));
        // A quote that closes a stretch does not open the next one; a quote inside a stretch that
        // no comma follows stays.
        QCOMPARE(SplitCsvLine(QStringLiteral("\"a\",b")), QStringList({"a", "b"}));
        QCOMPARE(SplitCsvLine(QStringLiteral("\"a\"b\",c")), QStringList({"a\"b", "c"}));
        // No marker character: a "ÿ" is text like any other.
        QCOMPARE(SplitCsvLine(QStringLiteral("x\u00ff,\u00ff,\"\u00ff,y\"")),
                 QStringList({"x\u00ff", "\u00ff", "\u00ff,y"}));

        QCOMPARE(DecodeCsvText(QByteArray("\xEF\xBB\xBFK\xC3\xBChl")), QStringLiteral("K\u00fchl"));
        QCOMPARE(DecodeCsvText(QByteArray("Caf\xE9 \x80\x96")), QStringLiteral("Caf\u00e9 €–"));
    }

    void fileFillsTheGridAndTheBoxes() {
        TestData data;
        FlexCells grid;
        QCOMPARE(grid.Rows(), 2);
        QCOMPARE(grid.Cols(), 2);
        read(data, grid,
             "PNo,Desc,Qty\r\n"
             "A1,\"Bolt, M3\",5\n"
             "\n"
             "\"open,never shown\r"
             "B2,x\r\n"
             "C3,y,z,w,Caf\xE9\n"
             "D4");
        // Six lines reach the grid (the open quote is left out); the widest has five cells.
        QCOMPARE(grid.Rows(), 7);
        QCOMPARE(grid.Cols(), 7);
        QStringList headings;
        for (int c = 0; c < grid.Cols(); ++c)
            headings << grid.TextMatrix(0, c);
        QCOMPARE(headings, QStringList({"", "1", "2", "3", "4", "5", "6"}));
        QCOMPARE(grid.TextMatrix(1, 3), QStringLiteral("Qty"));
        QCOMPARE(grid.TextMatrix(2, 2), QStringLiteral("Bolt, M3"));
        QCOMPARE(grid.TextMatrix(2, 3), QStringLiteral("5"));
        QCOMPARE(grid.TextMatrix(3, 1), QString());
        QCOMPARE(grid.TextMatrix(4, 1), QStringLiteral("B2"));
        QCOMPARE(grid.TextMatrix(4, 3), QString());
        QCOMPARE(grid.TextMatrix(5, 5), QStringLiteral("Caf\u00e9"));
        QCOMPARE(grid.TextMatrix(6, 1), QStringLiteral("D4"));
        QCOMPARE(grid.TextMatrix(6, 6), QString());
        QCOMPARE(statuses(grid), QStringList(6, QString()));

        // The boxes list every column but the first, after their Ignore entries.
        QCOMPARE(
            ImportComboEntries(grid.Cols(), 0),
            QStringList({"Column 1", "Column 2", "Column 3", "Column 4", "Column 5", "Column 6"}));
        QCOMPARE(ImportComboEntries(3, 4), QStringList({"Ignore    ", "Column 1", "Column 2"}));
        QCOMPARE(ImportComboEntries(3, 5).first(), QStringLiteral("Ignore     "));
        QCOMPARE((ImportColumnChoice{12, QStringLiteral("Column 12")}).Column(), 12);
        QCOMPARE(ImportColumnChoice{}.Column(), 0);
        QVERIFY(!(ImportColumnChoice{0, QStringLiteral("Column 1")}).Made());

        // A file that cannot be read leaves the grid as it was.
        QVERIFY(!ReadCsv(data.path(QStringLiteral("missing.csv")), grid));
        QCOMPARE(grid.Rows(), 7);

        // The next file starts afresh: no cell or status of the wider one is left.
        grid.SetTextMatrix(1, 0, QStringLiteral("DONE_OK"));
        read(data, grid, "x,y\n");
        QCOMPARE(grid.Rows(), 2);
        QCOMPARE(grid.Cols(), 4);
        QCOMPARE(grid.TextMatrix(1, 0), QString());
        QCOMPARE(grid.TextMatrix(1, 3), QString());
        QCOMPARE(grid.TextMatrix(0, 3), QStringLiteral("3"));
    }

    void newRowsTakeDefaultsMasksAndNumbersInFileOrder() {
        TestData data;
        ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo) VALUES (9, 'OLD-9')");
        ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo) VALUES (5, 'OLD-5')");
        FlexCells grid;
        read(data, grid,
             "Part,Desc,Qty,Loc,Buy,Cat,Sell,Detail\n"
             " A'1 ,Widget 'big',2.346,Shelf 1,1.234567,res,3.14159,metal film\n"
             " ,no part,1,,,,,\n"
             "B2,Bolt,\"1,000.5\",,,as,,\n"
             "DONE_OK,x,,,,,,\n"
             "C3,Cap,,,,,,\n");
        ImportCsvInput in = AllColumns();
        in.Check1 = true;
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        const ImportCsvResult r = ImportCsv(in, grid);
        QVERIFY(r.ran);
        QCOMPARE(boxes.prompts(), QStringList({summary(3, 2)}));
        QCOMPARE(statuses(grid),
                 QStringList({"", "DONE_OK", "FAILED", "DONE_OK", "FAILED", "DONE_OK"}));
        QCOMPARE(item("A1"), QStringLiteral("10|A1|METAL FILM|Widget big|RES|Shelf 1|2.35|0|"
                                            "3.14159|0|0|0|0"));
        QCOMPARE(suppliers(10), QStringList({"0//0/1.23457"}));
        // A chosen column with an empty cell gives an empty text and 0, not the defaults.
        QCOMPARE(item("B2"), QStringLiteral("11|B2||Bolt|AS||1000.5|0|0|0|0|0|0"));
        QCOMPARE(suppliers(11), QStringList({"0//0/0"}));
        QCOMPARE(item("C3"), QStringLiteral("12|C3||Cap|||0|0|0|0|0|0|0"));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblStockItems"), QStringLiteral("5"));

        // Only the part number chosen: the defaults. "Column 1" in Combo2 is its first entry and
        // so no choice: the description stays empty.
        FlexCells second;
        read(data, second, "Desc first,E5\n");
        ImportCsvInput few;
        few.Combo1 = Pick(2, false);
        few.Combo2 = Pick(1, false);
        boxes.answer(vbOK);
        ImportCsv(few, second);
        QCOMPARE(item("E5"), QStringLiteral("13|E5|||NEW|UNKNOWN|0|0|0|0|0|0|0"));
        QCOMPARE(suppliers(13), QStringList({"0//0/0"}));

        // A decimal comma: numbers are read with the locale and written with ".".
        LocaleScope german{QLocale(QLocale::German, QLocale::Germany)};
        FlexCells third;
        read(data, third, "F6,x,\"2,5\",,\"1.234,5\",,\"0,125\",\n");
        boxes.answer(vbOK);
        ImportCsv(AllColumns(), third);
        QCOMPARE(item("F6"), QStringLiteral("14|F6||x|||2.5|0|0.125|0|0|0|0"));
        QCOMPARE(suppliers(14), QStringList({"0//0/1234.5"}));
        QVERIFY(boxes.allAnswersUsed());
    }

    void checksStopTheRunBeforeAnyRow() {
        TestData data;
        FlexCells grid;
        read(data, grid, "P1,D1,1,L1,1,C,1,X\n");
        ScriptedBoxes boxes;
        const QString sameColumns =
            QStringLiteral("The Description and Part number columns can not be the same");
        const QString unique = QStringLiteral(
            "Each column must be unique. Two fields can not import the same column data");

        ImportCsvInput none; // nothing chosen: both texts are empty and so the same
        ImportCsvInput descOnPart = AllColumns();
        descOnPart.Combo2 = ImportColumnChoice{0, QStringLiteral("Column 1")};
        ImportCsvInput qtyOnPart = AllColumns();
        qtyOnPart.Combo3 = Pick(1);
        ImportCsvInput locOnPart = AllColumns();
        locOnPart.Combo4 = Pick(1);
        const std::pair<ImportCsvInput, QString> cases[] = {
            {none, sameColumns},
            {descOnPart, sameColumns},
            {qtyOnPart, unique},
            {locOnPart, unique},
        };
        for (const auto& [in, message] : cases) {
            boxes.clear();
            boxes.answer(vbOK);
            QVERIFY(!ImportCsv(in, grid).ran);
            QCOMPARE(boxes.prompts(), QStringList({message}));
            QCOMPARE(grid.TextMatrix(1, 0), QString());
        }
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblStockItems"), QStringLiteral("0"));

        // No other pair is compared: the buy price may read the part number's column.
        ImportCsvInput buyOnPart = AllColumns();
        buyOnPart.Combo9 = Pick(1);
        boxes.clear();
        boxes.answer(vbOK);
        QVERIFY(ImportCsv(buyOnPart, grid).ran);
        QCOMPARE(boxes.prompts(), QStringList({summary(1, 0)}));
        QCOMPARE(suppliers(1), QStringList({"0//0/0"}));
    }

    void secondRunIsDuplicatesUnlessOverwriteUpdatesChosenFields() {
        TestData data;
        FlexCells grid;
        read(data, grid,
             "P1,Desc one,1,L1,1.5,cat,2.5,det one\n"
             "P2,Desc two,2,L2,2.5,cat,3.5,det two\n");
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        ImportCsv(AllColumns(), grid);
        QCOMPARE(statuses(grid), QStringList({"DONE_OK", "DONE_OK"}));
        ExecSql("INSERT INTO tblItemSupplier (ItemID, SupplierID, SupplierPNo, PrimeSupplier, "
                "PriceEach) VALUES (2, 7, 'S-2', 1, 9)");
        const QString p1 = item("P1");
        const QString p2 = item("P2");

        // Again over the same grid: every row is a duplicate.
        boxes.clear();
        boxes.answer(vbOK);
        ImportCsv(AllColumns(), grid);
        QCOMPARE(boxes.prompts(), QStringList({summary(0, 2)}));
        QCOMPARE(statuses(grid), QStringList({"FAILED", "FAILED"}));
        QCOMPARE(item("P1"), p1);
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemSupplier"), QStringLiteral("3"));

        // With overwrite, only the chosen fields change: quantity, sell price, detail (cut to 49)
        // and the buy price of the no-supplier row. The part number matches without case.
        const QString longDetail = QStringLiteral("a very long detail line that goes on and on "
                                                  "past forty-nine characters");
        FlexCells update;
        read(data, update,
             "P1,New desc,10,NewLoc,4.25,newcat,7.5," + longDetail.toUtf8() +
                 "\n"
                 "p2,Other,20,X,5.5,y,8.5,z\n");
        ImportCsvInput in;
        in.Combo1 = Pick(1, false);
        in.Combo3 = Pick(3);
        in.Combo9 = Pick(5);
        in.Combo11 = Pick(7);
        in.Combo12 = Pick(8);
        in.Check2 = true;
        boxes.clear();
        boxes.answer(vbOK);
        ImportCsv(in, update);
        QCOMPARE(boxes.prompts(), QStringList({summary(2, 0)}));
        QCOMPARE(statuses(update), QStringList({"UPDATED", "UPDATED"}));
        QCOMPARE(item("P1"), QStringLiteral("1|P1|") + longDetail.toUpper().left(49) +
                                 QStringLiteral("|Desc one|CAT|L1|10|0|7.5|0|0|0|0"));
        QCOMPARE(item("P2"), QStringLiteral("2|P2|Z|Desc two|CAT|L2|20|0|8.5|0|0|0|0"));
        QCOMPARE(suppliers(1), QStringList({"0//0/4.25"}));
        QCOMPARE(suppliers(2), QStringList({"0//0/5.5", "7/S-2/1/9"}));
        // A quantity changed here leaves no history.
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemHistory"), QStringLiteral("0"));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblStockItems"), QStringLiteral("2"));
    }

    void failingRowsAndBatchesLeaveNothingHalfWritten() {
        TestData data;
        ScriptedBoxes boxes;
        // A supplier row the file refuses: that item's stock row goes with it, and the next item
        // takes the number the failed one would have had.
        ExecSql("CREATE TRIGGER refuse BEFORE INSERT ON tblItemSupplier WHEN NEW.PriceEach = 6.66 "
                "BEGIN SELECT RAISE(ABORT, 'refused'); END");
        FlexCells grid;
        read(data, grid, "R1,a,,,1\nR2,b,,,6.66\nR3,c,,,2\n");
        boxes.answer(vbOK);
        ImportCsv(AllColumns(), grid);
        QCOMPARE(boxes.prompts(), QStringList({summary(2, 1)}));
        QCOMPARE(statuses(grid), QStringList({"DONE_OK", "FAILED", "DONE_OK"}));
        QCOMPARE(item("R2"), QStringLiteral("<none>"));
        QVERIFY(item("R3").startsWith(QStringLiteral("2|R3|")));
        QCOMPARE(suppliers(2), QStringList({"0//0/2"}));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemSupplier"), QStringLiteral("2"));

        // A batch whose commit fails: its rows are "FAILED" and counted as ignored. Here every row
        // is a batch of its own and the second row's commit fails.
        FlexCells perRow;
        read(data, perRow, "S1,a\nS2,b\nS3,c\n");
        ImportCsvInput in = AllColumns();
        in.batchMs = 0;
        ImportCsvProgress progress;
        progress.step = [](int row) {
            if (row == 1)
                Database::FailNextStatementContaining(QStringLiteral("COMMIT"));
        };
        boxes.clear();
        boxes.answer(vbOK);
        ImportCsv(in, perRow, progress);
        QCOMPARE(boxes.prompts(), QStringList({summary(2, 1)}));
        QCOMPARE(statuses(perRow), QStringList({"DONE_OK", "FAILED", "DONE_OK"}));
        QCOMPARE(item("S2"), QStringLiteral("<none>"));
        QVERIFY(item("S1").startsWith(QStringLiteral("3|S1|")));
        QVERIFY(item("S3").startsWith(QStringLiteral("4|S3|")));

        // One batch for the whole file: a failed commit loses every row of it.
        FlexCells oneBatch;
        read(data, oneBatch, "T1,a\nT2,b\n");
        Database::FailNextStatementContaining(QStringLiteral("COMMIT"));
        boxes.clear();
        boxes.answer(vbOK);
        ImportCsv(AllColumns(), oneBatch);
        QCOMPARE(boxes.prompts(), QStringList({summary(0, 2)}));
        QCOMPARE(statuses(oneBatch), QStringList({"FAILED", "FAILED"}));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblStockItems"), QStringLiteral("4"));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemSupplier"), QStringLiteral("4"));
    }

    void updateErrorTravelsOnAfterEarlierRowsAreCommitted() {
        TestData data;
        ScriptedBoxes boxes;
        FlexCells grid;
        read(data, grid, "U1,a,1,,1\nU2,b,2,,2\nU3,c,3,,3\n");
        boxes.answer(vbOK);
        ImportCsv(AllColumns(), grid);
        ExecSql("CREATE TRIGGER refuse BEFORE UPDATE ON tblItemSupplier WHEN NEW.PriceEach = 6.66 "
                "BEGIN SELECT RAISE(ABORT, 'refused'); END");

        FlexCells update;
        read(data, update, "U1,a,5,,1.5\nU2,b,6,,6.66\nU3,c,7,,2\n");
        ImportCsvInput in = AllColumns();
        in.Check2 = true;
        boxes.clear();
        bool raised = false;
        try {
            ImportCsv(in, update);
        } catch (const DbError& e) {
            raised = true;
            QVERIFY(e.Description().contains(QStringLiteral("refused")));
        }
        QVERIFY(raised);
        QVERIFY(boxes.prompts().isEmpty()); // no closing box
        QCOMPARE(statuses(update), QStringList({"UPDATED", "", ""}));
        QCOMPARE(item("U1"), QStringLiteral("1|U1||a|||5|0|0|0|0|0|0"));
        QCOMPARE(suppliers(1), QStringList({"0//0/1.5"}));
        // The failing row is undone whole: its quantity is as it was.
        QCOMPARE(item("U2"), QStringLiteral("2|U2||b|||2|0|0|0|0|0|0"));
        QCOMPARE(suppliers(2), QStringList({"0//0/2"}));
        QCOMPARE(item("U3"), QStringLiteral("3|U3||c|||3|0|0|0|0|0|0"));
        // Nothing is left open: another connection can write at once.
        ExecSql("UPDATE tblStockItems SET Trigger = 1 WHERE ItemID = 3");
    }

    void bigFileGivesWhatTheRulesGiveRowByRow() {
        TestData data;
        // Items that exist before the run, with a real supplier beside the no-supplier row.
        struct Item {
            qint64 id;
            QString pno, detail, description, category, location, qty, sell;
            double buy;
        };
        std::map<QString, Item> expected; // by upper-cased part number
        {
            Database db = DBEngine::OpenDatabase(gDbPath);
            db.BeginTrans();
            for (int i = 8, id = 1; i < 3000; i += 10, ++id) {
                const QString pno = QStringLiteral("E%1").arg(i);
                db.Execute(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemName, "
                                          "ItemDescription, Category, Location, Qty, SellAt) "
                                          "VALUES (?, ?, 'OLD', 'old', 'OLDCAT', 'OLDLOC', 1, 1)"),
                           {id, pno});
                db.Execute(QStringLiteral("INSERT INTO tblItemSupplier (ItemID, SupplierID, "
                                          "PriceEach) VALUES (?, 0, 1), (?, 3, 99)"),
                           {id, id});
                expected[pno] = Item{id, pno, "OLD", "old", "OLDCAT", "OLDLOC", "1", "1", 1.0};
            }
            db.CommitTrans();
        }
        qint64 nextId = 300;

        QByteArray csv = "Part,Desc,Qty,Loc,Buy,Cat,Sell,Detail\n";
        QStringList wanted{QString()}; // the top row is left out
        for (int i = 0; i < 3000; ++i) {
            QString pno;
            switch (i % 10) {
            case 6: // a part number earlier in the same file
                pno = QStringLiteral("n%1").arg(i - 6);
                break;
            case 7: // no part number
                pno = QStringLiteral("  ");
                break;
            case 8: // an item that exists
                pno = QStringLiteral("E%1").arg(i);
                break;
            case 9: // an apostrophe, which is removed
                pno = QStringLiteral("Q'%1").arg(i);
                break;
            default:
                pno = QStringLiteral("N%1").arg(i);
            }
            const QString qty = QStringLiteral("%1.25").arg(i % 50);
            const QString buy = QStringLiteral("%1.123456").arg(i % 13);
            const QString sell = QStringLiteral("%1.5").arg(i % 17);
            const QString detail = QStringLiteral("detail %1 ").arg(i).repeated(i % 3 * 2 + 1);
            const QString fields[] = {pno,  QStringLiteral("Desc 'x' %1").arg(i),
                                      qty,  QStringLiteral("Bin %1").arg(i % 40),
                                      buy,  QStringLiteral("cat%1").arg(i % 5),
                                      sell, detail};
            csv += QStringList(std::begin(fields), std::end(fields)).join(',').toUtf8() + '\n';

            // The rules, row by row.
            const QString key = QString(pno).remove('\'').trimmed();
            if (key.isEmpty()) {
                wanted << QStringLiteral("FAILED");
                continue;
            }
            Item v{0,
                   key,
                   detail.toUpper(),
                   QStringLiteral("Desc x %1").arg(i),
                   QStringLiteral("CAT%1").arg(i % 5),
                   QStringLiteral("Bin %1").arg(i % 40),
                   FormatNumber(qty, "0.0#"),
                   FormatNumber(sell, "0.00###"),
                   buy.toDouble()};
            auto found = expected.find(key.toUpper());
            if (found == expected.end()) {
                v.id = ++nextId;
                expected[key.toUpper()] = v;
                wanted << QStringLiteral("DONE_OK");
            } else {
                v.id = found->second.id;
                v.pno = found->second.pno;
                v.detail = v.detail.left(49);
                found->second = v;
                wanted << QStringLiteral("UPDATED");
            }
        }
        FlexCells grid;
        read(data, grid, csv);
        QCOMPARE(grid.Rows(), 3002);
        ImportCsvInput in = AllColumns();
        in.Check1 = true;
        in.Check2 = true;
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        const ImportCsvResult r = ImportCsv(in, grid);
        QCOMPARE(statuses(grid), wanted);
        const int failed = int(wanted.count(QStringLiteral("FAILED")));
        QCOMPARE(r.ignored, failed);
        QCOMPARE(r.imported, 3000 - failed);
        QCOMPARE(boxes.prompts(), QStringList({summary(3000 - failed, failed)}));

        Database db = DBEngine::OpenDatabase(gDbPath);
        Recordset rs = db.OpenRecordset(QStringLiteral(
            "SELECT s.ItemID, MasterPNo, ItemName, ItemDescription, Category, Location, Qty, "
            "SellAt, PriceEach FROM tblStockItems s LEFT JOIN tblItemSupplier p ON p.ItemID = "
            "s.ItemID AND p.SupplierID = 0 ORDER BY s.ItemID"));
        int rows = 0;
        for (; !rs.Eof(); rs.MoveNext(), ++rows) {
            const QString pno = rs.Fields(1).Text();
            const auto it = expected.find(pno.toUpper());
            QVERIFY2(it != expected.end(), qPrintable(pno));
            const Item& v = it->second;
            const QString got = QStringList{rs.Fields(0).Text(),
                                            pno,
                                            rs.Fields(2).Text(),
                                            rs.Fields(3).Text(),
                                            rs.Fields(4).Text(),
                                            rs.Fields(5).Text(),
                                            FormatNumber(rs.Fields(6).Double(), "0.0#"),
                                            FormatNumber(rs.Fields(7).Double(), "0.00###"),
                                            QString::number(rs.Fields(8).Double(), 'f', 5)}
                                    .join('|');
            const QString want = QStringList{QString::number(v.id),
                                             v.pno,
                                             v.detail,
                                             v.description,
                                             v.category,
                                             v.location,
                                             v.qty,
                                             v.sell,
                                             QString::number(v.buy, 'f', 5)}
                                     .join('|');
            QCOMPARE(got, want);
        }
        QCOMPARE(rows, int(expected.size()));
        // One no-supplier row per item, and the real suppliers of the old items kept.
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemSupplier WHERE SupplierID = 0"),
                 QString::number(expected.size()));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemSupplier WHERE SupplierID = 3 AND "
                          "PriceEach = 99"),
                 QStringLiteral("300"));
    }
};

QTEST_GUILESS_MAIN(TestImportCsv)
#include "test_importcsv.moc"
