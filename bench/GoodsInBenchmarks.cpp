// Goods receiving: the list of outstanding orders, the rows of an order, and a 50-row booking.
#include "bench/Benchmarks.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Helpers.h"
#include "purchasing/GoodsIn.h"
#include "purchasing/PurchaseOrder.h"

#include <memory>

namespace {

const QString kBookingRef = QStringLiteral("BENCH-GIN-50");
constexpr int kBookingRows = 50;

QString OrderRowsSql(qint32 poid) {
    return QStringLiteral("SELECT * FROM ((tblPOrders INNER JOIN tblPODetail ON tblPOrders.POID "
                          "= tblPODetail.POID) INNER JOIN tblStockItems ON "
                          "tblPODetail.POStockID=tblStockItems.ItemID) WHERE tblPOrders.POID =") +
           QString::number(poid) +
           QStringLiteral(" AND POQty<>PORecieved ORDER BY tblPODetail.RowID");
}

// An order of 50 rows of different items, ordered in quantities no booking here ever reaches:
// made once on a file that has none yet.
qint32 BookingOrder(const QString& dbPath) {
    Database db = DBEngine::OpenDatabase(dbPath);
    qint32 poid = BenchOrderId(db, kBookingRef);
    if (poid != 0)
        return poid;
    db.BeginTrans();
    poid = LastPOID(&db) + 1;
    db.Execute(QStringLiteral("INSERT INTO tblPOrders (POID, PONumber, PODate, POSupID, POLocID, "
                              "POComplete, POConfirmed) VALUES (") +
               QString::number(poid) + QStringLiteral(",'") + kBookingRef +
               QStringLiteral("','2026-01-05',1,0,0,0)"));
    for (int i = 0; i < kBookingRows; ++i)
        db.Execute(QStringLiteral("INSERT INTO tblPODetail (POID, POStockID, POSupPNo, POQty, "
                                  "POPrice, POSchedDate, PORecieved, RowConfirmed, RowComments, "
                                  "GRN_PONo) VALUES (%1, %2, 'B', 1000000000, 1, '2040-01-01', "
                                  "0, 0, '', '')")
                       .arg(poid)
                       .arg(1 + i * 37));
    db.CommitTrans();
    return poid;
}

} // namespace

static void AddGoodsInBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    // The list: the statement, the working array and the copy the grid shows.
    registry.add(
        QStringLiteral("goodsin.list"),
        [] {
            const GoodsInArray list = LoadOutstandingOrders();
            Consume(ShowOrderList(list).list.rowCount);
        },
        {QStringLiteral("SELECT  DISTINCT tblPOrders.POID, tblPOrders.PONumber, "
                        "tblSupAddresses.CoName, PODate, tblSupAddresses.AddID FROM ((tblPOrders "
                        "INNER JOIN tblPODetail ON tblPOrders.POID=tblPODetail.POID) LEFT JOIN "
                        "tblSupAddresses ON tblPOrders.POSupID=tblSupAddresses.AddID) WHERE "
                        "tblPODetail.POQty <> tblPODetail.PORecieved ORDER BY "
                        "tblSupAddresses.CoName, tblPOrders.POID")});

    const qint32 poid = BookingOrder(context.dbPath);
    registry.add(QStringLiteral("goodsin.rows.50"),
                 [poid] { Consume(LoadOrderRows(poid, false).rowCount); }, {OrderRowsSql(poid)});

    // Booking 1 of each of the 50 rows, in one transaction; each run adds its history rows, on
    // both sides alike.
    const auto rows = std::make_shared<GoodsInArray>(LoadOrderRows(poid, false));
    for (int r = 1; r <= rows->rowCount; ++r)
        rows->rows(GinCol::RXd, r) = QStringLiteral("1");
    QStringList bare{QStringLiteral("BEGIN IMMEDIATE")};
    for (int r = 1; r <= rows->rowCount; ++r) {
        const QString item = std::as_const(rows->rows)(GinCol::StockID, r).toString();
        const QString rowId = std::as_const(rows->rows)(GinCol::RowID, r).toString();
        bare << QStringLiteral("UPDATE tblStockItems SET Qty=Qty + 1 WHERE ItemID=") + item
             << QStringLiteral("INSERT INTO tblItemHistory (StockID, HistDate, HistType, "
                               "HistID2, HistRef, HistTRN, HistQty, HistText) VALUES (") +
                    item + QStringLiteral(",'2026-01-05', 'RX', ") + rowId +
                    QStringLiteral(", 'ADV', 'TRN', 1, 'Purchase Order: BENCH')")
             << QStringLiteral("UPDATE tblPODetail SET PORecieved=PORecieved+1 WHERE RowID=") +
                    rowId
             << QStringLiteral(" SELECT * FROM tblPODetail WHERE POStockID=") + item +
                    QStringLiteral(" AND POQty <> PORecieved")
             << QStringLiteral("UPDATE tblStockItems SET OnOrderQty = OnOrderQty WHERE ItemID = ") +
                    item;
    }
    bare << QStringLiteral("COMMIT");
    registry.add(
        QStringLiteral("goodsin.book.50rows"),
        [rows] {
            // Each run books anew: the marks of the last run are cleared as a new load has them.
            for (int r = 1; r <= rows->rowCount; ++r)
                rows->rows(GinCol::NConf, r) = QString();
            BookInInput in;
            in.rows = rows.get();
            in.adviceNo = QStringLiteral("ADV");
            in.grnNo = QStringLiteral("TRN");
            in.poNo = QStringLiteral("BENCH");
            Consume(BookInGoods(in));
        },
        bare);
}

static const BenchSet goodsInSet("goodsin", AddGoodsInBenchmarks);
