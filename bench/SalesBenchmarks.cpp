// The customer order window: the add-items list, loading a saved order of 50 rows, the arithmetic
// of one key press in its grid and saving a new order of 50 rows; the sales lists of the main
// window.
#include "bench/Benchmarks.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "grids/GridEX.h"
#include "sales/CustOrder.h"
#include "sales/CustOrderSave.h"
#include "sales/SalesLists.h"
#include "sales/frmBParts.h"
#include "sales/frmCustOrder.h"

#include <QApplication>
#include <QPushButton>
#include <QTableView>
#include <algorithm>
#include <memory>

namespace {
// The order the order benchmarks open: 50 rows over items spread through the file. Made once in
// the benchmark file, under a number far above the generator's.
constexpr qint32 kBenchOrder = 990001;

QString customerOfBenchOrder(const QString& dbPath, qint64 items) {
    Database db = DBEngine::OpenDatabase(dbPath);
    Recordset head = db.OpenRecordset(
        QStringLiteral("SELECT CoName FROM tblCustOrders INNER JOIN tblCusAddresses ON "
                       "tblCustOrders.CustID=tblCusAddresses.AddID WHERE CustBasketID=") +
        QString::number(kBenchOrder));
    if (!head.Eof())
        return head.Fields(0).Text();
    Recordset customer = db.OpenRecordset(
        QStringLiteral("SELECT AddID, CoName FROM tblCusAddresses ORDER BY AddID") +
        FirstRowOnly());
    if (customer.Eof())
        return QString();
    const QString id = customer.Fields(0).Text();
    db.BeginTrans();
    db.Execute(QStringLiteral("INSERT INTO tblCustOrders (CustBasketID, CustID, SalesRef, "
                              "CustOrRef, CustOrDate, ORDiscount) VALUES (") +
               QString::number(kBenchOrder) + QLatin1Char(',') + id +
               QStringLiteral(",'','BENCH','2026-01-05',5)"));
    const qint64 step = std::max<qint64>(1, items / 50);
    for (int i = 0; i < 50; ++i)
        db.Execute(QStringLiteral("INSERT INTO tblCustOrderDetail (CustBasketDetailID, StockID, "
                                  "OrderedQty, ShippedQty, GrosPrice, NetPrice) VALUES (") +
                   QString::number(kBenchOrder) + QLatin1Char(',') + QString::number(1 + i * step) +
                   QStringLiteral(",") + QString::number(1 + i % 7) +
                   QStringLiteral(",0,12.345,11.72775)"));
    db.CommitTrans();
    return customer.Fields(1).Text();
}

void addParts(BenchRegistry& registry, const QString& name, const PartsFilter& filter) {
    registry.add(name, [filter] { Consume(LoadPartsForOrder(filter, QStringLiteral("5")).Rows()); },
                 {PartsStatement(filter)});
}
} // namespace

static void AddSalesBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    addParts(registry, QStringLiteral("sales.parts.all"), {});
    addParts(registry, QStringLiteral("sales.parts.contains"),
             {QStringLiteral("-12"), QStringLiteral("ca"), QString()});
    // The same list as its user meets it: from the click on "Add Items" in a new order (offscreen)
    // to the grid showing its first rows. The window is made by the first run and kept.
    auto window = std::make_shared<std::unique_ptr<frmCustOrder>>();
    registry.addWindow(QStringLiteral("sales.parts.window"),
                       [window] {
                           if (!*window) {
                               gCustOrderMode = OrderMode::NewOrder;
                               *window = std::make_unique<frmCustOrder>();
                               (*window)->show();
                               QApplication::processEvents();
                           }
                           frmCustOrder& w = **window;
                           w.Command4->click();
                           QApplication::processEvents();
                           w.frmBParts->gdxAllParts->TableView()->viewport()->repaint();
                           Consume(w.frmBParts->gdxAllParts->ItemCount());
                           w.frmBParts->Command3->click();
                       },
                       {PartsStatement({})});

    const QString customer = customerOfBenchOrder(context.dbPath, context.items);
    if (customer.isEmpty())
        return;
    // LoadSavedOrder: the order's rows and its next delivery number on one connection, the
    // customer's details on a connection of their own.
    registry.addActions(
        QStringLiteral("sales.order.load.50rows"),
        [] {
            CustOrderSheet sheet;
            sheet.mode = OrderMode::SavedOrder;
            LoadSavedOrder(sheet, kBenchOrder);
            Consume(sheet.rows.size());
        },
        {{SavedOrderStatement(kBenchOrder),
          QStringLiteral("SELECT DespSeqNo FROM tblDespatch  WHERE CustOrderID = ") +
              QString::number(kBenchOrder) + QStringLiteral(" ORDER BY DespSeqNo")},
         {QStringLiteral("SELECT * FROM tblCusAddresses WHERE CoName=") + SqlText(customer)}});

    // One key press in the grid: the cell written back and every total worked out again. It
    // reads no table, so its bare side is empty: the time itself is the figure.
    auto sheet = std::make_shared<CustOrderSheet>();
    registry.addActions(QStringLiteral("sales.order.keypress.50rows"),
                        [sheet] {
                            if (sheet->rows.isEmpty()) {
                                sheet->mode = OrderMode::SavedOrder;
                                sheet->tax1Rate = QStringLiteral("17.5");
                                LoadSavedOrder(*sheet, kBenchOrder);
                                sheet->editRow = 25;
                                sheet->editCol = OrderCol::OrderQty;
                            }
                            static int n = 0;
                            EditCell(*sheet, QString::number(1 + (++n % 9)));
                            Consume(sheet->net.size());
                        },
                        {});
}

