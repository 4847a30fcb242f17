#include "sales/frmCustOrder.h"

#include "contacts/Contacts.h"
#include "contacts/frmEditContact.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Startup.h"
#include "foundation/TextBoxRules.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "sales/CustOrderSave.h"
#include "sales/Invoicing.h"
#include "sales/OrderGrid.h"
#include "sales/SalesDefaults.h"
#include "sales/SalesDocuments.h"
#include "sales/frmBParts.h"
#include "sales/frmEditDelCharges.h"
#include "sales/frmPrinter.h"
#include "sales/frmSalesTax.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {
QLineEdit* makeBox(QWidget* parent, const char* name, bool readOnly = false) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setReadOnly(readOnly);
    return box;
}

// A text box used as a label: no frame, the window's colour, read only.
QLineEdit* makeLabelBox(QWidget* parent, const char* name) {
    QLineEdit* box = makeBox(parent, name, true);
    box->setFrame(false);
    box->setFocusPolicy(Qt::NoFocus);
    box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    box->setStyleSheet(QStringLiteral("QLineEdit { background: transparent; }"));
    return box;
}

QPushButton* makeButton(QWidget* parent, const char* name, const QString& caption) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(QString::fromLatin1(name));
    b->setAutoDefault(false);
    return b;
}

QPushButton* makeHelpButton(QWidget* parent, const char* name) {
    QPushButton* b = makeButton(parent, name, QStringLiteral("?"));
    b->setFixedWidth(24);
    return b;
}

void setText(QLineEdit* box, const QString& text) {
    if (box->text() != text)
        box->setText(text);
}

// The company block of the sales documents as the main window loaded it: the name and the six
// address lines, without telephone and fax. Without a main window, what it would have loaded.
QStringList salesCompanyBlock() {
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (const auto* main = qobject_cast<const FormMain*>(w)) {
            QStringList lines{main->txtCoName->text()};
            for (int i = 0; i < 6; ++i)
                lines << main->txtCoAddress.at(i)->text();
            return lines;
        }
    }
    const HomeDetails home = LoadHomeDetails();
    QStringList lines{home.coName};
    for (int i = 0; i < 6; ++i)
        lines << home.addressLines.value(i);
    return lines;
}
} // namespace

// ---------------------------------------------------------------------------------------------
// Building the window

frmCustOrder::frmCustOrder(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmCustOrder"));
    setModal(true);
    auto* lay = new QVBoxLayout(this);

    auto* tipRow = new QHBoxLayout;
    lblTip = new QLabel(this);
    lblTip->setObjectName(QStringLiteral("lblTip"));
    QFont bold = lblTip->font();
    bold.setBold(true);
    lblTip->setFont(bold);
    Command15 = makeButton(this, "Command15", QStringLiteral("Info"));
    Command17 = makeButton(this, "Command17", QStringLiteral("What's This ?"));
    tipRow->addWidget(lblTip);
    tipRow->addWidget(Command15);
    tipRow->addStretch(1);
    tipRow->addWidget(Command17);
    lay->addLayout(tipRow);

    lay->addWidget(BuildHeader(this));

    Rows = new OrderGrid(mSheet, this);
    fgHeader = Rows->fgHeader;
    fgSOrder = Rows->fgSOrder;
    fgedit = Rows->fgedit;
    vs1 = Rows->vs1;
    lay->addWidget(Rows);
    connect(Rows, &OrderGrid::SheetEdited, this, [this] { ShowSheet(); });

    auto* bottom = new QHBoxLayout;
    auto* notes = new QGroupBox(QStringLiteral("Notes"), this);
    notes->setObjectName(QStringLiteral("frmNotes"));
    auto* notesLay = new QHBoxLayout(notes);
    txtNotes = new QPlainTextEdit(notes);
    txtNotes->setObjectName(QStringLiteral("txtNotes"));
    txtNotes->setTabChangesFocus(true);
    Command14 = makeButton(notes, "Command14", QStringLiteral("Keep as\ndefault"));
    Command14->setToolTip(QStringLiteral("Save the notes as the default for new orders"));
    notesLay->addWidget(txtNotes, 1);
    notesLay->addWidget(Command14, 0, Qt::AlignTop);
    bottom->addWidget(notes, 1);
    bottom->addWidget(BuildTotals(this));
    lay->addLayout(bottom);
    lay->addWidget(BuildActions(this));

    BuildPanels();
    BindBoxes();

    tmrInfo = new QTimer(this);
    tmrInfo->setObjectName(QStringLiteral("tmrInfo"));
    tmrInfo->setInterval(20000);
    connect(tmrInfo, &QTimer::timeout, this, [this] { tmrInfo_Timer(); });

    resize(1000, 760);
    Form_Load();
}

