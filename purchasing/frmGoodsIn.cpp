#include "purchasing/frmGoodsIn.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Settings.h"
#include "foundation/TextBoxRules.h"
#include "grids/ColumnState.h"
#include "grids/GridEX.h"
#include "purchasing/FormControls.h"
#include "purchasing/GrnDocument.h"
#include "purchasing/PrintFrame.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

const QString kSupName = QStringLiteral("SupName");

// A box of the order or the receipt: typed ones drop apostrophes, the others only show.
QLineEdit* Box(const QString& name, QWidget* parent, bool typed) {
    QLineEdit* e = NamedBox(name, parent);
    if (typed)
        AttachNoApostropheRules(e, true);
    else
        e->setReadOnly(true);
    return e;
}

} // namespace

frmGoodsIn::frmGoodsIn(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmGoodsIn"));
    setWindowTitle(QStringLiteral("Goods Receiving"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowMaximizeButtonHint, true);
    setWindowFlag(Qt::WindowMinimizeButtonHint, true);

    // --- the bar
    btnBar_0 = NamedButton(QStringLiteral("btnBar_0"), QStringLiteral("Quit/Close"), this);
    btnBar_2 = NamedButton(QStringLiteral("btnBar_2"), QStringLiteral("Refresh the list"), this);
    auto* bar = new QHBoxLayout;
    bar->addWidget(btnBar_0);
    bar->addWidget(btnBar_2);
    bar->addStretch();

    // --- the order and the receipt
    txtPOID = Box(QStringLiteral("txtPOID"), this, true);
    txtPONo = Box(QStringLiteral("txtPONo"), this, true);
    txtPODate = Box(QStringLiteral("txtPODate"), this, false);
    txtSupplier = Box(QStringLiteral("txtSupplier"), this, false);
    txtAdviceNo = Box(QStringLiteral("txtAdviceNo"), this, true);
    txtGRNDate = Box(QStringLiteral("txtGRNDate"), this, true);
    txtGRNno = Box(QStringLiteral("txtGRNno"), this, true);
    txtPOID->setMaximumWidth(110);
    txtPODate->setMaximumWidth(130);
    txtAdviceNo->setMaximumWidth(360);
    txtGRNDate->setMaximumWidth(130);
    auto* boxes = new QGridLayout;
    const auto place = [&](int row, int column, const QString& caption, QLineEdit* box,
                           int span = 1) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(box);
        boxes->addWidget(label, row, column);
        boxes->addWidget(box, row, column + 1, 1, span);
    };
    place(0, 0, QStringLiteral("Our Order ID"), txtPOID);
    place(0, 2, QStringLiteral("PO Reference"), txtPONo);
    place(0, 4, QStringLiteral("Date Ordered"), txtPODate);
    place(0, 6, QStringLiteral("Supplier"), txtSupplier);
    place(1, 0, QStringLiteral("Received Date"), txtGRNDate);
    place(1, 2, QStringLiteral("Transaction Ref No"), txtGRNno);
    place(1, 4, QStringLiteral("Supplier's Advice Note No."), txtAdviceNo, 3);
    boxes->setColumnStretch(3, 1);
    boxes->setColumnStretch(7, 2);

    // --- the list step's grouping
    Frame1 = new QFrame(this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    Check1 = new QCheckBox(QStringLiteral("Group By Supplier"), Frame1);
    Check1->setObjectName(QStringLiteral("Check1"));
    lblOpenHint = new QLabel(QStringLiteral("Click an order to open it"), Frame1);
    auto* frameLay = new QHBoxLayout(Frame1);
    frameLay->setContentsMargins(0, 0, 0, 0);
    frameLay->addWidget(Check1);
    frameLay->addStretch();
    frameLay->addWidget(lblOpenHint);

    // --- the grid of both steps
    gdxOList = new GridEX(QStringLiteral("gdxOList"), this);
    gdxOList->SetGroupByBoxVisible(false);
    gdxOList->SetCommitMode(GridCommit::OnCellEdit);
    gdxOList->SetCellReader([this](int record, int column) {
        return ArrayCell(GridRows.rows, GridRows.rowCount, record, column);
    });
    gdxOList->SetRowCommitHandler([this](int record, GridRowValues& values, bool& cancel) {
        // A booked row keeps its values.
        if (!DetailMode || !CommitGoodsInRow(GridRows, record, values.Values()))
            cancel = true;
    });

    // --- the print frame of the note
    frmPrintTRN =
        new PrintFrame(QStringLiteral("frmPrintTRN"), QStringLiteral("Goods received note"),
                       QStringLiteral("cmdPrintOK"), QStringLiteral("Print"),
                       QStringLiteral("cmdCancelPrint"), QStringLiteral("Done"), this);
    cboSelectPrinter = frmPrintTRN->cboSelectPrinter;
    cmdPrintOK = frmPrintTRN->PrintButton;
    cmdCancelPrint = frmPrintTRN->DoneButton;
    auto* advice = new QVBoxLayout;
    for (const QString& text :
         {QStringLiteral("If you want to print the transaction receipt, select a printer and click "
                         "the Print button below."),
          QStringLiteral("Check your document printout and print a copy if required."),
          QStringLiteral("Click 'Done' to close this print dialog window.")})
        advice->addWidget(new QLabel(text, frmPrintTRN));
    if (auto* row = qobject_cast<QBoxLayout*>(frmPrintTRN->layout())) {
        row->insertLayout(0, advice);
        row->insertSpacing(1, 16);
    }

    // --- the row step's buttons
    btnSeeCompletedRows = NamedButton(QStringLiteral("btnSeeCompletedRows"),
                                      QStringLiteral("Show Completed Rows"), this);
    btnSeeCompletedRows->setEnabled(false);
    cmdBookIn = NamedButton(QStringLiteral("cmdBookIn"), QStringLiteral("Book In"), this);
    Command1 = NamedButton(QStringLiteral("Command1"), QStringLiteral("Close"), this);
    auto* foot = new QHBoxLayout;
    foot->addWidget(btnSeeCompletedRows);
    foot->addStretch();
    foot->addWidget(cmdBookIn);
    foot->addWidget(Command1);

    auto* lay = new QVBoxLayout(this);
    lay->addLayout(bar);
    lay->addLayout(boxes);
    lay->addWidget(Frame1);
    lay->addWidget(gdxOList, 1);
    lay->addWidget(frmPrintTRN);
    lay->addLayout(foot);
    resize(1000, 600);

    connect(btnBar_0, &QPushButton::clicked, this, [this] { btnBar_Click(0); });
    connect(btnBar_2, &QPushButton::clicked, this, [this] { btnBar_Click(2); });
    connect(Check1, &QCheckBox::toggled, this, [this] { Check1_Click(); });
    connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(cmdBookIn, &QPushButton::clicked, this, [this] { cmdBookIn_Click(); });
    connect(btnSeeCompletedRows, &QPushButton::clicked, this,
            [this] { btnSeeCompletedRows_Click(); });
    connect(frmPrintTRN, &PrintFrame::PrinterChosen, this,
            [this](const QString& name) { GrnPrinterName = name; });
    connect(cmdPrintOK, &QPushButton::clicked, this, [this] { cmdPrintOK_Click(); });
    connect(cmdCancelPrint, &QPushButton::clicked, this, [this] { cmdCancelPrint_Click(); });
    // The header sorts on its click; the release that follows opens nothing.
    connect(gdxOList, &GridEX::HeaderClicked, this, [this] { mHeaderClicked = true; });
    connect(gdxOList, &GridEX::MouseUp, this,
            [this](Qt::MouseButton, int x, int y) { gdxOList_MouseUp(x, y); });
}

void frmGoodsIn::Open(QWidget* parent) {
    frmGoodsIn window(parent);
    window.Form_Load();
    window.exec();
}

void frmGoodsIn::Form_Load() {
    frmPrintTRN->hide();
    RestoreSize();
    LoadOutstandingOrders();
    ShowOrderList();
}

void frmGoodsIn::RestoreSize() {
    // A workstation that never stored a size keeps the designed one.
    QString width, height;
    GetDefault(QStringLiteral("FormSize"), width, height);
    const double w = Val(width), h = Val(height);
    if (w <= 0 || h <= 0)
        return;
    resize(qRound(w * logicalDpiX() / 1440.0), qRound(h * logicalDpiY() / 1440.0));
}

void frmGoodsIn::StoreSize() {
    if (isMinimized())
        return;
    // Like the column widths, the size is housekeeping: a settings file that can't be written
    // leaves the next opening at the old size.
    try {
        SaveDefault(QStringLiteral("FormSize"),
                    QString::number(qRound(width() * 1440.0 / logicalDpiX())),
                    QString::number(qRound(height() * 1440.0 / logicalDpiY())));
    } catch (const DbError&) {
    }
}

void frmGoodsIn::done(int result) {
    StoreSize();
    QDialog::done(result);
}

void frmGoodsIn::btnBar_Click(int index) {
    if (index == 0) {
        done(QDialog::Accepted);
    } else if (index == 2) {
        LoadOutstandingOrders();
        ShowOrderList();
    }
}

void frmGoodsIn::LoadOutstandingOrders() {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    OrderList = ::LoadOutstandingOrders();
    QGuiApplication::restoreOverrideCursor();
}

void frmGoodsIn::ShowStep(bool detail) {
    DetailMode = detail;
    Frame1->setVisible(!detail);
    lblOpenHint->setVisible(!detail);
    cmdBookIn->setEnabled(detail);
    Command1->setEnabled(detail);
    gdxOList->SetAllowEdit(detail);
    // The note belongs to the order booked: back in the list there is nothing to print.
    if (!detail)
        frmPrintTRN->hide();
}

void frmGoodsIn::ShowOrderList() {
    ShowStep(false);
    btnSeeCompletedRows->setEnabled(false);
    txtAdviceNo->clear();
    txtPONo->clear();
    OrderListShown shown = ::ShowOrderList(OrderList);
    BuildListColumns(shown.showNonStock);
    GridRows = std::move(shown.list);
    ReloadGrid(*gdxOList, GridRows.rowCount);
    // The grouping stays as ticked over a refresh of the list.
    if (Check1->isChecked())
        Check1_Click();
}

void frmGoodsIn::BuildListColumns(bool showNonStock) {
    GridColumns& cols = gdxOList->Columns();
    gdxOList->SetItemCount(0);
    cols.Clear();
    cols.Add(QStringLiteral("POID"), QStringLiteral("OrderID"))
        .SetWidth(1000)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("GRNNo"), QStringLiteral("GRN No")).SetVisible(false);
    cols.Add(QStringLiteral("GRNDate"), QStringLiteral("GRN Date")).SetVisible(false);
    cols.Add(QStringLiteral("PONo"), QStringLiteral("PO Ref")).SetWidth(2000);
    cols.Add(QStringLiteral("PODate"), QStringLiteral("PO date.")).SetWidth(1300);
    cols.Add(kSupName, QStringLiteral("Supplier")).SetWidth(3500);
    cols.Add(QStringLiteral("Loc"), QStringLiteral("Loc")).SetVisible(false);
    cols.Add(QStringLiteral("NSSup"), QStringLiteral("NonStock Info/Supplier"))
        .SetWidth(2500)
        .SetVisible(showNonStock);
}

