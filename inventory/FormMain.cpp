#include "inventory/FormMain.h"

#include "foundation/Globals.h"
#include "foundation/MsgBox.h"
#include "foundation/Rights.h"
#include "foundation/Startup.h"
#include "foundation/TextBoxRules.h"
#include "grids/ColumnState.h"
#include "grids/GridEX.h"
#include "grids/GridEXSource.h"
#include "grids/frmPrintDialog.h"
#include "inventory/ItemHistoryPanel.h"
#include "inventory/LinksPanel.h"
#include "inventory/frmBubbleMenu1.h"
#include "inventory/frmCommentInfo.h"
#include "inventory/frmInvAdjustments.h"
#include "inventory/frmStockQtyInfo.h"
#include "inventory/frmUsedIn.h"
#include "maintenance/frmDBUtils.h"
#include "purchasing/ORViewer.h"
#include "purchasing/basket.h"
#include "purchasing/frmGoodsIn.h"
#include "purchasing/frmItemPOrders.h"
#include "reports/frmReporterMenu.h"
#include "sales/CustOrderListPanel.h"
#include "sales/frmCustOrder.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFileInfo>
#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QStyle>
#include <QTabBar>
#include <QTimer>
#include <QToolBar>
#include <QToolBox>
#include <QToolButton>
#include <QVBoxLayout>
#include <cstdlib>
#include <utility>

namespace {
QFrame* makePanel(const char* name, QWidget* parent) {
    auto* f = new QFrame(parent);
    f->setObjectName(QString::fromLatin1(name));
    f->setFrameShape(QFrame::NoFrame);
    return f;
}

struct BarItem {
    const char* caption;
    const char* key;
    QStyle::StandardPixmap icon;
};
struct BarGroup {
    const char* caption;
    QStyle::StandardPixmap icon;
    QList<BarItem> items;
};

// The groups and items of the button bar. Parts-Lists, Works Orders and the two allocation items
// are built and then taken out at load: the program does not offer them.
const QList<BarGroup>& BarGroups() {
    static const QList<BarGroup> groups = {
        {"Inventory",
         QStyle::SP_DirHomeIcon,
         {{"Create New Item", "NewItem", QStyle::SP_FileIcon},
          {"View All Items", "UB_All", QStyle::SP_FileDialogListView},
          {"By Category", "UB_ByCat", QStyle::SP_DirIcon},
          {"By Supplier", "UB_BySup", QStyle::SP_DriveNetIcon}}},
        {"Parts-Lists",
         QStyle::SP_FileDialogDetailedView,
         {{"By PartNo", "ByPNo", QStyle::SP_FileIcon}}},
        {"Customer Orders",
         QStyle::SP_FileDialogContentsView,
         {{"Create New Order", "POS", QStyle::SP_FileIcon},
          {"Edit/View a Saved Order", "CustOrEdit", QStyle::SP_FileDialogContentsView},
          {"View a Saved Invoice", "ViewInvoice", QStyle::SP_FileDialogInfoView}}},
        {"Works Orders",
         QStyle::SP_DialogApplyButton,
         {{"New", "NewWO", QStyle::SP_FileIcon}, {"Edit/View", "ViewWO", QStyle::SP_FileIcon}}},
        {"Shortages",
         QStyle::SP_MessageBoxWarning,
         {{"Allocation Detail", "AllocDetail", QStyle::SP_FileIcon},
          {"Allocation Shortages", "AllocShort", QStyle::SP_FileIcon},
          {"All Below Minimum", "AllBelow", QStyle::SP_ArrowDown}}},
        {"Purchasing",
         QStyle::SP_DriveNetIcon,
         {{"Ordering", "PchPending", QStyle::SP_FileDialogNewFolder},
          {"View Order(s)", "PchsViewOR", QStyle::SP_FileDialogContentsView},
          {"Goods In", "PchsGin", QStyle::SP_ArrowDown}}},
        {"Addresses",
         QStyle::SP_DirOpenIcon,
         {{"New", "New", QStyle::SP_FileIcon},
          {"Customers", "Customers", QStyle::SP_DirIcon},
          {"Suppliers", "Suppliers", QStyle::SP_DirIcon},
          {"Misc.", "Misc", QStyle::SP_DirIcon}}},
        {"Reports",
         QStyle::SP_FileDialogDetailedView,
         {{"Inventory", "REP1", QStyle::SP_FileIcon},
          {"Vendor Performance", "REP2", QStyle::SP_FileIcon},
          {"Spending", "REP4", QStyle::SP_FileIcon}}},
    };
    return groups;
}

const char* const kGroupProperty = "barGroup";
} // namespace

