// The purchase basket: the items waiting to be bought, listed under one supplier at a time at
// that supplier's price, edited row by row, and the supplier's parts to add from. No widgets
// here: the window `basket` keeps the arrays and shows what these procedures return.
#pragma once

#include "inventory/InventoryList.h" // UBArray: the two-dimensional working arrays

#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

// The AddID of the supplier selected in the basket; the parts panel reads it.
extern qint32 gBasketSupplierID;
// Set false by every supplier selection; nothing sets it true.
extern bool gNonStockSupplier;

// Columns of BasketRows, the working copy behind gdxBList (the grid adds Remove as column 12).
namespace BasketCol {
constexpr int PartNo = 1;      // MasterPNo, a leading "**" cut off
constexpr int Name = 2;        // ItemName
constexpr int Description = 3; // ItemDescription
constexpr int ReqQty = 4;      // text at load; a number once the row has been committed
constexpr int MinQty = 5;      // MinOrQty
constexpr int DelDate = 6;     // DelDate as ShowDate gives it
constexpr int Ticked = 7;      // bool: OrderYN other than 0
constexpr int RowID = 8;       // tblBaskets.RowID
constexpr int ItemID = 9;
constexpr int Price = 10; // PriceEach; the buyer may overtype it for this order only
constexpr int SupPNo = 11;
constexpr int Remove = 12; // grid only: ticked to take the row out of the basket
constexpr int Count = 11;
} // namespace BasketCol

// Columns of PartRows, behind gdxBParts.
namespace PartCol {
constexpr int ItemID = 1;
constexpr int PartNo = 2;
constexpr int Name = 3;
constexpr int Category = 4;
constexpr int Description = 5;
constexpr int Price = 6;
constexpr int MinQty = 7;
constexpr int SupPNo = 8;
constexpr int Count = 8;
} // namespace PartCol

// A tick of the working array or the grid: a Boolean, a number other than 0, or the word True.
bool BasketTicked(const QVariant& value);
// A cell as the grid shows it: a number (a committed quantity) in the locale's writing.
QString BasketCellText(const QVariant& value);

// The suppliers of cboSupplist and their AddIDs, index for index.
struct SupplierList {
    QStringList names;
    QList<qint32> ids;
};
// All suppliers by company name, the non-stock supplier ("NON") and a repeat of the AddID just
// added left out. With no supplier at all says so ("Empty Supplier's List").
SupplierList LoadSupplierList();

// A load of one of the working arrays.
struct BasketLoad {
    UBArray rows; // BasketCol::Count or PartCol::Count columns
    int rowCount = 0;
};

// The basket rows of a supplier, in the order they entered the basket. A supplier with no rows
// gives an empty array and a count of 0.
BasketLoad LoadBasket(qint32 supplierId);

// The selected entry of cboSupplist: with a negative index says that the supplier has been
// deselected and gives nothing; otherwise sets gBasketSupplierID and loads its basket.
std::optional<BasketLoad> RefreshCurrentBasket(int selectedIndex, const QList<qint32>& supplierIDs);

enum class BasketCommit {
    Removed, // the row was deleted from the basket: the list must be loaded again
    Written, // the row was copied into the array and written back
    NoRows,  // the array has no rows: nothing was done
};
// An edited row of gdxBList (values of its 12 columns in grid order) for array row `record`.
// Remove ticked deletes the basket row. Otherwise columns 1 to 11 go into the array (the
// quantity through Val) and quantity, date and tick are written back; the price is not.
BasketCommit CommitBasketRow(UBArray& rows, int rowCount, int record,
                             const QVector<QVariant>& values);

// The value of the ticked rows, quantity times price, as Text2 shows it.
QString RecalcOrderValue(const UBArray& rows, int rowCount);

// Command4's checks: the purchase-order right, then the non-stock supplier. False after a
// message.
bool MayShowSupplierParts();
// The parts of a supplier whose part number begins with `filter`, by part number.
BasketLoad ShowSupplierParts(qint32 supplierId, const QString& filter);
// A double-click on a part: marks the item BuyNow and adds a basket row for it (quantity 0,
// ticked), whether or not the item waits already.
void AddPartToBasket(qint32 itemId);

// Command1: how order numbers are given.
void ShowOrderNumberHelp();
