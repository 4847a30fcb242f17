#include "inventory/frmItemDetail.h"

#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/TextBoxRules.h"
#include "grids/ColumnState.h"
#include "grids/GridEX.h"
#include "inventory/frmNewItem.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include <iterator>

namespace {

const QString kQtyMask = QStringLiteral("0.0#");
const QString kPriceMask = QStringLiteral("0.00###");

// A small "?" label that shows a fixed help text when clicked.
class HelpLabel : public QObject {
public:
    HelpLabel(QLabel* label, QString title, QString text)
        : QObject(label), mTitle(std::move(title)), mText(std::move(text)) {
        label->setText(QStringLiteral("?"));
        label->setCursor(Qt::WhatsThisCursor);
        label->setToolTip(mTitle);
        label->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonRelease) {
            MsgBox(mText, vbInformation, mTitle);
            return true;
        }
        return false;
    }

private:
    QString mTitle;
    QString mText;
};

QLineEdit* lineBox(const char* name, QWidget* parent) {
    auto* e = new QLineEdit(parent);
    e->setObjectName(QString::fromLatin1(name));
    return e;
}

QLabel* caption(const char* text, QWidget* parent) {
    return new QLabel(QString::fromLatin1(text), parent);
}

QLabel* helpLabel(const char* name, QWidget* parent) {
    auto* l = new QLabel(parent);
    l->setObjectName(QString::fromLatin1(name));
    l->setFrameShape(QFrame::Box);
    l->setAlignment(Qt::AlignCenter);
    l->setFixedSize(18, 18);
    return l;
}

QFrame* subPanel(const char* name, QWidget* parent) {
    auto* f = new QFrame(parent);
    f->setObjectName(QString::fromLatin1(name));
    return f;
}

} // namespace

frmItemDetail::frmItemDetail(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("frmItemDetail"));
    auto* outer = new QVBoxLayout(this);

    auto* boxes = new QWidget(this);
    boxes->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    buildItemBoxes(boxes);
    outer->addWidget(boxes);

    TabStrip1 = new QTabBar(this);
    TabStrip1->setObjectName(QStringLiteral("TabStrip1"));
    for (const char* t :
         {"Comments", "Suppliers", "Used in", "Purchase Orders", "History", "Adjustments", "Links"})
        TabStrip1->addTab(QString::fromLatin1(t));
    TabStrip1->setExpanding(false);
    outer->addWidget(TabStrip1);

    frmSubPanels = new QStackedWidget(this);
    frmSubPanels->setObjectName(QStringLiteral("frmSubPanels"));
    frmSubPanels->setFrameShape(QFrame::StyledPanel);
    frmItemComments = subPanel("frmItemComments", frmSubPanels);
    frmItemSupPrices = subPanel("frmItemSupPrices", frmSubPanels);
    frmUsedIn = subPanel("frmUsedIn", frmSubPanels);
    frmItemPOrders = subPanel("frmItemPOrders", frmSubPanels);
    frmHistory = subPanel("frmHistory", frmSubPanels);
    frmInvAdjustments = subPanel("frmInvAdjustments", frmSubPanels);
    frmDetailLinks = subPanel("frmDetailLinks", frmSubPanels);
    for (QFrame* p : SubPanels())
        frmSubPanels->addWidget(p);
    outer->addWidget(frmSubPanels, 1);

    auto* comLay = new QVBoxLayout(frmItemComments);
    txtItemComments = new QPlainTextEdit(frmItemComments);
    txtItemComments->setObjectName(QStringLiteral("txtItemComments"));
    AttachTextRules(txtItemComments);
    comLay->addWidget(txtItemComments);

    buildSupplierTab();

    NewItemPanel = new frmNewItem(this, this);
    NewItemPanel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    NewItemPanel->hide();
    outer->addWidget(NewItemPanel);
    // Takes the room of the sub-panels while the new-item panel stands in for them.
    outer->addStretch(0);

    pBar1 = new QProgressBar(this);
    pBar1->setObjectName(QStringLiteral("pBar1"));
    pBar1->setRange(1, 10);
    pBar1->setTextVisible(false);
    pBar1->hide();
    outer->addWidget(pBar1);

    connect(TabStrip1, &QTabBar::currentChanged, this, &frmItemDetail::TabStrip1_Click);
    connect(NewItemPanel, &frmNewItem::ItemCreated, this, &frmItemDetail::ItemCreated);
}

