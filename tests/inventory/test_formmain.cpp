#include "foundation/Globals.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "inventory/frmBubbleMenu1.h"
#include "inventory/frmCommentInfo.h"
#include "tests/inventory/InventoryFixture.h"
#include "tests/support/TestSupport.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolBox>
#include <QToolButton>

namespace {
// The main window with every slot for a window built elsewhere recording its call.
class RecordingFormMain : public FormMain {
public:
    QStringList calls;
    void ShowNewItemPanel() override { calls << "ShowNewItemPanel"; }
    void OpenCustOrder() override { calls << "OpenCustOrder"; }
    void ShowCustOrderList() override { calls << "ShowCustOrderList"; }
    void OpenBasket() override { calls << "OpenBasket"; }
    void OpenORViewer() override { calls << "OpenORViewer"; }
    void OpenGoodsIn() override { calls << "OpenGoodsIn"; }
    void OpenNewContact() override { calls << "OpenNewContact"; }
    void ShowContactList(const QString& key) override { calls << "ShowContactList:" + key; }
    void OpenReporterMenu(int group) override {
        calls << QString("OpenReporterMenu:%1").arg(group);
    }
    void ShowGlobalLinks() override { calls << "ShowGlobalLinks"; }
    void ShowItemDetail(qint32 id) override { calls << QString("ShowItemDetail:%1").arg(id); }
    void DeleteItem() override { calls << "DeleteItem"; }
    void SaveItem() override { calls << "SaveItem"; }
    void ShowPendingOrders(qint32 id, const QString& pno) override {
        calls << QString("ShowPendingOrders:%1:%2").arg(id).arg(pno);
    }
    void OpenUtilities() override { calls << "OpenUtilities"; }
    // Keep the ones that only tidy up out of the record.
    void SetContactsEditable(bool on) override {
        if (on)
            calls << "ContactsEditable";
    }
};

QToolButton* barItem(FormMain& w, const char* key) {
    return w.ButtonBar1->findChild<QToolButton*>(QLatin1String(key));
}
void choose(FormMain& w, const char* key) {
    QToolButton* b = barItem(w, key);
    QVERIFY2(b, key);
    b->click();
}
bool shown(FormMain& w, int entry) {
    return w.buttons[entry]->isVisibleTo(&w);
}
// The grid row showing a part number; 0 when none does.
int rowOfPNo(FormMain& w, const QString& pno) {
    for (int r = 1; r <= w.gdxUBView->RowCount(); ++r)
        if (w.gdxUBView->CellValue(r, UBItemColumn("PNo")).toString() == pno)
            return r;
    return 0;
}
QPoint cellCentre(FormMain& w, int row) {
    QTableView* t = w.gdxUBView->TableView();
    const int col = UBItemColumn("PNo") - 1;
    return t->visualRect(t->model()->index(row - 1, col)).center();
}
} // namespace

class TestFormMain : public QObject {
    Q_OBJECT
private slots:
    void init() {
        mData = std::make_unique<TestData>();
        QVERIFY(mData->ok());
        FillInventoryFixture();
        mWin = std::make_unique<RecordingFormMain>();
        mWin->Form_Load();
        mWin->show();
        QVERIFY(QTest::qWaitForWindowExposed(mWin.get()));
    }
    void cleanup() {
        mWin.reset();
        mData.reset();
    }

    void barOffersOnlyWhatTheProgramDoes() {
        FormMain& w = *mWin;
        QStringList groups;
        for (int i = 0; i < w.ButtonBar1->count(); ++i)
            groups << w.ButtonBar1->itemText(i);
        QCOMPARE(groups, QStringList({"Inventory", "Customer Orders", "Shortages", "Purchasing",
                                      "Addresses", "Reports"}));
        for (const char* gone : {"ByPNo", "NewWO", "ViewWO", "AllocDetail", "AllocShort"})
            QVERIFY2(!barItem(w, gone), gone);
        QCOMPARE(barItem(w, "AllBelow")->text(), QStringLiteral("All Below Minimum"));
        QVERIFY(!shown(w, 2) && !shown(w, 4));
        QVERIFY(shown(w, 3) && shown(w, 7));
    }

