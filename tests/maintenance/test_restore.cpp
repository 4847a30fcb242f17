// Restore: what the check refuses, a good backup put back whole, and a file in use elsewhere.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "maintenance/Restore.h"
#include "tests/maintenance/LockElsewhere.h"
#include "tests/maintenance/MaintenanceFixture.h"
#include "tests/support/TestSupport.h"

#include <QFile>
#include <QTest>

namespace {
const QString kNotValid =
    QStringLiteral("The backup file you selected does not appear to be a valid database file");

struct RecordedRestart {
    QStringList started;
    int ended = 0;
    RecordedRestart() {
        SetRestartHooks({[this](const QString& p) { started << p; }, [this] { ++ended; }});
    }
    ~RecordedRestart() { SetRestartHooks({}); }
};

// A backup of the current file, made by a backup run.
QString makeBackup(const QString& name) {
    RecordedRun run;
    MaintenanceRequest r;
    r.backup = true;
    r.folder = gAppPath;
    r.fileName = name;
    RunMaintenance(r, run.display());
    return gAppPath + "/" + name + ".bkp";
}

void writeFile(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
}

QByteArray readFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}
} // namespace

class TestRestore : public QObject {
    Q_OBJECT
private slots:
    void goodBackupRestoredWholeAndProgramRestarted() {
        TestData data;
        FillWithGaps(400);
        ExecSql("UPDATE tblStockItems SET Qty = 12.5 WHERE ItemID = 3");
        const QString backup = makeBackup("friday");
        const QByteArray saved = Contents(backup);
        ExecSql("UPDATE tblStockItems SET Qty = 99 WHERE ItemID = 3");
        ExecSql("DELETE FROM tblStockItems WHERE ItemID > 200");

        ScriptedBoxes boxes;
        RecordedRestart restart;
        RecordedRun run;
        QCOMPARE(RestoreDatabase({gAppPath + "/", "friday.bkp"}, run.display()),
                 RestoreEnd::Restarted);
        QCOMPARE(boxes.shown().size(), 0);
        QCOMPARE(SqlFirst("SELECT Qty FROM tblStockItems WHERE ItemID = 3"),
                 QStringLiteral("12.5"));
        QCOMPARE(Contents(gDbPath), saved);
        QCOMPARE(restart.started, QStringList{gAppPath + "/qstk3"});
        QCOMPARE(restart.ended, 1);
        QCOMPARE(run.ranges, (QList<QPair<int, int>>{{1, 6}}));
        QCOMPARE(run.progress, QList<int>({2, 3, 4, 5, 6, 1}));
        QCOMPARE(run.labels,
                 QStringList({"Checking Backup File", "Restore Database", "Finished", ""}));
        QCOMPARE(run.pauses, QList<int>{2000});
        QCOMPARE(LeftoverWorkFiles(), QStringList());
    }

    void checkRefusesWhatIsNoBusinessDatabase() {
        TestData data;
        FillWithGaps(400);
        const QByteArray good = readFile(makeBackup("good"));
        QVERIFY(good.size() > 40000);
        QByteArray corrupt = good;
        for (qsizetype i = good.size() / 2; i < good.size() / 2 + 8192; ++i)
            corrupt[i] = char(0x5a);
        writeFile(gAppPath + "/text.bkp", "ItemID,Qty\n1,5\n");
        writeFile(gAppPath + "/empty.bkp", QByteArray());
        writeFile(gAppPath + "/truncated.bkp", good.left(good.size() / 2));
        writeFile(gAppPath + "/corrupt.bkp", corrupt);
        writeFile(gAppPath + "/rights.bkp", readFile(gRightsPath));
        writeFile(gAppPath + "/settings.bkp", readFile(gUserCfgPath));
        ExecSql("UPDATE tblStockItems SET Qty = 77");
        const QByteArray live = readFile(gDbPath);

        RecordedRestart restart;
        for (const char* name : {"text.bkp", "empty.bkp", "truncated.bkp", "corrupt.bkp",
                                 "rights.bkp", "settings.bkp", "missing.bkp"}) {
            ScriptedBoxes boxes;
            boxes.answer(vbOK);
            RecordedRun run;
            QCOMPARE(RestoreDatabase({gAppPath, QLatin1String(name)}, run.display()),
                     RestoreEnd::NotADatabase);
            QVERIFY2(boxes.prompts() == QStringList{kNotValid}, name);
            QCOMPARE(boxes.shown().at(0).flags, int(vbInformation));
            QCOMPARE(run.progress.last(), 4);
            QVERIFY2(readFile(gDbPath) == live, name);
        }
        QVERIFY(restart.started.isEmpty());
        QCOMPARE(restart.ended, 0);

        // Nothing chosen.
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        QCOMPARE(RestoreDatabase({gAppPath, "  "}), RestoreEnd::NoFileName);
        QCOMPARE(boxes.prompts(), QStringList{"You must select a backup file to restore"});
    }

    void fileInUseElsewhereIsNotRestored() {
        TestData data;
        FillWithGaps(200);
        const QString backup = makeBackup("monday");
        ExecSql("UPDATE tblStockItems SET Qty = 5");
        const QByteArray live = Contents(gDbPath);
        LockElsewhere lock(gDbPath, LockElsewhere::Read);
        QVERIFY(lock.Holding());
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        RecordedRestart restart;
        QCOMPARE(RestoreDatabase({gAppPath, "monday.bkp"}), RestoreEnd::CouldNotRestore);
        QCOMPARE(boxes.prompts(), QStringList{"The Backup could not be restored. The original "
                                              "database may be in use or write protected"});
        QVERIFY(restart.started.isEmpty());
        lock.Release();
        QCOMPARE(Contents(gDbPath), live);
        QCOMPARE(SqlFirst("PRAGMA quick_check"), QStringLiteral("ok"));
        QVERIFY(Contents(backup) != live);
    }
};

QS_MAIN_WITH_LOCK_HOLDER(TestRestore)

#include "test_restore.moc"
