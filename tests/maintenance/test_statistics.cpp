#include "foundation/Globals.h"
#include "maintenance/DatabaseStatistics.h"
#include "tests/support/TestSupport.h"

#include <QFile>
#include <QTest>

namespace {
QString fileOf(const TestData& data, const QString& name, qint64 size) {
    const QString path = data.path(name);
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || !f.resize(size))
        return QString();
    return path;
}
} // namespace

class TestStatistics : public QObject {
    Q_OBJECT
private slots:
    void sizeInMegabytes() {
        TestData data;
        QCOMPARE(DatabaseSizeText(fileOf(data, "half", 524288)), QStringLiteral("0.50 MBytes"));
        QCOMPARE(DatabaseSizeText(fileOf(data, "one", 1048576)), QStringLiteral("1.00 MBytes"));
        QCOMPARE(DatabaseSizeText(fileOf(data, "more", 2621440)), QStringLiteral("2.50 MBytes"));
        // 1,048,575 bytes round up to the next hundredth.
        QCOMPARE(DatabaseSizeText(fileOf(data, "almost", 1048575)), QStringLiteral("1.00 MBytes"));
        QCOMPARE(DatabaseSizeText(fileOf(data, "empty", 0)), QStringLiteral("0.00 MBytes"));
        QCOMPARE(DatabaseSizeText(data.path("missing.dqx")), QStringLiteral("<1 MBytes"));
        {
            LocaleScope comma(QLocale(QLocale::German, QLocale::Germany));
            QCOMPARE(DatabaseSizeText(fileOf(data, "half", 524288)), QStringLiteral("0,50 MBytes"));
        }
        // The business file itself, as the tab reads it.
        QVERIFY(DatabaseSizeText(gDbPath).endsWith(QLatin1String(" MBytes")));
        QVERIFY(DatabaseSizeText(gDbPath) != QLatin1String("<1 MBytes"));
    }

    void countsHistoryRowsOnly() {
        TestData data;
        QCOMPARE(CountHistoryRecords(), 0);
        for (int i = 1; i <= 5; ++i)
            ExecSql(QStringLiteral("INSERT INTO tblItemHistory (StockID, HistDate, HistType, "
                                   "HistQty) VALUES (%1, '2024-05-01', 'RX', 2)")
                        .arg(i));
        QCOMPARE(CountHistoryRecords(), 0);
        ExecSql(QStringLiteral("INSERT INTO History (StockID, HistDate, HistType, HistQty) "
                               "VALUES (1, '2003-01-01', 'RX', 1)"));
        QCOMPARE(CountHistoryRecords(), 1);
        for (int i = 0; i < 2; ++i)
            ExecSql(QStringLiteral("INSERT INTO History (StockID) VALUES (2)"));
        QCOMPARE(CountHistoryRecords(), 3);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT count(*) FROM tblItemHistory")),
                 QStringLiteral("5"));

        // No History table, or no file at all: 0, and nothing is raised.
        ExecSql(QStringLiteral("DROP TABLE History"));
        QCOMPARE(CountHistoryRecords(), 0);
        QVERIFY(QFile::remove(gDbPath));
        QCOMPARE(CountHistoryRecords(), 0);
    }
};

QTEST_GUILESS_MAIN(TestStatistics)
#include "test_statistics.moc"
