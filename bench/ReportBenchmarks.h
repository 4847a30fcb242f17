// What the report benchmark sets share.
#pragma once

#include "bench/Benchmarks.h"
#include "reports/Reports.h"

// Times RunReport on `input` beside the one statement the report runs.
void AddReportBenchmark(BenchRegistry& registry, const QString& name, const ReportInput& input,
                        const QString& statement);
