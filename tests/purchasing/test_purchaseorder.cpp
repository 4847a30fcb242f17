// The basket and "Order Now" without a window: the supplier list, a supplier's basket rows, the
// commit of an edited row, the supplier's parts, the order numbers, the order written and the
// basket cleared, failures rolled back, and two processes placing orders on one file at once.
#include "foundation/Helpers.h"
#include "purchasing/PurchaseBasket.h"
#include "purchasing/PurchaseOrder.h"
#include "tests/purchasing/PurchasingFixture.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>
#include <QTextStream>
#include <QThread>

using namespace fixture;

namespace {

const char* const kWorkerArg = "--order-worker";

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

QString Basket(int rowId, const QString& columns) {
    return SqlFirst(
        QStringLiteral("SELECT %1 FROM tblBaskets WHERE RowID=%2").arg(columns).arg(rowId));
}

// Headers, order rows and basket rows, as one text.
QString Counts() {
    return Count("tblPOrders") + Count("tblPODetail") + Count("tblBaskets");
}

// The worker of the two-process test, on the data folder of its arguments: the basket holds
// the rows of the worker's supplier for each round, their quantity marking the round, all
// unticked; each round the worker loads the basket, ticks that round's rows and orders them.
// One line per round: "ok <POID> <rows> <round>" or "fail <title> <round>".
int RunOrderWorker(const QStringList& args) {
    const QString folder = args.value(2);
    const qint32 supplier = args.value(3).toInt();
    const int rounds = args.value(4).toInt();
    SetDataFolder(folder);
    gDecimalSep = QLatin1Char('.');
    gCanPurchasing = true;

    // Answers No to the print question and keeps the title of the last box.
    class Boxes : public BoxBackend {
    public:
        int msgBox(const QString&, int, const QString& title) override {
            last = title;
            return vbNo;
        }
        std::optional<QString> inputBox(const QString&, const QString&, const QString&) override {
            return std::nullopt;
        }
        QString fileDialog(const FileDialogRequest&) override { return {}; }
        QString last;
    } boxes;
    InstallBoxBackend(&boxes);

    // Reading the basket is tried again while the other process commits; the order itself is
    // the system's and is not.
    auto load = [supplier] {
        for (int attempt = 1;; ++attempt) {
            try {
                return LoadBasket(supplier);
            } catch (const DbError&) {
                if (attempt == 20)
                    throw;
            }
        }
    };
    // Both workers start their rounds together.
    while (!QFileInfo::exists(folder + QStringLiteral("/go")))
        QThread::msleep(2);

    QTextStream out(stdout);
    for (int round = 1; round <= rounds; ++round) {
        BasketLoad basket = load();
        int ticked = 0;
        for (int r = 1; r <= basket.rowCount; ++r) {
            const bool mine = Val(basket.rows(BasketCol::ReqQty, r).toString()) == round;
            basket.rows(BasketCol::Ticked, r) = mine;
            ticked += mine;
        }
        boxes.last.clear();
        try {
            const OrderNowResult r = PlacePurchaseOrder(InputFor(basket, supplier == 2 ? 0 : 1));
            if (r.outcome == OrderNowResult::Placed)
                out << "ok " << r.poid << ' ' << ticked << ' ' << round << Qt::endl;
            else
                out << "fail " << boxes.last << ' ' << round << Qt::endl;
        } catch (const DbError& e) {
            out << "untrapped " << e.Description() << Qt::endl;
        }
    }
    InstallBoxBackend(nullptr);
    return 0;
}

} // namespace

class TestPurchaseOrder : public QObject {
    Q_OBJECT
private slots:
    void init() { gCanPurchasing = true; }

