// Stock adjustments, item history rows, the on-order recount and the purchasing flag.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "inventory/OnOrder.h"
#include "inventory/StockMovements.h"
#include "tests/support/TestSupport.h"

#include <QTest>

namespace {

void AddItem(qint32 id, double qty, double onOrder = 0) {
    ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo, Category, Qty, "
            "OnOrderQty) VALUES (?, 'P', 'NEW', ?, ?)",
            {id, qty, onOrder});
}

void AddPORow(qint32 poid, qint32 item, double qty, double received,
              const QString& sched = QStringLiteral("2026-12-24")) {
    ExecSql("INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved, "
            "POSchedDate) VALUES (?, ?, ?, ?, ?)",
            {poid, item, qty, received, sched});
}

void AddHistory(const QString& date, const QString& type, double qty, const QString& text,
                const QVariant& trn = {}) {
    ExecSql("INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistID, "
            "HistRef, HistTRN, HistQty, HistText) VALUES (5, ?, ?, 0, 'R1', ?, ?, ?)",
            {date, type, trn, qty, text});
}

} // namespace

class TestMovements : public QObject {
    Q_OBJECT
    std::unique_ptr<TestData> mData;
private slots:
    void init() { mData = std::make_unique<TestData>(); }

    // Each kind moves Qty by its signed amount and writes its history row; a quantity of 0 still
    // writes one, and an issue beyond stock goes negative.
    void eachAdjustmentMovesQtyAndWritesHistory() {
        const struct {
            AdjustmentKind kind;
            const char* typed;
            const char* history; // the row written
            const char* cell;    // the list row's Qty cell afterwards
        } cases[] = {{AdjustmentKind::Issue, "2.5", "ISSUE|-2.5", "7.5"},
                     {AdjustmentKind::Return, "2.5", "RETURN|2.5", "12.5"},
                     {AdjustmentKind::AdjustPlus, "3", "ADJ(+)|3", "13"},
                     {AdjustmentKind::AdjustMinus, "0.25", "ADJ(-)|-0.25", "9.75"},
                     {AdjustmentKind::Return, "0", "RETURN|0", "10"},
                     {AdjustmentKind::Issue, "14", "ISSUE|-14", "-4"}};
        for (const auto& c : cases) {
            mData = std::make_unique<TestData>();
            ScriptedBoxes boxes;
            AddItem(5, 10);
            AddItem(6, 10);
            const StockAdjustmentResult r =
                PostStockAdjustment({c.kind, QLatin1String(c.typed), QStringLiteral("R-17"),
                                     QStringLiteral("Bob's bench"), 5, QStringLiteral("10")});
            QVERIFY(r.posted);
            QCOMPARE(r.qtyCell, QLatin1String(c.cell));
            QCOMPARE(SqlRows("SELECT ItemID, Qty FROM tblStockItems ORDER BY 1"),
                     QStringList({QStringLiteral("5|") + QLatin1String(c.cell), "6|10"}));
            QCOMPARE(SqlRows("SELECT StockID, HistDate, HistID, HistRef, HistText, "
                             "HistTRN IS NULL, HistType, HistQty FROM tblItemHistory"),
                     QStringList(QStringLiteral("5|2026-11-23|0|R-17|Bob`s bench|1|") +
                                 QLatin1String(c.history)));
        }
    }

    void adjustmentThatStopsAndCommaLocale() {
        ScriptedBoxes boxes;
        AddItem(5, 10);
        boxes.answer(vbOK);
        QVERIFY(!PostStockAdjustment({AdjustmentKind::None, "4", "", "", 5, "10"}).posted);
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown()[0].title + '|' + boxes.shown()[0].prompt,
                 "No option selected|You need to select an option button");
        QCOMPARE(boxes.shown()[0].flags, int(vbInformation));
        // A list row with ItemID 0 stops without a word.
        QVERIFY(!PostStockAdjustment({AdjustmentKind::Return, "4", "", "", 0, "10"}).posted);
        QCOMPARE(boxes.shown().size(), 1);
        QVERIFY(SqlRows("SELECT * FROM tblItemHistory").isEmpty());

        LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
        const auto r = PostStockAdjustment({AdjustmentKind::AdjustPlus, "1,5", "", "", 5, "10"});
        QCOMPARE(r.qtyCell, "11,5");
        QCOMPARE(SqlRows("SELECT Qty, HistQty FROM tblStockItems, tblItemHistory"),
                 QStringList({"11.5|1.5"}));
    }

    void historyRowsAsShown() {
        AddHistory("2026-01-02", "ISSUE", -2, "Ann");
        AddHistory("2026-01-03", "RETURN", 1.5, "Ann");
        AddHistory("2001-01-01", "ADJ(+)", 4, "count");
        AddHistory("2039-12-31", "ADJ(-)", -1.25, "lost");
        AddHistory("2000-12-31", "RX", 10, "Purchase Order: 0012", "GRN7");
        AddHistory("2040-01-01", "SHIP", -3, "POS");
        AddHistory("2026-05-05", "MOVE", 1, "shelf");
        ExecSql("INSERT INTO tblItemHistory (StockID, HistType) VALUES (6, 'ISSUE')");
        const QList<QStringList> expected = {
            {"02/01/2026", "ISSUE", "-2", "R1", "", "Ann"},
            {"03/01/2026", "RETURN", "1.5", "R1", "", "Ann"},
            {"01/01/2001", "Adjust(+)", "4", "R1", "", "Ref: count"},
            {"31/12/2039", "Adjust(-)", "-1.25", "R1", "", "Ref: lost"},
            {"", "Received", "10", "R1", "GRN7", "Order Ref: Purchase Order: 0012"},
            {"", "Shipped", "-3", "R1", "", "Shipping Ref: POS"},
            {"05/05/2026", "MOVE", "1", "R1", "", "shelf"}};
        QCOMPARE(LoadItemHistory(5), expected);
        QVERIFY(LoadItemHistory(99).isEmpty());
    }

    void onOrderRecount() {
        AddItem(5, 0, 7);
        AddItem(6, 0, 9);
        const QString onOrder =
            QStringLiteral("SELECT OnOrderQty FROM tblStockItems ORDER BY ItemID");
        AddPORow(1, 5, 4, 4); // complete: no open rows at all
        QCOMPARE(RefreshOnOrderQty(5), 0.0);
        QCOMPARE(SqlRows(onOrder), QStringList({"0", "9"}));
        AddPORow(2, 5, 10, 4); // partial receipts
        AddPORow(3, 5, 5, 0);
        AddPORow(3, 6, 100, 0);
        QCOMPARE(RefreshOnOrderQty(5), 11.0);
        QCOMPARE(SqlRows(onOrder), QStringList({"11", "9"}));
        AddPORow(4, 5, 2, 5.5); // received beyond the order: a negative term
        QCOMPARE(RefreshOnOrderQty(5), 7.5);
        QCOMPARE(SqlRows(onOrder), QStringList({"7.5", "9"}));

        // Inside the caller's transaction the uncommitted rows count, and nothing waits.
        Database db = DBEngine::OpenDatabase(gDbPath);
        db.BeginTrans();
        db.Execute(QStringLiteral("DELETE FROM tblPODetail"));
        QCOMPARE(RefreshOnOrderQty(5, &db), 0.0);
        db.Rollback();
        QCOMPARE(SqlRows(onOrder), QStringList({"7.5", "9"}));
    }

    void pendingOrderPanelReadsWithoutChange() {
        AddPORow(12, 5, 10, 4);
        AddPORow(3, 5, 5, 0, QStringLiteral("2040-01-01"));
        AddPORow(7, 5, 8, 8);
        ExecSql("INSERT INTO tblCusAddresses (AddID, CoName) VALUES (3, 'Bell')");
        ExecSql("INSERT INTO tblCustOrders (CustBasketID, CustID) VALUES (41, 3), (40, 3)");
        ExecSql("INSERT INTO tblCustOrderDetail (CustBasketDetailID, StockID, "
                "OrderedQty, ShippedQty) VALUES (41, 5, 6, 2), (40, 5, 3, 3), (40, 6, 9, 0)");
        ExecSql("INSERT INTO tblBaskets (StockID, ReqQty, OrderYN, FromID) VALUES (6, 3, 1, 0)");
        const QString basket = QStringLiteral("SELECT * FROM tblBaskets");
        const QStringList before = SqlRows(basket);
        const StockQtyInfo info = LoadStockQtyInfo(5);
        QVERIFY(!info.flagged);
        QCOMPARE(info.onOrder,
                 QList<QStringList>({{"0003", "", "5"}, {"0012", "24/12/2026", "6"}}));
        QCOMPARE(info.allocated, QList<QStringList>({{"0041", "Bell", "4"}}));
        QVERIFY(LoadStockQtyInfo(6).flagged);
        QCOMPARE(SqlRows(basket), before);
    }

    // Flagging twice adds no second basket row; un-flagging asks first.
    void flaggingForPurchasing() {
        ScriptedBoxes boxes;
        const QString basket = QStringLiteral("SELECT StockID, ReqQty, OrderYN FROM tblBaskets");
        QCOMPARE(ApplyPurchasingFlag(5, true), BasketChange::Flagged);
        QCOMPARE(ApplyPurchasingFlag(5, true), BasketChange::None);
        QCOMPARE(SqlRows(basket), QStringList({"5|0|1"}));
        QVERIFY(boxes.shown().isEmpty());

        boxes.answer(vbNo);
        QCOMPARE(ApplyPurchasingFlag(5, false), BasketChange::None);
        QCOMPARE(SqlRows(basket).size(), 1);
        boxes.answer(vbYes);
        QCOMPARE(ApplyPurchasingFlag(5, false), BasketChange::Unflagged);
        QVERIFY(SqlRows(basket).isEmpty());
        QCOMPARE(boxes.prompts().size(), 2);
        QCOMPARE(boxes.shown()[1].prompt,
                 "This item is flagged for purchasing. Do you wish to un-flag this item?");
        QCOMPARE(boxes.shown()[1].title, "Purchasing");
        QCOMPARE(boxes.shown()[1].flags & 7, int(vbYesNo));

        QCOMPARE(ApplyPurchasingFlag(5, false), BasketChange::None); // nothing to ask
        gCanInventory = false;
        QCOMPARE(ApplyPurchasingFlag(5, true), BasketChange::None);
        QVERIFY(SqlRows(basket).isEmpty());
        QCOMPARE(boxes.prompts().size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestMovements)
#include "test_movements.moc"
