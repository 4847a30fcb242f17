// Database maintenance: the re-sync against the same updates through the C API; compaction and
// backup against plain file copies and VACUUM INTO; restore against its check and one copy.
// They change the file they run on, so they work on a copy of it in a folder of their own.
#include "bench/Benchmarks.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "maintenance/Maintenance.h"
#include "maintenance/Restore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cmath>
#include <memory>
#include <stdexcept>

namespace {

// The folder with the copy of the data file, made on first use.
struct WorkFolder {
    QString source;
    std::unique_ptr<QTemporaryDir> dir;
    QString path() {
        if (!dir) {
            dir = std::make_unique<QTemporaryDir>();
            if (!dir->isValid() || !QFile::copy(source, file(QStringLiteral("dbqst.dqx"))))
                throw std::runtime_error("cannot copy the data file");
            QDir(dir->path()).mkdir(QStringLiteral("bk"));
        }
        return dir->path();
    }
    QString file(const QString& name) { return QDir(dir->path()).filePath(name); }
    QString db() {
        path();
        return file(QStringLiteral("dbqst.dqx"));
    }
};
WorkFolder gWork;

// Points the program's paths at the work folder for one call.
struct InWorkFolder {
    QString previous = gAppPath;
    InWorkFolder() { SetDataFolder(gWork.path()); }
    ~InWorkFolder() { SetDataFolder(previous); }
};

// A box during a timed run is a failure: answered No and reported.
class NoBoxes final : public BoxBackend {
public:
    QString shown;
    int msgBox(const QString& prompt, int, const QString&) override {
        shown = prompt;
        return vbNo;
    }
    std::optional<QString> inputBox(const QString&, const QString&, const QString&) override {
        return std::nullopt;
    }
    QString fileDialog(const FileDialogRequest&) override { return QString(); }
};

RunDisplay noWaits() {
    RunDisplay d;
    d.pause = [](int) {};
    return d;
}

void plainCopy(const QString& from, const QString& to) {
    QFile::remove(to);
    if (!QFile::copy(from, to))
        throw std::runtime_error("plain copy failed");
}

void runMaintenance(const MaintenanceRequest& request) {
    InWorkFolder in;
    NoBoxes boxes;
    InstallBoxBackend(&boxes);
    const MaintenanceEnd end = RunMaintenance(request, noWaits());
    InstallBoxBackend(nullptr);
    if (end != MaintenanceEnd::Finished || !boxes.shown.isEmpty())
        throw std::runtime_error(("maintenance failed: " + boxes.shown).toStdString());
}

// What a compaction is made of without the program: two copies, VACUUM INTO, one copy back.
void plainCompaction(bool backup) {
    const QString live = gWork.db();
    const QString a = gWork.file(QStringLiteral("a1.tmp"));
    const QString b = gWork.file(QStringLiteral("b1.tmp"));
    const QString c = gWork.file(QStringLiteral("c1.tmp"));
    plainCopy(live, a);
    plainCopy(live, b);
    QFile::remove(c);
    RunBareStatements(b, {QStringLiteral("VACUUM INTO '") + c + QStringLiteral("'")});
    plainCopy(c, live);
    if (backup)
        plainCopy(live, gWork.file(QStringLiteral("bk/plain.bkp")));
    for (const QString& f : {a, b, c})
        QFile::remove(f);
}

// The re-sync's statements as the procedure builds them, read once from the file.
QStringList reSyncStatements() {
    static const NumberMask mask(QStringLiteral("0.0#"));
    QStringList sql = {QStringLiteral("BEGIN IMMEDIATE"),
                       QStringLiteral("UPDATE tblStockItems SET AllocQty=0"),
                       QStringLiteral("SELECT * FROM tblAllocDetail")};
    Database db = DBEngine::OpenDatabase(gWork.db());
    auto add = [&](const QString& select, const QString& target, const QString& qty,
                   const QString& less, const QString& item) {
        Recordset rs = db.OpenRecordset(select);
        for (; !rs.Eof(); rs.MoveNext()) {
            double q = std::floor(Val(rs.Fields(qty).Text()));
            if (!less.isEmpty())
                q -= std::floor(Val(rs.Fields(less).Text()));
            sql << QStringLiteral("UPDATE tblStockItems SET ") + target + QStringLiteral(" = ") +
                       target + QStringLiteral(" + ") + mask.Sql(q) +
                       QStringLiteral(" WHERE ItemID = ") +
                       QString::number(qint64(std::floor(Val(rs.Fields(item).Text()))));
        }
    };
    add(QStringLiteral("SELECT * FROM tblAllocDetail"), QStringLiteral("AllocQty"),
        QStringLiteral("AllocQty"), QString(), QStringLiteral("StockID"));
    sql << QStringLiteral("UPDATE tblStockItems SET OnOrderQty=0")
        << QStringLiteral("SELECT * FROM tblPODetail");
    add(QStringLiteral("SELECT * FROM tblPODetail"), QStringLiteral("OnOrderQty"),
        QStringLiteral("POQty"), QStringLiteral("PORecieved"), QStringLiteral("POStockID"));
    sql << QStringLiteral("COMMIT");
    return sql;
}

} // namespace

static void AddMaintenanceBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    gWork.source = context.dbPath;

    registry.addPlain(
        QStringLiteral("maintenance.resync"), [] { ReSyncQuantities(gWork.db(), noWaits()); },
        [] {
            static const QStringList sql = reSyncStatements();
            RunBareStatements(gWork.db(), sql);
        });

    MaintenanceRequest compact;
    compact.compact = true;
    registry.addPlain(
        QStringLiteral("maintenance.compact"), [compact] { runMaintenance(compact); },
        [] { plainCompaction(false); });

    registry.addPlain(
        QStringLiteral("maintenance.compact.backup"),
        [] {
            MaintenanceRequest both;
            both.compact = true;
            both.backup = true;
            both.folder = gWork.path() + QStringLiteral("/bk");
            both.fileName = QStringLiteral("weekly");
            runMaintenance(both);
        },
        [] { plainCompaction(true); });

    // The check opens the backup and reads it whole; the plain side reads it whole too.
    // The backup that is restored, made once.
    static const auto backup = [] {
        const QString path = gWork.path() + QStringLiteral("/restore.bkp");
        if (!QFile::exists(path))
            DBEngine::CopyDatabaseFile(gWork.db(), path);
        return path;
    };
    registry.addPlain(
        QStringLiteral("maintenance.restore"),
        [] {
            backup();
            InWorkFolder in;
            NoBoxes boxes;
            InstallBoxBackend(&boxes);
            SetRestartHooks({[](const QString&) {}, [] {}});
            const RestoreEnd end =
                RestoreDatabase({gWork.path(), QStringLiteral("restore.bkp")}, noWaits());
            SetRestartHooks({});
            InstallBoxBackend(nullptr);
            if (end != RestoreEnd::Restarted)
                throw std::runtime_error(("restore failed: " + boxes.shown).toStdString());
        },
        [] {
            RunBareStatements(backup(), {QStringLiteral("PRAGMA quick_check"),
                                         QStringLiteral("SELECT count(*) FROM sqlite_master WHERE "
                                                        "type='table' AND name IN ('dbStatus', "
                                                        "'tblStockItems')")});
            plainCopy(backup(), gWork.db());
        });
}

static const BenchSet maintenanceSet("maintenance", AddMaintenanceBenchmarks);
