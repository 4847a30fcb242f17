// The goods received note on the recording printer: sheets of 13 lines, the header, the rows
// and their crosses, the printer chosen, and a second print.
#include "foundation/Printer.h"
#include "purchasing/GrnDocument.h"
#include "tests/support/TestSupport.h"

#include <QTest>

namespace {

// The marks of an A4 sheet (11906 x 16838 twips), in whole twips.
constexpr double kColItem = 357, kColPart = 952, kColDesc = 3274, kColOrder = 7739, kColRx = 8930,
                 kColNonConf = 10120, kRightEdge = 10715, kInset = 94, kTop = 674, kBottom = 13807;
constexpr double kLine12 = 12 * RecordingPrinter::LineHeightPerPoint;

// `count` rows as the window holds them after booking: part "P<n>", name "Name <n>", ordered
// 10, received n; every row booked except those listed.
GoodsInArray Rows(int count, const QList<int>& notBooked = {}) {
    GoodsInArray a;
    a.rowCount = count;
    a.rows.Redim(GinCol::Count, count);
    for (int r = 1; r <= count; ++r) {
        a.rows(GinCol::RowID, r) = QString::number(100 + r);
        a.rows(GinCol::PNo, r) = QStringLiteral("P%1").arg(r);
        a.rows(GinCol::PName, r) = QStringLiteral("Name %1").arg(r);
        a.rows(GinCol::Desc, r) = QStringLiteral("Description %1").arg(r);
        a.rows(GinCol::OQty, r) = QStringLiteral("10");
        a.rows(GinCol::PQty, r) = QStringLiteral("10");
        a.rows(GinCol::RXd, r) = QString::number(r);
        a.rows(GinCol::StockID, r) = QString::number(r);
        a.rows(GinCol::NConf, r) = notBooked.contains(r) ? QString() : QStringLiteral("Yes");
    }
    return a;
}

GrnInput Input(const GoodsInArray& rows) {
    GrnInput in;
    in.grnNo = QStringLiteral("TRN-77");
    in.grnDate = QStringLiteral("23/11/2026");
    in.supplier = QStringLiteral("Acme");
    in.adviceNo = QStringLiteral("ADV-9");
    in.poid = QStringLiteral("0012");
    in.poNo = QStringLiteral("REF-3");
    in.rows = &rows;
    return in;
}

PrintCall Find(const RecordingPrinter& p, const QString& text, int occurrence = 1) {
    for (const PrintCall& c : p.Calls(PrintCall::Text))
        if (c.text == text && --occurrence == 0)
            return c;
    return PrintCall{};
}

// The texts printed at one mark, in order.
QStringList At(const RecordingPrinter& p, double x, int page = 0) {
    QStringList out;
    for (const PrintCall& c : p.Calls(PrintCall::Text))
        if (c.x == x && (page == 0 || c.page == page))
            out << c.text;
    return out;
}

// Every call of the printer as one line of text: kind, text, position, font.
QStringList Describe(const RecordingPrinter& p) {
    QStringList out;
    for (const PrintCall& c : p.Calls())
        out << QStringLiteral("%1|%2|%3,%4,%5,%6|%7 %8 %9")
                   .arg(c.kind)
                   .arg(c.text)
                   .arg(c.x)
                   .arg(c.y)
                   .arg(c.x2)
                   .arg(c.y2)
                   .arg(c.fontName)
                   .arg(c.fontSize)
                   .arg(c.bold);
    return out;
}

} // namespace

class TestGrnDocument : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    void headerAndRows() {
        auto printer = UseRecordingPrinter();
        GoodsInArray rows = Rows(4, {3});
        rows.rows(GinCol::RXd, 2) = QString(); // not received: not printed
        rows.rows(GinCol::NConf, 2) = QString();
        rows.rows(GinCol::AdvQty, 4) = QStringLiteral("3"); // advised only: printed
        rows.rows(GinCol::RXd, 4) = QStringLiteral("0");
        rows.rows(GinCol::NConf, 4) = QString();
        QVERIFY(PrintGoodsReceivedNote(Input(rows)));
        QCOMPARE(printer->Documents(), 1);
        QVERIFY(printer->Calls(PrintCall::NewPage).isEmpty());

