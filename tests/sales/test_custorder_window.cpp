// The customer order window driven through its controls: the layout of each mode, a new order
// taken from the add-items panel and saved, the cell editor and the keys that move the totals,
// the default panels, invoicing, the printing panel, and the sales lists.
#include "contacts/frmEditContact.h"
#include "foundation/Printer.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "sales/CustOrderListPanel.h"
#include "sales/OrderGrid.h"
#include "sales/frmBParts.h"
#include "sales/frmCustOrder.h"
#include "sales/frmEditDelCharges.h"
#include "sales/frmPrinter.h"
#include "sales/frmSalesTax.h"
#include "tests/sales/SalesFixture.h"

#include <QtWidgets>

using namespace sales_fixture;

namespace {
// Customers Acme (10 % off) and Beta, items A-1 at 10 and B-2 at 4, and order 12 for Acme at
// 5 % with a row partly supplied; invoice 7 of it; tax at 10 %.
void orderData() {
    const qint32 acme = addCustomer("Acme", 10);
    addCustomer("Beta", 0);
    addItem(1, "A-1", 10);
    addItem(2, "B-2", 4);
    addOrder(12, acme, "PO-7", 5);
    addOrderRow(12, 1, 10, 3, 10, 9.5);
    addOrderRow(12, 2, 2, 0, 4, 3.8);
    addDespatch(12, 1, 7);
    ExecSql("INSERT INTO tblParameters (ParaName, f1, f4) VALUES ('TaxRates', '10', 'VAT')");
}

void activate(QWidget& w) {
    w.show();
    QApplication::setActiveWindow(&w);
    QVERIFY(QTest::qWaitForWindowActive(&w));
}

// Clicks a cell of the order grid and types into whatever has the focus.
void typeInCell(frmCustOrder& w, int row, int column, const QString& keys) {
    const QRect r = w.fgSOrder->visualRect(w.fgSOrder->model()->index(row, column));
    QTest::mouseClick(w.fgSOrder->viewport(), Qt::LeftButton, {}, r.center());
    QTest::keyClicks(QApplication::focusWidget(), keys);
}

// Releases the mouse over a row of the main window's sales list, as the grid reports it.
void releaseOverRow(GridEX* g, int row) {
    QTableView* t = g->TableView();
    const QPoint at =
        t->viewport()->mapTo(g, t->visualRect(t->model()->index(row - 1, 0)).center());
    g->SetRow(row);
    emit g->MouseUp(Qt::LeftButton, g->PixelsToTwips(at.x()), g->PixelsToTwips(at.y()));
}
QString firstColumn(const GridEX* grid) {
    QStringList out;
    for (int r = 1; r <= grid->RowCount(); ++r)
        out << grid->CellValue(r, 1).toString();
    return joined(out);
}
// Runs `act` on the customer order window once it is up, then closes it; notes its mode.
quint8 seenMode = 0;
void whenOrderWindowOpens(std::function<void(frmCustOrder*)> act = {}) {
    QTimer::singleShot(0, [act] {
        auto* w = qobject_cast<frmCustOrder*>(QApplication::activeModalWidget());
        if (!w)
            return;
        seenMode = w->mSheet.mode;
        if (act)
            act(w);
        w->Command6->click();
    });
}

QString cell(const QTableWidget* t, int row, int column) {
    return t->item(row, column) ? t->item(row, column)->text() : QString();
}

QString shown(const QList<QWidget*>& widgets) {
    QStringList out;
    for (const QWidget* w : widgets)
        if (w->isVisible())
            out << w->objectName();
    return joined(out);
}
QString actionButtons(const frmCustOrder& w) {
    return shown(
        {w.Command4, w.Command2, w.Command7, w.cmdInvoice, w.Command12, w.Command19, w.Command20});
}
QString printButtons(const frmCustOrder& w) {
    const frmPrinter* p = w.frmPrinter;
    return p->isVisible() ? shown({p->btnPrintOrder, p->btnPrintInvoice, p->btnPrintDelNote,
                                   p->btnPrintPickList, p->btnPickHelp})
                          : QStringLiteral("<hidden>");
}
} // namespace

class TestCustOrderWindow : public QObject {
    Q_OBJECT
private slots:
    void init() {
        UseTestLocale();
        UseRecordingPrinter();
        InstallPictureLoader({});
    }

