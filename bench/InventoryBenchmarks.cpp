// The inventory list of the main window: each view mode and the two first-stage lists.
#include "bench/Benchmarks.h"

#include "inventory/InventoryList.h"
#include "inventory/ItemDetail.h"
#include "inventory/OnOrder.h"
#include "inventory/StockMovements.h"

#include <algorithm>

namespace {
// The statement LoadUBItems runs for a request, built by the same functions it uses.
QString itemStatement(const UBItemRequest& request) {
    const UBViewSpec view =
        UBViewFor(request.mode, request.supplierID, request.supplierName, request.category);
    UBFilters filters = request.filters;
    if (view.setsCategoryFilter)
        filters.category = request.category;
    return UBItemFileOrderStatement(filters, view.extraWhere);
}

// Items spread evenly over the file, for the benchmarks that open one item after another.
QList<qint32> sampleItems(qint64 items, int count) {
    QList<qint32> ids;
    const qint64 n = std::max<qint64>(items, 1);
    for (int i = 0; i < count; ++i)
        ids << qint32(1 + (qint64(i) * n) / count);
    return ids;
}

void addView(BenchRegistry& registry, const QString& name, const UBItemRequest& request) {
    registry.add(name,
                 [request] {
                     const UBItemResult r = LoadUBItems(request);
                     Consume(r.rowCount);
                 },
                 {itemStatement(request)});
}
} // namespace

