// The address book: the contact entry window's load and save, and the contact list of the main
// window with its in-place edit, new row and delete. No widgets: the windows gather their
// controls into these structures and show what comes back.
#pragma once

#include <QString>
#include <QVariant>
#include <QVector>

#include <array>

// ------------------------------------------------------------------ contact entry

// The contact types of the entry window (gContactType).
namespace ContactType {
constexpr int Any = 0; // the user chooses
constexpr int Customer = 1;
constexpr int Vendor = 2;
constexpr int Misc = 3;
} // namespace ContactType

// "Customer", "Vendor", "Misc" for types 1 to 3; "" otherwise.
QString ContactTypeText(int contactType);
// The table of a type text of Combo1; "" for "Select" or anything unknown.
QString ContactEntryTable(const QString& typeText);

// What the entry window holds.
struct ContactEntry {
    int contactType = 0;  // gContactType at load
    qint32 contactId = 0; // gContactID: 0 for a new contact
    QString typeText;     // the text of Combo1
    QString coName, add1, add2, add3, add4, pCode, contact1, tel1, fax1, email, shortNm;
    QString discount;
};

// Fills the boxes of an existing contact (types 1 to 3, identifier 1 or more). With type 1 the
// discount is the stored value; otherwise "0". False when nothing was read.
bool LoadContact(ContactEntry& entry);

// The save of the entry window. Guard, name and code check, back-quotes for apostrophes, a
// non-numeric discount made "0" (all written back into `entry`), then update or insert.
// True when the window may close; false keeps it open with its text.
bool SaveContact(ContactEntry& entry);

// Texts of the two help buttons.
QString ContactCodeHelpText();
QString ContactDiscountHelpText();
// Shows a help text as the help buttons do.
void ShowContactCodeHelp();
void ShowContactDiscountHelp();

// The number a discount text stands for: the locale's reading of a number, else the leading
// number of the text, else 0.
double DiscountValue(const QString& text);
// A discount as the boxes and the list show it, with the locale's decimal separator.
QString DiscountText(double value);

// ------------------------------------------------------------------ contact list

// mContactKind: which list the panel shows.
namespace ContactKind {
constexpr quint8 Locations = 0;
constexpr quint8 Suppliers = 1;
constexpr quint8 Customers = 2;
constexpr quint8 Misc = 99;
} // namespace ContactKind

// "Loc", "Sup", "Cus", "Mis"; "" for an unknown kind.
QString ContactTablePrefix(quint8 kind);
// "tbl" + prefix + "Addresses".
QString ContactListTable(quint8 kind);

// Array columns of the list (1 to 13; the array is 14 wide and its column 0 is not used).
enum ContactColumn : int {
    ccCoID = 1,
    ccCoName,
    ccAdd1,
    ccAdd2,
    ccAdd3,
    ccAdd4,
    ccPCode,
    ccContact,
    ccTel,
    ccFax,
    ccEmail,
    ccShortNm,
    ccDiscount,
};
constexpr int kContactArrayColumns = 14;
using ContactRow = std::array<QVariant, kContactArrayColumns>;

// The working copy behind the list grid.
struct ContactListData {
    quint8 mContactKind = ContactKind::Locations;
    QVector<ContactRow> rows;                              // record n is rows[n - 1]
    int mContactCount() const { return int(rows.size()); } // the row count
};

// Reads the contacts of the kind whose name starts with `search`, by name; "NON" contacts are
// left out. Customers carry their discount in column 13.
void LoadContactList(ContactListData& list, const QString& search);

// An edited row (record from 1): the array row takes the values, then the row is written.
void UpdateContactRow(ContactListData& list, int record, const ContactRow& values);

// The new last row: checked, inserted, its new AddID set in column 1 and appended to the array.
// False (after the message) when the row must not be written.
bool AddContactRow(ContactListData& list, ContactRow& values);

// The checks and the question in front of a delete (record from 1). False keeps the row.
bool ConfirmContactDelete(const ContactListData& list, int record);
// Deletes the record from its table and moves the rows under it up by one.
void DeleteContactRow(ContactListData& list, int record);
