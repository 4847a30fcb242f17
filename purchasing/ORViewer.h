// The window "View Orders": the purchase orders by supplier or by due date, one order's rows to
// change and save, items of the order's supplier to add, rows or whole orders to delete, and the
// order to print again.
#pragma once

#include "inventory/InventoryList.h" // UBArray

#include <QDialog>

class GridEX;
class PrintFrame;
class QCheckBox;
class QComboBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

class ORViewer : public QDialog {
    Q_OBJECT
public:
    explicit ORViewer(QWidget* parent = nullptr);

    // The bar item "View Order(s)": the window, loaded, modally over `parent`.
    static void Open(QWidget* parent);

    void Form_Load();
    // The list in a mode (5, 6 or 7) with the filters as the boxes hold them.
    void LoadOrderList(quint8 mode);
    // The rows of an order, shown instead of the list.
    void LoadOrderDetail(qint32 poid);
    // The parts of the order's supplier, filtered by txtPOItemFilter.
    void ShowOrderParts();

    void Command8_Click();
    void Command2_Click();
    void Option_Click(quint8 mode);
    void chkByDate_Click();
    void btnViewPODetails_Click();
    void btnDeleteRow_Click();
    void btnCloseRowMenu_Click();
    void btnAddToOrder_Click();
    void btnAddToOrderHide_Click();
    void Command3_Click();
    void cmdReprint_Click();
    void cmdRePrintOK_Click();
    void cmdCancelrePrint_Click();
    void Command4_Click();
    void Command6_Click(int index);

    // --- the list and its filters
    QFrame* Frame1;
    QLineEdit* txtFilterPO; // "Filter (OrderID.)"
    QLineEdit* txtFilterSu; // "Filter (Supplier)"
    QPushButton* Command8;  // runs the search
    QPushButton* Command2;  // clears both filters
    QRadioButton* Option1;  // "All orders" (5)
    QRadioButton* Option2;  // "Orders Completed" (7)
    QRadioButton* Option3;  // "Orders Not Completed" (6)
    QCheckBox* chkByDate;
    GridEX* gdxOList;

    // --- the order on screen
    QLineEdit* txtPOID;     // "Our Order ID"
    QLineEdit* txtPORef;    // "PO Reference"
    QLineEdit* txtSupplier; // "Supplier"
    GridEX* gdxPODetail;

    // --- the row menu
    QFrame* frmRowMenu;
    QPushButton* btnViewPODetails;
    QPushButton* btnDeleteRow;
    QPushButton* btnChase;    // no action; disabled whenever the menu opens
    QPushButton* btnSendMail; // no action
    QPushButton* btnCloseRowMenu;
    QLineEdit* txtOrderRowID; // hidden: the POID (list) or the RowID (rows) under the menu
    QLineEdit* txtSuppID;     // hidden

    // --- adding items
    QPushButton* btnAddToOrder; // "Add Items to this order"
    QGroupBox* frmPOParts;
    GridEX* gdxPOParts;
    QLineEdit* txtPOItemFilter;
    QPushButton* Command3;          // clears the filter
    QPushButton* btnAddToOrderHide; // "Hide"

    // --- printing
    QPushButton* cmdReprint;
    PrintFrame* frmRePrintOrder;
    QComboBox* cboSelectPrinter;
    QPushButton* cmdRePrintOK;
    QPushButton* cmdCancelrePrint; // "Done"

    // --- goods received notes: nothing fills this panel
    QGroupBox* frmGrns;
    QPlainTextEdit* txtGrns;
    QPushButton* Command4; // clears and hides it

    QLabel* lblRowsTip;      // how the rows' menu opens
    QPushButton* Command6_0; // back from the rows to the list
    QPushButton* Command5;   // closes the window

    // Form state.
    UBArray OrderRows; // behind gdxOList
    int OrderRowCount = 0;
    UBArray DetailRows; // behind gdxPODetail
    int DetailRowCount = 0;
    UBArray PartRows; // behind gdxPOParts
    int PartRowCount = 0;
    qint32 CurrentPOID = 0;
    qint32 CurrentSupplierID = 0;
    quint8 SavedViewMode = 6;

private:
    void BuildListColumns();
    void BuildDetailColumns();
    void BuildPartColumns();
    void ShowRowView(bool rows);
    void ShowRowMenu(GridEX* grid, int xTwips, int yTwips);
    void gdxOList_MouseUp(Qt::MouseButton button, int xTwips, int yTwips);
    void gdxPODetail_MouseUp(Qt::MouseButton button, int xTwips, int yTwips);
    void gdxPOParts_DblClick(int row);
    void ReloadList();
    // The rows read again for the order on screen, with the edits not yet saved kept.
    void ReloadOrderDetailKeepingEdits();
    QList<qint64> mEditedRows; // RowIDs of the rows changed since the rows were read
};
