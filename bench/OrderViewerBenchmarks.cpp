// The order viewer: the order list in its two busiest modes, one order's rows, and the save of a
// 50-row order (each statement committed by itself).
#include "bench/Benchmarks.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Helpers.h"
#include "purchasing/ItemPOrders.h"
#include "purchasing/OrderViewer.h"

namespace {

const QString kViewOrderRef = QStringLiteral("BENCH-VIEW-50");
constexpr int kViewOrderRows = 50;

// A 50-row order of the busiest supplier, made once on a file that has none yet, all rows open.
qint32 ViewOrder(const QString& dbPath, qint32 supplier) {
    Database db = DBEngine::OpenDatabase(dbPath);
    if (const qint32 made = BenchOrderId(db, kViewOrderRef))
        return made;
    db.BeginTrans();
    db.Execute(QStringLiteral("INSERT INTO tblPOrders (POID, PONumber, PODate, POSupID, POLocID, "
                              "POComplete, POConfirmed) SELECT max(POID) + 1, ?, '2026-01-15', ?, "
                              "0, 0, 0 FROM tblPOrders"),
               {kViewOrderRef, supplier});
    db.Execute(QStringLiteral("INSERT INTO tblPODetail (POStockID, POID, POSupPNo, POQty, POPrice, "
                              "POSchedDate, PORecieved, RowConfirmed, RowComments, GRN_PONo) "
                              "SELECT ItemID, (SELECT max(POID) FROM tblPOrders), SupplierPNo, 3, "
                              "PriceEach, '2026-02-01', 1, 0, '', '' FROM tblItemSupplier WHERE "
                              "SupplierID=? ORDER BY ItemID LIMIT ?"),
               {supplier, kViewOrderRows});
    db.CommitTrans();
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT max(POID) FROM tblPOrders"));
    return qint32(rs.Fields(0).Long());
}

QString DetailSql(qint32 poid) {
    return QStringLiteral("SELECT * FROM (tblPOrders INNER JOIN tblPODetail ON tblPOrders.POID = "
                          "tblPODetail.POID) INNER JOIN tblStockItems ON "
                          "tblPODetail.POStockID=tblStockItems.ItemID WHERE tblPOrders.POID =") +
           QString::number(poid) + QStringLiteral(" ORDER BY POSchedDate, POStockID");
}

// The statements of a save of these rows: each row, then each row's item counted and written,
// then the header.
QStringList SaveSql(const OrderArray& rows, qint32 poid) {
    QStringList sql;
    QStringList items;
    for (int r = 1; r <= rows.rowCount; ++r) {
        sql << QStringLiteral("UPDATE tblPODetail SET POSchedDate=") +
                   SqlDateLiteral(ParseDateText(rows.rows(PODetailCol::DelDate, r).toString())) +
                   QStringLiteral(", POQty=") +
                   SqlNumber(rows.rows(PODetailCol::POQty, r), QStringLiteral("0.0#")) +
                   QStringLiteral(", POPrice=") +
                   SqlNumber(rows.rows(PODetailCol::AtPrice, r), QStringLiteral("0.00###")) +
                   QStringLiteral(", RowConfirmed=0 WHERE RowID=") +
                   rows.rows(PODetailCol::RowID, r).toString();
        items << rows.rows(PODetailCol::StockID, r).toString();
    }
    for (const QString& item : items)
        sql << QStringLiteral(" SELECT * FROM tblPODetail WHERE POStockID=") + item +
                   QStringLiteral(" AND POQty <> PORecieved")
            << QStringLiteral("UPDATE tblStockItems SET OnOrderQty = OnOrderQty WHERE ItemID = ") +
                   item;
    sql << QStringLiteral("UPDATE tblPOrders SET POComplete=0 WHERE POID=") + QString::number(poid);
    return sql;
}

} // namespace

static void AddOrderViewerBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    for (quint8 mode : {OrderViewMode::NotCompleted, OrderViewMode::All}) {
        registry.add(QStringLiteral("orderviewer.list.mode%1").arg(mode),
                     [mode] { Consume(LoadOrderList(mode, QString(), QString()).rowCount); },
                     {OrderListStatement(mode, QString(), QString())});
    }
    registry.add(QStringLiteral("orderviewer.list.mode6.typed"),
                 [] {
                     Consume(
                         LoadOrderList(OrderViewMode::NotCompleted, QStringLiteral("1"), QString())
                             .rowCount);
                 },
                 {OrderListStatement(OrderViewMode::NotCompleted, QStringLiteral("1"), QString())});

    const qint32 poid = ViewOrder(context.dbPath, context.busiestSupplier);
    registry.add(QStringLiteral("orderviewer.detail.50rows"),
                 [poid] { Consume(LoadOrderDetail(poid).rowCount); }, {DetailSql(poid)});

    // The rows as the window holds them after a load; a save writes them back unchanged, so
    // every run does the same work.
    const auto rows = std::make_shared<OrderArray>(LoadOrderDetail(poid));
    registry.add(
        QStringLiteral("orderviewer.save.50rows"),
        [rows, poid] {
            SaveOrderInput in;
            in.rows = &rows->rows;
            in.rowCount = rows->rowCount;
            in.poidText = QString::number(poid);
            SaveOrderRows(in);
            Consume(rows->rowCount);
        },
        SaveSql(*rows, poid));

    // The item's "Purchase Orders" tab, for an item of the order.
    const qint32 item = qint32(rows->rows(PODetailCol::StockID, 1).toLongLong());
    registry.add(QStringLiteral("orderviewer.item.orders"),
                 [item] { Consume(LoadItemPOrders(item).rowCount); }, {ItemPOrdersStatement(item)});
}

static const BenchSet orderViewerSet("orderviewer", AddOrderViewerBenchmarks);
