// The purchasing windows driven through their controls: "Purchasing" (the basket, "Order Now" and
// its print frame), "Goods Receiving" and "View Orders", the item's "Purchase Orders" tab and the
// bar items that open them. What the procedures behind them write is proved without windows.
#include "contacts/frmEditContact.h"
#include "foundation/Clock.h"
#include "foundation/Helpers.h"
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
#include <QFile>
#include <QFrame>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QTimer>

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

// The data row showing the text in a column; 0 when none does.
int RowWith(const GridEX& grid, const QString& key, const QString& text) {
    for (int r = 1; r <= grid.RowCount(); ++r)
        if (grid.GroupRowLevel(r) == 0 &&
            grid.CellValue(r, grid.Columns()(key).Index()).toString() == text)
            return r;
    return 0;
}

QModelIndex Cell(const GridEX& grid, int row, const QString& key) {
    return grid.Model()->index(row - 1, grid.Columns()(key).Index() - 1);
}

// The middle of a row's first shown cell.
QPoint RowPoint(const GridEX& grid, int row) {
    int column = 1;
    while (!grid.Columns()(column).Visible())
        ++column;
    return grid.TableView()->visualRect(grid.Model()->index(row - 1, column - 1)).center();
}

// A click (press and release) over a row, as a mouse gives it.
void ClickRow(GridEX& grid, int row, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(grid.TableView()->viewport(), button, {}, RowPoint(grid, row));
    Settle();
}

void DoubleClickRow(GridEX& grid, int row) {
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    QTest::mouseClick(grid.TableView()->viewport(), Qt::LeftButton, {}, RowPoint(grid, row));
    QTest::mouseDClick(grid.TableView()->viewport(), Qt::LeftButton, {}, RowPoint(grid, row));
    Settle();
}

void ClickHeader(GridEX& grid, const QString& key) {
    QHeaderView* hh = grid.TableView()->horizontalHeader();
    const int logical = grid.Columns()(key).Index() - 1;
    QTest::mouseClick(hh->viewport(), Qt::LeftButton, {},
                      QPoint(hh->sectionViewportPosition(logical) + hh->sectionSize(logical) / 2,
                             hh->height() / 2));
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

// Keys typed into a cell's editor; its text as the key filter left it, after Enter.
QString Keys(GridEX& grid, int row, const QString& key, const QString& keys) {
    QTableView* view = grid.TableView();
    const QModelIndex i = Cell(grid, row, key);
    view->setCurrentIndex(i);
    view->edit(i);
    auto* editor = qobject_cast<QLineEdit*>(view->indexWidget(i));
    if (!editor)
        return QStringLiteral("<no editor>");
    editor->clear();
    QTest::keyClicks(editor, keys);
    const QString text = editor->text();
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
    QCoreApplication::processEvents();
}

// Runs `open` and describes the modal window it brings up, then closes that window.
QString OpenedModal(const std::function<void()>& open,
                    const std::function<QString(QWidget*)>& describe) {
    QString seen;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            poll.stop();
            seen = modal->objectName() + QLatin1Char('|') + describe(modal);
            modal->close();
        }
    });
    poll.start(20);
    open();
    return seen;
}

QString ReqQty(int rowId) {
    return SqlFirst(QStringLiteral("SELECT ReqQty FROM tblBaskets WHERE RowID=%1").arg(rowId));
}

// Acme: order 1 (one row complete, one open) and order 12 (complete); Bolt: order 10 (open).
void ViewerOrders() {
    Catalogue();
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

// Acme's order 3 (two open rows and a complete one), Bolt's order 7 (one row of 1).
void GoodsInOrders() {
    Catalogue();
    Order(3, 1);
    OrderRow(3, 10, "10", "0");
    OrderRow(3, 11, "4", "4");
    OrderRow(3, 12, "6", "0");
    Order(7, 2);
    OrderRow(7, 11, "1", "0");
    for (int item : {10, 11, 12})
        RefreshOnOrderQty(item);
}

} // namespace

class TestPurchasingWindows : public QObject {
    Q_OBJECT
private slots:
    void init() {
        gPOPrinterName.clear();
        gRemoteMode.clear();
    }

