// Orders to receive against, for the goods-in suites.
#pragma once

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "purchasing/GoodsIn.h"
#include "tests/purchasing/PurchasingFixture.h"

#include <QStringList>

namespace gin {

inline void Order(int poid, int supplier, const QString& ref,
                  const QString& date = QStringLiteral("2026-11-02")) {
    ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, PONumber, PODate, POSupID, POLocID, "
                           "POComplete, POConfirmed) VALUES (%1, '%2', '%3', %4, 0, 0, 0)")
                .arg(poid)
                .arg(ref, date)
                .arg(supplier));
}

// An order row; returns its RowID.
inline int Row(int poid, int item, const QString& qty, const QString& received,
               const QString& price = QStringLiteral("2.5"),
               const QString& sched = QStringLiteral("2040-01-01")) {
    ExecSql(QStringLiteral("INSERT INTO tblPODetail (POID, POStockID, POSupPNo, POQty, POPrice, "
                           "POSchedDate, PORecieved, RowConfirmed, RowComments, GRN_PONo) VALUES "
                           "(%1, %2, 'S-%2', %3, %4, '%5', %6, 0, '', '')")
                .arg(poid)
                .arg(item)
                .arg(qty, price, sched, received));
    return SqlFirst(QStringLiteral("SELECT max(RowID) FROM tblPODetail")).toInt();
}

// Every row of a table as text, in a fixed order: to prove that nothing changed.
inline QStringList Dump(const QString& table, const QString& order) {
    QStringList out;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM ") + table +
                                    QStringLiteral(" ORDER BY ") + order);
    while (!rs.Eof()) {
        QStringList cells;
        for (int c = 0; c < rs.FieldCount(); ++c)
            cells << rs.Fields(c).Text();
        out << cells.join(QLatin1Char('|'));
        rs.MoveNext();
    }
    return out;
}

inline QStringList DumpAll() {
    return Dump(QStringLiteral("tblStockItems"), QStringLiteral("ItemID")) +
           Dump(QStringLiteral("tblPODetail"), QStringLiteral("RowID")) +
           Dump(QStringLiteral("tblPOrders"), QStringLiteral("POID")) +
           Dump(QStringLiteral("tblItemHistory"), QStringLiteral("StockID, HistID2, HistQty")) +
           Dump(QStringLiteral("tblItemSupplier"), QStringLiteral("ItemID, SupplierID"));
}

// One column of the working array, rows 1..rowCount.
inline QStringList Column(const GoodsInArray& a, int column) {
    QStringList out;
    for (int r = 1; r <= a.rowCount; ++r)
        out << std::as_const(a.rows)(column, r).toString();
    return out;
}

} // namespace gin
