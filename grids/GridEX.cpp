#include "grids/GridEX.h"

#include "foundation/Clock.h"
#include "foundation/Helpers.h"
#include "grids/ColumnState.h"
#include "grids/GridModel.h"
#include "grids/GridParts.h"

#include <QApplication>
#include <QDateEdit>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QStackedWidget>
#include <QTableView>
#include <QVBoxLayout>

#include <stdexcept>

// ---------------------------------------------------------------------------------------------
// GridColumn

GridColumn::GridColumn(GridEX* grid, QString key, QString caption, int index)
    : mGrid(grid), mKey(std::move(key)), mCaption(std::move(caption)), mWidth(1440), mIndex(index) {
}

GridColumn& GridColumn::SetCaption(const QString& caption) {
    mCaption = caption;
    mGrid->ColumnChanged(this);
    return *this;
}

GridColumn& GridColumn::SetWidth(int twips) {
    mWidth = twips < 0 ? 0 : twips;
    mGrid->ColumnChanged(this);
    return *this;
}

GridColumn& GridColumn::SetVisible(bool visible) {
    mVisible = visible;
    mGrid->ColumnChanged(this);
    return *this;
}

GridColumn& GridColumn::SetAlignment(Qt::Alignment alignment) {
    mAlignment = alignment;
    mGrid->ColumnChanged(this);
    return *this;
}

GridColumn& GridColumn::SetKind(GridColumnKind kind) {
    mKind = kind;
    mGrid->ColumnChanged(this);
    return *this;
}

GridColumn& GridColumn::SetEditable(bool editable) {
    mEditable = editable;
    mGrid->ColumnChanged(this);
    return *this;
}

GridColumn& GridColumn::SetSortType(GridSortType type) {
    mSortType = type;
    return *this;
}

GridColumn& GridColumn::SetKeyFilter(GridKeyFilter filter) {
    mKeyFilter = std::move(filter);
    return *this;
}

// ---------------------------------------------------------------------------------------------
// GridColumns

GridColumn& GridColumns::operator()(int position) {
    if (position < 1 || position > Count())
        throw std::out_of_range("grid column position out of range");
    return *mColumns[size_t(position - 1)];
}

const GridColumn& GridColumns::operator()(int position) const {
    if (position < 1 || position > Count())
        throw std::out_of_range("grid column position out of range");
    return *mColumns[size_t(position - 1)];
}

GridColumn* GridColumns::Find(const QString& key) {
    for (auto& c : mColumns)
        if (c->Key().compare(key, Qt::CaseInsensitive) == 0)
            return c.get();
    return nullptr;
}

const GridColumn* GridColumns::Find(const QString& key) const {
    for (const auto& c : mColumns)
        if (c->Key().compare(key, Qt::CaseInsensitive) == 0)
            return c.get();
    return nullptr;
}

GridColumn& GridColumns::operator()(const QString& key) {
    GridColumn* c = Find(key);
    if (!c)
        throw std::out_of_range("unknown grid column key");
    return *c;
}

const GridColumn& GridColumns::operator()(const QString& key) const {
    const GridColumn* c = Find(key);
    if (!c)
        throw std::out_of_range("unknown grid column key");
    return *c;
}

GridColumn& GridColumns::Add(const QString& key, const QString& caption) {
    mColumns.push_back(
        std::unique_ptr<GridColumn>(new GridColumn(mGrid, key, caption, Count() + 1)));
    GridColumn& col = *mColumns.back();
    mGrid->ColumnsChanged(false);
    return col;
}

void GridColumns::Clear() {
    mColumns.clear();
    mGrid->ColumnsChanged(true);
}

// ---------------------------------------------------------------------------------------------
// GridRowValues

QVariant& GridRowValues::operator()(int column) {
    if (column < 1 || column > Count())
        throw std::out_of_range("row value column out of range");
    return mValues[column - 1];
}

const QVariant& GridRowValues::operator()(int column) const {
    if (column < 1 || column > Count())
        throw std::out_of_range("row value column out of range");
    return mValues[column - 1];
}

QVariant& GridRowValues::operator()(const QString& key) {
    const GridColumn* c = mColumns ? mColumns->Find(key) : nullptr;
    if (!c)
        throw std::out_of_range("unknown grid column key");
    return (*this)(c->Index());
}

const QVariant& GridRowValues::operator()(const QString& key) const {
    const GridColumn* c = mColumns ? mColumns->Find(key) : nullptr;
    if (!c)
        throw std::out_of_range("unknown grid column key");
    return (*this)(c->Index());
}