    void basketSelectEditAndParts() {
        TestData data;
        ScriptedBoxes boxes;
        Catalogue();
        ExecSql("INSERT INTO tblPOrders (POID, POSupID) VALUES (12, 1)");
        const int r10 = BasketRow(10, "0", 1);
        BasketRow(11, "3", 1);
        BasketRow(10, "0", 1);

        basket w;
        Open(w);
        QCOMPARE(w.windowTitle(), QStringLiteral("Purchasing"));
        QCOMPARE(w.cboSupplist->count(), 4); // Acme, Bolt, Cobalt, No Supplier
        QCOMPARE(w.cboSupplist->findText("Non Stock"), -1);
        QCOMPARE(w.cboSupplist->currentIndex(), -1);
        QCOMPARE(w.txtPOID->text(), QStringLiteral("0013"));
        QVERIFY(!w.Command2->isEnabled() && !w.Command4->isEnabled());
        QVERIFY(!w.frmBParts->isVisible() && !w.frmPrintOrder->isVisible());

        // Order number: digits only, and one typed higher than the next survives a selection.
        // Reference: apostrophes become back-quotes.
        w.txtPOID->clear();
        w.txtPOID->setFocus();
        QTest::keyClicks(w.txtPOID, "a5'0.x0");
        w.txtBasketPONo->setFocus();
        QTest::keyClicks(w.txtBasketPONo, "O'Neil");
        QCOMPARE(w.txtBasketPONo->text(), QStringLiteral("O`Neil"));
        Select(w, "Acme");
        QCOMPARE(w.txtPOID->text(), QStringLiteral("0500"));
        QVERIFY(w.SupplierChosen && w.Command2->isEnabled() && w.Command4->isEnabled());
        // The supplier's address kept in frmNSSupDetails, which stays hidden.
        QCOMPARE(QStringList({w.txtSupID->text(), w.txtSupName->text(), w.txtSupAdd1->text(),
                              w.txtSupPO->text(), w.txtSupContact->text()}),
                 QStringList({"1", "Acme", "Acme Street", "LS1", "Ann"}));
        QVERIFY(!w.frmNSSupDetails->isVisible());
        QCOMPARE(Shown(*w.gdxBList, "PartNo"), QStringList({"RES-10K", "CAP-1U", "RES-10K"}));
        QCOMPARE(Shown(*w.gdxBList, "AtPrice"), QStringList({"2.00", "0.50", "2.00"}));
        QVERIFY(w.Text2->text().isEmpty());

        // A quantity typed is written at once and the order value follows; the tick as well.
        Type(*w.gdxBList, 1, "PQty", QStringLiteral("4"));
        QCOMPARE(ReqQty(r10), QStringLiteral("4"));
        QCOMPARE(w.Text2->text(), QStringLiteral("9.50"));
        Type(*w.gdxBList, 2, "POrder", false);
        QCOMPARE(SqlFirst("SELECT OrderYN FROM tblBaskets WHERE StockID=11"), QStringLiteral("0"));
        QCOMPARE(w.Text2->text(), QStringLiteral("8.00"));
        // The keys of a number cell: digits, the decimal sign and backspace only.
        QCOMPARE(Keys(*w.gdxBList, 3, "PQty", "1a.5x-"), QStringLiteral("1.5"));
        QCOMPARE(SqlFirst("SELECT ReqQty FROM tblBaskets ORDER BY RowID DESC"),
                 QStringLiteral("1.5"));
        // Remove on one of the item's two rows: that row goes and the list is read again.
        Type(*w.gdxBList, 1, "Remove", true);
        QCOMPARE(w.gdxBList->RowCount(), 2);
        QCOMPARE(SqlFirst("SELECT group_concat(RowID) FROM tblBaskets WHERE StockID=10"),
                 QString::number(r10 + 2));

        // A supplier with nothing waiting: an empty list, the order value as it was, and
        // "Order Now" does not order the last supplier's rows.
        const QString value = w.Text2->text();
        Select(w, "Cobalt");
        QCOMPARE(w.gdxBList->RowCount(), 0);
        QCOMPARE(w.BasketRowCount, 0);
        QCOMPARE(w.Text2->text(), value);
        boxes.answer(vbOK);
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QCOMPARE(boxes.prompts(), QStringList("The order would be empty so nothing was done"));
        QCOMPARE(Count("tblPOrders"), QStringLiteral("1"));

        // The supplier's parts; the filter turns letters into capitals and matches the start;
        // a double-click adds a part, twice if done twice.
        Select(w, "Cobalt");
        QTest::mouseClick(w.Command4, Qt::LeftButton);
        QCOMPARE(Shown(*w.gdxBParts, "PartNo"), QStringList("RELAY-5V"));
        Select(w, "Acme");
        QTest::mouseClick(w.Command4, Qt::LeftButton);
        QVERIFY(w.frmBParts->isVisible());
        QCOMPARE(Shown(*w.gdxBParts, "PartNo"), QStringList({"RES-10K", "CAP-1U", "RELAY-5V"}));
        w.txtBSupItemFilter->setFocus();
        QTest::keyClicks(w.txtBSupItemFilter, "re");
        QCOMPARE(w.txtBSupItemFilter->text(), QStringLiteral("RE"));
        QCOMPARE(Shown(*w.gdxBParts, "PartNo"), QStringList({"RES-10K", "RELAY-5V"}));
        DoubleClickRow(*w.gdxBParts, 2);
        DoubleClickRow(*w.gdxBParts, 2);
        QCOMPARE(Shown(*w.gdxBList, "PartNo"),
                 QStringList({"CAP-1U", "RES-10K", "RELAY-5V", "RELAY-5V"}));
        QCOMPARE(ItemField(13, "BuyNow"), QStringLiteral("1"));
        QTest::mouseClick(w.Command5, Qt::LeftButton);
        QCOMPARE(w.gdxBParts->RowCount(), 3);
        QTest::mouseClick(w.Command3, Qt::LeftButton);
        QVERIFY(!w.frmBParts->isVisible());

        // Help on the order number; the supplier's contact entry, on that supplier.
        boxes.answer(vbOK);
        QTest::mouseClick(w.Command1, Qt::LeftButton);
        QVERIFY(boxes.prompts().last().startsWith(
            "Quillstock maintains its own unique numerical purchase order ID"));
        QCOMPARE(OpenedModal([&] { QTest::mouseClick(w.Command8, Qt::LeftButton); },
                             [](QWidget* m) {
                                 return qobject_cast<frmEditContact*>(m)->txtCoName->text();
                             }),
                 QStringLiteral("frmEditContact|Acme"));
    }

