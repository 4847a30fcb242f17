// The utilities window: what opening it reads (the size of the file, the company details and the
// shared logo path), and the History count of its statistics tab.
#include "bench/Benchmarks.h"

#include "foundation/Globals.h"
#include "maintenance/CompanyDetails.h"
#include "maintenance/DatabaseStatistics.h"

static void AddDBUtilsBenchmarks(BenchRegistry& registry, const BenchContext&) {
    const QString history = QStringLiteral("SELECT * FROM History");
    const QString home = QStringLiteral("SELECT * FROM tblHome");

    registry.add(QStringLiteral("dbutils.statistics.count"), [] { Consume(CountHistoryRecords()); },
                 {history});

    // The bare side reads tblHome only: the logo path lies in usercfg.dqx, which it does not open.
    registry.add(QStringLiteral("dbutils.company.load"),
                 [] {
                     const CompanyDetails d = LoadCompanyDetails();
                     Consume(d.home.coName.size() + d.logoFile.size());
                 },
                 {home});

    // Everything the window reads when it opens and its statistics tab is chosen.
    registry.addActions(QStringLiteral("dbutils.open"),
                        [] {
                            Consume(DatabaseSizeText(gDbPath).size());
                            const CompanyDetails d = LoadCompanyDetails();
                            Consume(d.home.addressLines.size() + d.logoFile.size());
                            Consume(CountHistoryRecords());
                        },
                        {{home}, {history}});
}

static const BenchSet dbutilsSet("dbutils", AddDBUtilsBenchmarks);
