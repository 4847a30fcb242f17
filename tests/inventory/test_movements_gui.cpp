// The adjustment panel, the history grid and the pending order panel, driven through their
// controls.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "grids/GridEX.h"
#include "inventory/ItemHistoryPanel.h"
#include "inventory/frmInvAdjustments.h"
#include "inventory/frmStockQtyInfo.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

namespace {

void Exec(const QString& sql) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(sql);
}

QString Value(const QString& sql) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    return db.OpenRecordset(sql).Fields(0).Text();
}

// With QS_SCREENSHOT_DIR set, the window is saved there as a picture for a look by eye.
void Shot(QWidget* w, const QString& name) {
    const QString dir = qEnvironmentVariable("QS_SCREENSHOT_DIR");
    if (dir.isEmpty())
        return;
    QDir().mkpath(dir);
    w->show();
    QCoreApplication::processEvents();
    w->grab().save(dir + QLatin1Char('/') + name + QStringLiteral(".png"));
}

} // namespace

class TestMovementsGui : public QObject {
    Q_OBJECT
private slots:
    void adjustmentPanel() {
        TestData data;
        ScriptedBoxes boxes;
        Exec(QStringLiteral("INSERT INTO tblStockItems (ItemID, Qty) VALUES (5, 10)"));
        frmInvAdjustments panel;
        QSignalSpy adjusted(&panel, &frmInvAdjustments::Adjusted);
        QSignalSpy closed(&panel, &frmInvAdjustments::Closed);
        auto* ok = panel.findChild<QPushButton*>(QStringLiteral("btnInvAdjustOK"));
        auto* minus = panel.findChild<QRadioButton*>(QStringLiteral("optAdjustments_3"));
        QVERIFY(ok && minus);
        QCOMPARE(minus->text(), QStringLiteral("Adjust (-)"));

        // Opening clears what a previous use left.
        minus->setChecked(true);
        panel.txtAdjustmentQty->setText(QStringLiteral("4"));
        panel.txtAdjustmentText->setText(QStringLiteral("old"));
        panel.Open(5, QStringLiteral("10"));
        QCOMPARE(panel.SelectedKind(), AdjustmentKind::None);
        QVERIFY(!minus->isChecked());
        QVERIFY(panel.txtAdjustmentQty->text().isEmpty());
        QVERIFY(panel.txtAdjustmentText->text().isEmpty());
        Shot(&panel, QStringLiteral("frmInvAdjustments"));

        boxes.answer(vbOK);
        ok->click(); // no option: the message, and the panel stays
        QCOMPARE(boxes.prompts(), QStringList({"You need to select an option button"}));
        QCOMPARE(closed.count(), 0);

        minus->click();
        QTest::keyClicks(panel.txtAdjustmentQty, QStringLiteral("2.5"));
        QTest::keyClicks(panel.txtAdjustmentNo, QStringLiteral("C-1"));
        QTest::keyClicks(panel.txtAdjustmentText, QStringLiteral("checked by O'Neil"));
        ok->click();
        QCOMPARE(Value(QStringLiteral("SELECT Qty FROM tblStockItems")), QStringLiteral("7.5"));
        QCOMPARE(Value(QStringLiteral("SELECT HistType || HistQty || HistRef || HistText "
                                      "FROM tblItemHistory")),
                 QStringLiteral("ADJ(-)-2.5C-1checked by O`Neil"));
        QCOMPARE(adjusted.count(), 1);
        QCOMPARE(adjusted[0][0].value<StockAdjustmentResult>().qtyCell, QStringLiteral("7.5"));
        QCOMPARE(closed.count(), 1);

        panel.Open(5, QStringLiteral("7.5"));
        panel.optAdjustments[0]->click();
        panel.txtAdjustmentQty->setText(QStringLiteral("1"));
        panel.Command6->click(); // Cancel writes nothing
        QCOMPARE(closed.count(), 2);
        QCOMPARE(Value(QStringLiteral("SELECT count(*) FROM tblItemHistory")), QStringLiteral("1"));
        boxes.answer(vbOK);
        panel.Command7->click();
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Inventory Adjustments"));
    }

