// The order viewer without a window: the order list in each mode, one order's rows, saving them,
// adding a supplier's item, deleting rows and orders, a save that fails part way, two
// workstations working on one order, and the item's purchase orders.
#include "foundation/Helpers.h"
#include "purchasing/ItemPOrders.h"
#include "purchasing/OrderViewer.h"
#include "tests/purchasing/PurchasingFixture.h"

#include <QTest>

using namespace fixture;

namespace {

QStringList Ids(quint8 mode, const QString& po = QString(), const QString& su = QString()) {
    const OrderArray list = LoadOrderList(mode, po, su);
    return Column(list, OListCol::OrID);
}

QString RowValues(int rowId) {
    return SqlFirst(QStringLiteral("SELECT POQty || '|' || POPrice || '|' || POSchedDate || '|' || "
                                   "RowConfirmed FROM tblPODetail WHERE RowID=%1")
                        .arg(rowId));
}

SaveOrderInput Input(const OrderArray& detail, int poid) {
    SaveOrderInput in;
    in.rows = &detail.rows;
    in.rowCount = detail.rowCount;
    in.poidText = QStringLiteral("%1").arg(poid, 4, 10, QLatin1Char('0'));
    return in;
}

// Every row of an order read and given one quantity.
OrderArray Retyped(int poid, const QString& qty) {
    OrderArray d = LoadOrderDetail(poid);
    for (int r = 1; r <= d.rowCount; ++r)
        d.rows(PODetailCol::POQty, r) = qty;
    return d;
}

} // namespace

class TestOrderViewer : public QObject, Suite {
    Q_OBJECT
private slots:
    void init() {
        gCanPurchasing = true;
        Fresh();
    }
    void cleanup() { Drop(); }

    void listModesFiltersAndEta() {
        // Order 1: a complete row met first, then an open one.
        Order(1, 1, "2026-09-30");
        OrderRow(1, 10, "5", "5", "2026-12-24");
        OrderRow(1, 11, "3", "0", "2026-11-02");
        Order(10, 2);
        OrderRow(10, 12, "2", "1", "1999-03-03");
        Order(12, 1);
        OrderRow(12, 10, "4", "4");
        Order(19, 2);
        OrderRow(19, 13, "1", "0");
        Order(25, 2);
        OrderRow(25, 13, "1", "0");
        Order(2, 1); // no rows: never listed
        Order(3, 7); // its supplier's record is gone: never listed
        OrderRow(3, 10, "9", "0");

        // Grouped by supplier name, then by number; one line per order.
        QCOMPARE(Ids(OrderViewMode::All), QStringList({"0001", "0012", "0010", "0019", "0025"}));
        QCOMPARE(Ids(OrderViewMode::NotCompleted), QStringList({"0001", "0010", "0019", "0025"}));
        QCOMPARE(Ids(OrderViewMode::Completed), QStringList({"0001", "0012"}));

        // The columns of a line; eta is the date of the first row met in the mode.
        const OrderArray all = LoadOrderList(OrderViewMode::All, QString(), QString());
        QCOMPARE(Joined(all.rows, 1), "0001|REF-1|Acme|30/09/2026|24/12/2026|xxxx|1|false|-Stock-");
        QCOMPARE(Column(all, OListCol::Eta), QStringList({"24/12/2026", "", "", "", ""}));
        QCOMPARE(Column(LoadOrderList(OrderViewMode::NotCompleted, {}, {}), OListCol::Eta)[0],
                 "02/11/2026");

        // "1" finds 1 and 10 to 19, not 2 or 25; the supplier filter is a prefix, any case.
        QCOMPARE(Ids(OrderViewMode::All, "1"), QStringList({"0001", "0012", "0010", "0019"}));
        QCOMPARE(Ids(OrderViewMode::All, QString(), "bo"), QStringList({"0010", "0019", "0025"}));
        QVERIFY(Ids(OrderViewMode::All, "%").isEmpty());

        // A tick in the list runs the confirm statement, which names PONumberID and so confirms
        // nothing; the list's copy takes the tick.
        OrderArray list = LoadOrderList(OrderViewMode::All, QString(), QString());
        QVector<QVariant> values;
        for (int c = 1; c <= OListCol::Count; ++c)
            values << (c == OListCol::Chk ? QVariant(true) : list.rows(c, 2));
        ConfirmOrder(list.rows, list.rowCount, 2, values);
        QCOMPARE(list.rows(OListCol::Chk, 2), QVariant(true));
        QCOMPARE(SqlFirst("SELECT sum(POConfirmed) || '/' || count(PONumberID) FROM tblPOrders"),
                 "0/0");
    }

