// The utilities without a window: re-sync, backup and compaction and what each failure leaves,
// restore, the company details and the size of the business file.
#include "foundation/Clock.h"
#include "foundation/Settings.h"
#include "maintenance/CompanyDetails.h"
#include "maintenance/DatabaseStatistics.h"
#include "maintenance/Restore.h"
#include "tests/maintenance/MaintenanceFixture.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QThread>

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
const QString kStage40 = QStringLiteral(
    "The automatic database maintenance task failed to complete. This may have been caused by a "
    "file system error on your computer. Do you want to try the maintenance tasks again?");
const QString kNotValid =
    QStringLiteral("The backup file you selected does not appear to be a valid database file");

MaintenanceRequest Request(bool reSync, bool compact, bool backup = false,
                           const QString& fileName = QString()) {
    return MaintenanceRequest{reSync, compact, backup, gAppPath, fileName};
}

QByteArray ReadFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// What a failed run leaves: the boxes it showed, where its progress stopped, the live file.
struct Failure {
    MaintenanceEnd end;
    QStringList prompts;
    int progress;
};
Failure RunAnswering(const MaintenanceRequest& request, const QList<int>& answers) {
    ScriptedBoxes boxes;
    for (int a : answers)
        boxes.answer(a);
    RecordedRun run;
    const MaintenanceEnd end = RunMaintenance(request, run.display());
    return {end, boxes.prompts(), run.progress.value(run.progress.size() - 1, -1)};
}

CompanyDetails Details(const QString& name, const QString& logo = QString()) {
    CompanyDetails d{{name, {}}, logo};
    for (int i = 1; i <= 8; ++i)
        d.home.addressLines << name + QStringLiteral(" line ") + QString::number(i);
    return d;
}

QString HomeRows() {
    return SqlFirst("SELECT group_concat(CoName || '|' || Add1 || '|' || Fax1, ' ') FROM tblHome");
}

QString LogoSetting() {
    Database db = DBEngine::OpenDatabase(gUserCfgPath);
    Recordset rs = db.OpenRecordset(QStringLiteral(
        "SELECT PcName || '|' || ParaVal_1 || '|' || ParaVal_2 FROM tblDefaults WHERE "
        "ParaName='Image_1'"));
    return rs.Eof() ? QString() : rs.Fields(0).Text();
}

// The company saver of the two-workstation test. "first" stops just before it writes a new row
// for up to half a second, having said so through a file; "second" waits for that file, saves,
// and says it is done.
bool WaitFor(const QString& file, int ms) {
    const QDeadlineTimer deadline(ms);
    while (!QFileInfo::exists(file) && !deadline.hasExpired())
        QThread::usleep(200);
    return QFileInfo::exists(file);
}
} // namespace

int SecondWorkstation(const QStringList& args) { // folder name role signal done
    SetDataFolder(args.value(0));
    gPcName = QStringLiteral("PC-") + args.value(1);
    const QString signal = args.value(3), done = args.value(4);
    if (args.value(2) == QLatin1String("first"))
        Database::BeforeNextStatementContaining(QStringLiteral("INSERT INTO tblHome"),
                                                [signal, done] {
                                                    WriteFile(signal, "");
                                                    WaitFor(done, 500);
                                                });
    else if (!WaitFor(signal, 20000))
        return 3;
    SaveCompanyDetails(Details(args.value(1)));
    if (args.value(2) == QLatin1String("second"))
        WriteFile(done, "");
    return 0;
}