FormMain::FormMain(QWidget* parent) : QMainWindow(parent) {
    setObjectName(QStringLiteral("FormMain"));
    setWindowTitle(QStringLiteral("Quillstock"));
    resize(1100, 720);

    auto* tools = new QToolBar(this);
    tools->setObjectName(QStringLiteral("buttons"));
    tools->setMovable(false);
    tools->setIconSize(QSize(24, 24));
    const struct {
        QStyle::StandardPixmap icon;
        const char* text;
        const char* tip;
    } entries[] = {
        {QStyle::SP_DialogCloseButton, "Exit", "Exit"},
        {QStyle::SP_DialogHelpButton, "Help", "Display the help module."},
        {QStyle::SP_TrashIcon, "Delete", "Delete the current item"},
        {QStyle::SP_FileDialogDetailedView, "Print", "Print"},
        {QStyle::SP_DialogSaveButton, "Save", "Save"},
        {QStyle::SP_FileDialogContentsView, "Export", "Export the datafrid to a CSV/Excel file"},
        {QStyle::SP_FileLinkIcon, "Links", "Links, URLs and Shortcuts"},
        {QStyle::SP_ComputerIcon, "Utilities", "Open the 'Utilities' window"},
    };
    for (int i = 0; i < 8; ++i) {
        auto* b = new QToolButton(tools);
        b->setObjectName(QStringLiteral("buttons_%1").arg(i));
        b->setIcon(style()->standardIcon(entries[i].icon));
        b->setText(QString::fromLatin1(entries[i].text));
        b->setToolTip(QString::fromLatin1(entries[i].tip));
        b->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        b->setAutoRaise(true);
        b->setMinimumWidth(64);
        b->setFocusPolicy(Qt::NoFocus);
        mButtonActions << tools->addWidget(b);
        buttons << b;
        connect(b, &QToolButton::clicked, this, [this, i] { buttons_ButtonClick(i); });
    }
    addToolBar(Qt::TopToolBarArea, tools);

    auto* central = new QWidget(this);
    auto* outer = new QHBoxLayout(central);

    // Left: the button bar, the tip panel and its switch.
    auto* left = new QVBoxLayout;
    ButtonBar1 = new QToolBox(central);
    ButtonBar1->setObjectName(QStringLiteral("ButtonBar1"));
    ButtonBar1->setFixedWidth(190);
    BuildButtonBar();
    left->addWidget(ButtonBar1, 1);
    frmHelpTip = new QFrame(central);
    frmHelpTip->setObjectName(QStringLiteral("frmHelpTip"));
    frmHelpTip->setFrameShape(QFrame::StyledPanel);
    frmHelpTip->setFixedWidth(190);
    frmHelpTip->setStyleSheet(
        QStringLiteral("#frmHelpTip { background: #fffbd6; border: 1px solid #c9c08a; }"));
    auto* tipLay = new QVBoxLayout(frmHelpTip);
    lblHelpTip = new QLabel(frmHelpTip);
    lblHelpTip->setObjectName(QStringLiteral("lblHelpTip"));
    lblHelpTip->setWordWrap(true);
    lblHelpTip->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    tipLay->addWidget(lblHelpTip);
    frmHelpTip->hide();
    left->addWidget(frmHelpTip);
    chkHelpTips = new QCheckBox(QStringLiteral("Help tips"), central);
    chkHelpTips->setObjectName(QStringLiteral("chkHelpTips"));
    chkHelpTips->setToolTip(QStringLiteral(
        "When enabled the program may display context sensitive help or tips 'as you arrive' at "
        "various places throught the program. Not all areas have this function so for additional "
        "assistance click the 'Help button on the left"));
    connect(chkHelpTips, &QCheckBox::toggled, this, [this](bool on) {
        if (on && lblHelpTip->text().isEmpty())
            lblHelpTip->setText(chkHelpTips->toolTip());
        frmHelpTip->setVisible(on);
    });
    left->addWidget(chkHelpTips);
    outer->addLayout(left);

    // Right: the company, the tabs and the content area.
    auto* right = new QVBoxLayout;
    auto* company = new QFrame(central);
    company->setObjectName(QStringLiteral("frmCompany"));
    company->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto* coLay = new QVBoxLayout(company);
    coLay->setContentsMargins(0, 0, 0, 0);
    coLay->setSpacing(0);
    txtCoName = new QLineEdit(company);
    txtCoName->setObjectName(QStringLiteral("txtCoName"));
    txtCoName->setReadOnly(true);
    txtCoName->setFrame(false);
    QFont f = txtCoName->font();
    f.setBold(true);
    f.setPointSizeF(f.pointSizeF() * 1.3);
    txtCoName->setFont(f);
    coLay->addWidget(txtCoName);
    auto* addrRow = new QHBoxLayout;
    for (int i = 0; i < 8; ++i) {
        auto* e = new QLineEdit(company);
        e->setObjectName(QStringLiteral("txtCoAddress_%1").arg(i));
        e->setReadOnly(true);
        e->setFrame(false);
        addrRow->addWidget(e);
        txtCoAddress << e;
    }
    coLay->addLayout(addrRow);
    right->addWidget(company);

    TabStrip2 = new QTabBar(central);
    TabStrip2->setObjectName(QStringLiteral("TabStrip2"));
    TabStrip2->addTab(QStringLiteral("List"));
    TabStrip2->addTab(QStringLiteral("Detail"));
    TabStrip2->setDrawBase(false);
    TabStrip2->setExpanding(false);
    connect(TabStrip2, &QTabBar::currentChanged, this, [this] { TabStrip2_Click(); });
    right->addWidget(TabStrip2);

    // The content panels lie on top of each other and fill Frame1; the list lies lowest and
    // shows whenever the others are hidden.
    Frame1 = makePanel("Frame1", central);
    BuildListPanel();
    frmContacts = new ::frmContacts(Frame1);
    connect(frmContacts, &::frmContacts::HelpTip, this, &FormMain::SetHelpTip);
    BuildItemDetailPanels();
    frmViewCustOrders = makePanel("frmViewCustOrders", Frame1);
    frmGlobalLinks = GlobalLinksPanel = new ::frmGlobalLinks(Frame1);
    for (QFrame* p : {static_cast<QFrame*>(frmContacts), static_cast<QFrame*>(frmItemDetail),
                      frmViewCustOrders, frmGlobalLinks})
        p->setAutoFillBackground(true);
    Frame1->installEventFilter(this);
    right->addWidget(Frame1, 1);
    // Takes the room of the content area while a group change has it hidden.
    right->addStretch(0);
    outer->addLayout(right, 1);
    setCentralWidget(central);
}

