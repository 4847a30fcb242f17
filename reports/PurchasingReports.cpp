#include "reports/PurchasingReports.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"

#include <QHash>

namespace {

const QString kQtyMask = QStringLiteral("0.0#");
const QString kOrderedMask = QStringLiteral("#0.0#");
const QString kPriceMask = QStringLiteral("0.00###");
const QString kTotalMask = QStringLiteral("#,###,##0.00");

// A column whose caption is its key.
ReportColumn text(const char* key, int width) {
    return TextColumn(key, key, width);
}

// Stored dates as the grid shows them. A walk meets the same few hundred dates over and over,
// so each is turned into its screen text once.
class ShownDates {
public:
    const QString& operator()(const QString& stored) {
        auto it = mShown.constFind(stored);
        if (it == mShown.constEnd())
            it = mShown.insert(stored, ShowDate(QVariant(stored)));
        return *it;
    }

private:
    QHash<QString, QString> mShown;
};

// The part columns of a row, in the order the reports list them.
struct PartFields {
    int pno = -1, name = -1, desc = -1;
    void Find(const Recordset& rs) {
        pno = rs.FieldIndex(QStringLiteral("MasterPNo"));
        name = rs.FieldIndex(QStringLiteral("ItemName"));
        desc = rs.FieldIndex(QStringLiteral("ItemDescription"));
    }
    void Append(const Recordset& rs, QStringList& cells) const {
        cells << rs.Fields(pno).Text() << rs.Fields(name).Text() << rs.Fields(desc).Text();
    }
};

// A field shown before the part columns of a line report: as its text, or as a date.
struct LeadField {
    const char* name;
    bool date;
};

// Walks the lines of reports 5, 6 and 7: each row shows the lead fields, the part, the price, the
// quantity ordered through `orderedMask` and the quantity in `receivedField`. Returns the total
// of the rows' values: the price of what was ordered, less the price of the received quantity
// where `lessReceived`.
double walkLines(const QString& statement, const ReportInput& input,
                 const QList<LeadField>& leadFields, const char* receivedField,
                 const QString& orderedMask, bool lessReceived, QList<QStringList>& rows) {
    int fQty = -1, fRecd = -1, fPrice = -1;
    QList<QPair<int, bool>> lead;
    PartFields part;
    const NumberMask priceMask(kPriceMask), ordered(orderedMask), qtyMask(kQtyMask);
    ShownDates dates;
    double total = 0;
    WalkReport(
        statement, input,
        [&](const Recordset& rs) {
            for (const LeadField& f : leadFields)
                lead << qMakePair(rs.FieldIndex(QLatin1String(f.name)), f.date);
            fQty = rs.FieldIndex(QStringLiteral("POQty"));
            fRecd = rs.FieldIndex(QLatin1String(receivedField));
            fPrice = rs.FieldIndex(QStringLiteral("POPrice"));
            part.Find(rs);
        },
        [&](const Recordset& rs) {
            const double price = rs.Fields(fPrice).Double();
            const double qty = rs.Fields(fQty).Double();
            const double received = rs.Fields(fRecd).Double();
            total += lessReceived ? price * qty - price * received : price * qty;
            QStringList cells;
            cells.reserve(lead.size() + 6);
            for (const auto& [f, date] : lead)
                cells << (date ? dates(rs.Fields(f).Text()) : rs.Fields(f).Text());
            part.Append(rs, cells);
            cells << priceMask.Plain(price) << ordered.Plain(qty) << qtyMask.Plain(received);
            rows << std::move(cells);
        });
    return total;
}

// The order, its lines, their items and the supplier (reports 5 and 6); with the receipts of
// each line between lines and items (reports 7 and 8).
const char* const kLinesOfOrders =
    "FROM ((tblPOrders INNER JOIN tblPODetail ON tblPOrders.POID = tblPODetail.POID) INNER JOIN "
    "tblStockItems ON tblPODetail.POStockID = tblStockItems.ItemID) INNER JOIN tblSupAddresses "
    "ON tblPOrders.POSupID = tblSupAddresses.AddID";
const char* const kReceiptsOfLines =
    "FROM (((tblPOrders INNER JOIN tblPODetail ON tblPOrders.POID = tblPODetail.POID) INNER JOIN "
    "tblItemHistory ON tblPODetail.RowID = tblItemHistory.HistID2) INNER JOIN tblStockItems ON "
    "tblPODetail.POStockID = tblStockItems.ItemID) INNER JOIN tblSupAddresses ON "
    "tblPOrders.POSupID = tblSupAddresses.AddID";

// The lead of reports 6 and 7: the reference, the supplier's short name, the order date and the
// delivery date.
const QList<LeadField> kLineLead = {
    {"PONumber", false}, {"ShortNm", false}, {"PODate", true}, {"POSchedDate", true}};

} // namespace

