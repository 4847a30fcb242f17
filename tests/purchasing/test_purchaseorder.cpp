// The basket and "Order Now" without a window: the supplier list, a supplier's basket rows, the
// commit of an edited row, the supplier's parts, the order numbers, the order written and the
// basket cleared, failures rolled back, and a second workstation ordering at the same moment.
#include "foundation/Helpers.h"
#include "purchasing/PurchaseBasket.h"
#include "purchasing/PurchaseOrder.h"
#include "tests/purchasing/PurchasingFixture.h"

#include <QTest>

using namespace fixture;

namespace {

// The window's input; cboSupplist lists Bolt (2) then Acme (1).
OrderNowInput InputFor(const BasketLoad& load, int supplierIndex, const QString& poid = QString(),
                       const QString& ref = QString()) {
    OrderNowInput in;
    in.rows = &load.rows;
    in.rowCount = load.rowCount;
    in.supplierChosen = supplierIndex >= 0;
    in.supplierIndex = supplierIndex;
    in.supplierIDs = {2, 1};
    in.poidText = poid;
    in.reference = ref;
    return in;
}

// The 12 values of a grid row made from an array row, as the grid hands them to the commit.
QVector<QVariant> GridRow(const UBArray& rows, int r, bool remove = false) {
    QVector<QVariant> v;
    for (int c = 1; c <= BasketCol::Count; ++c)
        v << rows(c, r);
    v << remove;
    return v;
}

// A basket row's quantity, tick and date as stored.
QString Basket(int rowId) {
    return SqlFirst(QStringLiteral("SELECT ReqQty || '|' || OrderYN || '|' || DelDate FROM "
                                   "tblBaskets WHERE RowID=%1")
                        .arg(rowId));
}

// Headers, order rows and basket rows, as one text.
QString Counts() {
    return Count("tblPOrders") + Count("tblPODetail") + Count("tblBaskets");
}

} // namespace

class TestPurchaseOrder : public QObject, Suite {
    Q_OBJECT
private slots:
    void init() {
        gCanPurchasing = true;
        Fresh();
    }
    void cleanup() { Drop(); }

    void supplierListAndBasket() {
        ExecSql("UPDATE tblStockItems SET MasterPNo='**RES-10K' WHERE ItemID=10");
        // By company name; "No Supplier" is listed, the non-stock supplier is not.
        const SupplierList list = LoadSupplierList();
        QCOMPARE(list.names, QStringList({"Acme", "Bolt", "Cobalt", "No Supplier"}));
        QCOMPARE(list.ids, QList<qint32>({1, 2, 3, 0}));

        BasketRow(11, "1.5", 1, "'2026-12-24'"); // basket rows 1 to 4
        BasketRow(10, "12", 0);
        BasketRow(12, "4", 1);
        BasketRow(10, "0", -1, "'1999-05-01'");
        // In the order of entry; "**" cut; quantities by the mask; no date and a date of 1999
        // blank; any flag but 0 ticked; the supplier's price and number.
        const BasketLoad a = LoadBasket(1);
        QCOMPARE(Joined(a.rows, 1),
                 "CAP-1U|Value 11|Capacitor 1u|1.5|1|24/12/2026|true|1|11|0.50|A-11");
        QCOMPARE(Joined(a.rows, 2), "RES-10K|Value 10|Resistor 10k|12|1||false|2|10|2.00|A-10");
        QCOMPARE(Joined(a.rows, 3), "RES-10K|Value 10|Resistor 10k|0|1||true|4|10|2.00|A-10");
        // The same item under Bolt at Bolt's price; Cobalt has nothing waiting.
        const BasketLoad b = LoadBasket(2);
        QCOMPARE(Column(b, BasketCol::RowID), QStringList({"2", "3", "4"}));
        QCOMPARE(b.rows(BasketCol::Price, 1).toString(), "1.50");

        // The selected entry: the supplier's id goes to the global; no selection says so, and so
        // does an empty address book.
        QVERIFY(RefreshCurrentBasket(1, {1, 2})->rowCount == 3 && gBasketSupplierID == 2);
        boxes->answer(vbOK);
        QVERIFY(!RefreshCurrentBasket(-1, {1, 2}));
        ExecSql("DELETE FROM tblSupAddresses");
        boxes->answer(vbOK);
        QVERIFY(LoadSupplierList().ids.isEmpty());
        QCOMPARE(Said(*boxes).first(), AppName() + ": Can't complete the requested operation. The "
                                                   "supplier has been deselected");
        QVERIFY(Said(*boxes).last().startsWith("Empty Supplier's List: There are no supplier"));
    }