void frmItemDetail::buildItemBoxes(QWidget* host) {
    auto* g = new QGridLayout(host);
    g->setContentsMargins(0, 0, 0, 0);
    txtPNo = lineBox("txtPNo", host);
    txtDetail = lineBox("txtDetail", host);
    txtDescription = lineBox("txtDescription", host);
    txtLocation = lineBox("txtLocation", host);
    txtItemQty = lineBox("txtItemQty", host);
    txtMinQty = lineBox("txtMinQty", host);
    txtSellPrice = lineBox("txtSellPrice", host);
    txtCatNo = lineBox("txtCatNo", host);
    txtCatNo->setReadOnly(true);
    txtCatNo->setFrame(false);
    txtCatNo->setFocusPolicy(Qt::NoFocus);
    txtItemCat = new QComboBox(host);
    txtItemCat->setObjectName(QStringLiteral("txtItemCat"));
    txtItemCat->setEditable(true);
    txtItemCat->setInsertPolicy(QComboBox::NoInsert);
    Check1 = new QCheckBox(QStringLiteral("IsAssy"), host);
    Check1->setObjectName(QStringLiteral("Check1"));
    chkAllowDiscount = new QCheckBox(QStringLiteral("Allow Discount"), host);
    chkAllowDiscount->setObjectName(QStringLiteral("chkAllowDiscount"));

    for (QWidget* w : {static_cast<QWidget*>(txtPNo), static_cast<QWidget*>(txtDetail),
                       static_cast<QWidget*>(txtDescription), static_cast<QWidget*>(txtLocation),
                       static_cast<QWidget*>(txtItemCat)})
        AttachTextRules(w);
    AttachAlphaNumericRules(txtItemCat, true);
    AttachNumberRules(txtItemQty, kQtyMask);
    // A blank minimum stays blank: it means no minimum.
    AttachNumberRules(txtMinQty, kQtyMask, BlankBox::StaysBlank);
    AttachNumberRules(txtSellPrice, kPriceMask);
    for (QLineEdit* e : {txtItemQty, txtMinQty, txtSellPrice})
        e->setAlignment(Qt::AlignRight);

    Label21 = helpLabel("Label21", host);
    Label22 = helpLabel("Label22", host);
    Label23 = helpLabel("Label23", host);
    Label24 = helpLabel("Label24", host);
    new HelpLabel(Label21, QStringLiteral("Category ?"),
                  QStringLiteral("Choose a category from the list or type a new one, in letters "
                                 "and numbers only. Categories group the items in the 'By "
                                 "Category' view.\n\nThe category AS is kept for assemblies: "
                                 "choosing it ticks the IsAssy box."));
    new HelpLabel(Label22, QStringLiteral("Minimum Qty ?"),
                  QStringLiteral("If you want to be reminded when the quantity FALLS BELOW a "
                                 "minimum then enter that minimum here. Leave this field blank if "
                                 "you want to ignore minimum quantities for this item"));
    new HelpLabel(Label23, QStringLiteral("Location ?"),
                  QStringLiteral("Where the item is kept: a store, shelf or bin. A new item "
                                 "left without a location is stored as UNKNOWN."));
    new HelpLabel(Label24, QStringLiteral("Allow Discount ?"),
                  QStringLiteral("Tick this box when a customer's discount may be given on this "
                                 "item. Leave it clear to sell the item at its full price to "
                                 "every customer."));

    g->addWidget(caption("Part No.", host), 0, 0);
    g->addWidget(txtPNo, 0, 1);
    g->addWidget(caption("Category", host), 0, 2);
    auto* catRow = new QHBoxLayout;
    catRow->addWidget(txtItemCat, 1);
    catRow->addWidget(Label21);
    catRow->addWidget(Check1);
    g->addLayout(catRow, 0, 3);
    g->addWidget(caption("Detail", host), 1, 0);
    g->addWidget(txtDetail, 1, 1);
    g->addWidget(caption("Location", host), 1, 2);
    auto* locRow = new QHBoxLayout;
    locRow->addWidget(txtLocation, 1);
    locRow->addWidget(Label23);
    locRow->addWidget(txtCatNo);
    txtCatNo->setFixedWidth(60);
    g->addLayout(locRow, 1, 3);
    g->addWidget(caption("Description", host), 2, 0);
    g->addWidget(txtDescription, 2, 1, 1, 3);
    auto* numbers = new QHBoxLayout;
    numbers->addWidget(caption("Qty", host));
    numbers->addWidget(txtItemQty);
    numbers->addSpacing(12);
    numbers->addWidget(caption("Min Qty", host));
    numbers->addWidget(txtMinQty);
    numbers->addWidget(Label22);
    numbers->addSpacing(12);
    numbers->addWidget(caption("Sell Price", host));
    numbers->addWidget(txtSellPrice);
    numbers->addSpacing(12);
    numbers->addWidget(chkAllowDiscount);
    numbers->addWidget(Label24);
    numbers->addStretch(1);
    g->addWidget(caption("", host), 3, 0);
    g->addLayout(numbers, 3, 1, 1, 3);
    g->setColumnStretch(1, 1);
    g->setColumnStretch(3, 1);

    connect(txtItemCat, &QComboBox::currentTextChanged, this, &frmItemDetail::txtItemCat_Change);
}

