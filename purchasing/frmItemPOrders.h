// The "Purchase Orders" sub-panel of the item detail: the grid gdxItemPOrders over the item's
// purchase order rows, newest order first, read when the tab is chosen. Nothing is edited here.
#pragma once

#include "inventory/InventoryList.h" // UBArray

#include <QFrame>

class GridEX;

class frmItemPOrders : public QFrame {
    Q_OBJECT
public:
    explicit frmItemPOrders(QWidget* parent = nullptr); // objectName "frmItemPOrders"

    // Reads the item's order rows. An item never ordered leaves the grid empty.
    void LoadItemPOrders(qint32 itemId);

    GridEX* gdxItemPOrders;

private:
    UBArray mRows;
    int mRowCount = 0;
};
