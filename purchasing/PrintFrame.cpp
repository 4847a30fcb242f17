#include "purchasing/PrintFrame.h"

#include "foundation/DocumentParts.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

PrintFrame::PrintFrame(const QString& frameName, const QString& title, const QString& printName,
                       const QString& printCaption, const QString& doneName,
                       const QString& doneCaption, QWidget* parent)
    : QGroupBox(title, parent) {
    setObjectName(frameName);
    lblPrintHelp = new QLabel(QStringLiteral("Printer"), this);
    lblPrintHelp->setObjectName(QStringLiteral("lblSelectPrinter"));
    cboSelectPrinter = new QComboBox(this);
    cboSelectPrinter->setObjectName(QStringLiteral("cboSelectPrinter"));
    cboSelectPrinter->setMinimumContentsLength(24);
    lblPrintHelp->setBuddy(cboSelectPrinter);
    PrintButton = new QPushButton(printCaption, this);
    PrintButton->setObjectName(printName);
    PrintButton->setEnabled(false);
    DoneButton = new QPushButton(doneCaption, this);
    DoneButton->setObjectName(doneName);
    PrintButton->setAutoDefault(false);
    DoneButton->setAutoDefault(false);

    auto* row = new QHBoxLayout(this);
    row->addWidget(lblPrintHelp);
    row->addWidget(cboSelectPrinter, 1);
    row->addWidget(PrintButton);
    row->addWidget(DoneButton);

    connect(cboSelectPrinter, &QComboBox::currentIndexChanged, this,
            &PrintFrame::cboSelectPrinter_Click);
}

bool PrintFrame::ListPrinters(const QString& wanted) {
    PrintButton->setEnabled(false);
    mFilling = true;
    cboSelectPrinter->clear();
    const PrinterOffer offer = OfferPrinters(wanted);
    cboSelectPrinter->addItems(offer.names);
    cboSelectPrinter->setCurrentIndex(-1);
    mFilling = false;
    if (offer.selected < 0) {
        ShowNoPrinterMessage();
        return false;
    }
    cboSelectPrinter->setCurrentIndex(offer.selected);
    return true;
}

QString PrintFrame::ChosenPrinter() const {
    return cboSelectPrinter->currentIndex() < 0 ? QString()
                                                : cboSelectPrinter->currentText().trimmed();
}

void PrintFrame::cboSelectPrinter_Click(int index) {
    if (mFilling || index < 0)
        return;
    PrintButton->setEnabled(true);
    emit PrinterChosen(ChosenPrinter());
}
