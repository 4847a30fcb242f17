// The purchase order document on the recording printer: texts, fonts and marks, page breaks,
// the questions before drawing, the logo and the printer chosen.
#include "foundation/DocumentParts.h"
#include "foundation/Globals.h"
#include "foundation/Printer.h"
#include "foundation/Settings.h"
#include "purchasing/PurchaseOrderDocument.h"
#include "tests/purchasing/PurchasingFixture.h"

#include <QTest>

namespace {

// The marks of an A4 sheet (11906 x 16838 twips), in whole twips.
constexpr double kTopY = 842, kColItem = 595, kColPart = 1191, kColFoot = 1786, kColCost = 5953,
                 kColRight = 6548, kColQty = 7441, kColPage = 9525, kColTotal = 9882,
                 kRuleEnd = 10715, kPageLimit = 14312;
constexpr double kLine8 = 8 * RecordingPrinter::LineHeightPerPoint;

// The n-th text call with this text; one with page 0 when there is none.
PrintCall Find(const RecordingPrinter& p, const QString& text, int occurrence = 1) {
    for (const PrintCall& c : p.Calls(PrintCall::Text))
        if (c.text == text && --occurrence == 0)
            return c;
    return PrintCall{};
}

// An order of `rows` rows of quantity 1 at 1.00, each of its own item.
void Order(int poid, const QString& date, int rows) {
    ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, PONumber, PODate, POSupID) VALUES "
                           "(%1, 'REF-9', '%2', 1)")
                .arg(poid)
                .arg(date));
    for (int i = 0; i < rows; ++i) {
        fixture::Item(1000 + i, QStringLiteral("LP-%1").arg(1000 + i));
        ExecSql(QStringLiteral("INSERT INTO tblPODetail (POID, POStockID, POSupPNo, POQty, "
                               "POPrice, POSchedDate, PORecieved) VALUES (%1, %2, 'V%2', 1, 1, "
                               "'2040-01-01', 0)")
                    .arg(poid)
                    .arg(1000 + i));
    }
}

// A printer whose documents never start, as the PDF writer when its file name is cancelled.
class RefusingPrinter : public RecordingPrinter {
public:
    RefusingPrinter() : RecordingPrinter(QStringLiteral("Refusing")) {}

protected:
    bool BeginDocument() override { return false; }
};

} // namespace

class TestPurchaseOrderDocument : public QObject {
    Q_OBJECT
private slots:
    void init() { gPOPrinterName.clear(); }

