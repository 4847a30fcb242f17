// The print frame of the purchasing windows: a printer combo (cboSelectPrinter), a print button
// and a "Done" button. Each window names the frame and its buttons as it knows them
// (frmPrintOrder with cmdPrintOK and cmdCancelPrint, frmRePrintOrder with cmdRePrintOK and
// cmdCancelrePrint, ...) and decides what the buttons do.
#pragma once

#include <QGroupBox>

class QComboBox;
class QLabel;
class QPushButton;

class PrintFrame : public QGroupBox {
    Q_OBJECT
public:
    PrintFrame(const QString& frameName, const QString& title, const QString& printName,
               const QString& printCaption, const QString& doneName, const QString& doneCaption,
               QWidget* parent = nullptr);

    // Disables the print button and lists the printers of the collection; selects `wanted` when
    // it is listed, otherwise the current printer, otherwise the first. That selection counts as
    // a choice: PrinterChosen is emitted and the print button enabled. With no printer at all
    // the user is told and the print button stays disabled; false then.
    bool ListPrinters(const QString& wanted = QString());

    // The trimmed name of the selected printer; "" when none is selected.
    QString ChosenPrinter() const;

    QLabel* lblPrintHelp;
    QComboBox* cboSelectPrinter;
    QPushButton* PrintButton;
    QPushButton* DoneButton;

signals:
    // A printer was selected (by the user, or by ListPrinters): its trimmed device name.
    void PrinterChosen(const QString& deviceName);

private:
    void cboSelectPrinter_Click(int index);
    bool mFilling = false;
};
