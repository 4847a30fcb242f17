#include "contacts/Contacts.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/MsgBox.h"
#include "foundation/Rights.h"

#include <QLocale>

namespace {

// Discounts go into statements through this mask.
const QString kDiscountMask = QStringLiteral("0.00###");

bool isNumericText(const QString& text) {
    const QString t = text.trimmed();
    if (t.isEmpty())
        return false;
    bool ok = false;
    QLocale().toDouble(t, &ok);
    return ok;
}

QString text(const QVariant& v) {
    return v.isNull() ? QString() : v.toString();
}

} // namespace

// ------------------------------------------------------------------ shared

double DiscountValue(const QString& t) {
    if (isNumericText(t))
        return ParseLocaleNumber(t);
    return Val(t);
}

QString DiscountText(double value) {
    QLocale loc;
    loc.setNumberOptions(QLocale::OmitGroupSeparator);
    return loc.toString(value, 'g', 15);
}

// ------------------------------------------------------------------ contact entry

QString ContactTypeText(int contactType) {
    switch (contactType) {
    case ContactType::Customer:
        return QStringLiteral("Customer");
    case ContactType::Vendor:
        return QStringLiteral("Vendor");
    case ContactType::Misc:
        return QStringLiteral("Misc");
    default:
        return QString();
    }
}

QString ContactEntryTable(const QString& typeText) {
    if (typeText == QLatin1String("Customer"))
        return QStringLiteral("tblCusAddresses");
    if (typeText == QLatin1String("Vendor"))
        return QStringLiteral("tblSupAddresses");
    if (typeText == QLatin1String("Misc"))
        return QStringLiteral("tblMisAddresses");
    return QString();
}

bool LoadContact(ContactEntry& e) {
    if (e.contactType < ContactType::Customer || e.contactType > ContactType::Misc ||
        e.contactId < 1)
        return false;
    const QString table = ContactEntryTable(ContactTypeText(e.contactType));
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM ") + table +
                                    QStringLiteral(" WHERE AddID=") + QString::number(e.contactId));
    if (rs.Eof())
        return false;
    e.coName = rs.Fields(QStringLiteral("CoName")).Text();
    e.add1 = rs.Fields(QStringLiteral("Add1")).Text();
    e.add2 = rs.Fields(QStringLiteral("Add2")).Text();
    e.add3 = rs.Fields(QStringLiteral("Add3")).Text();
    e.add4 = rs.Fields(QStringLiteral("Add4")).Text();
    e.pCode = rs.Fields(QStringLiteral("PCode")).Text();
    e.contact1 = rs.Fields(QStringLiteral("Contact1")).Text();
    e.tel1 = rs.Fields(QStringLiteral("tel1")).Text();
    e.fax1 = rs.Fields(QStringLiteral("fax1")).Text();
    e.email = rs.Fields(QStringLiteral("email")).Text();
    e.shortNm = rs.Fields(QStringLiteral("ShortNm")).Text();
    if (e.contactType == ContactType::Customer)
        e.discount = DiscountText(ParseLocaleNumber(rs.Fields(QStringLiteral("discount")).Value()));
    else
        e.discount = QStringLiteral("0");
    return true;
}

