// The maintenance and restore tabs of the utilities window, driven through their controls.
#include "foundation/Clock.h"
#include "foundation/Globals.h"
#include "maintenance/FileLists.h"
#include "maintenance/Restore.h"
#include "maintenance/frmDBUtils.h"
#include "tests/maintenance/MaintenanceFixture.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

namespace {
void touch(const QString& path) {
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
}

// Pause waits on the time of day: a clock that runs a second a reading ends every wait at once.
struct FastClock {
    int now = 3600 * 1000;
    FastClock() {
        SetTimeOfDaySource([this] { return now += 1000; });
    }
    ~FastClock() { SetTimeOfDaySource({}); }
};

bool white(QWidget* w) {
    return w->palette().color(QPalette::Base) == QColor(Qt::white);
}

void clickFile(QListWidget* list, const QString& name) {
    const QList<QListWidgetItem*> found = list->findItems(name, Qt::MatchExactly);
    QCOMPARE(found.size(), 1);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(found.first()).center());
}

template <class T> T* child(QWidget* w, const char* name) {
    T* c = w->findChild<T*>(QLatin1String(name));
    if (!c)
        qWarning("no control %s", name);
    return c;
}
} // namespace

class TestMaintenanceTabs : public QObject {
    Q_OBJECT
private slots:
    void maintenanceTabRulesAndBackup() {
        TestData data;
        FillWithGaps(100);
        touch(gAppPath + "/old.bkp");
        touch(gAppPath + "/notes.txt");
        QDir(gAppPath).mkdir("bk");
        touch(gAppPath + "/bk/earlier.bkp");
        FastClock clock;

        frmDBUtils dlg;
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        child<QTabBar>(&dlg, "TabStrip1")->setCurrentIndex(frmDBUtils::TabMaintenance);
        auto* chkCheckDB = child<QCheckBox>(&dlg, "chkCheckDB");
        auto* chkCompact = child<QCheckBox>(&dlg, "chkCompact");
        auto* chkbackupDB = child<QCheckBox>(&dlg, "chkbackupDB");
        auto* txtFname = child<QLineEdit>(&dlg, "txtFname");
        auto* Dir1 = child<DirListBox>(&dlg, "Dir1");
        auto* File1 = child<QListWidget>(&dlg, "File1");
        auto* Drive1 = child<QWidget>(&dlg, "Drive1");
        QVERIFY(chkCheckDB && chkCompact && chkbackupDB && txtFname && Dir1 && File1 && Drive1);
        QCOMPARE(chkCheckDB->text(), QStringLiteral("Re-Sync"));
        QCOMPARE(chkCompact->text(), QStringLiteral("Compact/Compress"));
        QCOMPARE(child<QPushButton>(&dlg, "cmdBackup")->text(), QStringLiteral("Backup"));

        // Grey and in the data folder until Backup is ticked.
        QCOMPARE(Dir1->Path(), gAppPath);
        QCOMPARE(static_cast<FileListBox*>(File1)->FileNames(), QStringList{"old.bkp"});
        for (QWidget* w : {Drive1, static_cast<QWidget*>(Dir1), static_cast<QWidget*>(File1),
                           static_cast<QWidget*>(txtFname)}) {
            QVERIFY(!w->isEnabled());
            QVERIFY(!white(w));
        }
        chkbackupDB->click();
        for (QWidget* w : {Drive1, static_cast<QWidget*>(Dir1), static_cast<QWidget*>(File1),
                           static_cast<QWidget*>(txtFname)}) {
            QVERIFY(w->isEnabled());
            QVERIFY(white(w));
        }
        chkCompact->click();
        chkCheckDB->click(); // Re-Sync runs alone
        QVERIFY(!chkCompact->isChecked());
        QVERIFY(!chkbackupDB->isChecked());
        QVERIFY(!txtFname->isEnabled());
        chkCompact->click();
        QVERIFY(!chkCheckDB->isChecked());
        chkCheckDB->click();
        chkbackupDB->click();
        QVERIFY(!chkCheckDB->isChecked());
        QVERIFY(txtFname->isEnabled());

        // Only letters, digits, "-" and "_" can be typed.
        txtFname->setFocus();
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(txtFname));
        QTest::keyClicks(QApplication::focusWidget(), "Ab-c_9.x'y /z");
        QCOMPARE(txtFname->text(), QStringLiteral("Ab-c_9xyz"));
        // A picked file gives its name without the extension.
        clickFile(File1, "old.bkp");
        QCOMPARE(txtFname->text(), QStringLiteral("old"));

