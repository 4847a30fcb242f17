// The window "Goods Receiving" driven through its controls: the list, opening an order with the
// mouse, typing and booking, the print frame, completed rows, grouping and the stored size.
#include "foundation/Clock.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/Printer.h"
#include "grids/GridEX.h"
#include "inventory/OnOrder.h"
#include "purchasing/PrintFrame.h"
#include "purchasing/frmGoodsIn.h"
#include "tests/purchasing/GoodsInFixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace {

void Settle() {
    for (int i = 0; i < 4; ++i)
        QCoreApplication::processEvents();
}

// Acme's order 3 (two open rows and a complete one), Bolt's order 7 (one row of 1).
void Orders() {
    fixture::Supplier(1, QStringLiteral("Acme"));
    fixture::Supplier(2, QStringLiteral("Bolt"));
    fixture::Item(10, QStringLiteral("RES-10K"), QStringLiteral("Resistor 10k"));
    fixture::Item(11, QStringLiteral("CAP-1U"), QStringLiteral("Capacitor 1u"));
    fixture::Item(12, QStringLiteral("IND-5M"), QStringLiteral("Inductor"));
    gin::Order(3, 1, QStringLiteral("REF-3"));
    gin::Row(3, 10, QStringLiteral("10"), QStringLiteral("0"));
    gin::Row(3, 11, QStringLiteral("4"), QStringLiteral("4"));
    gin::Row(3, 12, QStringLiteral("6"), QStringLiteral("0"));
    gin::Order(7, 2, QStringLiteral("REF-7"));
    gin::Row(7, 11, QStringLiteral("1"), QStringLiteral("0"));
    for (int item : {10, 11, 12})
        RefreshOnOrderQty(item);
}

QStringList Shown(const GridEX& grid, const QString& key) {
    QStringList out;
    for (int r = 1; r <= grid.RowCount(); ++r)
        out << grid.CellValue(r, grid.Columns()(key).Index()).toString();
    return out;
}

QStringList VisibleCaptions(const GridEX& grid) {
    QStringList out;
    for (int c = 1; c <= grid.Columns().Count(); ++c)
        if (grid.Columns()(c).Visible())
            out << grid.Columns()(c).Caption();
    return out;
}

