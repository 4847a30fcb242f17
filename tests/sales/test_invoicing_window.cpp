#include "foundation/Globals.h"
#include "foundation/Printer.h"
#include "grids/GridEX.h"
#include "sales/frmBParts.h"
#include "sales/frmCustOrder.h"
#include "sales/frmPrinter.h"
#include "tests/sales/SalesFixture.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

using namespace sales_fixture;

namespace {
// Order 12: 10 widgets and 2 gadgets, nothing supplied; tax at 17.5 %.
void orderData() {
    ExecSql("INSERT INTO tblParameters (ParaName, f1, f4) VALUES ('TaxRates', '17.5', 'VAT')");
    const qint32 acme = addCustomer(QStringLiteral("Acme"), 0);
    addItem(1, QStringLiteral("A-1"), QStringLiteral("Widget"), 2.5);
    addItem(2, QStringLiteral("B-2"), QStringLiteral("Gadget"), 4);
    addOrder(12, acme, QStringLiteral("PO-7"), 0);
    addOrderRow(12, 1, 10, 0, 2.5, 2.5);
    addOrderRow(12, 2, 2, 0, 4, 4);
}

void activate(QWidget& w) {
    w.show();
    QApplication::setActiveWindow(&w);
    QVERIFY(QTest::qWaitForWindowActive(&w));
}

// Types into a cell of the order grid as a user does: a click on the cell, then the keys.
void typeInCell(frmCustOrder& w, int row, int column, const QString& keys) {
    const QRect r = w.fgSOrder->visualRect(w.fgSOrder->model()->index(row, column));
    QTest::mouseClick(w.fgSOrder->viewport(), Qt::LeftButton, {}, r.center());
    QCOMPARE(QApplication::focusWidget(), w.fgedit);
    QTest::keyClicks(w.fgedit, keys);
}

QStringList actionButtonsShown(const frmCustOrder& w) {
    QStringList out;
    for (QPushButton* b :
         {w.Command4, w.Command2, w.Command7, w.cmdInvoice, w.Command12, w.Command19, w.Command20})
        if (b->isVisible())
            out << b->objectName();
    return out;
}

// The invoice's documents are offered, the order copy is not.
void offersInvoiceDocuments(const frmCustOrder& w) {
    QVERIFY(w.frmPrinter->isVisible());
    for (QPushButton* b : {w.frmPrinter->btnPrintDelNote, w.frmPrinter->btnPrintPickList,
                           w.frmPrinter->btnPickHelp, w.frmPrinter->btnPrintInvoice})
        QVERIFY2(b->isVisible(), qPrintable(b->objectName()));
    QVERIFY(!w.frmPrinter->btnPrintOrder->isVisible());
}

QString stockOf(int item) {
    return SqlFirst(QStringLiteral("SELECT Qty FROM tblStockItems WHERE ItemID=") +
                    QString::number(item));
}
} // namespace

class TestInvoicingWindow : public QObject {
    Q_OBJECT
private slots:
    void init() {
        UseTestLocale();
        UseRecordingPrinter(); // the printing panel lists it after an invoice
    }

