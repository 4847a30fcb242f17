// The order viewer: the list of purchase orders, the rows of one order, saving changed rows,
// adding a supplier's item to an order and deleting rows or whole orders. No widgets here: the
// window `ORViewer` keeps the arrays and shows what these procedures return.
//
// None of these procedures runs in a transaction: each statement stands alone, in the order
// given, and an engine error goes to the caller untrapped.
#pragma once

#include "inventory/InventoryList.h" // UBArray

#include <QList>
#include <QString>
#include <QVariant>
#include <QVector>
#include <QtGlobal>

// The list filter and the view: 5 all orders, 6 orders not completed, 7 orders completed, 8 the
// rows of one order.
namespace OrderViewMode {
constexpr quint8 All = 5;
constexpr quint8 NotCompleted = 6;
constexpr quint8 Completed = 7;
constexpr quint8 Rows = 8;
} // namespace OrderViewMode

extern quint8 gOrderViewMode;
// Read as a number: while it is numeric, a search with both filters empty is refused. Nothing
// sets it, so it stays empty and the refusal never happens.
extern QString gRemoteMode;

// Columns of OrderRows, behind gdxOList.
namespace OListCol {
constexpr int OrID = 1;   // POID, "0000"
constexpr int OrRef = 2;  // PONumber
constexpr int Sup = 3;    // CoName
constexpr int OrDate = 4; // PODate by ShowDate
constexpr int Eta = 5;    // POSchedDate of the first row met, by ShowDate
constexpr int Loc = 6;    // "xxxx"
constexpr int SupID = 7;  // AddID
constexpr int Chk = 8;    // POConfirmed, a tick
constexpr int NSSup = 9;  // "-Stock-"
constexpr int Count = 9;
} // namespace OListCol

// Columns of DetailRows, behind gdxPODetail.
namespace PODetailCol {
constexpr int RowID = 1;
constexpr int PNo = 2;       // MasterPNo
constexpr int PName = 3;     // ItemName
constexpr int Desc = 4;      // ItemDescription
constexpr int SupPNo = 5;    // POSupPNo
constexpr int DelDate = 6;   // POSchedDate by ShowDate
constexpr int Chk = 7;       // RowConfirmed as stored; a tick once the user has clicked it
constexpr int POQty = 8;     // "0.0#"
constexpr int DelQty = 9;    // PORecieved, "0.0#"
constexpr int AtPrice = 10;  // POPrice, "0.00###"
constexpr int RowPrice = 11; // ordered times price, "0.00###"
constexpr int StockID = 12;  // POStockID
constexpr int Count = 12;
} // namespace PODetailCol

// Columns of PartRows, behind gdxPOParts.
namespace POPartCol {
constexpr int PartID = 1; // ItemID
constexpr int PartNo = 2;
constexpr int PName = 3;
constexpr int Cat = 4;
constexpr int Desc = 5;
constexpr int Price = 6; // PriceEach, "0.00###"
constexpr int SupPNo = 7;
constexpr int Count = 7;
} // namespace POPartCol

// A load of one of the working arrays.
struct OrderArray {
    UBArray rows;
    int rowCount = 0;
};

// True while gRemoteMode reads as a number.
bool RemoteModeNumeric();
// Command8's refusal: with gRemoteMode numeric and both filters empty, says that at least one
// character is needed and returns true.
bool RefuseEmptyRemoteSearch(const QString& orderFilter, const QString& supplierFilter);

// The list statement of a mode with the two filters (left-anchored matches on POID and CoName).
QString OrderListStatement(quint8 mode, const QString& orderFilter, const QString& supplierFilter);
// The orders of a mode, one line per POID, grouped by supplier name then POID. An order without
// rows or without its supplier record never lists. Modes test rows: an order with a complete
// and an open row answers to 6 and to 7. `stopped` is set (and nothing is read) when gRemoteMode
// is above 0 and both filters are empty.
OrderArray LoadOrderList(quint8 mode, const QString& orderFilter, const QString& supplierFilter,
                         bool* stopped = nullptr);

// The commit of a gdxOList row (values of its 9 columns in grid order) for array row `record`:
// the values go into the array and the confirmation is written by the list's statement, which
// names PONumberID and so changes no order.
void ConfirmOrder(UBArray& rows, int rowCount, int record, const QVector<QVariant>& values);

// The rows of an order, by schedule date then item. An order with none says so ("Empty Purchase
// Order") and gives an empty array.
OrderArray LoadOrderDetail(qint32 poid);

// The commit of a gdxPODetail row: the values go into the array and $Total is worked out again
// from the quantity and price shown. Nothing reaches the database.
void CommitDetailRow(UBArray& rows, int rowCount, int record, const QVector<QVariant>& values);

// Rows read again while the row view stays up (after an item was added or a row deleted) keep
// what the user changed in them and has not saved yet: the date, the tick and the quantity of
// each row of `edited` (by RowID) go from `before` into `after`, whose totals follow.
void CarryDetailEdits(const UBArray& before, int beforeCount, const QList<qint64>& edited,
                      UBArray& after, int afterCount);

// What the row view holds when its rows are saved.
struct SaveOrderInput {
    const UBArray* rows = nullptr; // DetailRows
    int rowCount = 0;              // DetailRowCount
    QString poidText;              // txtPOID
};
// Writes every row from the texts on screen (dates as shown in the locale, numbers through their
// masks), refreshes the on-order quantity of each row's item, then writes POComplete 0 on the
// header. Each statement stands alone.
void SaveOrderRows(const SaveOrderInput& in);

// cmdReprint: the purchase-order right, the save, then "Print order?".
enum class ReprintAnswer { Refused, Saved, SavedToPrint };
ReprintAnswer SaveAndOfferPrint(const SaveOrderInput& in);
// cmdRePrintOK: the document with the date question on, and "Printer Status" once it went to
// the printer.
void ReprintOrder(qint32 poid);

// The supplier's parts whose part number begins with `filter`, as the basket lists them, without
// the minimum order quantity.
OrderArray ShowOrderParts(qint32 supplierId, const QString& filter);
// Adds the item to the order at the supplier's price with quantity 0 and no date. Refused with
// "Incorrect Supplier" (false) when the supplier does not sell the item. The on-order quantity
// is not touched: the new row has nothing open.
bool AddOrderRow(qint32 itemId, qint32 poid, qint32 supplierId);

enum class DeleteOutcome { Refused, Declined, Deleted };
// A row of the order on screen, by its RowID, after the right and the question (No by default);
// the item's on-order quantity follows.
DeleteOutcome DeleteOrderRow(qint32 rowId);
// A whole order: its rows, the on-order quantity of each of their items, then the header. Goods
// already received do not stop it; stock and history stay as booked.
DeleteOutcome DeleteOrder(qint32 poid);
