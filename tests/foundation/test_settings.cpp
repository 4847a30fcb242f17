#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Settings.h"
#include "tests/support/TestSupport.h"

#include <QFile>
#include <QTest>
#include <stdexcept>

namespace {

// Every stored setting as "pc|app|name|value 1|value 2".
QStringList stored() {
    Database db = DBEngine::OpenDatabase(gUserCfgPath);
    QStringList out;
    for (Recordset rs = db.OpenRecordset(QStringLiteral(
             "SELECT PcName, AppName, ParaName, ParaVal_1, ParaVal_2 FROM tblDefaults ORDER BY 1"));
         !rs.Eof(); rs.MoveNext())
        out << QStringList{rs.Fields(0).Text(), rs.Fields(1).Text(), rs.Fields(2).Text(),
                           rs.Fields(3).Text(), rs.Fields(4).Text()}
                   .join(QLatin1Char('|'));
    return out;
}

// The two values read back, starting from what the caller had.
QStringList read(const QString& name, const QString& a = {}, const QString& b = {}) {
    QString v1 = a, v2 = b;
    GetDefault(name, v1, v2);
    return {v1, v2};
}

} // namespace

class TestSettings : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { UseTestLocale(); }

    void savedValuesCarryABlankThatReadingTrims() {
        TestData data;
        SaveDefault(QStringLiteral("FormSize"), QStringLiteral("9000"), QStringLiteral(" 6000"));
        QCOMPARE(stored(), QStringList{"TESTPC|qstk3|FormSize|9000 | 6000 "});
        QCOMPARE(read(QStringLiteral("FormSize"), "x", "y"), QStringList({"9000", "6000"}));
        // A second save changes the row and adds none.
        SaveDefault(QStringLiteral("FormSize"), QStringLiteral("8000"), QString());
        QCOMPARE(stored(), QStringList{"TESTPC|qstk3|FormSize|8000 | "});
        QCOMPARE(read(QStringLiteral("FormSize"), "x", "y"), QStringList({"8000", ""}));
        // Apostrophes become back-quotes.
        SaveDefault(QStringLiteral("Image_1"), QStringLiteral("C:/Bob's/logo.png"), QString());
        QCOMPARE(read(QStringLiteral("Image_1")).first(), QStringLiteral("C:/Bob`s/logo.png"));
    }

    void settingsArePerWorkstationUnlessShared() {
        TestData data;
        const QString mine = gPcName;
        SaveDefault(QStringLiteral("FormSize"), QStringLiteral("1"), QStringLiteral("2"));
        QCOMPARE(ReadSharedLogoPath(), QString()); // no setting
        {
            SharedSettingsScope shared;
            QCOMPARE(gPcName, QStringLiteral("GLOBAL_ALL_PC"));
            SaveDefault(QStringLiteral("Image_1"), QStringLiteral("/very/long"),
                        QStringLiteral("/tail.png"));
        }
        QCOMPARE(gPcName, mine);
        QCOMPARE(stored().first(),
                 QStringLiteral("GLOBAL_ALL_PC|qstk3|Image_1|/very/long |/tail.png "));
        QCOMPARE(ReadSharedLogoPath(), QStringLiteral("/very/long/tail.png"));
        QCOMPARE(gPcName, mine);

        // Another workstation keeps its design size and finds the logo only under the shared name.
        gPcName = QStringLiteral("SECONDPC");
        QCOMPARE(read(QStringLiteral("FormSize"), "design", "design"),
                 QStringList({"design", "design"}));
        QCOMPARE(read(QStringLiteral("Image_1")).first(), QString());
        QCOMPARE(ReadSharedLogoPath(), QStringLiteral("/very/long/tail.png"));
        gPcName = mine;
        {
            SharedSettingsScope shared;
            SaveDefault(QStringLiteral("Image_1"), QStringLiteral("0"), QStringLiteral("/x.png"));
        }
        QCOMPARE(ReadSharedLogoPath(), QStringLiteral("/x.png")); // a first value "0" is empty
        try {
            SharedSettingsScope shared;
            throw std::runtime_error("failed save");
        } catch (const std::runtime_error&) {
        }
        QCOMPARE(gPcName, mine);
    }

    void unreadableStoreLeavesTheCallersValues() {
        TestData data;
        ScriptedBoxes boxes;
        SaveDefault(QStringLiteral("FormSize"), QStringLiteral("1"), QStringLiteral("2"));
        {
            Database other = DBEngine::OpenDatabase(gUserCfgPath);
            other.Execute(QStringLiteral("BEGIN EXCLUSIVE"));
            QCOMPARE(read(QStringLiteral("FormSize"), "keep1", "keep2"),
                     QStringList({"keep1", "keep2"}));
            // Saving has no handler of its own: the engine's error reaches the caller.
            QVERIFY_THROWS_EXCEPTION(
                DbError,
                SaveDefault(QStringLiteral("FormSize"), QStringLiteral("3"), QStringLiteral("4")));
            other.Execute(QStringLiteral("ROLLBACK"));
        }
        QCOMPARE(stored(), QStringList{"TESTPC|qstk3|FormSize|1 |2 "});

        QVERIFY(QFile::remove(gUserCfgPath));
        QCOMPARE(read(QStringLiteral("FormSize"), "keep1", "keep2"),
                 QStringList({"keep1", "keep2"}));
        QVERIFY(!QFile::exists(gUserCfgPath));
        QVERIFY(boxes.shown().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSettings)
#include "test_settings.moc"
