// The window "View Orders" driven through its controls: the list and its filters, the row menu,
// one order's rows edited, saved and printed again, items added, rows and orders deleted; and the
// item's "Purchase Orders" tab of the main window.
#include "foundation/Globals.h"
#include "foundation/Printer.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "purchasing/ORViewer.h"
#include "purchasing/OrderViewer.h"
#include "purchasing/PrintFrame.h"
#include "purchasing/PurchaseOrderDocument.h"
#include "purchasing/frmItemPOrders.h"
#include "tests/purchasing/OrderViewerFixture.h"
#include "tests/purchasing/WindowTestParts.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFrame>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QTimer>

namespace {

using windowtest::Column;
using windowtest::Settle;
using windowtest::Shot;

// The grid row showing the text in a column; 0 when none does.
int RowWith(const GridEX& grid, const QString& key, const QString& text) {
    const int col = grid.Columns()(key).Index();
    for (int r = 1; r <= grid.RowCount(); ++r)
        if (grid.GroupRowLevel(r) == 0 && grid.CellValue(r, col).toString() == text)
            return r;
    return 0;
}

QPoint RowPoint(const GridEX& grid, int row, int column = 1) {
    QTableView* t = grid.TableView();
    return t->visualRect(t->model()->index(row - 1, column - 1)).center();
}

// A click (press and release) over a row, as a mouse gives it.
void ClickRow(GridEX& grid, int row, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(grid.TableView()->viewport(), button, {}, RowPoint(grid, row, 2));
    Settle();
}

// An edit of a cell as the grid's editor hands it over, then the events that commit it.
void Type(GridEX& grid, int row, const QString& key, const QString& text) {
    QAbstractItemModel* m = grid.Model();
    QVERIFY(m->setData(m->index(row - 1, grid.Columns()(key).Index() - 1), text, Qt::EditRole));
    Settle();
}

// Acme: order 1 (one row complete, one open) and order 12 (complete); Bolt: order 10 (open).
void Orders() {
    fixture::Home();
    fixture::Supplier(1, QStringLiteral("Acme"));
    fixture::Supplier(2, QStringLiteral("Bolt"));
    fixture::Item(10, QStringLiteral("RES-10K"), QStringLiteral("Resistor 10k"));
    fixture::Item(11, QStringLiteral("CAP-1U"), QStringLiteral("Capacitor 1u"));
    fixture::Item(12, QStringLiteral("IND-5M"), QStringLiteral("Inductor"));
    fixture::Item(13, QStringLiteral("RELAY-5V"), QStringLiteral("Relay"));
    fixture::Link(10, 1, QStringLiteral("2"), QStringLiteral("A-10"));
    fixture::Link(11, 1, QStringLiteral("0.5"), QStringLiteral("A-11"));
    fixture::Link(13, 1, QStringLiteral("3.25"), QStringLiteral("A-13"));
    fixture::Link(12, 2, QStringLiteral("4"), QStringLiteral("B-12"));
    fixture::OrderHeader(1, 1, QStringLiteral("2026-10-01"));
    fixture::OrderRow(1, 10, QStringLiteral("5"), QStringLiteral("5"), QStringLiteral("2026-12-24"),
                      QStringLiteral("2"));
    fixture::OrderRow(1, 11, QStringLiteral("10"), QStringLiteral("4"),
                      QStringLiteral("2026-12-01"), QStringLiteral("0.5"));
    fixture::OrderHeader(10, 2, QStringLiteral("2026-11-01"));
    fixture::OrderRow(10, 12, QStringLiteral("3"), QStringLiteral("0"),
                      QStringLiteral("2026-11-30"), QStringLiteral("4"));
    fixture::OrderHeader(12, 1, QStringLiteral("2026-11-02"));
    fixture::OrderRow(12, 10, QStringLiteral("1"), QStringLiteral("1"),
                      QStringLiteral("2040-01-01"), QStringLiteral("2"));
    ExecSql(QStringLiteral("UPDATE tblStockItems SET OnOrderQty = 6 WHERE ItemID = 11"));
    ExecSql(QStringLiteral("UPDATE tblStockItems SET OnOrderQty = 3 WHERE ItemID = 12"));
}

// The window as the bar item opens it, on screen.
void Open(ORViewer& w) {
    w.Form_Load();
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
}

} // namespace

class TestORViewerWindow : public QObject {
    Q_OBJECT
private slots:
    void init() {
        gPOPrinterName.clear();
        gRemoteMode.clear();
    }

