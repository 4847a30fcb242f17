// The purchase order and the goods received note on the recording printer: texts, fonts and
// marks, page breaks and sheets, the questions before drawing and the printer chosen.
#include "foundation/DocumentParts.h"
#include "foundation/Printer.h"
#include "purchasing/GrnDocument.h"
#include "purchasing/PurchaseOrderDocument.h"
#include "tests/purchasing/PurchasingFixture.h"

#include <QRegularExpression>
#include <QTest>

using namespace fixture;

namespace {

// The marks of an A4 sheet (11906 x 16838 twips), in whole twips: the order, then the note.
constexpr double kTopY = 842, kColItem = 595, kColPage = 9525, kRuleEnd = 10715;
constexpr double kGrnItem = 357, kGrnPart = 952, kGrnDesc = 3274, kGrnRx = 8930,
                 kGrnNonConf = 10120, kInset = 94, kGrnBottom = 13807;
constexpr double kLine8 = 8 * RecordingPrinter::LineHeightPerPoint;
constexpr double kLine12 = 12 * RecordingPrinter::LineHeightPerPoint;

// The n-th text call with this text; one with page 0 when there is none.
PrintCall Find(const RecordingPrinter& p, const QString& text, int occurrence = 1) {
    for (const PrintCall& c : p.Calls(PrintCall::Text))
        if (c.text == text && --occurrence == 0)
            return c;
    return PrintCall{};
}

// The texts printed at one mark, in order; on one sheet, or on all with 0.
QStringList At(const RecordingPrinter& p, double x, int page = 0) {
    QStringList out;
    for (const PrintCall& c : p.Calls(PrintCall::Text))
        if (c.x == x && (page == 0 || c.page == page))
            out << c.text;
    return out;
}

// Where a text was printed and in what font: "<x> <size>", " b" when bold, " i" when italic.
QString Mark(const RecordingPrinter& p, const char* text) {
    const PrintCall c = Find(p, text);
    return QString::asprintf("%g %g%s%s", c.x, c.fontSize, c.bold ? " b" : "",
                             c.italic ? " i" : "");
}

// Order `poid` of Acme with `rows` rows of quantity 1 at 1.00, each of its own item.
void LongOrder(int poid, const QString& date, int rows) {
    Order(poid, 1, date);
    for (int i = 0; i < rows; ++i) {
        Item(1000 + i, QStringLiteral("LP-%1").arg(1000 + i));
        OrderRow(poid, 1000 + i, "1", "0");
    }
}

// A printer whose documents never start, as the PDF writer when its file name is cancelled.
class RefusingPrinter : public RecordingPrinter {
public:
    RefusingPrinter() : RecordingPrinter(QStringLiteral("Refusing")) {}

protected:
    bool BeginDocument() override { return false; }
};

// `count` rows as the goods-in window holds them after booking: part "P<n>", name "Name <n>",
// ordered 10, received n; every row booked except those listed.
GoodsInArray NoteRows(int count, const QList<int>& notBooked = {}) {
    GoodsInArray a;
    a.rowCount = count;
    a.rows.Redim(GinCol::Count, count);
    for (int r = 1; r <= count; ++r) {
        a.rows(GinCol::PNo, r) = QStringLiteral("P%1").arg(r);
        a.rows(GinCol::PName, r) = QStringLiteral("Name %1").arg(r);
        a.rows(GinCol::Desc, r) = QStringLiteral("Description %1").arg(r);
        a.rows(GinCol::OQty, r) = QStringLiteral("10");
        a.rows(GinCol::RXd, r) = QString::number(r);
        a.rows(GinCol::NConf, r) = notBooked.contains(r) ? QString() : QStringLiteral("Yes");
    }
    return a;
}

GrnInput Note(const GoodsInArray& rows) {
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

} // namespace

class TestPurchasingDocuments : public QObject, Suite {
    Q_OBJECT
private slots:
    void init() {
        gPOPrinterName.clear();
        UseTestLocale();
        Fresh();
    }
    void cleanup() { Drop(); }