bool SaveContact(ContactEntry& e) {
    if (!CheckRight(Right::Contacts))
        return false;

    e.coName = e.coName.trimmed();
    e.shortNm = e.shortNm.trimmed();
    if (e.coName.isEmpty() || e.shortNm.isEmpty()) {
        MsgBox(QStringLiteral("Can't proceed without name and abbreviated code"));
        return false;
    }

    // Apostrophes never reach a statement: they are stored as back-quotes.
    for (QString* s : {&e.coName, &e.add1, &e.add2, &e.add3, &e.add4, &e.pCode, &e.contact1,
                       &e.tel1, &e.fax1, &e.email, &e.shortNm})
        *s = ApostropheOut(*s);

    if (!isNumericText(e.discount))
        e.discount = QStringLiteral("0");

    const QString table = ContactEntryTable(e.typeText);
    if (table.isEmpty())
        return false; // no type chosen: nothing to write to
    QString extraColumn, extraValue;
    if (e.typeText == QLatin1String("Customer")) {
        extraColumn = QStringLiteral(",Discount");
        extraValue = QStringLiteral(",") + SqlNumber(ParseLocaleNumber(e.discount), kDiscountMask);
    }

    const QVariantList values{e.coName,   e.add1, e.add2, e.add3,  e.add4,   e.pCode,
                              e.contact1, e.tel1, e.fax1, e.email, e.shortNm};

    Database db = DBEngine::OpenDatabase(gDbPath);
    if (e.contactId >= 1) {
        // A change is written as it stands: no duplicate check.
        QString sql = QStringLiteral("UPDATE ") + table +
                      QStringLiteral(" SET  CoName = ?, Add1 = ?, Add2 = ?, Add3 = ?, Add4 = ?, "
                                     "PCode = ?, Contact1 = ?, Tel1 = ?, Fax1 = ?, EMail = ?, "
                                     "ShortNm = ?");
        if (e.contactType == ContactType::Customer)
            sql += QStringLiteral(", Discount=") +
                   SqlNumber(ParseLocaleNumber(e.discount), kDiscountMask);
        sql += QStringLiteral(" WHERE AddID = ") + QString::number(e.contactId);
        db.Execute(sql, values);
    } else {
        Recordset dup = db.OpenRecordset(QStringLiteral("SELECT AddID FROM ") + table +
                                             QStringLiteral(" WHERE CoName = ? OR ShortNm = ?"),
                                         {e.coName, e.shortNm});
        if (!dup.Eof()) {
            MsgBox(QStringLiteral("A record already exists using the same Company or "
                                  "abbreviated name"));
            return false;
        }
        dup.Close();
        db.Execute(QStringLiteral("INSERT INTO ") + table +
                       QStringLiteral(" (CoName, Add1, Add2, Add3, Add4, PCode, Contact1, Tel1, "
                                      "Fax1, EMail, ShortNm") +
                       extraColumn + QStringLiteral(") VALUES (?,?,?,?,?,?,?,?,?,?,?") +
                       extraValue + QStringLiteral(")"),
                   values);
        if (db.RecordsAffected() < 1) {
            MsgBox(QStringLiteral("An unexpected error occured. The record could not be entered "
                                  "into the database. You can try again if you want"),
                   vbCritical);
            return false;
        }
    }
    db.Close();

    if (e.contactId == 0 && e.typeText == QLatin1String("Vendor"))
        MsgBox(QStringLiteral("If you just created a new vendor then you won't be able to place "
                              "orders against that vendor because the new vendor does not have "
                              "any related inventory items"),
               vbInformation, QString());
    return true;
}

QString ContactCodeHelpText() {
    return QStringLiteral(
        "Each contact needs an abbreviated name or code which will be displayed on some lists and "
        "printouts where there might not be enough space to display the full name. Keep these "
        "short. Just 4 or 5 letters/numbers is fine");
}

QString ContactDiscountHelpText() {
    return QStringLiteral("Each customer can have a default discount level. This discount will "
                          "then affect all the future orders placed by this customer") +
           QStringLiteral("\n\n") +
           QStringLiteral("It's only a default to save you typing/calculating prices every time "
                          "you process an order. When you place orders for this customer you "
                          "will of course be able to override this value on individual item rows "
                          "or on the order as a whole");
}

void ShowContactCodeHelp() {
    MsgBox(ContactCodeHelpText(), vbInformation);
}

void ShowContactDiscountHelp() {
    MsgBox(ContactDiscountHelpText(), vbInformation);
}

// ------------------------------------------------------------------ contact list

QString ContactTablePrefix(quint8 kind) {
    switch (kind) {
    case ContactKind::Locations:
        return QStringLiteral("Loc");
    case ContactKind::Suppliers:
        return QStringLiteral("Sup");
    case ContactKind::Customers:
        return QStringLiteral("Cus");
    case ContactKind::Misc:
        return QStringLiteral("Mis");
    default:
        return QString();
    }
}

QString ContactListTable(quint8 kind) {
    return QStringLiteral("tbl") + ContactTablePrefix(kind) + QStringLiteral("Addresses");
}

