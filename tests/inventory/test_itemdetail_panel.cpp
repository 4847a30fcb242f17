#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "grids/GridEX.h"
#include "inventory/frmItemDetail.h"
#include "inventory/frmNewItem.h"
#include "tests/support/TestSupport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTabBar>
#include <QTableView>
#include <QTest>

namespace {

QString one(const QString& sql) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(sql);
    QStringList cells;
    for (; !rs.Eof(); rs.MoveNext())
        for (int i = 0; i < rs.FieldCount(); ++i)
            cells << rs.Fields(i).Text();
    return cells.join(QLatin1Char('|'));
}

void fill() {
    ExecSql("INSERT INTO tblSupAddresses (AddID, CoName, Add1, PCode, Tel1, ShortNm) VALUES "
            "(1, 'Zeta Parts', '1 High St', 'LS1 1AA', '0113 111', 'ZET')");
    ExecSql(
        "INSERT INTO tblSupAddresses (AddID, CoName, ShortNm) VALUES (2, 'Alpha Supply', 'ALP')");
    ExecSql("INSERT INTO tblSupAddresses (AddID, CoName, ShortNm) VALUES (3, 'Mid Metals', 'MID')");
    ExecSql(
        "INSERT INTO tblStockItems (ItemID, MasterPNo, ItemName, ItemDescription, Category, Assy, "
        "Location, Qty, Trigger, SellAt, AllowDiscount, AllocQty, OnOrderQty, BuyNow) VALUES "
        "(7, 'P-7', '10k', 'Resistor pack', 'RES', -1, 'BIN 4', 12.5, 3, 0.125, 1, 0, 0, 0)");
    ExecSql(
        "INSERT INTO tblStockItems (ItemID, MasterPNo, Category, Qty) VALUES (8, 'P-8', 'CAP', 1)");
    ExecSql("INSERT INTO tblItemSupplier VALUES (7, 1, 'Z-77', 100, 0.05, 0)");
    ExecSql("INSERT INTO tblItemSupplier VALUES (7, 2, 'A-77', 50, 0.0425, 1)");
    ExecSql("INSERT INTO tblItemComments VALUES (7, 'old note')");
}

template <typename T> T* child(QWidget* w, const char* name) {
    T* c = w->findChild<T*>(QString::fromLatin1(name));
    if (!c)
        qFatal("no child %s", name);
    return c;
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

void grab(QWidget& w, const char* name) {
    const QString dir = qEnvironmentVariable("QS_GRAB_DIR");
    if (!dir.isEmpty())
        w.grab().save(dir + QLatin1Char('/') + QString::fromLatin1(name));
}

} // namespace

