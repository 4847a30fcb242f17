#include "inventory/frmUsedIn.h"

#include "grids/ColumnState.h"
#include "grids/GridEX.h"

frmUsedIn::frmUsedIn(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("frmUsedIn"));
    gdxUsedIn = AddListGrid(this, QStringLiteral("gdxUsedIn"));
    gdxUsedIn->SetCellReader([this](int record, int column) -> QVariant {
        if (record < 1 || record > mData.rows.size())
            return QVariant();
        return mData.rows[record - 1].value(column - 1);
    });
}

void frmUsedIn::DefineColumns() {
    GridColumns& cols = gdxUsedIn->Columns();
    cols.Clear();
    for (const QString& key : mData.keys) {
        GridColumn& c = cols.Add(key, UsedInCaption(key));
        // Widths a new workstation starts from, until the user drags a border.
        if (key == QLatin1String("QtyPer"))
            c.SetWidth(900).SetAlignment(Qt::AlignRight | Qt::AlignVCenter);
        else if (key == QLatin1String("ItemDescription"))
            c.SetWidth(3600);
        else if (key == QLatin1String("MasterPNo") || key == QLatin1String("ItemName"))
            c.SetWidth(1800);
        else
            c.SetWidth(1500);
    }
}

void frmUsedIn::LoadUsedIn(qint32 itemId) {
    gdxUsedIn->SetItemCount(0);
    mData = ::LoadUsedIn(itemId);
    DefineColumns();
    ReloadGrid(*gdxUsedIn, int(mData.rows.size()));
}
