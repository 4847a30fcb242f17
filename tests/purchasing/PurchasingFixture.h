// What the purchasing suites share: the rows they put into a fresh data folder, and readers of
// what the procedures leave there.
#pragma once

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "inventory/InventoryList.h"
#include "tests/support/TestSupport.h"

#include <QString>
#include <QStringList>
#include <memory>

namespace fixture {

// Also used by the report suites.
inline void Supplier(int addId, const QString& name, const QString& shortNm = QStringLiteral("S")) {
    ExecSql(QStringLiteral("INSERT INTO tblSupAddresses (AddID, CoName, Add1, Add2, PCode, Tel1, "
                           "Fax1, Contact1, ShortNm) VALUES (%1, '%2', '%2 Street', 'Leeds', "
                           "'LS1', '0113 1', '0113 2', 'Ann', '%3')")
                .arg(addId)
                .arg(name, shortNm));
}

inline void Item(int itemId, const QString& partNo, const QString& description = QString()) {
    ExecSql(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemName, "
                           "ItemDescription, Category, Qty, OnOrderQty, BuyNow) VALUES "
                           "(%1, '%2', 'Value %1', '%3', 'CAT', 0, 0, 0)")
                .arg(itemId)
                .arg(partNo,
                     description.isEmpty() ? QStringLiteral("Item %1").arg(itemId) : description));
}

inline void Link(int itemId, int supplierId, const QString& price, const QString& supPNo) {
    ExecSql(QStringLiteral("INSERT INTO tblItemSupplier (ItemID, SupplierID, SupplierPNo, "
                           "MinOrQty, PriceEach, PrimeSupplier) VALUES (%1, %2, '%3', 1, %4, 0)")
                .arg(itemId)
                .arg(supplierId)
                .arg(supPNo, price));
}

// The firm; Acme (1), Bolt (2), Cobalt (3) and the non-stock supplier (4, "NON"); items 10 to 13.
// Acme sells 10, 11 and 13, Bolt 10 and 12, Cobalt 13.
inline void Catalogue() {
    ExecSql("INSERT INTO tblHome (CoName, Add1, Add2, Add3, Add4, Add5, Add6, Tel1, Fax1) VALUES "
            "('Quill Parts Ltd', '1 Mill Lane', 'Otley', 'West Yorkshire', 'LS21 1AA', 'England', "
            "'', '01943 1', '01943 2')");
    Supplier(1, QStringLiteral("Acme"));
    Supplier(2, QStringLiteral("Bolt"));
    Supplier(3, QStringLiteral("Cobalt"));
    Supplier(4, QStringLiteral("Non Stock"), QStringLiteral("NON"));
    Item(10, QStringLiteral("RES-10K"), QStringLiteral("Resistor 10k"));
    Item(11, QStringLiteral("CAP-1U"), QStringLiteral("Capacitor 1u"));
    Item(12, QStringLiteral("IND-5M"), QStringLiteral("Inductor"));
    Item(13, QStringLiteral("RELAY-5V"), QStringLiteral("Relay"));
    ExecSql("INSERT INTO tblItemSupplier (ItemID, SupplierID, SupplierPNo, MinOrQty, PriceEach, "
            "PrimeSupplier) VALUES (10, 1, 'A-10', 1, 2, 0), (11, 1, 'A-11', 1, 0.5, 0), (13, 1, "
            "'A-13', 1, 3.25, 0), (10, 2, 'B-10', 1, 1.5, 0), (12, 2, 'B-12', 1, 4, 0), (13, 3, "
            "'C-13', 1, 3, 0)");
}

// A basket row; `delDate` is SQL (a quoted date or NULL). Returns its RowID.
inline int BasketRow(int itemId, const QString& reqQty, int orderYN,
                     const QString& delDate = QStringLiteral("NULL")) {
    ExecSql(QStringLiteral("INSERT INTO tblBaskets (StockID, ReqQty, DelDate, OrderYN) VALUES "
                           "(%1, %2, %3, %4)")
                .arg(itemId)
                .arg(reqQty, delDate)
                .arg(orderYN));
    return SqlFirst(QStringLiteral("SELECT max(RowID) FROM tblBaskets")).toInt();
}