void frmItemDetail::buildSupplierTab() {
    auto* lay = new QHBoxLayout(frmItemSupPrices);
    gdxSupp = new GridEX(QStringLiteral("gdxSupp"), frmItemSupPrices);
    defineSupplierGrid();
    lay->addWidget(gdxSupp, 1);

    auto* side = new QVBoxLayout;
    side->addWidget(caption("Buy Price (prime supplier)", frmItemSupPrices));
    txtBuyPrice = lineBox("txtBuyPrice", frmItemSupPrices);
    txtBuyPrice->setReadOnly(true);
    txtBuyPrice->setAlignment(Qt::AlignRight);
    side->addWidget(txtBuyPrice);
    side->addSpacing(12);
    side->addWidget(caption("Add a supplier", frmItemSupPrices));
    cboAllSups = new QComboBox(frmItemSupPrices);
    cboAllSups->setObjectName(QStringLiteral("cboAllSups"));
    cboAllSups->setMinimumWidth(180);
    side->addWidget(cboAllSups);
    btnSupAdd = new QPushButton(QStringLiteral("Add"), frmItemSupPrices);
    btnSupAdd->setObjectName(QStringLiteral("btnSupAdd"));
    btnSupAdd->setEnabled(false);
    side->addWidget(btnSupAdd);
    side->addStretch(1);
    lay->addLayout(side);

    // The row menu and the address panel float over the detail panel.
    frmItemSupMenu = new QFrame(this);
    frmItemSupMenu->setObjectName(QStringLiteral("frmItemSupMenu"));
    frmItemSupMenu->setFrameShape(QFrame::Box);
    frmItemSupMenu->setAutoFillBackground(true);
    auto* menu = new QVBoxLayout(frmItemSupMenu);
    menu->setContentsMargins(2, 2, 2, 2);
    menu->setSpacing(0);
    txtItemSupRemove = new QPushButton(QStringLiteral("Remove this supplier"), frmItemSupMenu);
    txtItemSupRemove->setObjectName(QStringLiteral("txtItemSupRemove"));
    txtItemSupView = new QPushButton(QStringLiteral("View supplier's address"), frmItemSupMenu);
    txtItemSupView->setObjectName(QStringLiteral("txtItemSupView"));
    txtItemSupMenuClose = new QPushButton(QStringLiteral("Close"), frmItemSupMenu);
    txtItemSupMenuClose->setObjectName(QStringLiteral("txtItemSupMenuClose"));
    for (QPushButton* b : {txtItemSupRemove, txtItemSupView, txtItemSupMenuClose}) {
        b->setFlat(true);
        b->setStyleSheet(QStringLiteral("text-align: left; padding: 3px 8px;"));
        menu->addWidget(b);
    }
    frmItemSupMenu->hide();

    frmItemSupInfo = new QFrame(this);
    frmItemSupInfo->setObjectName(QStringLiteral("frmItemSupInfo"));
    frmItemSupInfo->setFrameShape(QFrame::Box);
    frmItemSupInfo->setAutoFillBackground(true);
    auto* info = new QVBoxLayout(frmItemSupInfo);
    txtItemSupInfo = new QPlainTextEdit(frmItemSupInfo);
    txtItemSupInfo->setObjectName(QStringLiteral("txtItemSupInfo"));
    txtItemSupInfo->setReadOnly(true);
    info->addWidget(txtItemSupInfo);
    cmdItemSupInfoClose = new QPushButton(QStringLiteral("Close"), frmItemSupInfo);
    cmdItemSupInfoClose->setObjectName(QStringLiteral("cmdItemSupInfoClose"));
    info->addWidget(cmdItemSupInfoClose, 0, Qt::AlignRight);
    frmItemSupInfo->resize(300, 260);
    frmItemSupInfo->hide();

    connect(cboAllSups, qOverload<int>(&QComboBox::activated), this,
            &frmItemDetail::cboAllSups_Click);
    connect(btnSupAdd, &QPushButton::clicked, this, &frmItemDetail::btnSupAdd_Click);
    connect(gdxSupp, &GridEX::MouseUp, this, &frmItemDetail::gdxSupp_MouseUp);
    connect(txtItemSupRemove, &QPushButton::clicked, this, &frmItemDetail::txtItemSupRemove_Click);
    connect(txtItemSupView, &QPushButton::clicked, this, &frmItemDetail::txtItemSupView_Click);
    connect(txtItemSupMenuClose, &QPushButton::clicked, frmItemSupMenu, &QWidget::hide);
    connect(cmdItemSupInfoClose, &QPushButton::clicked, frmItemSupInfo, &QWidget::hide);
}