QString OrdersInPeriodStatement(const QDate& start, const QDate& end) {
    return QStringLiteral("SELECT tblPOrders.PONumber, tblPOrders.PODate, tblPODetail.POQty, "
                          "tblPODetail.PORecieved, tblPODetail.POPrice, tblStockItems.MasterPNo, "
                          "tblStockItems.ItemName, tblStockItems.ItemDescription, "
                          "tblSupAddresses.CoName ") +
           QLatin1String(kLinesOfOrders) + QStringLiteral(" WHERE tblPOrders.PODate > ") +
           SqlDateLiteral(start) + QStringLiteral(" AND  tblPOrders.PODate< ") +
           SqlDateLiteral(end) + QStringLiteral(" ORDER BY PONumber");
}

QString OverdueLinesStatement(const QDate& today) {
    return QStringLiteral("SELECT tblPOrders.PONumber, tblPOrders.PODate, tblPODetail.POQty, "
                          "tblPODetail.PORecieved, tblPODetail.POPrice, tblPODetail.POSchedDate, "
                          "tblStockItems.MasterPNo, tblStockItems.ItemName, "
                          "tblStockItems.ItemDescription, tblSupAddresses.CoName, "
                          "tblSupAddresses.ShortNm ") +
           QLatin1String(kLinesOfOrders) +
           QStringLiteral(" WHERE tblPODetail.POQty <> tblPODetail.PORecieved AND  "
                          "tblPODetail.POSchedDate < ") +
           SqlDateLiteral(today) + QStringLiteral(" ORDER BY tblPOrders.PONumber");
}

QString LateDeliveriesStatement(const QDate& start, const QDate& end) {
    return QStringLiteral("SELECT tblPOrders.PONumber, tblPOrders.PODate, tblPODetail.POQty, "
                          "tblPODetail.PORecieved, tblPODetail.POPrice, tblPODetail.POSchedDate, "
                          "tblPODetail.RowID, tblItemHistory.HistDate, tblItemHistory.HistQty, "
                          "tblStockItems.MasterPNo, tblStockItems.ItemName, "
                          "tblStockItems.ItemDescription, tblSupAddresses.CoName, "
                          "tblSupAddresses.ShortNm ") +
           QLatin1String(kReceiptsOfLines) +
           QStringLiteral(" WHERE tblItemHistory.HistType = 'RX' AND tblItemHistory.HistDate > "
                          "tblPODetail.POSchedDate AND tblItemHistory.HistDate > ") +
           SqlDateLiteral(start) + QStringLiteral(" AND  tblItemHistory.HistDate < ") +
           SqlDateLiteral(end) + QStringLiteral(" ORDER BY PONumber");
}

QString LateDeliveriesBySupplierStatement(const QDate& start, const QDate& end) {
    return QStringLiteral("SELECT tblPOrders.POSupID, tblPODetail.POQty, tblPODetail.PORecieved, "
                          "tblPODetail.POPrice, tblPODetail.POSchedDate, tblPODetail.RowID, "
                          "tblItemHistory.HistDate, tblItemHistory.HistQty, "
                          "tblStockItems.MasterPNo, tblStockItems.ItemName, "
                          "tblStockItems.ItemDescription, tblSupAddresses.CoName, "
                          "tblSupAddresses.ShortNm ") +
           QLatin1String(kReceiptsOfLines) +
           QStringLiteral(" WHERE tblItemHistory.HistDate > tblPODetail.POSchedDate AND "
                          "tblItemHistory.HistType = 'RX' AND tblItemHistory.HistDate > ") +
           SqlDateLiteral(start) + QStringLiteral(" AND  tblItemHistory.HistDate < ") +
           SqlDateLiteral(end) + QStringLiteral(" ORDER BY CoName");
}

ReportResult OrdersInPeriodReport(const ReportInput& input) {
    ReportResult r;
    r.ran = true;
    r.columns = {text("PONumber", 1300),
                 TextColumn("PODate", "PO Date", 1450),
                 text("Supplier", 2200),
                 text("PartNo", 1500),
                 text("Name", 1200),
                 text("Desc", 2400),
                 FigureColumn("Price", "Cost (x1) ", 1100),
                 FigureColumn("Qty", "Ordered ", 900),
                 FigureColumn("Received", "Received ", 1000)};

    const double total = walkLines(OrdersInPeriodStatement(input.startDate, input.endDate), input,
                                   {{"PONumber", false}, {"PODate", true}, {"CoName", false}},
                                   "PORecieved", kOrderedMask, false, r.rows);
    // The buyer's reference marks the orders: lines without one count no order, and two orders
    // under one reference count once.
    QString lastRef;
    int orders = 0;
    for (const QStringList& row : r.rows) {
        if (row.first() != lastRef) {
            ++orders;
            lastRef = row.first();
        }
    }

    WriteSummary(r, QStringLiteral("Number of Purchase Orders = ") + QString::number(orders),
                 QStringLiteral("Total Value of Purchase Orders = "), total,
                 QStringLiteral("Number of Lines = ") + QString::number(r.rows.size()));
    return r;
}

