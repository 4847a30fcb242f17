// Two workstations importing into one file at the same time.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "tests/maintenance/ImportCsvFixture.h"
#include "tests/support/TestSupport.h"

#include <QProcess>
#include <QTest>

class TestImportCsvTwoProcesses : public QObject {
    Q_OBJECT
private slots:
    void bothImportsGetTheirOwnNumbers() {
        TestData data;
        const int rows = 5000;
        QByteArray a, b;
        for (int i = 0; i < rows; ++i) {
            a += QStringLiteral("A-%1,first,1,,2.5\n").arg(i).toUtf8();
            b += QStringLiteral("B-%1,second,1,,3.5\n").arg(i).toUtf8();
        }
        const QString start = data.path(QStringLiteral("go"));
        QProcess first, second;
        // Short batches, so that the two runs take the lock from each other many times.
        first.start(QStringLiteral(QS_IMPORT_CHILD),
                    {data.folder(), WriteFile(data.path(QStringLiteral("a.csv")), a), start,
                     QStringLiteral("20")});
        second.start(QStringLiteral(QS_IMPORT_CHILD),
                     {data.folder(), WriteFile(data.path(QStringLiteral("b.csv")), b), start,
                      QStringLiteral("20")});
        QVERIFY(first.waitForStarted());
        QVERIFY(second.waitForStarted());
        WriteFile(start, "go");
        QVERIFY(first.waitForFinished(120000));
        QVERIFY(second.waitForFinished(120000));
        QCOMPARE(first.exitCode(), 0);
        QCOMPARE(second.exitCode(), 0);
        const QStringList done(rows, QStringLiteral("DONE_OK"));
        QCOMPARE(QString::fromUtf8(first.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts),
                 done);
        QCOMPARE(QString::fromUtf8(second.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts),
                 done);

        // Numbers 1 to 10000 with no gap and no item twice; each item with one supplier row that
        // carries its own file's price.
        QCOMPARE(SqlFirst("SELECT count(*) || '/' || min(ItemID) || '/' || max(ItemID) || '/' || "
                          "count(DISTINCT MasterPNo) FROM tblStockItems"),
                 QStringLiteral("10000/1/10000/10000"));
        QCOMPARE(SqlFirst("SELECT count(*) || '/' || count(DISTINCT p.ItemID) FROM tblItemSupplier "
                          "p JOIN tblStockItems s ON s.ItemID = p.ItemID WHERE p.SupplierID = 0 "
                          "AND p.PriceEach = CASE WHEN s.MasterPNo LIKE 'A-%' THEN 2.5 ELSE 3.5 "
                          "END"),
                 QStringLiteral("10000/10000"));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemSupplier"), QStringLiteral("10000"));
        // In each file's order, its items took rising numbers.
        for (const char* prefix : {"A-%", "B-%"}) {
            Database db = DBEngine::OpenDatabase(gDbPath);
            Recordset rs = db.OpenRecordset(
                QStringLiteral("SELECT MasterPNo FROM tblStockItems WHERE MasterPNo LIKE ? "
                               "ORDER BY ItemID"),
                {QString::fromLatin1(prefix)});
            for (int i = 0; i < rows; ++i, rs.MoveNext())
                QCOMPARE(rs.Fields(0).Text().mid(2).toInt(), i);
        }
    }
};

QTEST_GUILESS_MAIN(TestImportCsvTwoProcesses)
#include "test_importcsv_twoproc.moc"