    void listFiltersAndMenu() {
        TestData data;
        ScriptedBoxes boxes;
        Orders();
        ORViewer w;
        Open(w);
        QCOMPARE(w.windowTitle(), QStringLiteral("View Orders"));

        // It opens on the orders not completed, grouped by supplier with the supplier column
        // hidden.
        QCOMPARE(gOrderViewMode, OrderViewMode::NotCompleted);
        QVERIFY(w.Option3->isChecked());
        QVERIFY(w.gdxOList->isVisible() && !w.gdxPODetail->isVisible());
        QVERIFY(!w.frmRePrintOrder->isVisible() && !w.frmRowMenu->isVisible());
        QCOMPARE(w.gdxOList->RowCount(), 4); // two groups, one order each
        QCOMPARE(w.gdxOList->GroupRowLevel(1), 1);
        QVERIFY(w.gdxOList->CellValue(1, 1).toString().contains(QStringLiteral("Acme")));
        QCOMPARE(Column(*w.gdxOList, QStringLiteral("OrID")).mid(1, 1), QStringList("0001"));
        QVERIFY(!w.gdxOList->Columns()(QStringLiteral("Sup")).Visible());
        Shot(&w, QStringLiteral("orviewer-list"));

        // The options reload the list in their mode.
        QTest::mouseClick(w.Option1, Qt::LeftButton);
        QCOMPARE(gOrderViewMode, OrderViewMode::All);
        QCOMPARE(w.OrderRowCount, 3);
        QTest::mouseClick(w.Option2, Qt::LeftButton);
        QCOMPARE(gOrderViewMode, OrderViewMode::Completed);
        QCOMPARE(w.OrderRowCount, 2);
        QTest::mouseClick(w.Option1, Qt::LeftButton);

        // By date: no groups, the supplier shows, the list runs by ETA.
        QTest::mouseClick(w.chkByDate, Qt::LeftButton);
        QCOMPARE(w.gdxOList->Groups().size(), 0);
        QVERIFY(w.gdxOList->Columns()(QStringLiteral("Sup")).Visible());
        QCOMPARE(Column(*w.gdxOList, QStringLiteral("OrID")),
                 QStringList({"0012", "0010", "0001"})); // no date first
        QTest::mouseClick(w.chkByDate, Qt::LeftButton);
        QCOMPARE(w.gdxOList->Groups().size(), 1);

        // The order filter follows the typing, capitals and back-quotes included.
        w.txtFilterPO->setFocus();
        QTest::keyClicks(w.txtFilterPO, QStringLiteral("1"));
        QCOMPARE(w.OrderRowCount, 3); // 1, 10, 12
        QTest::keyClicks(w.txtFilterPO, QStringLiteral("0"));
        QCOMPARE(w.OrderRowCount, 1);
        QCOMPARE(w.OrderRows(OListCol::OrID, 1).toString(), QStringLiteral("0010"));
        QTest::keyClicks(w.txtFilterPO, QStringLiteral("a'"));
        QCOMPARE(w.txtFilterPO->text(), QStringLiteral("10A`"));
        QCOMPARE(w.OrderRowCount, 0);
        // The supplier filter waits for the search.
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QVERIFY(w.txtFilterPO->text().isEmpty());
        QCOMPARE(QApplication::focusWidget(), w.txtFilterPO);
        QCOMPARE(w.OrderRowCount, 3);
        w.txtFilterSu->setFocus();
        QTest::keyClicks(w.txtFilterSu, QStringLiteral(" bo"));
        QCOMPARE(w.OrderRowCount, 3);
        QTest::mouseClick(w.Command8, Qt::LeftButton);
        QCOMPARE(w.txtFilterSu->text(), QStringLiteral("bo"));
        QCOMPARE(w.OrderRowCount, 1);
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QCOMPARE(w.OrderRowCount, 3);

        // A click on an order opens the menu there and fills the order's boxes.
        const int row = RowWith(*w.gdxOList, QStringLiteral("OrID"), QStringLiteral("0001"));
        QVERIFY(row > 0);
        ClickRow(*w.gdxOList, row);
        QVERIFY(w.frmRowMenu->isVisible());
        QVERIFY(!w.btnChase->isEnabled() && w.btnDeleteRow->isEnabled() &&
                w.btnViewPODetails->isEnabled());
        QCOMPARE(w.txtOrderRowID->text(), QStringLiteral("0001"));
        QCOMPARE(QStringList({w.txtPOID->text(), w.txtPORef->text(), w.txtSupplier->text()}),
                 QStringList({"0001", "REF-1", "Acme"}));
        QCOMPARE(w.CurrentPOID, 1);
        QCOMPARE(w.CurrentSupplierID, 1);
        Shot(&w, QStringLiteral("orviewer-menu"));
        // On a group line the menu closes and opens nothing.
        ClickRow(*w.gdxOList, 1);
        QVERIFY(!w.frmRowMenu->isVisible());
        QVERIFY(w.txtOrderRowID->text().isEmpty());
        ClickRow(*w.gdxOList, row);
        QTest::mouseClick(w.btnCloseRowMenu, Qt::LeftButton);
        QVERIFY(!w.frmRowMenu->isVisible());
        QVERIFY(boxes.shown().isEmpty());
    }

