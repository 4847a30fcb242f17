#include "foundation/Globals.h"
#include "foundation/Printer.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "sales/CustOrderListPanel.h"
#include "sales/OrderGrid.h"
#include "sales/frmBParts.h"
#include "sales/frmCustOrder.h"
#include "sales/frmPrinter.h"
#include "tests/sales/SalesFixture.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

using namespace sales_fixture;

namespace {
// Order 1 is pending (its second row half supplied), order 2 completed, order 3 has no rows;
// invoice 0007 belongs to order 2.
void listData() {
    const qint32 acme = addCustomer(QStringLiteral("Acme"), 0);
    addItem(1, QStringLiteral("A-1"), QStringLiteral("Widget"), 10);
    addItem(2, QStringLiteral("B-2"), QStringLiteral("Gadget"), 4);
    addOrder(1, acme, QStringLiteral("open"), 0);
    addOrderRow(1, 1, 2, 2, 10, 10);
    addOrderRow(1, 2, 4, 1, 4, 4);
    addOrder(2, acme, QStringLiteral("done"), 0);
    addOrderRow(2, 1, 3, 3, 10, 10);
    addOrder(3, acme, QStringLiteral("bare"), 0);
    addDespatch(2, 1, 7);
}

QStringList firstColumn(const GridEX& grid) {
    QStringList out;
    for (int r = 1; r <= grid.RowCount(); ++r)
        out << grid.CellValue(r, 1).toString();
    return out;
}

// Releases the mouse over a row of the list, as the grid reports it.
void releaseOverRow(CustOrderListPanel* panel, int row) {
    GridEX* g = panel->gdxCustOrdersList;
    QTableView* t = g->TableView();
    const QRect r = t->visualRect(t->model()->index(row - 1, 0));
    const QPoint at = t->viewport()->mapTo(g, r.center());
    g->SetRow(row);
    emit g->MouseUp(Qt::LeftButton, g->PixelsToTwips(at.x()), g->PixelsToTwips(at.y()));
}

// The main window with a list of the "Customer Orders" group chosen.
struct MainWindow {
    explicit MainWindow(const char* key) {
        w.resize(1000, 700);
        w.show();
        w.Form_Load();
        w.ButtonBar1_ButtonClick(QStringLiteral("Customer Orders"), QString::fromLatin1(key));
        panel = w.frmViewCustOrders->findChild<CustOrderListPanel*>();
    }
    FormMain w;
    CustOrderListPanel* panel = nullptr;
};

// Runs `act` on the customer order window once it is up, then closes it.
void whenOrderWindowOpens(std::function<void(frmCustOrder*)> act) {
    QTimer::singleShot(0, [act] {
        auto* w = qobject_cast<frmCustOrder*>(QApplication::activeModalWidget());
        if (!w)
            return;
        act(w);
        w->Command6->click();
    });
}
} // namespace

class TestSalesLists : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    void orderListsAndTheirPopup() {
        TestData data;
        ScriptedBoxes boxes;
        listData();
        MainWindow main("CustOrEdit");
        FormMain& w = main.w;
        CustOrderListPanel* panel = main.panel;
        QVERIFY(panel && w.frmViewCustOrders->isVisible());
        QCOMPARE(gCustOrderMode, 2);
        QVERIFY(panel->optCustORPending->isChecked() && !panel->optCustORCompleted->isChecked());
        QCOMPARE(firstColumn(*panel->gdxCustOrdersList), QStringList({"0001"}));
        QCOMPARE(w.CurrentGrid(), panel->gdxCustOrdersList);

        // Order 1 has a row supplied in full: it is listed here too.
        panel->optCustORCompleted->click();
        QCOMPARE(firstColumn(*panel->gdxCustOrdersList), QStringList({"0001", "0002"}));
        QVERIFY(!panel->optCustORPending->isChecked());
        releaseOverRow(panel, 1);
        QVERIFY(panel->Frame2->isVisible());
        QVERIFY(panel->Label5->isVisible() && !panel->Label9->isVisible());

        panel->optCustORPending->click();
        QVERIFY(!panel->Frame2->isVisible());
        releaseOverRow(panel, 1);
        QVERIFY(panel->Label9->isVisible());
        // A release over the headings opens nothing.
        panel->Frame2->hide();
        emit panel->gdxCustOrdersList->MouseUp(Qt::LeftButton, 200, 30);
        QVERIFY(!panel->Frame2->isVisible());

        // Label9: the order opens to be invoiced.
        releaseOverRow(panel, 1);
        quint8 seenMode = 0;
        whenOrderWindowOpens([&](frmCustOrder* o) { seenMode = o->mSheet.mode; });
        QTest::mouseClick(panel->Label9, Qt::LeftButton);
        QCOMPARE(seenMode, 3);
        QCOMPARE(gCustOrderID, 1);

