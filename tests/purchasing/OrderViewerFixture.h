// Purchase orders the order viewer suites put into a fresh data folder.
#pragma once

#include "tests/purchasing/PurchasingFixture.h"

namespace fixture {

// An order header (reference "REF-<poid>" unless given); a supplier with no address record
// leaves POSupID pointing at nothing.
inline void OrderHeader(int poid, int supplier, const QString& date = QStringLiteral("2026-10-01"),
                        const QString& ref = QString()) {
    ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, PONumber, PODate, POSupID, POComplete, "
                           "POConfirmed) VALUES (%1, '%2', '%3', %4, 0, 0)")
                .arg(poid)
                .arg(ref.isEmpty() ? QStringLiteral("REF-%1").arg(poid) : ref, date)
                .arg(supplier));
}

// A row of an order, with the supplier's part number "S-<item>"; returns its RowID.
inline int OrderRow(int poid, int item, const QString& qty, const QString& received,
                    const QString& date = QStringLiteral("2040-01-01"),
                    const QString& price = QStringLiteral("1")) {
    ExecSql(QStringLiteral("INSERT INTO tblPODetail (POID, POStockID, POSupPNo, POQty, POPrice, "
                           "POSchedDate, PORecieved, RowConfirmed, RowComments, GRN_PONo) VALUES "
                           "(%1, %2, 'S-%2', %3, %4, '%5', %6, 0, '', '')")
                .arg(poid)
                .arg(item)
                .arg(qty, price, date, received));
    return SqlFirst(QStringLiteral("SELECT max(RowID) FROM tblPODetail")).toInt();
}

// The stored on-order quantity of an item, as the engine gives it back.
inline QString OnOrder(int item) {
    return SqlFirst(
        QStringLiteral("SELECT OnOrderQty FROM tblStockItems WHERE ItemID=%1").arg(item));
}

} // namespace fixture
