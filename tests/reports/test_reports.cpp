// The reports without a window: stock valued at cost, and the orders, overdue lines and late
// deliveries of orders placed and goods booked in by the purchasing procedures.
#include "tests/reports/ReportFixture.h"

using namespace reporttest;

namespace {
const QDate kStart(2024, 3, 1);
const QDate kEnd(2024, 3, 31);
} // namespace

class TestReports : public QObject {
    Q_OBJECT
private slots:
    void init() {
        UseTestLocale();
        gCanPurchasing = true;
    }
    void cleanup() { SetToday(QDate()); }

    void valuationTakesTheFirstRowOfEachPartNumber() {
        TestData data;
        // Item 1: the prime supplier, and the other one that sorts first and sets the cost.
        Item(1, "P-100", "BOLT", 10, {{7, 5.0, 1}, {8, 2.5, 0}});
        Item(2, "P-200", "NUT", 3);
        Item(3, "P-300", "BOLT", 4, {{7, 1.25, 0}});
        Item(4, "P-300", "WASHER", 4, {{7, 1.25, 0}});
        Item(5, "P-400", "NUT", -2, {{7, 3, 1}});
        Item(6, "P-500", "NUT", 2.5, {{7, 0.125, 0}});
        Item(7, "P-600", "BOLT", 1000, {{7, 1.2041875, 0}});

        const ReportResult r = Run(11);
        QCOMPARE(Column(r, 1), QStringList({"P-100", "P-200", "P-300", "P-400", "P-500", "P-600"}));
        // The non-prime supplier's price; plain masks ("10.0", not "10").
        QCOMPARE(r.rows[0],
                 QStringList({"BOLT", "P-100", "Part", "BOLT", "A1", "10.0", "2.50", "25.00"}));
        // No supplier row: cost 0. Negative stock: no quantity shown, the negative value kept.
        QCOMPARE(r.rows[1].mid(5), QStringList({"3.0", "0.00", "0.00"}));
        QCOMPARE(r.rows[3].mid(5), QStringList({"", "3.00", "-6.00"}));
        QCOMPARE(r.rows[5].mid(5), QStringList({"1000.0", "1.20419", "1204.1875"}));
        // 25 + 0 + 5 + 0.3125 + 1204.1875; the negative row stays out.
        QCOMPARE(Summary(r), QStringList({"Number of records = 6",
                                          "Total Value of OnHand Inventory = ", "1,234.50", "",
                                          "Does not show OnHand Qty if below zero"}));
        const ReportResult g = Run(12);
        QCOMPARE(g.groupKey, QStringLiteral("Category"));
        QCOMPARE(g.rows, r.rows);
        QCOMPARE(Summary(g), Summary(r));

        // On a comma locale the engine's numbers are read as numbers, and shown in its form.
        LocaleScope german(QLocale(QLocale::German, QLocale::Germany));
        const ReportResult c = Run(11);
        QCOMPARE(c.rows[5].mid(5), QStringList({"1000,0", "1,20419", "1204,1875"}));
        QCOMPARE(c.summary.text[2], QStringLiteral("1.234,50"));
        // Report 13 counts the shared part number once in each of its two categories.
        QCOMPARE(Run(13).summary.text[2], QStringLiteral("1.239,50"));
    }

