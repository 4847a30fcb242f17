// The customer order without its window: the arithmetic, loading a saved order, the add-items
// list, the sales defaults and saving an order.
#include "sales/CustOrderSave.h"
#include "sales/SalesDefaults.h"
#include "tests/sales/SalesFixture.h"

using namespace sales_fixture;

namespace {
// The two rows of the worked example: 2 x 10.125 and 1 x 3.00, delivery 5.00 at 17.5 %.
CustOrderSheet workedExample() {
    CustOrderSheet s;
    SetupOrderGrid(s);
    s.tax1Rate = "17.5";
    s.delivery = "5.00";
    s.rows = {sheetRow("1", "10.125", "10.125", "2"), sheetRow("2", "3.00", "3.00", "1")};
    return s;
}

// A new order of customer `c` with rows of (stock, price, sell price, quantity).
CustOrderSheet newOrder(qint32 c, const QList<QStringList>& rows) {
    CustOrderSheet s;
    s.custID = QString::number(c);
    for (const QStringList& r : rows)
        s.rows << sheetRow(r[0], r[1], r[2], r[3]);
    return s;
}

QString parameters(const QString& name) {
    return joined(
        SqlRows("SELECT f1, f2, f3, f4, f10 FROM tblParameters WHERE ParaName='" + name + "'"));
}

// A column of a list, or of the add-items list.
QString listed(const UBArray& list, int column) {
    QStringList out;
    for (int r = 1; r <= list.Rows(); ++r)
        out << list(column, r).toString();
    return joined(out);
}
} // namespace

class TestCustOrder : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    void arithmetic() {
        CustOrderSheet s = workedExample();
        RecalcOrderTotals(s);
        QCOMPARE(joined({column(s, OrderCol::Total), s.net, s.vat, s.total, s.text3}),
                 "20.25|3.00|23.25|4.94|33.19|17.5% ");
        s.taxOnDel = false; // the charge counts in the total only
        RecalcOrderTotals(s);
        QCOMPARE(joined({s.vat, s.total}), "4.07|32.32");

        // Discounts: the division first; 100 gives nothing, above 100 negative prices.
        QCOMPARE(SellAtFromGross(9.0075, 1), "8.91743");
        SetDiscount(s, "100");
        QCOMPARE(joined({column(s, OrderCol::SellAt), s.net, s.total}), "0.00|0.00|0.00|5.00");
        SetDiscount(s, "120");
        QCOMPARE(joined({column(s, OrderCol::SellAt), s.net, s.vat, s.total}),
                 "-2.025|-0.60|-4.65|-0.81|-0.46");

        // A price typed through fgedit is lost on leaving the discount box, which is rewritten as
        // its numeric value (an empty one as 0).
        type(s, 0, OrderCol::SellAt, "12");
        QCOMPARE(joined({s.rows[0][OrderCol::SellAt], s.rows[0][OrderCol::Total]}), "12.00|24.00");
        s.discount.clear();
        LeaveDiscount(s);
        QCOMPARE(joined({s.discount, s.rows[0][OrderCol::SellAt]}), "0|10.125");

        // Quantities go through FormatNumber; the net sums the unrounded products.
        type(s, 1, OrderCol::OrderQty, "4");
        QCOMPARE(joined({s.rows[1][OrderCol::OrderQty], s.net}), "4|32.25");
        s.rows = {sheetRow("1", "0", "0.33333", "3"), sheetRow("1", "0", "0.33333", "3")};
        RecalcOrderTotals(s);
        QCOMPARE(joined({column(s, OrderCol::Total), s.net}), "0.99999|0.99999|1.99998");

        // Modes 3 and 4 total the invoice quantity and edit it instead of the order quantity.
        for (quint8 mode : {OrderMode::InvoiceOrder, OrderMode::SavedInvoice}) {
            s = workedExample();
            s.mode = mode;
            s.rows[1][OrderCol::InvoiceQty] = "0";
            RecalcOrderTotals(s);
            PaintEditableCells(s);
            QCOMPARE(column(s, OrderCol::Total) + QString::number(s.rows[0].editable),
                     "20.25|0.00" +
                         QString::number((1 << OrderCol::SellAt) | (1 << OrderCol::InvoiceQty)));
        }

