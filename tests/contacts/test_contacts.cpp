#include "contacts/Contacts.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "tests/support/TestSupport.h"

#include <QTest>

namespace {

const QString kVendorNotice = QStringLiteral(
    "If you just created a new vendor then you won't be able to place orders against that vendor "
    "because the new vendor does not have any related inventory items");

qint64 count(const QString& table) {
    return SqlFirst(QStringLiteral("SELECT COUNT(*) FROM ") + table).toLongLong();
}

qint32 addContact(const QString& table, const QString& name, const QString& code,
                  const QString& extraCols = {}, const QString& extraVals = {}) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(QStringLiteral("INSERT INTO ") + table + QStringLiteral(" (CoName, ShortNm, Add1") +
                   extraCols + QStringLiteral(") VALUES (?, ?, 'High St'") + extraVals +
                   QStringLiteral(")"),
               {name, code});
    return qint32(
        db.OpenRecordset(QStringLiteral("SELECT MAX(AddID) FROM ") + table).Fields(0).Long());
}

ContactEntry newEntry(const QString& type, const QString& name, const QString& code) {
    ContactEntry e;
    e.contactType = 0;
    e.contactId = 0;
    e.typeText = type;
    e.coName = name;
    e.shortNm = code;
    e.add1 = QStringLiteral("1 Mill Lane");
    e.discount = QStringLiteral("5");
    return e;
}

ContactRow listRow(const QString& name, const QString& code, const QString& add1 = {}) {
    ContactRow r;
    r[ccCoName] = name;
    r[ccShortNm] = code;
    r[ccAdd1] = add1;
    return r;
}

QStringList names(const ContactListData& list) {
    QStringList out;
    for (const ContactRow& r : list.rows)
        out << r[ccCoName].toString();
    return out;
}

} // namespace

