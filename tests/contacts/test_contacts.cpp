// The address book: the entry window's save rules and the contact lists, then both windows
// driven through their controls.
#include "contacts/Contacts.h"
#include "contacts/frmContacts.h"
#include "contacts/frmEditContact.h"
#include "foundation/Globals.h"
#include "grids/ColumnState.h"
#include "grids/GridEX.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

namespace {

const QString kDuplicate =
    QStringLiteral("A record already exists using the same Company or abbreviated name");

QString count(const QString& table) {
    return SqlFirst(QStringLiteral("SELECT COUNT(*) FROM ") + table);
}

// Contacts by name and code, with 'High St' for address 1; the key of the last one.
qint32 addContacts(const QString& table, const QStringList& nameCodes) {
    for (const QString& nc : nameCodes)
        ExecSql(QStringLiteral("INSERT INTO ") + table +
                    QStringLiteral(" (CoName, ShortNm, Add1) VALUES (?, ?, 'High St')"),
                {nc.section(QLatin1Char('/'), 0, 0), nc.section(QLatin1Char('/'), 1)});
    return SqlFirst(QStringLiteral("SELECT MAX(AddID) FROM ") + table).toInt();
}

ContactEntry newEntry(const QString& type, const QString& name, const QString& code) {
    ContactEntry e;
    e.typeText = type;
    e.coName = name;
    e.shortNm = code;
    e.add1 = QStringLiteral("1 Mill Lane");
    e.discount = QStringLiteral("5");
    return e;
}

ContactListData loaded(quint8 kind, const QString& search = {}) {
    ContactListData list;
    list.mContactKind = kind;
    LoadContactList(list, search);
    return list;
}

QStringList names(const ContactListData& list, int col = ccCoName) {
    QStringList out;
    for (const ContactRow& r : list.rows)
        out << r[col].toString();
    return out;
}

QStringList column(const GridEX& grid, const QString& key) {
    QStringList out;
    for (int r = 1; r <= grid.RowCount(); ++r)
        out << grid.CellValue(r, grid.Columns()(key).Index()).toString();
    return out;
}

// Types into a cell of a grid row (the blank new row is RowCount() + 1).
void setCell(GridEX& grid, int row, const QString& key, const QString& value) {
    QAbstractItemModel* m = grid.Model();
    QVERIFY(m->setData(m->index(row - 1, grid.Columns()(key).Index() - 1), value, Qt::EditRole));
}

} // namespace

class TestContacts : public QObject {
    Q_OBJECT
    std::unique_ptr<TestData> mData;
private slots:
    void init() {
        UseTestLocale();
        mData = std::make_unique<TestData>();
    }

    void newContactTextAndDiscountRules() {
        ScriptedBoxes boxes;
        ContactEntry e = newEntry("Customer", "  O'Brien's Ltd ", " OB'1 ");
        e.contact1 = QStringLiteral("Pat O'Neil");
        QVERIFY(SaveContact(e));
        QCOMPARE(e.coName, "O`Brien`s Ltd"); // written back to the window
        QCOMPARE(SqlRows("SELECT CoName, ShortNm, Contact1, Add1, Discount FROM tblCusAddresses"),
                 QStringList{"O`Brien`s Ltd|OB`1|Pat O`Neil|1 Mill Lane|5"});
        // A discount that is not a number becomes 0; a decimal one keeps its value, written with
        // "." on a comma locale too.
        const auto saved = [](const QString& discount) {
            ExecSql("DELETE FROM tblCusAddresses");
            ContactEntry d = newEntry("Customer", "Acme", "ACM");
            d.discount = discount;
            return SaveContact(d)
                       ? d.discount + '/' + SqlFirst("SELECT Discount FROM tblCusAddresses")
                       : QString();
        };
        QCOMPARE(saved(QStringLiteral("abc")), "0/0");
        QCOMPARE(saved(QString()), "0/0");
        LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(saved(QStringLiteral("12,5")), "12,5/12.5");
        QVERIFY(boxes.shown().isEmpty());
    }

