// The engine itself: record set walks and single-row look-ups against the bare C API.
#include "bench/Benchmarks.h"

#include "foundation/DbEngine.h"

#include <algorithm>

namespace {
// Walks a statement reading every field of every row by position, as a load loop does.
void walkByIndex(const QString& dbPath, const QString& sql) {
    Database db = DBEngine::OpenDatabase(dbPath);
    Recordset rs = db.OpenRecordset(sql);
    const int n = rs.FieldCount();
    qint64 seen = 0;
    for (; !rs.Eof(); rs.MoveNext())
        for (int i = 0; i < n; ++i)
            seen += rs.Fields(i).Value().isNull() ? 0 : 1;
    Consume(seen);
}
} // namespace

qint64 FirstNumber(Database& db, const QString& sql) {
    Recordset rs = db.OpenRecordset(sql);
    return rs.Eof() ? 0 : rs.Fields(0).Long();
}

qint32 BenchOrderId(Database& db, const QString& reference) {
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT POID FROM tblPOrders WHERE PONumber=?"),
                                    {reference});
    return rs.Eof() ? 0 : qint32(rs.Fields(0).Long());
}

BenchContext ReadBenchContext(const QString& dbPath) {
    BenchContext c;
    c.dbPath = dbPath;
    Database db = DBEngine::OpenDatabase(dbPath);
    {
        Recordset rs = db.OpenRecordset(QStringLiteral("SELECT count(*) FROM tblStockItems"));
        c.items = rs.Fields(0).Long();
    }
    {
        Recordset rs = db.OpenRecordset(QStringLiteral(
            "SELECT SupplierID, CoName, count(*) AS n FROM tblItemSupplier INNER JOIN "
            "tblSupAddresses ON tblItemSupplier.SupplierID = tblSupAddresses.AddID WHERE "
            "SupplierID > 0 GROUP BY SupplierID, CoName ORDER BY n DESC, SupplierID LIMIT 1"));
        if (!rs.Eof()) {
            c.busiestSupplier = qint32(rs.Fields(0).Long());
            c.busiestSupplierName = rs.Fields(1).Text();
        }
    }
    {
        Recordset rs = db.OpenRecordset(
            QStringLiteral("SELECT Category, count(*) AS n FROM tblStockItems GROUP BY Category "
                           "ORDER BY n DESC, Category LIMIT 1"));
        if (!rs.Eof())
            c.biggestCategory = rs.Fields(0).Text();
    }
    return c;
}

static void AddEngineBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    const QString path = context.dbPath;

    const QString allItems = QStringLiteral("SELECT * FROM tblStockItems");
    registry.add(QStringLiteral("engine.walk.tblStockItems"),
                 [path, allItems] { walkByIndex(path, allItems); }, {allItems});

    // The same walk reading each field by name as text, the way most procedures read.
    registry.add(QStringLiteral("engine.walk.tblStockItems.byname"),
                 [path, allItems] {
                     Database db = DBEngine::OpenDatabase(path);
                     Recordset rs = db.OpenRecordset(allItems);
                     QStringList names;
                     for (int i = 0; i < rs.FieldCount(); ++i)
                         names << rs.FieldName(i);
                     qint64 length = 0;
                     for (; !rs.Eof(); rs.MoveNext())
                         for (const QString& name : names)
                             length += rs.Fields(name).Text().size();
                     Consume(length);
                 },
                 {allItems});

    const QString allHistory = QStringLiteral("SELECT * FROM tblItemHistory");
    registry.add(QStringLiteral("engine.walk.tblItemHistory"),
                 [path, allHistory] { walkByIndex(path, allHistory); }, {allHistory});

    // Single-row look-ups on one connection: the per-statement cost of the wrapper.
    QStringList lookups;
    const qint64 n = std::max<qint64>(context.items, 1);
    for (int i = 0; i < 1000; ++i)
        lookups << QStringLiteral("SELECT * FROM tblStockItems WHERE ItemID=") +
                       QString::number(1 + (qint64(i) * n) / 1000);
    registry.add(
        QStringLiteral("engine.lookup.item.x1000"),
        [path, lookups] {
            Database db = DBEngine::OpenDatabase(path);
            qint64 seen = 0;
            for (const QString& sql : lookups) {
                Recordset rs = db.OpenRecordset(sql);
                const int fields = rs.FieldCount();
                for (; !rs.Eof(); rs.MoveNext())
                    for (int i = 0; i < fields; ++i)
                        seen += rs.Fields(i).Value().isNull() ? 0 : 1;
            }
            Consume(seen);
        },
        lookups);
}

static const BenchSet engineSet("engine", AddEngineBenchmarks);
