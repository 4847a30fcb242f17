// The CSV import without a window: the parser, the grid, the rows as items, what a failure leaves,
// and two workstations importing at once.
#include "foundation/Helpers.h"
#include "tests/maintenance/MaintenanceFixture.h"

#include <QFileInfo>
#include <QSize>
#include <QTextStream>
#include <QThread>

namespace {

QString Summary(int imported, int ignored) {
    return QStringLiteral("%1 records were imported successfully\n\n%2 duplicate or invalid "
                          "records were ignored\n\nThe data grid now shows the status of each "
                          "record")
        .arg(imported)
        .arg(ignored);
}

// The stock row of a part number, its columns joined by "|", then a supplier row after another
// "|" each as "SupplierID/SupplierPNo/PrimeSupplier/PriceEach"; "<none>" without a stock row.
QString Stock(const QString& pno) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    QStringList out;
    for (Recordset rs = db.OpenRecordset(
             QStringLiteral("SELECT s.ItemID, MasterPNo, ItemName, ItemDescription, Category, "
                            "Location, Qty, Trigger, SellAt, AllowDiscount, AllocQty, OnOrderQty, "
                            "BuyNow, SupplierID, SupplierPNo, PrimeSupplier, PriceEach FROM "
                            "tblStockItems s LEFT JOIN tblItemSupplier p ON p.ItemID = s.ItemID "
                            "WHERE MasterPNo = ? ORDER BY SupplierID"),
             {pno});
         !rs.Eof(); rs.MoveNext()) {
        QStringList cells;
        for (int i = 0; i < rs.FieldCount(); ++i)
            cells << rs.Fields(i).Text();
        if (out.isEmpty())
            out << cells.mid(0, 13);
        out << cells.mid(13).join(QLatin1Char('/'));
    }
    return out.isEmpty() ? QStringLiteral("<none>") : out.join(QLatin1Char('|'));
}

// Column 0 of rows 1 to the last.
QStringList Statuses(const FlexCells& g) {
    QStringList out;
    for (int r = 1; r < g.Rows(); ++r)
        out << g.TextMatrix(r, 0);
    return out;
}

void Read(FlexCells& grid, const QByteArray& csv) {
    QVERIFY(ReadCsv(WriteFile(gAppPath + QStringLiteral("/in.csv"), csv), grid));
}

// Reads `csv` and imports it, answering the closing box; the statuses.
QStringList Import(const ImportCsvInput& in, const QByteArray& csv, ScriptedBoxes& boxes,
                   const ImportCsvProgress& progress = {}) {
    FlexCells grid;
    Read(grid, csv);
    boxes.clear();
    boxes.answer(vbOK);
    ImportCsv(in, grid, progress);
    return Statuses(grid);
}

} // namespace

// The second workstation: imports one file into the data folder once a start file appears, in
// batches of the given length, and prints each row's status on a line of its own.
int SecondWorkstation(const QStringList& args) { // folder csv start batchMs
    SetDataFolder(args.value(0));
    FlexCells grid;
    if (!ReadCsv(args.value(1), grid))
        return 3;
    for (int waited = 0; !QFileInfo::exists(args.value(2)); waited += 2) {
        if (waited > 20000)
            return 4;
        QThread::msleep(2);
    }
    ImportCsvInput in = AllColumns();
    in.batchMs = args.value(3).toInt();
    ImportCsv(in, grid); // the closing box is answered by the silent default
    QTextStream(stdout) << Statuses(grid).join(QLatin1Char('\n'));
    return 0;
}

class TestImportCsv : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    void linesSplitIntoTheGridAndTheBoxes() {
        QCOMPARE(SplitCsvLine("a,\"b,c\",d"), QStringList({"a", "b,c", "d"}));
        QCOMPARE(SplitCsvLine("\"say \"\"hi\"\"\",x"), QStringList({"say \"hi\"", "x"}));
        QCOMPARE(SplitCsvLine(QString()), QStringList({""})); // an empty line: one empty cell
        // A quote left open keeps every later comma: that tail is never shown, and at the start
        // of a line it leaves nothing at all.
        QCOMPARE(SplitCsvLine("a,\"b,c,d"), QStringList({"a"}));
        QCOMPARE(SplitCsvLine("\"b,c,d"), QStringList());
        // A quote that closes a stretch does not open the next one; a quote inside a stretch that
        // no comma follows stays.
        QCOMPARE(SplitCsvLine("\"a\"b\",c"), QStringList({"a\"b", "c"}));
        // No marker character: a "ÿ" is text like any other.
        QCOMPARE(SplitCsvLine("x\u00ff,\"\u00ff,y\""), QStringList({"x\u00ff", "\u00ff,y"}));
        QCOMPARE(DecodeCsvText("\xEF\xBB\xBFK\xC3\xBChl"), QStringLiteral("K\u00fchl"));
        QCOMPARE(DecodeCsvText("Caf\xE9 \x80"), QStringLiteral("Caf\u00e9 €"));

