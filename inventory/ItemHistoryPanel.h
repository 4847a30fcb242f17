// The History sub-panel of the item detail: the grid gdxItemHistory over the item's movements.
#pragma once

#include <QFrame>
#include <QList>
#include <QStringList>

class GridEX;

class ItemHistoryPanel : public QFrame {
    Q_OBJECT
public:
    explicit ItemHistoryPanel(QWidget* parent = nullptr); // objectName "frmHistory"

    // Reads the item's history rows and shows them; an item with no rows leaves the grid empty.
    void LoadHistory(qint32 itemId);
    void Clear();

    int RowCount() const { return int(mRows.size()); }
    // The text of a record (1-based, in the order read) and column (1-based).
    QString Cell(int record, int column) const;

    GridEX* gdxItemHistory;

private:
    void DefineColumns();
    QList<QStringList> mRows;
};