frmCustOrder::~frmCustOrder() = default;

int frmCustOrder::ShowModal(QWidget* parent) {
    frmCustOrder window(parent);
    return window.exec();
}

QWidget* frmCustOrder::BuildHeader(QWidget* parent) {
    auto* header = new QWidget(parent);
    header->setObjectName(QStringLiteral("frmCustHeader"));
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);

    auto* customer = new QGroupBox(QStringLiteral("Customer"), header);
    customer->setObjectName(QStringLiteral("frmCustomer"));
    auto* c = new QGridLayout(customer);
    cboCustlist = new QComboBox(customer);
    cboCustlist->setObjectName(QStringLiteral("cboCustlist"));
    cboCustlist->setPlaceholderText(QStringLiteral("Select Customer"));
    cboCustlist->setMaxVisibleItems(20);
    Command8 = makeButton(customer, "Command8", QStringLiteral("Edit"));
    Command8->setToolTip(QStringLiteral("View or edit the customer's details"));
    txtCustID = makeBox(customer, "txtCustID", true);
    txtCustID->hide();
    txtCustName = makeBox(customer, "txtCustName", true);
    txtCustAdd1 = makeBox(customer, "txtCustAdd1", true);
    txtCustAdd2 = makeBox(customer, "txtCustAdd2", true);
    txtCustAdd3 = makeBox(customer, "txtCustAdd3", true);
    txtCustAdd4 = makeBox(customer, "txtCustAdd4", true);
    txtCustPO = makeBox(customer, "txtCustPO", true);
    c->addWidget(cboCustlist, 0, 0, 1, 3);
    c->addWidget(Command8, 0, 3);
    c->addWidget(txtCustName, 1, 0, 1, 4);
    c->addWidget(txtCustAdd1, 2, 0, 1, 2);
    c->addWidget(txtCustAdd2, 2, 2, 1, 2);
    c->addWidget(txtCustAdd3, 3, 0, 1, 2);
    c->addWidget(txtCustAdd4, 3, 2, 1, 2);
    c->addWidget(txtCustPO, 4, 0);
    c->setColumnStretch(0, 1);
    c->setColumnStretch(2, 1);
    row->addWidget(customer, 3);

    auto* order = new QGroupBox(QStringLiteral("Order"), header);
    order->setObjectName(QStringLiteral("frmOrderHeader"));
    auto* h = new QGridLayout(order);
    txtCustBasketID = makeBox(order, "txtCustBasketID");
    Command18 = makeHelpButton(order, "Command18");
    txtCustOrNo = makeBox(order, "txtCustOrNo");
    txtOrDate = makeBox(order, "txtOrDate", true);
    lblDiscount = new QLabel(QStringLiteral("Discount ?"), order);
    lblDiscount->setObjectName(QStringLiteral("lblDiscount"));
    txtDiscount = makeBox(order, "txtDiscount");
    txtInvoiceNo = makeBox(order, "txtInvoiceNo");
    Command21 = makeHelpButton(order, "Command21");
    Label22 = new QLabel(QStringLiteral("Invoice Date"), order);
    Label22->setObjectName(QStringLiteral("Label22"));
    txtInvoiceDate = makeBox(order, "txtInvoiceDate", true);
    Label10 = new QLabel(QStringLiteral("Delivery"), order);
    Label10->setObjectName(QStringLiteral("Label10"));
    txtCustShipID = makeBox(order, "txtCustShipID", true);
    for (QLineEdit* box :
         {txtCustBasketID, txtOrDate, txtDiscount, txtInvoiceNo, txtInvoiceDate, txtCustShipID})
        box->setFixedWidth(105);
    int r = 0;
    auto addRow = [&](const QString& caption, QWidget* box, QWidget* help, int column) {
        QWidget* label = caption.isEmpty() ? nullptr : new QLabel(caption, order);
        h->addWidget(label, r, column);
        h->addWidget(box, r, column + 1);
        if (help)
            h->addWidget(help, r, column + 2);
    };
    addRow(QStringLiteral("Our Order ID"), txtCustBasketID, Command18, 0);
    h->addWidget(lblDiscount, r, 3);
    h->addWidget(txtDiscount, r, 4);
    ++r;
    addRow(QStringLiteral("Customer's Order / Ref"), txtCustOrNo, nullptr, 0);
    h->addWidget(txtCustOrNo, r, 1, 1, 4);
    ++r;
    addRow(QStringLiteral("Order Date"), txtOrDate, nullptr, 0);
    h->addWidget(Label10, r, 3);
    h->addWidget(txtCustShipID, r, 4);
    ++r;
    addRow(QStringLiteral("Invoice Number"), txtInvoiceNo, Command21, 0);
    h->addWidget(Label22, r, 3);
    h->addWidget(txtInvoiceDate, r, 4);
    h->setRowStretch(r + 1, 1);
    row->addWidget(order, 3);
    return header;
}

