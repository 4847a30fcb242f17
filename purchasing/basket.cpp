#include "purchasing/basket.h"

#include "contacts/Contacts.h"
#include "contacts/frmEditContact.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/TextBoxRules.h"
#include "grids/ColumnState.h"
#include "grids/GridEX.h"
#include "purchasing/FormControls.h"
#include "purchasing/PartsPanel.h"
#include "purchasing/PrintFrame.h"
#include "purchasing/PurchaseBasket.h"
#include "purchasing/PurchaseOrder.h"
#include "purchasing/PurchaseOrderDocument.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <optional>

namespace {

// Keys of the two editable number columns: backspace, the decimal sign and the digits pass.
int QtyPriceKey(const QString&, int code) {
    if (code == 8 || code == gDecimalSep.unicode() || (code >= '0' && code <= '9'))
        return code;
    return 0;
}

} // namespace

basket::basket(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("basket"));
    setWindowTitle(QStringLiteral("Purchasing"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowMaximizeButtonHint, true);

    // --- the supplier and the order's numbers
    cboSupplist = new QComboBox(this);
    cboSupplist->setObjectName(QStringLiteral("cboSupplist"));
    cboSupplist->setMinimumContentsLength(28);
    Command8 = NamedButton(QStringLiteral("Command8"), QStringLiteral("Supplier Details..."), this);
    Command8->setToolTip(QStringLiteral("Open the selected supplier's address record"));
    txtPOID = NamedBox(QStringLiteral("txtPOID"), this);
    txtPOID->setMaximumWidth(90);
    txtPOID->setAlignment(Qt::AlignRight);
    AttachDigitRules(txtPOID);
    Command1 = NamedButton(QStringLiteral("Command1"), QStringLiteral("?"), this);
    Command1->setFixedWidth(28);
    Command1->setToolTip(QStringLiteral("About the order number"));
    txtBasketPONo = NamedBox(QStringLiteral("txtBasketPONo"), this);
    AttachTextRules(txtBasketPONo);

    auto* top = new QGridLayout;
    auto* lblSup = new QLabel(QStringLiteral("Supplier"), this);
    lblSup->setBuddy(cboSupplist);
    auto* lblPOID = new QLabel(QStringLiteral("Our Order ID"), this);
    lblPOID->setBuddy(txtPOID);
    auto* lblPONo = new QLabel(QStringLiteral("Reference No (If required)"), this);
    lblPONo->setBuddy(txtBasketPONo);
    top->addWidget(lblSup, 0, 0);
    top->addWidget(lblPOID, 0, 2);
    top->addWidget(lblPONo, 0, 4);
    auto* supRow = new QHBoxLayout;
    supRow->addWidget(cboSupplist, 1);
    supRow->addWidget(Command8);
    top->addLayout(supRow, 1, 0);
    top->addWidget(txtPOID, 1, 2);
    top->addWidget(Command1, 1, 3);
    top->addWidget(txtBasketPONo, 1, 4);
    top->setColumnStretch(0, 3);
    top->setColumnMinimumWidth(1, 16);
    top->setColumnStretch(4, 2);

    // --- the basket list
    gdxBList = new GridEX(QStringLiteral("gdxBList"), this);
    gdxBList->SetGroupByBoxVisible(false);
    gdxBList->SetAllowEdit(true);
    gdxBList->SetCommitMode(GridCommit::OnCellEdit);
    gdxBList->SetCellReader([this](int record, int column) -> QVariant {
        if (BasketRowCount < 1 || record > BasketRowCount)
            return {};
        if (column == BasketCol::Remove)
            return false;
        if (column == BasketCol::ReqQty)
            return BasketCellText(BasketRows(column, record));
        return BasketRows(column, record);
    });
    gdxBList->SetRowCommitHandler([this](int record, GridRowValues& values, bool& cancel) {
        gdxBList_RowCommit(record, values.Values(), cancel);
    });
    BuildBasketColumns();

    // --- the supplier's parts
    auto* parts = new PartsPanel({QStringLiteral("frmBParts"), QStringLiteral("txtBSupItemFilter"),
                                  QStringLiteral("Command5"), QStringLiteral("Command3"),
                                  QStringLiteral("gdxBParts")},
                                 QStringLiteral("Inventory from this supplier"),
                                 QStringLiteral("Double-click a part to add it to the basket"),
                                 PartRows, PartRowCount, this);
    frmBParts = parts;
    txtBSupItemFilter = parts->Filter;
    Command5 = parts->ClearButton;
    Command3 = parts->HideButton;
    gdxBParts = parts->Grid;
    BuildPartColumns();

    // --- the supplier's address, kept but never shown
    frmNSSupDetails = new QGroupBox(this);
    frmNSSupDetails->setObjectName(QStringLiteral("frmNSSupDetails"));
    auto* storeLay = new QFormLayout(frmNSSupDetails);
    txtSupID = StoreBox(QStringLiteral("txtSupID"));
    txtSupName = StoreBox(QStringLiteral("txtSupName"));
    txtSupAdd1 = StoreBox(QStringLiteral("txtSupAdd1"));
    txtSupAdd2 = StoreBox(QStringLiteral("txtSupAdd2"));
    txtSupAdd3 = StoreBox(QStringLiteral("txtSupAdd3"));
    txtSupAdd4 = StoreBox(QStringLiteral("txtSupAdd4"));
    txtSupPO = StoreBox(QStringLiteral("txtSupPO"));
    txtSupContact = StoreBox(QStringLiteral("txtSupContact"));
    for (QLineEdit* b : {txtSupID, txtSupName, txtSupAdd1, txtSupAdd2, txtSupAdd3, txtSupAdd4,
                         txtSupPO, txtSupContact})
        storeLay->addRow(b);
    frmNSSupDetails->hide();

    // --- the print frame
    frmPrintOrder =
        new PrintFrame(QStringLiteral("frmPrintOrder"), QStringLiteral("Print the order"),
                       QStringLiteral("cmdPrintOK"), QStringLiteral("Print"),
                       QStringLiteral("cmdCancelPrint"), QStringLiteral("Done"), this);
    cboSelectPrinter = frmPrintOrder->cboSelectPrinter;
    cmdPrintOK = frmPrintOrder->PrintButton;
    cmdCancelPrint = frmPrintOrder->DoneButton;
    frmPrintOrder->hide();

    // --- the foot
    Text2 = NamedBox(QStringLiteral("Text2"), this);
    Text2->setReadOnly(true);
    Text2->setAlignment(Qt::AlignRight);
    Text2->setMaximumWidth(140);
    auto* lblValue = new QLabel(QStringLiteral("Order Value:"), this);
    lblValue->setBuddy(Text2);
    Command4 = NamedButton(QStringLiteral("Command4"),
                           QStringLiteral("Show Inventory from this supplier"), this);
    Command2 = NamedButton(QStringLiteral("Command2"), QStringLiteral("Order Now"), this);
    Command6_0 =
        NamedButton(QStringLiteral("Command6_0"), QStringLiteral("Close this window"), this);
    Command2->setEnabled(false);
    Command4->setEnabled(false);
    auto* foot = new QHBoxLayout;
    foot->addWidget(lblValue);
    foot->addWidget(Text2);
    foot->addStretch();
    foot->addWidget(Command4);
    foot->addWidget(Command2);
    foot->addWidget(Command6_0);

    auto* middle = new QHBoxLayout;
    middle->addWidget(gdxBList, 3);
    middle->addWidget(frmBParts, 2);

    auto* lay = new QVBoxLayout(this);
    lay->addLayout(top);
    lay->addLayout(middle, 1);
    lay->addWidget(frmNSSupDetails);
    lay->addWidget(frmPrintOrder);
    lay->addLayout(foot);
    resize(1100, 620);

    connect(cboSupplist, &QComboBox::currentIndexChanged, this, [this] { cboSupplist_Click(); });
    connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(Command3, &QPushButton::clicked, this, [this] { Command3_Click(); });
    connect(Command4, &QPushButton::clicked, this, [this] { Command4_Click(); });
    connect(Command5, &QPushButton::clicked, this, [this] { Command5_Click(); });
    connect(Command8, &QPushButton::clicked, this, [this] { Command8_Click(); });
    connect(Command6_0, &QPushButton::clicked, this, &QDialog::accept);
    connect(txtBSupItemFilter, &QLineEdit::textChanged, this, [this] { ShowSupplierParts(); });
    connect(gdxBParts, &GridEX::RowActivated, this, [this](int row) { gdxBParts_DblClick(row); });
    connect(frmPrintOrder, &PrintFrame::PrinterChosen, this,
            [](const QString& name) { gPOPrinterName = name; });
    connect(cmdPrintOK, &QPushButton::clicked, this, [this] { cmdPrintOK_Click(); });
    connect(cmdCancelPrint, &QPushButton::clicked, this, [this] { cmdCancelPrint_Click(); });
}