void LoadContactList(ContactListData& list, const QString& search) {
    const QString table = ContactListTable(list.mContactKind);
    list.rows.clear();
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * from ") + table +
                                    QStringLiteral(" WHERE ") + table + QStringLiteral(".CoName ") +
                                    LikePrefix(search) + QStringLiteral(" ORDER BY CoName"));
    const bool customers = list.mContactKind == ContactKind::Customers;
    for (; !rs.Eof(); rs.MoveNext()) {
        // The pseudo-contact "NON" never shows in a list.
        if (rs.Fields(QStringLiteral("ShortNm")).Text() == QLatin1String("NON"))
            continue;
        ContactRow row;
        row[ccCoID] = rs.Fields(QStringLiteral("AddID")).Long();
        row[ccCoName] = rs.Fields(QStringLiteral("CoName")).Text();
        row[ccAdd1] = rs.Fields(QStringLiteral("Add1")).Text();
        row[ccAdd2] = rs.Fields(QStringLiteral("Add2")).Text();
        row[ccAdd3] = rs.Fields(QStringLiteral("Add3")).Text();
        row[ccAdd4] = rs.Fields(QStringLiteral("Add4")).Text();
        row[ccPCode] = rs.Fields(QStringLiteral("PCode")).Text();
        row[ccContact] = rs.Fields(QStringLiteral("Contact1")).Text();
        row[ccTel] = rs.Fields(QStringLiteral("tel1")).Text();
        row[ccFax] = rs.Fields(QStringLiteral("fax1")).Text();
        row[ccEmail] = rs.Fields(QStringLiteral("email")).Text();
        row[ccShortNm] = rs.Fields(QStringLiteral("ShortNm")).Text();
        if (customers)
            row[ccDiscount] =
                DiscountText(ParseLocaleNumber(rs.Fields(QStringLiteral("discount")).Value()));
        list.rows.append(row);
    }
}

void UpdateContactRow(ContactListData& list, int record, const ContactRow& values) {
    if (record < 1 || record > list.mContactCount())
        return;
    ContactRow& row = list.rows[record - 1];
    for (int c = ccCoName; c < kContactArrayColumns; ++c)
        row[c] = values[c];

    QString sql = QStringLiteral("update ") + ContactListTable(list.mContactKind) +
                  QStringLiteral(" ") +
                  QStringLiteral(" set  CoName = ?, Add1 = ?, Add2 = ?, Add3 = ?, Add4 = ?, "
                                 "PCode = ?, Contact1 = ?, Tel1 = ?, Fax1 = ?, EMail = ?, "
                                 "ShortNm = ?");
    if (list.mContactKind == ContactKind::Customers)
        sql += QStringLiteral(", Discount =") +
               SqlNumber(DiscountValue(text(row[ccDiscount])), kDiscountMask);
    sql += QStringLiteral(" WHERE AddID=") + QString::number(row[ccCoID].toLongLong());
    // The statement writes address 1 with one blank after it, every time it runs.
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(sql, {ApostropheOut(text(row[ccCoName])),
                     ApostropheOut(text(row[ccAdd1])) + QStringLiteral(" "),
                     ApostropheOut(text(row[ccAdd2])), ApostropheOut(text(row[ccAdd3])),
                     ApostropheOut(text(row[ccAdd4])), ApostropheOut(text(row[ccPCode])),
                     ApostropheOut(text(row[ccContact])), ApostropheOut(text(row[ccTel])),
                     ApostropheOut(text(row[ccFax])), ApostropheOut(text(row[ccEmail])),
                     ApostropheOut(text(row[ccShortNm]))});
}

