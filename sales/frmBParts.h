// The add-items panel of the customer order window: the stock items that contain the filter
// texts, from which a row is added to the order by activating it.
#pragma once

#include "sales/CustOrder.h"

#include <QGroupBox>

class GridEX;
class QComboBox;
class QLineEdit;
class QPushButton;

class frmBParts : public QGroupBox {
    Q_OBJECT
public:
    explicit frmBParts(QWidget* parent = nullptr);

    // Fills cboCatFilter: a blank entry, then every category, the blank one selected.
    void FillCategories();
    // Fills gdxAllParts from the filters; SellAt is discounted by `discount` where allowed.
    void LoadPartsForOrder(const QString& discount);
    // Command5: empties the two filter boxes and selects the first category entry.
    void Command5_Click();

    QLineEdit* txtItemFilter = nullptr;
    QLineEdit* txtDescFilter = nullptr;
    QComboBox* cboCatFilter = nullptr;
    QPushButton* Command1 = nullptr; // Search
    QPushButton* Command5 = nullptr; // Clear
    QPushButton* Command3 = nullptr; // close the panel
    GridEX* gdxAllParts = nullptr;

    int mPartsCount = 0;
    UBArray mParts;

signals:
    // Command1 was pressed: the owner reloads the list with its discount.
    void SearchRequested();
    // A row was activated: its record of mParts.
    void PartChosen(int record);
    // Command3 was pressed.
    void CloseRequested();
};
