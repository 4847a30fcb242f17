#include "maintenance/FlexGrid.h"

#include "maintenance/FlexCells.h"

#include <QHeaderView>

FlexGrid::FlexGrid(const QString& name, QWidget* parent) : QTableView(parent) {
    setObjectName(name);
    mCells = new FlexCells(this);
    setModel(mCells);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setWordWrap(false);
    // Row 0 and column 0 are the headers; the cells behind them are hidden in the body.
    horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    horizontalHeader()->setDefaultSectionSize(110);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    verticalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    verticalHeader()->setHighlightSections(false);
    verticalHeader()->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("DONE_OK")) +
                                      16);
    connect(mCells, &QAbstractItemModel::modelReset, this, &FlexGrid::hideFixedCells);
    connect(mCells, &QAbstractItemModel::columnsInserted, this, &FlexGrid::hideFixedCells);
    connect(mCells, &QAbstractItemModel::rowsInserted, this, &FlexGrid::hideFixedCells);
    hideFixedCells();
}

void FlexGrid::hideFixedCells() {
    if (mCells->Rows() > 0 && !isRowHidden(0))
        setRowHidden(0, true);
    if (mCells->Cols() > 0 && !isColumnHidden(0))
        setColumnHidden(0, true);
}

int FlexGrid::Rows() const {
    return mCells->Rows();
}

int FlexGrid::Cols() const {
    return mCells->Cols();
}

QString FlexGrid::TextMatrix(int row, int col) const {
    return mCells->TextMatrix(row, col);
}
