// The order copy, invoice, delivery note and packing note on the recording printer: every text
// with its place, the kinds against each other, continuation sheets, notes, the logo, the copies
// question and the printer's own settings.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Printer.h"
#include "foundation/Settings.h"
#include "sales/SalesDocuments.h"
#include "tests/support/TestSupport.h"

#include <QCryptographicHash>
#include <QFile>
#include <QTest>

namespace {

// The marks of an A4 sheet (11906 x 16838 twips), cut to whole twips, and the recording metric
// at size 10: a line of 240, a character of 120.
constexpr double kH = 16838;
constexpr double kBoxLeft = 595, kNotes = 833, kText = 1428, kCustBoxRight = 5714, kOrdered = 5953,
                 kQty = 7381, kPrice = 8572, kRight = 10120, kBoxRight = 10715;
constexpr double kLine = 240, kHalf = 120, kChar = 120;
constexpr double kLabel = kQty - 4 * kChar; // the right block's labels

const QStringList kCompany{"Quill Parts Ltd", "Unit 4",  "Mill Lane", "",
                           "Northtown",       "NT1 1AA", "England"};

OrderRow Row(const QString& desc, const QString& pno, const QString& sellAt,
             const QString& orderQty, const QString& invoiceQty, const QString& total,
             const QString& location) {
    OrderRow r;
    r[OrderCol::Desc] = desc;
    r[OrderCol::PartNo] = pno;
    r[OrderCol::SellAt] = sellAt;
    r[OrderCol::OrderQty] = orderQty;
    r[OrderCol::InvoiceQty] = invoiceQty;
    r[OrderCol::Total] = total;
    r[OrderCol::Location] = location;
    return r;
}

// An invoice being made from order 12: the Gadget row is not on this invoice, the Gizmo is
// invoiced although its order quantity reads 0, so that each kind shows which column it reads.
CustOrderSheet Sheet() {
    CustOrderSheet s;
    s.mode = OrderMode::InvoiceOrder;
    s.custName = QStringLiteral("Acme Ltd");
    s.custAdd1 = QStringLiteral("1 High St");
    s.custAdd2 = QStringLiteral("Lower Town");
    s.custAdd3 = QStringLiteral("Shire");
    s.custAdd4 = QStringLiteral("Kingdom");
    s.custPO = QStringLiteral("AB1 2CD");
    s.custBasketID = QStringLiteral("0012");
    s.custOrNo = QStringLiteral("PO-7");
    s.orDate = QStringLiteral("04/03/2026");
    s.invoiceNo = QStringLiteral("0031");
    s.invoiceDate = QStringLiteral("01/05/2026");
    s.custShipID = QStringLiteral("0012-002");
    s.rows = {Row("Widget", "A-1", "10.125", "2", "2", "20.25", "A1"),
              Row("Gadget", "B-2", "3.00", "1", "0", "0.00", "B7"),
              Row("Sprocket", "C-3", "1.5", "4", "2.5", "3.75", ""),
              Row("Gizmo", "D-4", "2", "0", "1", "2.00", "D1")};
    s.net = QStringLiteral("26.00");
    s.delivery = QStringLiteral("5.00");
    s.vat = QStringLiteral("5.43");
    s.total = QStringLiteral("36.43");
    s.deliveryText = QStringLiteral("Carriage  ");
    s.vatText = QStringLiteral("VAT  ");
    s.totalText = QStringLiteral("Total   ");
    s.notes = QStringLiteral("Goods remain ours until paid.\nThank you");
    return s;
}

// Prints one copy of a kind on the recording printer.
void PrintOne(const QString& kind, const CustOrderSheet& sheet, ScriptedBoxes& boxes,
              const QString& printerName = QString()) {
    boxes.answerInput(QStringLiteral("1"));
    PrintSalesDocument(kind, sheet, {kCompany, printerName});
}

// A text as expected: where it starts (or, right-aligned, where it ends) and its line.
struct Expected {
    QString text;
    double mark;
    bool right;
    double y;
};

void CompareTexts(const QList<PrintCall>& calls, const QList<Expected>& expected) {
    QStringList got, want;
    for (const PrintCall& c : calls)
        got << c.text;
    for (const Expected& e : expected)
        want << e.text;
    QCOMPARE(got, want);
    for (int i = 0; i < expected.size(); ++i) {
        const PrintCall& c = calls.at(i);
        const Expected& e = expected.at(i);
        QVERIFY2(qFuzzyCompare(e.right ? c.x2 : c.x, e.mark),
                 qPrintable(QStringLiteral("%1 at x %2-%3").arg(e.text).arg(c.x).arg(c.x2)));
        QVERIFY2(qFuzzyCompare(c.y, e.y),
                 qPrintable(QStringLiteral("%1 at y %2").arg(e.text).arg(c.y)));
        QCOMPARE(c.fontSize, 10.0);
    }
}

// The n-th text call with this text; one with page 0 when there is none.
PrintCall Find(const RecordingPrinter& p, const QString& text, int occurrence = 1) {
    for (const PrintCall& c : p.Calls(PrintCall::Text))
        if (c.text == text && --occurrence == 0)
            return c;
    return PrintCall{};
}

int Count(const RecordingPrinter& p, const QString& text) {
    return int(p.Texts().count(text));
}

// The calls of a document without the page and font details, to compare two kinds.
QStringList Shapes(const QList<PrintCall>& calls) {
    QStringList out;
    for (const PrintCall& c : calls)
        out << QStringLiteral("%1 %2 %3 %4 %5 %6")
                   .arg(c.kind)
                   .arg(c.x, 0, 'f', 2)
                   .arg(c.y, 0, 'f', 2)
                   .arg(c.x2, 0, 'f', 2)
                   .arg(c.y2, 0, 'f', 2)
                   .arg(c.text);
    return out;
}

// A printer that fails on given texts, as a printer going offline does.
class FailingPrinter : public RecordingPrinter {
public:
    explicit FailingPrinter(QStringList failOn)
        : RecordingPrinter(QStringLiteral("Failing")), mFailOn(std::move(failOn)) {}
    QList<int> copiesAtStart;

protected:
    bool BeginDocument() override {
        copiesAtStart << Copies();
        return true;
    }
    void DrawText(double x, double y, const QString& line) override {
        if (mFailOn.contains(line))
            throw DbError(482, QStringLiteral("Printer error"));
        RecordingPrinter::DrawText(x, y, line);
    }

private:
    QStringList mFailOn;
};

// A printer whose documents never start, as the PDF writer when its file name is cancelled.
class RefusingPrinter : public RecordingPrinter {
public:
    RefusingPrinter() : RecordingPrinter(QStringLiteral("Refusing")) {}
    int starts = 0;

protected:
    bool BeginDocument() override {
        ++starts;
        return false;
    }
};

QByteArray FileHash(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

} // namespace

class TestSalesDocuments : public QObject {
    Q_OBJECT
private slots:
    void init() {
        UseTestLocale();
        InstallPictureLoader({});
    }