// ---------------------------------------------------------------------------------------------
// GridEX

GridEX::GridEX(const QString& name, QWidget* parent) : QWidget(parent), mColumns(this) {
    setObjectName(name);
    mModel = new GridModel(this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* box = new GridGroupByBox(this);
    mGroupBox = box;
    mGroupLabel = box->Label();
    layout->addWidget(mGroupBox);
    mStack = new QStackedWidget(this);
    layout->addWidget(mStack, 1);

    mTable = new QTableView(mStack);
    mTable->setObjectName(name);
    mTable->setModel(mModel);
    mTable->setItemDelegate(new GridDelegate(this, mTable));
    mTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    mTable->setSelectionMode(QAbstractItemView::SingleSelection);
    mTable->setAlternatingRowColors(true);
    mTable->setWordWrap(false);
    mTable->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                            QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    mTable->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    QHeaderView* vh = mTable->verticalHeader();
    vh->hide();
    vh->setSectionResizeMode(QHeaderView::Fixed);
    vh->setDefaultSectionSize(mTable->fontMetrics().height() + 6);
    QHeaderView* hh = mTable->horizontalHeader();
    hh->setSectionsClickable(true);
    hh->setHighlightSections(false);
    hh->setStretchLastSection(false);
    hh->setSectionResizeMode(QHeaderView::Interactive);
    hh->setSortIndicatorShown(false);
    hh->setSortIndicator(-1, Qt::AscendingOrder);
    mStack->addWidget(mTable);

    mCards = new QListView(mStack);
    mCards->setObjectName(name + QStringLiteral("Cards"));
    mCards->setModel(mModel);
    mCards->setSelectionModel(mTable->selectionModel());
    mCards->setItemDelegate(new GridCardDelegate(this, mCards));
    mCards->setViewMode(QListView::ListMode);
    mCards->setFlow(QListView::LeftToRight);
    mCards->setWrapping(true);
    mCards->setResizeMode(QListView::Adjust);
    mCards->setUniformItemSizes(true);
    mCards->setSpacing(4);
    mCards->setEditTriggers(QAbstractItemView::NoEditTriggers);
    mStack->addWidget(mCards);
    mStack->setCurrentWidget(mTable);
    // Tab and code that focus the grid put the keyboard on its rows.
    setFocusProxy(mTable);

    connect(hh, &QHeaderView::sectionResized, this, &GridEX::OnSectionResized);
    connect(hh, &QHeaderView::sectionClicked, this, &GridEX::OnHeaderClicked);
    connect(mTable->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& cur, const QModelIndex& prev) {
                OnCurrentChanged(cur.isValid() ? cur.row() + 1 : 0,
                                 prev.isValid() ? prev.row() + 1 : 0);
            });
    connect(mModel, &GridModel::CommitWanted, this, [this](bool cellEdit) {
        if (!cellEdit || mCommitMode == GridCommit::OnCellEdit)
            QueueUpdate(false);
    });
    connect(mModel, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
        const int row = Row();
        mKeepRecord = row ? RecordIndex(row) : 0;
        mKeepRow = row;
        mKeepGeneration = mModel->Generation();
    });
    connect(mModel, &GridModel::OrderRebuilt, this, [this] {
        ApplyAllColumns();
        RebuildSpans();
        if (mModel->Generation() == mKeepGeneration) {
            if (mKeepRecord > 0) {
                const int row = RowOfRecord(mKeepRecord);
                if (row > 0)
                    SetRow(row);
            } else if (mKeepRow > 0 && mKeepRow <= RowCount()) {
                SetRow(mKeepRow);
            }
        }
        mKeepRecord = 0;
        mKeepRow = -1;
    });
    connect(mModel, &GridModel::Committed, this, &GridEX::RowCommitted);
    connect(mTable, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        if (mModel->LevelAt(index.row()) > 0) {
            const int row = index.row() + 1;
            SetGroupExpanded(row, !GroupExpanded(row));
        }
    });
    auto activated = [this](const QModelIndex& index) {
        if (mModel->RecordAt(index.row()) > 0)
            emit RowActivated(index.row() + 1);
    };
    connect(mTable, &QAbstractItemView::doubleClicked, this, activated);
    connect(mCards, &QAbstractItemView::doubleClicked, this, activated);

    mTable->installEventFilter(this);
    mTable->viewport()->installEventFilter(this);
    hh->viewport()->installEventFilter(this);
    mCards->viewport()->installEventFilter(this);

    SetGroupByBoxText(QStringLiteral("Drag a column header here to group by that column"));
}