    void idleStockLeavesOutItemsWithHistoryInThePeriod() {
        TestData data;
        Item(1, "P-1", "A", 0);
        History(1, "2024-03-01"); // on the start date: still idle
        Item(2, "P-2", "A", 0);
        History(2, "2024-03-31"); // on the end date: still idle
        Item(3, "P-3", "A", 8);
        History(3, "2024-03-15");
        Item(4, "P-4", "A", 5); // neither history nor supplier
        Item(5, "P-5", "A", 1);
        History(5, "2024-03-02", "SHIP"); // any kind of movement counts
        Item(6, "P-6", "A", 308.625, {{1, 10, 1}, {2, 4, 0}}, "Hex bolt", "Bin 7");
        History(6, "2024-04-01");
        Item(7, "P-7", "A", -3, {{1, 2, 1}});

        const ReportResult r = Run(4, kStart, kEnd);
        QCOMPARE(Column(r, 1), QStringList({"P-1", "P-2", "P-4", "P-6", "P-7"}));
        QCOMPARE(Column(r, 0), QStringList(5, QString()));
        QCOMPARE(r.rows[0], QStringList({"", "P-1", "Part", "A1", "0.0", "0.00", "0.00"}));
        QCOMPARE(r.rows[3],
                 QStringList({"", "P-6", "Hex bolt", "Bin 7", "308.63", "4.00", "1234.50"}));
        QCOMPARE(r.rows[4].mid(4), QStringList({"", "2.00", "-6.00"}));
        QCOMPARE(Summary(r),
                 QStringList({"Number of records = 5",
                              "Total value (at cost) of Idle Inventory = ", "1,234.50", "",
                              "Total does not include items where OnHand Qty is less than zero"}));
        // Two days more take in the history of item 2 on 31 March and of item 6 on 1 April.
        QCOMPARE(Column(Run(4, kStart, kEnd.addDays(2)), 1), QStringList({"P-1", "P-4", "P-7"}));

        for (int id : {1, 2, 4, 6, 7})
            History(id, "2024-03-20");
        const ReportResult none = Run(4, kStart, kEnd);
        QVERIFY(none.rows.isEmpty());
        QCOMPARE(Summary(none).mid(0, 3),
                 QStringList({"Number of records = 0",
                              "Total value (at cost) of Idle Inventory = ", "0.00"}));
    }

    void categoryValuesSubtotalEachCategory() {
        TestData data;
        QCOMPARE(Summary(Run(13)).mid(0, 3),
                 QStringList(
                     {"Number of Categories = 0", "Total Value of OnHand Inventory = ", "0.00"}));
        Item(1, "B-1", "BOLT", 10, {{1, 9, 1}, {2, 2, 0}});
        for (const char* d : {"2024-01-01", "2024-02-01", "2024-03-01"})
            History(1, d); // six joined rows for this item
        Item(2, "B-2", "BOLT", -5, {{1, 3, 0}});
        Item(3, "B-3", "BOLT", 1.5, {{1, 0.1, 0}});
        Item(4, "N-1", "NUT", 1000, {{1, 1.23456, 0}});
        History(4, "2024-01-05");
        History(4, "2024-01-06");
        Item(5, "W-1", "WASHER", 3, {{1, 0.123456, 0}});
        // A bolt's part number again, in another category and not next to it: it counts there.
        Item(6, "B-1", "WASHER", 2, {{1, 1, 0}});
        // A part number on the row just before is skipped whatever its category, so a category
        // reached only through it never gets a row.
        Item(7, "W-1", "ZINC", 4, {{1, 1, 0}});

        const ReportResult r = Run(13);
        QCOMPARE(r.rows, QList<QStringList>(
                             {{"BOLT", "20.15"}, {"NUT", "1,234.56"}, {"WASHER", "2.37037"}}));
        QCOMPARE(Summary(r),
                 QStringList({"Number of Categories = 3",
                              "Total Value of OnHand Inventory = ", "1,257.08", "",
                              "Values do not include items where OnHand Qty is less than zero"}));
    }

