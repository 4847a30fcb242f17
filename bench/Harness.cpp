#include "bench/Harness.h"

#include <QElapsedTimer>
#include <QFile>
#include <QPair>
#include <algorithm>
#include <sqlite3.h>
#include <stdexcept>

namespace {
volatile qint64 gSink = 0;

double timeMs(const std::function<void()>& f) {
    QElapsedTimer t;
    t.start();
    f();
    return double(t.nsecsElapsed()) / 1e6;
}
} // namespace

void Consume(qint64 value) {
    gSink = gSink + value;
}

double Median(QList<double> values) {
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    const qsizetype n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

qint64 RunBareStatements(const QString& dbPath, const QStringList& sql) {
    sqlite3* db = nullptr;
    // Opened as the engine opens a file for one action: shared, writable, without the engine's
    // locking per call, with a busy timeout and the engine's page cache.
    if (sqlite3_open_v2(QFile::encodeName(dbPath).constData(), &db,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) != SQLITE_OK) {
        const std::string msg = db ? sqlite3_errmsg(db) : "cannot open";
        sqlite3_close_v2(db);
        throw std::runtime_error(msg);
    }
    sqlite3_busy_timeout(db, 2000);
    sqlite3_exec(db, "PRAGMA cache_size=-32768", nullptr, nullptr, nullptr);
    qint64 rows = 0;
    qint64 sum = 0;
    for (const QString& statement : sql) {
        const QByteArray text = statement.toUtf8();
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(db, text.constData(), int(text.size()), &stmt, nullptr) !=
            SQLITE_OK) {
            const std::string msg = sqlite3_errmsg(db);
            sqlite3_close_v2(db);
            throw std::runtime_error(msg);
        }
        const int columns = sqlite3_column_count(stmt);
        int rc;
        while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
            ++rows;
            for (int c = 0; c < columns; ++c) {
                switch (sqlite3_column_type(stmt, c)) {
                case SQLITE_INTEGER:
                    sum += sqlite3_column_int64(stmt, c);
                    break;
                case SQLITE_FLOAT:
                    sum += qint64(sqlite3_column_double(stmt, c));
                    break;
                case SQLITE_TEXT: {
                    const unsigned char* p = sqlite3_column_text(stmt, c);
                    const int n = sqlite3_column_bytes(stmt, c);
                    sum += n + (n > 0 ? p[0] : 0);
                    break;
                }
                case SQLITE_BLOB:
                    sqlite3_column_blob(stmt, c);
                    sum += sqlite3_column_bytes(stmt, c);
                    break;
                default:
                    break;
                }
            }
        }
        sqlite3_finalize(stmt);
        if (rc != SQLITE_DONE) {
            const std::string msg = sqlite3_errmsg(db);
            sqlite3_close_v2(db);
            throw std::runtime_error(msg);
        }
    }
    sqlite3_close_v2(db);
    Consume(sum);
    return rows;
}

QList<BenchResult> RunBenchmarks(const BenchRegistry& registry, const QString& dbPath,
                                 const QRegularExpression& filter, int runs, QTextStream& out) {
    QList<BenchResult> results;
    for (const Benchmark& b : registry.benchmarks()) {
        if (!filter.match(b.name).hasMatch())
            continue;
        try {
            // Warm-up: both sides once, so that neither pays for a cold page cache.
            const double warm = timeMs(b.procedure);
            const auto runBare = [&] {
                if (b.bare) {
                    b.bare();
                    return;
                }
                for (const QStringList& action : b.bareActions)
                    RunBareStatements(dbPath, action);
            };
            runBare();
            // Short benchmarks run more often, so that their medians hold still from run to run.
            int count = runs;
            if (warm < 100)
                count = std::min(runs * 10, std::max(runs, int(500 / std::max(warm, 1.0))));
            QList<double> proc, bare;
            for (int i = 0; i < count; ++i) {
                proc << timeMs(b.procedure);
                bare << timeMs(runBare);
            }
            // A benchmark with no statements of its own and no plain counterpart has no bare
            // side and no ratio.
            BenchResult r{b.name, Median(proc),
                          b.bareActions.isEmpty() && !b.bare ? 0.0 : Median(bare)};
            out << r.name << '\t' << QString::number(r.procedureMs, 'f', 2) << '\t'
                << QString::number(r.bareMs, 'f', 2) << '\t' << QString::number(r.ratio(), 'f', 2)
                << '\n';
            out.flush();
            results << r;
        } catch (const std::exception& e) {
            out << "# " << b.name << " failed: " << e.what() << '\n';
            out.flush();
        }
    }
    return results;
}

namespace {
QList<QPair<QString, BenchSetFunction>>& benchSets() {
    static QList<QPair<QString, BenchSetFunction>> sets;
    return sets;
}
} // namespace

BenchSet::BenchSet(const char* name, BenchSetFunction add) {
    benchSets().append({QString::fromLatin1(name), add});
}

void AddRegisteredBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    QList<QPair<QString, BenchSetFunction>> sets = benchSets();
    std::stable_sort(sets.begin(), sets.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& set : sets)
        set.second(registry, context);
}
