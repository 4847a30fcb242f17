// Goods receiving: the orders with something outstanding, the rows of one order, and booking in
// what arrived (stock, received quantity, "RX" history, on-order quantity).
#pragma once

#include "inventory/InventoryList.h" // UBArray

#include <QString>
#include <QVector>

// Columns of OrderList, the orders found (and of the grid's list step).
namespace GinListCol {
enum : int {
    POID = 1,
    GRNNo,   // never filled by the list
    GRNDate, // never filled by the list
    PONo,
    PODate, // the date, where ShowDate shows one; else empty
    SupName,
    Loc,   // never filled
    NSSup, // never filled: see LoadOutstandingOrders
    Count = NSSup
};
}

// Columns of GridRows in the row step: one row per order row.
namespace GinCol {
enum : int {
    RowID = 1, // tblPODetail.RowID
    PNo,       // MasterPNo
    PName,     // ItemName
    Desc,      // ItemDescription
    SupPNo,    // POSupPNo
    DelDate,   // POSchedDate by ShowDate
    AtPrice,   // POPrice, "0.00###"
    OQty,      // POQty, "0.0#"
    PQty,      // POQty - PORecieved as loaded, "0.0#"
    AdvQty,    // "Advised": empty
    RXd,       // "Received": the quantity typed
    StockID,   // POStockID
    NConf,     // "Yes" once the row is booked
    Count = NConf
};
}

// A working array and the number of its rows in use.
struct GoodsInArray {
    UBArray rows;
    int rowCount = 0;
};

// OrderList: each order with at least one row whose POQty differs from PORecieved (an
// over-received row keeps its order listed), by supplier name then POID. An order whose supplier
// is gone lists with a blank name.
GoodsInArray LoadOutstandingOrders();

// What gdxOList shows in the list step: the orders with a POID, the number through "0000" and the
// dates as day/month/year whatever the locale; showNonStock when a row has text in NSSup.
struct OrderListShown {
    GoodsInArray list;
    bool showNonStock = false;
};
OrderListShown ShowOrderList(const GoodsInArray& orderList);

// The rows of order `poid`, in RowID order, only the outstanding ones unless `showCompleted`.
// Rows of an item that no longer exists are not found. rowCount 0 when there is no row.
GoodsInArray LoadOrderRows(qint32 poid, bool showCompleted);

// Takes an edited row of the row step back into the array (values by column from 1): the
// received quantity through "0.0#". A booked row ("Yes" in NConf) keeps its values; false then.
bool CommitGoodsInRow(GoodsInArray& rows, int record, const QVector<QVariant>& values);

// What cmdBookIn hands over: the rows (NConf is marked in them) and the window's boxes.
struct BookInInput {
    GoodsInArray* rows = nullptr;
    QString adviceNo; // txtAdviceNo
    QString grnNo;    // txtGRNno
    QString poNo;     // txtPONo
};

// Status values of BookInGoods and BookIn.
enum : int {
    kBookInNothingDone = 0, // nothing was written
    kBookInDone = 1,        // booked (or no rows at all): the note may be printed
    kBookInFailed = 99,     // the failure report itself failed
    kBookInStopped = -1,    // BookIn only: the guard or the "TRN?" question stopped it
};

// Books in the typed quantities: the checks on the loaded figures (one question at most), then
// for each row in turn the stock, and only where an item was found the "RX" history row, the
// received quantity and the row's "Yes"; each row's item gets its on-order quantity recounted.
// The rows are written in one transaction; on an engine error it is rolled back, the rows
// marked by this run lose their "Yes" and the error is reported with its "DQ-Gi-" number.
int BookInGoods(BookInInput& in);

// cmdBookIn: the purchasing guard, the question when there is no transaction reference, then
// BookInGoods and the message for a status other than 1.
int BookIn(BookInInput& in);

// The on-screen text of a quantity typed into "Received".
QString ReceivedQtyText(const QVariant& typed);
// Keys of the "Received" cell: the digits, the decimal sign, backspace, and a minus sign
// (a negative quantity reverses an earlier booking).
int ReceivedQtyKey(const QString& text, int keyCode);