    void basketOrderAndPrint() {
        TestData data;
        ScriptedBoxes boxes;
        Catalogue();
        auto one = std::make_shared<RecordingPrinter>(QStringLiteral("Office"));
        auto two = std::make_shared<RecordingPrinter>(QStringLiteral("Stores"));
        SetPrinters({one, two});
        SetCurrentPrinter(two);
        BasketRow(10, "4", 1);
        BasketRow(11, "2", 1);
        BasketRow(12, "1", 1);

        basket w;
        Open(w);
        Select(w, "Acme");
        w.txtBasketPONo->setText(QStringLiteral("REF-1"));
        Type(*w.gdxBList, 2, "POrder", false);

        // "No" to printing: the list is read again and shows the next number; the ordered row
        // left Bolt's list too.
        boxes.answer(vbNo);
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QCOMPARE(boxes.prompts(), QStringList("Do you want to print the order Now?"));
        QCOMPARE(SqlFirst("SELECT PONumber || '|' || count(*) FROM tblPOrders JOIN tblPODetail "
                          "USING (POID) WHERE POID=1"),
                 QStringLiteral("REF-1|1"));
        QCOMPARE(Shown(*w.gdxBList, "PartNo"), QStringList("CAP-1U"));
        QCOMPARE(w.txtPOID->text(), QStringLiteral("0002"));
        QVERIFY(w.txtBasketPONo->text().isEmpty());
        Select(w, "Bolt");
        QCOMPARE(Shown(*w.gdxBList, "PartNo"), QStringList("IND-5M"));

        // "Yes": the print frame, with the current printer chosen.
        boxes.clear();
        boxes.answer(vbYes);
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QCOMPARE(w.txtPOID->text(), QStringLiteral("0002"));
        QVERIFY(w.frmPrintOrder->isVisible());
        QVERIFY(!w.Command2->isEnabled() && !w.Command4->isEnabled());
        QCOMPARE(w.cboSelectPrinter->count(), 2);
        QCOMPARE(w.cboSelectPrinter->currentText(), QStringLiteral("Stores"));
        QVERIFY(w.cmdPrintOK->isEnabled());
        QCOMPARE(gPOPrinterName, QStringLiteral("Stores"));

        // Print, choose the other printer, print again: the frame stays.
        boxes.answer(vbOK);
        boxes.answer(vbOK);
        QTest::mouseClick(w.cmdPrintOK, Qt::LeftButton);
        w.cboSelectPrinter->setCurrentIndex(0);
        QCOMPARE(gPOPrinterName, QStringLiteral("Office"));
        QTest::mouseClick(w.cmdPrintOK, Qt::LeftButton);
        QVERIFY(two->Documents() == 1 && one->Documents() == 1);
        QVERIFY(one->Texts().contains(QStringLiteral("0002 / ")));
        QCOMPARE(boxes.prompts().mid(1),
                 QStringList(2, "Please check that your printout is correct and reprint if "
                                "necessary"));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Printing Order"));
        QVERIFY(w.frmPrintOrder->isVisible());

        // "Done": the frame goes and the supplier is selected afresh.
        QTest::mouseClick(w.cmdCancelPrint, Qt::LeftButton);
        QVERIFY(!w.frmPrintOrder->isVisible());
        QVERIFY(w.Command2->isEnabled() && w.Command4->isEnabled());
        QCOMPARE(w.gdxBList->RowCount(), 0);
        QCOMPARE(w.txtPOID->text(), QStringLiteral("0003"));

        // With no printer at all the frame says so and cannot print.
        SetPrinters({});
        boxes.clear();
        boxes.answer(vbOK);
        w.ShowPrintFrame();
        QCOMPARE(boxes.prompts(), QStringList("The system doesn't seem to have any available "
                                              "printer. Print options will be disabled until a "
                                              "printer is installed"));
        QVERIFY(!w.cmdPrintOK->isEnabled() && w.cboSelectPrinter->count() == 0);
    }

