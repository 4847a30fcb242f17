// The order copy, invoice, delivery note and packing note on the recording printer: telling texts
// at their places, the kinds against each other, continuation sheets, the logo, the copies
// question and the printer's own settings.
#include "foundation/Printer.h"
#include "foundation/Settings.h"
#include "sales/SalesDocuments.h"
#include "tests/sales/SalesFixture.h"

#include <QFile>

using namespace sales_fixture;

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

// A row: description, part number, sell price, order and invoice quantity, total, location.
OrderRow Row(const QStringList& c) {
    OrderRow r;
    const int columns[] = {OrderCol::Desc,     OrderCol::PartNo,     OrderCol::SellAt,
                           OrderCol::OrderQty, OrderCol::InvoiceQty, OrderCol::Total,
                           OrderCol::Location};
    for (int i = 0; i < 7; ++i)
        r[columns[i]] = c[i];
    return r;
}

// An invoice being made from order 12: the Gadget row is not on this invoice, the Gizmo is
// invoiced although its order quantity reads 0, so that each kind shows which column it reads.
// Its notes break at CR LF and at LF alone, an empty line between, the last without a break.
CustOrderSheet Sheet() {
    // clang-format off
    return {.mode = OrderMode::InvoiceOrder, .custListText = {}, .custID = {},
            .custName = "Acme Ltd", .custAdd1 = "1 High St", .custAdd2 = "Lower Town",
            .custAdd3 = "Shire", .custAdd4 = "Kingdom", .custPO = "AB1 2CD", .custBasketID = "0012",
            .custOrNo = "PO-7", .orDate = "04/03/2026", .discount = {}, .invoiceNo = "0031",
            .invoiceDate = "01/05/2026", .custShipID = "0012-002",
            .rows = {Row({"Widget", "A-1", "10.125", "2", "2.5", "25.3125", "A1"}),
                     Row({"Gadget", "B-2", "3.00", "1", "0", "0.00", "B7"}),
                     Row({"Gizmo", "D-4", "2", "0", "1", "2.00", "D1"})},
            .net = "27.31", .delivery = "5.00", .vat = "5.66", .total = "37.97",
            .deliveryText = "Carriage  ", .vatText = "VAT  ",
            .notes = "Goods remain ours until paid.\r\n\nThank you"};
    // clang-format on
}

// The sheet with `n` rows of one piece at 1.00.
CustOrderSheet LongSheet(int n) {
    CustOrderSheet sheet = Sheet();
    sheet.rows.clear();
    for (int i = 1; i <= n; ++i)
        sheet.rows << Row({QStringLiteral("Item %1").arg(i), "P", "1", "1", "1", "1", ""});
    return sheet;
}

// Prints one copy of a kind.
SalesDocumentResult PrintOne(const QString& kind, const CustOrderSheet& sheet, ScriptedBoxes& boxes,
                             const QString& printerName = {}) {
    boxes.answerInput("1");
    return PrintSalesDocument(kind, sheet, {kCompany, printerName});
}

// Places as text: a call's corners, or a page, x, y and font size.
QString Place(double a, double b, double c, double d) {
    return QString::asprintf("%.1f %.1f %.1f %.1f", a, b, c, d);
}
QString Corners(const PrintCall& c) {
    return Place(c.x, c.y, c.x2, c.y2);
}
// The n-th text call with this text; one with page 0 when there is none.
PrintCall Find(const QList<PrintCall>& calls, const QString& text, int occurrence = 1) {
    for (const PrintCall& c : calls)
        if (c.text == text && --occurrence == 0)
            return c;
    return PrintCall{};
}

