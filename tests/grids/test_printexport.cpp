// Grids printed as listings on the recording printer and exported as CSV files.
#include "foundation/Clock.h"
#include "foundation/Printer.h"
#include "grids/ExportGridCsv.h"
#include "grids/PrintGrid.h"
#include "tests/grids/MemoryGrid.h"
#include "tests/support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// On the recording printer at 8 points a character is 96 twips wide and a line 192 twips high.
// A4 portrait is 11906 x 16838 twips: margin 1191, header at 1178.66, "Page" at 10715.4.
namespace {

const QString kHeadingPrompt =
    QStringLiteral("You may enter a Document Heading if you wish\n\nThe document heading appears "
                   "at the top of each sheet and is intended to describe the document and its "
                   "contents");
const QString kTooWide =
    QStringLiteral("The document width is too wide for Portrait. Do you wish to use Landscape?");

// Part No 1440, a hidden column, Description 2400, Qty 720: marks 1191, 2631, 2631, 5031, 5751.
MemoryGrid StockGrid() {
    MemoryGrid g;
    g.addColumn(QStringLiteral("Part No"), 1440);
    g.addColumn(QStringLiteral("Secret"), 1000, false);
    g.addColumn(QStringLiteral("Description of the item"), 2400);
    g.addColumn(QStringLiteral("Quantity"), 720);
    return g;
}

const QString kSavedTail = QStringLiteral(
    "\n\nCSV files are compatible with Microsoft Excel and many other programs. You can open the "
    "file using MS Excel. However, if you use Excel to create and add formulas then you should "
    "save the file afterwards as an XLS filetype to keep your formulas intact.");
const QString kFileError = QStringLiteral(
    "There was an error. The file could not be created/saved. If the file already exists it may "
    "be open by you or another user");

QByteArray ReadAll(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return "<missing>";
    return f.readAll();
}

// Grouped by supplier: two group rows, three detail rows, a hidden column in the middle.
MemoryGrid GroupedGrid() {
    MemoryGrid g;
    g.addColumn(QStringLiteral("Part No"), 1440);
    g.addColumn(QStringLiteral("ItemID"), 0, false);
    g.addColumn(QStringLiteral("Description"), 2400);
    g.addColumn(QStringLiteral("Price"), 900);
    g.addRow({"Supplier: Acme, Ltd", "", "", ""}, 1);
    g.addRow({"A-1", "17", "Bolt, M6", "1,200.00"});
    g.addRow({"A-2", "18", "Say \"hi\"", "3.50"});
    g.addRow({"Supplier: Brix", "", "", ""}, 1);
    g.addRow({"B-1", "19", "", "0"});
    return g;
}

} // namespace