// An order header, its reference "REF-<poid>"; a supplier with no address record leaves POSupID
// pointing at nothing.
inline void Order(int poid, int supplier, const QString& date = QStringLiteral("2026-11-02")) {
    ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, PONumber, PODate, POSupID, POLocID, "
                           "POComplete, POConfirmed) VALUES (%1, 'REF-%1', '%2', %3, 0, 0, 0)")
                .arg(poid)
                .arg(date)
                .arg(supplier));
}

// A row of an order, with the supplier's part number "S-<item>"; returns its RowID.
inline int OrderRow(int poid, int item, const QString& qty, const QString& received,
                    const QString& date = QStringLiteral("2040-01-01"),
                    const QString& price = QStringLiteral("1")) {
    ExecSql(QStringLiteral("INSERT INTO tblPODetail (POID, POStockID, POSupPNo, POQty, POPrice, "
                           "POSchedDate, PORecieved, RowConfirmed, RowComments, GRN_PONo) VALUES "
                           "(%1, %2, 'S-%2', %3, %4, '%5', %6, 0, '', '')")
                .arg(poid)
                .arg(item)
                .arg(qty, price, date, received));
    return SqlFirst(QStringLiteral("SELECT max(RowID) FROM tblPODetail")).toInt();
}

// A column of an item as the engine gives it back.
inline QString ItemField(int item, const QString& column) {
    return SqlFirst(
        QStringLiteral("SELECT %1 FROM tblStockItems WHERE ItemID=%2").arg(column).arg(item));
}

inline QString Count(const QString& table, const QString& where = QStringLiteral("1")) {
    return SqlFirst(QStringLiteral("SELECT count(*) FROM %1 WHERE %2").arg(table, where));
}

// Items whose stored on-order quantity differs from a count of their order rows.
inline QString OnOrderMismatches() {
    return SqlFirst(QStringLiteral(
        "SELECT count(*) FROM tblStockItems s WHERE s.OnOrderQty <> (SELECT coalesce(sum(POQty - "
        "PORecieved), 0) FROM tblPODetail d WHERE d.POStockID = s.ItemID)"));
}

// Every row of the tables purchasing writes, as text in a fixed order: to prove that nothing
// changed.
inline QStringList DumpAll() {
    QStringList out;
    for (const char* table :
         {"tblStockItems ORDER BY ItemID", "tblPODetail ORDER BY RowID", "tblPOrders ORDER BY POID",
          "tblItemHistory ORDER BY StockID, HistID2, HistQty", "tblBaskets ORDER BY RowID"})
        out << SqlRows(QStringLiteral("SELECT * FROM ") + table);
    return out;
}

// One column of a load of a working array (its rows and the count in use), rows 1..count.
template <class Load> QStringList Column(const Load& load, int column) {
    QStringList out;
    for (int r = 1; r <= load.rowCount; ++r)
        out << std::as_const(load.rows)(column, r).toString();
    return out;
}

// One row of a working array, its cells joined by "|".
inline QString Joined(const UBArray& rows, int r) {
    QStringList cells;
    for (int c = 1; c <= rows.Columns(); ++c)
        cells << rows(c, r).toString();
    return cells.join(QLatin1Char('|'));
}

// What every test of a suite starts from: a fresh data folder holding the catalogue, and boxes
// answered from a script. The suite's init() calls Fresh(), its cleanup() Drop().
struct Suite {
    std::unique_ptr<TestData> data;
    std::unique_ptr<ScriptedBoxes> boxes;
    void Fresh() {
        data = std::make_unique<TestData>();
        boxes = std::make_unique<ScriptedBoxes>();
        Catalogue();
    }
    void Drop() {
        boxes.reset();
        data.reset();
    }
};

// Each box shown, as "<title>: <prompt>".
inline QStringList Said(const ScriptedBoxes& boxes) {
    QStringList out;
    for (const ShownBox& b : boxes.shown())
        out << b.title + QStringLiteral(": ") + b.prompt;
    return out;
}

} // namespace fixture
