// The stock reports of the report window, each beside the one statement it runs.
#include "bench/ReportBenchmarks.h"

#include "foundation/DbEngine.h"
#include "reports/InventoryReports.h"

void AddReportBenchmark(BenchRegistry& registry, const QString& name, const ReportInput& input,
                        const QString& statement) {
    registry.add(name,
                 [input] {
                     const ReportResult r = RunReport(input);
                     Consume(r.rows.size());
                 },
                 {statement});
}

static void AddReportBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    // The idle stock periods end on the last history date of the file.
    QDate last;
    {
        Database db = DBEngine::OpenDatabase(context.dbPath);
        Recordset rs = db.OpenRecordset(QStringLiteral("SELECT max(HistDate) FROM tblItemHistory"));
        last = QDate::fromString(rs.Fields(0).Text(), Qt::ISODate);
    }
    if (!last.isValid())
        last = QDate(2025, 1, 1);

    ReportInput month;
    month.reportType = 4;
    month.startDate = last.addMonths(-1);
    month.endDate = last;
    AddReportBenchmark(registry, QStringLiteral("reports.idle.month"), month,
                       IdleStockStatement(month.startDate, month.endDate));

    ReportInput year = month;
    year.startDate = last.addYears(-1);
    AddReportBenchmark(registry, QStringLiteral("reports.idle.year"), year,
                       IdleStockStatement(year.startDate, year.endDate));

    ReportInput byPart;
    byPart.reportType = 11;
    AddReportBenchmark(registry, QStringLiteral("reports.valuation.partno"), byPart,
                       InventoryValuationStatement());

    ReportInput byCategory;
    byCategory.reportType = 12;
    AddReportBenchmark(registry, QStringLiteral("reports.valuation.category"), byCategory,
                       InventoryValuationStatement());

    ReportInput perCategory;
    perCategory.reportType = 13;
    AddReportBenchmark(registry, QStringLiteral("reports.category.values"), perCategory,
                       CategoryValueStatement());
}

static const BenchSet reportsSet("reports", AddReportBenchmarks);
