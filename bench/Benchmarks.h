// The benchmark sets, one function per subsystem, each adding its benchmarks to the registry.
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

void AddEngineBenchmarks(BenchRegistry& registry, const BenchContext& context);
void AddInventoryBenchmarks(BenchRegistry& registry, const BenchContext& context);
void AddContactBenchmarks(BenchRegistry& registry, const BenchContext& context);
