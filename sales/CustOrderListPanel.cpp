#include "sales/CustOrderListPanel.h"

#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "grids/ColumnState.h"
#include "grids/GridEX.h"
#include "sales/CustOrder.h"
#include "sales/SalesLists.h"
#include "sales/frmCustOrder.h"

#include <QApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {
QLabel* makeLinkLabel(QWidget* parent, const char* name, const char* caption) {
    auto* label = new QLabel(QString::fromLatin1(caption), parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setCursor(Qt::PointingHandCursor);
    label->setStyleSheet(QStringLiteral("QLabel { color: #0b3d91; text-decoration: underline; "
                                        "padding: 3px 6px; } QLabel:hover { background: "
                                        "#dde6f5; }"));
    return label;
}
} // namespace

CustOrderListPanel::CustOrderListPanel(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("CustOrderListPanel"));
    auto* lay = new QVBoxLayout(this);
    lay->setContentsMargins(4, 4, 4, 4);
    auto* options = new QHBoxLayout;
    optCustORPending = new QRadioButton(QStringLiteral("Current and Pending"), this);
    optCustORPending->setObjectName(QStringLiteral("optCustORPending"));
    optCustORCompleted = new QRadioButton(QStringLiteral("Completed."), this);
    optCustORCompleted->setObjectName(QStringLiteral("optCustORCompleted"));
    options->addWidget(optCustORPending);
    options->addWidget(optCustORCompleted);
    options->addStretch(1);
    lay->addLayout(options);

    gdxCustOrdersList = new GridEX(QStringLiteral("gdxCustOrdersList"), this);
    gdxCustOrdersList->SetAllowEdit(false);
    gdxCustOrdersList->SetAlternatingRowColors(true);
    gdxCustOrdersList->SetCellReader([this](int record, int column) -> QVariant {
        return mRowCount == 0 ? QVariant() : mRows(column, record);
    });
    lay->addWidget(gdxCustOrdersList, 1);

    // The small pop-up of an order row.
    Frame2 = new QFrame(this);
    Frame2->setObjectName(QStringLiteral("Frame2"));
    Frame2->setFrameShape(QFrame::Box);
    Frame2->setAutoFillBackground(true);
    auto* popup = new QVBoxLayout(Frame2);
    popup->setContentsMargins(2, 2, 2, 2);
    popup->setSpacing(0);
    Label5 = makeLinkLabel(Frame2, "Label5", "View/Edit this Order");
    Label9 = makeLinkLabel(Frame2, "Label9", "Process a Delivery / Invoice for this Order");
    // Holds the focus while the pop-up shows: when the focus goes elsewhere, the pop-up goes.
    Command13 = new QPushButton(Frame2);
    Command13->setObjectName(QStringLiteral("Command13"));
    Command13->setFixedSize(0, 0);
    Command13->setFlat(true);
    popup->addWidget(Label5);
    popup->addWidget(Label9);
    popup->addWidget(Command13);
    Frame2->hide();
    for (QObject* o : {static_cast<QObject*>(Label5), static_cast<QObject*>(Label9),
                       static_cast<QObject*>(Command13)})
        o->installEventFilter(this);

    connect(optCustORPending, &QRadioButton::clicked, this, [this] { ListCustomerOrders(true); });
    connect(optCustORCompleted, &QRadioButton::clicked, this,
            [this] { ListCustomerOrders(false); });
    connect(gdxCustOrdersList, &GridEX::MouseUp, this,
            [this](Qt::MouseButton, int x, int y) { gdxCustOrdersList_MouseUp(x, y); });
}

void CustOrderListPanel::ListCustomerOrders(bool pending) {
    {
        const QSignalBlocker a(optCustORPending);
        const QSignalBlocker b(optCustORCompleted);
        optCustORPending->setChecked(pending);
        optCustORCompleted->setChecked(!pending);
    }
    for (QRadioButton* o : {optCustORPending, optCustORCompleted})
        o->show();
    ShowList(::ListCustomerOrders(pending));
}