    void everyKeyDispatches() {
        RecordingFormMain& w = *mWin;
        // Key, the call it makes, the active group it sets (Reports leaves it alone).
        const struct {
            const char* key;
            const char* call;
            int group;
        } cases[] = {{"NewItem", "ShowNewItemPanel", 1},
                     {"POS", "OpenCustOrder", 7},
                     {"CustOrEdit", "ShowCustOrderList", 7},
                     {"ViewInvoice", "ShowCustOrderList", 7},
                     {"PchPending", "OpenBasket", 4},
                     {"PchsViewOR", "OpenORViewer", 4},
                     {"PchsGin", "OpenGoodsIn", 4},
                     {"New", "OpenNewContact", 2},
                     {"Customers", "ShowContactList:Customers", 2},
                     {"Suppliers", "ShowContactList:Suppliers", 2},
                     {"Misc", "ShowContactList:Misc", 2},
                     {"REP1", "OpenReporterMenu:1", 99},
                     {"REP2", "OpenReporterMenu:2", 99},
                     {"REP4", "OpenReporterMenu:4", 99}};
        ScriptedBoxes boxes;
        for (const auto& c : cases) {
            w.calls.clear();
            gActiveGroup = 99;
            choose(w, c.key);
            QStringList expected = {QLatin1String(c.call)};
            if (c.group == 2)
                expected.prepend("ContactsEditable");
            QCOMPARE(w.calls, expected);
            QCOMPARE(int(gActiveGroup), c.group);
            QCOMPARE(w.TabStrip2->isVisibleTo(&w), c.group == 1);
            QVERIFY(w.Frame1->isVisibleTo(&w));
        }
        for (const auto& [key, mode] :
             {std::pair{"POS", 1}, {"CustOrEdit", 2}, {"ViewInvoice", 4}}) {
            choose(w, key);
            QCOMPARE(int(gCustOrderMode), mode);
        }

        // Keys no bar item carries any more still dispatch.
        w.calls.clear();
        w.ButtonBar1_ButtonClick("Addresses", "Locations");
        w.ButtonBar1_ButtonClick("Reports", "REP3");
        w.ButtonBar1_ButtonClick("Works Orders", "NewWO");
        QCOMPARE(int(gActiveGroup), 10);
        QCOMPARE(w.calls, QStringList({"ContactsEditable", "ShowContactList:Locations",
                                       "OpenReporterMenu:3"}));
        QVERIFY(boxes.shown().isEmpty());

        // Unknown groups and keys say so and do nothing.
        boxes.answer(vbOK);
        boxes.answer(vbOK);
        w.calls.clear();
        w.ButtonBar1_ButtonClick("Stock", "UB_All");
        w.ButtonBar1_ButtonClick("Inventory", "Nothing");
        QCOMPARE(boxes.prompts(), QStringList({
                                      "Unknown buttongroup was selected. nothing was done",
                                      "Unexpected error. Unknown menu button was used. Nothing "
                                      "was done.",
                                  }));
        QVERIFY(w.calls.isEmpty());
        QCOMPARE(w.UnboundViewCaption(), QString());
    }

