#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/QtBoxes.h"
#include "inventory/FormMain.h"
#include "maintenance/CompanyDetails.h"
#include "maintenance/frmDBUtils.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>

namespace {
// Records the filter of each file choice as well.
class RecordingBoxes : public ScriptedBoxes {
public:
    QString fileDialog(const FileDialogRequest& request) override {
        filters << request.filter;
        return ScriptedBoxes::fileDialog(request);
    }
    QStringList filters;
};

template <class T> T* child(QWidget& w, const QString& name) {
    T* c = w.findChild<T*>(name);
    if (!c)
        qWarning("no child %s", qPrintable(name));
    return c;
}

QStringList homeBoxNames() {
    QStringList names{QStringLiteral("txtCoName")};
    for (int i = 0; i < 8; ++i)
        names << QStringLiteral("txtCoAddress_%1").arg(i);
    names << QStringLiteral("txtLogoFile");
    return names;
}

QString picture(const TestData& data, const QString& name, const char* format) {
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::darkBlue);
    const QString path = data.path(name);
    return image.save(path, format) ? path : QString();
}

QString megabytes(const QString& path) {
    return QString::number(double(QFileInfo(path).size()) / 1048576.0, 'f', 2) +
           QStringLiteral(" MBytes");
}

const char* const kInvalidImage =
    "The selected file does not appear to be a valid image. You should select a valid "
    "image/picture file such as BMP, JPG or GIF etc";
} // namespace

class TestDBUtilsHome : public QObject {
    Q_OBJECT
private slots:
    void homeTabShowsTypesAndSaves() {
        TestData data;
        CompanyDetails stored;
        stored.home.coName = QStringLiteral("Parts Ltd");
        stored.home.addressLines = {"Unit 4",  "Mill Lane", "Leeds",    "West Yorks",
                                    "LS1 1AA", "England",   "0113 000", "0113 001"};
        stored.logoFile = QStringLiteral("/srv/logo.png");
        SaveCompanyDetails(stored);

        frmDBUtils dlg;
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        auto* tabs = child<QTabBar>(dlg, "TabStrip1");
        QCOMPARE(tabs->tabText(frmDBUtils::TabHome), QStringLiteral("Home"));
        QCOMPARE(tabs->tabText(frmDBUtils::TabStatistics), QStringLiteral("Statistics"));
        QCOMPARE(tabs->currentIndex(), int(frmDBUtils::TabHome));
        QCOMPARE(child<QLineEdit>(dlg, "txtCoName")->text(), QStringLiteral("Parts Ltd"));
        for (int i = 0; i < 8; ++i)
            QCOMPARE(child<QLineEdit>(dlg, QStringLiteral("txtCoAddress_%1").arg(i))->text(),
                     stored.home.addressLines[i]);
        QCOMPARE(child<QLineEdit>(dlg, "txtLogoFile")->text(), QStringLiteral("/srv/logo.png"));
        QVERIFY(child<QLabel>(dlg, "picTestPic")->isHidden());

        // Every box turns a typed apostrophe into a back-quote, and a pasted one on leaving.
        const QStringList names = homeBoxNames();
        for (int i = 0; i < names.size(); ++i) {
            auto* box = child<QLineEdit>(dlg, names[i]);
            box->setFocus();
            QTRY_COMPARE(QApplication::focusWidget(), box);
            box->selectAll();
            QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("O'Neil ") + names[i]);
            QCOMPARE(box->text(), QStringLiteral("O`Neil ") + names[i]);
        }
        auto* tel = child<QLineEdit>(dlg, "txtCoAddress_6");
        tel->setFocus();
        QTRY_COMPARE(QApplication::focusWidget(), tel);
        tel->setText(QStringLiteral("pasted 'quote'"));
        child<QLineEdit>(dlg, "txtCoAddress_7")->setFocus();
        QTRY_COMPARE(tel->text(), QStringLiteral("pasted `quote`"));

        // Save: the row is replaced, the progress shows for a moment and goes.
        RecordingBoxes boxes;
        auto* bar = child<QProgressBar>(dlg, "pbHomeSave");
        QVERIFY(bar->isHidden());
        bool barSeen = false;
        QTimer probe;
        connect(&probe, &QTimer::timeout, this, [&] { barSeen = barSeen || bar->isVisible(); });
        probe.start(20);
        child<QPushButton>(dlg, "cmdSaveCompanyDetails")->click();
        probe.stop();
        QVERIFY(barSeen);
        QVERIFY(bar->isHidden());
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblHome"), QStringLiteral("1"));
        QCOMPARE(SqlFirst("SELECT CoName FROM tblHome"), QStringLiteral("O`Neil txtCoName"));
        QCOMPARE(SqlFirst("SELECT Tel1 FROM tblHome"), QStringLiteral("pasted `quote`"));
        QCOMPARE(SqlFirst("SELECT Fax1 FROM tblHome"), QStringLiteral("O`Neil txtCoAddress_7"));
        QCOMPARE(LoadCompanyDetails().logoFile, QStringLiteral("O`Neil txtLogoFile"));
        QVERIFY(boxes.shown().isEmpty());
        QCOMPARE(child<QPushButton>(dlg, "cmdSaveCompanyDetails")->text(),
                 QStringLiteral("Click OK to save changes"));