    void duplicateCheckLooksInOneTableForNewContactsOnly() {
        ScriptedBoxes boxes;
        const qint32 abc = addContacts("tblCusAddresses", {"Beta Co/BET", "Alpha Co/ABC"});
        // Same code, or same name in any case, same table: refused, nothing written.
        ContactEntry dupCode = newEntry("Customer", "Gamma", "ABC");
        ContactEntry dupName = newEntry("Customer", "alpha co", "NEW");
        boxes.answer(vbOK);
        boxes.answer(vbOK);
        QVERIFY(!SaveContact(dupCode));
        QVERIFY(!SaveContact(dupName));
        QCOMPARE(boxes.prompts(), QStringList(2, kDuplicate));
        QCOMPARE(count("tblCusAddresses"), "2");
        // The same code in another table is accepted.
        ContactEntry misc = newEntry("Misc", "Alpha Co", "ABC");
        QVERIFY(SaveContact(misc));
        QCOMPARE(count("tblMisAddresses"), "1");
        // Changing an existing contact to a code in use is not refused.
        ContactEntry change = newEntry("Customer", "Alpha Co", "BET");
        change.contactType = ContactType::Customer;
        change.contactId = abc;
        change.discount = QStringLiteral("7");
        QVERIFY(SaveContact(change));
        QCOMPARE(SqlRows("SELECT ShortNm, Discount FROM tblCusAddresses WHERE AddID = " +
                         QString::number(abc)),
                 QStringList{"BET|7"});
        QCOMPARE(count("tblCusAddresses"), "2");
    }

    void messagesOfTheSave() {
        ScriptedBoxes boxes;
        // Name or code missing (blanks count as missing).
        ContactEntry e = newEntry("Vendor", "   ", "V1");
        boxes.answer(vbOK);
        QVERIFY(!SaveContact(e));
        // Without the contacts right the save stops at the guard.
        gCanContacts = false;
        e = newEntry("Vendor", "V", "V1");
        boxes.answer(vbOK);
        QVERIFY(!SaveContact(e));
        QCOMPARE(boxes.shown().last().title, "Access Restricted");
        gCanContacts = true;
        // An insert that changes no row: the critical message, the window stays.
        ExecSql("CREATE TRIGGER noMis BEFORE INSERT ON tblMisAddresses BEGIN SELECT RAISE(IGNORE); "
                "END");
        e = newEntry("Misc", "M", "M1");
        boxes.answer(vbOK);
        QVERIFY(!SaveContact(e));
        QCOMPARE(boxes.shown().last().flags, int(vbCritical));
        // A new vendor is told that it has no items yet; a changed one is not.
        e = newEntry("Vendor", "Parts Inc", "PI");
        boxes.answer(vbOK);
        QVERIFY(SaveContact(e));
        QCOMPARE(boxes.shown().last().flags, int(vbInformation));
        QCOMPARE(boxes.prompts(),
                 QStringList({"Can't proceed without name and abbreviated code",
                              "You do not have permission to add or make changes to "
                              "contact/address details",
                              "An unexpected error occured. The record could not be entered into "
                              "the database. You can try again if you want",
                              "If you just created a new vendor then you won't be able to place "
                              "orders against that vendor because the new vendor does not have "
                              "any related inventory items"}));
        e.contactType = ContactType::Vendor;
        e.contactId = SqlFirst("SELECT AddID FROM tblSupAddresses WHERE ShortNm='PI'").toInt();
        QVERIFY(SaveContact(e));
        QCOMPARE(boxes.shown().size(), 4);
        QCOMPARE(count("tblSupAddresses"), "2"); // "No Supplier" and Parts Inc
    }

    void listMatchesNamePrefixAndHidesNon() {
        addContacts("tblCusAddresses", {"Bravo/BR", "alpha/AL", "Apex/NON", "A%Z/PC", "Axe/non"});
        ExecSql("UPDATE tblCusAddresses SET Discount = CASE ShortNm WHEN 'BR' THEN 2.5 "
                "WHEN 'AL' THEN 4 ELSE 'x' END");
        ContactListData list = loaded(ContactKind::Customers);
        QCOMPARE(names(list), (QStringList{"A%Z", "alpha", "Axe", "Bravo"}));
        QCOMPARE(names(list, ccDiscount), QStringList({"0", "4", "0", "2.5"}));
        QCOMPARE(names(loaded(ContactKind::Customers, "A")), (QStringList{"A%Z", "alpha", "Axe"}));
        QCOMPARE(names(loaded(ContactKind::Customers, "A%")), QStringList{"A%Z"});
        // Other kinds read their own table and carry no discount.
        addContacts("tblSupAddresses", {"Acme Parts/ACM"});
        list = loaded(ContactKind::Suppliers);
        QVERIFY(list.rows[0][ccDiscount].isNull());
    }

