// The purchasing reports without a window: orders in a period, overdue lines, late deliveries by
// line and by supplier, on orders placed and receipts booked as the program writes them.
#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "reports/PurchasingReports.h"
#include "reports/Reports.h"
#include "tests/reports/PurchasingReportFixture.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/TestSupport.h"

#include <QTest>

using namespace reporttest;
using orderbook::BookIn;
using orderbook::Line;
using orderbook::PlaceOrder;

namespace {

const QDate kStart(2024, 3, 1);
const QDate kEnd(2024, 3, 31);

ReportResult Run(int type, const QDate& start = kStart, const QDate& end = kEnd) {
    ReportInput in;
    in.reportType = type;
    in.startDate = start;
    in.endDate = end;
    return RunReport(in);
}

// The row whose column `column` holds `value`; an empty list when none does.
QStringList RowWith(const ReportResult& r, int column, const QString& value) {
    for (const QStringList& row : r.rows)
        if (row.value(column) == value)
            return row;
    return {};
}

// Three suppliers (one without a name) and three items each of them sells.
void Suppliers() {
    fixture::Supplier(1, QStringLiteral("Acme Components"), QStringLiteral("ACM"));
    fixture::Supplier(2, QStringLiteral("Bolt Supplies"), QStringLiteral("BLT"));
    fixture::Supplier(3, QString(), QStringLiteral("UNN"));
    fixture::Item(10, QStringLiteral("RES-10K"));
    fixture::Item(11, QStringLiteral("CAP-1U"));
    fixture::Item(12, QStringLiteral("IND-5M"));
    for (int item : {10, 11, 12})
        for (int supplier : {1, 2, 3})
            fixture::Link(item, supplier, QStringLiteral("1"), QStringLiteral("S-%1").arg(item));
}

void OldReceipt(int item, const QString& isoDate, const QString& type, const QString& histId2) {
    ExecSql(QStringLiteral("INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistID2, "
                           "HistQty) VALUES (%1, '%2', '%3', %4, 1)")
                .arg(item)
                .arg(isoDate, type, histId2));
}

} // namespace

class TestPurchasingReports : public QObject {
    Q_OBJECT
private slots:
    void init() {
        UseTestLocale();
        gCanPurchasing = true;
    }
    void cleanup() { SetToday(QDate()); }