    void detailPartsAndAddedRow() {
        Order(5, 1);
        OrderRow(5, 11, "2.5", "1", "2026-12-01", "0.125"); // RowIDs 1 to 3
        OrderRow(5, 10, "12", "0", "2026-12-01", "2");
        OrderRow(5, 12, "1", "0", "2026-11-30", "3.1");
        ExecSql("UPDATE tblPODetail SET RowConfirmed=-1 WHERE RowID=2");
        ExecSql("UPDATE tblStockItems SET OnOrderQty = 42");

        // By schedule date, then by item.
        OrderArray d = LoadOrderDetail(5);
        QCOMPARE(Joined(d.rows, 2),
                 "2|RES-10K|Value 10|Resistor 10k|S-10|01/12/2026|-1|12|0|2.00|24.00|10");
        QCOMPARE(Column(d, PODetailCol::RowPrice), QStringList({"3.10", "24.00", "0.3125"}));

        LocaleScope german(QLocale(QLocale::German, QLocale::Germany));
        ExecSql("UPDATE tblItemSupplier SET PriceEach=1.234567 WHERE ItemID=13 AND SupplierID=1");

        // Item 12 is not sold by supplier 1.
        boxes->answer(vbOK);
        QVERIFY(!AddOrderRow(12, 5, 1));
        QCOMPARE(Said(*boxes).last(), "Incorrect Supplier: You can't add this item to the current "
                                      "Order because the item is not available from that supplier");
        QCOMPARE(Count("tblPODetail"), "3");

        // The added row: the supplier's number and price (as numbers, whatever the locale),
        // nothing ordered, nothing received, no date; the on-order figure is left alone.
        QVERIFY(AddOrderRow(13, 5, 1));
        QCOMPARE(SqlFirst("SELECT POID || '|' || POStockID || '|' || POSupPNo || '|' || POQty || "
                          "'|' || typeof(POPrice) || ':' || POPrice || '|' || POSchedDate || '|' "
                          "|| PORecieved || '|' || RowConfirmed FROM tblPODetail WHERE "
                          "POStockID=13"),
                 "5|13|A-13|0.0|real:1.23457|2040-01-01|0.0|0");
        QCOMPARE(ItemField(13, "OnOrderQty"), "42");

        // An order without rows says so.
        Order(6, 1);
        boxes->answer(vbOK);
        QCOMPARE(LoadOrderDetail(6).rowCount, 0);
        QCOMPARE(Said(*boxes).last(), "Empty Purchase Order: This Purchase Order has No Items "
                                      "attached. You may add items now if you wish");
        QCOMPARE(boxes->shown().last().flags, int(vbInformation));
    }

    void saveRows() {
        Order(5, 1);
        OrderRow(5, 10, "10", "6"); // RowIDs 1 to 3: lowered, closed, kept as it was
        OrderRow(5, 11, "10", "6");
        OrderRow(5, 12, "2", "0", "1999-05-05", "1.123456789");
        Order(7, 2); // another order of item 10, open by 3
        OrderRow(7, 10, "3", "0");
        ExecSql("UPDATE tblPOrders SET POComplete=5");
        ExecSql("UPDATE tblStockItems SET OnOrderQty = 99"); // stale

        OrderArray d = LoadOrderDetail(5); // RowIDs 3, 1, 2
        // Item 10's row set below what came in, item 11's set to it.
        d.rows(PODetailCol::POQty, 2) = QStringLiteral("4");
        d.rows(PODetailCol::POQty, 3) = QStringLiteral("6");
        d.rows(PODetailCol::Chk, 3) = true;
        SaveOrderRows(Input(d, 5));

        // Below received stays outstanding, by a negative figure that lowers the item's total
        // (3 open elsewhere, -2 here); set to received, the row counts no more.
        QCOMPARE(RowValues(1), "4.0|1.0|2040-01-01|0");
        QCOMPARE(RowValues(2), "6.0|1.0|2040-01-01|-1");
        QCOMPARE(SqlFirst("SELECT group_concat(OnOrderQty, '|') FROM tblStockItems"),
                 "1.0|0.0|2.0|99.0");
        // The unchanged row is rewritten all the same: the price to five places, the 1999 date
        // (shown blank) as no date.
        QCOMPARE(RowValues(3), "2.0|1.12346|2040-01-01|0");
        // Only the saved order's header is written, and with 0.
        QCOMPARE(SqlFirst("SELECT group_concat(POComplete) FROM tblPOrders"), "0,5");

        // Quantities round to their mask. With no date left, item 12's row now comes last.
        d = LoadOrderDetail(5);
        d.rows(PODetailCol::POQty, 3) = QStringLiteral("2.3456");
        SaveOrderRows(Input(d, 5));
        QCOMPARE(RowValues(3), "2.35|1.12346|2040-01-01|0");

        // A comma locale: unchanged, a row comes back as it was; typed in the locale, it is read
        // in it.
        LocaleScope german(QLocale(QLocale::German, QLocale::Germany));
        ExecSql("UPDATE tblPODetail SET POQty=2.5, POPrice=1.25, POSchedDate='2026-12-24' WHERE "
                "RowID=3");
        d = LoadOrderDetail(5);
        SaveOrderRows(Input(d, 5));
        QCOMPARE(RowValues(3), "2.5|1.25|2026-12-24|0");
        d.rows(PODetailCol::POQty, 1) = QStringLiteral("3,75");
        d.rows(PODetailCol::DelDate, 1) = ShowDate(QDate(2027, 1, 31));
        SaveOrderRows(Input(d, 5));
        QCOMPARE(RowValues(3), "3.75|1.25|2027-01-31|0");
        QCOMPARE(ItemField(12, "OnOrderQty"), "3.75");
    }