    void inPlaceEditAndNewRow() {
        ScriptedBoxes boxes;
        const qint32 id = addContacts("tblCusAddresses", {"Alpha Co/ABC"});
        ContactListData list = loaded(ContactKind::Customers);
        ContactRow row = list.rows[0];
        row[ccAdd1] = QStringLiteral("2 Park Rd");
        row[ccTel] = QStringLiteral("0113");
        row[ccDiscount] = QStringLiteral("abc");
        UpdateContactRow(list, 1, row);
        const QString stored = QStringLiteral("SELECT Add1, Tel1, Discount FROM tblCusAddresses "
                                              "WHERE AddID=") +
                               QString::number(id);
        QCOMPARE(SqlRows(stored), QStringList{"2 Park Rd |0113|0"});
        // Each edit after a reload adds one more blank after address 1.
        list = loaded(ContactKind::Customers);
        row = list.rows[0];
        row[ccDiscount] = QStringLiteral("7.5");
        UpdateContactRow(list, 1, row);
        QCOMPARE(SqlRows(stored), QStringList{"2 Park Rd  |0113|7.5"});

        // A new row needs a name and a code; it is inserted without a duplicate check and
        // without the blank.
        ContactRow noCode{};
        noCode[ccCoName] = QStringLiteral("Nameless");
        boxes.answer(vbOK);
        QVERIFY(!AddContactRow(list, noCode));
        QCOMPARE(boxes.shown().last().prompt,
                 "The New Address Record must have a Company Name and an abbreviated Company Code");
        QCOMPARE(boxes.shown().last().title, "Invalid Data");
        QCOMPARE(boxes.shown().last().flags, int(vbOKCancel));
        QCOMPARE(list.mContactCount(), 1);
        noCode[ccShortNm] = QStringLiteral("ABC"); // a code in use: no duplicate check here
        QVERIFY(AddContactRow(list, noCode));
        QCOMPARE(count("tblCusAddresses WHERE ShortNm = 'ABC'"), "2");
    }

    // A supplier that is prime for an item cannot be deleted, and that check comes first.
    void supplierDeleteChecksPrimeBeforeOrders() {
        ScriptedBoxes boxes;
        addContacts("tblSupAddresses", {"Both/BO", "Orders/OR", "Second/SE"});
        ExecSql("INSERT INTO tblItemSupplier (ItemID, SupplierID, PrimeSupplier) "
                "VALUES (1, 1, 1), (1, 3, 0)");
        ExecSql("INSERT INTO tblPOrders (POID, POSupID) VALUES (1, 1), (2, 2)");
        ContactListData list = loaded(ContactKind::Suppliers);
        QCOMPARE(names(list), (QStringList{"Both", "No Supplier", "Orders", "Second"}));
        boxes.answer(vbOK);
        QVERIFY(!ConfirmContactDelete(list, 1));
        QCOMPARE(boxes.shown().last().title, "Can't delete record");
        QCOMPARE(boxes.shown().last().flags, int(vbOKOnly));
        boxes.answer(vbOK);
        QVERIFY(!ConfirmContactDelete(list, 3));
        // Not prime anywhere and no orders: asked, then deleted.
        boxes.answer(vbNo);
        QVERIFY(!ConfirmContactDelete(list, 4));
        QCOMPARE(boxes.shown().last().title, "Delete Row");
        QCOMPARE(boxes.shown().last().flags, int(vbYesNo));
        QCOMPARE(boxes.prompts(),
                 QStringList({"The Supplier is PrimeSupplier for one or more stock Items. Can't "
                              "delete the supplier until such parts are reallocated",
                              "The Supplier is Linked to Purchase Order History so can not be "
                              "deleted",
                              "Are you sure you want to delete the Highlighted record?"}));
        boxes.answer(vbYes);
        QVERIFY(ConfirmContactDelete(list, 4));
        DeleteContactRow(list, 4);
        QCOMPARE(count("tblSupAddresses WHERE CoName = 'Second'"), "0");
        QCOMPARE(names(list), (QStringList{"Both", "No Supplier", "Orders"}));
    }

