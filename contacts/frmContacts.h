// The contact list panel of the main window: one kind of address at a time in gdxContact1,
// edited in place (a changed row is written when it is left or Enter is pressed, a new last row
// adds a contact, Delete removes one after the link checks).
#pragma once

#include "contacts/Contacts.h"

#include <QFrame>

class GridEX;
class GridRowValues;
class QLabel;
class QLineEdit;
class QPushButton;

class frmContacts : public QFrame {
    Q_OBJECT
public:
    explicit frmContacts(QWidget* parent = nullptr);

    // The keys of the Addresses group: "New", "Locations", "Suppliers", "Customers", "Misc".
    // False for any other key (nothing done).
    bool AddressKey(const QString& key, QWidget* dialogParent = nullptr);
    // The "New" key after its guard: a new contact of a type the user picks, in frmEditContact
    // opened modally over `dialogParent` (the panel's window when null).
    void NewContact(QWidget* dialogParent = nullptr);

    // Shows the panel with Label11 and txtAddSearch, loads the list of mContactKind and sends
    // the help tip.
    void ShowContactsPanel();
    void LoadContactList();
    void Command3_Click();
    // Editing, adding and deleting rows in the grid; the main window turns it off when another
    // group of the bar is chosen.
    void SetEditMode(bool on);

    quint8 ContactKind() const { return mList.mContactKind; }
    void SetContactKind(quint8 kind) { mList.mContactKind = kind; }
    const ContactListData& List() const { return mList; }

    QLabel* Label11 = nullptr;
    QLineEdit* txtAddSearch = nullptr;
    QPushButton* Command3 = nullptr;
    GridEX* gdxContact1 = nullptr;

    // The help tip text of the panel.
    static QString HelpTipText();

signals:
    // For lblHelpTip of the main window.
    void HelpTip(const QString& text);

private:
    void DefineColumns();
    ContactRow RowFrom(const GridRowValues& values) const;

    ContactListData mList;
    bool mEditMode = false;
};