void frmGoodsIn::BuildRowColumns() {
    GridColumns& cols = gdxOList->Columns();
    gdxOList->SetItemCount(0);
    cols.Clear();
    const auto right = Qt::AlignRight | Qt::AlignVCenter;
    cols.Add(QStringLiteral("RowID"), QStringLiteral("RowID")).SetVisible(false);
    cols.Add(QStringLiteral("PNo"), QStringLiteral("PartNo")).SetWidth(1800);
    cols.Add(QStringLiteral("PName"), QStringLiteral("Value")).SetVisible(false);
    cols.Add(QStringLiteral("Desc"), QStringLiteral("Description")).SetWidth(3200);
    cols.Add(QStringLiteral("SupPNo"), QStringLiteral("S/PNo")).SetWidth(1500);
    cols.Add(QStringLiteral("DelDate"), QStringLiteral("DelDate"))
        .SetWidth(1200)
        .SetSortType(GridSortType::Date);
    cols.Add(QStringLiteral("AtPrice"), QStringLiteral("Each"))
        .SetWidth(900)
        .SetAlignment(right)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("OQty"), QStringLiteral("Ordered"))
        .SetWidth(900)
        .SetAlignment(right)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("PQty"), QStringLiteral("OStanding"))
        .SetWidth(1000)
        .SetAlignment(right)
        .SetSortType(GridSortType::Numeric);
    cols.Add(QStringLiteral("AdvQty"), QStringLiteral("Advised"))
        .SetVisible(false)
        .SetEditable(true)
        .SetKeyFilter(ReceivedQtyKey);
    cols.Add(QStringLiteral("RXd"), QStringLiteral("Received"))
        .SetWidth(1000)
        .SetAlignment(right)
        .SetEditable(true)
        .SetSortType(GridSortType::Numeric)
        .SetKeyFilter(ReceivedQtyKey);
    cols.Add(QStringLiteral("StockID"), QStringLiteral("StockID"))
        .SetVisible(false)
        .SetEditable(true);
    cols.Add(QStringLiteral("NConf"), QStringLiteral("NonConf")).SetVisible(false);
}