    // A customer with any order cannot be deleted; a location can, whatever uses it.
    void customerWithAnyOrderIsKeptLocationGoes() {
        ScriptedBoxes boxes;
        const qint32 c = addContacts("tblCusAddresses", {"A Shop/AS", "B Shop/BS", "C Shop/CS"});
        addContacts("tblCusAddresses", {"D Shop/DS"});
        // A finished order (all shipped) still links the customer.
        ExecSql(QStringLiteral("INSERT INTO tblCustOrders (CustBasketID, CustID, ORDone) VALUES "
                               "(1, %1, -1)")
                    .arg(c));
        ExecSql("INSERT INTO tblCustOrderDetail (CustBasketDetailID, OrderedQty, ShippedQty) "
                "VALUES (1, 2, 2)");
        ContactListData list = loaded(ContactKind::Customers);
        boxes.answer(vbOK);
        QVERIFY(!ConfirmContactDelete(list, 3));
        QCOMPARE(boxes.prompts(),
                 QStringList{"The Customer is linked to Order History so can not be deleted"});
        QCOMPARE(count("tblCusAddresses"), "4");
        // Deleting the second row: the first stays, the others move up with all their columns.
        const ContactRow third = list.rows[2];
        const ContactRow fourth = list.rows[3];
        DeleteContactRow(list, 2);
        QCOMPARE(names(list), (QStringList{"A Shop", "C Shop", "D Shop"}));
        QVERIFY(list.rows[1] == third && list.rows[2] == fourth);
        QCOMPARE(count("tblCusAddresses WHERE CoName = 'B Shop'"), "0");

        const qint32 loc = addContacts("tblLocAddresses", {"Main Store/MS"});
        ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo, Location) VALUES (1, 'P1', 'Main "
                "Store')");
        ExecSql(QStringLiteral("INSERT INTO tblPOrders (POID, POSupID, POLocID) VALUES (1, 0, %1)")
                    .arg(loc));
        ExecSql(QStringLiteral("INSERT INTO tblItemSupplier (ItemID, SupplierID, PrimeSupplier) "
                               "VALUES (1, %1, 1)")
                    .arg(loc));
        list = loaded(ContactKind::Locations);
        boxes.answer(vbYes);
        QVERIFY(ConfirmContactDelete(list, 1));
        DeleteContactRow(list, 1);
        QCOMPARE(boxes.prompts().last(), "Are you sure you want to delete the Highlighted record?");
        QCOMPARE(count("tblLocAddresses"), "0");
    }

    // ---------------------------------------------------------------- the windows

    void entryCoveredUntilATypeIsChosen() {
        gContactType = 0;
        gContactID = 55; // ignored when the user chooses the type
        {
            frmEditContact w;
            w.show();
            QCOMPARE(w.windowTitle(), "New Contact");
            QCOMPARE(w.Combo1->count(), 4);
            QCOMPARE(w.Combo1->currentText(), "Select");
            QCOMPARE(gContactID, 0);
            // The panel lies over the fields, so they cannot be reached.
            QVERIFY(w.Frame2->isVisible());
            QCOMPARE(w.childAt(w.txtCoName->mapTo(&w, QPoint(5, 5))), w.Frame2);
            w.Combo1->setCurrentIndex(1); // Customer
            QVERIFY(!w.Frame2->isVisible());
            QVERIFY(w.txtDiscount->isVisible() && w.hlpDiscount->isVisible());
        }
        QCOMPARE(gContactType, 0);
    }

    void entrySavesAndClosesOrStaysOpen() {
        ExecSql(
            "INSERT INTO tblCusAddresses (CoName, ShortNm, Discount) VALUES ('Alpha', 'ALP', 4)");
        // An existing customer: loaded, changed, saved, the window closes.
        gContactType = 1;
        gContactID = SqlFirst("SELECT AddID FROM tblCusAddresses").toInt();
        {
            frmEditContact w;
            w.show();
            QCOMPARE(w.txtCoName->text() + '/' + w.txtDiscount->text(), "Alpha/4");
            w.txtAdd1->setText(QStringLiteral("Dock's End"));
            w.txtDiscount->setText(QStringLiteral("6"));
            QTest::mouseClick(w.Command1, Qt::LeftButton);
            QVERIFY(!w.isVisible());
        }
        QCOMPARE(SqlRows("SELECT Add1, Discount FROM tblCusAddresses"),
                 QStringList{"Dock`s End|6"});
        // A new one of the type given: no choice; the boxes' key rules, typed where the keyboard
        // is; refused (a code in use), the message, the window and its trimmed text stay.
        ScriptedBoxes boxes;
        gContactType = 1; // the window put it back to 0 on closing
        gContactID = 0;
        frmEditContact w;
        w.show();
        QCOMPARE(w.Combo1->count(), 1);
        QVERIFY(!w.Frame2->isVisible());
        QVERIFY(QTest::qWaitForWindowActive(&w));
        w.txtDiscount->setFocus();
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("1a.5-"));
        QCOMPARE(w.txtDiscount->text(), "15");
        w.txtCoName->setFocus();
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Bob's "));
        QCOMPARE(w.txtCoName->text(), "Bob`s ");
        w.txtShortNm->setText(QStringLiteral("alp"));
        boxes.answer(vbOK);
        QTest::mouseClick(w.Command1, Qt::LeftButton);
        QVERIFY(w.isVisible());
        QCOMPARE(boxes.prompts(), QStringList{kDuplicate});
        QCOMPARE(w.txtCoName->text(), "Bob`s");
    }

    void listShowsEditsAddsAndDeletesInPlace() {
        ScriptedBoxes boxes;
        ExecSql("INSERT INTO tblCusAddresses (CoName, ShortNm, Discount) VALUES "
                "('Bravo', 'BR', 2.5), ('Alpha', 'AL', 10), ('Hidden', 'NON', 0)");
        ExecSql("INSERT INTO tblSupAddresses (CoName, ShortNm, Add1) VALUES "
                "('Acme', 'AC', 'Here'), ('Bolt', 'BO', ''), ('Cog', 'CG', '')");
        SaveColumnState(QStringLiteral("gdxContact1"), QStringLiteral("CoName"), 3300);
        frmContacts panel;
        panel.resize(900, 400);
        panel.AddressKey(QStringLiteral("Customers"));
        GridEX& g = *panel.gdxContact1;
        QCOMPARE(g.Columns()("CoName").Width(), 3300); // the stored width, after the rebuild
        QCOMPARE(column(g, "Discount"), (QStringList{"10", "2.5"}));
        QTest::keyClicks(panel.txtAddSearch, QStringLiteral("b"));
        QCOMPARE(column(g, "CoName"), QStringList{"Bravo"});
        panel.txtAddSearch->clear();
        // Card view and back; a load in card view stays in cards.
        panel.Command3->click();
        QCOMPARE(g.View(), GridView::Card);
        QCOMPARE(panel.Command3->text(), "ListView");
        QVERIFY(!panel.txtAddSearch->isVisible());
        panel.AddressKey(QStringLiteral("Suppliers"));
        QCOMPARE(g.View(), GridView::Card);
        panel.Command3->click();
        QCOMPARE(g.View(), GridView::Table);
        QCOMPARE(column(g, "CoName"), (QStringList{"Acme", "Bolt", "Cog", "No Supplier"}));
        QVERIFY(!g.Columns()("Discount").Visible());

        // In-place edit: written on Update with the blank after address 1; a typed "'" turned.
        setCell(g, 1, "Add1", "There");
        QTableView* table = g.TableView();
        table->setCurrentIndex(g.Model()->index(0, g.Columns()("Tel").Index() - 1));
        table->edit(table->currentIndex());
        QTest::keyClicks(QApplication::focusWidget(), "0'101");
        QVERIFY(g.Update());
        QCOMPARE(SqlRows("SELECT Add1, Tel1 FROM tblSupAddresses WHERE ShortNm='AC'"),
                 QStringList{"There |0`101"});
        // A new last row is inserted and takes its new key.
        const int newRow = g.RowCount() + 1;
        setCell(g, newRow, "CoName", "Drill");
        setCell(g, newRow, "shortnm", "DR");
        QVERIFY(g.Update());
        QCOMPARE(panel.List().rows[4][ccCoID].toString(),
                 SqlFirst("SELECT AddID FROM tblSupAddresses WHERE CoName='Drill'"));
        // Delete: Cog goes after Yes.
        g.SetRow(3);
        boxes.answer(vbYes);
        QVERIFY(g.Delete());
        QCOMPARE(column(g, "CoName"), (QStringList{"Acme", "Bolt", "No Supplier", "Drill"}));
        QCOMPARE(count("tblSupAddresses WHERE CoName='Cog'"), "0");

        // The New key opens the entry window for any type; other keys are not the panel's.
        gContactID = 9;
        QString seen;
        QTimer::singleShot(0, [&] {
            auto* w = qobject_cast<frmEditContact*>(QApplication::activeModalWidget());
            seen = w ? w->Combo1->currentText() : "none";
            if (w)
                w->reject();
        });
        QVERIFY(panel.AddressKey(QStringLiteral("New")));
        QCOMPARE(seen + QString::number(gContactID), "Select0");
        QVERIFY(!panel.AddressKey(QStringLiteral("REP1")));
    }
};

QTEST_MAIN(TestContacts)
#include "test_contacts.moc"
