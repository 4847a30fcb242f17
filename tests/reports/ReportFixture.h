// Stock rows for the report tests, written straight into the business file, and what the tests
// read back from a report.
#pragma once

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "reports/Reports.h"

#include <QString>
#include <QVariant>

namespace reporttest {

inline void Item(int id, const QString& pno, const QString& category, double qty,
                 const QString& description = QStringLiteral("Part"),
                 const QString& location = QStringLiteral("A1")) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemDescription, "
                              "Category, Location, Qty) VALUES (?, ?, ?, ?, ?, ?)"),
               {id, pno, description, category, location, qty});
}

inline void Supplier(int itemID, int supplierID, double price, int prime) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(QStringLiteral("INSERT INTO tblItemSupplier (ItemID, SupplierID, PriceEach, "
                              "PrimeSupplier) VALUES (?, ?, ?, ?)"),
               {itemID, supplierID, price, prime});
}

inline void History(int itemID, const QString& isoDate, const QString& type = "ADJ(+)") {
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(QStringLiteral("INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistQty) "
                              "VALUES (?, ?, ?, 1)"),
               {itemID, isoDate, type});
}

// One column of every row.
inline QStringList Column(const ReportResult& r, int column) {
    QStringList out;
    for (const QStringList& row : r.rows)
        out << row.value(column);
    return out;
}

// Each column as "key=caption".
inline QStringList Captions(const ReportResult& r) {
    QStringList out;
    for (const ReportColumn& c : r.columns)
        out << c.key + QLatin1Char('=') + c.caption;
    return out;
}

// Text1 to Text5.
inline QStringList Summary(const ReportResult& r) {
    return QStringList(r.summary.text.begin(), r.summary.text.end());
}

} // namespace reporttest
