#include "reports/InventoryReports.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "inventory/PartNumberOrder.h"

namespace {

const QString kQtyMask = QStringLiteral("0.0#");
const QString kPriceMask = QStringLiteral("0.00###");
const QString kSubtotalMask = QStringLiteral("#,##0.00###");

// The columns of the stock item reports: the first column, the part, its category where shown,
// and the figures. In Portrait a listing fits with the category shown (10,600 twips).
QList<ReportColumn> stockColumns(const ReportColumn& first, bool withCategory) {
    QList<ReportColumn> columns{first, TextColumn("PNo", "Part No.", 1600),
                                TextColumn("Desc", "Description", 2800)};
    if (withCategory)
        columns << TextColumn("Category", "Category", 1100);
    columns << TextColumn("Location", "Location ", 900) << FigureColumn("Qty", "Qty ", 800)
            << FigureColumn("Cost", "Cost (x1) ", 1100)
            << FigureColumn("TotalCost", "Value (at Cost) ", 1600);
    return columns;
}

// Walks the rows of a stock statement, taking the first row of each part number. A taken row
// gets the text of the lead fields, in order, then its Qty, Cost and TotalCost: a negative
// quantity leaves its cell empty and stays out of the total, its value shown all the same.
// Numbers are the engine's values, whatever the locale (a Null reads as 0). Returns the total.
double walkStockRows(const QString& statement, const QStringList& leadFields,
                     const ReportInput& input, QList<QStringList>& rows) {
    int fPNo = -1, fQty = -1, fPrice = -1;
    // A field named twice is read once; -1 marks the part number, read for the walk.
    QList<int> lead;
    QList<int> sameAs;
    const NumberMask qtyMask(kQtyMask);
    const NumberMask priceMask(kPriceMask);
    double total = 0;
    FirstRowPerPartNumber walk;
    WalkReport(
        statement, input,
        [&](const Recordset& rs) {
            fPNo = rs.FieldIndex(QStringLiteral("MasterPNo"));
            fQty = rs.FieldIndex(QStringLiteral("Qty"));
            fPrice = rs.FieldIndex(QStringLiteral("PriceEach"));
            for (const QString& name : leadFields) {
                const int f = rs.FieldIndex(name);
                sameAs << int(lead.indexOf(f));
                lead << (f == fPNo ? -1 : f);
            }
        },
        [&](const Recordset& rs) {
            const QString pno = rs.Fields(fPNo).Text();
            if (!walk.Take(pno))
                return;
            QStringList cells;
            cells.reserve(lead.size() + 3);
            for (qsizetype i = 0; i < lead.size(); ++i) {
                QString cell = sameAs[i] >= 0 ? cells.at(sameAs[i])
                               : lead[i] < 0  ? pno
                                              : rs.Fields(lead[i]).Text();
                cells << std::move(cell);
            }
            const double qty = rs.Fields(fQty).Double();
            const double price = rs.Fields(fPrice).Double();
            const double value = price * qty;
            if (qty > 0)
                total += value;
            cells << (qty < 0 ? QString() : qtyMask.Plain(qty)) << priceMask.Plain(price)
                  << priceMask.Plain(value);
            rows << std::move(cells);
        });
    return total;
}

} // namespace

QString IdleStockStatement(const QDate& start, const QDate& end) {
    return QStringLiteral("SELECT * FROM (tblStockItems LEFT JOIN (SELECT * FROM tblItemHistory "
                          "WHERE tblItemHistory.HistDate > ") +
           SqlDateLiteral(start) + QStringLiteral(" AND tblItemHistory.HistDate < ") +
           SqlDateLiteral(end) +
           QStringLiteral(") AS tblHistory ON tblStockItems.ItemID = tblHistory.StockID) "
                          "LEFT JOIN tblItemSupplier ON tblStockItems.ItemID = "
                          "tblItemSupplier.ItemID WHERE tblHistory.StockID Is Null ORDER BY "
                          "tblStockItems.MasterPNo, tblItemSupplier.PrimeSupplier");
}

QString InventoryValuationStatement() {
    return QStringLiteral(
        "SELECT tblStockItems.ItemID, tblStockItems.MasterPNo, tblStockItems.ItemDescription, "
        "tblStockItems.Location, tblStockItems.Qty, tblStockItems.Category, "
        "tblItemSupplier.PriceEach FROM tblStockItems LEFT JOIN tblItemSupplier ON "
        "tblItemSupplier.ItemID=tblStockItems.ItemID ORDER BY tblStockItems.MasterPNo, "
        "tblItemSupplier.PrimeSupplier");
}

