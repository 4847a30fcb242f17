#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "reports/InventoryReports.h"
#include "reports/Reports.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/TestSupport.h"

#include <QTest>

using namespace reporttest;

namespace {

ReportResult Run(int type, const QDate& start = {}, const QDate& end = {}) {
    ReportInput in;
    in.reportType = type;
    in.startDate = start;
    in.endDate = end;
    return RunReport(in);
}

// Six part numbers: two suppliers, none, a part number shared by two items, negative stock, and
// fractions that the masks round.
void StockForValuation() {
    Item(1, "P-100", "BOLT", 10);
    Supplier(1, 7, 5.0, 1); // the prime supplier
    Supplier(1, 8, 2.5, 0); // the other one sorts first and sets the cost
    Item(2, "P-200", "NUT", 3);
    Item(3, "P-300", "BOLT", 4);
    Supplier(3, 7, 1.25, 0);
    Item(4, "P-300", "WASHER", 4);
    Supplier(4, 7, 1.25, 0);
    Item(5, "P-400", "NUT", -2);
    Supplier(5, 7, 3, 1);
    Item(6, "P-500", "NUT", 2.5);
    Supplier(6, 7, 0.125, 0);
    Item(7, "P-600", "BOLT", 1000);
    Supplier(7, 7, 1.2041875, 0);
}

} // namespace

class TestReports : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    void valuationTakesTheFirstRowOfEachPartNumber() {
        TestData data;
        StockForValuation();

        const ReportResult r = Run(11);
        QVERIFY(r.ran);
        QCOMPARE(Captions(r), QStringList({"Cat=Cat", "PNo=Part No.", "Desc=Description",
                                           "Category=Category", "Location=Location ", "Qty=Qty ",
                                           "Cost=Cost (x1) ", "TotalCost=Value (at Cost) "}));
        QCOMPARE(r.groupKey, QString());
        QCOMPARE(Column(r, 1), QStringList({"P-100", "P-200", "P-300", "P-400", "P-500", "P-600"}));
        // The non-prime supplier's price; plain masks ("10.0", not "10").
        QCOMPARE(r.rows[0],
                 QStringList({"BOLT", "P-100", "Part", "BOLT", "A1", "10.0", "2.50", "25.00"}));
        // No supplier row: cost 0.
        QCOMPARE(r.rows[1],
                 QStringList({"NUT", "P-200", "Part", "NUT", "A1", "3.0", "0.00", "0.00"}));
        // Negative stock: no quantity shown, the negative value kept in the row.
        QCOMPARE(r.rows[3],
                 QStringList({"NUT", "P-400", "Part", "NUT", "A1", "", "3.00", "-6.00"}));
        QCOMPARE(r.rows[4].mid(5), QStringList({"2.5", "0.125", "0.3125"}));
        QCOMPARE(r.rows[5].mid(5), QStringList({"1000.0", "1.20419", "1204.1875"}));
        // 25 + 0 + 5 + 0.3125 + 1204.1875; the negative row stays out.
        QCOMPARE(Summary(r), QStringList({"Number of records = 6",
                                          "Total Value of OnHand Inventory = ", "1,234.50", "",
                                          "Does not show OnHand Qty if below zero"}));
        QCOMPARE(r.summary.label2, QString());