        // Two rows received by Val: one sheet.
        const PrintCall sheet = Find(*printer, QStringLiteral("Sheet:    1  of  1"));
        QCOMPARE(sheet.page, 1);
        QCOMPARE(sheet.x + 18 * 12 * RecordingPrinter::CharWidthPerPoint, kRightEdge - kInset);
        const PrintCall title = Find(*printer, QStringLiteral("GOODS RECEIVED NOTE"));
        QCOMPARE(title.x + 19 * 6 * RecordingPrinter::CharWidthPerPoint,
                 (kColItem + kRightEdge) / 2);
        QVERIFY(title.bold);
        QCOMPARE(title.fontSize, 12.0);
        QVERIFY(title.y > sheet.y);
        QVERIFY(Find(*printer, QStringLiteral("No. TRN-77")).y > title.y);

        // The receipt in Times New Roman 12.
        for (const char* t :
             {"Date of receipt:", "23/11/2026", "Supplier:", "Acme",
              "Supplier's advice note No:", "ADV-9", "Our Order ID: 0012", "Our Order Ref: REF-3",
              "Item", " No.", "Part No.", "Description", " Order", "  Qty", "   Qty", "Received"}) {
            const PrintCall c = Find(*printer, t);
            QVERIFY2(c.page == 1, t);
            QCOMPARE(c.fontName, QStringLiteral("Times New Roman"));
            QCOMPARE(c.fontSize, 12.0);
            QVERIFY(!c.bold);
        }
        QCOMPARE(Find(*printer, "Date of receipt:").x, kColItem + kInset);
        QCOMPARE(Find(*printer, "Our Order ID: 0012").x, kColItem + kInset);
        QCOMPARE(Find(*printer, "Our Order Ref: REF-3").y,
                 Find(*printer, "Our Order ID: 0012").y + kLine12);
        QCOMPARE(Find(*printer, " No.").y, Find(*printer, "Item").y + kLine12);

        // Heads and rows at their marks: the running number, part number, name (not the
        // description), ordered, received; a cross only where the row was not booked.
        QCOMPARE(At(*printer, kColItem + kInset).mid(5),
                 QStringList({"Item", " No.", "1", "2", "3"}));
        QCOMPARE(At(*printer, kColPart + kInset), QStringList({"Part No.", "P1", "P3", "P4"}));
        QCOMPARE(At(*printer, kColDesc + kInset),
                 QStringList({"Description", "Name 1", "Name 3", "Name 4"}));
        QCOMPARE(At(*printer, kColOrder + kInset),
                 QStringList({" Order", "  Qty", "10", "10", "10"}));
        QCOMPARE(At(*printer, kColRx + kInset), QStringList({"   Qty", "Received", "1", "3", "0"}));
        QCOMPARE(At(*printer, kColNonConf + kInset), QStringList({"X", "X"}));
        QCOMPARE(Find(*printer, "X").y, Find(*printer, "P3").y);
        QCOMPARE(Find(*printer, "X", 2).y, Find(*printer, "P4").y);
        QVERIFY(Find(*printer, "P1").y < Find(*printer, "P3").y);

        // The frame, the vertical rules at the marks, and the foot rule under the last row.
        const QList<PrintCall> boxes = printer->Calls(PrintCall::Box);
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(QList<double>({boxes[0].x, boxes[0].y, boxes[0].x2, boxes[0].y2}),
                 QList<double>({kColItem, kTop, kRightEdge, kBottom}));
        QList<double> verticals;
        for (const PrintCall& l : printer->Calls(PrintCall::Line))
            if (l.x == l.x2) {
                verticals << l.x;
                QCOMPARE(l.y2, kBottom);
            }
        QCOMPARE(verticals, QList<double>({kColPart, kColDesc, kColOrder, kColRx, kColNonConf}));
        const PrintCall foot = printer->Calls(PrintCall::Line).last();
        QVERIFY(foot.y > Find(*printer, "P4").y + kLine12);
        QVERIFY(foot.y < kBottom);