    void invoiceLayout() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseRecordingPrinter();
        printer->SetCopies(3);
        printer->SetFontSize(8);
        PrintOne(QStringLiteral("Invoice"), Sheet(), boxes);

        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown().at(0).kind, ShownBox::Input);
        QCOMPARE(boxes.shown().at(0).prompt, QStringLiteral("Print Invoice. How many copies?"));
        QCOMPARE(boxes.shown().at(0).title, QStringLiteral("Invoice"));
        QCOMPARE(printer->Documents(), 1);
        QVERIFY(printer->Calls(PrintCall::NewPage).isEmpty());
        QVERIFY(printer->Calls(PrintCall::Picture).isEmpty());
        // The printer's own settings come back after the copy.
        QCOMPARE(printer->Copies(), 3);
        QCOMPARE(printer->FontSize(), 8.0);

        // The company block right on xRight from the fourth line (its empty line kept); the
        // address a tenth down the page and three lines on; the right block from the line under
        // "Invoice To:"; the table under the address box; rows of three lines; the foot at 83%.
        const double to = kH / 10 + 3 * kLine;
        const double block = to + kLine;
        const double heading = block + kHalf + 9 * kLine + kHalf;
        const double row1 = heading + 4 * kLine + kHalf;
        const double notes = 0.83 * kH;
        const double totals = 0.84 * kH;
        CompareTexts(printer->Calls(PrintCall::Text),
                     {{"Quill Parts Ltd", kRight, true, 3 * kLine},
                      {"Unit 4", kRight, true, 4 * kLine},
                      {"Mill Lane", kRight, true, 5 * kLine},
                      {"Northtown", kRight, true, 7 * kLine},
                      {"NT1 1AA", kRight, true, 8 * kLine},
                      {"England", kRight, true, 9 * kLine},
                      {"Invoice To:", kText, false, to},
                      {"Acme Ltd", kText, false, block + kHalf},
                      {"1 High St", kText, false, block + kHalf + kLine},
                      {"Lower Town", kText, false, block + kHalf + 2 * kLine},
                      {"Shire", kText, false, block + kHalf + 3 * kLine},
                      {"Kingdom", kText, false, block + kHalf + 4 * kLine},
                      {"AB1 2CD", kText, false, block + kHalf + 5 * kLine},
                      {"Invoice #", kLabel, false, block},
                      {"0031", kRight, true, block},
                      {"Delivery #", kLabel, false, block + 2 * kLine},
                      {"0012-002", kRight, true, block + 2 * kLine},
                      {"Customer's PO", kLabel, false, block + 4 * kLine},
                      {"PO-7", kRight, true, block + 4 * kLine},
                      {"Invoice Date:", kLabel, false, block + 6 * kLine},
                      {"01/05/2026", kRight, true, block + 6 * kLine},
                      {"Page# ", kLabel, false, block + 8 * kLine},
                      {"1", kRight, true, block + 8 * kLine},
                      {"Description", kText, false, heading},
                      {"Part No.", kText, false, heading + kLine},
                      {"Ordered", kOrdered, true, heading},
                      {"Price", kPrice, true, heading},
                      {"Invoiced", kQty, true, heading},
                      {"Total", kRight, true, heading},
                      {"Widget", kText, false, row1},
                      {"A-1", kText, false, row1 + kLine},
                      {"2.0", kOrdered, true, row1 + kLine},
                      {"2.0", kQty, true, row1 + kLine},
                      {"10.125", kPrice, true, row1 + kLine},
                      {"20.25", kRight, true, row1 + kLine},
                      {"Sprocket", kText, false, row1 + 3 * kLine},
                      {"C-3", kText, false, row1 + 4 * kLine},
                      {"4.0", kOrdered, true, row1 + 4 * kLine},
                      {"2.5", kQty, true, row1 + 4 * kLine},
                      {"1.50", kPrice, true, row1 + 4 * kLine},
                      {"3.75", kRight, true, row1 + 4 * kLine},
                      {"Gizmo", kText, false, row1 + 6 * kLine},
                      {"D-4", kText, false, row1 + 7 * kLine},
                      {"0.0", kOrdered, true, row1 + 7 * kLine},
                      {"1.0", kQty, true, row1 + 7 * kLine},
                      {"2.00", kPrice, true, row1 + 7 * kLine},
                      {"2.00", kRight, true, row1 + 7 * kLine},
                      {"Notes", kNotes, false, notes},
                      {"Goods remain ours until paid.", kNotes, false, notes + 2 * kLine},
                      {"Thank you", kNotes, false, notes + 3 * kLine},
                      {"26.00", kRight, true, totals},
                      {"Carriage  ", kQty, false, totals + 2 * kLine},
                      {"5.00", kRight, true, totals + 2 * kLine},
                      {"VAT  ", kQty, false, totals + 4 * kLine},
                      {"5.43", kRight, true, totals + 4 * kLine},
                      {"Total   ", kQty, false, totals + 5 * kLine + 2 * kHalf},
                      {"36.43", kRight, true, totals + 5 * kLine + 2 * kHalf}});