// A text as expected: where it starts or, right-aligned, where it ends, and its line.
struct Expected {
    QString text;
    double mark, y;
    bool right = false;
};
// Each text at its first occurrence: on page 1 at size 10, where it starts or ends, on its line.
void CompareTexts(const QList<PrintCall>& calls, const QList<Expected>& expected) {
    QStringList got, want;
    for (const Expected& e : expected) {
        const PrintCall c = Find(calls, e.text);
        got << e.text + ' ' + Place(c.page, e.right ? c.x2 : c.x, c.y, c.fontSize);
        want << e.text + ' ' + Place(1, e.mark, e.y, 10);
    }
    QCOMPARE(got, want);
}
QStringList TextsOf(const QList<PrintCall>& calls, bool withY = false) {
    QStringList out;
    for (const PrintCall& c : calls)
        if (c.kind == PrintCall::Text)
            out << (withY ? QString::number(c.y, 'f', 1) : c.text);
    return out;
}

// A printer that fails on given texts, as a printer going offline does, or whose documents
// never start, as the PDF writer when its file name is cancelled.
struct FailingPrinter : RecordingPrinter {
    FailingPrinter(QStringList failOn, bool refuse)
        : RecordingPrinter("Failing"), failOn(std::move(failOn)), refuse(refuse) {}
    QStringList failOn;
    bool refuse;
    QList<int> copiesAtStart;
    bool BeginDocument() override {
        copiesAtStart << Copies();
        return !refuse;
    }
    void DrawText(double x, double y, const QString& line) override {
        if (failOn.contains(line))
            throw DbError(482, "Printer error");
        RecordingPrinter::DrawText(x, y, line);
    }
};
std::shared_ptr<FailingPrinter> UseFailingPrinter(const QStringList& failOn, bool refuse = false) {
    auto p = std::make_shared<FailingPrinter>(failOn, refuse);
    SetPrinters({p});
    SetCurrentPrinter(p);
    return p;
}
} // namespace

class TestSalesDocuments : public QObject {
    Q_OBJECT
private slots:
    void init() {
        UseTestLocale();
        InstallPictureLoader({});
    }

    void eachKindLaidOut() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseRecordingPrinter();
        QList<PrintCall> kinds[4];
        for (int k = 0; k < 4; ++k) {
            printer->Clear();
            PrintOne(QStringList{"Invoice", "Delivery", "PickList", "Order"}[k], Sheet(), boxes);
            kinds[k] = printer->Calls();
        }
        QCOMPARE(boxes.prompts(ShownBox::Input), QStringList(4, "Print Invoice. How many copies?"));
        const auto& [invoice, delivery, packing, order] = kinds;

        // The company block right on xRight from the fourth line (its empty line kept); the
        // address a tenth down the page and three lines on; the right block from the line under
        // "Invoice To:"; the table under the address box; rows of three lines; the foot at 83%.
        const double to = kH / 10 + 3 * kLine, block = to + kLine, ad = block + kHalf;
        const double head = ad + 9 * kLine + kHalf, row1 = head + 4 * kLine + kHalf;
        const double notes = 0.83 * kH, totals = 0.84 * kH, total = totals + 5 * kLine + 2 * kHalf;
        // clang-format off
        CompareTexts(invoice, {
            {"Quill Parts Ltd", kRight, 3 * kLine, true}, {"England", kRight, 9 * kLine, true},
            {"Invoice To:", kText, to}, {"AB1 2CD", kText, ad + 5 * kLine},
            {"Invoice #", kLabel, block}, {"0031", kRight, block, true},
            {"Customer's PO", kLabel, block + 4 * kLine}, {"1", kRight, block + 8 * kLine, true},
            {"Part No.", kText, head + kLine}, {"Ordered", kOrdered, head, true},
            {"Invoiced", kQty, head, true}, {"Widget", kText, row1}, {"2.5", kQty, row1 + kLine, true},
            {"10.125", kPrice, row1 + kLine, true}, {"25.3125", kRight, row1 + kLine, true},
            {"Gizmo", kText, row1 + 3 * kLine}, {"Goods remain ours until paid.", kNotes, notes + 2 * kLine},
            {"Thank you", kNotes, notes + 4 * kLine},
            {"27.31", kRight, totals, true}, {"5.66", kRight, totals + 4 * kLine, true},
            {"Total   ", kQty, total}, {"37.97", kRight, total, true}});
        // clang-format on
        QVERIFY(!Find(invoice, "Gadget").page); // nothing on this invoice
        // The address box nine lines high, the table box to 82%, the notes and totals boxes; the
        // rule under the heading and the line over the total.
        QStringList drawn;
        for (const PrintCall& c : invoice)
            if (c.kind == PrintCall::Box || c.kind == PrintCall::Line)
                drawn << Corners(c);
        QCOMPARE(drawn, QStringList({Place(kBoxLeft, block, kCustBoxRight, block + 18 * kHalf),
                                     Place(kBoxLeft, head - kHalf, kBoxRight, 0.82 * kH),
                                     Place(kBoxLeft, row1 - kLine, kBoxRight, row1 - kLine),
                                     Place(kBoxLeft, notes, kQty - 3 * kChar, 0.95 * kH),
                                     Place(kQty - 2 * kChar, notes, kBoxRight, 0.95 * kH),
                                     Place(kQty, total - kHalf, kRight, total - kHalf)}));

