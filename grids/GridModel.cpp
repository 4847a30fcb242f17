#include "grids/GridModel.h"

#include "foundation/Helpers.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QLocale>

#include <algorithm>
#include <climits>
#include <numeric>

namespace {

// Rows read from the owner and kept for painting; past this the cache starts afresh.
constexpr int kRowCacheLimit = 4096;

int Compare(const GridSortValue& a, const GridSortValue& b) {
    if (a.kind != b.kind)
        return a.kind < b.kind ? -1 : 1;
    switch (a.kind) {
    case GridSortValue::Empty:
        return 0;
    case GridSortValue::Number:
        return a.number < b.number ? -1 : (a.number > b.number ? 1 : 0);
    case GridSortValue::Text:
        return a.text.compare(b.text); // folded when made
    }
    return 0;
}

QString FoldedKey(const GridSortValue& v) {
    switch (v.kind) {
    case GridSortValue::Empty:
        return {};
    case GridSortValue::Number:
        return QString::number(v.number, 'g', 17);
    case GridSortValue::Text:
        return v.text;
    }
    return {};
}

bool IsNumberType(const QVariant& v) {
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::ULong:
        return true;
    default:
        return false;
    }
}

GridSortValue NumberValue(double d) {
    GridSortValue s;
    s.kind = GridSortValue::Number;
    s.number = d;
    return s;
}

} // namespace

bool GridTruthy(const QVariant& value) {
    if (!value.isValid() || value.isNull())
        return false;
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    if (IsNumberType(value))
        return value.toDouble() != 0;
    const QString t = value.toString().trimmed();
    if (t.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 ||
        t.compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0)
        return true;
    return Val(t) != 0;
}

GridModel::GridModel(GridEX* grid) : QAbstractTableModel(grid), mGrid(grid) {}

int GridModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid())
        return 0;
    return DisplayRows() + (mAddNew ? 1 : 0);
}

int GridModel::columnCount(const QModelIndex& parent) const {
    if (parent.isValid())
        return 0;
    return mGrid->Columns().Count();
}

int GridModel::RecordAt(int displayRow) const {
    if (displayRow < 0 || displayRow >= DisplayRows())
        return 0;
    return mNodes[size_t(mVisible[size_t(displayRow)])].record;
}

int GridModel::LevelAt(int displayRow) const {
    if (displayRow < 0 || displayRow >= DisplayRows())
        return 0;
    const Node& n = mNodes[size_t(mVisible[size_t(displayRow)])];
    return n.group >= 0 ? mGroups[size_t(n.group)].level : 0;
}

bool GridModel::IsNewRow(int displayRow) const {
    return mAddNew && displayRow == DisplayRows();
}

int GridModel::DisplayRowOfRecord(int record) const {
    for (size_t i = 0; i < mVisible.size(); ++i)
        if (mNodes[size_t(mVisible[i])].record == record)
            return int(i);
    return -1;
}

int GridModel::FirstVisibleColumn() const {
    const GridColumns& cols = mGrid->Columns();
    for (int c = 1; c <= cols.Count(); ++c)
        if (cols(c).Visible())
            return c - 1;
    return -1;
}

const QVector<QVariant>& GridModel::RowValues(int record) const {
    auto it = mRowCache.constFind(record);
    if (it != mRowCache.constEnd())
        return *it;
    if (mRowCache.size() >= kRowCacheLimit)
        mRowCache.clear();
    const int n = mGrid->Columns().Count();
    QVector<QVariant> values(n);
    if (Reader && record >= 1 && record <= mItemCount) {
        for (int c = 1; c <= n; ++c) {
            values[c - 1] = Reader(record, c);
            ++mReads;
        }
    }
    return *mRowCache.insert(record, values);
}

