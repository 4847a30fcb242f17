#include "purchasing/ORViewer.h"

#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/Rights.h"
#include "foundation/TextBoxRules.h"
#include "grids/ColumnState.h"
#include "grids/GridEX.h"
#include "purchasing/FormControls.h"
#include "purchasing/OrderViewer.h"
#include "purchasing/PartsPanel.h"
#include "purchasing/PrintFrame.h"
#include "purchasing/PurchaseOrderDocument.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

QRadioButton* Option(const QString& name, const QString& caption, QWidget* parent) {
    auto* o = new QRadioButton(caption, parent);
    o->setObjectName(name);
    return o;
}

const Qt::Alignment kRight = Qt::AlignRight | Qt::AlignVCenter;

} // namespace

ORViewer::ORViewer(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("ORViewer"));
    setWindowTitle(QStringLiteral("View Orders"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowMaximizeButtonHint, true);

    // --- the filters and the modes
    Frame1 = new QFrame(this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    txtFilterPO = NamedBox(QStringLiteral("txtFilterPO"), Frame1);
    txtFilterPO->setMaximumWidth(120);
    AttachTextRules(txtFilterPO, true);
    txtFilterSu = NamedBox(QStringLiteral("txtFilterSu"), Frame1);
    AttachTextRules(txtFilterSu);
    Command8 = NamedButton(QStringLiteral("Command8"), QStringLiteral("Search"), Frame1);
    Command2 = NamedButton(QStringLiteral("Command2"), QStringLiteral("Clear"), Frame1);
    Option1 = Option(QStringLiteral("Option1"), QStringLiteral("All orders"), Frame1);
    Option2 = Option(QStringLiteral("Option2"), QStringLiteral("Orders Completed"), Frame1);
    Option3 = Option(QStringLiteral("Option3"), QStringLiteral("Orders Not Completed"), Frame1);
    chkByDate = new QCheckBox(QStringLiteral("List by ETA"), Frame1);
    chkByDate->setObjectName(QStringLiteral("chkByDate"));
    auto* lblPO = new QLabel(QStringLiteral("Filter (OrderID.)"), Frame1);
    lblPO->setBuddy(txtFilterPO);
    auto* lblSu = new QLabel(QStringLiteral("Filter (Supplier)"), Frame1);
    lblSu->setBuddy(txtFilterSu);
    auto* filters = new QGridLayout(Frame1);
    filters->setContentsMargins(0, 0, 0, 0);
    filters->addWidget(lblPO, 0, 0);
    filters->addWidget(lblSu, 0, 1);
    filters->addWidget(txtFilterPO, 1, 0);
    filters->addWidget(txtFilterSu, 1, 1);
    filters->addWidget(Command8, 1, 2);
    filters->addWidget(Command2, 1, 3);
    auto* modes = new QHBoxLayout;
    modes->addWidget(Option1);
    modes->addWidget(Option3);
    modes->addWidget(Option2);
    modes->addSpacing(16);
    modes->addWidget(chkByDate);
    modes->addStretch();
    filters->addLayout(modes, 2, 0, 1, 5);
    filters->setColumnStretch(1, 1);
    filters->setColumnStretch(4, 2);

    // --- the order on screen
    txtPOID = NamedBox(QStringLiteral("txtPOID"), this);
    txtPORef = NamedBox(QStringLiteral("txtPORef"), this);
    txtSupplier = NamedBox(QStringLiteral("txtSupplier"), this);
    for (QLineEdit* b : {txtPOID, txtPORef, txtSupplier})
        b->setReadOnly(true);
    txtPOID->setMaximumWidth(90);
    auto* order = new QHBoxLayout;
    const QList<QPair<QString, QLineEdit*>> orderBoxes = {
        {QStringLiteral("Our Order ID"), txtPOID},
        {QStringLiteral("PO Reference"), txtPORef},
        {QStringLiteral("Supplier"), txtSupplier}};
    for (const auto& [caption, box] : orderBoxes) {
        auto* l = new QLabel(caption, this);
        l->setBuddy(box);
        order->addWidget(l);
        order->addWidget(box, box == txtPOID ? 0 : 1);
    }

    // --- the list of orders
    gdxOList = new GridEX(QStringLiteral("gdxOList"), this);
    gdxOList->SetGroupByBoxVisible(false);
    gdxOList->SetAllowEdit(true); // the hidden Chk column only
    gdxOList->SetCommitMode(GridCommit::OnCellEdit);
    gdxOList->SetAlternatingRowColors(true);
    gdxOList->SetCellReader([this](int record, int column) {
        return ArrayCell(OrderRows, OrderRowCount, record, column);
    });
    gdxOList->SetRowCommitHandler([this](int record, GridRowValues& values, bool&) {
        ConfirmOrder(OrderRows, OrderRowCount, record, values.Values());
    });
    BuildListColumns();

    // --- the rows of one order
    gdxPODetail = new GridEX(QStringLiteral("gdxPODetail"), this);
    gdxPODetail->SetGroupByBoxVisible(false);
    gdxPODetail->SetAllowEdit(true);
    gdxPODetail->SetCommitMode(GridCommit::OnCellEdit);
    gdxPODetail->SetCellReader([this](int record, int column) {
        return ArrayCell(DetailRows, DetailRowCount, record, column);
    });
    gdxPODetail->SetRowCommitHandler([this](int record, GridRowValues& values, bool&) {
        CommitDetailRow(DetailRows, DetailRowCount, record, values.Values());
        const qint64 id = DetailRows(PODetailCol::RowID, record).toLongLong();
        if (!mEditedRows.contains(id))
            mEditedRows << id;
    });
    BuildDetailColumns();
    gdxPODetail->hide();

    // --- the supplier's parts
    auto* parts = new PartsPanel({QStringLiteral("frmPOParts"), QStringLiteral("txtPOItemFilter"),
                                  QStringLiteral("Command3"), QStringLiteral("btnAddToOrderHide"),
                                  QStringLiteral("gdxPOParts")},
                                 QStringLiteral("Items from this supplier"),
                                 QStringLiteral("Double-click an item to add it to the order"),
                                 PartRows, PartRowCount, this);
    frmPOParts = parts;
    txtPOItemFilter = parts->Filter;
    Command3 = parts->ClearButton;
    btnAddToOrderHide = parts->HideButton;
    gdxPOParts = parts->Grid;
    BuildPartColumns();

    // --- goods received notes
    frmGrns = new QGroupBox(QStringLiteral("Goods received"), this);
    frmGrns->setObjectName(QStringLiteral("frmGrns"));
    txtGrns = new QPlainTextEdit(frmGrns);
    txtGrns->setObjectName(QStringLiteral("txtGrns"));
    txtGrns->setReadOnly(true);
    Command4 = NamedButton(QStringLiteral("Command4"), QStringLiteral("Close"), frmGrns);
    auto* grnLay = new QVBoxLayout(frmGrns);
    grnLay->addWidget(txtGrns, 1);
    grnLay->addWidget(Command4, 0, Qt::AlignRight);
    frmGrns->hide();

    // --- the row menu, over the grids
    frmRowMenu = new QFrame(this);
    frmRowMenu->setObjectName(QStringLiteral("frmRowMenu"));
    frmRowMenu->setFrameShape(QFrame::Box);
    frmRowMenu->setAutoFillBackground(true);
    btnViewPODetails = NamedButton(QStringLiteral("btnViewPODetails"),
                                   QStringLiteral("View Order Details"), frmRowMenu);
    btnDeleteRow =
        NamedButton(QStringLiteral("btnDeleteRow"), QStringLiteral("Delete"), frmRowMenu);
    btnChase = NamedButton(QStringLiteral("btnChase"), QStringLiteral("Chase"), frmRowMenu);
    btnSendMail =
        NamedButton(QStringLiteral("btnSendMail"), QStringLiteral("Send Mail"), frmRowMenu);
    btnCloseRowMenu =
        NamedButton(QStringLiteral("btnCloseRowMenu"), QStringLiteral("Close"), frmRowMenu);
    txtOrderRowID = NamedBox(QStringLiteral("txtOrderRowID"), frmRowMenu);
    txtSuppID = NamedBox(QStringLiteral("txtSuppID"), frmRowMenu);
    txtOrderRowID->hide();
    txtSuppID->hide();
    auto* menuLay = new QVBoxLayout(frmRowMenu);
    menuLay->setContentsMargins(3, 3, 3, 3);
    menuLay->setSpacing(2);
    for (QPushButton* b : {btnViewPODetails, btnDeleteRow, btnChase, btnSendMail, btnCloseRowMenu})
        menuLay->addWidget(b);
    frmRowMenu->hide();

    // --- the print frame
    frmRePrintOrder =
        new PrintFrame(QStringLiteral("frmRePrintOrder"), QStringLiteral("Print the order"),
                       QStringLiteral("cmdRePrintOK"), QStringLiteral("Print"),
                       QStringLiteral("cmdCancelrePrint"), QStringLiteral("Done"), this);
    cboSelectPrinter = frmRePrintOrder->cboSelectPrinter;
    cmdRePrintOK = frmRePrintOrder->PrintButton;
    cmdCancelrePrint = frmRePrintOrder->DoneButton;
    frmRePrintOrder->hide();

    // --- the foot
    btnAddToOrder = NamedButton(QStringLiteral("btnAddToOrder"),
                                QStringLiteral("Add Items to this order"), this);
    cmdReprint = NamedButton(QStringLiteral("cmdReprint"), QStringLiteral("Save / Print"), this);
    cmdReprint->setToolTip(QStringLiteral("Save the changed rows, then print the order"));
    Command6_0 =
        NamedButton(QStringLiteral("Command6_0"), QStringLiteral("Back to the list"), this);
    Command5 = NamedButton(QStringLiteral("Command5"), QStringLiteral("Close"), this);
    lblRowsTip = new QLabel(QStringLiteral("Right-click a row to delete it"), this);
    lblRowsTip->setObjectName(QStringLiteral("lblRowsTip"));
    lblRowsTip->setEnabled(false);
    auto* foot = new QHBoxLayout;
    foot->addWidget(btnAddToOrder);
    foot->addWidget(cmdReprint);
    foot->addSpacing(12);
    foot->addWidget(lblRowsTip);
    foot->addStretch();
    foot->addWidget(Command6_0);
    foot->addWidget(Command5);

    auto* middle = new QHBoxLayout;
    middle->addWidget(gdxOList, 3);
    middle->addWidget(gdxPODetail, 3);
    middle->addWidget(frmPOParts, 2);
    middle->addWidget(frmGrns, 1);

    auto* lay = new QVBoxLayout(this);
    lay->addWidget(Frame1);
    lay->addLayout(order);
    lay->addLayout(middle, 1);
    lay->addWidget(frmRePrintOrder);
    lay->addLayout(foot);
    resize(1100, 640);
    ShowRowView(false);

    connect(txtFilterPO, &QLineEdit::textChanged, this, [this] {
        // The list follows the typing, unless the searches go to a server.
        if (Val(gRemoteMode) == 0)
            LoadOrderList(gOrderViewMode);
    });
    connect(Command8, &QPushButton::clicked, this, [this] { Command8_Click(); });
    connect(Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(Option1, &QRadioButton::clicked, this, [this] { Option_Click(OrderViewMode::All); });
    connect(Option2, &QRadioButton::clicked, this,
            [this] { Option_Click(OrderViewMode::Completed); });
    connect(Option3, &QRadioButton::clicked, this,
            [this] { Option_Click(OrderViewMode::NotCompleted); });
    connect(chkByDate, &QCheckBox::clicked, this, [this] { chkByDate_Click(); });
    connect(gdxOList, &GridEX::MouseUp, this,
            [this](Qt::MouseButton b, int x, int y) { gdxOList_MouseUp(b, x, y); });
    connect(gdxPODetail, &GridEX::MouseUp, this,
            [this](Qt::MouseButton b, int x, int y) { gdxPODetail_MouseUp(b, x, y); });
    connect(btnViewPODetails, &QPushButton::clicked, this, [this] { btnViewPODetails_Click(); });
    connect(btnDeleteRow, &QPushButton::clicked, this, [this] { btnDeleteRow_Click(); });
    connect(btnCloseRowMenu, &QPushButton::clicked, this, [this] { btnCloseRowMenu_Click(); });
    connect(btnAddToOrder, &QPushButton::clicked, this, [this] { btnAddToOrder_Click(); });
    connect(btnAddToOrderHide, &QPushButton::clicked, this, [this] { btnAddToOrderHide_Click(); });
    connect(Command3, &QPushButton::clicked, this, [this] { Command3_Click(); });
    connect(txtPOItemFilter, &QLineEdit::textChanged, this, [this] { ShowOrderParts(); });
    connect(gdxPOParts, &GridEX::RowActivated, this, [this](int row) { gdxPOParts_DblClick(row); });
    connect(cmdReprint, &QPushButton::clicked, this, [this] { cmdReprint_Click(); });
    connect(frmRePrintOrder, &PrintFrame::PrinterChosen, this,
            [](const QString& name) { gPOPrinterName = name; });
    connect(cmdRePrintOK, &QPushButton::clicked, this, [this] { cmdRePrintOK_Click(); });
    connect(cmdCancelrePrint, &QPushButton::clicked, this, [this] { cmdCancelrePrint_Click(); });
    connect(Command4, &QPushButton::clicked, this, [this] { Command4_Click(); });
    connect(Command6_0, &QPushButton::clicked, this, [this] { Command6_Click(0); });
    connect(Command5, &QPushButton::clicked, this, &QDialog::accept);
}

void ORViewer::Open(QWidget* parent) {
    ORViewer window(parent);
    window.Form_Load();
    window.exec();
}

void ORViewer::Form_Load() {
    frmRePrintOrder->hide();
    gOrderViewMode = OrderViewMode::NotCompleted;
    {
        const QSignalBlocker block(Option3);
        Option3->setChecked(true);
    }
    LoadOrderList(gOrderViewMode);
}

void ORViewer::BuildListColumns() {
    GridColumns& cols = gdxOList->Columns();
    cols.Clear();
    cols.Add(QStringLiteral("OrID"), QStringLiteral("OrderID"))
        .SetWidth(1000)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("OrRef"), QStringLiteral("Order Ref")).SetWidth(2000);
    cols.Add(QStringLiteral("Sup"), QStringLiteral("Supplier")).SetWidth(3000);
    cols.Add(QStringLiteral("OrDate"), QStringLiteral("OrderDate"))
        .SetWidth(1500)
        .SetSortType(GridSortType::Date);
    cols.Add(QStringLiteral("eta"), QStringLiteral("ETA"))
        .SetWidth(1500)
        .SetSortType(GridSortType::Date);
    cols.Add(QStringLiteral("Loc"), QStringLiteral("To Loc.")).SetVisible(false);
    cols.Add(QStringLiteral("SupID"), QStringLiteral("SupID")).SetVisible(false);
    cols.Add(QStringLiteral("Chk"), QStringLiteral("Checked"))
        .SetKind(GridColumnKind::CheckBox)
        .SetEditable(true)
        .SetVisible(false);
    cols.Add(QStringLiteral("NSSup"), QStringLiteral("NSSup")).SetVisible(false);
}

void ORViewer::BuildDetailColumns() {
    GridColumns& cols = gdxPODetail->Columns();
    cols.Clear();
    cols.Add(QStringLiteral("RowID"), QStringLiteral("RowID")).SetVisible(false);
    cols.Add(QStringLiteral("PNo"), QStringLiteral("PartNo")).SetWidth(1700);
    cols.Add(QStringLiteral("PName"), QStringLiteral("Value")).SetWidth(1400).SetVisible(false);
    cols.Add(QStringLiteral("Desc"), QStringLiteral("Description")).SetWidth(3000);
    cols.Add(QStringLiteral("SupPNo"), QStringLiteral("S/PNo")).SetWidth(1400);
    cols.Add(QStringLiteral("DelDate"), QStringLiteral("DelDate"))
        .SetWidth(1300)
        .SetKind(GridColumnKind::Date)
        .SetEditable(true);
    cols.Add(QStringLiteral("Chk"), QStringLiteral("Checked"))
        .SetKind(GridColumnKind::CheckBox)
        .SetEditable(true)
        .SetVisible(false);
    cols.Add(QStringLiteral("POQty"), QStringLiteral("Ordered"))
        .SetWidth(900)
        .SetAlignment(kRight)
        .SetEditable(true)
        .SetSortType(GridSortType::Numeric)
        .SetKeyFilter(NumericKey);
    cols.Add(QStringLiteral("DelQty"), QStringLiteral("Rec'vd"))
        .SetWidth(900)
        .SetAlignment(kRight)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("AtPrice"), QStringLiteral("$Each"))
        .SetWidth(1200)
        .SetAlignment(kRight)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("RowPrice"), QStringLiteral("$Total"))
        .SetWidth(1500)
        .SetAlignment(kRight)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("StockID"), QStringLiteral("StockID")).SetVisible(false);
}

