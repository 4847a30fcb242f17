// The printing panel of the customer order window: the printer list and choice, the document
// buttons, the company block the main window loaded, and documents written through the PDF
// writer.
#include "foundation/Globals.h"
#include "foundation/Printer.h"
#include "foundation/PrinterQt.h"
#include "foundation/Settings.h"
#include "inventory/FormMain.h"
#include "sales/frmCustOrder.h"
#include "sales/frmPrinter.h"
#include "tests/support/TestSupport.h"

#include <QComboBox>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

namespace {

void Home() {
    ExecSql(QStringLiteral("INSERT INTO tblHome (CoName, Add1, Add2, Add3, Add4, Add5, Add6, "
                           "Tel1, Fax1) VALUES ('Quill Parts Ltd', 'Unit 4', 'Mill Lane', "
                           "'Northtown', 'Shire', 'NT1 1AA', 'England', '0123 456', '0123 789')"));
}

// An invoice of `rows` rows as the window holds it while invoicing.
void FillInvoice(CustOrderSheet& s, int rows) {
    s.mode = OrderMode::InvoiceOrder;
    s.custName = QStringLiteral("Acme Ltd");
    s.custAdd1 = QStringLiteral("1 High St");
    s.invoiceNo = QStringLiteral("0031");
    s.custShipID = QStringLiteral("0012-002");
    s.invoiceDate = QStringLiteral("01/05/2026");
    s.rows.clear();
    for (int i = 1; i <= rows; ++i) {
        OrderRow r;
        r[OrderCol::PartNo] = QStringLiteral("P-%1").arg(i);
        r[OrderCol::Desc] = QStringLiteral("Part number %1").arg(i);
        r[OrderCol::SellAt] = QStringLiteral("2.50");
        r[OrderCol::OrderQty] = QStringLiteral("4");
        r[OrderCol::InvoiceQty] = QStringLiteral("2");
        r[OrderCol::Total] = QStringLiteral("5.00");
        r[OrderCol::Location] = QStringLiteral("Bin %1").arg(i);
        s.rows << r;
    }
    s.net = QStringLiteral("%1.00").arg(5 * rows);
}

int PdfPages(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return -1;
    static const QRegularExpression page(QStringLiteral("/Type\\s*/Page[^s]"));
    return int(QString::fromLatin1(f.readAll()).count(page));
}

} // namespace

class TestSalesDocumentsWindow : public QObject {
    Q_OBJECT
private slots:
    void init() {
        UseTestLocale();
        InstallPictureLoader({});
    }

    void panelChoosesAndPrints() {
        TestData data;
        ScriptedBoxes boxes;
        Home();
        auto first = std::make_shared<RecordingPrinter>(QStringLiteral("First"));
        auto second = std::make_shared<RecordingPrinter>(QStringLiteral("Second"));
        SetPrinters({first, second});
        SetCurrentPrinter(second);

        frmCustOrder w;
        FillInvoice(w.mSheet, 3);
        w.show();
        w.frmPrinter->ShowDocumentButtons(frmPrinter::Documents::Invoice);
        w.ShowPrinterPanel();
        QVERIFY(w.frmPrinter->isVisible());
        QComboBox* combo = w.frmPrinter->cboSelectPrinter;
        QCOMPARE(combo->count(), 2);
        QCOMPARE(combo->itemText(0), QStringLiteral("First"));
        QCOMPARE(combo->currentIndex(), 1);
        QCOMPARE(w.mSelectedPrinter, QStringLiteral("Second"));
        for (QPushButton* b : {w.frmPrinter->btnPrintInvoice, w.frmPrinter->btnPrintDelNote,
                               w.frmPrinter->btnPrintPickList, w.frmPrinter->btnPickHelp})
            QVERIFY2(b->isVisible() && b->isEnabled(), qPrintable(b->objectName()));
        QVERIFY(!w.frmPrinter->btnPrintOrder->isVisible());
        QCOMPARE(w.frmPrinter->btnPrintPList->toolTip(),
                 QStringLiteral("Open the printer selection to re-print this document"));

        // The user's choice goes to mSelectedPrinter and takes the documents.
        combo->setCurrentIndex(0);
        QCOMPARE(w.mSelectedPrinter, QStringLiteral("First"));
        boxes.answerInput(QStringLiteral("1"));
        w.frmPrinter->btnPrintInvoice->click();
        QCOMPARE(first->Documents(), 1);
        QCOMPARE(second->Documents(), 0);
        const QStringList texts = first->Texts();
        QVERIFY(texts.contains(QStringLiteral("Invoice To:")));
        // The company block: the name and six address lines, no telephone or fax.
        for (const char* line :
             {"Quill Parts Ltd", "Unit 4", "Mill Lane", "Northtown", "Shire", "NT1 1AA", "England"})
            QVERIFY2(texts.contains(QString::fromLatin1(line)), line);
        for (const QString& t : texts)
            QVERIFY2(!t.contains(QStringLiteral("0123")), qPrintable(t));

        // Each press asks again; the packing note prints the locations.
        boxes.answerInput(QStringLiteral("2"));
        w.frmPrinter->btnPrintPickList->click();
        QCOMPARE(first->Documents(), 3);
        QCOMPARE(first->Texts().count(QStringLiteral("Bin 2")), 2);
        boxes.cancelInput();
        w.frmPrinter->btnPrintDelNote->click();
        QCOMPARE(first->Documents(), 3);
        QCOMPARE(boxes.prompts(ShownBox::Input).size(), 3);

        boxes.answer(vbOK);
        w.frmPrinter->btnPickHelp->click();
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Packing Note"));
        QVERIFY(boxes.shown().last().prompt.startsWith(
            QStringLiteral("The Packing Note is identical to the Delivery note except")));

        w.frmPrinter->cmdCancelPrint->click();
        QVERIFY(!w.frmPrinter->isVisible());
        QVERIFY(boxes.allAnswersUsed());
    }

