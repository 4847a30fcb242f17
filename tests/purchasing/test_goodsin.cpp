// Goods receiving without a window: the list of outstanding orders, the rows of an order, booking
// in with its questions, a failure in the middle, and two workstations booking the same row.
#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/Rights.h"
#include "inventory/OnOrder.h"
#include "purchasing/GoodsIn.h"
#include "tests/purchasing/GoodsInFixture.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <QThread>
#include <cstring>

namespace {

// Acme and Bolt; order 3 (Acme) with an open row of 10 and a complete row, order 4 complete,
// order 5 received beyond its quantity, order 6 of a supplier that is gone, order 7 (Bolt).
struct Orders {
    int open3 = 0, done3 = 0;
};

Orders Standard() {
    fixture::Home();
    fixture::Supplier(1, QStringLiteral("Acme"));
    fixture::Supplier(2, QStringLiteral("Bolt"));
    fixture::Item(10, QStringLiteral("RES-10K"), QStringLiteral("Resistor 10k"));
    fixture::Item(11, QStringLiteral("CAP-1U"), QStringLiteral("Capacitor 1u"));
    fixture::Item(12, QStringLiteral("IND-5M"), QStringLiteral("Inductor"));
    fixture::Item(13, QStringLiteral("RELAY-5V"), QStringLiteral("Relay"));
    fixture::Link(10, 1, QStringLiteral("2"), QStringLiteral("A-10"));
    Orders o;
    gin::Order(3, 1, QStringLiteral("REF-3"));
    o.open3 = gin::Row(3, 10, QStringLiteral("10"), QStringLiteral("0"), QStringLiteral("2.5"),
                       QStringLiteral("2026-12-01"));
    o.done3 = gin::Row(3, 11, QStringLiteral("4"), QStringLiteral("4"));
    gin::Order(4, 2, QStringLiteral("REF-4"));
    gin::Row(4, 12, QStringLiteral("5"), QStringLiteral("5"));
    gin::Order(5, 1, QStringLiteral("REF-5"));
    gin::Row(5, 12, QStringLiteral("5"), QStringLiteral("7"));
    gin::Order(6, 99, QStringLiteral("REF-6"));
    gin::Row(6, 13, QStringLiteral("2"), QStringLiteral("0"));
    gin::Row(6, 13, QStringLiteral("3"), QStringLiteral("1"));
    gin::Order(7, 2, QStringLiteral("REF-7"), QStringLiteral("2026-03-04"));
    gin::Row(7, 11, QStringLiteral("1"), QStringLiteral("0"));
    for (int item : {10, 11, 12, 13})
        RefreshOnOrderQty(item);
    return o;
}

// Types a received quantity into a row as the grid hands an edit over.
void Type(GoodsInArray& a, int row, const QString& text) {
    QVector<QVariant> values(GinCol::Count);
    for (int c = 1; c <= GinCol::Count; ++c)
        values[c - 1] = std::as_const(a.rows)(c, row);
    values[GinCol::RXd - 1] = text;
    QVERIFY(CommitGoodsInRow(a, row, values));
}

BookInInput Input(GoodsInArray& a, const QString& grn = QStringLiteral("TRN-1")) {
    BookInInput in;
    in.rows = &a;
    in.adviceNo = QStringLiteral("ADV-9");
    in.grnNo = grn;
    in.poNo = QStringLiteral("REF-3");
    return in;
}

QString Item(int id, const QString& column) {
    return SqlFirst(
        QStringLiteral("SELECT %1 FROM tblStockItems WHERE ItemID=%2").arg(column).arg(id));
}

QString Received(int rowId) {
    return SqlFirst(QStringLiteral("SELECT PORecieved FROM tblPODetail WHERE RowID=%1").arg(rowId));
}

QStringList Titles(const ScriptedBoxes& boxes) {
    QStringList out;
    for (const ShownBox& b : boxes.shown())
        out << b.title;
    return out;
}

// The second workstation of the two-process test: books `qty` against order 3's open row once
// the start file exists; the first one also holds its lock for a while before its history row.
int BookAsWorkstation(int argc, char** argv) {
    if (argc < 5)
        return 2;
    QCoreApplication app(argc, argv);
    UseTestLocale();
    SetDataFolder(QFile::decodeName(argv[2]));
    GrantAllRights();
    SetToday(QDate(2026, 11, 23));
    const QString start = QFile::decodeName(argv[4]);
    while (!QFile::exists(start))
        QThread::msleep(2);
    if (QByteArray(argv[3]) == "3")
        Database::BeforeNextStatementContaining(QStringLiteral("INSERT INTO tblItemHistory"),
                                                [] { QThread::msleep(400); });
    GoodsInArray rows = LoadOrderRows(3, false);
    if (rows.rowCount != 1)
        return 3;
    rows.rows(GinCol::RXd, 1) = QString::fromLatin1(argv[3]);
    BookInInput in;
    in.rows = &rows;
    in.grnNo = QStringLiteral("WS-") + QString::fromLatin1(argv[3]);
    in.poNo = QStringLiteral("REF-3");
    // No box is expected: the quantities are within what is outstanding.
    return BookInGoods(in) == kBookInDone ? 0 : 4;
}

} // namespace