        // Report 12: the same rows, grouped on the category.
        const ReportResult g = Run(12);
        QCOMPARE(g.groupKey, QStringLiteral("Category"));
        QCOMPARE(g.rows, r.rows);
        QCOMPARE(Summary(g), Summary(r));
    }

    void idleStockLeavesOutItemsWithHistoryInThePeriod() {
        TestData data;
        const QDate start(2024, 3, 1), end(2024, 3, 31);
        Item(1, "P-1", "A", 0);
        History(1, "2024-03-01"); // on the start date: still idle
        Item(2, "P-2", "A", 0);
        History(2, "2024-03-31"); // on the end date: still idle
        Item(3, "P-3", "A", 8);
        History(3, "2024-03-15");
        Item(4, "P-4", "A", 5); // neither history nor supplier
        Item(5, "P-5", "A", 1);
        History(5, "2024-02-10");
        History(5, "2024-03-02", "SHIP"); // any kind of movement counts
        Item(6, "P-6", "A", 308.625, "Hex bolt", "Bin 7");
        Supplier(6, 1, 10, 1);
        Supplier(6, 2, 4, 0);
        History(6, "2023-12-31");
        History(6, "2024-04-01");
        Item(7, "P-7", "A", -3);
        Supplier(7, 1, 2, 1);

        const ReportResult r = Run(4, start, end);
        QCOMPARE(Captions(r),
                 QStringList({"Item=Item", "PNo=Part No.", "Desc=Description", "Location=Location ",
                              "Qty=Qty ", "Cost=Cost (x1) ", "TotalCost=Value (at Cost) "}));
        QCOMPARE(Column(r, 1), QStringList({"P-1", "P-2", "P-4", "P-6", "P-7"}));
        QCOMPARE(Column(r, 0), QStringList({"", "", "", "", ""}));
        QCOMPARE(r.rows[2], QStringList({"", "P-4", "Part", "A1", "5.0", "0.00", "0.00"}));
        QCOMPARE(r.rows[3],
                 QStringList({"", "P-6", "Hex bolt", "Bin 7", "308.63", "4.00", "1234.50"}));
        QCOMPARE(r.rows[4], QStringList({"", "P-7", "Part", "A1", "", "2.00", "-6.00"}));
        QCOMPARE(Summary(r),
                 QStringList({"Number of records = 5",
                              "Total value (at cost) of Idle Inventory = ", "1,234.50", "",
                              "Total does not include items where OnHand Qty is less than zero"}));

        // Two days more take in the history of item 2 on 31 March and of item 6 on 1 April.
        QCOMPARE(Column(Run(4, start, end.addDays(2)), 1), QStringList({"P-1", "P-4", "P-7"}));

        // Nothing idle: no rows, a total of 0.00.
        for (int id : {1, 2, 4, 6, 7})
            History(id, "2024-03-20");
        const ReportResult none = Run(4, start, end);
        QVERIFY(none.rows.isEmpty());
        QCOMPARE(none.summary.text[0], QStringLiteral("Number of records = 0"));
        QCOMPARE(none.summary.text[2], QStringLiteral("0.00"));
    }

    void categoryValuesSubtotalEachCategory() {
        {
            TestData data;
            Item(1, "B-1", "BOLT", 10);
            Supplier(1, 1, 9, 1);
            Supplier(1, 2, 2, 0);
            for (const char* d : {"2024-01-01", "2024-02-01", "2024-03-01"})
                History(1, d); // six joined rows for this item
            Item(2, "B-2", "BOLT", -5);
            Supplier(2, 1, 3, 0);
            Item(3, "B-3", "BOLT", 1.5);
            Supplier(3, 1, 0.1, 0);
            Item(4, "N-1", "NUT", 1000);
            Supplier(4, 1, 1.23456, 0);
            History(4, "2024-01-05");
            History(4, "2024-01-06");
            Item(5, "W-1", "WASHER", 3);
            Supplier(5, 1, 0.123456, 0);
            // The part number of a bolt again, in another category and not next to it: it
            // counts there.
            Item(6, "B-1", "WASHER", 2);
            Supplier(6, 1, 1, 0);

            const ReportResult r = Run(13);
            QCOMPARE(Captions(r), QStringList({"Cat=Category", "Cost=Value (Cost)"}));
            QCOMPARE(r.rows, QList<QStringList>(
                                 {{"BOLT", "20.15"}, {"NUT", "1,234.56"}, {"WASHER", "2.37037"}}));
            QCOMPARE(
                Summary(r),
                QStringList({"Number of Categories = 3",
                             "Total Value of OnHand Inventory = ", "1,257.08", "",
                             "Values do not include items where OnHand Qty is less than zero"}));
        }
        {
            // A shared part number on two neighbouring rows is skipped whatever its category,
            // and a category reached only through it never gets a row.
            TestData data;
            Item(1, "X-1", "A", 1);
            Supplier(1, 1, 1, 0);
            Item(2, "X-1", "B", 5);
            Supplier(2, 1, 1, 0);
            const ReportResult r = Run(13);
            QCOMPARE(r.rows, QList<QStringList>({{"A", "1.00"}}));
            QCOMPARE(r.summary.text[2], QStringLiteral("1.00"));
        }
        {
            TestData data;
            const ReportResult r = Run(13);
            QVERIFY(r.rows.isEmpty());
            QCOMPARE(r.summary.text[0], QStringLiteral("Number of Categories = 0"));
            QCOMPARE(r.summary.text[2], QStringLiteral("0.00"));
        }
    }

    void figuresHoldOnACommaLocale() {
        TestData data;
        LocaleScope german(QLocale(QLocale::German, QLocale::Germany));
        Item(1, "P-1", "BOLT", 1.5);
        Supplier(1, 1, 2.25, 0);
        Item(2, "P-2", "NUT", 1000);
        Supplier(2, 1, 1.2345, 0);

        const ReportResult r = Run(11);
        QCOMPARE(r.rows[0].mid(5), QStringList({"1,5", "2,25", "3,375"}));
        QCOMPARE(r.rows[1].mid(5), QStringList({"1000,0", "1,2345", "1234,50"}));
        QCOMPARE(r.summary.text[2], QStringLiteral("1.237,88"));

        const ReportResult idle = Run(4, QDate(2024, 1, 1), QDate(2024, 2, 1));
        QCOMPARE(idle.rows[0].mid(4), QStringList({"1,5", "2,25", "3,375"}));
        QCOMPARE(idle.summary.text[2], QStringLiteral("1.237,88"));

        const ReportResult cats = Run(13);
        QCOMPARE(cats.rows, QList<QStringList>({{"BOLT", "3,375"}, {"NUT", "1.234,50"}}));
        QCOMPARE(cats.summary.text[2], QStringLiteral("1.237,88"));
    }

    void aReportReadsAndLetsGo() {
        TestData data;
        Item(1, "P-1", "A", 1);
        Supplier(1, 1, 2, 0);
        History(1, "2024-01-10");

        // Types without a report of their own read nothing.
        for (int type : {0, 1, 2, 3, 9, 10, 14})
            QVERIFY2(!Run(type, QDate(2024, 1, 1), QDate(2024, 2, 1)).ran,
                     qPrintable(QString::number(type)));

        // An engine error is not trapped by the report.
        Database::FailNextStatementContaining(
            QStringLiteral("AS tblHistory"), DbErr::Locked,
            QStringLiteral("Could not update; currently locked."));
        try {
            Run(4, QDate(2024, 1, 1), QDate(2024, 2, 1));
            QFAIL("the engine error was swallowed");
        } catch (const DbError& e) {
            QCOMPARE(e.Number(), int(DbErr::Locked));
        }

        // After a run no lock is held: another workstation writes at once.
        for (int type : {4, 11, 12, 13}) {
            QVERIFY(Run(type, QDate(2024, 1, 1), QDate(2024, 3, 1)).ran);
            Database db = DBEngine::OpenDatabase(gDbPath);
            db.BeginTrans();
            db.Execute(QStringLiteral("UPDATE tblStockItems SET Qty = Qty + 1"));
            db.CommitTrans();
        }
        QCOMPARE(SqlFirst("SELECT Qty FROM tblStockItems"), QStringLiteral("5"));
    }
};

QTEST_GUILESS_MAIN(TestReports)
#include "test_reports.moc"