ReportResult OverdueLinesReport(const ReportInput& input) {
    ReportResult r;
    r.ran = true;
    r.columns = {text("PONumber", 1300),
                 TextColumn("Vendor", "Supplier", 900),
                 TextColumn("PODate", "PO Date", 1450),
                 TextColumn("DueDate", "Due Date", 1450),
                 text("PartNumber", 1500),
                 text("Name", 1100),
                 text("Description", 2300),
                 FigureColumn("Cost", "Cost (x1) ", 1100),
                 FigureColumn("Qty", "Ordered ", 900),
                 FigureColumn("Received", "Received ", 1000)};

    // What remains to come: negative for a line received above its order.
    const double total = walkLines(OverdueLinesStatement(Today()), input, kLineLead, "PORecieved",
                                   kQtyMask, true, r.rows);

    WriteSummary(r, QStringLiteral("Number of Item/rows = ") + QString::number(r.rows.size()),
                 QStringLiteral("Total Value/cost of Overdue items = "), total);
    return r;
}

ReportResult LateDeliveriesReport(const ReportInput& input) {
    ReportResult r;
    r.ran = true;
    r.columns = {text("PONumber", 1300),
                 TextColumn("Vendor", "Supplier", 900),
                 text("Ordered", 1450),
                 text("Scheduled", 1450),
                 text("Delivered", 1450),
                 text("PartNo", 1500),
                 text("Name", 1000),
                 text("Desc", 2000),
                 FigureColumn("Price", "Cost (x1) ", 1100),
                 FigureColumn("PO Qty", "Ordered ", 900),
                 FigureColumn("Received", "Received ", 1000)};

    // Each receipt is valued against the line's whole order, whatever came before it.
    const double total = walkLines(LateDeliveriesStatement(input.startDate, input.endDate), input,
                                   kLineLead + QList<LeadField>{{"HistDate", true}}, "HistQty",
                                   kQtyMask, true, r.rows);

    WriteSummary(r, QStringLiteral("Number of Item/rows = ") + QString::number(r.rows.size()),
                 QStringLiteral("Total Value of Late Deliveries = "), total);
    r.summary.label2 = QStringLiteral("NOTE:-\nThis report can only identify late deliveries "
                                      "received AFTER your installation/upgrade to Planlet "
                                      "version 2.5 (or above)");
    return r;
}

ReportResult LateDeliveriesBySupplierReport(const ReportInput& input) {
    ReportResult r;
    r.ran = true;
    r.columns = {text("Supplier", 3500), FigureColumn("Value", "Value ", 1800),
                 FigureColumn("How Often", "How Often ", 1200)};

    int fName = -1, fQty = -1, fHistQty = -1, fPrice = -1;
    const NumberMask valueMask(kTotalMask);
    QString running; // the supplier whose receipts are being summed
    double value = 0;
    int count = 0;
    double total = 0;
    bool any = false;
    auto writeSupplier = [&] {
        r.rows << QStringList{running, valueMask.Plain(value), QString::number(count)};
        total += value;
        value = 0;
        count = 0;
    };
    WalkReport(
        LateDeliveriesBySupplierStatement(input.startDate, input.endDate), input,
        [&](const Recordset& rs) {
            fName = rs.FieldIndex(QStringLiteral("CoName"));
            fQty = rs.FieldIndex(QStringLiteral("POQty"));
            fHistQty = rs.FieldIndex(QStringLiteral("HistQty"));
            fPrice = rs.FieldIndex(QStringLiteral("POPrice"));
        },
        [&](const Recordset& rs) {
            any = true;
            const QString name = rs.Fields(fName).Text();
            // A supplier without a name sorts first and writes no row of its own: its receipts
            // are summed into the next supplier's.
            if (name != running && !running.isEmpty())
                writeSupplier();
            running = name;
            ++count;
            const double price = rs.Fields(fPrice).Double();
            value += rs.Fields(fQty).Double() * price - rs.Fields(fHistQty).Double() * price;
        });
    if (any)
        writeSupplier();

    WriteSummary(r, QString(), QStringLiteral("Total Value of Late Deliveries = "), total);
    return r;
}