        TestData data;
        FlexCells grid;
        Read(grid, "PNo,Desc,Qty\r\nA1,\"Bolt, M3\",5\n\n\"open,never "
                   "shown\rB2,x\r\nC3,y,z,w,Caf\xE9\nD4");
        // The open quote's line is left out; the widest line has five cells, one empty column
        // follows.
        QStringList rows;
        for (int r = 0; r < grid.Rows(); ++r) {
            QStringList cells;
            for (int c = 0; c < grid.Cols(); ++c)
                cells << grid.TextMatrix(r, c);
            rows << cells.join(QLatin1Char('|'));
        }
        QCOMPARE(rows, QStringList({"|1|2|3|4|5|6", "|PNo|Desc|Qty|||", "|A1|Bolt, M3|5|||",
                                    "||||||", "|B2|x||||", "|C3|y|z|w|Caf\u00e9|", "|D4|||||"}));
        QCOMPARE(ImportComboEntries(grid.Cols(), 0).last(), QStringLiteral("Column 6"));
        QCOMPARE(ImportComboEntries(3, 5).first(), QStringLiteral("Ignore     "));
        // The next file starts afresh.
        grid.SetTextMatrix(1, 0, QStringLiteral("DONE_OK"));
        Read(grid, "x,y\n");
        QCOMPARE(QSize(grid.Cols(), grid.Rows()), QSize(4, 2));
        QCOMPARE(grid.TextMatrix(1, 0) + grid.TextMatrix(1, 3), QString());
    }

    void newRowsTakeDefaultsMasksAndNumbersInFileOrder() {
        TestData data;
        ScriptedBoxes boxes;
        ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo) VALUES (9, 'OLD-9'), (5, 'OLD-5')");
        ImportCsvInput in = AllColumns();
        in.Check1 = true; // the top row is left out
        QCOMPARE(Import(in,
                        "Part,Desc,Qty,Loc,Buy,Cat,Sell,Detail\n"
                        " A'1 ,Widget 'big',2.346,Shelf 1,1.234567,res,3.14159,metal film\n"
                        " ,no part,1,,,,,\n"
                        "B2,Bolt,\"1,000.5\",,,as,,\n"
                        "DONE_OK,x,,,,,,\n",
                        boxes),
                 QStringList({"", "DONE_OK", "FAILED", "DONE_OK", "FAILED"}));
        QCOMPARE(boxes.prompts(), QStringList({Summary(2, 2)}));
        QCOMPARE(Stock("A1"),
                 QStringLiteral("10|A1|METAL FILM|Widget big|RES|Shelf 1|2.35|0|3.14159|0|0|0|0|"
                                "0//0/1.23457"));
        // A chosen column with an empty cell gives an empty text and 0, not the defaults.
        QCOMPARE(Stock("B2"), QStringLiteral("11|B2||Bolt|AS||1000.5|0|0|0|0|0|0|0//0/0"));
        // Only the part number chosen: the defaults. "Column 1" in Combo2 is its first entry and
        // so no choice: the description stays empty.
        ImportCsvInput few;
        few.Combo1 = Pick(2, false);
        few.Combo2 = Pick(1, false);
        Import(few, "Desc first,E5\n", boxes);
        QCOMPARE(Stock("E5"), QStringLiteral("12|E5|||NEW|UNKNOWN|0|0|0|0|0|0|0|0//0/0"));
        // A decimal comma: numbers are read with the locale and written with ".".
        LocaleScope german{QLocale(QLocale::German, QLocale::Germany)};
        Import(AllColumns(), "F6,x,\"2,5\",,\"1.234,5\",,\"0,125\",\n", boxes);
        QCOMPARE(Stock("F6"), QStringLiteral("13|F6||x|||2.5|0|0.125|0|0|0|0|0//0/1234.5"));
    }

    void checksStopTheRunBeforeAnyRow() {
        TestData data;
        ScriptedBoxes boxes;
        const QString same =
            QStringLiteral("The Description and Part number columns can not be the same");
        ImportCsvInput locOnPart = AllColumns();
        locOnPart.Combo4 = Pick(1);
        const std::pair<ImportCsvInput, QString> cases[] = {
            {ImportCsvInput{}, same}, // nothing chosen: both texts are empty and so the same
            {locOnPart, "Each column must be unique. Two fields can not import the same column "
                        "data"}};
        for (const auto& [in, message] : cases) {
            QCOMPARE(Import(in, "P1,D1,1,L1,1,C,1,X\n", boxes), QStringList{""});
            QCOMPARE(boxes.prompts(), QStringList({message}));
        }
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblStockItems"), QStringLiteral("0"));
    }

    void secondRunIsDuplicatesUnlessOverwriteUpdatesChosenFields() {
        TestData data;
        ScriptedBoxes boxes;
        const QByteArray csv = "P1,Desc one,1,L1,1.5,cat,2.5,det one\n"
                               "P2,Desc two,2,L2,2.5,cat,3.5,det two\n";
        Import(AllColumns(), csv, boxes);
        ExecSql("INSERT INTO tblItemSupplier (ItemID, SupplierID, SupplierPNo, PrimeSupplier, "
                "PriceEach) VALUES (2, 7, 'S-2', 1, 9)");
        const QString p1 = Stock("P1");
        QCOMPARE(Import(AllColumns(), csv, boxes), QStringList({"FAILED", "FAILED"}));
        QCOMPARE(boxes.prompts(), QStringList({Summary(0, 2)}));
        QCOMPARE(Stock("P1"), p1);

        // With overwrite, only the chosen fields change: quantity, sell price, detail (cut to 49)
        // and the buy price of the no-supplier row. The part number matches without case.
        const QString detail = QString(60, QLatin1Char('d'));
        ImportCsvInput in;
        in.Combo1 = Pick(1, false);
        in.Combo3 = Pick(3);
        in.Combo9 = Pick(5);
        in.Combo11 = Pick(7);
        in.Combo12 = Pick(8);
        in.Check2 = true;
        QCOMPARE(
            Import(in,
                   "P1,New,10,NewLoc,4.25,new,7.5," + detail.toUtf8() + "\np2,O,20,X,5.5,y,8.5,z\n",
                   boxes),
            QStringList({"UPDATED", "UPDATED"}));
        QCOMPARE(boxes.prompts(), QStringList({Summary(2, 0)}));
        QCOMPARE(Stock("P1"), "1|P1|" + detail.toUpper().left(49) +
                                  "|Desc one|CAT|L1|10|0|7.5|0|0|0|0|0//0/4.25");
        QCOMPARE(Stock("P2"), QStringLiteral("2|P2|Z|Desc two|CAT|L2|20|0|8.5|0|0|0|0|0//0/5.5|"
                                             "7/S-2/1/9"));
        // A part number twice in one file: the second row updates the item the first wrote.
        QCOMPARE(Import(in, "P9,a,1,,1\np9,b,2,,3\n", boxes), QStringList({"DONE_OK", "UPDATED"}));
        QCOMPARE(Stock("P9"), QStringLiteral("3|P9|||NEW|UNKNOWN|2|0|0|0|0|0|0|0//0/3"));
        // A quantity changed here leaves no history.
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemHistory"), QStringLiteral("0"));
    }

    void failuresLeaveNothingHalfWritten() {
        TestData data;
        ScriptedBoxes boxes;
        // A supplier row the file refuses: that item's stock row goes with it, and the next item
        // takes the number the failed one would have had.
        ExecSql("CREATE TRIGGER refuse BEFORE INSERT ON tblItemSupplier WHEN NEW.PriceEach = 6.66 "
                "BEGIN SELECT RAISE(ABORT, 'refused'); END");
        QCOMPARE(Import(AllColumns(), "R1,a,,,1\nR2,b,,,6.66\nR3,c,,,2\n", boxes),
                 QStringList({"DONE_OK", "FAILED", "DONE_OK"}));
        QCOMPARE(boxes.prompts(), QStringList({Summary(2, 1)}));
        QCOMPARE(Stock("R2"), QStringLiteral("<none>"));
        QVERIFY(Stock("R3").startsWith(QStringLiteral("2|R3|")));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemSupplier"), QStringLiteral("2"));

        // A batch whose commit fails: its rows are "FAILED" and counted as ignored. Here every row
        // is a batch of its own and the second row's commit fails.
        ImportCsvInput in = AllColumns();
        in.batchMs = 0;
        ImportCsvProgress progress;
        progress.step = [](int row) {
            if (row == 1)
                Database::FailNextStatementContaining(QStringLiteral("COMMIT"));
        };
        QCOMPARE(Import(in, "S1,a\nS2,b\nS3,c\n", boxes, progress),
                 QStringList({"DONE_OK", "FAILED", "DONE_OK"}));
        QCOMPARE(boxes.prompts(), QStringList({Summary(2, 1)}));
        QCOMPARE(Stock("S2"), QStringLiteral("<none>"));
        QVERIFY(Stock("S3").startsWith(QStringLiteral("4|S3|")));

        // An update that fails is not trapped: the rows before it stay committed, the failing
        // row is undone whole, no closing box, and nothing is left open.
        ExecSql("CREATE TRIGGER refuseUpdate BEFORE UPDATE ON tblItemSupplier WHEN "
                "NEW.PriceEach = 6.66 BEGIN SELECT RAISE(ABORT, 'refused'); END");
        in = AllColumns();
        in.Check2 = true;
        FlexCells update;
        Read(update, "R1,a,5,,1.5\nR3,c,6,,6.66\n");
        boxes.clear();
        QVERIFY_THROWS_EXCEPTION(DbError, ImportCsv(in, update));
        QVERIFY(boxes.prompts().isEmpty());
        QCOMPARE(Statuses(update), QStringList({"UPDATED", ""}));
        QCOMPARE(Stock("R1"), QStringLiteral("1|R1||a|||5|0|0|0|0|0|0|0//0/1.5"));
        QCOMPARE(Stock("R3"), QStringLiteral("2|R3||c|||0|0|0|0|0|0|0|0//0/2"));
        ExecSql("UPDATE tblStockItems SET Trigger = 1 WHERE ItemID = 2");
    }

    void twoWorkstationsImportingAtOnceGetTheirOwnNumbers() {
        TestData data;
        const int rows = 5000;
        QByteArray a, b;
        for (int i = 0; i < rows; ++i) {
            a += QStringLiteral("A-%1,first,1,,2.5\n").arg(i).toUtf8();
            b += QStringLiteral("B-%1,second,1,,3.5\n").arg(i).toUtf8();
        }
        // Short batches, so that the two runs take the lock from each other many times.
        const QString start = data.path("go");
        Workstation first({data.folder(), WriteFile(data.path("a.csv"), a), start, "20"});
        Workstation second({data.folder(), WriteFile(data.path("b.csv"), b), start, "20"});
        QVERIFY(first.process.waitForStarted() && second.process.waitForStarted());
        WriteFile(start, "go");
        QCOMPARE(first.Finish(), 0);
        QCOMPARE(second.Finish(), 0);
        for (Workstation* w : {&first, &second})
            QCOMPARE(QString::fromUtf8(w->process.readAllStandardOutput()),
                     QStringList(rows, QStringLiteral("DONE_OK")).join('\n'));
        // Numbers 1 to 10000 with no gap and no item twice; each item with one supplier row that
        // carries its own file's price.
        QCOMPARE(SqlFirst("SELECT count(*) || '/' || min(ItemID) || '/' || max(ItemID) || '/' || "
                          "count(DISTINCT MasterPNo) FROM tblStockItems"),
                 QStringLiteral("10000/1/10000/10000"));
        QCOMPARE(SqlFirst("SELECT count(*) || '/' || count(DISTINCT p.ItemID) FROM tblItemSupplier "
                          "p JOIN tblStockItems s ON s.ItemID = p.ItemID WHERE p.SupplierID = 0 "
                          "AND p.PriceEach = CASE WHEN s.MasterPNo LIKE 'A-%' THEN 2.5 ELSE 3.5 "
                          "END"),
                 QStringLiteral("10000/10000"));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemSupplier"), QStringLiteral("10000"));
    }
};

QS_MAIN_WITH_SECOND_WORKSTATION(TestImportCsv)
#include "test_importcsv.moc"
