// The sales suites' data: rows of the sales tables written straight into the business file, the
// tables read back as text, and the order sheet's rows and cells.
#pragma once

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "sales/CustOrder.h"
#include "tests/support/TestSupport.h"

#include <QTest>

namespace sales_fixture {

inline qint64 insert(const QString& sql, const QVariantList& values = {}) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(sql, values);
    return db.OpenRecordset(QStringLiteral("SELECT last_insert_rowid()")).Fields(0).Long();
}

inline qint32 addCustomer(const QString& name, double discount,
                          const QString& shortNm = QStringLiteral("CUS")) {
    return qint32(insert("INSERT INTO tblCusAddresses (CoName, Add1, Add2, Add3, Add4, PCode, "
                         "ShortNm, Discount) VALUES (?, '1 High St', 'Lower Town', 'Shire', "
                         "'Kingdom', 'AB1 2CD', ?, ?)",
                         {name, shortNm, discount}));
}

// 40 in stock.
inline void addItem(qint32 id, const QString& pno, double sellAt, bool allowDiscount = true,
                    const QString& location = QStringLiteral("A1"),
                    const QVariant& category = QStringLiteral("RES")) {
    insert("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemDescription, Category, Location, "
           "Qty, SellAt, AllowDiscount) VALUES (?, ?, ?, ?, ?, 40, ?, ?)",
           {id, pno, QStringLiteral("Part ") + pno, category, location, sellAt,
            allowDiscount ? -1 : 0});
}

inline void addOrder(qint32 id, qint32 customer, const QString& ref = {}, double discount = 0) {
    insert("INSERT INTO tblCustOrders (CustBasketID, CustID, SalesRef, CustOrRef, CustOrDate, "
           "ORDiscount) VALUES (?, ?, '', ?, '2026-03-04', ?)",
           {id, customer, ref, discount});
}

inline qint64 addOrderRow(qint32 order, qint32 stock, double ordered, double shipped, double gros,
                          double net) {
    return insert("INSERT INTO tblCustOrderDetail (CustBasketDetailID, StockID, OrderedQty, "
                  "ShippedQty, GrosPrice, NetPrice) VALUES (?, ?, ?, ?, ?, ?)",
                  {order, stock, ordered, shipped, gros, net});
}

inline void addDespatch(qint32 order, int seq, qint32 invoiceNo) {
    insert("INSERT INTO tblDespatch (CustOrderID, DespSeqNo, DespNoteText, DespFreeText, DespDate, "
           "Invoiced, TotalTax, Delivery, InvoiceNo, TaxRate) VALUES (?, ?, 'POS', '', "
           "'2026-05-01', '2026-05-01', 0, 0, ?, 17.5)",
           {order, seq, invoiceNo});
}

// Tax at `rate` named "VAT", delivery "Carriage" at 5 with tax on it.
inline void salesDefaults(const QString& rate = QStringLiteral("17.5")) {
    ExecSql("DELETE FROM tblParameters WHERE ParaName IN ('TaxRates', 'ShippingPars')");
    ExecSql("INSERT INTO tblParameters (ParaName, f1, f4) VALUES ('TaxRates', '" + rate +
            "', 'VAT')");
    ExecSql("INSERT INTO tblParameters (ParaName, f1, f2, f3) VALUES ('ShippingPars', "
            "'Carriage', '5', 'Y')");
}

inline QString orderHeader(qint32 order) {
    return SqlRows("SELECT CustID, SalesRef, CustOrRef, CustOrDate, ORDiscount FROM tblCustOrders "
                   "WHERE CustBasketID=" +
                   QString::number(order))
        .value(0);
}
inline QStringList orderRows(qint32 order) {
    return SqlRows("SELECT StockID, OrderedQty, ShippedQty, GrosPrice, NetPrice FROM "
                   "tblCustOrderDetail WHERE CustBasketDetailID=" +
                   QString::number(order) + " ORDER BY RowID");
}

// A row of the sheet: stock, price, sell price and quantity (the invoice quantity too).
inline OrderRow sheetRow(const QString& stock, const QString& price, const QString& sellAt,
                         const QString& qty) {
    OrderRow r;
    r[OrderCol::StockID] = stock;
    r[OrderCol::Price] = price;
    r[OrderCol::SellAt] = sellAt;
    r[OrderCol::OrderQty] = r[OrderCol::InvoiceQty] = qty;
    return r;
}

// Texts joined by "|", to compare several figures at once.
inline QString joined(const QStringList& texts) {
    return texts.join(QLatin1Char('|'));
}
// A column of the sheet's rows, and a row's cells from column 1.
inline QString column(const CustOrderSheet& sheet, int c) {
    QStringList out;
    for (const OrderRow& r : sheet.rows)
        out << r[c];
    return joined(out);
}
inline QString cells(const OrderRow& row) {
    return joined(QStringList(row.cells.begin() + 1, row.cells.end()));
}

// Types into a cell as fgedit does: the totals follow.
inline void type(CustOrderSheet& s, int row, int column, const QString& text) {
    s.editRow = row;
    s.editCol = column;
    EditCell(s, text);
}

// The last message box shown: "title|prompt".
inline QString lastBox(const ScriptedBoxes& boxes) {
    for (auto b = boxes.shown().crbegin(); b != boxes.shown().crend(); ++b)
        if (b->kind == ShownBox::Message)
            return b->title + QLatin1Char('|') + b->prompt;
    return QStringLiteral("<none>");
}

} // namespace sales_fixture