GridEX::~GridEX() {
    // The views go before the model and the columns, and tell this grid nothing on the way.
    mModel->disconnect(this);
    mTable->selectionModel()->disconnect(this);
    mTable->removeEventFilter(this);
    mTable->viewport()->removeEventFilter(this);
    mTable->horizontalHeader()->viewport()->removeEventFilter(this);
    mCards->viewport()->removeEventFilter(this);
    setFocusProxy(nullptr);
    delete mStack;
    mStack = nullptr;
    mTable = nullptr;
    mCards = nullptr;
}

QAbstractItemModel* GridEX::Model() const {
    return mModel;
}

int GridEX::TwipsToPixels(int twips) const {
    return qRound(twips * logicalDpiX() / 1440.0);
}

int GridEX::PixelsToTwips(int pixels) const {
    return qRound(pixels * 1440.0 / logicalDpiX());
}

// --- data -------------------------------------------------------------------------------------

void GridEX::SetCellReader(CellReader reader) {
    mModel->Reader = std::move(reader);
    mModel->DropCache();
}

void GridEX::SetRowCommitHandler(RowCommitHandler handler) {
    mModel->CommitHandler = std::move(handler);
}

void GridEX::SetNewRowHandler(NewRowHandler handler) {
    mModel->NewRowHandler = std::move(handler);
}

void GridEX::SetDeleteHandler(DeleteHandler handler) {
    mModel->DeleteHandler = std::move(handler);
}

void GridEX::SetItemCount(int count) {
    mModel->SetItemCount(count);
}

int GridEX::ItemCount() const {
    return mModel->ItemCount();
}

void GridEX::Refresh() {
    mModel->DropCache();
    mTable->viewport()->update();
    mCards->viewport()->update();
}

void GridEX::RefreshRecord(int record) {
    mModel->RefreshRecord(record);
}

// --- rows ---------------------------------------------------------------------------------------

int GridEX::RowCount() const {
    return mModel->DisplayRows();
}

int GridEX::Row() const {
    const QModelIndex idx = mTable->selectionModel()->currentIndex();
    return idx.isValid() ? idx.row() + 1 : 0;
}

void GridEX::SetRow(int row) {
    if (row < 1 || row > mModel->rowCount())
        return;
    const int col = std::max(mModel->FirstVisibleColumn(), 0);
    if (mModel->columnCount() == 0)
        return;
    mTable->selectionModel()->setCurrentIndex(mModel->index(row - 1, col),
                                              QItemSelectionModel::ClearAndSelect |
                                                  QItemSelectionModel::Rows);
}

int GridEX::RecordIndex(int row) const {
    return mModel->RecordAt(row - 1);
}

int GridEX::RowOfRecord(int record) const {
    const int r = mModel->DisplayRowOfRecord(record);
    return r < 0 ? 0 : r + 1;
}

int GridEX::GroupRowLevel(int row) const {
    return mModel->LevelAt(row - 1);
}

QVariant GridEX::Value(int column) const {
    return CellValue(Row(), column);
}

QVariant GridEX::Value(const QString& key) const {
    const GridColumn* c = mColumns.Find(key);
    return c ? CellValue(Row(), c->Index()) : QVariant();
}

QVariant GridEX::CellValue(int row, int column) const {
    if (row < 1)
        return {};
    return mModel->Cell(row - 1, column);
}

int GridEX::RowAt(const QPoint& widgetPos) const {
    int r = -1;
    if (mView == GridView::Card) {
        r = mCards->indexAt(mCards->viewport()->mapFrom(this, widgetPos)).row();
    } else {
        const QPoint p = mTable->viewport()->mapFrom(this, widgetPos);
        if (p.y() >= 0 && p.y() < mTable->viewport()->height())
            r = mTable->rowAt(p.y());
    }
    return (r < 0 || r >= RowCount()) ? 0 : r + 1;
}

int GridEX::HeaderBottomTwips() const {
    const QWidget* viewport = mView == GridView::Card ? mCards->viewport() : mTable->viewport();
    return PixelsToTwips(viewport->mapTo(this, QPoint(0, 0)).y());
}

// --- editing
// --------------------------------------------------------------------------------------

void GridEX::SetAllowEdit(bool allow) {
    mModel->SetEditable(allow);
}
bool GridEX::AllowEdit() const {
    return mModel->Editable();
}

void GridEX::SetAllowAddNew(bool allow) {
    mModel->SetAddNew(allow);
}
bool GridEX::AllowAddNew() const {
    return mModel->AddNew();
}