void frmItemDetail::defineSupplierGrid() {
    const QStringList keys = SupplierColumnKeys();
    const QStringList captions = SupplierColumnCaptions();
    const int widths[] = {2400, 1600, 1000, 1100, 700, 700, 700};
    for (int i = 0; i < keys.size(); ++i)
        gdxSupp->Columns().Add(keys[i], captions[i]).SetWidth(widths[i]);
    auto numeric = [](const QString& text, int key) { return NumericKey(text, key); };
    auto text = [](const QString&, int key) { return key == '\'' ? int('`') : key; };
    gdxSupp->Columns()(QStringLiteral("SupPNo")).SetEditable(true).SetKeyFilter(text);
    gdxSupp->Columns()(QStringLiteral("SupOrQty"))
        .SetEditable(true)
        .SetAlignment(Qt::AlignRight | Qt::AlignVCenter)
        .SetSortType(GridSortType::Numeric)
        .SetKeyFilter(numeric);
    gdxSupp->Columns()(QStringLiteral("SupPrice"))
        .SetEditable(true)
        .SetAlignment(Qt::AlignRight | Qt::AlignVCenter)
        .SetSortType(GridSortType::Numeric)
        .SetKeyFilter(numeric);
    gdxSupp->Columns()(QStringLiteral("SupPrime"))
        .SetKind(GridColumnKind::CheckBox)
        .SetEditable(true);
    gdxSupp->Columns()(QStringLiteral("SupID")).SetVisible(false);
    gdxSupp->Columns()(QStringLiteral("Code")).SetVisible(false);
    gdxSupp->SetAllowEdit(true);
    gdxSupp->SetAllowAddNew(false);
    gdxSupp->SetAllowDelete(false);
    gdxSupp->SetAlternatingRowColors(true);
    gdxSupp->SetGroupByBoxVisible(false);
    LoadColumnState(*gdxSupp);

    gdxSupp->SetCellReader([this](int record, int column) -> QVariant {
        if (record < 1 || record > mSupRowCount)
            return {};
        const ItemSupplierRow& r = mSupData.at(record - 1);
        switch (column) {
        case SupNameCol:
            return r.SupName;
        case SupPNoCol:
            return r.SupPNo;
        case SupOrQtyCol:
            return r.SupOrQty;
        case SupPriceCol:
            return r.SupPrice;
        case SupPrimeCol:
            return r.SupPrime;
        case SupIDCol:
            return r.SupID;
        case CodeCol:
            return r.Code;
        default:
            return {};
        }
    });
    // The end of a row edit copies the row back; nothing reaches the file before Save.
    gdxSupp->SetRowCommitHandler([this](int record, GridRowValues& v, bool&) {
        if (record < 1 || record > mSupRowCount)
            return;
        ItemSupplierRow& r = mSupData[record - 1];
        r.SupName = v(SupNameCol).toString();
        r.SupPNo = ApostropheOut(v(SupPNoCol).toString());
        r.SupOrQty = v(SupOrQtyCol).toString();
        r.SupPrice = v(SupPriceCol).toString();
        r.SupPrime =
            ParseLocaleNumber(v(SupPrimeCol)) != 0 ||
            v(SupPrimeCol).toString().compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
        r.SupID = qint32(v(SupIDCol).toLongLong());
        r.Code = v(CodeCol).toString();
    });
    gdxSupp->SetDeleteHandler([this](int record, bool&) {
        RemoveSupplierRow(mSupData, record - 1);
        mSupRowCount = int(mSupData.size());
    });
}