        // The delivery note: the invoice's lines without prices, totals or the totals box; its
        // right block starts with the delivery; its quantities end on xRight.
        QStringList steps = TextsOf(invoice, true);
        for (int i = steps.size() - 1; i >= 0; --i)
            if (QStringList{"Price", "Total", "10.125", "25.3125", "2.00", "27.31", "Carriage  ",
                            "5.00", "VAT  ", "5.66", "Total   ", "37.97"}
                    .contains(TextsOf(invoice)[i]))
                steps.removeAt(i);
        QCOMPARE(TextsOf(delivery, true), steps);
        QCOMPARE(joined(TextsOf(delivery).mid(13, 10)),
                 "Delivery #|0012-002|Invoice #|0031|Customer's PO|PO-7|Date:|01/05/2026|Page# |1");
        QCOMPARE(Find(delivery, "2.5").x2, kRight);
        QCOMPARE(delivery.size() - TextsOf(delivery).size(), 3 + 1 + 1); // boxes, rule, EndDoc

        // The packing note: the delivery note plus the location caption and each location at
        // xQty, on the line of its heading or part number.
        QStringList withoutLocations, locations;
        for (const PrintCall& c : packing)
            (c.kind == PrintCall::Text && c.x == kQty ? locations : withoutLocations)
                << c.text + ' ' + Corners(c);
        QStringList deliveryCalls;
        for (const PrintCall& c : delivery)
            deliveryCalls << c.text + ' ' + Corners(c);
        QCOMPARE(withoutLocations, deliveryCalls);
        QCOMPARE(QList<double>({double(locations.size()), Find(packing, "Location").y,
                                Find(packing, "A1").y, Find(packing, "D1").y}),
                 QList<double>({3, head, row1 + kLine, row1 + 4 * kLine}));

        // The order copy reads OrderQty: the Gadget prints and the Gizmo does not; no "Ordered"
        // column; its own right block.
        QCOMPARE(
            joined(TextsOf(order).mid(21, 13)),
            "Description|Part No.|Price|Qty|Total|Widget|A-1|2.0|10.125|25.3125|Gadget|B-2|1.0");
        QCOMPARE(QList<double>({Find(order, "0012").y, Find(order, "Order Date:").y}),
                 QList<double>({block, block + 4 * kLine}));
        QVERIFY(!Find(order, "Gizmo").page && !Find(order, "Invoice #").page);

