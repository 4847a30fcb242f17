// The list grid used by every "gdx" grid of the program.
//
// The grid is unbound: its owner (a window) keeps a two-dimensional array of the rows and the grid
// asks for a cell when it needs one, through the cell reader. Rows and columns are counted from 1
// everywhere in this interface, as in the owner's arrays:
//   - a record is a row of the owner's array, 1..ItemCount();
//   - a grid row is a row as displayed, 1..RowCount(): group rows included, in the grid's order
//     (sorted and grouped), collapsed groups hiding their rows;
//   - a column is a grid column, by position 1..Columns().Count() in the order of creation, or by
//     its key.
// The grid never reorders or rereads the owner's array on its own: sorting and grouping are held
// in the grid as an order of record numbers. A load cycles the item count: SetItemCount(0), let
// the window repaint (QCoreApplication::processEvents), SetItemCount(n); the grid then drops all it
// holds and reads again as it needs.
//
// Edits are kept by the grid for the current row until they are committed: the row-commit handler
// gets the whole row (every column) and copies it into the array; the new-row handler does the
// same for the blank row at the end; the delete handler removes a record. Each may cancel.
#pragma once

#include <QAbstractItemView>
#include <QVariant>
#include <QVector>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class GridEX;
class GridModel;
class QTableView;
class QListView;
class QStackedWidget;
class QLabel;
class QFrame;

// What a column holds and how it is edited.
enum class GridColumnKind {
    Text,     // plain text; edited in a line box when editable
    CheckBox, // a tick box: the value reads as true for true, non-zero numbers, "True", "Yes"
    Date,     // a date shown as text (ShowDate); edited through a calendar, never by typing
};

// How the text of a column compares when the grid sorts or groups by it.
enum class GridSortType {
    Auto,    // numbers as numbers, dates as dates, texts without case; two texts that are both
             // plain numbers compare as numbers
    Text,    // as text, without case
    Numeric, // by the leading number of the text (Val)
    Date,    // by the date the text holds (ParseDateText); no date sorts first
};

// When an edited row is handed to the row-commit handler.
enum class GridCommit {
    OnRowChange, // when the user leaves the row, presses Enter, or the window calls Update()
    OnCellEdit,  // at once at the end of each cell edit and at each check box click
};

// The two faces of the grid.
enum class GridView {
    Table, // rows and columns
    Card,  // one card per record with a "Caption: value" line per visible column (read only)
};

// Key filter of a column: the cell's text so far and the key code typed (backspace is 8); returns
// the code to accept (possibly another one, which is then typed instead) or 0 to drop the key.
// NumericKey fits as it is; AlphaNumericKey through a small lambda.
using GridKeyFilter = std::function<int(const QString& text, int keyCode)>;

class GridColumn {
public:
    const QString& Key() const { return mKey; }
    const QString& Caption() const { return mCaption; }
    int Width() const { return mWidth; } // twips
    bool Visible() const { return mVisible; }
    Qt::Alignment Alignment() const { return mAlignment; }
    GridColumnKind Kind() const { return mKind; }
    bool Editable() const { return mEditable; }
    GridSortType SortType() const { return mSortType; }
    const GridKeyFilter& KeyFilter() const { return mKeyFilter; }
    int Index() const { return mIndex; } // position from 1

    // Setters return the column so that a definition reads as one chain.
    GridColumn& SetCaption(const QString& caption);
    GridColumn& SetWidth(int twips);
    GridColumn& SetVisible(bool visible);
    GridColumn& SetAlignment(Qt::Alignment alignment);
    GridColumn& SetKind(GridColumnKind kind);
    GridColumn& SetEditable(bool editable);
    GridColumn& SetSortType(GridSortType type);
    GridColumn& SetKeyFilter(GridKeyFilter filter);

private:
    friend class GridColumns;
    friend class GridEX;
    GridColumn(GridEX* grid, QString key, QString caption, int index);
    GridEX* mGrid;
    QString mKey;
    QString mCaption;
    int mWidth;
    bool mVisible = true;
    Qt::Alignment mAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    GridColumnKind mKind = GridColumnKind::Text;
    bool mEditable = false;
    GridSortType mSortType = GridSortType::Auto;
    GridKeyFilter mKeyFilter;
    int mIndex;
};