class TestGoodsIn : public QObject {
    Q_OBJECT
private slots:
    void init() { RightFlag(Right::Purchasing) = true; }

    void outstandingOrdersAreListed() {
        TestData data;
        Standard();
        const GoodsInArray list = LoadOutstandingOrders();
        // Only orders with a differing row, each once; the gone supplier's name is blank and
        // sorts first; over-received order 5 stays.
        QCOMPARE(gin::Column(list, OListCol::POID), QStringList({"6", "3", "5", "7"}));
        QCOMPARE(gin::Column(list, OListCol::SupName), QStringList({"", "Acme", "Acme", "Bolt"}));
        QCOMPARE(gin::Column(list, OListCol::PONo),
                 QStringList({"REF-6", "REF-3", "REF-5", "REF-7"}));
        QCOMPARE(std::as_const(list.rows)(OListCol::PODate, 4), QVariant(QDate(2026, 3, 4)));
        QCOMPARE(gin::Column(list, OListCol::NSSup), QStringList(4, QString()));

        OrderListShown shown = ShowOrderList(list);
        QCOMPARE(gin::Column(shown.list, OListCol::POID),
                 QStringList({"0006", "0003", "0005", "0007"}));
        QCOMPARE(gin::Column(shown.list, OListCol::PODate).at(3), QStringLiteral("04/03/2026"));
        QVERIFY(!shown.showNonStock);

        // Day/month/year on a month-first locale too; a row with no POID is not shown.
        {
            LocaleScope us{QLocale(QLocale::English, QLocale::UnitedStates)};
            GoodsInArray usList = LoadOutstandingOrders();
            usList.rows.SetRows(5);
            usList.rowCount = 5;
            usList.rows(OListCol::NSSup, 2) = QStringLiteral("Includes NonStockItems");
            shown = ShowOrderList(usList);
            QCOMPARE(shown.list.rowCount, 4);
            QCOMPARE(gin::Column(shown.list, OListCol::PODate),
                     QStringList({"02/11/2026", "02/11/2026", "02/11/2026", "04/03/2026"}));
            QVERIFY(shown.showNonStock);
        }

        // A date the screens show blank (the no-date value) stays blank.
        ExecSql(QStringLiteral("UPDATE tblPOrders SET PODate='2040-01-01' WHERE POID=7"));
        QCOMPARE(gin::Column(ShowOrderList(LoadOutstandingOrders()).list, OListCol::PODate).at(3),
                 QString());

        // Nothing outstanding anywhere: an empty list.
        ExecSql(QStringLiteral("UPDATE tblPODetail SET PORecieved = POQty"));
        QCOMPARE(LoadOutstandingOrders().rowCount, 0);
    }

