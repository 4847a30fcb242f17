// The maintenance run: re-sync figures, backup and compaction, and what each failure leaves.
#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "maintenance/Maintenance.h"
#include "tests/maintenance/LockElsewhere.h"
#include "tests/maintenance/MaintenanceFixture.h"
#include "tests/support/TestSupport.h"

#include <QFile>
#include <QTest>

namespace {
const QString kNotice =
    QStringLiteral("The 'ReSync' option checks existing/pending Vendor and Customer orders to "
                   "confirm that the item Order quantities are correct");
const QString kStage20 =
    QStringLiteral("The database maintenance task failed to complete\n\nIf you are sharing the "
                   "database with other users or other processes on this or any other computer "
                   "then all other users/processes need to exit/close the program before you can "
                   "complete any maintenance task\n\nIf you are not sharing the database then the "
                   "error may have been caused by a file-system or network error\n\nDo you want "
                   "to try the maintenance tasks again?");
const QString kStage30 = QStringLiteral(
    "The automatic database maintenance task failed to complete. This may be caused by a database "
    "error. Do you want to try the maintenance tasks again?");
const QString kErrorDetected = QStringLiteral(
    "The database maintenance task could not complete. The database may be faulty but you should "
    "ensure the database is not being used or shared by another person or process before trying "
    "again.");
const QString kStage40 = QStringLiteral(
    "The automatic database maintenance task failed to complete. This may have been caused by a "
    "file system error on your computer. Do you want to try the maintenance tasks again?");

QString figures(const QString& column) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT ItemID, ") + column +
                                    QStringLiteral(" FROM tblStockItems ORDER BY ItemID"));
    QStringList out;
    for (; !rs.Eof(); rs.MoveNext())
        out << rs.Fields(0).Text() + QLatin1Char('=') + rs.Fields(1).Text();
    return out.join(QLatin1Char(' '));
}

MaintenanceRequest backupTo(const QString& folder, const QString& name, bool compact = false) {
    MaintenanceRequest r;
    r.backup = true;
    r.compact = compact;
    r.folder = folder;
    r.fileName = name;
    return r;
}

MaintenanceRequest only(bool MaintenanceRequest::*task) {
    MaintenanceRequest r;
    r.*task = true;
    return r;
}

// The clock stands still at 01:00:00, so the run's working files are a3600.tmp and so on.
struct FixedClock {
    FixedClock() {
        SetTimeOfDaySource([] { return 3600 * 1000 + 500; });
    }
    ~FixedClock() { SetTimeOfDaySource({}); }
};
} // namespace