void frmGoodsIn::gdxOList_MouseUp(int xTwips, int yTwips) {
    if (mHeaderClicked) {
        mHeaderClicked = false;
        return;
    }
    if (GridRows.rowCount < 1 || DetailMode)
        return;
    const int row =
        gdxOList->RowAt(QPoint(gdxOList->TwipsToPixels(xTwips), gdxOList->TwipsToPixels(yTwips)));
    if (row < 1)
        return;
    // The row as the grid shows it, through its sort; a group row opens nothing.
    const int record = gdxOList->RecordIndex(row);
    if (record < 1 || record > GridRows.rowCount)
        return;
    const UBArray& list = GridRows.rows;
    CurrentPOID = list(GinListCol::POID, record).toString();
    txtPOID->setText(CurrentPOID);
    txtPONo->setText(list(GinListCol::PONo, record).toString());
    txtPODate->setText(list(GinListCol::PODate, record).toString());
    const QString supplier = list(GinListCol::SupName, record).toString();
    txtSupplier->setText(supplier.isEmpty() ? list(GinListCol::NSSup, record).toString()
                                            : supplier);
    ShowCompleted = false;
    LoadOrderRows(qint32(Val(CurrentPOID)));
}

void frmGoodsIn::LoadOrderRows(qint32 poid) {
    btnSeeCompletedRows->setEnabled(true);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    GoodsInArray rows = ::LoadOrderRows(poid, ShowCompleted);
    QGuiApplication::restoreOverrideCursor();
    if (rows.rowCount < 1)
        return;
    BuildRowColumns();
    GridRows = std::move(rows);
    ReloadGrid(*gdxOList, GridRows.rowCount);
    gdxOList->SortBy({{QStringLiteral("PNo"), Qt::AscendingOrder},
                      {QStringLiteral("DelDate"), Qt::AscendingOrder}});
    ShowStep(true);
    btnSeeCompletedRows->setText(ShowCompleted ? QStringLiteral("Hide Completed Rows")
                                               : QStringLiteral("Show Completed Rows"));
    txtGRNno->clear();
    txtGRNDate->setText(ShowDate(Today()));
    cmdBookIn->setText(QStringLiteral("Book In"));
}

