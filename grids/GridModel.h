// The table model behind a GridEX: asks the owner for cells, holds the order of the records
// (sorted and grouped), the group rows with their open or closed state, and the one pending edit.
#pragma once

#include "grids/GridEX.h"

#include <QAbstractTableModel>
#include <QHash>

#include <unordered_map>
#include <vector>

// A cell reduced to what compares: nothing, a number or a text (held case-folded, so that texts
// compare without case).
struct GridSortValue {
    enum Kind : unsigned char { Empty, Number, Text } kind = Empty;
    double number = 0;
    QString text;
};

// The value of a check box cell: true, a non-zero number, or a text reading so.
bool GridTruthy(const QVariant& value);

class GridModel : public QAbstractTableModel {
    Q_OBJECT

public:
    // Roles beyond Qt's: the group level of a row (0 for data rows), and its open state.
    enum Role { GroupLevelRole = Qt::UserRole + 1, GroupExpandedRole, RecordRole };

    explicit GridModel(GridEX* grid);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    bool submit() override;
    void revert() override;

    // Rows as displayed, without the blank new row.
    int DisplayRows() const { return int(mVisible.size()); }
    int RecordAt(int displayRow) const; // 0-based display row; 0 for group and new rows
    int LevelAt(int displayRow) const;
    bool IsNewRow(int displayRow) const;
    int DisplayRowOfRecord(int record) const;        // 0-based, -1 when not shown
    QVariant Cell(int displayRow, int column) const; // column from 1
    QString GroupText(int displayRow) const;
    bool GroupOpen(int displayRow) const;
    void SetGroupOpen(int displayRow, bool open);
    void SetAllGroupsOpen(bool open);
    int FirstVisibleColumn() const; // 0-based logical column, -1 when none

    // Data.
    GridEX::CellReader Reader;
    GridEX::RowCommitHandler CommitHandler;
    GridEX::NewRowHandler NewRowHandler;
    GridEX::DeleteHandler DeleteHandler;
    void SetItemCount(int count);
    int ItemCount() const { return mItemCount; }
    void DropCache();
    void RefreshRecord(int record);
    void ColumnsReset(bool cleared);
    void ColumnChanged(int column);
    void SetAddNew(bool on);
    bool AddNew() const { return mAddNew; }
    bool Editable() const { return mAllowEdit; }
    void SetEditable(bool on);
    quint64 Generation() const { return mGeneration; }
    quint64 Reads() const { return mReads; }

    // Order.
    QList<GridSortKey> SortKeys;
    QList<GridSortKey> GroupKeys;
    void RebuildOrder();

    // Editing.
    bool HasPending() const { return mPendingRecord != 0; }
    int PendingRecord() const { return mPendingRecord; } // -1 for the new row
    bool CommitPending();
    void DropPending();
    bool DeleteRecord(int record);
    void SetCell(int displayRow, int column, const QVariant& value);

signals:
    void OrderRebuilt();
    void CommitWanted(bool cellEdit); // from a cell edit, or from the view's submit
    void Committed(int record);

private:
    struct Node {
        int record; // 0 for a group row
        int group;  // index into mGroups for a group row, -1 otherwise
    };
    struct Group {
        int level; // 1 outermost
        int firstRecord;
        int count;
        int column;   // 1-based column grouped on
        QString path; // identifies the group across rebuilds
    };

    const QVector<QVariant>& RowValues(int record) const;
    const std::vector<GridSortValue>& KeyColumn(int column) const;
    GridSortValue MakeSortValue(const QVariant& value, const GridColumn& col) const;
    void RebuildVisible();
    void StartPending(int record);
    QVariant DisplayOf(const QVariant& value, const GridColumn& col) const;

    GridEX* mGrid;
    int mItemCount = 0;
    bool mAddNew = false;
    bool mAllowEdit = true;
    quint64 mGeneration = 0;
    mutable quint64 mReads = 0;
    mutable QHash<int, QVector<QVariant>> mRowCache;
    mutable std::unordered_map<int, std::vector<GridSortValue>> mKeyCache; // by column
    std::vector<Node> mNodes;                                              // every row in order
    std::vector<Group> mGroups;
    std::vector<int> mVisible; // indexes into mNodes of the rows shown
    QHash<QString, bool> mGroupOpen;
    bool mGroupsOpenByDefault = false;
    int mPendingRecord = 0; // record being edited, -1 the new row, 0 none
    QVector<QVariant> mPendingValues;
};
