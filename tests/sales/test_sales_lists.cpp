// The two sales lists of the main window: the pop-up of an order row, the windows they open, the
// list read again when the window closes, and the invoice list that opens on one click.
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "sales/CustOrderListPanel.h"
#include "sales/frmCustOrder.h"
#include "tests/sales/SalesFixture.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTimer>

using namespace sales_fixture;

namespace {
QString firstColumn(const GridEX& grid) {
    QStringList out;
    for (int r = 1; r <= grid.RowCount(); ++r)
        out << grid.CellValue(r, 1).toString();
    return joined(out);
}

// Releases the mouse over a row of the list, as the grid reports it.
void releaseOverRow(CustOrderListPanel* panel, int row) {
    GridEX* g = panel->gdxCustOrdersList;
    QTableView* t = g->TableView();
    const QPoint at =
        t->viewport()->mapTo(g, t->visualRect(t->model()->index(row - 1, 0)).center());
    g->SetRow(row);
    emit g->MouseUp(Qt::LeftButton, g->PixelsToTwips(at.x()), g->PixelsToTwips(at.y()));
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
} // namespace

class TestSalesLists : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    void listsOpenTheirOrdersAndInvoices() {
        TestData data;
        ScriptedBoxes boxes;
        // Order 1 is pending (its second row half supplied), order 2 completed; invoice 0007
        // belongs to order 2.
        const qint32 acme = addCustomer("Acme", 0);
        addItem(1, "A-1", 10);
        addItem(2, "B-2", 4);
        addOrder(1, acme, "open");
        addOrderRow(1, 1, 2, 2, 10, 10);
        addOrderRow(1, 2, 4, 1, 4, 4);
        addOrder(2, acme, "done");
        addOrderRow(2, 1, 3, 3, 10, 10);
        addDespatch(2, 1, 7);
        FormMain w;
        w.resize(1000, 700);
        w.show();
        w.Form_Load();
        w.ButtonBar1_ButtonClick("Customer Orders", "CustOrEdit");
        auto* panel = w.frmViewCustOrders->findChild<CustOrderListPanel*>();
        GridEX* grid = panel->gdxCustOrdersList;
        QCOMPARE(joined({QString::number(gCustOrderMode), firstColumn(*grid)}), "2|0001");
        QVERIFY(panel->optCustORPending->isChecked() && w.CurrentGrid() == grid);

        // Order 1 has a row supplied in full: it is under "Completed." too, offering Label5 only.
        panel->optCustORCompleted->click();
        QCOMPARE(firstColumn(*grid), "0001|0002");
        releaseOverRow(panel, 1);
        QVERIFY(panel->Frame2->isVisible() && panel->Label5->isVisible());
        QVERIFY(!panel->Label9->isVisible());
        panel->optCustORPending->click();
        QVERIFY(!panel->Frame2->isVisible());
        emit grid->MouseUp(Qt::LeftButton, 200, 30); // on the headings: nothing
        QVERIFY(!panel->Frame2->isVisible());

        // Label9 opens the order to be invoiced.
        releaseOverRow(panel, 1);
        QVERIFY(panel->Label9->isVisible());
        whenOrderWindowOpens();
        QTest::mouseClick(panel->Label9, Qt::LeftButton);
        QCOMPARE(joined({QString::number(seenMode), QString::number(gCustOrderID)}), "3|1");

        // Label5 opens it to be changed; saved with its second row at the quantity supplied,
        // the list read again has it under "Completed." only.
        releaseOverRow(panel, 1);
        boxes.answer(vbNo); // "Print?"
        whenOrderWindowOpens([](frmCustOrder* o) {
            o->mSheet.rows[1][OrderCol::OrderQty] = "1";
            o->Command2->click();
        });
        QTest::mouseClick(panel->Label5, Qt::LeftButton);
        QCOMPARE(seenMode, 2);
        QCOMPARE(
            joined({QString::number(panel->optCustORPending->isChecked()), firstColumn(*grid)}),
            "1|");
        panel->optCustORCompleted->click();
        QCOMPARE(firstColumn(*grid), "0001|0002");

        // Export works on the list while it shows.
        const QString csv = data.path("orders.csv");
        boxes.answerFile(csv);
        boxes.answer(vbOK);
        w.buttons_ButtonClick(5);
        QFile f(csv);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QVERIFY(f.readAll().startsWith("Our OrderID,Customer,Customer ORNo,Date,Done"));

        // The invoice list opens an invoice on one click, without the pop-up.
        w.ButtonBar1_ButtonClick("Customer Orders", "ViewInvoice");
        QCOMPARE(joined({QString::number(gCustOrderMode), firstColumn(*grid),
                         grid->CellValue(1, 2).toString()}),
                 "4|0007|0002-001");
        QVERIFY(!panel->optCustORPending->isVisible());
        whenOrderWindowOpens();
        boxes.answer(vbOK); // invoice 7 has no rows, and the window says so as it loads it
        releaseOverRow(panel, 1);
        QCOMPARE(joined({QString::number(seenMode), QString::number(gCustInvoiceNo)}), "4|7");
        QVERIFY(!panel->Frame2->isVisible() && boxes.allAnswersUsed());
        QCOMPARE(firstColumn(*grid), "0007");
    }
};

QTEST_MAIN(TestSalesLists)
#include "test_sales_lists.moc"