    void goodsInListOpenBookAndPrint() {
        TestData data;
        ScriptedBoxes boxes;
        GoodsInOrders();
        auto first = std::make_shared<RecordingPrinter>(QStringLiteral("First"));
        auto second = std::make_shared<RecordingPrinter>(QStringLiteral("Second"));
        SetPrinters({first, second});
        SetCurrentPrinter(first);

        frmGoodsIn w;
        Open(w);
        QCOMPARE(w.windowTitle(), QStringLiteral("Goods Receiving"));
        QCOMPARE(Shown(*w.gdxOList, "POID"), QStringList({"0003", "0007"}));
        QCOMPARE(Shown(*w.gdxOList, "PODate"), QStringList({"02/11/2026", "02/11/2026"}));
        QVERIFY(!w.frmPrintTRN->isVisible() && w.Frame1->isVisible());
        QVERIFY(!w.cmdBookIn->isEnabled() && !w.btnSeeCompletedRows->isEnabled());

        // Grouping by supplier in the list step: a group row opens nothing.
        QTest::mouseClick(w.Check1, Qt::LeftButton);
        QCOMPARE(w.gdxOList->GroupRowLevel(1), 1);
        QVERIFY(!w.gdxOList->Columns()("SupName").Visible());
        ClickRow(*w.gdxOList, 1);
        QVERIFY(!w.DetailMode);
        QTest::mouseClick(w.Check1, Qt::LeftButton);
        QVERIFY(w.gdxOList->Groups().isEmpty() && w.gdxOList->Columns()("SupName").Visible());

        // A header click sorts, and its release opens nothing; the row clicked is read through
        // the sort.
        ClickHeader(*w.gdxOList, "POID");
        ClickHeader(*w.gdxOList, "POID");
        QVERIFY(!w.DetailMode);
        QCOMPARE(Shown(*w.gdxOList, "POID"), QStringList({"0007", "0003"}));
        ClickRow(*w.gdxOList, 1);
        QVERIFY(w.DetailMode);
        QCOMPARE(QStringList({w.txtPOID->text(), w.txtSupplier->text(), w.txtPONo->text(),
                              w.txtPODate->text(), w.txtGRNDate->text()}),
                 QStringList({"0007", "Bolt", "REF-7", "02/11/2026", "23/11/2026"}));
        QCOMPARE(w.gdxOList->Columns().Count(), 13);
        QVERIFY(!w.Frame1->isVisible() && w.cmdBookIn->isEnabled());

        // Book the whole of order 7: no reference given, so "TRN?" is asked first.
        Type(*w.gdxOList, 1, "RXd", QStringLiteral("1"));
        boxes.answer(vbYes);
        QTest::mouseClick(w.cmdBookIn, Qt::LeftButton);
        QCOMPARE(boxes.prompts(),
                 QStringList("Do you wish to continue without a transaction reference number?"));
        QCOMPARE(SqlFirst("SELECT PORecieved FROM tblPODetail WHERE POID=7"), QStringLiteral("1"));
        QVERIFY(w.frmPrintTRN->isVisible() && w.Frame1->isVisible());
        QCOMPARE(w.cboSelectPrinter->currentText(), QStringLiteral("First"));
        QVERIFY(w.cmdPrintOK->isEnabled());
        // In the row step a click on the grouping box leaves it unticked.
        QTest::mouseClick(w.Check1, Qt::LeftButton);
        QVERIFY(!w.Check1->isChecked());

        // "Done" goes back to the list as loaded: order 7 stays until the list is refreshed.
        QTest::mouseClick(w.cmdCancelPrint, Qt::LeftButton);
        QVERIFY(!w.DetailMode && !w.frmPrintTRN->isVisible() && w.txtPONo->text().isEmpty());
        QCOMPARE(Shown(*w.gdxOList, "POID"), QStringList({"0003", "0007"}));
        QTest::mouseClick(w.btnBar_2, Qt::LeftButton);
        QCOMPARE(Shown(*w.gdxOList, "POID"), QStringList("0003"));

        // Order 3: the rows by part number; typed keys take a minus sign only; the boxes drop
        // apostrophes.
        ClickRow(*w.gdxOList, 1);
        QCOMPARE(Shown(*w.gdxOList, "PNo"), QStringList({"IND-5M", "RES-10K"}));
        QCOMPARE(Keys(*w.gdxOList, 1, "RXd", "-3a'-"), QStringLiteral("-3"));
        QCOMPARE(Keys(*w.gdxOList, 1, "RXd", QString()), QString());
        QCOMPARE(Shown(*w.gdxOList, "RXd").at(0), QStringLiteral("0"));
        Type(*w.gdxOList, 2, "RXd", QStringLiteral("2.5"));
        QTest::keyClicks(w.txtGRNno, "T'RN-5");
        QCOMPARE(w.txtGRNno->text(), QStringLiteral("TRN-5"));
        QTest::keyClicks(w.txtAdviceNo, "ADV");
        QTest::mouseClick(w.cmdBookIn, Qt::LeftButton);
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(SqlFirst("SELECT HistTRN || '/' || HistRef || '/' || HistText || '/' || HistQty "
                          "FROM tblItemHistory WHERE StockID=10"),
                 QStringLiteral("TRN-5/ADV/Purchase Order: REF-3/2.5"));
        // The booked row takes no edit.
        Type(*w.gdxOList, 2, "RXd", QStringLiteral("9"));
        QCOMPARE(Shown(*w.gdxOList, "RXd").at(1), QStringLiteral("2.5"));

        // The note goes to the printer chosen; the frame stays for a second copy.
        w.cboSelectPrinter->setCurrentIndex(1);
        QCOMPARE(w.GrnPrinterName, QStringLiteral("Second"));
        QTest::mouseClick(w.cmdPrintOK, Qt::LeftButton);
        QTest::mouseClick(w.cmdPrintOK, Qt::LeftButton);
        QVERIFY(second->Documents() == 2 && first->Documents() == 0);
        QVERIFY(w.frmPrintTRN->isVisible());
        const QStringList note = second->Texts();
        QVERIFY(note.contains("No. TRN-5") && note.contains("Our Order ID: 0003"));
        QVERIFY(note.contains("RES-10K") && !note.contains("IND-5M"));
    }