QWidget* frmCustOrder::BuildTotals(QWidget* parent) {
    auto* totals = new QGroupBox(parent);
    totals->setObjectName(QStringLiteral("frmTotals"));
    auto* g = new QGridLayout(totals);
    txtNet = makeBox(totals, "txtNet", true);
    txtDeliveryText = makeLabelBox(totals, "txtDeliveryText");
    txtDelivery = makeBox(totals, "txtDelivery");
    Command10 = makeButton(totals, "Command10", QStringLiteral("..."));
    Command10->setToolTip(QStringLiteral("Edit the default delivery charges"));
    txtVatText = makeLabelBox(totals, "txtVatText");
    Text3 = makeLabelBox(totals, "Text3");
    Text3->setMaximumWidth(60);
    txtVat = makeBox(totals, "txtVat", true);
    Command11 = makeButton(totals, "Command11", QStringLiteral("..."));
    Command11->setToolTip(QStringLiteral("Edit the sales tax name and rate"));
    txtTotalText = makeLabelBox(totals, "txtTotalText");
    txtTotal = makeBox(totals, "txtTotal", true);
    QFont bold = txtTotal->font();
    bold.setBold(true);
    txtTotal->setFont(bold);
    txtTotalText->setFont(bold);
    for (QLineEdit* box : {txtNet, txtDelivery, txtVat, txtTotal}) {
        box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        box->setMaximumWidth(110);
    }
    for (QPushButton* b : {Command10, Command11})
        b->setFixedWidth(28);
    auto* netLabel = new QLabel(QStringLiteral("Net"), totals);
    netLabel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    g->addWidget(netLabel, 0, 0, 1, 2);
    g->addWidget(txtNet, 0, 2);
    g->addWidget(txtDeliveryText, 1, 0, 1, 2);
    g->addWidget(txtDelivery, 1, 2);
    g->addWidget(Command10, 1, 3);
    g->addWidget(txtVatText, 2, 0);
    g->addWidget(Text3, 2, 1);
    g->addWidget(txtVat, 2, 2);
    g->addWidget(Command11, 2, 3);
    g->addWidget(txtTotalText, 3, 0, 1, 2);
    g->addWidget(txtTotal, 3, 2);
    totals->setMinimumWidth(330);
    return totals;
}

QWidget* frmCustOrder::BuildActions(QWidget* parent) {
    auto* actions = new QWidget(parent);
    actions->setObjectName(QStringLiteral("frmActions"));
    auto* a = new QHBoxLayout(actions);
    a->setContentsMargins(0, 0, 0, 0);
    Command4 = makeButton(actions, "Command4", QStringLiteral("Add Items to the Order/Invoice"));
    Command2 = makeButton(actions, "Command2", QStringLiteral("Save and Print [Invoice Later]"));
    Command7 = makeHelpButton(actions, "Command7");
    cmdInvoice =
        makeButton(actions, "cmdInvoice", QStringLiteral("Save the Order Deliver and Invoice Now"));
    Command12 = makeHelpButton(actions, "Command12");
    Command19 = makeButton(actions, "Command19", QStringLiteral("Save / Print"));
    Command20 = makeHelpButton(actions, "Command20");
    Command6 = makeButton(actions, "Command6", QStringLiteral("Close"));
    for (QWidget* w : {static_cast<QWidget*>(Command4), static_cast<QWidget*>(Command2),
                       static_cast<QWidget*>(Command7), static_cast<QWidget*>(cmdInvoice),
                       static_cast<QWidget*>(Command12), static_cast<QWidget*>(Command19),
                       static_cast<QWidget*>(Command20)})
        a->addWidget(w);
    a->addStretch(1);
    a->addWidget(Command6);
    return actions;
}