QList<QFrame*> frmItemDetail::SubPanels() const {
    return {frmItemComments, frmItemSupPrices,  frmUsedIn,     frmItemPOrders,
            frmHistory,      frmInvAdjustments, frmDetailLinks};
}

void frmItemDetail::ReplaceSubPanel(int index, QFrame* panel) {
    QFrame** places[] = {&frmItemComments, &frmItemSupPrices,  &frmUsedIn,     &frmItemPOrders,
                         &frmHistory,      &frmInvAdjustments, &frmDetailLinks};
    if (index < 2 || index >= int(std::size(places)) || !panel)
        return; // comments and suppliers belong to this panel
    QFrame* old = *places[index];
    const bool current = frmSubPanels->currentIndex() == index;
    frmSubPanels->insertWidget(index, panel);
    frmSubPanels->removeWidget(old);
    old->deleteLater();
    *places[index] = panel;
    if (current)
        frmSubPanels->setCurrentIndex(index);
}

void frmItemDetail::TabStrip1_Click(int index) {
    if (index < 0 || index >= frmSubPanels->count())
        return;
    hidePopups();
    frmSubPanels->setCurrentIndex(index);
    emit SubPanelShown(index);
}

void frmItemDetail::hidePopups() {
    frmItemSupMenu->hide();
    frmItemSupInfo->hide();
}

void frmItemDetail::reloadSupplierGrid() {
    mSupRowCount = int(mSupData.size());
    ReloadGrid(*gdxSupp, mSupRowCount);
}

void frmItemDetail::fillSupplierChoices() {
    cboAllSups->clear();
    mAllSupIDs.clear();
    for (const SupplierChoice& s : LoadSupplierChoices()) {
        cboAllSups->addItem(s.CoName);
        mAllSupIDs << s.AddID;
    }
    cboAllSups->setCurrentIndex(-1);
    btnSupAdd->setEnabled(false);
}