void GridEX::SetAllowDelete(bool allow) {
    mAllowDelete = allow;
}
bool GridEX::AllowDelete() const {
    return mAllowDelete;
}

void GridEX::SetCommitMode(GridCommit mode) {
    mCommitMode = mode;
}
GridCommit GridEX::CommitMode() const {
    return mCommitMode;
}

bool GridEX::HasPendingEdit() const {
    return mModel->HasPending();
}

bool GridEX::Update() {
    if (mCommitting)
        return false;
    // A cell still open in its editor hands its text over first.
    const QModelIndex cur = mTable->currentIndex();
    if (cur.isValid()) {
        if (QWidget* editor = mTable->indexWidget(cur)) {
            QMetaObject::invokeMethod(mTable, "commitData", Q_ARG(QWidget*, editor));
            QMetaObject::invokeMethod(
                mTable, "closeEditor", Q_ARG(QWidget*, editor),
                Q_ARG(QAbstractItemDelegate::EndEditHint, QAbstractItemDelegate::NoHint));
        }
    }
    mCommitting = true;
    const bool ok = mModel->CommitPending();
    mCommitting = false;
    return ok;
}

void GridEX::CancelUpdate() {
    mModel->DropPending();
}

bool GridEX::Delete() {
    const int row = Row();
    const int record = RecordIndex(row);
    if (record <= 0)
        return false;
    if (!mModel->DeleteRecord(record))
        return false;
    if (RowCount() > 0)
        SetRow(std::min(row, RowCount()));
    return true;
}

void GridEX::QueueUpdate(bool fromRowChange) {
    // Runs once the view has finished with its editor; only for the row pending now.
    const quint64 gen = mModel->Generation();
    const int pending = mModel->PendingRecord();
    QMetaObject::invokeMethod(
        this,
        [this, gen, pending, fromRowChange] {
            if (gen != mModel->Generation() || mModel->PendingRecord() != pending || !pending)
                return;
            if (fromRowChange) {
                // Still on the edited row: nothing to do until it is left.
                const int row = Row();
                const int record = mModel->IsNewRow(row - 1) ? -1 : RecordIndex(row);
                if (row > 0 && record == pending)
                    return;
            }
            if (!Update() && pending == -1 && mModel->PendingRecord() == -1 && fromRowChange)
                SetRow(mModel->DisplayRows() + 1); // back into the new row
        },
        Qt::QueuedConnection);
}

void GridEX::OnCurrentChanged(int row, int previousRow) {
    if (mModel->HasPending())
        QueueUpdate(true);
    emit CurrentRowChanged(row, previousRow);
}

// --- sorting ------------------------------------------------------------------------------------

void GridEX::SetHeaderSort(bool on) {
    mHeaderSort = on;
}

void GridEX::SortBy(const QString& key, Qt::SortOrder order) {
    SortBy({GridSortKey{key, order}});
}

void GridEX::SortBy(const QList<GridSortKey>& keys) {
    mModel->SortKeys = keys;
    mModel->RebuildOrder();
    QHeaderView* hh = mTable->horizontalHeader();
    const GridColumn* first = keys.isEmpty() ? nullptr : mColumns.Find(keys.first().Key);
    if (first) {
        hh->setSortIndicatorShown(true);
        hh->setSortIndicator(first->Index() - 1, keys.first().Order);
    } else {
        hh->setSortIndicatorShown(false);
        hh->setSortIndicator(-1, Qt::AscendingOrder);
    }
}

void GridEX::ClearSort() {
    SortBy(QList<GridSortKey>{});
}

QList<GridSortKey> GridEX::SortKeys() const {
    return mModel->SortKeys;
}

void GridEX::OnHeaderClicked(int logical) {
    if (logical < 0 || logical >= mColumns.Count())
        return;
    const QString key = mColumns(logical + 1).Key();
    emit HeaderClicked(key);
    if (!mHeaderSort)
        return;
    if (mModel->HasPending())
        Update();
    const QList<GridSortKey> keys = mModel->SortKeys;
    Qt::SortOrder order = Qt::AscendingOrder;
    if (keys.size() == 1 && keys.first().Key.compare(key, Qt::CaseInsensitive) == 0 &&
        keys.first().Order == Qt::AscendingOrder)
        order = Qt::DescendingOrder;
    SortBy(key, order);
}

// --- grouping -----------------------------------------------------------------------------------