class TestItemDetailPanel : public QObject {
    Q_OBJECT
private slots:
    void showEditAndSave() {
        TestData data;
        fill();
        frmItemDetail p;
        p.resize(980, 620);
        p.show();
        QCOMPARE(p.objectName(), QStringLiteral("frmItemDetail"));
        p.FillCategoryList();
        QCOMPARE(p.txtItemCat->count(), 3); // AS, CAP, RES
        QCOMPARE(p.txtItemCat->itemText(0), QStringLiteral("AS"));
        QSignalSpy tips(&p, &frmItemDetail::HelpTipChanged);
        QVERIFY(p.ShowItemDetail(7));
        QCOMPARE(child<QLineEdit>(&p, "txtPNo")->text(), QStringLiteral("P-7"));
        QCOMPARE(child<QLineEdit>(&p, "txtDetail")->text(), QStringLiteral("10k"));
        QCOMPARE(child<QLineEdit>(&p, "txtDescription")->text(), QStringLiteral("Resistor pack"));
        QCOMPARE(child<QComboBox>(&p, "txtItemCat")->currentText(), QStringLiteral("RES"));
        QCOMPARE(child<QLineEdit>(&p, "txtCatNo")->text(), QStringLiteral("RES"));
        // The stored flag says assembly, the category does not: the box follows the category.
        QCOMPARE(child<QCheckBox>(&p, "Check1")->isChecked(), false);
        QCOMPARE(child<QLineEdit>(&p, "txtLocation")->text(), QStringLiteral("BIN 4"));
        QCOMPARE(child<QLineEdit>(&p, "txtItemQty")->text(), QStringLiteral("12.5"));
        QCOMPARE(child<QLineEdit>(&p, "txtMinQty")->text(), QStringLiteral("3"));
        QCOMPARE(child<QLineEdit>(&p, "txtSellPrice")->text(), QStringLiteral("0.125"));
        QCOMPARE(child<QCheckBox>(&p, "chkAllowDiscount")->isChecked(), true);
        QCOMPARE(child<QPlainTextEdit>(&p, "txtItemComments")->toPlainText(),
                 QStringLiteral("old note"));
        QCOMPARE(child<QLineEdit>(&p, "txtBuyPrice")->text(), QStringLiteral("0.0425"));
        QCOMPARE(tips.size(), 1);
        QVERIFY(tips.first().first().toString().startsWith("View/Edit an item's details."));

        QTabBar* tabs = child<QTabBar>(&p, "TabStrip1");
        QStringList captions;
        for (int i = 0; i < tabs->count(); ++i)
            captions << tabs->tabText(i);
        QCOMPARE(captions, (QStringList{"Comments", "Suppliers", "Used in", "Purchase Orders",
                                        "History", "Adjustments", "Links"}));
        QCOMPARE(p.frmSubPanels->currentWidget()->objectName(), QStringLiteral("frmItemComments"));
        QSignalSpy shown(&p, &frmItemDetail::SubPanelShown);
        tabs->setCurrentIndex(6);
        QCOMPARE(p.frmSubPanels->currentWidget()->objectName(), QStringLiteral("frmDetailLinks"));
        QCOMPARE(shown.size(), 1);
        for (const char* name :
             {"frmItemSupPrices", "frmUsedIn", "frmItemPOrders", "frmHistory", "frmInvAdjustments"})
            QVERIFY(child<QFrame>(&p, name));
        // A history panel built elsewhere takes the place of the empty one.
        auto* history = new QFrame;
        p.ReplaceSubPanel(4, history);
        tabs->setCurrentIndex(4);
        QCOMPARE(p.frmSubPanels->currentWidget(), history);
        QCOMPARE(p.frmHistory, history);
        QCOMPARE(p.frmSubPanels->count(), 7);

        // Entry rules of the boxes.
        p.txtItemQty->setText(QStringLiteral("20.0"));
        leave(p.txtItemQty);
        QCOMPARE(p.txtItemQty->text(), QStringLiteral("20"));
        p.txtMinQty->clear();
        leave(p.txtMinQty);
        QCOMPARE(p.txtMinQty->text(), QString()); // blank stays blank: no minimum
        p.txtSellPrice->setText(QStringLiteral("1.5"));
        leave(p.txtSellPrice);
        QCOMPARE(p.txtSellPrice->text(), QStringLiteral("1.50"));
        p.txtLocation->setFocus();
        QTest::keyClicks(p.txtLocation, "'");
        QVERIFY(p.txtLocation->text().endsWith(QLatin1Char('`')));
        p.txtLocation->setText(QStringLiteral("Shelf 9"));
        p.txtItemCat->lineEdit()->clear();
        QTest::keyClicks(p.txtItemCat->lineEdit(), "as-");
        QCOMPARE(p.txtItemCat->currentText(), QStringLiteral("AS"));
        QCOMPARE(p.Check1->isChecked(), true);
        p.txtItemComments->setPlainText(QStringLiteral("new note"));

        ScriptedBoxes boxes;
        gCurrentItemID = 7;
        QSignalSpy saved(&p, &frmItemDetail::ItemSaved);
        QVERIFY(p.SaveItemDetail());
        QCOMPARE(boxes.processingBars(), 1);
        QVERIFY(!p.pBar1->isVisible());
        QCOMPARE(one("SELECT MasterPNo, Category, Assy, Location, Qty, Trigger, SellAt, "
                     "AllowDiscount FROM tblStockItems WHERE ItemID=7"),
                 QStringLiteral("P-7|AS|-1|Shelf 9 |20|0|1.5|1"));
        QCOMPARE(one("SELECT Comment FROM tblItemComments WHERE StockID=7"),
                 QStringLiteral("new note"));
        QCOMPARE(saved.size(), 1);
        QCOMPARE(saved.first().at(0).toInt(), 7);
        const ItemListRow row = saved.first().at(1).value<ItemListRow>();
        QCOMPARE(row.Qty, QStringLiteral("20"));
        QCOMPARE(row.Loc, QStringLiteral("Shelf 9"));
        QCOMPARE(row.Vendor, QStringLiteral("ALP"));
        QCOMPARE(row.Sell, QStringLiteral("1.50"));
        QCOMPARE(row.Comments, QStringLiteral("new note"));
        grab(p, "itemdetail_comments.png");

        // A failing commit: its message, the file as it was, no repaint of the list.
        p.txtItemQty->setText(QStringLiteral("33"));
        boxes.answer(vbOK);
        Database::FailNextStatementContaining(QStringLiteral("COMMIT"));
        QVERIFY(!p.SaveItemDetail());
        QCOMPARE(boxes.shown().at(1).title, QStringLiteral("Error9"));
        QCOMPARE(boxes.processingBars(), 2);
        QCOMPARE(saved.size(), 1);
        QCOMPARE(one("SELECT Qty FROM tblStockItems WHERE ItemID=7"), QStringLiteral("20"));
        QCOMPARE(p.txtItemQty->text(), QStringLiteral("33"));

        // The help labels show their fixed texts.
        boxes.answer(vbOK);
        QTest::mouseClick(child<QLabel>(&p, "Label22"), Qt::LeftButton);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Minimum Qty ?"));
        QVERIFY(boxes.shown().last().prompt.startsWith("If you want to be reminded when the "
                                                       "quantity FALLS BELOW a minimum"));
        QVERIFY(boxes.allAnswersUsed());

        QSignalSpy missing(&p, &frmItemDetail::ItemNotFound);
        QVERIFY(!p.ShowItemDetail(99));
        QCOMPARE(missing.size(), 1);
    }

