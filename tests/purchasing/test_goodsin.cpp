// Goods receiving without a window: the list of outstanding orders, the rows of an order, booking
// in with its questions, a failure in the middle, and two workstations booking the same row.
#include "foundation/Clock.h"
#include "foundation/Helpers.h"
#include "foundation/Rights.h"
#include "inventory/OnOrder.h"
#include "purchasing/GoodsIn.h"
#include "tests/purchasing/PurchasingFixture.h"

#include <QTest>

using namespace fixture;

namespace {

// Order 3 (Acme) with an open row of 10 (RowID 1) and a complete row (2), order 4 (Bolt)
// complete, order 5 (Acme) received beyond its quantity, order 6 of a supplier that is gone,
// order 7 (Bolt).
void Standard() {
    Order(3, 1);
    OrderRow(3, 10, "10", "0", "2026-12-01", "2.5");
    OrderRow(3, 11, "4", "4");
    Order(4, 2);
    OrderRow(4, 12, "5", "5");
    Order(5, 1);
    OrderRow(5, 12, "5", "7");
    Order(6, 99);
    OrderRow(6, 13, "2", "0");
    OrderRow(6, 13, "3", "1");
    Order(7, 2, "2026-03-04");
    OrderRow(7, 11, "1", "0");
    for (int item : {10, 11, 12, 13})
        RefreshOnOrderQty(item);
}

// Types a received quantity into a row as the grid hands an edit over.
bool Type(GoodsInArray& a, int row, const QString& text) {
    QVector<QVariant> values(GinCol::Count);
    for (int c = 1; c <= GinCol::Count; ++c)
        values[c - 1] = std::as_const(a.rows)(c, row);
    values[GinCol::RXd - 1] = text;
    return CommitGoodsInRow(a, row, values);
}

// Books the rows in as the window does, and gives the status.
int Book(GoodsInArray& a, const QString& grn = QStringLiteral("TRN-1")) {
    BookInInput in;
    in.rows = &a;
    in.adviceNo = QStringLiteral("ADV-9");
    in.grnNo = grn;
    in.poNo = QStringLiteral("REF-3");
    return BookIn(in);
}

// Stock and on-order of item 10 and what order 3's open row has received.
QString Figures() {
    return SqlFirst("SELECT Qty || '|' || OnOrderQty || '|' || (SELECT PORecieved FROM "
                    "tblPODetail WHERE RowID=1) FROM tblStockItems WHERE ItemID=10");
}

} // namespace

class TestGoodsIn : public QObject, Suite {
    Q_OBJECT
private slots:
    void init() {
        RightFlag(Right::Purchasing) = true;
        Fresh();
        Standard();
    }
    void cleanup() { Drop(); }

    void listRowsAndEdits() {
        // Only orders with a differing row, each once; the gone supplier's name is blank and
        // sorts first; over-received order 5 stays.
        const GoodsInArray list = LoadOutstandingOrders();
        QCOMPARE(Column(list, GinListCol::SupName), QStringList({"", "Acme", "Acme", "Bolt"}));
        QCOMPARE(Column(ShowOrderList(list).list, GinListCol::POID),
                 QStringList({"0006", "0003", "0005", "0007"}));
        // Day/month/year on a month-first locale too.
        {
            LocaleScope us{QLocale(QLocale::English, QLocale::UnitedStates)};
            QCOMPARE(Column(ShowOrderList(LoadOutstandingOrders()).list, GinListCol::PODate),
                     QStringList({"02/11/2026", "02/11/2026", "02/11/2026", "04/03/2026"}));
        }

        // The rows of an order: the open ones, or all in RowID order; the no-date value blank.
        GoodsInArray rows = LoadOrderRows(3, false);
        QCOMPARE(rows.rowCount, 1);
        QCOMPARE(Joined(rows.rows, 1),
                 "1|RES-10K|Value 10|Resistor 10k|S-10|01/12/2026|2.50|10|10|||10|");
        rows = LoadOrderRows(3, true);
        QCOMPARE(Joined(rows.rows, 2), "2|CAP-1U|Value 11|Capacitor 1u|S-11||1.00|4|0|||11|");
        // Over-received: a negative outstanding figure. A row of a deleted item isn't found.
        OrderRow(5, 999, "1", "0");
        QCOMPARE(Column(LoadOrderRows(5, false), GinCol::PQty), QStringList({"-2"}));

        // Typed quantities pass the mask, a minus sign included; a booked row keeps its values.
        QVERIFY(Type(rows, 1, "2.555"));
        QCOMPARE(Column(rows, GinCol::RXd).first(), "2.56");
        Type(rows, 1, QString());
        Type(rows, 2, "-1.5");
        rows.rows(GinCol::NConf, 2) = QStringLiteral("Yes");
        QVERIFY(!Type(rows, 2, "9"));
        QCOMPARE(Column(rows, GinCol::RXd), QStringList({"0", "-1.5"}));
    }

