#include "sales/frmEditDelCharges.h"

#include "foundation/TextBoxRules.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmEditDelCharges::frmEditDelCharges(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("frmEditDelCharges"));
    setTitle(QStringLiteral("Delivery Charges"));
    setAutoFillBackground(true);
    auto* lay = new QVBoxLayout(this);
    auto* note1 = new QLabel(
        QStringLiteral("You can edit and save the default name/description and cost for your "
                       "delivery charges which will appear automatically when you begin each new "
                       "invoice."),
        this);
    note1->setWordWrap(true);
    lay->addWidget(note1);

    auto* form = new QFormLayout;
    txtShipChgsName = new QLineEdit(this);
    txtShipChgsName->setObjectName(QStringLiteral("txtShipChgsName"));
    AttachTextRules(txtShipChgsName);
    txtDeliveryCost = new QLineEdit(this);
    txtDeliveryCost->setObjectName(QStringLiteral("txtDeliveryCost"));
    txtDeliveryCost->setMaximumWidth(100);
    AttachPlainNumberRules(txtDeliveryCost, QStringLiteral("0.00"));
    form->addRow(QStringLiteral("Name"), txtShipChgsName);
    form->addRow(QStringLiteral("Cost"), txtDeliveryCost);
    lay->addLayout(form);
    chkTaxOnDel = new QCheckBox(QStringLiteral("Apply sales Tax to Delivery Charges"), this);
    chkTaxOnDel->setObjectName(QStringLiteral("chkTaxOnDel"));
    chkTaxOnDel->setChecked(true);
    lay->addWidget(chkTaxOnDel);

    auto* note2 = new QLabel(
        QStringLiteral("To make a temporary change, for example just for one invoice, you should "
                       "not make changes here - instead click cancel to go back to the invoice "
                       "and enter the text and cost directly into the invoice window without "
                       "changing these defaults"),
        this);
    note2->setWordWrap(true);
    lay->addWidget(note2);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    cmdSaveDelCharges = new QPushButton(QStringLiteral("Save"), this);
    cmdSaveDelCharges->setObjectName(QStringLiteral("cmdSaveDelCharges"));
    cmdIgnoreDelCharges = new QPushButton(QStringLiteral("Cancel"), this);
    cmdIgnoreDelCharges->setObjectName(QStringLiteral("cmdIgnoreDelCharges"));
    for (QPushButton* b : {cmdSaveDelCharges, cmdIgnoreDelCharges}) {
        b->setAutoDefault(false);
        buttons->addWidget(b);
    }
    lay->addLayout(buttons);
    hide();
}