static void AddInventoryBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    UBItemRequest all;
    all.mode = UBMode::AllItems;
    addView(registry, QStringLiteral("inventory.list.all"), all);

    UBItemRequest typed = all;
    typed.filters.partNo = QStringLiteral("RES-1");
    addView(registry, QStringLiteral("inventory.list.all.partno"), typed);

    UBItemRequest described = all;
    described.filters.description = QStringLiteral("Capacitor");
    addView(registry, QStringLiteral("inventory.list.all.description"), described);

    UBItemRequest bySupplier;
    bySupplier.mode = UBMode::BySupplier;
    bySupplier.supplierID = context.busiestSupplier;
    bySupplier.supplierName = context.busiestSupplierName;
    addView(registry, QStringLiteral("inventory.list.supplier"), bySupplier);

    UBItemRequest byCategory;
    byCategory.mode = UBMode::ByCategory;
    byCategory.category = context.biggestCategory;
    addView(registry, QStringLiteral("inventory.list.category"), byCategory);

    UBItemRequest assemblies;
    assemblies.mode = UBMode::Assemblies;
    assemblies.category = QStringLiteral("AS");
    addView(registry, QStringLiteral("inventory.list.assemblies"), assemblies);

    UBItemRequest allocDetail;
    allocDetail.mode = UBMode::AllocDetail;
    addView(registry, QStringLiteral("inventory.list.allocdetail"), allocDetail);

    UBItemRequest allocShort;
    allocShort.mode = UBMode::AllocShortages;
    addView(registry, QStringLiteral("inventory.list.allocshortages"), allocShort);

    UBItemRequest below;
    below.mode = UBMode::BelowMinimum;
    addView(registry, QStringLiteral("inventory.list.belowminimum"), below);

    // The first stages; their statements as LoadUBSuppliers and LoadUBCategories run them.
    registry.add(
        QStringLiteral("inventory.firststage.suppliers"), [] { Consume(LoadUBSuppliers().Rows()); },
        {QStringLiteral("SELECT count(ItemID) as NumItems from tblStockItems"),
         QStringLiteral("SELECT SupplierID, count(ItemID) as NumItems FROM tblItemSupplier "
                        "WHERE SupplierID IS NOT NULL GROUP BY SupplierID"),
         QStringLiteral("SELECT * from tblSupAddresses ORDER BY CoName")});
    registry.add(QStringLiteral("inventory.firststage.categories"),
                 [] { Consume(LoadUBCategories().Rows()); },
                 {QStringLiteral("SELECT Category, count(ItemID) as NumItems FROM tblStockItems "
                                 "GROUP BY Category ORDER BY Category")});

    // Opening items one after another: each load is an action with a connection of its own.
    const QList<qint32> ids = sampleItems(context.items, 200);
    QList<QStringList> historyActions, detailActions;
    for (qint32 id : ids) {
        const QString n = QString::number(id);
        historyActions << QStringList{
            QStringLiteral("SELECT * FROM tblItemHistory WHERE StockID=") + n};
        detailActions << QStringList{
            QStringLiteral("SELECT * from tblStockItems WHERE tblStockItems.ItemID=") + n,
            QStringLiteral("SELECT   CoName, SupplierPNo, MinOrQty, PriceEach, PrimeSupplier, "
                           "ShortNm, SupplierID FROM tblItemSupplier LEFT JOIN tblSupAddresses ON "
                           "tblItemSupplier.SupplierID=tblSupAddresses.AddID WHERE "
                           "tblItemSupplier.ItemID=") +
                n + QStringLiteral(" ORDER BY tblItemSupplier.PrimeSupplier"),
            QStringLiteral("SELECT * FROM tblItemComments WHERE StockID=") + n};
    }
    registry.addActions(
        QStringLiteral("inventory.history.item.x200"),
        [ids] {
            qint64 rows = 0;
            for (qint32 id : ids)
                rows += LoadItemHistory(id).size();
            Consume(rows);
        },
        historyActions);
    registry.addActions(
        QStringLiteral("inventory.detail.item.x200"),
        [ids] {
            qint64 found = 0;
            for (qint32 id : ids)
                found += LoadItemDetail(id).has_value() ? 1 : 0;
            Consume(found);
        },
        detailActions);
    // Writes. Each rewrites rows with the values they hold (an adjustment is followed by its
    // reverse), so the file keeps its figures; the adjustments add their history rows. The bare
    // side runs the same reads and writes the same rows in a transaction of its own.
    const QList<qint32> saveIds = sampleItems(context.items, 20);
    QList<QStringList> saveActions;
    for (qint32 id : saveIds) {
        const QString n = QString::number(id);
        saveActions << (detailActions.at(ids.indexOf(id) >= 0 ? ids.indexOf(id) : 0) +
                        QStringList{
                            QStringLiteral("BEGIN IMMEDIATE"),
                            QStringLiteral("UPDATE tblStockItems SET Qty = Qty WHERE ItemID=") + n,
                            QStringLiteral("UPDATE tblItemComments SET Comment = Comment "
                                           "WHERE StockID=") +
                                n,
                            QStringLiteral("UPDATE tblItemSupplier SET PriceEach = PriceEach "
                                           "WHERE ItemID=") +
                                n,
                            QStringLiteral("COMMIT")});
    }
    registry.addActions(
        QStringLiteral("inventory.save.item.x20"),
        [saveIds] {
            int saved = 0;
            for (qint32 id : saveIds) {
                const std::optional<ItemDetailData> d = LoadItemDetail(id);
                if (!d)
                    continue;
                ItemSaveInput in;
                in.itemId = id;
                in.fields = d->fields;
                in.suppliers = d->suppliers;
                saved += SaveItemDetail(in).saved ? 1 : 0;
            }
            Consume(saved);
        },
        saveActions);

    QList<QStringList> adjustActions;
    for (qint32 id : saveIds) {
        const QString n = QString::number(id);
        for (const char* sign : {"1", "-1"})
            adjustActions << QStringList{
                QStringLiteral("UPDATE tblStockItems  SET QTY = QTY + ") + QLatin1String(sign) +
                    QStringLiteral(" WHERE ItemID=") + n,
                QStringLiteral("INSERT INTO tblItemHistory  (StockID, HistDate, HistType, HistID, "
                               "HistRef, HistQty, HistText) VALUES  (") +
                    n + QStringLiteral(",'2026-01-01','ADJ(+)',0,'bench',") + QLatin1String(sign) +
                    QStringLiteral(",'bench');")};
    }
    registry.addActions(
        QStringLiteral("inventory.adjust.item.x40"),
        [saveIds] {
            int posted = 0;
            for (qint32 id : saveIds) {
                for (AdjustmentKind kind :
                     {AdjustmentKind::AdjustPlus, AdjustmentKind::AdjustMinus}) {
                    StockAdjustment a;
                    a.kind = kind;
                    a.qtyText = QStringLiteral("1");
                    a.ref = QStringLiteral("bench");
                    a.text = QStringLiteral("bench");
                    a.itemId = id;
                    posted += PostStockAdjustment(a).posted ? 1 : 0;
                }
            }
            Consume(posted);
        },
        adjustActions);

    QList<QStringList> onOrderActions;
    for (qint32 id : ids) {
        const QString n = QString::number(id);
        onOrderActions << QStringList{
            QStringLiteral(" SELECT * FROM tblPODetail WHERE POStockID=") + n +
                QStringLiteral(" AND POQty <> PORecieved"),
            QStringLiteral("UPDATE tblStockItems SET OnOrderQty = OnOrderQty WHERE ItemID = ") + n};
    }
    registry.addActions(
        QStringLiteral("inventory.onorder.refresh.x200"),
        [ids] {
            double total = 0;
            for (qint32 id : ids)
                total += RefreshOnOrderQty(id);
            Consume(qint64(total));
        },
        onOrderActions);
}

static const BenchSet inventorySet("inventory", AddInventoryBenchmarks);
