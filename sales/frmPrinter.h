// The printing panel of the customer order window: the printer to use and one button per
// document. Which buttons show depends on what was just saved: an order offers the order copy,
// an invoice the invoice, the delivery note and the packing note.
#pragma once

#include <QGroupBox>

class QComboBox;
class QLabel;
class QPushButton;

class frmPrinter : public QGroupBox {
    Q_OBJECT
public:
    explicit frmPrinter(QWidget* parent = nullptr);

    // The order copy alone (after an order is saved), or the invoice documents (after an
    // invoice is saved).
    enum class Documents { Order, Invoice };
    void ShowDocumentButtons(Documents documents);

    // Lists every printer of the collection in cboSelectPrinter and selects the current one,
    // which counts as a choice (PrinterChosen). With no printer at all the user is told and the
    // document buttons are disabled; false then.
    bool ListPrinters();
    // The logo the last document painted, in the picture box; none for an empty path.
    void ShowLogo(const QString& path);

    QComboBox* cboSelectPrinter = nullptr;
    QPushButton* btnPrintOrder = nullptr;    // "Order"
    QPushButton* btnPrintInvoice = nullptr;  // "Invoice"
    QPushButton* btnPrintDelNote = nullptr;  // "Delivery"
    QPushButton* btnPrintPickList = nullptr; // "PickList"
    QPushButton* btnPickHelp = nullptr;
    QPushButton* btnPrintPList = nullptr;
    QPushButton* cmdCancelPrint = nullptr; // "Finished printing": hides the panel
    QLabel* logo = nullptr;                // the picture box the documents load the logo into

signals:
    // A document button was pressed: "Order", "Invoice", "Delivery" or "PickList".
    void PrintRequested(const QString& kind);
    void PickHelpRequested();
    // A printer was selected, by the user or by ListPrinters: its trimmed device name.
    void PrinterChosen(const QString& deviceName);

private:
    bool mFilling = false;
};
