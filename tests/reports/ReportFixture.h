// What the report suites share: stock rows written straight into the business file, orders placed
// and goods booked in by the purchasing procedures themselves (so that every date is stored as
// the program stores it), and what a test reads from a report.
#pragma once

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "purchasing/GoodsIn.h"
#include "purchasing/PurchaseBasket.h"
#include "purchasing/PurchaseOrder.h"
#include "reports/Reports.h"
#include "tests/purchasing/PurchasingFixture.h"
#include "tests/support/TestSupport.h"

#include <QTest>

namespace reporttest {

// A stock row, then a supplier row per {SupplierID, PriceEach, PrimeSupplier}.
struct SupplierRow {
    int supplier;
    double price;
    int prime;
};
inline void Item(int id, const QString& pno, const QString& category, double qty,
                 const QList<SupplierRow>& suppliers = {},
                 const QString& description = QStringLiteral("Part"),
                 const QString& location = QStringLiteral("A1")) {
    ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemDescription, Category, Location, "
            "Qty) VALUES (?, ?, ?, ?, ?, ?)",
            {id, pno, description, category, location, qty});
    for (const SupplierRow& s : suppliers)
        ExecSql("INSERT INTO tblItemSupplier (ItemID, SupplierID, PriceEach, PrimeSupplier) "
                "VALUES (?, ?, ?, ?)",
                {id, s.supplier, s.price, s.prime});
}

inline void History(int itemID, const QString& isoDate, const QString& type = "ADJ(+)") {
    ExecSql("INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistQty) VALUES (?, ?, ?, 1)",
            {itemID, isoDate, type});
}

inline ReportResult Run(int type, const QDate& start = {}, const QDate& end = {}) {
    ReportInput in;
    in.reportType = type;
    in.startDate = start;
    in.endDate = end;
    return RunReport(in);
}

// One column of every row.
inline QStringList Column(const ReportResult& r, int column) {
    QStringList out;
    for (const QStringList& row : r.rows)
        out << row.value(column);
    return out;
}

// The row whose column `column` holds `value`; an empty list when none does.
inline QStringList RowWith(const ReportResult& r, int column, const QString& value) {
    for (const QStringList& row : r.rows)
        if (row.value(column) == value)
            return row;
    return {};
}

// Text1 to Text5.
inline QStringList Summary(const ReportResult& r) {
    return QStringList(r.summary.text.begin(), r.summary.text.end());
}

// Three suppliers (the third without a name) and three items each of them sells.
inline void Suppliers() {
    fixture::Supplier(1, QStringLiteral("Acme Components"), QStringLiteral("ACM"));
    fixture::Supplier(2, QStringLiteral("Bolt Supplies"), QStringLiteral("BLT"));
    fixture::Supplier(3, QString(), QStringLiteral("UNN"));
    for (int item : {10, 11, 12}) {
        fixture::Item(item, QStringList{"RES-10K", "CAP-1U", "IND-5M"}[item - 10]);
        for (int supplier : {1, 2, 3})
            fixture::Link(item, supplier, QStringLiteral("1"), QStringLiteral("S-%1").arg(item));
    }
}

// One line of an order: the item, the quantity, the price and the delivery date (none when
// invalid: the order then carries the no-date value).
struct Line {
    int item;
    double qty;
    double price;
    QDate due = {};
};

// Places an order dated `day` with the supplier and the reference, through the basket and
// "Order Now" as the buyer does. Returns the RowIDs of the order's lines, in the order given.
inline QStringList PlaceOrder(const QDate& day, int supplier, const QString& reference,
                              const QList<Line>& lines, ScriptedBoxes& boxes) {
    SetToday(day);
    gCanPurchasing = true;
    for (const Line& l : lines)
        fixture::BasketRow(l.item, QString::number(l.qty), 1,
                           l.due.isValid() ? QStringLiteral("'%1'").arg(SqlDate(l.due))
                                           : QStringLiteral("NULL"));
    BasketLoad basket = LoadBasket(supplier);
    for (int r = 1; r <= basket.rowCount && r <= lines.size(); ++r)
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
    if (basket.rowCount != lines.size() || placed.outcome != OrderNowResult::Placed)
        QTest::qFail("the order was not placed as given", __FILE__, __LINE__);
    return SqlFirst(QStringLiteral("SELECT group_concat(RowID) FROM (SELECT RowID FROM "
                                   "tblPODetail WHERE POID = %1 ORDER BY RowID)")
                        .arg(placed.poid))
        .split(QLatin1Char(','));
}

// Books `qty` of an order line in on `day` through goods receiving, as the storeman does: the
// order's rows loaded, the quantity typed against the line, booked. The question about a row
// received above what it still awaits is answered Yes.
inline void Receive(const QString& rowId, double qty, const QDate& day, ScriptedBoxes& boxes) {
    SetToday(day);
    GoodsInArray rows = LoadOrderRows(
        SqlFirst(QStringLiteral("SELECT POID FROM tblPODetail WHERE RowID = ") + rowId).toInt(),
        true);
    bool over = false;
    for (int r = 1; r <= rows.rowCount; ++r) {
        const bool line = rows.rows(GinCol::RowID, r).toString() == rowId;
        if (line)
            rows.rows(GinCol::RXd, r) = ReceivedQtyText(qty);
        over = over || ParseLocaleNumber(rows.rows(GinCol::PQty, r)) < (line ? qty : 0);
    }
    if (over)
        boxes.answer(vbYes);
    BookInInput in;
    in.rows = &rows;
    in.adviceNo = QStringLiteral("DN1");
    in.grnNo = QStringLiteral("GRN1");
    if (BookInGoods(in) != kBookInDone)
        QTest::qFail("the goods were not booked in", __FILE__, __LINE__);
}

} // namespace reporttest
