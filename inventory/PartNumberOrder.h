// The order in which the inventory list (and every listing that counts an item once, at its first
// supplier row) shows the joined rows of items and their suppliers: by part number, then by the
// supplier's prime mark, and of the rows of one part number only the first.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <vector>

class Field;

// Walks rows that are already in part-number order: a row is taken when its part number, as
// text, differs from the one taken last (the first row is always taken). So the first row of each
// part number wins and two items that share a part number count once. A missing part number
// reads as an empty one.
class FirstRowPerPartNumber {
public:
    bool Take(QByteArrayView partNoUtf8);
    bool Take(const QString& partNo) { return Take(QByteArrayView(partNo.toUtf8())); }

private:
    bool mAny = false;
    QByteArray mLast;
};

// A supplier row's prime mark as the engine orders it: none (no supplier row, or no value)
// first, then numbers by value, then texts by their bytes.
struct PrimeMark {
    enum Kind : unsigned char { None, Number, Text } kind = None;
    double number = 0;
    QByteArray text;

    static PrimeMark Of(const Field& field);
};

// Puts joined rows that arrive in the file's order (the items by ItemID, the rows of one item
// together in the order of its supplier and comment rows) into the order that
// "ORDER BY MasterPNo, PrimeSupplier" gives them when the engine walks the items through the
// part-number index: part numbers compared without case as the column compares them (A to Z
// equal a to z, nothing else folded; a missing one first), then the prime mark, ties in the order
// the rows arrived. Then keeps the first row of each part number (FirstRowPerPartNumber).
//
// Sorting here costs a fraction of the engine's sort, which reads the items in the index's order
// and sorts the joined rows, comments included, a second time.
class PartNumberOrder {
public:
    // Starts the next item (in file order) with its part number; `isNull` for none. Rows of one
    // item may also come as several items, each of consecutive rows.
    void AddItem(QByteArrayView partNoUtf8, bool isNull);
    // Adds a row of the item added last; rows are numbered from 0 in the order added.
    void AddRow(PrimeMark prime);
    void Reserve(qsizetype items, qsizetype rows);

    int ItemCount() const { return int(mItems.size()); }
    int RowCount() const { return int(mRows.size()); }
    int ItemOfRow(int row) const { return mRows[size_t(row)].item; }

    // The rows taken, in list order.
    std::vector<int> FirstRows() const;
    // The rows taken when they were added in list order already (the engine sorted them).
    std::vector<int> FirstRowsAsAdded() const;

private:
    struct Item {
        quint32 at;   // part number in mPlain and mFolded
        quint32 size; // its bytes
        bool isNull;
        int firstRow;
    };
    struct Row {
        int item;
        PrimeMark::Kind kind;
        double number;
        int text; // index into mPrimeTexts for a text mark
    };
    QByteArrayView plain(const Item& it) const;
    QByteArrayView folded(const Item& it) const;
    bool itemLess(int a, int b) const;
    bool sameKey(int a, int b) const;
    bool primeLess(int a, int b) const;
    int endRow(int item) const;

    QByteArray mPlain;
    QByteArray mFolded;
    std::vector<Item> mItems;
    std::vector<Row> mRows;
    std::vector<QByteArray> mPrimeTexts;
};