    void saveFailingPartWay() {
        Order(5, 1);
        QList<int> rows;
        for (int i = 0; i < 4; ++i)
            rows << OrderRow(5, 10 + i, "1", "0");
        ExecSql("UPDATE tblPOrders SET POComplete=5");
        ExecSql("UPDATE tblStockItems SET OnOrderQty = 99");
        ExecSql(QStringLiteral("CREATE TRIGGER failThird BEFORE UPDATE ON tblPODetail WHEN "
                               "NEW.RowID=%1 BEGIN SELECT RAISE(ABORT, 'row locked'); END")
                    .arg(rows[2]));
        QString raised;
        try {
            SaveOrderRows(Input(Retyped(5, "8"), 5));
        } catch (const DbError& e) {
            raised = e.Description();
        }
        QVERIFY(raised.contains(QStringLiteral("row locked")));
        // Each statement stood alone: the first two rows are written, the rest, the on-order
        // figures and the header are as they were.
        QCOMPARE(SqlFirst("SELECT group_concat(POQty) FROM tblPODetail"), "8.0,8.0,1.0,1.0");
        QCOMPARE(SqlFirst("SELECT group_concat(DISTINCT OnOrderQty) FROM tblStockItems"), "99.0");
        QCOMPARE(SqlFirst("SELECT POComplete FROM tblPOrders"), "5");
    }

    void deleteRowsAndOrders() {
        Order(5, 1);
        const int received = OrderRow(5, 10, "5", "5");
        const int open = OrderRow(5, 11, "4", "1");
        Order(6, 2);
        OrderRow(6, 10, "3", "0");
        OrderRow(6, 12, "2", "0");
        Order(7, 2);
        OrderRow(7, 12, "6", "0");
        ExecSql("UPDATE tblStockItems SET Qty = 5, OnOrderQty = 0");
        ExecSql(QStringLiteral("INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistID2, "
                               "HistQty) VALUES (10, '2026-11-01', 'RX', %1, 5)")
                    .arg(received));

        // Without the right: refused before any question. No is the default answer, and No
        // deletes nothing.
        gCanPurchasing = false;
        boxes->answer(vbOK);
        QCOMPARE(DeleteOrderRow(open), DeleteOutcome::Refused);
        gCanPurchasing = true;
        boxes->answer(vbNo);
        QCOMPARE(DeleteOrderRow(open), DeleteOutcome::Declined);
        boxes->answer(vbNo);
        QCOMPARE(DeleteOrder(6), DeleteOutcome::Declined);
        QCOMPARE(Said(*boxes).mid(1),
                 QStringList({"Delete Row?: Are you sure you want to delete this Row from the "
                              "order?\n\nIf you select 'Yes' the row will be deleted immediately",
                              "Delete Order?: Are you sure you want to delete this PurchaseOrder "
                              "Entirely?"}));
        for (int b : {1, 2})
            QCOMPARE(boxes->shown().at(b).flags, int(vbYesNo + vbQuestion + vbDefaultButton2));
        QCOMPARE(Count("tblPODetail"), "5");

        boxes->answer(vbYes);
        QCOMPARE(DeleteOrderRow(open), DeleteOutcome::Deleted);
        QCOMPARE(ItemField(11, "OnOrderQty"), "0");
        // A received row goes all the same: stock and history stay as booked.
        boxes->answer(vbYes);
        QCOMPARE(DeleteOrderRow(received), DeleteOutcome::Deleted);
        QCOMPARE(ItemField(10, "Qty || '/' || OnOrderQty"), "5.0/3.0");
        QCOMPARE(Count("tblItemHistory", QStringLiteral("HistID2=%1").arg(received)), "1");
        // The last row gone: the header stays, says it is empty, and never lists again.
        QCOMPARE(Count("tblPOrders", "POID=5"), "1");
        boxes->answer(vbOK);
        QCOMPARE(LoadOrderDetail(5).rowCount, 0);
        QCOMPARE(boxes->shown().last().title, "Empty Purchase Order");
        QCOMPARE(Ids(OrderViewMode::All), QStringList({"0006", "0007"}));

        // A whole order: its rows, the on-order figure of each item, then the header.
        boxes->answer(vbYes);
        QCOMPARE(DeleteOrder(6), DeleteOutcome::Deleted);
        QCOMPARE(SqlFirst("SELECT group_concat(POID) FROM tblPOrders"), "5,7");
        QCOMPARE(OnOrderMismatches(), "0");
        QVERIFY(boxes->allAnswersUsed());
    }

