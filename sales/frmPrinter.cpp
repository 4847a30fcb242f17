#include "sales/frmPrinter.h"

#include "foundation/DocumentParts.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>

frmPrinter::frmPrinter(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("frmPrinter"));
    setTitle(QStringLiteral("Print"));
    setAutoFillBackground(true);
    auto* lay = new QGridLayout(this);
    lay->addWidget(new QLabel(QStringLiteral("Printer"), this), 0, 0);
    cboSelectPrinter = new QComboBox(this);
    cboSelectPrinter->setObjectName(QStringLiteral("cboSelectPrinter"));
    cboSelectPrinter->setMinimumContentsLength(24);
    lay->addWidget(cboSelectPrinter, 0, 1, 1, 3);

    auto button = [this](const char* name, const char* caption) {
        auto* b = new QPushButton(QString::fromLatin1(caption), this);
        b->setObjectName(QString::fromLatin1(name));
        b->setAutoDefault(false);
        return b;
    };
    btnPrintOrder = button("btnPrintOrder", "Print Order Details");
    btnPrintInvoice = button("btnPrintInvoice", "Print Invoice");
    btnPrintDelNote = button("btnPrintDelNote", "Delivery Note");
    btnPrintPickList = button("btnPrintPickList", "Packing Note");
    btnPickHelp = button("btnPickHelp", "?");
    btnPickHelp->setMaximumWidth(28);
    btnPrintPList = button("btnPrintPList", "Printers");
    btnPrintPList->setToolTip(
        QStringLiteral("Open the printer selection to re-print this document"));
    cmdCancelPrint = button("cmdCancelPrint", "Finished printing");
    lay->addWidget(btnPrintOrder, 1, 0, 1, 2);
    lay->addWidget(btnPrintInvoice, 2, 0, 1, 2);
    lay->addWidget(btnPrintDelNote, 3, 0, 1, 2);
    lay->addWidget(btnPrintPickList, 4, 0, 1, 2);
    lay->addWidget(btnPickHelp, 4, 2);
    lay->addWidget(btnPrintPList, 5, 0);
    lay->addWidget(cmdCancelPrint, 5, 1, 1, 3);
    // Holds the picture while a document paints it; never shown.
    logo = new QLabel(this);
    logo->setObjectName(QStringLiteral("logo"));
    logo->hide();

    const struct {
        QPushButton* button;
        const char* kind;
    } documents[] = {{btnPrintOrder, "Order"},
                     {btnPrintInvoice, "Invoice"},
                     {btnPrintDelNote, "Delivery"},
                     {btnPrintPickList, "PickList"}};
    for (const auto& d : documents) {
        const QString kind = QString::fromLatin1(d.kind);
        connect(d.button, &QPushButton::clicked, this, [this, kind] { emit PrintRequested(kind); });
    }
    connect(btnPickHelp, &QPushButton::clicked, this, [this] { emit PickHelpRequested(); });
    connect(cmdCancelPrint, &QPushButton::clicked, this, [this] { hide(); });
    connect(cboSelectPrinter, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (!mFilling && index >= 0)
            emit PrinterChosen(cboSelectPrinter->currentText().trimmed());
    });
    hide();
}

bool frmPrinter::ListPrinters() {
    mFilling = true;
    cboSelectPrinter->clear();
    const PrinterOffer offer = OfferPrinters();
    cboSelectPrinter->addItems(offer.names);
    cboSelectPrinter->setCurrentIndex(-1);
    mFilling = false;
    const bool any = offer.selected >= 0;
    for (QPushButton* b : {btnPrintOrder, btnPrintInvoice, btnPrintDelNote, btnPrintPickList})
        b->setEnabled(any);
    if (!any) {
        ShowNoPrinterMessage();
        return false;
    }
    cboSelectPrinter->setCurrentIndex(offer.selected);
    return true;
}

void frmPrinter::ShowLogo(const QString& path) {
    logo->setPixmap(path.isEmpty() ? QPixmap() : QPixmap(path));
}

void frmPrinter::ShowDocumentButtons(Documents documents) {
    const bool order = documents == Documents::Order;
    btnPrintOrder->setVisible(order);
    for (QPushButton* b : {btnPrintDelNote, btnPrintPickList, btnPickHelp, btnPrintInvoice})
        b->setVisible(!order);
}
