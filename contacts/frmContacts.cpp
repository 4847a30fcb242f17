#include "contacts/frmContacts.h"

#include "contacts/frmEditContact.h"
#include "foundation/Globals.h"
#include "foundation/Rights.h"
#include "foundation/TextBoxRules.h"
#include "grids/ColumnState.h"
#include "grids/GridEX.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// An apostrophe typed into a cell becomes a back-quote.
int cellKey(const QString&, int keyCode) {
    return keyCode == '\'' ? int('`') : keyCode;
}

struct ColumnDef {
    const char* key;
    const char* caption;
    int width; // twips
};

// In array order: grid column n shows array column n.
const ColumnDef kColumns[] = {
    {"CoID", "ContactID", 900},     {"CoName", "Company", 2600},  {"Add1", "Address1", 2000},
    {"Add2", "Address2", 1800},     {"Add3", "Address3", 1600},   {"Add4", "Address4", 1600},
    {"PCode", "PostCode", 1100},    {"Contact", "Contact", 1600}, {"Tel", "Tel:", 1700},
    {"Fax", "Fax", 1700},           {"email", "EMail", 2200},     {"shortnm", "Code", 900},
    {"Discount", "Discount", 1000},
};

} // namespace

frmContacts::frmContacts(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("frmContacts"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    auto* top = new QHBoxLayout;
    Label11 = new QLabel(QStringLiteral("Search:"), this);
    Label11->setObjectName(QStringLiteral("Label11"));
    txtAddSearch = new QLineEdit(this);
    txtAddSearch->setObjectName(QStringLiteral("txtAddSearch"));
    txtAddSearch->setMaximumWidth(260);
    AttachTextRules(txtAddSearch);
    Command3 = new QPushButton(QStringLiteral("CardView"), this);
    Command3->setObjectName(QStringLiteral("Command3"));
    top->addWidget(Label11);
    top->addWidget(txtAddSearch);
    top->addStretch(1);
    top->addWidget(Command3);
    layout->addLayout(top);

    gdxContact1 = new GridEX(QStringLiteral("gdxContact1"), this);
    gdxContact1->SetAlternatingRowColors(true);
    gdxContact1->SetCommitMode(GridCommit::OnRowChange);
    layout->addWidget(gdxContact1, 1);

    gdxContact1->SetCellReader([this](int record, int column) -> QVariant {
        if (record < 1 || record > mList.mContactCount() || column < 1 ||
            column >= kContactArrayColumns)
            return {};
        return mList.rows[record - 1][size_t(column)];
    });
    gdxContact1->SetRowCommitHandler([this](int record, GridRowValues& values, bool&) {
        UpdateContactRow(mList, record, RowFrom(values));
    });
    gdxContact1->SetNewRowHandler([this](GridRowValues& values, bool& cancel) {
        ContactRow row = RowFrom(values);
        cancel = !AddContactRow(mList, row);
    });
    gdxContact1->SetDeleteHandler([this](int record, bool& cancel) {
        if (!ConfirmContactDelete(mList, record)) {
            cancel = true;
            return;
        }
        DeleteContactRow(mList, record);
    });

    connect(txtAddSearch, &QLineEdit::textChanged, this, [this] { LoadContactList(); });
    connect(txtAddSearch, &QLineEdit::returnPressed, this, [this] { LoadContactList(); });
    connect(Command3, &QPushButton::clicked, this, [this] { Command3_Click(); });

    DefineColumns();
}

QString frmContacts::HelpTipText() {
    return QStringLiteral("Click into any cell to change a contact's details, type a new contact "
                          "into the empty last row, or press the 'Delete' key to remove the "
                          "highlighted contact. When you're finished press the 'Enter' key on "
                          "your keyboard to save");
}

bool frmContacts::AddressKey(const QString& key, QWidget* dialogParent) {
    if (key == QLatin1String("New")) {
        if (CheckRight(Right::Contacts))
            NewContact(dialogParent);
        return true;
    }
    quint8 kind;
    if (key == QLatin1String("Locations"))
        kind = ContactKind::Locations;
    else if (key == QLatin1String("Suppliers"))
        kind = ContactKind::Suppliers;
    else if (key == QLatin1String("Customers"))
        kind = ContactKind::Customers;
    else if (key == QLatin1String("Misc"))
        kind = ContactKind::Misc;
    else
        return false;
    mList.mContactKind = kind;
    ShowContactsPanel();
    return true;
}

void frmContacts::NewContact(QWidget* dialogParent) {
    gContactID = 0;
    mList.mContactKind = ContactKind::Locations;
    frmEditContact::ShowModal(dialogParent ? dialogParent : window());
}

void frmContacts::SetEditMode(bool on) {
    mEditMode = on;
    gdxContact1->SetAllowEdit(on);
    // Cards are read only: no blank card for a new contact.
    gdxContact1->SetAllowAddNew(on && gdxContact1->View() == GridView::Table);
    gdxContact1->SetAllowDelete(on);
}

void frmContacts::ShowContactsPanel() {
    show();
    Label11->show();
    txtAddSearch->show();
    SetEditMode(true);
    LoadContactList();
    emit HelpTip(HelpTipText());
}

void frmContacts::DefineColumns() {
    GridColumns& cols = gdxContact1->Columns();
    cols.Clear();
    for (const ColumnDef& d : kColumns) {
        GridColumn& c = cols.Add(QLatin1String(d.key), QLatin1String(d.caption)).SetWidth(d.width);
        if (QLatin1String(d.key) != QLatin1String("CoID"))
            c.SetEditable(true).SetKeyFilter(cellKey);
    }
    cols(QStringLiteral("CoID")).SetAlignment(Qt::AlignRight | Qt::AlignVCenter);
    cols(QStringLiteral("Discount")).SetAlignment(Qt::AlignRight | Qt::AlignVCenter);
    cols(QStringLiteral("Discount")).SetVisible(mList.mContactKind == ContactKind::Customers);
}

void frmContacts::LoadContactList() {
    gdxContact1->SetItemCount(0);
    ::LoadContactList(mList, txtAddSearch->text());
    DefineColumns();
    ReloadGrid(*gdxContact1, mList.mContactCount());
    if (Command3->text() == QLatin1String("ListView")) {
        gdxContact1->SetView(GridView::Card);
        SetEditMode(mEditMode);
    }
}

void frmContacts::Command3_Click() {
    const bool toCards = gdxContact1->View() == GridView::Table;
    gdxContact1->SetView(toCards ? GridView::Card : GridView::Table);
    // The caption offers the other view.
    Command3->setText(toCards ? QStringLiteral("ListView") : QStringLiteral("CardView"));
    Label11->setVisible(!toCards);
    txtAddSearch->setVisible(!toCards);
    SetEditMode(mEditMode);
}

ContactRow frmContacts::RowFrom(const GridRowValues& values) const {
    ContactRow row;
    for (int c = ccCoID; c < kContactArrayColumns && c <= values.Count(); ++c)
        row[size_t(c)] = values(c);
    return row;
}