    void companyBlockAsTheMainWindowLoadedIt() {
        TestData data;
        ScriptedBoxes boxes;
        Home();
        auto printer = UseRecordingPrinter();
        FormMain main;
        main.ShowHomeDetails();
        // Changed since the main window loaded it: the document keeps what the window shows.
        ExecSql(QStringLiteral("UPDATE tblHome SET CoName='Renamed Ltd', Add1='Elsewhere'"));

        frmCustOrder w(&main);
        FillInvoice(w.mSheet, 1);
        w.show();
        w.ShowPrinterPanel();
        boxes.answerInput(QStringLiteral("1"));
        w.frmPrinter->btnPrintDelNote->click();
        const QStringList texts = printer->Texts();
        QVERIFY(texts.contains(QStringLiteral("Quill Parts Ltd")));
        QVERIFY(texts.contains(QStringLiteral("Unit 4")));
        QVERIFY(!texts.contains(QStringLiteral("Renamed Ltd")));
        QVERIFY(!texts.contains(QStringLiteral("Elsewhere")));
        QVERIFY(texts.contains(QStringLiteral("Delivery To:")));
    }

    void noPrinterDisablesTheDocuments() {
        TestData data;
        ScriptedBoxes boxes;
        SetPrinters({});
        frmCustOrder w;
        w.show();
        w.frmPrinter->ShowDocumentButtons(frmPrinter::Documents::Order);
        boxes.answer(vbOK);
        w.ShowPrinterPanel();
        QCOMPARE(boxes.prompts(),
                 QStringList({"The system doesn't seem to have any available printer. Print "
                              "options will be disabled until a printer is installed"}));
        QCOMPARE(w.frmPrinter->cboSelectPrinter->count(), 0);
        QVERIFY(w.mSelectedPrinter.isEmpty());
        QVERIFY(!w.frmPrinter->btnPrintOrder->isEnabled());
        QVERIFY(w.frmPrinter->cmdCancelPrint->isEnabled());

        // A printer installed later: the panel lists it and the buttons come back.
        auto printer = UseRecordingPrinter();
        w.ShowPrinterPanel();
        QVERIFY(w.frmPrinter->btnPrintOrder->isEnabled());
        QCOMPARE(w.mSelectedPrinter, QStringLiteral("Recording Printer"));
    }

    void savedAsPdf() {
        TestData data;
        ScriptedBoxes boxes;
        InstallQtPrinters();
        // A real picture as the shared logo: painted, and shown in the panel's picture box.
        const QString logoFile = data.path(QStringLiteral("logo.png"));
        QImage image(120, 60, QImage::Format_RGB32);
        image.fill(Qt::darkBlue);
        QVERIFY(image.save(logoFile));
        {
            SharedSettingsScope shared;
            SaveDefault(QStringLiteral("Image_1"), logoFile, QString());
        }

        frmCustOrder w;
        FillInvoice(w.mSheet, 40);
        w.show();
        w.ShowPrinterPanel();
        QComboBox* combo = w.frmPrinter->cboSelectPrinter;
        combo->setCurrentIndex(combo->findText(SaveAsPdfName()));
        QCOMPARE(w.mSelectedPrinter, SaveAsPdfName());

        // The file is asked for after the copies, once per copy; a copy is one file with every
        // sheet of it.
        const QString one = data.path(QStringLiteral("invoice.pdf"));
        boxes.answerInput(QStringLiteral("1"));
        boxes.answerFile(one);
        w.frmPrinter->btnPrintInvoice->click();
        QCOMPARE(boxes.shown().size(), 2);
        QCOMPARE(boxes.shown().at(0).kind, ShownBox::Input);
        QCOMPARE(boxes.shown().at(1).kind, ShownBox::File);
        const int pages = PdfPages(one);
        QVERIFY2(pages >= 2 && pages <= 5, qPrintable(QString::number(pages)));
        QVERIFY(!w.frmPrinter->logo->pixmap().isNull());

        const QString packing = data.path(QStringLiteral("packing.pdf"));
        boxes.answerInput(QStringLiteral("1"));
        boxes.answerFile(packing);
        w.frmPrinter->btnPrintPickList->click();
        QCOMPARE(PdfPages(packing), pages);

        // A cancelled file name: nothing written, nothing said, no further copies.
        Printer& pdf = CurrentPrinter();
        QCOMPARE(pdf.DeviceName(), SaveAsPdfName());
        pdf.SetFontSize(12);
        boxes.clear();
        boxes.answerInput(QStringLiteral("3"));
        boxes.answerFile(QString());
        w.frmPrinter->btnPrintDelNote->click();
        QCOMPARE(boxes.shown().size(), 2);
        QVERIFY(boxes.allAnswersUsed());
        QCOMPARE(pdf.FontSize(), 12.0);
    }
};

QTEST_MAIN(TestSalesDocumentsWindow)
#include "test_sales_documents_window.moc"
