// The cells of a flexible grid: a table of texts with a fixed first row and first column, free
// setting of any cell, and counts of rows and columns that can be set at any time. Changing a
// count keeps the cells that remain, as the grid control does. Row 0 and column 0 are cells like
// any other; a view shows them as its headers.
#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QString>
#include <QStringList>

class FlexCells : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit FlexCells(QObject* parent = nullptr);

    int Rows() const { return int(mCells.size()); }
    int Cols() const { return mCols; }
    void SetRows(int rows);
    void SetCols(int cols);
    // "" outside the grid.
    QString TextMatrix(int row, int col) const;
    void SetTextMatrix(int row, int col, const QString& text);
    // Empties every cell; the counts stay.
    void Clear();

    // Work on many cells at once: views are told once, at EndUpdate, that everything changed.
    void BeginUpdate();
    void EndUpdate();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // The horizontal header is row 0, the vertical header column 0.
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    // A row holds its cells up to the last one written; the rest read as "".
    QList<QStringList> mCells;
    int mCols = 2;
    int mUpdating = 0;
};