        // No rows: discount and delivery leave the totals alone.
        CustOrderSheet empty;
        empty.net = empty.total = "1.00";
        SetDiscount(empty, "50");
        SetDelivery(empty, "9.00");
        QCOMPARE(joined({empty.net, empty.vat, empty.total}), "1.00|0.00|1.00");
    }

    void loadingAndAddingItems() {
        TestData data;
        ScriptedBoxes boxes;
        // Order 12 taken at 5 % with a typed price; the customer's discount is 12 % now.
        const qint32 acme = addCustomer("Acme", 12);
        addCustomer("Acme", 0); // another customer of the same name
        addCustomer("Zed", 0, "NON");
        addItem(1, "10%RES", 10, true, "unKnown");
        addItem(2, "10ARES", 9.0075, false, "Bin 4");
        addItem(3, "X_Y", 4, true, "A1", QVariant());
        addOrder(12, acme, "PO-7", 5);
        const qint64 row1 = addOrderRow(12, 1, 10, 3.3, 10, 7.5);
        addOrderRow(12, 2, 2, 0, 4, 3.8);
        QCOMPARE(joined(LoadCustomerCombo()), "Create NEW Customer|Acme|Acme");

        CustOrderSheet s;
        FormLoadSheet(s, OrderMode::SavedOrder, 12);
        QCOMPARE(joined({s.custListText, s.custID, s.custAdd1, s.custPO, s.discount, s.custOrNo,
                         s.orDate, s.custBasketID, s.custShipID}),
                 joined({"Acme", QString::number(acme), "1 High St", "AB1 2CD", "5", "PO-7",
                         ShowDate(QDate(2026, 3, 4)), "0012", "0012-001"}));
        QCOMPARE(cells(s.rows[0]), "1|10%RES|Part 10%RES|10.00|7.50|10.0|3.3|6.7|6.7|75.00|1|" +
                                       QString::number(row1) + "|");
        QCOMPARE(joined({column(s, OrderCol::Total), column(s, OrderCol::Location), s.net}),
                 "75.00|7.60||Bin 4|82.60");

        // Invoicing it: the numbers after the highest, the invoice quantities totalled.
        addDespatch(12, 3, 41);
        FormLoadSheet(s, OrderMode::InvoiceOrder, 12);
        QCOMPARE(joined({s.custShipID, s.invoiceNo, s.net}), "0012-004|0042|57.85");

        // An order without rows says so and takes items.
        addOrder(13, acme, QString(), 25);
        boxes.answer(vbOK);
        FormLoadSheet(s, OrderMode::SavedOrder, 13);
        QCOMPARE(lastBox(boxes), "qstk3|This Customer Order appears to be empty. You can add items "
                                 "to it now if you wish");
        QCOMPARE(joined({s.custBasketID, s.discount, column(s, 1)}), "0013|25|");
        const UBArray parts = LoadPartsForOrder({}, s.discount);
        // Item 3 has no category: no filter matches it. Item 2 does not allow discount: the list
        // shows its plain price, the row the discounted one all the same.
        QCOMPARE(QString::number(parts.Rows()) + '|' + parts(6, 2).toString(), "2|9.0075");
        QVERIFY(AddPartToOrder(s, parts, 2) && !AddPartToOrder(s, parts, 9));
        QCOMPARE(cells(s.rows[0]) + ' ' + s.net,
                 "1|10ARES|Part 10ARES|9.0075|6.75563|1|0|1|1|6.75563|2||Bin 4 6.75563");

        // Without a customer nothing is added.
        CustOrderSheet none;
        boxes.answer(vbOK);
        QVERIFY(!AddPartToOrder(none, parts, 1));
        QCOMPARE(lastBox(boxes), "Customer?|You must select a customer before adding items to the "
                                 "customer's order");
        QVERIFY(none.rows.isEmpty() && boxes.allAnswersUsed());

        // Filters contain their text; "%" and "_" match only themselves, apostrophes go.
        QCOMPARE(joined({listed(LoadPartsForOrder({"0%R", {}, {}}, {}), 2),
                         listed(LoadPartsForOrder({"1'0", "art", "ES"}, {}), 2)}),
                 "10%RES|10%RES|10ARES");
    }

    void defaults() {
        TestData data;
        ScriptedBoxes boxes;
        CustOrderSheet s;
        FormLoadSheet(s, OrderMode::NewOrder, 0);
        QCOMPARE(joined({s.tax1Rate, s.deliveryText, s.vatText, s.totalText, s.invoiceNo,
                         QString::number(s.taxOnDel)}),
                 "0|Delivery   |Sales Tax (VAT)   |Total   |0001|1");
        ExecSql("INSERT INTO tblParameters (ParaName, f1, f2, f3, f4) VALUES ('ShippingPars', "
                "'Carriage', '7.5', 'N', ''), ('TaxRates', '20', '', '', 'VAT'), "
                "('InvTerms', 'Net 30 days', '', '', '')");
        FormLoadSheet(s, OrderMode::NewOrder, 0);
        QCOMPARE(joined({s.deliveryText, s.deliveryCost, s.delivery, s.tax1Rate, s.text3, s.vatText,
                         s.notes, QString::number(s.taxOnDel)}),
                 "Carriage  |7.50|7.50|20.0|20.0% |VAT  |Net 30 days|0");
        // Only "N" clears the tick; a blank tax name keeps the label.
        ExecSql("UPDATE tblParameters SET f3='n', f4='  '");
        CustOrderSheet t;
        LoadSalesDefaults(t);
        QCOMPARE(QString::number(t.taxOnDel) + t.vatText, "1Sales Tax (VAT)   ");

        // The tax panel: on No the row stays and the open document follows all the same, the
        // total waiting; Yes twice leaves one row.
        s = workedExample();
        RecalcOrderTotals(s);
        s.tax1Name = "GST";
        s.tax1Rate = "10";
        boxes.answer(vbNo);
        SaveSalesTaxDefaults(s);
        QCOMPARE(lastBox(boxes), "Save|Save this tax name/description and rate (percentage) as "
                                 "your Sales Tax default?");
        QCOMPARE(joined({s.vat, s.total, parameters("TaxRates")}), "2.83|33.19|20||n|  |");
        boxes.answer(vbYes);
        SaveSalesTaxDefaults(s);
        QCOMPARE(parameters("TaxRates"), "10|||GST|");
        s.shipChgsName = "Courier";
        s.deliveryCost = "12.5";
        s.taxOnDel = false;
        boxes.answer(vbYes);
        QVERIFY(SaveDeliveryDefaults(s));
        QCOMPARE(joined({s.deliveryText, s.delivery, s.total, parameters("ShippingPars")}),
                 "Courier|12.5|38.08|Courier|12.50|N||");
        boxes.answer(vbYes);
        SaveNotesDefault("Pay\nin 30");
        QCOMPARE(parameters("InvTerms"), "Pay\nin 30||n|  |"); // one row, updated in place

        // The insert after the delete fails: no row, and the next window starts from scratch.
        boxes.answer(vbYes);
        Database::FailNextStatementContaining("INSERT INTO tblParameters");
        QVERIFY_THROWS_EXCEPTION(DbError, SaveDeliveryDefaults(s));
        CustOrderSheet next;
        FormLoadSheet(next, OrderMode::NewOrder, 0);
        QCOMPARE(joined({parameters("ShippingPars"), next.deliveryText, next.delivery}),
                 "|Delivery   |0.00");
        QVERIFY(next.taxOnDel && boxes.allAnswersUsed());
    }

    void savingOrders() {
        TestData data;
        ScriptedBoxes boxes;
        const qint32 c = addCustomer("Acme", 0);
        // The number saved under and the box after, for a typed number.
        const auto saved = [c](const QString& typed) {
            CustOrderSheet s = newOrder(c, {{"1", "1.00", "1.00", "1"}});
            s.custBasketID = typed;
            return QString::number(SaveCustomerOrder(s)) + ' ' + s.custBasketID;
        };
        QCOMPARE(saved({}), "1 0001");
        addOrder(11, c);
        QCOMPARE(saved("0500"), "500 0500");
        QCOMPARE(NextCustBasketID(), 501);
        ExecSql("DELETE FROM tblCustOrders WHERE CustBasketID=500");
        QCOMPARE(saved("0005"), "12 0012");

        // Mode 1 checks nothing: rows at 0 and below are dropped without a word. Every column as
        // written, with "." on a comma locale; the date today's, never the box's.
        CustOrderSheet s = newOrder(c, {{"7", "10,123456", "9,5", "2,555"},
                                        {"8", "3,00", "2,70", "0"},
                                        {"9", "4,00", "3,60", "-2"},
                                        {"8", "3,00", "2,70", "1"}});
        s.custOrNo = "PO`7";
        s.orDate = "01/01/2020";
        s.discount = "7,5";
        {
            LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
            QVERIFY(SaveOrderCommand(s));
        }
        QCOMPARE(orderHeader(13), QString::number(c) + "||PO`7|2026-11-23|7.5");
        QCOMPARE(orderRows(13), QStringList({"7|2.56|0|10.12346|9.5", "8|1|0|3|2.7"}));

        // A saved order: below Done, and -1 on a new row, refused in one box.
        const qint32 other = addCustomer("Other", 0);
        addItem(1, "A-1", 10);
        addItem(2, "B-2", 4);
        addOrder(20, c, "PO-7", 5);
        addOrderRow(20, 1, 10, 3, 10, 9.5);
        addOrderRow(20, 2, 2, 0, 4, 3.8);
        addOrderRow(20, 2, 5, 0, 2, 1.9);
        FormLoadSheet(s, OrderMode::SavedOrder, 20);
        s.rows[0][OrderCol::OrderQty] = "2";
        s.rows << s.rows[2];
        s.rows[3][OrderCol::Item] = "4";
        s.rows[3][OrderCol::RowID].clear();
        s.rows[3][OrderCol::OrderQty] = "-1";
        const QStringList before = orderRows(20);
        boxes.answer(vbOK);
        QVERIFY(!SaveOrderCommand(s));
        QCOMPARE(lastBox(boxes), "Can't save|The order could not be saved because of the reasons "
                                 "listed below\nThe Qty in Row 1 is below the Qty already "
                                 "supplied to the customer\nThe Qty in Row 4 is below the Qty "
                                 "already supplied to the customer");
        QCOMPARE(orderRows(20), before);

        // Fixed: a new price and quantity (GrosPrice kept), row 2 at 0 deleted, the added row
        // under a key of its own. Customer and date stay, reference and discount change.
        s.rows[0][OrderCol::OrderQty] = "12";
        s.rows[0][OrderCol::SellAt] = "8.75";
        s.rows[0][OrderCol::Price] = "99.00";
        s.rows[1][OrderCol::OrderQty] = "0";
        s.rows[3][OrderCol::OrderQty] = "4";
        s.custID = QString::number(other);
        s.custOrNo = "PO-8";
        s.discount = "10";
        QVERIFY(SaveOrderCommand(s));
        QCOMPARE(orderHeader(20), QString::number(c) + "||PO-8|2026-03-04|10");
        QCOMPARE(orderRows(20), QStringList({"1|12|3|10|8.75", "2|5|0|2|1.9", "2|4|0|2|1.9"}));

        CustOrderSheet empty;
        boxes.answer(vbOK);
        QVERIFY(!SaveOrderCommand(empty));
        QCOMPARE(lastBox(boxes), "Order has no items|Can't save an empty order");
    }

    void saveFailureAndTwoWorkstations() {
        TestData data;
        const qint32 first = addCustomer("First", 0);
        const qint32 second = addCustomer("Second", 0);
        // No transaction: the third row's insert fails, the header and two rows stay.
        ExecSql("CREATE TRIGGER third BEFORE INSERT ON tblCustOrderDetail WHEN (SELECT COUNT(*) "
                "FROM tblCustOrderDetail) >= 2 BEGIN SELECT RAISE(ABORT, 'refused'); END");
        CustOrderSheet f = newOrder(
            first,
            {{"1", "1.00", "1.00", "1"}, {"2", "2.00", "2.00", "2"}, {"3", "3.00", "3.00", "3"}});
        QVERIFY_THROWS_EXCEPTION(DbError, SaveCustomerOrder(f));
        QCOMPARE(orderHeader(1), QString::number(first) + "|||2026-11-23|0");
        QCOMPARE(orderRows(1), QStringList({"1|1|0|1|1", "2|2|0|2|2"}));
        ExecSql("DROP TRIGGER third");

        // Two workstations read the next number before either writes: one header, the first's
        // customer and date with the second's reference and discount, holding both sets of rows.
        CustOrderSheet a = newOrder(first, {{"1", "1.00", "1.00", "1"}});
        CustOrderSheet b = newOrder(second, {{"2", "2.00", "2.00", "2"}});
        a.custOrNo = "A-REF";
        b.custOrNo = "B-REF";
        b.discount = "2";
        const qint32 na = SettleOrderNumber(a);
        QCOMPARE(SettleOrderNumber(b), na);
        WriteCustomerOrder(a, na);
        SetToday(QDate(2026, 11, 24));
        WriteCustomerOrder(b, na);
        QCOMPARE(SqlRows("SELECT COUNT(*) FROM tblCustOrders"), QStringList({"2"}));
        QCOMPARE(orderHeader(na), QString::number(first) + "||B-REF|2026-11-23|2");
        QCOMPARE(orderRows(na), QStringList({"1|1|0|1|1", "2|2|0|2|2"}));
    }
};

QTEST_GUILESS_MAIN(TestCustOrder)
#include "test_custorder.moc"