class TestMaintenance : public QObject {
    Q_OBJECT
private slots:
    void reSyncRecountsWholeQuantities() {
        for (const QLocale& locale : {QLocale(QLocale::English, QLocale::UnitedKingdom),
                                      QLocale(QLocale::German, QLocale::Germany)}) {
            TestData data;
            LocaleScope scope(locale);
            ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo, AllocQty, OnOrderQty) VALUES "
                    "(1, 'A', 5, 5), (2, 'B', 0, 0), (3, 'C', 0, 0), (4, 'D', 12, 99)");
            ExecSql("INSERT INTO tblAllocDetail (AllocType, AllocID, StockID, AllocQty) VALUES "
                    "('WO', 1, 1, 2.5), ('WO', 2, 1, 1.9), ('WO', 2, 3, 7), ('WO', 3, 999, 4)");
            ExecSql("INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved) VALUES "
                    "(1, 1, 5.5, 2.7), (1, 2, 5, 7), (2, 3, 4, NULL), (2, 3, 1.99, 0.5), "
                    "(3, 999, 8, 0)");
            ScriptedBoxes boxes;
            boxes.answer(vbOK);
            RecordedRun run;
            QCOMPARE(RunMaintenance(only(&MaintenanceRequest::reSync), run.display()),
                     MaintenanceEnd::Finished);
            QCOMPARE(boxes.prompts(), QStringList{kNotice});
            QCOMPARE(boxes.shown().at(0).flags, int(vbInformation));
            QCOMPARE(figures("AllocQty"), QStringLiteral("1=3 2=0 3=7 4=0"));
            // 5.5 less 2.7 is 5 less 2; 5 ordered and 7 received lowers the total by 2.
            QCOMPARE(figures("OnOrderQty"), QStringLiteral("1=3 2=-2 3=5 4=0"));
            QCOMPARE(run.labels, QStringList({"", "Check Database", "Finished"}));
            QCOMPARE(run.progress, QList<int>({10, 20, 30, kMaintenanceProgressMax}));
            QCOMPARE(run.pauses, QList<int>({250, 2000}));
            QCOMPARE(LeftoverWorkFiles(), QStringList());
        }
    }

    void reSyncFailureKeepsEveryFigure() {
        TestData data;
        for (int i = 1; i <= 60; ++i) {
            ExecSql(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, AllocQty, "
                                   "OnOrderQty) VALUES (%1, 'P%1', 7, 1000)")
                        .arg(i));
            ExecSql(QStringLiteral("INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved) "
                                   "VALUES (1, %1, 3, 0)")
                        .arg(i));
        }
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        boxes.answer(vbOK);
        Database::FailNextStatementContaining(QStringLiteral("WHERE ItemID = 50"));
        RecordedRun run;
        QCOMPARE(RunMaintenance(only(&MaintenanceRequest::reSync), run.display()),
                 MaintenanceEnd::Finished);
        Database::FailNextStatementContaining(QString());
        QCOMPARE(boxes.prompts(),
                 QStringList({kNotice, "The Database Maintenance task could not start because a "
                                       "connection to the database could not be established."}));
        QCOMPARE(boxes.shown().at(1).title, QStringLiteral("Maintenance"));
        QCOMPARE(boxes.shown().at(1).flags, int(vbCritical));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblStockItems WHERE OnOrderQty <> 1000 OR "
                          "AllocQty <> 7"),
                 QStringLiteral("0"));
        QCOMPARE(run.labels.last(), QStringLiteral("Finished"));
    }

    void backupAloneCompactsTheFileAndTheBackup() {
        TestData data;
        FixedClock clock;
        FillWithGaps(600);
        const QByteArray before = Contents(gDbPath);
        QVERIFY(Pragma(gDbPath, "freelist_count") > 0);
        QDir(gAppPath).mkdir("bk");
        const QString folder = gAppPath + "/bk/";
        // A leftover compacted copy of a run in the same second, an older run's safety copy, a
        // file of someone else's, and an old backup of the same name that is no database.
        for (const char* name : {"c3600.tmp", "a17.tmp", "keep.tmp", "bk/weekly.bkp"}) {
            QFile f(gAppPath + "/" + QLatin1String(name));
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write("left behind");
        }
        ScriptedBoxes boxes;
        RecordedRun run;
        QCOMPARE(RunMaintenance(backupTo(folder, "weekly"), run.display()),
                 MaintenanceEnd::Finished);
        QCOMPARE(boxes.shown().size(), 0);
        QCOMPARE(run.labels,
                 QStringList({"", "Check Database", "Backing Up Data", "Backed up",
                              "Compact Database", "Compacted OK", "Clearing up", "Finished"}));
        QCOMPARE(run.progress, QList<int>({30, 40, 50, 60, 70, 80, 90, 100}));
        QCOMPARE(run.pauses, QList<int>({250, 250, 250, 250, 250, 250, 2000}));

        const QString bkp = gAppPath + "/bk/weekly.bkp";
        for (const QString& file : {gDbPath, bkp}) {
            QCOMPARE(Contents(file), before);
            QCOMPARE(Pragma(file, "freelist_count"), 0);
        }
        QCOMPARE(LeftoverWorkFiles(), QStringList{"keep.tmp"});

        // A name that already ends in .bkp gets a second extension.
        QCOMPARE(RunMaintenance(backupTo(folder, "weekly.bkp"), run.display()),
                 MaintenanceEnd::Finished);
        QCOMPARE(Contents(gAppPath + "/bk/weekly.bkp.bkp"), before);
    }

    void earlyExitsDoNothing() {
        TestData data;
        ScriptedBoxes boxes;
        RecordedRun run;
        QCOMPARE(RunMaintenance(MaintenanceRequest{}, run.display()),
                 MaintenanceEnd::NothingChosen);
        QCOMPARE(run.labels, QStringList{""});
        QVERIFY(run.progress.isEmpty());

        boxes.answer(vbOK);
        QCOMPARE(RunMaintenance(backupTo(gAppPath, ""), run.display()), MaintenanceEnd::NoFileName);
        QCOMPARE(boxes.prompts(),
                 QStringList{"You must enter a filename for the new backup file or select an "
                             "existing backup file to overwrite"});
        QCOMPARE(boxes.shown().last().flags, int(vbInformation));

        QVERIFY(QFile::remove(gDbPath));
        boxes.clear();
        boxes.answer(vbOK);
        QCOMPARE(RunMaintenance(only(&MaintenanceRequest::compact), run.display()),
                 MaintenanceEnd::DatabaseMissing);
        QCOMPARE(boxes.prompts(), QStringList{"The database file is missing. You'll need to "
                                              "restore from your most recent backup"});
        QCOMPARE(boxes.shown().last().flags, int(vbCritical));
        QCOMPARE(run.progress.last(), 0);
        QCOMPARE(LeftoverWorkFiles(), QStringList());
        QVERIFY(!QFile::exists(gDbPath));
    }

    void lockHeldElsewhereFailsTheCopies() {
        TestData data;
        FillWithGaps(100);
        const QByteArray before = Contents(gDbPath);
        LockElsewhere lock(gDbPath, LockElsewhere::Write);
        QVERIFY(lock.Holding());
        ScriptedBoxes boxes;
        boxes.answer(vbYes); // try again: the lock is still there
        boxes.answer(vbNo);
        RecordedRun run;
        QCOMPARE(RunMaintenance(only(&MaintenanceRequest::compact), run.display()),
                 MaintenanceEnd::Abandoned);
        QCOMPARE(boxes.prompts(), QStringList({kStage20, kStage20}));
        QCOMPARE(boxes.shown().at(0).flags, int(vbYesNo));
        QCOMPARE(run.progress.last(), 0);
        QVERIFY(!run.labels.contains("Backed up"));
        QVERIFY(!run.labels.contains("Finished"));
        QCOMPARE(LeftoverWorkFiles(), QStringList());
        lock.Release();
        QCOMPARE(Contents(gDbPath), before);
        QVERIFY(Pragma(gDbPath, "freelist_count") > 0);
    }

    void fileReadElsewhereIsNotReplaced() {
        // Another workstation reading: the copies succeed, the copy back and the safety copy
        // cannot take the file.
        TestData data;
        FillWithGaps(100);
        const QByteArray before = Contents(gDbPath);
        LockElsewhere lock(gDbPath, LockElsewhere::Read);
        QVERIFY(lock.Holding());
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        RecordedRun run;
        QCOMPARE(RunMaintenance(only(&MaintenanceRequest::compact), run.display()),
                 MaintenanceEnd::Finished);
        QCOMPARE(boxes.prompts(), QStringList{kErrorDetected});
        QCOMPARE(boxes.shown().at(0).title, QStringLiteral("Error detected"));
        QCOMPARE(boxes.shown().at(0).flags, int(vbInformation));
        QVERIFY(run.labels.contains("Compacted OK"));
        QCOMPARE(LeftoverWorkFiles(), QStringList());
        lock.Release();
        QCOMPARE(Contents(gDbPath), before);
        QCOMPARE(SqlFirst("PRAGMA quick_check"), QStringLiteral("ok"));
    }

    void copyThatCannotBeWrittenStopsBeforeTheLiveFile() {
        TestData data;
        FixedClock clock;
        FillWithGaps(100);
        const QByteArray before = Contents(gDbPath);
        QVERIFY(QDir(gAppPath).mkdir("a3600.tmp")); // the safety copy cannot be made
        ScriptedBoxes boxes;
        boxes.answer(vbNo);
        RecordedRun run;
        QCOMPARE(RunMaintenance(backupTo(gAppPath, "weekly"), run.display()),
                 MaintenanceEnd::Abandoned);
        QCOMPARE(boxes.prompts(), QStringList{kStage20});
        QCOMPARE(run.progress.last(), 0);
        QCOMPARE(Contents(gDbPath), before);
        QVERIFY(!QFile::exists(gAppPath + "/weekly.bkp"));
        QCOMPARE(LeftoverWorkFiles(), QStringList());
    }

    void failedBackupFilePutsTheSafetyCopyBack() {
        TestData data;
        FillWithGaps(300);
        const QByteArray before = Contents(gDbPath);
        const qint64 pages = Pragma(gDbPath, "page_count");
        const qint64 free = Pragma(gDbPath, "freelist_count");
        QVERIFY(QDir(gAppPath).mkpath("bk/weekly.bkp")); // a folder where the file should go
        ScriptedBoxes boxes;
        boxes.answer(vbNo);
        RecordedRun run;
        QCOMPARE(RunMaintenance(backupTo(gAppPath + "/bk", "weekly", true), run.display()),
                 MaintenanceEnd::Finished);
        QCOMPARE(boxes.prompts(), QStringList{kStage40});
        QCOMPARE(boxes.shown().at(0).flags, int(vbYesNo));
        // The file as it was before the run: uncompacted, every row.
        QCOMPARE(Contents(gDbPath), before);
        QCOMPARE(Pragma(gDbPath, "page_count"), pages);
        QCOMPARE(Pragma(gDbPath, "freelist_count"), free);
        QCOMPARE(run.labels.last(), QStringLiteral("Finished"));
        QCOMPARE(run.progress.last(), kMaintenanceProgressMax);
        QCOMPARE(LeftoverWorkFiles(), QStringList());
    }

    void failedCompactionMayBeTriedAgain() {
        TestData data;
        FillWithGaps(200);
        const QByteArray before = Contents(gDbPath);
        ScriptedBoxes boxes;
        boxes.answer(vbYes);
        Database::FailNextStatementContaining(QStringLiteral("VACUUM INTO"));
        RecordedRun run;
        QCOMPARE(RunMaintenance(only(&MaintenanceRequest::compact), run.display()),
                 MaintenanceEnd::Finished);
        QCOMPARE(boxes.prompts(), QStringList{kStage30});
        // The second pass ran from the top and compacted.
        QCOMPARE(run.labels.count("Backing Up Data"), 2);
        QCOMPARE(run.labels.count("Compacted OK"), 1);
        QCOMPARE(Contents(gDbPath), before);
        QCOMPARE(Pragma(gDbPath, "freelist_count"), 0);
        QCOMPARE(LeftoverWorkFiles(), QStringList());

        // No the second time: the live file stays as it is and the progress goes back to 0.
        ExecSql("DELETE FROM tblStockItems WHERE ItemID > 100");
        const QByteArray now = Contents(gDbPath);
        boxes.clear();
        boxes.answer(vbNo);
        Database::FailNextStatementContaining(QStringLiteral("VACUUM INTO"));
        QCOMPARE(RunMaintenance(only(&MaintenanceRequest::compact), run.display()),
                 MaintenanceEnd::Abandoned);
        QCOMPARE(boxes.prompts(), QStringList{kStage30});
        QCOMPARE(run.progress.last(), 0);
        QCOMPARE(Contents(gDbPath), now);
        QVERIFY(Pragma(gDbPath, "freelist_count") > 0);
        QCOMPARE(LeftoverWorkFiles(), QStringList());
    }
};

QS_MAIN_WITH_LOCK_HOLDER(TestMaintenance)

#include "test_maintenance.moc"
