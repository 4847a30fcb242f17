// Rows the purchasing suites put into a fresh data folder.
#pragma once

#include "tests/support/TestSupport.h"

#include <QString>

namespace fixture {

inline void Supplier(int addId, const QString& name, const QString& shortNm = QStringLiteral("S")) {
    ExecSql(QStringLiteral("INSERT INTO tblSupAddresses (AddID, CoName, Add1, Add2, PCode, Tel1, "
                           "Fax1, Contact1, ShortNm) VALUES (%1, '%2', '%2 Street', 'Leeds', "
                           "'LS1', '0113 1', '0113 2', 'Ann', '%3')")
                .arg(addId)
                .arg(name, shortNm));
}

inline void Item(int itemId, const QString& partNo, const QString& description = QString()) {
    ExecSql(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemName, "
                           "ItemDescription, Category, Qty, OnOrderQty, BuyNow) VALUES "
                           "(%1, '%2', 'Value %1', '%3', 'CAT', 0, 0, 0)")
                .arg(itemId)
                .arg(partNo,
                     description.isEmpty() ? QStringLiteral("Item %1").arg(itemId) : description));
}

inline void Link(int itemId, int supplierId, const QString& price, const QString& supPNo,
                 const QString& minQty = QStringLiteral("1")) {
    ExecSql(QStringLiteral("INSERT INTO tblItemSupplier (ItemID, SupplierID, SupplierPNo, "
                           "MinOrQty, PriceEach, PrimeSupplier) VALUES (%1, %2, '%3', %4, %5, 0)")
                .arg(itemId)
                .arg(supplierId)
                .arg(supPNo, minQty, price));
}

// A basket row; `delDate` is SQL (a quoted date or NULL). Returns its RowID.
inline int BasketRow(int itemId, const QString& reqQty, int orderYN,
                     const QString& delDate = QStringLiteral("NULL")) {
    ExecSql(QStringLiteral("INSERT INTO tblBaskets (StockID, ReqQty, DelDate, OrderYN) VALUES "
                           "(%1, %2, %3, %4)")
                .arg(itemId)
                .arg(reqQty, delDate)
                .arg(orderYN));
    return SqlFirst(QStringLiteral("SELECT max(RowID) FROM tblBaskets")).toInt();
}

inline void Home() {
    ExecSql(QStringLiteral("INSERT INTO tblHome (CoName, Add1, Add2, Add3, Add4, Add5, Add6, "
                           "Tel1, Fax1) VALUES ('Quill Parts Ltd', '1 Mill Lane', 'Otley', "
                           "'West Yorkshire', 'LS21 1AA', 'England', '', '01943 1', '01943 2')"));
}

} // namespace fixture