class TestMaintenance : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

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
            QCOMPARE(RunMaintenance(Request(true, false), run.display()), MaintenanceEnd::Finished);
            QCOMPARE(boxes.prompts(), QStringList{kNotice});
            // 5.5 less 2.7 is 5 less 2; 5 ordered and 7 received lowers the total by 2.
            QCOMPARE(SqlFirst("SELECT group_concat(AllocQty || '/' || OnOrderQty, ' ') FROM "
                              "(SELECT * FROM tblStockItems ORDER BY ItemID)"),
                     QStringLiteral("3.0/3.0 0.0/-2.0 7.0/5.0 0.0/0.0"));
            QCOMPARE(run.labels, QStringList({"", "Check Database", "Finished"}));
        }

        // A failure at the 50th update keeps every figure, with its box.
        TestData data;
        ExecSql("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 60) "
                "INSERT INTO tblStockItems (ItemID, MasterPNo, AllocQty, OnOrderQty) SELECT i, "
                "'P' || i, 7, 1000 FROM n");
        ExecSql("INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved) SELECT 1, ItemID, "
                "3, 0 FROM tblStockItems");
        Database::FailNextStatementContaining(QStringLiteral("WHERE ItemID = 50"));
        const Failure failed = RunAnswering(Request(true, false), {vbOK, vbOK});
        QCOMPARE(failed.prompts,
                 QStringList({kNotice, "The Database Maintenance task could not start because a "
                                       "connection to the database could not be established."}));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblStockItems WHERE OnOrderQty <> 1000 OR "
                          "AllocQty <> 7"),
                 QStringLiteral("0"));
    }

    void backupAloneCompactsTheFileAndTheBackup() {
        TestData data;
        // The clock stands still at 01:00:00: the run's working files are a3600.tmp and so on.
        SetTimeOfDaySource([] { return 3600 * 1000 + 500; });
        FillWithGaps(600);
        const QByteArray before = Contents(gDbPath);
        QVERIFY(Pragma(gDbPath, "freelist_count") > 0);
        QDir(gAppPath).mkdir("bk");
        // A leftover compacted copy of a run in the same second, an older run's safety copy, a
        // file of someone else's, and an old backup of the same name that is no database.
        for (const char* name : {"c3600.tmp", "a17.tmp", "keep.tmp", "bk/weekly.bkp"})
            WriteFile(gAppPath + "/" + QLatin1String(name), "left behind");
        ScriptedBoxes boxes;
        RecordedRun run;
        MaintenanceRequest weekly = Request(false, false, true, "weekly");
        weekly.folder += "/bk";
        QCOMPARE(RunMaintenance(weekly, run.display()), MaintenanceEnd::Finished);
        SetTimeOfDaySource({});
        QCOMPARE(run.labels,
                 QStringList({"", "Check Database", "Backing Up Data", "Backed up",
                              "Compact Database", "Compacted OK", "Clearing up", "Finished"}));
        QCOMPARE(run.progress, QList<int>({30, 40, 50, 60, 70, 80, 90, 100}));
        for (const QString& file : {gDbPath, gAppPath + "/bk/weekly.bkp"}) {
            QCOMPARE(Contents(file), before);
            QCOMPARE(Pragma(file, "freelist_count"), 0);
        }
        QCOMPARE(LeftoverWorkFiles(), QStringList{"keep.tmp"});
        // A name that already ends in .bkp gets a second extension.
        QCOMPARE(RunMaintenance(Request(false, false, true, "weekly.bkp"), run.display()),
                 MaintenanceEnd::Finished);
        QCOMPARE(Contents(gAppPath + "/weekly.bkp.bkp"), before);
    }

    void failuresLeaveTheLiveFileWhole() {
        TestData data;
        FillWithGaps(200);
        const QByteArray before = Contents(gDbPath);
        const qint64 pages = Pragma(gDbPath, "page_count");
        auto unchanged = [&] {
            return LeftoverWorkFiles().isEmpty() && Contents(gDbPath) == before &&
                   Pragma(gDbPath, "page_count") == pages;
        };
        QCOMPARE(RunAnswering(MaintenanceRequest{}, {}).end, MaintenanceEnd::NothingChosen);
        const Failure noName = RunAnswering(Request(false, false, true), {vbOK});
        QCOMPARE(noName.end, MaintenanceEnd::NoFileName);
        QCOMPARE(noName.prompts, QStringList{"You must enter a filename for the new backup file "
                                             "or select an existing backup file to overwrite"});
        {
            // A write lock held by another workstation: the copies fail after the busy timeout,
            // again on Yes; No gives up with nothing changed.
            LockElsewhere lock(gDbPath, true);
            QVERIFY(lock.holding);
            const Failure locked = RunAnswering(Request(false, true), {vbYes, vbNo});
            QCOMPARE(locked.end, MaintenanceEnd::Abandoned);
            QCOMPARE(locked.prompts, QStringList({kStage20, kStage20}));
            QCOMPARE(locked.progress, 0);
        }
        QVERIFY(unchanged());
        {
            // Another workstation reading: the copies succeed, the copy back cannot take the file.
            LockElsewhere lock(gDbPath, false);
            QVERIFY(lock.holding);
            ScriptedBoxes boxes;
            boxes.answer(vbOK);
            QCOMPARE(RunMaintenance(Request(false, true)), MaintenanceEnd::Finished);
            QCOMPARE(boxes.prompts(),
                     QStringList{"The database maintenance task could not complete. The database "
                                 "may be faulty but you should ensure the database is not being "
                                 "used or shared by another person or process before trying "
                                 "again."});
            QCOMPARE(boxes.shown().at(0).title, QStringLiteral("Error detected"));
        }
        QVERIFY(unchanged());
        // A folder where the backup file should go: the safety copy goes back over the live file.
        QVERIFY(QDir(gAppPath).mkpath("weekly.bkp"));
        const Failure noBackup = RunAnswering(Request(false, true, true, "weekly"), {vbNo});
        QCOMPARE(noBackup.prompts, QStringList{kStage40});
        QVERIFY(unchanged());
        // A compacted copy that fails: Yes runs again from the top and compacts.
        Database::FailNextStatementContaining(QStringLiteral("VACUUM INTO"));
        QCOMPARE(RunAnswering(Request(false, true), {vbYes}).prompts, QStringList{kStage30});
        QCOMPARE(Contents(gDbPath), before);
        QCOMPARE(Pragma(gDbPath, "freelist_count"), 0);
        QCOMPARE(LeftoverWorkFiles(), QStringList());
        // No database file: its box, and no working file.
        QVERIFY(QFile::remove(gDbPath));
        const Failure missing = RunAnswering(Request(false, true), {vbOK});
        QCOMPARE(missing.end, MaintenanceEnd::DatabaseMissing);
        QCOMPARE(missing.prompts, QStringList{"The database file is missing. You'll need to "
                                              "restore from your most recent backup"});
        QCOMPARE(missing.progress, 0);
        QCOMPARE(LeftoverWorkFiles(), QStringList());
    }

    void restorePutsBackOnlyAWholeBusinessDatabase() {
        TestData data;
        FillWithGaps(400);
        ExecSql("UPDATE tblStockItems SET Qty = 12.5 WHERE ItemID = 3");
        QCOMPARE(RunMaintenance(Request(false, false, true, "friday"), RecordedRun().display()),
                 MaintenanceEnd::Finished);
        const QByteArray saved = Contents(gAppPath + "/friday.bkp");
        const QByteArray good = ReadFile(gAppPath + "/friday.bkp");
        ExecSql("UPDATE tblStockItems SET Qty = 99 WHERE ItemID = 3");
        ExecSql("DELETE FROM tblStockItems WHERE ItemID > 200");
        const QByteArray live = ReadFile(gDbPath);
        QStringList started;
        int ended = 0;
        SetRestartHooks({[&](const QString& p) { started << p; }, [&] { ++ended; }});
        // A whole database short of one of the two tables every business file has.
        auto without = [&](const char* table) {
            const QString path = gAppPath + "/short.tmp";
            QFile::remove(path);
            WriteFile(path, good);
            {
                Database db = DBEngine::OpenDatabase(path);
                db.Execute(QStringLiteral("DROP TABLE ") + QLatin1String(table));
            }
            const QByteArray bytes = ReadFile(path);
            QFile::remove(path);
            return bytes;
        };
        // A text file, an empty one, a cut or damaged copy, the rights and the settings files,
        // a copy without dbStatus or without tblStockItems, none.
        const QByteArray bad[] = {
            "ItemID,Qty\n1,5\n",
            "",
            good.left(good.size() / 2),
            QByteArray(good).replace(good.size() / 2, 8192, QByteArray(8192, 'Z')),
            ReadFile(gRightsPath),
            ReadFile(gUserCfgPath),
            without("dbStatus"),
            without("tblStockItems")};
        for (int i = 0; i <= 8; ++i) {
            if (i < 8)
                WriteFile(gAppPath + QStringLiteral("/bad%1.bkp").arg(i), bad[i]);
            ScriptedBoxes boxes;
            boxes.answer(vbOK);
            QCOMPARE(RestoreDatabase({gAppPath, QStringLiteral("bad%1.bkp").arg(i)}),
                     RestoreEnd::NotADatabase);
            QVERIFY2(boxes.prompts() == QStringList{kNotValid}, qPrintable(QString::number(i)));
        }
        {
            LockElsewhere lock(gDbPath, false);
            QVERIFY(lock.holding);
            ScriptedBoxes boxes;
            boxes.answer(vbOK);
            QCOMPARE(RestoreDatabase({gAppPath, "friday.bkp"}), RestoreEnd::CouldNotRestore);
            QCOMPARE(boxes.prompts(), QStringList{"The Backup could not be restored. The "
                                                  "original database may be in use or write "
                                                  "protected"});
        }
        QVERIFY(ReadFile(gDbPath) == live);
        QVERIFY(started.isEmpty() && ended == 0);

        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QCOMPARE(RestoreDatabase({gAppPath, "  "}), RestoreEnd::NoFileName);
        QCOMPARE(boxes.prompts(), QStringList{"You must select a backup file to restore"});
        RecordedRun run;
        QCOMPARE(RestoreDatabase({gAppPath + "/", "friday.bkp"}, run.display()),
                 RestoreEnd::Restarted);
        SetRestartHooks({});
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(SqlFirst("SELECT Qty FROM tblStockItems WHERE ItemID = 3"), "12.5");
        QCOMPARE(Contents(gDbPath), saved);
        QCOMPARE(started, QStringList{gAppPath + "/qstk3"});
        QCOMPARE(ended, 1);
        QCOMPARE(run.progress, QList<int>({2, 3, 4, 5, 6, 1}));
        QCOMPARE(run.labels,
                 QStringList({"Checking Backup File", "Restore Database", "Finished", ""}));
        QCOMPARE(LeftoverWorkFiles(), QStringList());
    }

    void companyDetailsKeepOneRowAndTheSharedLogoPath() {
        TestData data;
        QCOMPARE(LoadCompanyDetails().home.coName, QString());
        SaveCompanyDetails(Details("Bob's Parts"));
        QCOMPARE(HomeRows(), QStringLiteral("Bob`s Parts|Bob`s Parts line 1|Bob`s Parts line 8"));
        const QString p250 = "/srv/" + QString(241, 'a') + ".png";
        SaveCompanyDetails(Details("Mill Lane", p250));
        QCOMPARE(HomeRows(), QStringLiteral("Mill Lane|Mill Lane line 1|Mill Lane line 8"));
        QCOMPARE(LogoSetting(), "GLOBAL_ALL_PC|" + p250 + " | ");
        QCOMPARE(LoadCompanyDetails().logoFile, p250);
        const QString p251 = "/srv/" + QString(242, 'b') + ".gif";
        SaveCompanyDetails(Details("A", p251));
        QCOMPARE(LogoSetting(), "GLOBAL_ALL_PC|" + p251.left(250) + " |" + p251.mid(250) + " ");
        QCOMPARE(LoadCompanyDetails().logoFile, p251);
        QCOMPARE(gPcName, QStringLiteral("TESTPC"));
        // A blank at the cut is trimmed away on reading, as every stored value is.
        SaveCompanyDetails(Details("A", QString(249, 'x') + " y"));
        QCOMPARE(LoadCompanyDetails().logoFile, QString(249, 'x') + "y");
        // A first value "0" reads as no logo.
        DBEngine::OpenDatabase(gUserCfgPath)
            .Execute("UPDATE tblDefaults SET ParaVal_1='0', ParaVal_2='' WHERE "
                     "ParaName='Image_1'");
        QCOMPARE(LoadCompanyDetails().logoFile, QString());
        // The path is shared: another workstation reads it.
        SaveCompanyDetails(Details("A", "/srv/logo.jpg"));
        gPcName = QStringLiteral("OTHERPC");
        QCOMPARE(LoadCompanyDetails().logoFile, QStringLiteral("/srv/logo.jpg"));
        QCOMPARE(gPcName, QStringLiteral("OTHERPC"));

        // Failures keep the table and the workstation name.
        gPcName = QStringLiteral("TESTPC");
        SaveCompanyDetails(Details("Old", "/old.png"));
        const QString old = HomeRows();
        for (const char* fragment : {"UPDATE tblHome", "COMMIT"}) {
            Database::FailNextStatementContaining(QString::fromLatin1(fragment));
            QVERIFY_THROWS_EXCEPTION(DbError, SaveCompanyDetails(Details("New")));
            QCOMPARE(HomeRows(), old);
            QCOMPARE(gPcName, QStringLiteral("TESTPC"));
        }
        // The first save onto an empty table fails at its end: no row is left behind.
        ExecSql(QStringLiteral("DELETE FROM tblHome"));
        Database::FailNextStatementContaining(QStringLiteral("COMMIT"));
        QVERIFY_THROWS_EXCEPTION(DbError, SaveCompanyDetails(Details("New")));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblHome"), QStringLiteral("0"));
        // The settings store fails: the table is saved already, the workstation name is back.
        Database::FailNextStatementContaining(QStringLiteral("tbldefaults"));
        QVERIFY_THROWS_EXCEPTION(DbError, SaveCompanyDetails(Details("New", "/new.png")));
        QCOMPARE(HomeRows(), QStringLiteral("New|New line 1|New line 8"));
        QCOMPARE(gPcName, QStringLiteral("TESTPC"));
        QCOMPARE(LoadCompanyDetails().logoFile, QStringLiteral("/old.png"));
    }

    void twoWorkstationsSavingOntoAnEmptyTableLeaveOneRow() {
        // The second workstation saves while the first has found the table empty and is about
        // to write its row: it waits for the first, then updates the row the first wrote.
        TestData data;
        const QString signal = data.path("at-insert"), done = data.path("done");
        Workstation first({data.folder(), "A", "first", signal, done});
        Workstation second({data.folder(), "B", "second", signal, done});
        QCOMPARE(first.Finish(), 0);
        QCOMPARE(second.Finish(), 0);
        QVERIFY(QFileInfo::exists(done));
        QCOMPARE(HomeRows(), QStringLiteral("B|B line 1|B line 8"));
    }

    void statisticsReadTheSizeInMegabytes() {
        TestData data;
        for (const auto& [size, text] :
             {std::pair{524288, "0.50 MBytes"}, {1048576, "1.00 MBytes"}})
            QCOMPARE(DatabaseSizeText(WriteFile(data.path("sized"), QByteArray(size, 'x'))),
                     QLatin1String(text));
        QCOMPARE(DatabaseSizeText(data.path("missing.dqx")), QStringLiteral("<1 MBytes"));
    }
};

QS_MAIN_WITH_SECOND_WORKSTATION(TestMaintenance)
#include "test_maintenance.moc"
