#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Startup.h"
#include "foundation/TextBoxRules.h"
#include "inventory/FormMain.h"
#include "tests/support/TestSupport.h"

#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

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
        QVERIFY(gWinUser.size() <= 24);
        QVERIFY(boxes.shown().isEmpty());
        {
            LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
            QCOMPARE(ReadDecimalSep(), QLatin1Char(','));
        }
    }

    void namesAreCutAtTheirLimits() {
        QCOMPARE(CutWinUser(QString(30, QLatin1Char('u'))), QString(24, QLatin1Char('u')));
        QCOMPARE(CutWinUser(QStringLiteral("ab") + QChar(0) + QStringLiteral("cd")),
                 QStringLiteral("ab"));
        QVERIFY(ReadPcName().size() <= 50);
    }

    void userNameComesFromTheAccount() {
        // The account's login name as the system's own tool reports it.
        QProcess id;
        id.start(QStringLiteral("id"), {QStringLiteral("-un")});
        QVERIFY(id.waitForFinished());
        const QString login =
            CutWinUser(QString::fromLocal8Bit(id.readAllStandardOutput()).trimmed());
        QVERIFY(!login.isEmpty());

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
            QCOMPARE(e.Number(), int(DbErr::FileNotFound));
            QVERIFY(e.Description().contains(data.folder() + QStringLiteral("/dbqst.dqx")));
            QCOMPARE(RunTimeErrorText(e.Number(), e.Description()),
                     QStringLiteral("Run-time error '3024':\n\nCould not find file '") +
                         data.folder() + QStringLiteral("/dbqst.dqx'."));
        }
    }

    void mainWindowShowsCompanyDetails() {
        TestData data;
        {
            FormMain empty;
            empty.Form_Load();
            QCOMPARE(empty.findChild<QLineEdit*>(QStringLiteral("txtCoName"))->text(), QString());
            QCOMPARE(empty.findChild<QLineEdit*>(QStringLiteral("txtCoAddress_0"))->text(),
                     QString());
            QVERIFY(!gPcName.isEmpty());
        }
        {
            Database db = DBEngine::OpenDatabase(gDbPath);
            db.Execute(QStringLiteral(
                "INSERT INTO tblHome (CoName, Add1, Add2, Add3, Add4, Add5, Add6, Tel1, Fax1) "
                "VALUES ('Parts Ltd', 'Unit 4', 'Mill Lane', 'Leeds', 'West Yorks', 'LS1 1AA', "
                "'England', '0113 000', '0113 001')"));
        }
        FormMain w;
        w.Form_Load();
        QCOMPARE(w.findChild<QLineEdit*>(QStringLiteral("txtCoName"))->text(),
                 QStringLiteral("Parts Ltd"));
        const QStringList expected = {QStringLiteral("Unit 4"),   QStringLiteral("Mill Lane"),
                                      QStringLiteral("Leeds"),    QStringLiteral("West Yorks"),
                                      QStringLiteral("LS1 1AA"),  QStringLiteral("England"),
                                      QStringLiteral("0113 000"), QStringLiteral("0113 001")};
        for (int i = 0; i < expected.size(); ++i)
            QCOMPARE(w.findChild<QLineEdit*>(QStringLiteral("txtCoAddress_%1").arg(i))->text(),
                     expected[i]);
        for (const char* panel :
             {"frmContacts", "frmNewItem", "frmItemDetail", "frmViewCustOrders", "frmGlobalLinks"})
            QVERIFY(w.findChild<QWidget*>(QLatin1String(panel))->isHidden());
        QCOMPARE(w.findChild<QTabBar*>(QStringLiteral("TabStrip2"))->currentIndex(), 0);
    }

    void textBoxRules() {
        UseTestLocale();
        QWidget host;
        auto* text = new QLineEdit(&host);
        auto* memo = new QPlainTextEdit(&host);
        auto* qty = new QLineEdit(&host);
        auto* code = new QLineEdit(&host);
        AttachTextRules(text);
        AttachTextRules(memo);
        AttachNumberRules(qty, QStringLiteral("0.0#"));
        AttachAlphaNumericRules(code, true);
        host.show();

        QTest::keyClicks(text, QStringLiteral("O'Brien's"));
        QCOMPARE(text->text(), QStringLiteral("O`Brien`s"));
        QTest::keyClicks(memo, QStringLiteral("it's"));
        QCOMPARE(memo->toPlainText(), QStringLiteral("it`s"));
        // Pasted text is mended on leaving the box.
        text->setText(QStringLiteral("a'b"));
        QFocusEvent out(QEvent::FocusOut);
        QCoreApplication::sendEvent(text, &out);
        QCOMPARE(text->text(), QStringLiteral("a`b"));

        QTest::keyClicks(qty, QStringLiteral("1x2.3.4-5"));
        QCOMPARE(qty->text(), QStringLiteral("12.345"));
        QTest::keyClick(qty, Qt::Key_Backspace);
        QCOMPARE(qty->text(), QStringLiteral("12.34"));
        QCoreApplication::sendEvent(qty, &out);
        QCOMPARE(qty->text(), QStringLiteral("12.34"));
        qty->setText(QStringLiteral("7.00"));
        QCoreApplication::sendEvent(qty, &out);
        QCOMPARE(qty->text(), QStringLiteral("7"));

        QTest::keyClicks(code, QStringLiteral("ab-1 c"));
        QCOMPARE(code->text(), QStringLiteral("AB1C"));
    }
};

QTEST_MAIN(TestStartup)
#include "test_startup.moc"
