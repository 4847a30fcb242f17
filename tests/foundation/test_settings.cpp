#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Settings.h"
#include "tests/support/TestSupport.h"

#include <QFile>
#include <QTest>
#include <stdexcept>

namespace {

struct StoredRow {
    QString pc, app, name, v1, v2;
};

QList<StoredRow> Stored() {
    QList<StoredRow> out;
    Database db = DBEngine::OpenDatabase(gUserCfgPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM tblDefaults ORDER BY PcName"));
    while (!rs.Eof()) {
        out.append({rs.Fields("PcName").Text(), rs.Fields("AppName").Text(),
                    rs.Fields("ParaName").Text(), rs.Fields("ParaVal_1").Text(),
                    rs.Fields("ParaVal_2").Text()});
        rs.MoveNext();
    }
    return out;
}

} // namespace

class TestSettings : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { UseTestLocale(); }

    void savedValuesCarryABlankThatReadingTrims() {
        TestData data;
        SaveDefault(QStringLiteral("FormSize"), QStringLiteral("9000"), QStringLiteral(" 6000"));
        QList<StoredRow> rows = Stored();
        QCOMPARE(rows.size(), 1);
        QCOMPARE(rows[0].pc, QStringLiteral("TESTPC"));
        QCOMPARE(rows[0].app, QStringLiteral("qstk3"));
        QCOMPARE(rows[0].name, QStringLiteral("FormSize"));
        QCOMPARE(rows[0].v1, QStringLiteral("9000 "));
        QCOMPARE(rows[0].v2, QStringLiteral(" 6000 "));

        QString a = QStringLiteral("x"), b = QStringLiteral("y");
        GetDefault(QStringLiteral("FormSize"), a, b);
        QCOMPARE(a, QStringLiteral("9000"));
        QCOMPARE(b, QStringLiteral("6000"));

        // A second save changes the row and adds none.
        SaveDefault(QStringLiteral("FormSize"), QStringLiteral("8000"), QString());
        rows = Stored();
        QCOMPARE(rows.size(), 1);
        QCOMPARE(rows[0].v1, QStringLiteral("8000 "));
        QCOMPARE(rows[0].v2, QStringLiteral(" "));
        GetDefault(QStringLiteral("FormSize"), a, b);
        QCOMPARE(a, QStringLiteral("8000"));
        QCOMPARE(b, QString());
    }

    void apostrophesBecomeBackQuotes() {
        TestData data;
        SaveDefault(QStringLiteral("Image_1"), QStringLiteral("C:/Bob's/logo.png"), QString());
        QString a, b;
        GetDefault(QStringLiteral("Image_1"), a, b);
        QCOMPARE(a, QStringLiteral("C:/Bob`s/logo.png"));
    }

    void settingsArePerWorkstationUnlessShared() {
        TestData data;
        SaveDefault(QStringLiteral("FormSize"), QStringLiteral("1"), QStringLiteral("2"));
        // The shared pattern: gPcName set aside for the one call.
        const QString pc = gPcName;
        gPcName = QString::fromLatin1(kGlobalAllPc);
        SaveDefault(QStringLiteral("Image_1"), QStringLiteral("/logo.png"), QString());
        gPcName = pc;

        gPcName = QStringLiteral("SECONDPC");
        QString a = QStringLiteral("design"), b = QStringLiteral("design");
        GetDefault(QStringLiteral("FormSize"), a, b);
        QCOMPARE(a, QStringLiteral("design")); // never saved here: the design size stays
        QCOMPARE(b, QStringLiteral("design"));
        QString logo, unused;
        GetDefault(QStringLiteral("Image_1"), logo, unused);
        QCOMPARE(logo, QString()); // not under this workstation's own name
        const QString mine = gPcName;
        gPcName = QString::fromLatin1(kGlobalAllPc);
        GetDefault(QStringLiteral("Image_1"), logo, unused);
        gPcName = mine;
        QCOMPARE(logo, QStringLiteral("/logo.png"));
        QCOMPARE(Stored().size(), 2);
        QCOMPARE(Stored()[0].pc, QStringLiteral("GLOBAL_ALL_PC"));
    }

    void sharedLogoPathJoinsBothValuesAndRestoresTheName() {
        TestData data;
        const QString mine = gPcName;
        QCOMPARE(ReadSharedLogoPath(), QString()); // no setting
        {
            SharedSettingsScope shared;
            QCOMPARE(gPcName, QStringLiteral("GLOBAL_ALL_PC"));
            SaveDefault(QStringLiteral("Image_1"), QStringLiteral("/very/long"),
                        QStringLiteral("/tail.png"));
        }
        QCOMPARE(gPcName, mine);
        QCOMPARE(ReadSharedLogoPath(), QStringLiteral("/very/long/tail.png"));
        QCOMPARE(gPcName, mine);
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
            QString a = QStringLiteral("keep1"), b = QStringLiteral("keep2");
            GetDefault(QStringLiteral("FormSize"), a, b);
            QCOMPARE(a, QStringLiteral("keep1"));
            QCOMPARE(b, QStringLiteral("keep2"));
            // Saving has no handler of its own: the engine's error reaches the caller.
            QVERIFY_THROWS_EXCEPTION(
                DbError,
                SaveDefault(QStringLiteral("FormSize"), QStringLiteral("3"), QStringLiteral("4")));
            other.Execute(QStringLiteral("ROLLBACK"));
        }
        QCOMPARE(Stored()[0].v1, QStringLiteral("1 "));

        QVERIFY(QFile::remove(gUserCfgPath));
        QString a = QStringLiteral("keep1"), b = QStringLiteral("keep2");
        GetDefault(QStringLiteral("FormSize"), a, b);
        QCOMPARE(a, QStringLiteral("keep1"));
        QCOMPARE(b, QStringLiteral("keep2"));
        QVERIFY(!QFile::exists(gUserCfgPath));
        QVERIFY(boxes.shown().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestSettings)
#include "test_settings.moc"