void ORViewer::BuildPartColumns() {
    GridColumns& cols = gdxPOParts->Columns();
    cols.Clear();
    cols.Add(QStringLiteral("PartID"), QStringLiteral("PartID"))
        .SetVisible(false)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("PartNo"), QStringLiteral("PartNo")).SetWidth(1600);
    cols.Add(QStringLiteral("PName"), QStringLiteral("Value")).SetVisible(false);
    cols.Add(QStringLiteral("Cat"), QStringLiteral("Cat")).SetWidth(900);
    cols.Add(QStringLiteral("Desc"), QStringLiteral("Description")).SetWidth(2400);
    cols.Add(QStringLiteral("Price"), QStringLiteral("Price"))
        .SetWidth(900)
        .SetAlignment(kRight)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("SupPNo"), QStringLiteral("Supplier PNo")).SetWidth(1400);
}

// The controls of one view: the filters and the list, or the rows with their buttons.
void ORViewer::ShowRowView(bool rows) {
    Frame1->setVisible(!rows);
    gdxOList->setVisible(!rows);
    gdxPODetail->setVisible(rows);
    btnAddToOrder->setVisible(rows);
    cmdReprint->setVisible(rows);
    Command6_0->setVisible(rows);
    lblRowsTip->setVisible(rows);
    btnDeleteRow->setText(rows ? QStringLiteral("Delete this Row")
                               : QStringLiteral("Delete this Order"));
}

