// Start-up as the program runs it: the hidden start-up form inside the event loop, with the real
// message boxes and processing bar, until the main window is on screen and stays there.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/QtBoxes.h"
#include "foundation/Startup.h"
#include "foundation/frmStartup.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "inventory/InventoryList.h"
#include "tests/foundation/OldDataFiles.h"
#include "tests/support/TestSupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolBox>
#include <QToolButton>
#include <memory>

namespace {

struct StartupRun {
    int exitCode = -1;       // 42: the main window stayed up; anything else: the program ended
    QPointer<FormMain> main; // the main window, when it was made
    QStringList boxes;       // the message boxes shown, answered with their default button
    int processingBars = 0;  // processing bars seen on screen
};

// Runs start-up on `folder` in the event loop. Message boxes are answered as a user would; once
// the main window has been visible for half a second the loop is ended with 42.
StartupRun runStartup(const QString& folder) {
    StartupRun run;
    InstallQtBoxes();
    auto* startup = new frmStartup(folder, [&run] {
        auto* w = new FormMain;
        w->Form_Load();
        run.main = w;
        return w;
    });
    QTimer user;
    bool barUp = false;
    int boxTicks = 0;
    QObject::connect(&user, &QTimer::timeout, [&run, &barUp, &boxTicks] {
        QWidget* modal = QApplication::activeModalWidget();
        // A box is read for a moment, then answered with its default button.
        auto* box = qobject_cast<QMessageBox*>(modal);
        boxTicks = box ? boxTicks + 1 : 0;
        if (box && boxTicks >= 10) {
            run.boxes << box->text();
            box->defaultButton() ? box->defaultButton()->click() : box->accept();
        }
        const bool bar = modal && modal->objectName() == QLatin1String("frmPBar");
        if (bar && !barUp)
            ++run.processingBars;
        barUp = bar;
    });
    user.start(10);
    int shownTicks = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&run, &shownTicks] {
        shownTicks = run.main && run.main->isVisible() ? shownTicks + 1 : 0;
        if (shownTicks >= 10)
            QApplication::exit(42);
    });
    watch.start(50);
    QTimer::singleShot(60000, [] { QApplication::exit(99); });
    QTimer::singleShot(0, startup, &frmStartup::Form_Load);
    run.exitCode = QApplication::exec();
    InstallBoxBackend(nullptr);
    return run;
}

QString columnDump() {
    Database db = DBEngine::OpenDatabase(gUserCfgPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT GridName, ColName, ColWidth FROM ColStat ORDER BY 1, 2"));
    QStringList rows;
    for (; !rs.Eof(); rs.MoveNext())
        rows << rs.Fields(0).Text() + QLatin1Char('/') + rs.Fields(1).Text() + QLatin1Char('=') +
                    rs.Fields(2).Text();
    return rows.join(QLatin1Char(' '));
}

void addItems() {
    ExecSql(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemDescription, "
                           "Category, Qty, Trigger) VALUES (1, 'A-1', 'Bolt', 'HW', 5, 1), "
                           "(2, 'B-2', 'Nut', 'HW', 0, 3)"));
}

// The main window shows the full list with the widths it has, and a border dragged by the user
// gives the column its new width there.
void showListAndResize(FormMain& w, int expectedPNoTwips) {
    w.ButtonBar1->findChild<QToolButton*>(QStringLiteral("UB_All"))->click();
    QCOMPARE(w.gdxUBView->ItemCount(), 2);
    QCOMPARE(w.gdxUBView->Columns()(QStringLiteral("PNo")).Width(), expectedPNoTwips);
    QCOMPARE(w.gdxUBView->Columns()(QStringLiteral("Desc")).Width(),
             UBItemColumns()[UBItemColumn(QStringLiteral("Desc")) - 1].widthTwips);
    QHeaderView* header = w.gdxUBView->TableView()->horizontalHeader();
    header->resizeSection(UBItemColumn(QStringLiteral("Desc")) - 1, 333);
    QCOMPARE(w.gdxUBView->Columns()(QStringLiteral("Desc")).Width(),
             w.gdxUBView->PixelsToTwips(333));
}

} // namespace