    void editSaveAndReprint() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseRecordingPrinter();
        Orders();
        ORViewer w;
        Open(w);

        ClickRow(*w.gdxOList, RowWith(*w.gdxOList, QStringLiteral("OrID"), QStringLiteral("0001")));
        QTest::mouseClick(w.btnViewPODetails, Qt::LeftButton);
        QCOMPARE(gOrderViewMode, OrderViewMode::Rows);
        QCOMPARE(w.SavedViewMode, OrderViewMode::NotCompleted);
        QVERIFY(w.gdxPODetail->isVisible() && !w.gdxOList->isVisible() && !w.Frame1->isVisible());
        QVERIFY(!w.btnViewPODetails->isEnabled());
        QVERIFY(w.cmdReprint->isEnabled() && w.btnAddToOrder->isEnabled());
        // By schedule date: the capacitor's row, then the resistor's.
        QCOMPARE(Column(*w.gdxPODetail, QStringLiteral("PNo")), QStringList({"CAP-1U", "RES-10K"}));
        QCOMPARE(Column(*w.gdxPODetail, QStringLiteral("RowPrice")),
                 QStringList({"5.00", "10.00"}));

        // Only the quantity takes keys: digits, one decimal sign and backspace.
        QTableView* table = w.gdxPODetail->TableView();
        const QModelIndex qty = w.gdxPODetail->Model()->index(
            0, w.gdxPODetail->Columns()(QStringLiteral("POQty")).Index() - 1);
        table->setCurrentIndex(qty);
        table->edit(qty);
        auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, QStringLiteral("1x2.-5.0"));
        QCOMPARE(editor->text(), QStringLiteral("12.50"));
        QTest::keyClick(editor, Qt::Key_Return);
        Settle();
        QCOMPARE(Column(*w.gdxPODetail, QStringLiteral("RowPrice")).first(),
                 QStringLiteral("6.25"));
        // A date, as the calendar hands it over.
        Type(*w.gdxPODetail, 2, QStringLiteral("DelDate"), QStringLiteral("15/01/2027"));
        QCOMPARE(Column(*w.gdxPODetail, QStringLiteral("DelDate")).last(),
                 QStringLiteral("15/01/2027"));
        // Nothing is written before the save.
        QCOMPARE(SqlFirst(QStringLiteral("SELECT POQty FROM tblPODetail WHERE POStockID=11")),
                 QStringLiteral("10"));
        Shot(&w, QStringLiteral("orviewer-rows"));

        // Save, then print: the rows, the on-order figure and the header's flag are written.
        boxes.answer(vbYes);
        QTest::mouseClick(w.cmdReprint, Qt::LeftButton);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Print order?"));
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("If you made any changes they have now been saved to the "
                                "database\n\nDo you wish to print/reprint the order now?"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT POQty FROM tblPODetail WHERE POStockID=11")),
                 QStringLiteral("12.5"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT POSchedDate FROM tblPODetail WHERE POID=1 AND "
                                         "POStockID=10")),
                 QStringLiteral("2027-01-15"));
        QCOMPARE(fixture::OnOrder(11), QStringLiteral("8.5"));
        QVERIFY(w.frmRePrintOrder->isVisible());
        QVERIFY(!w.cmdReprint->isEnabled() && !w.btnAddToOrder->isEnabled());
        QCOMPARE(w.cboSelectPrinter->currentText(), QStringLiteral("Recording Printer"));
        QVERIFY(w.cmdRePrintOK->isEnabled());
        Shot(&w, QStringLiteral("orviewer-print"));

        // The order is older than today: the date question, then the printer's word.
        boxes.answer(vbNo);
        boxes.answer(vbOK);
        QTest::mouseClick(w.cmdRePrintOK, Qt::LeftButton);
        QCOMPARE(printer->Documents(), 1);
        QCOMPARE(boxes.shown().at(boxes.shown().size() - 2).title,
                 QStringLiteral("Use Today's date?"));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Printer Status"));
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("Order was spooled. Check your printout and reprint if necessary"));

        // "Done" reads the rows again: what was saved, with a change made since kept unsaved.
        Type(*w.gdxPODetail, 2, QStringLiteral("POQty"), QStringLiteral("6"));
        QTest::mouseClick(w.cmdCancelrePrint, Qt::LeftButton);
        QVERIFY(!w.frmRePrintOrder->isVisible());
        QVERIFY(w.cmdReprint->isEnabled() && w.btnAddToOrder->isEnabled());
        QCOMPARE(Column(*w.gdxPODetail, QStringLiteral("POQty")), QStringList({"12.5", "6"}));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT POQty FROM tblPODetail WHERE POID=1 AND "
                                         "POStockID=10")),
                 QStringLiteral("5"));

        // An edit left unsaved is dropped on the way back, without a word; the list is not read
        // again and is in its mode as before.
        Type(*w.gdxPODetail, 1, QStringLiteral("POQty"), QStringLiteral("99"));
        QTest::mouseClick(w.Command6_0, Qt::LeftButton);
        QCOMPARE(gOrderViewMode, OrderViewMode::NotCompleted);
        QVERIFY(w.gdxOList->isVisible() && w.Frame1->isVisible() && !w.gdxPODetail->isVisible());
        QVERIFY(w.btnViewPODetails->isEnabled());
        QCOMPARE(SqlFirst(QStringLiteral("SELECT POQty FROM tblPODetail WHERE POStockID=11")),
                 QStringLiteral("12.5"));
        QVERIFY(boxes.allAnswersUsed());
    }

    void addItemsAndDelete() {
        TestData data;
        ScriptedBoxes boxes;
        Orders();
        ORViewer w;
        Open(w);
        QTest::mouseClick(w.Option1, Qt::LeftButton);
        ClickRow(*w.gdxOList, RowWith(*w.gdxOList, QStringLiteral("OrID"), QStringLiteral("0012")));
        QTest::mouseClick(w.btnViewPODetails, Qt::LeftButton);
        QCOMPARE(w.DetailRowCount, 1);
        // A quantity typed and not saved yet.
        Type(*w.gdxPODetail, 1, QStringLiteral("POQty"), QStringLiteral("7"));

        // The supplier's items, filtered by part number; a double-click adds one at quantity 0.
        QTest::mouseClick(w.btnAddToOrder, Qt::LeftButton);
        QVERIFY(w.frmPOParts->isVisible());
        QCOMPARE(Column(*w.gdxPOParts, QStringLiteral("PartNo")),
                 QStringList({"RES-10K", "CAP-1U", "RELAY-5V"}));
        w.txtPOItemFilter->setFocus();
        QTest::keyClicks(w.txtPOItemFilter, QStringLiteral("re"));
        QCOMPARE(w.txtPOItemFilter->text(), QStringLiteral("RE"));
        QCOMPARE(Column(*w.gdxPOParts, QStringLiteral("PartNo")),
                 QStringList({"RES-10K", "RELAY-5V"}));
        QTableView* parts = w.gdxPOParts->TableView();
        QTest::qWait(QApplication::doubleClickInterval() + 50);
        QTest::mouseClick(parts->viewport(), Qt::LeftButton, {}, RowPoint(*w.gdxPOParts, 2, 2));
        QTest::mouseDClick(parts->viewport(), Qt::LeftButton, {}, RowPoint(*w.gdxPOParts, 2, 2));
        Settle();
        QCOMPARE(w.DetailRowCount, 2);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT POQty || '|' || POPrice || '|' || POSupPNo FROM "
                                         "tblPODetail WHERE POID=12 AND POStockID=13")),
                 QStringLiteral("0.0|3.25|A-13"));
        // The rows are read again; the quantity typed stays on screen, still unsaved.
        QCOMPARE(Column(*w.gdxPODetail, QStringLiteral("POQty")), QStringList({"7", "0"}));
        QCOMPARE(Column(*w.gdxPODetail, QStringLiteral("RowPrice")),
                 QStringList({"14.00", "0.00"}));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT POQty FROM tblPODetail WHERE POID=12 AND "
                                         "POStockID=10")),
                 QStringLiteral("1"));
        QTest::mouseClick(w.Command3, Qt::LeftButton);
        QCOMPARE(w.PartRowCount, 3);
        QTest::mouseClick(w.btnAddToOrderHide, Qt::LeftButton);
        QVERIFY(!w.frmPOParts->isVisible());

        // In the rows the menu opens on a right click and deletes the row under it.
        const int relay =
            RowWith(*w.gdxPODetail, QStringLiteral("PNo"), QStringLiteral("RELAY-5V"));
        ClickRow(*w.gdxPODetail, relay, Qt::RightButton);
        QVERIFY(w.frmRowMenu->isVisible());
        QVERIFY(!w.btnViewPODetails->isEnabled() && !w.btnChase->isEnabled());
        QCOMPARE(w.txtOrderRowID->text(),
                 SqlFirst(QStringLiteral("SELECT RowID FROM tblPODetail WHERE POStockID=13")));
        boxes.answer(vbYes);
        QTest::mouseClick(w.btnDeleteRow, Qt::LeftButton);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Delete Row?"));
        QCOMPARE(w.DetailRowCount, 1);
        QCOMPARE(Column(*w.gdxPODetail, QStringLiteral("POQty")), QStringList({"7"}));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT count(*) FROM tblPODetail WHERE POID=12")),
                 QStringLiteral("1"));
        // The last row: the order is said to be empty, and drops out of the list.
        ClickRow(*w.gdxPODetail, 1, Qt::RightButton);
        boxes.answer(vbYes);
        boxes.answer(vbOK);
        QTest::mouseClick(w.btnDeleteRow, Qt::LeftButton);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Empty Purchase Order"));
        QCOMPARE(w.DetailRowCount, 0);
        QTest::mouseClick(w.Command6_0, Qt::LeftButton);
        QCOMPARE(gOrderViewMode, OrderViewMode::All);
        QTest::mouseClick(w.Command8, Qt::LeftButton);
        QCOMPARE(w.OrderRowCount, 2);

        // A whole order, from the list.
        ClickRow(*w.gdxOList, RowWith(*w.gdxOList, QStringLiteral("OrID"), QStringLiteral("0010")));
        boxes.answer(vbYes);
        QTest::mouseClick(w.btnDeleteRow, Qt::LeftButton);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Delete Order?"));
        QCOMPARE(w.OrderRowCount, 1);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT count(*) FROM tblPOrders WHERE POID=10")),
                 QStringLiteral("0"));
        QCOMPARE(fixture::OnOrder(12), QStringLiteral("0"));
        QVERIFY(boxes.allAnswersUsed());
    }

    void itemTabAndBarItem() {
        TestData data;
        Orders();
        FormMain w;
        w.Form_Load();
        w.resize(1100, 700);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        w.ButtonBar1_ButtonClick(QStringLiteral("Inventory"), QStringLiteral("UB_All"));
        gCurrentItemID = 10;
        w.TabStrip2->setCurrentIndex(1);
        w.frmItemDetail->TabStrip1->setCurrentIndex(3);
        auto* panel = w.findChild<frmItemPOrders*>(QStringLiteral("frmItemPOrders"));
        QVERIFY(panel && panel->isVisible());
        QCOMPARE(w.mCurrentGrid, 5);
        QCOMPARE(w.CurrentGrid(), panel->gdxItemPOrders);
        QCOMPARE(Column(*panel->gdxItemPOrders, QStringLiteral("OrID")),
                 QStringList({"0012", "0001"}));
        QCOMPARE(panel->gdxItemPOrders->Columns()(8).Caption(), QStringLiteral("Confirmed"));
        Shot(&w, QStringLiteral("item-purchase-orders"));

        // Export works on it.
        const QString csv = data.path(QStringLiteral("orders.csv"));
        {
            ScriptedBoxes boxes;
            boxes.answerFile(csv);
            boxes.answer(vbOK);
            w.buttons_ButtonClick(5);
            QCOMPARE(boxes.shown().last().title, QStringLiteral("Saved"));
        }
        QFile file(csv);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("0001"));

        // The bar item opens the viewer over the main window. (Its load lets events run, so the
        // window is looked for until it is up.)
        ORViewer* seen = nullptr;
        int listed = -1;
        QTimer poll;
        connect(&poll, &QTimer::timeout, &w, [&] {
            seen = qobject_cast<ORViewer*>(QApplication::activeModalWidget());
            if (seen) {
                poll.stop();
                listed = seen->OrderRowCount;
                seen->Command5->click();
            }
        });
        poll.start(20);
        w.ButtonBar1_ButtonClick(QStringLiteral("Purchasing"), QStringLiteral("PchsViewOR"));
        QCOMPARE(listed, 2);
        QVERIFY(seen);
    }
};

QTEST_MAIN(TestORViewerWindow)
#include "test_orviewer_window.moc"
