#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Settings.h"
#include "maintenance/CompanyDetails.h"
#include "tests/support/TestSupport.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

namespace {
CompanyDetails details(const QString& name, const QString& logo = QString()) {
    CompanyDetails d;
    d.home.coName = name;
    for (int i = 1; i <= 8; ++i)
        d.home.addressLines << name + QStringLiteral(" line ") + QString::number(i);
    d.logoFile = logo;
    return d;
}

QStringList homeRows() {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM tblHome ORDER BY CoName"));
    QStringList rows;
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList row;
        for (int i = 0; i < rs.FieldCount(); ++i)
            row << rs.Fields(i).Text();
        rows << row.join(QLatin1Char('|'));
    }
    return rows;
}

QString homeRow(const CompanyDetails& d) {
    return (QStringList{d.home.coName} + d.home.addressLines).join(QLatin1Char('|'));
}

// The stored "Image_1" rows of the settings store: PcName, then the two values as stored.
QStringList logoSettings() {
    Database db = DBEngine::OpenDatabase(gUserCfgPath);
    Recordset rs =
        db.OpenRecordset(QStringLiteral("SELECT PcName, ParaVal_1, ParaVal_2 FROM tblDefaults "
                                        "WHERE ParaName='Image_1'"));
    QStringList rows;
    for (; !rs.Eof(); rs.MoveNext())
        rows << rs.Fields(0).Text() + QLatin1Char('|') + rs.Fields(1).Text() + QLatin1Char('|') +
                    rs.Fields(2).Text();
    return rows;
}
} // namespace

class TestCompany : public QObject {
    Q_OBJECT
private slots:
    void firstSaveInsertsLaterSavesUpdate() {
        TestData data;
        const CompanyDetails blank = LoadCompanyDetails();
        QCOMPARE(blank.home.coName, QString());
        QVERIFY(blank.home.addressLines.isEmpty());
        QCOMPARE(blank.logoFile, QString());

        SaveCompanyDetails(details(QStringLiteral("Bob's Parts")));
        // No apostrophe reaches the table.
        QCOMPARE(homeRows(), QStringList{homeRow(details(QStringLiteral("Bob`s Parts")))});

        const CompanyDetails second = details(QStringLiteral("Mill Lane Spares"));
        SaveCompanyDetails(second);
        QCOMPARE(homeRows(), QStringList{homeRow(second)});
        const CompanyDetails read = LoadCompanyDetails();
        QCOMPARE(read.home.coName, second.home.coName);
        QCOMPARE(read.home.addressLines, second.home.addressLines);

        // A table that somehow holds two rows has both overwritten; no third row appears.
        ExecSql(QStringLiteral("INSERT INTO tblHome (CoName) VALUES ('Stray')"));
        const CompanyDetails third = details(QStringLiteral("Third"));
        SaveCompanyDetails(third);
        QCOMPARE(homeRows(), QStringList({homeRow(third), homeRow(third)}));
    }

