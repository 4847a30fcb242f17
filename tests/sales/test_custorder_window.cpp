#include "contacts/frmEditContact.h"
#include "foundation/Globals.h"
#include "grids/GridEX.h"
#include "sales/OrderGrid.h"
#include "sales/frmBParts.h"
#include "sales/frmCustOrder.h"
#include "sales/frmEditDelCharges.h"
#include "sales/frmPrinter.h"
#include "sales/frmSalesTax.h"
#include "tests/sales/SalesFixture.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

using namespace sales_fixture;

namespace {
// A customer, two items and order 12 with two rows, one partly supplied.
void orderData() {
    const qint32 acme = addCustomer(QStringLiteral("Acme"), 10);
    addCustomer(QStringLiteral("Beta"), 0);
    addItem(1, QStringLiteral("A-1"), QStringLiteral("Widget"), 10);
    addItem(2, QStringLiteral("B-2"), QStringLiteral("Gadget"), 4);
    addOrder(12, acme, QStringLiteral("PO-7"), 5);
    addOrderRow(12, 1, 10, 3, 10, 9.5);
    addOrderRow(12, 2, 2, 0, 4, 3.8);
}

QStringList shownColumns(const QTableWidget* t) {
    QStringList out;
    for (int c = 0; c < t->columnCount(); ++c)
        if (!t->isColumnHidden(c))
            out << t->model()->headerData(c, Qt::Horizontal).toString();
    return out;
}

void activate(QWidget& w) {
    w.show();
    QApplication::setActiveWindow(&w);
    QVERIFY(QTest::qWaitForWindowActive(&w));
}

void clickCell(QTableWidget* t, int row, int column) {
    const QRect r = t->visualRect(t->model()->index(row, column));
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, r.center());
}

QString cell(const QTableWidget* t, int row, int column) {
    return t->item(row, column) ? t->item(row, column)->text() : QString();
}
} // namespace

class TestCustOrderWindow : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    void eachModeShowsItsControlsAndColumns() {
        TestData data;
        ScriptedBoxes boxes;
        orderData();
        addDespatch(12, 1, 7);

        gCustOrderMode = 1;
        {
            frmCustOrder w;
            w.show();
            QCOMPARE(w.windowTitle(), QStringLiteral("Customer Order"));
            QCOMPARE(w.lblTip->text(),
                     QStringLiteral("Use this window to create a CustomerOrder - More Info >>"));
            QVERIFY(w.lblInfo->text().startsWith(
                QStringLiteral("You can create a Customer Order\n\nFirst you need")));
            QVERIFY(w.FrameInfo->isVisible() && w.tmrInfo->isActive());
            QVERIFY(!w.Command17->isVisible());
            QVERIFY(w.txtCustBasketID->isEnabled() && w.txtInvoiceNo->isEnabled());
            QCOMPARE(w.txtInvoiceNo->text(), QStringLiteral("0008"));
            QVERIFY(!w.txtInvoiceDate->isVisible() && !w.txtCustShipID->isVisible());
            for (QPushButton* b : {w.Command4, w.Command2, w.Command7, w.cmdInvoice, w.Command12})
                QVERIFY2(b->isVisible(), qPrintable(b->objectName()));
            QVERIFY(!w.Command19->isVisible() && !w.Command20->isVisible());
            QCOMPARE(shownColumns(w.fgSOrder),
                     QStringList({"", "Item", "PartNo", "Description", "Price", "SellAt",
                                  "OrderQty", "Total"}));
            QVERIFY(!w.fgSOrder->horizontalHeader()->isVisible());
            QCOMPARE(w.fgHeader->columnCount(), 13);
            QCOMPARE(w.fgHeader->item(0, 6)->text(), QStringLiteral("OrderQty"));
            QVERIFY(w.fgHeader->isColumnHidden(7));
            QCOMPARE(w.cboCustlist->currentIndex(), -1);
            QCOMPARE(w.cboCustlist->placeholderText(), QStringLiteral("Select Customer"));
            QCOMPARE(w.cboCustlist->count(), 3);

            boxes.answer(vbOK);
            w.Command21->click();
            QVERIFY(boxes.prompts().last().startsWith(
                QStringLiteral("This is the next available Invoice Number")));
            QVERIFY(boxes.prompts().last().endsWith(
                QStringLiteral("\n\nEach invoice is automatically given a unique number starting "
                               "from 0001. If you wish to change this to start from a higher "
                               "number then enter it into this box. You can only enter numbers. "
                               "Letters and other characters will be ignored")));
            boxes.answer(vbOK);
            w.Command7->click();
            QCOMPARE(boxes.shown().last().title, QStringLiteral("Help"));

            // The help frame shrinks away and its button brings it back.
            w.Command16->click();
            QVERIFY(!w.FrameInfo->isVisible() && w.Command17->isVisible());
            w.Command17->click();
            QVERIFY(w.FrameInfo->isVisible() && !w.Command17->isVisible());
        }

