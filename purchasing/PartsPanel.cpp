#include "purchasing/PartsPanel.h"

#include "foundation/TextBoxRules.h"
#include "grids/GridEX.h"
#include "purchasing/FormControls.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

PartsPanel::PartsPanel(const Names& names, const QString& title, const QString& hint,
                       const UBArray& rows, const int& rowCount, QWidget* parent)
    : QGroupBox(title, parent) {
    setObjectName(names.frame);
    Filter = NamedBox(names.filter, this);
    Filter->setPlaceholderText(QStringLiteral("Part number begins with"));
    AttachTextRules(Filter, true);
    ClearButton = NamedButton(names.clear, QStringLiteral("Clear"), this);
    HideButton = NamedButton(names.hide, QStringLiteral("Hide"), this);
    Grid = new GridEX(names.grid, this);
    Grid->SetGroupByBoxVisible(false);
    Grid->SetAllowEdit(false);
    Grid->SetCellReader([&rows, &rowCount](int record, int column) {
        return ArrayCell(rows, rowCount, record, column);
    });

    auto* filterRow = new QHBoxLayout;
    auto* label = new QLabel(QStringLiteral("PartNo"), this);
    label->setBuddy(Filter);
    filterRow->addWidget(label);
    filterRow->addWidget(Filter, 1);
    filterRow->addWidget(ClearButton);
    filterRow->addWidget(HideButton);
    auto* lay = new QVBoxLayout(this);
    lay->addLayout(filterRow);
    lay->addWidget(Grid, 1);
    lay->addWidget(new QLabel(hint, this));
    hide();
}