    void suppliersTab() {
        TestData data;
        fill();
        frmItemDetail p;
        p.resize(980, 620);
        p.show();
        QVERIFY(p.ShowItemDetail(7));
        p.TabStrip1->setCurrentIndex(1);
        QVERIFY(QTest::qWaitForWindowExposed(&p));
        GridEX* grid = child<GridEX>(&p, "gdxSupp");
        QCOMPARE(grid->ItemCount(), 2);
        QCOMPARE(grid->Columns().Count(), 7);
        QCOMPARE(grid->Columns()(4).Caption(), QStringLiteral("@Price"));
        QVERIFY(!grid->Columns()("SupID").Visible() && !grid->Columns()("Code").Visible());
        QVERIFY(!grid->Columns()("SupName").Editable());
        QCOMPARE(grid->CellValue(1, 1).toString(), QStringLiteral("Zeta Parts"));
        // Cell key rules: one decimal point in numbers, apostrophes turned in text.
        QCOMPARE(grid->Columns()("SupPrice").KeyFilter()(QStringLiteral("1.5"), '.'), 0);
        QCOMPARE(grid->Columns()("SupOrQty").KeyFilter()(QStringLiteral("1"), 'x'), 0);
        QCOMPARE(grid->Columns()("SupPNo").KeyFilter()(QString(), '\''), int('`'));
        grab(p, "itemdetail_suppliers.png");

        // Choices: every supplier by name; one already on the grid cannot be added again.
        QComboBox* all = child<QComboBox>(&p, "cboAllSups");
        QCOMPARE(all->count(), 3);
        QCOMPARE(all->itemText(0), QStringLiteral("Alpha Supply"));
        all->setCurrentIndex(0);
        emit all->activated(0);
        QVERIFY(!p.btnSupAdd->isEnabled());
        all->setCurrentIndex(1);
        emit all->activated(1);
        QVERIFY(p.btnSupAdd->isEnabled());
        QTest::mouseClick(p.btnSupAdd, Qt::LeftButton);
        QVERIFY(!p.btnSupAdd->isEnabled());
        QCOMPARE(grid->ItemCount(), 3);
        QCOMPARE(p.mSupData.last().SupName, QStringLiteral("Mid Metals"));
        QCOMPARE(p.mSupData.last().Code, QStringLiteral("MID"));
        QCOMPARE(one("SELECT count(*) FROM tblItemSupplier WHERE ItemID=7"), QStringLiteral("2"));

        // The row menu: address of the row, then removal with its notice.
        rightClickRow(p, 1);
        QVERIFY(p.frmItemSupMenu->isVisible());
        QVERIFY(p.txtItemSupRemove->isEnabled());
        grab(p, "itemdetail_supmenu.png");
        QTest::mouseClick(p.txtItemSupView, Qt::LeftButton);
        QVERIFY(p.frmItemSupInfo->isVisible());
        grab(p, "itemdetail_supinfo.png");
        QCOMPARE(p.txtItemSupInfo->toPlainText(),
                 QStringLiteral("Zeta Parts\n1 High St\n\n\n\nLS1 1AA\n\nTel: 0113 111\nFax: \n"));
        ScriptedBoxes boxes;
        for (int n = 0; n < 2; ++n) {
            rightClickRow(p, 1);
            boxes.answer(vbOK);
            QTest::mouseClick(p.txtItemSupRemove, Qt::LeftButton);
        }
        QCOMPARE(boxes.prompts(),
                 QStringList(2, "Changes you make are only saved to the database when you click "
                                "the main 'save' button"));
        QCOMPARE(grid->ItemCount(), 1);
        QCOMPARE(p.mSupRowCount, 1);
        QCOMPARE(p.mSupData.first().SupName, QStringLiteral("Mid Metals"));
        // The last row stays.
        rightClickRow(p, 1);
        QVERIFY(!p.txtItemSupRemove->isEnabled());
        QTest::mouseClick(p.txtItemSupMenuClose, Qt::LeftButton);
        QVERIFY(!p.frmItemSupMenu->isVisible());
        QCOMPARE(one("SELECT count(*) FROM tblItemSupplier WHERE ItemID=7"), QStringLiteral("2"));

        // Leaving the item without saving drops the edits.
        QVERIFY(p.ShowItemDetail(7));
        QCOMPARE(grid->ItemCount(), 2);
        QCOMPARE(p.mSupData.first().SupName, QStringLiteral("Zeta Parts"));

        // Saved, the one remaining row becomes the prime supplier.
        rightClickRow(p, 1);
        boxes.answer(vbOK);
        QTest::mouseClick(p.txtItemSupRemove, Qt::LeftButton);
        gCurrentItemID = 7;
        QVERIFY(p.SaveItemDetail());
        QCOMPARE(one("SELECT SupplierID, PrimeSupplier, PriceEach FROM tblItemSupplier "
                     "WHERE ItemID=7"),
                 QStringLiteral("2|1|0.0425"));
        QVERIFY(p.mSupData.first().SupPrime);
        QVERIFY(boxes.allAnswersUsed());
    }