        // A typed folder.
        Dir1->PathBox()->setFocus();
        Dir1->PathBox()->selectAll();
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget*>(Dir1->PathBox()));
        QTest::keyClicks(QApplication::focusWidget(), gAppPath + "/bk");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(Dir1->Path(), gAppPath + "/bk");
        // Enter took the folder and started nothing.
        QCOMPARE(static_cast<FileListBox*>(File1)->FileNames(), QStringList{"earlier.bkp"});

        // A folder that does not exist is refused and the lists stay where they were.
        {
            ScriptedBoxes refused;
            refused.answer(vbOK);
            Dir1->PathBox()->selectAll();
            QTest::keyClicks(QApplication::focusWidget(), gAppPath + "/nowhere");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            QCOMPARE(refused.prompts(), QStringList{"Path not found: " + gAppPath + "/nowhere"});
            QCOMPARE(Dir1->Path(), gAppPath + "/bk");
            QCOMPARE(Dir1->PathBox()->text(), gAppPath + "/bk");
        }

        txtFname->setText("weekly");
        ScriptedBoxes boxes;
        child<QPushButton>(&dlg, "cmdBackup")->click();
        QCOMPARE(boxes.shown().size(), 0);
        QCOMPARE(child<QLabel>(&dlg, "l1")->text(), QStringLiteral("Finished"));
        QCOMPARE(child<QProgressBar>(&dlg, "pbMaintenance")->value(),
                 child<QProgressBar>(&dlg, "pbMaintenance")->maximum());
        QCOMPARE(static_cast<FileListBox*>(File1)->FileNames(),
                 QStringList({"earlier.bkp", "weekly.bkp"}));
        QCOMPARE(Contents(gAppPath + "/bk/weekly.bkp"), Contents(gDbPath));
        QCOMPARE(Pragma(gDbPath, "freelist_count"), 0);

        child<QPushButton>(&dlg, "cmdCloseUtilities")->click();
        QVERIFY(!dlg.isVisible());
    }

    void restoreTabPicksAndRestores() {
        TestData data;
        FillWithGaps(100);
        ExecSql("UPDATE tblStockItems SET Qty = 4 WHERE ItemID = 1");
        QDir(gAppPath).mkdir("bk");
        QVERIFY(QFile::copy(gDbPath, gAppPath + "/bk/monday.bkp"));
        ExecSql("UPDATE tblStockItems SET Qty = 40 WHERE ItemID = 1");
        FastClock clock;
        QStringList started;
        int ended = 0;
        SetRestartHooks({[&](const QString& p) { started << p; }, [&] { ++ended; }});

        frmDBUtils dlg;
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        child<QTabBar>(&dlg, "TabStrip1")->setCurrentIndex(frmDBUtils::TabRestore);
        auto* chk = child<QCheckBox>(&dlg, "chkRestoreIsOK");
        auto* Dir2 = child<DirListBox>(&dlg, "Dir2");
        auto* File2 = child<QListWidget>(&dlg, "File2");
        auto* txtFname2 = child<QLineEdit>(&dlg, "txtFname2");
        auto* cmdRestoreDB = child<QPushButton>(&dlg, "cmdRestoreDB");
        QVERIFY(chk && Dir2 && File2 && txtFname2 && cmdRestoreDB);
        QCOMPARE(
            chk->text(),
            QStringLiteral("Restore a backed-up database (Overwriting the current database!!!)"));
        QVERIFY(!File2->isEnabled() && !Dir2->isEnabled() && !txtFname2->isEnabled());

        // With the safety catch on, nothing can be picked: the button meets the empty name.
        {
            ScriptedBoxes boxes;
            boxes.answer(vbOK);
            cmdRestoreDB->click();
            QCOMPARE(boxes.prompts(), QStringList{"You must select a backup file to restore"});
        }
        chk->click();
        QVERIFY(File2->isEnabled() && Dir2->isEnabled() && txtFname2->isEnabled());
        QVERIFY(white(File2));
        QVERIFY(Dir2->SetPath(gAppPath + "/bk"));
        clickFile(File2, "monday.bkp");
        QCOMPARE(txtFname2->text(), QStringLiteral("monday.bkp"));

        ScriptedBoxes boxes;
        cmdRestoreDB->click();
        SetRestartHooks({});
        QCOMPARE(boxes.shown().size(), 0);
        QCOMPARE(SqlFirst("SELECT Qty FROM tblStockItems WHERE ItemID = 1"), QStringLiteral("4"));
        QCOMPARE(started, QStringList{gAppPath + "/qstk3"});
        QCOMPARE(ended, 1);
        auto* bar = child<QProgressBar>(&dlg, "pbRestore");
        QCOMPARE(bar->minimum(), 1);
        QCOMPARE(bar->maximum(), 6);
        QCOMPARE(bar->value(), 1);
    }
};

QTEST_MAIN(TestMaintenanceTabs)
#include "test_maintenance_tabs.moc"