    void supplierListAndBasket() {
        TestData data;
        ScriptedBoxes boxes;
        Catalogue();
        ExecSql("UPDATE tblStockItems SET MasterPNo='**RES-10K' WHERE ItemID=10");
        // By company name; "No Supplier" is listed, the non-stock supplier is not.
        const SupplierList list = LoadSupplierList();
        QCOMPARE(list.names, QStringList({"Acme", "Bolt", "Cobalt", "No Supplier"}));
        QCOMPARE(list.ids, QList<qint32>({1, 2, 3, 0}));

        const int r1 = BasketRow(11, "1.5", 1, "'2026-12-24'");
        const int r2 = BasketRow(10, "12", 0);
        const int r3 = BasketRow(12, "4", 1);
        const int r4 = BasketRow(10, "0", -1, "'1999-05-01'");
        // In the order of entry; "**" cut; quantities by the mask; no date and a date of 1999
        // blank; any flag but 0 ticked; the supplier's price and number.
        const BasketLoad a = LoadBasket(1);
        QCOMPARE(a.rowCount, 3);
        QCOMPARE(
            Joined(a.rows, 1),
            QStringLiteral("CAP-1U|Value 11|Capacitor 1u|1.5|1|24/12/2026|true|%1|11|0.50|A-11")
                .arg(r1));
        QCOMPARE(
            Joined(a.rows, 2),
            QStringLiteral("RES-10K|Value 10|Resistor 10k|12|1||false|%1|10|2.00|A-10").arg(r2));
        QCOMPARE(Joined(a.rows, 3),
                 QStringLiteral("RES-10K|Value 10|Resistor 10k|0|1||true|%1|10|2.00|A-10").arg(r4));
        // The same item under Bolt at Bolt's price; Cobalt has nothing waiting.
        const BasketLoad b = LoadBasket(2);
        QCOMPARE(Column(b.rows, b.rowCount, BasketCol::RowID),
                 QStringList({QString::number(r2), QString::number(r3), QString::number(r4)}));
        QCOMPARE(b.rows(BasketCol::Price, 1).toString(), QStringLiteral("1.50"));
        QCOMPARE(LoadBasket(3).rowCount, 0);

        // The selected entry: the supplier's id goes to the global; no selection says so.
        const auto refreshed = RefreshCurrentBasket(1, {1, 2});
        QVERIFY(refreshed && refreshed->rowCount == 3);
        QCOMPARE(gBasketSupplierID, 2);
        boxes.answer(vbOK);
        QVERIFY(!RefreshCurrentBasket(-1, {1, 2}));
        QCOMPARE(boxes.prompts(), QStringList("Can't complete the requested operation. The "
                                              "supplier has been deselected"));
        ExecSql("DELETE FROM tblSupAddresses");
        boxes.answer(vbOK);
        QVERIFY(LoadSupplierList().ids.isEmpty());
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Empty Supplier's List"));
    }