    void orderRowsAndEdits() {
        TestData data;
        const Orders o = Standard();
        GoodsInArray rows = LoadOrderRows(3, false);
        QCOMPARE(rows.rowCount, 1);
        QStringList first;
        for (int c = 1; c <= GinCol::Count; ++c)
            first << std::as_const(rows.rows)(c, 1).toString();
        QCOMPARE(first,
                 QStringList({QString::number(o.open3), "RES-10K", "Value 10", "Resistor 10k",
                              "S-10", "01/12/2026", "2.50", "10", "10", "", "", "10", ""}));

        // Completed rows too, in RowID order; the no-date value shows blank.
        rows = LoadOrderRows(3, true);
        QCOMPARE(gin::Column(rows, GinCol::RowID),
                 QStringList({QString::number(o.open3), QString::number(o.done3)}));
        QCOMPARE(gin::Column(rows, GinCol::PQty), QStringList({"10", "0"}));
        QCOMPARE(gin::Column(rows, GinCol::DelDate), QStringList({"01/12/2026", ""}));
        // Over-received: a negative outstanding figure. A row of a deleted item isn't found.
        QCOMPARE(gin::Column(LoadOrderRows(5, false), GinCol::PQty), QStringList({"-2"}));
        gin::Row(5, 999, QStringLiteral("1"), QStringLiteral("0"));
        QCOMPARE(LoadOrderRows(5, false).rowCount, 1);
        QCOMPARE(LoadOrderRows(42, true).rowCount, 0);

        // Typed quantities pass the mask; a booked row keeps its values.
        Type(rows, 1, QStringLiteral("2.555"));
        QCOMPARE(std::as_const(rows.rows)(GinCol::RXd, 1).toString(), QStringLiteral("2.56"));
        Type(rows, 1, QString());
        QCOMPARE(std::as_const(rows.rows)(GinCol::RXd, 1).toString(), QStringLiteral("0"));
        Type(rows, 2, QStringLiteral("-1.5"));
        QCOMPARE(std::as_const(rows.rows)(GinCol::RXd, 2).toString(), QStringLiteral("-1.5"));
        rows.rows(GinCol::NConf, 2) = QStringLiteral("Yes");
        QVector<QVariant> edit(GinCol::Count);
        edit[GinCol::RXd - 1] = QStringLiteral("9");
        QVERIFY(!CommitGoodsInRow(rows, 2, edit));
        QCOMPARE(std::as_const(rows.rows)(GinCol::RXd, 2).toString(), QStringLiteral("-1.5"));
        QCOMPARE(std::as_const(rows.rows)(GinCol::PNo, 2).toString(), QStringLiteral("CAP-1U"));
    }

