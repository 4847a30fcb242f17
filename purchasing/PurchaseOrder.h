// Placing a purchase order from the ticked rows of the basket ("Order Now"), and the order
// numbers.
#pragma once

#include "inventory/InventoryList.h" // UBArray

#include <QList>
#include <QString>

class Database;

// The highest POID in use, 0 for no order at all. On the caller's open database when given one
// (inside its transaction), otherwise on a connection of its own.
qint32 LastPOID(Database* db = nullptr);
// LastPOID + 1, or the number typed in txtPOID when that is greater: the buyer may jump the
// sequence forward, never backward or onto a used number.
qint32 NextPOID(const QString& typedPOID);
// An order number as it is shown and printed: "0000".
QString POIDText(qint32 poid);

// What the basket window holds when "Order Now" is pressed.
struct OrderNowInput {
    const UBArray* rows = nullptr; // BasketRows
    int rowCount = 0;              // BasketRowCount
    bool supplierChosen = false;   // SupplierChosen
    int supplierIndex = -1;        // selected index of cboSupplist
    QList<qint32> supplierIDs;     // SupplierIDs
    QString poidText;              // txtPOID
    QString reference;             // txtBasketPONo
};

struct OrderNowResult {
    enum Outcome {
        Refused,     // a check stopped it; nothing was written (poidText is unchanged)
        WriteFailed, // the order could not be written and was rolled back; the basket is whole
        Placed,      // the header and its rows are written
    };
    Outcome outcome = Refused;
    QString poidText;           // what txtPOID shows now
    qint32 poid = 0;            // the order written
    bool basketCleared = false; // the ordered rows left the basket
    bool print = false;         // "Print Order?" was answered Yes
};

// The checks in order, each with its message; then the order number, the header and the ticked
// rows with each item's on-order quantity, in one transaction; then the ordered rows leave the
// basket in a transaction of their own; last the question whether to print.
OrderNowResult PlacePurchaseOrder(const OrderNowInput& in);
