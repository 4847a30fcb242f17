#include "sales/SalesLists.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"

namespace {
// A key through the mask "0000" or "000": zero-padded to the width, longer numbers in full. Keys
// are whole numbers, so this needs none of the general formatting.
void appendPadded(QString& out, qint64 n, int width) {
    if (n < 0) {
        out += QLatin1Char('-');
        n = -n;
    }
    char digits[24];
    int len = 0;
    do {
        digits[len++] = char('0' + n % 10);
        n /= 10;
    } while (n > 0);
    for (int i = len; i < width; ++i)
        out += QLatin1Char('0');
    while (len > 0)
        out += QLatin1Char(digits[--len]);
}

QString padded(qint64 n, int width) {
    QString out;
    out.reserve(width + 2);
    appendPadded(out, n, width);
    return out;
}

// A date column's value: ISO text as the file holds it, read without the general date parser;
// anything else goes through it.
QDate dateOf(const QString& text) {
    if (text.size() >= 10 && text[4] == QLatin1Char('-') && text[7] == QLatin1Char('-')) {
        bool y = false, m = false, d = false;
        const QDate date(QStringView(text).left(4).toInt(&y), QStringView(text).mid(5, 2).toInt(&m),
                         QStringView(text).mid(8, 2).toInt(&d));
        if (y && m && d)
            return date;
    }
    return ParseDateText(text);
}
// The rows of a listing: `fill` writes the record the walk stands on into row r.
template <typename Fill> UBArray readRows(const QString& sql, int columns, Fill fill) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(sql);
    UBArray data(columns, 0);
    for (int r = 1; !rs.Eof(); rs.MoveNext(), ++r) {
        data.SetRows(r);
        fill(rs, data, r);
    }
    return data;
}
} // namespace

QString CustomerOrdersStatement(bool pending) {
    const QString filter =
        pending
            ? QStringLiteral("WHERE tblCustOrderDetail.OrderedQty <> tblCustOrderDetail.ShippedQty")
            : QStringLiteral("WHERE tblCustOrderDetail.OrderedQty = tblCustOrderDetail.ShippedQty");
    return QStringLiteral("SELECT  DISTINCT CustBasketID,  CustOrRef,  CustOrDate, CoName, ORDone "
                          "FROM (tblCustOrders  INNER JOIN tblCusAddresses ON tblCustOrders.CustID "
                          "= tblCusAddresses.AddID) LEFT JOIN tblCustOrderDetail ON "
                          "tblCustOrders.CustBasketID = tblCustOrderDetail.CustBasketDetailID ") +
           filter + QStringLiteral(" ORDER BY CustBasketID");
}

SalesList ListCustomerOrders(bool pending) {
    SalesList list;
    list.columns = {{QStringLiteral("OrderID"), QStringLiteral("Our OrderID"), 1250, false},
                    {QStringLiteral("Customer"), QStringLiteral("Customer"), 3600, false},
                    {QStringLiteral("Customer ORNo"), QStringLiteral("Customer ORNo"), 2000, false},
                    {QStringLiteral("Date"), QStringLiteral("Date"), 1300, false},
                    {QStringLiteral("Done"), QStringLiteral("Done"), 700, true}};
    list.data = readRows(CustomerOrdersStatement(pending), int(list.columns.size()),
                         [](const Recordset& rs, UBArray& data, int r) {
                             data(1, r) = padded(rs.Fields(0).Long(), 4);
                             data(2, r) = rs.Fields(3).Text();
                             data(3, r) = rs.Fields(1).Text();
                             // A date: the grid shows it through ShowDate and sorts it as one.
                             data(4, r) = dateOf(rs.Fields(2).Text());
                             data(5, r) = rs.Fields(4).Value();
                         });
    return list;
}

QString InvoicesStatement() {
    return QStringLiteral(
        "SELECT  tblDespatch.InvoiceNo, tblDespatch.CustOrderID, tblDespatch.DespSeqNo, "
        "tblDespatch.Invoiced, tblCusAddresses.CoName FROM (tblDespatch  INNER JOIN tblCustOrders "
        "ON tblDespatch.CustOrderID = tblCustOrders.CustBasketID)  INNER JOIN tblCusAddresses ON "
        "tblCustOrders.CustID = tblCusAddresses.AddID ORDER BY InvoiceNo");
}

SalesList ListInvoices() {
    SalesList list;
    list.columns = {{QStringLiteral("Invoice"), QStringLiteral("Invoice"), 1000, false},
                    {QStringLiteral("Delivery"), QStringLiteral("Delivery"), 1300, false},
                    {QStringLiteral("Invoiced"), QStringLiteral("Invoiced"), 1300, false},
                    {QStringLiteral("Customer"), QStringLiteral("Customer"), 3600, false}};
    list.data = readRows(InvoicesStatement(), int(list.columns.size()),
                         [](const Recordset& rs, UBArray& data, int r) {
                             data(1, r) = padded(rs.Fields(0).Long(), 4);
                             QString delivery; // "0012-001"
                             delivery.reserve(10);
                             appendPadded(delivery, rs.Fields(1).Long(), 4);
                             delivery += QLatin1Char('-');
                             appendPadded(delivery, rs.Fields(2).Long(), 3);
                             data(2, r) = std::move(delivery);
                             data(3, r) = dateOf(rs.Fields(3).Text());
                             data(4, r) = rs.Fields(4).Text();
                         });
    return list;
}