class TestStartupWindow : public QObject {
    Q_OBJECT
private slots:
    void everyRoadReachesTheMainWindow_data() {
        QTest::addColumn<bool>("withoutUnits");
        QTest::addColumn<bool>("before32A");
        QTest::addColumn<bool>("withoutParameters");
        QTest::addColumn<QString>("dbVer");
        QTest::addColumn<int>("installBoxes");
        QTest::addColumn<int>("bars");
        QTest::newRow("current file") << false << false << false << "32A" << 0 << 0;
        QTest::newRow("no status row") << true << true << true << "" << 1 << 2;
        QTest::newRow("31A") << false << true << false << "31A" << 1 << 1;
        QTest::newRow("no invoice columns") << false << true << false << "30A" << 1 << 1;
        QTest::newRow("no parameters table") << false << false << true << "32A" << 0 << 0;
        QTest::newRow("no units of measure") << true << false << false << "32A" << 0 << 1;
    }

    void everyRoadReachesTheMainWindow() {
        QFETCH(bool, withoutUnits);
        QFETCH(bool, before32A);
        QFETCH(bool, withoutParameters);
        QFETCH(QString, dbVer);
        QFETCH(int, installBoxes);
        QFETCH(int, bars);
        TestData data;
        QVERIFY(data.ok());
        OldFile old;
        old.withoutUnits = withoutUnits;
        old.before32A = before32A;
        old.withoutParameters = withoutParameters;
        old.dbVer = dbVer;
        makeOld(old);

        const StartupRun run = runStartup(data.folder());
        const std::unique_ptr<FormMain> owner(run.main.data());
        QCOMPARE(run.exitCode, 42); // the program did not end by itself
        QVERIFY(run.main);
        QVERIFY(run.main->isVisible());
        QCOMPARE(run.boxes, QStringList(installBoxes, kInstallPrompt));
        QCOMPARE(run.processingBars, bars);

        Database db = DBEngine::OpenDatabase(gDbPath);
        QCOMPARE(version(db), QStringLiteral("32A"));
        QVERIFY(hasColumn(db, QStringLiteral("tblStockItems"), QStringLiteral("UOM3")));
        QVERIFY(hasColumn(db, QStringLiteral("tblDespatch"), QStringLiteral("InvoiceNo")));
        QVERIFY(hasColumn(db, QStringLiteral("tblDespatch"), QStringLiteral("Invoiced")));
        QVERIFY(hasColumn(db, QStringLiteral("tblParameters"), QStringLiteral("ParaName")));
    }

    void missingSettingsFileNeitherStopsNorAppears() {
        TestData data;
        QVERIFY(data.ok());
        addItems();
        QVERIFY(QFile::remove(data.path(QStringLiteral("usercfg.dqx"))));
        const StartupRun run = runStartup(data.folder());
        const std::unique_ptr<FormMain> owner(run.main.data());
        QCOMPARE(run.exitCode, 42);
        QVERIFY(run.main && run.main->isVisible());
        QVERIFY(run.boxes.isEmpty());
        ScriptedBoxes boxes; // from here on, any box fails the test
        showListAndResize(*run.main,
                          UBItemColumns()[UBItemColumn(QStringLiteral("PNo")) - 1].widthTwips);
        QCOMPARE(QDir(data.folder()).entryList(QDir::Files), QStringList({"dbqst.dqx", "up.dqx"}));
    }

    void readOnlySettingsFileIsReadAndLeftAsItWas() {
        TestData data;
        QVERIFY(data.ok());
        addItems();
        {
            Database cfg = DBEngine::OpenDatabase(gUserCfgPath);
            cfg.Execute(QStringLiteral("INSERT INTO ColStat (PcName, AppName, GridName, ColName, "
                                       "ColWidth) VALUES (?, 'qstk3', 'gdxUBView', 'PNo', 2600)"),
                        {ReadPcName()});
        }
        const QString cfgPath = data.path(QStringLiteral("usercfg.dqx"));
        QVERIFY(QFile::setPermissions(cfgPath, QFile::ReadOwner | QFile::ReadGroup));
        const QString before = columnDump();
        const QByteArray bytes = [&] {
            QFile f(cfgPath);
            return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
        }();

        const StartupRun run = runStartup(data.folder());
        const std::unique_ptr<FormMain> owner(run.main.data());
        QCOMPARE(run.exitCode, 42);
        QVERIFY(run.main && run.main->isVisible());
        QVERIFY(run.boxes.isEmpty());
        {
            ScriptedBoxes boxes;
            showListAndResize(*run.main, 2600); // the stored width is read
        }
        QCOMPARE(columnDump(), before); // the resize is not remembered
        QFile f(cfgPath);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), bytes);
        QCOMPARE(QDir(data.folder()).entryList(QDir::Files),
                 QStringList({"dbqst.dqx", "up.dqx", "usercfg.dqx"}));
        QFile::setPermissions(cfgPath, QFile::ReadOwner | QFile::WriteOwner);
    }
};

QTEST_MAIN(TestStartupWindow)
#include "test_startupwindow.moc"
