// The item detail's panels driven through their controls: the boxes of an item, their entry
// rules, the save with its progress and failure, the supplier tab and its row menu, a new item,
// the adjustment panel and the pending order panel.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "grids/GridEX.h"
#include "inventory/ItemSuppliers.h"
#include "inventory/frmInvAdjustments.h"
#include "inventory/frmItemDetail.h"
#include "inventory/frmNewItem.h"
#include "inventory/frmStockQtyInfo.h"
#include "tests/inventory/InventoryFixture.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

namespace {

// The boxes of the panel as one line, in the order of the window.
QString shown(frmItemDetail& p) {
    return (QStringList() << p.txtPNo->text() << p.txtDetail->text() << p.txtDescription->text()
                          << p.txtItemCat->currentText() << p.txtCatNo->text()
                          << (p.Check1->isChecked() ? "assy" : "-") << p.txtLocation->text()
                          << p.txtItemQty->text() << p.txtMinQty->text() << p.txtSellPrice->text()
                          << (p.chkAllowDiscount->isChecked() ? "discount" : "-")
                          << p.txtItemComments->toPlainText() << p.txtBuyPrice->text())
        .join(QLatin1Char('|'));
}

void leave(QWidget* box) {
    QFocusEvent out(QEvent::FocusOut);
    QCoreApplication::sendEvent(box, &out);
}

// A right click on a row of the supplier grid, as the grid reports it.
void rightClickRow(frmItemDetail& p, int row) {
    const QRect r =
        p.gdxSupp->TableView()->visualRect(p.gdxSupp->TableView()->model()->index(row - 1, 0));
    const QPoint at = p.gdxSupp->TableView()->viewport()->mapTo(p.gdxSupp, r.center());
    emit p.gdxSupp->MouseUp(Qt::RightButton, p.gdxSupp->PixelsToTwips(at.x()),
                            p.gdxSupp->PixelsToTwips(at.y()));
}

} // namespace

class TestItemDetailPanel : public QObject {
    Q_OBJECT
private slots:
    void init() {
        mData = std::make_unique<TestData>();
        QVERIFY(mData->ok());
        FillItemFixture();
        mPanel = std::make_unique<frmItemDetail>();
        mPanel->resize(980, 620);
        mPanel->show();
    }
    void cleanup() {
        mPanel.reset();
        mData.reset();
    }

    void showEditAndSave() {
        frmItemDetail& p = *mPanel;
        QVERIFY(p.ShowItemDetail(7));
        QCOMPARE(shown(p), "P-7|10k|Resistor pack|RES|RES|-|BIN 4|12.5|3|0.125|"
                           "discount|old note|0.0425");

        // Entry rules of the boxes, typed where the keyboard is.
        p.txtItemQty->setText(QStringLiteral("20.0"));
        leave(p.txtItemQty);
        QCOMPARE(p.txtItemQty->text(), "20");
        p.txtMinQty->clear();
        leave(p.txtMinQty);
        QCOMPARE(p.txtMinQty->text(), QString()); // blank stays blank: no minimum
        p.txtSellPrice->setText(QStringLiteral("1.5"));
        leave(p.txtSellPrice);
        QCOMPARE(p.txtSellPrice->text(), "1.50");
        p.txtLocation->setFocus();
        QTest::keyClicks(QApplication::focusWidget(), "'");
        QVERIFY(p.txtLocation->text().endsWith(QLatin1Char('`')));
        p.txtLocation->setText(QStringLiteral("Shelf 9"));
        p.txtItemCat->lineEdit()->clear();
        p.txtItemCat->setFocus();
        QTest::keyClicks(QApplication::focusWidget(), "as-");
        QCOMPARE(p.txtItemCat->currentText(), "AS");
        QCOMPARE(p.Check1->isChecked(), true);
        p.txtItemComments->setPlainText(QStringLiteral("new note"));

        ScriptedBoxes boxes;
        gCurrentItemID = 7;
        QSignalSpy saved(&p, &frmItemDetail::ItemSaved);
        QVERIFY(p.SaveItemDetail());
        QCOMPARE(SqlRows("SELECT MasterPNo, Category, Assy, Location, Qty, Trigger, SellAt, "
                         "AllowDiscount, Comment FROM tblStockItems, tblItemComments "
                         "WHERE ItemID = 7 AND StockID = 7"),
                 QStringList{"P-7|AS|-1|Shelf 9 |20|0|1.5|1|new note"});
        QCOMPARE(saved.size(), 1);

        // A failing commit: its message, the file as it was, no repaint of the list.
        p.txtItemQty->setText(QStringLiteral("33"));
        boxes.answer(vbOK);
        Database::FailNextStatementContaining(QStringLiteral("COMMIT"));
        QVERIFY(!p.SaveItemDetail());
        QCOMPARE(boxes.shown().at(1).title, "Error9");
        QCOMPARE(saved.size(), 1);
        QCOMPARE(SqlFirst("SELECT Qty FROM tblStockItems WHERE ItemID=7"), "20");
        QCOMPARE(p.txtItemQty->text(), "33");

        QSignalSpy missing(&p, &frmItemDetail::ItemNotFound);
        QVERIFY(!p.ShowItemDetail(99) && missing.size() == 1);
    }