    void purchasingReportsOnOrdersAndReceiptsAsBooked() {
        TestData data;
        ScriptedBoxes boxes;
        Suppliers();
        QStringList p100, p200, unnamed;
        {
            // Written on a comma locale: single-digit days still sort as dates.
            LocaleScope german(QLocale(QLocale::German, QLocale::Germany));
            // On the start and on the end date: outside the period.
            PlaceOrder(kStart, 1, "EDGE-1", {{10, 1, 100, QDate(2024, 3, 5)}}, boxes);
            PlaceOrder(kEnd, 2, "EDGE-2", {{11, 1, 100, QDate(2024, 4, 15)}}, boxes);
            p100 = PlaceOrder(QDate(2024, 3, 5), 1, "P100",
                              {{10, 5, 4, QDate(2024, 3, 10)}, {11, 10, 100, QDate(2024, 3, 5)}},
                              boxes);
            p200 = PlaceOrder(QDate(2024, 3, 10), 2, "P200",
                              {{12, 1000, 1234.5, QDate(2024, 3, 1)}}, boxes);
            PlaceOrder(QDate(2024, 3, 12), 2, "P100", {{12, 2, 10}}, boxes); // reference again
            unnamed = PlaceOrder(QDate(2024, 3, 15), 3, QString(), {{10, 2, 10, QDate(2024, 3, 1)}},
                                 boxes);
            Receive(p100.value(0), 1, QDate(2024, 3, 10), boxes); // on the scheduled date
            Receive(p100.value(0), 6, QDate(2024, 3, 11), boxes); // late, and 7 of 5 in all
            Receive(p100.value(1), 3, QDate(2024, 3, 12), boxes); // two late parts of one line
            Receive(p100.value(1), 4, QDate(2024, 3, 20), boxes);
            Receive(p100.value(1), 3, kEnd, boxes); // complete, on the end date
            Receive(p200.value(0), 2.5, QDate(2024, 3, 10), boxes);
            Receive(unnamed.value(0), 1, QDate(2024, 3, 16), boxes);
        }
        QCOMPARE(SqlFirst("SELECT min(PODate) || ' ' || min(HistDate) FROM tblPOrders, "
                          "tblItemHistory"),
                 QStringLiteral("2024-03-01 2024-03-10"));
        // A receipt from before the line number was kept, and another kind of row that names a
        // line: neither is a late delivery.
        ExecSql(QStringLiteral("INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistID2, "
                               "HistQty) VALUES (11, '2024-03-15', 'RX', NULL, 1), (11, "
                               "'2024-03-16', 'ADJ(+)', %1, 1)")
                    .arg(p100.value(1)));

        // Orders: counted when the reference changes, from an empty one; the line without a
        // reference counts none and the two orders under P100 count once.
        ReportResult r = Run(5, kStart, kEnd);
        QCOMPARE(Column(r, 0), QStringList({"", "P100", "P100", "P100", "P200"}));
        QCOMPARE(RowWith(r, 0, "P200"),
                 QStringList({"P200", "10/03/2024", "Bolt Supplies", "IND-5M", "Value 12",
                              "Item 12", "1234.50", "1000.0", "2.5"}));
        // 20 + 1,000 + 1,234,500 + 20 + 20
        QCOMPARE(Summary(r), QStringList({"Number of Purchase Orders = 2",
                                          "Total Value of Purchase Orders = ", "1,235,560.00",
                                          "Number of Lines = 5", ""}));

        // Overdue: neither the complete line, nor the line due today, nor the line without a
        // date; the line received above its order lowers the total.
        SetToday(QDate(2024, 4, 15));
        r = Run(6);
        QCOMPARE(r.columns.value(3).key + '=' + r.columns.value(3).caption, "DueDate=Due Date");
        QCOMPARE(Column(r, 0), QStringList({"", "EDGE-1", "P100", "P200"}));
        QCOMPARE(RowWith(r, 0, "P100"),
                 QStringList({"P100", "ACM", "05/03/2024", "10/03/2024", "RES-10K", "Value 10",
                              "Item 10", "4.00", "5.0", "7.0"}));
        // 10 + 100 - 8 + 1,234,500 - 3,086.25
        QCOMPARE(Summary(r),
                 QStringList({"Number of Item/rows = 4",
                              "Total Value/cost of Overdue items = ", "1,231,515.75", "", ""}));
        SetToday(QDate(2024, 4, 16));
        QCOMPARE(Run(6).rows.size(), 5);

        // Late receipts, each valued against the whole line.
        r = Run(7, kStart, kEnd);
        QCOMPARE(r.columns.value(9).key + '=' + r.columns.value(9).caption, "PO Qty=Ordered ");
        QStringList delivered = Column(r, 4);
        delivered.sort();
        QCOMPARE(delivered, QStringList({"10/03/2024", "11/03/2024", "12/03/2024", "16/03/2024",
                                         "20/03/2024"}));
        QCOMPARE(RowWith(r, 4, "11/03/2024"),
                 QStringList({"P100", "ACM", "05/03/2024", "10/03/2024", "11/03/2024", "RES-10K",
                              "Value 10", "Item 10", "4.00", "5.0", "6.0"}));
        QCOMPARE(RowWith(r, 4, "12/03/2024").mid(8), QStringList({"100.00", "10.0", "3.0"}));
        QCOMPARE(RowWith(r, 4, "20/03/2024").mid(8), QStringList({"100.00", "10.0", "4.0"}));
        // -4 + 700 + 600 + 1,231,413.75 + 10
        QCOMPARE(Summary(r),
                 QStringList({"Number of Item/rows = 5",
                              "Total Value of Late Deliveries = ", "1,232,719.75", "", ""}));
        QCOMPARE(r.summary.label2,
                 QStringLiteral("NOTE:-\nThis report can only identify late deliveries received "
                                "AFTER your installation/upgrade to Planlet version 2.5 (or "
                                "above)"));

        // Per supplier: the one without a name sorts first and its receipt counts with the next.
        r = Run(8, kStart, kEnd);
        QCOMPARE(r.rows, QList<QStringList>({{"Acme Components", "1,306.00", "4"},
                                             {"Bolt Supplies", "1,231,413.75", "1"}}));
        QCOMPARE(Summary(r),
                 QStringList({"", "Total Value of Late Deliveries = ", "1,232,719.75", "", ""}));
        // The unnamed supplier's receipt alone: its row is written after the walk all the same.
        QCOMPARE(Run(8, QDate(2024, 3, 13), QDate(2024, 3, 19)).rows,
                 QList<QStringList>({{"", "10.00", "1"}}));
        QVERIFY(Run(8, QDate(2024, 4, 1), QDate(2024, 5, 1)).rows.isEmpty());
    }