    void inventoryKeysLoadTheirViews() {
        RecordingFormMain& w = *mWin;
        choose(w, "UB_All");
        QCOMPARE(w.UnboundViewCaption(), QStringLiteral("View All Stock Items (18 Items)"));
        QCOMPARE(w.gdxUBView->ItemCount(), 18);
        QCOMPARE(int(gActiveGroup), 1);
        w.ButtonBar1_ButtonClick("Parts-Lists", "ByPNo");
        QCOMPARE(w.UnboundViewCaption(),
                 QStringLiteral("View Assemblies by Part Number (2 Items)"));
        QCOMPARE(w.txtUB_Cat->text(), QStringLiteral("AS"));

        // First stages, then a drill-down by selecting a row.
        choose(w, "UB_BySup");
        QCOMPARE(w.gdxUBView->Columns().Count(), 4);
        QVERIFY(!w.gdxUBView->GroupByBoxVisible());
        w.gdxUBView->SetRow(3);
        QTRY_COMPARE(w.UnboundViewCaption(),
                     QStringLiteral("View By Supplier - [Bolt Brothers] (2 Items)"));
        QCOMPARE(w.gdxUBView->Columns().Count(), 18);
        QVERIFY(w.gdxUBView->GroupByBoxVisible());
        choose(w, "UB_ByCat");
        w.gdxUBView->SetRow(9);
        QTRY_COMPARE(w.UnboundViewCaption(), QStringLiteral("View By Category - [JCK] (3 Items)"));
        QCOMPARE(w.txtUB_Cat->text(), QStringLiteral("JCK"));
    }

    void guardsStandInFrontOfTheirWindows() {
        RecordingFormMain& w = *mWin;
        ScriptedBoxes boxes;
        gCanPurchasing = gCanInventory = gCanContacts = gCanUtilities = false;
        for (int i = 0; i < 5; ++i)
            boxes.answer(vbOK);
        choose(w, "PchPending");
        choose(w, "NewItem");
        choose(w, "New");
        w.buttons[7]->click();
        w.buttons_ButtonClick(4); // save, hidden on the list tab
        QCOMPARE(boxes.prompts(),
                 QStringList({"You do not have permission to add or make changes to "
                              "vendor/supplier purchase orders",
                              "You do not have permission to add or make changes to inventory",
                              "You do not have permission to add or make changes to contact/"
                              "address details",
                              "You do not have permission to access system utilities",
                              "You do not have permission to add or make changes to inventory"}));
        for (const ShownBox& b : boxes.shown())
            QCOMPARE(b.title, QStringLiteral("Access Restricted"));
        QCOMPARE(w.calls, QStringList({"ContactsEditable"}));
    }

    void toolStripFollowsTheTabs() {
        RecordingFormMain& w = *mWin;
        choose(w, "UB_All");
        const int row = rowOfPNo(w, "C300");
        w.gdxUBView->SetRow(row);
        QCOMPARE(gCurrentItemID, 3);
        QCOMPARE(w.txtUB_PNo->text(), QStringLiteral("C300"));
        QCOMPARE(w.txtUB_Desc->text(), QStringLiteral("Connector"));
        QCOMPARE(w.txtUB_Cat->text(), QStringLiteral("CON"));
        w.calls.clear();
        w.TabStrip2->setCurrentIndex(1);
        QTRY_VERIFY(shown(w, 2) && shown(w, 4));
        QCOMPARE(w.calls, QStringList({"ShowItemDetail:3"}));
        w.buttons[2]->click();
        w.buttons[4]->click();
        w.buttons[6]->click();
        w.buttons[7]->click();
        w.buttons[3]->click(); // print and export: the lead wires them to the print panel
        w.buttons[5]->click();
        QCOMPARE(w.calls, QStringList({"ShowItemDetail:3", "DeleteItem", "SaveItem",
                                       "ShowGlobalLinks", "OpenUtilities"}));
        w.TabStrip2->setCurrentIndex(0);
        QTRY_VERIFY(!shown(w, 2) && !shown(w, 4));
        w.TabStrip2->setCurrentIndex(1);
        QTRY_VERIFY(shown(w, 2) && shown(w, 4));
        choose(w, "UB_All"); // a bar item returns to the list
        QCOMPARE(w.TabStrip2->currentIndex(), 0);
        QTRY_VERIFY(!shown(w, 2) && !shown(w, 4));

        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        w.buttons[1]->click(); // no manual beside the program
        QCOMPARE(boxes.prompts().size(), 1);
        QVERIFY(boxes.prompts()[0].startsWith(" You haven't installed the user manual"));
    }