    void commitRows() {
        BasketRow(10, "0", 1);
        BasketRow(10, "3", 1, "'1999-01-01'");
        BasketLoad load = LoadBasket(1);

        // Quantity through Val, date left empty, tick off, price overtyped: the price lasts in
        // the array only.
        QVector<QVariant> v = GridRow(load.rows, 1);
        v[BasketCol::ReqQty - 1] = QStringLiteral("12x");
        v[BasketCol::Ticked - 1] = false;
        v[BasketCol::Price - 1] = QStringLiteral("9.99");
        QCOMPARE(CommitBasketRow(load.rows, load.rowCount, 1, v), BasketCommit::Written);
        QCOMPARE(Basket(1), "12.0|0|2040-01-01");
        QCOMPARE(SqlFirst("SELECT PriceEach FROM tblItemSupplier WHERE ItemID=10 AND SupplierID=1"),
                 "2");
        // A tick is written as True; a date of 1999 (shown blank) becomes the no-date value; a
        // date picked in the calendar is kept.
        v = GridRow(load.rows, 2);
        CommitBasketRow(load.rows, load.rowCount, 2, v);
        QCOMPARE(Basket(2), "3.0|-1|2040-01-01");
        v[BasketCol::DelDate - 1] = QStringLiteral("05/01/2027");
        v[BasketCol::ReqQty - 1] = QStringLiteral("2.25");
        CommitBasketRow(load.rows, load.rowCount, 2, v);
        QCOMPARE(Basket(2), "2.25|-1|2027-01-05");

        // Only ticked rows count in the order value: 2.25 x 2.00.
        QCOMPARE(RecalcOrderValue(load.rows, load.rowCount), "4.50");
        // Remove on one of the item's two rows deletes that row alone.
        QCOMPARE(CommitBasketRow(load.rows, load.rowCount, 1, GridRow(load.rows, 1, true)),
                 BasketCommit::Removed);
        QCOMPARE(SqlFirst("SELECT group_concat(RowID) FROM tblBaskets"), "2");

        // A comma locale: Val reads only up to the comma; the order's statements write ".".
        LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
        load = LoadBasket(1);
        v = GridRow(load.rows, 1);
        v[BasketCol::ReqQty - 1] = QStringLiteral("7,5");
        CommitBasketRow(load.rows, load.rowCount, 1, v);
        QCOMPARE(Basket(2), "7.0|-1|2027-01-05");
        load.rows(BasketCol::ReqQty, 1) = QStringLiteral("1,5");
        load.rows(BasketCol::Price, 1) = QStringLiteral("2,75");
        boxes->answer(vbNo);
        QCOMPARE(PlacePurchaseOrder(InputFor(load, 1)).outcome, OrderNowResult::Placed);
        QCOMPARE(SqlFirst("SELECT POQty || '|' || POPrice FROM tblPODetail"), "1.5|2.75");
    }

    void supplierParts() {
        Item(14, "R%X");
        Item(15, "**RELAY");
        Link(14, 1, "2", "A-14");
        Link(15, 1, "2", "A-15");
        // By part number; a left-anchored match on the stored part number, "%" matched as itself.
        const BasketLoad all = ShowSupplierParts(1, QString());
        QCOMPARE(Column(all, PartCol::PartNo),
                 QStringList({"**RELAY", "CAP-1U", "R%X", "RELAY-5V", "RES-10K"}));
        QCOMPARE(Joined(all.rows, 1), "15|**RELAY|Value 15|CAT|Item 15|2.00|1|A-15");
        QCOMPARE(Column(ShowSupplierParts(1, "R%"), PartCol::PartNo), QStringList("R%X"));
        QCOMPARE(ShowSupplierParts(1, "RELAY").rowCount, 1);
        // Adding a part twice gives two basket rows and marks the item.
        AddPartToBasket(10);
        AddPartToBasket(10);
        QCOMPARE(Count("tblBaskets", "StockID=10 AND ReqQty=0 AND OrderYN=1 AND DelDate IS NULL"),
                 "2");
        QCOMPARE(ItemField(10, "BuyNow"), "1");
    }

