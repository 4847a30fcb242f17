// The stock adjustment panel: issue, return, or adjust the quantity of the selected item up or
// down, with a reference and a note that go into its history.
//
// Hosted as a sub-panel of the item detail (tab "Adjustments"), or shown over the main window
// from the list's context menu through OpenFromMenu.
#pragma once

#include "inventory/StockMovements.h"

#include <QFrame>
#include <QList>
#include <optional>

class QButtonGroup;
class QLineEdit;
class QPushButton;
class QRadioButton;

class frmInvAdjustments : public QFrame {
    Q_OBJECT
public:
    explicit frmInvAdjustments(QWidget* parent = nullptr);

    // Clears the options and the three boxes and takes the list row the adjustment is for: its
    // ItemID and its Qty cell as shown.
    void Open(qint32 itemId, const QString& qtyCell);

    // The option chosen, None when no option is set.
    AdjustmentKind SelectedKind() const;

    // Context menu entry "Inventory +/--  (adjustments)": the inventory guard, then the panel
    // modally over `parent`. Returns what was posted (the list row's new Qty cell in qtyCell), or
    // nothing when refused, cancelled or stopped.
    static std::optional<StockAdjustmentResult> OpenFromMenu(QWidget* parent, qint32 itemId,
                                                             const QString& qtyCell);

    QList<QRadioButton*> optAdjustments; // optAdjustments_0 .. _3
    QLineEdit* txtAdjustmentQty;
    QLineEdit* txtAdjustmentNo;
    QLineEdit* txtAdjustmentText;
    QPushButton* btnInvAdjustOK;
    QPushButton* Command6; // Cancel
    QPushButton* Command7; // help

signals:
    // An adjustment was posted: the host repaints Qty of the list row with `qtyCell` (and may
    // reload what it shows of the item).
    void Adjusted(const StockAdjustmentResult& result, qint32 itemId);
    // The panel is done (after a posted adjustment or Cancel): the host hides it.
    void Closed();

private:
    void btnInvAdjustOK_Click();
    void Command6_Click();

    QButtonGroup* mOptions;
    qint32 mItemId = 0;
    QString mQtyCell;
};
