#include "inventory/FormMain.h"

#include "foundation/Globals.h"
#include "foundation/Startup.h"

#include <QApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QTabBar>
#include <QToolBar>
#include <QToolBox>
#include <QToolButton>
#include <QVBoxLayout>
#include <cstdlib>

namespace {
QFrame* makePanel(const char* name, QWidget* parent) {
    auto* f = new QFrame(parent);
    f->setObjectName(QString::fromLatin1(name));
    f->setFrameShape(QFrame::NoFrame);
    return f;
}
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
        tools->addWidget(b);
        buttons << b;
        connect(b, &QToolButton::clicked, this, [this, i] { buttons_ButtonClick(i); });
    }
    addToolBar(Qt::TopToolBarArea, tools);

    auto* central = new QWidget(this);
    auto* outer = new QHBoxLayout(central);
    ButtonBar1 = new QToolBox(central);
    ButtonBar1->setObjectName(QStringLiteral("ButtonBar1"));
    ButtonBar1->setFixedWidth(190);
    outer->addWidget(ButtonBar1);

    auto* right = new QVBoxLayout;
    auto* company = new QFrame(central);
    company->setObjectName(QStringLiteral("frmCompany"));
    auto* coLay = new QVBoxLayout(company);
    coLay->setContentsMargins(0, 0, 0, 0);
    txtCoName = new QLineEdit(company);
    txtCoName->setObjectName(QStringLiteral("txtCoName"));
    txtCoName->setReadOnly(true);
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
    right->addWidget(TabStrip2);

    Frame1 = makePanel("Frame1", central);
    auto* content = new QVBoxLayout(Frame1);
    content->setContentsMargins(0, 0, 0, 0);
    frmUnboundView = makePanel("frmUnboundView", Frame1);
    frmContacts = makePanel("frmContacts", Frame1);
    frmNewItem = makePanel("frmNewItem", Frame1);
    frmItemDetail = makePanel("frmItemDetail", Frame1);
    frmViewCustOrders = makePanel("frmViewCustOrders", Frame1);
    frmGlobalLinks = makePanel("frmGlobalLinks", Frame1);
    for (QFrame* p : {frmUnboundView, frmContacts, frmNewItem, frmItemDetail, frmViewCustOrders,
                      frmGlobalLinks})
        content->addWidget(p);
    right->addWidget(Frame1, 1);
    outer->addLayout(right, 1);
    setCentralWidget(central);
}

void FormMain::HideContentPanels() {
    for (QFrame* p : {frmContacts, frmNewItem, frmItemDetail, frmViewCustOrders, frmGlobalLinks})
        p->hide();
}

void FormMain::Form_Load() {
    const HomeDetails home = LoadHomeDetails();
    txtCoName->setText(home.coName);
    for (int i = 0; i < txtCoAddress.size(); ++i)
        txtCoAddress[i]->setText(home.addressLines.value(i));
    gPcName = ReadPcName();
    HideContentPanels();
    buttons[2]->setVisible(false);
    buttons[4]->setVisible(false);
    TabStrip2->setCurrentIndex(0);
}

void FormMain::buttons_ButtonClick(int index) {
    switch (index) {
    case 0:
        // Exit: the process ends at once; nothing is saved and nothing needs cleaning up.
        std::_Exit(0);
    default:
        break;
    }
}
