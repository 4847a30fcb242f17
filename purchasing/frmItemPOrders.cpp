#include "purchasing/frmItemPOrders.h"

#include "grids/ColumnState.h"
#include "grids/GridEX.h"
#include "purchasing/ItemPOrders.h"

#include <QVBoxLayout>

frmItemPOrders::frmItemPOrders(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("frmItemPOrders"));
    gdxItemPOrders = new GridEX(QStringLiteral("gdxItemPOrders"), this);
    gdxItemPOrders->SetAllowEdit(false);
    gdxItemPOrders->SetAllowAddNew(false);
    gdxItemPOrders->SetAllowDelete(false);
    gdxItemPOrders->SetAlternatingRowColors(true);
    gdxItemPOrders->SetGroupByBoxVisible(false);
    gdxItemPOrders->SetCellReader([this](int record, int column) -> QVariant {
        if (record < 1 || record > mRowCount)
            return QVariant();
        return mRows(column, record);
    });
    GridColumns& cols = gdxItemPOrders->Columns();
    for (const ItemPOColumn& c : ItemPOColumns()) {
        GridColumn& col = cols.Add(c.key, c.caption).SetWidth(c.widthTwips);
        if (c.rightAligned)
            col.SetAlignment(Qt::AlignRight | Qt::AlignVCenter).SetSortType(GridSortType::Numeric);
    }
    cols(QStringLiteral("OrID")).SetSortType(GridSortType::Numeric);
    cols(QStringLiteral("OrDate")).SetSortType(GridSortType::Date);
    cols(QStringLiteral("DelDate")).SetSortType(GridSortType::Date);
    auto* lay = new QVBoxLayout(this);
    lay->setContentsMargins(0, 0, 0, 0);
    lay->addWidget(gdxItemPOrders);
}

void frmItemPOrders::LoadItemPOrders(qint32 itemId) {
    gdxItemPOrders->SetItemCount(0);
    ItemPOrders load = ::LoadItemPOrders(itemId);
    mRows = std::move(load.rows);
    mRowCount = load.rowCount;
    // A header click may have sorted the last item's rows: each item opens newest first.
    gdxItemPOrders->ClearSort();
    ReloadGrid(*gdxItemPOrders, mRowCount);
}
