// The delivery charges panel of the customer order window: the default name and cost of delivery
// and whether sales tax applies to it.
#pragma once

#include <QGroupBox>

class QCheckBox;
class QLineEdit;
class QPushButton;

class frmEditDelCharges : public QGroupBox {
    Q_OBJECT
public:
    explicit frmEditDelCharges(QWidget* parent = nullptr);

    QLineEdit* txtShipChgsName = nullptr;
    QLineEdit* txtDeliveryCost = nullptr;
    QCheckBox* chkTaxOnDel = nullptr;
    QPushButton* cmdSaveDelCharges = nullptr;
    QPushButton* cmdIgnoreDelCharges = nullptr; // Cancel
};
