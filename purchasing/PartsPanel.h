// The panel of a supplier's parts beside the basket or an order's rows: "PartNo" and its filter
// box (letters in capitals, matching the start of the part number), a "Clear" and a "Hide"
// button, the parts grid (read-only, read from the window's working array) and a hint under it.
// Each window names the panel and its controls as it knows them (frmBParts with
// txtBSupItemFilter, Command5, Command3 and gdxBParts; frmPOParts with txtPOItemFilter,
// Command3, btnAddToOrderHide and gdxPOParts), builds the grid's columns and decides what the
// controls do. Hidden at first.
#pragma once

#include "inventory/InventoryList.h" // UBArray

#include <QGroupBox>

class GridEX;
class QLineEdit;
class QPushButton;

class PartsPanel : public QGroupBox {
public:
    struct Names {
        QString frame, filter, clear, hide, grid;
    };
    // The grid reads `rows` up to `rowCount`: the window's own array and count.
    PartsPanel(const Names& names, const QString& title, const QString& hint, const UBArray& rows,
               const int& rowCount, QWidget* parent);

    QLineEdit* Filter;
    QPushButton* ClearButton;
    QPushButton* HideButton;
    GridEX* Grid;
};