    void suppliersTab() {
        frmItemDetail& p = *mPanel;
        QVERIFY(p.ShowItemDetail(7));
        p.TabStrip1->setCurrentIndex(1);
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        GridEX* grid = p.gdxSupp;
        QCOMPARE(grid->ItemCount(), 2);
        // Cell key rules: one decimal point in numbers, apostrophes turned in text.
        QCOMPARE(grid->Columns()("SupPrice").KeyFilter()(QStringLiteral("1.5"), '.'), 0);
        QCOMPARE(grid->Columns()("SupOrQty").KeyFilter()(QStringLiteral("1"), 'x'), 0);
        QCOMPARE(grid->Columns()("SupPNo").KeyFilter()(QString(), '\''), int('`'));

        // Choices: every supplier by name; one already on the grid cannot be added again.
        QComboBox* all = p.cboAllSups;
        QCOMPARE(all->itemText(0), "Alpha Supply");
        all->setCurrentIndex(0);
        emit all->activated(0);
        QVERIFY(!p.btnSupAdd->isEnabled());
        all->setCurrentIndex(1);
        emit all->activated(1);
        QTest::mouseClick(p.btnSupAdd, Qt::LeftButton);
        QVERIFY(!p.btnSupAdd->isEnabled());
        QCOMPARE(grid->ItemCount(), 3);
        QCOMPARE(p.mSupData.last().SupName + p.mSupData.last().Code, "Mid MetalsMID");

        // The row menu: address of the row, then removal with its notice.
        rightClickRow(p, 1);
        QTest::mouseClick(p.txtItemSupView, Qt::LeftButton);
        QVERIFY(p.frmItemSupInfo->isVisible());
        QCOMPARE(p.txtItemSupInfo->toPlainText(), SupplierAddressText(1));
        ScriptedBoxes boxes;
        for (int n = 0; n < 2; ++n) {
            rightClickRow(p, 1);
            QVERIFY(p.txtItemSupRemove->isEnabled());
            boxes.answer(vbOK);
            QTest::mouseClick(p.txtItemSupRemove, Qt::LeftButton);
        }
        QCOMPARE(boxes.prompts(),
                 QStringList(2, "Changes you make are only saved to the database when you click "
                                "the main 'save' button"));
        QCOMPARE(grid->ItemCount(), 1);
        QCOMPARE(p.mSupData.first().SupName, "Mid Metals");
        // The last row stays.
        rightClickRow(p, 1);
        QVERIFY(!p.txtItemSupRemove->isEnabled());
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemSupplier WHERE ItemID=7"), "2");

        // Leaving the item without saving drops the edits.
        QVERIFY(p.ShowItemDetail(7));
        QCOMPARE(grid->ItemCount(), 2);
    }

    void newItem() {
        frmItemDetail& p = *mPanel;
        QVERIFY(p.ShowItemDetail(7));
        p.PrepareNewItem();
        auto* panel = p.findChild<frmNewItem*>(QStringLiteral("frmNewItem"));
        QVERIFY(panel->isVisible());
        QCOMPARE(shown(p), "|||NEW||-|||||-||");
        p.txtPNo->setText(QStringLiteral("N-1"));
        p.txtDescription->setText(QStringLiteral("Nut"));
        p.txtSellPrice->setText(QStringLiteral("0.5"));
        QSignalSpy created(&p, &frmItemDetail::ItemCreated);
        QTest::mouseClick(p.findChild<QPushButton*>(QStringLiteral("btnItemMakeNew")),
                          Qt::LeftButton);
        QCOMPARE(created.size(), 1);
        QVERIFY(!panel->isVisible());
        QCOMPARE(p.txtLocation->text() + '|' + p.txtSellPrice->text(), "UNKNOWN|0.50");
        QCOMPARE(SqlFirst("SELECT MasterPNo FROM tblStockItems WHERE ItemID=9"), "N-1");
    }

