#include "grids/GridEXSource.h"

#include "grids/ExportGridCsv.h"
#include "grids/GridEX.h"
#include "grids/PrintGrid.h"

GridEXSource::GridEXSource(GridEX& grid) : mGrid(grid), mBlock(&grid), mUserRow(grid.Row()) {}

GridEXSource::~GridEXSource() {
    if (mUserRow > 0 && mUserRow <= mGrid.RowCount())
        mGrid.SetRow(mUserRow);
}

int GridEXSource::ColumnCount() const {
    return mGrid.Columns().Count();
}

bool GridEXSource::ColumnVisible(int column) const {
    return mGrid.Columns()(column).Visible();
}

QString GridEXSource::ColumnCaption(int column) const {
    return mGrid.Columns()(column).Caption();
}

int GridEXSource::ColumnWidth(int column) const {
    return mGrid.Columns()(column).Width();
}

int GridEXSource::RowCount() const {
    return mGrid.RowCount();
}

void GridEXSource::SetRow(int row) {
    mGrid.SetRow(row);
}

QString GridEXSource::Value(int column) const {
    const QVariant v = mGrid.Value(column);
    // A tick reads as VB writes a Boolean.
    if (v.typeId() == QMetaType::Bool)
        return v.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    return v.toString();
}

int GridEXSource::GroupRowLevel(int row) const {
    return mGrid.GroupRowLevel(row);
}

bool GridEXSource::FullyLoaded() const {
    return mGrid.FullyLoaded();
}

void GridEXSource::LoadEntireRecordset() {
    mGrid.LoadEntireRecordset();
}

bool PrintGrid(GridEX& grid, int orientationChoice) {
    GridEXSource source(grid);
    return PrintGrid(source, orientationChoice);
}

void ExportGridCsv(GridEX& grid) {
    GridEXSource source(grid);
    ExportGridCsv(source);
}

bool WriteGridCsv(GridEX& grid, const QString& fileName) {
    GridEXSource source(grid);
    return WriteGridCsv(source, fileName);
}
