// The benchmark harness: each benchmark times one of the system's procedures against the bare
// statements that procedure runs, stepped through the SQLite C API on the same file.
#pragma once

#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <functional>

struct Benchmark {
    QString name;
    std::function<void()> procedure;
    // The statements the procedure runs, in order, grouped by the connection it opens for them
    // (one group for a single action, one per call when a benchmark repeats an action). Each
    // group opens a connection; each statement is prepared, stepped to the end with every column
    // of every row read, and finalized.
    QList<QStringList> bareActions;
    // Times a window (offscreen): the program then runs with a QApplication.
    bool windows = false;
    // When set, the bare side is this instead: for a procedure whose plain counterpart is more
    // than statements (file copies, say).
    std::function<void()> bare = {};
};

struct BenchResult {
    QString name;
    double procedureMs = 0;
    double bareMs = 0;
    double ratio() const { return bareMs > 0 ? procedureMs / bareMs : 0; }
};

class BenchRegistry {
public:
    // One action: the procedure opens one connection for all of its statements.
    void add(const QString& name, std::function<void()> procedure, const QStringList& bareSql) {
        mBenchmarks.append({name, std::move(procedure), {bareSql}});
    }
    // Repeated actions, each on a connection of its own.
    void addActions(const QString& name, std::function<void()> procedure,
                    const QList<QStringList>& bareActions) {
        mBenchmarks.append({name, std::move(procedure), bareActions});
    }
    // An action in a window, from the user's click to what the window shows; the window is made
    // by the procedure's first (warm-up) run and kept.
    void addWindow(const QString& name, std::function<void()> procedure,
                   const QStringList& bareSql) {
        mBenchmarks.append({name, std::move(procedure), {bareSql}, true});
    }
    // A procedure beside a plain counterpart of its own; `windows` when it needs the window
    // system (fonts for a printed page, say).
    void addPlain(const QString& name, std::function<void()> procedure, std::function<void()> bare,
                  bool windows = false) {
        mBenchmarks.append({name, std::move(procedure), {}, windows, std::move(bare)});
    }
    const QList<Benchmark>& benchmarks() const { return mBenchmarks; }
    // Whether a benchmark that `filter` selects needs windows.
    bool needsWindows(const QRegularExpression& filter) const {
        for (const Benchmark& b : mBenchmarks)
            if (b.windows && filter.match(b.name).hasMatch())
                return true;
        return false;
    }

private:
    QList<Benchmark> mBenchmarks;
};

// Runs every benchmark whose name matches `filter` on the file `dbPath`: one warm-up run of
// each side, then `runs` runs of each, alternating (up to ten times as many for a benchmark
// whose warm-up took under 100 ms); prints one line per benchmark (name,
// procedure median ms, bare median ms, ratio, tab separated) as it finishes. A benchmark whose
// bare statement fails is reported on a `#` line and left out.
QList<BenchResult> RunBenchmarks(const BenchRegistry& registry, const QString& dbPath,
                                 const QRegularExpression& filter, int runs, QTextStream& out);

// Runs the statements of one action through the C API as the bare side does, on a connection
// of their own; returns the number of rows read.
// Throws std::runtime_error with the engine's message when a statement fails.
qint64 RunBareStatements(const QString& dbPath, const QStringList& sql);

// The median of the values (the mean of the middle two for an even count).
double Median(QList<double> values);

struct BenchContext;
// A set of benchmarks registers itself from its own file with one static BenchSet, so that adding
// a set touches no other file: `static const BenchSet purchasing("purchasing", AddPurchasing);`.
// Sets run in the order of their names.
using BenchSetFunction = void (*)(BenchRegistry& registry, const BenchContext& context);
struct BenchSet {
    BenchSet(const char* name, BenchSetFunction add);
};
// Every registered set adds its benchmarks to the registry.
void AddRegisteredBenchmarks(BenchRegistry& registry, const BenchContext& context);

// A place for results a benchmark computes, so that the work cannot be optimised away.
void Consume(qint64 value);