    void orderOfThreeRows() {
        auto printer = UseRecordingPrinter();
        Order(7, 1, "2026-11-23");
        ExecSql("INSERT INTO tblPODetail (POID, POStockID, POSupPNo, POQty, POPrice, POSchedDate, "
                "PORecieved) VALUES (7, 10, 'A-10', 2, 2, '2040-01-01', 0), (7, 11, '', 1.5, "
                "0.125, '2026-12-24', 0), (7, 12, 'X', 3, 1.1, '2026-12-01', 0)");

        QCOMPARE(PrintPurchaseOrder(7, true), int(kPODocumentPrinted));
        QVERIFY(printer->Documents() == 1 && printer->Calls(PrintCall::NewPage).isEmpty());
        // Every text in order: rows by part number; prices keep their decimals, quantities
        // don't; a row with no supplier's part number and the no-date value print nothing.
        QCOMPARE(
            printer->Texts(),
            QStringList({"Quill Parts Ltd", "Purchase Order", "0007 / REF-7", "Date 23/11/2026",
                         "To:", "Acme", "Acme Street", "Leeds", "LS1", "Tel: 0113 1 Fax: 0113 2",
                         "Ann", "Ship To:", "Quill Parts Ltd", "1 Mill Lane", "Otley",
                         "West Yorkshire", "LS21 1AA", "England", "Tel: 01943 1 Fax: 01943 2",
                         "Item", "P/N", "Cost", "Order Qty", "Total", "Description", "Schedule",
                         // the three blocks
                         "1", "CAP-1U", "0.125", "1.5", "0.1875", "Capacitor 1u", "24/12/2026", "2",
                         "IND-5M", "1.10", "3", "3.30", "Inductor", "Vendor  P/N X", "01/12/2026",
                         "3", "RES-10K", "2.00", "2", "4.00", "Resistor 10k", "Vendor  P/N A-10",
                         // the foot
                         "7.4875",
                         "End of Purchase Order. Number of pages: 1      Total Order "
                         "Value:"}));

        // Marks and fonts: the title and an address block, the second block's lines, the order
        // value and the foot.
        const char* foot = "End of Purchase Order. Number of pages: 1      Total Order Value:";
        QStringList marks;
        for (const char* t : {"Purchase Order", "Ship To:", "2", "IND-5M", "1.10", "3", "3.30",
                              "Inductor", "7.4875", foot})
            marks << Mark(*printer, t);
        QCOMPARE(marks, QStringList({"6548 16 b", "6548 14 b i", "595 8", "1191 10", "5953 8",
                                     "7441 8", "9882 8", "1191 8", "9882 8 b", "1786 8 b"}));
        // The lines: the title block from TopY, the two address blocks side by side, a block's
        // lines apart by their height and a gap, the foot on one line.
        QCOMPARE(Find(*printer, "Purchase Order").y, kTopY);
        QCOMPARE(Find(*printer, "Acme").y, Find(*printer, "Quill Parts Ltd", 2).y);
        QCOMPARE(Find(*printer, "01/12/2026").y,
                 Find(*printer, "IND-5M").y + 240 + 67 + kLine8 + 67);
        QCOMPARE(Find(*printer, "7.4875").y, Find(*printer, foot).y);
        const QList<PrintCall> rules = printer->Calls(PrintCall::Line);
        QCOMPARE(rules.size(), 6); // under the title, over and under the heads, one per block
        QVERIFY(rules[3].x == kColItem && rules[3].x2 == kRuleEnd && rules[3].y == rules[3].y2);
    }

    void longOrderBreaks() {
        auto printer = UseRecordingPrinter();
        LongOrder(9, "2026-11-23", 39); // the last block ends past 85% of its sheet, as 1 and 2 do
        QCOMPARE(PrintPurchaseOrder(9, false), int(kPODocumentPrinted));
        const int pages = int(printer->Calls(PrintCall::NewPage).size()) + 1;
        QCOMPARE(Find(*printer, QStringLiteral("End of Purchase Order. Number of pages: %1      "
                                               "Total Order Value:")
                                    .arg(pages))
                     .page,
                 pages);

        // The blocks of each sheet: a new sheet only after a block that ends past 85% of the
        // paper, with rows left.
        QStringList sheets;
        for (int page = 1; page <= pages; ++page) {
            const QStringList blocks =
                At(*printer, kColItem, page).filter(QRegularExpression("^\\d+$"));
            sheets << blocks.first() + '-' + blocks.last();
        }
        QCOMPARE(sheets, QStringList({"1-9", "10-24", "25-39"}));
        for (const PrintCall& c : printer->Calls())
            QVERIFY2(c.kind != PrintCall::Text || c.y + kLine8 < 16838, qPrintable(c.text));

        // A sheet's end says where it goes on; the next starts with the short header.
        for (int page = 2; page <= pages; ++page) {
            QCOMPARE(Find(*printer, QStringLiteral("Continued on Page %1").arg(page)).page,
                     page - 1);
            const PrintCall to = Find(*printer, "To:", page);
            const PrintCall pageNo = Find(*printer, QStringLiteral("Page: %1").arg(page));
            QVERIFY(to.page == page && to.x == kColItem && to.y == kTopY && !to.bold);
            QVERIFY(pageNo.x == kColPage && Find(*printer, "Acme", page).y == kTopY);
        }
    }

