#include "maintenance/Maintenance.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <cmath>

namespace {

const QString kErrorDetected = QStringLiteral(
    "The database maintenance task could not complete. The database may be faulty but you should "
    "ensure the database is not being used or shared by another person or process before trying "
    "again.");

QString copyFailedText() {
    return QStringLiteral("The database maintenance task failed to complete") +
           QStringLiteral("\n\n") +
           QStringLiteral(
               "If you are sharing the database with other users or other processes on this or "
               "any other computer then all other users/processes need to exit/close the program "
               "before you can complete any maintenance task") +
           QStringLiteral("\n\n") +
           QStringLiteral("If you are not sharing the database then the error may have been "
                          "caused by a file-system or network error") +
           QStringLiteral("\n\n") +
           QStringLiteral("Do you want to try the maintenance tasks again?");
}

// Rewrites the working copy into the compacted one, which must read back whole before it may
// go over the live file.
void compactInto(const QString& working, const QString& compacted) {
    QFile::remove(compacted); // a leftover of a run in the same second: VACUUM INTO refuses it
    DBEngine::CompactDatabase(working, compacted);
    Database db = DBEngine::OpenDatabase(compacted);
    Recordset rs = db.OpenRecordset(QStringLiteral("PRAGMA quick_check"));
    if (rs.Eof() || rs.Fields(0).Text() != QLatin1String("ok"))
        throw DbError(DbErr::Generic, QStringLiteral("The compacted copy is damaged."));
}

// The clear-up: nothing here may stop the run.
void clearUp(const RunDisplay& display) {
    RemoveMaintenanceFiles();
    display.Progress(kMaintenanceProgressMax);
    display.Label(QStringLiteral("Finished"));
    display.Wait(2000);
}

// Adds each row's quantity (less `less` when given), every figure rounded down to a whole
// number, to the `target` column of the row's item. Figures are read through their text, so that
// the stored decimal point counts whatever the locale.
void addUp(Database& db, const QString& select, const QString& target, const QString& qty,
           const QString& less, const QString& item) {
    static const NumberMask mask(QStringLiteral("0.0#"));
    const QString head = QStringLiteral("UPDATE tblStockItems SET ") + target +
                         QStringLiteral(" = ") + target + QStringLiteral(" + ");
    Recordset rs = db.OpenRecordset(select);
    for (; !rs.Eof(); rs.MoveNext()) {
        double q = std::floor(Val(rs.Fields(qty).Text()));
        if (!less.isEmpty())
            q -= std::floor(Val(rs.Fields(less).Text()));
        const qint64 id = qint64(std::floor(Val(rs.Fields(item).Text())));
        db.Execute(head + mask.Sql(q) + QStringLiteral(" WHERE ItemID = ") + QString::number(id));
    }
}

} // namespace

void RunDisplay::Label(const QString& text) const {
    if (label)
        label(text);
}
void RunDisplay::Range(int minimum, int maximum) const {
    if (range)
        range(minimum, maximum);
}
void RunDisplay::Progress(int value) const {
    if (progress)
        progress(value);
}
void RunDisplay::Wait(int milliseconds) const {
    if (pause)
        pause(milliseconds);
    else
        Pause(milliseconds);
}

QString PathInFolder(const QString& folder, const QString& name) {
    QString path = folder;
    while (path.endsWith(QLatin1Char('/')) || path.endsWith(QLatin1Char('\\')))
        path.chop(1);
    return path + QLatin1Char('/') + name;
}

MaintenanceFiles MaintenanceFilesFor(int secondsSinceMidnight) {
    const QString tmpName = QString::number(secondsSinceMidnight) + QStringLiteral(".tmp");
    const QString base = gAppPath + QLatin1Char('/');
    return {base + QLatin1Char('a') + tmpName, base + QLatin1Char('b') + tmpName,
            base + QLatin1Char('c') + tmpName};
}

void RemoveMaintenanceFiles() {
    static const QRegularExpression pattern(QStringLiteral("^[abc][0-9]+\\.tmp$"));
    QDir dir(gAppPath);
    for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden))
        if (pattern.match(name).hasMatch())
            dir.remove(name);
}

