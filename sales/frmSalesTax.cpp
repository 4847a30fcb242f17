#include "sales/frmSalesTax.h"

#include "foundation/TextBoxRules.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmSalesTax::frmSalesTax(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("frmSalesTax"));
    setTitle(QStringLiteral("Sales Tax"));
    setAutoFillBackground(true);
    auto* lay = new QVBoxLayout(this);
    auto* note1 = new QLabel(
        QStringLiteral("Use this window to edit and save the default name/text and "
                       "rate/percentage of sales tax which will be calculated automatically for "
                       "each new invoice."),
        this);
    note1->setWordWrap(true);
    lay->addWidget(note1);

    auto* form = new QFormLayout;
    txtTax1Name = new QLineEdit(this);
    txtTax1Name->setObjectName(QStringLiteral("txtTax1Name"));
    AttachTextRules(txtTax1Name);
    txtTax1Rate = new QLineEdit(this);
    txtTax1Rate->setObjectName(QStringLiteral("txtTax1Rate"));
    txtTax1Rate->setMaximumWidth(80);
    AttachNumberRules(txtTax1Rate, QStringLiteral("0.0#"));
    form->addRow(QStringLiteral("Tax Name"), txtTax1Name);
    form->addRow(QStringLiteral("Rate %"), txtTax1Rate);
    lay->addLayout(form);

    auto* note2 = new QLabel(
        QStringLiteral("If your Tax rate changes frequently then please note that if you go back "
                       "and make changes to an old order or invoice then the order totals will "
                       "be recalculated using the original tax rate unless you change it."),
        this);
    note2->setWordWrap(true);
    lay->addWidget(note2);

    Command13 = new QPushButton(QStringLiteral("Save"), this);
    Command13->setObjectName(QStringLiteral("Command13"));
    Command13->setAutoDefault(false);
    lay->addWidget(Command13, 0, Qt::AlignRight);
    hide();
}