        gCustOrderMode = 2;
        gCustOrderID = 12;
        {
            frmCustOrder w;
            w.show();
            QCOMPARE(w.windowTitle(), QStringLiteral("Customer Order"));
            QVERIFY(!w.txtCustBasketID->isEnabled() && !w.txtInvoiceNo->isEnabled());
            QCOMPARE(w.txtCustBasketID->text(), QStringLiteral("0012"));
            QCOMPARE(w.cboCustlist->currentText(), QStringLiteral("Acme"));
            QCOMPARE(w.txtDiscount->text(), QStringLiteral("5"));
            QVERIFY(w.Command4->isVisible() && w.Command2->isVisible());
            QVERIFY(!w.cmdInvoice->isVisible() && !w.Command19->isVisible());
            QCOMPARE(shownColumns(w.fgSOrder),
                     QStringList({"", "Item", "PartNo", "Description", "Price", "SellAt",
                                  "OrderQty", "Done", "To Do", "Total"}));
            QCOMPARE(w.fgSOrder->rowCount(), 2);
            QCOMPARE(cell(w.fgSOrder, 0, OrderCol::SellAt), QStringLiteral("9.50"));
            QCOMPARE(cell(w.fgSOrder, 0, OrderCol::ToDo), QStringLiteral("7"));
            QCOMPARE(w.txtNet->text(), QStringLiteral("102.60"));
            const QColor yellow(0xFF, 0xFF, 0xC0);
            QCOMPARE(w.fgSOrder->item(1, OrderCol::OrderQty)->background().color(), yellow);
            QCOMPARE(w.fgSOrder->item(1, OrderCol::SellAt)->background().color(), yellow);
            QVERIFY(w.fgSOrder->item(1, OrderCol::Price)->background().style() == Qt::NoBrush);
            QCOMPARE(w.vs1->maximum(), 2);
            QVERIFY(w.lblTip->text().startsWith(QStringLiteral("View or change a Customer Order")));
            w.Command21->click(); // silent: no answer is queued

            // A row added to a saved order does not offer invoicing: the order has its number.
            w.Command4->click();
            emit w.frmBParts->gdxAllParts->RowActivated(1);
            w.frmBParts->Command3->click();
            QCOMPARE(w.fgSOrder->rowCount(), 3);
            QCOMPARE(cell(w.fgSOrder, 2, OrderCol::SellAt), QStringLiteral("9.50"));
            QVERIFY(!w.cmdInvoice->isVisible());
        }

