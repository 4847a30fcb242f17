// The sales lists of the main window, inside its frmViewCustOrders frame: the customer orders
// (current and pending, or completed) and the invoices, in one grid. A row opens the customer
// order window; the list is read again when that window closes.
#pragma once

#include "inventory/InventoryList.h"

#include <QWidget>

class GridEX;
class QFrame;
class QLabel;
class QPushButton;
class QRadioButton;
struct SalesList;

class CustOrderListPanel : public QWidget {
    Q_OBJECT
public:
    explicit CustOrderListPanel(QWidget* parent = nullptr);

    void ListCustomerOrders(bool pending);
    void ListInvoices();
    // The invoice of the selected row, in mode 4.
    void OpenSelectedInvoice();
    void Label5_Click(); // the selected order, in mode 2
    void Label9_Click(); // the selected order, to invoice it (mode 3)
    // A mouse button released over the grid, in twips from its top left.
    void gdxCustOrdersList_MouseUp(int xTwips, int yTwips);

    QRadioButton* optCustORPending = nullptr;   // "Current and Pending"
    QRadioButton* optCustORCompleted = nullptr; // "Completed."
    GridEX* gdxCustOrdersList = nullptr;
    QFrame* Frame2 = nullptr;
    QLabel* Label5 = nullptr; // "View/Edit this Order"
    QLabel* Label9 = nullptr; // "Process a Delivery / Invoice for this Order"
    QPushButton* Command13 = nullptr;

    UBArray mRows;
    int mRowCount = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowList(SalesList list);
    // The number in the first column of the selected row; 0 without a row.
    qint32 SelectedNumber() const;
    void OpenSelectedOrder(quint8 mode);
};