    void filtersAndTheirBoxes() {
        RecordingFormMain& w = *mWin;
        choose(w, "UB_All");
        QTest::keyClicks(w.txtUB_PNo, "X_");
        QTest::keyClick(w.txtUB_PNo, Qt::Key_Return);
        QCOMPARE(w.gdxUBView->ItemCount(), 1);
        QCOMPARE(w.gdxUBView->CellValue(1, UBItemColumn("PNo")).toString(), QStringLiteral("X_1"));
        w.txtub_val->setText("anything");
        w.cmdUB_Clear->click();
        for (QLineEdit* e : {w.txtUB_PNo, w.txtub_val, w.txtUB_Desc, w.txtUB_Cat})
            QVERIFY(e->text().isEmpty());
        QTest::keyClicks(w.txtUB_Desc, "gas");
        w.cmdUB_Go->click();
        QCOMPARE(w.gdxUBView->ItemCount(), 1);
        // A bar item clears the filters before its view, so none leaks into it.
        QTest::keyClicks(w.txtUB_Cat, "J");
        choose(w, "UB_All");
        QVERIFY(w.txtUB_Desc->text().isEmpty() && w.txtUB_Cat->text().isEmpty());
        QCOMPARE(w.gdxUBView->ItemCount(), 18);
    }

    void aSecondLoadWhileOneRunsIsIgnored() {
        RecordingFormMain& w = *mWin;
        // While the first load yields to the window, a second one is asked for with a filter
        // that matches nothing.
        bool asked = false;
        QTimer::singleShot(0, &w, [&] {
            asked = true;
            w.txtUB_PNo->setText("NOTHING");
            w.cmdUB_Go->click();
        });
        choose(w, "UB_All");
        QVERIFY(asked);
        QCOMPARE(w.gdxUBView->ItemCount(), 18);
        QCOMPARE(w.UnboundViewCaption(), QStringLiteral("View All Stock Items (18 Items)"));
        QVERIFY(!w.mUBLoading);
        w.cmdUB_Go->click(); // the flag was cleared: the next load runs
        QCOMPARE(w.gdxUBView->ItemCount(), 0);
        QCOMPARE(w.UnboundViewCaption(), QStringLiteral("View All Stock Items (0 Items)"));
    }

    void contextMenuAndComments() {
        RecordingFormMain& w = *mWin;
        ScriptedBoxes boxes;
        choose(w, "UB_All");
        auto* menu = w.findChild<frmBubbleMenu1*>("frmBubbleMenu1");
        auto* info = w.findChild<frmCommentInfo*>("frmCommentInfo");
        // A right click on the row of a part number, then a click on the menu's entry.
        const auto menuOn = [&](const QString& pno, int entry) {
            QTest::mouseClick(w.gdxUBView->TableView()->viewport(), Qt::RightButton, {},
                              cellCentre(w, rowOfPNo(w, pno)));
            QVERIFY(menu->isVisible());
            QVERIFY(w.frmUnboundView->rect().contains(menu->geometry()));
            QVERIFY(!menu->lblBubbleMenu1[2]->isVisibleTo(menu)); // parts lists: not this group
            if (entry > 0)
                QTest::mouseClick(menu->lblBubbleMenu1[entry], Qt::LeftButton);
        };
        menuOn("C300", 4);
        QCOMPARE(gCurrentItemID, 3);
        QVERIFY(!menu->isVisible());
        QVERIFY(info->isVisible());
        QCOMPARE(info->txtCommentView->toPlainText(),
                 QStringLiteral("This first line is definitely longer than twenty-five "
                                "characters\nand a second line follows"));
        QCOMPARE(info->lblCommentReadOnly->text(),
                 QStringLiteral("Read Only - To edit comments, click the 'Detail' tab"));
        info->cmdCommentInfoClose->click();
        menuOn("A100", 4);
        QCOMPARE(info->txtCommentView->toPlainText(),
                 QStringLiteral("\nThis item has no comments"));
        menuOn("A100", 3);
        QCOMPARE(w.calls.last(), QStringLiteral("ShowPendingOrders:1:A100"));
        // Adjustments without the inventory right are refused.
        gCanInventory = false;
        boxes.answer(vbOK);
        menuOn("A100", 5);
        QCOMPARE(boxes.prompts(), QStringList({"You do not have permission to add or make "
                                               "changes to inventory"}));
        gCanInventory = true;
        menuOn("D400", 0);
        menu->cmdBubbleMenu1Close->click();
        QVERIFY(!menu->isVisible());
        menuOn("D400", 1);
        QCOMPARE(w.TabStrip2->currentIndex(), 1);
        QCOMPARE(w.calls.last(), QStringLiteral("ShowItemDetail:4"));

        // Outside the item groups the list has no menu.
        choose(w, "UB_All");
        w.ButtonBar1_ButtonClick("Customer Orders", "CustOrEdit");
        QTest::mouseClick(w.gdxUBView->TableView()->viewport(), Qt::RightButton, {},
                          cellCentre(w, 1));
        QVERIFY(!menu->isVisible());
    }