// The columns of a grid, by position from 1 or by key (keys compare without case).
class GridColumns {
public:
    int Count() const { return int(mColumns.size()); }
    // By position 1..Count(); throws std::out_of_range outside.
    GridColumn& operator()(int position);
    const GridColumn& operator()(int position) const;
    // By key; throws std::out_of_range for an unknown key.
    GridColumn& operator()(const QString& key);
    const GridColumn& operator()(const QString& key) const;
    // By key; nullptr for an unknown key.
    GridColumn* Find(const QString& key);
    const GridColumn* Find(const QString& key) const;
    // Appends a column (text, not editable, visible, 1440 twips wide).
    GridColumn& Add(const QString& key, const QString& caption);
    // Removes every column, and with them the sort and the groups.
    void Clear();

private:
    friend class GridEX;
    explicit GridColumns(GridEX* grid) : mGrid(grid) {}
    GridEX* mGrid;
    std::vector<std::unique_ptr<GridColumn>> mColumns;
};

// One row of values handed to the commit and new-row handlers, by column position from 1 or by
// key. The handler may change the values it copies.
class GridRowValues {
public:
    GridRowValues(const GridColumns* columns, QVector<QVariant> values)
        : mColumns(columns), mValues(std::move(values)) {}
    int Count() const { return int(mValues.size()); }
    QVariant& operator()(int column);
    const QVariant& operator()(int column) const;
    QVariant& operator()(const QString& key);
    const QVariant& operator()(const QString& key) const;
    const QVector<QVariant>& Values() const { return mValues; }

private:
    const GridColumns* mColumns;
    QVector<QVariant> mValues;
};

struct GridSortKey {
    QString Key;
    Qt::SortOrder Order = Qt::AscendingOrder;
};

class GridEX : public QWidget {
    Q_OBJECT

public:
    // The cell of a record (1..ItemCount) and column (1..Columns().Count()).
    using CellReader = std::function<QVariant(int record, int column)>;
    // The edited record with all its values; set cancel to keep the array as it was (the grid
    // then drops the edit and shows the array's values again).
    using RowCommitHandler = std::function<void(int record, GridRowValues& values, bool& cancel)>;
    // The blank last row was filled in: append it to the array (the grid then counts one record
    // more and reads it from the array), or set cancel to keep the user in the new row.
    using NewRowHandler = std::function<void(GridRowValues& values, bool& cancel)>;
    // The user deletes a record: remove it from the array (the grid then counts one record less),
    // or set cancel to keep it.
    using DeleteHandler = std::function<void(int record, bool& cancel)>;

    // The widget and its inner views take `name` as their objectName; it is also the grid name of
    // the stored column widths.
    explicit GridEX(const QString& name, QWidget* parent = nullptr);
    ~GridEX() override;

    // --- data ---
    void SetCellReader(CellReader reader);
    void SetRowCommitHandler(RowCommitHandler handler);
    void SetNewRowHandler(NewRowHandler handler);
    void SetDeleteHandler(DeleteHandler handler);
    void SetItemCount(int count); // 0 drops all the grid holds, including its sort
    int ItemCount() const;
    void Refresh();                 // drops cached cells and reads them again, keeping the order
    void RefreshRecord(int record); // reads one record again (after the owner changed it)

    // --- columns ---
    GridColumns& Columns() { return mColumns; }
    const GridColumns& Columns() const { return mColumns; }

    // --- rows as displayed ---
    int RowCount() const;              // group rows included
    int Row() const;                   // current row, 1-based; 0 when there is none
    void SetRow(int row);              // makes a row current (1..RowCount)
    int RecordIndex(int row) const;    // the record shown in a grid row; 0 for a group or new row
    int RowOfRecord(int record) const; // the grid row showing a record; 0 if hidden or absent
    int GroupRowLevel(int row) const;  // 0 for a data row, 1.. for group rows (1 outermost)
    // The cell of the current row as shown (pending edits included): by position or key. A group
    // row gives its heading text in its first visible column and nothing in the others.
    QVariant Value(int column) const;
    QVariant Value(const QString& key) const;
    // The cell of any grid row, as Value gives it.
    QVariant CellValue(int row, int column) const;
    int RowAt(const QPoint& widgetPos) const; // grid row under a point of this widget; 0 if none
    // The bottom of the column headings (and the group-by box above them) in MouseUp's twips:
    // a release at or below it is over the rows.
    int HeaderBottomTwips() const;
    bool FullyLoaded() const { return true; } // rows come from memory: always complete
    void LoadEntireRecordset() {}

