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

ReportColumn text(const char* key, const char* caption, int width) {
    return {QString::fromLatin1(key), QString::fromLatin1(caption), false, width};
}
ReportColumn figure(const char* key, const char* caption, int width) {
    return {QString::fromLatin1(key), QString::fromLatin1(caption), true, width};
}
// A column whose caption is its key.
ReportColumn text(const char* key, int width) {
    return text(key, key, width);
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

// Runs one statement on its own connection and hands each row to `row`, letting window events
// run meanwhile. The connection is gone when the walk returns, so no lock outlives it.
template <typename RowFn, typename SetupFn>
void walk(const QString& statement, const ReportInput& input, SetupFn setup, RowFn row) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(statement);
    setup(rs);
    ReportEvents events(input.events);
    for (; !rs.Eof(); rs.MoveNext()) {
        events.Row();
        row(rs);
    }
    rs.Close();
    db.Close();
}

// A count in Text1, a total with its caption in Text2 and Text3 (the figure beside its caption),
// and anything else in Text4.
void writeSummary(ReportResult& r, const QString& count, const QString& totalCaption, double total,
                  const QString& more = QString()) {
    r.summary.text[0] = count;
    r.summary.text[1] = totalCaption;
    r.summary.text[2] = Format(total, kTotalMask);
    r.summary.text[3] = more;
}

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