GridSortValue GridModel::MakeSortValue(const QVariant& value, const GridColumn& col) const {
    GridSortType type = col.SortType();
    if (type == GridSortType::Auto && col.Kind() == GridColumnKind::Date)
        type = GridSortType::Date;
    if (type == GridSortType::Auto && col.Kind() == GridColumnKind::CheckBox)
        return NumberValue(GridTruthy(value) ? 1 : 0);
    if (!value.isValid() || value.isNull())
        return {};
    if (type == GridSortType::Date) {
        const QDate d = value.typeId() == QMetaType::QDate
                            ? value.toDate()
                            : ParseDateText(value.toString().trimmed());
        return d.isValid() ? NumberValue(double(d.toJulianDay())) : GridSortValue{};
    }
    if (type == GridSortType::Numeric) {
        if (IsNumberType(value))
            return NumberValue(value.toDouble());
        if (value.typeId() == QMetaType::Bool)
            return NumberValue(value.toBool() ? -1 : 0);
        const QString t = value.toString().trimmed();
        return t.isEmpty() ? GridSortValue{} : NumberValue(Val(t));
    }
    if (type == GridSortType::Auto) {
        if (IsNumberType(value))
            return NumberValue(value.toDouble());
        if (value.typeId() == QMetaType::Bool)
            return NumberValue(value.toBool() ? -1 : 0);
        if (value.typeId() == QMetaType::QDate)
            return value.toDate().isValid() ? NumberValue(double(value.toDate().toJulianDay()))
                                            : GridSortValue{};
    }
    GridSortValue s;
    s.text = value.typeId() == QMetaType::Bool
                 ? (value.toBool() ? QStringLiteral("True") : QStringLiteral("False"))
                 : value.toString();
    if (s.text.isEmpty())
        return {};
    if (type == GridSortType::Auto) {
        // Only a text that starts like a number can be one (or a date).
        const QString t = s.text.trimmed();
        const QChar first = t.isEmpty() ? QChar() : t.at(0);
        if (first.isDigit() || first == QLatin1Char('-') || first == QLatin1Char('+') ||
            first == QLatin1Char('.') || first == QLatin1Char(',')) {
            bool ok = false;
            double d = QLocale().toDouble(t, &ok);
            if (!ok)
                d = QLocale::c().toDouble(t, &ok);
            if (ok)
                return NumberValue(d);
            if (first.isDigit() && t.size() >= 6 && t.size() <= 10) {
                const QDate date = QDate::fromString(t, DateDisplayFormat());
                if (date.isValid())
                    return NumberValue(double(date.toJulianDay()));
            }
        }
    }
    s.kind = GridSortValue::Text;
    s.text = s.text.toCaseFolded();
    return s;
}

const std::vector<GridSortValue>& GridModel::KeyColumn(int column) const {
    auto it = mKeyCache.find(column);
    if (it != mKeyCache.end())
        return it->second;
    std::vector<GridSortValue> values(size_t(std::max(mItemCount, 0)));
    const GridColumn& col = mGrid->Columns()(column);
    for (int r = 1; r <= mItemCount; ++r) {
        QVariant v;
        auto cached = mRowCache.constFind(r);
        if (cached != mRowCache.constEnd()) {
            v = cached->value(column - 1);
        } else if (Reader) {
            v = Reader(r, column);
            ++mReads;
        }
        values[size_t(r - 1)] = MakeSortValue(v, col);
    }
    return mKeyCache.emplace(column, std::move(values)).first->second;
}

void GridModel::RebuildOrder() {
    beginResetModel();
    mNodes.clear();
    mGroups.clear();
    std::vector<int> perm(size_t(std::max(mItemCount, 0)));
    std::iota(perm.begin(), perm.end(), 1);

    struct Key {
        const std::vector<GridSortValue>* values;
        bool descending;
    };
    const GridColumns& cols = mGrid->Columns();
    std::vector<Key> keys;
    std::vector<int> groupColumns;
    for (const GridSortKey& g : GroupKeys) {
        const GridColumn* col = cols.Find(g.Key);
        if (!col)
            continue;
        keys.push_back({&KeyColumn(col->Index()), g.Order == Qt::DescendingOrder});
        groupColumns.push_back(col->Index());
    }
    for (const GridSortKey& s : SortKeys) {
        const GridColumn* col = cols.Find(s.Key);
        if (!col)
            continue;
        keys.push_back({&KeyColumn(col->Index()), s.Order == Qt::DescendingOrder});
    }
    if (!keys.empty()) {
        std::stable_sort(perm.begin(), perm.end(), [&keys](int a, int b) {
            for (const Key& k : keys) {
                const int c = Compare((*k.values)[size_t(a - 1)], (*k.values)[size_t(b - 1)]);
                if (c != 0)
                    return k.descending ? c > 0 : c < 0;
            }
            return false;
        });
    }

    const size_t levels = groupColumns.size();
    mNodes.reserve(perm.size() + (levels ? 64 : 0));
    std::vector<int> current(levels, -1);
    int previous = 0;
    for (int record : perm) {
        if (levels) {
            size_t first = 0;
            if (previous) {
                while (first < levels && Compare((*keys[first].values)[size_t(record - 1)],
                                                 (*keys[first].values)[size_t(previous - 1)]) == 0)
                    ++first;
            }
            for (size_t l = first; l < levels; ++l) {
                Group g;
                g.level = int(l) + 1;
                g.firstRecord = record;
                g.count = 0;
                g.column = groupColumns[l];
                g.path = (l ? mGroups[size_t(current[l - 1])].path : QString()) + QChar(0x1f) +
                         FoldedKey((*keys[l].values)[size_t(record - 1)]);
                mGroups.push_back(g);
                current[l] = int(mGroups.size()) - 1;
                mNodes.push_back({0, current[l]});
            }
            for (size_t l = 0; l < levels; ++l)
                ++mGroups[size_t(current[l])].count;
        }
        mNodes.push_back({record, -1});
        previous = record;
    }
    RebuildVisible();
    endResetModel();
    emit OrderRebuilt();
}