void ORViewer::LoadOrderList(quint8 mode) {
    const QString po = txtFilterPO->text().trimmed();
    const QString su = txtFilterSu->text().trimmed();
    bool stopped = false;
    OrderArray load = ::LoadOrderList(mode, po, su, &stopped);
    if (stopped)
        return;
    Frame1->show();
    frmRowMenu->hide();
    txtSupplier->clear();
    txtPOID->clear();
    txtPORef->clear();
    btnViewPODetails->setEnabled(true);

    gdxOList->SetItemCount(0);
    BuildListColumns();
    OrderRows = std::move(load.rows);
    OrderRowCount = load.rowCount;
    ShowRowView(false);
    ReloadGrid(*gdxOList, OrderRowCount);
    if (!chkByDate->isChecked()) {
        gdxOList->Columns()(QStringLiteral("Sup")).SetVisible(false);
        gdxOList->AddGroup(QStringLiteral("Sup"));
        gdxOList->ExpandAll();
    } else {
        gdxOList->ClearGroups();
        gdxOList->SortBy(QStringLiteral("eta"), Qt::AscendingOrder);
    }
}

void ORViewer::ReloadList() {
    LoadOrderList(gOrderViewMode);
}

void ORViewer::Command8_Click() {
    if (RefuseEmptyRemoteSearch(txtFilterPO->text(), txtFilterSu->text()))
        return;
    {
        // Trimming the order filter is no new typing: it does not reload by itself.
        const QSignalBlocker block(txtFilterPO);
        txtFilterPO->setText(txtFilterPO->text().trimmed());
    }
    txtFilterSu->setText(txtFilterSu->text().trimmed());
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    LoadOrderList(gOrderViewMode);
    QGuiApplication::restoreOverrideCursor();
}

