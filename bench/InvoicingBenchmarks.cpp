// Invoicing: a saved order of 50 rows invoiced, a new order of 50 rows saved and invoiced at
// once, a 50-row invoice loaded and changed, and the two numbers an invoice takes.
#include "bench/Benchmarks.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "sales/CustOrder.h"
#include "sales/Invoicing.h"

#include <algorithm>

namespace {
// The order invoiced and the invoice loaded and changed: made once in the benchmark file, far
// above the generator's numbers. The invoice's despatch key is its number, so that its change
// reaches its despatch rows.
constexpr qint32 kOrder = 990101;
constexpr qint32 kInvoice = 990101;
constexpr int kRows = 50;

struct Prepared {
    QString custID, customer; // the order's customer: AddID and name
    QList<qint64> rowKeys, stockIDs;
};

// The order's rows and its invoice, made when the file has none.
Prepared prepare(const QString& dbPath, qint64 items) {
    Prepared p;
    Database db = DBEngine::OpenDatabase(dbPath);
    Recordset customer = db.OpenRecordset(
        QStringLiteral("SELECT AddID FROM tblCusAddresses ORDER BY AddID") + FirstRowOnly());
    if (customer.Eof())
        return p;
    const QString custID = customer.Fields(0).Text();
    customer.Close();
    Recordset rows = db.OpenRecordset(
        QStringLiteral(
            "SELECT RowID, StockID FROM tblCustOrderDetail WHERE CustBasketDetailID = ") +
        QString::number(kOrder) + QStringLiteral(" ORDER BY RowID"));
    if (rows.Eof()) {
        rows.Close();
        db.BeginTrans();
        db.Execute(QStringLiteral("INSERT INTO tblCustOrders (CustBasketID, CustID, SalesRef, "
                                  "CustOrRef, CustOrDate, ORDiscount) VALUES (") +
                   QString::number(kOrder) + QLatin1Char(',') + custID +
                   QStringLiteral(",'','BENCH','2026-01-05',5)"));
        const qint64 step = std::max<qint64>(1, items / kRows);
        for (int i = 0; i < kRows; ++i)
            db.Execute(QStringLiteral("INSERT INTO tblCustOrderDetail (CustBasketDetailID, "
                                      "StockID, OrderedQty, ShippedQty, GrosPrice, NetPrice) "
                                      "VALUES (") +
                       QString::number(kOrder) + QLatin1Char(',') + QString::number(1 + i * step) +
                       QStringLiteral(",1000000,2,12.345,11.72775)"));
        db.Execute(QStringLiteral("INSERT INTO tblDespatch (DespID, CustOrderID, DespSeqNo, "
                                  "DespNoteText, DespFreeText, DespDate, Invoiced, TotalTax, "
                                  "Delivery, InvoiceNo, TaxRate) VALUES (") +
                   QString::number(kInvoice) + QLatin1Char(',') + QString::number(kOrder) +
                   QStringLiteral(",1,'POS','','2026-01-06','2026-01-06',205.29,5,") +
                   QString::number(kInvoice) + QStringLiteral(",17.5)"));
        db.Execute(QStringLiteral("INSERT INTO tblDespDetail (DespID, DespQty, DespStockID, "
                                  "OrderDetailRowID, SellAtPrice) SELECT ") +
                   QString::number(kInvoice) +
                   QStringLiteral(", 2, StockID, RowID, NetPrice FROM tblCustOrderDetail WHERE "
                                  "CustBasketDetailID = ") +
                   QString::number(kOrder) + QStringLiteral(" ORDER BY RowID"));
        db.CommitTrans();
        rows =
            db.OpenRecordset(QStringLiteral("SELECT RowID, StockID FROM tblCustOrderDetail WHERE "
                                            "CustBasketDetailID = ") +
                             QString::number(kOrder) + QStringLiteral(" ORDER BY RowID"));
    }
    for (; !rows.Eof(); rows.MoveNext()) {
        p.rowKeys << rows.Fields(0).Long();
        p.stockIDs << rows.Fields(1).Long();
    }
    Recordset name = db.OpenRecordset(
        QStringLiteral("SELECT CoName FROM tblCusAddresses WHERE AddID = ") + custID);
    if (!name.Eof()) {
        p.custID = custID;
        p.customer = name.Fields(0).Text();
    }
    return p;
}

QString nextInvoiceSql() {
    return QStringLiteral("SELECT InvoiceNo FROM tblDespatch ORDER BY InvoiceNo DESC") +
           FirstRowOnly();
}

QString despatchInsertSql(qint32 order, const QString& today) {
    return QStringLiteral("INSERT INTO tblDespatch (CustOrderID, DespSeqNo, DespNoteText, "
                          "DespFreeText, DespDate, Invoiced, TotalTax, Delivery, InvoiceNo, "
                          "TaxRate ) VALUES  (") +
           QString::number(order) + QStringLiteral(",1,'POS','',") + today + QLatin1Char(',') +
           today + QStringLiteral(",103.5,5,-1,17.5)");
}

// What one invoiced row writes after its order row, as the bare side runs it.
QStringList despatchRowSql(const QString& stock, const QString& key, const QString& today,
                           const QString& ref) {
    return {QStringLiteral("INSERT INTO tblDespDetail  ( DespID, DespQty, DespStockID, "
                           "OrderDetailRowID, SellAtPrice ) VALUES  (-1,1,") +
                stock + QLatin1Char(',') + key + QStringLiteral(",11.72775)"),
            QStringLiteral("UPDATE tblStockItems SET Qty = Qty - 1 WHERE ItemID = ") + stock,
            QStringLiteral("INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistID, "
                           "HistRef, HistQty, HistText) VALUES (") +
                stock + QLatin1Char(',') + today + QStringLiteral(",'SHIP',0,'") + ref +
                QStringLiteral("',1,'POS');")};
}
} // namespace

