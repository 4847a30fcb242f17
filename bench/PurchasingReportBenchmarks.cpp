// The purchasing reports of the report window, each beside the one statement it runs: the
// orders and the late deliveries of the last year of the file, and the lines overdue today.
#include "bench/ReportBenchmarks.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "reports/PurchasingReports.h"

static void AddPurchasingReportBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    // The year ends on the file's last order date, so that it holds a year of orders whatever
    // the day the file was made.
    QDate last;
    {
        Database db = DBEngine::OpenDatabase(context.dbPath);
        Recordset rs = db.OpenRecordset(QStringLiteral("SELECT max(PODate) FROM tblPOrders"));
        last = QDate::fromString(rs.Fields(0).Text(), Qt::ISODate);
    }
    if (!last.isValid())
        last = Today();

    ReportInput year;
    year.startDate = last.addYears(-1);
    year.endDate = last.addDays(1);

    ReportInput orders = year;
    orders.reportType = 5;
    AddReportBenchmark(registry, QStringLiteral("reports.purchasing.orders.year"), orders,
                       OrdersInPeriodStatement(year.startDate, year.endDate));

    // Today() is the day the benchmark runs; the file's dates run up to the day it was made.
    ReportInput overdue;
    overdue.reportType = 6;
    AddReportBenchmark(registry, QStringLiteral("reports.purchasing.overdue"), overdue,
                       OverdueLinesStatement(Today()));

    ReportInput late = year;
    late.reportType = 7;
    AddReportBenchmark(registry, QStringLiteral("reports.purchasing.late.year"), late,
                       LateDeliveriesStatement(year.startDate, year.endDate));

    ReportInput bySupplier = year;
    bySupplier.reportType = 8;
    AddReportBenchmark(registry, QStringLiteral("reports.purchasing.suppliers.year"), bySupplier,
                       LateDeliveriesBySupplierStatement(year.startDate, year.endDate));
}

static const BenchSet purchasingReportsSet("reports.purchasing", AddPurchasingReportBenchmarks);
