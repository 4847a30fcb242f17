#include "maintenance/Restore.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/MsgBox.h"

#include <QProcess>
#include <cstdlib>

namespace {
RestartHooks& hooks() {
    static RestartHooks h;
    return h;
}
} // namespace

void SetRestartHooks(const RestartHooks& h) {
    hooks() = h;
}

QString ProgramPath() {
#ifdef Q_OS_WIN
    return gAppPath + QStringLiteral("/qstk3.exe");
#else
    return gAppPath + QStringLiteral("/qstk3");
#endif
}

void CheckBackupFile(const QString& connect) {
    Database db = DBEngine::OpenDatabase(QString(), false, false, connect);
    // This engine reads a file only when asked to, so opening proves little by itself: the file
    // counts as opened once its pages read back whole and it holds the business tables.
    {
        Recordset rs = db.OpenRecordset(QStringLiteral("PRAGMA quick_check"));
        if (rs.Eof() || rs.Fields(0).Text() != QLatin1String("ok"))
            throw DbError(DbErr::CannotOpen, QStringLiteral("Unrecognized database format."));
    }
    Recordset rs =
        db.OpenRecordset(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type='table' AND "
                                        "name IN ('dbStatus', 'tblStockItems')"));
    if (rs.Fields(0).Long() != 2)
        throw DbError(DbErr::CannotOpen, QStringLiteral("Unrecognized database format."));
}

RestoreEnd RestoreDatabase(const RestoreRequest& request, const RunDisplay& display) {
    display.Range(1, 6);
    display.Progress(2);
    const QString target = gDbPath;
    if (request.fileName.trimmed().isEmpty()) {
        MsgBox(QStringLiteral("You must select a backup file to restore"), vbInformation);
        return RestoreEnd::NoFileName;
    }
    display.Label(QStringLiteral("Checking Backup File"));
    display.Progress(3);
    const QString backup = PathInFolder(request.folder, request.fileName);
    const QString connect = QStringLiteral(";DATABASE=") + backup + QStringLiteral(";");
    display.Progress(4);
    try {
        CheckBackupFile(connect);
    } catch (const DbError&) {
        MsgBox(QStringLiteral(
                   "The backup file you selected does not appear to be a valid database file"),
               vbInformation);
        return RestoreEnd::NotADatabase;
    }
    display.Progress(5);
    display.Label(QStringLiteral("Restore Database"));
    try {
        DBEngine::WriteDatabaseOver(backup, target);
    } catch (const DbError&) {
        MsgBox(QStringLiteral("The Backup could not be restored. The original database may be in "
                              "use or write protected"),
               vbInformation);
        return RestoreEnd::CouldNotRestore;
    }
    display.Progress(6);
    display.Label(QStringLiteral("Finished"));
    display.Wait(2000);
    display.Label(QString());
    display.Progress(1);

    const RestartHooks& h = hooks();
    if (h.start)
        h.start(ProgramPath());
    else
        QProcess::startDetached(ProgramPath(), {}, gAppPath); // a failure here goes untold
    if (h.end)
        h.end();
    else
        std::quick_exit(0); // at once: no window's closing logic runs
    return RestoreEnd::Restarted;
}