FormMain::~FormMain() = default;

void FormMain::BuildButtonBar() {
    for (const BarGroup& g : BarGroups()) {
        auto* page = new QWidget(ButtonBar1);
        page->setObjectName(QStringLiteral("ButtonBar1_") +
                            QString::fromLatin1(g.caption).remove(QLatin1Char(' ')));
        auto* lay = new QVBoxLayout(page);
        lay->setContentsMargins(2, 2, 2, 2);
        lay->setSpacing(2);
        const QString group = QString::fromLatin1(g.caption);
        for (const BarItem& item : g.items) {
            auto* b = new QToolButton(page);
            const QString key = QString::fromLatin1(item.key);
            b->setObjectName(key);
            b->setText(QString::fromLatin1(item.caption));
            b->setIcon(style()->standardIcon(item.icon));
            b->setIconSize(QSize(20, 20));
            b->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
            b->setAutoRaise(true);
            b->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
            b->setProperty(kGroupProperty, group);
            connect(b, &QToolButton::clicked, this,
                    [this, group, key] { ButtonBar1_ButtonClick(group, key); });
            lay->addWidget(b);
        }
        lay->addStretch(1);
        ButtonBar1->addItem(page, style()->standardIcon(g.icon), group);
    }
    connect(ButtonBar1, &QToolBox::currentChanged, this, [this] { ButtonBar1_GroupChange(); });
}

void FormMain::BuildListPanel() {
    frmUnboundView = new QGroupBox(Frame1);
    frmUnboundView->setObjectName(QStringLiteral("frmUnboundView"));
    QFont plain = frmUnboundView->font();
    plain.setBold(false); // resolved, so that the panel's bold title does not reach its contents
    QFont bold = plain;
    bold.setBold(true);
    frmUnboundView->setFont(bold);
    auto* lay = new QVBoxLayout(frmUnboundView);
    lay->setContentsMargins(4, 4, 4, 4);

    frmUBViewSearch = makePanel("frmUBViewSearch", frmUnboundView);
    auto* strip = new QHBoxLayout(frmUBViewSearch);
    strip->setContentsMargins(0, 0, 0, 0);
    auto addBox = [&](const char* name, const char* caption, int stretch) {
        auto* l = new QLabel(QString::fromLatin1(caption), frmUBViewSearch);
        auto* e = new QLineEdit(frmUBViewSearch);
        e->setObjectName(QString::fromLatin1(name));
        l->setBuddy(e);
        AttachTextRules(e);
        strip->addWidget(l);
        strip->addWidget(e, stretch);
        return e;
    };
    txtUB_PNo = addBox("txtUB_PNo", "Part No.", 2);
    txtub_val = addBox("txtub_val", "Value", 1);
    txtUB_Desc = addBox("txtUB_Desc", "Description", 3);
    txtUB_Cat = addBox("txtUB_Cat", "Cat", 1);
    cmdUB_Go = new QPushButton(QStringLiteral("Go"), frmUBViewSearch);
    cmdUB_Go->setObjectName(QStringLiteral("cmdUB_Go"));
    cmdUB_Go->setToolTip(QStringLiteral("Show the items that begin with the filter texts"));
    cmdUB_Clear = new QPushButton(QStringLiteral("Clear"), frmUBViewSearch);
    cmdUB_Clear->setObjectName(QStringLiteral("cmdUB_Clear"));
    strip->addWidget(cmdUB_Go);
    strip->addWidget(cmdUB_Clear);
    connect(cmdUB_Go, &QPushButton::clicked, this, [this] { cmdUB_Go_Click(); });
    connect(cmdUB_Clear, &QPushButton::clicked, this, [this] { cmdUB_Clear_Click(); });
    for (QLineEdit* e : {txtUB_PNo, txtUB_Desc, txtUB_Cat})
        connect(e, &QLineEdit::returnPressed, this, [this] { cmdUB_Go_Click(); });
    frmUBViewSearch->setFont(plain);
    lay->addWidget(frmUBViewSearch);

    gdxUBView = new GridEX(QStringLiteral("gdxUBView"), frmUnboundView);
    gdxUBView->setFont(plain);
    gdxUBView->SetAlternatingRowColors(true);
    gdxUBView->SetAllowEdit(false);
    gdxUBView->SetGroupByBoxVisible(false); // until a view is loaded
    gdxUBView->SetCellReader([this](int record, int column) -> QVariant {
        if (mUBRowCount == 0)
            return QVariant();
        return std::as_const(mUBData)(column, record); // reading makes no row of its own
    });
    gdxUBView->SetRowCommitHandler([this](int record, GridRowValues& values, bool& cancel) {
        if (!UBCopyRowBack(mUBData, record, values.Values())) {
            MsgBox(UBEditFailureText(), vbExclamation, UBEditFailureTitle());
            cancel = true;
        }
    });
    connect(gdxUBView, &GridEX::CurrentRowChanged, this,
            [this](int row, int) { gdxUBView_SelectionChange(row); });
    connect(gdxUBView, &GridEX::MouseUp, this,
            [this](Qt::MouseButton b, int x, int y) { gdxUBView_MouseUp(b, x, y); });
    lay->addWidget(gdxUBView, 1);

    BubbleMenu = new frmBubbleMenu1(frmUnboundView);
    BubbleMenu->setFont(plain);
    connect(BubbleMenu, &frmBubbleMenu1::Chosen, this,
            [this](int index) { lblBubbleMenu1_Click(index); });
    CommentInfo = new frmCommentInfo(frmUnboundView);
    CommentInfo->setFont(plain);
}