class TestContacts : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    // ---------------------------------------------------------------- contact entry

    void newContactTextAndDiscountRules() {
        TestData data;
        ScriptedBoxes boxes;
        ContactEntry e = newEntry(QStringLiteral("Customer"), QStringLiteral("  O'Brien's Ltd "),
                                  QStringLiteral(" OB'1 "));
        e.contact1 = QStringLiteral("Pat O'Neil");
        QVERIFY(SaveContact(e));
        QCOMPARE(boxes.shown().size(), 0);
        QCOMPARE(e.coName, QStringLiteral("O`Brien`s Ltd")); // written back to the window
        QCOMPARE(SqlFirst("SELECT CoName FROM tblCusAddresses"), QStringLiteral("O`Brien`s Ltd"));
        QCOMPARE(SqlFirst("SELECT ShortNm FROM tblCusAddresses"), QStringLiteral("OB`1"));
        QCOMPARE(SqlFirst("SELECT Contact1 FROM tblCusAddresses"), QStringLiteral("Pat O`Neil"));
        QCOMPARE(SqlFirst("SELECT Add1 FROM tblCusAddresses"), QStringLiteral("1 Mill Lane"));
        QCOMPARE(SqlFirst("SELECT Discount FROM tblCusAddresses").toDouble(), 5.0);

        // A discount that is not a number becomes 0.
        for (const QString& bad : {QStringLiteral("abc"), QString(), QStringLiteral("5x")}) {
            ExecSql("DELETE FROM tblCusAddresses");
            ContactEntry d =
                newEntry(QStringLiteral("Customer"), QStringLiteral("Acme"), QStringLiteral("ACM"));
            d.discount = bad;
            QVERIFY(SaveContact(d));
            QCOMPARE(d.discount, QStringLiteral("0"));
            QCOMPARE(SqlFirst("SELECT Discount FROM tblCusAddresses"), QStringLiteral("0"));
        }
        // A decimal discount keeps its value, written with "." on a comma locale too.
        LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
        ExecSql("DELETE FROM tblCusAddresses");
        e = newEntry(QStringLiteral("Customer"), QStringLiteral("Acme"), QStringLiteral("ACM"));
        e.discount = QStringLiteral("12,5");
        QVERIFY(SaveContact(e));
        QCOMPARE(SqlFirst("SELECT Discount FROM tblCusAddresses").toDouble(), 12.5);
    }

    void duplicateCheckLooksInOneTableForNewContactsOnly() {
        TestData data;
        ScriptedBoxes boxes;
        const qint32 abc = addContact("tblCusAddresses", "Alpha Co", "ABC");
        addContact("tblCusAddresses", "Beta Co", "BET");

        // Same code, same table: refused, the window stays, nothing written.
        ContactEntry dupCode =
            newEntry(QStringLiteral("Customer"), QStringLiteral("Gamma"), QStringLiteral("ABC"));
        boxes.answer(vbOK);
        QVERIFY(!SaveContact(dupCode));
        QCOMPARE(boxes.prompts(),
                 QStringList{QStringLiteral("A record already exists using the same Company or "
                                            "abbreviated name")});
        QCOMPARE(count("tblCusAddresses"), 2);

        // Same name (any case), same table: refused too.
        ContactEntry dupName =
            newEntry(QStringLiteral("Customer"), QStringLiteral("alpha co"), QStringLiteral("NEW"));
        boxes.answer(vbOK);
        QVERIFY(!SaveContact(dupName));
        QCOMPARE(count("tblCusAddresses"), 2);

        // The same code in another table is accepted.
        boxes.clear();
        ContactEntry misc =
            newEntry(QStringLiteral("Misc"), QStringLiteral("Alpha Co"), QStringLiteral("ABC"));
        QVERIFY(SaveContact(misc));
        QCOMPARE(boxes.shown().size(), 0);
        QCOMPARE(count("tblMisAddresses"), 1);

        // Changing an existing contact to a code in use is not refused.
        ContactEntry change =
            newEntry(QStringLiteral("Customer"), QStringLiteral("Alpha Co"), QStringLiteral("BET"));
        change.contactType = 1;
        change.contactId = abc;
        change.discount = QStringLiteral("7");
        QVERIFY(SaveContact(change));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT ShortNm || '/' || Discount FROM tblCusAddresses "
                                         "WHERE AddID=") +
                          QString::number(abc)),
                 QStringLiteral("BET/7.0"));
        QCOMPARE(count("tblCusAddresses"), 2);
    }

    void messagesOfTheSave() {
        TestData data;
        ScriptedBoxes boxes;
        // Name or code missing (blanks count as missing).
        ContactEntry e =
            newEntry(QStringLiteral("Vendor"), QStringLiteral("   "), QStringLiteral("V1"));
        boxes.answer(vbOK);
        QVERIFY(!SaveContact(e));
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("Can't proceed without name and abbreviated code"));

        // Without the contacts right the save stops at the guard.
        gCanContacts = false;
        e = newEntry(QStringLiteral("Vendor"), QStringLiteral("V"), QStringLiteral("V1"));
        boxes.answer(vbOK);
        QVERIFY(!SaveContact(e));
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("You do not have permission to add or make changes to "
                                "contact/address details"));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Access Restricted"));
        QCOMPARE(boxes.shown().last().flags, int(vbInformation));
        gCanContacts = true;
        QCOMPARE(count("tblSupAddresses"), 1); // only the "No Supplier" row

        // An insert that changes no row: the critical message, the window stays.
        ExecSql("CREATE TRIGGER noMis BEFORE INSERT ON tblMisAddresses BEGIN SELECT RAISE(IGNORE); "
                "END");
        e = newEntry(QStringLiteral("Misc"), QStringLiteral("M"), QStringLiteral("M1"));
        boxes.answer(vbOK);
        QVERIFY(!SaveContact(e));
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("An unexpected error occured. The record could not be entered "
                                "into the database. You can try again if you want"));
        QCOMPARE(boxes.shown().last().flags, int(vbCritical));

        // A new vendor is told that it has no items yet; a changed one is not.
        e = newEntry(QStringLiteral("Vendor"), QStringLiteral("Parts Inc"), QStringLiteral("PI"));
        boxes.answer(vbOK);
        QVERIFY(SaveContact(e));
        QCOMPARE(boxes.shown().last().prompt, kVendorNotice);
        QCOMPARE(boxes.shown().last().flags, int(vbInformation));
        const int shown = int(boxes.shown().size());
        e.contactType = 2;
        e.contactId =
            qint32(SqlFirst("SELECT AddID FROM tblSupAddresses WHERE ShortNm='PI'").toInt());
        QVERIFY(SaveContact(e));
        QCOMPARE(int(boxes.shown().size()), shown);
        QVERIFY(boxes.allAnswersUsed());
    }

    void listMatchesNamePrefixAndHidesNon() {
        TestData data;
        addContact("tblCusAddresses", "Bravo", "BR", ", Discount", ", 2.5");
        addContact("tblCusAddresses", "alpha", "AL", ", Discount", ", 4");
        addContact("tblCusAddresses", "Apex", "NON");
        addContact("tblCusAddresses", "A%Z", "PC", ", Discount", ", 'x'");
        addContact("tblCusAddresses", "Axe", "non");
        ContactListData list;
        list.mContactKind = ContactKind::Customers;
        LoadContactList(list, QString());
        QCOMPARE(names(list), (QStringList{"A%Z", "alpha", "Axe", "Bravo"}));
        QCOMPARE(list.rows[1][ccDiscount].toString(), QStringLiteral("4"));
        QCOMPARE(list.rows[3][ccDiscount].toString(), QStringLiteral("2.5"));
        QCOMPARE(list.rows[0][ccDiscount].toString(), QStringLiteral("0"));
        QVERIFY(list.rows[1][ccCoID].toLongLong() > 0);
        LoadContactList(list, QStringLiteral("A"));
        QCOMPARE(names(list), (QStringList{"A%Z", "alpha", "Axe"}));
        LoadContactList(list, QStringLiteral("A%"));
        QCOMPARE(names(list), QStringList{"A%Z"});

        // Other kinds read their own table and carry no discount; "NON" stays out there too.
        addContact("tblSupAddresses", "Non-stock", "NON");
        addContact("tblSupAddresses", "Acme Parts", "ACM");
        list.mContactKind = ContactKind::Suppliers;
        LoadContactList(list, QString());
        QCOMPARE(names(list), (QStringList{"Acme Parts", "No Supplier"}));
        QVERIFY(list.rows[0][ccDiscount].isNull());
    }

    void inPlaceEditWritesTrailingBlankAfterAddress1() {
        TestData data;
        const qint32 id = addContact("tblCusAddresses", "Alpha Co", "ABC", ", Discount", ", 3");
        ContactListData list;
        list.mContactKind = ContactKind::Customers;
        LoadContactList(list, QString());
        ContactRow row = list.rows[0];
        row[ccAdd1] = QStringLiteral("2 Park Rd");
        row[ccAdd2] = QStringLiteral("Leeds");
        row[ccTel] = QStringLiteral("0113");
        row[ccDiscount] = QStringLiteral("abc");
        UpdateContactRow(list, 1, row);
        QCOMPARE(list.rows[0][ccAdd1].toString(), QStringLiteral("2 Park Rd"));
        const QString where =
            QStringLiteral(" FROM tblCusAddresses WHERE AddID=") + QString::number(id);
        QCOMPARE(SqlFirst("SELECT Add1" + where), QStringLiteral("2 Park Rd "));
        QCOMPARE(SqlFirst("SELECT Add2" + where), QStringLiteral("Leeds"));
        QCOMPARE(SqlFirst("SELECT Tel1" + where), QStringLiteral("0113"));
        QCOMPARE(SqlFirst("SELECT Discount" + where), QStringLiteral("0"));
        // Each edit after a reload adds one more blank.
        LoadContactList(list, QString());
        row = list.rows[0];
        row[ccDiscount] = QStringLiteral("7.5");
        UpdateContactRow(list, 1, row);
        QCOMPARE(SqlFirst("SELECT Add1" + where), QStringLiteral("2 Park Rd  "));
        QCOMPARE(SqlFirst("SELECT Discount" + where), QStringLiteral("7.5"));
    }

    void newRowIsCheckedAndInsertedWithoutDuplicateCheck() {
        TestData data;
        ScriptedBoxes boxes;
        addContact("tblMisAddresses", "Courier", "CR");
        ContactListData list;
        list.mContactKind = ContactKind::Misc;
        LoadContactList(list, QString());

        ContactRow noCode = listRow(QStringLiteral("Nameless"), QString());
        boxes.answer(vbOK);
        QVERIFY(!AddContactRow(list, noCode));
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("The New Address Record must have a Company Name and an "
                                "abbreviated Company Code"));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Invalid Data"));
        QCOMPARE(boxes.shown().last().flags, int(vbOKCancel));
        QCOMPARE(list.mContactCount(), 1);
        QCOMPARE(count("tblMisAddresses"), 1);

        ContactRow dup =
            listRow(QStringLiteral("Courier"), QStringLiteral("CR"), QStringLiteral("Depot 4"));
        QVERIFY(AddContactRow(list, dup));
        QCOMPARE(count("tblMisAddresses"), 2);
        QCOMPARE(list.mContactCount(), 2);
        const qint64 newId = list.rows[1][ccCoID].toLongLong();
        QCOMPARE(SqlFirst("SELECT MAX(AddID) FROM tblMisAddresses").toLongLong(), newId);
        // No trailing blank on an insert.
        QCOMPARE(SqlFirst("SELECT Add1 FROM tblMisAddresses WHERE AddID=" + QString::number(newId)),
                 QStringLiteral("Depot 4"));
    }

    void supplierDeleteChecksPrimeBeforeOrders() {
        TestData data;
        ScriptedBoxes boxes;
        const qint32 both = addContact("tblSupAddresses", "Both", "BO");
        const qint32 poOnly = addContact("tblSupAddresses", "Orders", "OR");
        const qint32 second = addContact("tblSupAddresses", "Second", "SE");
        ExecSql(QStringLiteral("INSERT INTO tblItemSupplier (ItemID, SupplierID, PrimeSupplier) "
                               "VALUES (1, %1, 1), (1, %2, 0)")
                    .arg(both)
                    .arg(second));
        ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, POSupID) VALUES (1, %1), (2, %2)")
                    .arg(both)
                    .arg(poOnly));
        ContactListData list;
        list.mContactKind = ContactKind::Suppliers;
        LoadContactList(list, QString());
        QCOMPARE(names(list), (QStringList{"Both", "No Supplier", "Orders", "Second"}));

        boxes.answer(vbOK);
        QVERIFY(!ConfirmContactDelete(list, 1));
        QCOMPARE(boxes.prompts(),
                 QStringList{QStringLiteral(
                     "The Supplier is PrimeSupplier for one or more stock Items. Can't delete "
                     "the supplier until such parts are reallocated")});
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Can't delete record"));
        QCOMPARE(boxes.shown().last().flags, int(vbOKOnly));

        boxes.clear();
        boxes.answer(vbOK);
        QVERIFY(!ConfirmContactDelete(list, 3));
        QCOMPARE(boxes.prompts(),
                 QStringList{QStringLiteral(
                     "The Supplier is Linked to Purchase Order History so can not be deleted")});

        // A supplier that is not prime anywhere and has no orders: asked, then deleted.
        boxes.clear();
        boxes.answer(vbNo);
        QVERIFY(!ConfirmContactDelete(list, 4));
        QCOMPARE(boxes.prompts(), QStringList{QStringLiteral(
                                      "Are you sure you want to delete the Highlighted record?")});
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Delete Row"));
        QCOMPARE(boxes.shown().last().flags, int(vbYesNo));
        boxes.answer(vbYes);
        QVERIFY(ConfirmContactDelete(list, 4));
        DeleteContactRow(list, 4);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT COUNT(*) FROM tblSupAddresses WHERE AddID=") +
                          QString::number(second)),
                 QStringLiteral("0"));
        QCOMPARE(names(list), (QStringList{"Both", "No Supplier", "Orders"}));
    }

    void customerWithAnyOrderIsKeptAndRowsMoveUpOnDelete() {
        TestData data;
        ScriptedBoxes boxes;
        const qint32 a = addContact("tblCusAddresses", "A Shop", "AS");
        addContact("tblCusAddresses", "B Shop", "BS");
        const qint32 c = addContact("tblCusAddresses", "C Shop", "CS");
        addContact("tblCusAddresses", "D Shop", "DS");
        // A finished order (all shipped) still links the customer.
        ExecSql(QStringLiteral("INSERT INTO tblCustOrders (CustBasketID, CustID, ORDone) VALUES "
                               "(1, %1, -1)")
                    .arg(c));
        ExecSql("INSERT INTO tblCustOrderDetail (CustBasketDetailID, OrderedQty, ShippedQty) "
                "VALUES (1, 2, 2)");
        ContactListData list;
        list.mContactKind = ContactKind::Customers;
        LoadContactList(list, QString());
        boxes.answer(vbOK);
        QVERIFY(!ConfirmContactDelete(list, 3));
        QCOMPARE(boxes.prompts(),
                 QStringList{QStringLiteral("The Customer is linked to Order History so can not be "
                                            "deleted")});
        QCOMPARE(count("tblCusAddresses"), 4);

        // Deleting the second row: the first stays, the others move up with all their columns.
        const ContactRow third = list.rows[2];
        const ContactRow fourth = list.rows[3];
        DeleteContactRow(list, 2);
        QCOMPARE(list.mContactCount(), 3);
        QCOMPARE(list.rows[0][ccCoID].toLongLong(), qint64(a));
        QVERIFY(list.rows[1] == third);
        QVERIFY(list.rows[2] == fourth);
        QCOMPARE(names(list), (QStringList{"A Shop", "C Shop", "D Shop"}));
        QCOMPARE(SqlFirst("SELECT COUNT(*) FROM tblCusAddresses WHERE CoName='B Shop'"),
                 QStringLiteral("0"));
    }

    void locationsAndMiscHaveNoLinkCheck() {
        TestData data;
        ScriptedBoxes boxes;
        const qint32 loc = addContact("tblLocAddresses", "Main Store", "MS");
        // Used by an item and by a purchase order: still only the question.
        ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo, Location) VALUES (1, 'P1', 'Main "
                "Store')");
        ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, POSupID, POLocID) VALUES (1, 0, %1)")
                    .arg(loc));
        ExecSql(QStringLiteral("INSERT INTO tblItemSupplier (ItemID, SupplierID, PrimeSupplier) "
                               "VALUES (1, %1, 1)")
                    .arg(loc));
        ContactListData list;
        list.mContactKind = ContactKind::Locations;
        LoadContactList(list, QString());
        boxes.answer(vbYes);
        QVERIFY(ConfirmContactDelete(list, 1));
        DeleteContactRow(list, 1);
        QCOMPARE(boxes.prompts(), QStringList{QStringLiteral(
                                      "Are you sure you want to delete the Highlighted record?")});
        QCOMPARE(count("tblLocAddresses"), 0);
        QCOMPARE(list.mContactCount(), 0);
    }
};

QTEST_GUILESS_MAIN(TestContacts)
#include "test_contacts.moc"
