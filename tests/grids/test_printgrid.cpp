#include "foundation/Clock.h"
#include "foundation/Printer.h"
#include "grids/PrintGrid.h"
#include "tests/grids/MemoryGrid.h"
#include "tests/support/TestSupport.h"

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

QList<PrintCall> TextsOnPage(const RecordingPrinter& p, int page) {
    QList<PrintCall> out;
    for (const PrintCall& c : p.Calls(PrintCall::Text))
        if (c.page == page)
            out.append(c);
    return out;
}

struct Placed {
    const char* text;
    double x;
    double y;
};

void ExpectTexts(const QList<PrintCall>& calls, const QList<Placed>& expected) {
    QCOMPARE(calls.size(), expected.size());
    for (int i = 0; i < calls.size(); ++i) {
        QCOMPARE(calls[i].text, QString::fromUtf8(expected[i].text));
        QCOMPARE(calls[i].x, expected[i].x);
        QCOMPARE(calls[i].y, expected[i].y);
    }
}

} // namespace

class TestPrintGrid : public QObject {
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
        const double top = 16838 * 0.07, captionY = top + 2 * 192;
        ExpectTexts(p->Calls(PrintCall::Text), {{"23/11/2026  Stock List", 1191, top},
                                                {"Page 1", 11906 * 0.9, top},
                                                {"Part No", 1191, captionY},
                                                {"Description of the i", 2631, captionY},
                                                {"Quanti", 5031, captionY},
                                                {"A-100", 1191, 1947},
                                                {"Widget, large blue", 2631, 1947},
                                                {"5", 5031, 1947},
                                                {"B-7", 1191, 2139},
                                                {"Stainless steel ", 2631, 2139},
                                                {"bolt M6x40 pack", 2631, 2331},
                                                {"12.5", 5031, 2139}});
        for (const PrintCall& c : p->Calls(PrintCall::Text))
            QVERIFY(c.fontName == QStringLiteral("Arial") && c.fontSize == 8.0);

        // Rules under the date line, above and under the captions, and under each row at the
        // lowest line it reached, from the margin to the last mark.
        const QList<PrintCall> lines = p->Calls(PrintCall::Line);
        const QList<double> ys{top + 192, captionY, captionY + 192, 2139, 2523};
        QCOMPARE(lines.size(), ys.size());
        for (int i = 0; i < lines.size(); ++i) {
            QCOMPARE(lines[i].x, 1191.0);
            QCOMPARE(lines[i].x2, 5751.0);
            QCOMPARE(lines[i].y, ys[i]);
            QCOMPARE(lines[i].y2, ys[i]);
        }
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
        const QList<PrintCall> first = TextsOnPage(*p, 1);
        QCOMPARE(first.last().text, QStringLiteral("P70"));
        QCOMPARE(first.last().y, 2112.0 + 69 * 192);
        // The whole header again on the new sheet, with the next number.
        ExpectTexts(TextsOnPage(*p, 2).mid(0, 6), {{"23/11/2026  Stock", 1191, 1344},
                                                   {"Page 2", 11906 * 0.9, 1344},
                                                   {"Part No", 1191, 1728},
                                                   {"Description of the i", 2631, 1728},
                                                   {"Quanti", 5031, 1728},
                                                   {"P71", 1191, 2112}});
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
        const QList<PrintCall> t = p->Calls(PrintCall::Text);
        // The margin was measured on the portrait sheet; the page number on the landscape one.
        QCOMPARE(t[0].text, QStringLiteral("23/11/2026  "));
        QCOMPARE(t[0].x, 1191.0);
        QCOMPARE(t[0].y, 11906 * 0.07);
        QCOMPARE(t[1].x, 16838 * 0.9);
        QCOMPARE(t[1].orientation, int(vbPRORLandscape));
        QCOMPARE(t[5].text, QStringLiteral("A-100"));
        QCOMPARE(t[5].y, double(qRound(11906 * 0.07 + 4 * 192)));

