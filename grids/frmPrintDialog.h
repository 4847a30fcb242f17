// The print panel of the list grids ("Select Printer"): the printers to choose from, Portrait or
// Landscape, Print and Cancel.
#pragma once

#include <QDialog>
#include <functional>

class GridEX;
class QListWidget;
class QPushButton;
class QRadioButton;

class frmPrintDialog : public QDialog {
    Q_OBJECT

public:
    // Runs the listing with the orientation choice: 0 Portrait, 1 Landscape.
    using PrintAction = std::function<void(int orientationChoice)>;

    explicit frmPrintDialog(PrintAction print, QWidget* parent = nullptr);

    // 0 when Portrait is selected, otherwise 1.
    int OrientationChoice() const;

    QListWidget* lstPrinters;
    QRadioButton* optOrientation_0;
    QRadioButton* optOrientation_1;
    QPushButton* cmdPrintOK;
    QPushButton* cmdPrintCancel;

private:
    void FillPrinters();
    void lstPrinters_Click();
    void cmdPrintOK_Click();

    PrintAction mPrint;
};

// Opens the panel over `parent`; Print hides it, prints the grid and closes it.
void ShowPrintPanel(QWidget* parent, GridEX* grid);
// As above with the printing left to the caller (a window that changes the grid around it).
void ShowPrintPanel(QWidget* parent, frmPrintDialog::PrintAction print);