    void rowsAreWrittenBackWithoutReloading() {
        RecordingFormMain& w = *mWin;
        ScriptedBoxes boxes;
        choose(w, "UB_All");
        QVERIFY(w.UpdateUBViewRow(1, {{"Qty", "12.5"}, {"Desc", "Resistor 1k"}}));
        const int row = rowOfPNo(w, "A100");
        QCOMPARE(w.gdxUBView->CellValue(row, UBItemColumn("Qty")).toString(),
                 QStringLiteral("12.5"));
        QCOMPARE(w.gdxUBView->CellValue(row, UBItemColumn("Desc")).toString(),
                 QStringLiteral("Resistor 1k"));
        boxes.answer(vbOK);
        QVERIFY(!w.UpdateUBViewRow(1, {{"Sell", "$3"}}));
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown()[0].title, QStringLiteral("DataAccess error"));
        QVERIFY(boxes.shown()[0].prompt.contains("decimal point must be a FullStop"));
        QCOMPARE(w.gdxUBView->CellValue(row, UBItemColumn("Sell")).toString(),
                 QStringLiteral("0.10"));
        QVERIFY(!w.UpdateUBViewRow(999, {{"Qty", "1"}}));
    }

    void helpTipsAndLayout() {
        RecordingFormMain& w = *mWin;
        w.chkHelpTips->setChecked(true);
        QVERIFY(w.frmHelpTip->isVisible());
        choose(w, "UB_All");
        QVERIFY(w.frmHelpTip->isVisible());
        QCOMPARE(
            w.lblHelpTip->text(),
            QStringLiteral("View All Stock Items\n\nRIGHT Click any row to see a context menu"));
        w.ButtonBar1->setCurrentIndex(2); // another group
        QVERIFY(!w.frmHelpTip->isVisible());
        QVERIFY(!w.Frame1->isVisible());
        QVERIFY(!w.TabStrip2->isVisible());
        choose(w, "AllBelow");
        QCOMPARE(int(gActiveGroup), 8);
        QCOMPARE(w.UnboundViewCaption(),
                 QStringLiteral("View All Stock Items / Shortages (2 Items)"));
        QVERIFY(w.Frame1->isVisible());
        QVERIFY(w.lblHelpTip->text().startsWith("This grid shows 'all' inventory items"));
    }

private:
    std::unique_ptr<TestData> mData;
    std::unique_ptr<RecordingFormMain> mWin;
};

QTEST_MAIN(TestFormMain)
#include "test_formmain.moc"