void ReSyncQuantities(const QString& dbPath, const RunDisplay& display) {
    DBEngine::OpenDatabase(dbPath).Close(); // can the file be reached at all
    display.Progress(10);
    MsgBox(QStringLiteral("The 'ReSync' option checks existing/pending Vendor and Customer orders "
                          "to confirm that the item Order quantities are correct"),
           vbInformation);
    // One transaction: a failure part way leaves every figure as it was.
    Database db = DBEngine::OpenDatabase(dbPath);
    db.BeginTrans();
    db.Execute(QStringLiteral("UPDATE tblStockItems SET AllocQty=0"));
    addUp(db, QStringLiteral("SELECT * FROM tblAllocDetail"), QStringLiteral("AllocQty"),
          QStringLiteral("AllocQty"), QString(), QStringLiteral("StockID"));
    display.Progress(20);
    db.Execute(QStringLiteral("UPDATE tblStockItems SET OnOrderQty=0"));
    addUp(db, QStringLiteral("SELECT * FROM tblPODetail"), QStringLiteral("OnOrderQty"),
          QStringLiteral("POQty"), QStringLiteral("PORecieved"), QStringLiteral("POStockID"));
    db.CommitTrans();
}

MaintenanceEnd RunMaintenance(const MaintenanceRequest& request, const RunDisplay& display) {
    display.Label(QString());
    if (!request.reSync && !request.compact && !request.backup)
        return MaintenanceEnd::NothingChosen;
    if (request.backup && request.fileName.isEmpty()) {
        MsgBox(QStringLiteral("You must enter a filename for the new backup file or select an "
                              "existing backup file to overwrite"),
               vbInformation);
        display.Progress(0);
        return MaintenanceEnd::NoFileName;
    }
    for (;;) { // the retry point
        const int delayMs = 250;
        const QFileInfo live(gDbPath);
        if (!live.isFile() || live.fileName().toUpper() != QLatin1String("DBQST.DQX")) {
            MsgBox(QStringLiteral("The database file is missing. You'll need to restore from your "
                                  "most recent backup"),
                   vbCritical);
            display.Progress(0);
            return MaintenanceEnd::DatabaseMissing;
        }
        int stage = 5;
        MaintenanceFiles files;
        try {
            if (request.reSync)
                ReSyncQuantities(gDbPath, display);
            display.Progress(30);
            display.Label(QStringLiteral("Check Database"));
            display.Wait(delayMs);
            stage = 10;
            if (request.compact || request.backup) {
                display.Progress(40);
                files = MaintenanceFilesFor(MillisecondsSinceMidnight() / 1000);
                display.Progress(50);
                display.Label(QStringLiteral("Backing Up Data"));
                display.Wait(delayMs);
                stage = 20;
                DBEngine::CopyDatabaseFile(gDbPath, files.safety);
                DBEngine::CopyDatabaseFile(gDbPath, files.working);
                display.Label(QStringLiteral("Backed up"));
                display.Wait(delayMs);
                display.Progress(60);
                display.Label(QStringLiteral("Compact Database"));
                display.Wait(delayMs);
                stage = 30;
                // Taken for a backup alone too: the .bkp file is always the compacted file.
                compactInto(files.working, files.compacted);
                display.Progress(70);
                display.Label(QStringLiteral("Compacted OK"));
                display.Wait(delayMs);
                display.Progress(80);
                stage = 40;
                DBEngine::WriteDatabaseOver(files.compacted, gDbPath);
                if (request.backup)
                    DBEngine::CopyDatabaseFile(
                        gDbPath,
                        PathInFolder(request.folder, request.fileName + QStringLiteral(".bkp")));
                display.Progress(90);
                display.Label(QStringLiteral("Clearing up"));
                display.Wait(delayMs);
            }
        } catch (const DbError&) {
            switch (stage) {
            case 5:
                MsgBox(QStringLiteral("The Database Maintenance task could not start because a "
                                      "connection to the database could not be established."),
                       vbCritical, QStringLiteral("Maintenance"));
                break;
            case 10:
                MsgBox(kErrorDetected, vbInformation, QStringLiteral("Error detected"));
                break;
            case 20:
            case 30: {
                const QString text =
                    stage == 20 ? copyFailedText()
                                : QStringLiteral("The automatic database maintenance task failed "
                                                 "to complete. This may be caused by a database "
                                                 "error. Do you want to try the maintenance tasks "
                                                 "again?");
                if (MsgBox(text, vbYesNo) == vbYes)
                    continue;
                // The live file was never touched: the run's copies serve nothing now.
                RemoveMaintenanceFiles();
                display.Progress(0);
                return MaintenanceEnd::Abandoned;
            }
            case 40:
                stage = 50;
                try {
                    DBEngine::WriteDatabaseOver(files.safety, gDbPath);
                } catch (const DbError&) {
                    MsgBox(kErrorDetected, vbInformation, QStringLiteral("Error detected"));
                    break;
                }
                if (MsgBox(QStringLiteral("The automatic database maintenance task failed to "
                                          "complete. This may have been caused by a file system "
                                          "error on your computer. Do you want to try the "
                                          "maintenance tasks again?"),
                           vbYesNo) == vbYes)
                    continue;
                break;
            default:
                break;
            }
        }
        clearUp(display);
        return MaintenanceEnd::Finished;
    }
}