// Walks the lines of reports 6 and 7: each row shows the reference, the supplier's short name,
// the order date, the delivery date, the date in `receiptDateField` where one is named, the
// part, the price, the quantity ordered and the quantity in `receivedField`. Returns the total of
// the rows' values, each the price of what was ordered less the price of that quantity.
double walkLines(const QString& statement, const ReportInput& input,
                 const QString& receiptDateField, const QString& receivedField,
                 QList<QStringList>& rows) {
    int fRef = -1, fVendor = -1, fQty = -1, fRecd = -1, fPrice = -1;
    QList<int> fDates;
    PartFields part;
    const NumberMask priceMask(kPriceMask), qtyMask(kQtyMask);
    ShownDates dates;
    double total = 0;
    walk(
        statement, input,
        [&](const Recordset& rs) {
            fRef = rs.FieldIndex(QStringLiteral("PONumber"));
            fVendor = rs.FieldIndex(QStringLiteral("ShortNm"));
            fDates << rs.FieldIndex(QStringLiteral("PODate"))
                   << rs.FieldIndex(QStringLiteral("POSchedDate"));
            if (!receiptDateField.isEmpty())
                fDates << rs.FieldIndex(receiptDateField);
            fQty = rs.FieldIndex(QStringLiteral("POQty"));
            fRecd = rs.FieldIndex(receivedField);
            fPrice = rs.FieldIndex(QStringLiteral("POPrice"));
            part.Find(rs);
        },
        [&](const Recordset& rs) {
            const double price = rs.Fields(fPrice).Double();
            const double qty = rs.Fields(fQty).Double();
            const double received = rs.Fields(fRecd).Double();
            total += price * qty - price * received;
            QStringList cells{rs.Fields(fRef).Text(), rs.Fields(fVendor).Text()};
            cells.reserve(fDates.size() + 8);
            for (int f : fDates)
                cells << dates(rs.Fields(f).Text());
            part.Append(rs, cells);
            cells << priceMask.Plain(price) << qtyMask.Plain(qty) << qtyMask.Plain(received);
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
                 text("PODate", "PO Date", 1450),
                 text("Supplier", 2200),
                 text("PartNo", 1500),
                 text("Name", 1200),
                 text("Desc", 2400),
                 figure("Price", "Cost (x1) ", 1100),
                 figure("Qty", "Ordered ", 900),
                 figure("Received", "Received ", 1000)};

    int fRef = -1, fDate = -1, fQty = -1, fRecd = -1, fPrice = -1, fSupplier = -1;
    PartFields part;
    const NumberMask priceMask(kPriceMask), orderedMask(kOrderedMask), qtyMask(kQtyMask);
    ShownDates dates;
    QString lastRef; // the reference of the order counted last
    int orders = 0;
    double total = 0;
    walk(
        OrdersInPeriodStatement(input.startDate, input.endDate), input,
        [&](const Recordset& rs) {
            fRef = rs.FieldIndex(QStringLiteral("PONumber"));
            fDate = rs.FieldIndex(QStringLiteral("PODate"));
            fQty = rs.FieldIndex(QStringLiteral("POQty"));
            fRecd = rs.FieldIndex(QStringLiteral("PORecieved"));
            fPrice = rs.FieldIndex(QStringLiteral("POPrice"));
            fSupplier = rs.FieldIndex(QStringLiteral("CoName"));
            part.Find(rs);
        },
        [&](const Recordset& rs) {
            // The buyer's reference marks the orders: lines without one count no order, and two
            // orders under one reference count once.
            const QString ref = rs.Fields(fRef).Text();
            if (ref != lastRef) {
                ++orders;
                lastRef = ref;
            }
            const double price = rs.Fields(fPrice).Double();
            const double qty = rs.Fields(fQty).Double();
            total += price * qty;
            QStringList cells{ref, dates(rs.Fields(fDate).Text()), rs.Fields(fSupplier).Text()};
            cells.reserve(9);
            part.Append(rs, cells);
            cells << priceMask.Plain(price) << orderedMask.Plain(qty)
                  << qtyMask.Plain(rs.Fields(fRecd).Double());
            r.rows << std::move(cells);
        });

    writeSummary(r, QStringLiteral("Number of Purchase Orders = ") + QString::number(orders),
                 QStringLiteral("Total Value of Purchase Orders = "), total,
                 QStringLiteral("Number of Lines = ") + QString::number(r.rows.size()));
    return r;
}

ReportResult OverdueLinesReport(const ReportInput& input) {
    ReportResult r;
    r.ran = true;
    r.columns = {text("PONumber", 1300),          text("Vendor", "Supplier", 900),
                 text("PODate", "PO Date", 1450), text("DueDate", "Due Date", 1450),
                 text("PartNumber", 1500),        text("Name", 1100),
                 text("Description", 2300),       figure("Cost", "Cost (x1) ", 1100),
                 figure("Qty", "Ordered ", 900),  figure("Received", "Received ", 1000)};

    // What remains to come: negative for a line received above its order.
    const double total = walkLines(OverdueLinesStatement(Today()), input, QString(),
                                   QStringLiteral("PORecieved"), r.rows);

    writeSummary(r, QStringLiteral("Number of Item/rows = ") + QString::number(r.rows.size()),
                 QStringLiteral("Total Value/cost of Overdue items = "), total);
    return r;
}

ReportResult LateDeliveriesReport(const ReportInput& input) {
    ReportResult r;
    r.ran = true;
    r.columns = {text("PONumber", 1300),
                 text("Vendor", "Supplier", 900),
                 text("Ordered", 1450),
                 text("Scheduled", 1450),
                 text("Delivered", 1450),
                 text("PartNo", 1500),
                 text("Name", 1000),
                 text("Desc", 2000),
                 figure("Price", "Cost (x1) ", 1100),
                 figure("PO Qty", "Ordered ", 900),
                 figure("Received", "Received ", 1000)};

    // Each receipt is valued against the line's whole order, whatever came before it.
    const double total = walkLines(LateDeliveriesStatement(input.startDate, input.endDate), input,
                                   QStringLiteral("HistDate"), QStringLiteral("HistQty"), r.rows);

    writeSummary(r, QStringLiteral("Number of Item/rows = ") + QString::number(r.rows.size()),
                 QStringLiteral("Total Value of Late Deliveries = "), total);
    r.summary.label2 = QStringLiteral("NOTE:-\nThis report can only identify late deliveries "
                                      "received AFTER your installation/upgrade to Planlet "
                                      "version 2.5 (or above)");
    return r;
}

ReportResult LateDeliveriesBySupplierReport(const ReportInput& input) {
    ReportResult r;
    r.ran = true;
    r.columns = {text("Supplier", 3500), figure("Value", "Value ", 1800),
                 figure("How Often", "How Often ", 1200)};

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
    walk(
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

    writeSummary(r, QString(), QStringLiteral("Total Value of Late Deliveries = "), total);
    return r;
}