void GridEX::SetGroupByBoxVisible(bool visible) {
    mGroupBox->setVisible(visible);
}
bool GridEX::GroupByBoxVisible() const {
    return !mGroupBox->isHidden();
}

void GridEX::SetGroupByBoxText(const QString& text) {
    mGroupBoxText = text;
    UpdateGroupBox();
}

QString GridEX::GroupByBoxText() const {
    return mGroupBoxText;
}

void GridEX::AddGroup(const QString& key, Qt::SortOrder order) {
    const GridColumn* col = mColumns.Find(key);
    if (!col)
        return;
    for (const GridSortKey& g : mModel->GroupKeys)
        if (g.Key.compare(key, Qt::CaseInsensitive) == 0)
            return;
    if (mModel->HasPending())
        Update();
    mModel->GroupKeys.append({col->Key(), order});
    mModel->RebuildOrder();
    UpdateGroupBox();
    emit GroupsChanged();
}

void GridEX::RemoveGroup(const QString& key) {
    QList<GridSortKey>& groups = mModel->GroupKeys;
    for (int i = 0; i < groups.size(); ++i) {
        if (groups[i].Key.compare(key, Qt::CaseInsensitive) == 0) {
            groups.removeAt(i);
            mModel->RebuildOrder();
            UpdateGroupBox();
            emit GroupsChanged();
            return;
        }
    }
}

void GridEX::ClearGroups() {
    if (mModel->GroupKeys.isEmpty())
        return;
    mModel->GroupKeys.clear();
    mModel->RebuildOrder();
    UpdateGroupBox();
    emit GroupsChanged();
}

QList<GridSortKey> GridEX::Groups() const {
    return mModel->GroupKeys;
}

void GridEX::ExpandAll() {
    mModel->SetAllGroupsOpen(true);
}

void GridEX::CollapseAll() {
    mModel->SetAllGroupsOpen(false);
}

void GridEX::SetGroupExpanded(int row, bool expanded) {
    if (GroupRowLevel(row) < 1)
        return;
    mModel->SetGroupOpen(row - 1, expanded);
    SetRow(row);
}

bool GridEX::GroupExpanded(int row) const {
    return mModel->GroupOpen(row - 1);
}

void GridEX::UpdateGroupBox() {
    static_cast<GridGroupByBox*>(mGroupBox)->Show(mGroupBoxText, mModel->GroupKeys);
}

void GridEX::RebuildSpans() {
    mTable->clearSpans();
    if (mModel->GroupKeys.isEmpty())
        return;
    const int first = mModel->FirstVisibleColumn();
    const int span = mModel->columnCount() - first;
    if (first < 0 || span < 2)
        return;
    for (int r = 0; r < mModel->DisplayRows(); ++r)
        if (mModel->LevelAt(r) > 0)
            mTable->setSpan(r, first, 1, span);
}

// --- appearance
// -----------------------------------------------------------------------------------

void GridEX::SetAlternatingRowColors(bool on) {
    mTable->setAlternatingRowColors(on);
}

void GridEX::SetView(GridView view) {
    mView = view;
    QWidget* shown = view == GridView::Card ? static_cast<QWidget*>(mCards) : mTable;
    mStack->setCurrentWidget(shown);
    setFocusProxy(shown);
}

GridView GridEX::View() const {
    return mView;
}

void GridEX::SetSaveColumnState(bool on) {
    mSaveColumnState = on;
}
bool GridEX::SaveColumnStateOn() const {
    return mSaveColumnState;
}

// --- columns
// --------------------------------------------------------------------------------------

void GridEX::ColumnsChanged(bool cleared) {
    if (cleared) {
        QHeaderView* hh = mTable->horizontalHeader();
        hh->setSortIndicatorShown(false);
        hh->setSortIndicator(-1, Qt::AscendingOrder);
    }
    mModel->ColumnsReset(cleared);
    UpdateGroupBox();
}

void GridEX::ColumnChanged(GridColumn* column) {
    ApplyColumnToView(column);
    mModel->ColumnChanged(column->Index());
    if (!mModel->GroupKeys.isEmpty())
        RebuildSpans();
    UpdateGroupBox();
}

void GridEX::ApplyAllColumns() {
    for (int c = 1; c <= mColumns.Count(); ++c)
        ApplyColumnToView(&mColumns(c));
}

void GridEX::ApplyColumnToView(const GridColumn* column) {
    const int logical = column->Index() - 1;
    if (logical >= mModel->columnCount())
        return;
    const bool wasApplying = mApplyingWidths;
    mApplyingWidths = true;
    mTable->setColumnHidden(logical, !column->Visible());
    if (column->Visible())
        mTable->horizontalHeader()->resizeSection(logical, TwipsToPixels(column->Width()));
    mApplyingWidths = wasApplying;
}