        // The address box nine lines high, the table box to 82%, the notes and totals boxes;
        // the rule under the heading and the line over the total.
        const QList<PrintCall> boxCalls = printer->Calls(PrintCall::Box);
        QCOMPARE(boxCalls.size(), 4);
        const QList<QList<double>> wantBoxes{{kBoxLeft, block, kCustBoxRight, block + 18 * kHalf},
                                             {kBoxLeft, heading - kHalf, kBoxRight, 0.82 * kH},
                                             {kBoxLeft, notes, kQty - 3 * kChar, 0.95 * kH},
                                             {kQty - 2 * kChar, notes, kBoxRight, 0.95 * kH}};
        for (int i = 0; i < 4; ++i) {
            const PrintCall& b = boxCalls.at(i);
            QCOMPARE(QList<double>({b.x, b.y, b.x2, b.y2}), wantBoxes.at(i));
        }
        const QList<PrintCall> lines = printer->Calls(PrintCall::Line);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(QList<double>({lines.at(0).x, lines.at(0).y, lines.at(0).x2, lines.at(0).y2}),
                 QList<double>({kBoxLeft, row1 - kLine, kBoxRight, row1 - kLine}));
        const double over = totals + 5 * kLine + kHalf;
        QCOMPARE(QList<double>({lines.at(1).x, lines.at(1).y, lines.at(1).x2, lines.at(1).y2}),
                 QList<double>({kQty, over, kRight, over}));