    void orderQuestionsBeforeDrawing() {
        auto printer = UseRecordingPrinter();
        // No rows: the stop sign, nothing drawn.
        LongOrder(4, "2026-11-23", 0);
        boxes->answer(vbOK);
        QCOMPARE(PrintPurchaseOrder(4, false), int(kPODocumentNothing));
        QCOMPARE(Said(*boxes), QStringList("Nothing to print: There are no items connected with "
                                           "this order"));
        QCOMPARE(boxes->shown().at(0).flags & vbCritical, int(vbCritical));
        QVERIFY(printer->Calls().isEmpty());

        // An older order: never asked when printed as placed; on a reprint it asks, and Yes
        // prints today and changes nothing stored, so it asks again.
        LongOrder(5, "2026-11-01", 1);
        QCOMPARE(PrintPurchaseOrder(5, false), int(kPODocumentPrinted));
        QVERIFY(printer->Texts().contains("Date 01/11/2026"));
        for (const int answer : {vbYes, vbNo}) {
            printer->Clear();
            boxes->answer(answer);
            QCOMPARE(PrintPurchaseOrder(5, true), int(kPODocumentPrinted));
            QCOMPARE(Said(*boxes).last(), "Use Today's date?: The purchase order was first created "
                                          "on 01/11/2026\nDo you want to re-print with today's "
                                          "date instead ?");
            QVERIFY(
                printer->Texts().contains(answer == vbYes ? "Date 23/11/2026" : "Date 01/11/2026"));
        }
        QCOMPARE(SqlFirst("SELECT PODate FROM tblPOrders WHERE POID=5"), "2026-11-01");
        // An order of today is not asked about.
        ExecSql("UPDATE tblPOrders SET PODate='2026-11-23' WHERE POID=5");
        QCOMPARE(PrintPurchaseOrder(5, true), int(kPODocumentPrinted));
        QCOMPARE(boxes->shown().size(), 3);

        // A comma locale: stored numbers read as numbers, written with the locale's sign.
        LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
        ExecSql("UPDATE tblPODetail SET POQty=1.5, POPrice=2.5, POSchedDate='2026-12-24'");
        printer->Clear();
        QCOMPARE(PrintPurchaseOrder(5, false), int(kPODocumentPrinted));
        const QStringList texts = printer->Texts();
        QVERIFY(texts.contains("2,50") && texts.contains("1,5") && texts.contains("24.12.2026"));
        QCOMPARE(texts.count("3,75"), 2); // the row and the order value
    }

    void printerChosen() {
        auto first = std::make_shared<RecordingPrinter>(QStringLiteral("First"));
        auto second = std::make_shared<RecordingPrinter>(QStringLiteral("Second"));
        SetPrinters({first, second});
        SetCurrentPrinter(first);
        LongOrder(3, "2026-11-23", 1);
        // The printer chosen in the print frame takes the document.
        gPOPrinterName = QStringLiteral("Second");
        QCOMPARE(PrintPurchaseOrder(3, false), int(kPODocumentPrinted));
        QVERIFY(first->Documents() == 0 && second->Documents() == 1);

        // A document that never starts (a cancelled PDF file name) is not reported printed.
        auto refusing = std::make_shared<RefusingPrinter>();
        SetPrinters({first, refusing});
        gPOPrinterName = QStringLiteral("Refusing");
        QCOMPARE(PrintPurchaseOrder(3, false), int(kPODocumentDropped));
        QVERIFY(refusing->Calls().isEmpty() && boxes->shown().isEmpty());

        // The printer a print frame offers: the stored name when listed, otherwise the current
        // printer, otherwise the first.
        SetPrinters({first, second, refusing});
        SetCurrentPrinter(second);
        QCOMPARE(OfferPrinters(QStringLiteral("Refusing")).selected, 2);
        QCOMPARE(OfferPrinters(QStringLiteral("Gone")).selected, 1);
        SetCurrentPrinter(std::make_shared<RecordingPrinter>(QStringLiteral("Elsewhere")));
        QCOMPARE(OfferPrinters().selected, 0);
    }