static void AddSalesSaveBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    const QString next = QStringLiteral("SELECT CustBasketID FROM tblCustOrders ORDER BY "
                                        "CustBasketID DESC") +
                         FirstRowOnly();
    registry.add(QStringLiteral("sales.order.nextnumber"), [] { Consume(NextCustBasketID()); },
                 {next});

    // A new order of 50 rows: the number, then the header update that hits nothing, its insert
    // and the 50 row inserts, each statement committed on its own. The bare side writes the
    // same statements under a number of its own.
    auto order = std::make_shared<CustOrderSheet>();
    order->mode = OrderMode::NewOrder;
    order->custID = QStringLiteral("1");
    order->custOrNo = QStringLiteral("BENCH");
    order->discount = QStringLiteral("5");
    const qint64 step = std::max<qint64>(1, context.items / 50);
    QStringList bareSave = {
        QStringLiteral("UPDATE tblCustOrders SET  CustOrRef='BENCH', ORDiscount=5 WHERE "
                       "CustBasketID = -1"),
        QStringLiteral("INSERT INTO tblCustOrders  (CustBasketID, CustID, SalesRef, CustOrRef, "
                       "CustOrDate, ORDiscount) VALUES  (NULL,1,'','BENCH','2026-01-05',5)")};
    for (int i = 0; i < 50; ++i) {
        OrderRow row;
        row[OrderCol::Item] = QString::number(i + 1);
        row[OrderCol::StockID] = QString::number(1 + i * step);
        row[OrderCol::Price] = QStringLiteral("12.345");
        row[OrderCol::SellAt] = QStringLiteral("11.72775");
        row[OrderCol::OrderQty] = QString::number(1 + i % 7);
        order->rows.append(row);
        bareSave << QStringLiteral("INSERT INTO tblCustOrderDetail  ( CustBasketDetailID, "
                                   "StockID, OrderedQty, GrosPrice, NetPrice, ShippedQty) VALUES  "
                                   "(-1,") +
                        row[OrderCol::StockID] + QLatin1Char(',') + row[OrderCol::OrderQty] +
                        QStringLiteral(",12.345,11.72775,0);");
    }
    registry.addActions(QStringLiteral("sales.order.save.50rows"),
                        [order] {
                            CustOrderSheet sheet = *order;
                            Consume(SaveCustomerOrder(sheet));
                        },
                        {{next}, bareSave});

    for (const bool pending : {true, false})
        registry.add(pending ? QStringLiteral("sales.list.orders.pending")
                             : QStringLiteral("sales.list.orders.completed"),
                     [pending] { Consume(ListCustomerOrders(pending).data.Rows()); },
                     {CustomerOrdersStatement(pending)});
    registry.add(QStringLiteral("sales.list.invoices"), [] { Consume(ListInvoices().data.Rows()); },
                 {InvoicesStatement()});
}

static const BenchSet salesSaveSet("sales.save", AddSalesSaveBenchmarks);
static const BenchSet salesSet("sales", AddSalesBenchmarks);