        // Without the customer's reference its line goes and the date moves up.
        CustOrderSheet noRef = Sheet();
        noRef.custOrNo.clear();
        printer->Clear();
        PrintOne("Invoice", noRef, boxes);
        QCOMPARE(Find(printer->Calls(), "Invoice Date:").y, block + 4 * kLine);
    }

    void longOrderRunsOverContinuationSheets() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseRecordingPrinter();
        // 11 rows fill the first sheet and 14 each continuation sheet; the 25th row ends at 80%
        // of the second sheet, so the foot goes to a third sheet of its own.
        PrintOne("Invoice", LongSheet(25), boxes);
        const QList<PrintCall> calls = printer->Calls();
        QCOMPARE(QList<int>({printer->Documents(), int(printer->Calls(PrintCall::NewPage).size()),
                             Find(calls, "Item 11").page, Find(calls, "Item 12").page,
                             Find(calls, "Item 25").page, Find(calls, "Notes").page}),
                 QList<int>({1, 2, 1, 2, 2, 3}));
        const PrintCall end1 = Find(calls, "End of Page# 1  - See Continuation Sheet");
        QCOMPARE(Place(end1.page, end1.x, end1.y, 0),
                 Place(1, kText, Find(calls, "Item 11").y + 3 * kLine, 0));
        for (int page : {2, 3}) {
            const PrintCall sheetText = Find(calls, "Continuation Sheet ", page - 1);
            const PrintCall number = Find(calls, QStringLiteral("Page# %1").arg(page));
            const PrintCall desc = Find(calls, "Description", page);
            QCOMPARE(Place(sheetText.page, sheetText.x, sheetText.y, desc.y),
                     Place(page, kText, kH / 10, kH / 10 + kLine + kHalf));
            QCOMPARE(Place(number.page, number.x, number.y, desc.page),
                     Place(page, kRight, kH / 10, page));
        }
        QCOMPARE(Find(calls, "Item 12").y, kH / 10 + kLine + kHalf + 6 * kLine + kHalf);
        // The header once, the foot once; a table box per sheet; rules: heading (3), continuation
        // (2 ends, 2 tops), the line over the total.
        for (const char* once : {"Invoice To:", "Quill Parts Ltd", "Page# ", "Notes", "37.97"})
            QVERIFY2(printer->Texts().count(once) == 1, once);
        QCOMPARE(printer->Calls(PrintCall::Box).size(), 1 + 3 + 2);
        QCOMPARE(printer->Calls(PrintCall::Line).size(), 3 + 4 + 1);

        // One row less: the foot ends the second sheet.
        printer->Clear();
        PrintOne("Delivery", LongSheet(24), boxes);
        QCOMPARE(Find(printer->Calls(), "Notes").page, 2);
    }

    void theLogo() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseRecordingPrinter();
        // A logo taller than a tenth of the page: painted at (xBoxLeft, 350) in its own size,
        // and the address goes under it, while the company block keeps its place. The shared
        // "Image_1" is read under the shared name, the station's own name given back.
        const QString logoFile = data.path("logo.png");
        QVERIFY(QFile(logoFile).open(QIODevice::WriteOnly));
        {
            SharedSettingsScope shared;
            SaveDefault("Image_1", logoFile, QString());
        }
        InstallPictureLoader([](const QString& p) { return Picture{p, 2400, 3000}; });
        QCOMPARE(joined({PrintOne("Invoice", Sheet(), boxes).logoPath, gPcName,
                         Corners(printer->Calls(PrintCall::Picture).value(0)),
                         Place(0, 0, Find(printer->Calls(), "Invoice To:").y,
                               Find(printer->Calls(), "Quill Parts Ltd").y)}),
                 joined({logoFile, "TESTPC", Place(kBoxLeft, 350, kBoxLeft + 2400, 350 + 3000),
                         Place(0, 0, 3000 + 3 * kLine, 3 * kLine)}));

        // The file has gone since it was set: no picture, no box, the page as without a logo.
        QVERIFY(QFile::remove(logoFile));
        printer->Clear();
        QVERIFY(PrintOne("Invoice", Sheet(), boxes).logoPath.isEmpty());
        QVERIFY(printer->Calls(PrintCall::Picture).isEmpty());
        QCOMPARE(Find(printer->Calls(), "Invoice To:").y, kH / 10 + 3 * kLine);
    }

    void copiesQuestion() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseFailingPrinter({});
        printer->SetCopies(2);
        printer->SetFontSize(12);
        // Per answer: the copies printed, jobs begun at one copy each, sheets, and the box told.
        // clang-format off
        const QList<QStringList> answers{
            {"100", "100", ""}, {"2.5", "2", ""}, {"<cancel>", "0", ""}, {"", "0", ""},
            {"101", "0",
             "How many? You're joking..... aren't you?|The maximum number of copies has been "
             "exceeded. Try a smaller quantity. If you really need that many then print a number "
             "of smaller batches (less than 100). But, go on, admit it, you're just messing aren't "
             "you. You don't really want 101 copies do you? No, didn't think so. Click OK to "
             "cancel and then enter a more sensible qty."},
            {"0", "0", "qstk3|The number of copies is zero"},
            {"-1", "0", "qstk3|The number of copies is zero"},
            {"abc", "0", "Stopped|Input was invalid. Number of copies must be numerical."}};
        // clang-format on
        for (const QStringList& a : answers) {
            printer->Clear();
            printer->copiesAtStart.clear();
            boxes.clear();
            if (a[0] == "<cancel>")
                boxes.cancelInput();
            else
                boxes.answerInput(a[0]);
            if (!a[2].isEmpty())
                boxes.answer(vbOK);
            const int copies = PrintSalesDocument("Delivery", Sheet(), {kCompany, {}}).copies;
            QCOMPARE(joined({a[0], QString::number(copies), QString::number(printer->Documents()),
                             QString::number(printer->copiesAtStart.count(1)),
                             QString::number(printer->Texts().count("Delivery To:")),
                             boxes.prompts().isEmpty() ? "" : lastBox(boxes)}),
                     joined({a[0], a[1], a[1], a[1], a[1], a[2]}));
        }
        QCOMPARE(joined({QString::number(printer->Copies()), QString::number(printer->FontSize()),
                         QString::number(printer->Calls(PrintCall::NewPage).size())}),
                 "2|12|0");
    }

    void printerChoiceAndFailures() {
        TestData data;
        ScriptedBoxes boxes;
        auto current = UseRecordingPrinter();
        const auto files = [] {
            QByteArray bytes;
            for (const QString& path : {gDbPath, gUserCfgPath, gRightsPath}) {
                QFile f(path);
                bytes += f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("-");
            }
            return bytes;
        };
        const QByteArray before = files();
        PrintOne("Invoice", Sheet(), boxes, "Gone");
        QCOMPARE(current->Documents(), 1); // an unknown name: the current printer

        // A refused start (the PDF file name cancelled): nothing printed, nothing said, and no
        // further copies.
        auto refusing = UseFailingPrinter({}, true);
        boxes.clear();
        boxes.answerInput("3");
        QCOMPARE(PrintSalesDocument("Order", Sheet(), {kCompany, {}}).copies, 0);
        QCOMPARE(QList<qsizetype>({refusing->copiesAtStart.size(), refusing->Calls().size(),
                                   boxes.shown().size()}),
                 QList<qsizetype>({1, 0, 1}));

        // A printer error reaches the caller, with the printer's settings given back.
        const CustOrderSheet sheet = LongSheet(12);
        auto broken = UseFailingPrinter({"Item 3"});
        broken->SetFontSize(9);
        boxes.answerInput("2");
        QVERIFY_THROWS_EXCEPTION(DbError, PrintSalesDocument("Invoice", sheet, {kCompany, {}}));
        QCOMPARE(QString::number(broken->Documents()) + '|' + QString::number(broken->FontSize()),
                 "0|9");
        QCOMPARE(files(), before); // printing, failed or not, writes nothing anywhere
    }
};

QTEST_GUILESS_MAIN(TestSalesDocuments)
#include "test_sales_documents.moc"