    void adjustmentFromContextMenu() {
        TestData data;
        ScriptedBoxes boxes;
        Exec(QStringLiteral("INSERT INTO tblStockItems (ItemID, Qty) VALUES (5, 10)"));
        gCanInventory = false;
        boxes.answer(vbOK);
        QVERIFY(!frmInvAdjustments::OpenFromMenu(nullptr, 5, QStringLiteral("10")));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Access Restricted"));

        gCanInventory = true;
        QTimer::singleShot(0, [] {
            QWidget* dlg = QApplication::activeModalWidget();
            auto* panel = dlg ? dlg->findChild<frmInvAdjustments*>() : nullptr;
            if (!panel)
                return;
            Shot(dlg, QStringLiteral("frmInvAdjustmentsWindow"));
            panel->optAdjustments[0]->click();
            panel->txtAdjustmentQty->setText(QStringLiteral("3"));
            panel->btnInvAdjustOK->click();
        });
        const auto posted = frmInvAdjustments::OpenFromMenu(nullptr, 5, QStringLiteral("10"));
        QVERIFY(posted.has_value());
        QCOMPARE(posted->qtyCell, QStringLiteral("7"));
        QCOMPARE(Value(QStringLiteral("SELECT Qty FROM tblStockItems")), QStringLiteral("7"));
    }

    void historyGrid() {
        TestData data;
        Exec(QStringLiteral(
            "INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistRef, HistTRN, HistQty, "
            "HistText) VALUES (5, '2026-03-04', 'RX', 'ADV1', 'GRN9', 12, 'Purchase Order: 0003'), "
            "(5, '1999-01-01', 'ADJ(+)', 'C2', NULL, 1.5, 'found')"));
        ItemHistoryPanel panel;
        panel.resize(760, 160);
        auto* grid = panel.findChild<GridEX*>(QStringLiteral("gdxItemHistory"));
        QVERIFY(grid);
        panel.LoadHistory(5);
        QCOMPARE(grid->ItemCount(), 2);
        QCOMPARE(grid->Columns()(QStringLiteral("EText")).Caption(), QStringLiteral("EventText"));
        QCOMPARE(grid->CellValue(1, 2).toString(), QStringLiteral("Received"));
        QCOMPARE(grid->CellValue(1, 6).toString(),
                 QStringLiteral("Order Ref: Purchase Order: 0003"));
        QCOMPARE(grid->CellValue(2, 1).toString(), QString()); // 1999 is not shown
        Shot(&panel, QStringLiteral("gdxItemHistory"));
        panel.LoadHistory(6);
        QCOMPARE(grid->ItemCount(), 0);
    }

    void pendingOrderPanel() {
        TestData data;
        ScriptedBoxes boxes;
        Exec(QStringLiteral("INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved, "
                            "POSchedDate) VALUES (12, 5, 10, 4, '2026-12-24')"));
        const QString baskets = QStringLiteral("SELECT count(*) FROM tblBaskets");
        frmStockQtyInfo dlg;
        dlg.Open(5, QStringLiteral("P5"));
        QCOMPARE(dlg.txtPartID->text() + dlg.Text2->text(), QStringLiteral("P55"));
        QVERIFY(!dlg.chkSendToPO->isChecked());
        auto* po = dlg.findChild<QTableWidget*>(QStringLiteral("flxStockOnOrInfo"));
        QVERIFY(po && po->rowCount() == 1);
        QCOMPARE(po->item(0, 0)->text() + po->item(0, 2)->text(), QStringLiteral("00126"));
        Shot(&dlg, QStringLiteral("frmStockQtyInfo"));

        gCanInventory = false; // the tick is refused and put back
        boxes.answer(vbOK);
        dlg.chkSendToPO->click();
        QVERIFY(!dlg.chkSendToPO->isChecked());
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Access Restricted"));

        gCanInventory = true;
        dlg.chkSendToPO->click();
        dlg.cmdStockQtyInfoOK->click();
        QCOMPARE(Value(baskets), QStringLiteral("1"));
        dlg.Open(5, QStringLiteral("P5"));
        QVERIFY(dlg.chkSendToPO->isChecked());
        dlg.cmdStockQtyInfoOK->click();
        QCOMPARE(Value(baskets), QStringLiteral("1"));
        dlg.chkSendToPO->click();
        boxes.answer(vbYes);
        dlg.cmdStockQtyInfoOK->click();
        QCOMPARE(Value(baskets), QStringLiteral("0"));
        QVERIFY(boxes.allAnswersUsed());
    }
};

QTEST_MAIN(TestMovementsGui)
#include "test_movements_gui.moc"
