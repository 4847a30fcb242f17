// Purchasing: the basket of a supplier, the supplier's parts, the next order number, a 50-row
// order placed and its document.
#include "bench/Benchmarks.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Printer.h"
#include "foundation/Rights.h"
#include "purchasing/PurchaseBasket.h"
#include "purchasing/PurchaseOrder.h"
#include "purchasing/PurchaseOrderDocument.h"

namespace {

const QString kBenchOrderRef = QStringLiteral("BENCH-50");
constexpr int kOrderRows = 50;

QString LoadBasketSql(qint32 supplier) {
    return QStringLiteral(
               "SELECT  MasterPNo, ItemName, ItemDescription, ReqQty, MinORQty, DelDate, "
               "tblBaskets.RowID, tblStockItems.ItemID, tblItemSupplier.PriceEach, OrderYN, "
               "SupplierPNo FROM ((tblBaskets INNER JOIN tblStockItems ON tblStockItems.ItemID = "
               "tblBaskets.StockID) INNER JOIN tblItemSupplier ON "
               "tblStockItems.ItemID=tblItemSupplier.ItemID) WHERE tblItemSupplier.SupplierID=") +
           QString::number(supplier) +
           QStringLiteral(" AND tblItemSupplier.ItemID=tblBaskets.StockID ORDER BY RowID");
}

QString PartsSql(qint32 supplier, const QString& filter) {
    return QStringLiteral("SELECT  tblStockItems.ItemID, MasterPNo, ItemName, Category, "
                          "ItemDescription, PriceEach, MinOrQty, SupplierPNo FROM tblItemSupplier "
                          "INNER JOIN tblStockItems ON tblItemSupplier.ItemID = "
                          "tblStockItems.ItemID WHERE SupplierID =") +
           QString::number(supplier) + QStringLiteral(" AND tblStockItems.MasterPNo ") +
           LikePrefix(filter) + QStringLiteral(" ORDER BY MasterPNo");
}

// A basket of `rows` ticked rows of the supplier's parts, as the window holds it after the
// buyer typed the quantities. Its RowIDs are not in the file, so every order leaves the basket
// as it was while running the same statements.
BasketLoad BenchBasket(qint32 supplier, int rows) {
    const BasketLoad parts = ShowSupplierParts(supplier, QString());
    BasketLoad b;
    b.rowCount = std::min(rows, parts.rowCount);
    b.rows.Redim(BasketCol::Count, b.rowCount);
    for (int r = 1; r <= b.rowCount; ++r) {
        b.rows(BasketCol::PartNo, r) = parts.rows(PartCol::PartNo, r);
        b.rows(BasketCol::ReqQty, r) = QStringLiteral("2");
        b.rows(BasketCol::Ticked, r) = true;
        b.rows(BasketCol::RowID, r) = -r;
        b.rows(BasketCol::ItemID, r) = parts.rows(PartCol::ItemID, r);
        b.rows(BasketCol::Price, r) = parts.rows(PartCol::Price, r);
        b.rows(BasketCol::SupPNo, r) = parts.rows(PartCol::SupPNo, r);
    }
    return b;
}

OrderNowInput BenchOrder(const BasketLoad& basket, qint32 supplier, const QString& ref) {
    OrderNowInput in;
    in.rows = &basket.rows;
    in.rowCount = basket.rowCount;
    in.supplierChosen = true;
    in.supplierIndex = 0;
    in.supplierIDs = {supplier};
    in.reference = ref;
    return in;
}

} // namespace