        // Printed again in Portrait, the margin comes from the landscape sheet left behind.
        p->Clear();
        boxes.answerInput(QStringLiteral("X"));
        QVERIFY(PrintGrid(g, 0));
        QCOMPARE(p->Orientation(), int(vbPRORPortrait));
        const QList<PrintCall> t2 = p->Calls(PrintCall::Text);
        // A one-character heading counts as none.
        QCOMPARE(t2[0].text, QStringLiteral("23/11/2026  "));
        QCOMPARE(t2[0].x, 1684.0);
        QCOMPARE(t2[1].x, 11906 * 0.9);
        QCOMPARE(p->Calls(PrintCall::Line).first().x2, 1684.0 + 1440 + 2400 + 720);
    }

    void widthQuestionAtTheBoundary() {
        auto p = UseRecordingPrinter();
        // The room in Portrait is 11906 - 1191 = 10715 twips.
        MemoryGrid fits;
        fits.addColumn(QStringLiteral("A"), 10714);
        {
            ScriptedBoxes boxes;
            boxes.answerInput(QString());
            QVERIFY(PrintGrid(fits, 0));
            QVERIFY(boxes.prompts(ShownBox::Message).isEmpty());
            QCOMPARE(p->Orientation(), int(vbPRORPortrait));
        }
        MemoryGrid exact;
        exact.addColumn(QStringLiteral("A"), 5000);
        exact.addColumn(QStringLiteral("B"), 5715);
        exact.addRow({"a", "b"});
        {
            ScriptedBoxes boxes;
            boxes.answer(vbYes);
            boxes.answerInput(QString());
            QVERIFY(PrintGrid(exact, 0));
            QCOMPARE(boxes.shown()[0].prompt, kTooWide);
            QCOMPARE(boxes.shown()[0].title, QStringLiteral("Print"));
            QCOMPARE(boxes.shown()[0].flags, vbYesNoCancel + vbInformation);
            QCOMPARE(p->Orientation(), int(vbPRORLandscape));
        }
        {
            ScriptedBoxes boxes;
            p->SetOrientation(vbPRORPortrait);
            p->Clear();
            boxes.answer(vbNo);
            boxes.answerInput(QString());
            QVERIFY(PrintGrid(exact, 0));
            QCOMPARE(p->Orientation(), int(vbPRORPortrait));
            // Not rescaled: the listing runs past the sheet's right edge.
            QCOMPARE(p->Calls(PrintCall::Line).first().x2, 1191.0 + 10715);
        }
        {
            // Cancel: no heading question, nothing printed, the orientation as it was.
            p->Clear();
            ScriptedBoxes boxes;
            boxes.answer(vbCancel);
            QVERIFY(!PrintGrid(exact, 0));
            QCOMPARE(boxes.shown().size(), 1);
            QVERIFY(p->Calls().isEmpty());
            QCOMPARE(p->Orientation(), int(vbPRORPortrait));
        }
        {
            // Landscape wanted: too wide or not, no question.
            ScriptedBoxes boxes;
            boxes.answerInput(QString());
            QVERIFY(PrintGrid(exact, 1));
            QVERIFY(boxes.prompts(ShownBox::Message).isEmpty());
            QCOMPARE(p->Orientation(), int(vbPRORLandscape));
        }
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
        const QList<PrintCall> t = p->Calls(PrintCall::Text);
        QCOMPARE(t[5].text, QStringLiteral("Acme Ltd"));
        QCOMPARE(t[6].text, QStringLiteral("A-1"));
        QCOMPARE(t[6].y, 1947.0 + 192);
        QCOMPARE(g.rowsVisited, (QList<int>{1, 2}));

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
        QCOMPARE(p->Texts(), (QStringList{"abcde", "fgh"}));
        QCOMPARE(p->Calls(PrintCall::Text)[1].x, 300.0);
        QCOMPARE(p->Calls(PrintCall::Text)[1].y, 1192.0);
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
};

QTEST_GUILESS_MAIN(TestPrintGrid)
#include "test_printgrid.moc"
