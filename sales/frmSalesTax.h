// The sales tax panel of the customer order window: the tax name and rate of the open document,
// which Command13 also offers to keep as the default.
#pragma once

#include <QGroupBox>

class QLineEdit;
class QPushButton;

class frmSalesTax : public QGroupBox {
    Q_OBJECT
public:
    explicit frmSalesTax(QWidget* parent = nullptr);

    QLineEdit* txtTax1Name = nullptr;
    QLineEdit* txtTax1Rate = nullptr;
    QPushButton* Command13 = nullptr; // Save
};
