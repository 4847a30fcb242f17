// The pieces of a GridEX that the window never sees: the cell editors, the card painter and the
// group-by box.
#pragma once

#include "grids/GridEX.h"

#include <QFrame>
#include <QStyledItemDelegate>

class QHBoxLayout;

// Editors of the table: a line box with the column's key filter, or a calendar for dates.
class GridDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    GridDelegate(GridEX* grid, QObject* parent);
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    GridEX* mGrid;
};

// A record as a card: one "Caption: value" line per visible column.
class GridCardDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    GridCardDelegate(GridEX* grid, QObject* parent);
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    // The lines of a card, as painted.
    static QStringList CardLines(const GridEX* grid, int row);

private:
    GridEX* mGrid;
};

// The strip above the table: its text, a button per grouped column (a click removes the group),
// and a drop target for column headers. A click on the strip opens or closes all groups.
class GridGroupByBox : public QFrame {
    Q_OBJECT

public:
    explicit GridGroupByBox(GridEX* grid);
    QLabel* Label() const { return mLabel; }
    void Show(const QString& text, const QList<GridSortKey>& groups);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    GridEX* mGrid;
    QLabel* mLabel;
    QHBoxLayout* mButtons;
    bool mOpen = false;
};

inline const char* const kGridColumnMime = "application/x-quillstock-gridcolumn";