void GridEX::OnSectionResized(int logical, int, int newSize) {
    if (mApplyingWidths || newSize <= 0 || logical < 0 || logical >= mColumns.Count())
        return;
    if (mTable->isColumnHidden(logical))
        return;
    GridColumn& col = mColumns(logical + 1);
    col.mWidth = PixelsToTwips(newSize);
    emit ColumnResized(col.Key(), col.Width());
    mResizedColumn = logical + 1;
    // While the border is being dragged the width is stored once, on release.
    if (!(QGuiApplication::mouseButtons() & Qt::LeftButton))
        FlushResize();
}

void GridEX::FlushResize() {
    if (mResizedColumn < 1 || mResizedColumn > mColumns.Count()) {
        mResizedColumn = 0;
        return;
    }
    const GridColumn& col = mColumns(mResizedColumn);
    mResizedColumn = 0;
    if (mSaveColumnState)
        SaveColumnState(objectName(), col.Key(), col.Width());
}

// --- events
// -----------------------------------------------------------------------------------------

bool GridEX::eventFilter(QObject* watched, QEvent* event) {
    QHeaderView* hh = mTable->horizontalHeader();
    // Keys reach the table itself only while no cell editor is open.
    if (watched == mTable && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Delete && mAllowDelete) {
            Delete();
            return true;
        }
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            if (mModel->HasPending()) {
                Update();
            } else if (RecordIndex(Row()) > 0) {
                emit RowActivated(Row());
            } else if (GroupRowLevel(Row()) > 0) {
                SetGroupExpanded(Row(), !GroupExpanded(Row()));
            }
            return true;
        }
    }
    if (watched == hh->viewport()) {
        if (event->type() == QEvent::MouseButtonPress) {
            auto* me = static_cast<QMouseEvent*>(event);
            mPressPos = me->position().toPoint();
            const bool onHandle = hh->viewport()->cursor().shape() == Qt::SplitHCursor;
            mPressSection = onHandle ? -1 : hh->logicalIndexAt(mPressPos);
        } else if (event->type() == QEvent::MouseMove) {
            auto* me = static_cast<QMouseEvent*>(event);
            const QPoint p = me->position().toPoint();
            if ((me->buttons() & Qt::LeftButton) && mPressSection >= 0 && GroupByBoxVisible() &&
                mPressSection < mColumns.Count() && (p.y() < 0 || p.y() > hh->height()) &&
                (p - mPressPos).manhattanLength() >= QApplication::startDragDistance()) {
                const QString key = mColumns(mPressSection + 1).Key();
                mPressSection = -1;
                StartColumnDrag(hh, key);
                return true;
            }
        } else if (event->type() == QEvent::MouseButtonRelease && !mForwarding) {
            // The header handles the click (and the sort) before the window hears of it.
            mForwarding = true;
            QCoreApplication::sendEvent(watched, event);
            mForwarding = false;
            mPressSection = -1;
            if (mResizedColumn)
                FlushResize();
            auto* me = static_cast<QMouseEvent*>(event);
            const QPoint p = hh->viewport()->mapTo(this, me->position().toPoint());
            emit MouseUp(me->button(), PixelsToTwips(p.x()), PixelsToTwips(p.y()));
            return true;
        }
    }
    if ((watched == mTable->viewport() || watched == mCards->viewport()) &&
        event->type() == QEvent::MouseButtonRelease && !mForwarding) {
        mForwarding = true;
        QCoreApplication::sendEvent(watched, event);
        mForwarding = false;
        auto* me = static_cast<QMouseEvent*>(event);
        const QPoint p = static_cast<QWidget*>(watched)->mapTo(this, me->position().toPoint());
        emit MouseUp(me->button(), PixelsToTwips(p.x()), PixelsToTwips(p.y()));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

GridEX* AddListGrid(QWidget* panel, const QString& gridName) {
    auto* grid = new GridEX(gridName, panel);
    grid->SetAllowEdit(false);
    grid->SetAllowAddNew(false);
    grid->SetAllowDelete(false);
    grid->SetAlternatingRowColors(true);
    grid->SetGroupByBoxVisible(false);
    auto* lay = new QVBoxLayout(panel);
    lay->setContentsMargins(0, 0, 0, 0);
    lay->addWidget(grid);
    return grid;
}