    void adjustmentPanel() {
        ScriptedBoxes boxes;
        ExecSql("INSERT INTO tblStockItems (ItemID, Qty) VALUES (5, 10)");
        frmInvAdjustments panel;
        QSignalSpy adjusted(&panel, &frmInvAdjustments::Adjusted);
        QSignalSpy closed(&panel, &frmInvAdjustments::Closed);
        QRadioButton* minus = panel.optAdjustments[3]; // Adjust (-)
        // Opening clears what a previous use left.
        minus->setChecked(true);
        panel.txtAdjustmentQty->setText(QStringLiteral("4"));
        panel.Open(5, QStringLiteral("10"));
        QCOMPARE(panel.SelectedKind(), AdjustmentKind::None);
        QVERIFY(panel.txtAdjustmentQty->text().isEmpty());

        boxes.answer(vbOK);
        panel.btnInvAdjustOK->click(); // no option: the message, and the panel stays
        QCOMPARE(boxes.prompts(), QStringList({"You need to select an option button"}));
        QCOMPARE(closed.count(), 0);
        minus->click();
        QTest::keyClicks(panel.txtAdjustmentQty, QStringLiteral("2.5"));
        QTest::keyClicks(panel.txtAdjustmentNo, QStringLiteral("C-1"));
        QTest::keyClicks(panel.txtAdjustmentText, QStringLiteral("checked by O'Neil"));
        panel.btnInvAdjustOK->click();
        QCOMPARE(SqlRows("SELECT Qty, HistType, HistQty, HistRef, HistText FROM "
                         "tblStockItems, tblItemHistory WHERE ItemID = 5 AND StockID = 5"),
                 QStringList{"7.5|ADJ(-)|-2.5|C-1|checked by O`Neil"});
        QCOMPARE(adjusted.count(), 1);
        QCOMPARE(closed.count(), 1);

        panel.Open(5, QStringLiteral("7.5"));
        panel.optAdjustments[0]->click();
        panel.txtAdjustmentQty->setText(QStringLiteral("1"));
        panel.Command6->click(); // Cancel writes nothing
        QCOMPARE(closed.count(), 2);
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemHistory WHERE StockID = 5"), "1");

        // From the list's menu: a window of its own.
        QTimer::singleShot(0, [] {
            QWidget* dlg = QApplication::activeModalWidget();
            auto* panel = dlg ? dlg->findChild<frmInvAdjustments*>() : nullptr;
            QVERIFY(panel);
            panel->optAdjustments[0]->click();
            panel->txtAdjustmentQty->setText(QStringLiteral("3"));
            panel->btnInvAdjustOK->click();
        });
        const auto posted = frmInvAdjustments::OpenFromMenu(nullptr, 5, QStringLiteral("7.5"));
        QVERIFY(posted.has_value());
        QCOMPARE(posted->qtyCell, "4.5");
        QCOMPARE(SqlFirst("SELECT Qty FROM tblStockItems WHERE ItemID = 5"), "4.5");
        QVERIFY(boxes.allAnswersUsed());
    }

    // Opening the panel for an unflagged item changes nothing; its tick flags it once.
    void pendingOrderPanel() {
        ScriptedBoxes boxes;
        ExecSql("INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved, "
                "POSchedDate) VALUES (12, 5, 10, 4, '2026-12-24')");
        const QString baskets = QStringLiteral("SELECT count(*) FROM tblBaskets");
        frmStockQtyInfo dlg;
        dlg.Open(5, QStringLiteral("P5"));
        QCOMPARE(dlg.txtPartID->text() + dlg.Text2->text(), "P55");
        QVERIFY(!dlg.chkSendToPO->isChecked());
        auto* po = dlg.findChild<QTableWidget*>(QStringLiteral("flxStockOnOrInfo"));
        QCOMPARE(po->item(0, 2)->text(), "6");
        dlg.cmdStockQtyInfoOK->click();
        QCOMPARE(SqlFirst(baskets), "0");

        gCanInventory = false; // the tick is refused and put back
        boxes.answer(vbOK);
        dlg.chkSendToPO->click();
        QVERIFY(!dlg.chkSendToPO->isChecked());
        QCOMPARE(boxes.shown().last().title, "Access Restricted");
        gCanInventory = true;
        dlg.chkSendToPO->click();
        dlg.cmdStockQtyInfoOK->click();
        QCOMPARE(SqlFirst(baskets), "1");
        dlg.Open(5, QStringLiteral("P5"));
        QVERIFY(dlg.chkSendToPO->isChecked());
    }

private:
    std::unique_ptr<TestData> mData;
    std::unique_ptr<frmItemDetail> mPanel;
};

QTEST_MAIN(TestItemDetailPanel)
#include "test_itemdetail_panel.moc"
