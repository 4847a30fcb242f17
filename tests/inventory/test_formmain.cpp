// The main window with its panels put together: the bar and the tool strip, the list with its
// filters and menu, the item detail with its history, adjustment, "Used in" and "Links" panels,
// the common links, and print and export on whichever grid is on show.
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "inventory/Links.h"
#include "inventory/LinksPanel.h"
#include "inventory/frmBubbleMenu1.h"
#include "inventory/frmCommentInfo.h"
#include "inventory/frmInvAdjustments.h"
#include "inventory/frmUsedIn.h"
#include "tests/inventory/InventoryFixture.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolBox>
#include <QToolButton>

namespace {
// The main window recording every call to a window built elsewhere; the contact list, which the
// main window hosts, also runs for real.
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
    void OpenReporterMenu(int group) override {
        calls << QString("OpenReporterMenu:%1").arg(group);
    }
    void DeleteItem() override { calls << "DeleteItem"; }
    void ShowPendingOrders(qint32 id, const QString& pno) override {
        calls << QString("ShowPendingOrders:%1:%2").arg(id).arg(pno);
    }
    void OpenUtilities() override { calls << "OpenUtilities"; }
    void ShowContactList(const QString& key) override {
        calls << "ShowContactList:" + key;
        FormMain::ShowContactList(key);
    }
    void SetContactsEditable(bool on) override {
        if (on) // the calls that only tidy up stay out of the record
            calls << "ContactsEditable";
        FormMain::SetContactsEditable(on);
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
QString listCell(FormMain& w, const QString& pno, const char* key) {
    return w.gdxUBView->CellValue(rowOfPNo(w, pno), UBItemColumn(QLatin1String(key))).toString();
}
QPoint cellCentre(FormMain& w, int row) {
    QTableView* t = w.gdxUBView->TableView();
    return t->visualRect(t->model()->index(row - 1, UBItemColumn("PNo") - 1)).center();
}

// Exports the grid on show through the tool strip into `path`; the lines of the file written.
QStringList exportShown(FormMain& w, const QString& path) {
    ScriptedBoxes boxes;
    boxes.answerFile(path);
    boxes.answer(vbOK);
    w.buttons_ButtonClick(5);
    QFile f(path);
    if (boxes.shown().last().title != QLatin1String("Saved") || !f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLocal8Bit(f.readAll()).split(QStringLiteral("\r\n"));
}

QStringList texts(const QListWidget* list) {
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->item(i)->text();
    return out;
}
void tick(QListWidget* list, int row) {
    list->item(row)->setCheckState(Qt::Checked);
}
template <class T> T* child(QObject* parent, const char* name) {
    T* found = parent->findChild<T*>(QLatin1String(name));
    if (!found)
        qFatal("no %s", name);
    return found;
}

// Files dragged from a file manager onto a list, as the window system delivers them.
void dropFiles(QListWidget* list, const QStringList& paths) {
    QMimeData mime;
    QList<QUrl> urls;
    for (const QString& p : paths)
        urls << QUrl::fromLocalFile(p);
    mime.setUrls(urls);
    const QPoint at = list->viewport()->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list->viewport(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(at), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list->viewport(), &drop);
    QVERIFY(drop.isAccepted());
    QCoreApplication::processEvents(); // the drop is handled once the drag is over
}

void detailOf(FormMain& w, int itemId, int subTab) {
    w.ButtonBar1_ButtonClick(QStringLiteral("Inventory"), QStringLiteral("UB_All"));
    gCurrentItemID = itemId;
    w.TabStrip2->setCurrentIndex(1);
    w.frmItemDetail->TabStrip1->setCurrentIndex(subTab);
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

    void everyKeyDispatches() {
        RecordingFormMain& w = *mWin;
        QStringList groups;
        for (int i = 0; i < w.ButtonBar1->count(); ++i)
            groups << w.ButtonBar1->itemText(i);
        QCOMPARE(groups, QStringList({"Inventory", "Customer Orders", "Shortages", "Purchasing",
                                      "Addresses", "Reports"}));
        for (const char* gone : {"ByPNo", "NewWO", "ViewWO", "AllocDetail", "AllocShort"})
            QVERIFY2(!barItem(w, gone), gone);
        QVERIFY(!shown(w, 2) && !shown(w, 4) && shown(w, 3) && shown(w, 7));

        // The call a key makes, the active group it sets (Reports leaves it alone: 99) and the
        // order window's mode (0: not set).
        struct Case {
            const char* key;
            const char* call;
            int group;
            int mode;
        };
        const Case cases[] = {{"NewItem", "ShowNewItemPanel", 1, 0},
                              {"POS", "OpenCustOrder", 7, 1},
                              {"CustOrEdit", "ShowCustOrderList", 7, 2},
                              {"ViewInvoice", "ShowCustOrderList", 7, 4},
                              {"PchPending", "OpenBasket", 4, 0},
                              {"PchsViewOR", "OpenORViewer", 4, 0},
                              {"PchsGin", "OpenGoodsIn", 4, 0},
                              {"New", "OpenNewContact", 2, 0},
                              {"Customers", "ShowContactList:Customers", 2, 0},
                              {"Suppliers", "ShowContactList:Suppliers", 2, 0},
                              {"Misc", "ShowContactList:Misc", 2, 0},
                              {"REP1", "OpenReporterMenu:1", 99, 0},
                              {"REP2", "OpenReporterMenu:2", 99, 0},
                              {"REP4", "OpenReporterMenu:4", 99, 0}};
        ScriptedBoxes boxes;
        for (const Case& c : cases) {
            w.calls.clear();
            gActiveGroup = 99;
            gCustOrderMode = 0;
            choose(w, c.key);
            const QString call = QString::fromLatin1(c.call);
            QCOMPARE(w.calls,
                     (c.group == 2 ? QStringList{"ContactsEditable", call} : QStringList{call}));
            QCOMPARE(int(gActiveGroup), c.group);
            QCOMPARE(w.TabStrip2->isVisibleTo(&w), c.group == 1);
            if (c.mode)
                QCOMPARE(int(gCustOrderMode), c.mode);
        }

        // Keys no bar item carries any more still dispatch.
        w.calls.clear();
        w.ButtonBar1_ButtonClick("Addresses", "Locations");
        w.ButtonBar1_ButtonClick("Reports", "REP3");
        w.ButtonBar1_ButtonClick("Works Orders", "NewWO");
        QCOMPARE(int(gActiveGroup), 10);
        QCOMPARE(w.calls, QStringList({"ContactsEditable", "ShowContactList:Locations",
                                       "OpenReporterMenu:3"}));

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
            QCOMPARE(b.title, "Access Restricted");
        QCOMPARE(w.calls, QStringList({"ContactsEditable"}));
    }

    void firstStagesDrillDown() {
        RecordingFormMain& w = *mWin;
        choose(w, "UB_BySup");
        w.gdxUBView->SetRow(3);
        QTRY_COMPARE(w.UnboundViewCaption(),
                     QStringLiteral("View By Supplier - [Bolt Brothers] (2 Items)"));
        choose(w, "UB_ByCat");
        w.gdxUBView->SetRow(9);
        QTRY_COMPARE(w.UnboundViewCaption(), QStringLiteral("View By Category - [JCK] (3 Items)"));
        QCOMPARE(w.txtUB_Cat->text(), "JCK");

        choose(w, "AllBelow");
        QCOMPARE(w.UnboundViewCaption(), "View All Stock Items / Shortages (2 Items)");
        QCOMPARE(int(gActiveGroup), 8);
    }

    void filtersAndTheirBoxes() {
        RecordingFormMain& w = *mWin;
        choose(w, "UB_All");
        w.txtUB_PNo->setFocus();
        QTest::keyClicks(QApplication::focusWidget(), "X_");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(w.gdxUBView->ItemCount(), 1);
        QCOMPARE(listCell(w, "X_1", "PNo"), "X_1");
        w.txtub_val->setText("anything");
        w.cmdUB_Clear->click();
        for (QLineEdit* e : {w.txtUB_PNo, w.txtub_val, w.txtUB_Desc, w.txtUB_Cat})
            QVERIFY(e->text().isEmpty());
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
        QCOMPARE(w.UnboundViewCaption(), "View All Stock Items (18 Items)");
        QVERIFY(!w.mUBLoading);
        w.cmdUB_Go->click(); // the flag was cleared: the next load runs
        QCOMPARE(w.UnboundViewCaption(), "View All Stock Items (0 Items)");
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
            QVERIFY(!menu->lblBubbleMenu1[2]->isVisibleTo(menu)); // parts lists: not this group
            if (entry > 0)
                QTest::mouseClick(menu->lblBubbleMenu1[entry], Qt::LeftButton);
        };
        menuOn("C300", 4);
        QVERIFY(!menu->isVisible() && info->isVisible());
        QCOMPARE(info->txtCommentView->toPlainText(),
                 "This first line is definitely longer than twenty-five "
                 "characters\nand a second line follows");
        QCOMPARE(info->lblCommentReadOnly->text(),
                 "Read Only - To edit comments, click the 'Detail' tab");
        info->cmdCommentInfoClose->click();
        menuOn("A100", 3);
        QCOMPARE(w.calls.last(), "ShowPendingOrders:1:A100");
        // Adjustments without the inventory right are refused.
        gCanInventory = false;
        boxes.answer(vbOK);
        menuOn("A100", 5);
        QCOMPARE(boxes.shown().size(), 1);
        gCanInventory = true;
        menuOn("D400", 1);
        QCOMPARE(w.TabStrip2->currentIndex(), 1);
        QCOMPARE(w.frmItemDetail->txtPNo->text(), "D400");

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
        QCOMPARE(listCell(w, "A100", "Qty") + '|' + listCell(w, "A100", "Desc"),
                 "12.5|Resistor 1k");
        // A refused edit copies none of its cells.
        boxes.answer(vbOK);
        QVERIFY(!w.UpdateUBViewRow(1, {{"Qty", "1"}, {"Sell", "$3"}}));
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown()[0].title, "DataAccess error");
        QVERIFY(boxes.shown()[0].prompt.startsWith(
            "The Database could not be updated. Maybe the data was invalid\nThe data must be "
            "numerical without any currency symbols and the decimal point must be a FullStop."));
        QCOMPARE(listCell(w, "A100", "Qty") + '|' + listCell(w, "A100", "Sell"), "12.5|0.10");
        QVERIFY(!w.UpdateUBViewRow(999, {{"Qty", "1"}}));
    }

    // A row chosen on the list is the Detail tab's item; the tool strip follows the tabs; a save
    // and an adjustment repaint the list row; export writes whichever grid is on show.
    void listDetailToolStripAndExport() {
        RecordingFormMain& w = *mWin;
        choose(w, "UB_All");
        w.gdxUBView->SetRow(rowOfPNo(w, "C300"));
        QCOMPARE(gCurrentItemID, 3);
        QCOMPARE(w.txtUB_PNo->text() + '|' + w.txtUB_Desc->text() + '|' + w.txtUB_Cat->text(),
                 "C300|Connector|CON");
        const QStringList lines = exportShown(w, mData->path(QStringLiteral("list.csv")));
        QVERIFY(lines.value(0).startsWith("Part No.,") && lines.value(2).startsWith("A100,"));
        QCOMPARE(lines.size(), 2 + 18 + 1); // the last line break ends the file

        w.TabStrip2->setCurrentIndex(1);
        QTRY_VERIFY(shown(w, 2) && shown(w, 4));
        QCOMPARE(w.frmItemDetail->txtPNo->text(), "C300");
        w.frmItemDetail->txtSellPrice->setText(QStringLiteral("0.25"));
        {
            ScriptedBoxes boxes;
            w.buttons[4]->click();
            QCOMPARE(boxes.processingBars(), 1);
        }
        QCOMPARE(SqlFirst("SELECT SellAt FROM tblStockItems WHERE ItemID = 3"), "0.25");
        QCOMPARE(listCell(w, "C300", "Sell"), "0.25");

        // An issue from the Adjustments tab moves the list row, the detail box and the history;
        // a save after it keeps the adjusted quantity.
        w.frmItemDetail->TabStrip1->setCurrentIndex(5);
        w.frmItemDetail->TabStrip1_Click(5);
        auto* adj = child<frmInvAdjustments>(&w, "frmInvAdjustments");
        child<QRadioButton>(adj, "optAdjustments_0")->setChecked(true);
        child<QLineEdit>(adj, "txtAdjustmentQty")->setText(QStringLiteral("2"));
        {
            ScriptedBoxes boxes;
            child<QPushButton>(adj, "btnInvAdjustOK")->click();
            w.buttons_ButtonClick(4);
        }
        QCOMPARE(SqlFirst("SELECT Qty FROM tblStockItems WHERE ItemID = 3"), "0.5");
        QCOMPARE(listCell(w, "C300", "Qty"), "0.5");
        QCOMPARE(w.frmItemDetail->txtItemQty->text(), "0.5");

        // With the history on show, export writes the history.
        w.frmItemDetail->TabStrip1->setCurrentIndex(4);
        w.frmItemDetail->TabStrip1_Click(4);
        const QStringList hist = exportShown(w, mData->path(QStringLiteral("history.csv")));
        QCOMPARE(hist.value(0), "Date,Type,Qty,EventRef,TRN,EventText,");
        QVERIFY(hist.value(2).contains(QStringLiteral(",ISSUE,-2,")));

        w.buttons[2]->click();
        w.buttons[7]->click();
        QCOMPARE(w.calls, QStringList({"DeleteItem", "OpenUtilities"}));
        choose(w, "UB_All"); // a bar item returns to the list
        QCOMPARE(w.TabStrip2->currentIndex(), 0);
        QTRY_VERIFY(!shown(w, 2) && !shown(w, 4));

        // The contact list takes over print and export.
        w.ButtonBar1_ButtonClick(QStringLiteral("Addresses"), QStringLiteral("Suppliers"));
        const QString sup = exportShown(w, mData->path("sup.csv")).join(QLatin1Char('\n'));
        QVERIFY(sup.contains(QStringLiteral("Bolt Brothers")) && !sup.contains("A100"));

        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        w.buttons[1]->click(); // no manual beside the program
        QCOMPARE(boxes.prompts().size(), 1);
        QVERIFY(boxes.prompts()[0].startsWith(" You haven't installed the user manual"));
    }

    void usedInTabListsAndExports() {
        FormMain& w = *mWin;
        // A100 (item 1) sits on two boards; a third parts list names a board that is gone.
        ExecSql("INSERT INTO tblUsedIn VALUES (9, 1, 2, 'R1,R2'), (10, 1, 0.25, 'R7'), "
                "(77, 1, 3, 'gone')");
        detailOf(w, 1, 2);
        auto* panel = child<frmUsedIn>(&w, "frmUsedIn");
        QVERIFY(panel->isVisible());
        QCOMPARE(w.mCurrentGrid, 4);
        const QStringList lines = exportShown(w, mData->path(QStringLiteral("usedin.csv")));
        QCOMPARE(lines.value(0), "QtyPer,MasterPNo,ItemName,Description,Ref/Position,");
        QCOMPARE(lines.mid(2),
                 QStringList({"2,H800,,Main board,R1.R2,", "0.25,H900,,Sub board,R7,", ""}));

        // A parts list written by another workstation shows when the tab is chosen again;
        // another item shows its own.
        ExecSql("INSERT INTO tblUsedIn VALUES (9, 1, 1, 'R9')");
        w.frmItemDetail->TabStrip1->setCurrentIndex(0);
        w.frmItemDetail->TabStrip1->setCurrentIndex(2);
        QCOMPARE(panel->gdxUsedIn->ItemCount(), 3);
        detailOf(w, 2, 2);
        QCOMPARE(panel->gdxUsedIn->ItemCount(), 0);
    }

    void itemLinksThroughTheControls() {
        FormMain& w = *mWin;
        ExecSql("INSERT INTO tblHyperLinks VALUES (3, '/docs/c300.pdf', 'Data sheet'), "
                "(4, '/docs/d400.pdf', 'Diode sheet')");
        QList<QUrl> opened;
        const LinkOpener previous = InstallLinkOpener([&opened](const QUrl& url) {
            opened << url;
            return false;
        });
        detailOf(w, 3, 6);
        auto* links = child<frmDetailLinks>(&w, "frmDetailLinks");
        auto* names = child<QListWidget>(links, "lstLinkName");
        auto* addresses = child<QListWidget>(links, "lstLinkAddress");
        QVERIFY(links->isVisible() && !addresses->isVisible());
        QCOMPARE(texts(names), QStringList({"Data sheet"}));

        ScriptedBoxes boxes;
        // A typed address with a description.
        QTest::keyClicks(child<QLineEdit>(links, "txtAddDetailLink"), "https://example.com/c300");
        boxes.answerInput(QStringLiteral("Maker page"));
        child<QPushButton>(links, "cmdAddDetailLink")->click();

        // Two files dropped on the list, after the question.
        const QString pdf = mData->path(QStringLiteral("wiring sheet.pdf"));
        const QString drawing = mData->path(QStringLiteral("outline.dxf"));
        boxes.answer(vbYes);
        dropFiles(names, {pdf, drawing});
        QCOMPARE(texts(names),
                 QStringList({"Data sheet", "Maker page", "wiring sheet.pdf", "outline.dxf"}));
        QCOMPARE(texts(addresses).mid(2), QStringList({pdf, drawing}));

        // A double click opens the hidden address of its row; the missing file says nothing.
        boxes.clear();
        const QPoint on = names->visualItemRect(names->item(2)).center();
        QTest::mouseClick(names->viewport(), Qt::LeftButton, {}, on);
        QTest::mouseDClick(names->viewport(), Qt::LeftButton, {}, on);
        QCOMPARE(opened, QList<QUrl>({QUrl::fromLocalFile(pdf)}));
        QCOMPARE(boxes.shown().size(), 0);

        // Rename the dropped file, then remove the two ticked entries in turn.
        tick(names, 2);
        boxes.answerInput(QStringLiteral("Wiring guide"));
        child<QPushButton>(links, "cmdEditDetailLink")->click();
        QCOMPARE(names->item(2)->checkState(), Qt::Unchecked); // the lists were rebuilt
        tick(names, 0);
        tick(names, 3);
        child<QPushButton>(links, "cmdRemoveDetailLink")->click();
        QCOMPARE(texts(names), QStringList({"Maker page", "Wiring guide"}));
        QCOMPARE(texts(addresses), QStringList({"https://example.com/c300", pdf}));
        QVERIFY(boxes.allAnswersUsed());
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblHyperLinks WHERE LinkStockID = 4"), "1");
        InstallLinkOpener(previous);
    }

    void commonLinksFromTheToolStrip() {
        FormMain& w = *mWin;
        ExecSql("INSERT INTO tblHyperLinks VALUES (0, 'https://example.com/terms', 'Terms'), "
                "(0, '/share/prices.xls', 'Price list'), (1, '/docs/a100.pdf', 'A100 sheet'), "
                "(0, 'https://example.com/about', 'about us')");
        w.ButtonBar1_ButtonClick(QStringLiteral("Inventory"), QStringLiteral("UB_All"));
        auto* panel = child<frmGlobalLinks>(&w, "frmGlobalLinks");
        QVERIFY(!panel->isVisible());
        w.buttons[6]->click();
        QVERIFY(panel->isVisible());
        auto* names = child<QListWidget>(panel, "lstGlobalLinkNames");
        QCOMPARE(texts(names), QStringList({"about us", "Price list", "Terms"}));
        QCOMPARE(w.mCurrentGrid, 0); // no grid on show: print and export do nothing

        // Without the right the ticked entries stay, and the guard speaks once.
        ScriptedBoxes boxes;
        tick(names, 0);
        tick(names, 1);
        gCanLinks = false;
        boxes.answer(vbOK);
        child<QPushButton>(panel, "cmdRemoveGlobalLink")->click();
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblHyperLinks"), "4");

        // Another workstation's link shows at the next opening; Close gives the list back.
        ExecSql("INSERT INTO tblHyperLinks VALUES (0, '/share/manual.pdf', 'Assembly manual')");
        w.buttons_ButtonClick(6);
        QCOMPARE(texts(names).value(1), "Assembly manual");
        child<QPushButton>(panel, "cmdGlobalLinksClose")->click();
        QVERIFY(!panel->isVisible());
        QCOMPARE(w.mCurrentGrid, 1);
    }

private:
    std::unique_ptr<TestData> mData;
    std::unique_ptr<RecordingFormMain> mWin;
};

QTEST_MAIN(TestFormMain)
#include "test_formmain.moc"