    void threeRows() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseRecordingPrinter();
        fixture::Home();
        fixture::Supplier(1, QStringLiteral("Acme"));
        fixture::Item(10, QStringLiteral("RES-10K"), QStringLiteral("Resistor 10k"));
        fixture::Item(11, QStringLiteral("CAP-1U"), QStringLiteral("Capacitor 1u"));
        fixture::Item(12, QStringLiteral("AAA-1"), QStringLiteral("Relay"));
        ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, PONumber, PODate, POSupID) VALUES "
                               "(7, 'REF-9', '2026-11-23', 1)"));
        ExecSql(QStringLiteral(
            "INSERT INTO tblPODetail (POID, POStockID, POSupPNo, POQty, POPrice, POSchedDate, "
            "PORecieved) VALUES (7, 10, 'A-10', 2, 2, '2040-01-01', 0), (7, 11, '', 1.5, 0.125, "
            "'2026-12-24', 0), (7, 12, 'X', 3, 1.1, '2026-12-01', 0)"));

        QCOMPARE(PrintPurchaseOrder(7, true), int(kPODocumentPrinted));
        QVERIFY(boxes.shown().isEmpty());
        QCOMPARE(printer->Documents(), 1);
        QVERIFY(printer->Calls(PrintCall::NewPage).isEmpty());
        // Every text in order: rows by part number; prices keep their decimals, quantities
        // don't; a row with no supplier's part number and the no-date value print nothing.
        QCOMPARE(
            printer->Texts(),
            QStringList({"Quill Parts Ltd", "Purchase Order", "0007 / REF-9", "Date 23/11/2026",
                         "To:", "Acme", "Acme Street", "Leeds", "LS1", "Tel: 0113 1 Fax: 0113 2",
                         "Ann", "Ship To:", "Quill Parts Ltd", "1 Mill Lane", "Otley",
                         "West Yorkshire", "LS21 1AA", "England", "Tel: 01943 1 Fax: 01943 2",
                         "Item", "P/N", "Cost", "Order Qty", "Total", "Description", "Schedule",
                         // the three blocks
                         "1", "AAA-1", "1.10", "3", "3.30", "Relay", "Vendor  P/N X", "01/12/2026",
                         "2", "CAP-1U", "0.125", "1.5", "0.1875", "Capacitor 1u", "24/12/2026", "3",
                         "RES-10K", "2.00", "2", "4.00", "Resistor 10k", "Vendor  P/N A-10",
                         // the foot
                         "7.4875",
                         "End of Purchase Order. Number of pages: 1      Total Order "
                         "Value:"}));

        // Marks and fonts.
        struct Mark {
            QString text;
            double x;
            double size;
            bool bold, italic;
        };
        const QList<Mark> marks = {
            {"Quill Parts Ltd", kColItem, 16, true, false},
            {"Purchase Order", kColRight, 16, true, false},
            {"0007 / REF-9", kColRight, 14, true, false},
            {"To:", kColPart, 14, true, true},
            {"Ship To:", kColRight, 14, true, true},
            {"Tel: 01943 1 Fax: 01943 2", kColRight, 14, true, true},
            {"Item", kColItem, 8, true, false},
            {"Order Qty", kColQty, 8, true, false},
            {"Schedule", kColCost, 8, true, false},
            {"1", kColItem, 8, false, false},
            {"AAA-1", kColPart, 10, false, false},
            {"1.10", kColCost, 8, false, false},
            {"3.30", kColTotal, 8, false, false},
            {"Relay", kColPart, 8, false, false},
            {"Vendor  P/N X", kColPart, 8, false, false},
            {"01/12/2026", kColCost, 8, false, false},
            {"7.4875", kColTotal, 8, true, false},
            {"End of Purchase Order. Number of pages: 1      Total Order Value:", kColFoot, 8, true,
             false},
        };
        for (const Mark& m : marks) {
            const PrintCall c = Find(*printer, m.text);
            QVERIFY2(c.x == m.x && c.fontSize == m.size && c.bold == m.bold && c.italic == m.italic,
                     qPrintable(m.text));
        }
        // The lines: the title block from TopY, the two address blocks side by side, a block's
        // lines apart by their height and a gap, the foot on one line.
        QCOMPARE(Find(*printer, QStringLiteral("Purchase Order")).y, kTopY);
        QCOMPARE(Find(*printer, QStringLiteral("Quill Parts Ltd")).y, kTopY);
        QCOMPARE(Find(*printer, QStringLiteral("To:")).y, Find(*printer, "Ship To:").y);
        QCOMPARE(Find(*printer, QStringLiteral("Acme")).y,
                 Find(*printer, QStringLiteral("Quill Parts Ltd"), 2).y);
        const double top = Find(*printer, QStringLiteral("AAA-1")).y;
        QCOMPARE(Find(*printer, QStringLiteral("3.30")).y, top);
        QCOMPARE(Find(*printer, QStringLiteral("Relay")).y, top + 240 + 67);
        QCOMPARE(Find(*printer, QStringLiteral("01/12/2026")).y, top + 240 + 67 + kLine8 + 67);
        QCOMPARE(Find(*printer, QStringLiteral("7.4875")).y, Find(*printer, marks.last().text).y);
        const QList<PrintCall> rules = printer->Calls(PrintCall::Line);
        QCOMPARE(rules.size(), 6); // under the title, over and under the heads, one per block
        for (const PrintCall& l : rules)
            QVERIFY(l.x == kColItem && l.x2 == kRuleEnd && l.y == l.y2);
    }

    void longOrderBreaks() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseRecordingPrinter();
        fixture::Home();
        fixture::Supplier(1, QStringLiteral("Acme"));
        constexpr int kRows = 45;
        Order(9, QStringLiteral("2026-11-23"), kRows);
        QCOMPARE(PrintPurchaseOrder(9, false), int(kPODocumentPrinted));
        const int pages = int(printer->Calls(PrintCall::NewPage).size()) + 1;
        QVERIFY(pages >= 3);
        QCOMPARE(Find(*printer, QStringLiteral("End of Purchase Order. Number of pages: %1      "
                                               "Total Order Value:")
                                    .arg(pages))
                     .page,
                 pages);

        // Each block's sheet and the rule that closes it: a new sheet exactly after a block
        // that ends past 85% of the paper, and none after the last.
        const QList<PrintCall> calls = printer->Calls();
        QList<int> blockPage;
        QList<double> blockEnd;
        for (int i = 0; i < calls.size(); ++i) {
            if (calls[i].kind != PrintCall::Text || calls[i].x != kColItem ||
                calls[i].text != QString::number(blockPage.size() + 1))
                continue;
            blockPage << calls[i].page;
            int j = i;
            while (calls[j].kind != PrintCall::Line)
                ++j;
            blockEnd << calls[j].y;
        }
        QCOMPARE(blockPage.size(), kRows);
        for (int b = 0; b + 1 < kRows; ++b)
            QCOMPARE(blockPage[b + 1], blockPage[b] + (blockEnd[b] > kPageLimit ? 1 : 0));
        QCOMPARE(blockPage.last(), pages);
        for (const PrintCall& c : calls)
            QVERIFY2(c.kind != PrintCall::Text || c.y + kLine8 < 16838, qPrintable(c.text));

        // A sheet's end says where it goes on; the next starts with the short header.
        for (int page = 2; page <= pages; ++page) {
            const PrintCall cont = Find(*printer, QStringLiteral("Continued on Page %1").arg(page));
            QCOMPARE(cont.page, page - 1);
            QCOMPARE(cont.x2, kRuleEnd);
            const PrintCall to = Find(*printer, QStringLiteral("To:"), page);
            const PrintCall from = Find(*printer, QStringLiteral("From"), page - 1);
            const PrintCall pageNo = Find(*printer, QStringLiteral("Page: %1").arg(page));
            QVERIFY(to.page == page && to.x == kColItem && to.y == kTopY && !to.bold);
            QVERIFY(from.x == kColItem && from.y == pageNo.y && pageNo.x == kColPage);
            QCOMPARE(Find(*printer, QStringLiteral("0009"), page - 1).x, kColPage);
            QCOMPARE(Find(*printer, QStringLiteral("Acme"), page).y, kTopY);
            QCOMPARE(Find(*printer, QStringLiteral("Quill Parts Ltd"), page + 1).y, pageNo.y);
        }
    }

    void questionsBeforeDrawing() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseRecordingPrinter();
        fixture::Supplier(1, QStringLiteral("Acme"));

        // No rows: the stop sign, nothing drawn.
        Order(4, QStringLiteral("2026-11-23"), 0);
        boxes.answer(vbOK);
        QCOMPARE(PrintPurchaseOrder(4, false), int(kPODocumentNothing));
        QCOMPARE(boxes.prompts(),
                 QStringList(QStringLiteral("There are no items connected with this order")));
        QCOMPARE(boxes.shown().at(0).title, QStringLiteral("Nothing to print"));
        QCOMPARE(boxes.shown().at(0).flags & vbCritical, int(vbCritical));
        QVERIFY(printer->Calls().isEmpty());

        // An older order: never asked when printed as placed.
        Order(5, QStringLiteral("2026-11-01"), 1);
        boxes.clear();
        QCOMPARE(PrintPurchaseOrder(5, false), int(kPODocumentPrinted));
        QVERIFY(boxes.shown().isEmpty());
        QVERIFY(printer->Texts().contains(QStringLiteral("Date 01/11/2026")));
        // On a reprint it asks; Yes prints today and changes nothing stored, so it asks again.
        for (const int answer : {vbYes, vbNo}) {
            printer->Clear();
            boxes.clear();
            boxes.answer(answer);
            QCOMPARE(PrintPurchaseOrder(5, true), int(kPODocumentPrinted));
            QCOMPARE(boxes.prompts(),
                     QStringList(QStringLiteral("The purchase order was first created on "
                                                "01/11/2026\nDo you want to re-print with "
                                                "today's date instead ?")));
            QCOMPARE(boxes.shown().at(0).title, QStringLiteral("Use Today's date?"));
            QCOMPARE(boxes.shown().at(0).flags & 7, int(vbYesNo));
            QVERIFY(printer->Texts().contains(answer == vbYes ? QStringLiteral("Date 23/11/2026")
                                                              : QStringLiteral("Date 01/11/2026")));
        }
        QCOMPARE(SqlFirst(QStringLiteral("SELECT PODate FROM tblPOrders WHERE POID=5")),
                 QStringLiteral("2026-11-01"));
        // An order of today, or with no date, is not asked about.
        ExecSql(QStringLiteral("UPDATE tblPOrders SET PODate='2026-11-23' WHERE POID=5"));
        ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, POSupID) VALUES (8, 1)"));
        ExecSql(QStringLiteral("INSERT INTO tblPODetail (POID, POStockID, POQty, POPrice) VALUES "
                               "(8, 1000, 1, 1)"));
        boxes.clear();
        QCOMPARE(PrintPurchaseOrder(5, true), int(kPODocumentPrinted));
        QCOMPARE(PrintPurchaseOrder(8, true), int(kPODocumentPrinted));
        QVERIFY(boxes.shown().isEmpty());
    }

    void logoAndPrinter() {
        TestData data;
        ScriptedBoxes boxes;
        auto first = std::make_shared<RecordingPrinter>(QStringLiteral("First"));
        auto second = std::make_shared<RecordingPrinter>(QStringLiteral("Second"));
        SetPrinters({first, second});
        SetCurrentPrinter(first);
        fixture::Supplier(1, QStringLiteral("Acme"));
        Order(3, QStringLiteral("2026-11-23"), 1);

        // No logo set: none painted, and the current printer takes the document.
        QCOMPARE(PrintPurchaseOrder(3, false), int(kPODocumentPrinted));
        QCOMPARE(first->Documents(), 1);
        QVERIFY(first->Calls(PrintCall::Picture).isEmpty());

        // The shared logo (a path over both stored values), 350 high in its own proportions,
        // above the company name; the printer chosen in the print frame takes the document.
        const QString path = QStringLiteral("/pictures/") + QString(260, QLatin1Char('L'));
        {
            SharedSettingsScope shared;
            SaveDefault(QStringLiteral("Image_1"), path.left(250), path.mid(250));
        }
        InstallPictureLoader([](const QString& p) { return Picture{p, 3000, 1500}; });
        gPOPrinterName = QStringLiteral("Second");
        QCOMPARE(PrintPurchaseOrder(3, false), int(kPODocumentPrinted));
        QCOMPARE(first->Documents(), 1);
        QCOMPARE(second->Documents(), 1);
        const QList<PrintCall> logo = second->Calls(PrintCall::Picture);
        QCOMPARE(logo.size(), 1);
        QCOMPARE(logo.at(0).text, path);
        QCOMPARE(logo.at(0).x, kColItem);
        QCOMPARE(logo.at(0).x2 - logo.at(0).x, 700.0);
        QCOMPARE(logo.at(0).y2 - logo.at(0).y, 350.0);
        QVERIFY(logo.at(0).y2 <= kTopY);

        // A logo that can't be loaded is passed over without a word.
        InstallPictureLoader([](const QString& p) { return Picture{p}; });
        QCOMPARE(PrintPurchaseOrder(3, false), int(kPODocumentPrinted));
        QCOMPARE(second->Calls(PrintCall::Picture).size(), 1);
        InstallPictureLoader({});

        // A document that never starts (a cancelled PDF file name) is not reported printed.
        auto refusing = std::make_shared<RefusingPrinter>();
        SetPrinters({first, refusing});
        gPOPrinterName = QStringLiteral("Refusing");
        QCOMPARE(PrintPurchaseOrder(3, false), int(kPODocumentDropped));
        QVERIFY(refusing->Calls().isEmpty());
        QVERIFY(boxes.shown().isEmpty());

        // The printer a print frame offers: the stored name when listed, otherwise the current
        // printer, otherwise the first.
        SetPrinters({first, second, refusing});
        SetCurrentPrinter(second);
        QCOMPARE(OfferPrinters(QStringLiteral("Refusing")).selected, 2);
        QCOMPARE(OfferPrinters(QStringLiteral("Gone")).selected, 1);
        SetCurrentPrinter(std::make_shared<RecordingPrinter>(QStringLiteral("Elsewhere")));
        QCOMPARE(OfferPrinters().selected, 0);
        SetPrinters({});
        QCOMPARE(OfferPrinters().selected, -1);
    }

    void commaLocale() {
        TestData data;
        ScriptedBoxes boxes;
        LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
        auto printer = UseRecordingPrinter();
        fixture::Supplier(1, QStringLiteral("Acme"));
        fixture::Item(10, QStringLiteral("RES-10K"));
        ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, PONumber, PODate, POSupID) VALUES "
                               "(2, '', '2026-11-23', 1)"));
        ExecSql(QStringLiteral("INSERT INTO tblPODetail (POID, POStockID, POQty, POPrice, "
                               "POSchedDate) VALUES (2, 10, 1.5, 2.5, '2026-12-24')"));
        QCOMPARE(PrintPurchaseOrder(2, false), int(kPODocumentPrinted));
        // Stored numbers read as numbers, written with the locale's decimal sign.
        const QStringList texts = printer->Texts();
        QVERIFY(texts.contains(QStringLiteral("2,50")) && texts.contains(QStringLiteral("1,5")));
        QCOMPARE(texts.count(QStringLiteral("3,75")), 2); // the row and the order value
        QVERIFY(texts.contains(QStringLiteral("24.12.2026")));
    }
};

QTEST_GUILESS_MAIN(TestPurchaseOrderDocument)
#include "test_purchaseorder_document.moc"
