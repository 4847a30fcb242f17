// The basket procedures without a window: the supplier list, a supplier's basket rows, the
// commit of an edited row, the order value and the supplier's parts.
#include "foundation/Globals.h"
#include "purchasing/PurchaseBasket.h"
#include "tests/purchasing/PurchasingFixture.h"

#include <QTest>

namespace {

// The 12 values of a grid row made from an array row, as the grid hands them to the commit.
QVector<QVariant> GridRow(const UBArray& rows, int r, bool remove = false) {
    QVector<QVariant> v;
    for (int c = 1; c <= BasketCol::Count; ++c)
        v << rows(c, r);
    v << remove;
    return v;
}

// One row of an array, its cells joined by "|".
QString Joined(const UBArray& rows, int r) {
    QStringList cells;
    for (int c = 1; c <= rows.Columns(); ++c)
        cells << rows(c, r).toString();
    return cells.join(QLatin1Char('|'));
}

QString Basket(int rowId, const QString& column) {
    return SqlFirst(
        QStringLiteral("SELECT %1 FROM tblBaskets WHERE RowID=%2").arg(column).arg(rowId));
}

} // namespace

class TestBasket : public QObject {
    Q_OBJECT
private slots:
    void supplierList() {
        TestData data;
        ScriptedBoxes boxes;
        fixture::Supplier(3, QStringLiteral("Zeta Components"));
        fixture::Supplier(1, QStringLiteral("Acme Parts"));
        fixture::Supplier(2, QStringLiteral("Bolt Non Stock"), QStringLiteral("NON"));
        // By company name; "No Supplier" is listed, the non-stock supplier is not.
        const SupplierList list = LoadSupplierList();
        QCOMPARE(list.names, QStringList({"Acme Parts", "No Supplier", "Zeta Components"}));
        QCOMPARE(list.ids, QList<qint32>({1, 0, 3}));

        ExecSql(QStringLiteral("DELETE FROM tblSupAddresses"));
        boxes.answer(vbOK);
        QVERIFY(LoadSupplierList().ids.isEmpty());
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown().at(0).title, QStringLiteral("Empty Supplier's List"));
        QVERIFY(boxes.shown().at(0).prompt.startsWith(
            QStringLiteral("There are no supplier records in the database. You won't be able")));
    }

    void basketRows() {
        TestData data;
        ScriptedBoxes boxes;
        fixture::Supplier(1, QStringLiteral("Acme"));
        fixture::Supplier(2, QStringLiteral("Bolt"));
        fixture::Supplier(3, QStringLiteral("Cobalt"));
        fixture::Item(10, QStringLiteral("**RES-10K"));
        fixture::Item(11, QStringLiteral("CAP-1U"));
        fixture::Item(12, QStringLiteral("IND-5M"));
        fixture::Link(10, 1, QStringLiteral("2"), QStringLiteral("A-10"), QStringLiteral("100"));
        fixture::Link(10, 2, QStringLiteral("1.875"), QStringLiteral("B-10"));
        fixture::Link(11, 1, QStringLiteral("0.12345"), QString());
        fixture::Link(12, 2, QStringLiteral("3"), QStringLiteral("B-12")); // not with Acme
        const int r1 = fixture::BasketRow(11, QStringLiteral("1.5"), 1, "'2026-12-24'");
        const int r2 = fixture::BasketRow(10, QStringLiteral("12"), 0);
        const int r3 = fixture::BasketRow(12, QStringLiteral("4"), 1);
        const int r4 = fixture::BasketRow(10, QStringLiteral("0"), -1, "'1999-05-01'");

        // In the order of entry; "**" cut; quantities by the mask; the no-date value, no date
        // and a date of 1999 all blank; any flag but 0 ticked; the supplier's price and number.
        const BasketLoad a = LoadBasket(1);
        QCOMPARE(a.rowCount, 3);
        QCOMPARE(Joined(a.rows, 1), QStringLiteral("CAP-1U|Value 11|Item 11|1.5|1|24/12/2026|"
                                                   "true|%1|11|0.12345|")
                                        .arg(r1));
        QCOMPARE(Joined(a.rows, 2),
                 QStringLiteral("RES-10K|Value 10|Item 10|12|100||false|%1|10|2.00|A-10").arg(r2));
        QCOMPARE(Joined(a.rows, 3),
                 QStringLiteral("RES-10K|Value 10|Item 10|0|100||true|%1|10|2.00|A-10").arg(r4));
        // The same basket rows under the other supplier, at that supplier's price.
        const BasketLoad b = LoadBasket(2);
        QCOMPARE(b.rowCount, 3);
        QCOMPARE(Joined(b.rows, 1),
                 QStringLiteral("RES-10K|Value 10|Item 10|12|1||false|%1|10|1.875|B-10").arg(r2));
        QCOMPARE(b.rows(BasketCol::RowID, 2).toInt(), r3);
        // A supplier with nothing waiting: no rows at all.
        QCOMPARE(LoadBasket(3).rowCount, 0);
        QCOMPARE(LoadBasket(3).rows.Rows(), 0);

        // The selected entry: the supplier's id goes to the global; no selection says so.
        const auto refreshed = RefreshCurrentBasket(1, {1, 2});
        QVERIFY(refreshed && refreshed->rowCount == 3);
        QCOMPARE(gBasketSupplierID, 2);
        boxes.answer(vbOK);
        QVERIFY(!RefreshCurrentBasket(-1, {1, 2}));
        QCOMPARE(boxes.prompts(), QStringList(QStringLiteral("Can't complete the requested "
                                                             "operation. The supplier has been "
                                                             "deselected")));
    }

    void commitRows() {
        TestData data;
        fixture::Supplier(1, QStringLiteral("Acme"));
        fixture::Item(10, QStringLiteral("RES-10K"));
        fixture::Link(10, 1, QStringLiteral("2.5"), QStringLiteral("A-10"));
        const int first = fixture::BasketRow(10, QStringLiteral("0"), 1);
        const int second = fixture::BasketRow(10, QStringLiteral("3"), 1, "'1999-01-01'");
        BasketLoad load = LoadBasket(1);

        // Quantity through Val, date left empty, tick off, price overtyped: the price lasts in
        // the array only.
        QVector<QVariant> v = GridRow(load.rows, 1);
        v[BasketCol::ReqQty - 1] = QStringLiteral("12x");
        v[BasketCol::Ticked - 1] = false;
        v[BasketCol::Price - 1] = QStringLiteral("9.99");
        QCOMPARE(CommitBasketRow(load.rows, load.rowCount, 1, v), BasketCommit::Written);
        QCOMPARE(Basket(first, QStringLiteral("ReqQty || '|' || OrderYN || '|' || DelDate")),
                 QStringLiteral("12.0|0|2040-01-01"));
        QCOMPARE(load.rows(BasketCol::ReqQty, 1), QVariant(12.0));
        QCOMPARE(load.rows(BasketCol::Price, 1).toString(), QStringLiteral("9.99"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT PriceEach FROM tblItemSupplier")),
                 QStringLiteral("2.5"));

        // A tick is written as True; a date of 1999 (shown blank) becomes the no-date value; a
        // date picked in the calendar is kept.
        v = GridRow(load.rows, 2);
        QCOMPARE(CommitBasketRow(load.rows, load.rowCount, 2, v), BasketCommit::Written);
        QCOMPARE(Basket(second, QStringLiteral("OrderYN || '|' || DelDate")),
                 QStringLiteral("-1|2040-01-01"));
        v[BasketCol::DelDate - 1] = QStringLiteral("05/01/2027");
        v[BasketCol::ReqQty - 1] = QStringLiteral("2.25");
        QCOMPARE(CommitBasketRow(load.rows, load.rowCount, 2, v), BasketCommit::Written);
        QCOMPARE(Basket(second, QStringLiteral("ReqQty || '|' || DelDate")),
                 QStringLiteral("2.25|2027-01-05"));

        // Only ticked rows count in the order value: 2.25 x 2.50.
        QCOMPARE(RecalcOrderValue(load.rows, load.rowCount), QStringLiteral("5.625"));
        load.rows(BasketCol::Ticked, 2) = false;
        QCOMPARE(RecalcOrderValue(load.rows, load.rowCount), QStringLiteral("0.00"));

        // Remove on one of the item's two rows deletes that row alone.
        QCOMPARE(CommitBasketRow(load.rows, load.rowCount, 1, GridRow(load.rows, 1, true)),
                 BasketCommit::Removed);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT group_concat(RowID) FROM tblBaskets")),
                 QString::number(second));
        // An array with no rows takes no write.
        UBArray empty;
        QCOMPARE(CommitBasketRow(empty, 0, 1, GridRow(load.rows, 2)), BasketCommit::NoRows);
        QCOMPARE(Basket(second, QStringLiteral("ReqQty")), QStringLiteral("2.25"));

        // A comma locale: the list in its writing, the statement with ".", and Val reading only
        // up to the comma.
        LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
        ExecSql(QStringLiteral("UPDATE tblBaskets SET ReqQty=1.5"));
        load = LoadBasket(1);
        QCOMPARE(load.rows(BasketCol::ReqQty, 1).toString(), QStringLiteral("1,5"));
        QCOMPARE(load.rows(BasketCol::Price, 1).toString(), QStringLiteral("2,50"));
        QCOMPARE(RecalcOrderValue(load.rows, load.rowCount), QStringLiteral("3,75"));
        v = GridRow(load.rows, 1);
        v[BasketCol::ReqQty - 1] = QStringLiteral("7,5");
        CommitBasketRow(load.rows, load.rowCount, 1, v);
        QCOMPARE(Basket(second, QStringLiteral("ReqQty")), QStringLiteral("7"));
    }

    void supplierParts() {
        TestData data;
        ScriptedBoxes boxes;
        fixture::Supplier(1, QStringLiteral("Acme"));
        fixture::Supplier(2, QStringLiteral("Bolt"));
        const QStringList parts = {"RES-10K", "R%X", "**RELAY", "CAP-1U"};
        for (int i = 0; i < parts.size(); ++i) {
            fixture::Item(10 + i, parts[i]);
            fixture::Link(10 + i, 1, QStringLiteral("2"), QStringLiteral("A-%1").arg(10 + i),
                          QStringLiteral("2.5"));
        }
        fixture::Item(14, QStringLiteral("RES-22K"));
        fixture::Link(14, 2, QStringLiteral("1"), QStringLiteral("B-14"));

        const BasketLoad all = ShowSupplierParts(1, QString());
        QCOMPARE(all.rowCount, 4);
        QCOMPARE(Joined(all.rows, 1),
                 QStringLiteral("12|**RELAY|Value 12|CAT|Item 12|2.00|2.5|A-12"));
        QCOMPARE(all.rows(PartCol::PartNo, 4).toString(), QStringLiteral("RES-10K"));
        // A left-anchored match on the stored part number, "%" matched as itself.
        QCOMPARE(ShowSupplierParts(1, QStringLiteral("R")).rowCount, 2);
        QCOMPARE(ShowSupplierParts(1, QStringLiteral("R%")).rows(PartCol::ItemID, 1).toInt(), 11);
        QCOMPARE(ShowSupplierParts(1, QStringLiteral("**RE")).rowCount, 1);
        QCOMPARE(ShowSupplierParts(1, QStringLiteral("RELAY")).rowCount, 0);

        // Adding a part twice gives two basket rows and marks the item.
        AddPartToBasket(10);
        AddPartToBasket(10);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT count(*) FROM tblBaskets WHERE StockID=10 AND "
                                         "ReqQty=0 AND OrderYN=1 AND DelDate IS NULL")),
                 QStringLiteral("2"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT BuyNow FROM tblStockItems WHERE ItemID=10")),
                 QStringLiteral("1"));

        // Command4's checks, in order.
        QVERIFY(MayShowSupplierParts());
        gNonStockSupplier = true;
        gCanPurchasing = false;
        boxes.answer(vbOK);
        QVERIFY(!MayShowSupplierParts());
        gCanPurchasing = true;
        boxes.answer(vbOK);
        QVERIFY(!MayShowSupplierParts());
        gNonStockSupplier = false;
        QCOMPARE(boxes.prompts(),
                 QStringList({"You do not have permission to add or make changes to purchase "
                              "orders",
                              "You can't order stock Items for NonStock Supplier"}));
        QCOMPARE(boxes.shown().at(1).title, QStringLiteral("Supplier"));
    }
};

QTEST_GUILESS_MAIN(TestBasket)
#include "test_basket.moc"
