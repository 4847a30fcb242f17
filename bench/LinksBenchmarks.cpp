// The item detail's "Used in" and "Links" tabs and the common links of the tool strip: each load
// is one action on a connection of its own, as a click on the tab makes it.
#include "bench/Benchmarks.h"

#include "foundation/DbEngine.h"
#include "inventory/Links.h"
#include "inventory/UsedIn.h"

namespace {
// The first column of a query's rows.
QList<qint32> ids(const QString& dbPath, const QString& sql) {
    QList<qint32> out;
    Database db = DBEngine::OpenDatabase(dbPath);
    for (Recordset rs = db.OpenRecordset(sql); !rs.Eof(); rs.MoveNext())
        out << qint32(rs.Fields(0).Long());
    return out;
}
} // namespace

static void AddLinksBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    // The component used in most assemblies, and the item with most links of its own.
    const qint32 busiestPart =
        ids(context.dbPath, QStringLiteral("SELECT ChildID FROM tblUsedIn GROUP BY ChildID "
                                           "ORDER BY count(*) DESC, ChildID LIMIT 1"))
            .value(0);
    const qint32 mostLinked =
        ids(context.dbPath,
            QStringLiteral("SELECT LinkStockID FROM tblHyperLinks WHERE LinkStockID <> 0 "
                           "GROUP BY LinkStockID ORDER BY count(*) DESC, LinkStockID LIMIT 1"))
            .value(0);

    registry.add(QStringLiteral("links.usedin.busiest"),
                 [busiestPart] { Consume(LoadUsedIn(busiestPart).rows.size()); },
                 {UsedInStatement(busiestPart)});
    registry.add(QStringLiteral("links.item.busiest"),
                 [mostLinked] { Consume(LoadLinks(mostLinked).names.size()); },
                 {LinksStatement(mostLinked)});
    registry.add(QStringLiteral("links.common"), [] { Consume(LoadLinks(0).names.size()); },
                 {LinksStatement(0)});

    // Opening the tab of one item after another: 200 items scattered over the file that have
    // rows to show, each load an action of its own.
    const auto opening = [&registry](const QString& name, const QList<qint32>& items,
                                     qint64 (*load)(qint32), QString (*statement)(qint32)) {
        QList<QStringList> actions;
        for (qint32 id : items)
            actions << QStringList{statement(id)};
        registry.addActions(
            name,
            [items, load] {
                qint64 rows = 0;
                for (qint32 id : items)
                    rows += load(id);
                Consume(rows);
            },
            actions);
    };
    opening(
        QStringLiteral("links.usedin.item.x200"),
        ids(context.dbPath, QStringLiteral("SELECT DISTINCT ChildID FROM tblUsedIn "
                                           "ORDER BY (ChildID * 7919) % 100003 LIMIT 200")),
        [](qint32 id) { return qint64(LoadUsedIn(id).rows.size()); }, UsedInStatement);
    opening(
        QStringLiteral("links.item.x200"),
        ids(context.dbPath,
            QStringLiteral("SELECT DISTINCT LinkStockID FROM tblHyperLinks WHERE LinkStockID "
                           "<> 0 ORDER BY (LinkStockID * 7919) % 100003 LIMIT 200")),
        [](qint32 id) { return qint64(LoadLinks(id).names.size()); }, LinksStatement);
}

static const BenchSet linksSet("links", AddLinksBenchmarks);