void GridModel::RebuildVisible() {
    mVisible.clear();
    mVisible.reserve(mNodes.size());
    int skipBelow = INT_MAX; // rows deeper than this level are inside a closed group
    for (size_t i = 0; i < mNodes.size(); ++i) {
        const Node& n = mNodes[i];
        if (n.group >= 0) {
            const Group& g = mGroups[size_t(n.group)];
            if (g.level > skipBelow)
                continue;
            skipBelow = INT_MAX;
            mVisible.push_back(int(i));
            if (!mGroupOpen.value(g.path, mGroupsOpenByDefault))
                skipBelow = g.level;
        } else if (skipBelow == INT_MAX) {
            mVisible.push_back(int(i));
        }
    }
}

bool GridModel::GroupOpen(int displayRow) const {
    if (displayRow < 0 || displayRow >= DisplayRows())
        return false;
    const Node& n = mNodes[size_t(mVisible[size_t(displayRow)])];
    if (n.group < 0)
        return false;
    return mGroupOpen.value(mGroups[size_t(n.group)].path, mGroupsOpenByDefault);
}

void GridModel::SetGroupOpen(int displayRow, bool open) {
    if (displayRow < 0 || displayRow >= DisplayRows())
        return;
    const Node& n = mNodes[size_t(mVisible[size_t(displayRow)])];
    if (n.group < 0)
        return;
    beginResetModel();
    mGroupOpen.insert(mGroups[size_t(n.group)].path, open);
    RebuildVisible();
    endResetModel();
    emit OrderRebuilt();
}

void GridModel::SetAllGroupsOpen(bool open) {
    beginResetModel();
    mGroupOpen.clear();
    mGroupsOpenByDefault = open;
    RebuildVisible();
    endResetModel();
    emit OrderRebuilt();
}

QString GridModel::GroupText(int displayRow) const {
    if (displayRow < 0 || displayRow >= DisplayRows())
        return {};
    const Node& n = mNodes[size_t(mVisible[size_t(displayRow)])];
    if (n.group < 0)
        return {};
    const Group& g = mGroups[size_t(n.group)];
    const GridColumn* col =
        g.column <= mGrid->Columns().Count() ? &mGrid->Columns()(g.column) : nullptr;
    if (!col)
        return {};
    const QVariant value = RowValues(g.firstRecord).value(g.column - 1);
    return col->Caption() + QStringLiteral(": ") + DisplayOf(value, *col).toString() +
           QStringLiteral(" (") + QString::number(g.count) + QLatin1Char(')');
}

QVariant GridModel::DisplayOf(const QVariant& value, const GridColumn& col) const {
    if (col.Kind() == GridColumnKind::CheckBox)
        return GridTruthy(value) ? QStringLiteral("True") : QStringLiteral("False");
    if (!value.isValid() || value.isNull())
        return QString();
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    if (value.typeId() == QMetaType::QDate)
        return ShowDate(value.toDate());
    return value.toString();
}

