#include "contacts/frmEditContact.h"

#include "contacts/Contacts.h"
#include "foundation/Globals.h"
#include "foundation/Rights.h"
#include "foundation/TextBoxRules.h"

#include <QComboBox>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// The discount box takes the digits 0 to 9 and backspace, nothing else that types a character.
class DigitsOnlyFilter : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress)
            return false;
        auto* ke = static_cast<QKeyEvent*>(event);
        const QString t = ke->text();
        if (t.size() != 1 || (ke->modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
            return false;
        const ushort c = t[0].unicode();
        if (c < 32 && c != 8)
            return false; // Enter, Tab, Escape
        return !(c == 8 || (c >= '0' && c <= '9'));
    }
};

QLineEdit* makeBox(QWidget* parent, const char* name) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QLatin1String(name));
    return box;
}

} // namespace

frmEditContact::frmEditContact(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmEditContact"));
    setWindowTitle(QStringLiteral("New Contact"));
    setModal(true);

    auto* outer = new QVBoxLayout(this);

    auto* typeRow = new QHBoxLayout;
    auto* typeLabel = new QLabel(QStringLiteral("Contact type - Vendor or customer ?"), this);
    Combo1 = new QComboBox(this);
    Combo1->setObjectName(QStringLiteral("Combo1"));
    Combo1->setMinimumWidth(140);
    typeRow->addWidget(typeLabel);
    typeRow->addWidget(Combo1);
    typeRow->addStretch(1);
    outer->addLayout(typeRow);

    mFields = new QWidget(this);
    mFields->setObjectName(QStringLiteral("fraFields"));
    auto* grid = new QGridLayout(mFields);
    grid->setContentsMargins(0, 6, 0, 6);
    txtCoName = makeBox(mFields, "txtCoName");
    txtAdd1 = makeBox(mFields, "txtAdd1");
    txtAdd2 = makeBox(mFields, "txtAdd2");
    txtAdd3 = makeBox(mFields, "txtAdd3");
    txtAdd4 = makeBox(mFields, "txtAdd4");
    txtPCode = makeBox(mFields, "txtPCode");
    txtContact1 = makeBox(mFields, "txtContact1");
    txtTel1 = makeBox(mFields, "txtTel1");
    txtFax1 = makeBox(mFields, "txtFax1");
    txtEMail = makeBox(mFields, "txtEMail");
    txtShortNm = makeBox(mFields, "txtShortNm");
    txtDiscount = makeBox(mFields, "txtDiscount");
    txtShortNm->setMaximumWidth(120);
    txtDiscount->setMaximumWidth(120);
    txtPCode->setMaximumWidth(160);

    int row = 0;
    auto addRow = [&](const QString& caption, QLineEdit* box) {
        if (!caption.isEmpty())
            grid->addWidget(new QLabel(caption, mFields), row, 0);
        grid->addWidget(box, row, 1, 1, 2);
        ++row;
    };
    addRow(QStringLiteral("Name (Company)"), txtCoName);
    addRow(QStringLiteral("Address "), txtAdd1);
    addRow(QString(), txtAdd2);
    addRow(QString(), txtAdd3);
    addRow(QString(), txtAdd4);
    addRow(QStringLiteral("Post Code / Zip"), txtPCode);
    addRow(QStringLiteral("Contact Name"), txtContact1);
    addRow(QStringLiteral("Tel:"), txtTel1);
    addRow(QStringLiteral("Fax:"), txtFax1);
    addRow(QStringLiteral("eMail:"), txtEMail);

    Command2 = new QPushButton(QStringLiteral("?"), mFields);
    Command2->setObjectName(QStringLiteral("Command2"));
    Command2->setFixedWidth(28);
    Command2->setAutoDefault(false);
    grid->addWidget(new QLabel(QStringLiteral("Code"), mFields), row, 0);
    auto* codeRow = new QHBoxLayout;
    codeRow->addWidget(txtShortNm);
    codeRow->addWidget(Command2);
    codeRow->addStretch(1);
    grid->addLayout(codeRow, row, 1, 1, 2);
    ++row;

    lblDiscount = new QLabel(QStringLiteral("Discount"), mFields);
    lblDiscount->setObjectName(QStringLiteral("lblDiscount"));
    hlpDiscount = new QPushButton(QStringLiteral("?"), mFields);
    hlpDiscount->setObjectName(QStringLiteral("hlpDiscount"));
    hlpDiscount->setFixedWidth(28);
    hlpDiscount->setAutoDefault(false);
    grid->addWidget(lblDiscount, row, 0);
    auto* discountRow = new QHBoxLayout;
    discountRow->addWidget(txtDiscount);
    discountRow->addWidget(hlpDiscount);
    discountRow->addStretch(1);
    grid->addLayout(discountRow, row, 1, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(row + 1, 1); // the fields stay together when the discount is hidden
    outer->addWidget(mFields, 1);

    // Frame2 lies over the fields, outside the layout, and follows their size.
    Frame2 = new QFrame(mFields);
    Frame2->setObjectName(QStringLiteral("Frame2"));
    Frame2->setFrameShape(QFrame::StyledPanel);
    Frame2->setAutoFillBackground(true);
    mFields->installEventFilter(this);

    auto* buttonRow = new QHBoxLayout;
    buttonRow->addStretch(1);
    Command1 = new QPushButton(QStringLiteral("Save"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setAutoDefault(false);
    buttonRow->addWidget(Command1);
    outer->addLayout(buttonRow);

    for (QLineEdit* box : {txtCoName, txtAdd1, txtAdd2, txtAdd3, txtAdd4, txtPCode, txtContact1,
                           txtTel1, txtFax1, txtEMail, txtShortNm})
        AttachTextRules(box);
    txtDiscount->installEventFilter(new DigitsOnlyFilter(txtDiscount));

    connect(Combo1, &QComboBox::currentIndexChanged, this, [this] { Combo1_Click(); });
    connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(hlpDiscount, &QPushButton::clicked, this, [this] { hlpDiscount_Click(); });

    resize(460, 440);
    Form_Load();
}

frmEditContact::~frmEditContact() {
    gContactType = ContactType::Any;
}

int frmEditContact::ShowModal(QWidget* parent) {
    frmEditContact window(parent);
    return window.exec();
}

void frmEditContact::done(int result) {
    // Unloading always hands the type back: the next caller sets its own.
    gContactType = ContactType::Any;
    QDialog::done(result);
}

bool frmEditContact::eventFilter(QObject* watched, QEvent* event) {
    if (watched == mFields && event->type() == QEvent::Resize)
        PlaceFrame2();
    return QDialog::eventFilter(watched, event);
}

void frmEditContact::PlaceFrame2() {
    Frame2->setGeometry(mFields->rect());
    Frame2->raise();
}

void frmEditContact::Form_Load() {
    Combo1->blockSignals(true);
    Combo1->clear();
    PlaceFrame2();
    Frame2->hide();

    const QString typeText = ContactTypeText(gContactType);
    if (!typeText.isEmpty()) {
        Combo1->addItem(typeText);
    } else {
        // Any type: the user must choose one before the fields can be filled in.
        Combo1->addItems({QStringLiteral("Select"), QStringLiteral("Customer"),
                          QStringLiteral("Vendor"), QStringLiteral("Misc")});
        gContactID = 0;
    }
    Combo1->setCurrentIndex(0);
    Combo1->blockSignals(false);
    Combo1_Click();

    if (gContactID > 0) {
        LoadContact();
        setWindowTitle(QStringLiteral("View or Edit"));
    }
}

void frmEditContact::Combo1_Click() {
    const QString t = Combo1->currentText();
    if (Combo1->currentIndex() < 0 || t == QLatin1String("Select")) {
        PlaceFrame2();
        Frame2->show();
        return;
    }
    Frame2->hide();
    const bool customer = t == QLatin1String("Customer");
    lblDiscount->setVisible(customer);
    txtDiscount->setVisible(customer);
    hlpDiscount->setVisible(customer);
}

void frmEditContact::LoadContact() {
    ContactEntry e;
    e.contactType = gContactType;
    e.contactId = gContactID;
    if (::LoadContact(e))
        ShowEntry(e);
}

ContactEntry frmEditContact::Gather() const {
    ContactEntry e;
    e.contactType = gContactType;
    e.contactId = gContactID;
    e.typeText = Combo1->currentText();
    e.coName = txtCoName->text();
    e.add1 = txtAdd1->text();
    e.add2 = txtAdd2->text();
    e.add3 = txtAdd3->text();
    e.add4 = txtAdd4->text();
    e.pCode = txtPCode->text();
    e.contact1 = txtContact1->text();
    e.tel1 = txtTel1->text();
    e.fax1 = txtFax1->text();
    e.email = txtEMail->text();
    e.shortNm = txtShortNm->text();
    e.discount = txtDiscount->text();
    return e;
}

void frmEditContact::ShowEntry(const ContactEntry& e) {
    txtCoName->setText(e.coName);
    txtAdd1->setText(e.add1);
    txtAdd2->setText(e.add2);
    txtAdd3->setText(e.add3);
    txtAdd4->setText(e.add4);
    txtPCode->setText(e.pCode);
    txtContact1->setText(e.contact1);
    txtTel1->setText(e.tel1);
    txtFax1->setText(e.fax1);
    txtEMail->setText(e.email);
    txtShortNm->setText(e.shortNm);
    txtDiscount->setText(e.discount);
}

void frmEditContact::Command1_Click() {
    ContactEntry e = Gather();
    const bool saved = SaveContact(e);
    ShowEntry(e); // trimmed, back-quoted, discount made numeric
    if (saved)
        accept();
}

void frmEditContact::Command2_Click() {
    ShowContactCodeHelp();
}

void frmEditContact::hlpDiscount_Click() {
    ShowContactDiscountHelp();
}

bool OpenNewContactEntry(QWidget* parent) {
    if (!CheckRight(Right::Contacts))
        return false;
    gContactID = 0;
    frmEditContact::ShowModal(parent);
    return true;
}