    void goodsInCompletedRowsAndSize() {
        TestData data;
        ScriptedBoxes boxes;
        GoodsInOrders();
        UseRecordingPrinter();
        {
            frmGoodsIn w;
            Open(w);
            // Completed rows on request, with a notice when they are shown; the reload drops
            // what was typed.
            ClickRow(*w.gdxOList, 1);
            Type(*w.gdxOList, 1, "RXd", QStringLiteral("2"));
            boxes.answer(vbOK);
            QTest::mouseClick(w.btnSeeCompletedRows, Qt::LeftButton);
            QCOMPARE(boxes.shown().at(0).title, QStringLiteral("View completed rows"));
            QCOMPARE(boxes.shown().at(0).prompt,
                     QStringLiteral("This will display any rows on the order that are already "
                                    "complete.\n\nIf any completed rows exist you can click the "
                                    "same button to hide them again"));
            QCOMPARE(Shown(*w.gdxOList, "PNo"), QStringList({"CAP-1U", "IND-5M", "RES-10K"}));
            QCOMPARE(Shown(*w.gdxOList, "RXd"), QStringList(3, QString()));
            QTest::mouseClick(w.btnSeeCompletedRows, Qt::LeftButton);
            QCOMPARE(boxes.shown().size(), 1);
            QCOMPARE(w.GridRows.rowCount, 2);

            // A quantity still in the cell's editor when "Book In" is clicked is booked.
            QApplication::setActiveWindow(&w);
            QVERIFY(QTest::qWaitForWindowActive(&w));
            QTableView* view = w.gdxOList->TableView();
            const QModelIndex cell = Cell(*w.gdxOList, 2, "RXd");
            view->setFocus();
            view->setCurrentIndex(cell);
            view->edit(cell);
            auto* editor = qobject_cast<QLineEdit*>(view->indexWidget(cell));
            QVERIFY(editor);
            QTest::keyClicks(editor, "3");
            boxes.answer(vbYes);
            QTest::mouseClick(w.cmdBookIn, Qt::LeftButton);
            Settle();
            QCOMPARE(ItemField(10, "Qty"), QStringLiteral("3"));

            // An order completed elsewhere since the list was read: the screen stays.
            QTest::mouseClick(w.Command1, Qt::LeftButton);
            ExecSql("UPDATE tblPODetail SET PORecieved = POQty WHERE POID = 7");
            ClickRow(*w.gdxOList, RowWith(*w.gdxOList, "POID", "0007"));
            QVERIFY(!w.DetailMode);
            QCOMPARE(w.gdxOList->Columns().Count(), 8);

            // The size is kept per workstation.
            w.resize(900, 500);
            QTest::mouseClick(w.btnBar_0, Qt::LeftButton);
            QVERIFY(!w.isVisible());
        }
        frmGoodsIn again;
        again.Form_Load();
        QCOMPARE(again.size(), QSize(900, 500));
    }