        // The printer's font is as it was before the note.
        QCOMPARE(printer->FontName(), QStringLiteral("Arial"));
        QCOMPARE(printer->FontSize(), 10.0);
        QVERIFY(!printer->FontBold());
    }

    void thirteenRowsToASheet() {
        auto printer = UseRecordingPrinter();
        GoodsInArray rows = Rows(13);
        QVERIFY(PrintGoodsReceivedNote(Input(rows)));
        QVERIFY(printer->Calls(PrintCall::NewPage).isEmpty());
        QCOMPARE(Find(*printer, "Sheet:    1  of  1").page, 1);
        QCOMPARE(At(*printer, kColPart + kInset).size(), 14);
        // The thirteenth line fits above the foot of the grid.
        QVERIFY(Find(*printer, "P13").y + kLine12 < kBottom);
        QVERIFY(At(*printer, kColNonConf + kInset).isEmpty());

        // A fourteenth row starts a second sheet with its own header; numbering runs on.
        printer->Clear();
        rows = Rows(14);
        QVERIFY(PrintGoodsReceivedNote(Input(rows)));
        QCOMPARE(printer->Calls(PrintCall::NewPage).size(), 1);
        QCOMPARE(printer->Documents(), 1);
        QCOMPARE(Find(*printer, "Sheet:    1  of  2").page, 1);
        const PrintCall second = Find(*printer, "Sheet:    2  of  2");
        QCOMPARE(second.page, 2);
        QCOMPARE(second.fontName, QStringLiteral("Arial"));
        QCOMPARE(Find(*printer, "GOODS RECEIVED NOTE", 2).page, 2);
        QCOMPARE(Find(*printer, "Our Order Ref: REF-3", 2).page, 2);
        QCOMPARE(At(*printer, kColPart + kInset, 2), QStringList({"Part No.", "P14"}));
        QCOMPARE(At(*printer, kColItem + kInset, 2).last(), QStringLiteral("14"));
        QCOMPARE(Find(*printer, "P14").y, Find(*printer, "P1").y);
        QCOMPARE(printer->Calls(PrintCall::Box).size(), 2);

        // A reversal (negative) prints, but the sheets count the rows received by Val.
        printer->Clear();
        rows = Rows(2);
        rows.rows(GinCol::RXd, 2) = QStringLiteral("-1");
        QVERIFY(PrintGoodsReceivedNote(Input(rows)));
        QCOMPARE(At(*printer, kColRx + kInset).mid(2), QStringList({"1", "-1"}));
        QVERIFY(Find(*printer, "Sheet:    1  of  1").page == 1);
    }

    void printerChoiceAndSecondPrint() {
        auto first = std::make_shared<RecordingPrinter>(QStringLiteral("First"));
        auto second = std::make_shared<RecordingPrinter>(QStringLiteral("Second"));
        SetPrinters({first, second});
        SetCurrentPrinter(first);
        GoodsInArray rows = Rows(3, {2});
        rows.rows(GinCol::PName, 1) =
            QStringLiteral("A name far too long to stay inside its own column of the note");
        GrnInput in = Input(rows);
        in.printerName = QStringLiteral("Second");
        QVERIFY(PrintGoodsReceivedNote(in));
        QCOMPARE(first->Documents(), 0);
        QCOMPARE(second->Documents(), 1);
        // A long name shrinks and is cut before the next rule.
        const PrintCall part = Find(*second, "P1");
        for (const PrintCall& c : second->Calls(PrintCall::Text))
            if (c.text.startsWith(QStringLiteral("A name"))) {
                QCOMPARE(c.fontSize, 8.0);
                QVERIFY(c.x + c.text.size() * 8 * RecordingPrinter::CharWidthPerPoint <=
                        kColOrder - kInset);
                QVERIFY(c.text.size() < 62);
                // Centred on the line of its row.
                QCOMPARE(c.y, part.y + (kLine12 - 8 * RecordingPrinter::LineHeightPerPoint) / 2);
            }

        // Printing again gives the same note: printing changes nothing.
        const QStringList once = Describe(*second);
        second->Clear();
        QVERIFY(PrintGoodsReceivedNote(in));
        QCOMPARE(Describe(*second), once);
    }
};

QTEST_GUILESS_MAIN(TestGrnDocument)
#include "test_grn_document.moc"
