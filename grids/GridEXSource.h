// The grid widget as the listing and the CSV export read it, and those two services on it.
#pragma once

#include "grids/GridSource.h"

#include <QSignalBlocker>

class GridEX;

// Walking the rows moves the grid's current row; the window is not told, and the row the user
// had selected is current again once the walk is over.
class GridEXSource final : public GridSource {
public:
    explicit GridEXSource(GridEX& grid);
    ~GridEXSource() override;

    int ColumnCount() const override;
    bool ColumnVisible(int column) const override;
    QString ColumnCaption(int column) const override;
    int ColumnWidth(int column) const override;
    int RowCount() const override;
    void SetRow(int row) override;
    QString Value(int column) const override;
    int GroupRowLevel(int row) const override;
    bool FullyLoaded() const override;
    void LoadEntireRecordset() override;

private:
    GridEX& mGrid;
    QSignalBlocker mBlock;
    int mUserRow;
};

// PrintGrid, ExportGridCsv and WriteGridCsv on a grid widget.
bool PrintGrid(GridEX& grid, int orientationChoice);
void ExportGridCsv(GridEX& grid);
bool WriteGridCsv(GridEX& grid, const QString& fileName);