QVariant GridModel::Cell(int displayRow, int column) const {
    if (column < 1 || column > mGrid->Columns().Count())
        return {};
    if (IsNewRow(displayRow))
        return mPendingRecord == -1 ? mPendingValues.value(column - 1) : QVariant();
    if (displayRow < 0 || displayRow >= DisplayRows())
        return {};
    const int record = RecordAt(displayRow);
    if (record == 0)
        return column - 1 == FirstVisibleColumn() ? QVariant(GroupText(displayRow)) : QVariant();
    if (record == mPendingRecord)
        return mPendingValues.value(column - 1);
    return RowValues(record).value(column - 1);
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || !checkIndex(index))
        return {};
    const int row = index.row();
    const int column = index.column() + 1;
    if (role == GroupLevelRole)
        return LevelAt(row);
    if (role == RecordRole)
        return RecordAt(row);
    if (!IsNewRow(row) && RecordAt(row) == 0) {
        switch (role) {
        case Qt::DisplayRole:
            return index.column() == FirstVisibleColumn() ? QVariant(GroupText(row)) : QVariant();
        case Qt::FontRole: {
            QFont f;
            f.setBold(true);
            return f;
        }
        case Qt::BackgroundRole:
            return QBrush(QColor(224, 228, 236));
        case GroupExpandedRole:
            return GroupOpen(row);
        default:
            return {};
        }
    }
    const GridColumn& col = mGrid->Columns()(column);
    switch (role) {
    case Qt::DisplayRole:
        if (col.Kind() == GridColumnKind::CheckBox)
            return {};
        return DisplayOf(Cell(row, column), col);
    case Qt::EditRole:
        return Cell(row, column);
    case Qt::CheckStateRole:
        if (col.Kind() != GridColumnKind::CheckBox)
            return {};
        return GridTruthy(Cell(row, column)) ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole:
        return int(col.Alignment());
    default:
        return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    if (section < 0 || section >= mGrid->Columns().Count())
        return {};
    return mGrid->Columns()(section + 1).Caption();
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
    if (!index.isValid() || !checkIndex(index))
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    const bool newRow = IsNewRow(index.row());
    if (!newRow && RecordAt(index.row()) == 0)
        return f;
    const GridColumn& col = mGrid->Columns()(index.column() + 1);
    if (!mAllowEdit || !col.Editable())
        return f;
    if (col.Kind() == GridColumnKind::CheckBox)
        return f | Qt::ItemIsUserCheckable;
    return f | Qt::ItemIsEditable;
}

