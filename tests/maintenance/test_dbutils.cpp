// The utilities window, driven through the controls of each tab.
#include "foundation/Clock.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "maintenance/CompanyDetails.h"
#include "maintenance/CompanyDetailsPanel.h"
#include "maintenance/FileLists.h"
#include "maintenance/FlexGrid.h"
#include "maintenance/ImportCsvPanel.h"
#include "maintenance/MaintenancePanel.h"
#include "maintenance/Restore.h"
#include "maintenance/RestorePanel.h"
#include "maintenance/StatisticsPanel.h"
#include "maintenance/frmDBUtils.h"
#include "tests/maintenance/MaintenanceFixture.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabBar>
#include <QTimer>

namespace {
// Types `text` into `box` as a keyboard does, over what it holds.
void Type(QWidget* box, const QString& text) {
    box->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), box);
    if (auto* line = qobject_cast<QLineEdit*>(box))
        line->selectAll();
    QTest::keyClicks(QApplication::focusWidget(), text);
}

void ClickFile(QListWidget* list, const QString& name) {
    const QList<QListWidgetItem*> found = list->findItems(name, Qt::MatchExactly);
    QCOMPARE(found.size(), 1);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(found.first()).center());
}

bool White(QWidget* w) {
    return w->palette().color(QPalette::Base) == QColor(Qt::white);
}

QString Megabytes(const QString& path) {
    return QString::number(double(QFileInfo(path).size()) / 1048576.0, 'f', 2) + " MBytes";
}
} // namespace

class TestDBUtils : public QObject {
    Q_OBJECT
private slots:
    void init() {
        UseTestLocale();
        // Pause waits on the time of day: a clock that runs a second a reading ends every wait.
        SetTimeOfDaySource([now = 3600 * 1000]() mutable { return now += 1000; });
    }
    void cleanup() { SetTimeOfDaySource({}); }

    void homeTabTypesSavesAndTakesOnlyAPictureAsLogo() {
        TestData data;
        SaveCompanyDetails(
            {{"Parts Ltd", {"1", "2", "3", "4", "5", "6", "7", "0113 001"}}, "/srv/logo.png"});
        frmDBUtils dlg;
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        CompanyDetailsPanel& home = *dlg.Home;
        QCOMPARE(home.txtCoName->text() + home.txtCoAddress[7]->text() + home.txtLogoFile->text(),
                 QStringLiteral("Parts Ltd0113 001/srv/logo.png"));

        // Every box turns a typed apostrophe into a back-quote.
        for (QLineEdit* box : QList<QLineEdit*>{home.txtCoName} + home.txtCoAddress +
                                  QList<QLineEdit*>{home.txtLogoFile}) {
            Type(box, "O'Neil " + box->objectName());
            QCOMPARE(box->text(), "O`Neil " + box->objectName());
        }

        ScriptedBoxes boxes;
        home.cmdSaveCompanyDetails->click();
        QCOMPARE(SqlFirst("SELECT count(*) || CoName || Tel1 || Add6 FROM tblHome"),
                 "1O`Neil txtCoNameO`Neil txtCoAddress_6O`Neil txtCoAddress_5");
        QCOMPARE(LoadCompanyDetails().logoFile, QStringLiteral("O`Neil txtLogoFile"));

        // The logo: a picture is taken; a text file named like one is refused with its box; a
        // cancelled choice changes nothing.
        const QString png = data.path("logo.png");
        QImage picture(40, 20, QImage::Format_RGB32);
        picture.fill(Qt::darkBlue);
        QVERIFY(picture.save(png, "PNG"));
        boxes.answerFile(png);
        home.Command3->click();
        QCOMPARE(home.txtLogoFile->text(), png);
        boxes.answerFile(WriteFile(data.path("fake.jpg"), "this is not a picture\n"));
        boxes.answer(vbOK);
        boxes.answerFile(QString());
        home.Command3->click();
        home.Command3->click();
        QCOMPARE(home.txtLogoFile->text(), png);
        QCOMPARE(boxes.prompts(),
                 QStringList{"The selected file does not appear to be a valid image. You should "
                             "select a valid image/picture file such as BMP, JPG or GIF etc"});
        QCOMPARE(boxes.shown().at(2).title, QStringLiteral("Invalid Image"));
        QVERIFY(boxes.allAnswersUsed());
    }