    void aReportReadsInOneStatementAndLetsGo() {
        TestData data;
        ScriptedBoxes boxes;
        Suppliers();
        const QStringList rows =
            PlaceOrder(QDate(2024, 2, 1), 1, "R-1", {{10, 5, 1, QDate(2024, 2, 10)}}, boxes);
        Receive(rows.value(0), 2, QDate(2024, 3, 3), boxes);
        SetToday(QDate(2024, 4, 1));
        const QDate start(2024, 1, 1), end(2024, 3, 31);

        // Types without a report of their own read nothing.
        for (int type : {0, 1, 2, 3, 9, 10, 14})
            QVERIFY2(!Run(type, start, end).ran, qPrintable(QString::number(type)));
        for (int type : {4, 5, 6, 7, 8, 11, 12, 13}) {
            // An engine error is not trapped by the report.
            Database::FailNextStatementContaining(QStringLiteral("FROM"), DbErr::Locked);
            QVERIFY_THROWS_EXCEPTION(DbError, Run(type, start, end));
            // After a run no lock is held: another workstation writes at once.
            QVERIFY(!Run(type, start, end).rows.isEmpty());
            ExecSql(QStringLiteral("UPDATE tblPODetail SET RowConfirmed = RowConfirmed + 1"));
        }
        QCOMPARE(SqlFirst("SELECT RowConfirmed FROM tblPODetail"), QStringLiteral("8"));
    }
};

QTEST_GUILESS_MAIN(TestReports)
#include "test_reports.moc"