void frmGoodsIn::btnSeeCompletedRows_Click() {
    if (!ShowCompleted)
        MsgBox(QStringLiteral("This will display any rows on the order that are already "
                              "complete.") +
                   QStringLiteral("\n\n") +
                   QStringLiteral("If any completed rows exist you can click the same button to "
                                  "hide them again"),
               vbInformation, QStringLiteral("View completed rows"));
    ShowCompleted = !ShowCompleted;
    // The rows are read again: quantities typed so far are dropped.
    LoadOrderRows(qint32(Val(CurrentPOID)));
}

void frmGoodsIn::Check1_Click() {
    if (DetailMode) {
        if (Check1->isChecked())
            Check1->setChecked(false);
        return;
    }
    if (!gdxOList->Columns().Find(kSupName))
        return;
    if (Check1->isChecked()) {
        gdxOList->AddGroup(kSupName, Qt::AscendingOrder);
        gdxOList->Columns()(kSupName).SetVisible(false);
        gdxOList->ExpandAll();
    } else {
        gdxOList->Columns()(kSupName).SetVisible(true);
        gdxOList->ClearGroups();
    }
}

void frmGoodsIn::Command1_Click() {
    if (!DetailMode)
        return;
    // The list as it was loaded, without a new query: an order completed just now stays listed
    // until "Refresh the list".
    ShowOrderList();
    Check1->setChecked(false);
}

void frmGoodsIn::cmdBookIn_Click() {
    if (!DetailMode)
        return;
    // An edit still open in the grid is taken first, as leaving the grid does.
    gdxOList->Update();
    BookInInput in;
    in.rows = &GridRows;
    in.adviceNo = txtAdviceNo->text();
    in.grnNo = txtGRNno->text();
    in.poNo = txtPONo->text();
    const int status = BookIn(in);
    gdxOList->Refresh();
    if (status == kBookInDone) {
        Frame1->show();
        ShowGrnPrintFrame();
    }
}

void frmGoodsIn::ShowGrnPrintFrame() {
    frmPrintTRN->ListPrinters(GrnPrinterName);
    cmdPrintOK->setEnabled(cboSelectPrinter->currentIndex() >= 0);
    frmPrintTRN->show();
}

void frmGoodsIn::cmdPrintOK_Click() {
    GrnPrinterName = frmPrintTRN->ChosenPrinter();
    GrnInput in;
    in.grnNo = txtGRNno->text();
    in.grnDate = txtGRNDate->text();
    in.supplier = txtSupplier->text();
    in.adviceNo = txtAdviceNo->text();
    in.poid = txtPOID->text();
    in.poNo = txtPONo->text();
    in.rows = &GridRows;
    in.printerName = GrnPrinterName;
    PrintGoodsReceivedNote(in);
}

void frmGoodsIn::cmdCancelPrint_Click() {
    frmPrintTRN->hide();
    Command1_Click();
}
