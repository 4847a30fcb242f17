#include "reports/InventoryReports.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "inventory/FirstRowPerPartNo.h"

namespace {

const QString kQtyMask = QStringLiteral("0.0#");
const QString kPriceMask = QStringLiteral("0.00###");
const QString kTotalMask = QStringLiteral("#,##0.00");
const QString kSubtotalMask = QStringLiteral("#,##0.00###");

ReportColumn text(const char* key, const char* caption, int width) {
    return {QString::fromLatin1(key), QString::fromLatin1(caption), false, width};
}
ReportColumn figure(const char* key, const char* caption, int width) {
    return {QString::fromLatin1(key), QString::fromLatin1(caption), true, width};
}

// A number column: the engine's value, whatever the locale (a Null reads as 0).
double number(const Field& f) {
    return f.Double();
}

// The figures of one stock item row and the total, shared by reports 4, 11 and 12.
struct StockFigures {
    NumberMask qty{kQtyMask};
    NumberMask price{kPriceMask};
    double total = 0;

    // The Qty, Cost and TotalCost cells of a row. A negative quantity leaves its cell empty and
    // stays out of the total; its value is shown all the same.
    struct Cells {
        QString qty, cost, value;
    };
    Cells Add(double qtyValue, double priceEach) {
        const double value = priceEach * qtyValue;
        if (qtyValue > 0)
            total += value;
        return {qtyValue < 0 ? QString() : qty.Plain(qtyValue), price.Plain(priceEach),
                price.Plain(value)};
    }
};

void writeSummary(ReportResult& r, const QString& count, const QString& totalCaption, double total,
                  const QString& note) {
    r.summary.text[0] = count + QString::number(r.rows.size());
    r.summary.text[1] = totalCaption;
    r.summary.text[2] = Format(total, kTotalMask);
    r.summary.text[3] = QString();
    r.summary.text[4] = note;
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
    r.columns = {text("Item", "Item", 700),
                 text("PNo", "Part No.", 1800),
                 text("Desc", "Description", 3000),
                 text("Location", "Location ", 1000),
                 figure("Qty", "Qty ", 800),
                 figure("Cost", "Cost (x1) ", 1100),
                 figure("TotalCost", "Value (at Cost) ", 1400)};

    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(IdleStockStatement(input.startDate, input.endDate));
    const int fStock = rs.FieldIndex(QStringLiteral("StockID"));
    const int fPNo = rs.FieldIndex(QStringLiteral("MasterPNo"));
    const int fDesc = rs.FieldIndex(QStringLiteral("ItemDescription"));
    const int fLoc = rs.FieldIndex(QStringLiteral("Location"));
    const int fQty = rs.FieldIndex(QStringLiteral("Qty"));
    const int fPrice = rs.FieldIndex(QStringLiteral("PriceEach"));

    StockFigures figures;
    FirstRowPerPartNo walk;
    ReportEvents events(input.events);
    for (; !rs.Eof(); rs.MoveNext()) {
        events.Row();
        QString pno = rs.Fields(fPNo).Text();
        if (!walk.Take(pno))
            continue;
        StockFigures::Cells f = figures.Add(number(rs.Fields(fQty)), number(rs.Fields(fPrice)));
        // The history side of the join is empty by the statement's own condition.
        r.rows << QStringList{rs.Fields(fStock).Text(), std::move(pno),   rs.Fields(fDesc).Text(),
                              rs.Fields(fLoc).Text(),   std::move(f.qty), std::move(f.cost),
                              std::move(f.value)};
    }
    rs.Close();
    db.Close();

    writeSummary(r, QStringLiteral("Number of records = "),
                 QStringLiteral("Total value (at cost) of Idle Inventory = "), figures.total,
                 QStringLiteral("Total does not include items where OnHand Qty is less than zero"));
    return r;
}

ReportResult InventoryValuationReport(const ReportInput& input, bool groupByCategory) {
    ReportResult r;
    r.ran = true;
    r.columns = {text("Cat", "Cat", 700),
                 text("PNo", "Part No.", 1800),
                 text("Desc", "Description", 3000),
                 text("Category", "Category", 1200),
                 text("Location", "Location ", 1000),
                 figure("Qty", "Qty ", 800),
                 figure("Cost", "Cost (x1) ", 1100),
                 figure("TotalCost", "Value (at Cost) ", 1400)};
    if (groupByCategory)
        r.groupKey = QStringLiteral("Category");

    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(InventoryValuationStatement());
    const int fPNo = rs.FieldIndex(QStringLiteral("MasterPNo"));
    const int fDesc = rs.FieldIndex(QStringLiteral("ItemDescription"));
    const int fLoc = rs.FieldIndex(QStringLiteral("Location"));
    const int fQty = rs.FieldIndex(QStringLiteral("Qty"));
    const int fCat = rs.FieldIndex(QStringLiteral("Category"));
    const int fPrice = rs.FieldIndex(QStringLiteral("PriceEach"));

    StockFigures figures;
    FirstRowPerPartNo walk;
    ReportEvents events(input.events);
    for (; !rs.Eof(); rs.MoveNext()) {
        events.Row();
        QString pno = rs.Fields(fPNo).Text();
        if (!walk.Take(pno))
            continue;
        const QString category = rs.Fields(fCat).Text();
        StockFigures::Cells f = figures.Add(number(rs.Fields(fQty)), number(rs.Fields(fPrice)));
        r.rows << QStringList{category,          std::move(pno),         rs.Fields(fDesc).Text(),
                              category,          rs.Fields(fLoc).Text(), std::move(f.qty),
                              std::move(f.cost), std::move(f.value)};
    }
    rs.Close();
    db.Close();

    writeSummary(r, QStringLiteral("Number of records = "),
                 QStringLiteral("Total Value of OnHand Inventory = "), figures.total,
                 QStringLiteral("Does not show OnHand Qty if below zero"));
    return r;
}

ReportResult CategoryValueReport(const ReportInput& input) {
    ReportResult r;
    r.ran = true;
    r.columns = {text("Cat", "Category", 3000), figure("Cost", "Value (Cost)", 1800)};

    Database db = DBEngine::OpenDatabase(gDbPath);
    // The join with the history gives an item one row per history row and supplier; the part
    // number rule takes the first and skips the rest, comparing the part number alone.
    Recordset rs = db.OpenRecordset(CategoryValueStatement());
    const int fPNo = rs.FieldIndex(QStringLiteral("MasterPNo"));
    const int fQty = rs.FieldIndex(QStringLiteral("Qty"));
    const int fCat = rs.FieldIndex(QStringLiteral("Category"));
    const int fPrice = rs.FieldIndex(QStringLiteral("PriceEach"));

    const NumberMask subtotalMask(kSubtotalMask);
    double total = 0;
    double subtotal = 0;
    QString running;
    auto writeCategory = [&] {
        r.rows << QStringList{running, subtotalMask.Plain(subtotal)};
        total += subtotal;
        subtotal = 0;
    };
    if (!rs.Eof())
        running = rs.Fields(fCat).Text();
    const bool any = !rs.Eof();
    FirstRowPerPartNo walk;
    ReportEvents events(input.events);
    for (; !rs.Eof(); rs.MoveNext()) {
        events.Row();
        if (!walk.Take(rs.Fields(fPNo).Text()))
            continue;
        const QString category = rs.Fields(fCat).Text();
        if (category != running) {
            writeCategory();
            running = category;
        }
        const double qty = number(rs.Fields(fQty));
        if (qty > 0)
            subtotal += qty * number(rs.Fields(fPrice));
    }
    if (any)
        writeCategory();
    rs.Close();
    db.Close();

    writeSummary(r, QStringLiteral("Number of Categories = "),
                 QStringLiteral("Total Value of OnHand Inventory = "), total,
                 QStringLiteral("Values do not include items where OnHand Qty is less than zero"));
    return r;
}