    void booking() {
        SetToday(QDate(2026, 11, 25));

        // 2.5 of 10: stock, on-order, received; one history row dated today (not the receipt
        // date of the window), the order row as a number; only the booked row marked; prices and
        // POComplete untouched; reopened, 7.5 outstanding.
        GoodsInArray rows = LoadOrderRows(3, true);
        Type(rows, 1, "2.5");
        QCOMPARE(Book(rows), int(kBookInDone));
        QCOMPARE(Figures(), "2.5|7.5|2.5");
        QCOMPARE(SqlFirst("SELECT group_concat(StockID || '|' || HistDate || '|' || HistType || "
                          "'|' || typeof(HistID2) || ':' || HistID2 || '|' || HistRef || '|' || "
                          "HistTRN || '|' || HistQty || '|' || HistText) FROM tblItemHistory"),
                 "10|2026-11-25|RX|real:1.0|ADV-9|TRN-1|2.5|Purchase Order: REF-3");
        QCOMPARE(Column(rows, GinCol::NConf), QStringList({"Yes", ""}));
        QCOMPARE(SqlFirst("SELECT group_concat(POPrice) || '|' || (SELECT PriceEach FROM "
                          "tblItemSupplier WHERE ItemID=10 AND SupplierID=1) || '|' || (SELECT "
                          "POComplete FROM tblPOrders WHERE POID=3) FROM tblPODetail WHERE POID=3"),
                 "2.5,1.0|2.0|0");
        QCOMPARE(Column(LoadOrderRows(3, false), GinCol::PQty), QStringList({"7.5"}));
        // A second press books what still stands typed in the booked row once more.
        QCOMPARE(Book(rows), int(kBookInDone));
        QCOMPARE(Figures(), "5.0|5.0|5.0");
        // A negative quantity reverses: stock, received and on-order go back, no question.
        rows = LoadOrderRows(3, false);
        Type(rows, 1, "-1");
        QCOMPARE(Book(rows), int(kBookInDone));
        QCOMPARE(Figures(), "4.0|6.0|4.0");
        // A comma locale: "2,5" typed is 2.5 in the statements.
        {
            LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
            rows = LoadOrderRows(3, false);
            Type(rows, 1, "2,5");
            QCOMPARE(Book(rows), int(kBookInDone));
        }
        QCOMPARE(Figures(), "6.5|3.5|6.5");
        QCOMPARE(Count("tblItemHistory", "HistType='RX'"), "4");

        // Rows passed over: nothing received, booked with nothing typed, an item deleted since
        // the load (no stock, no history, no received).
        Order(8, 1);
        for (int item : {10, 11, 12, 13})
            OrderRow(8, item, "5", "0");
        rows = LoadOrderRows(8, false);
        Type(rows, 1, "1");
        Type(rows, 2, "0");
        rows.rows(GinCol::NConf, 3) = QStringLiteral(" Yes ");
        Type(rows, 4, "2");
        ExecSql("DELETE FROM tblStockItems WHERE ItemID=13");
        QCOMPARE(Book(rows), int(kBookInDone));
        QCOMPARE(Count("tblItemHistory"), "5");
        QCOMPARE(SqlFirst("SELECT group_concat(PORecieved) FROM tblPODetail WHERE POID=8"),
                 "1.0,0.0,0.0,0.0");
        QCOMPARE(Column(rows, GinCol::NConf), QStringList({"Yes", "", " Yes ", ""}));
        // No rows at all: done at once, without a word.
        GoodsInArray empty;
        QCOMPARE(Book(empty), int(kBookInDone));
    }

