// qstk3-bench [--data DIR] [--items N] [--filter REGEX] [--runs R] [--seed S]
// Times the system's procedures on a generated data file against the bare statements they run.
// With no --data, a file of N items (default 100,000) is generated into a temporary folder.
#include "bench/Benchmarks.h"
#include "bench/Harness.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "tools/GenData.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QThread>
#include <memory>
#include <sqlite3.h>

namespace {
int usage(QTextStream& err) {
    err << "usage: qstk3-bench [--data DIR] [--items N] [--filter REGEX] [--runs R] [--seed S]\n"
           "Without --data, generates N items (default 100000) into a temporary folder first.\n"
           "Prints # lines of information, then per benchmark: name, procedure median ms,\n"
           "bare statements median ms, ratio (tab separated).\n";
    return 2;
}

QString machineName() {
    // /proc files report no size, so the file is read whole rather than tested for its end.
    QFile f(QStringLiteral("/proc/cpuinfo"));
    if (f.open(QIODevice::ReadOnly | QIODevice::Text)) {
        const QList<QByteArray> lines = f.readAll().split('\n');
        for (const QByteArray& line : lines) {
            if (line.startsWith("model name")) {
                const qsizetype colon = line.indexOf(':');
                if (colon >= 0)
                    return QString::fromUtf8(line.mid(colon + 1)).trimmed();
            }
        }
    }
    return QSysInfo::currentCpuArchitecture();
}

qint64 countRows(Database& db, const QString& table) {
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT count(*) FROM ") + table);
    return rs.Fields(0).Long();
}
} // namespace

int main(int argc, char** argv) {
    QTextStream out(stdout);
    QTextStream err(stderr);
    // The application object comes once the benchmarks are known: a QApplication on the
    // offscreen platform when a window is timed, otherwise a QCoreApplication.
    QStringList args;
    for (int i = 0; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    QString dataDir;
    QString filterText = QStringLiteral(".");
    GenDataOptions gen;
    int runs = 5;
    for (int i = 1; i < args.size(); ++i) {
        const QString& a = args[i];
        const bool hasValue = i + 1 < args.size();
        bool ok = hasValue;
        if (a == QLatin1String("--data") && hasValue)
            dataDir = args[++i];
        else if (a == QLatin1String("--items") && hasValue)
            ok = (gen.items = args[++i].toInt(&ok)) > 0 && ok;
        else if (a == QLatin1String("--seed") && hasValue)
            gen.seed = args[++i].toUInt(&ok);
        else if (a == QLatin1String("--filter") && hasValue)
            filterText = args[++i];
        else if (a == QLatin1String("--runs") && hasValue)
            ok = (runs = args[++i].toInt(&ok)) > 0 && ok;
        else
            ok = false;
        if (!ok)
            return usage(err);
    }
    const QRegularExpression filter(filterText);
    if (!filter.isValid()) {
        err << "qstk3-bench: invalid --filter: " << filter.errorString() << "\n";
        return 2;
    }

    QTemporaryDir temp;
    QString generatedNote;
    if (dataDir.isEmpty()) {
        if (!temp.isValid()) {
            err << "qstk3-bench: cannot make a temporary folder\n";
            return 1;
        }
        dataDir = temp.path();
        QElapsedTimer t;
        t.start();
        QString why;
        err << "generating " << gen.items << " items into " << dataDir << " ...\n";
        err.flush();
        if (!GenerateData(dataDir, gen, nullptr, &why)) {
            err << "qstk3-bench: " << why << "\n";
            return 1;
        }
        generatedNote = QStringLiteral("# data: generated (--items %1 --seed %2) in %3 s\n")
                            .arg(gen.items)
                            .arg(gen.seed)
                            .arg(t.elapsed() / 1000.0, 0, 'f', 1);
    }
    SetDataFolder(dataDir);
    if (!QFileInfo::exists(gDbPath)) {
        err << "qstk3-bench: no data file " << gDbPath << "\n";
        return 1;
    }

    std::unique_ptr<QCoreApplication> app;
    try {
        const BenchContext context = ReadBenchContext(gDbPath);
        BenchRegistry registry;
        AddRegisteredBenchmarks(registry, context);
        if (registry.needsWindows(filter)) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
            app = std::make_unique<QApplication>(argc, argv);
        } else {
            app = std::make_unique<QCoreApplication>(argc, argv);
        }
        {
            Database db = DBEngine::OpenDatabase(gDbPath);
            out << "# scale: items " << countRows(db, QStringLiteral("tblStockItems"))
                << ", item suppliers " << countRows(db, QStringLiteral("tblItemSupplier"))
                << ", suppliers " << countRows(db, QStringLiteral("tblSupAddresses"))
                << ", customers " << countRows(db, QStringLiteral("tblCusAddresses"))
                << ", purchase orders " << countRows(db, QStringLiteral("tblPOrders")) << " ("
                << countRows(db, QStringLiteral("tblPODetail")) << " rows)"
                << ", history rows " << countRows(db, QStringLiteral("tblItemHistory"))
                << ", customer orders " << countRows(db, QStringLiteral("tblCustOrders"))
                << ", invoices " << countRows(db, QStringLiteral("tblDespatch")) << "\n";
        }
        out << (generatedNote.isEmpty()
                    ? QStringLiteral("# data: ") + QDir::toNativeSeparators(dataDir) + '\n'
                    : generatedNote);
        out << "# machine: " << machineName() << ", " << QThread::idealThreadCount()
            << " logical processors\n";
        out << "# versions: SQLite " << sqlite3_libversion() << ", Qt " << qVersion() << "\n";
        out << "# figures: median of " << runs << " runs (up to " << runs * 10
            << " for short ones) after one warm-up; bare = the same statements through the SQLite "
               "C API, "
               "a connection opened per action as the procedure opens one, every column of every "
               "row read\n";
        out << "# name\tprocedure_ms\tbare_ms\tratio\n";
        out.flush();
        RunBenchmarks(registry, gDbPath, filter, runs, out);
    } catch (const DbError& e) {
        err << "qstk3-bench: engine error " << e.Number() << ": " << e.Description() << "\n";
        return 1;
    }
    return 0;
}