void frmCustOrder::BuildPanels() {
    FrameInfo = new QFrame(this);
    FrameInfo->setObjectName(QStringLiteral("FrameInfo"));
    FrameInfo->setFrameShape(QFrame::Box);
    FrameInfo->setAutoFillBackground(true);
    FrameInfo->setStyleSheet(
        QStringLiteral("#FrameInfo { background: #fffbd6; border: 1px solid #c9c08a; }"));
    auto* infoLay = new QVBoxLayout(FrameInfo);
    lblInfo = new QLabel(FrameInfo);
    lblInfo->setObjectName(QStringLiteral("lblInfo"));
    lblInfo->setWordWrap(true);
    QFont small = lblInfo->font();
    small.setPointSizeF(8);
    lblInfo->setFont(small);
    lblInfo->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Command16 = makeButton(FrameInfo, "Command16", QStringLiteral("Close"));
    infoLay->addWidget(lblInfo, 1);
    infoLay->addWidget(Command16, 0, Qt::AlignRight);
    FrameInfo->hide();

    frmBParts = new ::frmBParts(this);
    frmSalesTax = new ::frmSalesTax(this);
    frmEditDelCharges = new ::frmEditDelCharges(this);
    frmPrinter = new ::frmPrinter(this);
}

QList<frmCustOrder::SheetBox> frmCustOrder::SheetBoxes() const {
    return {
        {txtCustID, &CustOrderSheet::custID},
        {txtCustName, &CustOrderSheet::custName},
        {txtCustAdd1, &CustOrderSheet::custAdd1},
        {txtCustAdd2, &CustOrderSheet::custAdd2},
        {txtCustAdd3, &CustOrderSheet::custAdd3},
        {txtCustAdd4, &CustOrderSheet::custAdd4},
        {txtCustPO, &CustOrderSheet::custPO},
        {txtCustBasketID, &CustOrderSheet::custBasketID},
        {txtCustOrNo, &CustOrderSheet::custOrNo},
        {txtOrDate, &CustOrderSheet::orDate},
        {txtDiscount, &CustOrderSheet::discount, &SetDiscount},
        {txtInvoiceNo, &CustOrderSheet::invoiceNo},
        {txtInvoiceDate, &CustOrderSheet::invoiceDate},
        {txtCustShipID, &CustOrderSheet::custShipID},
        {txtNet, &CustOrderSheet::net},
        {txtDelivery, &CustOrderSheet::delivery, &SetDelivery},
        {txtVat, &CustOrderSheet::vat, &SetVat},
        {txtTotal, &CustOrderSheet::total},
        {txtDeliveryText, &CustOrderSheet::deliveryText},
        {txtVatText, &CustOrderSheet::vatText},
        {txtTotalText, &CustOrderSheet::totalText},
        {Text3, &CustOrderSheet::text3},
        {frmSalesTax->txtTax1Name, &CustOrderSheet::tax1Name},
        {frmSalesTax->txtTax1Rate, &CustOrderSheet::tax1Rate},
        {frmEditDelCharges->txtShipChgsName, &CustOrderSheet::shipChgsName},
        {frmEditDelCharges->txtDeliveryCost, &CustOrderSheet::deliveryCost},
    };
}