        gCustOrderMode = 3;
        {
            frmCustOrder w;
            w.show();
            QCOMPARE(w.windowTitle(), QStringLiteral("Invoice"));
            QVERIFY(w.txtInvoiceNo->isEnabled());
            QCOMPARE(w.txtInvoiceNo->text(), QStringLiteral("0008"));
            QCOMPARE(w.txtCustShipID->text(), QStringLiteral("0012-002"));
            QVERIFY(w.txtInvoiceDate->isVisible() && w.Label22->isVisible() &&
                    w.Label10->isVisible());
            QVERIFY(!w.Command4->isVisible() && !w.Command2->isVisible());
            QVERIFY(w.Command19->isVisible() && w.Command20->isVisible());
            QCOMPARE(shownColumns(w.fgSOrder),
                     QStringList({"", "Item", "PartNo", "Description", "Price", "SellAt",
                                  "OrderQty", "Done", "InvoiceQty", "Total"}));
            QCOMPARE(w.fgSOrder->item(0, OrderCol::InvoiceQty)->background().color(),
                     QColor(0xFF, 0xFF, 0xC0));
            QCOMPARE(w.txtNet->text(), QStringLiteral("74.10")); // 9.5 x 7 + 3.8 x 2
        }

        gCustOrderMode = 4;
        {
            frmCustOrder w;
            w.show();
            QCOMPARE(w.windowTitle(), QStringLiteral("Invoice"));
            QVERIFY(!w.txtInvoiceNo->isEnabled() && !w.txtCustBasketID->isEnabled());
            QVERIFY(w.Command19->isVisible() && !w.Command4->isVisible());
            QCOMPARE(shownColumns(w.fgSOrder),
                     QStringList({"", "Item", "PartNo", "Description", "Price", "SellAt",
                                  "OrderQty", "InvoiceQty", "Total"}));
            w.Command21->click(); // silent
        }
        QVERIFY(boxes.allAnswersUsed());
    }

    void aNewOrderTakesACustomerAndItems() {
        TestData data;
        ScriptedBoxes boxes;
        orderData();
        gCustOrderMode = 1;
        frmCustOrder w;
        activate(w);

        // Adding before a customer is chosen: the message and no row.
        w.Command4->click();
        QVERIFY(w.frmBParts->isVisible());
        GridEX* parts = w.frmBParts->gdxAllParts;
        QCOMPARE(parts->RowCount(), 2);
        boxes.answer(vbOK);
        emit parts->RowActivated(1);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Customer?"));
        QCOMPARE(w.fgSOrder->rowCount(), 0);
        w.frmBParts->Command3->click();

        // "Create NEW Customer", cancelled: the list comes back with no choice.
        QTimer::singleShot(0, [] {
            if (auto* c = qobject_cast<frmEditContact*>(QApplication::activeModalWidget()))
                c->reject();
        });
        w.cboCustlist->setCurrentIndex(0);
        QCOMPARE(w.cboCustlist->currentIndex(), -1);
        QCOMPARE(w.cboCustlist->count(), 3);
        QVERIFY(w.txtCustName->text().isEmpty());

        w.cboCustlist->setCurrentIndex(w.cboCustlist->findText(QStringLiteral("Acme")));
        QCOMPARE(w.txtCustName->text(), QStringLiteral("Acme"));
        QCOMPARE(w.txtCustBasketID->text(), QStringLiteral("0013"));
        QCOMPARE(w.txtDiscount->text(), QStringLiteral("10"));

        // The number box takes digits only and reads "0000" once left; the notes lose any
        // apostrophe.
        activate(w); // the contact window had the focus
        w.txtCustBasketID->setFocus();
        w.txtCustBasketID->selectAll();
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("5a0"));
        QCOMPARE(w.txtCustBasketID->text(), QStringLiteral("50"));
        w.txtNotes->setFocus();
        QCOMPARE(w.txtCustBasketID->text(), QStringLiteral("0050"));
        QCOMPARE(w.mSheet.custBasketID, QStringLiteral("0050"));
        w.txtNotes->setPlainText(QStringLiteral("It's due"));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("'"));
        w.txtCustOrNo->setFocus();
        QCOMPARE(w.mSheet.notes, QStringLiteral("Its due"));

        w.Command4->click();
        QCOMPARE(w.frmBParts->cboCatFilter->currentIndex(), 0);
        parts->SetRow(2);
        emit parts->RowActivated(2); // B-2 at 4.00, 10 % off
        QCOMPARE(w.fgSOrder->rowCount(), 1);
        QCOMPARE(cell(w.fgSOrder, 0, OrderCol::PartNo), QStringLiteral("B-2"));
        QCOMPARE(cell(w.fgSOrder, 0, OrderCol::SellAt), QStringLiteral("3.60"));
        QVERIFY(cell(w.fgSOrder, 0, OrderCol::Total).isEmpty()); // totals wait for the panel
        w.frmBParts->txtItemFilter->setText(QStringLiteral("A-"));
        w.frmBParts->Command1->click();
        QCOMPARE(parts->RowCount(), 1);
        emit parts->RowActivated(1);
        w.frmBParts->Command3->click();
        QVERIFY(!w.frmBParts->isVisible());
        QCOMPARE(cell(w.fgSOrder, 1, OrderCol::SellAt), QStringLiteral("9.00"));
        QCOMPARE(w.txtNet->text(), QStringLiteral("12.60"));
        QCOMPARE(w.txtTotal->text(), QStringLiteral("12.60"));
        QCOMPARE(w.vs1->maximum(), 2);
    }

    void cellEditorAndKeysMoveTheTotals() {
        TestData data;
        ScriptedBoxes boxes;
        orderData();
        ExecSql("INSERT INTO tblParameters (ParaName, f1, f2, f3, f4) VALUES "
                "('TaxRates', '10', '', '', 'VAT')");
        gCustOrderMode = 2;
        gCustOrderID = 12;
        frmCustOrder w;
        activate(w);
        QCOMPARE(w.txtNet->text(), QStringLiteral("102.60"));

        // A click on a yellow cell lays fgedit over it with the cell's text, all selected.
        clickCell(w.fgSOrder, 1, OrderCol::OrderQty);
        QVERIFY(w.fgedit->isVisible());
        QCOMPARE(QApplication::focusWidget(), w.fgedit);
        const QRect r = w.fgSOrder->visualRect(w.fgSOrder->model()->index(1, OrderCol::OrderQty));
        QCOMPARE(w.fgedit->geometry().topLeft(), w.fgSOrder->mapTo(w.Rows, r.topLeft()));
        QCOMPARE(w.fgedit->text(), QStringLiteral("2.0"));
        QCOMPARE(w.fgedit->selectedText(), QStringLiteral("2.0"));
        QCOMPARE(cell(w.fgSOrder, 1, OrderCol::OrderQty), QStringLiteral("2")); // fgedit's rule

        // Each key moves the totals; letters are refused.
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("5x"));
        QCOMPARE(w.fgedit->text(), QStringLiteral("5"));
        QCOMPARE(cell(w.fgSOrder, 1, OrderCol::Total), QStringLiteral("19.00"));
        QCOMPARE(w.txtNet->text(), QStringLiteral("114.00"));
        QCOMPARE(w.txtVat->text(), QStringLiteral("11.40"));
        QCOMPARE(w.txtTotal->text(), QStringLiteral("125.40"));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("0"));
        QCOMPARE(w.txtNet->text(), QStringLiteral("285.00"));

        // Up moves fgedit to the row above, in the same column.
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
        QCOMPARE(w.fgSOrder->currentRow(), 0);
        QCOMPARE(w.fgedit->text(), QStringLiteral("10.0"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up); // first row: stays
        QCOMPARE(w.fgSOrder->currentRow(), 0);

        // A price typed by hand; leaving the discount box reprices every row again.
        clickCell(w.fgSOrder, 0, OrderCol::SellAt);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("12"));
        QCOMPARE(cell(w.fgSOrder, 0, OrderCol::SellAt), QStringLiteral("12.00"));
        clickCell(w.fgSOrder, 0, OrderCol::Price); // not yellow: fgedit goes
        QVERIFY(!w.fgedit->isVisible());
        w.txtDiscount->setFocus();
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("x"));
        QCOMPARE(w.txtDiscount->text(), QStringLiteral("5"));
        w.txtDelivery->setFocus();
        QCOMPARE(cell(w.fgSOrder, 0, OrderCol::SellAt), QStringLiteral("9.50"));

        // Delivery: each key, and the box rewritten on leaving.
        w.txtDelivery->selectAll();
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("7"));
        QCOMPARE(w.txtTotal->text(), QStringLiteral("321.20")); // 285 + 29.20 + 7
        w.txtCustOrNo->setFocus();
        QCOMPARE(w.txtDelivery->text(), QStringLiteral("7"));
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("A'B"));
        QCOMPARE(w.txtCustOrNo->text(), QStringLiteral("PO-7AB"));
        QCOMPARE(w.mSheet.custOrNo, QStringLiteral("PO-7AB"));

        // The scroll bar moves the grid under the captions.
        const int top = w.fgSOrder->y();
        w.vs1->setValue(1);
        QCOMPARE(w.fgSOrder->y(), top - w.fgSOrder->rowHeight(0));
    }

    void taxAndDeliveryPanels() {
        TestData data;
        ScriptedBoxes boxes;
        orderData();
        gCustOrderMode = 2;
        gCustOrderID = 12;
        frmCustOrder w;
        activate(w);
        QCOMPARE(w.Text3->text(), QStringLiteral("0% "));

        w.Command11->click();
        QVERIFY(w.frmSalesTax->isVisible());
        w.frmSalesTax->txtTax1Name->setText(QStringLiteral("GST"));
        w.frmSalesTax->txtTax1Rate->setText(QStringLiteral("10"));
        boxes.answer(vbNo);
        w.frmSalesTax->Command13->click();
        QVERIFY(!w.frmSalesTax->isVisible());
        QCOMPARE(w.txtVatText->text(), QStringLiteral("GST"));
        QCOMPARE(w.Text3->text(), QStringLiteral("10% "));
        QCOMPARE(w.txtVat->text(), QStringLiteral("10.26"));
        QCOMPARE(w.txtTotal->text(), QStringLiteral("102.60")); // waits for the next change

        w.Command10->click();
        QVERIFY(w.frmEditDelCharges->isVisible());
        w.frmEditDelCharges->txtDeliveryCost->setText(QStringLiteral("8.00"));
        w.frmEditDelCharges->chkTaxOnDel->setChecked(false);
        boxes.answer(vbNo);
        w.frmEditDelCharges->cmdSaveDelCharges->click();
        QVERIFY(w.frmEditDelCharges->isVisible());
        QCOMPARE(w.txtDelivery->text(), QStringLiteral("0.00"));
        w.frmEditDelCharges->cmdIgnoreDelCharges->click();
        QVERIFY(!w.frmEditDelCharges->isVisible());
        QVERIFY(!w.mSheet.taxOnDel); // the tick counts even after Cancel
        w.Command10->click();
        boxes.answer(vbYes);
        w.frmEditDelCharges->cmdSaveDelCharges->click();
        QVERIFY(!w.frmEditDelCharges->isVisible());
        QCOMPARE(w.txtDeliveryText->text(), QStringLiteral("Delivery"));
        QCOMPARE(w.txtDelivery->text(), QStringLiteral("8.00"));
        QCOMPARE(w.txtTotal->text(), QStringLiteral("120.86")); // 102.60 + 10.26 + 8.00
        QCOMPARE(SqlFirst("SELECT f2 || f3 FROM tblParameters WHERE ParaName='ShippingPars'"),
                 QStringLiteral("8.00N"));
        QVERIFY(boxes.allAnswersUsed());
    }
};

QTEST_MAIN(TestCustOrderWindow)
#include "test_custorder_window.moc"