class TestPrintExport : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        UseTestLocale();
        SetToday(QDate(2026, 11, 23));
    }

    void portraitListingPositionsAndFonts() {
        auto p = UseRecordingPrinter();
        MemoryGrid g = StockGrid();
        g.addRow({"A-100", "x", "Widget, large blue", "5"});
        g.addRow({"B-7", "x", "Stainless steel bolt M6x40 pack", "12.5"});
        ScriptedBoxes boxes;
        boxes.answerInput(QStringLiteral("Stock List"));
        QVERIFY(PrintGrid(g, 0));
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown()[0].prompt, kHeadingPrompt);
        QCOMPARE(boxes.shown()[0].title, QStringLiteral("Heading"));
        QCOMPARE(p->Orientation(), int(vbPRORPortrait));

        // The hidden column is neither captioned nor printed; captions are cut to the column;
        // rows start two lines under the captions at a whole twip; the long text wraps.
        QCOMPARE(
            PlacedTexts(*p),
            QStringList({"23/11/2026  Stock List@1191,1178.66", "Page 1@10715.4,1178.66",
                         "Part No@1191,1562.66", "Description of the i@2631,1562.66",
                         "Quanti@5031,1562.66", "A-100@1191,1947", "Widget, large blue@2631,1947",
                         "5@5031,1947", "B-7@1191,2139", "Stainless steel @2631,2139",
                         "bolt M6x40 pack@2631,2331", "12.5@5031,2139"}));
        for (const PrintCall& c : p->Calls(PrintCall::Text))
            QVERIFY(c.fontName == QStringLiteral("Arial") && c.fontSize == 8.0);

        // Rules under the date line, above and under the captions, and under each row at the
        // lowest line it reached, from the margin to the last mark.
        QStringList lines;
        for (const PrintCall& c : p->Calls(PrintCall::Line))
            lines << QStringLiteral("%1,%2-%3,%4").arg(c.x).arg(c.y).arg(c.x2).arg(c.y2);
        QCOMPARE(lines, QStringList({"1191,1370.66-5751,1370.66", "1191,1562.66-5751,1562.66",
                                     "1191,1754.66-5751,1754.66", "1191,2139-5751,2139",
                                     "1191,2523-5751,2523"}));
        QCOMPARE(p->Calls().last().kind, PrintCall::EndDoc);
        QCOMPARE(p->Documents(), 1);
    }

    void newSheetOnlyBelowTheEightyPercentLine() {
        // 19200 twips high: rows start at 2112 and row 69 ends at 15360, exactly 80%, so the
        // sheet ends after row 70.
        auto p = std::make_shared<RecordingPrinter>(QStringLiteral("Tall"), 11906, 19200);
        SetPrinters({p});
        MemoryGrid g = StockGrid();
        for (int i = 1; i <= 72; ++i)
            g.addRow({QStringLiteral("P%1").arg(i), "", "", ""});
        ScriptedBoxes boxes;
        boxes.answerInput(QStringLiteral("Stock"));
        QVERIFY(PrintGrid(g, 0));
        QCOMPARE(p->Calls(PrintCall::NewPage).size(), 1);
        QCOMPARE(PlacedTexts(*p, 1).last(), QStringLiteral("P70@1191,15360"));
        // The whole header again on the new sheet, with the next number.
        QCOMPARE(PlacedTexts(*p, 2),
                 QStringList({"23/11/2026  Stock@1191,1344", "Page 2@10715.4,1344",
                              "Part No@1191,1728", "Description of the i@2631,1728",
                              "Quanti@5031,1728", "P71@1191,2112", "P72@1191,2304"}));
        QCOMPARE(p->Documents(), 1);
    }

    void landscapeListing() {
        auto p = UseRecordingPrinter();
        MemoryGrid g = StockGrid();
        g.addRow({"A-100", "", "Widget", "5"});
        ScriptedBoxes boxes;
        boxes.cancelInput();
        QVERIFY(PrintGrid(g, 1));
        QCOMPARE(p->Orientation(), int(vbPRORLandscape));
        // The margin was measured on the portrait sheet; the page number on the landscape one.
        QCOMPARE(PlacedTexts(*p).mid(0, 6),
                 QStringList({"23/11/2026  @1191,833.42", "Page 1@15154.2,833.42",
                              "Part No@1191,1217.42", "Description of the i@2631,1217.42",
                              "Quanti@5031,1217.42", "A-100@1191,1601"}));
        QCOMPARE(p->Calls(PrintCall::Text)[1].orientation, int(vbPRORLandscape));

        // Printed again in Portrait, the margin comes from the landscape sheet left behind; a
        // one-character heading counts as none.
        p->Clear();
        boxes.answerInput(QStringLiteral("X"));
        QVERIFY(PrintGrid(g, 0));
        QCOMPARE(PlacedTexts(*p).mid(0, 2),
                 QStringList({"23/11/2026  @1684,1178.66", "Page 1@10715.4,1178.66"}));
    }

    void widthQuestionAtTheBoundary() {
        auto p = UseRecordingPrinter();
        ScriptedBoxes boxes;
        // The room in Portrait is 11906 - 1191 = 10715 twips.
        MemoryGrid fits;
        fits.addColumn(QStringLiteral("A"), 10714);
        boxes.answerInput(QString());
        QVERIFY(PrintGrid(fits, 0));
        QVERIFY(boxes.prompts().isEmpty());
        QCOMPARE(p->Orientation(), int(vbPRORPortrait));

        MemoryGrid exact;
        exact.addColumn(QStringLiteral("A"), 5000);
        exact.addColumn(QStringLiteral("B"), 5715);
        exact.addRow({"a", "b"});
        boxes.answer(vbYes);
        boxes.answerInput(QString());
        QVERIFY(PrintGrid(exact, 0));
        QCOMPARE(boxes.prompts(), QStringList{kTooWide});
        QCOMPARE(boxes.shown()[1].title, QStringLiteral("Print"));
        QCOMPARE(boxes.shown()[1].flags, vbYesNoCancel + vbInformation);
        QCOMPARE(p->Orientation(), int(vbPRORLandscape));

        // No: printed in Portrait, not rescaled, running past the sheet's right edge.
        p->SetOrientation(vbPRORPortrait);
        p->Clear();
        boxes.answer(vbNo);
        boxes.answerInput(QString());
        QVERIFY(PrintGrid(exact, 0));
        QCOMPARE(p->Orientation(), int(vbPRORPortrait));
        QCOMPARE(p->Calls(PrintCall::Line).first().x2, 1191.0 + 10715);
        // Landscape wanted: too wide or not, no question.
        boxes.clear();
        boxes.answerInput(QString());
        QVERIFY(PrintGrid(exact, 1));
        QVERIFY(boxes.prompts().isEmpty());
        QCOMPARE(p->Orientation(), int(vbPRORLandscape));
    }

    void groupRowsAndEmptyGrids() {
        auto p = UseRecordingPrinter();
        MemoryGrid g = StockGrid();
        g.addRow({"Acme Ltd", "", "", ""}, 1);
        g.addRow({"A-1", "", "", "3"});
        ScriptedBoxes boxes;
        boxes.answerInput(QString());
        QVERIFY(PrintGrid(g, 0));
        // The group row prints as a row; its empty cells still take their line.
        QCOMPARE(PlacedTexts(*p).mid(5),
                 QStringList({"Acme Ltd@1191,1947", "A-1@1191,2139", "3@5031,2139"}));

        p->Clear();
        MemoryGrid empty = StockGrid();
        boxes.answerInput(QString());
        QVERIFY(PrintGrid(empty, 0));
        QCOMPARE(p->Texts(), (QStringList{"23/11/2026  ", "Page 1", "Part No",
                                          "Description of the i", "Quanti"}));
        QCOMPARE(p->Calls(PrintCall::Line).size(), 3);
        QCOMPARE(p->Documents(), 1);
    }

    void cellWrapping() {
        auto p = UseRecordingPrinter();
        p->SetFontSize(8);
        gPrintMaxY = 0;
        PrintCellWrapped(QStringLiteral("abcdefgh"), 4, 300, 1000);
        QCOMPARE(PlacedTexts(*p), QStringList({"abcde@300,1000", "fgh@300,1192"}));
        QCOMPARE(gPrintMaxY, 1384L);

        // Break characters end their line; the last one inside the window wins.
        p->Clear();
        PrintCellWrapped(QStringLiteral("ab-cd/ef,gh ij"), 4, 0, 0);
        QCOMPARE(p->Texts(), (QStringList{"ab-", "cd/", "ef,", "gh ij"}));
        p->Clear();
        PrintCellWrapped(QStringLiteral("a b c defghijk"), 5, 0, 0);
        QCOMPARE(p->Texts(), (QStringList{"a b ", "c ", "defghi", "jk"}));

        // A break leaving exactly one character loses it.
        p->Clear();
        PrintCellWrapped(QStringLiteral("abcdef"), 4, 0, 0);
        QCOMPARE(p->Texts(), QStringList{"abcde"});

        // An empty cell prints an empty line; a lower cell never lowers gPrintMaxY.
        p->Clear();
        gPrintMaxY = 5000;
        PrintCellWrapped(QString(), 4, 0, 2000);
        QVERIFY(p->Texts().isEmpty());
        QCOMPARE(p->CurrentY(), 2192.0);
        QCOMPARE(gPrintMaxY, 5000L);
        PrintCellWrapped(QString(), 4, 0, 6000);
        QCOMPARE(gPrintMaxY, 6192L);
    }

    // A grid not fully loaded is loaded first; group rows give an empty line.
    void groupedEmptyAndHiddenGridBytes() {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("stock.csv"));
        MemoryGrid g = GroupedGrid();
        g.fullyLoaded = false;
        g.loadedRows = 2;
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QVERIFY(WriteGridCsv(g, file));
        QCOMPARE(g.loadCalls, 1);
        QCOMPARE(ReadAll(file), QByteArray("Part No,Description,Price,\r\n"
                                           "\r\n"
                                           "A-1,Bolt. M6,1.200.00,\r\n"
                                           "A-2,Say \"hi\",3.50,\r\n"
                                           "B-1,,0,\r\n"));
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown()[0].title + boxes.shown()[0].prompt,
                 "SavedThe file was saved with the name '" + file + kSavedTail);

        MemoryGrid empty = GroupedGrid();
        empty.rows.clear();
        empty.groupLevels.clear();
        boxes.answer(vbOK);
        QVERIFY(WriteGridCsv(empty, file));
        QCOMPARE(ReadAll(file), QByteArray("Part No,Description,Price,\r\n\r\n"));
        // No visible column: an empty line per detail row, none for the group rows.
        MemoryGrid hidden = GroupedGrid();
        for (MemoryGrid::Column& c : hidden.columns)
            c.visible = false;
        boxes.answer(vbOK);
        QVERIFY(WriteGridCsv(hidden, file));
        QCOMPARE(ReadAll(file), QByteArray("\r\n\r\n\r\n\r\n\r\n"));
        QVERIFY(boxes.allAnswersUsed());
    }

    void unwritableTargets() {
        QTemporaryDir dir;
        MemoryGrid g = GroupedGrid();
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QVERIFY(!WriteGridCsv(g, dir.filePath(QStringLiteral("missing/folder/x.csv"))));
        boxes.answer(vbOK);
        QVERIFY(!WriteGridCsv(g, dir.path()));
        for (const ShownBox& b : boxes.shown())
            QCOMPARE(b.title + ": " + b.prompt, "File Error: " + kFileError);
        QCOMPARE(boxes.shown().size(), 2);
        QVERIFY(!QFileInfo::exists(dir.filePath(QStringLiteral("missing"))));
    }

    void saveDialogKeepsTheLastName() {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("kept.csv"));
        SetExportFileName(QString());
        MemoryGrid g = GroupedGrid();
        ScriptedBoxes boxes;
        // Cancelled with no name ever chosen: nothing written, nothing said.
        boxes.answerFile(QString());
        ExportGridCsv(g);
        QCOMPARE(boxes.shown().size(), 1);
        boxes.answerFile(file);
        boxes.answer(vbOK);
        ExportGridCsv(g);
        // Cancelled after an export: the same file is written again.
        g.rows[1][0] = QStringLiteral("Z-9");
        boxes.answerFile(QString());
        boxes.answer(vbOK);
        ExportGridCsv(g);
        QVERIFY(ReadAll(file).contains("Z-9,Bolt. M6"));
        QCOMPARE(boxes.prompts().size(), 2);
        QVERIFY(boxes.allAnswersUsed());
    }
};

QTEST_GUILESS_MAIN(TestPrintExport)
#include "test_printexport.moc"
