// The purchasing windows driven through their controls: "Purchasing" (the basket, "Order Now" and
// its print frame), "Goods Receiving", "View Orders" and the item's "Purchase Orders" tab. What the
// procedures behind them write is proved without windows; here, that each control reaches its
// procedure, and the rules only a window has.
#include "foundation/Printer.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "inventory/OnOrder.h"
#include "purchasing/ORViewer.h"
#include "purchasing/OrderViewer.h"
#include "purchasing/PrintFrame.h"
#include "purchasing/PurchaseOrderDocument.h"
#include "purchasing/basket.h"
#include "purchasing/frmGoodsIn.h"
#include "purchasing/frmItemPOrders.h"
#include "tests/purchasing/PurchasingFixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTableView>
#include <QTest>

using namespace fixture;

namespace {

// Lets the queued steps of an edit (the editor's hand-over, then the commit) run.
void Settle() {
    for (int i = 0; i < 4; ++i)
        QCoreApplication::processEvents();
}

// The texts of a column, row by row as the grid shows them (group rows included).
QStringList Shown(const GridEX& grid, const QString& key) {
    QStringList out;
    for (int r = 1; r <= grid.RowCount(); ++r)
        out << grid.CellValue(r, grid.Columns()(key).Index()).toString();
    return out;
}

QModelIndex Cell(const GridEX& grid, int row, const QString& key) {
    return grid.Model()->index(row - 1, grid.Columns()(key).Index() - 1);
}

// A click over a row's first shown cell, as a mouse gives it (press and release).
void ClickRow(GridEX& grid, int row, Qt::MouseButton button = Qt::LeftButton, bool twice = false) {
    int column = 1;
    while (!grid.Columns()(column).Visible())
        ++column;
    const QPoint at =
        grid.TableView()->visualRect(grid.Model()->index(row - 1, column - 1)).center();
    if (twice)
        QTest::qWait(QApplication::doubleClickInterval() + 50);
    QTest::mouseClick(grid.TableView()->viewport(), button, {}, at);
    if (twice)
        QTest::mouseDClick(grid.TableView()->viewport(), button, {}, at);
    Settle();
}

// An edit of a cell as the grid's editor hands it over (a tick as a check state), then the
// events that commit it.
void Type(GridEX& grid, int row, const QString& key, const QVariant& value) {
    const bool tick = value.typeId() == QMetaType::Bool;
    QVERIFY(grid.Model()->setData(
        Cell(grid, row, key), tick ? QVariant(value.toBool() ? Qt::Checked : Qt::Unchecked) : value,
        tick ? Qt::CheckStateRole : Qt::EditRole));
    Settle();
}

// Keys typed into a cell's editor; its text as the key filter left it, before Enter (or "Enter"
// when `enter` is false).
QString Keys(GridEX& grid, int row, const QString& key, const QString& keys, bool enter = true) {
    QTableView* view = grid.TableView();
    view->setFocus();
    view->setCurrentIndex(Cell(grid, row, key));
    view->edit(Cell(grid, row, key));
    auto* editor = qobject_cast<QLineEdit*>(view->indexWidget(Cell(grid, row, key)));
    if (!editor)
        return QStringLiteral("<no editor>");
    editor->clear();
    QTest::keyClicks(editor, keys);
    const QString text = editor->text();
    if (enter)
        QTest::keyClick(editor, Qt::Key_Return);
    Settle();
    return text;
}

template <class W> void Open(W& w) {
    w.Form_Load();
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
}

void Select(basket& w, const QString& supplier) {
    w.cboSupplist->setCurrentIndex(w.cboSupplist->findText(supplier));
}

// Acme: order 1 (one row complete, one open) and order 12 (complete); Bolt: order 10 (open).
void ViewerOrders() {
    Order(1, 1, "2026-10-01");
    OrderRow(1, 10, "5", "5", "2026-12-24", "2");
    OrderRow(1, 11, "10", "4", "2026-12-01", "0.5");
    Order(10, 2, "2026-11-01");
    OrderRow(10, 12, "3", "0", "2026-11-30", "4");
    Order(12, 1, "2026-11-02");
    OrderRow(12, 10, "1", "1", "2040-01-01", "2");
    for (int item : {10, 11, 12})
        RefreshOnOrderQty(item);
}

} // namespace

class TestPurchasingWindows : public QObject, Suite {
    Q_OBJECT
private slots:
    void init() {
        gPOPrinterName.clear();
        Fresh();
    }
    void cleanup() { Drop(); }