void ClickRow(GridEX& grid, int row) {
    QTableView* view = grid.TableView();
    const QRect r = view->visualRect(grid.Model()->index(row - 1, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, r.center());
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

// Clicks the list row that shows `poid`.
void OpenOrderRow(frmGoodsIn& w, const QString& poid) {
    const int row = int(Shown(*w.gdxOList, QStringLiteral("POID")).indexOf(poid)) + 1;
    QVERIFY(row > 0);
    ClickRow(*w.gdxOList, row);
}

void OpenOrder(frmGoodsIn& w, const QString& poid) {
    OpenOrderRow(w, poid);
    QVERIFY(w.DetailMode);
}

// The grid row showing a part number.
int RowOf(const GridEX& grid, const QString& partNo) {
    return int(Shown(grid, QStringLiteral("PNo")).indexOf(partNo)) + 1;
}

void Type(GridEX& grid, int row, const QString& text) {
    const QModelIndex i =
        grid.Model()->index(row - 1, grid.Columns()(QStringLiteral("RXd")).Index() - 1);
    QVERIFY(grid.Model()->setData(i, text, Qt::EditRole));
    Settle();
}

// Keys typed into the cell's editor, then Enter.
void Keys(GridEX& grid, int row, const QString& keys) {
    QTableView* view = grid.TableView();
    const QModelIndex i =
        grid.Model()->index(row - 1, grid.Columns()(QStringLiteral("RXd")).Index() - 1);
    view->setCurrentIndex(i);
    view->edit(i);
    auto* editor = qobject_cast<QLineEdit*>(view->indexWidget(i));
    QVERIFY(editor);
    editor->clear();
    QTest::keyClicks(editor, keys);
    QTest::keyClick(editor, Qt::Key_Return);
    Settle();
}

QString Cell(const frmGoodsIn& w, int column, int record) {
    return std::as_const(w.GridRows.rows)(column, record).toString();
}

} // namespace

class TestGoodsInWindow : public QObject {
    Q_OBJECT
private slots:
    void listOpenBookAndPrint() {
        TestData data;
        ScriptedBoxes boxes;
        Orders();
        auto first = std::make_shared<RecordingPrinter>(QStringLiteral("First"));
        auto second = std::make_shared<RecordingPrinter>(QStringLiteral("Second"));
        SetPrinters({first, second});
        SetCurrentPrinter(first);

        frmGoodsIn w;
        w.Form_Load();
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QCOMPARE(w.windowTitle(), QStringLiteral("Goods Receiving"));
        QCOMPARE(VisibleCaptions(*w.gdxOList),
                 QStringList({"OrderID", "PO Ref", "PO date.", "Supplier"}));
        QCOMPARE(Shown(*w.gdxOList, "POID"), QStringList({"0003", "0007"}));
        QCOMPARE(Shown(*w.gdxOList, "PODate"), QStringList({"02/11/2026", "02/11/2026"}));
        QVERIFY(!w.frmPrintTRN->isVisible() && w.Frame1->isVisible());
        QVERIFY(!w.cmdBookIn->isEnabled() && !w.btnSeeCompletedRows->isEnabled());

        // A header click sorts, and its release opens nothing; the row clicked is read through
        // the sort.
        ClickHeader(*w.gdxOList, QStringLiteral("POID"));
        ClickHeader(*w.gdxOList, QStringLiteral("POID"));
        QVERIFY(!w.DetailMode);
        QCOMPARE(Shown(*w.gdxOList, "POID"), QStringList({"0007", "0003"}));
        ClickRow(*w.gdxOList, 1);
        QVERIFY(w.DetailMode);
        QCOMPARE(w.txtPOID->text(), QStringLiteral("0007"));
        QCOMPARE(w.txtSupplier->text(), QStringLiteral("Bolt"));
        QCOMPARE(w.txtPONo->text(), QStringLiteral("REF-7"));
        QCOMPARE(w.txtPODate->text(), QStringLiteral("02/11/2026"));
        QCOMPARE(w.txtGRNDate->text(), QStringLiteral("23/11/2026"));
        QCOMPARE(w.gdxOList->Columns().Count(), 13);
        QCOMPARE(VisibleCaptions(*w.gdxOList),
                 QStringList({"PartNo", "Description", "S/PNo", "DelDate", "Each", "Ordered",
                              "OStanding", "Received"}));
        QVERIFY(!w.Frame1->isVisible() && w.cmdBookIn->isEnabled());
        QVERIFY(w.btnSeeCompletedRows->isEnabled());

        // Book the whole of order 7: no reference given, so "TRN?" is asked first.
        Type(*w.gdxOList, 1, QStringLiteral("1"));
        boxes.answer(vbYes);
        QTest::mouseClick(w.cmdBookIn, Qt::LeftButton);
        QCOMPARE(boxes.prompts(),
                 QStringList({"Do you wish to continue without a transaction reference number?"}));
        QCOMPARE(SqlFirst("SELECT PORecieved FROM tblPODetail WHERE POID=7"), QStringLiteral("1"));
        QVERIFY(w.frmPrintTRN->isVisible() && w.Frame1->isVisible());
        // The frame offers both printers, the current one selected.
        QCOMPARE(w.cboSelectPrinter->count(), 2);
        QCOMPARE(w.cboSelectPrinter->currentText(), QStringLiteral("First"));
        QVERIFY(w.cmdPrintOK->isEnabled());
        // In the row step a click on the grouping box leaves it unticked.
        QTest::mouseClick(w.Check1, Qt::LeftButton);
        QVERIFY(!w.Check1->isChecked());

        // "Done" goes back to the list as loaded: order 7 stays until the list is refreshed.
        QTest::mouseClick(w.cmdCancelPrint, Qt::LeftButton);
        QVERIFY(!w.DetailMode && !w.frmPrintTRN->isVisible());
        QVERIFY(w.txtPONo->text().isEmpty());
        QCOMPARE(Shown(*w.gdxOList, "POID"), QStringList({"0003", "0007"}));
        QTest::mouseClick(w.btnBar_2, Qt::LeftButton);
        QCOMPARE(Shown(*w.gdxOList, "POID"), QStringList({"0003"}));

        // Order 3: the rows sorted by part number; typed keys take a minus sign only.
        OpenOrder(w, QStringLiteral("0003"));
        QCOMPARE(Shown(*w.gdxOList, "PNo"), QStringList({"IND-5M", "RES-10K"}));
        QCOMPARE(Shown(*w.gdxOList, "PQty"), QStringList({"6", "10"}));
        const int ind = RowOf(*w.gdxOList, QStringLiteral("IND-5M"));
        const int res = RowOf(*w.gdxOList, QStringLiteral("RES-10K"));
        Keys(*w.gdxOList, ind, QStringLiteral("-3a'"));
        QCOMPARE(Cell(w, GinCol::RXd, w.gdxOList->RecordIndex(ind)), QStringLiteral("-3"));
        Keys(*w.gdxOList, ind, QString());
        QCOMPARE(Cell(w, GinCol::RXd, w.gdxOList->RecordIndex(ind)), QStringLiteral("0"));
        Type(*w.gdxOList, res, QStringLiteral("2.5"));
        QTest::keyClicks(w.txtGRNno, QStringLiteral("T'RN-5"));
        QCOMPARE(w.txtGRNno->text(), QStringLiteral("TRN-5"));
        QTest::keyClicks(w.txtAdviceNo, QStringLiteral("ADV"));
        QTest::mouseClick(w.cmdBookIn, Qt::LeftButton);
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(SqlFirst("SELECT Qty FROM tblStockItems WHERE ItemID=10"), QStringLiteral("2.5"));
        QCOMPARE(SqlFirst("SELECT HistTRN || '/' || HistRef || '/' || HistText FROM "
                          "tblItemHistory WHERE StockID=10"),
                 QStringLiteral("TRN-5/ADV/Purchase Order: REF-3"));
        QCOMPARE(SqlFirst("SELECT OnOrderQty FROM tblStockItems WHERE ItemID=10"),
                 QStringLiteral("7.5"));

        // The booked row takes no edit.
        Type(*w.gdxOList, res, QStringLiteral("9"));
        QCOMPARE(Cell(w, GinCol::RXd, w.gdxOList->RecordIndex(res)), QStringLiteral("2.5"));
        QCOMPARE(Shown(*w.gdxOList, "RXd").at(res - 1), QStringLiteral("2.5"));

        // The note goes to the printer chosen; the frame stays for a second copy.
        w.cboSelectPrinter->setCurrentIndex(1);
        QCOMPARE(w.GrnPrinterName, QStringLiteral("Second"));
        QTest::mouseClick(w.cmdPrintOK, Qt::LeftButton);
        QCOMPARE(second->Documents(), 1);
        QCOMPARE(first->Documents(), 0);
        QVERIFY(w.frmPrintTRN->isVisible());
        QVERIFY(second->Texts().contains(QStringLiteral("No. TRN-5")));
        QVERIFY(second->Texts().contains(QStringLiteral("Our Order ID: 0003")));
        QVERIFY(second->Texts().contains(QStringLiteral("RES-10K")));
        QVERIFY(!second->Texts().contains(QStringLiteral("IND-5M")));
        const QStringList note = second->Texts();
        QTest::mouseClick(w.cmdPrintOK, Qt::LeftButton);
        QCOMPARE(second->Documents(), 2);
        QCOMPARE(second->Texts().mid(note.size()), note);
    }

    void completedRowsGroupingAndSize() {
        TestData data;
        ScriptedBoxes boxes;
        Orders();
        UseRecordingPrinter();
        {
            frmGoodsIn w;
            w.Form_Load();
            w.show();
            QVERIFY(QTest::qWaitForWindowExposed(&w));

            // Grouping by supplier in the list step: a group row opens nothing.
            QTest::mouseClick(w.Check1, Qt::LeftButton);
            QVERIFY(w.Check1->isChecked());
            QCOMPARE(w.gdxOList->GroupRowLevel(1), 1);
            QVERIFY(!w.gdxOList->Columns()(QStringLiteral("SupName")).Visible());
            ClickRow(*w.gdxOList, 1);
            QVERIFY(!w.DetailMode);
            QTest::mouseClick(w.btnBar_2, Qt::LeftButton);
            QCOMPARE(w.gdxOList->GroupRowLevel(1), 1);
            QTest::mouseClick(w.Check1, Qt::LeftButton);
            QVERIFY(w.gdxOList->Groups().isEmpty());
            QVERIFY(w.gdxOList->Columns()(QStringLiteral("SupName")).Visible());

            // Completed rows on request, with a notice when they are shown; the reload drops
            // what was typed.
            OpenOrder(w, QStringLiteral("0003"));
            Type(*w.gdxOList, 1, QStringLiteral("2"));
            boxes.answer(vbOK);
            QTest::mouseClick(w.btnSeeCompletedRows, Qt::LeftButton);
            QCOMPARE(boxes.shown().size(), 1);
            QCOMPARE(boxes.shown().at(0).title, QStringLiteral("View completed rows"));
            QCOMPARE(boxes.shown().at(0).prompt,
                     QStringLiteral("This will display any rows on the order that are already "
                                    "complete.\n\nIf any completed rows exist you can click the "
                                    "same button to hide them again"));
            QCOMPARE(boxes.shown().at(0).flags, int(vbInformation));
            QCOMPARE(Shown(*w.gdxOList, "PNo"), QStringList({"CAP-1U", "IND-5M", "RES-10K"}));
            QCOMPARE(Shown(*w.gdxOList, "RXd"), QStringList({"", "", ""}));
            QTest::mouseClick(w.btnSeeCompletedRows, Qt::LeftButton);
            QCOMPARE(boxes.shown().size(), 1);
            QCOMPARE(w.GridRows.rowCount, 2);

            // A quantity still in the cell's editor when "Book In" is clicked is booked.
            QApplication::setActiveWindow(&w);
            QVERIFY(QTest::qWaitForWindowActive(&w));
            QTableView* view = w.gdxOList->TableView();
            const QModelIndex cell = w.gdxOList->Model()->index(
                RowOf(*w.gdxOList, QStringLiteral("RES-10K")) - 1,
                w.gdxOList->Columns()(QStringLiteral("RXd")).Index() - 1);
            view->setFocus();
            view->setCurrentIndex(cell);
            view->edit(cell);
            auto* editor = qobject_cast<QLineEdit*>(view->indexWidget(cell));
            QVERIFY(editor);
            QTest::keyClicks(editor, QStringLiteral("3"));
            boxes.answer(vbYes);
            QTest::mouseClick(w.cmdBookIn, Qt::LeftButton);
            Settle();
            QCOMPARE(SqlFirst("SELECT Qty FROM tblStockItems WHERE ItemID=10"),
                     QStringLiteral("3"));

            // An order completed elsewhere since the list was read: the screen stays.
            QTest::mouseClick(w.Command1, Qt::LeftButton);
            ExecSql(QStringLiteral("UPDATE tblPODetail SET PORecieved = POQty WHERE POID = 7"));
            OpenOrderRow(w, QStringLiteral("0007"));
            QVERIFY(!w.DetailMode);
            QCOMPARE(w.gdxOList->Columns().Count(), 8);

            w.resize(900, 500);
            QTest::mouseClick(w.btnBar_0, Qt::LeftButton);
            QVERIFY(!w.isVisible());
        }
        QString width, height;
        {
            Database cfg = DBEngine::OpenDatabase(gUserCfgPath);
            Recordset rs = cfg.OpenRecordset(
                QStringLiteral("SELECT ParaVal_1, ParaVal_2 FROM tblDefaults WHERE "
                               "PcName='TESTPC' AND ParaName='FormSize'"));
            QVERIFY(!rs.Eof());
            width = rs.Fields(0).Text().trimmed();
            height = rs.Fields(1).Text().trimmed();
        }
        frmGoodsIn again;
        QVERIFY(Val(width) > 0 && Val(height) > 0);
        QCOMPARE(width.toInt(), qRound(900 * 1440.0 / again.logicalDpiX()));
        again.Form_Load();
        QCOMPARE(again.size(), QSize(900, 500));
    }
};

QTEST_MAIN(TestGoodsInWindow)
#include "test_goodsin_window.moc"