    void questionsBeforeBooking() {
        const QStringList before = DumpAll();
        GoodsInArray rows = LoadOrderRows(3, false);

        // The guard; then nothing typed and no transaction reference: "TRN?", then two boxes.
        RightFlag(Right::Purchasing) = false;
        boxes->answer(vbOK);
        QCOMPARE(Book(rows), int(kBookInStopped));
        RightFlag(Right::Purchasing) = true;
        boxes->answer(vbNo);
        QCOMPARE(Book(rows, QString()), int(kBookInStopped));
        for (int answer : {vbYes, vbOK, vbOK})
            boxes->answer(answer);
        QCOMPARE(Book(rows, QString()), int(kBookInNothingDone));
        const QString trn =
            QStringLiteral("TRN?: Do you wish to continue without a transaction reference number?");
        QCOMPARE(Said(*boxes), QStringList({"Access Restricted: You do not have permission to add "
                                            "or make changes to purchase orders",
                                            trn, trn,
                                            "Nothing to do: There are no received quantities to "
                                            "process. The procedure was cancelled",
                                            "Nothing done: Nothing was done."}));
        QVERIFY(boxes->shown().at(3).flags == vbInformation &&
                boxes->shown().at(4).flags == vbInformation);
        QCOMPARE(DumpAll(), before);

        // More than outstanding: declined writes nothing.
        Type(rows, 1, "12");
        boxes->clear();
        boxes->answer(vbNo);
        boxes->answer(vbOK);
        QCOMPARE(Book(rows), int(kBookInNothingDone));
        QCOMPARE(Said(*boxes).first(), "Check Quantities: There is at least one row where the "
                                       "Received Qty exceeds the OutStanding Qty.\nAre you sure "
                                       "that you want to continue?");
        QCOMPARE(DumpAll(), before);
        // Confirmed: the full quantity lands, outstanding goes negative, the order stays listed
        // and the item's on-order figure falls below zero.
        boxes->answer(vbYes);
        QCOMPARE(Book(rows), int(kBookInDone));
        QCOMPARE(Figures(), "12.0|-2.0|12.0");
        QVERIFY(Column(LoadOutstandingOrders(), GinListCol::POID).contains("3"));

        // An order with nothing outstanding, opened with its completed rows: "complete" asked
        // (and the "over" question not asked as well).
        rows = LoadOrderRows(4, true);
        Type(rows, 1, "1");
        boxes->clear();
        boxes->answer(vbNo);
        boxes->answer(vbOK);
        QCOMPARE(Book(rows), int(kBookInNothingDone));
        QCOMPARE(Said(*boxes).first(), AppName() + ": This Order seems to be completed already and "
                                                   "has nothing outstanding\nAre you sure that you "
                                                   "want to continue and receive more items?");
        QCOMPARE(boxes->shown().at(0).flags & 7, int(vbYesNo));
        boxes->answer(vbYes);
        QCOMPARE(Book(rows), int(kBookInDone));
        QCOMPARE(boxes->shown().size(), 3);
        QCOMPARE(ItemField(12, "Qty"), "1");
    }

    void failureLeavesEverythingAsItWas() {
        Order(8, 1);
        for (int item : {10, 11, 12, 13})
            OrderRow(8, item, "5", "0"); // RowIDs 8 to 11
        // The file refuses the history row of the third order row.
        ExecSql("CREATE TRIGGER failThird BEFORE INSERT ON tblItemHistory WHEN NEW.HistID2 = 10 "
                "BEGIN SELECT RAISE(ABORT, 'refused'); END");
        const QStringList before = DumpAll();
        GoodsInArray rows = LoadOrderRows(8, false);
        for (int r = 1; r <= 4; ++r)
            Type(rows, r, "1");
        boxes->answer(vbOK);
        boxes->answer(vbOK);
        QCOMPARE(Book(rows), int(kBookInNothingDone));
        QCOMPARE(Said(*boxes), QStringList({"Error: An error occured. The error Number is "
                                            "DQ-Gi-3014\n\nThe transaction was not committed. You "
                                            "can try again",
                                            "Nothing done: Nothing was done."}));
        QCOMPARE(DumpAll(), before);
        // The rows marked before the failure are unmarked.
        QCOMPARE(Column(rows, GinCol::NConf), QStringList(4, QString()));
    }

    void twoWorkstationsBookTheSameRow() {
        // Both workstations load order 3's open row; one books while the other still shows
        // its load: both quantities land, as two "RX" rows.
        GoodsInArray first = LoadOrderRows(3, false), second = LoadOrderRows(3, false);
        Type(second, 1, "4");
        QCOMPARE(Book(second, "WS-4"), int(kBookInDone));
        Type(first, 1, "3");
        QCOMPARE(Book(first, "WS-3"), int(kBookInDone));
        QCOMPARE(Figures(), "7.0|3.0|7.0");
        QCOMPARE(SqlFirst("SELECT group_concat(HistTRN || ':' || HistQty, ',') FROM (SELECT * "
                          "FROM tblItemHistory WHERE HistType='RX' ORDER BY HistTRN)"),
                 "WS-3:3.0,WS-4:4.0");
    }
};

QTEST_GUILESS_MAIN(TestGoodsIn)
#include "test_goodsin.moc"
