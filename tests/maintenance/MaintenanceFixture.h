// What the utilities suites share: a recording display for maintenance runs, file contents and
// page counts, files written for a test, the column choices of the import, and a second
// workstation: the suite's own program started again.
#pragma once

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "maintenance/FlexCells.h"
#include "maintenance/ImportCsv.h"
#include "maintenance/Maintenance.h"
#include "tests/support/TestSupport.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QProcess>
#include <QTest>
#include <cstdio>

// Records what a run shows and how long it would have waited, waiting for nothing.
struct RecordedRun {
    QStringList labels;
    QList<int> progress;
    RunDisplay display() {
        return {[this](const QString& t) { labels << t; }, [](int, int) {},
                [this](int v) { progress << v; }, [](int) {}};
    }
};

// Every row of every table of a file, in row order, as one hash.
inline QByteArray Contents(const QString& path) {
    Database db = DBEngine::OpenDatabase(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (Recordset tables = db.OpenRecordset(
             QStringLiteral("SELECT name FROM sqlite_master WHERE type='table' AND name NOT "
                            "LIKE 'sqlite%' ORDER BY name"));
         !tables.Eof(); tables.MoveNext()) {
        hash.addData(tables.Fields(0).Text().toUtf8());
        for (Recordset rs =
                 db.OpenRecordset(QStringLiteral("SELECT * FROM ") + tables.Fields(0).Text() +
                                  QStringLiteral(" ORDER BY rowid"));
             !rs.Eof(); rs.MoveNext())
            for (int i = 0; i < rs.FieldCount(); ++i)
                hash.addData((rs.Fields(i).Text() + QLatin1Char('|')).toUtf8());
    }
    return hash.result();
}

inline qint64 Pragma(const QString& path, const QString& name) {
    return DBEngine::OpenDatabase(path).OpenRecordset("PRAGMA " + name).Fields(0).Long();
}

// Working files of maintenance runs left in the data folder.
inline QStringList LeftoverWorkFiles() {
    return QDir(gAppPath).entryList({"*.tmp", "*-journal", "*-new"}, QDir::Files);
}

// `count` items with long descriptions, then every other one deleted, so that the file holds
// free pages.
inline void FillWithGaps(int count) {
    ExecSql(
        QStringLiteral(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE "
            "i < %1) INSERT INTO tblStockItems (ItemID, MasterPNo, ItemDescription, "
            "Qty, AllocQty, OnOrderQty) SELECT i, 'P' || i, replace(hex(zeroblob(200)), '0', 'x'), "
            "i * 1.5, 0, 0 FROM n")
            .arg(count));
    ExecSql(QStringLiteral("DELETE FROM tblStockItems WHERE ItemID % 2 = 0"));
}

// Writes `bytes` to `path` and returns the path.
inline QString WriteFile(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        f.write(bytes);
    return path;
}

// What a box gives when the user picks "Column n": boxes with an Ignore entry hold it at
// ListIndex 0, so "Column n" is at n there and at n - 1 in Combo1 and Combo2.
inline ImportColumnChoice Pick(int column, bool hasIgnore = true) {
    return ImportColumnChoice{hasIgnore ? column : column - 1,
                              QStringLiteral("Column ") + QString::number(column)};
}

// Every box on the column of the same number in the layout
// part, description, quantity, location, buy, category, sell, detail.
inline ImportCsvInput AllColumns() {
    return {Pick(1, false), Pick(2, false), Pick(3), Pick(4), Pick(5), Pick(6), Pick(7), Pick(8)};
}

// A second workstation: this suite's program started again with "--second" and `args`. The copy
// runs SecondWorkstation(args), which each suite defines, and ends with its result; "hold-lock
// PATH read|write" is answered for every suite: the copy takes the lock, says "locked" and holds
// it until its input closes.
int SecondWorkstation(const QStringList& args);

class Workstation {
public:
    explicit Workstation(const QStringList& args) {
        process.start(QCoreApplication::applicationFilePath(), QStringList{"--second"} + args);
    }
    ~Workstation() { Finish(); }
    // Closes its input and waits for its end; its exit code.
    int Finish() {
        if (process.state() != QProcess::NotRunning) {
            process.closeWriteChannel();
            if (!process.waitForFinished(120000))
                process.kill();
        }
        return process.exitCode();
    }
    QProcess process;
};

class LockElsewhere : public Workstation {
public:
    LockElsewhere(const QString& path, bool write)
        : Workstation({"hold-lock", path, write ? "write" : "read"}) {
        holding = process.waitForReadyRead(10000) && process.readLine().trimmed() == "locked";
    }
    bool holding = false;
};

inline int HoldLock(const QStringList& args) {
    Database db = DBEngine::OpenDatabase(args.value(1));
    if (args.value(2) == QLatin1String("write")) {
        db.Execute(QStringLiteral("BEGIN EXCLUSIVE"));
    } else {
        db.Execute(QStringLiteral("BEGIN"));
        db.OpenRecordset(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    }
    std::printf("locked\n");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}

// main() of a suite whose tests start second workstations.
#define QS_MAIN_WITH_SECOND_WORKSTATION(TestClass)                                                 \
    int main(int argc, char** argv) {                                                              \
        QCoreApplication app(argc, argv);                                                          \
        const QStringList args = app.arguments().mid(2);                                           \
        if (app.arguments().value(1) == QLatin1String("--second"))                                 \
            return args.value(0) == QLatin1String("hold-lock") ? HoldLock(args)                    \
                                                               : SecondWorkstation(args);          \
        TestClass t;                                                                               \
        return QTest::qExec(&t, argc, argv);                                                       \
    }