        // Label5: the order opens to be changed; once saved with its second row at the
        // quantity supplied, the list, read again, has it under "Completed." only.
        releaseOverRow(panel, 1);
        boxes.answer(vbNo); // "Print?"
        QString seenTitle;
        whenOrderWindowOpens([&](frmCustOrder* o) {
            seenTitle = o->windowTitle();
            seenMode = o->mSheet.mode;
            o->mSheet.rows[1][OrderCol::OrderQty] = QStringLiteral("1");
            o->Command2->click();
        });
        QTest::mouseClick(panel->Label5, Qt::LeftButton);
        QCOMPARE(seenMode, 2);
        QCOMPARE(seenTitle, QStringLiteral("Customer Order"));
        QCOMPARE(
            boxes.prompts().last(),
            QStringLiteral("The order was saved - Do you want to print a copy of the order ?"));
        QVERIFY(panel->optCustORPending->isChecked());
        QVERIFY(firstColumn(*panel->gdxCustOrdersList).isEmpty());
        panel->optCustORCompleted->click();
        QCOMPARE(firstColumn(*panel->gdxCustOrdersList), QStringList({"0001", "0002"}));

        // Export works on the list while it shows.
        const QString csv = data.path(QStringLiteral("orders.csv"));
        boxes.answerFile(csv);
        boxes.answer(vbOK);
        w.buttons_ButtonClick(5);
        QFile f(csv);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QVERIFY(f.readAll().startsWith("Our OrderID,Customer,Customer ORNo,Date,Done"));
        QVERIFY(boxes.allAnswersUsed());
    }

    void invoiceListOpensOnOneClick() {
        TestData data;
        ScriptedBoxes boxes;
        listData();
        MainWindow main("ViewInvoice");
        CustOrderListPanel* panel = main.panel;
        QCOMPARE(gCustOrderMode, 4);
        QCOMPARE(firstColumn(*panel->gdxCustOrdersList), QStringList({"0007"}));
        QCOMPARE(panel->gdxCustOrdersList->CellValue(1, 2).toString(), QStringLiteral("0002-001"));
        QVERIFY(!panel->optCustORPending->isVisible());

        quint8 seenMode = 0;
        whenOrderWindowOpens([&](frmCustOrder* o) { seenMode = o->mSheet.mode; });
        boxes.answer(vbOK); // invoice 7 has no rows, and the window says so as it loads it
        releaseOverRow(panel, 1);
        QCOMPARE(boxes.prompts().last(),
                 QStringLiteral("This invoice doesn't seem to have any item/rows - It's empty"));
        QCOMPARE(seenMode, 4);
        QCOMPARE(gCustInvoiceNo, 7);
        QVERIFY(!panel->Frame2->isVisible());
        QCOMPARE(firstColumn(*panel->gdxCustOrdersList), QStringList({"0007"}));
    }

    void savingANewOrder() {
        TestData data;
        ScriptedBoxes boxes;
        listData();
        UseRecordingPrinter(); // the printing panel lists it
        gCustOrderMode = 1;
        frmCustOrder w;
        w.show();
        boxes.answer(vbOK);
        w.Command2->click();
        QCOMPARE(boxes.prompts().last(), QStringLiteral("Can't save an empty order"));
        QVERIFY(w.Command2->isVisible());

        w.cboCustlist->setCurrentIndex(1);
        w.Command4->click();
        emit w.frmBParts->gdxAllParts->RowActivated(2);
        w.frmBParts->Command3->click();
        w.txtCustBasketID->setText(QStringLiteral("0002")); // in use: replaced
        boxes.answer(vbYes);                                // "Print?"
        w.Command2->click();
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Print?"));
        QCOMPARE(boxes.shown().last().flags, int(vbYesNo | vbQuestion));
        QCOMPARE(w.txtCustBasketID->text(), QStringLiteral("0004"));
        QCOMPARE(SqlFirst("SELECT StockID FROM tblCustOrderDetail WHERE CustBasketDetailID=4"),
                 QStringLiteral("2"));
        for (QPushButton* b : {w.Command4, w.Command2, w.Command7, w.cmdInvoice, w.Command12,
                               w.Command19, w.Command20})
            QVERIFY2(!b->isVisible(), qPrintable(b->objectName()));
        // Yes: the printing panel with the order copy alone.
        QVERIFY(w.frmPrinter->isVisible());
        QVERIFY(w.frmPrinter->btnPrintOrder->isVisible());
        for (QPushButton* b : {w.frmPrinter->btnPrintInvoice, w.frmPrinter->btnPrintDelNote,
                               w.frmPrinter->btnPrintPickList, w.frmPrinter->btnPickHelp})
            QVERIFY2(!b->isVisible(), qPrintable(b->objectName()));
        w.frmPrinter->cmdCancelPrint->click();
        QVERIFY(!w.frmPrinter->isVisible());
    }
};

QTEST_MAIN(TestSalesLists)
#include "test_sales_lists.moc"