void frmItemDetail::FillCategoryList() {
    const QString text = txtItemCat->currentText();
    mLoadingCategory = true;
    txtItemCat->clear();
    txtItemCat->addItems(LoadCategoryList());
    txtItemCat->setEditText(text);
    mLoadingCategory = false;
}

bool frmItemDetail::ShowItemDetail(qint32 itemId) {
    const std::optional<ItemDetailData> d = LoadItemDetail(itemId);
    if (!d) {
        emit ItemNotFound();
        return false;
    }
    const ItemDetailFields& f = d->fields;
    mLoadingCategory = true;
    txtItemCat->setEditText(QString());
    Check1->setChecked(false);
    txtPNo->setText(f.pno);
    txtDetail->setText(f.detail);
    txtDescription->setText(f.description);
    const int at = txtItemCat->findText(f.category, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    if (at >= 0)
        txtItemCat->setCurrentIndex(at);
    txtItemCat->setEditText(f.category);
    mLoadingCategory = false;
    txtLocation->setText(f.location);
    txtItemQty->setText(f.qty);
    txtMinQty->setText(f.minQty);
    txtSellPrice->setText(f.sellPrice);
    chkAllowDiscount->setChecked(f.allowDiscount);
    txtCatNo->setText(d->catNo);
    txtItemComments->clear();
    Check1->setChecked(f.isAssy);

    mSupData = d->suppliers;
    txtBuyPrice->setText(f.buyPrice);
    reloadSupplierGrid();
    fillSupplierChoices();
    txtItemComments->setPlainText(f.comments);

    TabStrip1->setCurrentIndex(0);
    TabStrip1_Click(0);
    TabStrip1->show();
    frmSubPanels->show();
    NewItemPanel->hide();
    show();
    emit ItemLoaded(itemId);
    emit HelpTipChanged(ItemDetailHelpTip());
    return true;
}

void frmItemDetail::clearBoxes() {
    mLoadingCategory = true;
    for (QLineEdit* e : {txtPNo, txtDetail, txtDescription, txtLocation, txtItemQty, txtMinQty,
                         txtSellPrice, txtCatNo, txtBuyPrice})
        e->clear();
    txtItemCat->setEditText(QString());
    mLoadingCategory = false;
    Check1->setChecked(false);
    chkAllowDiscount->setChecked(false);
    txtItemComments->clear();
    mSupData.clear();
    reloadSupplierGrid();
}

void frmItemDetail::PrepareNewItem() {
    clearBoxes();
    hidePopups();
    txtItemCat->setEditText(QStringLiteral("NEW"));
    TabStrip1->hide();
    frmSubPanels->hide();
    NewItemPanel->show();
    show();
    txtPNo->setFocus();
}

ItemDetailFields frmItemDetail::gatherFields() const {
    ItemDetailFields f;
    f.pno = txtPNo->text();
    f.detail = txtDetail->text();
    f.description = txtDescription->text();
    f.category = txtItemCat->currentText();
    f.isAssy = Check1->isChecked();
    f.location = txtLocation->text();
    f.qty = txtItemQty->text();
    f.minQty = txtMinQty->text();
    f.sellPrice = txtSellPrice->text();
    f.allowDiscount = chkAllowDiscount->isChecked();
    f.comments = txtItemComments->toPlainText();
    f.buyPrice = txtBuyPrice->text();
    return f;
}

void frmItemDetail::txtItemCat_Change(const QString& text) {
    if (mLoadingCategory)
        return;
    // No question on a change to or from an assembly: the box simply follows the category.
    Check1->setChecked(text == QLatin1String("AS"));
}

bool frmItemDetail::SaveItemDetail() {
    if (gdxSupp->HasPendingEdit())
        gdxSupp->Update();
    hidePopups();
    ItemSaveInput in;
    in.itemId = gCurrentItemID;
    in.fields = gatherFields();
    in.suppliers = mSupData;
    bool started = false;
    const ItemSaveResult r = ::SaveItemDetail(in, [this, &started](int step) {
        started = true;
        pBar1->show();
        pBar1->setValue(step);
        QCoreApplication::processEvents();
    });
    // The bar runs out and the processing bar shows, after a save and after a failure alike.
    if (started) {
        pBar1->setValue(pBar1->maximum());
        Pause(300);
        pBar1->hide();
        ShowProcessingBar();
    }
    if (!r.saved)
        return false;
    mSupData = r.suppliers;
    gdxSupp->Refresh();
    emit ItemSaved(in.itemId, r.listRow);
    return true;
}

bool frmItemDetail::DeleteCurrentItem() {
    const qint32 id = gCurrentItemID;
    if (!::DeleteCurrentItem(id))
        return false;
    emit ItemDeleted(id);
    return true;
}

// ---------------------------------------------------------------- suppliers tab

void frmItemDetail::cboAllSups_Click() {
    const int i = cboAllSups->currentIndex();
    btnSupAdd->setEnabled(i >= 0 && i < mAllSupIDs.size() &&
                          CanAddSupplier(mSupData, mAllSupIDs.at(i)));
}

void frmItemDetail::btnSupAdd_Click() {
    const int i = cboAllSups->currentIndex();
    if (i < 0 || i >= mAllSupIDs.size())
        return;
    if (gdxSupp->HasPendingEdit())
        gdxSupp->Update();
    if (!AddSupplierRow(mSupData, mAllSupIDs.at(i)))
        return;
    reloadSupplierGrid();
    btnSupAdd->setEnabled(false);
}

void frmItemDetail::gdxSupp_MouseUp(Qt::MouseButton button, int xTwips, int yTwips) {
    if (button != Qt::RightButton)
        return;
    const QPoint at(gdxSupp->TwipsToPixels(xTwips), gdxSupp->TwipsToPixels(yTwips));
    const int row = gdxSupp->RowAt(at);
    if (row < 1 || gdxSupp->RecordIndex(row) < 1)
        return;
    gdxSupp->SetRow(row);
    txtItemSupRemove->setEnabled(CanRemoveSupplier(mSupData));
    frmItemSupInfo->hide();
    frmItemSupMenu->adjustSize();
    // Beside the pointer, kept inside the panel.
    QPoint p = gdxSupp->mapTo(this, at) + QPoint(4, 4);
    p.setX(qBound(0, p.x(), qMax(0, width() - frmItemSupMenu->width())));
    p.setY(qBound(0, p.y(), qMax(0, height() - frmItemSupMenu->height())));
    frmItemSupMenu->move(p);
    frmItemSupMenu->raise();
    frmItemSupMenu->show();
}

void frmItemDetail::txtItemSupRemove_Click() {
    frmItemSupMenu->hide();
    if (!CanRemoveSupplier(mSupData) || !MayRemoveSupplier())
        return;
    if (gdxSupp->HasPendingEdit())
        gdxSupp->Update();
    if (!gdxSupp->Delete())
        return;
    MsgBox(SupplierRemovedNotice());
    cboAllSups_Click();
}

void frmItemDetail::txtItemSupView_Click() {
    frmItemSupMenu->hide();
    const int record = gdxSupp->RecordIndex(gdxSupp->Row());
    if (record < 1 || record > mSupRowCount)
        return;
    txtItemSupInfo->setPlainText(SupplierAddressText(mSupData.at(record - 1).SupID));
    // Where the menu stood, kept inside the panel.
    QPoint p = frmItemSupMenu->pos();
    p.setX(qBound(0, p.x(), qMax(0, width() - frmItemSupInfo->width())));
    p.setY(qBound(0, p.y(), qMax(0, height() - frmItemSupInfo->height())));
    frmItemSupInfo->move(p);
    frmItemSupInfo->raise();
    frmItemSupInfo->show();
}