    void basketWindow() {
        auto one = std::make_shared<RecordingPrinter>(QStringLiteral("Office"));
        auto two = std::make_shared<RecordingPrinter>(QStringLiteral("Stores"));
        SetPrinters({one, two});
        SetCurrentPrinter(two);
        ExecSql("INSERT INTO tblPOrders (POID, POSupID) VALUES (12, 1)");
        BasketRow(10, "0", 1); // basket rows 1 to 4
        BasketRow(11, "3", 1);
        BasketRow(10, "0", 1);
        BasketRow(12, "1", 1);
        basket w;
        Open(w);
        QVERIFY(w.windowTitle() == "Purchasing" && w.cboSupplist->count() == 4);
        QVERIFY(w.txtPOID->text() == "0013" && !w.Command2->isEnabled() &&
                !w.Command4->isEnabled());

        // Order number: digits only, and one typed higher than the next survives a selection.
        // Reference: apostrophes become back-quotes.
        w.txtPOID->clear();
        QTest::keyClicks(w.txtPOID, "a5'0.x0");
        QTest::keyClicks(w.txtBasketPONo, "O'Neil");
        Select(w, "Acme");
        QVERIFY(w.txtPOID->text() == "0500" && w.txtBasketPONo->text() == "O`Neil");
        QVERIFY(w.Command2->isEnabled() && w.Command4->isEnabled());

        // A quantity typed is written at once and the order value follows; the tick as well.
        // A number cell takes digits, the decimal sign and backspace only.
        Type(*w.gdxBList, 1, "PQty", QStringLiteral("4"));
        QCOMPARE(w.Text2->text(), "9.50");
        Type(*w.gdxBList, 2, "POrder", false);
        QCOMPARE(Keys(*w.gdxBList, 3, "PQty", "1a.5x-"), "1.5");
        QCOMPARE(SqlFirst("SELECT group_concat(ReqQty || '/' || OrderYN) FROM tblBaskets"),
                 "4.0/-1,3.0/0,1.5/-1,1.0/1");
        // Remove on one of the item's two rows: that row goes and the list is read again.
        Type(*w.gdxBList, 1, "Remove", true);
        QCOMPARE(Shown(*w.gdxBList, "PartNo"), QStringList({"CAP-1U", "RES-10K"}));

        // A supplier with nothing waiting: an empty list, the order value as it was, and
        // "Order Now" does not order the last supplier's rows.
        Select(w, "Cobalt");
        QVERIFY(w.BasketRowCount == 0 && w.Text2->text() == "11.00");
        boxes->answer(vbOK);
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QCOMPARE(boxes->prompts(), QStringList("The order would be empty so nothing was done"));

        // The supplier's parts, filtered as typed in capitals; a double-click adds a part.
        Select(w, "Acme");
        QTest::mouseClick(w.Command4, Qt::LeftButton);
        QTest::keyClicks(w.txtBSupItemFilter, "rel");
        QCOMPARE(Shown(*w.gdxBParts, "PartNo"), QStringList("RELAY-5V"));
        ClickRow(*w.gdxBParts, 1, Qt::LeftButton, true);
        QCOMPARE(Shown(*w.gdxBList, "PartNo"), QStringList({"CAP-1U", "RES-10K", "RELAY-5V"}));

        // "No" to printing: the list is read again and shows the next number.
        Type(*w.gdxBList, 3, "Remove", true);
        boxes->answer(vbNo);
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QCOMPARE(SqlFirst("SELECT POID || '|' || PONumber || '|' || POStockID || '|' || POQty FROM "
                          "tblPOrders JOIN tblPODetail USING (POID)"),
                 "500|O`Neil|10|1.5");
        QCOMPARE(Shown(*w.gdxBList, "PartNo"), QStringList("CAP-1U"));
        QVERIFY(w.txtPOID->text() == "0501" && w.txtBasketPONo->text().isEmpty());

        // "Yes": the print frame, with the current printer chosen and the order buttons off.
        Select(w, "Bolt");
        boxes->answer(vbYes);
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QVERIFY(w.frmPrintOrder->isVisible() && !w.Command2->isEnabled() &&
                !w.Command4->isEnabled());
        QVERIFY(w.cboSelectPrinter->currentText() == "Stores" && gPOPrinterName == "Stores");
        // The other printer chosen prints; the frame stays.
        boxes->answer(vbOK);
        w.cboSelectPrinter->setCurrentIndex(0);
        QTest::mouseClick(w.cmdPrintOK, Qt::LeftButton);
        QVERIFY(two->Documents() == 0 && one->Texts().contains("0501 / "));
        QCOMPARE(Said(*boxes).last(), "Printing Order: Please check that your printout is correct "
                                      "and reprint if necessary");
        // "Done": the frame goes and the supplier is selected afresh.
        QTest::mouseClick(w.cmdCancelPrint, Qt::LeftButton);
        QVERIFY(!w.frmPrintOrder->isVisible() && w.Command2->isEnabled());
        QVERIFY(w.gdxBList->RowCount() == 0 && w.txtPOID->text() == "0502");
    }

