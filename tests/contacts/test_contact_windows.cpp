#include "contacts/frmContacts.h"
#include "contacts/frmEditContact.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "grids/ColumnState.h"
#include "grids/GridEX.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

namespace {

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

class TestContactWindows : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    void entryCoveredUntilATypeIsChosen() {
        TestData data;
        gContactType = 0;
        gContactID = 55; // ignored when the user chooses the type
        {
            frmEditContact w;
            w.show();
            QCOMPARE(w.windowTitle(), QStringLiteral("New Contact"));
            QCOMPARE(w.Combo1->count(), 4);
            QCOMPARE(w.Combo1->currentText(), QStringLiteral("Select"));
            QCOMPARE(gContactID, 0);
            // The panel lies over the fields, so they cannot be reached.
            QVERIFY(w.Frame2->isVisible());
            QCOMPARE(w.childAt(w.txtCoName->mapTo(&w, QPoint(5, 5))), w.Frame2);
            w.Combo1->setCurrentIndex(1); // Customer
            QVERIFY(!w.Frame2->isVisible());
            QVERIFY(w.txtDiscount->isVisible() && w.hlpDiscount->isVisible());
            w.Combo1->setCurrentIndex(2); // Vendor
            QVERIFY(!w.txtDiscount->isVisible() && !w.hlpDiscount->isVisible());
        }
        QCOMPARE(gContactType, 0);

        // One type given: no choice, and the boxes' key rules.
        gContactType = 1;
        frmEditContact w;
        w.show();
        QCOMPARE(w.Combo1->count(), 1);
        QVERIFY(!w.Frame2->isVisible());
        QTest::keyClicks(w.txtDiscount, QStringLiteral("1a.5-"));
        QCOMPARE(w.txtDiscount->text(), QStringLiteral("15"));
        QTest::keyClicks(w.txtCoName, QStringLiteral("Bob's"));
        QCOMPARE(w.txtCoName->text(), QStringLiteral("Bob`s"));
    }

    void entrySavesAndClosesOrStaysOpen() {
        TestData data;
        ExecSql(
            "INSERT INTO tblCusAddresses (CoName, ShortNm, Discount) VALUES ('Alpha', 'ALP', 4)");
        // An existing customer: loaded, changed, saved, the window closes.
        gContactType = 1;
        gContactID = SqlFirst("SELECT AddID FROM tblCusAddresses").toInt();
        {
            frmEditContact w;
            w.show();
            QCOMPARE(w.windowTitle(), QStringLiteral("View or Edit"));
            QCOMPARE(w.txtCoName->text() + '/' + w.txtDiscount->text(), QStringLiteral("Alpha/4"));
            w.txtAdd1->setText(QStringLiteral("Dock's End"));
            w.txtDiscount->setText(QStringLiteral("6"));
            QTest::mouseClick(w.Command1, Qt::LeftButton);
            QVERIFY(!w.isVisible());
            QCOMPARE(w.result(), int(QDialog::Accepted));
        }
        QCOMPARE(SqlRows("SELECT Add1, Discount FROM tblCusAddresses"),
                 QStringList{"Dock`s End|6"});
        // A refused new customer: the message, the window and its text stay.
        ScriptedBoxes boxes;
        gContactType = 1;
        gContactID = 0;
        frmEditContact w;
        w.show();
        w.txtCoName->setText(QStringLiteral("  Other "));
        w.txtShortNm->setText(QStringLiteral("alp"));
        boxes.answer(vbOK);
        QTest::mouseClick(w.Command1, Qt::LeftButton);
        QVERIFY(w.isVisible());
        QCOMPARE(boxes.prompts().size(), 1);
        QCOMPARE(w.txtCoName->text(), QStringLiteral("Other"));
    }

    void newKeyIsGuardedAndOpensAnyType() {
        TestData data;
        ScriptedBoxes boxes;
        frmContacts panel;
        panel.AddressKey(QStringLiteral("Customers"));
        gCanContacts = false;
        boxes.answer(vbOK);
        QVERIFY(panel.AddressKey(QStringLiteral("New")));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Access Restricted"));
        QCOMPARE(panel.ContactKind(), quint8(2));
        gCanContacts = true;
        gContactID = 9;
        bool seen = false;
        QTimer::singleShot(0, [&] {
            auto* w = qobject_cast<frmEditContact*>(QApplication::activeModalWidget());
            QVERIFY(w);
            seen = true;
            QCOMPARE(w->Combo1->currentText(), QStringLiteral("Select"));
            w->reject();
        });
        QVERIFY(panel.AddressKey(QStringLiteral("New")));
        QVERIFY(seen);
        QCOMPARE(gContactID, 0);
        QVERIFY(!panel.AddressKey(QStringLiteral("REP1")));
    }

