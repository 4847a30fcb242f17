// One stock item as the detail panel shows it: loading, creating, saving (one transaction) and
// deleting it. No widgets here: the panel gathers its boxes and the supplier rows into these
// structures, calls the procedures and shows what comes back.
#pragma once

#include "inventory/ItemSuppliers.h"

#include <QList>
#include <QMetaType>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>
#include <functional>
#include <optional>

// The boxes of the detail panel, as text the way they show it.
struct ItemDetailFields {
    QString pno;                // txtPNo -> MasterPNo
    QString detail;             // txtDetail -> ItemName
    QString description;        // txtDescription -> ItemDescription
    QString category;           // txtItemCat -> Category
    bool isAssy = false;        // Check1 -> Assy
    QString location;           // txtLocation -> Location
    QString qty;                // txtItemQty -> Qty ("0.0#")
    QString minQty;             // txtMinQty -> Trigger ("0.0#", blank means 0)
    QString sellPrice;          // txtSellPrice -> SellAt ("0.00###")
    bool allowDiscount = false; // chkAllowDiscount -> AllowDiscount
    QString comments;           // txtItemComments -> tblItemComments.Comment
    QString buyPrice;           // txtBuyPrice: the prime supplier's price, read only
};

struct ItemDetailData {
    qint32 itemId = 0;
    ItemDetailFields fields;
    QString catNo; // txtCatNo
    QVector<ItemSupplierRow> suppliers;
};

// Reads the item, its suppliers and its comment from gDbPath; nothing when no row has the id.
std::optional<ItemDetailData> LoadItemDetail(qint32 itemId);

// The list of txtItemCat: "AS" first, then every other category once, empty ones left out.
QStringList LoadCategoryList();

// The tip shown while an item is on the detail panel.
QString ItemDetailHelpTip();

// The Create button of the new-item panel. Fills the defaults of empty boxes into `fields`
// (category "NEW", location "UNKNOWN", quantity and price "0", the price through its mask),
// refuses a part number in use, writes the stock row and its no-supplier row, and makes the new
// item gCurrentItemID. Returns the new ItemID, or 0 when nothing was created.
qint32 CreateNewItem(ItemDetailFields& fields);

// What the selected row of the inventory list shows after a save, by column key.
struct ItemListRow {
    QString Qty, Loc, Desc, PNo, Detail, Cat, Comments, Vendor, VendorPN, Buy, Sell, MOQ;
    QList<QPair<QString, QString>> ByKey() const;
};
Q_DECLARE_METATYPE(ItemListRow)

// The failure steps of the save, each with its own message and its name as the title.
enum class SaveFailure { None, Error2, Error3, Error4, Error9, Error10 };
QString SaveFailureTitle(SaveFailure step);
QString SaveFailureMessage(SaveFailure step);

struct ItemSaveInput {
    qint32 itemId = 0;
    ItemDetailFields fields;
    QVector<ItemSupplierRow> suppliers; // the rows of the supplier grid
};

struct ItemSaveResult {
    bool saved = false;
    SaveFailure failure = SaveFailure::None;
    QVector<ItemSupplierRow> suppliers; // the rows with one prime mark, as written
    ItemListRow listRow;                // valid when saved
};

// Writes the stock row, the comment and the supplier rows in one transaction. `progress` gets the
// steps of the progress bar (1, 4, 6, 9); the caller finishes the bar, pauses and shows the
// processing bar, after a save and after a failure alike. A failure shows its step's message
// and rolls everything back. An engine error in the comment step is not trapped: it reaches the
// caller as DbError, and the transaction is rolled back when the file closes.
ItemSaveResult SaveItemDetail(const ItemSaveInput& in,
                              const std::function<void(int)>& progress = {});

// Asks, refuses an item that was ever on a purchase order, asks again for an item in a parts
// list, then deletes the item and every row that belongs to it in one transaction. True when the
// item was deleted.
bool DeleteCurrentItem(qint32 itemId);