    void bookingPartOfARow() {
        TestData data;
        ScriptedBoxes boxes;
        const Orders o = Standard();
        SetToday(QDate(2026, 11, 25));
        const QString priceBefore = SqlFirst("SELECT PriceEach FROM tblItemSupplier");
        QCOMPARE(Item(10, "OnOrderQty"), QStringLiteral("10"));

        GoodsInArray rows = LoadOrderRows(3, true);
        Type(rows, 1, QStringLiteral("2.5"));
        BookInInput in = Input(rows);
        QCOMPARE(BookIn(in), int(kBookInDone));
        QVERIFY(boxes.shown().isEmpty());

        QCOMPARE(Item(10, "Qty"), QStringLiteral("2.5"));
        QCOMPARE(Received(o.open3), QStringLiteral("2.5"));
        QCOMPARE(Item(10, "OnOrderQty"), QStringLiteral("7.5"));
        // One history row: today (not the receipt date of the window), the order row as a number.
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemHistory"), QStringLiteral("1"));
        QCOMPARE(SqlFirst("SELECT StockID || '|' || HistDate || '|' || HistType || '|' || "
                          "typeof(HistID2) || ':' || HistID2 || '|' || HistRef || '|' || HistTRN "
                          "|| '|' || HistQty || '|' || HistText FROM tblItemHistory"),
                 QStringLiteral("10|2026-11-25|RX|real:%1.0|ADV-9|TRN-1|2.5|Purchase Order: REF-3")
                     .arg(o.open3));
        // Only the booked row is marked; prices and POComplete stay.
        QCOMPARE(gin::Column(rows, GinCol::NConf), QStringList({"Yes", ""}));
        QCOMPARE(
            SqlFirst("SELECT POPrice FROM tblPODetail WHERE RowID=" + QString::number(o.open3)),
            QStringLiteral("2.5"));
        QCOMPARE(SqlFirst("SELECT PriceEach FROM tblItemSupplier"), priceBefore);
        QCOMPARE(SqlFirst("SELECT POComplete FROM tblPOrders WHERE POID=3"), QStringLiteral("0"));
        // Reopened, the row has 7.5 outstanding.
        QCOMPARE(gin::Column(LoadOrderRows(3, false), GinCol::PQty), QStringList({"7.5"}));

        // A second press books what still stands typed in the booked row once more.
        QCOMPARE(BookIn(in), int(kBookInDone));
        QCOMPARE(Item(10, "Qty"), QStringLiteral("5"));
        QCOMPARE(Received(o.open3), QStringLiteral("5"));

        // A negative quantity reverses: stock, received and on-order go back, no question.
        rows = LoadOrderRows(3, false);
        Type(rows, 1, QStringLiteral("-1"));
        in = Input(rows);
        QCOMPARE(BookIn(in), int(kBookInDone));
        QVERIFY(boxes.shown().isEmpty());
        QCOMPARE(Item(10, "Qty"), QStringLiteral("4"));
        QCOMPARE(Received(o.open3), QStringLiteral("4"));
        QCOMPARE(Item(10, "OnOrderQty"), QStringLiteral("6"));
        QCOMPARE(SqlFirst("SELECT HistQty FROM tblItemHistory ORDER BY HistQty LIMIT 1"),
                 QStringLiteral("-1"));

        // A comma locale: "2,5" typed is 2.5 in the statements.
        {
            LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
            rows = LoadOrderRows(3, false);
            QCOMPARE(gin::Column(rows, GinCol::PQty), QStringList({"6"}));
            Type(rows, 1, QStringLiteral("2,5"));
            QCOMPARE(std::as_const(rows.rows)(GinCol::RXd, 1).toString(), QStringLiteral("2,5"));
            in = Input(rows);
            QCOMPARE(BookIn(in), int(kBookInDone));
        }
        QCOMPARE(Item(10, "Qty"), QStringLiteral("6.5"));
        QCOMPARE(Item(10, "OnOrderQty"), QStringLiteral("3.5"));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemHistory WHERE HistType='RX'"),
                 QStringLiteral("4"));
    }

    void rowsThatAreSkipped() {
        TestData data;
        ScriptedBoxes boxes;
        Standard();
        gin::Order(8, 1, QStringLiteral("REF-8"));
        const int a = gin::Row(8, 10, QStringLiteral("5"), QStringLiteral("0"));
        const int b = gin::Row(8, 11, QStringLiteral("5"), QStringLiteral("0"));
        const int c = gin::Row(8, 12, QStringLiteral("5"), QStringLiteral("0"));
        const int d = gin::Row(8, 13, QStringLiteral("5"), QStringLiteral("0"));
        GoodsInArray rows = LoadOrderRows(8, false);
        QCOMPARE(rows.rowCount, 4);
        Type(rows, 1, QStringLiteral("1"));
        Type(rows, 2, QStringLiteral("0"));                    // nothing received
        rows.rows(GinCol::NConf, 3) = QStringLiteral(" Yes "); // booked, nothing typed
        Type(rows, 4, QStringLiteral("2"));
        // The item of row 4 is deleted after the load: no stock, no history, no received.
        ExecSql(QStringLiteral("DELETE FROM tblStockItems WHERE ItemID=13"));
        BookInInput in = Input(rows);
        QCOMPARE(BookIn(in), int(kBookInDone));
        QCOMPARE(SqlFirst("SELECT group_concat(StockID) FROM tblItemHistory"),
                 QStringLiteral("10"));
        QCOMPARE(Received(a), QStringLiteral("1"));
        QCOMPARE(Received(b), QStringLiteral("0"));
        QCOMPARE(Received(c), QStringLiteral("0"));
        QCOMPARE(Received(d), QStringLiteral("0"));
        QCOMPARE(gin::Column(rows, GinCol::NConf), QStringList({"Yes", "", " Yes ", ""}));
        QVERIFY(boxes.shown().isEmpty());

        // No rows at all: done at once, nothing written.
        GoodsInArray empty;
        BookInInput none = Input(empty);
        const QStringList before = gin::DumpAll();
        QCOMPARE(BookInGoods(none), int(kBookInDone));
        QCOMPARE(gin::DumpAll(), before);
    }

    void questionsBeforeBooking() {
        TestData data;
        ScriptedBoxes boxes;
        const Orders o = Standard();
        const QStringList before = gin::DumpAll();
        GoodsInArray rows = LoadOrderRows(3, false);

        // The guard.
        RightFlag(Right::Purchasing) = false;
        boxes.answer(vbOK);
        BookInInput in = Input(rows);
        QCOMPARE(BookIn(in), int(kBookInStopped));
        QCOMPARE(boxes.shown().at(0).prompt,
                 QStringLiteral("You do not have permission to add or make changes to purchase "
                                "orders"));
        QCOMPARE(boxes.shown().at(0).title, QStringLiteral("Access Restricted"));
        RightFlag(Right::Purchasing) = true;

        // Nothing typed, no transaction reference: "TRN?", then two boxes.
        boxes.clear();
        boxes.answer(vbNo);
        in = Input(rows, QString());
        QCOMPARE(BookIn(in), int(kBookInStopped));
        QCOMPARE(Titles(boxes), QStringList({"TRN?"}));
        QCOMPARE(boxes.shown().at(0).prompt,
                 QStringLiteral("Do you wish to continue without a transaction reference "
                                "number?"));
        boxes.clear();
        boxes.answer(vbYes);
        boxes.answer(vbOK);
        boxes.answer(vbOK);
        QCOMPARE(BookIn(in), int(kBookInNothingDone));
        QCOMPARE(Titles(boxes), QStringList({"TRN?", "Nothing to do", "Nothing done"}));
        QCOMPARE(boxes.prompts().mid(1),
                 QStringList({"There are no received quantities to process. The procedure was "
                              "cancelled",
                              "Nothing was done."}));
        QCOMPARE(boxes.shown().at(1).flags, int(vbInformation));
        QCOMPARE(boxes.shown().at(2).flags, int(vbInformation));
        QCOMPARE(gin::DumpAll(), before);

        // More than outstanding: declined writes nothing.
        Type(rows, 1, QStringLiteral("12"));
        boxes.clear();
        boxes.answer(vbNo);
        boxes.answer(vbOK);
        in = Input(rows);
        QCOMPARE(BookIn(in), int(kBookInNothingDone));
        QCOMPARE(Titles(boxes), QStringList({"Check Quantities", "Nothing done"}));
        QCOMPARE(boxes.shown().at(0).prompt,
                 QStringLiteral("There is at least one row where the Received Qty exceeds the "
                                "OutStanding Qty.\nAre you sure that you want to continue?"));
        QCOMPARE(gin::DumpAll(), before);
        QCOMPARE(gin::Column(rows, GinCol::NConf), QStringList({""}));

        // Confirmed: the full quantity lands, outstanding goes negative, the order stays listed
        // and the item's on-order figure falls below zero.
        boxes.clear();
        boxes.answer(vbYes);
        QCOMPARE(BookIn(in), int(kBookInDone));
        QCOMPARE(Item(10, "Qty"), QStringLiteral("12"));
        QCOMPARE(Received(o.open3), QStringLiteral("12"));
        QCOMPARE(Item(10, "OnOrderQty"), QStringLiteral("-2"));
        QCOMPARE(gin::Column(LoadOrderRows(3, false), GinCol::PQty), QStringList({"-2"}));
        QVERIFY(gin::Column(LoadOutstandingOrders(), OListCol::POID).contains("3"));

        // An order with nothing outstanding, opened with its completed rows: "complete" asked
        // (and the "over" question not asked as well).
        rows = LoadOrderRows(4, true);
        Type(rows, 1, QStringLiteral("1"));
        boxes.clear();
        boxes.answer(vbNo);
        boxes.answer(vbOK);
        in = Input(rows);
        const QStringList done = gin::DumpAll();
        QCOMPARE(BookIn(in), int(kBookInNothingDone));
        QCOMPARE(boxes.shown().at(0).prompt,
                 QStringLiteral("This Order seems to be completed already and has nothing "
                                "outstanding\nAre you sure that you want to continue and receive "
                                "more items?"));
        QCOMPARE(boxes.shown().at(0).title, AppName());
        QCOMPARE(boxes.shown().at(0).flags & 7, int(vbYesNo));
        QCOMPARE(gin::DumpAll(), done);
        boxes.clear();
        boxes.answer(vbYes);
        QCOMPARE(BookIn(in), int(kBookInDone));
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(Item(12, "Qty"), QStringLiteral("1"));
    }

    void failureLeavesEverythingAsItWas() {
        TestData data;
        ScriptedBoxes boxes;
        Standard();
        gin::Order(8, 1, QStringLiteral("REF-8"));
        int third = 0;
        for (int item : {10, 11, 12, 13}) {
            const int id = gin::Row(8, item, QStringLiteral("5"), QStringLiteral("0"));
            if (item == 12)
                third = id;
        }
        // The file refuses the history row of the third order row.
        ExecSql(QStringLiteral("CREATE TRIGGER failThird BEFORE INSERT ON tblItemHistory WHEN "
                               "NEW.HistID2 = %1 BEGIN SELECT RAISE(ABORT, 'refused'); END")
                    .arg(third));
        const QStringList before = gin::DumpAll();
        GoodsInArray rows = LoadOrderRows(8, false);
        for (int r = 1; r <= 4; ++r)
            Type(rows, r, QStringLiteral("1"));
        boxes.answer(vbOK);
        boxes.answer(vbOK);
        BookInInput in = Input(rows);
        QCOMPARE(BookIn(in), int(kBookInNothingDone));
        QCOMPARE(Titles(boxes), QStringList({"Error", "Nothing done"}));
        QCOMPARE(boxes.prompts().at(0),
                 QStringLiteral("An error occured. The error Number is DQ-Gi-3014\n\nThe "
                                "transaction was not committed. You can try again"));
        QCOMPARE(boxes.shown().at(0).flags, int(vbInformation));
        QCOMPARE(gin::DumpAll(), before);
        // The rows marked before the failure are unmarked.
        QCOMPARE(gin::Column(rows, GinCol::NConf), QStringList(4, QString()));

        // Without the trigger the same rows book in.
        ExecSql(QStringLiteral("DROP TRIGGER failThird"));
        QCOMPARE(BookIn(in), int(kBookInDone));
        QCOMPARE(SqlFirst("SELECT count(*) FROM tblItemHistory"), QStringLiteral("4"));

        // Another workstation's lock outlasting the wait: nothing written, the step before the
        // rows.
        rows = LoadOrderRows(8, false);
        Type(rows, 1, QStringLiteral("1"));
        const QStringList booked = gin::DumpAll();
        in = Input(rows);
        Database::FailNextStatementContaining(QStringLiteral("BEGIN IMMEDIATE"), DbErr::Locked);
        boxes.clear();
        boxes.answer(vbOK);
        boxes.answer(vbOK);
        QCOMPARE(BookIn(in), int(kBookInNothingDone));
        QVERIFY(boxes.prompts().at(0).contains(QStringLiteral("DQ-Gi-5\n")));
        QCOMPARE(gin::DumpAll(), booked);
    }

    void twoWorkstationsBookTheSameRow() {
        TestData data;
        const Orders o = Standard();
        const QString start = data.path(QStringLiteral("go"));
        QProcess first, second;
        const QString self = QCoreApplication::applicationFilePath();
        first.start(self, {QStringLiteral("--book"), data.folder(), QStringLiteral("3"), start});
        second.start(self, {QStringLiteral("--book"), data.folder(), QStringLiteral("4"), start});
        QVERIFY(first.waitForStarted());
        QVERIFY(second.waitForStarted());
        QFile go(start);
        QVERIFY(go.open(QIODevice::WriteOnly));
        go.close();
        QVERIFY(first.waitForFinished(60000));
        QVERIFY(second.waitForFinished(60000));
        QCOMPARE(first.exitCode(), 0);
        QCOMPARE(second.exitCode(), 0);
        // Both quantities land; two "RX" rows, one per workstation.
        QCOMPARE(Item(10, "Qty"), QStringLiteral("7"));
        QCOMPARE(Received(o.open3), QStringLiteral("7"));
        QCOMPARE(Item(10, "OnOrderQty"), QStringLiteral("3"));
        QCOMPARE(SqlFirst("SELECT group_concat(HistTRN || ':' || HistQty, ',') FROM (SELECT * "
                          "FROM tblItemHistory WHERE HistType='RX' ORDER BY HistTRN)"),
                 QStringLiteral("WS-3:3.0,WS-4:4.0"));
    }
};

int main(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], "--book") == 0)
        return BookAsWorkstation(argc, argv);
    QCoreApplication app(argc, argv);
    TestGoodsIn test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_goodsin.moc"
