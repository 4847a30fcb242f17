#include "inventory/frmStockQtyInfo.h"

#include "foundation/Rights.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

QTableWidget* MakeGrid(const QString& name, const QStringList& captions, QWidget* parent) {
    auto* grid = new QTableWidget(0, int(captions.size()), parent);
    grid->setObjectName(name);
    grid->setHorizontalHeaderLabels(captions);
    grid->verticalHeader()->setVisible(false);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::SingleSelection);
    grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    grid->verticalHeader()->setDefaultSectionSize(grid->fontMetrics().height() + 6);
    return grid;
}

void Fill(QTableWidget* grid, const QList<QStringList>& rows) {
    grid->clearContents();
    grid->setRowCount(int(rows.size()));
    for (int r = 0; r < rows.size(); ++r) {
        for (int c = 0; c < rows[r].size() && c < grid->columnCount(); ++c) {
            auto* item = new QTableWidgetItem(rows[r][c]);
            if (c == grid->columnCount() - 1) // the quantity
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            grid->setItem(r, c, item);
        }
    }
}

} // namespace

frmStockQtyInfo::frmStockQtyInfo(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmStockQtyInfo"));
    setWindowTitle(QStringLiteral("Pending Order Information"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    txtPartID = new QLineEdit(this);
    txtPartID->setObjectName(QStringLiteral("txtPartID"));
    txtPartID->setReadOnly(true);
    Text2 = new QLineEdit(this);
    Text2->setObjectName(QStringLiteral("Text2"));
    Text2->setReadOnly(true);
    Text2->setMaximumWidth(80);
    chkSendToPO = new QCheckBox(QStringLiteral("Send to purchasing module"), this);
    chkSendToPO->setObjectName(QStringLiteral("chkSendToPO"));

    auto* head = new QHBoxLayout;
    auto* lblPart = new QLabel(QStringLiteral("Part No."), this);
    lblPart->setBuddy(txtPartID);
    auto* lblId = new QLabel(QStringLiteral("ItemID"), this);
    lblId->setBuddy(Text2);
    head->addWidget(lblPart);
    head->addWidget(txtPartID, 1);
    head->addWidget(lblId);
    head->addWidget(Text2);

    auto* fraPO = new QGroupBox(QStringLiteral("Vendor/Purchase Orders"), this);
    fraPO->setObjectName(QStringLiteral("fraStockOnOrInfo"));
    flxStockOnOrInfo =
        MakeGrid(QStringLiteral("flxStockOnOrInfo"), PendingPurchaseCaptions(), fraPO);
    (new QVBoxLayout(fraPO))->addWidget(flxStockOnOrInfo);
    auto* fraSO = new QGroupBox(QStringLiteral("Customer/Sales Orders"), this);
    fraSO->setObjectName(QStringLiteral("fraStockAllocInfo"));
    flxStockAllocInfo = MakeGrid(QStringLiteral("flxStockAllocInfo"), OpenSalesCaptions(), fraSO);
    (new QVBoxLayout(fraSO))->addWidget(flxStockAllocInfo);
    auto* grids = new QHBoxLayout;
    grids->addWidget(fraPO);
    grids->addWidget(fraSO);

    cmdStockQtyInfoOK = new QPushButton(QStringLiteral("OK"), this);
    cmdStockQtyInfoOK->setObjectName(QStringLiteral("cmdStockQtyInfoOK"));
    cmdStockQtyInfoOK->setDefault(true);
    auto* foot = new QHBoxLayout;
    foot->addWidget(chkSendToPO);
    foot->addStretch();
    foot->addWidget(cmdStockQtyInfoOK);

    auto* lay = new QVBoxLayout(this);
    lay->addLayout(head);
    lay->addLayout(grids, 1);
    lay->addLayout(foot);
    resize(640, 300);

    // Only a click by the user runs the guard; loading sets the tick quietly.
    connect(chkSendToPO, &QCheckBox::clicked, this,
            [this](bool checked) { chkSendToPO_Click(checked); });
    connect(cmdStockQtyInfoOK, &QPushButton::clicked, this, [this] { cmdStockQtyInfoOK_Click(); });
}

void frmStockQtyInfo::Open(qint32 itemId, const QString& partNo) {
    mItemId = itemId;
    mLastChange = BasketChange::None;
    txtPartID->setText(partNo);
    Text2->setText(QString::number(itemId));
    const StockQtyInfo info = LoadStockQtyInfo(itemId);
    chkSendToPO->setChecked(info.flagged);
    Fill(flxStockOnOrInfo, info.onOrder);
    Fill(flxStockAllocInfo, info.allocated);
}

void frmStockQtyInfo::chkSendToPO_Click(bool checked) {
    if (!CheckRight(Right::Inventory))
        chkSendToPO->setChecked(!checked); // the tick goes back
}

void frmStockQtyInfo::cmdStockQtyInfoOK_Click() {
    mLastChange = ApplyPurchasingFlag(mItemId, chkSendToPO->isChecked());
    accept();
}

void frmStockQtyInfo::ShowFor(QWidget* parent, qint32 itemId, const QString& partNo) {
    frmStockQtyInfo dlg(parent);
    dlg.Open(itemId, partNo);
    dlg.exec();
}