    void eachModeShowsItsControlsAndColumns() {
        TestData data;
        ScriptedBoxes boxes;
        orderData();
        gCustOrderID = 12;
        gCustInvoiceNo = 7;
        // Title, action buttons, enabled number boxes, delivery boxes, grid columns.
        const QString invoice = "Invoice", order = "Customer Order";
        const QString start = "|Command4|Command2|Command7|", end = "|Command19|Command20|";
        const QString delivery = "|txtInvoiceDate|Label22|txtCustShipID|Label10|";
        const QString columns = "|Item|PartNo|Description|Price|SellAt|OrderQty|";
        const QStringList layouts{
            order + start + "cmdInvoice|Command12|txtCustBasketID|txtInvoiceNo||" + columns +
                "Total",
            order + start + "||" + columns + "Done|To Do|Total",
            invoice + end + "txtInvoiceNo" + delivery + columns + "Done|InvoiceQty|Total",
            invoice + end + delivery + columns + "InvoiceQty|Total"};
        for (quint8 mode = 1; mode <= 4; ++mode) {
            gCustOrderMode = mode;
            if (mode == 4)
                boxes.answer(vbOK); // invoice 7 has no rows and says so
            frmCustOrder w;
            w.show();
            QStringList columns;
            for (int c = 0; c < w.fgSOrder->columnCount(); ++c)
                if (!w.fgSOrder->isColumnHidden(c))
                    columns << w.fgSOrder->model()->headerData(c, Qt::Horizontal).toString();
            QList<QWidget*> enabled;
            for (QWidget* b : {w.txtCustBasketID, w.txtInvoiceNo})
                if (b->isEnabled())
                    enabled << b;
            QCOMPARE(joined({w.windowTitle(), actionButtons(w), shown(enabled),
                             shown({w.txtInvoiceDate, w.Label22, w.txtCustShipID, w.Label10}),
                             columns.join('|')}),
                     layouts[mode - 1]);
            if (mode % 2 == 0)
                w.Command21->click(); // silent: no answer is queued
        }
        QVERIFY(boxes.allAnswersUsed());
    }

    void aNewOrderTakesACustomerItemsAndIsSaved() {
        TestData data;
        ScriptedBoxes boxes;
        orderData();
        gCustOrderMode = 1;
        frmCustOrder w;
        activate(w);

        // "Create NEW Customer", cancelled: the list comes back with no choice.
        QTimer::singleShot(0, [] {
            if (auto* c = qobject_cast<frmEditContact*>(QApplication::activeModalWidget()))
                c->reject();
        });
        w.cboCustlist->setCurrentIndex(0);
        QCOMPARE(joined({QString::number(w.cboCustlist->currentIndex()),
                         w.cboCustlist->placeholderText(), w.txtCustName->text()}),
                 "-1|Select Customer|");
        w.cboCustlist->setCurrentIndex(w.cboCustlist->findText("Acme"));
        QCOMPARE(joined({w.txtCustName->text(), w.txtCustBasketID->text(), w.txtDiscount->text()}),
                 "Acme|0013|10");

        // Items: the totals wait while the panel is open.
        w.Command4->click();
        emit w.frmBParts->gdxAllParts->RowActivated(2); // B-2 at 4.00, 10 % off
        QCOMPARE(cell(w.fgSOrder, 0, OrderCol::SellAt) + '|' + cell(w.fgSOrder, 0, OrderCol::Total),
                 "3.60|");
        emit w.frmBParts->gdxAllParts->RowActivated(1);
        w.frmBParts->Command3->click();
        QCOMPARE(joined({w.txtNet->text(), w.txtVat->text(), w.txtTotal->text()}),
                 "12.60|1.26|13.86");

        // Saved under the next number, without its buttons; "Print?" Yes offers the order copy
        // alone.
        boxes.answer(vbYes);
        w.Command2->click();
        QCOMPARE(lastBox(boxes),
                 "Print?|The order was saved - Do you want to print a copy of the order ?");
        QCOMPARE(joined({w.txtCustBasketID->text(), actionButtons(w), printButtons(w)}),
                 "0013||btnPrintOrder");
        QCOMPARE(orderRows(13), QStringList({"2|1|0|4|3.6", "1|1|0|10|9"}));

        // A second new order, invoiced at once: saved, shipped in full, and "Print?" No leaves
        // the print panel closed.
        frmCustOrder n;
        activate(n);
        n.cboCustlist->setCurrentIndex(n.cboCustlist->findText("Acme"));
        n.Command4->click();
        emit n.frmBParts->gdxAllParts->RowActivated(2);
        n.frmBParts->Command3->click();
        boxes.answer(vbNo);
        n.cmdInvoice->click();
        QCOMPARE(lastBox(boxes),
                 "Print?|The Order/Invoice was saved - Do you want to print the invoice now ?");
        QCOMPARE(joined({n.txtCustBasketID->text(), actionButtons(n),
                         QString::number(n.frmPrinter->isVisible())}),
                 "0014||0");
        QCOMPARE(orderRows(14), QStringList({"2|1|1|4|3.6"}));
    }