    void orderViewerListAndMenu() {
        TestData data;
        ScriptedBoxes boxes;
        ViewerOrders();
        ORViewer w;
        Open(w);
        QCOMPARE(w.windowTitle(), QStringLiteral("View Orders"));

        // It opens on the orders not completed, grouped by supplier with the supplier column
        // hidden.
        QCOMPARE(gOrderViewMode, OrderViewMode::NotCompleted);
        QVERIFY(w.Option3->isChecked());
        QVERIFY(w.gdxOList->isVisible() && !w.gdxPODetail->isVisible());
        QVERIFY(!w.frmRePrintOrder->isVisible() && !w.frmRowMenu->isVisible());
        QCOMPARE(Shown(*w.gdxOList, "OrID").mid(1, 1), QStringList("0001"));
        QCOMPARE(w.gdxOList->GroupRowLevel(1), 1);
        QCOMPARE(w.gdxOList->RowCount(), 4); // two groups, one order each
        QVERIFY(!w.gdxOList->Columns()("Sup").Visible());

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
        QVERIFY(w.gdxOList->Columns()("Sup").Visible());
        QCOMPARE(Shown(*w.gdxOList, "OrID"), QStringList({"0012", "0010", "0001"}));
        QTest::mouseClick(w.chkByDate, Qt::LeftButton);
        QCOMPARE(w.gdxOList->Groups().size(), 1);

        // The order filter follows the typing, capitals and back-quotes included; the
        // supplier filter waits for the search.
        w.txtFilterPO->setFocus();
        QTest::keyClicks(w.txtFilterPO, "1");
        QCOMPARE(w.OrderRowCount, 3); // 1, 10, 12
        QTest::keyClicks(w.txtFilterPO, "0");
        QCOMPARE(w.OrderRowCount, 1);
        QTest::keyClicks(w.txtFilterPO, "a'");
        QCOMPARE(w.txtFilterPO->text(), QStringLiteral("10A`"));
        QCOMPARE(w.OrderRowCount, 0);
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QVERIFY(w.txtFilterPO->text().isEmpty());
        QCOMPARE(QApplication::focusWidget(), w.txtFilterPO);
        QCOMPARE(w.OrderRowCount, 3);
        w.txtFilterSu->setFocus();
        QTest::keyClicks(w.txtFilterSu, " bo");
        QCOMPARE(w.OrderRowCount, 3);
        QTest::mouseClick(w.Command8, Qt::LeftButton);
        QCOMPARE(w.txtFilterSu->text(), QStringLiteral("bo"));
        QCOMPARE(w.OrderRowCount, 1);
        QTest::mouseClick(w.Command2, Qt::LeftButton);

        // A click on an order opens the menu there and fills the order's boxes; on a group line
        // the menu closes and opens nothing.
        const int row = RowWith(*w.gdxOList, "OrID", "0001");
        ClickRow(*w.gdxOList, row);
        QVERIFY(w.frmRowMenu->isVisible());
        QVERIFY(!w.btnChase->isEnabled() && w.btnDeleteRow->isEnabled() &&
                w.btnViewPODetails->isEnabled());
        QCOMPARE(QStringList({w.txtOrderRowID->text(), w.txtPOID->text(), w.txtPORef->text(),
                              w.txtSupplier->text()}),
                 QStringList({"0001", "0001", "REF-1", "Acme"}));
        QVERIFY(w.CurrentPOID == 1 && w.CurrentSupplierID == 1);
        ClickRow(*w.gdxOList, 1);
        QVERIFY(!w.frmRowMenu->isVisible() && w.txtOrderRowID->text().isEmpty());
        ClickRow(*w.gdxOList, row);
        QTest::mouseClick(w.btnCloseRowMenu, Qt::LeftButton);
        QVERIFY(!w.frmRowMenu->isVisible());
        QVERIFY(boxes.shown().isEmpty());
    }

