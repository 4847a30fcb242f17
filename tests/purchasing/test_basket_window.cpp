// The window "Purchasing" driven through its controls: selecting suppliers, editing the list,
// the parts panel, "Order Now" and the print frame.
#include "contacts/frmEditContact.h"
#include "foundation/Globals.h"
#include "foundation/Printer.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "purchasing/PrintFrame.h"
#include "purchasing/PurchaseOrderDocument.h"
#include "purchasing/basket.h"
#include "tests/purchasing/PurchasingFixture.h"
#include "tests/purchasing/WindowTestParts.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

namespace {

using windowtest::Column;
using windowtest::Settle;
using windowtest::Shot;

QAbstractItemModel* Model(basket& w) {
    return w.gdxBList->Model();
}

QModelIndex Cell(basket& w, int row, const QString& key) {
    return Model(w)->index(row - 1, w.gdxBList->Columns()(key).Index() - 1);
}

// An edit of a cell as the grid's editor hands it over, then the events that commit it.
void Type(basket& w, int row, const QString& key, const QString& text) {
    QVERIFY(Model(w)->setData(Cell(w, row, key), text, Qt::EditRole));
    Settle();
}

void Tick(basket& w, int row, const QString& key, bool on) {
    QVERIFY(
        Model(w)->setData(Cell(w, row, key), on ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole));
    Settle();
}

void Select(basket& w, const QString& supplier) {
    const int i = w.cboSupplist->findText(supplier);
    QVERIFY(i >= 0);
    w.cboSupplist->setCurrentIndex(i);
    QCoreApplication::processEvents();
}

// Acme lists items 10 and 11, Bolt items 10 and 12, Cobalt nothing waiting.
void Suppliers() {
    fixture::Home();
    fixture::Supplier(1, QStringLiteral("Acme"));
    fixture::Supplier(2, QStringLiteral("Bolt"));
    fixture::Supplier(3, QStringLiteral("Cobalt"));
    fixture::Supplier(4, QStringLiteral("Non Stock"), QStringLiteral("NON"));
    fixture::Item(10, QStringLiteral("RES-10K"), QStringLiteral("Resistor 10k"));
    fixture::Item(11, QStringLiteral("CAP-1U"), QStringLiteral("Capacitor 1u"));
    fixture::Item(12, QStringLiteral("IND-5M"), QStringLiteral("Inductor"));
    fixture::Item(13, QStringLiteral("RELAY-5V"), QStringLiteral("Relay"));
    fixture::Link(10, 1, QStringLiteral("2"), QStringLiteral("A-10"));
    fixture::Link(11, 1, QStringLiteral("0.5"), QStringLiteral("A-11"));
    fixture::Link(13, 1, QStringLiteral("3"), QStringLiteral("A-13"));
    fixture::Link(10, 2, QStringLiteral("1.5"), QStringLiteral("B-10"));
    fixture::Link(12, 2, QStringLiteral("4"), QStringLiteral("B-12"));
    fixture::Link(13, 3, QStringLiteral("3"), QStringLiteral("C-13"));
}

} // namespace

class TestBasketWindow : public QObject {
    Q_OBJECT
private slots:
    void init() { gPOPrinterName.clear(); }

    void selectAndEdit() {
        TestData data;
        ScriptedBoxes boxes;
        Suppliers();
        ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, POSupID) VALUES (12, 1)"));
        const int r10 = fixture::BasketRow(10, QStringLiteral("0"), 1);
        fixture::BasketRow(11, QStringLiteral("3"), 1);
        fixture::BasketRow(10, QStringLiteral("0"), 1);

        basket w;
        w.Form_Load();
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QCOMPARE(w.windowTitle(), QStringLiteral("Purchasing"));
        QCOMPARE(w.cboSupplist->count(), 4); // Acme, Bolt, Cobalt, No Supplier
        QCOMPARE(w.cboSupplist->findText(QStringLiteral("Non Stock")), -1);
        QCOMPARE(w.cboSupplist->currentIndex(), -1);
        QCOMPARE(w.txtPOID->text(), QStringLiteral("0013"));
        QVERIFY(!w.Command2->isEnabled() && !w.Command4->isEnabled());
        QVERIFY(!w.frmBParts->isVisible() && !w.frmPrintOrder->isVisible());

        Select(w, QStringLiteral("Acme"));
        QVERIFY(w.SupplierChosen);
        QVERIFY(w.Command2->isEnabled() && w.Command4->isEnabled());
        // The supplier's address kept in frmNSSupDetails, which stays hidden.
        QCOMPARE(QStringList({w.txtSupID->text(), w.txtSupName->text(), w.txtSupAdd1->text(),
                              w.txtSupPO->text(), w.txtSupContact->text()}),
                 QStringList({"1", "Acme", "Acme Street", "LS1", "Ann"}));
        QVERIFY(!w.frmNSSupDetails->isVisible());
        QCOMPARE(w.gdxBList->RowCount(), 3);
        QCOMPARE(Column(*w.gdxBList, QStringLiteral("PartNo")),
                 QStringList({"RES-10K", "CAP-1U", "RES-10K"}));
        QCOMPARE(Column(*w.gdxBList, QStringLiteral("AtPrice")),
                 QStringList({"2.00", "0.50", "2.00"}));
        QVERIFY(w.Text2->text().isEmpty());
        Shot(&w, QStringLiteral("basket-list"));

