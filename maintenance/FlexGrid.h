// A flexible grid on screen: the cells of FlexCells, with row 0 shown as the fixed heading row
// and column 0 as the fixed first column, so both stay in view while the cells scroll.
#pragma once

#include <QTableView>

class FlexCells;

class FlexGrid : public QTableView {
    Q_OBJECT
public:
    explicit FlexGrid(const QString& name, QWidget* parent = nullptr);

    FlexCells& Cells() const { return *mCells; }
    int Rows() const;
    int Cols() const;
    QString TextMatrix(int row, int col) const;

private:
    void hideFixedCells();
    FlexCells* mCells;
};