    void orderViewerEditSaveAndReprint() {
        TestData data;
        ScriptedBoxes boxes;
        auto printer = UseRecordingPrinter();
        ViewerOrders();
        ORViewer w;
        Open(w);

        ClickRow(*w.gdxOList, RowWith(*w.gdxOList, "OrID", "0001"));
        QTest::mouseClick(w.btnViewPODetails, Qt::LeftButton);
        QVERIFY(gOrderViewMode == OrderViewMode::Rows &&
                w.SavedViewMode == OrderViewMode::NotCompleted);
        QVERIFY(w.gdxPODetail->isVisible() && !w.gdxOList->isVisible() && !w.Frame1->isVisible());
        QVERIFY(!w.btnViewPODetails->isEnabled() && w.cmdReprint->isEnabled());
        // By schedule date: the capacitor's row, then the resistor's.
        QCOMPARE(Shown(*w.gdxPODetail, "PNo"), QStringList({"CAP-1U", "RES-10K"}));
        QCOMPARE(Shown(*w.gdxPODetail, "RowPrice"), QStringList({"5.00", "10.00"}));

        // Only the quantity takes keys: digits, one decimal sign and backspace; a commit works
        // the total out again. A date, as the calendar hands it over. Nothing is written yet.
        QCOMPARE(Keys(*w.gdxPODetail, 1, "POQty", "1x2.-5.0"), QStringLiteral("12.50"));
        QCOMPARE(Shown(*w.gdxPODetail, "RowPrice").first(), QStringLiteral("6.25"));
        QCOMPARE(Keys(*w.gdxPODetail, 1, "AtPrice", "9"), QStringLiteral("<no editor>"));
        Type(*w.gdxPODetail, 2, "DelDate", QStringLiteral("15/01/2027"));
        QCOMPARE(SqlFirst("SELECT POQty FROM tblPODetail WHERE POStockID=11"),
                 QStringLiteral("10"));

        // Save, then print: the rows and the on-order figure are written.
        boxes.answer(vbYes);
        QTest::mouseClick(w.cmdReprint, Qt::LeftButton);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Print order?"));
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("If you made any changes they have now been saved to the "
                                "database\n\nDo you wish to print/reprint the order now?"));
        QCOMPARE(SqlFirst("SELECT group_concat(POQty || '|' || POSchedDate) FROM tblPODetail "
                          "WHERE POID=1"),
                 QStringLiteral("5.0|2027-01-15,12.5|2026-12-01"));
        QCOMPARE(ItemField(11, "OnOrderQty"), QStringLiteral("8.5"));
        QVERIFY(w.frmRePrintOrder->isVisible());
        QVERIFY(!w.cmdReprint->isEnabled() && !w.btnAddToOrder->isEnabled());
        QCOMPARE(w.cboSelectPrinter->currentText(), QStringLiteral("Recording Printer"));

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
        Type(*w.gdxPODetail, 2, "POQty", QStringLiteral("6"));
        QTest::mouseClick(w.cmdCancelrePrint, Qt::LeftButton);
        QVERIFY(!w.frmRePrintOrder->isVisible() && w.cmdReprint->isEnabled());
        QCOMPARE(Shown(*w.gdxPODetail, "POQty"), QStringList({"12.5", "6"}));
        QCOMPARE(SqlFirst("SELECT POQty FROM tblPODetail WHERE POID=1 AND POStockID=10"),
                 QStringLiteral("5"));