void ORViewer::Command2_Click() {
    // Both boxes are emptied before the list follows, so that it never shows a list filtered
    // by a supplier box that reads empty.
    {
        const QSignalBlocker block(txtFilterPO);
        txtFilterPO->clear();
    }
    txtFilterSu->clear();
    txtFilterPO->setFocus();
    if (Val(gRemoteMode) == 0)
        LoadOrderList(gOrderViewMode);
}

void ORViewer::Option_Click(quint8 mode) {
    gOrderViewMode = mode;
    LoadOrderList(mode);
}

void ORViewer::chkByDate_Click() {
    ReloadList();
}

void ORViewer::ShowRowMenu(GridEX* grid, int xTwips, int yTwips) {
    frmRowMenu->adjustSize();
    const QPoint at =
        grid->mapTo(this, QPoint(grid->TwipsToPixels(xTwips), grid->TwipsToPixels(yTwips)));
    // At the click, centred on it vertically, and inside the window.
    const int x = qBound(0, at.x(), qMax(0, width() - frmRowMenu->width()));
    const int y =
        qBound(0, at.y() - frmRowMenu->height() / 2, qMax(0, height() - frmRowMenu->height()));
    frmRowMenu->move(x, y);
    btnChase->setEnabled(false);
    btnDeleteRow->setEnabled(true);
    frmRowMenu->show();
    frmRowMenu->raise();
}