    void twoWorkstationsOnOneOrder() {
        Order(5, 1);
        QList<int> rows;
        for (int i = 0; i < 4; ++i)
            rows << OrderRow(5, 10 + i, QString::number(i + 2), "1");
        Order(6, 1);
        OrderRow(6, 10, "7", "0");
        OrderRow(6, 11, "3", "0");

        // Workstation A saves new quantities; between its second and third row B deletes the
        // third row, and B deletes the fourth just before A counts the items again.
        const OrderArray a = Retyped(5, "9");
        boxes->answer(vbYes);
        boxes->answer(vbYes);
        Database::BeforeNextStatementContaining(QStringLiteral("WHERE RowID=%1").arg(rows[2]), [&] {
            QCOMPARE(DeleteOrderRow(rows[2]), DeleteOutcome::Deleted);
            Database::BeforeNextStatementContaining(
                QStringLiteral(" SELECT * FROM tblPODetail WHERE POStockID=10"),
                [&] { QCOMPARE(DeleteOrderRow(rows[3]), DeleteOutcome::Deleted); });
        });
        SaveOrderRows(Input(a, 5));
        QCOMPARE(SqlFirst("SELECT group_concat(POQty) FROM tblPODetail WHERE POID=5"), "9.0,9.0");
        QCOMPARE(OnOrderMismatches(), "0");

        // A deletes an order while B saves its rows as B last read them, between A's row delete
        // and its header delete.
        const OrderArray b6 = Retyped(6, "0.5");
        boxes->answer(vbYes);
        Database::BeforeNextStatementContaining(QStringLiteral("DELETE FROM tblPOrders"),
                                                [&] { SaveOrderRows(Input(b6, 6)); });
        QCOMPARE(DeleteOrder(6), DeleteOutcome::Deleted);
        QCOMPARE(Count("tblPODetail", "POID=6"), "0");
        QCOMPARE(OnOrderMismatches(), "0");
        QVERIFY(boxes->allAnswersUsed());
    }

    void itemPurchaseOrders() {
        Order(5, 1, "2026-10-01");
        Order(9, 2, "2026-11-15");
        Order(3, 7, "2026-11-15"); // its supplier is gone
        OrderRow(5, 10, "2", "2", "2026-10-20", "1.5");
        OrderRow(9, 10, "12.5", "0", "2040-01-01", "0.12345"); // RowID 2
        ExecSql("UPDATE tblPODetail SET RowConfirmed=-1, RowComments='late' WHERE RowID=2");
        OrderRow(3, 10, "1", "0");
        OrderRow(9, 11, "1", "0");
        ExecSql("INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved) VALUES (77, 10, 1, "
                "0)"); // its header is gone

        // Newest first; read-only figures in the viewer's masks.
        const ItemPOrders list = LoadItemPOrders(10);
        QStringList lines;
        for (int r = 1; r <= list.rowCount; ++r)
            lines << Joined(list.rows, r);
        QCOMPARE(lines, QStringList({"0009|15/11/2026|Bolt|12.5|0||0.12345|Yes|late",
                                     "0003|15/11/2026||1|0||1.00|No|",
                                     "0005|01/10/2026|Acme|2|2|20/10/2026|1.50|No|",
                                     "0077|||1|0||0.00|No|"}));
        QCOMPARE(LoadItemPOrders(13).rowCount, 0);
    }
};

QTEST_GUILESS_MAIN(TestOrderViewer)
#include "test_orderviewer.moc"
