#include "inventory/frmNewItem.h"

#include "inventory/ItemDetail.h"
#include "inventory/frmItemDetail.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

frmNewItem::frmNewItem(frmItemDetail* detail, QWidget* parent) : QFrame(parent), mDetail(detail) {
    setObjectName(QStringLiteral("frmNewItem"));
    setFrameShape(QFrame::StyledPanel);
    auto* lay = new QHBoxLayout(this);
    lblNewItem = new QLabel(
        QStringLiteral("Enter at least a part number and a description above, then click "
                       "[Create] to add the new item to the inventory."),
        this);
    lblNewItem->setObjectName(QStringLiteral("lblNewItem"));
    lblNewItem->setWordWrap(true);
    btnItemMakeNew = new QPushButton(QStringLiteral("Create"), this);
    btnItemMakeNew->setObjectName(QStringLiteral("btnItemMakeNew"));
    lay->addWidget(lblNewItem, 1);
    lay->addWidget(btnItemMakeNew, 0, Qt::AlignTop);
    connect(btnItemMakeNew, &QPushButton::clicked, this, &frmNewItem::btnItemMakeNew_Click);
}

void frmNewItem::btnItemMakeNew_Click() {
    ItemDetailFields f = mDetail->gatherFields();
    const qint32 id = ::CreateNewItem(f);
    // The defaults filled in show in their boxes, whether or not the item was made.
    mDetail->txtItemCat->setEditText(f.category);
    mDetail->txtLocation->setText(f.location);
    mDetail->txtItemQty->setText(f.qty);
    mDetail->txtSellPrice->setText(f.sellPrice);
    if (id == 0)
        return;
    hide();
    emit ItemCreated(id);
}
