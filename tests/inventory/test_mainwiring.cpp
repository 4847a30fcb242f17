// The main window with its panels put together: the list, the item detail with its history and
// adjustment panels, the contact list, and export on whichever grid is on show.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "inventory/ItemHistoryPanel.h"
#include "inventory/frmInvAdjustments.h"
#include "tests/inventory/InventoryFixture.h"
#include "tests/support/TestSupport.h"

#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

namespace {

QStringList readLines(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLocal8Bit(f.readAll()).split(QStringLiteral("\r\n"));
}

double itemField(const char* column, int itemId) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    return db
        .OpenRecordset(QStringLiteral("SELECT %1 FROM tblStockItems WHERE ItemID = %2")
                           .arg(QLatin1String(column))
                           .arg(itemId))
        .Fields(0)
        .Double();
}

} // namespace

class TestMainWiring : public QObject {
    Q_OBJECT
private slots:
    void listDetailAdjustmentAndExport() {
        TestData data;
        FillInventoryFixture();
        FormMain w;
        w.Form_Load();
        w.show();
        w.ButtonBar1_ButtonClick(QStringLiteral("Inventory"), QStringLiteral("UB_All"));
        QVERIFY(w.mUBRowCount > 0);
        w.gdxUBView->SetRow(1);
        QCOMPARE(gCurrentItemID, 1);
        const int qtyCol = UBItemColumn(QStringLiteral("Qty"));
        const int sellCol = UBItemColumn(QStringLiteral("Sell"));

        // Export writes the list on show.
        const QString listCsv = data.path(QStringLiteral("list.csv"));
        {
            ScriptedBoxes boxes;
            boxes.answerFile(listCsv);
            boxes.answer(vbOK);
            w.buttons_ButtonClick(5);
            QCOMPARE(boxes.shown().last().title, QStringLiteral("Saved"));
        }
        const QStringList lines = readLines(listCsv);
        QVERIFY(lines.value(0).startsWith(QStringLiteral("Part No.,")));
        QCOMPARE(lines.value(1), QString());
        QVERIFY(lines.value(2).startsWith(QStringLiteral("A100,")));
        QCOMPARE(lines.size(), 2 + w.mUBRowCount + 1); // the last line break ends the file

        // The Detail tab shows the selected item; a save repaints its list row only.
        w.TabStrip2->setCurrentIndex(1);
        QCOMPARE(w.frmItemDetail->txtPNo->text(), QStringLiteral("A100"));
        QVERIFY(w.buttons[4]->isVisibleTo(&w));
        w.frmItemDetail->txtSellPrice->setText(QStringLiteral("0.25"));
        {
            ScriptedBoxes boxes;
            w.buttons_ButtonClick(4);
            QCOMPARE(boxes.processingBars(), 1);
        }
        QCOMPARE(itemField("SellAt", 1), 0.25);
        QCOMPARE(w.mUBData(sellCol, 1).toString(), QStringLiteral("0.25"));

        // An issue from the Adjustments tab moves the list row, the detail box and the history.
        w.frmItemDetail->TabStrip1->setCurrentIndex(5);
        w.frmItemDetail->TabStrip1_Click(5);
        auto* adj = w.findChild<frmInvAdjustments*>(QStringLiteral("frmInvAdjustments"));
        QVERIFY(adj);
        adj->findChild<QRadioButton*>(QStringLiteral("optAdjustments_0"))->setChecked(true);
        adj->findChild<QLineEdit*>(QStringLiteral("txtAdjustmentQty"))
            ->setText(QStringLiteral("3"));
        {
            ScriptedBoxes boxes;
            adj->findChild<QPushButton*>(QStringLiteral("btnInvAdjustOK"))->click();
        }
        QCOMPARE(itemField("Qty", 1), 7.0);
        QCOMPARE(w.mUBData(qtyCol, 1).toString(), QStringLiteral("7"));
        QCOMPARE(w.frmItemDetail->txtItemQty->text(), QStringLiteral("7"));
        QCOMPARE(w.HistoryPanel->gdxItemHistory->ItemCount(), 1);

        // A save after the adjustment keeps the adjusted quantity.
        {
            ScriptedBoxes boxes;
            w.buttons_ButtonClick(4);
        }
        QCOMPARE(itemField("Qty", 1), 7.0);

        // With the history on show, export writes the history.
        w.frmItemDetail->TabStrip1->setCurrentIndex(4);
        w.frmItemDetail->TabStrip1_Click(4);
        const QString histCsv = data.path(QStringLiteral("history.csv"));
        {
            ScriptedBoxes boxes;
            boxes.answerFile(histCsv);
            boxes.answer(vbOK);
            w.buttons_ButtonClick(5);
        }
        const QStringList hist = readLines(histCsv);
        QCOMPARE(hist.value(0), QStringLiteral("Date,Type,Qty,EventRef,TRN,EventText,"));
        QVERIFY(hist.value(2).contains(QStringLiteral(",ISSUE,-3,")));

        // The contact list takes over print and export.
        w.ButtonBar1_ButtonClick(QStringLiteral("Addresses"), QStringLiteral("Suppliers"));
        const QString supCsv = data.path(QStringLiteral("suppliers.csv"));
        {
            ScriptedBoxes boxes;
            boxes.answerFile(supCsv);
            boxes.answer(vbOK);
            w.buttons_ButtonClick(5);
        }
        QVERIFY(
            readLines(supCsv).join(QLatin1Char('\n')).contains(QStringLiteral("Bolt Brothers")));
        QVERIFY(!readLines(supCsv).join(QLatin1Char('\n')).contains(QStringLiteral("A100")));
    }
};

QTEST_MAIN(TestMainWiring)
#include "test_mainwiring.moc"