        // A quantity typed is written at once and the order value follows.
        Type(w, 1, QStringLiteral("PQty"), QStringLiteral("4"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT ReqQty FROM tblBaskets WHERE RowID=%1").arg(r10)),
                 QStringLiteral("4"));
        QCOMPARE(w.Text2->text(), QStringLiteral("9.50"));
        // The tick as well.
        Tick(w, 2, QStringLiteral("POrder"), false);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT OrderYN FROM tblBaskets WHERE StockID=11")),
                 QStringLiteral("0"));
        QCOMPARE(w.Text2->text(), QStringLiteral("8.00"));

        // The keys of a number cell: digits, the decimal sign and backspace only.
        QTableView* table = w.gdxBList->TableView();
        table->setCurrentIndex(Cell(w, 3, QStringLiteral("PQty")));
        table->edit(Cell(w, 3, QStringLiteral("PQty")));
        auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, QStringLiteral("1a.5x-"));
        QCOMPARE(editor->text(), QStringLiteral("1.5"));
        QTest::keyClick(editor, Qt::Key_Return);
        Settle();
        QCOMPARE(SqlFirst(QStringLiteral("SELECT ReqQty FROM tblBaskets ORDER BY RowID DESC")),
                 QStringLiteral("1.5"));

        // Remove on one of the item's two rows: that row goes and the list is read again.
        Tick(w, 1, QStringLiteral("Remove"), true);
        QCOMPARE(w.gdxBList->RowCount(), 2);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT group_concat(RowID) FROM tblBaskets WHERE "
                                         "StockID=10")),
                 QString::number(r10 + 2));

        // A supplier with nothing waiting: an empty list, the order value as it was, and
        // "Order Now" does not order the last supplier's rows.
        const QString value = w.Text2->text();
        Select(w, QStringLiteral("Cobalt"));
        QCOMPARE(w.gdxBList->RowCount(), 0);
        QCOMPARE(w.BasketRowCount, 0);
        QCOMPARE(w.Text2->text(), value);
        boxes.answer(vbOK);
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QCOMPARE(boxes.prompts(),
                 QStringList(QStringLiteral("The order would be empty so nothing was done")));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT count(*) FROM tblPOrders")), QStringLiteral("1"));
    }

    void boxesAndParts() {
        TestData data;
        ScriptedBoxes boxes;
        Suppliers();
        basket w;
        w.Form_Load();
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));

        // Order number: digits only. Reference: apostrophes become back-quotes.
        w.txtPOID->clear();
        w.txtPOID->setFocus();
        QTest::keyClicks(w.txtPOID, QStringLiteral("a5'0.x0"));
        QCOMPARE(w.txtPOID->text(), QStringLiteral("500"));
        w.txtBasketPONo->setFocus();
        QTest::keyClicks(w.txtBasketPONo, QStringLiteral("O'Neil"));
        QCOMPARE(w.txtBasketPONo->text(), QStringLiteral("O`Neil"));

        // A number typed higher than the next one survives a selection.
        Select(w, QStringLiteral("Acme"));
        QCOMPARE(w.txtPOID->text(), QStringLiteral("0500"));

        // The supplier's parts; the filter turns letters into capitals and matches the start.
        QTest::mouseClick(w.Command4, Qt::LeftButton);
        QVERIFY(w.frmBParts->isVisible());
        QCOMPARE(Column(*w.gdxBParts, QStringLiteral("PartNo")),
                 QStringList({"RES-10K", "CAP-1U", "RELAY-5V"})); // by ItemID
        w.txtBSupItemFilter->setFocus();
        QTest::keyClicks(w.txtBSupItemFilter, QStringLiteral("re"));
        QCOMPARE(w.txtBSupItemFilter->text(), QStringLiteral("RE"));
        QCOMPARE(Column(*w.gdxBParts, QStringLiteral("PartNo")),
                 QStringList({"RES-10K", "RELAY-5V"}));
        Shot(&w, QStringLiteral("basket-parts"));

        // A double-click on a part adds it, twice if done twice, and marks the item.
        QTableView* parts = w.gdxBParts->TableView();
        const QPoint at = parts->visualRect(parts->model()->index(1, 1)).center();
        for (int i = 0; i < 2; ++i) {
            QTest::qWait(QApplication::doubleClickInterval() + 50);
            QTest::mouseClick(parts->viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(parts->viewport(), Qt::LeftButton, {}, at);
        }
        QCOMPARE(w.gdxBList->RowCount(), 2);
        QCOMPARE(Column(*w.gdxBList, QStringLiteral("PartNo")),
                 QStringList({"RELAY-5V", "RELAY-5V"}));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT BuyNow FROM tblStockItems WHERE ItemID=13")),
                 QStringLiteral("1"));

        QTest::mouseClick(w.Command5, Qt::LeftButton);
        QCOMPARE(w.gdxBParts->RowCount(), 3);
        QTest::mouseClick(w.Command3, Qt::LeftButton);
        QVERIFY(!w.frmBParts->isVisible());

        // Help on the order number.
        boxes.answer(vbOK);
        QTest::mouseClick(w.Command1, Qt::LeftButton);
        QVERIFY(boxes.prompts().last().startsWith(
            QStringLiteral("Quillstock maintains its own unique numerical purchase order ID")));

        // The supplier's contact entry, on that supplier.
        QString shown;
        QTimer::singleShot(0, [&shown] {
            auto* entry = qobject_cast<frmEditContact*>(QApplication::activeModalWidget());
            if (entry) {
                shown = entry->txtCoName->text();
                entry->close();
            }
        });
        QTest::mouseClick(w.Command8, Qt::LeftButton);
        QCOMPARE(shown, QStringLiteral("Acme"));
    }

    void orderAndPrint() {
        TestData data;
        ScriptedBoxes boxes;
        Suppliers();
        auto one = std::make_shared<RecordingPrinter>(QStringLiteral("Office"));
        auto two = std::make_shared<RecordingPrinter>(QStringLiteral("Stores"));
        SetPrinters({one, two});
        SetCurrentPrinter(two);
        fixture::BasketRow(10, QStringLiteral("4"), 1);
        fixture::BasketRow(11, QStringLiteral("2"), 1);
        fixture::BasketRow(12, QStringLiteral("1"), 1);

        basket w;
        w.Form_Load();
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        Select(w, QStringLiteral("Acme"));
        w.txtBasketPONo->setText(QStringLiteral("REF-1"));
        Tick(w, 2, QStringLiteral("POrder"), false);

        // "No" to printing: the list is read again and shows the next number.
        boxes.answer(vbNo);
        QTest::mouseClick(w.Command2, Qt::LeftButton);
        QCOMPARE(boxes.prompts(),
                 QStringList(QStringLiteral("Do you want to print the order Now?")));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT PONumber FROM tblPOrders WHERE POID=1")),
                 QStringLiteral("REF-1"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT count(*) FROM tblPODetail WHERE POID=1")),
                 QStringLiteral("1"));
        QCOMPARE(Column(*w.gdxBList, QStringLiteral("PartNo")), QStringList({"CAP-1U"}));
        QCOMPARE(w.txtPOID->text(), QStringLiteral("0002"));
        QVERIFY(w.txtBasketPONo->text().isEmpty());
        // The ordered row left Bolt's list too.
        Select(w, QStringLiteral("Bolt"));
        QCOMPARE(Column(*w.gdxBList, QStringLiteral("PartNo")), QStringList({"IND-5M"}));

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
        Shot(&w, QStringLiteral("basket-print"));

        // Print, and print again: the frame stays.
        boxes.answer(vbOK);
        boxes.answer(vbOK);
        QTest::mouseClick(w.cmdPrintOK, Qt::LeftButton);
        w.cboSelectPrinter->setCurrentIndex(0);
        QCOMPARE(gPOPrinterName, QStringLiteral("Office"));
        QTest::mouseClick(w.cmdPrintOK, Qt::LeftButton);
        QCOMPARE(two->Documents(), 1);
        QCOMPARE(one->Documents(), 1);
        QVERIFY(one->Texts().contains(QStringLiteral("0002 / ")));
        QCOMPARE(boxes.prompts().mid(1),
                 QStringList({"Please check that your printout is correct and reprint if necessary",
                              "Please check that your printout is correct and reprint if "
                              "necessary"}));
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
        QCOMPARE(boxes.prompts(),
                 QStringList(QStringLiteral("The system doesn't seem to have any available "
                                            "printer. Print options will be disabled until a "
                                            "printer is installed")));
        QVERIFY(!w.cmdPrintOK->isEnabled());
        QCOMPARE(w.cboSelectPrinter->count(), 0);
    }

    void openFromMainWindow() {
        TestData data;
        ScriptedBoxes boxes;
        Suppliers();
        FormMain main;
        main.Form_Load();
        QString opened;
        QTimer::singleShot(0, [&opened] {
            QWidget* modal = QApplication::activeModalWidget();
            if (modal) {
                opened = modal->objectName() + QLatin1Char('|') +
                         modal->findChild<QLineEdit*>(QStringLiteral("txtPOID"))->text();
                modal->close();
            }
        });
        main.ButtonBar1_ButtonClick(QStringLiteral("Purchasing"), QStringLiteral("PchPending"));
        QCOMPARE(opened, QStringLiteral("basket|0001"));
    }
};

QTEST_MAIN(TestBasketWindow)
#include "test_basket_window.moc"