    void logoPathSplitAt250AndReadBackWhole() {
        TestData data;
        const QString folder = QStringLiteral("/srv/shared/");
        const QString p250 = folder + QString(250 - folder.size() - 4, QLatin1Char('a')) + ".png";
        QCOMPARE(p250.size(), 250);
        SaveCompanyDetails(details(QStringLiteral("A"), p250));
        QCOMPARE(gPcName, QStringLiteral("TESTPC"));
        QCOMPARE(logoSettings(), QStringList{QStringLiteral("GLOBAL_ALL_PC|") + p250 + " | "});
        QCOMPARE(LoadCompanyDetails().logoFile, p250);

        const QString p251 = folder + QString(251 - folder.size() - 4, QLatin1Char('b')) + ".gif";
        SaveCompanyDetails(details(QStringLiteral("A"), p251));
        QCOMPARE(logoSettings(), QStringList{QStringLiteral("GLOBAL_ALL_PC|") + p251.left(250) +
                                             " |" + p251.mid(250) + " "});
        QCOMPARE(LoadCompanyDetails().logoFile, p251);
        QCOMPARE(ReadSharedLogoPath(), p251);

        const QString p400 = folder + QString(400 - folder.size() - 4, QLatin1Char('c')) + ".bmp";
        SaveCompanyDetails(details(QStringLiteral("A"), p400));
        QCOMPARE(logoSettings(), QStringList{QStringLiteral("GLOBAL_ALL_PC|") + p400.left(250) +
                                             " |" + p400.mid(250) + " "});
        QCOMPARE(LoadCompanyDetails().logoFile, p400);

        // A blank at the cut is trimmed away on reading, as every stored value is.
        const QString cutAtBlank = QString(249, QLatin1Char('x')) + QStringLiteral(" y");
        SaveCompanyDetails(details(QStringLiteral("A"), cutAtBlank));
        QCOMPARE(LoadCompanyDetails().logoFile, QString(249, QLatin1Char('x')) + "y");

        // An empty box stores an empty value; a first value "0" reads as no logo.
        SaveCompanyDetails(details(QStringLiteral("A")));
        QCOMPARE(logoSettings(), QStringList{QStringLiteral("GLOBAL_ALL_PC| | ")});
        QCOMPARE(LoadCompanyDetails().logoFile, QString());
        {
            Database db = DBEngine::OpenDatabase(gUserCfgPath);
            db.Execute(QStringLiteral("UPDATE tblDefaults SET ParaVal_1='0', ParaVal_2='' "
                                      "WHERE ParaName='Image_1'"));
        }
        QCOMPARE(LoadCompanyDetails().logoFile, QString());

        // The path is shared: another workstation reads it.
        SaveCompanyDetails(details(QStringLiteral("A"), QStringLiteral("/srv/logo.jpg")));
        gPcName = QStringLiteral("OTHERPC");
        QCOMPARE(LoadCompanyDetails().logoFile, QStringLiteral("/srv/logo.jpg"));
        QCOMPARE(gPcName, QStringLiteral("OTHERPC"));
    }

    void failuresKeepTheTableAndTheWorkstationName() {
        TestData data;
        const CompanyDetails old = details(QStringLiteral("Old"), QStringLiteral("/old.png"));
        SaveCompanyDetails(old);

        for (const char* fragment : {"UPDATE tblHome", "COMMIT"}) {
            Database::FailNextStatementContaining(QString::fromLatin1(fragment));
            QVERIFY_THROWS_EXCEPTION(DbError, SaveCompanyDetails(details(QStringLiteral("New"))));
            QCOMPARE(homeRows(), QStringList{homeRow(old)});
            QCOMPARE(LoadCompanyDetails().logoFile, QStringLiteral("/old.png"));
            QCOMPARE(gPcName, QStringLiteral("TESTPC"));
        }

        // The first save onto an empty table fails at its end: no row is left behind.
        ExecSql(QStringLiteral("DELETE FROM tblHome"));
        Database::FailNextStatementContaining(QStringLiteral("COMMIT"));
        QVERIFY_THROWS_EXCEPTION(DbError, SaveCompanyDetails(details(QStringLiteral("New"))));
        QVERIFY(homeRows().isEmpty());

        // The settings store fails: the table is saved already, the workstation name is back.
        Database::FailNextStatementContaining(QStringLiteral("tbldefaults"));
        const CompanyDetails fresh = details(QStringLiteral("New"), QStringLiteral("/new.png"));
        QVERIFY_THROWS_EXCEPTION(DbError, SaveCompanyDetails(fresh));
        QCOMPARE(homeRows(), QStringList{homeRow(fresh)});
        QCOMPARE(gPcName, QStringLiteral("TESTPC"));
        QCOMPARE(LoadCompanyDetails().logoFile, QStringLiteral("/old.png"));
    }

    void twoWorkstationsSavingOntoAnEmptyTableLeaveOneRow() {
        TestData data;
        const QString saver = QStringLiteral(QS_COMPANY_SAVER);
        // The second workstation saves while the first has found the table empty and is about
        // to write its row: it waits for the first, then updates the row the first wrote.
        const QString atInsert = data.path(QStringLiteral("at-insert"));
        const QString done = data.path(QStringLiteral("done"));
        QProcess first, second;
        first.start(saver,
                    {data.folder(), QStringLiteral("A"), QStringLiteral("first"), atInsert, done});
        second.start(
            saver, {data.folder(), QStringLiteral("B"), QStringLiteral("second"), atInsert, done});
        QVERIFY(first.waitForFinished(30000));
        QVERIFY(second.waitForFinished(30000));
        QCOMPARE(first.exitCode(), 0);
        QCOMPARE(second.exitCode(), 0);
        QVERIFY(QFileInfo::exists(done));
        QCOMPARE(homeRows(), QStringList{homeRow(details(QStringLiteral("B")))});
    }
};

QTEST_GUILESS_MAIN(TestCompany)
#include "test_company.moc"