static void AddInvoicingBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    registry.add(QStringLiteral("sales.invoice.nextinvoiceno"), [] { Consume(NextInvoiceNo()); },
                 {nextInvoiceSql()});
    // A generated order, with the few despatches an order has.
    registry.add(QStringLiteral("sales.invoice.nextdespseqno"), [] { Consume(NextDespSeqNo(1)); },
                 {QStringLiteral("SELECT DespSeqNo FROM tblDespatch  WHERE CustOrderID = 1 ORDER "
                                 "BY DespSeqNo")});

    const Prepared p = prepare(context.dbPath, context.items);
    const QList<qint64>& keys = p.rowKeys;
    const QList<qint64>& stock = p.stockIDs;
    if (p.customer.isEmpty() || keys.size() != kRows)
        return;
    const QString today = SqlDateLiteral(Today());

    // The saved invoice opened: its header and rows on one connection, the customer's details on
    // one of their own.
    registry.addActions(
        QStringLiteral("sales.invoice.load.50rows"),
        [] {
            CustOrderSheet sheet;
            sheet.mode = OrderMode::SavedInvoice;
            LoadSavedInvoice(sheet, kInvoice);
            Consume(sheet.rows.size());
        },
        {{SavedInvoiceStatement(kInvoice), InvoiceRowsStatement(kInvoice)},
         {QStringLiteral("SELECT * FROM tblCusAddresses WHERE CoName=") + SqlText(p.customer)}});

    // The invoice changed: every row from 2 to 3 at a new price, in one transaction.
    auto edited = std::make_shared<CustOrderSheet>();
    edited->mode = OrderMode::SavedInvoice;
    edited->tax1Rate = QStringLiteral("17.5");
    LoadSavedInvoice(*edited, kInvoice);
    QStringList bareUpdate = {
        QStringLiteral("BEGIN IMMEDIATE"),
        QStringLiteral("UPDATE tblCustOrders SET  CustOrRef='BENCH', ORDiscount=5 WHERE "
                       "CustBasketID = ") +
            QString::number(kOrder),
        QStringLiteral("UPDATE tblDespatch SET  TotalTax = 308.0, Delivery = 5, TaxRate = 17.5 "
                       "WHERE InvoiceNo = ") +
            QString::number(kInvoice)};
    for (int i = 0; i < edited->rows.size(); ++i) {
        OrderRow& row = edited->rows[i];
        row[OrderCol::InvoiceQty] = QStringLiteral("3");
        row[OrderCol::SellAt] = QStringLiteral("11.5");
        const QString key = QString::number(keys[i]);
        bareUpdate << QStringLiteral("UPDATE tblDespDetail SET SellAtPrice = 11.5, DespQty = 3 "
                                     "WHERE DespID = ") +
                          QString::number(kInvoice) + QStringLiteral(" AND OrderDetailRowID = ") +
                          key
                   << QStringLiteral("UPDATE tblCustOrderDetail SET ShippedQty = ShippedQty + 1 "
                                     "WHERE rowID = ") +
                          key
                   << QStringLiteral("UPDATE tblStockItems SET Qty = Qty + -1 WHERE ItemID = ") +
                          QString::number(stock[i]);
    }
    RecalcOrderTotals(*edited);
    bareUpdate << QStringLiteral("COMMIT");
    registry.add(
        QStringLiteral("sales.invoice.update.50rows"),
        [edited] { Consume(UpdateSavedInvoice(*edited)); }, bareUpdate);

    // The order invoiced for one of each row: the number on a connection of its own, then the
    // header on its own and the rows in one transaction.
    auto order = std::make_shared<CustOrderSheet>();
    order->mode = OrderMode::InvoiceOrder;
    order->tax1Rate = QStringLiteral("17.5");
    LoadSavedOrder(*order, kOrder);
    const QString ref = order->custShipID;
    QStringList bareInvoice = {despatchInsertSql(kOrder, today),
                               QStringLiteral("SELECT DespID FROM tblDespatch ORDER BY DespID "
                                              "Desc") +
                                   FirstRowOnly(),
                               QStringLiteral("BEGIN IMMEDIATE")};
    for (int i = 0; i < order->rows.size(); ++i) {
        order->rows[i][OrderCol::InvoiceQty] = QStringLiteral("1");
        const QString key = QString::number(keys[i]);
        bareInvoice << QStringLiteral("UPDATE tblCustOrderDetail SET ShippedQty = ShippedQty + "
                                      "1 WHERE RowID = ") +
                           key;
        bareInvoice << despatchRowSql(QString::number(stock[i]), key, today, ref);
    }
    bareInvoice << QStringLiteral("COMMIT");
    RecalcOrderTotals(*order);
    registry.addActions(QStringLiteral("sales.invoice.saved.50rows"),
                        [order] {
                            CustOrderSheet sheet = *order;
                            Consume(InvoiceSavedOrder(sheet));
                        },
                        {{nextInvoiceSql()}, bareInvoice});

    // A new order of 50 rows saved and invoiced at once: the two numbers on connections of
    // their own, then about 200 statements, each committed on its own.
    auto fresh = std::make_shared<CustOrderSheet>();
    fresh->mode = OrderMode::NewOrder;
    fresh->custID = p.custID;
    fresh->custOrNo = QStringLiteral("BENCH");
    fresh->discount = QStringLiteral("5");
    fresh->tax1Rate = QStringLiteral("17.5");
    fresh->delivery = QStringLiteral("5.00");
    QStringList bareNew = {
        QStringLiteral("INSERT INTO tblCustOrders  (CustBasketID, CustID, SalesRef, CustOrRef, "
                       "CustOrDate, ORDiscount) VALUES  (NULL,") +
            p.custID + QStringLiteral(",'','BENCH',") + today + QStringLiteral(",5)"),
        despatchInsertSql(-1, today),
        QStringLiteral("SELECT DespID FROM tblDespatch ORDER BY DespID Desc") + FirstRowOnly()};
    for (int i = 0; i < kRows; ++i) {
        OrderRow row;
        row[OrderCol::Item] = QString::number(i + 1);
        row[OrderCol::StockID] = QString::number(stock[i]);
        row[OrderCol::Price] = QStringLiteral("12.345");
        row[OrderCol::SellAt] = QStringLiteral("11.72775");
        row[OrderCol::OrderQty] = QStringLiteral("1");
        fresh->rows.append(row);
        bareNew << QStringLiteral("INSERT INTO tblCustOrderDetail  ( CustBasketDetailID, "
                                  "StockID, OrderedQty, GrosPrice, NetPrice, ShippedQty) VALUES  "
                                  "(-1,") +
                       row[OrderCol::StockID] + QStringLiteral(",1,12.345,11.72775,1);")
                << QStringLiteral("SELECT RowID FROM tblCustOrderDetail  WHERE "
                                  "CustBasketDetailID = -1 ORDER BY RowID Desc") +
                       FirstRowOnly();
        bareNew << despatchRowSql(row[OrderCol::StockID], QString::number(keys[i]), today,
                                  QStringLiteral("0000-001"));
    }
    RecalcOrderTotals(*fresh);
    registry.addActions(
        QStringLiteral("sales.invoice.new.50rows"),
        [fresh] {
            CustOrderSheet sheet = *fresh;
            SaveAndInvoiceNewOrder(sheet);
            Consume(sheet.rows.size());
        },
        {{QStringLiteral("SELECT CustBasketID FROM tblCustOrders ORDER BY CustBasketID DESC") +
          FirstRowOnly()},
         {nextInvoiceSql()},
         bareNew});
}

static const BenchSet invoicingSet("sales.invoice", AddInvoicingBenchmarks);
