// The window "Goods Receiving": the orders with something outstanding, then the rows of one
// order to type what arrived, "Book In", and the print frame of the goods received note.
#pragma once

#include "purchasing/GoodsIn.h"

#include <QDialog>

class GridEX;
class PrintFrame;
class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;

class frmGoodsIn : public QDialog {
    Q_OBJECT
public:
    explicit frmGoodsIn(QWidget* parent = nullptr);

    // The bar item "Goods In": the window, loaded, modally over `parent`.
    static void Open(QWidget* parent);

    void Form_Load();
    void LoadOutstandingOrders();
    void ShowOrderList();
    void LoadOrderRows(qint32 poid);
    void ShowGrnPrintFrame();

    void btnBar_Click(int index);
    void Check1_Click();
    void Command1_Click();
    void cmdBookIn_Click();
    void btnSeeCompletedRows_Click();
    void cmdPrintOK_Click();
    void cmdCancelPrint_Click();
    void gdxOList_MouseUp(int xTwips, int yTwips);

    QPushButton* btnBar_0; // "Quit/Close"
    QPushButton* btnBar_2; // "Refresh the list"
    QLineEdit* txtPOID;
    QLineEdit* txtPONo;
    QLineEdit* txtPODate;
    QLineEdit* txtSupplier;
    QLineEdit* txtAdviceNo;
    QLineEdit* txtGRNDate;
    QLineEdit* txtGRNno;
    QFrame* Frame1; // the list step's grouping
    QCheckBox* Check1;
    QLabel* lblOpenHint;
    GridEX* gdxOList;
    QPushButton* btnSeeCompletedRows;
    QPushButton* cmdBookIn;
    QPushButton* Command1; // "Close": back to the list

    PrintFrame* frmPrintTRN;
    QComboBox* cboSelectPrinter;
    QPushButton* cmdPrintOK;
    QPushButton* cmdCancelPrint; // "Done"

    // Form state.
    GoodsInArray OrderList; // the orders found, as loaded
    GoodsInArray GridRows;  // behind gdxOList: the list, or the rows of the opened order
    bool DetailMode = false;
    bool ShowCompleted = false;
    QString CurrentPOID;
    QString GrnPrinterName;

public slots:
    void done(int result) override;

private:
    void BuildListColumns(bool showNonStock);
    void BuildRowColumns();
    void ShowStep(bool detail);
    void RestoreSize();
    void StoreSize();
    bool mHeaderClicked = false;
};