static void AddPurchasingBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    GrantAllRights(); // as start-up does: the order is placed, not refused
    const qint32 supplier = context.busiestSupplier;
    qint32 basketSupplier = 0;
    QString prefix;
    qint32 documentPOID = 0;
    {
        Database db = DBEngine::OpenDatabase(context.dbPath);
        basketSupplier = qint32(FirstNumber(
            db, QStringLiteral("SELECT SupplierID FROM tblBaskets INNER JOIN tblItemSupplier ON "
                               "tblItemSupplier.ItemID = tblBaskets.StockID GROUP BY SupplierID "
                               "ORDER BY count(*) DESC LIMIT 1")));
        Recordset rs = db.OpenRecordset(
            QStringLiteral("SELECT MasterPNo FROM tblItemSupplier INNER JOIN tblStockItems ON "
                           "tblItemSupplier.ItemID = tblStockItems.ItemID WHERE SupplierID=%1 "
                           "ORDER BY MasterPNo LIMIT 1")
                .arg(supplier));
        prefix = rs.Eof() ? QString() : rs.Fields(0).Text().left(3);
        rs.Close();
        documentPOID = BenchOrderId(db, kBenchOrderRef);
    }
    // The document's order: placed once on a file that has none yet.
    if (documentPOID == 0) {
        const BasketLoad basket = BenchBasket(supplier, kOrderRows);
        documentPOID = PlacePurchaseOrder(BenchOrder(basket, supplier, kBenchOrderRef)).poid;
    }

    registry.add(QStringLiteral("purchasing.basket.load"),
                 [basketSupplier] { Consume(LoadBasket(basketSupplier).rowCount); },
                 {LoadBasketSql(basketSupplier)});
    registry.add(QStringLiteral("purchasing.parts.supplier"),
                 [supplier] { Consume(ShowSupplierParts(supplier, QString()).rowCount); },
                 {PartsSql(supplier, QString())});
    registry.add(QStringLiteral("purchasing.parts.supplier.prefix"),
                 [supplier, prefix] { Consume(ShowSupplierParts(supplier, prefix).rowCount); },
                 {PartsSql(supplier, prefix)});

    // The number shown at each supplier selection: one action per call.
    constexpr int kNumbers = 200;
    QList<QStringList> numberActions;
    for (int i = 0; i < kNumbers; ++i)
        numberActions << QStringList{
            QStringLiteral("SELECT POID FROM tblPOrders ORDER BY POID DESC LIMIT 1")};
    registry.addActions(
        QStringLiteral("purchasing.nextpoid.x200"),
        [] {
            qint64 sum = 0;
            for (int i = 0; i < kNumbers; ++i)
                sum += NextPOID(QString());
            Consume(sum);
        },
        numberActions);

    // A 50-row order: the number, then header, rows and on-order figures in one transaction,
    // then the basket deletes in another. Each run adds an order, on both sides.
    const auto basket = std::make_shared<BasketLoad>(BenchBasket(supplier, kOrderRows));
    const QString last = QStringLiteral("(SELECT POID FROM tblPOrders ORDER BY POID DESC LIMIT 1)");
    QStringList write{QStringLiteral("BEGIN IMMEDIATE"),
                      QStringLiteral("INSERT INTO tblPOrders(POID, PONumber, PODate, POSupID, "
                                     "POLocID, POComplete, POConfirmed) VALUES (") +
                          last + QStringLiteral("+1,'bench','2026-01-01',") +
                          QString::number(supplier) + QStringLiteral(",0,0,0)"),
                      QStringLiteral("SELECT POID FROM tblPOrders ORDER BY POID DESC LIMIT 1")};
    QStringList deletes{QStringLiteral("BEGIN IMMEDIATE")};
    for (int r = 1; r <= basket->rowCount; ++r) {
        const QString item = basket->rows(BasketCol::ItemID, r).toString();
        write << QStringLiteral("INSERT INTO tblPODetail(POStockID, POID, POSupPNo, POQty, "
                                "POPrice, POSchedDate, PORecieved, RowConfirmed, RowComments, "
                                "GRN_PONo) VALUES (") +
                     item + QStringLiteral(",") + last +
                     QStringLiteral(",'bench',2,1,'2040-01-01',0,0,'','')")
              << QStringLiteral(" SELECT * FROM tblPODetail WHERE POStockID=") + item +
                     QStringLiteral(" AND POQty <> PORecieved")
              << QStringLiteral(
                     "UPDATE tblStockItems SET OnOrderQty = OnOrderQty WHERE ItemID = ") +
                     item;
        deletes << QStringLiteral("DELETE FROM tblBaskets WHERE RowID=%1").arg(-r);
    }
    write << QStringLiteral("COMMIT");
    deletes << QStringLiteral("COMMIT");
    registry.addActions(
        QStringLiteral("purchasing.order.50rows"),
        [basket, supplier] {
            Consume(
                PlacePurchaseOrder(BenchOrder(*basket, supplier, QStringLiteral("bench"))).poid);
        },
        {{QStringLiteral("SELECT POID FROM tblPOrders ORDER BY POID DESC LIMIT 1")},
         write,
         deletes});

    // Its document, drawn on a recording printer; the company block is read on a connection of
    // its own.
    const QString id = QString::number(documentPOID);
    registry.addActions(
        QStringLiteral("purchasing.document.50rows"),
        [documentPOID] {
            auto printer = UseRecordingPrinter();
            Consume(PrintPurchaseOrder(documentPOID, false) + printer->Calls().size());
        },
        {{QStringLiteral("SELECT * FROM tblHome")},
         {QStringLiteral("SELECT * FROM tblPOrders INNER JOIN tblSupAddresses ON "
                         "tblPOrders.POSupID=tblSupAddresses.AddID WHERE POID=") +
              id,
          QStringLiteral("SELECT * FROM tblPODetail INNER JOIN tblStockItems ON "
                         "tblPODetail.POStockID = tblStockItems.ItemID WHERE tblPODetail.POID=") +
              id + QStringLiteral(" ORDER BY MasterPNo, POSchedDate")}});
}

static const BenchSet purchasingSet("purchasing", AddPurchasingBenchmarks);
