// The window "Purchasing": the basket of one supplier at a time, the supplier's parts to add
// from, "Order Now" and the print frame of the order just placed.
#pragma once

#include "inventory/InventoryList.h" // UBArray

#include <QDialog>
#include <QList>

class GridEX;
class PrintFrame;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QPushButton;

class basket : public QDialog {
    Q_OBJECT
public:
    explicit basket(QWidget* parent = nullptr);

    // The bar item "Ordering" (after its guard): the window, loaded, modally over `parent`.
    static void Open(QWidget* parent);

    void Form_Load();
    void cboSupplist_Click();
    // Loads the basket of the supplier selected in cboSupplist.
    void RefreshCurrentBasket();
    void RecalcOrderValue();
    void ShowSupplierParts();
    void ShowPrintFrame();
    // Puts NextPOID into txtPOID ("0000"), under the hourglass.
    void ShowNextPOID();

    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();
    void Command8_Click();
    void cmdPrintOK_Click();
    void cmdCancelPrint_Click();

    QComboBox* cboSupplist;
    QLineEdit* txtPOID;
    QLineEdit* txtBasketPONo;
    QLineEdit* Text2; // "Order Value:"
    GridEX* gdxBList;
    QPushButton* Command2;   // "Order Now"
    QPushButton* Command4;   // "Show Inventory from this supplier"
    QPushButton* Command1;   // help on the order number
    QPushButton* Command8;   // the supplier's contact entry
    QPushButton* Command6_0; // "Close this window"

    QGroupBox* frmBParts;
    GridEX* gdxBParts;
    QLineEdit* txtBSupItemFilter;
    QPushButton* Command5; // clears the filter
    QPushButton* Command3; // "Hide"

    // The working store of the selected supplier's address; never shown.
    QGroupBox* frmNSSupDetails;
    QLineEdit* txtSupID;
    QLineEdit* txtSupName;
    QLineEdit* txtSupAdd1;
    QLineEdit* txtSupAdd2;
    QLineEdit* txtSupAdd3;
    QLineEdit* txtSupAdd4;
    QLineEdit* txtSupPO;
    QLineEdit* txtSupContact;

    PrintFrame* frmPrintOrder;
    QComboBox* cboSelectPrinter;
    QPushButton* cmdPrintOK;
    QPushButton* cmdCancelPrint; // "Done"

    // Form state.
    QList<qint32> SupplierIDs; // the AddID of each entry of cboSupplist
    UBArray BasketRows;        // behind gdxBList
    int BasketRowCount = 0;
    UBArray PartRows; // behind gdxBParts
    int PartRowCount = 0;
    bool SupplierChosen = false;

private:
    void BuildBasketColumns();
    void BuildPartColumns();
    void gdxBList_RowCommit(int record, const QVector<QVariant>& values, bool& cancel);
    void gdxBParts_DblClick(int row);
    QLineEdit* StoreBox(const QString& name);
};
