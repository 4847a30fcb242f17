// Rows of the sales tables for the sales suites, written straight into the business file.
#pragma once

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "sales/CustOrder.h"

#include <QString>
#include <QVariantList>

namespace sales_fixture {

inline qint64 insert(const QString& sql, const QVariantList& values = {}) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(sql, values);
    return db.OpenRecordset(QStringLiteral("SELECT last_insert_rowid()")).Fields(0).Long();
}

inline qint32 addCustomer(const QString& name, double discount,
                          const QString& shortNm = QStringLiteral("CUS")) {
    return qint32(insert(QStringLiteral("INSERT INTO tblCusAddresses (CoName, Add1, Add2, Add3, "
                                        "Add4, PCode, ShortNm, Discount) VALUES (?, '1 High St', "
                                        "'Lower Town', 'Shire', 'Kingdom', 'AB1 2CD', ?, ?)"),
                         {name, shortNm, discount}));
}

inline void addItem(qint32 id, const QString& pno, const QString& desc, double sellAt,
                    bool allowDiscount = true, const QString& location = QStringLiteral("A1"),
                    const QVariant& category = QStringLiteral("RES")) {
    insert(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemDescription, "
                          "Category, Location, Qty, SellAt, AllowDiscount) VALUES "
                          "(?, ?, ?, ?, ?, 40, ?, ?)"),
           {id, pno, desc, category, location, sellAt, allowDiscount ? -1 : 0});
}

inline void addOrder(qint32 id, qint32 customer, const QString& ref, double discount,
                     const QString& date = QStringLiteral("2026-03-04")) {
    insert(QStringLiteral("INSERT INTO tblCustOrders (CustBasketID, CustID, SalesRef, CustOrRef, "
                          "CustOrDate, ORDiscount) VALUES (?, ?, '', ?, ?, ?)"),
           {id, customer, ref, date, discount});
}

inline qint64 addOrderRow(qint32 order, qint32 stock, double ordered, double shipped, double gros,
                          double net) {
    return insert(QStringLiteral("INSERT INTO tblCustOrderDetail (CustBasketDetailID, StockID, "
                                 "OrderedQty, ShippedQty, GrosPrice, NetPrice) VALUES "
                                 "(?, ?, ?, ?, ?, ?)"),
                  {order, stock, ordered, shipped, gros, net});
}

inline void addDespatch(qint32 order, int seq, qint32 invoiceNo) {
    insert(QStringLiteral("INSERT INTO tblDespatch (CustOrderID, DespSeqNo, DespNoteText, "
                          "DespFreeText, DespDate, Invoiced, TotalTax, Delivery, InvoiceNo, "
                          "TaxRate) VALUES (?, ?, 'POS', '', '2026-05-01', '2026-05-01', 0, 0, "
                          "?, 17.5)"),
           {order, seq, invoiceNo});
}

// A row of the sheet with its price, sell price and quantity cells.
inline OrderRow sheetRow(const QString& price, const QString& sellAt, const QString& qty,
                         const QString& invoiceQty = QString()) {
    OrderRow r;
    r[OrderCol::Price] = price;
    r[OrderCol::SellAt] = sellAt;
    r[OrderCol::OrderQty] = qty;
    r[OrderCol::InvoiceQty] = invoiceQty.isEmpty() ? qty : invoiceQty;
    return r;
}

inline QStringList column(const CustOrderSheet& sheet, int c) {
    QStringList out;
    for (const OrderRow& r : sheet.rows)
        out << r[c];
    return out;
}

} // namespace sales_fixture