void FormMain::LayoutContentPanels() {
    const QRect r = Frame1->rect();
    for (QWidget* p :
         {static_cast<QWidget*>(frmUnboundView), static_cast<QWidget*>(frmContacts),
          static_cast<QWidget*>(frmItemDetail), static_cast<QWidget*>(frmViewCustOrders),
          static_cast<QWidget*>(frmGlobalLinks)})
        p->setGeometry(r);
}

bool FormMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Frame1 && (event->type() == QEvent::Resize || event->type() == QEvent::Show))
        LayoutContentPanels();
    return QMainWindow::eventFilter(watched, event);
}

void FormMain::HideContentPanels() {
    for (QFrame* p : {static_cast<QFrame*>(frmContacts), static_cast<QFrame*>(frmNewItem),
                      static_cast<QFrame*>(frmItemDetail), frmViewCustOrders, frmGlobalLinks})
        p->hide();
}

void FormMain::BuildItemDetailPanels() {
    frmItemDetail = new ::frmItemDetail(Frame1);
    frmNewItem = frmItemDetail->NewItemPanel;
    HistoryPanel = new ItemHistoryPanel(frmItemDetail);
    frmItemDetail->ReplaceSubPanel(4, HistoryPanel);
    AdjustmentsPanel = new ::frmInvAdjustments(frmItemDetail);
    frmItemDetail->ReplaceSubPanel(5, AdjustmentsPanel);
    UsedInPanel = new ::frmUsedIn(frmItemDetail);
    frmItemDetail->ReplaceSubPanel(2, UsedInPanel);
    ItemPOrdersPanel = new ::frmItemPOrders(frmItemDetail);
    frmItemDetail->ReplaceSubPanel(3, ItemPOrdersPanel);
    DetailLinksPanel = new ::frmDetailLinks(frmItemDetail);
    frmItemDetail->ReplaceSubPanel(6, DetailLinksPanel);

    connect(frmItemDetail, &::frmItemDetail::ItemNotFound, this,
            [this] { TabStrip2->setCurrentIndex(0); });
    connect(frmItemDetail, &::frmItemDetail::ItemCreated, this, [this](qint32) {
        // The new item is current: the Detail tab shows it.
        TabStrip2->show();
        if (TabStrip2->currentIndex() == 1)
            TabStrip2_Click();
        else
            TabStrip2->setCurrentIndex(1);
    });
    connect(frmItemDetail, &::frmItemDetail::ItemSaved, this,
            [this](qint32 id, const ItemListRow& row) { ApplyItemListRow(id, row); });
    connect(frmItemDetail, &::frmItemDetail::ItemDeleted, this, [this](qint32) {
        TabStrip2->setCurrentIndex(0);
        if (mUBData.Columns() >= UBFirstStageColumnLimit)
            LoadUBView();
    });
    connect(frmItemDetail, &::frmItemDetail::HelpTipChanged, this, &FormMain::SetHelpTip);
    connect(frmItemDetail, &::frmItemDetail::ItemLoaded, this,
            [this](qint32 id) { HistoryPanel->LoadHistory(id); });
    connect(frmItemDetail, &::frmItemDetail::SubPanelShown, this,
            [this](int index) { ItemDetailSubPanelShown(index); });
    connect(AdjustmentsPanel, &::frmInvAdjustments::Adjusted, this,
            [this](const StockAdjustmentResult& result, qint32 id) {
                const int record = gdxUBView->RecordIndex(gdxUBView->Row());
                if (record > 0 && record <= mUBRowCount &&
                    qint32(mUBData(1, record).toLongLong()) == id) {
                    mUBData(UBItemColumn(QStringLiteral("Qty")), record) = result.qtyCell;
                    gdxUBView->RefreshRecord(record);
                }
                // The detail's quantity box follows, so that a later Save does not write the
                // figure from before the adjustment back over it.
                if (id == gCurrentItemID)
                    frmItemDetail->txtItemQty->setText(result.qtyCell);
                HistoryPanel->LoadHistory(id);
            });
    connect(AdjustmentsPanel, &::frmInvAdjustments::Closed, this,
            [this] { frmItemDetail->TabStrip1_Click(0); });
}

void FormMain::ItemDetailSubPanelShown(int index) {
    mCurrentGrid = 0; // a tab without a grid leaves print and export nothing to work on
    switch (index) {
    case 1:
        mCurrentGrid = 3; // gdxSupp
        break;
    case 2:
        mCurrentGrid = 4;
        UsedInPanel->LoadUsedIn(gCurrentItemID);
        break;
    case 3:
        mCurrentGrid = 5;
        ItemPOrdersPanel->LoadItemPOrders(gCurrentItemID);
        break;
    case 4:
        mCurrentGrid = 6; // gdxItemHistory
        break;
    case 5: {
        // The adjustment applies to the item of the selected list row.
        const int record = gdxUBView->RecordIndex(gdxUBView->Row());
        const bool itemRow =
            record > 0 && record <= mUBRowCount && mUBData.Columns() >= UBFirstStageColumnLimit;
        AdjustmentsPanel->Open(itemRow ? qint32(mUBData(1, record).toLongLong()) : 0,
                               itemRow ? UBCell(record, QStringLiteral("Qty")) : QString());
        break;
    }
    case 6:
        DetailLinksPanel->LoadLinks(gCurrentItemID);
        break;
    default:
        break;
    }
}

