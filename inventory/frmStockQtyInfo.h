// The pending order panel of the inventory list: open purchase order rows and open customer
// order rows of one item, and the flag that sends the item to purchasing.
#pragma once

#include "inventory/StockMovements.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QTableWidget;

class frmStockQtyInfo : public QDialog {
    Q_OBJECT
public:
    explicit frmStockQtyInfo(QWidget* parent = nullptr);

    // Fills the panel for a list row: its part number and ItemID, the basket test, both grids.
    void Open(qint32 itemId, const QString& partNo);

    // Context menu entry "View any Pending Order Information": opens the panel modally.
    static void ShowFor(QWidget* parent, qint32 itemId, const QString& partNo);

    QLineEdit* txtPartID;
    QLineEdit* Text2;
    QCheckBox* chkSendToPO;
    QTableWidget* flxStockOnOrInfo;
    QTableWidget* flxStockAllocInfo;
    QPushButton* cmdStockQtyInfoOK;

    // What the last OK changed.
    BasketChange LastChange() const { return mLastChange; }

private:
    void chkSendToPO_Click(bool checked);
    void cmdStockQtyInfoOK_Click();

    qint32 mItemId = 0;
    BasketChange mLastChange = BasketChange::None;
};