QLineEdit* basket::StoreBox(const QString& name) {
    QLineEdit* b = NamedBox(name, frmNSSupDetails);
    b->setReadOnly(true);
    return b;
}

void basket::Open(QWidget* parent) {
    basket window(parent);
    window.Form_Load();
    window.exec();
}

void basket::Form_Load() {
    const SupplierList list = LoadSupplierList();
    {
        // The window opens with no supplier selected.
        const QSignalBlocker block(cboSupplist);
        cboSupplist->clear();
        cboSupplist->addItems(list.names);
        cboSupplist->setCurrentIndex(-1);
    }
    SupplierIDs = list.ids;
    SupplierChosen = false;
    txtBasketPONo->clear();
    ShowNextPOID();
}

void basket::ShowNextPOID() {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    txtPOID->setText(POIDText(NextPOID(txtPOID->text())));
    QGuiApplication::restoreOverrideCursor();
}

void basket::BuildBasketColumns() {
    GridColumns& cols = gdxBList->Columns();
    cols.Clear();
    const auto right = Qt::AlignRight | Qt::AlignVCenter;
    cols.Add(QStringLiteral("PartNo"), QStringLiteral("PartNo")).SetWidth(1700);
    cols.Add(QStringLiteral("PName"), QStringLiteral("Value")).SetWidth(1400).SetVisible(false);
    cols.Add(QStringLiteral("Desc"), QStringLiteral("Description")).SetWidth(3000);
    cols.Add(QStringLiteral("PQty"), QStringLiteral("ReqQty"))
        .SetWidth(800)
        .SetAlignment(right)
        .SetEditable(true)
        .SetSortType(GridSortType::Numeric)
        .SetKeyFilter(QtyPriceKey);
    cols.Add(QStringLiteral("MOQ"), QStringLiteral("MOQ"))
        .SetWidth(700)
        .SetAlignment(right)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("DelDate"), QStringLiteral("DeliveryDate"))
        .SetWidth(1300)
        .SetKind(GridColumnKind::Date)
        .SetEditable(true);
    cols.Add(QStringLiteral("POrder"), QStringLiteral("Order"))
        .SetWidth(650)
        .SetKind(GridColumnKind::CheckBox)
        .SetEditable(true);
    cols.Add(QStringLiteral("RowID"), QStringLiteral("RowID")).SetVisible(false);
    cols.Add(QStringLiteral("StockID"), QStringLiteral("StockID")).SetVisible(false);
    cols.Add(QStringLiteral("AtPrice"), QStringLiteral("$Each"))
        .SetWidth(900)
        .SetAlignment(right)
        .SetEditable(true)
        .SetSortType(GridSortType::Numeric)
        .SetKeyFilter(QtyPriceKey);
    cols.Add(QStringLiteral("SupPNo"), QStringLiteral("SupPNo")).SetWidth(1500);
    cols.Add(QStringLiteral("Remove"), QStringLiteral("Remove"))
        .SetWidth(800)
        .SetKind(GridColumnKind::CheckBox)
        .SetEditable(true);
}

