// What every benchmark set shares. Each set lives in a file `*Benchmarks.cpp` of its own and
// registers itself with a static BenchSet (see Harness.h).
#pragma once

#include "bench/Harness.h"

// What the sets need to know of the file they run on, read once before the runs.
struct BenchContext {
    QString dbPath;
    qint64 items = 0;
    qint32 busiestSupplier = 0; // the supplier with the most item links
    QString busiestSupplierName;
    QString biggestCategory; // the category with the most items
};

BenchContext ReadBenchContext(const QString& dbPath);

class Database;
// The first column of a statement's first row as a number; 0 when it returns no row.
qint64 FirstNumber(Database& db, const QString& sql);
// The purchase order a benchmark set made on an earlier run, by its reference; 0 when none.
qint32 BenchOrderId(Database& db, const QString& reference);