    void goodsInWindow() {
        Order(3, 1);
        OrderRow(3, 10, "10", "0");
        OrderRow(3, 11, "4", "4");
        OrderRow(3, 12, "6", "0");
        Order(7, 2);
        OrderRow(7, 11, "1", "0");
        auto printer = UseRecordingPrinter();
        {
            frmGoodsIn w;
            Open(w);
            QCOMPARE(w.windowTitle(), "Goods Receiving");
            QVERIFY(!w.cmdBookIn->isEnabled() && !w.btnSeeCompletedRows->isEnabled());
            // Grouping by supplier in the list step: a group row opens nothing.
            QTest::mouseClick(w.Check1, Qt::LeftButton);
            QCOMPARE(w.gdxOList->GroupRowLevel(1), 1);
            ClickRow(*w.gdxOList, 1);
            QVERIFY(!w.DetailMode);
            QTest::mouseClick(w.Check1, Qt::LeftButton);
            // A header click sorts, and its release opens nothing; the row clicked is read
            // through the sort.
            QHeaderView* head = w.gdxOList->TableView()->horizontalHeader();
            for (int i = 0; i < 2; ++i)
                QTest::mouseClick(head->viewport(), Qt::LeftButton, {},
                                  QPoint(head->sectionSize(0) / 2, head->height() / 2));
            Settle();
            QVERIFY(!w.DetailMode);
            ClickRow(*w.gdxOList, 1);
            QCOMPARE(QStringList({w.txtPOID->text(), w.txtSupplier->text(), w.txtPONo->text(),
                                  w.txtPODate->text(), w.txtGRNDate->text()}),
                     QStringList({"0007", "Bolt", "REF-7", "02/11/2026", "23/11/2026"}));
            QVERIFY(w.DetailMode && w.gdxOList->Columns().Count() == 13 &&
                    w.cmdBookIn->isEnabled());

            // Book the whole of order 7 ("TRN?" first): the print frame on the current printer.
            // In the row step a click on the grouping box leaves it unticked.
            Type(*w.gdxOList, 1, "RXd", QStringLiteral("1"));
            boxes->answer(vbYes);
            QTest::mouseClick(w.cmdBookIn, Qt::LeftButton);
            QCOMPARE(Said(*boxes).first().left(5), "TRN?:");
            QCOMPARE(SqlFirst("SELECT PORecieved FROM tblPODetail WHERE POID=7"), "1");
            QVERIFY(w.frmPrintTRN->isVisible());
            QTest::mouseClick(w.Check1, Qt::LeftButton);
            QVERIFY(!w.Check1->isChecked());
            // "Done" goes back to the list as loaded: order 7 stays until the list is refreshed.
            QTest::mouseClick(w.cmdCancelPrint, Qt::LeftButton);
            QVERIFY(!w.DetailMode && !w.frmPrintTRN->isVisible());
            QCOMPARE(Shown(*w.gdxOList, "POID"), QStringList({"0003", "0007"}));
            QTest::mouseClick(w.btnBar_2, Qt::LeftButton);
            QCOMPARE(Shown(*w.gdxOList, "POID"), QStringList("0003"));

            // Order 3 (IND-5M, RES-10K): typed keys take one minus sign; completed rows on
            // request, with a notice, the reload dropping what was typed.
            ClickRow(*w.gdxOList, 1);
            QCOMPARE(Keys(*w.gdxOList, 1, "RXd", "-3a'-"), "-3");
            boxes->answer(vbOK);
            QTest::mouseClick(w.btnSeeCompletedRows, Qt::LeftButton);
            QVERIFY(Said(*boxes).last().startsWith("View completed rows: This will display any"));
            QCOMPARE(Shown(*w.gdxOList, "RXd"), QStringList(3, QString()));
            QTest::mouseClick(w.btnSeeCompletedRows, Qt::LeftButton);

            // The boxes drop apostrophes; a quantity still in the cell's editor when "Book In"
            // is clicked is booked, and the booked row then takes no edit.
            QTest::keyClicks(w.txtGRNno, "T'RN-5");
            QTest::keyClicks(w.txtAdviceNo, "ADV");
            QApplication::setActiveWindow(&w);
            QVERIFY(QTest::qWaitForWindowActive(&w));
            Keys(*w.gdxOList, 2, "RXd", "3", false);
            QTest::mouseClick(w.cmdBookIn, Qt::LeftButton);
            Settle();
            QCOMPARE(SqlFirst("SELECT HistTRN || '/' || HistRef || '/' || HistQty FROM "
                              "tblItemHistory WHERE StockID=10"),
                     "TRN-5/ADV/3.0");
            Type(*w.gdxOList, 2, "RXd", QStringLiteral("9"));
            QCOMPARE(Shown(*w.gdxOList, "RXd").at(1), "3");

            // The note of what was booked is printed; the frame stays.
            QTest::mouseClick(w.cmdPrintOK, Qt::LeftButton);
            QVERIFY(printer->Texts().contains("No. TRN-5") && !printer->Texts().contains("IND-5M"));
            QVERIFY(w.frmPrintTRN->isVisible());

            // An order completed elsewhere since the list was read: the screen stays.
            QTest::mouseClick(w.Command1, Qt::LeftButton);
            ExecSql("UPDATE tblPODetail SET PORecieved = POQty");
            ClickRow(*w.gdxOList, 1);
            QVERIFY(!w.DetailMode && w.gdxOList->Columns().Count() == 8);
        }
    }