    void commitRows() {
        TestData data;
        ScriptedBoxes boxes;
        Catalogue();
        const int first = BasketRow(10, "0", 1);
        const int second = BasketRow(10, "3", 1, "'1999-01-01'");
        BasketLoad load = LoadBasket(1);

        // Quantity through Val, date left empty, tick off, price overtyped: the price lasts in
        // the array only.
        QVector<QVariant> v = GridRow(load.rows, 1);
        v[BasketCol::ReqQty - 1] = QStringLiteral("12x");
        v[BasketCol::Ticked - 1] = false;
        v[BasketCol::Price - 1] = QStringLiteral("9.99");
        QCOMPARE(CommitBasketRow(load.rows, load.rowCount, 1, v), BasketCommit::Written);
        QCOMPARE(Basket(first, "ReqQty || '|' || OrderYN || '|' || DelDate"),
                 QStringLiteral("12.0|0|2040-01-01"));
        QCOMPARE(load.rows(BasketCol::Price, 1).toString(), QStringLiteral("9.99"));
        QCOMPARE(SqlFirst("SELECT PriceEach FROM tblItemSupplier WHERE ItemID=10 AND SupplierID=1"),
                 QStringLiteral("2"));

        // A tick is written as True; a date of 1999 (shown blank) becomes the no-date value; a
        // date picked in the calendar is kept.
        v = GridRow(load.rows, 2);
        QCOMPARE(CommitBasketRow(load.rows, load.rowCount, 2, v), BasketCommit::Written);
        QCOMPARE(Basket(second, "OrderYN || '|' || DelDate"), QStringLiteral("-1|2040-01-01"));
        v[BasketCol::DelDate - 1] = QStringLiteral("05/01/2027");
        v[BasketCol::ReqQty - 1] = QStringLiteral("2.25");
        CommitBasketRow(load.rows, load.rowCount, 2, v);
        QCOMPARE(Basket(second, "ReqQty || '|' || DelDate"), QStringLiteral("2.25|2027-01-05"));

        // Only ticked rows count in the order value: 2.25 x 2.00.
        QCOMPARE(RecalcOrderValue(load.rows, load.rowCount), QStringLiteral("4.50"));
        load.rows(BasketCol::Ticked, 2) = false;
        QCOMPARE(RecalcOrderValue(load.rows, load.rowCount), QStringLiteral("0.00"));

        // Remove on one of the item's two rows deletes that row alone; an array with no rows
        // takes no write.
        QCOMPARE(CommitBasketRow(load.rows, load.rowCount, 1, GridRow(load.rows, 1, true)),
                 BasketCommit::Removed);
        QCOMPARE(SqlFirst("SELECT group_concat(RowID) FROM tblBaskets"), QString::number(second));
        UBArray empty;
        QCOMPARE(CommitBasketRow(empty, 0, 1, GridRow(load.rows, 2)), BasketCommit::NoRows);
        QCOMPARE(Basket(second, "ReqQty"), QStringLiteral("2.25"));

        // A comma locale: the list in its writing, Val reading only up to the comma, and the
        // order's statements with ".".
        LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
        ExecSql("UPDATE tblBaskets SET ReqQty=1.5");
        load = LoadBasket(1);
        QCOMPARE(load.rows(BasketCol::ReqQty, 1).toString(), QStringLiteral("1,5"));
        QCOMPARE(RecalcOrderValue(load.rows, load.rowCount), QStringLiteral("3,00"));
        v = GridRow(load.rows, 1);
        v[BasketCol::ReqQty - 1] = QStringLiteral("7,5");
        CommitBasketRow(load.rows, load.rowCount, 1, v);
        QCOMPARE(Basket(second, "ReqQty"), QStringLiteral("7"));
        load.rows(BasketCol::ReqQty, 1) = QStringLiteral("1,5");
        load.rows(BasketCol::Price, 1) = QStringLiteral("2,75");
        boxes.answer(vbNo);
        QCOMPARE(PlacePurchaseOrder(InputFor(load, 1)).outcome, OrderNowResult::Placed);
        QCOMPARE(SqlFirst("SELECT POQty || '|' || POPrice FROM tblPODetail"),
                 QStringLiteral("1.5|2.75"));
    }