    void ordersInPeriodCountReferencesAndLines() {
        TestData data;
        ScriptedBoxes boxes;
        Suppliers();
        // On the start and on the end date: outside the period.
        PlaceOrder(kStart, 1, "EDGE-1", {{10, 1, 100}}, boxes);
        PlaceOrder(kEnd, 2, "EDGE-2", {{11, 1, 100}}, boxes);
        const QList<int> p100 =
            PlaceOrder(QDate(2024, 3, 5), 1, "P100",
                       {{10, 5, 2.5}, {11, 2.5, 0.125, QDate(2024, 3, 9)}}, boxes);
        PlaceOrder(QDate(2024, 3, 10), 2, "P200", {{12, 1000, 1234.5678}}, boxes);
        BookIn(p100.value(1), 2.5, QDate(2024, 3, 20));

        ReportResult r = Run(5);
        QVERIFY(r.ran);
        QCOMPARE(Captions(r),
                 QStringList({"PONumber=PONumber", "PODate=PO Date", "Supplier=Supplier",
                              "PartNo=PartNo", "Name=Name", "Desc=Desc", "Price=Cost (x1) ",
                              "Qty=Ordered ", "Received=Received "}));
        QCOMPARE(Column(r, 0), QStringList({"P100", "P100", "P200"}));
        QCOMPARE(RowWith(r, 3, "RES-10K"),
                 QStringList({"P100", "05/03/2024", "Acme Components", "RES-10K", "Value 10",
                              "Item 10", "2.50", "5.0", "0.0"}));
        QCOMPARE(RowWith(r, 3, "CAP-1U").mid(6), QStringList({"0.125", "2.5", "2.5"}));
        QCOMPARE(RowWith(r, 3, "IND-5M").mid(1, 2), QStringList({"10/03/2024", "Bolt Supplies"}));
        QCOMPARE(RowWith(r, 3, "IND-5M").mid(6), QStringList({"1234.5678", "1000.0", "0.0"}));
        // 12.5 + 0.3125 + 1,234,567.8
        QCOMPARE(Summary(r), QStringList({"Number of Purchase Orders = 2",
                                          "Total Value of Purchase Orders = ", "1,234,580.61",
                                          "Number of Lines = 3", ""}));
        QCOMPARE(r.summary.label2, QString());

        // Another order under a reference already used counts no new order; a line without a
        // reference counts none either.
        PlaceOrder(QDate(2024, 3, 12), 2, "P100", {{12, 2, 10}}, boxes);
        PlaceOrder(QDate(2024, 3, 15), 1, QString(), {{10, 1, 1}}, boxes);
        r = Run(5);
        QCOMPARE(Column(r, 0), QStringList({"", "P100", "P100", "P100", "P200"}));
        QCOMPARE(Summary(r), QStringList({"Number of Purchase Orders = 2",
                                          "Total Value of Purchase Orders = ", "1,234,601.61",
                                          "Number of Lines = 5", ""}));

        // A period with no order: no rows, no order, a total of 0.00.
        const ReportResult none = Run(5, QDate(2024, 4, 1), QDate(2024, 5, 1));
        QVERIFY(none.rows.isEmpty());
        QCOMPARE(Summary(none), QStringList({"Number of Purchase Orders = 0",
                                             "Total Value of Purchase Orders = ", "0.00",
                                             "Number of Lines = 0", ""}));
    }

    void overdueLinesDifferInEitherDirection() {
        TestData data;
        ScriptedBoxes boxes;
        Suppliers();
        const QDate today(2024, 6, 15);
        const QList<int> first = PlaceOrder(
            QDate(2024, 5, 1), 1, "OV-1",
            {{10, 5, 4, QDate(2024, 5, 20)}, {11, 10, 1, QDate(2024, 5, 20)}, {12, 4, 1, today}},
            boxes);
        const QList<int> second = PlaceOrder(
            QDate(2024, 5, 2), 2, "OV-2",
            {{10, 3, 1}, {11, 1000, 1234.5, QDate(2024, 6, 14)}, {12, 2, 3, QDate(2024, 6, 1)}},
            boxes);
        BookIn(first.value(0), 7, QDate(2024, 5, 25));  // over-received
        BookIn(first.value(1), 10, QDate(2024, 5, 25)); // complete
        BookIn(second.value(1), 2.5, QDate(2024, 6, 10));

        SetToday(today);
        ReportResult r = Run(6, QDate(), QDate());
        QCOMPARE(Captions(r), QStringList({"PONumber=PONumber", "Vendor=Supplier", "PODate=PO Date",
                                           "DueDate=Due Date", "PartNumber=PartNumber", "Name=Name",
                                           "Description=Description", "Cost=Cost (x1) ",
                                           "Qty=Ordered ", "Received=Received "}));
        // Neither the complete line, nor the line due today, nor the line without a date.
        QStringList parts = Column(r, 4);
        parts.sort();
        QCOMPARE(parts, QStringList({"CAP-1U", "IND-5M", "RES-10K"}));
        QCOMPARE(r.rows[0], QStringList({"OV-1", "ACM", "01/05/2024", "20/05/2024", "RES-10K",
                                         "Value 10", "Item 10", "4.00", "5.0", "7.0"}));
        QCOMPARE(RowWith(r, 4, "CAP-1U"),
                 QStringList({"OV-2", "BLT", "02/05/2024", "14/06/2024", "CAP-1U", "Value 11",
                              "Item 11", "1234.50", "1000.0", "2.5"}));
        QCOMPARE(RowWith(r, 4, "IND-5M").mid(7), QStringList({"3.00", "2.0", "0.0"}));
        // 1,234,500 - 3,086.25 remains of the big line, 6 of the last; the over-received line
        // takes 8 off.
        QCOMPARE(Summary(r),
                 QStringList({"Number of Item/rows = 3",
                              "Total Value/cost of Overdue items = ", "1,231,411.75", "", ""}));

        // A day later the line due today is overdue too.
        SetToday(today.addDays(1));
        r = Run(6, QDate(), QDate());
        QCOMPARE(r.rows.size(), 4);
        QCOMPARE(RowWith(r, 3, "15/06/2024").value(4), QStringLiteral("IND-5M"));
        QCOMPARE(r.summary.text[2], QStringLiteral("1,231,415.75"));
    }