    void listShowsKindSearchDiscountAndCards() {
        TestData data;
        ExecSql("INSERT INTO tblCusAddresses (CoName, ShortNm, Discount) VALUES "
                "('Bravo', 'BR', 2.5), ('Alpha', 'AL', 10), ('Hidden', 'NON', 0)");
        ExecSql("INSERT INTO tblMisAddresses (CoName, ShortNm) VALUES ('Courier', 'CR')");
        SaveColumnState(QStringLiteral("gdxContact1"), QStringLiteral("CoName"), 3300);
        frmContacts panel;
        panel.resize(900, 400);
        panel.AddressKey(QStringLiteral("Customers"));
        QVERIFY(panel.isVisible() && panel.txtAddSearch->isVisible());
        GridEX& g = *panel.gdxContact1;
        QCOMPARE(g.Columns()("CoName").Width(), 3300); // the stored width, after the rebuild
        QCOMPARE(column(g, "CoName"), (QStringList{"Alpha", "Bravo"}));
        QCOMPARE(column(g, "Discount"), (QStringList{"10", "2.5"}));
        QTest::keyClicks(panel.txtAddSearch, QStringLiteral("b"));
        QCOMPARE(column(g, "CoName"), QStringList{"Bravo"});
        panel.txtAddSearch->clear();
        panel.AddressKey(QStringLiteral("Misc"));
        QCOMPARE(column(g, "CoName"), QStringList{"Courier"});
        QVERIFY(!g.Columns()("Discount").Visible());
        // Card view and back; a load in card view stays in cards.
        panel.Command3->click();
        QCOMPARE(g.View(), GridView::Card);
        QCOMPARE(panel.Command3->text(), QStringLiteral("ListView"));
        QVERIFY(!panel.txtAddSearch->isVisible());
        panel.LoadContactList();
        QCOMPARE(g.View(), GridView::Card);
        panel.Command3->click();
        QCOMPARE(g.View(), GridView::Table);
        QCOMPARE(panel.Command3->text(), QStringLiteral("CardView"));
    }

    void listEditsAddsAndDeletesInPlace() {
        TestData data;
        ScriptedBoxes boxes;
        ExecSql("INSERT INTO tblSupAddresses (CoName, ShortNm, Add1) VALUES "
                "('Acme', 'AC', 'Here'), ('Bolt', 'BO', ''), ('Cog', 'CG', '')");
        ExecSql("INSERT INTO tblItemSupplier (ItemID, SupplierID, PrimeSupplier) VALUES (1, 2, 1)");
        frmContacts panel;
        panel.resize(900, 400);
        panel.AddressKey(QStringLiteral("Suppliers"));
        GridEX& g = *panel.gdxContact1;
        QCOMPARE(column(g, "CoName"), (QStringList{"Acme", "Bolt", "Cog", "No Supplier"}));
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
        QCOMPARE(g.ItemCount(), 5);
        QCOMPARE(panel.List().rows[4][ccCoID].toString(),
                 SqlFirst("SELECT AddID FROM tblSupAddresses WHERE CoName='Drill'"));
        // Delete: the prime supplier is kept; Cog goes after Yes.
        g.SetRow(2);
        boxes.answer(vbOK);
        QVERIFY(!g.Delete());
        g.SetRow(3);
        boxes.answer(vbYes);
        QVERIFY(g.Delete());
        QCOMPARE(column(g, "CoName"), (QStringList{"Acme", "Bolt", "No Supplier", "Drill"}));
        QCOMPARE(SqlFirst("SELECT COUNT(*) FROM tblSupAddresses WHERE CoName='Cog'"),
                 QStringLiteral("0"));
        QVERIFY(boxes.allAnswersUsed());
    }
};

QTEST_MAIN(TestContactWindows)
#include "test_contact_windows.moc"