void basket::BuildPartColumns() {
    GridColumns& cols = gdxBParts->Columns();
    cols.Clear();
    const auto right = Qt::AlignRight | Qt::AlignVCenter;
    cols.Add(QStringLiteral("PartID"), QStringLiteral("PartID"))
        .SetVisible(false)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("PartNo"), QStringLiteral("PartNo")).SetWidth(1600);
    cols.Add(QStringLiteral("PName"), QStringLiteral("Value")).SetVisible(false);
    cols.Add(QStringLiteral("Cat"), QStringLiteral("Cat")).SetWidth(1000);
    cols.Add(QStringLiteral("Desc"), QStringLiteral("Description")).SetWidth(2600);
    cols.Add(QStringLiteral("Price"), QStringLiteral("Each"))
        .SetWidth(900)
        .SetAlignment(right)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("MOQ"), QStringLiteral("MOQ"))
        .SetWidth(600)
        .SetAlignment(right)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("SupPNo"), QStringLiteral("Supplier PNo")).SetWidth(1400);
}

void basket::cboSupplist_Click() {
    frmNSSupDetails->hide();
    const int index = cboSupplist->currentIndex();
    if (index < 0) {
        SupplierChosen = false;
        return;
    }
    const qint32 id = SupplierIDs.value(index);
    txtSupID->setText(QString::number(id));
    gNonStockSupplier = false;
    // The supplier's address record ("No Supplier", AddID 0, has none to read).
    ContactEntry d;
    d.contactType = ContactType::Vendor;
    d.contactId = id;
    LoadContact(d);
    txtSupName->setText(d.coName);
    txtSupAdd1->setText(d.add1);
    txtSupAdd2->setText(d.add2);
    txtSupAdd3->setText(d.add3);
    txtSupAdd4->setText(d.add4);
    txtSupPO->setText(d.pCode);
    txtSupContact->setText(d.contact1);

    SupplierChosen = true;
    RefreshCurrentBasket();
    Command2->setEnabled(true);
    Command4->setEnabled(true);
    ShowNextPOID();
}