        // Without the customer's reference its line goes and the date moves up.
        CustOrderSheet noRef = Sheet();
        noRef.custOrNo.clear();
        printer->Clear();
        PrintOne(QStringLiteral("Invoice"), noRef, boxes);
        QCOMPARE(Count(*printer, QStringLiteral("Customer's PO")), 0);
        QCOMPARE(Find(*printer, QStringLiteral("Invoice Date:")).y, block + 4 * kLine);
        QCOMPARE(Find(*printer, QStringLiteral("Page# ")).y, block + 6 * kLine);
    }

    void kindsAgainstTheInvoice() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseRecordingPrinter();
        const CustOrderSheet sheet = Sheet();
        PrintOne(QStringLiteral("Invoice"), sheet, boxes);
        const QList<PrintCall> invoice = printer->Calls();
        printer->Clear();
        PrintOne(QStringLiteral("Delivery"), sheet, boxes);
        const QList<PrintCall> delivery = printer->Calls();
        const QStringList deliveryTexts = printer->Texts();
        printer->Clear();
        PrintOne(QStringLiteral("PickList"), sheet, boxes);
        const QList<PrintCall> packing = printer->Calls();
        printer->Clear();
        PrintOne(QStringLiteral("Order"), sheet, boxes);
        QCOMPARE(boxes.prompts(ShownBox::Input).size(), 4);
        QCOMPARE(boxes.prompts(ShownBox::Input).last(),
                 QStringLiteral("Print Invoice. How many copies?"));

        // The delivery note: the same lines as the invoice, without prices, totals and the
        // totals box; its quantities end on xRight.
        QCOMPARE(delivery.size(), invoice.size() - 15 - 1 - 1);
        QStringList absent{"Price", "Total", "Invoiced",   "10.125", "20.25",
                           "1.50",  "3.75",  "2.00",       "26.00",  "5.00",
                           "5.43",  "36.43", "Carriage  ", "VAT  ",  "Total   "};
        for (const QString& text : absent)
            QVERIFY2(!deliveryTexts.contains(text), qPrintable(text));
        const auto at = [](const QList<PrintCall>& calls, const QString& text, int n = 1) {
            for (const PrintCall& c : calls)
                if (c.text == text && --n == 0)
                    return c;
            return PrintCall{};
        };
        for (const char* text : {"Acme Ltd", "Description", "Widget", "A-1", "Gizmo", "Notes",
                                 "Thank you", "Quill Parts Ltd"}) {
            QCOMPARE(at(delivery, text).y, at(invoice, text).y);
            QCOMPARE(at(delivery, text).x, at(invoice, text).x);
        }
        QCOMPARE(at(delivery, "Delivery To:").y, at(invoice, "Invoice To:").y);
        QVERIFY(at(delivery, "Invoice To:").text.isEmpty());
        // Its right block: delivery first, then invoice, then the date.
        QCOMPARE(at(delivery, "Delivery #").y, at(invoice, "Invoice #").y);
        QCOMPARE(at(delivery, "Invoice #").y, at(invoice, "Delivery #").y);
        QCOMPARE(at(delivery, "Date:").y, at(invoice, "Invoice Date:").y);
        QCOMPARE(at(delivery, "Qty").x2, kRight);
        QCOMPARE(at(delivery, "Ordered").x2, kOrdered);
        QCOMPARE(at(delivery, "2.5").x2, kRight);
        QCOMPARE(at(delivery, "4.0").x2, kOrdered);
        int boxes3 = 0;
        for (const PrintCall& c : delivery)
            boxes3 += c.kind == PrintCall::Box;
        QCOMPARE(boxes3, 3);

        // The packing note: the delivery note plus the location caption and each location at
        // xQty, nothing else.
        QList<PrintCall> withoutLocations;
        QStringList locations;
        for (const PrintCall& c : packing) {
            if (c.kind == PrintCall::Text && c.x == kQty) {
                locations << c.text;
                continue;
            }
            withoutLocations << c;
        }
        QCOMPARE(locations, QStringList({"Location", "A1", "D1"}));
        QCOMPARE(Shapes(withoutLocations), Shapes(delivery));
        QCOMPARE(at(packing, "Location").y, at(packing, "Description").y);
        QCOMPARE(at(packing, "A1").y, at(packing, "A-1").y);

        // The order copy reads OrderQty: the Gadget prints and the Gizmo does not; no
        // "Ordered" column; its own right block.
        const QStringList order = printer->Texts();
        QVERIFY(order.contains("Gadget") && order.contains("Widget") && order.contains("Sprocket"));
        QVERIFY(!order.contains("Gizmo"));
        QVERIFY(!order.contains("Ordered"));
        QCOMPARE(Find(*printer, "Delivery To:").x, kText);
        QCOMPARE(Find(*printer, "Qty").x2, kQty);
        const PrintCall gadget = Find(*printer, QStringLiteral("B-2"));
        QCOMPARE(Find(*printer, QStringLiteral("1.0")).y, gadget.y);
        QCOMPARE(Find(*printer, QStringLiteral("1.0")).x2, kQty);
        QCOMPARE(Find(*printer, QStringLiteral("4.0")).x2, kQty);
        QCOMPARE(Find(*printer, QStringLiteral("3.00")).x2, kPrice);
        const PrintCall orderId = Find(*printer, QStringLiteral("Order ID #"));
        QCOMPARE(orderId.x, kLabel);
        QCOMPARE(Find(*printer, QStringLiteral("0012")).y, orderId.y);
        QCOMPARE(Find(*printer, QStringLiteral("Customer's PO")).y, orderId.y + 2 * kLine);
        QCOMPARE(Find(*printer, QStringLiteral("Order Date:")).y, orderId.y + 4 * kLine);
        QCOMPARE(Find(*printer, QStringLiteral("04/03/2026")).x2, kRight);
        QCOMPARE(Count(*printer, QStringLiteral("Invoice #")), 0);
        QCOMPARE(Count(*printer, QStringLiteral("Delivery #")), 0);
        QCOMPARE(printer->Calls(PrintCall::Box).size(), 4);
    }

    void longOrderRunsOverContinuationSheets() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseRecordingPrinter();
        // 11 rows fill the first sheet and 14 each continuation sheet; the 25th row ends at
        // 80% of the second sheet, so the foot goes to a third sheet of its own.
        CustOrderSheet sheet = Sheet();
        sheet.rows.clear();
        for (int i = 1; i <= 25; ++i)
            sheet.rows << Row(QStringLiteral("Item %1").arg(i), QStringLiteral("P-%1").arg(i),
                              "1.00", "1", "1", "1.00", "");
        PrintOne(QStringLiteral("Invoice"), sheet, boxes);
        QCOMPARE(printer->Documents(), 1);
        QCOMPARE(printer->Calls(PrintCall::NewPage).size(), 2);
        QCOMPARE(Find(*printer, QStringLiteral("Item 11")).page, 1);
        QCOMPARE(Find(*printer, QStringLiteral("Item 12")).page, 2);
        QCOMPARE(Find(*printer, QStringLiteral("Item 25")).page, 2);

        const PrintCall end1 =
            Find(*printer, QStringLiteral("End of Page# 1  - See Continuation Sheet"));
        QCOMPARE(end1.page, 1);
        QCOMPARE(end1.x, kText);
        QCOMPARE(end1.y, Find(*printer, QStringLiteral("Item 11")).y + 3 * kLine);
        QCOMPARE(Find(*printer, QStringLiteral("End of Page# 2  - See Continuation Sheet")).page,
                 2);
        for (int page : {2, 3}) {
            const PrintCall sheetText =
                Find(*printer, QStringLiteral("Continuation Sheet "), page - 1);
            QCOMPARE(sheetText.page, page);
            QCOMPARE(sheetText.x, kText);
            QCOMPARE(sheetText.y, kH / 10);
            const PrintCall number = Find(*printer, QStringLiteral("Page# %1").arg(page));
            QCOMPARE(number.page, page);
            QCOMPARE(number.x, kRight);
            QCOMPARE(number.y, kH / 10);
            // The heading under the rule, and the rows two lines under the heading's rule.
            const PrintCall desc = Find(*printer, QStringLiteral("Description"), page);
            QCOMPARE(desc.page, page);
            QCOMPARE(desc.y, kH / 10 + kLine + kHalf);
        }
        QCOMPARE(Find(*printer, QStringLiteral("Item 12")).y,
                 kH / 10 + kLine + kHalf + 6 * kLine + kHalf);
        // No header on a continuation sheet; the foot once, on the last.
        QCOMPARE(Count(*printer, QStringLiteral("Invoice To:")), 1);
        QCOMPARE(Count(*printer, QStringLiteral("Acme Ltd")), 1);
        QCOMPARE(Count(*printer, QStringLiteral("Quill Parts Ltd")), 1);
        QCOMPARE(Count(*printer, QStringLiteral("Page# ")), 1);
        QCOMPARE(Count(*printer, QStringLiteral("Notes")), 1);
        QCOMPARE(Find(*printer, QStringLiteral("Notes")).page, 3);
        QCOMPARE(Find(*printer, QStringLiteral("36.43")).page, 3);
        QCOMPARE(Count(*printer, QStringLiteral("Description")), 3);
        // Each sheet has its table box; rules: heading (3), continuation (2 ends, 2 tops),
        // and the line over the total.
        QCOMPARE(printer->Calls(PrintCall::Box).size(), 1 + 3 + 2);
        QCOMPARE(printer->Calls(PrintCall::Line).size(), 3 + 4 + 1);

        // One row less: the foot ends the second sheet.
        sheet.rows.removeLast();
        printer->Clear();
        PrintOne(QStringLiteral("Delivery"), sheet, boxes);
        QCOMPARE(printer->Calls(PrintCall::NewPage).size(), 1);
        QCOMPARE(Find(*printer, QStringLiteral("Notes")).page, 2);
        QCOMPARE(Count(*printer, QStringLiteral("Continuation Sheet ")), 1);
    }

    void notesAndTheLogo() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseRecordingPrinter();
        // CR LF and LF both break a line; an empty line keeps its place; a last line without a
        // break prints, a break at the very end adds nothing.
        CustOrderSheet sheet = Sheet();
        sheet.notes = QStringLiteral("First\r\nSecond\n\nFourth");
        PrintOne(QStringLiteral("Delivery"), sheet, boxes);
        const double notes = 0.83 * kH + 2 * kLine;
        QCOMPARE(Find(*printer, QStringLiteral("First")).y, notes);
        QCOMPARE(Find(*printer, QStringLiteral("Second")).y, notes + kLine);
        QCOMPARE(Find(*printer, QStringLiteral("Fourth")).y, notes + 3 * kLine);
        QCOMPARE(Find(*printer, QStringLiteral("Fourth")).x, kNotes);
        sheet.notes = QStringLiteral("Only line\r\n");
        printer->Clear();
        PrintOne(QStringLiteral("Delivery"), sheet, boxes);
        QCOMPARE(Find(*printer, QStringLiteral("Only line")).y, notes);
        QVERIFY(!printer->Texts().contains(QStringLiteral("Only line\r")));

        // A logo taller than a tenth of the page: painted at (xBoxLeft, 350) in its own size,
        // and the address goes under it, while the company block keeps its place.
        const QString logoFile = data.path(QStringLiteral("logo.png"));
        {
            QFile f(logoFile);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write("picture");
        }
        {
            SharedSettingsScope shared;
            SaveDefault(QStringLiteral("Image_1"), logoFile, QString());
        }
        const QString station = gPcName;
        InstallPictureLoader([](const QString& p) { return Picture{p, 2400, 3000}; });
        printer->Clear();
        boxes.answerInput(QStringLiteral("1"));
        const SalesDocumentResult printed =
            PrintSalesDocument(QStringLiteral("Invoice"), Sheet(), {kCompany, QString()});
        QCOMPARE(gPcName, station);
        QCOMPARE(printed.copies, 1);
        QCOMPARE(printed.logoPath, logoFile);
        const QList<PrintCall> pictures = printer->Calls(PrintCall::Picture);
        QCOMPARE(pictures.size(), 1);
        QCOMPARE(pictures.at(0).text, logoFile);
        QCOMPARE(QList<double>(
                     {pictures.at(0).x, pictures.at(0).y, pictures.at(0).x2, pictures.at(0).y2}),
                 QList<double>({kBoxLeft, 350, kBoxLeft + 2400, 350 + 3000}));
        QCOMPARE(Find(*printer, QStringLiteral("Invoice To:")).y, 3000 + 3 * kLine);
        QCOMPARE(Find(*printer, QStringLiteral("Quill Parts Ltd")).y, 3 * kLine);

        // A short logo leaves the address a tenth down the page.
        InstallPictureLoader([](const QString& p) { return Picture{p, 2400, 900}; });
        printer->Clear();
        PrintOne(QStringLiteral("Invoice"), Sheet(), boxes);
        QCOMPARE(printer->Calls(PrintCall::Picture).size(), 1);
        QCOMPARE(Find(*printer, QStringLiteral("Invoice To:")).y, kH / 10 + 3 * kLine);

        // The file has gone since it was set: no picture, no box, the page as without a logo.
        InstallPictureLoader([](const QString& p) { return Picture{p, 2400, 3000}; });
        QVERIFY(QFile::remove(logoFile));
        printer->Clear();
        boxes.answerInput(QStringLiteral("1"));
        const SalesDocumentResult without =
            PrintSalesDocument(QStringLiteral("Invoice"), Sheet(), {kCompany, QString()});
        QVERIFY(without.logoPath.isEmpty());
        QVERIFY(printer->Calls(PrintCall::Picture).isEmpty());
        QCOMPARE(Find(*printer, QStringLiteral("Invoice To:")).y, kH / 10 + 3 * kLine);
        QCOMPARE(boxes.shown().size(), 5); // the copies questions alone

        // A workstation's own "Image_1" is not the logo; "0" under the shared name is none.
        {
            QFile f(logoFile);
            QVERIFY(f.open(QIODevice::WriteOnly));
        }
        SaveDefault(QStringLiteral("Image_1"), logoFile, QString());
        {
            SharedSettingsScope shared;
            SaveDefault(QStringLiteral("Image_1"), QStringLiteral("0"), QString());
        }
        printer->Clear();
        PrintOne(QStringLiteral("Order"), Sheet(), boxes);
        QVERIFY(printer->Calls(PrintCall::Picture).isEmpty());
    }

    void copiesQuestion() {
        TestData data;
        ScriptedBoxes boxes;
        auto failing = std::make_shared<FailingPrinter>(QStringList());
        SetPrinters({failing});
        SetCurrentPrinter(failing);
        failing->SetCopies(2);
        failing->SetFontSize(12);
        const auto print = [&](const QString& answer, bool told = false) {
            failing->Clear();
            failing->copiesAtStart.clear();
            boxes.clear();
            if (answer == QLatin1String("<cancel>"))
                boxes.cancelInput();
            else
                boxes.answerInput(answer);
            if (told)
                boxes.answer(vbOK);
            return PrintSalesDocument(QStringLiteral("Delivery"), Sheet(), {kCompany, QString()})
                .copies;
        };

        // 100 is accepted: a job per copy, each of one sheet at one copy.
        QCOMPARE(print(QStringLiteral("100")), 100);
        QCOMPARE(failing->Documents(), 100);
        QCOMPARE(failing->copiesAtStart, QList<int>(100, 1));
        QCOMPARE(failing->Calls(PrintCall::NewPage).size(), 0);
        QCOMPARE(failing->Texts().count(QStringLiteral("Delivery To:")), 100);
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(failing->Copies(), 2);
        QCOMPARE(failing->FontSize(), 12.0);

        // A fraction is cut.
        QCOMPARE(print(QStringLiteral("2.5")), 2);
        QCOMPARE(failing->Documents(), 2);

        // Above 100: the joke, with the number as typed, and nothing printed.
        QCOMPARE(print(QStringLiteral("101"), true), 0);
        QCOMPARE(failing->Calls().size(), 0);
        QCOMPARE(boxes.shown().size(), 2);
        QCOMPARE(boxes.shown().at(1).title,
                 QStringLiteral("How many? You're joking..... aren't you?"));
        QCOMPARE(boxes.shown().at(1).flags, int(vbInformation));
        QCOMPARE(boxes.shown().at(1).prompt,
                 QStringLiteral(
                     "The maximum number of copies has been exceeded. Try a smaller quantity. If "
                     "you really need that many then print a number of smaller batches (less "
                     "than 100). But, go on, admit it, you're just messing aren't you. You don't "
                     "really want 101 copies do you? No, didn't think so. Click OK to cancel and "
                     "then enter a more sensible qty."));
        // Zero, negative and below one: "The number of copies is zero".
        for (const char* answer : {"0", "-1", "0.5"}) {
            QCOMPARE(print(QString::fromLatin1(answer), true), 0);
            QCOMPARE(failing->Calls().size(), 0);
            QCOMPARE(boxes.shown().size(), 2);
            QCOMPARE(boxes.shown().at(1).prompt, QStringLiteral("The number of copies is zero"));
            QCOMPARE(boxes.shown().at(1).flags, int(vbOKOnly));
            QCOMPARE(boxes.shown().at(1).title, AppName());
        }

        // Not a number: "Stopped".
        for (const char* answer : {"abc", "2 copies", " "}) {
            QCOMPARE(print(QString::fromLatin1(answer), true), 0);
            QCOMPARE(failing->Calls().size(), 0);
            QCOMPARE(boxes.shown().size(), 2);
            QCOMPARE(boxes.shown().at(1).prompt,
                     QStringLiteral("Input was invalid. Number of copies must be numerical."));
            QCOMPARE(boxes.shown().at(1).title, QStringLiteral("Stopped"));
            QCOMPARE(boxes.shown().at(1).flags, int(vbInformation));
        }

        // Cancel or an empty answer: silently nothing.
        for (const char* answer : {"<cancel>", ""}) {
            QCOMPARE(print(QString::fromLatin1(answer)), 0);
            QCOMPARE(failing->Calls().size(), 0);
            QCOMPARE(boxes.shown().size(), 1);
        }
        QCOMPARE(failing->Copies(), 2);
        QCOMPARE(failing->FontSize(), 12.0);
    }

    void printerChoiceAndFailures() {
        TestData data;
        ScriptedBoxes boxes;
        auto first = std::make_shared<RecordingPrinter>(QStringLiteral("First"));
        auto second = std::make_shared<RecordingPrinter>(QStringLiteral("Second"));
        SetPrinters({first, second});
        SetCurrentPrinter(first);
        const QList<QByteArray> files{FileHash(gDbPath), FileHash(gUserCfgPath),
                                      FileHash(gRightsPath)};

        // The chosen printer by its name; none chosen or an unknown one: the current printer.
        PrintOne(QStringLiteral("Invoice"), Sheet(), boxes, QStringLiteral("Second"));
        QCOMPARE(second->Documents(), 1);
        QCOMPARE(first->Documents(), 0);
        PrintOne(QStringLiteral("Invoice"), Sheet(), boxes, QStringLiteral("Gone"));
        QCOMPARE(second->Documents(), 2);
        SetCurrentPrinter(first);
        PrintOne(QStringLiteral("Invoice"), Sheet(), boxes);
        QCOMPARE(first->Documents(), 1);
        // Printing writes nothing anywhere.
        QCOMPARE(
            QList<QByteArray>({FileHash(gDbPath), FileHash(gUserCfgPath), FileHash(gRightsPath)}),
            files);

        // A refused start (the PDF file name cancelled): nothing printed, nothing said, and the
        // remaining copies are not asked for.
        auto refusing = std::make_shared<RefusingPrinter>();
        SetPrinters({refusing});
        SetCurrentPrinter(refusing);
        boxes.clear();
        boxes.answerInput(QStringLiteral("3"));
        QCOMPARE(PrintSalesDocument(QStringLiteral("Order"), Sheet(), {kCompany, QString()}).copies,
                 0);
        QCOMPARE(refusing->starts, 1);
        QVERIFY(refusing->Calls().isEmpty());
        QCOMPARE(boxes.shown().size(), 1);

        // The two texts that open a continuation sheet may fail: the document goes on.
        CustOrderSheet sheet = Sheet();
        sheet.rows.clear();
        for (int i = 1; i <= 12; ++i)
            sheet.rows << Row(QStringLiteral("Item %1").arg(i), "P", "1", "1", "1", "1", "");
        auto shaky = std::make_shared<FailingPrinter>(
            QStringList{QStringLiteral("Continuation Sheet "), QStringLiteral("Page# 2")});
        SetPrinters({shaky});
        SetCurrentPrinter(shaky);
        PrintOne(QStringLiteral("Invoice"), sheet, boxes);
        QCOMPARE(shaky->Documents(), 1);
        QCOMPARE(Find(*shaky, QStringLiteral("Item 12")).page, 2);
        QCOMPARE(Find(*shaky, QStringLiteral("Description"), 2).page, 2);
        QCOMPARE(Count(*shaky, QStringLiteral("Notes")), 1);

        // Any other failure reaches the caller, with the printer's settings given back.
        auto broken = std::make_shared<FailingPrinter>(QStringList{QStringLiteral("Item 3")});
        SetPrinters({broken});
        SetCurrentPrinter(broken);
        broken->SetFontSize(9);
        boxes.answerInput(QStringLiteral("2"));
        QVERIFY_THROWS_EXCEPTION(
            DbError, PrintSalesDocument(QStringLiteral("Invoice"), sheet, {kCompany, QString()}));
        QCOMPARE(broken->Documents(), 0);
        QCOMPARE(broken->FontSize(), 9.0);
    }
};

QTEST_GUILESS_MAIN(TestSalesDocuments)
#include "test_sales_documents.moc"