void FormMain::ApplyItemListRow(qint32 itemID, const ItemListRow& row) {
    UpdateUBViewRow(itemID, row.ByKey());
}

GridEX* FormMain::CurrentGrid() const {
    switch (mCurrentGrid) {
    case 1:
        return gdxUBView;
    case 2:
        return frmContacts->gdxContact1;
    case 3:
        return frmItemDetail->gdxSupp;
    case 4:
        return UsedInPanel->gdxUsedIn;
    case 5:
        return ItemPOrdersPanel->gdxItemPOrders;
    case 6:
        return HistoryPanel->gdxItemHistory;
    case 7:
        return frmViewCustOrders->isVisible()
                   ? frmViewCustOrders->findChild<GridEX*>(QStringLiteral("gdxCustOrdersList"))
                   : nullptr;
    default:
        return nullptr; // 5: that panel holds no grid yet
    }
}

void FormMain::RemoveUnofferedBarItems() {
    const QSignalBlocker block(ButtonBar1);
    for (int i = ButtonBar1->count() - 1; i >= 0; --i) {
        const QString caption = ButtonBar1->itemText(i);
        if (caption == QLatin1String("Parts-Lists") || caption == QLatin1String("Works Orders")) {
            QWidget* page = ButtonBar1->widget(i);
            ButtonBar1->removeItem(i);
            delete page;
        }
    }
    for (const char* key : {"AllocDetail", "AllocShort"})
        delete ButtonBar1->findChild<QToolButton*>(QLatin1String(key));
    ButtonBar1->setCurrentIndex(0);
}

void FormMain::SetButtonVisible(int index, bool visible) {
    mButtonActions[index]->setVisible(visible);
}

void FormMain::ShowHomeDetails() {
    const HomeDetails home = LoadHomeDetails();
    txtCoName->setText(home.coName);
    for (int i = 0; i < txtCoAddress.size(); ++i) {
        QLineEdit* line = txtCoAddress[i];
        line->setText(home.addressLines.value(i));
        line->setCursorPosition(0); // a long line shows its beginning
        // Each line takes the room its text needs, so that neighbours do not cover it.
        const int textWidth = line->fontMetrics().horizontalAdvance(line->text());
        line->setMinimumWidth(line->text().isEmpty() ? 0 : textWidth + 12);
    }
}

void FormMain::Form_Load() {
    ShowHomeDetails();
    gPcName = ReadPcName();
    HideContentPanels();
    RefillItemCatList();
    RemoveUnofferedBarItems();
    SetButtonVisible(2, false);
    SetButtonVisible(4, false);
    TabStrip2->setCurrentIndex(0);
}

// ---------------------------------------------------------------------------------------------
// The tool strip

void FormMain::buttons_ButtonClick(int index) {
    switch (index) {
    case 0:
        // Exit: the process ends at once; nothing is saved and nothing needs cleaning up.
        std::_Exit(0);
    case 1:
        OpenHelpManual();
        break;
    case 2:
        if (CheckRight(Right::Inventory))
            DeleteItem();
        break;
    case 3:
        if (GridEX* grid = CurrentGrid())
            ShowPrintPanel(this, grid);
        break;
    case 4:
        if (CheckRight(Right::Inventory))
            SaveItem();
        break;
    case 5:
        if (GridEX* grid = CurrentGrid())
            ExportGridCsv(*grid);
        break;
    case 6:
        ShowGlobalLinks();
        break;
    case 7:
        if (CheckRight(Right::Utilities))
            OpenUtilities();
        break;
    default:
        break;
    }
}

void FormMain::OpenHelpManual() {
#ifdef Q_OS_WIN
    const QString manual = gAppPath + QStringLiteral("/manual.exe");
#else
    const QString manual = gAppPath + QStringLiteral("/manual");
#endif
    if (QFileInfo(manual).isFile()) {
        QProcess::startDetached(manual, {}, gAppPath);
        return;
    }
    MsgBox(QStringLiteral(" You haven't installed the user manual. It is not part of this "
                          "installation.\n\nA free update that includes the user manual may be "
                          "had from the supplier of this program."),
           vbInformation, QStringLiteral("User Manual"));
}

// ---------------------------------------------------------------------------------------------
// The button bar and the tabs

void FormMain::ButtonBar1_GroupChange() {
    frmHelpTip->hide();
    Frame1->hide();
    TabStrip2->hide();
}

