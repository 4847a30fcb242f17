// The purchase order rows of one stock item, for the "Purchase Orders" tab of the item detail:
// read only, newest order first.
#pragma once

#include "inventory/InventoryList.h" // UBArray

#include <QString>
#include <QtGlobal>

// Columns of the item's order rows, behind gdxItemPOrders. The keys are the order viewer's.
namespace ItemPOCol {
constexpr int OrID = 1;      // POID, "0000"
constexpr int OrDate = 2;    // PODate by ShowDate
constexpr int Sup = 3;       // CoName
constexpr int POQty = 4;     // ordered, "0.0#"
constexpr int DelQty = 5;    // received, "0.0#"
constexpr int DelDate = 6;   // POSchedDate by ShowDate
constexpr int AtPrice = 7;   // POPrice, "0.00###"
constexpr int Confirmed = 8; // RowConfirmed as "Yes" or "No"
constexpr int Comments = 9;  // RowComments
constexpr int Count = 9;
} // namespace ItemPOCol

struct ItemPOColumn {
    QString key;
    QString caption;
    int widthTwips;
    bool rightAligned;
};
// The nine columns in array order.
const QList<ItemPOColumn>& ItemPOColumns();

// The statement: every row of the item, with its order's date and supplier where they still
// exist, by order date (newest first), then order number (highest first), then row.
QString ItemPOrdersStatement(qint32 itemId);

struct ItemPOrders {
    UBArray rows;
    int rowCount = 0;
};
ItemPOrders LoadItemPOrders(qint32 itemId);
