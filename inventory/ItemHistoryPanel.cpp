#include "inventory/ItemHistoryPanel.h"

#include "grids/ColumnState.h"
#include "grids/GridEX.h"
#include "inventory/StockMovements.h"

ItemHistoryPanel::ItemHistoryPanel(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("frmHistory"));
    gdxItemHistory = AddListGrid(this, QStringLiteral("gdxItemHistory"));
    gdxItemHistory->SetCellReader(
        [this](int record, int column) -> QVariant { return Cell(record, column); });
    DefineColumns();
}

void ItemHistoryPanel::DefineColumns() {
    GridColumns& cols = gdxItemHistory->Columns();
    cols.Clear();
    const QStringList keys = HistoryColumnKeys();
    const QStringList captions = HistoryColumnCaptions();
    const int widths[] = {1500, 1100, 900, 1400, 1100, 3600};
    for (int i = 0; i < keys.size(); ++i)
        cols.Add(keys[i], captions[i]).SetWidth(widths[i]);
    cols(HistoryColumnKeys()[HistDateCol]).SetSortType(GridSortType::Date);
    cols(HistoryColumnKeys()[HistQtyCol])
        .SetSortType(GridSortType::Numeric)
        .SetAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

QString ItemHistoryPanel::Cell(int record, int column) const {
    if (record < 1 || record > mRows.size())
        return QString();
    const QStringList& row = mRows[record - 1];
    return column >= 1 && column <= row.size() ? row[column - 1] : QString();
}

void ItemHistoryPanel::Clear() {
    mRows.clear();
    gdxItemHistory->SetItemCount(0);
}

void ItemHistoryPanel::LoadHistory(qint32 itemId) {
    mRows.clear();
    gdxItemHistory->SetItemCount(0);
    mRows = LoadItemHistory(itemId);
    ReloadGrid(*gdxItemHistory, int(mRows.size()));
}