void FormMain::ButtonBar1_ButtonClick(const QString& group, const QString& key) {
    ClearItemCat();
    cmdUB_Clear_Click();
    SetUnboundViewCaption(QString());

    HideContentPanels();
    SetContactsEditable(false);
    TabStrip2->setCurrentIndex(0);
    SetButtonVisible(2, false);
    SetButtonVisible(4, false);

    if (group == QLatin1String("Inventory") || group == QLatin1String("Parts-Lists")) {
        gActiveGroup = 1;
    } else if (group == QLatin1String("Addresses")) {
        gActiveGroup = 2;
        SetContactsEditable(true);
    } else if (group == QLatin1String("Purchasing")) {
        gActiveGroup = 4;
    } else if (group == QLatin1String("Customer Orders")) {
        gActiveGroup = 7;
    } else if (group == QLatin1String("Shortages")) {
        gActiveGroup = 8;
    } else if (group == QLatin1String("Works Orders")) {
        gActiveGroup = 10;
    } else if (group != QLatin1String("Reports")) {
        gActiveGroup = 0;
        MsgBox(QStringLiteral("Unknown buttongroup was selected. nothing was done"));
        return;
    }
    mActiveGroupCaption = group;
    TabStrip2->setVisible(group == QLatin1String("Inventory") ||
                          group == QLatin1String("Parts-Lists") ||
                          group == QLatin1String("Shortages"));
    Frame1->show();

    auto view = [this](quint8 mode) {
        mUBViewMode = mode;
        LoadUBView();
    };
    if (key == QLatin1String("NewItem")) {
        if (CheckRight(Right::Inventory))
            ShowNewItemPanel();
    } else if (key == QLatin1String("UB_All")) {
        view(UBMode::AllItems);
    } else if (key == QLatin1String("UB_ByCat")) {
        mUBViewMode = UBMode::ByCategory;
        LoadUBCategoryList();
    } else if (key == QLatin1String("UB_BySup")) {
        mUBViewMode = UBMode::BySupplier;
        LoadUBSupplierList();
    } else if (key == QLatin1String("ByPNo")) {
        mUBCategory = QStringLiteral("AS");
        view(UBMode::Assemblies);
    } else if (key == QLatin1String("POS")) {
        gCustOrderMode = 1;
        OpenCustOrder();
    } else if (key == QLatin1String("CustOrEdit")) {
        gCustOrderMode = 2;
        ShowCustOrderList();
    } else if (key == QLatin1String("ViewInvoice")) {
        gCustOrderMode = 4;
        ShowCustOrderList();
    } else if (key == QLatin1String("NewWO") || key == QLatin1String("ViewWO")) {
        // Works orders are not part of this program.
    } else if (key == QLatin1String("AllocDetail")) {
        view(UBMode::AllocDetail);
    } else if (key == QLatin1String("AllocShort")) {
        view(UBMode::AllocShortages);
    } else if (key == QLatin1String("AllBelow")) {
        view(UBMode::BelowMinimum);
    } else if (key == QLatin1String("PchPending")) {
        if (CheckRight(Right::Purchasing,
                       QStringLiteral("You do not have permission to add or make changes to "
                                      "vendor/supplier purchase orders")))
            OpenBasket();
    } else if (key == QLatin1String("PchsViewOR")) {
        OpenORViewer();
    } else if (key == QLatin1String("PchsGin")) {
        OpenGoodsIn();
    } else if (key == QLatin1String("New")) {
        if (CheckRight(Right::Contacts))
            OpenNewContact();
    } else if (key == QLatin1String("Customers") || key == QLatin1String("Suppliers") ||
               key == QLatin1String("Misc") || key == QLatin1String("Locations")) {
        ShowContactList(key);
    } else if (key == QLatin1String("REP1")) {
        OpenReporterMenu(1);
    } else if (key == QLatin1String("REP2")) {
        OpenReporterMenu(2);
    } else if (key == QLatin1String("REP3")) {
        OpenReporterMenu(3);
    } else if (key == QLatin1String("REP4")) {
        OpenReporterMenu(4);
    } else {
        MsgBox(QStringLiteral("Unexpected error. Unknown menu button was used. Nothing was done."));
    }
}

void FormMain::TabStrip2_Click() {
    ResetItemDetailTabs();
    HideContentPanels();
    if (TabStrip2->currentIndex() == 0) {
        mCurrentGrid = 1;
        SetButtonVisible(2, false);
        SetButtonVisible(4, false);
        frmHelpTip->hide();
    } else {
        SetButtonVisible(2, true);
        SetButtonVisible(4, true);
        mCurrentGrid = 0;
        RefillItemCatList();
        ShowItemDetail(gCurrentItemID);
    }
}

void FormMain::SetHelpTip(const QString& text) {
    lblHelpTip->setText(text);
    if (chkHelpTips->isChecked())
        frmHelpTip->show();
}

// ---------------------------------------------------------------------------------------------
// The inventory list

QString FormMain::UnboundViewCaption() const {
    return frmUnboundView->title();
}

void FormMain::SetUnboundViewCaption(const QString& caption) {
    frmUnboundView->setTitle(caption);
}

QString FormMain::UBCell(int record, const QString& key) const {
    const int column = UBItemColumn(key);
    return column ? mUBData(column, record).toString() : QString();
}

