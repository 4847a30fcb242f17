// What the listing and the CSV export read from a grid. The grid widget answers through its
// adapter (grids/GridEXSource.h); tests feed plain tables.
#pragma once

#include <QString>

class GridSource {
public:
    virtual ~GridSource() = default;

    // Columns by position from 1, in the grid's order.
    virtual int ColumnCount() const = 0;
    virtual bool ColumnVisible(int column) const = 0;
    virtual QString ColumnCaption(int column) const = 0;
    virtual int ColumnWidth(int column) const = 0; // twips

    // Rows as displayed, from 1, group rows included.
    virtual int RowCount() const = 0;
    // Makes a row current; Value reads from it.
    virtual void SetRow(int row) = 0;
    // The text of a cell of the current row, as the grid shows it.
    virtual QString Value(int column) const = 0;
    // Above 0 for a group header row.
    virtual int GroupRowLevel(int row) const = 0;

    virtual bool FullyLoaded() const = 0;
    virtual void LoadEntireRecordset() = 0;
};
