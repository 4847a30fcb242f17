// Stock rows for the report tests, written straight into the business file.
#pragma once

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"

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

} // namespace reporttest