void FormMain::ApplyColumns(const QList<UBColumn>& columns, bool groupBox) {
    GridColumns& cols = gdxUBView->Columns();
    cols.Clear();
    for (const UBColumn& c : columns) {
        GridColumn& col = cols.Add(c.key, c.caption);
        col.SetWidth(c.widthTwips).SetVisible(c.shown);
        if (c.rightAligned)
            col.SetAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    gdxUBView->SetGroupByBoxVisible(groupBox);
    if (groupBox)
        gdxUBView->SetGroupByBoxText(QStringLiteral(
            "Drag a column header here to group by that column. Click to open/close the groups"));
}

void FormMain::ShowUBData() {
    mCurrentGrid = 1;
    ReloadGrid(*gdxUBView, mUBRowCount);
}

namespace {
// Clears a flag at the end of a scope, whichever way the scope is left.
struct FlagReset {
    bool& flag;
    ~FlagReset() { flag = false; }
};
} // namespace

void FormMain::LoadUBView() {
    if (mUBLoading)
        return;
    mUBLoading = true;
    FlagReset reset{mUBLoading};

    UBItemRequest request;
    request.mode = mUBViewMode;
    request.supplierID = mUBSupplierID;
    request.supplierName = mUBSupplierName;
    request.category = mUBCategory;
    request.filters.partNo = txtUB_PNo->text();
    request.filters.description = txtUB_Desc->text();
    request.filters.category = txtUB_Cat->text();
    UBItemResult result = LoadUBItems(request);
    if (!result.loaded)
        return;
    if (result.setsCategoryFilter) {
        mUBFilterHold = true;
        txtUB_Cat->setText(result.categoryFilter);
        mUBFilterHold = false;
    }
    lblHelpTip->setText(result.tip);

    gdxUBView->SetItemCount(0);
    mUBRowCount = 0;
    ApplyColumns(UBItemColumns(), true);
    mUBData = std::move(result.data);
    mUBRowCount = result.rowCount;
    SetUnboundViewCaption(result.caption);
    ShowUBData();
    mUBLoading = false;
    if (chkHelpTips->isChecked())
        frmHelpTip->show();
}

void FormMain::LoadUBSupplierList() {
    LoadUBFirstStage(LoadUBSuppliers, UBSupplierColumns(), true);
}

void FormMain::LoadUBCategoryList() {
    // No category at all: nothing to show.
    LoadUBFirstStage(LoadUBCategories, UBCategoryColumns(), false);
}

void FormMain::LoadUBFirstStage(UBArray (*load)(), const QList<UBColumn>& columns,
                                bool showWhenEmpty) {
    if (mUBLoading)
        return;
    mUBLoading = true;
    FlagReset reset{mUBLoading};
    UBArray data = load();
    gdxUBView->SetItemCount(0);
    mUBRowCount = 0;
    ApplyColumns(columns, false);
    mUBData = std::move(data);
    mUBRowCount = mUBData.Rows();
    if (mUBRowCount > 0 || showWhenEmpty)
        ShowUBData();
}

void FormMain::cmdUB_Go_Click() {
    LoadUBView();
}

void FormMain::cmdUB_Clear_Click() {
    for (QLineEdit* e : {txtUB_PNo, txtub_val, txtUB_Desc, txtUB_Cat})
        e->clear();
}

void FormMain::gdxUBView_SelectionChange(int row) {
    if (row <= 0 || mUBLoading || gdxUBView->GroupRowLevel(row) != 0)
        return;
    const int record = gdxUBView->RecordIndex(row);
    if (record <= 0 || record > mUBRowCount)
        return;
    if (mUBData.Columns() >= UBFirstStageColumnLimit) {
        gCurrentItemID = qint32(mUBData(1, record).toLongLong());
        mUBFilterHold = true;
        txtUB_PNo->setText(UBCell(record, QStringLiteral("PNo")));
        txtUB_Desc->setText(UBCell(record, QStringLiteral("Desc")));
        txtUB_Cat->setText(UBCell(record, QStringLiteral("Cat")));
        mUBFilterHold = false;
        return;
    }
    // A first-stage row: drill down once the grid has finished with the selection.
    if (mUBViewMode == UBMode::BySupplier) {
        mUBSupplierID = qint32(mUBData(1, record).toLongLong());
        mUBSupplierName = mUBData(2, record).toString();
    } else if (mUBViewMode == UBMode::ByCategory) {
        mUBCategory = mUBData(1, record).toString();
    } else {
        return;
    }
    QTimer::singleShot(0, this, [this] { LoadUBView(); });
}

bool FormMain::UpdateUBViewRow(qint32 itemID, const QList<QPair<QString, QString>>& cells) {
    if (mUBRowCount == 0 || mUBData.Columns() < UBFirstStageColumnLimit)
        return false;
    int record = gdxUBView->RecordIndex(gdxUBView->Row());
    if (record <= 0 || qint32(mUBData(1, record).toLongLong()) != itemID) {
        record = 0;
        for (int r = 1; r <= mUBRowCount && !record; ++r)
            if (qint32(std::as_const(mUBData)(1, r).toLongLong()) == itemID)
                record = r;
    }
    if (!record)
        return false;
    QVector<QVariant> values;
    values.reserve(mUBData.Columns());
    for (int c = 1; c <= mUBData.Columns(); ++c)
        values << mUBData(c, record);
    for (const auto& [key, value] : cells)
        if (const int c = UBItemColumn(key))
            values[c - 1] = value;
    if (!UBCopyRowBack(mUBData, record, values)) {
        MsgBox(UBEditFailureText(), vbExclamation, UBEditFailureTitle());
        return false;
    }
    gdxUBView->RefreshRecord(record);
    return true;
}

void FormMain::gdxUBView_MouseUp(Qt::MouseButton button, int xTwips, int yTwips) {
    if (button != Qt::RightButton || mUBRowCount == 0 ||
        mUBData.Columns() < UBFirstStageColumnLimit)
        return;
    if (mActiveGroupCaption != QLatin1String("Inventory") &&
        mActiveGroupCaption != QLatin1String("Shortages") &&
        mActiveGroupCaption != QLatin1String("Parts-Lists"))
        return;
    const QPoint px(gdxUBView->TwipsToPixels(xTwips), gdxUBView->TwipsToPixels(yTwips));
    const int row = gdxUBView->RowAt(px);
    if (row <= 0 || gdxUBView->GroupRowLevel(row) != 0)
        return;
    const int record = gdxUBView->RecordIndex(row);
    if (record <= 0)
        return;
    if (gdxUBView->Row() != row)
        gdxUBView->SetRow(row);
    ShowBubbleMenu(gdxUBView->mapTo(frmUnboundView, px), record);
}

void FormMain::ShowBubbleMenu(const QPoint& at, int record) {
    mBubbleRecord = record;
    BubbleMenu->lblBubbleMenu1[2]->setVisible(mActiveGroupCaption == QLatin1String("Parts-Lists"));
    BubbleMenu->ShowAt(at);
}

void FormMain::lblBubbleMenu1_Click(int index) {
    BubbleMenu->hide();
    const int record = mBubbleRecord;
    if (record <= 0 || record > mUBRowCount)
        return;
    const qint32 id = qint32(mUBData(1, record).toLongLong());
    const QString pno = UBCell(record, QStringLiteral("PNo"));
    switch (index) {
    case 1:
        gCurrentItemID = id;
        TabStrip2->setCurrentIndex(1);
        break;
    case 2:
        ShowPartsList(id);
        break;
    case 3:
        ShowPendingOrders(id, pno);
        break;
    case 4:
        CommentInfo->ShowFor(id, pno);
        break;
    case 5:
        OpenAdjustments(record);
        break;
    default:
        break;
    }
}

// ---------------------------------------------------------------------------------------------
// Windows and panels that plug in here

void FormMain::ShowNewItemPanel() {
    frmItemDetail->PrepareNewItem();
    frmItemDetail->raise();
    TabStrip2->hide();
}

void FormMain::OpenCustOrder() {
    frmCustOrder::ShowModal(this);
}

void FormMain::ShowCustOrderList() {
    auto* list = frmViewCustOrders->findChild<CustOrderListPanel*>();
    if (!list) {
        auto* lay = new QVBoxLayout(frmViewCustOrders);
        lay->setContentsMargins(0, 0, 0, 0);
        list = new CustOrderListPanel(frmViewCustOrders);
        lay->addWidget(list);
    }
    frmViewCustOrders->show();
    frmViewCustOrders->raise();
    mCurrentGrid = 7; // gdxCustOrdersList
    if (gCustOrderMode == 4)
        list->ListInvoices();
    else
        list->ListCustomerOrders(true);
}

void FormMain::OpenBasket() {
    basket::Open(this);
}
void FormMain::OpenORViewer() {
    ORViewer::Open(this);
}
void FormMain::OpenGoodsIn() {
    frmGoodsIn::Open(this);
}
void FormMain::OpenNewContact() {
    frmContacts->NewContact(this);
}

void FormMain::ShowContactList(const QString& key) {
    frmContacts->AddressKey(key, this);
    frmContacts->raise();
    mCurrentGrid = 2;
}
void FormMain::OpenReporterMenu(int group) {
    frmReporterMenu menu(group, this);
    menu.exec();
}
void FormMain::ShowGlobalLinks() {
    // Over whatever the content area shows; Close gives that back with its print and export.
    if (GlobalLinksPanel->isHidden()) {
        const int underneath = mCurrentGrid;
        disconnect(GlobalLinksPanel, &::frmGlobalLinks::Closed, this, nullptr);
        connect(GlobalLinksPanel, &::frmGlobalLinks::Closed, this,
                [this, underneath] { mCurrentGrid = underneath; });
    }
    mCurrentGrid = 0;
    Frame1->show();
    GlobalLinksPanel->LoadGlobalLinks();
    GlobalLinksPanel->show();
    GlobalLinksPanel->raise();
}
void FormMain::ShowItemDetail(qint32 itemID) {
    if (frmItemDetail->ShowItemDetail(itemID))
        frmItemDetail->raise();
}

void FormMain::RefillItemCatList() {
    frmItemDetail->FillCategoryList();
}

void FormMain::ClearItemCat() {
    frmItemDetail->txtItemCat->setEditText(QString());
}

void FormMain::ResetItemDetailTabs() {
    frmItemDetail->TabStrip1_Click(0);
}

void FormMain::SetContactsEditable(bool editable) {
    frmContacts->SetEditMode(editable);
}

void FormMain::DeleteItem() {
    frmItemDetail->DeleteCurrentItem();
}

void FormMain::SaveItem() {
    frmItemDetail->SaveItemDetail();
}
void FormMain::ShowPartsList(qint32) {}

void FormMain::ShowPendingOrders(qint32 itemID, const QString& partNo) {
    frmStockQtyInfo::ShowFor(this, itemID, partNo);
}

void FormMain::OpenAdjustments(int record) {
    const qint32 id = qint32(mUBData(1, record).toLongLong());
    const auto posted =
        frmInvAdjustments::OpenFromMenu(this, id, UBCell(record, QStringLiteral("Qty")));
    if (posted && posted->posted && record <= mUBRowCount &&
        qint32(mUBData(1, record).toLongLong()) == id) {
        mUBData(UBItemColumn(QStringLiteral("Qty")), record) = posted->qtyCell;
        gdxUBView->RefreshRecord(record);
    }
}

void FormMain::OpenUtilities() {
    frmDBUtils utilities(this);
    utilities.exec();
    ShowHomeDetails(); // the company details may have changed on the Home tab
}