    void statisticsTabCountsAtEachVisit() {
        TestData data;
        ExecSql("INSERT INTO History (StockID) VALUES (1), (1)");
        ExecSql("INSERT INTO tblItemHistory (StockID, HistDate, HistType) VALUES (1, '2024-02-01', "
                "'RX')");
        const QString sizeAtLoad = Megabytes(gDbPath);
        frmDBUtils dlg;
        dlg.show();
        StatisticsPanel& stats = *dlg.Statistics;
        QCOMPARE(stats.txtSizeOfDB->text(), sizeAtLoad);
        dlg.TabStrip1->setCurrentIndex(frmDBUtils::TabStatistics);
        QCOMPARE(stats.txtNumRecords->text(), QStringLiteral("2"));
        QCOMPARE(stats.txtPurgeDate->text(), QStringLiteral("01/01/2005"));
        stats.cal1->setSelectedDate(QDate(2010, 6, 15));
        QCOMPARE(stats.txtPurgeDate->text(), QStringLiteral("15/06/2010"));

        // The purge only says so, with no title of its own: no table changes.
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        stats.Command2->click();
        QCOMPARE(boxes.prompts(),
                 QStringList{"This utility simply purges old or unused history data from the "
                             "database to free up some space. However, the database has not "
                             "reached a critical size so nothing needs to be deleted yet."});
        QCOMPARE(boxes.shown().first().title, AppName());
        QCOMPARE(SqlFirst("SELECT count(*) FROM History") +
                     SqlFirst("SELECT count(*) FROM tblItemHistory"),
                 QStringLiteral("21"));

        // Coming back: the date is reset and the count read again, the size is not; without a
        // History table the count reads 0 with no message.
        ExecSql("INSERT INTO History (StockID, HistType) VALUES (2, hex(randomblob(600000)))");
        QVERIFY(Megabytes(gDbPath) != sizeAtLoad);
        dlg.TabStrip1->setCurrentIndex(frmDBUtils::TabHome);
        dlg.TabStrip1->setCurrentIndex(frmDBUtils::TabStatistics);
        QCOMPARE(stats.txtNumRecords->text(), QStringLiteral("3"));
        QCOMPARE(stats.cal1->selectedDate(), QDate(2005, 1, 1));
        QCOMPARE(stats.txtSizeOfDB->text(), sizeAtLoad);
        ExecSql("DROP TABLE History");
        dlg.TabStrip1->setCurrentIndex(frmDBUtils::TabHome);
        dlg.TabStrip1->setCurrentIndex(frmDBUtils::TabStatistics);
        QCOMPARE(stats.txtNumRecords->text(), QStringLiteral("0"));
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(stats.ProgressBar1->value(), 0);
    }

    void maintenanceTabRulesAndBackup() {
        TestData data;
        FillWithGaps(100);
        WriteFile(gAppPath + "/old.bkp", "");
        WriteFile(gAppPath + "/notes.txt", "");
        QDir(gAppPath).mkdir("bk");
        WriteFile(gAppPath + "/bk/earlier.bkp", "");
        frmDBUtils dlg;
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        dlg.TabStrip1->setCurrentIndex(frmDBUtils::TabMaintenance);
        MaintenancePanel& tab = *dlg.findChild<MaintenancePanel*>();

        // Grey and in the data folder until Backup is ticked.
        const QList<QWidget*> picker{tab.Drive1, tab.Dir1, tab.File1, tab.txtFname};
        QCOMPARE(tab.Dir1->Path(), gAppPath);
        QCOMPARE(tab.File1->FileNames(), QStringList{"old.bkp"});
        for (QWidget* w : picker)
            QVERIFY(!w->isEnabled() && !White(w));
        tab.chkbackupDB->click();
        for (QWidget* w : picker)
            QVERIFY(w->isEnabled() && White(w));
        // Re-Sync runs alone; Compact and Backup may run together.
        tab.chkCompact->click();
        tab.chkCheckDB->click();
        QVERIFY(!tab.chkCompact->isChecked() && !tab.chkbackupDB->isChecked() &&
                !tab.txtFname->isEnabled());
        tab.chkCompact->click();
        QVERIFY(!tab.chkCheckDB->isChecked());
        tab.chkCheckDB->click();
        tab.chkbackupDB->click();
        QVERIFY(!tab.chkCheckDB->isChecked() && tab.txtFname->isEnabled());

        // Only letters, digits, "-" and "_" can be typed; a picked file gives its name without
        // the extension.
        Type(tab.txtFname, "Ab-c_9.x'y /z");
        QCOMPARE(tab.txtFname->text(), QStringLiteral("Ab-c_9xyz"));
        ClickFile(tab.File1, "old.bkp");
        QCOMPARE(tab.txtFname->text(), QStringLiteral("old"));
        // A typed folder is taken on Enter, which starts nothing.
        Type(tab.Dir1->PathBox(), gAppPath + "/bk");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(tab.File1->FileNames(), QStringList{"earlier.bkp"});

        ScriptedBoxes boxes;
        tab.txtFname->setText("weekly");
        tab.cmdBackup->click();
        QVERIFY(boxes.shown().isEmpty());
        QCOMPARE(tab.l1->text(), QStringLiteral("Finished"));
        QCOMPARE(tab.File1->FileNames(), QStringList({"earlier.bkp", "weekly.bkp"}));
        tab.cmdCloseUtilities->click();
        QVERIFY(!dlg.isVisible());
    }