    void newItem() {
        TestData data;
        fill();
        frmItemDetail p;
        p.resize(980, 620);
        p.show();
        QVERIFY(p.ShowItemDetail(7));
        p.PrepareNewItem();
        frmNewItem* panel = child<frmNewItem>(&p, "frmNewItem");
        QVERIFY(panel->isVisible());
        QVERIFY(!p.TabStrip1->isVisible());
        QCOMPARE(p.txtPNo->text(), QString());
        QCOMPARE(p.txtItemComments->toPlainText(), QString());
        QCOMPARE(p.txtItemCat->currentText(), QStringLiteral("NEW"));
        p.txtPNo->setText(QStringLiteral("N-1"));
        p.txtDescription->setText(QStringLiteral("Nut"));
        p.txtSellPrice->setText(QStringLiteral("0.5"));
        grab(p, "itemdetail_new.png");
        QSignalSpy created(&p, &frmItemDetail::ItemCreated);
        QTest::mouseClick(child<QPushButton>(&p, "btnItemMakeNew"), Qt::LeftButton);
        QCOMPARE(created.size(), 1);
        QCOMPARE(created.first().first().toInt(), 9);
        QCOMPARE(gCurrentItemID, 9);
        QVERIFY(!panel->isVisible());
        QCOMPARE(p.txtLocation->text(), QStringLiteral("UNKNOWN"));
        QCOMPARE(p.txtSellPrice->text(), QStringLiteral("0.50"));
        QCOMPARE(one("SELECT MasterPNo, ItemDescription, Category, Location, SellAt FROM "
                     "tblStockItems WHERE ItemID=9"),
                 QStringLiteral("N-1|Nut|NEW|UNKNOWN|0.5"));
        // The main window then selects the Detail tab, which shows the new item.
        p.FillCategoryList();
        QVERIFY(p.ShowItemDetail(9));
        QCOMPARE(p.txtItemCat->currentText(), QStringLiteral("NEW"));
        QCOMPARE(p.gdxSupp->CellValue(1, 1).toString(), QStringLiteral("No Supplier"));
        QVERIFY(p.TabStrip1->isVisible());
    }
};

QTEST_MAIN(TestItemDetailPanel)
#include "test_itemdetail_panel.moc"
