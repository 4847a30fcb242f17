#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/UserRights.h"
#include "tests/support/TestSupport.h"

#include <QTest>

namespace {
UserRightsRow row(const QString& name, std::array<bool, 7> granted) {
    UserRightsRow r;
    r.userName = name;
    r.granted = granted;
    return r;
}
// The stored Pm2..Pm8 of one user, as text "0101...".
QString stored(const QString& name) {
    Database db = DBEngine::OpenDatabase(QString(), false, false, RightsConnectString());
    Recordset rs =
        db.OpenRecordset(QStringLiteral("SELECT * FROM tblRights WHERE UserName = ?"), {name});
    if (rs.Eof())
        return QStringLiteral("missing");
    QString out;
    for (int i = 2; i <= 8; ++i)
        out += QString::number(rs.Fields(QStringLiteral("Pm%1").arg(i)).Long());
    return out;
}
qint64 storedRows() {
    Database db = DBEngine::OpenDatabase(QString(), false, false, RightsConnectString());
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT count(*) AS n FROM tblRights"));
    return rs.Fields(QStringLiteral("n")).Long();
}
} // namespace

class TestUserRights : public QObject {
    Q_OBJECT
private slots:
    void savedRowsAreWrittenInvertedWithTheForcedRights() {
        TestData data;
        gWinUser = QStringLiteral("keyboard");
        const bool t = true, f = false;
        SaveUserRights({
            row(QStringLiteral("zoe"), {t, f, t, f, t, f, f}),
            // The user at the keyboard cannot take Utils and UAdmin from himself.
            row(QStringLiteral("keyboard"), {f, f, f, f, f, f, f}),
            // UAdmin brings Utils with it.
            row(QStringLiteral("adam"), {t, t, t, t, t, f, t}),
        });
        QCOMPARE(storedRows(), 3);
        QCOMPARE(stored(QStringLiteral("zoe")), QStringLiteral("0101011"));
        QCOMPARE(stored(QStringLiteral("keyboard")), QStringLiteral("1111100"));
        QCOMPARE(stored(QStringLiteral("adam")), QStringLiteral("0000000"));

        // Loaded back by name, a stored 0 ticks the right.
        const QList<UserRightsRow> back = LoadUserRights();
        QCOMPARE(back.size(), 3);
        QCOMPARE(back[0].userName, QStringLiteral("adam"));
        QCOMPARE(back[1].userName, QStringLiteral("keyboard"));
        QCOMPARE(back[2].userName, QStringLiteral("zoe"));
        QCOMPARE(back[2].granted, (std::array<bool, 7>{t, f, t, f, t, f, f}));
        QCOMPARE(back[1].granted, (std::array<bool, 7>{f, f, f, f, f, t, t}));

        // A second save replaces the table; none leaves it empty and changes no flag.
        SaveUserRights({row(QStringLiteral("zoe"), {t, t, t, t, t, t, t})});
        QCOMPARE(storedRows(), 1);
        SaveUserRights({});
        QCOMPARE(storedRows(), 0);
        QVERIFY(LoadUserRights().isEmpty());
        QVERIFY(gCanInventory && gCanUtilities && gCanUserAdmin);
    }

    void namesWithApostrophesAndValuesAboveOne() {
        TestData data;
        gWinUser = QStringLiteral("someone");
        SaveUserRights(
            {row(QStringLiteral("o'brien"), {true, true, true, true, true, true, true})});
        QCOMPARE(LoadUserRights().value(0).userName, QStringLiteral("o`brien"));
        Database db = DBEngine::OpenDatabase(QString(), false, false, RightsConnectString());
        db.Execute(QStringLiteral("INSERT INTO tblRights VALUES ('bob', 2, -1, 0, NULL, 1, 0, 0)"));
        db.Close();
        const UserRightsRow bob = LoadUserRights().value(0);
        QCOMPARE(bob.userName, QStringLiteral("bob"));
        QCOMPARE(bob.granted, (std::array<bool, 7>{false, true, true, true, false, true, true}));
    }

    void aWrongPasswordIsTheEnginesError() {
        TestData data;
        {
            Database db = DBEngine::OpenDatabase(QString(), false, false, RightsConnectString());
            DBEngine::SetDatabasePassword(db, QStringLiteral("other"));
        }
        try {
            LoadUserRights();
            QFAIL("the rights file opened with the wrong password");
        } catch (const DbError& e) {
            QCOMPARE(e.Number(), int(DbErr::NotValidPassword));
        }
    }
};

QTEST_GUILESS_MAIN(TestUserRights)
#include "test_userrights.moc"