    void restoreTabPicksAndRestores() {
        TestData data;
        ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo, Qty) VALUES (1, 'P1', 4)");
        QDir(gAppPath).mkdir("bk");
        QVERIFY(QFile::copy(gDbPath, gAppPath + "/bk/monday.bkp"));
        ExecSql("UPDATE tblStockItems SET Qty = 40 WHERE ItemID = 1");
        QStringList started;
        SetRestartHooks({[&](const QString& p) { started << p; }, [] {}});
        frmDBUtils dlg;
        dlg.show();
        dlg.TabStrip1->setCurrentIndex(frmDBUtils::TabRestore);
        RestorePanel& tab = *dlg.findChild<RestorePanel*>();
        QVERIFY(!tab.File2->isEnabled() && !tab.Dir2->isEnabled() && !tab.txtFname2->isEnabled());
        tab.chkRestoreIsOK->click();
        QVERIFY(tab.File2->isEnabled() && tab.Dir2->isEnabled() && White(tab.txtFname2));
        QVERIFY(tab.Dir2->SetPath(gAppPath + "/bk"));
        ClickFile(tab.File2, "monday.bkp");
        QCOMPARE(tab.txtFname2->text(), QStringLiteral("monday.bkp"));
        ScriptedBoxes boxes;
        tab.cmdRestoreDB->click();
        SetRestartHooks({});
        QCOMPARE(SqlFirst("SELECT Qty FROM tblStockItems WHERE ItemID = 1"), QStringLiteral("4"));
        QCOMPARE(started, QStringList{gAppPath + "/qstk3"});
    }

    void importTabReadsChoosesImportsAndCloses() {
        TestData data;
        frmDBUtils dlg;
        dlg.show();
        dlg.TabStrip1->setCurrentIndex(frmDBUtils::TabImport);
        ImportCsvPanel& tab = *dlg.findChild<ImportCsvPanel*>();
        ScriptedBoxes boxes;
        boxes.answerFile(WriteFile(data.path("stock.csv"),
                                   "PNo,Desc,Qty,Sell\nK1,Knob,4,1.5\nK2,Key,,\n,none,1,1\n"));
        tab.cmdBrowse->click();
        QVERIFY(tab.Frame5->isVisible());
        QCOMPARE(tab.fg1->model()->index(2, 1).data().toString(), QStringLiteral("K1"));
        // Row 0 and column 0 are the fixed headings.
        QVERIFY(tab.fg1->isRowHidden(0) && tab.fg1->isColumnHidden(0));
        for (QComboBox* box : {tab.Combo1, tab.Combo2, tab.Combo3, tab.Combo4, tab.Combo9,
                               tab.Combo10, tab.Combo11, tab.Combo12})
            QCOMPARE(box->currentIndex(), -1); // no choice until one is made
        QCOMPARE(tab.Combo3->itemText(0) + tab.Combo2->itemText(0), "Ignore    Column 1");

        tab.Combo1->setCurrentIndex(0);  // Column 1
        tab.Combo2->setCurrentIndex(1);  // Column 2
        tab.Combo3->setCurrentIndex(3);  // Column 3
        tab.Combo11->setCurrentIndex(4); // Column 4
        tab.Check1->setChecked(true);
        boxes.answer(vbOK);
        tab.Command6->click();
        QVERIFY(boxes.prompts().value(0).startsWith("2 records were imported successfully\n\n1 "));
        QCOMPARE(tab.fg1->model()->headerData(2, Qt::Vertical).toString(), "DONE_OK");
        QCOMPARE(tab.fg1->TextMatrix(4, 0), QStringLiteral("FAILED"));
        QCOMPARE(SqlFirst("SELECT Qty || '/' || SellAt || '/' || ItemDescription FROM "
                          "tblStockItems WHERE MasterPNo = 'K1'"),
                 QStringLiteral("4.0/1.5/Knob"));
        // Close empties the grid back to two by two and shows the first tab.
        tab.Command8->click();
        QCOMPARE(QSize(tab.fg1->Cols(), tab.fg1->Rows()), QSize(2, 2));
        QCOMPARE(tab.fg1->TextMatrix(1, 0), QString());
        QCOMPARE(dlg.TabStrip1->currentIndex(), int(frmDBUtils::TabHome));
    }

    void userTabLoadsEditsAndSaves() {
        TestData data;
        gWinUser = QStringLiteral("clerk");
        {
            Database db = DBEngine::OpenDatabase(QString(), false, false, RightsConnectString());
            db.Execute("INSERT INTO tblRights VALUES ('clerk', 0, 0, 1, 1, 1, 1, 1), ('buyer', 1, "
                       "1, 0, 0, 0, 1, 1), ('temp', 1, 1, 1, 1, 1, 1, 1)");
        }
        frmDBUtils dlg;
        dlg.show();
        dlg.TabStrip1->setCurrentIndex(frmDBUtils::TabUsers);
        GridEX& grid = *dlg.gdxUList;
        QCOMPARE(grid.ItemCount(), 3);
        QCOMPARE(grid.CellValue(1, 1).toString(), QStringLiteral("buyer"));
        QAbstractItemModel* m = grid.Model();

        // Give the buyer UAdmin (and so Utils), drop temp, add a new user.
        QVERIFY(m->setData(m->index(0, 7), Qt::Checked, Qt::CheckStateRole));
        QVERIFY(grid.Update());
        grid.SetRow(3);
        QVERIFY(grid.Delete());
        QVERIFY(m->setData(m->index(2, 0), QStringLiteral("new"), Qt::EditRole));
        QVERIFY(m->setData(m->index(2, 1), Qt::Checked, Qt::CheckStateRole));
        QVERIFY(grid.Update());
        ScriptedBoxes boxes;
        dlg.Command4->click();
        QCOMPARE(boxes.processingBars(), 1);
        QCOMPARE(DBEngine::OpenDatabase(QString(), false, false, RightsConnectString())
                     .OpenRecordset("SELECT group_concat(UserName || ':' || Pm2 || Pm3 || Pm4 || "
                                    "Pm5 || Pm6 || Pm7 || Pm8, ' ') FROM (SELECT * FROM "
                                    "tblRights ORDER BY UserName)")
                     .Fields(0)
                     .Text(),
                 QStringLiteral("buyer:1100000 clerk:0011100 new:0111111"));
        QCOMPARE(grid.CellValue(3, 1).toString(), QStringLiteral("new")); // loaded again
    }

    void mainWindowReadsTheCompanyAgainAfterUtilities() {
        TestData data;
        FormMain w;
        w.Form_Load();
        bool saved = false;
        QTimer::singleShot(0, this, [&] {
            if (auto* dlg = qobject_cast<frmDBUtils*>(QApplication::activeModalWidget())) {
                dlg->Home->txtCoName->setText("Quill Parts");
                dlg->Home->cmdSaveCompanyDetails->click();
                saved = true;
                dlg->close();
            }
        });
        w.OpenUtilities();
        QVERIFY(saved);
        QCOMPARE(w.txtCoName->text(), QStringLiteral("Quill Parts"));
    }
};

QTEST_MAIN(TestDBUtils)
#include "test_dbutils.moc"