    void placeOrder() {
        // Numbers: 1 for the first order, then past the highest, or a greater one typed.
        QCOMPARE(POIDText(NextPOID(QString())), "0001");
        ExecSql("INSERT INTO tblPOrders (POID, POSupID) VALUES (12, 2), (7, 2)");
        QCOMPARE(NextPOID("5"), 13);
        // An older open row of item 10 counts in its on-order quantity.
        ExecSql(
            "INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved) VALUES (12, 10, 5, 2)");
        BasketRow(10, "4", 1);
        BasketRow(11, "0", 0);
        BasketRow(13, "2.5", 1, "'2026-12-24'");
        BasketLoad load = LoadBasket(1);
        load.rows(BasketCol::Price, 1) = QStringLiteral("1.99"); // overtyped for this order

        // A typed number of 500 over the last number 12 is honoured.
        boxes->answer(vbYes);
        const OrderNowResult r = PlacePurchaseOrder(InputFor(load, 1, "500", "Ann`s ref"));
        QVERIFY(r.outcome == OrderNowResult::Placed && r.poid == 500 && r.basketCleared && r.print);
        QCOMPARE(r.poidText, "0500");
        QCOMPARE(Said(*boxes), QStringList("Print Order?: Do you want to print the order Now?"));
        QCOMPARE(boxes->shown().at(0).flags & 7, int(vbYesNo));
        QCOMPARE(
            SqlFirst("SELECT POID || '|' || PONumber || '|' || PODate || '|' || POSupID || '|' "
                     "|| POLocID || '|' || POComplete || '|' || POConfirmed FROM tblPOrders "
                     "WHERE POID=500"),
            "500|Ann`s ref|2026-11-23|1|0|0|0");
        QCOMPARE(
            SqlFirst("SELECT group_concat(x, ';') FROM (SELECT POStockID || '|' || POSupPNo || "
                     "'|' || POQty || '|' || POPrice || '|' || POSchedDate || '|' || "
                     "PORecieved || '|' || RowConfirmed || '|' || RowComments || '|' || "
                     "GRN_PONo AS x FROM tblPODetail WHERE POID=500 ORDER BY POStockID)"),
            "10|A-10|4.0|1.99|2040-01-01|0.0|0||;13|A-13|2.5|3.25|2026-12-24|0.0|0||");
        // The supplier's own price stays; on order: the new rows and what was outstanding.
        QCOMPARE(SqlFirst("SELECT PriceEach FROM tblItemSupplier WHERE ItemID=10 AND SupplierID=1"),
                 "2");
        QCOMPARE(SqlFirst("SELECT group_concat(OnOrderQty, '|') FROM tblStockItems"),
                 "7.0|0.0|0.0|2.5");
        // The ordered rows left the basket, under both suppliers; the unticked one waits.
        QCOMPARE(SqlFirst("SELECT group_concat(RowID) FROM tblBaskets"), "2");
        QCOMPARE(LoadBasket(2).rowCount, 0);
        QCOMPARE(NextPOID("5"), 501);
    }

    void refusalsWriteNothing() {
        BasketRow(10, "3", 1);
        BasketRow(11, "0.5", 1); // a ticked 0.5 counts as below 1
        const BasketLoad load = LoadBasket(1);
        BasketLoad unticked = load;
        unticked.rows(BasketCol::Ticked, 1) = false;
        unticked.rows(BasketCol::Ticked, 2) = false;
        BasketLoad good = load;
        good.rows(BasketCol::ReqQty, 2) = QStringLiteral("1");
        BasketLoad stale = good; // rows left from another supplier, with a count of 0
        stale.rowCount = 0;
        const char* noRows = "No items selected: The order would be empty so nothing was done";
        const struct {
            OrderNowInput in;
            QString said;
            bool right = true;
        } cases[] = {
            {InputFor(load, 1, "0001"), AppName() + ": At least one selected row has a zero "
                                                    "order quantity\n\nEither unselect the row "
                                                    "or enter an order quantity"},
            {InputFor(unticked, 1), noRows},
            {InputFor(stale, 1), "Nothing Done: Nothing listed"},
            {InputFor(good, -1), "Nothing Done: No Supplier selected. Order Not processed"},
            {InputFor(good, 1),
             "Access Restricted: You do not have permission to add or make "
             "changes to purchase orders",
             false},
        };
        for (const auto& c : cases) {
            boxes->clear();
            boxes->answer(vbOK);
            gCanPurchasing = c.right;
            const OrderNowResult r = PlacePurchaseOrder(c.in);
            QCOMPARE(r.outcome, OrderNowResult::Refused);
            QCOMPARE(r.poidText, c.in.poidText);
            QCOMPARE(Said(*boxes), QStringList(c.said));
            QCOMPARE(Counts(), "002");
        }
        // With the quantity corrected it goes through; No to printing.
        gCanPurchasing = true;
        boxes->answer(vbNo);
        const OrderNowResult r = PlacePurchaseOrder(InputFor(good, 1));
        QVERIFY(r.outcome == OrderNowResult::Placed && r.poid == 1 && !r.print);
        QCOMPARE(Counts(), "120");
    }

