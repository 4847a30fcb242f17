// The item detail's "Used in" and "Links" tabs and the common links of the tool strip: each load
// is one action on a connection of its own, as a click on the tab makes it.
#include "bench/Benchmarks.h"

#include "foundation/DbEngine.h"
#include "inventory/Links.h"
#include "inventory/UsedIn.h"

#include <algorithm>

namespace {
// The first value of a query, or 0 when it has no row.
qint32 firstId(const QString& dbPath, const QString& sql) {
    Database db = DBEngine::OpenDatabase(dbPath);
    Recordset rs = db.OpenRecordset(sql);
    return rs.Eof() ? 0 : qint32(rs.Fields(0).Long());
}

// Items spread evenly over the file.
QList<qint32> spread(qint64 items, int count) {
    QList<qint32> ids;
    const qint64 n = std::max<qint64>(items, 1);
    for (int i = 0; i < count; ++i)
        ids << qint32(1 + (qint64(i) * n) / count);
    return ids;
}
} // namespace

static void AddLinksBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    // The component used in most assemblies, and the item with most links of its own.
    const qint32 busiestPart =
        firstId(context.dbPath, QStringLiteral("SELECT ChildID FROM tblUsedIn GROUP BY ChildID "
                                               "ORDER BY count(*) DESC, ChildID LIMIT 1"));
    const qint32 mostLinked =
        firstId(context.dbPath,
                QStringLiteral("SELECT LinkStockID FROM tblHyperLinks WHERE LinkStockID <> 0 "
                               "GROUP BY LinkStockID ORDER BY count(*) DESC, LinkStockID LIMIT 1"));

    registry.add(QStringLiteral("links.usedin.busiest"),
                 [busiestPart] { Consume(LoadUsedIn(busiestPart).rows.size()); },
                 {UsedInStatement(busiestPart)});
    registry.add(QStringLiteral("links.item.busiest"),
                 [mostLinked] { Consume(LoadLinks(mostLinked).names.size()); },
                 {LinksStatement(mostLinked)});
    registry.add(QStringLiteral("links.common"), [] { Consume(LoadLinks(0).names.size()); },
                 {LinksStatement(0)});

    // Opening the tabs of items one after another.
    const QList<qint32> ids = spread(context.items, 200);
    QList<QStringList> usedInActions, linkActions;
    for (qint32 id : ids) {
        usedInActions << QStringList{UsedInStatement(id)};
        linkActions << QStringList{LinksStatement(id)};
    }
    registry.addActions(
        QStringLiteral("links.usedin.item.x200"),
        [ids] {
            qint64 rows = 0;
            for (qint32 id : ids)
                rows += LoadUsedIn(id).rows.size();
            Consume(rows);
        },
        usedInActions);
    registry.addActions(
        QStringLiteral("links.item.x200"),
        [ids] {
            qint64 rows = 0;
            for (qint32 id : ids)
                rows += LoadLinks(id).names.size();
            Consume(rows);
        },
        linkActions);
}

static const BenchSet linksSet("links", AddLinksBenchmarks);