void basket::RefreshCurrentBasket() {
    std::optional<BasketLoad> load =
        ::RefreshCurrentBasket(cboSupplist->currentIndex(), SupplierIDs);
    if (!load)
        return;
    // The order value stays as it was until the next edit of a row.
    BuildBasketColumns();
    BasketRows = std::move(load->rows);
    BasketRowCount = load->rowCount;
    ReloadGrid(*gdxBList, BasketRowCount);
}

void basket::gdxBList_RowCommit(int record, const QVector<QVariant>& values, bool& cancel) {
    switch (CommitBasketRow(BasketRows, BasketRowCount, record, values)) {
    case BasketCommit::Removed:
        RefreshCurrentBasket();
        return;
    case BasketCommit::Written:
        RecalcOrderValue();
        return;
    case BasketCommit::NoRows:
        cancel = true;
        return;
    }
}

void basket::RecalcOrderValue() {
    Text2->setText(::RecalcOrderValue(BasketRows, BasketRowCount));
}

void basket::Command1_Click() {
    ShowOrderNumberHelp();
}

void basket::Command4_Click() {
    if (MayShowSupplierParts())
        ShowSupplierParts();
}

void basket::ShowSupplierParts() {
    BasketLoad load = ::ShowSupplierParts(gBasketSupplierID, txtBSupItemFilter->text());
    BuildPartColumns();
    PartRows = std::move(load.rows);
    PartRowCount = load.rowCount;
    ReloadGrid(*gdxBParts, PartRowCount);
    gdxBParts->SortBy(QStringLiteral("PartID"), Qt::AscendingOrder);
    frmBParts->show();
}

void basket::gdxBParts_DblClick(int row) {
    if (row <= 0)
        return;
    const int record = gdxBParts->RecordIndex(row);
    if (record < 1 || record > PartRowCount)
        return;
    AddPartToBasket(qint32(PartRows(PartCol::ItemID, record).toLongLong()));
    RefreshCurrentBasket();
}

void basket::Command5_Click() {
    txtBSupItemFilter->clear();
}

void basket::Command3_Click() {
    frmBParts->hide();
}

void basket::Command8_Click() {
    gContactType = ContactType::Vendor;
    gContactID = qint32(Val(txtSupID->text()));
    frmEditContact::ShowModal(this);
}

void basket::Command2_Click() {
    // An edit still open in the list is committed first, as leaving the grid does.
    gdxBList->Update();
    OrderNowInput in;
    in.rows = &BasketRows;
    in.rowCount = BasketRowCount;
    in.supplierChosen = SupplierChosen;
    in.supplierIndex = cboSupplist->currentIndex();
    in.supplierIDs = SupplierIDs;
    in.poidText = txtPOID->text();
    in.reference = txtBasketPONo->text();
    const OrderNowResult result = PlacePurchaseOrder(in);
    txtPOID->setText(result.poidText);
    if (result.outcome != OrderNowResult::Placed)
        return;
    if (result.print) {
        ShowPrintFrame();
    } else {
        txtBasketPONo->clear();
        cboSupplist_Click();
    }
}

void basket::ShowPrintFrame() {
    cmdPrintOK->setEnabled(false);
    frmPrintOrder->show();
    Command2->setEnabled(false);
    Command4->setEnabled(false);
    frmPrintOrder->ListPrinters();
}

void basket::cmdPrintOK_Click() {
    if (PrintPurchaseOrder(qint32(Val(txtPOID->text())), false) == kPODocumentPrinted)
        MsgBox(QStringLiteral("Please check that your printout is correct and reprint if "
                              "necessary"),
               vbInformation, QStringLiteral("Printing Order"));
}

void basket::cmdCancelPrint_Click() {
    frmPrintOrder->hide();
    cboSupplist_Click();
    txtBasketPONo->clear();
}