void ORViewer::gdxOList_MouseUp(Qt::MouseButton, int xTwips, int yTwips) {
    if (yTwips < gdxOList->HeaderBottomTwips())
        return;
    frmGrns->hide();
    frmRowMenu->hide();
    txtSuppID->clear();
    txtOrderRowID->clear();
    const QPoint px(gdxOList->TwipsToPixels(xTwips), gdxOList->TwipsToPixels(yTwips));
    const int row = gdxOList->RowAt(px);
    // A group line opens nothing.
    if (row <= 0 || gdxOList->GroupRowLevel(row) != 0)
        return;
    const int record = gdxOList->RecordIndex(row);
    if (record < 1 || record > OrderRowCount)
        return;
    if (gdxOList->Row() != row)
        gdxOList->SetRow(row);
    const QString id = OrderRows(OListCol::OrID, record).toString();
    txtOrderRowID->setText(id);
    btnViewPODetails->setEnabled(true);
    ShowRowMenu(gdxOList, xTwips, yTwips);
    txtSupplier->setText(OrderRows(OListCol::Sup, record).toString());
    txtPOID->setText(id);
    txtPORef->setText(OrderRows(OListCol::OrRef, record).toString());
    CurrentPOID = qint32(Val(id));
    CurrentSupplierID = qint32(OrderRows(OListCol::SupID, record).toLongLong());
}