    // A saved order: the cell editor and the keys, the default panels; then invoiced, and its
    // invoice printed from the panel.
    void cellEditorPanelsAndInvoicing() {
        TestData data;
        ScriptedBoxes boxes;
        orderData();
        gCustOrderMode = 2;
        gCustOrderID = 12;
        {
            frmCustOrder w;
            activate(w);
            QCOMPARE(joined({w.txtNet->text(), w.Text3->text()}), "102.60|10.0% ");
            // A click on a yellow cell lays fgedit over it with the cell's text, all selected.
            typeInCell(w, 1, OrderCol::OrderQty, "");
            const QRect r =
                w.fgSOrder->visualRect(w.fgSOrder->model()->index(1, OrderCol::OrderQty));
            QCOMPARE(QApplication::focusWidget(), w.fgedit);
            QCOMPARE(w.fgedit->geometry().topLeft(), w.fgSOrder->mapTo(w.Rows, r.topLeft()));
            QCOMPARE(joined({w.fgedit->text(), w.fgedit->selectedText()}), "2.0|2.0");
            // Each key moves the totals; letters are refused; Up moves to the row above.
            QTest::keyClicks(QApplication::focusWidget(), "5x");
            QCOMPARE(joined({w.fgedit->text(), cell(w.fgSOrder, 1, OrderCol::Total),
                             w.txtNet->text(), w.txtVat->text(), w.txtTotal->text()}),
                     "5|19.00|114.00|11.40|125.40");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up); // to the row above
            QCOMPARE(w.fgedit->text(), "10.0");

            // A price typed by hand is lost on leaving the discount box.
            typeInCell(w, 0, OrderCol::SellAt, "12");
            QCOMPARE(cell(w.fgSOrder, 0, OrderCol::SellAt), "12.00");
            w.txtDiscount->setFocus();
            w.txtCustOrNo->setFocus();
            QCOMPARE(cell(w.fgSOrder, 0, OrderCol::SellAt), "9.50");

            // A row added to a saved order does not offer invoicing: the order has its number.
            w.Command4->click();
            emit w.frmBParts->gdxAllParts->RowActivated(1);
            w.frmBParts->Command3->click();
            QCOMPARE(joined({QString::number(w.fgSOrder->rowCount()), actionButtons(w)}),
                     "3|Command4|Command2|Command7");

            // The tax panel: on No it closes and the tax follows all the same.
            w.Command11->click();
            w.frmSalesTax->txtTax1Rate->setText("20");
            boxes.answer(vbNo);
            w.frmSalesTax->Command13->click();
            QCOMPARE(QString::number(w.frmSalesTax->isVisible()) + w.txtVat->text(), "024.70");
            // The delivery panel: No keeps it open.
            w.Command10->click();
            boxes.answer(vbNo);
            w.frmEditDelCharges->cmdSaveDelCharges->click();
            QVERIFY(w.frmEditDelCharges->isVisible());
        }

        // Invoicing it: written, the bar shown, and the invoice's documents offered.
        gCustOrderMode = 3;
        frmCustOrder w;
        activate(w);
        QCOMPARE(joined({w.txtCustShipID->text(), w.txtInvoiceNo->text(), w.txtNet->text()}),
                 "0012-002|0008|74.10");
        typeInCell(w, 0, OrderCol::InvoiceQty, "4");
        w.Command19->click();
        QCOMPARE(boxes.processingBars(), 1);
        QCOMPARE(joined({actionButtons(w), printButtons(w)}),
                 "|btnPrintInvoice|btnPrintDelNote|btnPrintPickList|btnPickHelp");
        QCOMPARE(orderRows(12), QStringList({"1|10|7|10|9.5", "2|2|2|4|3.8"}));

