#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "sales/CustOrder.h"
#include "sales/CustOrderSave.h"
#include "sales/SalesLists.h"
#include "tests/sales/SalesFixture.h"
#include "tests/support/TestSupport.h"

#include <QTest>

using namespace sales_fixture;

namespace {
// A new order for a customer, its rows given as (stock, price, sell price, quantity).
CustOrderSheet newOrder(const QString& custID, const QList<QStringList>& rows) {
    CustOrderSheet s;
    s.mode = OrderMode::NewOrder;
    SetupOrderGrid(s);
    s.custID = custID;
    for (const QStringList& r : rows) {
        OrderRow row = sheetRow(r[1], r[2], r[3]);
        row[OrderCol::Item] = QString::number(s.rows.size() + 1);
        row[OrderCol::StockID] = r[0];
        row[OrderCol::Done] = QStringLiteral("0");
        s.rows.append(row);
    }
    return s;
}

QString header(qint32 order) {
    return SqlFirst(QStringLiteral("SELECT CustID || '|' || SalesRef || '|' || CustOrRef || '|' "
                                   "|| CustOrDate || '|' || ORDiscount FROM tblCustOrders WHERE "
                                   "CustBasketID=") +
                    QString::number(order));
}

QStringList detail(qint32 order) {
    QStringList out;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT StockID, OrderedQty, GrosPrice, NetPrice, ShippedQty FROM "
                       "tblCustOrderDetail WHERE CustBasketDetailID=") +
        QString::number(order) + QStringLiteral(" ORDER BY RowID"));
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList cells;
        for (int c = 0; c < 5; ++c)
            cells << rs.Fields(c).Text();
        out << cells.join(QLatin1Char('|'));
    }
    return out;
}

QStringList listed(const SalesList& list, int column) {
    QStringList out;
    for (int r = 1; r <= list.data.Rows(); ++r)
        out << list.data(column, r).toString();
    return out;
}
} // namespace

class TestCustOrderSave : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    void orderNumbers() {
        TestData data;
        const qint32 c = addCustomer(QStringLiteral("Acme"), 0);
        CustOrderSheet first = newOrder(QString::number(c), {{"1", "1.00", "1.00", "1"}});
        QCOMPARE(SaveCustomerOrder(first), 1);
        QCOMPARE(first.custBasketID, QStringLiteral("0001"));

