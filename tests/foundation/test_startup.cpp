// Start-up: the preparation of the globals, the company details of the main window, and start-up
// as the program runs it (the hidden start-up form inside the event loop, with the real message
// boxes and processing bar, until the main window is on screen and stays there).
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

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QTabBar>
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

QByteArray fileBytes(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
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

class TestStartup : public QObject {
    Q_OBJECT
private slots:
    void prepareSetsGlobals() {
        TestData data;
        gCanInventory = gCanSales = gCanPurchasing = gCanContacts = false;
        gCanLinks = gCanUtilities = gCanUserAdmin = false;
        ScriptedBoxes boxes;
        QVERIFY(PrepareStartup(data.folder()));
        QCOMPARE(gDbPath, data.folder() + QStringLiteral("/dbqst.dqx"));
        QCOMPARE(gUserCfgPath, data.folder() + QStringLiteral("/usercfg.dqx"));
        QCOMPARE(gRightsPath, data.folder() + QStringLiteral("/up.dqx"));
        QVERIFY(gCanInventory && gCanSales && gCanPurchasing && gCanContacts && gCanLinks &&
                gCanUtilities && gCanUserAdmin);
        QCOMPARE(gDecimalSep, QLatin1Char('.'));
        QVERIFY(boxes.shown().isEmpty());
        LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(ReadDecimalSep(), QLatin1Char(','));
    }

    void userNameComesFromTheAccount() {
        // The account's login name as the system's own tool reports it.
        QProcess id;
        id.start(QStringLiteral("id"), {QStringLiteral("-un")});
        QVERIFY(id.waitForFinished());
        const QString login =
            CutWinUser(QString::fromLocal8Bit(id.readAllStandardOutput()).trimmed());
        QVERIFY(!login.isEmpty());
        QCOMPARE(CutWinUser(QString(30, QLatin1Char('u'))), QString(24, QLatin1Char('u')));
        QCOMPARE(CutWinUser(QStringLiteral("ab") + QChar(0) + QStringLiteral("cd")),
                 QStringLiteral("ab"));

        const char* variables[] = {"USER", "USERNAME", "LOGNAME"};
        QList<QByteArray> saved;
        for (const char* v : variables)
            saved << qgetenv(v);
        // Started with a bare environment (a service, a desktop launcher, env -i).
        for (const char* v : variables)
            qunsetenv(v);
        QCOMPARE(ReadWinUser(), login);
        TestData data;
        ScriptedBoxes boxes;
        gWinUser.clear();
        QVERIFY(PrepareStartup(data.folder()));
        QCOMPARE(gWinUser, login);
        // An environment that names someone else does not change who is at the keyboard.
        qputenv("USER", "somebody-else");
        QCOMPARE(ReadWinUser(), login);
        for (int i = 0; i < 3; ++i) {
            if (saved[i].isNull())
                qunsetenv(variables[i]);
            else
                qputenv(variables[i], saved[i]);
        }
    }

    void missingFileEndsStartupNamingIt() {
        TestData data;
        QVERIFY(QFile::remove(data.path(QStringLiteral("dbqst.dqx"))));
        try {
            PrepareStartup(data.folder());
            QFAIL("start-up went on without its data file");
        } catch (const DbError& e) {
            QCOMPARE(RunTimeErrorText(e.Number(), e.Description()),
                     QStringLiteral("Run-time error '3024':\n\nCould not find file '") +
                         data.folder() + QStringLiteral("/dbqst.dqx'."));
        }
    }

    void mainWindowShowsCompanyDetails() {
        TestData data;
        const auto shown = [](const FormMain& w) {
            QStringList out{w.findChild<QLineEdit*>(QStringLiteral("txtCoName"))->text()};
            for (int i = 0; i < 8; ++i)
                out << w.findChild<QLineEdit*>(QStringLiteral("txtCoAddress_%1").arg(i))->text();
            return out.join(QLatin1Char('|'));
        };
        {
            FormMain empty;
            empty.Form_Load();
            QCOMPARE(shown(empty), QStringLiteral("||||||||"));
            QVERIFY(!gPcName.isEmpty());
        }
        ExecSql(QStringLiteral(
            "INSERT INTO tblHome (CoName, Add1, Add2, Add3, Add4, Add5, Add6, Tel1, Fax1) VALUES "
            "('Parts Ltd', 'Unit 4', 'Mill Lane', 'Leeds', 'West Yorks', 'LS1 1AA', 'England', "
            "'0113 000', '0113 001')"));
        FormMain w;
        w.Form_Load();
        QCOMPARE(shown(w), QStringLiteral("Parts Ltd|Unit 4|Mill Lane|Leeds|West Yorks|LS1 1AA|"
                                          "England|0113 000|0113 001"));
        for (const char* panel :
             {"frmContacts", "frmNewItem", "frmItemDetail", "frmViewCustOrders", "frmGlobalLinks"})
            QVERIFY(w.findChild<QWidget*>(QLatin1String(panel))->isHidden());
        QCOMPARE(w.findChild<QTabBar*>(QStringLiteral("TabStrip2"))->currentIndex(), 0);
    }

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

    void missingOrReadOnlySettingsFile_data() {
        QTest::addColumn<bool>("readOnly");
        QTest::newRow("missing") << false;
        QTest::newRow("read-only") << true;
    }
    // Neither stops start-up nor shows a box: the stored widths are read, a resize is not
    // remembered, and no file appears.
    void missingOrReadOnlySettingsFile() {
        QFETCH(bool, readOnly);
        TestData data;
        QVERIFY(data.ok());
        addItems();
        const QString cfgPath = data.path(QStringLiteral("usercfg.dqx"));
        int pnoTwips = UBItemColumns()[UBItemColumn(QStringLiteral("PNo")) - 1].widthTwips;
        if (readOnly) {
            Database cfg = DBEngine::OpenDatabase(gUserCfgPath);
            cfg.Execute(QStringLiteral("INSERT INTO ColStat (PcName, AppName, GridName, ColName, "
                                       "ColWidth) VALUES (?, 'qstk3', 'gdxUBView', 'PNo', 2600)"),
                        {ReadPcName()});
            cfg.Close();
            pnoTwips = 2600;
            QVERIFY(QFile::setPermissions(cfgPath, QFile::ReadOwner | QFile::ReadGroup));
        } else {
            QVERIFY(QFile::remove(cfgPath));
        }
        const QByteArray bytes = fileBytes(cfgPath);
        const QStringList files = QDir(data.folder()).entryList(QDir::Files);

        const StartupRun run = runStartup(data.folder());
        const std::unique_ptr<FormMain> owner(run.main.data());
        QCOMPARE(run.exitCode, 42);
        QVERIFY(run.main && run.main->isVisible());
        QVERIFY(run.boxes.isEmpty());
        {
            ScriptedBoxes boxes; // from here on, any box fails the test
            showListAndResize(*run.main, pnoTwips);
        }
        QCOMPARE(fileBytes(cfgPath), bytes);
        QCOMPARE(QDir(data.folder()).entryList(QDir::Files), files);
        QFile::setPermissions(cfgPath, QFile::ReadOwner | QFile::WriteOwner);
    }
};

QTEST_MAIN(TestStartup)
#include "test_startup.moc"