        // Printing: every printer listed, the current one chosen; the choice takes the invoice.
        auto first = std::make_shared<RecordingPrinter>("First");
        SetPrinters({first, std::make_shared<RecordingPrinter>("Second")});
        w.ShowPrinterPanel();
        w.frmPrinter->cboSelectPrinter->setCurrentIndex(0);
        boxes.answerInput("1");
        w.frmPrinter->btnPrintInvoice->click();
        QCOMPARE(joined({QString::number(w.frmPrinter->cboSelectPrinter->count()),
                         w.mSelectedPrinter, QString::number(first->Documents())}),
                 "2|First|1");

        // No printer: the box, and the documents cannot be chosen.
        SetPrinters({});
        boxes.answer(vbOK);
        w.ShowPrinterPanel();
        QCOMPARE(lastBox(boxes), "qstk3|The system doesn't seem to have any available printer. "
                                 "Print options will be disabled until a printer is installed");
        QVERIFY(!w.frmPrinter->btnPrintInvoice->isEnabled() && boxes.allAnswersUsed());
    }

    // The sales lists of the main window open the window in the mode of their row and are read
    // again when it closes.
    void salesLists() {
        TestData data;
        ScriptedBoxes boxes;
        // Order 12 pending with invoice 7 of it, 13 done, 14 mixed (under both lists), 15
        // without rows (under neither); invoice 0 of 13, and one of an order that has gone.
        orderData();
        addOrder(13, 2, "done");
        addOrderRow(13, 1, 3, 3, 10, 10);
        addOrder(14, 2, "mixed");
        addOrderRow(14, 1, 4, 4, 1, 1);
        addOrderRow(14, 2, 4, 0, 1, 1);
        addOrder(15, 2, "empty");
        addDespatch(13, 1, 0);
        addDespatch(99, 1, 5);
        FormMain w;
        w.resize(1000, 700);
        w.show();
        w.Form_Load();
        w.ButtonBar1_ButtonClick("Customer Orders", "CustOrEdit");
        auto* panel = w.frmViewCustOrders->findChild<CustOrderListPanel*>();
        GridEX* grid = panel->gdxCustOrdersList;
        QCOMPARE(joined({QString::number(gCustOrderMode), firstColumn(grid)}), "2|0012|0014");
        QVERIFY(panel->optCustORPending->isChecked() && w.CurrentGrid() == grid);

        // A completed order offers "View/Edit this Order" only.
        panel->optCustORCompleted->click();
        releaseOverRow(grid, 1);
        QCOMPARE(firstColumn(grid) + shown({panel->Label5, panel->Label9}), "0013|0014Label5");
        panel->optCustORPending->click();

        // Label9 opens the pending order to be invoiced, Label5 to be changed: saved with every
        // row supplied in full, the list read again has it under "Completed." only.
        releaseOverRow(grid, 1);
        whenOrderWindowOpens();
        QTest::mouseClick(panel->Label9, Qt::LeftButton);
        QCOMPARE(joined({QString::number(seenMode), QString::number(gCustOrderID)}), "3|12");
        releaseOverRow(grid, 1);
        boxes.answer(vbNo); // "Print?"
        whenOrderWindowOpens([](frmCustOrder* o) {
            o->mSheet.rows[0][OrderCol::OrderQty] = "3";
            o->mSheet.rows[1][OrderCol::OrderQty] = "0";
            o->Command2->click();
        });
        QTest::mouseClick(panel->Label5, Qt::LeftButton);
        QCOMPARE(joined({QString::number(seenMode),
                         QString::number(panel->optCustORPending->isChecked()), firstColumn(grid)}),
                 "2|1|0014");
        panel->optCustORCompleted->click();
        QCOMPARE(firstColumn(grid), "0012|0013|0014");

        // The invoice list opens an invoice on one click, without the pop-up.
        w.ButtonBar1_ButtonClick("Customer Orders", "ViewInvoice");
        QCOMPARE(joined({QString::number(gCustOrderMode), firstColumn(grid),
                         grid->CellValue(2, 2).toString()}),
                 "4|0000|0007|0012-001");
        QVERIFY(!panel->optCustORPending->isVisible());
        whenOrderWindowOpens();
        boxes.answer(vbOK); // invoice 7 has no rows, and the window says so as it loads it
        releaseOverRow(grid, 2);
        QCOMPARE(joined({QString::number(seenMode), QString::number(gCustInvoiceNo)}), "4|7");
        QVERIFY(!panel->Frame2->isVisible() && boxes.allAnswersUsed());
    }
};

QTEST_MAIN(TestCustOrderWindow)
#include "test_custorder_window.moc"