void CustOrderListPanel::ListInvoices() {
    // The options choose among orders only; the invoice list has none.
    for (QRadioButton* o : {optCustORPending, optCustORCompleted})
        o->hide();
    ShowList(::ListInvoices());
}

void CustOrderListPanel::ShowList(SalesList list) {
    Frame2->hide();
    gdxCustOrdersList->SetItemCount(0);
    mRowCount = 0;
    GridColumns& columns = gdxCustOrdersList->Columns();
    columns.Clear();
    for (const SalesListColumn& c : list.columns) {
        GridColumn& col = columns.Add(c.key, c.caption);
        col.SetWidth(c.widthTwips);
        if (c.checkBox)
            col.SetKind(GridColumnKind::CheckBox).SetAlignment(Qt::AlignCenter);
    }
    mRows = std::move(list.data);
    mRowCount = mRows.Rows();
    ReloadGrid(*gdxCustOrdersList, mRowCount);
}

void CustOrderListPanel::gdxCustOrdersList_MouseUp(int xTwips, int yTwips) {
    // A release on the headings, a group row or below the rows opens nothing.
    if (yTwips <= gdxCustOrdersList->HeaderBottomTwips())
        return;
    const QPoint px(gdxCustOrdersList->TwipsToPixels(xTwips),
                    gdxCustOrdersList->TwipsToPixels(yTwips));
    const int row = gdxCustOrdersList->RowAt(px);
    if (row <= 0 || gdxCustOrdersList->GroupRowLevel(row) != 0)
        return;
    if (gdxCustOrdersList->Row() != row)
        gdxCustOrdersList->SetRow(row);
    if (gCustOrderMode == OrderMode::SavedInvoice) {
        OpenSelectedInvoice();
        return;
    }
    Label9->setVisible(optCustORPending->isChecked());
    Frame2->adjustSize();
    const QPoint at = gdxCustOrdersList->mapTo(
        this, QPoint(px.x(), px.y() + gdxCustOrdersList->TwipsToPixels(100)));
    Frame2->move(qMin(at.x(), qMax(0, width() - Frame2->width())),
                 qMin(at.y(), qMax(0, height() - Frame2->height())));
    Frame2->show();
    Frame2->raise();
    Command13->setFocus(Qt::PopupFocusReason);
}

qint32 CustOrderListPanel::SelectedNumber() const {
    const int record = gdxCustOrdersList->RecordIndex(gdxCustOrdersList->Row());
    if (record <= 0 || record > mRowCount)
        return 0;
    return qint32(Val(mRows(1, record).toString()));
}

void CustOrderListPanel::OpenSelectedOrder(quint8 mode) {
    const qint32 order = SelectedNumber();
    if (order <= 0)
        return;
    gCustOrderID = order;
    gCustOrderMode = mode;
    Frame2->hide();
    frmCustOrder::ShowModal(window());
    ListCustomerOrders(optCustORPending->isChecked());
}

void CustOrderListPanel::Label5_Click() {
    OpenSelectedOrder(OrderMode::SavedOrder);
}

void CustOrderListPanel::Label9_Click() {
    OpenSelectedOrder(OrderMode::InvoiceOrder);
}

void CustOrderListPanel::OpenSelectedInvoice() {
    Frame2->hide();
    const qint32 invoice = SelectedNumber();
    if (invoice < 1)
        return;
    gCustInvoiceNo = invoice;
    gCustOrderMode = OrderMode::SavedInvoice;
    frmCustOrder::ShowModal(window());
    ListInvoices();
}

bool CustOrderListPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        if (watched == Label5) {
            Label5_Click();
            return true;
        }
        if (watched == Label9) {
            Label9_Click();
            return true;
        }
    } else if (watched == Command13 && event->type() == QEvent::FocusOut) {
        // Leaving the pop-up for a label of its own keeps it; anything else closes it.
        QWidget* next = QApplication::focusWidget();
        if (!next || !Frame2->isAncestorOf(next))
            Frame2->hide();
    }
    return QWidget::eventFilter(watched, event);
}