        addOrder(11, c, {}, 0);
        // A typed number below the next one is replaced, and the box says so.
        CustOrderSheet low = newOrder(QString::number(c), {{"1", "1.00", "1.00", "1"}});
        low.custBasketID = QStringLiteral("0005");
        QCOMPARE(SaveCustomerOrder(low), 12);
        QCOMPARE(low.custBasketID, QStringLiteral("0012"));
        // A higher one moves the sequence up.
        CustOrderSheet high = newOrder(QString::number(c), {{"1", "1.00", "1.00", "1"}});
        high.custBasketID = QStringLiteral("0500");
        QCOMPARE(SaveCustomerOrder(high), 500);
        QCOMPARE(high.custBasketID, QStringLiteral("0500"));
        QCOMPARE(NextCustBasketID(), 501);
        // A saved order keeps its number whatever comes next.
        high.mode = OrderMode::SavedOrder;
        QCOMPARE(SettleOrderNumber(high), 500);
    }

    void everyColumnAsWritten() {
        TestData data;
        ScriptedBoxes boxes;
        const qint32 c = addCustomer(QStringLiteral("Acme"), 0);
        SetToday(QDate(2026, 11, 23));
        CustOrderSheet s = newOrder(QString::number(c), {{"7", "10.123456", "9.5", "2.555"},
                                                         {"8", "3.00", "2.70", "0"},
                                                         {"9", "4.00", "3.60", "-2"},
                                                         {"8", "3.00", "2.70", "1"}});
        s.custOrNo = QStringLiteral("PO`7");
        s.orDate = QStringLiteral("01/01/2020"); // never written: the date is today's
        s.discount = QStringLiteral("7.5");
        // Mode 1 checks nothing: the rows at 0 and below are dropped without a word.
        QVERIFY(SaveOrderCommand(s));
        QCOMPARE(boxes.shown().size(), 0);
        QCOMPARE(header(1), QString::number(c) + QStringLiteral("||PO`7|2026-11-23|7.5"));
        QCOMPARE(detail(1), QStringList({"7|2.56|10.12346|9.5|0", "8|1|3|2.7|0"}));

        // The same figures typed on a comma locale.
        LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
        CustOrderSheet comma = newOrder(QString::number(c), {{"7", "10,123456", "9,5", "2,555"}});
        comma.discount = QStringLiteral("7,5");
        QCOMPARE(SaveCustomerOrder(comma), 2);
        QCOMPARE(header(2), QString::number(c) + QStringLiteral("|||2026-11-23|7.5"));
        QCOMPARE(detail(2), QStringList({"7|2.56|10.12346|9.5|0"}));
    }

    void savedOrderChecksAndChanges() {
        TestData data;
        ScriptedBoxes boxes;
        const qint32 acme = addCustomer(QStringLiteral("Acme"), 0);
        const qint32 other = addCustomer(QStringLiteral("Other"), 0);
        addItem(1, QStringLiteral("A-1"), QStringLiteral("Widget"), 10);
        addItem(2, QStringLiteral("B-2"), QStringLiteral("Gadget"), 4);
        addItem(3, QStringLiteral("C-3"), QStringLiteral("Cog"), 2);
        addOrder(12, acme, QStringLiteral("PO-7"), 5, QStringLiteral("2026-03-04"));
        addOrderRow(12, 1, 10, 3, 10, 9.5);
        addOrderRow(12, 2, 2, 0, 4, 3.8);
        addOrderRow(12, 3, 5, 0, 2, 1.9);
        CustOrderSheet s;
        FormLoadSheet(s, OrderMode::SavedOrder, 12);
        const QStringList before = detail(12);

        // Done 3 with OrderQty 2, and -1 on a new row: one box, one line each, nothing written.
        s.rows[0][OrderCol::OrderQty] = QStringLiteral("2");
        s.rows[1][OrderCol::OrderQty] = QStringLiteral("-1");
        OrderRow added = s.rows[2];
        added[OrderCol::Item] = QStringLiteral("4");
        added[OrderCol::Done] = QStringLiteral("0");
        added[OrderCol::RowID].clear();
        added[OrderCol::OrderQty] = QStringLiteral("-1");
        s.rows.append(added);
        boxes.answer(vbOK);
        QVERIFY(!SaveOrderCommand(s));
        QCOMPARE(boxes.prompts().last(),
                 QStringLiteral("The order could not be saved because of the reasons listed below"
                                "\nThe Qty in Row 1 is below the Qty already supplied to the "
                                "customer\nThe Qty in Row 2 is below the Qty already supplied to "
                                "the customer\nThe Qty in Row 4 is below the Qty already supplied "
                                "to the customer"));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Can't save"));
        QCOMPARE(boxes.shown().last().flags, int(vbInformation));
        QCOMPARE(detail(12), before);

        // Below zero only where nothing was supplied yet and Done reads below it.
        CustOrderSheet neg = s;
        neg.rows = {s.rows[1]};
        neg.rows[0][OrderCol::Done] = QStringLiteral("-5");
        boxes.answer(vbOK);
        QVERIFY(!ValidateOrderQuantities(neg));
        QCOMPARE(boxes.prompts().last(),
                 QStringLiteral("The order could not be saved because of the reasons listed below"
                                "\nThe Qty in Row 2 is below zero"));

        // Fixed: row 1 up to 12 at a new price, row 2 to 0 (deleted), row 3 as it is, the added
        // row at 4. A save changes neither the customer nor the date.
        s.rows[0][OrderCol::OrderQty] = QStringLiteral("12");
        s.rows[0][OrderCol::SellAt] = QStringLiteral("8.75");
        s.rows[0][OrderCol::Price] = QStringLiteral("99.00");
        s.rows[1][OrderCol::OrderQty] = QStringLiteral("0");
        s.rows[3][OrderCol::OrderQty] = QStringLiteral("4");
        s.custID = QString::number(other);
        s.custOrNo = QStringLiteral("PO-8");
        s.discount = QStringLiteral("10");
        QVERIFY(SaveOrderCommand(s));
        QCOMPARE(s.custBasketID, QStringLiteral("0012"));
        QCOMPARE(header(12), QString::number(acme) + QStringLiteral("||PO-8|2026-03-04|10.0"));
        QCOMPARE(detail(12), QStringList({"1|12|10|8.75|3", "3|5|2|1.9|0", "3|4|2|1.9|0"}));
        // The added row has a key of its own; the deleted row's key is gone.
        QCOMPARE(SqlFirst("SELECT group_concat(RowID) FROM (SELECT RowID FROM tblCustOrderDetail "
                          "ORDER BY RowID)"),
                 QStringLiteral("1,3,4"));

        // An empty order is refused before anything is written.
        CustOrderSheet empty;
        empty.mode = OrderMode::NewOrder;
        boxes.answer(vbOK);
        QVERIFY(!SaveOrderCommand(empty));
        QCOMPARE(boxes.prompts().last(), QStringLiteral("Can't save an empty order"));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Order has no items"));
        QCOMPARE(SqlFirst("SELECT COUNT(*) FROM tblCustOrders"), QStringLiteral("1"));
    }

    void aFailingRowKeepsWhatCameBefore() {
        TestData data;
        const qint32 c = addCustomer(QStringLiteral("Acme"), 0);
        ExecSql("CREATE TRIGGER third BEFORE INSERT ON tblCustOrderDetail WHEN (SELECT COUNT(*) "
                "FROM tblCustOrderDetail WHERE CustBasketDetailID = NEW.CustBasketDetailID) >= 2 "
                "BEGIN SELECT RAISE(ABORT, 'row refused'); END");
        CustOrderSheet s = newOrder(QString::number(c), {{"1", "1.00", "1.00", "1"},
                                                         {"2", "2.00", "2.00", "2"},
                                                         {"3", "3.00", "3.00", "3"},
                                                         {"4", "4.00", "4.00", "4"}});
        QVERIFY_THROWS_EXCEPTION(DbError, SaveCustomerOrder(s));
        QCOMPARE(SqlFirst("SELECT COUNT(*) FROM tblCustOrders"), QStringLiteral("1"));
        QCOMPARE(detail(1), QStringList({"1|1|1|1|0", "2|2|2|2|0"}));
    }

    void twoWorkstationsTakeOneNumber() {
        TestData data;
        const qint32 first = addCustomer(QStringLiteral("First"), 0);
        const qint32 second = addCustomer(QStringLiteral("Second"), 0);
        CustOrderSheet a = newOrder(QString::number(first), {{"1", "1.00", "1.00", "1"}});
        a.custOrNo = QStringLiteral("A-REF");
        a.discount = QStringLiteral("1");
        CustOrderSheet b = newOrder(QString::number(second),
                                    {{"2", "2.00", "2.00", "2"}, {"3", "3.00", "3.00", "3"}});
        b.custOrNo = QStringLiteral("B-REF");
        b.discount = QStringLiteral("2");
        // Both read the next number before either has written.
        const qint32 na = SettleOrderNumber(a);
        const qint32 nb = SettleOrderNumber(b);
        QCOMPARE(na, 1);
        QCOMPARE(nb, 1);
        SetToday(QDate(2026, 11, 23));
        WriteCustomerOrder(a, na);
        SetToday(QDate(2026, 11, 24));
        WriteCustomerOrder(b, nb);
        QCOMPARE(SqlFirst("SELECT COUNT(*) FROM tblCustOrders"), QStringLiteral("1"));
        QCOMPARE(header(1), QString::number(first) + QStringLiteral("||B-REF|2026-11-23|2.0"));
        QCOMPARE(detail(1), QStringList({"1|1|1|1|0", "2|2|2|2|0", "3|3|3|3|0"}));
    }

    void listsOfOrdersAndInvoices() {
        TestData data;
        const qint32 acme = addCustomer(QStringLiteral("Acme"), 0);
        const qint32 beta = addCustomer(QStringLiteral("Beta"), 0);
        addOrder(3, acme, QStringLiteral("done"), 0, QStringLiteral("2026-02-01"));
        addOrderRow(3, 1, 2, 2, 1, 1);
        addOrderRow(3, 2, 1, 1, 1, 1);
        addOrder(1, beta, QStringLiteral("open"), 0, QStringLiteral("2026-01-15"));
        addOrderRow(1, 1, 5, 0, 1, 1);
        addOrderRow(1, 2, 5, 1, 1, 1);
        addOrder(2, acme, QStringLiteral("mixed"), 0, QStringLiteral("2040-01-01"));
        addOrderRow(2, 1, 4, 4, 1, 1);
        addOrderRow(2, 2, 4, 0, 1, 1);
        addOrder(4, beta, QStringLiteral("empty"), 0);

        const SalesList pending = ListCustomerOrders(true);
        QCOMPARE(listed(pending, 1), QStringList({"0001", "0002"}));
        QCOMPARE(listed(pending, 2), QStringList({"Beta", "Acme"}));
        QCOMPARE(listed(pending, 3), QStringList({"open", "mixed"}));
        QCOMPARE(pending.data(4, 1).toDate(), QDate(2026, 1, 15));
        QCOMPARE(pending.data(5, 1).toString(), QStringLiteral("0"));
        const SalesList completed = ListCustomerOrders(false);
        QCOMPARE(listed(completed, 1), QStringList({"0002", "0003"}));
        QCOMPARE(completed.columns.size(), 5);
        QCOMPARE(completed.columns[2].key, QStringLiteral("Customer ORNo"));
        QCOMPARE(completed.columns[0].caption, QStringLiteral("Our OrderID"));
        QVERIFY(completed.columns[4].checkBox);

        addDespatch(3, 1, 12);
        addDespatch(12345, 1, 99); // an order that does not exist: no row
        addDespatch(3, 2, 0);
        addDespatch(2, 1, 7);
        const SalesList invoices = ListInvoices();
        QCOMPARE(listed(invoices, 1), QStringList({"0000", "0007", "0012"}));
        QCOMPARE(listed(invoices, 2), QStringList({"0003-002", "0002-001", "0003-001"}));
        QCOMPARE(invoices.data(3, 1).toDate(), QDate(2026, 5, 1));
        QCOMPARE(listed(invoices, 4), QStringList({"Acme", "Acme", "Acme"}));
        QCOMPARE(invoices.columns[1].caption, QStringLiteral("Delivery"));
    }
};

QTEST_GUILESS_MAIN(TestCustOrderSave)
#include "test_custorder_save.moc"