    void orderViewerWindow() {
        auto printer = UseRecordingPrinter();
        ViewerOrders();
        ORViewer w;
        Open(w);
        // It opens on the orders not completed, grouped by supplier with the supplier column
        // hidden; the options reload the list in their mode.
        QVERIFY(w.windowTitle() == "View Orders" && w.Option3->isChecked());
        QCOMPARE(gOrderViewMode, OrderViewMode::NotCompleted);
        QCOMPARE(Shown(*w.gdxOList, "OrID").mid(1),
                 QStringList({"0001", "Supplier: Bolt (1)", "0010"}));
        QTest::mouseClick(w.Option2, Qt::LeftButton);
        QCOMPARE(w.OrderRowCount, 2);
        QTest::mouseClick(w.Option1, Qt::LeftButton);
        QVERIFY(gOrderViewMode == OrderViewMode::All && w.OrderRowCount == 3);
        // The order filter follows the typing, capitals and back-quotes included; the
        // supplier filter waits for the search; Command2 clears both.
        QTest::keyClicks(w.txtFilterPO, "10a'");
        QVERIFY(w.txtFilterPO->text() == "10A`" && w.OrderRowCount == 0);
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QTest::keyClicks(w.txtFilterSu, " bo");
        QTest::mouseClick(w.Command8, Qt::LeftButton);
        QVERIFY(w.txtFilterSu->text() == "bo" && w.OrderRowCount == 1);
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QVERIFY(w.txtFilterSu->text().isEmpty() && w.OrderRowCount == 3);

        // A click on an order opens the menu there and fills the order's boxes; one on a group
        // line (folding it, and back) closes the menu and opens nothing.
        ClickRow(*w.gdxOList, 2);
        QVERIFY(w.frmRowMenu->isVisible() && !w.btnChase->isEnabled());
        QCOMPARE(QStringList({w.txtOrderRowID->text(), w.txtPOID->text(), w.txtPORef->text(),
                              w.txtSupplier->text()}),
                 QStringList({"0001", "0001", "REF-1", "Acme"}));
        ClickRow(*w.gdxOList, 1);
        QVERIFY(!w.frmRowMenu->isVisible() && w.txtOrderRowID->text().isEmpty());
        ClickRow(*w.gdxOList, 1);
        ClickRow(*w.gdxOList, 2);
        QTest::mouseClick(w.btnViewPODetails, Qt::LeftButton);
        QVERIFY(gOrderViewMode == OrderViewMode::Rows && w.gdxPODetail->isVisible());
        QVERIFY(!w.gdxOList->isVisible() && !w.btnViewPODetails->isEnabled());

        // The rows (CAP-1U, RES-10K). Only the quantity takes keys (digits, one decimal sign,
        // backspace); a commit works the total out again; a date as the calendar hands it
        // over. Nothing is written yet.
        QCOMPARE(Keys(*w.gdxPODetail, 1, "POQty", "1x2.-5.0"), "12.50");
        QCOMPARE(Keys(*w.gdxPODetail, 1, "AtPrice", "9"), "<no editor>");
        QCOMPARE(Shown(*w.gdxPODetail, "RowPrice"), QStringList({"6.25", "10.00"}));
        Type(*w.gdxPODetail, 2, "DelDate", QStringLiteral("15/01/2027"));
        QCOMPARE(SqlFirst("SELECT POQty FROM tblPODetail WHERE POStockID=11"), "10");
        // Save, then print: the rows and the on-order figure are written; the order is older
        // than today, so the date question, then the printer's word.
        boxes->answer(vbYes);
        QTest::mouseClick(w.cmdReprint, Qt::LeftButton);
        QCOMPARE(SqlFirst("SELECT group_concat(POQty || '|' || POSchedDate) FROM tblPODetail "
                          "WHERE POID=1"),
                 "5.0|2027-01-15,12.5|2026-12-01");
        QCOMPARE(ItemField(11, "OnOrderQty"), "8.5");
        QVERIFY(w.frmRePrintOrder->isVisible() && !w.cmdReprint->isEnabled());
        boxes->answer(vbNo);
        boxes->answer(vbOK);
        QTest::mouseClick(w.cmdRePrintOK, Qt::LeftButton);
        QCOMPARE(printer->Documents(), 1);
        QCOMPARE(Said(*boxes).at(0), "Print order?: If you made any changes they have now been "
                                     "saved to the database\n\nDo you wish to print/reprint the "
                                     "order now?");
        QVERIFY(Said(*boxes).at(1).startsWith("Use Today's date?: "));
        QCOMPARE(Said(*boxes).at(2), "Printer Status: Order was spooled. Check your printout and "
                                     "reprint if necessary");
        // "Done" closes the frame; a change made since stays unsaved.
        Type(*w.gdxPODetail, 2, "POQty", QStringLiteral("6"));
        QTest::mouseClick(w.cmdCancelrePrint, Qt::LeftButton);
        QVERIFY(!w.frmRePrintOrder->isVisible() && w.cmdReprint->isEnabled());

        // The supplier's items, filtered as typed in capitals; a double-click adds one at
        // quantity 0, the rows read again with the quantity typed still on screen, unsaved.
        QTest::mouseClick(w.btnAddToOrder, Qt::LeftButton);
        QTest::keyClicks(w.txtPOItemFilter, "rel");
        QCOMPARE(Shown(*w.gdxPOParts, "PartNo"), QStringList("RELAY-5V"));
        ClickRow(*w.gdxPOParts, 1, Qt::LeftButton, true);
        QCOMPARE(Shown(*w.gdxPODetail, "POQty"), QStringList({"12.5", "6", "0"}));
        // In the rows the menu opens on a right click and deletes the row under it.
        ClickRow(*w.gdxPODetail, 3, Qt::RightButton);
        QVERIFY(w.frmRowMenu->isVisible() && !w.btnViewPODetails->isEnabled());
        boxes->answer(vbYes);
        QTest::mouseClick(w.btnDeleteRow, Qt::LeftButton);
        QCOMPARE(Shown(*w.gdxPODetail, "POQty"), QStringList({"12.5", "6"}));
        QCOMPARE(Count("tblPODetail", "POID=1"), "2");

        // An edit left unsaved is dropped on the way back, without a word; the list is in the
        // mode it had before the rows. A whole order deleted from the list.
        QTest::mouseClick(w.Command6_0, Qt::LeftButton);
        QVERIFY(gOrderViewMode == OrderViewMode::All && w.gdxOList->isVisible());
        QCOMPARE(SqlFirst("SELECT POQty FROM tblPODetail WHERE POStockID=10 AND POID=1"), "5");
        ClickRow(*w.gdxOList, 5);
        boxes->answer(vbYes);
        QTest::mouseClick(w.btnDeleteRow, Qt::LeftButton);
        QCOMPARE(Said(*boxes).last().left(14), "Delete Order?:");
        QVERIFY(w.OrderRowCount == 2 && ItemField(12, "OnOrderQty") == "0");
    }

    void itemPurchaseOrdersTab() {
        ViewerOrders();
        FormMain w;
        w.resize(1100, 700);
        Open(w);
        w.ButtonBar1_ButtonClick(QStringLiteral("Inventory"), QStringLiteral("UB_All"));
        gCurrentItemID = 10;
        w.TabStrip2->setCurrentIndex(1);
        w.frmItemDetail->TabStrip1->setCurrentIndex(3);
        auto* panel = w.findChild<frmItemPOrders*>(QStringLiteral("frmItemPOrders"));
        QVERIFY(panel && panel->isVisible() && w.CurrentGrid() == panel->gdxItemPOrders);
        QCOMPARE(Shown(*panel->gdxItemPOrders, "OrID"), QStringList({"0012", "0001"}));
    }
};

QTEST_MAIN(TestPurchasingWindows)
#include "test_purchasing_windows.moc"
