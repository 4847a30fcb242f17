// Shared by the CSV import suites: files written for a test, grids read from them and the column
// choices the boxes would give.
#pragma once

#include "maintenance/FlexCells.h"
#include "maintenance/ImportCsv.h"

#include <QFile>
#include <QString>

// Writes `bytes` to `path` and returns the path.
inline QString WriteFile(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        f.write(bytes);
    return path;
}

// What a box gives when the user picks "Column n": boxes with an Ignore entry hold it at
// ListIndex 0, so "Column n" is at n there and at n - 1 in Combo1 and Combo2. Column 0 is no
// choice at all.
inline ImportColumnChoice Pick(int column, bool hasIgnore = true) {
    if (column <= 0)
        return ImportColumnChoice{};
    return ImportColumnChoice{hasIgnore ? column : column - 1,
                              QStringLiteral("Column ") + QString::number(column)};
}

// Every box on the column of the same number in the layout
// part, description, quantity, location, buy, category, sell, detail.
inline ImportCsvInput AllColumns() {
    ImportCsvInput in;
    in.Combo1 = Pick(1, false);
    in.Combo2 = Pick(2, false);
    in.Combo3 = Pick(3);
    in.Combo4 = Pick(4);
    in.Combo9 = Pick(5);
    in.Combo10 = Pick(6);
    in.Combo11 = Pick(7);
    in.Combo12 = Pick(8);
    return in;
}