// Every box writes what the user types into the sheet at once; a box whose change the order
// reacts to runs that reaction and the window shows the sheet again.
void frmCustOrder::BindBoxes() {
    for (const SheetBox& b : SheetBoxes()) {
        connect(b.box, &QLineEdit::textChanged, this, [this, b](const QString& text) {
            if (mShowing)
                return;
            if (!b.reacts) {
                mSheet.*b.text = text;
                return;
            }
            b.reacts(mSheet, text);
            ShowSheet();
        });
    }
    connect(frmEditDelCharges->chkTaxOnDel, &QCheckBox::toggled, this, [this](bool on) {
        if (!mShowing)
            mSheet.taxOnDel = on; // counts at the next recalculation
    });
    connect(txtNotes, &QPlainTextEdit::textChanged, this, [this] {
        if (!mShowing)
            mSheet.notes = txtNotes->toPlainText();
    });

    // Entry rules
    AttachNoApostropheRules(txtCustOrNo, true);
    AttachNoApostropheRules(txtNotes, true);
    AttachDigitRules(txtCustBasketID, QStringLiteral("0000"));
    AttachDigitRules(txtInvoiceNo, QStringLiteral("0000"));
    AttachDigitRules(txtDiscount);
    AttachPlainNumberRules(txtDelivery, QStringLiteral("0.00"));
    txtDiscount->installEventFilter(this);

    // Buttons
    connect(cboCustlist, &QComboBox::currentIndexChanged, this, [this] { cboCustlist_Click(); });
    connect(Command8, &QPushButton::clicked, this, [this] { Command8_Click(); });
    connect(Command4, &QPushButton::clicked, this, [this] { Command4_Click(); });
    connect(Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(cmdInvoice, &QPushButton::clicked, this, [this] { cmdInvoice_Click(); });
    connect(Command19, &QPushButton::clicked, this, [this] { Command19_Click(); });
    connect(Command6, &QPushButton::clicked, this, [this] { reject(); });
    connect(Command15, &QPushButton::clicked, this, [this] { ShowInfoFrame(); });
    connect(Command17, &QPushButton::clicked, this, [this] { ShowInfoFrame(); });
    connect(Command16, &QPushButton::clicked, this, [this] { tmrInfo_Timer(); });
    for (QPushButton* b : {Command7, Command12, Command18, Command20, Command21}) {
        const QString name = b->objectName();
        connect(b, &QPushButton::clicked, this,
                [this, name] { ShowCustOrderHelp(name, mSheet.mode); });
    }
    connect(Command10, &QPushButton::clicked, this, [this] { ShowPanel(frmEditDelCharges); });
    connect(Command11, &QPushButton::clicked, this, [this] { ShowPanel(frmSalesTax); });
    connect(Command14, &QPushButton::clicked, this, [this] { SaveNotesDefault(mSheet.notes); });
    connect(frmSalesTax->Command13, &QPushButton::clicked, this, [this] {
        SaveSalesTaxDefaults(mSheet);
        frmSalesTax->hide();
        ShowSheet();
    });
    connect(frmEditDelCharges->cmdSaveDelCharges, &QPushButton::clicked, this, [this] {
        if (SaveDeliveryDefaults(mSheet))
            frmEditDelCharges->hide();
        ShowSheet();
    });
    connect(frmEditDelCharges->cmdIgnoreDelCharges, &QPushButton::clicked, frmEditDelCharges,
            &QWidget::hide);

    connect(frmBParts, &frmBParts::SearchRequested, this,
            [this] { frmBParts->LoadPartsForOrder(mSheet.discount); });
    connect(frmBParts, &frmBParts::CloseRequested, this, [this] { Command3_Click(); });
    connect(frmBParts, &frmBParts::PartChosen, this,
            [this](int record) { gdxAllParts_Activate(record); });
    connect(frmPrinter, &frmPrinter::PrintRequested, this,
            [this](const QString& kind) { PrintSalesDocument(kind); });
    connect(frmPrinter, &frmPrinter::PickHelpRequested, this,
            [this] { ShowCustOrderHelp(QStringLiteral("btnPickHelp"), mSheet.mode); });
    connect(frmPrinter, &frmPrinter::PrinterChosen, this,
            [this](const QString& name) { mSelectedPrinter = name; });
}

// ---------------------------------------------------------------------------------------------
// Loading and showing

void frmCustOrder::Form_Load() {
    LoadCustomerCombo();
    frmBParts->FillCategories();
    FormLoadSheet(mSheet, gCustOrderMode, gCustOrderID);
    ApplyModeLayout();
    ShowSheet();
}

void frmCustOrder::ApplyModeLayout() {
    Command17->hide();
    HideActionButtons();
    for (QPushButton* b : ActionButtons())
        b->setEnabled(true);
    const QList<QWidget*> delivery{txtInvoiceDate, Label22, txtCustShipID, Label10};
    for (QWidget* w : delivery)
        w->hide();
    txtInvoiceNo->setEnabled(false);
    txtCustBasketID->setEnabled(false);
    setWindowTitle(QStringLiteral("Customer Order"));

    const quint8 mode = mSheet.mode;
    if (mode < OrderMode::NewOrder || mode > OrderMode::SavedInvoice)
        return;
    const bool order = mode == OrderMode::NewOrder || mode == OrderMode::SavedOrder;
    setWindowTitle(CustOrderCaption(mode));
    txtCustBasketID->setEnabled(mode == OrderMode::NewOrder);
    txtInvoiceNo->setEnabled(mode == OrderMode::NewOrder || mode == OrderMode::InvoiceOrder);
    for (QWidget* w : delivery)
        w->setVisible(!order);
    for (QPushButton* b : {Command4, Command2, Command7})
        b->setVisible(order);
    cmdInvoice->setVisible(mode == OrderMode::NewOrder);
    Command12->setVisible(mode == OrderMode::NewOrder);
    Command19->setVisible(!order);
    Command20->setVisible(!order);
    lblTip->setText(CustOrderTip(mode));
    lblInfo->setText(CustOrderInfo(mode));
    ShowPanel(FrameInfo);
    tmrInfo->start();
}

void frmCustOrder::ShowSheet() {
    mShowing = true;
    for (const SheetBox& b : SheetBoxes())
        setText(b.box, mSheet.*b.text);
    frmEditDelCharges->chkTaxOnDel->setChecked(mSheet.taxOnDel);
    if (txtNotes->toPlainText() != mSheet.notes)
        txtNotes->setPlainText(mSheet.notes);

    // The customer list shows the sheet's customer; a name the list does not hold (a "NON"
    // customer of a saved order) still reads in the box.
    const bool loading = mLoading;
    mLoading = true;
    const int index =
        mSheet.custListText.isEmpty() ? -1 : cboCustlist->findText(mSheet.custListText);
    cboCustlist->setCurrentIndex(index);
    cboCustlist->setPlaceholderText(index < 0 && !mSheet.custListText.isEmpty()
                                        ? mSheet.custListText
                                        : QStringLiteral("Select Customer"));
    mLoading = loading;

    Rows->ShowRows();
    mShowing = false;
}

// ---------------------------------------------------------------------------------------------
// Customer

void frmCustOrder::LoadCustomerCombo() {
    mLoading = true;
    cboCustlist->clear();
    cboCustlist->addItems(::LoadCustomerCombo());
    // Qt selects the first entry of a filled list: with it selected, choosing "Create NEW
    // Customer" would change nothing and open nothing.
    cboCustlist->setCurrentIndex(-1);
    mLoading = false;
}

void frmCustOrder::cboCustlist_Click() {
    if (mLoading)
        return;
    if (cboCustlist->currentIndex() < 0) {
        mSheet.custBasketID = QStringLiteral("0000");
        ShowSheet();
        return;
    }
    mSheet.custListText = cboCustlist->currentText();
    if (mSheet.custListText == QLatin1String(kCreateNewCustomer)) {
        gContactType = ContactType::Customer;
        gContactID = 0;
        frmEditContact::ShowModal(this);
        LoadCustomerCombo();
        mSheet.custListText.clear();
    } else if (Val(mSheet.custBasketID) == 0) {
        mSheet.custBasketID = Format(NextCustBasketID(), QStringLiteral("0000"));
    }
    ShowCustomerDetails(mSheet, mSheet.custListText);
    ShowSheet();
}

void frmCustOrder::Command8_Click() {
    gContactType = ContactType::Customer;
    gContactID = qint32(Val(mSheet.custID));
    frmEditContact::ShowModal(this);
}

// ---------------------------------------------------------------------------------------------
// Rows

void frmCustOrder::Command4_Click() {
    frmBParts->Command5_Click();
    frmBParts->LoadPartsForOrder(mSheet.discount);
    ShowPanel(frmBParts);
    mSheet.recalcEnabled = false;
}

void frmCustOrder::Command3_Click() {
    mSheet.recalcEnabled = true;
    RecalcOrderTotals(mSheet);
    frmBParts->hide();
    ShowSheet();
}

void frmCustOrder::gdxAllParts_Activate(int record) {
    if (!AddPartToOrder(mSheet, frmBParts->mParts, record))
        return;
    // Only a new order may be invoiced from here: a saved order has its number already.
    if (mSheet.mode == OrderMode::NewOrder)
        cmdInvoice->show();
    ShowSheet();
}

// ---------------------------------------------------------------------------------------------
// Actions

void frmCustOrder::Command2_Click() {
    if (SaveOrderCommand(mSheet))
        Saved(QStringLiteral("The order was saved - Do you want to print a copy of the order ?"),
              ::frmPrinter::Documents::Order);
}

void frmCustOrder::cmdInvoice_Click() {
    if (InvoiceNewOrderCommand(mSheet))
        Saved(
            QStringLiteral("The Order/Invoice was saved - Do you want to print the invoice now ?"),
            ::frmPrinter::Documents::Invoice);
}

void frmCustOrder::Command19_Click() {
    const bool saved = SaveInvoiceCommand(mSheet);
    if (saved)
        Saved(QString(), ::frmPrinter::Documents::Invoice);
    else
        ShowSheet(); // the invoice number used, also when nothing was written
}

void frmCustOrder::Saved(const QString& printQuestion, ::frmPrinter::Documents documents) {
    ShowSheet();
    // One window saves once: what is left is printing and closing.
    HideActionButtons();
    if (!printQuestion.isEmpty() &&
        MsgBox(printQuestion, vbYesNo | vbQuestion, QStringLiteral("Print?")) != vbYes)
        return;
    frmPrinter->ShowDocumentButtons(documents);
    ShowPrinterPanel();
}

QList<QPushButton*> frmCustOrder::ActionButtons() const {
    return {Command4, Command2, Command7, Command19, Command20, cmdInvoice, Command12};
}

void frmCustOrder::HideActionButtons() {
    for (QPushButton* b : ActionButtons())
        b->hide();
}

void frmCustOrder::ShowPrinterPanel() {
    frmPrinter->ListPrinters();
    ShowPanel(frmPrinter);
}

void frmCustOrder::PrintSalesDocument(const QString& kind) {
    const SalesDocumentResult printed =
        ::PrintSalesDocument(kind, mSheet, {salesCompanyBlock(), mSelectedPrinter});
    if (printed.copies > 0)
        frmPrinter->ShowLogo(printed.logoPath);
}

// ---------------------------------------------------------------------------------------------
// Help frame and panels

void frmCustOrder::ShowInfoFrame() {
    ShowPanel(FrameInfo);
    Command17->hide();
}

void frmCustOrder::tmrInfo_Timer() {
    tmrInfo->stop();
    if (!FrameInfo->isVisible())
        return;
    const QRect start = FrameInfo->geometry();
    const int dw = qMax(1, start.width() / 20);
    const int dh = qMax(1, start.height() / 20);
    // The frame shrinks towards the button that brings it back.
    QRect r = start;
    while (r.width() > dw && r.height() > dh) {
        r.setLeft(r.left() + dw);
        r.setBottom(r.bottom() - dh);
        FrameInfo->setGeometry(r);
        Pause(12);
    }
    FrameInfo->hide();
    FrameInfo->setGeometry(start);
    Command17->show();
}

void frmCustOrder::ShowPanel(QWidget* panel) {
    PlacePanels();
    panel->show();
    panel->raise();
}

void frmCustOrder::PlacePanels() {
    const QRect rows = Rows->geometry();
    frmBParts->setGeometry(rows);
    // The help frame lies at the right of the rows, clear of the columns of a new order.
    const int infoWidth = qMin(330, rows.width() / 3);
    const QSize info(infoWidth,
                     qMin(rows.height() - 40, FrameInfo->layout()->totalHeightForWidth(infoWidth)));
    FrameInfo->setGeometry(rows.right() - info.width() - 24, rows.top() + 30, info.width(),
                           info.height());
    for (QWidget* panel :
         {static_cast<QWidget*>(frmSalesTax), static_cast<QWidget*>(frmEditDelCharges)}) {
        const QSize s(380, panel->heightForWidth(380) > 0 ? panel->heightForWidth(380)
                                                          : panel->sizeHint().height());
        panel->setGeometry(rows.right() - s.width() - 24, rows.bottom() - s.height() - 8, s.width(),
                           s.height());
    }
    const QSize p = frmPrinter->sizeHint();
    frmPrinter->setGeometry(rows.center().x() - p.width() / 2, rows.bottom() - p.height() - 8,
                            p.width(), p.height());
}

void frmCustOrder::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    PlacePanels();
}

bool frmCustOrder::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtDiscount && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason why = static_cast<QFocusEvent*>(event)->reason();
        if (why != Qt::ActiveWindowFocusReason && why != Qt::PopupFocusReason) {
            // Leaving the box reprices every row, prices typed by hand included.
            LeaveDiscount(mSheet);
            ShowSheet();
        }
    }
    return QDialog::eventFilter(watched, event);
}
