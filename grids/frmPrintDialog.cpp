#include "grids/frmPrintDialog.h"

#include "foundation/Printer.h"
#include "grids/GridEX.h"
#include "grids/GridEXSource.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

// The orientation chosen last, offered again while the program runs.
int gLastOrientationChoice = 0;

} // namespace

frmPrintDialog::frmPrintDialog(PrintAction print, QWidget* parent)
    : QDialog(parent), mPrint(std::move(print)) {
    setObjectName(QStringLiteral("frmPrintDialog"));
    setWindowTitle(QStringLiteral("Select Printer"));

    lstPrinters = new QListWidget(this);
    lstPrinters->setObjectName(QStringLiteral("lstPrinters"));

    auto* orientation = new QGroupBox(QStringLiteral("Orientation"), this);
    optOrientation_0 = new QRadioButton(QStringLiteral("Portrait"), orientation);
    optOrientation_0->setObjectName(QStringLiteral("optOrientation_0"));
    optOrientation_1 = new QRadioButton(QStringLiteral("Landscape"), orientation);
    optOrientation_1->setObjectName(QStringLiteral("optOrientation_1"));
    auto* orientationLayout = new QHBoxLayout(orientation);
    orientationLayout->addWidget(optOrientation_0);
    orientationLayout->addWidget(optOrientation_1);
    (gLastOrientationChoice == 0 ? optOrientation_0 : optOrientation_1)->setChecked(true);

    cmdPrintOK = new QPushButton(QStringLiteral("Print"), this);
    cmdPrintOK->setObjectName(QStringLiteral("cmdPrintOK"));
    cmdPrintOK->setDefault(true);
    cmdPrintCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdPrintCancel->setObjectName(QStringLiteral("cmdPrintCancel"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdPrintOK);
    buttons->addWidget(cmdPrintCancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lstPrinters);
    layout->addWidget(orientation);
    layout->addLayout(buttons);

    FillPrinters();
    connect(lstPrinters, &QListWidget::currentRowChanged, this, &frmPrintDialog::lstPrinters_Click);
    connect(cmdPrintOK, &QPushButton::clicked, this, &frmPrintDialog::cmdPrintOK_Click);
    connect(cmdPrintCancel, &QPushButton::clicked, this, &QDialog::reject);
}

int frmPrintDialog::OrientationChoice() const {
    return optOrientation_0->isChecked() ? 0 : 1;
}

void frmPrintDialog::FillPrinters() {
    const std::shared_ptr<Printer> current = CurrentPrinterHandle();
    int selected = -1;
    const PrinterList& printers = Printers();
    for (size_t i = 0; i < printers.size(); ++i) {
        lstPrinters->addItem(printers[i]->DeviceName());
        if (selected < 0 && printers[i] == current)
            selected = int(i);
    }
    if (selected >= 0)
        lstPrinters->setCurrentRow(selected);
    cmdPrintOK->setEnabled(!printers.empty());
}

void frmPrintDialog::lstPrinters_Click() {
    const int row = lstPrinters->currentRow();
    const PrinterList& printers = Printers();
    if (row >= 0 && size_t(row) < printers.size())
        SetCurrentPrinter(printers[size_t(row)]);
}

void frmPrintDialog::cmdPrintOK_Click() {
    const int choice = OrientationChoice();
    gLastOrientationChoice = choice;
    hide();
    if (mPrint)
        mPrint(choice);
    accept();
}

void ShowPrintPanel(QWidget* parent, frmPrintDialog::PrintAction print) {
    frmPrintDialog panel(std::move(print), parent);
    panel.exec();
}

void ShowPrintPanel(QWidget* parent, GridEX* grid) {
    if (!grid)
        return;
    ShowPrintPanel(parent, [grid](int choice) { PrintGrid(*grid, choice); });
}
