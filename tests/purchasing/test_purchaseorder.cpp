// "Order Now" without a window: the checks, the order numbers, the rows written, the basket
// cleared, failures rolled back, and two processes placing orders on one file at once.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
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

namespace {

const char* const kWorkerArg = "--order-worker";

OrderNowInput InputFor(const BasketLoad& load, int supplierIndex, const QList<qint32>& ids,
                       const QString& poid = QString(), const QString& ref = QString()) {
    OrderNowInput in;
    in.rows = &load.rows;
    in.rowCount = load.rowCount;
    in.supplierChosen = supplierIndex >= 0;
    in.supplierIndex = supplierIndex;
    in.supplierIDs = ids;
    in.poidText = poid;
    in.reference = ref;
    return in;
}

QString Count(const QString& table, const QString& where = QString()) {
    return SqlFirst(QStringLiteral("SELECT count(*) FROM ") + table +
                    (where.isEmpty() ? QString() : QStringLiteral(" WHERE ") + where));
}

// Two items with two suppliers each, one item of supplier 1 only, and three basket rows.
void TwoSuppliers() {
    fixture::Supplier(1, QStringLiteral("Acme"));
    fixture::Supplier(2, QStringLiteral("Bolt"));
    fixture::Item(10, QStringLiteral("RES-10K"));
    fixture::Item(11, QStringLiteral("CAP-1U"));
    fixture::Item(12, QStringLiteral("IND-5M"));
    fixture::Link(10, 1, QStringLiteral("2"), QStringLiteral("A-10"));
    fixture::Link(10, 2, QStringLiteral("1.5"), QStringLiteral("B-10"));
    fixture::Link(11, 1, QStringLiteral("0.25"), QStringLiteral("A-11"));
    fixture::Link(11, 2, QStringLiteral("0.3"), QStringLiteral("B-11"));
    fixture::Link(12, 1, QStringLiteral("4"), QString());
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
    const QList<qint32> ids{supplier};
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
            const OrderNowResult r = PlacePurchaseOrder(InputFor(basket, 0, ids));
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
    void orderNumbers() {
        TestData data;
        QCOMPARE(LastPOID(), 0);
        QCOMPARE(POIDText(NextPOID(QString())), QStringLiteral("0001"));
        ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, POSupID) VALUES (12, 1), (7, 1)"));
        QCOMPARE(LastPOID(), 12);
        QCOMPARE(NextPOID(QStringLiteral("0001")), 13);
        QCOMPARE(NextPOID(QStringLiteral("5")), 13);
        QCOMPARE(NextPOID(QStringLiteral("500")), 500);
        QCOMPARE(POIDText(12345), QStringLiteral("12345"));
    }

    void placeOrder() {
        TestData data;
        ScriptedBoxes boxes;
        TwoSuppliers();
        // An older open row of item 10 counts in its on-order quantity.
        ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, POSupID) VALUES (12, 2)"));
        ExecSql(QStringLiteral("INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved) "
                               "VALUES (12, 10, 5, 2)"));
        fixture::BasketRow(10, QStringLiteral("4"), 1);
        const int unticked = fixture::BasketRow(11, QStringLiteral("0"), 0);
        fixture::BasketRow(12, QStringLiteral("2.5"), 1, QStringLiteral("'2026-12-24'"));
        BasketLoad load = LoadBasket(1);
        load.rows(BasketCol::Price, 1) = QStringLiteral("1.99"); // overtyped for this order

        // A typed number of 500 over the last number 12 is honoured.
        boxes.answer(vbYes);
        const OrderNowResult r = PlacePurchaseOrder(
            InputFor(load, 1, {2, 1}, QStringLiteral("500"), QStringLiteral("Ann`s ref")));
        QCOMPARE(r.outcome, OrderNowResult::Placed);
        QCOMPARE(r.poid, 500);
        QCOMPARE(r.poidText, QStringLiteral("0500"));
        QVERIFY(r.basketCleared && r.print);
        QCOMPARE(boxes.prompts(),
                 QStringList(QStringLiteral("Do you want to print the order Now?")));
        QCOMPARE(boxes.shown().at(0).title, QStringLiteral("Print Order?"));
        QCOMPARE(boxes.shown().at(0).flags & 7, int(vbYesNo));