// In the rows the menu opens on a right-button release, since a left click edits a cell: it
// carries the row's RowID for the delete.
void ORViewer::gdxPODetail_MouseUp(Qt::MouseButton button, int xTwips, int yTwips) {
    if (yTwips < gdxPODetail->HeaderBottomTwips())
        return;
    frmGrns->hide();
    frmRowMenu->hide();
    if (button != Qt::RightButton)
        return;
    txtSuppID->clear();
    txtOrderRowID->clear();
    const QPoint px(gdxPODetail->TwipsToPixels(xTwips), gdxPODetail->TwipsToPixels(yTwips));
    const int row = gdxPODetail->RowAt(px);
    const int record = row > 0 ? gdxPODetail->RecordIndex(row) : 0;
    if (record < 1 || record > DetailRowCount)
        return;
    // An edit still open in another row is committed first, as leaving the row does.
    gdxPODetail->Update();
    if (gdxPODetail->Row() != row)
        gdxPODetail->SetRow(row);
    txtOrderRowID->setText(DetailRows(PODetailCol::RowID, record).toString());
    ShowRowMenu(gdxPODetail, xTwips, yTwips);
}

void ORViewer::btnCloseRowMenu_Click() {
    frmRowMenu->hide();
}

void ORViewer::btnViewPODetails_Click() {
    frmRowMenu->hide();
    LoadOrderDetail(qint32(Val(txtOrderRowID->text())));
}

void ORViewer::LoadOrderDetail(qint32 poid) {
    OrderArray load = ::LoadOrderDetail(poid);
    mEditedRows.clear();
    gdxPODetail->SetItemCount(0);
    BuildDetailColumns();
    DetailRows = std::move(load.rows);
    DetailRowCount = load.rowCount;
    ReloadGrid(*gdxPODetail, DetailRowCount);
    if (gOrderViewMode != OrderViewMode::Rows)
        SavedViewMode = gOrderViewMode;
    gOrderViewMode = OrderViewMode::Rows;
    btnViewPODetails->setEnabled(false);
    ShowRowView(true);
    cmdReprint->setEnabled(true);
    btnAddToOrder->setEnabled(true);
}