    void supplierParts() {
        TestData data;
        ScriptedBoxes boxes;
        Catalogue();
        Item(14, "R%X");
        Item(15, "**RELAY");
        Link(14, 1, "2", "A-14");
        Link(15, 1, "2", "A-15");
        // By part number; a left-anchored match on the stored part number, "%" matched as itself.
        const BasketLoad all = ShowSupplierParts(1, QString());
        QCOMPARE(Column(all.rows, all.rowCount, PartCol::PartNo),
                 QStringList({"**RELAY", "CAP-1U", "R%X", "RELAY-5V", "RES-10K"}));
        QCOMPARE(Joined(all.rows, 1),
                 QStringLiteral("15|**RELAY|Value 15|CAT|Item 15|2.00|1|A-15"));
        QCOMPARE(ShowSupplierParts(1, "R").rowCount, 3);
        QCOMPARE(ShowSupplierParts(1, "R%").rows(PartCol::ItemID, 1).toInt(), 14);
        QCOMPARE(ShowSupplierParts(1, "R%").rowCount, 1);
        QCOMPARE(ShowSupplierParts(1, "RELAY").rowCount, 1);

        // Adding a part twice gives two basket rows and marks the item.
        AddPartToBasket(10);
        AddPartToBasket(10);
        QCOMPARE(Count("tblBaskets", "StockID=10 AND ReqQty=0 AND OrderYN=1 AND DelDate IS NULL"),
                 QStringLiteral("2"));
        QCOMPARE(ItemField(10, "BuyNow"), QStringLiteral("1"));

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

    void placeOrder() {
        TestData data;
        ScriptedBoxes boxes;
        Catalogue();
        // Numbers: 1 for the first order, then past the highest, or a greater one typed.
        QCOMPARE(POIDText(NextPOID(QString())), QStringLiteral("0001"));
        ExecSql("INSERT INTO tblPOrders (POID, POSupID) VALUES (12, 2), (7, 2)");
        QCOMPARE(NextPOID("5"), 13);
        QCOMPARE(POIDText(12345), QStringLiteral("12345"));
        // An older open row of item 10 counts in its on-order quantity.
        ExecSql(
            "INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved) VALUES (12, 10, 5, 2)");
        BasketRow(10, "4", 1);
        const int unticked = BasketRow(11, "0", 0);
        BasketRow(13, "2.5", 1, "'2026-12-24'");
        BasketLoad load = LoadBasket(1);
        load.rows(BasketCol::Price, 1) = QStringLiteral("1.99"); // overtyped for this order
        QCOMPARE(LoadBasket(2).rowCount, 1);

        // A typed number of 500 over the last number 12 is honoured.
        boxes.answer(vbYes);
        const OrderNowResult r = PlacePurchaseOrder(InputFor(load, 1, "500", "Ann`s ref"));
        QCOMPARE(r.outcome, OrderNowResult::Placed);
        QCOMPARE(r.poid, 500);
        QCOMPARE(r.poidText, QStringLiteral("0500"));
        QVERIFY(r.basketCleared && r.print);
        QCOMPARE(boxes.prompts(), QStringList("Do you want to print the order Now?"));
        QCOMPARE(boxes.shown().at(0).title, QStringLiteral("Print Order?"));
        QCOMPARE(boxes.shown().at(0).flags & 7, int(vbYesNo));
        QCOMPARE(
            SqlFirst("SELECT POID || '|' || PONumber || '|' || PODate || '|' || POSupID || '|' "
                     "|| POLocID || '|' || POComplete || '|' || POConfirmed FROM tblPOrders "
                     "WHERE POID=500"),
            QStringLiteral("500|Ann`s ref|2026-11-23|1|0|0|0"));
        QCOMPARE(
            SqlFirst("SELECT group_concat(x, ';') FROM (SELECT POStockID || '|' || POSupPNo || "
                     "'|' || POQty || '|' || POPrice || '|' || POSchedDate || '|' || "
                     "PORecieved || '|' || RowConfirmed || '|' || RowComments || '|' || "
                     "GRN_PONo AS x FROM tblPODetail WHERE POID=500 ORDER BY POStockID)"),
            QStringLiteral("10|A-10|4.0|1.99|2040-01-01|0.0|0||;"
                           "13|A-13|2.5|3.25|2026-12-24|0.0|0||"));
        // The supplier's own price stays; on order: the new rows and what was outstanding.
        QCOMPARE(SqlFirst("SELECT PriceEach FROM tblItemSupplier WHERE ItemID=10 AND SupplierID=1"),
                 QStringLiteral("2"));
        QCOMPARE(SqlFirst("SELECT group_concat(OnOrderQty, '|') FROM (SELECT OnOrderQty FROM "
                          "tblStockItems ORDER BY ItemID)"),
                 QStringLiteral("7.0|0.0|0.0|2.5"));
        // The ordered rows left the basket, under both suppliers; the unticked one waits.
        QCOMPARE(SqlFirst("SELECT group_concat(RowID) FROM tblBaskets"), QString::number(unticked));
        QCOMPARE(LoadBasket(2).rowCount, 0);
        QCOMPARE(NextPOID("5"), 501);
    }

    void refusalsWriteNothing() {
        TestData data;
        ScriptedBoxes boxes;
        Catalogue();
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
        const BasketLoad empty;
        const QString noRows = QStringLiteral("The order would be empty so nothing was done");
        const QString nothing = QStringLiteral("Nothing Done");
        const struct {
            OrderNowInput in;
            QString prompt, title;
            bool right = true;
        } cases[] = {
            {InputFor(load, 1, "0001"),
             "At least one selected row has a zero order quantity\n\nEither unselect the row or "
             "enter an order quantity",
             AppName()},
            {InputFor(unticked, 1), noRows, "No items selected"},
            {InputFor(empty, 1), noRows, "No items selected"},
            {InputFor(stale, 1), "Nothing listed", nothing},
            {InputFor(good, -1), "No Supplier selected. Order Not processed", nothing},
            {InputFor(good, 1),
             "You do not have permission to add or make changes to purchase orders",
             "Access Restricted", false},
        };
        for (const auto& c : cases) {
            boxes.clear();
            boxes.answer(vbOK);
            gCanPurchasing = c.right;
            const OrderNowResult r = PlacePurchaseOrder(c.in);
            QCOMPARE(r.outcome, OrderNowResult::Refused);
            QCOMPARE(r.poidText, c.in.poidText);
            QCOMPARE(boxes.prompts(), QStringList(c.prompt));
            QCOMPARE(boxes.shown().at(0).title, c.title);
            QCOMPARE(Counts(), QStringLiteral("002"));
        }
        gCanPurchasing = true;
        // With the quantity corrected it goes through; No to printing.
        boxes.clear();
        boxes.answer(vbNo);
        const OrderNowResult r = PlacePurchaseOrder(InputFor(good, 1));
        QVERIFY(r.outcome == OrderNowResult::Placed && r.poid == 1 && !r.print);
        QCOMPARE(Counts(), QStringLiteral("120"));
    }

    void failuresRollBack() {
        TestData data;
        ScriptedBoxes boxes;
        Catalogue();
        BasketRow(10, "4", 1);
        BasketRow(11, "2", 1);
        BasketRow(13, "1", 1);
        const BasketLoad load = LoadBasket(1);

        // The second row of an order fails: nothing of the order is left, the basket is whole.
        ExecSql("CREATE TRIGGER failSecondRow BEFORE INSERT ON tblPODetail WHEN (SELECT count(*) "
                "FROM tblPODetail WHERE POID=NEW.POID) >= 1 BEGIN SELECT RAISE(ABORT, 'disk "
                "full'); END");
        boxes.answer(vbOK);
        OrderNowResult r = PlacePurchaseOrder(InputFor(load, 1, "0001"));
        QCOMPARE(r.outcome, OrderNowResult::WriteFailed);
        QCOMPARE(r.poidText, QStringLiteral("0001"));
        QCOMPARE(boxes.prompts(),
                 QStringList("There was a error while saving the purchase order details."));
        QCOMPARE(boxes.shown().at(0).title, QStringLiteral("DB Write Error"));
        QCOMPARE(Counts(), QStringLiteral("003"));
        QCOMPARE(SqlFirst("SELECT sum(OnOrderQty) FROM tblStockItems"), QStringLiteral("0"));
        ExecSql("DROP TRIGGER failSecondRow");

        // A basket delete fails: the order stays whole, its rows wait in the basket still, and
        // printing is offered.
        ExecSql("CREATE TRIGGER failDelete BEFORE DELETE ON tblBaskets WHEN OLD.StockID=13 BEGIN "
                "SELECT RAISE(ABORT, 'locked'); END");
        boxes.clear();
        boxes.answer(vbOK);
        boxes.answer(vbNo);
        r = PlacePurchaseOrder(InputFor(load, 1));
        QVERIFY(r.outcome == OrderNowResult::Placed && !r.basketCleared);
        QCOMPARE(boxes.prompts(),
                 QStringList({"The Order details were saved but some data could not be removed "
                              "from the Basket. You may need to remove this manually",
                              "Do you want to print the order Now?"}));
        QCOMPARE(boxes.shown().at(0).title, QStringLiteral("DB Error"));
        QCOMPARE(Counts(), QStringLiteral("133"));
        QCOMPARE(ItemField(10, "OnOrderQty"), QStringLiteral("4"));
    }

    void twoProcesses() {
        TestData data;
        constexpr int kItems = 10;
        constexpr int kRounds = 50;
        for (int s : {1, 2}) {
            Supplier(s, QStringLiteral("Supplier %1").arg(s));
            for (int k = 0; k < kItems; ++k) {
                const int id = s * 100 + k;
                Item(id, QStringLiteral("P%1").arg(id));
                Link(id, s, "1", QStringLiteral("S%1-%2").arg(s).arg(k));
            }
        }
        ExecSql(QStringLiteral("WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM r "
                               "WHERE n < %1) INSERT INTO tblBaskets (StockID, ReqQty, OrderYN) "
                               "SELECT ItemID, n, 0 FROM tblStockItems, r ORDER BY n, ItemID")
                    .arg(kRounds));
        // Each row written to an order takes a little longer, so that the workers' orders
        // overlap and their numbers collide now and then.
        ExecSql("CREATE TABLE slow AS WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM "
                "r WHERE n < 16) SELECT ItemID AS x FROM tblStockItems, r");
        ExecSql("CREATE TRIGGER slowRow AFTER INSERT ON tblPODetail BEGIN SELECT count(*) FROM "
                "slow a, slow b WHERE a.x < 104; END");

        QList<QProcess*> workers;
        // However the test ends, no worker outlives the data folder.
        const auto stop = qScopeGuard([&workers] {
            for (QProcess* p : workers) {
                if (p->state() != QProcess::NotRunning) {
                    p->kill();
                    p->waitForFinished(5000);
                }
            }
        });
        for (int s : {1, 2}) {
            auto* p = new QProcess(this);
            p->setProcessChannelMode(QProcess::ForwardedErrorChannel);
            p->start(QCoreApplication::applicationFilePath(),
                     {QString::fromLatin1(kWorkerArg), data.folder(), QString::number(s),
                      QString::number(kRounds)});
            workers << p;
        }
        for (QProcess* p : workers)
            QVERIFY(p->waitForStarted());
        QFile go(data.path(QStringLiteral("go")));
        QVERIFY(go.open(QIODevice::WriteOnly));
        go.close();

        struct Placed {
            int supplier;
            int round;
        };
        QHash<int, Placed> placed; // by POID
        QList<Placed> failed;
        for (int i = 0; i < workers.size(); ++i) {
            QProcess* p = workers[i];
            QVERIFY(p->waitForFinished(240000));
            QCOMPARE(p->exitCode(), 0);
            const QStringList lines =
                QString::fromLatin1(p->readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
            QCOMPARE(lines.size(), kRounds);
            for (const QString& line : lines) {
                const QStringList f = line.split(' ');
                if (f.at(0) == QLatin1String("ok")) {
                    QCOMPARE(f.at(2).toInt(), kItems);
                    QVERIFY2(!placed.contains(f.at(1).toInt()), qPrintable(line));
                    placed.insert(f.at(1).toInt(), {i + 1, f.at(3).toInt()});
                } else {
                    QVERIFY2(line.startsWith(QLatin1String("fail DB Write Error ")),
                             qPrintable(line));
                    failed.append({i + 1, f.last().toInt()});
                }
            }
        }
        QVERIFY(!placed.isEmpty());

        // Every header is an order a worker placed, whole: all the round's rows of its own
        // supplier and nothing else. A refused order left its round's rows in the basket.
        QCOMPARE(Count("tblPOrders").toInt(), placed.size());
        QCOMPARE(Count("tblPODetail").toInt(), placed.size() * kItems);
        for (auto o = placed.cbegin(); o != placed.cend(); ++o)
            QCOMPARE(
                SqlFirst(QStringLiteral("SELECT count(DISTINCT POStockID) || '|' || min(POQty) "
                                        "|| '|' || max(POQty) || '|' || min(POStockID / 100) "
                                        "|| '|' || max(POStockID / 100) || '|' || (SELECT "
                                        "POSupID FROM tblPOrders WHERE POID=%1) FROM "
                                        "tblPODetail WHERE POID=%1")
                             .arg(o.key())),
                QStringLiteral("%1|%2.0|%2.0|%3|%3|%3").arg(kItems).arg(o->round).arg(o->supplier));
        QCOMPARE(Count("tblBaskets").toInt(), failed.size() * kItems);
        for (const Placed& f : failed)
            QCOMPARE(Count("tblBaskets", QStringLiteral("ReqQty=%1 AND StockID / 100 = %2")
                                             .arg(f.round)
                                             .arg(f.supplier)),
                     QString::number(kItems));
        QCOMPARE(OnOrderMismatches(), QStringLiteral("0"));
        qInfo("%d orders placed, %d refused with DB Write Error", int(placed.size()),
              int(failed.size()));
    }
};

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.value(1) == QLatin1String(kWorkerArg))
        return RunOrderWorker(args);
    TestPurchaseOrder test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_purchaseorder.moc"