    void noteHeaderAndRows() {
        auto printer = UseRecordingPrinter();
        GoodsInArray rows = NoteRows(4, {3});
        rows.rows(GinCol::RXd, 2) = QString(); // not received: not printed
        rows.rows(GinCol::NConf, 2) = QString();
        rows.rows(GinCol::AdvQty, 4) = QStringLiteral("3"); // advised only: printed
        rows.rows(GinCol::RXd, 4) = QStringLiteral("0");
        rows.rows(GinCol::NConf, 4) = QString();
        QVERIFY(PrintGoodsReceivedNote(Note(rows)));
        QVERIFY(printer->Documents() == 1 && printer->Calls(PrintCall::NewPage).isEmpty());

        // Two rows received by Val: one sheet. In Arial 12 the sheet number and the note's
        // number at the right, the title bold and centred; the rest in Times New Roman 12.
        QCOMPARE(printer->Texts().mid(0, 9),
                 QStringList({"Sheet:    1  of  1", "GOODS RECEIVED NOTE", "No. TRN-77",
                              "Date of receipt:", "23/11/2026", "Supplier:", "Acme",
                              "Supplier's advice note No:", "ADV-9"}));
        const QList<PrintCall> texts = printer->Calls(PrintCall::Text);
        QVERIFY(texts[1].bold && !texts[0].bold && texts[1].fontName == QLatin1String("Arial"));
        for (const PrintCall& c : texts.mid(3))
            QVERIFY2(c.fontName == QLatin1String("Times New Roman") && c.fontSize == 12 && !c.bold,
                     qPrintable(c.text));

        // The receipt, the heads and the rows at their marks: the running number, part number,
        // name (not the description), ordered, received; a cross only where the row was not
        // booked.
        QCOMPARE(At(*printer, kGrnItem + kInset),
                 QStringList({"Date of receipt:", "Supplier:", "Supplier's advice note No:",
                              "Our Order ID: 0012", "Our Order Ref: REF-3", "Item", " No.", "1",
                              "2", "3"}));
        QCOMPARE(At(*printer, kGrnPart + kInset), QStringList({"Part No.", "P1", "P3", "P4"}));
        QCOMPARE(At(*printer, kGrnDesc + kInset),
                 QStringList({"Description", "Name 1", "Name 3", "Name 4"}));
        QCOMPARE(At(*printer, kGrnRx + kInset), QStringList({"   Qty", "Received", "1", "3", "0"}));
        QCOMPARE(At(*printer, kGrnNonConf + kInset), QStringList({"X", "X"}));
        QCOMPARE(Find(*printer, "X", 2).y, Find(*printer, "P4").y);

        // The foot rule under the last row.
        const PrintCall foot = printer->Calls(PrintCall::Line).last();
        QVERIFY(foot.y > Find(*printer, "P4").y + kLine12 && foot.y < kGrnBottom);
    }

    void noteSheetsPrinterAndSecondPrint() {
        auto printer = UseRecordingPrinter();
        // Thirteen rows to a sheet, the thirteenth above the foot of the grid.
        GoodsInArray rows = NoteRows(13);
        QVERIFY(PrintGoodsReceivedNote(Note(rows)));
        QVERIFY(printer->Calls(PrintCall::NewPage).isEmpty());
        QCOMPARE(Find(*printer, "Sheet:    1  of  1").page, 1);
        QVERIFY(Find(*printer, "P13").y + kLine12 < kGrnBottom);
        // A fourteenth row starts a second sheet with its own header; numbering runs on.
        printer->Clear();
        rows = NoteRows(14);
        QVERIFY(PrintGoodsReceivedNote(Note(rows)));
        QVERIFY(printer->Calls(PrintCall::NewPage).size() == 1 && printer->Documents() == 1);
        QCOMPARE(Find(*printer, "Sheet:    1  of  2").page, 1);
        QCOMPARE(Find(*printer, "Sheet:    2  of  2").page, 2);
        QCOMPARE(At(*printer, kGrnPart + kInset, 2), QStringList({"Part No.", "P14"}));
        QCOMPARE(At(*printer, kGrnItem + kInset, 2).last(), "14");

        // The printer named takes the note; printing again gives the same note.
        auto other = std::make_shared<RecordingPrinter>(QStringLiteral("Second"));
        SetPrinters({printer, other});
        printer->Clear();
        GrnInput in = Note(rows);
        in.printerName = QStringLiteral("Second");
        QVERIFY(PrintGoodsReceivedNote(in));
        QVERIFY(printer->Calls().isEmpty());
        const QStringList once = PlacedTexts(*other);
        other->Clear();
        QVERIFY(PrintGoodsReceivedNote(in));
        QCOMPARE(PlacedTexts(*other), once);
    }
};

QTEST_GUILESS_MAIN(TestPurchasingDocuments)
#include "test_purchasing_documents.moc"
