#include "sales/frmBParts.h"

#include "foundation/TextBoxRules.h"
#include "grids/ColumnState.h"
#include "grids/GridEX.h"
#include "sales/CustOrder.h"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmBParts::frmBParts(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("frmBParts"));
    setTitle(QStringLiteral("  Add Items to this Order"));
    setAutoFillBackground(true);
    auto* lay = new QVBoxLayout(this);

    auto* filters = new QHBoxLayout;
    auto addBox = [&](const char* name, const char* caption, int stretch) {
        auto* label = new QLabel(QString::fromLatin1(caption), this);
        auto* box = new QLineEdit(this);
        box->setObjectName(QString::fromLatin1(name));
        label->setBuddy(box);
        AttachNoApostropheRules(box, false);
        filters->addWidget(label);
        filters->addWidget(box, stretch);
        connect(box, &QLineEdit::returnPressed, this, [this] { emit SearchRequested(); });
        return box;
    };
    txtItemFilter = addBox("txtItemFilter", "Part No.", 2);
    txtDescFilter = addBox("txtDescFilter", "Description", 3);
    auto* catLabel = new QLabel(QStringLiteral("Cat"), this);
    cboCatFilter = new QComboBox(this);
    cboCatFilter->setObjectName(QStringLiteral("cboCatFilter"));
    cboCatFilter->setMinimumContentsLength(8);
    catLabel->setBuddy(cboCatFilter);
    filters->addWidget(catLabel);
    filters->addWidget(cboCatFilter, 1);
    Command1 = new QPushButton(QStringLiteral("Search"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command5 = new QPushButton(QStringLiteral("Clear"), this);
    Command5->setObjectName(QStringLiteral("Command5"));
    for (QPushButton* b : {Command1, Command5}) {
        b->setAutoDefault(false);
        filters->addWidget(b);
    }
    lay->addLayout(filters);

    gdxAllParts = new GridEX(QStringLiteral("gdxAllParts"), this);
    gdxAllParts->SetAllowEdit(false);
    gdxAllParts->SetAlternatingRowColors(true);
    gdxAllParts->SetCellReader([this](int record, int column) -> QVariant {
        return mPartsCount == 0 ? QVariant() : mParts(column, record);
    });
    lay->addWidget(gdxAllParts, 1);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(new QLabel(
        QStringLiteral("Double-click an item (or press Enter) to add it to the order"), this));
    bottom->addStretch(1);
    Command3 = new QPushButton(QStringLiteral("Done - Close this list"), this);
    Command3->setObjectName(QStringLiteral("Command3"));
    Command3->setAutoDefault(false);
    bottom->addWidget(Command3);
    lay->addLayout(bottom);

    connect(Command1, &QPushButton::clicked, this, [this] { emit SearchRequested(); });
    connect(Command5, &QPushButton::clicked, this, [this] { Command5_Click(); });
    connect(Command3, &QPushButton::clicked, this, [this] { emit CloseRequested(); });
    connect(gdxAllParts, &GridEX::RowActivated, this, [this](int row) {
        if (mPartsCount > 0)
            emit PartChosen(gdxAllParts->RecordIndex(row));
    });
    hide();
}

void frmBParts::FillCategories() {
    cboCatFilter->clear();
    cboCatFilter->addItems(LoadCategoryFilter());
    cboCatFilter->setCurrentIndex(0);
}

void frmBParts::Command5_Click() {
    txtItemFilter->clear();
    txtDescFilter->clear();
    if (cboCatFilter->count() > 0)
        cboCatFilter->setCurrentIndex(0);
}

void frmBParts::LoadPartsForOrder(const QString& discount) {
    PartsFilter filter;
    filter.itemFilter = txtItemFilter->text();
    filter.descFilter = txtDescFilter->text();
    filter.category = cboCatFilter->currentText();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    UBArray parts = ::LoadPartsForOrder(filter, discount);

    gdxAllParts->SetItemCount(0);
    mPartsCount = 0;
    GridColumns& columns = gdxAllParts->Columns();
    columns.Clear();
    for (const PartsColumn& c : PartsColumns()) {
        GridColumn& col = columns.Add(c.key, c.caption);
        col.SetWidth(c.widthTwips);
        if (c.rightAligned)
            col.SetAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    mParts = std::move(parts);
    mPartsCount = mParts.Rows();
    ReloadGrid(*gdxAllParts, mPartsCount);
    QGuiApplication::restoreOverrideCursor();
}
