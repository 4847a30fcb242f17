// The CSV import of the utilities window: reading a 100,000-line file into the preview grid, and
// importing it as new items, then as updates of existing items. The bare side runs the same
// reads and writes in one transaction.
#include "bench/Benchmarks.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Helpers.h"
#include "maintenance/FlexCells.h"
#include "maintenance/ImportCsv.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <memory>

namespace {

constexpr int kLines = 100000;

// A cell of a file as a spreadsheet writes it: quoted when it holds a comma or a quote.
QString csvCell(const QString& text) {
    if (!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"')))
        return text;
    return QLatin1Char('"') + QString(text).replace(QStringLiteral("\""), QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

bool writeLines(const QString& path, const QStringList& lines) {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    f.write(lines.join(QLatin1Char('\n')).toUtf8());
    f.write("\n");
    return true;
}

// Every box on its own column: part, description, quantity, location, buy, category, sell,
// detail.
ImportCsvInput allColumns(bool overwrite) {
    ImportCsvInput in;
    const auto pick = [](int column, bool hasIgnore) {
        return ImportColumnChoice{hasIgnore ? column : column - 1,
                                  QStringLiteral("Column ") + QString::number(column)};
    };
    in.Combo1 = pick(1, false);
    in.Combo2 = pick(2, false);
    in.Combo3 = pick(3, true);
    in.Combo4 = pick(4, true);
    in.Combo9 = pick(5, true);
    in.Combo10 = pick(6, true);
    in.Combo11 = pick(7, true);
    in.Combo12 = pick(8, true);
    in.Check2 = overwrite;
    return in;
}

struct ImportFiles {
    QTemporaryDir dir;
    QString newFile, updateFile;
    qint64 highestId = 0;
    QStringList newBare, updateBare;
};

// The files and the bare statements, made once from the data file.
ImportFiles* prepare(const QString& dbPath) {
    static std::unique_ptr<ImportFiles> files;
    if (files)
        return files.get();
    files = std::make_unique<ImportFiles>();
    ImportFiles& f = *files;
    f.newFile = f.dir.filePath(QStringLiteral("new.csv"));
    f.updateFile = f.dir.filePath(QStringLiteral("update.csv"));
    const NumberMask qty(QStringLiteral("0.0#"));
    const NumberMask price(QStringLiteral("0.00###"));

    Database db = DBEngine::OpenDatabase(dbPath);
    {
        Recordset rs = db.OpenRecordset(QStringLiteral("SELECT max(ItemID) FROM tblStockItems"));
        f.highestId = rs.Fields(0).Long();
    }

    // New items: part numbers no item has.
    QStringList lines;
    f.newBare << QStringLiteral("BEGIN IMMEDIATE");
    for (int i = 1; i <= kLines; ++i) {
        const QString pno = QStringLiteral("IMPORT-%1").arg(i, 6, 10, QLatin1Char('0'));
        const QString q = QStringLiteral("%1.5").arg(i % 97);
        const QString buy = QStringLiteral("%1.125").arg(i % 31);
        const QString sell = QStringLiteral("%1.75").arg(i % 53);
        lines << QStringList{pno,  QStringLiteral("Imported part %1").arg(i),
                             q,    QStringLiteral("BIN-%1").arg(i % 200),
                             buy,  QStringLiteral("imp"),
                             sell, QStringLiteral("detail %1").arg(i)}
                     .join(QLatin1Char(','));
        const QString id = QString::number(f.highestId + i);
        f.newBare << QStringLiteral("SELECT * FROM tblStockItems WHERE MasterPNo=") + SqlText(pno)
                  << QStringLiteral("SELECT ItemID FROM tblStockItems ORDER by ItemID DESC") +
                         FirstRowOnly()
                  << QStringLiteral(
                         "INSERT INTO tblStockItems (ItemID, MasterPNo, ItemName, "
                         "ItemDescription, Category, Location, Qty, AllocQty, "
                         "OnOrderQty, Trigger, BuyNow, SellAt, AllowDiscount) VALUES (") +
                         id + QLatin1Char(',') + SqlText(pno) + QLatin1Char(',') +
                         SqlText(QStringLiteral("DETAIL %1").arg(i)) + QLatin1Char(',') +
                         SqlText(QStringLiteral("Imported part %1").arg(i)) +
                         QStringLiteral(",'IMP',") +
                         SqlText(QStringLiteral("BIN-%1").arg(i % 200)) + QLatin1Char(',') +
                         qty.Sql(q.toDouble()) + QStringLiteral(",0,0,0,0,") +
                         price.Sql(sell.toDouble()) + QStringLiteral(",0);")
                  << QStringLiteral("INSERT INTO tblItemSupplier (ItemID,SupplierID, SupplierPNo, "
                                    "PrimeSupplier, PriceEach) VALUES (") +
                         id + QStringLiteral(", 0,'', 0,") + price.Sql(buy.toDouble()) +
                         QStringLiteral(" );");
    }
    f.newBare << QStringLiteral("COMMIT");
    writeLines(f.newFile, lines);

    // Updates: the items as they stand, so that every run writes the same values.
    lines.clear();
    f.updateBare << QStringLiteral("BEGIN IMMEDIATE");
    Recordset rs = db.OpenRecordset(
        QStringLiteral("SELECT s.ItemID, MasterPNo, ItemDescription, Qty, Location, Category, "
                       "SellAt, ItemName, p.PriceEach FROM tblStockItems s LEFT JOIN "
                       "tblItemSupplier p ON p.ItemID = s.ItemID AND p.SupplierID = 0 "
                       "ORDER BY s.ItemID LIMIT ") +
        QString::number(kLines));
    for (; !rs.Eof(); rs.MoveNext()) {
        const QString id = rs.Fields(0).Text();
        const QString pno = rs.Fields(1).Text();
        const QString description = rs.Fields(2).Text();
        const double q = rs.Fields(3).Double();
        const QString location = rs.Fields(4).Text();
        const QString category = rs.Fields(5).Text().toUpper();
        const double sell = rs.Fields(6).Double();
        const QString detail = rs.Fields(7).Text().toUpper();
        const double buy = rs.Fields(8).Double();
        lines << QStringList{csvCell(pno),      csvCell(description), qty.Plain(q),
                             csvCell(location), price.Plain(buy),     csvCell(category),
                             price.Plain(sell), csvCell(detail)}
                     .join(QLatin1Char(','));
        f.updateBare << QStringLiteral("SELECT * FROM tblStockItems WHERE MasterPNo=") +
                            SqlText(pno)
                     << QStringLiteral("UPDATE tblStockItems SET ItemDescription=") +
                            SqlText(description) + QStringLiteral(", ItemName=") +
                            SqlText(detail.left(49)) + QStringLiteral(", Category=") +
                            SqlText(category) + QStringLiteral(", Location=") + SqlText(location) +
                            QStringLiteral(", Qty=") + qty.Sql(q) + QStringLiteral(", SellAt=") +
                            price.Sql(sell) + QStringLiteral(" WHERE ItemID=") + id
                     << QStringLiteral("UPDATE tblItemSupplier SET PriceEach = ") + price.Sql(buy) +
                            QStringLiteral(" WHERE ItemID = ") + id +
                            QStringLiteral(" AND SupplierID = 0");
    }
    f.updateBare << QStringLiteral("COMMIT");
    writeLines(f.updateFile, lines);
    return files.get();
}

// The statements that take the new items out again, run after each import on both sides.
QStringList removeNewItems(qint64 highestId) {
    const QString id = QString::number(highestId);
    return {QStringLiteral("DELETE FROM tblItemSupplier WHERE ItemID > ") + id,
            QStringLiteral("DELETE FROM tblStockItems WHERE ItemID > ") + id};
}

// The files and statements take a few seconds and some hundred megabytes to make: they are made
// only when the run's --filter wants an import benchmark.
bool wanted() {
    const QStringList args = QCoreApplication::arguments();
    const qsizetype at = args.indexOf(QStringLiteral("--filter"));
    if (at < 0 || at + 1 >= args.size())
        return true;
    const QRegularExpression filter(args.at(at + 1));
    for (const char* name : {"import.csv.read", "import.csv.new", "import.csv.update"})
        if (filter.match(QLatin1String(name)).hasMatch())
            return true;
    return false;
}

} // namespace

static void AddImportBenchmarks(BenchRegistry& registry, const BenchContext& context) {
    if (!wanted())
        return;
    ImportFiles* files = prepare(context.dbPath);
    const QString dbPath = context.dbPath;

    // Reading has no statements: its bare side is empty and its ratio 0.
    registry.addActions(QStringLiteral("import.csv.read"),
                        [files] {
                            FlexCells grid;
                            ReadCsv(files->newFile, grid);
                            Consume(grid.Rows());
                        },
                        {});

    auto newGrid = std::make_shared<FlexCells>();
    ReadCsv(files->newFile, *newGrid);
    const QStringList cleanup = removeNewItems(files->highestId);
    registry.addActions(QStringLiteral("import.csv.new"),
                        [newGrid, cleanup, dbPath] {
                            const ImportCsvResult r = ImportCsv(allColumns(false), *newGrid);
                            Consume(r.imported);
                            Database db = DBEngine::OpenDatabase(dbPath);
                            for (const QString& sql : cleanup)
                                db.Execute(sql);
                        },
                        {files->newBare, cleanup});

    auto updateGrid = std::make_shared<FlexCells>();
    ReadCsv(files->updateFile, *updateGrid);
    registry.add(
        QStringLiteral("import.csv.update"),
        [updateGrid] {
            const ImportCsvResult r = ImportCsv(allColumns(true), *updateGrid);
            Consume(r.imported);
        },
        files->updateBare);
}

static const BenchSet importSet("import", AddImportBenchmarks);
