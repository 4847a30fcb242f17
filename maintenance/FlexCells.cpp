#include "maintenance/FlexCells.h"

FlexCells::FlexCells(QObject* parent) : QAbstractTableModel(parent) {
    mCells.resize(2);
}

void FlexCells::BeginUpdate() {
    if (mUpdating++ == 0)
        beginResetModel();
}

void FlexCells::EndUpdate() {
    if (mUpdating > 0 && --mUpdating == 0)
        endResetModel();
}

void FlexCells::SetRows(int rows) {
    rows = qMax(rows, 0);
    const int old = Rows();
    if (rows == old)
        return;
    const bool tell = mUpdating == 0;
    if (rows > old) {
        if (tell)
            beginInsertRows(QModelIndex(), old, rows - 1);
        mCells.resize(rows);
        if (tell)
            endInsertRows();
    } else {
        if (tell)
            beginRemoveRows(QModelIndex(), rows, old - 1);
        mCells.resize(rows);
        if (tell)
            endRemoveRows();
    }
}

void FlexCells::SetCols(int cols) {
    cols = qMax(cols, 0);
    const int old = mCols;
    if (cols == old)
        return;
    const bool tell = mUpdating == 0;
    if (cols > old) {
        if (tell)
            beginInsertColumns(QModelIndex(), old, cols - 1);
        mCols = cols;
        if (tell)
            endInsertColumns();
    } else {
        if (tell)
            beginRemoveColumns(QModelIndex(), cols, old - 1);
        mCols = cols;
        for (QStringList& row : mCells)
            if (row.size() > cols)
                row.resize(cols);
        if (tell)
            endRemoveColumns();
    }
}

QString FlexCells::TextMatrix(int row, int col) const {
    if (row < 0 || row >= Rows() || col < 0 || col >= mCols)
        return QString();
    const QStringList& cells = mCells.at(row);
    return col < cells.size() ? cells.at(col) : QString();
}

void FlexCells::SetTextMatrix(int row, int col, const QString& text) {
    if (row < 0 || row >= Rows() || col < 0 || col >= mCols)
        return;
    QStringList& cells = mCells[row];
    if (col >= cells.size()) {
        if (text.isEmpty())
            return;
        cells.resize(col + 1);
    }
    cells[col] = text;
    if (mUpdating)
        return;
    const QModelIndex i = index(row, col);
    emit dataChanged(i, i, {Qt::DisplayRole});
    if (row == 0)
        emit headerDataChanged(Qt::Horizontal, col, col);
    if (col == 0)
        emit headerDataChanged(Qt::Vertical, row, row);
}

void FlexCells::Clear() {
    BeginUpdate();
    for (QStringList& row : mCells)
        row.clear();
    EndUpdate();
}

int FlexCells::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Rows();
}

int FlexCells::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : mCols;
}

QVariant FlexCells::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return QVariant();
    return TextMatrix(index.row(), index.column());
}

QVariant FlexCells::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return QVariant();
    return orientation == Qt::Horizontal ? TextMatrix(0, section) : TextMatrix(section, 0);
}

Qt::ItemFlags FlexCells::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}
