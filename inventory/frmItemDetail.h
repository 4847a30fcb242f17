// The Detail panel of the main window: one stock item with its boxes, the tab strip of its
// sub-panels (comments, suppliers, parts lists, orders, history, adjustments, links), the
// progress bar of the save and the small panel for creating an item.
#pragma once

#include "inventory/ItemDetail.h"
#include "inventory/ItemSuppliers.h"

#include <QFrame>
#include <QList>
#include <QVector>

class GridEX;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QTabBar;
class frmNewItem;

class frmItemDetail : public QFrame {
    Q_OBJECT
public:
    explicit frmItemDetail(QWidget* parent = nullptr);

    // Loads the item and shows it on the first sub-panel; false (and ItemNotFound) when the item
    // does not exist, so that the main window returns to its list.
    bool ShowItemDetail(qint32 itemId);
    // Refills the list of txtItemCat ("AS" first).
    void FillCategoryList();
    // The "Create New Item" entry: every box cleared, the category "NEW", the new-item panel in
    // place of the sub-panels.
    void PrepareNewItem();
    // The Save entry of the tool strip (after the inventory guard): writes the shown item.
    bool SaveItemDetail();
    // The Delete entry of the tool strip (after the inventory guard): deletes gCurrentItemID.
    bool DeleteCurrentItem();
    // Shows the sub-panel of a tab of TabStrip1.
    void TabStrip1_Click(int index);
    // The sub-panels in the order of the tabs.
    QList<QFrame*> SubPanels() const;
    // Puts a panel built elsewhere (history, parts lists, orders, adjustments, links) in the place
    // of the empty one of a tab; the panel keeps its own objectName and the member points to it.
    void ReplaceSubPanel(int index, QFrame* panel);

    // Boxes of the item.
    QLineEdit* txtPNo;
    QLineEdit* txtDetail;
    QLineEdit* txtDescription;
    QComboBox* txtItemCat;
    QCheckBox* Check1;
    QLineEdit* txtCatNo;
    QLineEdit* txtLocation;
    QLineEdit* txtItemQty;
    QLineEdit* txtMinQty;
    QLineEdit* txtSellPrice;
    QCheckBox* chkAllowDiscount;
    QLabel* Label21; // help: category
    QLabel* Label22; // help: minimum quantity
    QLabel* Label23; // help: location
    QLabel* Label24; // help: allow discount

    // Sub-panels.
    QTabBar* TabStrip1;
    QStackedWidget* frmSubPanels;
    QFrame* frmItemComments;
    QFrame* frmItemSupPrices;
    QFrame* frmUsedIn;
    QFrame* frmItemPOrders;
    QFrame* frmHistory;
    QFrame* frmInvAdjustments;
    QFrame* frmDetailLinks;
    QPlainTextEdit* txtItemComments;

    // Suppliers tab.
    GridEX* gdxSupp;
    QLineEdit* txtBuyPrice;
    QComboBox* cboAllSups;
    QPushButton* btnSupAdd;
    QFrame* frmItemSupMenu;
    QPushButton* txtItemSupRemove;
    QPushButton* txtItemSupView;
    QPushButton* txtItemSupMenuClose;
    QFrame* frmItemSupInfo;
    QPlainTextEdit* txtItemSupInfo;
    QPushButton* cmdItemSupInfoClose;

    QProgressBar* pBar1;
    frmNewItem* NewItemPanel; // objectName "frmNewItem"

    // The supplier rows behind gdxSupp and the AddID of each entry of cboAllSups.
    QVector<ItemSupplierRow> mSupData;
    int mSupRowCount = 0;
    QList<qint32> mAllSupIDs;

signals:
    void ItemNotFound();
    void ItemLoaded(qint32 itemId); // the sub-panels that read with the item (history) reload
    void ItemCreated(qint32 itemId);
    // The values the selected row of the inventory list must show now, by column key.
    void ItemSaved(qint32 itemId, const ItemListRow& row);
    void ItemDeleted(qint32 itemId);
    void HelpTipChanged(const QString& text);
    void SubPanelShown(int index); // "Used in", "Purchase Orders" and "Links" load on demand

private:
    void buildItemBoxes(QWidget* host);
    void buildSupplierTab();
    void defineSupplierGrid();
    void reloadSupplierGrid();
    void clearBoxes();
    void fillSupplierChoices();
    ItemDetailFields gatherFields() const;
    void cboAllSups_Click();
    void btnSupAdd_Click();
    void gdxSupp_MouseUp(Qt::MouseButton button, int xTwips, int yTwips);
    void txtItemSupRemove_Click();
    void txtItemSupView_Click();
    void txtItemCat_Change(const QString& text);
    void hidePopups();

    bool mLoadingCategory = false;
    friend class frmNewItem;
};
