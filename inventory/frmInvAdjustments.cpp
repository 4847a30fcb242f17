#include "inventory/frmInvAdjustments.h"

#include "foundation/Rights.h"
#include "foundation/TextBoxRules.h"

#include <QButtonGroup>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

frmInvAdjustments::frmInvAdjustments(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("frmInvAdjustments"));
    setFrameShape(QFrame::StyledPanel);

    auto* options = new QGroupBox(QStringLiteral("Adjustment"), this);
    options->setObjectName(QStringLiteral("fraAdjustments"));
    auto* optLay = new QVBoxLayout(options);
    mOptions = new QButtonGroup(this);
    const QStringList captions = {QStringLiteral("Issue"), QStringLiteral("Return"),
                                  QStringLiteral("Adjust (+)"), QStringLiteral("Adjust (-)")};
    for (int i = 0; i < captions.size(); ++i) {
        auto* opt = new QRadioButton(captions[i], options);
        opt->setObjectName(QStringLiteral("optAdjustments_%1").arg(i));
        mOptions->addButton(opt, i);
        optAdjustments.append(opt);
        optLay->addWidget(opt);
    }
    optLay->addStretch();

    txtAdjustmentQty = new QLineEdit(this);
    txtAdjustmentQty->setObjectName(QStringLiteral("txtAdjustmentQty"));
    txtAdjustmentQty->setAlignment(Qt::AlignRight);
    txtAdjustmentQty->setMaximumWidth(120);
    AttachNumberRules(txtAdjustmentQty, QStringLiteral("0.0#"));
    txtAdjustmentNo = new QLineEdit(this);
    txtAdjustmentNo->setObjectName(QStringLiteral("txtAdjustmentNo"));
    AttachTextRules(txtAdjustmentNo);
    txtAdjustmentText = new QLineEdit(this);
    txtAdjustmentText->setObjectName(QStringLiteral("txtAdjustmentText"));
    AttachTextRules(txtAdjustmentText);

    auto* boxes = new QGridLayout;
    auto* lblQty = new QLabel(QStringLiteral("Qty"), this);
    lblQty->setObjectName(QStringLiteral("lblAdjustmentQty"));
    lblQty->setBuddy(txtAdjustmentQty);
    auto* lblNo = new QLabel(QStringLiteral("Ref# (If required)"), this);
    lblNo->setObjectName(QStringLiteral("lblAdjustmentNo"));
    lblNo->setBuddy(txtAdjustmentNo);
    auto* lblText =
        new QLabel(QStringLiteral("Transaction detail (Notes, Authorised by... )"), this);
    lblText->setObjectName(QStringLiteral("lblAdjustmentText"));
    lblText->setBuddy(txtAdjustmentText);
    boxes->addWidget(lblQty, 0, 0);
    boxes->addWidget(txtAdjustmentQty, 1, 0);
    boxes->addWidget(lblNo, 2, 0);
    boxes->addWidget(txtAdjustmentNo, 3, 0);
    boxes->addWidget(lblText, 4, 0);
    boxes->addWidget(txtAdjustmentText, 5, 0);
    boxes->setRowStretch(6, 1);

    btnInvAdjustOK = new QPushButton(QStringLiteral("OK"), this);
    btnInvAdjustOK->setObjectName(QStringLiteral("btnInvAdjustOK"));
    Command6 = new QPushButton(QStringLiteral("Cancel"), this);
    Command6->setObjectName(QStringLiteral("Command6"));
    Command7 = new QPushButton(QStringLiteral("?"), this);
    Command7->setObjectName(QStringLiteral("Command7"));
    Command7->setToolTip(QStringLiteral("Help"));
    Command7->setFixedWidth(32);

    auto* top = new QHBoxLayout;
    top->addWidget(options);
    top->addLayout(boxes, 1);
    auto* buttonsLay = new QHBoxLayout;
    buttonsLay->addWidget(Command7);
    buttonsLay->addStretch();
    buttonsLay->addWidget(btnInvAdjustOK);
    buttonsLay->addWidget(Command6);
    auto* lay = new QVBoxLayout(this);
    lay->addLayout(top);
    lay->addLayout(buttonsLay);

    connect(btnInvAdjustOK, &QPushButton::clicked, this, [this] { btnInvAdjustOK_Click(); });
    connect(Command6, &QPushButton::clicked, this, [this] { Command6_Click(); });
    connect(Command7, &QPushButton::clicked, this, [] { ShowAdjustmentHelp(); });
}

void frmInvAdjustments::Open(qint32 itemId, const QString& qtyCell) {
    mItemId = itemId;
    mQtyCell = qtyCell;
    // No option is set on opening: the group lets go of its choice while clearing.
    mOptions->setExclusive(false);
    for (QRadioButton* opt : optAdjustments)
        opt->setChecked(false);
    mOptions->setExclusive(true);
    txtAdjustmentQty->clear();
    txtAdjustmentNo->clear();
    txtAdjustmentText->clear();
}

AdjustmentKind frmInvAdjustments::SelectedKind() const {
    const int id = mOptions->checkedId();
    return id < 0 ? AdjustmentKind::None : static_cast<AdjustmentKind>(id);
}

void frmInvAdjustments::btnInvAdjustOK_Click() {
    StockAdjustment in;
    in.kind = SelectedKind();
    in.qtyText = txtAdjustmentQty->text();
    in.ref = txtAdjustmentNo->text();
    in.text = txtAdjustmentText->text();
    in.itemId = mItemId;
    in.qtyCell = mQtyCell;
    const StockAdjustmentResult result = PostStockAdjustment(in);
    if (!result.posted)
        return;
    mQtyCell = result.qtyCell;
    emit Adjusted(result, mItemId);
    Command6_Click();
}

void frmInvAdjustments::Command6_Click() {
    emit Closed();
}

std::optional<StockAdjustmentResult> frmInvAdjustments::OpenFromMenu(QWidget* parent, qint32 itemId,
                                                                     const QString& qtyCell) {
    if (!CheckRight(Right::Inventory))
        return std::nullopt;
    QDialog dlg(parent);
    dlg.setObjectName(QStringLiteral("frmInvAdjustmentsWindow"));
    dlg.setWindowTitle(QStringLiteral("Inventory Adjustments"));
    dlg.setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto* panel = new frmInvAdjustments(&dlg);
    panel->setFrameShape(QFrame::NoFrame);
    auto* lay = new QVBoxLayout(&dlg);
    lay->setContentsMargins(0, 0, 0, 0);
    lay->addWidget(panel);
    panel->Open(itemId, qtyCell);
    std::optional<StockAdjustmentResult> posted;
    connect(panel, &frmInvAdjustments::Adjusted, &dlg,
            [&posted](const StockAdjustmentResult& r, qint32) { posted = r; });
    connect(panel, &frmInvAdjustments::Closed, &dlg, &QDialog::accept);
    dlg.resize(560, 230);
    dlg.exec();
    return posted;
}