QString CategoryValueStatement() {
    return QStringLiteral(
        "SELECT tblStockItems.ItemID, tblItemHistory.StockID, tblStockItems.MasterPNo, "
        "tblStockItems.ItemDescription, tblStockItems.Location, tblStockItems.Qty, "
        "tblStockItems.Category, tblItemSupplier.PriceEach FROM (tblStockItems LEFT JOIN "
        "tblItemHistory ON tblStockItems.ItemID = tblItemHistory.StockId) LEFT JOIN "
        "tblItemSupplier ON tblItemSupplier.ItemID=tblStockItems.ItemID ORDER BY "
        "tblStockItems.Category, tblStockItems.MasterPNo, tblItemSupplier.PrimeSupplier");
}

ReportResult IdleStockReport(const ReportInput& input) {
    ReportResult r;
    r.ran = true;
    r.columns = stockColumns(TextColumn("Item", "Item", 700), false);

    // Item takes the history side's StockID, empty by the statement's own condition.
    const double total =
        walkStockRows(IdleStockStatement(input.startDate, input.endDate),
                      {QStringLiteral("StockID"), QStringLiteral("MasterPNo"),
                       QStringLiteral("ItemDescription"), QStringLiteral("Location")},
                      input, r.rows);

    WriteSummary(r, QStringLiteral("Number of records = ") + QString::number(r.rows.size()),
                 QStringLiteral("Total value (at cost) of Idle Inventory = "), total, QString(),
                 QStringLiteral("Total does not include items where OnHand Qty is less than zero"));
    return r;
}

ReportResult InventoryValuationReport(const ReportInput& input, bool groupByCategory) {
    ReportResult r;
    r.ran = true;
    r.columns = stockColumns(TextColumn("Cat", "Cat", 700), true);
    if (groupByCategory)
        r.groupKey = QStringLiteral("Category");

    const double total = walkStockRows(InventoryValuationStatement(),
                                       {QStringLiteral("Category"), QStringLiteral("MasterPNo"),
                                        QStringLiteral("ItemDescription"),
                                        QStringLiteral("Category"), QStringLiteral("Location")},
                                       input, r.rows);

    WriteSummary(r, QStringLiteral("Number of records = ") + QString::number(r.rows.size()),
                 QStringLiteral("Total Value of OnHand Inventory = "), total, QString(),
                 QStringLiteral("Does not show OnHand Qty if below zero"));
    return r;
}

ReportResult CategoryValueReport(const ReportInput& input) {
    ReportResult r;
    r.ran = true;
    r.columns = {TextColumn("Cat", "Category", 3000), FigureColumn("Cost", "Value (Cost)", 1800)};

    // The join with the history gives an item one row per history row and supplier; the part
    // number rule takes the first and skips the rest, comparing the part number alone.
    int fPNo = -1, fQty = -1, fCat = -1, fPrice = -1;
    const NumberMask subtotalMask(kSubtotalMask);
    double total = 0;
    double subtotal = 0;
    QString running;
    bool any = false;
    auto writeCategory = [&] {
        r.rows << QStringList{running, subtotalMask.Plain(subtotal)};
        total += subtotal;
        subtotal = 0;
    };
    FirstRowPerPartNumber walk;
    WalkReport(
        CategoryValueStatement(), input,
        [&](const Recordset& rs) {
            fPNo = rs.FieldIndex(QStringLiteral("MasterPNo"));
            fQty = rs.FieldIndex(QStringLiteral("Qty"));
            fCat = rs.FieldIndex(QStringLiteral("Category"));
            fPrice = rs.FieldIndex(QStringLiteral("PriceEach"));
            any = !rs.Eof();
            if (any)
                running = rs.Fields(fCat).Text();
        },
        [&](const Recordset& rs) {
            if (!walk.Take(rs.Fields(fPNo).Text()))
                return;
            const QString category = rs.Fields(fCat).Text();
            if (category != running) {
                writeCategory();
                running = category;
            }
            const double qty = rs.Fields(fQty).Double();
            if (qty > 0)
                subtotal += qty * rs.Fields(fPrice).Double();
        });
    if (any)
        writeCategory();

    WriteSummary(r, QStringLiteral("Number of Categories = ") + QString::number(r.rows.size()),
                 QStringLiteral("Total Value of OnHand Inventory = "), total, QString(),
                 QStringLiteral("Values do not include items where OnHand Qty is less than zero"));
    return r;
}