    void lateDeliveriesListEachLateReceipt() {
        TestData data;
        ScriptedBoxes boxes;
        Suppliers();
        const QList<int> l1 = PlaceOrder(QDate(2024, 2, 20), 1, "L-1",
                                         {{10, 6, 2, QDate(2024, 3, 10)},
                                          {11, 10, 100, QDate(2024, 3, 5)},
                                          {12, 5, 1000, QDate(2024, 2, 25)}},
                                         boxes);
        const QList<int> l2 = PlaceOrder(
            QDate(2024, 2, 1), 2, "L-2",
            {{12, 1, 5, QDate(2024, 2, 10)}, {10, 1000, 1234.5, QDate(2024, 2, 15)}}, boxes);
        BookIn(l1.value(0), 1, QDate(2024, 3, 10)); // on the scheduled date: not late
        BookIn(l1.value(0), 2, QDate(2024, 3, 11)); // a day later: late
        BookIn(l1.value(1), 3, QDate(2024, 3, 12)); // two late parts of one line
        BookIn(l1.value(1), 4, QDate(2024, 3, 20));
        BookIn(l1.value(2), 5, kEnd);                  // on the end date: outside
        BookIn(l2.value(0), 1, kStart);                // on the start date: outside
        BookIn(l2.value(1), 1000, QDate(2024, 3, 15)); // late and complete: worth 0
        // A receipt from before the line number was kept, and another kind of row that names a
        // line: neither is a late delivery.
        OldReceipt(11, "2024-03-15", "RX", "NULL");
        OldReceipt(11, "2024-03-16", "ADJ(+)", QString::number(l1.value(1)));

        const ReportResult r = Run(7);
        QCOMPARE(Captions(r),
                 QStringList({"PONumber=PONumber", "Vendor=Supplier", "Ordered=Ordered",
                              "Scheduled=Scheduled", "Delivered=Delivered", "PartNo=PartNo",
                              "Name=Name", "Desc=Desc", "Price=Cost (x1) ", "PO Qty=Ordered ",
                              "Received=Received "}));
        QCOMPARE(r.rows.size(), 4);
        QCOMPARE(Column(r, 0), QStringList({"L-1", "L-1", "L-1", "L-2"}));
        QCOMPARE(RowWith(r, 4, "11/03/2024"),
                 QStringList({"L-1", "ACM", "20/02/2024", "10/03/2024", "11/03/2024", "RES-10K",
                              "Value 10", "Item 10", "2.00", "6.0", "2.0"}));
        // Each part is valued against the whole line: 1000 - 300 and 1000 - 400.
        QCOMPARE(RowWith(r, 4, "12/03/2024").mid(8), QStringList({"100.00", "10.0", "3.0"}));
        QCOMPARE(RowWith(r, 4, "20/03/2024").mid(8), QStringList({"100.00", "10.0", "4.0"}));
        QCOMPARE(RowWith(r, 4, "15/03/2024").mid(0, 4),
                 QStringList({"L-2", "BLT", "01/02/2024", "15/02/2024"}));
        QCOMPARE(Summary(r),
                 QStringList({"Number of Item/rows = 4",
                              "Total Value of Late Deliveries = ", "1,308.00", "", ""}));
        QCOMPARE(r.summary.label2,
                 QStringLiteral("NOTE:-\nThis report can only identify late deliveries received "
                                "AFTER your installation/upgrade to Planlet version 2.5 (or "
                                "above)"));

        // The end date a day later takes in the receipt of 31 March: 5,000 - 5,000 adds 0.
        const ReportResult longer = Run(7, kStart, kEnd.addDays(1));
        QCOMPARE(longer.rows.size(), 5);
        QCOMPARE(longer.summary.text[2], QStringLiteral("1,308.00"));
        QVERIFY(Run(7, QDate(2024, 4, 1), QDate(2024, 5, 1)).rows.isEmpty());
    }