bool AddContactRow(ContactListData& list, ContactRow& values) {
    const QString company = ApostropheOut(text(values[ccCoName]));
    if (company.isEmpty() || text(values[ccShortNm]).isEmpty()) {
        MsgBox(QStringLiteral("The New Address Record must have a Company Name and an "
                              "abbreviated Company Code"),
               vbOKCancel, QStringLiteral("Invalid Data"));
        return false;
    }
    const QString table = ContactListTable(list.mContactKind);
    Database db = DBEngine::OpenDatabase(gDbPath);
    {
        // No duplicate check here: the same name may be added twice.
        Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM ") + table +
                                            QStringLiteral(" WHERE CoName=?"),
                                        {company});
        rs.AddNew();
        rs.SetField(QStringLiteral("CoName"), company);
        rs.SetField(QStringLiteral("Add1"), ApostropheOut(text(values[ccAdd1])));
        rs.SetField(QStringLiteral("Add2"), ApostropheOut(text(values[ccAdd2])));
        rs.SetField(QStringLiteral("Add3"), ApostropheOut(text(values[ccAdd3])));
        rs.SetField(QStringLiteral("Add4"), ApostropheOut(text(values[ccAdd4])));
        rs.SetField(QStringLiteral("PCode"), ApostropheOut(text(values[ccPCode])));
        rs.SetField(QStringLiteral("Contact1"), ApostropheOut(text(values[ccContact])));
        rs.SetField(QStringLiteral("tel1"), ApostropheOut(text(values[ccTel])));
        rs.SetField(QStringLiteral("fax1"), ApostropheOut(text(values[ccFax])));
        rs.SetField(QStringLiteral("email"), ApostropheOut(text(values[ccEmail])));
        rs.SetField(QStringLiteral("ShortNm"), ApostropheOut(text(values[ccShortNm])));
        if (list.mContactKind == ContactKind::Customers)
            rs.SetField(QStringLiteral("discount"), DiscountValue(text(values[ccDiscount])));
        rs.Update();
    }
    // The row just added: the newest of that name in the table.
    Recordset last =
        db.OpenRecordset(QStringLiteral("SELECT AddID FROM ") + table +
                             QStringLiteral(" WHERE CoName=? ORDER BY AddID DESC") + FirstRowOnly(),
                         {company});
    values[ccCoID] = last.Eof() ? 0 : last.Fields(QStringLiteral("AddID")).Long();
    list.rows.append(values);
    return true;
}

bool ConfirmContactDelete(const ContactListData& list, int record) {
    if (record < 1 || record > list.mContactCount())
        return false;
    const QString key = QString::number(list.rows[record - 1][ccCoID].toLongLong());
    const QString refusedTitle = QStringLiteral("Can't delete record");
    {
        Database db = DBEngine::OpenDatabase(gDbPath);
        if (list.mContactKind == ContactKind::Suppliers) {
            if (!db.OpenRecordset(QStringLiteral("SELECT SupplierID FROM tblItemSupplier WHERE "
                                                 "SupplierID=") +
                                  key + QStringLiteral(" AND PrimeSupplier=") + QStringLiteral("1"))
                     .Eof()) {
                MsgBox(QStringLiteral("The Supplier is PrimeSupplier for one or more stock Items. "
                                      "Can't delete the supplier until such parts are "
                                      "reallocated"),
                       vbOKOnly, refusedTitle);
                return false;
            }
            if (!db.OpenRecordset(QStringLiteral("SELECT POSupID FROM tblPOrders WHERE POSupID=") +
                                  key)
                     .Eof()) {
                MsgBox(QStringLiteral("The Supplier is Linked to Purchase Order History so can not "
                                      "be deleted"),
                       vbOKOnly, refusedTitle);
                return false;
            }
        } else if (list.mContactKind == ContactKind::Customers) {
            if (!db.OpenRecordset(QStringLiteral("SELECT CustID FROM tblCustOrders WHERE CustID=") +
                                  key)
                     .Eof()) {
                MsgBox(QStringLiteral("The Customer is linked to Order History so can not be "
                                      "deleted"),
                       vbOKOnly, refusedTitle);
                return false;
            }
        }
        // Locations and miscellaneous addresses are not checked.
    }
    return MsgBox(QStringLiteral("Are you sure you want to delete the Highlighted record?"),
                  vbYesNo, QStringLiteral("Delete Row")) == vbYes;
}

void DeleteContactRow(ContactListData& list, int record) {
    if (record < 1 || record > list.mContactCount())
        return;
    const QString key = QString::number(list.rows[record - 1][ccCoID].toLongLong());
    {
        Database db = DBEngine::OpenDatabase(gDbPath);
        db.Execute(QStringLiteral("DELETE FROM ") + ContactListTable(list.mContactKind) +
                   QStringLiteral(" WHERE AddID=") + key);
    }
    // The rows above stay; those under it move up by one.
    for (int r = record; r < list.mContactCount(); ++r)
        list.rows[r - 1] = list.rows[r];
    list.rows.removeLast();
}