        // Help.
        boxes.answer(vbOK);
        child<QPushButton>(dlg, "Command1")->click();
        QCOMPARE(boxes.shown().size(), 1);
        const ShownBox help = boxes.shown().first();
        QVERIFY(help.prompt.startsWith(
            "This is not an online registration, it's just the name and address details that "
            "will appear on your printed documents such as Vendor purchase Orders and Shipping "
            "documents\n\nThe logo/Graphic is not required but "));
        QVERIFY(help.prompt.endsWith("around 200 pixels or less would be recommended"));
        QCOMPARE(help.flags, int(vbInformation));
        QCOMPARE(help.title, AppName()); // no title of its own
    }

    void logoIsTakenOnlyWhenItLoads() {
        TestData data;
        frmDBUtils dlg;
        auto* logo = child<QLineEdit>(dlg, "txtLogoFile");
        auto* browse = child<QPushButton>(dlg, "Command3");
        RecordingBoxes boxes;

        const QString png = picture(data, "logo.png", "PNG");
        QVERIFY(!png.isEmpty());
        boxes.answerFile(png);
        browse->click();
        QCOMPARE(logo->text(), png);
        QCOMPARE(boxes.filters,
                 QStringList{"Pictures (*.jpg;*.bmp;*.gif)|*.jpg;*.bmp;*.gif|Other(*.*)|*.*"});
        QVERIFY(!child<QLabel>(dlg, "picTestPic")->pixmap().isNull());
        QVERIFY(child<QLabel>(dlg, "picTestPic")->isHidden());

        for (const auto& [name, format] :
             {std::pair{"logo.bmp", "BMP"}, std::pair{"logo.jpg", "JPG"}}) {
            const QString file = picture(data, name, format);
            boxes.answerFile(file);
            browse->click();
            QCOMPARE(logo->text(), file);
        }
        const QString taken = logo->text();

        // A text file named like a picture, and a picture of a kind the documents do not draw.
        QFile fake(data.path("fake.jpg"));
        QVERIFY(fake.open(QIODevice::WriteOnly));
        fake.write("this is not a picture\n");
        fake.close();
        for (const QString& bad :
             {fake.fileName(), picture(data, "logo.ppm", "PPM"), data.path("vanished.png")}) {
            boxes.clear();
            boxes.answerFile(bad);
            boxes.answer(vbOK);
            browse->click();
            QCOMPARE(logo->text(), taken);
            QCOMPARE(boxes.prompts(), QStringList{kInvalidImage});
            QCOMPARE(boxes.shown().last().title, QStringLiteral("Invalid Image"));
        }

        // Cancelled: nothing changes and nothing is said.
        boxes.clear();
        boxes.answerFile(QString());
        browse->click();
        QCOMPARE(logo->text(), taken);
        QVERIFY(boxes.prompts().isEmpty());
        QVERIFY(boxes.allAnswersUsed());
    }

    void pictureFilterReachesTheFileDialog() {
        TestData data;
        frmDBUtils dlg;
        dlg.show();
        auto* logo = child<QLineEdit>(dlg, "txtLogoFile");
        logo->setText(QStringLiteral("/keep/this.png"));
        InstallQtBoxes();
        QStringList filters;
        QTimer::singleShot(0, this, [&] {
            auto* files = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (files) {
                filters = files->nameFilters();
                files->reject();
            } else if (QApplication::activeModalWidget()) {
                QApplication::activeModalWidget()->close();
            }
        });
        child<QPushButton>(dlg, "Command3")->click();
        InstallBoxBackend(nullptr);
        QCOMPARE(filters, QStringList({"Pictures (*.jpg *.bmp *.gif)", "Other(*.*)"}));
        QCOMPARE(logo->text(), QStringLiteral("/keep/this.png"));
    }

    void statisticsTab() {
        TestData data;
        for (int i = 0; i < 2; ++i)
            ExecSql("INSERT INTO History (StockID, HistDate, HistType, HistQty) "
                    "VALUES (1, '2003-02-01', 'RX', 1)");
        for (int i = 0; i < 3; ++i)
            ExecSql("INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistQty) "
                    "VALUES (1, '2024-02-01', 'RX', 1)");
        const QString sizeAtLoad = megabytes(gDbPath);

        frmDBUtils dlg;
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        auto* tabs = child<QTabBar>(dlg, "TabStrip1");
        auto* size = child<QLineEdit>(dlg, "txtSizeOfDB");
        auto* count = child<QLineEdit>(dlg, "txtNumRecords");
        auto* cal = child<QCalendarWidget>(dlg, "cal1");
        auto* date = child<QLineEdit>(dlg, "txtPurgeDate");
        auto* bar = child<QProgressBar>(dlg, "ProgressBar1");
        QCOMPARE(size->text(), sizeAtLoad);
        QCOMPARE(count->text(), QString()); // counted when the tab is chosen

        tabs->setCurrentIndex(frmDBUtils::TabStatistics);
        QVERIFY(child<QWidget>(dlg, "fraStatistics")->isVisible());
        QCOMPARE(count->text(), QStringLiteral("2"));
        QCOMPARE(cal->selectedDate(), QDate(2005, 1, 1));
        QCOMPARE(date->text(), QStringLiteral("01/01/2005"));

        cal->setSelectedDate(QDate(2010, 6, 15));
        QCOMPARE(date->text(), QStringLiteral("15/06/2010"));

        // The purge only says so: no table changes, whatever the date or the size.
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        child<QPushButton>(dlg, "Command2")->click();
        QCOMPARE(boxes.prompts(),
                 QStringList{"This utility simply purges old or unused history data from the "
                             "database to free up some space. However, the database has not "
                             "reached a critical size so nothing needs to be deleted yet."});
        QCOMPARE(boxes.shown().first().flags, int(vbInformation));
        QCOMPARE(boxes.shown().first().title, AppName()); // no title of its own
        QCOMPARE(SqlFirst("SELECT count(*) FROM History"), QStringLiteral("2"));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemHistory"), QStringLiteral("3"));
        QCOMPARE(date->text(), QStringLiteral("15/06/2010"));

        // Coming back: the date is reset and the count read again; the size is not.
        ExecSql("INSERT INTO History (StockID, HistType) VALUES (2, hex(randomblob(600000)))");
        QVERIFY(megabytes(gDbPath) != sizeAtLoad);
        tabs->setCurrentIndex(frmDBUtils::TabHome);
        tabs->setCurrentIndex(frmDBUtils::TabStatistics);
        QCOMPARE(count->text(), QStringLiteral("3"));
        QCOMPARE(cal->selectedDate(), QDate(2005, 1, 1));
        QCOMPARE(date->text(), QStringLiteral("01/01/2005"));
        QCOMPARE(size->text(), sizeAtLoad);

        // Without a History table the count reads 0, with no message.
        ExecSql("DROP TABLE History");
        tabs->setCurrentIndex(frmDBUtils::TabHome);
        tabs->setCurrentIndex(frmDBUtils::TabStatistics);
        QCOMPARE(count->text(), QStringLiteral("0"));
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(bar->value(), 0);

        // A window opened later reads the new size.
        frmDBUtils later;
        QCOMPARE(child<QLineEdit>(later, "txtSizeOfDB")->text(), megabytes(gDbPath));
    }

    void mainWindowReadsTheCompanyAgainAfterUtilities() {
        TestData data;
        FormMain w;
        w.Form_Load();
        QCOMPARE(w.txtCoName->text(), QString());
        bool saved = false;
        QTimer::singleShot(0, this, [&] {
            auto* dlg = qobject_cast<frmDBUtils*>(QApplication::activeModalWidget());
            if (dlg) {
                dlg->findChild<QLineEdit*>("txtCoName")->setText("Quill Parts");
                dlg->findChild<QLineEdit*>("txtCoAddress_6")->setText("0161 222");
                dlg->findChild<QPushButton*>("cmdSaveCompanyDetails")->click();
                saved = true;
            }
            if (QApplication::activeModalWidget())
                QApplication::activeModalWidget()->close();
        });
        w.OpenUtilities();
        QVERIFY(saved);
        QCOMPARE(w.txtCoName->text(), QStringLiteral("Quill Parts"));
        QCOMPARE(w.txtCoAddress[6]->text(), QStringLiteral("0161 222"));
        QCOMPARE(w.txtCoAddress[0]->text(), QString());
    }
};

QTEST_MAIN(TestDBUtilsHome)
#include "test_dbutils_home.moc"