    void failuresRollBack() {
        BasketRow(10, "4", 1);
        BasketRow(11, "2", 1);
        BasketRow(13, "1", 1);
        const BasketLoad load = LoadBasket(1);

        // The second row of an order fails: nothing of the order is left, the basket is whole.
        ExecSql("CREATE TRIGGER failSecondRow BEFORE INSERT ON tblPODetail WHEN (SELECT count(*) "
                "FROM tblPODetail WHERE POID=NEW.POID) >= 1 BEGIN SELECT RAISE(ABORT, 'disk "
                "full'); END");
        boxes->answer(vbOK);
        OrderNowResult r = PlacePurchaseOrder(InputFor(load, 1, "0001"));
        QVERIFY(r.outcome == OrderNowResult::WriteFailed && r.poidText == "0001");
        QCOMPARE(Said(*boxes), QStringList("DB Write Error: There was a error while saving the "
                                           "purchase order details."));
        QCOMPARE(Counts(), "003");
        QCOMPARE(SqlFirst("SELECT sum(OnOrderQty) FROM tblStockItems"), "0");
        ExecSql("DROP TRIGGER failSecondRow");

        // A basket delete fails: the order stays whole, its rows wait in the basket still, and
        // printing is offered.
        ExecSql("CREATE TRIGGER failDelete BEFORE DELETE ON tblBaskets WHEN OLD.StockID=13 BEGIN "
                "SELECT RAISE(ABORT, 'locked'); END");
        boxes->clear();
        boxes->answer(vbOK);
        boxes->answer(vbNo);
        r = PlacePurchaseOrder(InputFor(load, 1));
        QVERIFY(r.outcome == OrderNowResult::Placed && !r.basketCleared);
        QCOMPARE(Said(*boxes), QStringList({"DB Error: The Order details were saved but some data "
                                            "could not be removed from the Basket. You may need to "
                                            "remove this manually",
                                            "Print Order?: Do you want to print the order Now?"}));
        QCOMPARE(Counts(), "133");
        QCOMPARE(ItemField(10, "OnOrderQty"), "4");
    }

    void secondWorkstationWaits() {
        // Acme's order holds the write lock from its start: Bolt's, placed from another
        // connection just before Acme's header is written, reads the old number, waits out the
        // lock and fails whole, its basket kept; Acme's order is placed under that number.
        BasketRow(11, "4", 1);
        BasketRow(12, "2", 1);
        const BasketLoad acme = LoadBasket(1), bolt = LoadBasket(2);
        OrderNowResult second;
        boxes->answer(vbOK);
        boxes->answer(vbNo);
        Database::BeforeNextStatementContaining(QStringLiteral("INSERT INTO tblPOrders"), [&] {
            second = PlacePurchaseOrder(InputFor(bolt, 0));
        });
        const OrderNowResult first = PlacePurchaseOrder(InputFor(acme, 1));
        QVERIFY(first.outcome == OrderNowResult::Placed && first.poid == 1);
        QVERIFY(second.outcome == OrderNowResult::WriteFailed && second.poidText == "0001");
        QCOMPARE(Said(*boxes).first().left(15), "DB Write Error:");
        QCOMPARE(SqlRows("SELECT POID, POSupID, POStockID, POQty FROM tblPOrders JOIN "
                         "tblPODetail USING (POID)"),
                 QStringList("1|1|11|4"));
        QCOMPARE(SqlFirst("SELECT group_concat(StockID) FROM tblBaskets"), "12");
        QCOMPARE(OnOrderMismatches(), "0");
    }
};

QTEST_GUILESS_MAIN(TestPurchaseOrder)

#include "test_purchaseorder.moc"