    // --- editing ---
    void SetAllowEdit(bool allow); // off: no cell is editable whatever its column says
    bool AllowEdit() const;
    void SetAllowAddNew(bool allow); // a blank row at the end for adding
    bool AllowAddNew() const;
    void SetAllowDelete(bool allow); // the Delete key removes the current record
    bool AllowDelete() const;
    void SetCommitMode(GridCommit mode);
    GridCommit CommitMode() const;
    bool Update();       // commits the pending edit now; false when the handler cancelled
    void CancelUpdate(); // drops the pending edit
    bool Delete();       // deletes the current record as the Delete key does; false if kept
    bool HasPendingEdit() const;

    // --- sorting ---
    void SetHeaderSort(bool on); // header clicks sort (on by default)
    void SortBy(const QString& key, Qt::SortOrder order = Qt::AscendingOrder);
    void SortBy(const QList<GridSortKey>& keys);
    void ClearSort(); // back to the array's order
    QList<GridSortKey> SortKeys() const;

    // --- grouping ---
    void SetGroupByBoxVisible(bool visible);
    bool GroupByBoxVisible() const;
    void SetGroupByBoxText(const QString& text);
    QString GroupByBoxText() const;
    void AddGroup(const QString& key, Qt::SortOrder order = Qt::AscendingOrder);
    void RemoveGroup(const QString& key);
    void ClearGroups();
    QList<GridSortKey> Groups() const;
    void ExpandAll();
    void CollapseAll();
    void SetGroupExpanded(int row, bool expanded); // a group row
    bool GroupExpanded(int row) const;

    // --- appearance ---
    void SetAlternatingRowColors(bool on);
    void SetView(GridView view);
    GridView View() const;
    void SetSaveColumnState(bool on); // a column resize stores the width (on by default)
    bool SaveColumnStateOn() const;

    QTableView* TableView() const { return mTable; }
    QListView* CardView() const { return mCards; }
    QAbstractItemModel* Model() const;

    // Pixels of the screen for a width in twips, and back, at the logical DPI.
    int TwipsToPixels(int twips) const;
    int PixelsToTwips(int pixels) const;

signals:
    void CurrentRowChanged(int row, int previousRow);
    void RowActivated(int row);             // double click or Enter on a data row
    void HeaderClicked(const QString& key); // before the grid sorts
    void ColumnResized(const QString& key, int widthTwips);
    // Mouse button released over the grid; position in twips from the widget's top left.
    void MouseUp(Qt::MouseButton button, int xTwips, int yTwips);
    void RowCommitted(int record);
    void GroupsChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    friend class GridColumn;
    friend class GridColumns;
    friend class GridModel;
    friend class GridDelegate;
    friend class GridGroupByBox;
    void ColumnsChanged(bool cleared);
    void ApplyAllColumns();
    void QueueUpdate(bool fromRowChange);
    void FlushResize();
    void StartColumnDrag(QWidget* source, const QString& key);
    void ColumnChanged(GridColumn* column);
    void ApplyColumnToView(const GridColumn* column);
    void OnSectionResized(int logical, int oldSize, int newSize);
    void OnHeaderClicked(int logical);
    void OnCurrentChanged(int row, int previousRow);
    void RebuildSpans();
    void UpdateGroupBox();

    GridColumns mColumns;
    GridModel* mModel = nullptr;
    QStackedWidget* mStack = nullptr;
    QTableView* mTable = nullptr;
    QListView* mCards = nullptr;
    QFrame* mGroupBox = nullptr;
    QLabel* mGroupLabel = nullptr;
    QString mGroupBoxText;
    bool mHeaderSort = true;
    bool mSaveColumnState = true;
    bool mApplyingWidths = false;
    bool mCommitting = false;
    bool mAllowDelete = false;
    GridCommit mCommitMode = GridCommit::OnRowChange;
    GridView mView = GridView::Table;
    // current row kept over a rebuild of the order
    int mKeepRecord = 0;
    int mKeepRow = -1;
    quint64 mKeepGeneration = 0;
    // a width dragged with the mouse is stored when the button is released
    int mResizedColumn = 0;
    // dragging a header into the group-by box
    QPoint mPressPos;
    int mPressSection = -1;
    bool mForwarding = false;
};

// A read-only list grid named `gridName` that fills `panel`: no edit, new row or delete,
// alternating row colours and no group-by box, as the item's sub-panels show their lists.
GridEX* AddListGrid(QWidget* panel, const QString& gridName);