    void lateDeliveriesSummedPerSupplier() {
        TestData data;
        ScriptedBoxes boxes;
        Suppliers();
        const QList<int> acme =
            PlaceOrder(QDate(2024, 2, 1), 1, "A-1", {{11, 10, 100, QDate(2024, 3, 5)}}, boxes);
        const QList<int> bolt = PlaceOrder(
            QDate(2024, 2, 2), 2, "B-1",
            {{12, 1000, 1234.5, QDate(2024, 3, 1)}, {10, 4, 1, QDate(2024, 3, 20)}}, boxes);
        const QList<int> unnamed =
            PlaceOrder(QDate(2024, 2, 3), 3, "U-1", {{10, 2, 10, QDate(2024, 3, 1)}}, boxes);
        BookIn(acme.value(0), 3, QDate(2024, 3, 12));
        BookIn(acme.value(0), 4, QDate(2024, 3, 20));
        BookIn(bolt.value(0), 2.5, QDate(2024, 3, 10));
        BookIn(bolt.value(1), 4, QDate(2024, 3, 19)); // early: not counted
        BookIn(unnamed.value(0), 1, QDate(2024, 3, 5));

        ReportResult r = Run(8);
        QCOMPARE(Captions(r),
                 QStringList({"Supplier=Supplier", "Value=Value ", "How Often=How Often "}));
        // The supplier without a name sorts first and its receipt is counted with the next one.
        QCOMPARE(r.rows, QList<QStringList>({{"Acme Components", "1,310.00", "3"},
                                             {"Bolt Supplies", "1,231,413.75", "1"}}));
        QCOMPARE(Summary(r),
                 QStringList({"", "Total Value of Late Deliveries = ", "1,232,723.75", "", ""}));

        // Without a late receipt of Acme, the unnamed supplier's receipt joins Bolt's, the one
        // supplier, written after the walk.
        r = Run(8, kStart, QDate(2024, 3, 11));
        QCOMPARE(r.rows, QList<QStringList>({{"Bolt Supplies", "1,231,423.75", "2"}}));
        QCOMPARE(r.summary.text[2], QStringLiteral("1,231,423.75"));

        // No late receipt: no supplier row, a total of 0.00.
        r = Run(8, QDate(2024, 4, 1), QDate(2024, 5, 1));
        QVERIFY(r.rows.isEmpty());
        QCOMPARE(r.summary.text[2], QStringLiteral("0.00"));

        // On a comma locale the figures follow it.
        LocaleScope german(QLocale(QLocale::German, QLocale::Germany));
        r = Run(8);
        QCOMPARE(r.rows, QList<QStringList>({{"Acme Components", "1.310,00", "3"},
                                             {"Bolt Supplies", "1.231.413,75", "1"}}));
        QCOMPARE(r.summary.text[2], QStringLiteral("1.232.723,75"));
    }

    void datesWrittenOnACommaLocaleCompareAsDates() {
        TestData data;
        ScriptedBoxes boxes;
        Suppliers();
        LocaleScope german(QLocale(QLocale::German, QLocale::Germany));
        // Single-digit days and months: stored padded, they sort as dates across months.
        const QList<int> rows =
            PlaceOrder(QDate(2024, 9, 8), 1, "D-1",
                       {{10, 2.5, 1.25, QDate(2024, 9, 9)}, {11, 3, 2, QDate(2024, 10, 1)}}, boxes);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT PODate FROM tblPOrders")),
                 QStringLiteral("2024-09-08"));
        BookIn(rows.value(0), 1, QDate(2024, 10, 2));

