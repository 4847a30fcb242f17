// The main window: the button bar, the tool strip, the tabs and one content panel at a time, with
// the inventory list grid on its own panel.
#pragma once

#include "contacts/frmContacts.h"
#include "inventory/InventoryList.h"
#include "inventory/frmItemDetail.h"
#include "inventory/frmNewItem.h"

#include <QList>
#include <QMainWindow>
#include <QPair>
#include <QVector>

class GridEX;
class QAction;
class QCheckBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabBar;
class QToolBox;
class QToolButton;
class frmBubbleMenu1;
class frmCommentInfo;
class frmDetailLinks;
class frmGlobalLinks;
class frmInvAdjustments;
class frmItemPOrders;
class frmUsedIn;
class ItemHistoryPanel;

class FormMain : public QMainWindow {
    Q_OBJECT
public:
    explicit FormMain(QWidget* parent = nullptr);

    void Form_Load();
    // The company fields from tblHome: at load, and again when the utilities window closes.
    void ShowHomeDetails();
    // Hides every content panel.
    void HideContentPanels();
    void buttons_ButtonClick(int index);

    // A bar item was chosen: `group` is the caption of its group, `key` the item's key.
    void ButtonBar1_ButtonClick(const QString& group, const QString& key);
    // Another group of the bar was opened.
    void ButtonBar1_GroupChange();
    void TabStrip2_Click();

    // --- the inventory list ---
    // Loads the item-level view of mUBViewMode (modes 0 and 2 to 7); ignored while a load runs.
    void LoadUBView();
    // The first-stage lists of "By Supplier" and "By Category".
    void LoadUBSupplierList();
    void LoadUBCategoryList();
    void cmdUB_Go_Click();
    void cmdUB_Clear_Click();
    // A row of the list grid was selected (grid row from 1).
    void gdxUBView_SelectionChange(int row);
    // Writes values (by column key) into the list row of an item, by the same rule as a user
    // edit, and repaints it; the list is not reloaded. False when no row shows the item or the
    // values were refused (the user has been told).
    bool UpdateUBViewRow(qint32 itemID, const QList<QPair<QString, QString>>& cells);
    // The context menu of the list at a point of frmUnboundView, for a record of mUBData.
    void ShowBubbleMenu(const QPoint& at, int record);
    void lblBubbleMenu1_Click(int index);

    // Sets the tip text of the arriving screen and shows the tip panel when tips are on.
    void SetHelpTip(const QString& text);
    QString UnboundViewCaption() const;
    // Shows or hides an entry of the tool strip (through its action, as a tool bar needs).
    void SetButtonVisible(int index, bool visible);

    ~FormMain() override;

    QToolBox* ButtonBar1 = nullptr;
    QList<QToolButton*> buttons; // buttons_0 .. buttons_7
    QTabBar* TabStrip2 = nullptr;
    QLineEdit* txtCoName = nullptr;
    QList<QLineEdit*> txtCoAddress; // txtCoAddress_0 .. txtCoAddress_7
    QFrame* Frame1 = nullptr;       // the content area
    ::frmContacts* frmContacts = nullptr;
    ::frmNewItem* frmNewItem = nullptr; // the new-item panel, inside frmItemDetail
    ::frmItemDetail* frmItemDetail = nullptr;
    ItemHistoryPanel* HistoryPanel = nullptr;        // objectName frmHistory, in frmItemDetail
    ::frmInvAdjustments* AdjustmentsPanel = nullptr; // objectName frmInvAdjustments
    ::frmUsedIn* UsedInPanel = nullptr;              // objectName frmUsedIn, in frmItemDetail
    ::frmItemPOrders* ItemPOrdersPanel = nullptr;    // objectName frmItemPOrders
    ::frmDetailLinks* DetailLinksPanel = nullptr;    // objectName frmDetailLinks
    ::frmGlobalLinks* GlobalLinksPanel = nullptr;    // frmGlobalLinks below, as its own class
    QFrame* frmViewCustOrders = nullptr;
    QFrame* frmGlobalLinks = nullptr;
    QGroupBox* frmUnboundView = nullptr; // its title is the caption of the list

    // Help tips
    QCheckBox* chkHelpTips = nullptr;
    QFrame* frmHelpTip = nullptr;
    QLabel* lblHelpTip = nullptr;