void GridModel::SetEditable(bool on) {
    if (mAllowEdit == on)
        return;
    mAllowEdit = on;
    if (rowCount() && columnCount())
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void GridModel::StartPending(int record) {
    mPendingRecord = record;
    mPendingValues = record > 0 ? RowValues(record) : QVector<QVariant>(mGrid->Columns().Count());
}

bool GridModel::setData(const QModelIndex& idx, const QVariant& value, int role) {
    if (!idx.isValid() || !checkIndex(idx))
        return false;
    const int row = idx.row();
    const bool newRow = IsNewRow(row);
    const int record = newRow ? -1 : RecordAt(row);
    if (record == 0)
        return false;
    const GridColumn& col = mGrid->Columns()(idx.column() + 1);
    QVariant v;
    if (role == Qt::CheckStateRole && col.Kind() == GridColumnKind::CheckBox)
        v = value.toInt() == Qt::Checked;
    else if (role == Qt::EditRole)
        v = value;
    else
        return false;
    if (mPendingRecord != record) {
        if (mPendingRecord != 0) {
            const quint64 gen = mGeneration;
            CommitPending();
            if (gen != mGeneration)
                return false;
        }
        StartPending(record);
    }
    mPendingValues[idx.column()] = v;
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
    emit CommitWanted(true);
    return true;
}

void GridModel::SetCell(int displayRow, int column, const QVariant& value) {
    const QModelIndex idx = index(displayRow, column - 1);
    if (!idx.isValid())
        return;
    const GridColumn& col = mGrid->Columns()(column);
    if (col.Kind() == GridColumnKind::CheckBox)
        setData(idx, GridTruthy(value) ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
    else
        setData(idx, value, Qt::EditRole);
}

bool GridModel::submit() {
    if (mPendingRecord != 0)
        emit CommitWanted(false);
    return true;
}

void GridModel::revert() {}

void GridModel::DropPending() {
    if (mPendingRecord == 0)
        return;
    const int record = mPendingRecord;
    mPendingRecord = 0;
    mPendingValues.clear();
    const int row = record == -1 ? DisplayRows() : DisplayRowOfRecord(record);
    if (row >= 0 && row < rowCount() && columnCount())
        emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

bool GridModel::CommitPending() {
    if (mPendingRecord == 0)
        return true;
    const int record = mPendingRecord;
    GridRowValues values(&mGrid->Columns(), mPendingValues);
    bool cancel = false;
    const quint64 gen = mGeneration;
    if (record > 0) {
        if (CommitHandler)
            CommitHandler(record, values, cancel);
        else
            cancel = true;
        if (gen != mGeneration)
            return !cancel; // the handler reloaded the grid
        mPendingRecord = 0;
        mPendingValues.clear();
        if (!cancel)
            RefreshRecord(record);
        const int row = DisplayRowOfRecord(record);
        if (row >= 0 && columnCount())
            emit dataChanged(index(row, 0), index(row, columnCount() - 1));
        if (!cancel)
            emit Committed(record);
        return !cancel;
    }
    if (NewRowHandler)
        NewRowHandler(values, cancel);
    else
        cancel = true;
    if (gen != mGeneration)
        return !cancel;
    if (cancel)
        return false; // the user stays in the new row with what was typed
    mPendingRecord = 0;
    mPendingValues.clear();
    // The owner appended the row: it becomes the last record, shown at the end.
    const int newRecord = ++mItemCount;
    for (auto& [column, values] : mKeyCache) {
        QVariant v;
        if (Reader) {
            v = Reader(newRecord, column);
            ++mReads;
        }
        values.push_back(MakeSortValue(v, mGrid->Columns()(column)));
    }
    const int at = DisplayRows();
    beginInsertRows(QModelIndex(), at, at);
    mNodes.push_back({newRecord, -1});
    mVisible.push_back(int(mNodes.size()) - 1);
    endInsertRows();
    if (mAddNew && columnCount())
        emit dataChanged(index(at + 1, 0), index(at + 1, columnCount() - 1));
    emit Committed(newRecord);
    return true;
}

bool GridModel::DeleteRecord(int record) {
    if (record < 1 || record > mItemCount)
        return false;
    bool cancel = false;
    const quint64 gen = mGeneration;
    if (DeleteHandler)
        DeleteHandler(record, cancel);
    else
        cancel = true;
    if (gen != mGeneration)
        return !cancel;
    if (cancel)
        return false;
    // The owner removed the record: those after it move up by one.
    if (mPendingRecord == record) {
        mPendingRecord = 0;
        mPendingValues.clear();
    } else if (mPendingRecord > record) {
        --mPendingRecord;
    }
    mRowCache.clear();
    for (auto& [column, values] : mKeyCache)
        if (size_t(record - 1) < values.size())
            values.erase(values.begin() + (record - 1));
    --mItemCount;
    if (GroupKeys.isEmpty()) {
        // Keep the order as shown, without the deleted record.
        beginResetModel();
        std::vector<Node> nodes;
        nodes.reserve(mNodes.size());
        for (const Node& n : mNodes) {
            if (n.record == record)
                continue;
            nodes.push_back({n.record > record ? n.record - 1 : n.record, n.group});
        }
        mNodes.swap(nodes);
        RebuildVisible();
        endResetModel();
        emit OrderRebuilt();
    } else {
        RebuildOrder();
    }
    return true;
}

void GridModel::SetItemCount(int count) {
    ++mGeneration;
    mItemCount = std::max(count, 0);
    mRowCache.clear();
    mKeyCache.clear();
    mPendingRecord = 0;
    mPendingValues.clear();
    if (count == 0)
        SortKeys.clear();
    RebuildOrder();
}

void GridModel::DropCache() {
    mRowCache.clear();
    mKeyCache.clear();
    if (rowCount() && columnCount())
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void GridModel::RefreshRecord(int record) {
    mRowCache.remove(record);
    if (record < 1 || record > mItemCount)
        return;
    for (auto& [column, values] : mKeyCache) {
        QVariant v;
        if (Reader) {
            v = Reader(record, column);
            ++mReads;
        }
        if (size_t(record - 1) < values.size())
            values[size_t(record - 1)] = MakeSortValue(v, mGrid->Columns()(column));
    }
    const int row = DisplayRowOfRecord(record);
    if (row >= 0 && columnCount())
        emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void GridModel::ColumnsReset(bool cleared) {
    ++mGeneration;
    mRowCache.clear();
    mKeyCache.clear();
    mPendingRecord = 0;
    mPendingValues.clear();
    if (cleared) {
        SortKeys.clear();
        GroupKeys.clear();
        mGroupOpen.clear();
        mGroupsOpenByDefault = false;
    }
    RebuildOrder();
}

void GridModel::ColumnChanged(int column) {
    emit headerDataChanged(Qt::Horizontal, column - 1, column - 1);
    if (rowCount() && columnCount())
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void GridModel::SetAddNew(bool on) {
    if (mAddNew == on)
        return;
    const int at = DisplayRows();
    if (on) {
        beginInsertRows(QModelIndex(), at, at);
        mAddNew = true;
        endInsertRows();
    } else {
        if (mPendingRecord == -1) {
            mPendingRecord = 0;
            mPendingValues.clear();
        }
        beginRemoveRows(QModelIndex(), at, at);
        mAddNew = false;
        endRemoveRows();
    }
}