        SetToday(QDate(2024, 10, 10));
        ReportResult overdue = Run(6, QDate(), QDate());
        QCOMPARE(overdue.rows.size(), 2);
        QCOMPARE(RowWith(overdue, 4, "RES-10K").mid(2, 2),
                 QStringList({"08.09.2024", "09.09.2024"}));
        QCOMPARE(RowWith(overdue, 4, "RES-10K").mid(7), QStringList({"1,25", "2,5", "1,0"}));
        QCOMPARE(overdue.summary.text[2], QStringLiteral("7,88")); // 1.875 + 6

        const ReportResult orders = Run(5, QDate(2024, 9, 7), QDate(2024, 9, 10));
        QCOMPARE(orders.rows.size(), 2);
        QCOMPARE(orders.summary.text[2], QStringLiteral("9,13")); // 3.125 + 6
        const ReportResult late = Run(7, QDate(2024, 9, 30), QDate(2024, 10, 3));
        QCOMPARE(Column(late, 4), QStringList({"02.10.2024"}));
        QCOMPARE(late.summary.text[2], QStringLiteral("1,88")); // 3.125 - 1.25
    }

    void receiptsJoinTheirLineThroughAnIndex() {
        TestData data;
        Database db = DBEngine::OpenDatabase(gDbPath);
        // Whichever side the engine starts from, the other is found through an index: the line
        // by its key or the receipts by HistID2, never by reading a whole table per row.
        for (const QString& statement : {LateDeliveriesStatement(kStart, kEnd),
                                         LateDeliveriesBySupplierStatement(kStart, kEnd)}) {
            Recordset rs = db.OpenRecordset(QStringLiteral("EXPLAIN QUERY PLAN ") + statement);
            QStringList steps;
            for (; !rs.Eof(); rs.MoveNext())
                steps << rs.Fields(QStringLiteral("detail")).Text();
            const QString plan = steps.join(QLatin1Char('\n'));
            QVERIFY2(
                plan.contains(QStringLiteral("SEARCH tblPODetail USING INTEGER PRIMARY KEY")) ||
                    plan.contains(QStringLiteral("ixHistID2")),
                qPrintable(plan));
        }
    }

    void aReportReadsAndLetsGo() {
        TestData data;
        ScriptedBoxes boxes;
        Suppliers();
        const QList<int> rows =
            PlaceOrder(QDate(2024, 2, 1), 1, "R-1", {{10, 5, 1, QDate(2024, 2, 10)}}, boxes);
        BookIn(rows.value(0), 2, QDate(2024, 3, 3));
        SetToday(QDate(2024, 4, 1));

        // An engine error is not trapped by the report.
        Database::FailNextStatementContaining(
            QStringLiteral("tblItemHistory.HistID2"), DbErr::Locked,
            QStringLiteral("Could not update; currently locked."));
        try {
            Run(7);
            QFAIL("the engine error was swallowed");
        } catch (const DbError& e) {
            QCOMPARE(e.Number(), int(DbErr::Locked));
        }

        // After each run no lock is held: another workstation writes at once.
        for (int type : {5, 6, 7, 8}) {
            QCOMPARE(Run(type, QDate(2024, 1, 1), QDate(2024, 3, 31)).rows.size(), 1);
            Database db = DBEngine::OpenDatabase(gDbPath);
            db.BeginTrans();
            db.Execute(QStringLiteral("UPDATE tblPODetail SET RowConfirmed = RowConfirmed + 1"));
            db.CommitTrans();
        }
        QCOMPARE(SqlFirst("SELECT RowConfirmed FROM tblPODetail"), QStringLiteral("4"));
    }
};

QTEST_GUILESS_MAIN(TestPurchasingReports)
#include "test_purchasing_reports.moc"