    // The list and its filter strip
    QFrame* frmUBViewSearch = nullptr;
    QLineEdit* txtUB_PNo = nullptr;
    QLineEdit* txtub_val = nullptr;
    QLineEdit* txtUB_Desc = nullptr;
    QLineEdit* txtUB_Cat = nullptr;
    QPushButton* cmdUB_Go = nullptr;
    QPushButton* cmdUB_Clear = nullptr;
    GridEX* gdxUBView = nullptr;
    frmBubbleMenu1* BubbleMenu = nullptr;  // objectName frmBubbleMenu1
    frmCommentInfo* CommentInfo = nullptr; // objectName frmCommentInfo

    // State of the list
    quint8 mUBViewMode = UBMode::AllItems;
    qint32 mUBSupplierID = 0;
    QString mUBSupplierName;
    QString mUBCategory;
    UBArray mUBData;
    int mUBRowCount = 0;
    bool mUBLoading = false;
    bool mUBFilterHold = false;  // filter boxes being set from a selected row
    QString mActiveGroupCaption; // caption of the group of the last chosen bar item
    // The grid that print and export work on, set by each panel as it shows: 1 gdxUBView,
    // 2 gdxContact1, 3 gdxSupp, 4 gdxUsedIn, 5 gdxItemPOrders, 6 gdxItemHistory,
    // 7 gdxCustOrdersList; 0 none.
    int mCurrentGrid = 0;
    // The grid of mCurrentGrid, or nullptr when that grid is not on screen.
    GridEX* CurrentGrid() const;

    // --- windows and panels that plug in here ---
    // Each is called after the bar's or the strip's own steps (and guards) have run. Where the
    // window is not part of the program yet, the slot opens nothing.
    virtual void ShowNewItemPanel();                  // NewItem: frmNewItem
    virtual void OpenCustOrder();                     // POS: frmCustOrder, gCustOrderMode 1
    virtual void ShowCustOrderList();                 // CustOrEdit (mode 2), ViewInvoice (4)
    virtual void OpenBasket();                        // PchPending: basket
    virtual void OpenORViewer();                      // PchsViewOR: ORViewer
    virtual void OpenGoodsIn();                       // PchsGin: frmGoodsIn
    virtual void OpenNewContact();                    // New: frmEditContact, a new contact
    virtual void ShowContactList(const QString& key); // Customers, Suppliers, Misc, Locations
    virtual void OpenReporterMenu(int group);         // REP1..REP4: frmReporterMenu
    virtual void ShowGlobalLinks();                   // buttons_6: frmGlobalLinks
    virtual void ShowItemDetail(qint32 itemID);       // the Detail tab: frmItemDetail
    virtual void RefillItemCatList();                 // the Detail tab: the txtItemCat list
    virtual void ClearItemCat();                      // a bar item: txtItemCat's text
    virtual void ResetItemDetailTabs();               // TabStrip1 to its first tab, sub-panels off
    virtual void SetContactsEditable(bool editable);  // gdxContact1's edit mode
    virtual void DeleteItem();                        // buttons_2 after the inventory guard
    virtual void SaveItem();                          // buttons_4 after the inventory guard
    virtual void ShowPartsList(qint32 itemID);        // context menu entry 2
    virtual void ShowPendingOrders(qint32 itemID, const QString& partNo); // entry 3
    virtual void OpenAdjustments(int record); // entry 5, the inventory guard first
    virtual void OpenUtilities();             // buttons_7 after the utilities guard
    virtual void OpenHelpManual();            // buttons_1

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildButtonBar();
    void BuildListPanel();
    void RemoveUnofferedBarItems();
    void LayoutContentPanels();
    void ApplyColumns(const QList<UBColumn>& columns, bool groupBox);
    // A first stage (suppliers or categories and their item counts) in the list.
    void LoadUBFirstStage(UBArray (*load)(), const QList<UBColumn>& columns, bool showWhenEmpty);
    void ShowUBData(); // the item count cycle, with the stored widths
    void BuildItemDetailPanels();
    void ItemDetailSubPanelShown(int index);
    void ApplyItemListRow(qint32 itemID, const ItemListRow& row);
    void SetUnboundViewCaption(const QString& caption);
    void gdxUBView_MouseUp(Qt::MouseButton button, int xTwips, int yTwips);
    QString UBCell(int record, const QString& key) const;

    QList<QAction*> mButtonActions; // the tool strip's action of each entry of `buttons`
    int mBubbleRecord = 0;
};