        // An edit left unsaved is dropped on the way back, without a word; the list is in its
        // mode as before.
        Type(*w.gdxPODetail, 1, "POQty", QStringLiteral("99"));
        QTest::mouseClick(w.Command6_0, Qt::LeftButton);
        QCOMPARE(gOrderViewMode, OrderViewMode::NotCompleted);
        QVERIFY(w.gdxOList->isVisible() && w.Frame1->isVisible() && !w.gdxPODetail->isVisible());
        QVERIFY(w.btnViewPODetails->isEnabled());
        QCOMPARE(SqlFirst("SELECT POQty FROM tblPODetail WHERE POStockID=11"),
                 QStringLiteral("12.5"));
        QVERIFY(boxes.allAnswersUsed());
    }

    void orderViewerAddAndDelete() {
        TestData data;
        ScriptedBoxes boxes;
        ViewerOrders();
        ORViewer w;
        Open(w);
        QTest::mouseClick(w.Option1, Qt::LeftButton);
        ClickRow(*w.gdxOList, RowWith(*w.gdxOList, "OrID", "0012"));
        QTest::mouseClick(w.btnViewPODetails, Qt::LeftButton);
        QCOMPARE(w.DetailRowCount, 1);
        // A quantity typed and not saved yet.
        Type(*w.gdxPODetail, 1, "POQty", QStringLiteral("7"));

        // The supplier's items, filtered by part number; a double-click adds one at quantity 0.
        QTest::mouseClick(w.btnAddToOrder, Qt::LeftButton);
        QVERIFY(w.frmPOParts->isVisible());
        QCOMPARE(Shown(*w.gdxPOParts, "PartNo"), QStringList({"RES-10K", "CAP-1U", "RELAY-5V"}));
        w.txtPOItemFilter->setFocus();
        QTest::keyClicks(w.txtPOItemFilter, "re");
        QCOMPARE(w.txtPOItemFilter->text(), QStringLiteral("RE"));
        QCOMPARE(Shown(*w.gdxPOParts, "PartNo"), QStringList({"RES-10K", "RELAY-5V"}));
        DoubleClickRow(*w.gdxPOParts, 2);
        QCOMPARE(SqlFirst("SELECT POQty || '|' || POPrice || '|' || POSupPNo FROM tblPODetail "
                          "WHERE POID=12 AND POStockID=13"),
                 QStringLiteral("0.0|3.25|A-13"));
        // The rows are read again; the quantity typed stays on screen, still unsaved.
        QCOMPARE(Shown(*w.gdxPODetail, "POQty"), QStringList({"7", "0"}));
        QCOMPARE(Shown(*w.gdxPODetail, "RowPrice"), QStringList({"14.00", "0.00"}));
        QCOMPARE(SqlFirst("SELECT POQty FROM tblPODetail WHERE POID=12 AND POStockID=10"),
                 QStringLiteral("1"));
        QTest::mouseClick(w.Command3, Qt::LeftButton);
        QCOMPARE(w.PartRowCount, 3);
        QTest::mouseClick(w.btnAddToOrderHide, Qt::LeftButton);
        QVERIFY(!w.frmPOParts->isVisible());

        // In the rows the menu opens on a right click and deletes the row under it.
        ClickRow(*w.gdxPODetail, RowWith(*w.gdxPODetail, "PNo", "RELAY-5V"), Qt::RightButton);
        QVERIFY(w.frmRowMenu->isVisible());
        QVERIFY(!w.btnViewPODetails->isEnabled() && !w.btnChase->isEnabled());
        QCOMPARE(w.txtOrderRowID->text(),
                 SqlFirst("SELECT RowID FROM tblPODetail WHERE POStockID=13"));
        boxes.answer(vbYes);
        QTest::mouseClick(w.btnDeleteRow, Qt::LeftButton);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Delete Row?"));
        QCOMPARE(Shown(*w.gdxPODetail, "POQty"), QStringList("7"));
        QCOMPARE(Count("tblPODetail", "POID=12"), QStringLiteral("1"));
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
        ClickRow(*w.gdxOList, RowWith(*w.gdxOList, "OrID", "0010"));
        boxes.answer(vbYes);
        QTest::mouseClick(w.btnDeleteRow, Qt::LeftButton);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Delete Order?"));
        QCOMPARE(w.OrderRowCount, 1);
        QCOMPARE(Count("tblPOrders", "POID=10"), QStringLiteral("0"));
        QCOMPARE(ItemField(12, "OnOrderQty"), QStringLiteral("0"));
        QVERIFY(boxes.allAnswersUsed());
    }

    void mainWindowTabAndBarItems() {
        TestData data;
        ViewerOrders();
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
        QCOMPARE(w.CurrentGrid(), panel->gdxItemPOrders);
        QCOMPARE(Shown(*panel->gdxItemPOrders, "OrID"), QStringList({"0012", "0001"}));
        QCOMPARE(panel->gdxItemPOrders->Columns()(8).Caption(), QStringLiteral("Confirmed"));

        // Export works on it.
        const QString csv = data.path(QStringLiteral("orders.csv"));
        {
            ScriptedBoxes boxes;
            boxes.answerFile(csv);
            boxes.answer(vbOK);
            w.buttons_ButtonClick(5);
        }
        QFile file(csv);
        QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll().contains("0001"));

        // The bar items open the windows over the main window, loaded.
        ScriptedBoxes boxes;
        const auto bar = [&w](const char* key) {
            return [&w, key] { w.ButtonBar1_ButtonClick("Purchasing", key); };
        };
        QCOMPARE(
            OpenedModal(bar("PchPending"),
                        [](QWidget* m) { return m->findChild<QLineEdit*>("txtPOID")->text(); }),
            QStringLiteral("basket|0013"));
        QCOMPARE(OpenedModal(bar("PchsViewOR"),
                             [](QWidget* m) {
                                 return QString::number(qobject_cast<ORViewer*>(m)->OrderRowCount);
                             }),
                 QStringLiteral("ORViewer|2"));
        QCOMPARE(OpenedModal(bar("PchsGin"),
                             [](QWidget* m) {
                                 return QString::number(
                                     qobject_cast<frmGoodsIn*>(m)->GridRows.rowCount);
                             }),
                 QStringLiteral("frmGoodsIn|2"));
    }
};

QTEST_MAIN(TestPurchasingWindows)
#include "test_purchasing_windows.moc"