void ORViewer::Command6_Click(int index) {
    if (index != 0)
        return;
    // Edits not saved with cmdReprint are dropped: the rows are read again when next shown.
    gdxPODetail->CancelUpdate();
    frmRowMenu->hide();
    frmPOParts->hide();
    frmGrns->hide();
    frmRePrintOrder->hide();
    Frame1->show();
    gOrderViewMode = SavedViewMode;
    ShowRowView(false);
    btnViewPODetails->setEnabled(true);
}

void ORViewer::btnDeleteRow_Click() {
    frmRowMenu->hide();
    const qint32 id = qint32(Val(txtOrderRowID->text()));
    if (gOrderViewMode == OrderViewMode::Rows) {
        if (DeleteOrderRow(id) == DeleteOutcome::Deleted)
            ReloadOrderDetailKeepingEdits();
    } else if (DeleteOrder(id) == DeleteOutcome::Deleted) {
        ReloadList();
    }
}

void ORViewer::btnAddToOrder_Click() {
    if (!CheckRight(Right::Purchasing))
        return;
    {
        const QSignalBlocker block(txtPOItemFilter);
        txtPOItemFilter->clear();
    }
    ShowOrderParts();
}

void ORViewer::ShowOrderParts() {
    OrderArray load = ::ShowOrderParts(CurrentSupplierID, txtPOItemFilter->text());
    gdxPOParts->SetItemCount(0);
    BuildPartColumns();
    PartRows = std::move(load.rows);
    PartRowCount = load.rowCount;
    ReloadGrid(*gdxPOParts, PartRowCount);
    gdxPOParts->SortBy(QStringLiteral("PartID"), Qt::AscendingOrder);
    frmPOParts->show();
}

void ORViewer::gdxPOParts_DblClick(int row) {
    const int record = row > 0 ? gdxPOParts->RecordIndex(row) : 0;
    if (record < 1 || record > PartRowCount)
        return;
    const qint32 item = qint32(PartRows(POPartCol::PartID, record).toLongLong());
    if (AddOrderRow(item, CurrentPOID, CurrentSupplierID))
        ReloadOrderDetailKeepingEdits();
}

void ORViewer::ReloadOrderDetailKeepingEdits() {
    gdxPODetail->Update();
    const UBArray before = DetailRows;
    const int beforeCount = DetailRowCount;
    const QList<qint64> edited = mEditedRows;
    LoadOrderDetail(CurrentPOID);
    CarryDetailEdits(before, beforeCount, edited, DetailRows, DetailRowCount);
    mEditedRows = edited;
    gdxPODetail->Refresh();
}

void ORViewer::btnAddToOrderHide_Click() {
    frmPOParts->hide();
}

void ORViewer::Command3_Click() {
    txtPOItemFilter->clear();
}

void ORViewer::cmdReprint_Click() {
    // An edit still open in the rows is taken first, as leaving the row does.
    gdxPODetail->Update();
    cmdRePrintOK->setEnabled(false);
    SaveOrderInput in;
    in.rows = &DetailRows;
    in.rowCount = DetailRowCount;
    in.poidText = txtPOID->text();
    const ReprintAnswer answer = SaveAndOfferPrint(in);
    if (answer == ReprintAnswer::Refused)
        return;
    mEditedRows.clear(); // all written
    if (answer != ReprintAnswer::SavedToPrint)
        return;
    frmRePrintOrder->show();
    cmdReprint->setEnabled(false);
    btnAddToOrder->setEnabled(false);
    frmRePrintOrder->ListPrinters();
}

void ORViewer::cmdRePrintOK_Click() {
    ReprintOrder(CurrentPOID);
}

void ORViewer::cmdCancelrePrint_Click() {
    frmRePrintOrder->hide();
    cmdReprint->setEnabled(true);
    btnAddToOrder->setEnabled(true);
    ReloadOrderDetailKeepingEdits();
}

void ORViewer::Command4_Click() {
    txtGrns->clear();
    frmGrns->hide();
}