        QCOMPARE(SqlFirst(QStringLiteral("SELECT POID || '|' || PONumber || '|' || PODate || '|' "
                                         "|| POSupID || '|' || POLocID || '|' || POComplete || "
                                         "'|' || POConfirmed FROM tblPOrders WHERE POID=500")),
                 QStringLiteral("500|Ann`s ref|2026-11-23|1|0|0|0"));
        QCOMPARE(Count(QStringLiteral("tblPODetail"), QStringLiteral("POID=500")),
                 QStringLiteral("2"));
        const QString row = QStringLiteral(
            "SELECT POSupPNo || '|' || POQty || '|' || POPrice || '|' || POSchedDate || '|' || "
            "PORecieved || '|' || RowConfirmed || '|' || RowComments || '|' || GRN_PONo FROM "
            "tblPODetail WHERE POID=500 AND POStockID=");
        QCOMPARE(SqlFirst(row + QStringLiteral("10")),
                 QStringLiteral("A-10|4.0|1.99|2040-01-01|0.0|0||"));
        QCOMPARE(SqlFirst(row + QStringLiteral("12")),
                 QStringLiteral("|2.5|4.0|2026-12-24|0.0|0||"));
        // The supplier's own price stays; on order: the new rows and what was outstanding.
        QCOMPARE(SqlFirst(QStringLiteral("SELECT PriceEach FROM tblItemSupplier WHERE ItemID=10 "
                                         "AND SupplierID=1")),
                 QStringLiteral("2"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT group_concat(OnOrderQty, '|') FROM (SELECT "
                                         "OnOrderQty FROM tblStockItems ORDER BY ItemID)")),
                 QStringLiteral("7.0|0.0|2.5"));
        // The ordered rows left the basket, under both suppliers; the unticked one waits.
        QCOMPARE(SqlFirst(QStringLiteral("SELECT group_concat(RowID) FROM tblBaskets")),
                 QString::number(unticked));
        QCOMPARE(LoadBasket(2).rowCount, 1);
        QCOMPARE(NextPOID(QStringLiteral("5")), 501);
    }

    void refusalsWriteNothing() {
        TestData data;
        ScriptedBoxes boxes;
        TwoSuppliers();
        fixture::BasketRow(10, QStringLiteral("3"), 1);
        fixture::BasketRow(11, QStringLiteral("0.5"), 1); // a ticked 0.5 counts as below 1
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
        const struct {
            OrderNowInput in;
            QString prompt, title;
            bool right = true;
        } cases[] = {
            {InputFor(load, 1, {0, 1}, QStringLiteral("0001")),
             QStringLiteral("At least one selected row has a zero order quantity\n\nEither "
                            "unselect the row or enter an order quantity"),
             AppName()},
            {InputFor(unticked, 1, {0, 1}), noRows, QStringLiteral("No items selected")},
            {InputFor(empty, 1, {0, 1}), noRows, QStringLiteral("No items selected")},
            {InputFor(stale, 1, {0, 1}), QStringLiteral("Nothing listed"),
             QStringLiteral("Nothing Done")},
            {InputFor(good, -1, {0, 1}),
             QStringLiteral("No Supplier selected. Order Not processed"),
             QStringLiteral("Nothing Done")},
            {InputFor(good, 1, {0, 1}),
             QStringLiteral("You do not have permission to add or make changes to purchase "
                            "orders"),
             QStringLiteral("Access Restricted"), false},
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
            // Headers, rows and basket rows.
            QCOMPARE(Count(QStringLiteral("tblPOrders")) + Count(QStringLiteral("tblPODetail")) +
                         Count(QStringLiteral("tblBaskets")),
                     QStringLiteral("002"));
        }
        gCanPurchasing = true;
        // With the quantity corrected it goes through; No to printing.
        boxes.clear();
        boxes.answer(vbNo);
        const OrderNowResult r = PlacePurchaseOrder(InputFor(good, 1, {0, 1}));
        QVERIFY(r.outcome == OrderNowResult::Placed && r.poid == 1 && !r.print);
        QCOMPARE(Count(QStringLiteral("tblPODetail"), QStringLiteral("POID=1")),
                 QStringLiteral("2"));
    }

    void commaLocaleOrder() {
        TestData data;
        ScriptedBoxes boxes;
        LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
        TwoSuppliers();
        fixture::BasketRow(10, QStringLiteral("1.5"), 1);
        BasketLoad load = LoadBasket(1);
        QCOMPARE(load.rows(BasketCol::ReqQty, 1).toString(), QStringLiteral("1,5"));
        load.rows(BasketCol::Price, 1) = QStringLiteral("2,75");
        boxes.answer(vbNo);
        QCOMPARE(PlacePurchaseOrder(InputFor(load, 1, {0, 1})).outcome, OrderNowResult::Placed);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT POQty || '|' || POPrice FROM tblPODetail")),
                 QStringLiteral("1.5|2.75"));
    }

    void failuresRollBack() {
        TestData data;
        ScriptedBoxes boxes;
        TwoSuppliers();
        fixture::BasketRow(10, QStringLiteral("4"), 1);
        fixture::BasketRow(11, QStringLiteral("2"), 1);
        fixture::BasketRow(12, QStringLiteral("1"), 1);
        const BasketLoad load = LoadBasket(1);

        // The second row of an order fails: nothing of the order is left, the basket is whole.
        ExecSql(QStringLiteral("CREATE TRIGGER failSecondRow BEFORE INSERT ON tblPODetail WHEN "
                               "(SELECT count(*) FROM tblPODetail WHERE POID=NEW.POID) >= 1 "
                               "BEGIN SELECT RAISE(ABORT, 'disk full'); END"));
        boxes.answer(vbOK);
        OrderNowResult r = PlacePurchaseOrder(InputFor(load, 1, {0, 1}, QStringLiteral("0001")));
        QCOMPARE(r.outcome, OrderNowResult::WriteFailed);
        QCOMPARE(r.poidText, QStringLiteral("0001"));
        QCOMPARE(boxes.prompts(),
                 QStringList(
                     QStringLiteral("There was a error while saving the purchase order details.")));
        QCOMPARE(boxes.shown().at(0).title, QStringLiteral("DB Write Error"));
        // Headers, rows and basket rows.
        QCOMPARE(Count(QStringLiteral("tblPOrders")) + Count(QStringLiteral("tblPODetail")) +
                     Count(QStringLiteral("tblBaskets")),
                 QStringLiteral("003"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT sum(OnOrderQty) FROM tblStockItems")),
                 QStringLiteral("0"));
        ExecSql(QStringLiteral("DROP TRIGGER failSecondRow"));

        // A basket delete fails: the order stays whole, its rows wait in the basket still, and
        // printing is offered.
        ExecSql(QStringLiteral("CREATE TRIGGER failDelete BEFORE DELETE ON tblBaskets WHEN "
                               "OLD.StockID=12 BEGIN SELECT RAISE(ABORT, 'locked'); END"));
        boxes.clear();
        boxes.answer(vbOK);
        boxes.answer(vbNo);
        r = PlacePurchaseOrder(InputFor(load, 1, {0, 1}));
        QVERIFY(r.outcome == OrderNowResult::Placed && !r.basketCleared);
        QCOMPARE(boxes.prompts(),
                 QStringList({"The Order details were saved but some data could not be removed "
                              "from the Basket. You may need to remove this manually",
                              "Do you want to print the order Now?"}));
        QCOMPARE(boxes.shown().at(0).title, QStringLiteral("DB Error"));
        // The header, its rows and the basket rows.
        QCOMPARE(Count(QStringLiteral("tblPOrders"), QStringLiteral("POID=1")) +
                     Count(QStringLiteral("tblPODetail"), QStringLiteral("POID=1")) +
                     Count(QStringLiteral("tblBaskets")),
                 QStringLiteral("133"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT OnOrderQty FROM tblStockItems WHERE ItemID=10")),
                 QStringLiteral("4"));
    }

    void twoProcesses() {
        TestData data;
        constexpr int kItems = 10;
        constexpr int kRounds = 50;
        for (int s : {1, 2}) {
            fixture::Supplier(s, QStringLiteral("Supplier %1").arg(s));
            for (int k = 0; k < kItems; ++k) {
                const int id = s * 100 + k;
                fixture::Item(id, QStringLiteral("P%1").arg(id));
                fixture::Link(id, s, QStringLiteral("1"), QStringLiteral("S%1-%2").arg(s).arg(k));
            }
        }
        ExecSql(QStringLiteral("WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM r "
                               "WHERE n < %1) INSERT INTO tblBaskets (StockID, ReqQty, OrderYN) "
                               "SELECT ItemID, n, 0 FROM tblStockItems, r ORDER BY n, ItemID")
                    .arg(kRounds));
        // Each row written to an order takes a little longer, so that the workers' orders
        // overlap and their numbers collide now and then.
        ExecSql(QStringLiteral("CREATE TABLE slow AS WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL "
                               "SELECT n + 1 FROM r WHERE n < 16) SELECT ItemID AS x FROM "
                               "tblStockItems, r"));
        ExecSql(QStringLiteral("CREATE TRIGGER slowRow AFTER INSERT ON tblPODetail BEGIN SELECT "
                               "count(*) FROM slow a, slow b WHERE a.x < 104; END"));

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
        QCOMPARE(placed.size() + failed.size(), 2 * kRounds);

        // Every header is an order a worker placed, whole: all the round's rows of its own
        // supplier and nothing else. A refused order left its round's rows in the basket.
        QCOMPARE(Count(QStringLiteral("tblPOrders")).toInt(), placed.size());
        QCOMPARE(Count(QStringLiteral("tblPODetail")).toInt(), placed.size() * kItems);
        for (auto o = placed.cbegin(); o != placed.cend(); ++o) {
            QCOMPARE(
                SqlFirst(
                    QStringLiteral("SELECT POSupID FROM tblPOrders WHERE POID=%1").arg(o.key())),
                QString::number(o->supplier));
            QCOMPARE(
                SqlFirst(QStringLiteral("SELECT count(DISTINCT POStockID) || '|' || "
                                        "min(POQty) || '|' || max(POQty) || '|' || "
                                        "min(POStockID / 100) || '|' || max(POStockID / 100) "
                                        "FROM tblPODetail WHERE POID=%1")
                             .arg(o.key())),
                QStringLiteral("%1|%2.0|%2.0|%3|%3").arg(kItems).arg(o->round).arg(o->supplier));
        }
        QCOMPARE(Count(QStringLiteral("tblBaskets")).toInt(), failed.size() * kItems);
        for (const Placed& f : failed)
            QCOMPARE(Count(QStringLiteral("tblBaskets"),
                           QStringLiteral("ReqQty=%1 AND StockID / 100 = %2")
                               .arg(f.round)
                               .arg(f.supplier)),
                     QString::number(kItems));
        // On order as a recount gives it.
        QCOMPARE(SqlFirst(QStringLiteral(
                     "SELECT count(*) FROM tblStockItems s WHERE s.OnOrderQty <> (SELECT "
                     "coalesce(sum(POQty - PORecieved), 0) FROM tblPODetail d WHERE "
                     "d.POStockID = s.ItemID)")),
                 QStringLiteral("0"));
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