    void invoiceASavedOrderThenChangeIt() {
        TestData data;
        ScriptedBoxes boxes;
        orderData();
        gCustOrderMode = 3;
        gCustOrderID = 12;
        {
            frmCustOrder w;
            activate(w);
            QCOMPARE(w.txtCustShipID->text(), QStringLiteral("0012-001"));
            QCOMPARE(w.txtInvoiceNo->text(), QStringLiteral("0001"));

            // Too many: refused, nothing written, the window as it was.
            typeInCell(w, 0, OrderCol::InvoiceQty, QStringLiteral("11"));
            boxes.answer(vbOK);
            w.Command19->click();
            QCOMPARE(boxes.shown().last().title, QStringLiteral("Can't save"));
            QVERIFY(boxes.shown().last().prompt.endsWith(
                QStringLiteral("\nThe maximum Invoice Qty of row 1 is 10")));
            QCOMPARE(actionButtonsShown(w), QStringList({"Command19", "Command20"}));
            QVERIFY(!w.frmPrinter->isVisible());
            QCOMPARE(stockOf(1), QStringLiteral("40"));

            // 4 widgets, no gadgets: written, the bar runs, one window makes one invoice.
            typeInCell(w, 0, OrderCol::InvoiceQty, QStringLiteral("4"));
            typeInCell(w, 1, OrderCol::InvoiceQty, QStringLiteral("0"));
            QCOMPARE(w.txtNet->text(), QStringLiteral("10.00"));
            w.Command19->click();
            QCOMPARE(boxes.processingBars(), 1);
            QCOMPARE(actionButtonsShown(w), QStringList());
            offersInvoiceDocuments(w);
            QCOMPARE(stockOf(1), QStringLiteral("36"));
            QCOMPARE(stockOf(2), QStringLiteral("40"));
        }

        // The invoice reopened: lowered from 4 to 3 in its grid.
        gCustOrderMode = 4;
        gCustInvoiceNo = 1;
        frmCustOrder w;
        activate(w);
        QCOMPARE(w.windowTitle(), QStringLiteral("Invoice"));
        QCOMPARE(w.txtCustShipID->text(), QStringLiteral("0012-001"));
        QCOMPARE(w.txtInvoiceNo->text(), QStringLiteral("0001"));
        QCOMPARE(w.Text3->text(), QStringLiteral("17.5% "));
        QCOMPARE(w.fgSOrder->rowCount(), 1);
        QVERIFY(w.fgSOrder->isColumnHidden(OrderCol::Done)); // nothing on other invoices
        QCOMPARE(actionButtonsShown(w), QStringList({"Command19", "Command20"}));
        typeInCell(w, 0, OrderCol::InvoiceQty, QStringLiteral("3"));
        QCOMPARE(w.txtNet->text(), QStringLiteral("7.50"));
        w.Command19->click();
        QCOMPARE(boxes.processingBars(), 2);
        offersInvoiceDocuments(w);
        QCOMPARE(stockOf(1), QStringLiteral("37"));
        QCOMPARE(SqlFirst("SELECT ShippedQty FROM tblCustOrderDetail WHERE StockID=1"),
                 QStringLiteral("3"));
    }

    void newOrderSavedAndInvoicedAtOnce() {
        TestData data;
        ScriptedBoxes boxes;
        orderData();
        for (const int answer : {vbNo, vbYes}) {
            gCustOrderMode = 1;
            frmCustOrder w;
            activate(w);
            boxes.answer(vbOK);
            w.cmdInvoice->click();
            QCOMPARE(boxes.shown().last().prompt, QStringLiteral("Can't process an empty invoice"));
            QVERIFY(w.cmdInvoice->isVisible());
            w.cboCustlist->setCurrentIndex(w.cboCustlist->findText(QStringLiteral("Acme")));
            w.Command4->click();
            emit w.frmBParts->gdxAllParts->RowActivated(1);
            w.frmBParts->Command3->click();

            boxes.answer(answer);
            w.cmdInvoice->click();
            QCOMPARE(boxes.shown().last().prompt,
                     QStringLiteral(
                         "The Order/Invoice was saved - Do you want to print the invoice now ?"));
            QCOMPARE(boxes.shown().last().title, QStringLiteral("Print?"));
            QCOMPARE(boxes.shown().last().flags, vbYesNo | vbQuestion);
            QCOMPARE(actionButtonsShown(w), QStringList());
            if (answer == vbYes)
                offersInvoiceDocuments(w);
            else
                QVERIFY(!w.frmPrinter->isVisible());
        }
        // Two orders (13 and 14) of one widget each, invoiced and out of stock.
        QCOMPARE(SqlFirst("SELECT group_concat(CustOrderID || '/' || InvoiceNo) FROM tblDespatch"),
                 QStringLiteral("13/1,14/2"));
        QCOMPARE(stockOf(1), QStringLiteral("38"));
        QCOMPARE(boxes.processingBars(), 0);
    }
};

QTEST_MAIN(TestInvoicingWindow)
#include "test_invoicing_window.moc"
