// The customer order window: a new order, a saved order, a saved order being invoiced or a saved
// invoice, after gCustOrderMode (1 to 4), gCustOrderID and gCustInvoiceNo. The window shows the
// order sheet mSheet and writes every edit back into it; the procedures of sales/ work on the
// sheet.
#pragma once

#include "sales/CustOrder.h"
#include "sales/frmPrinter.h"

#include <QDialog>

class frmBParts;
class frmEditDelCharges;
class frmSalesTax;
class OrderGrid;
class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QScrollBar;
class QTableWidget;
class QTimer;

class frmCustOrder : public QDialog {
    Q_OBJECT
public:
    explicit frmCustOrder(QWidget* parent = nullptr);
    ~frmCustOrder() override;

    // Opens the window modally for the globals; the dialog's result.
    static int ShowModal(QWidget* parent = nullptr);

    void Form_Load();
    // Shows the sheet: every box, the customer list's choice and the rows.
    void ShowSheet();

    // --- customer ---
    void LoadCustomerCombo();
    void cboCustlist_Click();
    void Command8_Click();

    // --- rows ---
    void Command4_Click(); // opens the add-items panel
    void Command3_Click(); // closes it
    void gdxAllParts_Activate(int record);

    // --- the action buttons ---
    void Command2_Click();           // save the order
    virtual void cmdInvoice_Click(); // save the new order and invoice it
    virtual void Command19_Click();  // save the invoice
    // Command4, Command2, Command7, Command19, Command20, cmdInvoice and Command12.
    QList<QPushButton*> ActionButtons() const;
    void HideActionButtons();

    // --- printing ---
    // Shows frmPrinter with the buttons of the documents just saved.
    virtual void ShowPrinterPanel();
    virtual void PrintSalesDocument(const QString& kind);

    // --- help ---
    void ShowInfoFrame(); // Command15, Command17
    void tmrInfo_Timer(); // also Command16: shrinks FrameInfo away

    CustOrderSheet mSheet;
    bool mLoading = false; // cboCustlist is being filled by the window itself
    QString mSelectedPrinter;

    // Help
    QLabel* lblTip = nullptr;
    QPushButton* Command15 = nullptr;
    QPushButton* Command17 = nullptr; // "What's This ?"
    QFrame* FrameInfo = nullptr;
    QLabel* lblInfo = nullptr;
    QPushButton* Command16 = nullptr;
    QTimer* tmrInfo = nullptr;

    // Customer
    QComboBox* cboCustlist = nullptr;
    QPushButton* Command8 = nullptr;
    QLineEdit* txtCustID = nullptr;
    QLineEdit* txtCustName = nullptr;
    QLineEdit* txtCustAdd1 = nullptr;
    QLineEdit* txtCustAdd2 = nullptr;
    QLineEdit* txtCustAdd3 = nullptr;
    QLineEdit* txtCustAdd4 = nullptr;
    QLineEdit* txtCustPO = nullptr;

    // Header
    QLineEdit* txtCustBasketID = nullptr;
    QPushButton* Command18 = nullptr;
    QLineEdit* txtCustOrNo = nullptr;
    QLineEdit* txtOrDate = nullptr;
    QLabel* lblDiscount = nullptr;
    QLineEdit* txtDiscount = nullptr;
    QLineEdit* txtInvoiceNo = nullptr;
    QPushButton* Command21 = nullptr;
    QLabel* Label22 = nullptr; // captions txtInvoiceDate
    QLineEdit* txtInvoiceDate = nullptr;
    QLabel* Label10 = nullptr; // captions txtCustShipID
    QLineEdit* txtCustShipID = nullptr;

    // Rows
    OrderGrid* Rows = nullptr;
    QTableWidget* fgHeader = nullptr;
    QTableWidget* fgSOrder = nullptr;
    QLineEdit* fgedit = nullptr;
    QScrollBar* vs1 = nullptr;

    // Totals
    QLineEdit* txtNet = nullptr;
    QLineEdit* txtDeliveryText = nullptr;
    QLineEdit* txtDelivery = nullptr;
    QPushButton* Command10 = nullptr;
    QLineEdit* txtVatText = nullptr;
    QLineEdit* Text3 = nullptr;
    QLineEdit* txtVat = nullptr;
    QPushButton* Command11 = nullptr;
    QLineEdit* txtTotalText = nullptr;
    QLineEdit* txtTotal = nullptr;

    // Notes
    QPlainTextEdit* txtNotes = nullptr;
    QPushButton* Command14 = nullptr;

    // Actions
    QPushButton* Command4 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command7 = nullptr;
    QPushButton* cmdInvoice = nullptr;
    QPushButton* Command12 = nullptr;
    QPushButton* Command19 = nullptr;
    QPushButton* Command20 = nullptr;
    QPushButton* Command6 = nullptr; // closes the window

    // Panels
    ::frmBParts* frmBParts = nullptr;
    ::frmSalesTax* frmSalesTax = nullptr;
    ::frmEditDelCharges* frmEditDelCharges = nullptr;
    ::frmPrinter* frmPrinter = nullptr;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // A box and the text of the sheet it shows. A change of a box the order reacts to runs
    // `reacts` (the discount reprices, the delivery recalculates, the tax rewrites Text3).
    struct SheetBox {
        QLineEdit* box;
        QString CustOrderSheet::*text;
        void (*reacts)(CustOrderSheet&, const QString&) = nullptr;
    };
    QList<SheetBox> SheetBoxes() const;
    // After a save: the window shows the sheet without its action buttons, and the printing
    // panel offers the documents, after the question when there is one and only on Yes.
    void Saved(const QString& printQuestion, ::frmPrinter::Documents documents);
    QWidget* BuildHeader(QWidget* parent);
    QWidget* BuildTotals(QWidget* parent);
    QWidget* BuildActions(QWidget* parent);
    void BuildPanels();
    void BindBoxes();
    void ApplyModeLayout();
    void PlacePanels();
    void ShowPanel(QWidget* panel);

    bool mShowing = false; // ShowSheet is writing into the boxes
};
