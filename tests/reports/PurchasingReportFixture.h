// Orders and receipts for the purchasing report tests, written by the purchasing procedures
// themselves so that every date is stored as the program stores it.
#pragma once

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "inventory/OnOrder.h"
#include "purchasing/PurchaseBasket.h"
#include "purchasing/PurchaseOrder.h"
#include "tests/purchasing/PurchasingFixture.h"

#include <QDate>
#include <QList>
#include <QTest>

namespace orderbook {

// One line of an order: the item, the quantity, the price and the delivery date (none when
// invalid: the order then carries the no-date value).
struct Line {
    int item;
    double qty;
    double price;
    QDate due = {};
};

// Places an order dated `day` with the supplier and the reference, through the basket and
// "Order Now" as the buyer does. Every item must be linked to the supplier. Returns the RowIDs of
// the order's lines, in the order given.
inline QList<int> PlaceOrder(const QDate& day, int supplier, const QString& reference,
                             const QList<Line>& lines, ScriptedBoxes& boxes) {
    SetToday(day);
    gCanPurchasing = true;
    for (const Line& l : lines)
        fixture::BasketRow(l.item, QString::number(l.qty), 1,
                           l.due.isValid() ? QStringLiteral("'%1'").arg(SqlDate(l.due))
                                           : QStringLiteral("NULL"));
    BasketLoad basket = LoadBasket(supplier);
    if (basket.rowCount != lines.size()) {
        QTest::qFail("the basket does not hold the order's lines", __FILE__, __LINE__);
        return {};
    }
    for (int r = 1; r <= basket.rowCount; ++r)
        basket.rows(BasketCol::Price, r) = FormatNumber(lines[r - 1].price, "0.00###");

    OrderNowInput in;
    in.rows = &basket.rows;
    in.rowCount = basket.rowCount;
    in.supplierChosen = true;
    in.supplierIndex = 0;
    in.supplierIDs = {supplier};
    in.reference = reference;
    boxes.answer(vbNo); // "Print Order?"
    const OrderNowResult placed = PlacePurchaseOrder(in);
    if (placed.outcome != OrderNowResult::Placed) {
        QTest::qFail("the order was not placed", __FILE__, __LINE__);
        return {};
    }
    QList<int> rowIds;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT RowID FROM tblPODetail WHERE POID = ? ORDER BY RowID"),
        {placed.poid});
    for (; !rs.Eof(); rs.MoveNext())
        rowIds << int(rs.Fields(0).Long());
    return rowIds;
}

// Books `qty` of an order line in on `day`, writing what booking goods in writes: the stock
// quantity, the "RX" history row dated that day with the line's RowID in HistID2, the received
// quantity of the line and the item's on-order quantity.
inline void BookIn(int rowId, double qty, const QDate& day) {
    SetToday(day);
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT POStockID, PONumber FROM tblPODetail INNER JOIN tblPOrders ON "
                       "tblPOrders.POID = tblPODetail.POID WHERE RowID = ?"),
        {rowId});
    const qint64 stockId = rs.Fields(0).Long();
    const QString reference = rs.Fields(1).Text();
    rs.Close();
    const QString quantity = SqlNumber(qty, QStringLiteral("0.0#"));
    db.Execute(QStringLiteral("UPDATE tblStockItems SET Qty=Qty + ") + quantity +
               QStringLiteral(" WHERE ItemID=") + QString::number(stockId));
    // The line's RowID goes in as text, as the grid cell holds it; the column keeps a number.
    db.Execute(QStringLiteral("INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistID2, "
                              "HistRef, HistTRN, HistQty, HistText) VALUES (") +
               QString::number(stockId) + QStringLiteral(",'") + SqlDate(Today()) +
               QStringLiteral("', 'RX', '") + QString::number(rowId) +
               QStringLiteral("', 'DN1', 'GRN1',  ") + quantity +
               QStringLiteral(", 'Purchase Order: ") + reference + QStringLiteral("')"));
    db.Execute(QStringLiteral("UPDATE tblPODetail SET PORecieved=PORecieved+") + quantity +
               QStringLiteral(" WHERE RowID=") + QString::number(rowId));
    RefreshOnOrderQty(qint32(stockId), &db);
}

} // namespace orderbook
