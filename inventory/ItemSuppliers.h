// The suppliers of one item as the Suppliers tab of the item detail edits them: rows held in
// memory, read with the item and written back only by the item's save. No widgets here.
#pragma once

#include <QList>
#include <QString>
#include <QVector>
#include <QtGlobal>

class Database;

// One row of the supplier grid, in the order of its columns. Numbers are kept as the grid shows
// them (quantity "0.0#", price "0.00###").
struct ItemSupplierRow {
    QString SupName;  // CoName
    QString SupPNo;   // SupplierPNo
    QString SupOrQty; // MinOrQty
    QString SupPrice; // PriceEach
    bool SupPrime = false;
    qint32 SupID = 0; // SupplierID; 0 is the no-supplier row
    QString Code;     // ShortNm
};

// Column keys and captions of the supplier grid, in order.
QStringList SupplierColumnKeys();     // SupName, SupPNo, SupOrQty, SupPrice, SupPrime, SupID, Code
QStringList SupplierColumnCaptions(); // Vendor, VendorPNo, MinOrQty, @Price, Prime, SupID, Code
enum SupplierColumn {
    SupNameCol = 1,
    SupPNoCol,
    SupOrQtyCol,
    SupPriceCol,
    SupPrimeCol,
    SupIDCol,
    CodeCol
};

struct ItemSuppliers {
    QVector<ItemSupplierRow> rows;
    QString buyPrice; // the price of the row with the prime flag, "" when none has it
};

// Reads the supplier rows of an item on an open file, the prime row last.
ItemSuppliers LoadItemSuppliers(Database& db, qint32 itemId);

// A supplier to choose from: every address but the no-supplier row, by company name.
struct SupplierChoice {
    qint32 AddID = 0;
    QString CoName;
    QString ShortNm;
};
QList<SupplierChoice> LoadSupplierChoices();

// True when no row of the grid has this supplier yet.
bool CanAddSupplier(const QVector<ItemSupplierRow>& rows, qint32 addId);

// The add button: with the inventory right, reads the supplier and appends a row for it with
// empty part number, quantity, price and prime mark. A grid whose only row is the "No Supplier"
// placeholder has that row taken over instead. False when nothing was added.
bool AddSupplierRow(QVector<ItemSupplierRow>& rows, qint32 addId);

// The remove entry of the row menu: offered only with two rows or more.
bool CanRemoveSupplier(const QVector<ItemSupplierRow>& rows);
// Checks the inventory right; the caller then deletes the row through the grid.
bool MayRemoveSupplier();
// Removes a row (from 0), later rows moving up by one.
void RemoveSupplierRow(QVector<ItemSupplierRow>& rows, int index);
// Shown once a row is removed: only the main save writes the suppliers.
QString SupplierRemovedNotice();

// The address of a supplier, one line per field, for the information panel.
QString SupplierAddressText(qint32 supId);

// The prime rule of the save: the first row with the mark keeps it, later marks are cleared;
// with no mark at all row 1 takes it. Returns the index of the prime row, -1 for no rows.
int ApplyPrimeRule(QVector<ItemSupplierRow>& rows);
