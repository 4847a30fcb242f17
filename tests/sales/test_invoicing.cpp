#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "sales/CustOrder.h"
#include "sales/Invoicing.h"
#include "tests/sales/SalesFixture.h"
#include "tests/support/TestSupport.h"

#include <QTest>

using namespace sales_fixture;

namespace {
// Every row of a query, its columns joined by "|" (a Null reads empty).
QStringList table(const QString& sql) {
    QStringList out;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(sql);
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList cells;
        for (int c = 0; c < rs.FieldCount(); ++c)
            cells << rs.Fields(c).Text();
        out << cells.join(QLatin1Char('|'));
    }
    return out;
}

QStringList orderRows(qint32 order) {
    return table(QStringLiteral("SELECT StockID, OrderedQty, ShippedQty, GrosPrice, NetPrice FROM "
                                "tblCustOrderDetail WHERE CustBasketDetailID=") +
                 QString::number(order) + QStringLiteral(" ORDER BY RowID"));
}
QStringList despatches() {
    return table(QStringLiteral("SELECT * FROM tblDespatch ORDER BY DespID"));
}
QStringList despRows() {
    return table(QStringLiteral("SELECT * FROM tblDespDetail ORDER BY rowid"));
}
QStringList history() {
    return table(QStringLiteral("SELECT * FROM tblItemHistory ORDER BY rowid"));
}
QStringList stock() {
    return table(QStringLiteral("SELECT ItemID, Qty FROM tblStockItems ORDER BY ItemID"));
}
// Everything an invoice may touch, to prove a failure left it all as it was; the despatch
// headers may be left out.
QStringList snapshot(bool headers = true) {
    return table(QStringLiteral("SELECT * FROM tblCustOrders")) +
           table(QStringLiteral("SELECT * FROM tblCustOrderDetail")) +
           (headers ? despatches() : QStringList()) + despRows() + history() + stock();
}

void salesDefaults(const QString& rate = QStringLiteral("17.5")) {
    ExecSql(QStringLiteral("DELETE FROM tblParameters WHERE ParaName IN ('TaxRates', "
                           "'ShippingPars')"));
    ExecSql(QStringLiteral("INSERT INTO tblParameters (ParaName, f1, f4) VALUES ('TaxRates', '") +
            rate + QStringLiteral("', 'VAT')"));
    ExecSql(QStringLiteral("INSERT INTO tblParameters (ParaName, f1, f2, f3) VALUES "
                           "('ShippingPars', 'Carriage', '5', 'Y')"));
}

// Customer Acme with widgets (A-1 at 2.50) and gadgets (B-2 at 4), 40 of each in stock.
qint32 acmeWithTwoItems() {
    const qint32 acme = addCustomer(QStringLiteral("Acme"), 0);
    addItem(1, QStringLiteral("A-1"), QStringLiteral("Widget"), 2.5);
    addItem(2, QStringLiteral("B-2"), QStringLiteral("Gadget"), 4);
    return acme;
}

// The window opened on a saved order to invoice it (mode 3), or on a saved invoice (mode 4).
CustOrderSheet invoiceOrder(qint32 order) {
    CustOrderSheet s;
    FormLoadSheet(s, OrderMode::InvoiceOrder, order);
    return s;
}
CustOrderSheet openInvoice(qint32 invoice) {
    gCustInvoiceNo = invoice;
    CustOrderSheet s;
    FormLoadSheet(s, OrderMode::SavedInvoice, 0);
    return s;
}

// Types a quantity or price into a cell as fgedit does: the totals follow.
void type(CustOrderSheet& s, int row, int column, const QString& text) {
    s.editRow = row;
    s.editCol = column;
    EditCell(s, text);
}

const QString kTooMuch = QStringLiteral(
    "The invoice could not be saved. Total Invoice quantities, including any from previous "
    "invoices, would exceed the original Order Qty\n\n");
} // namespace

class TestInvoicing : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    // An order for item A, 10 pieces at 2.50, stock 40, number 0012: invoiced 4, then the rest,
    // then the second invoice changed from 6 to 5.
    void invoicedInTwoPartsAndChanged() {
        TestData data;
        ScriptedBoxes boxes;
        salesDefaults();
        const qint32 acme = acmeWithTwoItems();
        addOrder(12, acme, QStringLiteral("PO-7"), 0);
        const QString row = QString::number(addOrderRow(12, 1, 10, 0, 2.5, 2.5));
        addOrderRow(12, 2, 3, 0, 4, 4);

        CustOrderSheet first = invoiceOrder(12);
        QCOMPARE(first.invoiceNo, QStringLiteral("0001"));
        QCOMPARE(first.custShipID, QStringLiteral("0012-001"));
        type(first, 0, OrderCol::InvoiceQty, QStringLiteral("4"));
        type(first, 1, OrderCol::InvoiceQty, QStringLiteral("0")); // leaves no trace
        QCOMPARE(first.vat, QStringLiteral("2.63"));               // (10 + 5) x 17.5 % = 2.625
        QVERIFY(SaveInvoiceCommand(first));
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.processingBars(), 1);
        QCOMPARE(orderRows(12), QStringList({"1|10|4|2.5|2.5", "2|3|0|4|4"}));
        QCOMPARE(despatches(), QStringList({"1|12|1|POS||2026-11-23|2026-11-23|2.63|5|1|17.5"}));
        QCOMPARE(despRows(), QStringList({"1|4|1|" + row + "|2.5"}));
        QCOMPARE(stock(), QStringList({"1|36", "2|40"}));
        QCOMPARE(history(), QStringList({"1|2026-11-23|SHIP|0||0012-001||4|POS"}));

        // The rest, on a second invoice. A number typed below the next free one is replaced.
        SetToday(QDate(2026, 11, 24));
        CustOrderSheet second = invoiceOrder(12);
        QCOMPARE(second.custShipID, QStringLiteral("0012-002"));
        QCOMPARE(second.invoiceNo, QStringLiteral("0002"));
        QCOMPARE(column(second, OrderCol::Done), QStringList({"4", "0"}));
        QCOMPARE(column(second, OrderCol::InvoiceQty), QStringList({"6", "3"}));
        type(second, 1, OrderCol::InvoiceQty, QStringLiteral("0"));
        second.invoiceNo = QStringLiteral("0001");
        QVERIFY(SaveInvoiceCommand(second));
        QCOMPARE(second.invoiceNo, QStringLiteral("0002"));
        QCOMPARE(orderRows(12), QStringList({"1|10|10|2.5|2.5", "2|3|0|4|4"}));
        QCOMPARE(despatches().value(1),
                 QStringLiteral("2|12|2|POS||2026-11-24|2026-11-24|3.5|5|2|17.5"));
        QCOMPARE(despRows().value(1), "2|6|1|" + row + "|2.5");
        QCOMPARE(stock(), QStringList({"1|30", "2|40"}));
        QCOMPARE(history().value(1), QStringLiteral("1|2026-11-24|SHIP|0||0012-002||6|POS"));

        // The second invoice reopened, after the default rate went up: it shows its own rate,
        // its date, and Done for the 4 on the first invoice.
        salesDefaults(QStringLiteral("20"));
        SetToday(QDate(2026, 12, 1));
        CustOrderSheet edit = openInvoice(2);
        QCOMPARE(edit.custListText, QStringLiteral("Acme"));
        QCOMPARE(edit.custOrNo, QStringLiteral("PO-7"));
        QCOMPARE(edit.custBasketID, QStringLiteral("0012"));
        QCOMPARE(edit.custShipID, QStringLiteral("0012-002"));
        QCOMPARE(edit.invoiceNo, QStringLiteral("0002"));
        QCOMPARE(edit.invoiceDate, ShowDate(QDate(2026, 11, 24)));
        QCOMPARE(edit.tax1Rate, QStringLiteral("17.5"));
        QCOMPARE(edit.text3, QStringLiteral("17.5% "));
        QCOMPARE(edit.delivery, QStringLiteral("5.00"));
        QCOMPARE(edit.vat, QStringLiteral("3.50"));
        QCOMPARE(edit.rows.size(), 1);
        const OrderRow& r = edit.rows[0];
        QCOMPARE(QStringList(r.cells.begin() + 1, r.cells.end()),
                 QStringList({"1", "A-1", "Widget", "2.50", "2.50", "10.0", "4.0", "6.0", "6.0",
                              "15.00", "1", row, "A1"}));
        QCOMPARE(edit.colWidth[OrderCol::Done], 600);
        QCOMPARE(edit.colWidth[OrderCol::ToDo], 0);
        QVERIFY(r.IsEditable(OrderCol::SellAt) && r.IsEditable(OrderCol::InvoiceQty));

        // Over Order less Done is refused; 6 to 5 returns one to stock and writes no history.
        type(edit, 0, OrderCol::InvoiceQty, QStringLiteral("7"));
        boxes.answer(vbOK);
        QVERIFY(!SaveInvoiceCommand(edit));
        QCOMPARE(boxes.shown().last().prompt,
                 kTooMuch + QStringLiteral("\nThe maximum Invoice Qty of row 1 is 6"));
        type(edit, 0, OrderCol::InvoiceQty, QStringLiteral("5"));
        SetDelivery(edit, QStringLiteral("7.50"));
        edit.tax1Rate = QStringLiteral("15");
        RecalcOrderTotals(edit);
        QCOMPARE(edit.vat, QStringLiteral("3.00")); // (12.50 + 7.50) x 15 %
        edit.custOrNo = QStringLiteral("PO-8");
        QVERIFY(SaveInvoiceCommand(edit));
        QCOMPARE(orderRows(12), QStringList({"1|10|9|2.5|2.5", "2|3|0|4|4"}));
        QCOMPARE(despatches(), QStringList({"1|12|1|POS||2026-11-23|2026-11-23|2.63|5|1|17.5",
                                            "2|12|2|POS||2026-11-24|2026-11-24|3|7.5|2|15"}));
        QCOMPARE(despRows().value(1), "2|5|1|" + row + "|2.5");
        QCOMPARE(stock(), QStringList({"1|31", "2|40"}));
        QCOMPARE(history().size(), 2);
        QCOMPARE(SqlFirst("SELECT CustOrRef FROM tblCustOrders WHERE CustBasketID=12"),
                 QStringLiteral("PO-8"));

        // A typed number above the next free one is taken, and the sequence goes on from it.
        addOrder(13, acme, QString(), 0);
        addOrderRow(13, 2, 1, 0, 4, 4);
        CustOrderSheet high = invoiceOrder(13);
        high.invoiceNo = QStringLiteral("0050");
        QVERIFY(SaveInvoiceCommand(high));
        QCOMPARE(high.invoiceNo, QStringLiteral("0050"));
        QCOMPARE(SqlFirst("SELECT InvoiceNo FROM tblDespatch WHERE DespID=3"),
                 QStringLiteral("50"));
        QCOMPARE(NextInvoiceNo(), 51);
    }

    void quantityChecksAndEmptyInvoices() {
        TestData data;
        ScriptedBoxes boxes;
        salesDefaults();
        const qint32 acme = addCustomer(QStringLiteral("Acme"), 0);
        for (int i = 1; i <= 3; ++i)
            addItem(i, QStringLiteral("P-%1").arg(i), QStringLiteral("Part"), 1);
        addOrder(20, acme, QString(), 0);
        addOrderRow(20, 1, 10, 4, 1, 1); // To Do 6
        addOrderRow(20, 2, 2, 0, 1, 1);  // To Do 2
        addOrderRow(20, 3, 5, 1, 1, 1);  // To Do 4

        // Over To Do by any amount: the whole invoice is refused, a line per row. Equal passes.
        CustOrderSheet s = invoiceOrder(20);
        const QStringList before = snapshot();
        type(s, 0, OrderCol::InvoiceQty, QStringLiteral("6.01"));
        type(s, 2, OrderCol::InvoiceQty, QStringLiteral("5"));
        boxes.answer(vbOK);
        QVERIFY(!SaveInvoiceCommand(s));
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown()[0].prompt,
                 kTooMuch + QStringLiteral("\nThe maximum Invoice Qty of row 1 "
                                           "is 6\nThe maximum Invoice Qty of "
                                           "row 3 is 4"));
        QCOMPARE(boxes.shown()[0].title, QStringLiteral("Can't save"));
        QCOMPARE(boxes.shown()[0].flags, vbOKOnly | vbExclamation);
        QCOMPARE(boxes.processingBars(), 0);
        QCOMPARE(snapshot(), before);

        // A negative quantity passes the check and writes nothing; with every row at 0 or
        // below the invoice is still made, without rows, and uses up a number.
        boxes.clear();
        type(s, 0, OrderCol::InvoiceQty, QStringLiteral("-2"));
        type(s, 1, OrderCol::InvoiceQty, QStringLiteral("0"));
        type(s, 2, OrderCol::InvoiceQty, QStringLiteral("0"));
        QVERIFY(SaveInvoiceCommand(s));
        QCOMPARE(boxes.prompts(), QStringList());
        QCOMPARE(despatches().size(), 1);
        QCOMPARE(despRows(), QStringList());
        QCOMPARE(history(), QStringList());
        QCOMPARE(stock(), QStringList({"1|40", "2|40", "3|40"}));
        QCOMPARE(orderRows(20), QStringList({"1|10|4|1|1", "2|2|0|1|1", "3|5|1|1|1"}));
        QCOMPARE(NextInvoiceNo(), 2);

        // Opened later, it says it is empty; saving it is refused as an empty invoice, but its
        // tax and delivery can still be written by the update itself.
        boxes.answer(vbOK);
        CustOrderSheet empty = openInvoice(1);
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("This invoice doesn't seem to have any item/rows - It's empty"));
        QCOMPARE(boxes.shown().last().flags, vbInformation);
        QCOMPARE(empty.rows.size(), 0);
        boxes.answer(vbOK);
        QVERIFY(!SaveInvoiceCommand(empty));
        QCOMPARE(boxes.shown().last().prompt, QStringLiteral("Can't process an empty Invoice"));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Order has no items"));
        QCOMPARE(boxes.shown().last().flags, vbOKOnly | vbInformation);
        QCOMPARE(boxes.processingBars(), 1);
        empty.delivery = QStringLiteral("8.25");
        empty.vat = QStringLiteral("1.44");
        QVERIFY(UpdateSavedInvoice(empty));
        QCOMPARE(SqlFirst("SELECT TotalTax || '|' || Delivery FROM tblDespatch"),
                 QStringLiteral("1.44|8.25"));

        // Only modes 3 and 4 invoice: the button does nothing in the order modes, and the update
        // writes nothing outside mode 4.
        boxes.clear();
        const QStringList now = snapshot();
        for (quint8 mode : {OrderMode::NewOrder, OrderMode::SavedOrder}) {
            CustOrderSheet other = s;
            other.mode = mode;
            QVERIFY(!SaveInvoiceCommand(other));
            QVERIFY(!UpdateSavedInvoice(other));
        }
        QVERIFY(!UpdateSavedInvoice(s));
        QCOMPARE(boxes.shown().size(), 0);
        QCOMPARE(snapshot(), now);
    }

    void savedInvoiceChanges() {
        TestData data;
        ScriptedBoxes boxes;
        salesDefaults();
        const qint32 acme = acmeWithTwoItems();
        addItem(3, QStringLiteral("C-3"), QStringLiteral("Gizmo"), 3, true,
                QStringLiteral("unKnown"));
        addOrder(30, acme, QString(), 0);
        addOrderRow(30, 1, 10, 0, 2.5, 2.5);
        addOrderRow(30, 2, 5, 0, 4, 4);
        addOrderRow(30, 3, 3, 0, 3, 3);
        CustOrderSheet s = invoiceOrder(30);
        type(s, 0, OrderCol::InvoiceQty, QStringLiteral("4"));
        type(s, 2, OrderCol::InvoiceQty, QStringLiteral("2"));
        QVERIFY(SaveInvoiceCommand(s)); // despatch 1 is invoice 1
        QCOMPARE(stock(), QStringList({"1|36", "2|35", "3|38"}));

        // No row has a quantity on other invoices: Done stays hidden. "UNKNOWN" shows blank.
        CustOrderSheet e = openInvoice(1);
        QCOMPARE(e.colWidth[OrderCol::Done], 0);
        QCOMPARE(column(e, OrderCol::Location), QStringList({"A1", "A1", ""}));

        // A price alone: the despatch rows take the prices, nothing else moves.
        type(e, 0, OrderCol::SellAt, QStringLiteral("2.755556"));
        QVERIFY(UpdateSavedInvoice(e));
        QCOMPARE(despRows(), QStringList({"1|4|1|1|2.75556", "1|5|2|2|4", "1|2|3|3|3"}));
        QCOMPARE(orderRows(30), QStringList({"1|10|4|2.5|2.5", "2|5|5|4|4", "3|3|2|3|3"}));
        QCOMPARE(stock(), QStringList({"1|36", "2|35", "3|38"}));

        // Up to Order less Done takes more stock; down to 0 gives it back, and the row no
        // longer loads.
        e = openInvoice(1);
        QCOMPARE(e.rows[0][OrderCol::SellAt], QStringLiteral("2.75556"));
        type(e, 0, OrderCol::InvoiceQty, QStringLiteral("10"));
        type(e, 2, OrderCol::InvoiceQty, QStringLiteral("0"));
        QVERIFY(SaveInvoiceCommand(e));
        QCOMPARE(despRows(), QStringList({"1|10|1|1|2.75556", "1|5|2|2|4", "1|0|3|3|3"}));
        QCOMPARE(orderRows(30), QStringList({"1|10|10|2.5|2.5", "2|5|5|4|4", "3|3|0|3|3"}));
        QCOMPARE(stock(), QStringList({"1|30", "2|35", "3|40"}));
        QCOMPARE(history().size(), 3); // the first SHIP quantities stand
        QCOMPARE(column(openInvoice(1), OrderCol::PartNo), QStringList({"A-1", "B-2"}));

        // Despatch 2 as invoice 50: the despatch rows are matched on the invoice number, hit
        // nothing and keep their quantity, while ShippedQty and the stock move.
        addOrder(31, acme, QString(), 0);
        const QString r31 = QString::number(addOrderRow(31, 2, 6, 0, 4, 4));
        CustOrderSheet f = invoiceOrder(31);
        f.invoiceNo = QStringLiteral("50");
        type(f, 0, OrderCol::InvoiceQty, QStringLiteral("3"));
        QVERIFY(SaveInvoiceCommand(f));
        CustOrderSheet g = openInvoice(50);
        type(g, 0, OrderCol::InvoiceQty, QStringLiteral("1"));
        type(g, 0, OrderCol::SellAt, QStringLiteral("9"));
        QVERIFY(SaveInvoiceCommand(g));
        QCOMPARE(despRows().value(3), "2|3|2|" + r31 + "|4");
        QCOMPARE(SqlFirst("SELECT ShippedQty FROM tblCustOrderDetail WHERE RowID=" + r31),
                 QStringLiteral("1"));
        QCOMPARE(stock().value(1), QStringLiteral("2|34"));
        QCOMPARE(column(openInvoice(50), OrderCol::InvoiceQty), QStringList({"3.0"}));

        // An older invoice: no rate of its own (the default stays), a row without its own price
        // (the order's shows), rows in the order they were written, a row at 0 left out.
        addOrder(32, acme, QString(), 0);
        const qint64 a = addOrderRow(32, 1, 8, 5, 2.5, 2.25);
        const qint64 b = addOrderRow(32, 2, 4, 4, 4, 3.5);
        const qint64 c = addOrderRow(32, 3, 1, 0, 3, 3);
        const qint64 desp = insert("INSERT INTO tblDespatch (CustOrderID, DespSeqNo, "
                                   "DespNoteText, DespFreeText, DespDate, Invoiced, TotalTax, "
                                   "Delivery, InvoiceNo) VALUES (32, 1, 'POS', '', '1999-02-03', "
                                   "'2019-02-04', 1.5, 0, 60)");
        const QString d = QString::number(desp);
        insert("INSERT INTO tblDespDetail (DespID, DespQty, DespStockID, OrderDetailRowID, "
               "SellAtPrice) VALUES (" +
               d + ", 4, 2, " + QString::number(b) + ", 3.4)");
        insert("INSERT INTO tblDespDetail (DespID, DespQty, DespStockID, OrderDetailRowID) "
               "VALUES (" +
               d + ", 3, 1, " + QString::number(a) + ")");
        insert("INSERT INTO tblDespDetail (DespID, DespQty, DespStockID, OrderDetailRowID) "
               "VALUES (" +
               d + ", 0, 3, " + QString::number(c) + ")");
        salesDefaults(QStringLiteral("20"));
        CustOrderSheet old = openInvoice(60);
        QCOMPARE(old.tax1Rate, QStringLiteral("20.0"));
        QCOMPARE(old.invoiceDate, QString()); // DespDate, of a year that shows blank
        QCOMPARE(column(old, OrderCol::PartNo), QStringList({"B-2", "A-1"}));
        QCOMPARE(column(old, OrderCol::SellAt), QStringList({"3.40", "2.25"}));
        QCOMPARE(column(old, OrderCol::Done), QStringList({"0.0", "2.0"}));
        QCOMPARE(old.colWidth[OrderCol::Done], 600);
        QCOMPARE(old.net, QStringLiteral("20.35")); // 4 x 3.40 + 3 x 2.25
        QCOMPARE(old.vat, QStringLiteral("4.07"));  // 20.35 x 20 %, not the stored 1.50
    }

    // Two users change one invoice, each from the figures they loaded: both differences land,
    // and the despatch row keeps the second one's quantity.
    void twoSavesOfOneInvoice() {
        TestData data;
        ScriptedBoxes boxes;
        const qint32 acme = addCustomer(QStringLiteral("Acme"), 0);
        addItem(1, QStringLiteral("A-1"), QStringLiteral("Widget"), 2.5);
        addOrder(12, acme, QString(), 0);
        addOrderRow(12, 1, 10, 0, 2.5, 2.5);
        CustOrderSheet s = invoiceOrder(12);
        type(s, 0, OrderCol::InvoiceQty, QStringLiteral("6"));
        QVERIFY(SaveInvoiceCommand(s));

        CustOrderSheet one = openInvoice(1);
        CustOrderSheet two = openInvoice(1);
        type(one, 0, OrderCol::InvoiceQty, QStringLiteral("5"));
        type(two, 0, OrderCol::InvoiceQty, QStringLiteral("4"));
        QVERIFY(SaveInvoiceCommand(one));
        QVERIFY(SaveInvoiceCommand(two));
        QCOMPARE(orderRows(12), QStringList({"1|10|3|2.5|2.5"}));
        QCOMPARE(despRows(), QStringList({"1|4|1|1|2.5"}));
        QCOMPARE(stock(), QStringList({"1|37"}));
    }

    void failures() {
        TestData data;
        ScriptedBoxes boxes;
        const qint32 acme = addCustomer(QStringLiteral("Acme"), 0);
        for (int i = 1; i <= 3; ++i)
            addItem(i, QStringLiteral("P-%1").arg(i), QStringLiteral("Part"), 1);
        addOrder(40, acme, QStringLiteral("REF"), 0);
        addOrderRow(40, 1, 5, 0, 1, 1);
        const QString key2 = QString::number(addOrderRow(40, 2, 5, 0, 1, 1));
        addOrderRow(40, 3, 5, 0, 1, 1);

        // The history row of row 3 fails: the error escapes, the despatch header stands and
        // the rows before it are undone with the transaction.
        ExecSql("CREATE TRIGGER noHistory BEFORE INSERT ON tblItemHistory WHEN NEW.StockID = 3 "
                "BEGIN SELECT RAISE(ABORT, 'history refused'); END");
        QStringList before = snapshot();
        CustOrderSheet s = invoiceOrder(40);
        QVERIFY_THROWS_EXCEPTION(DbError, InvoiceSavedOrder(s));
        QCOMPARE(despatches(), QStringList({"1|40|1|POS||2026-11-23|2026-11-23|0|0|1|0"}));
        QCOMPARE(snapshot(false), before);
        ExecSql("DROP TRIGGER noHistory");

        // A despatch insert that hits no row: said, and nothing more is written.
        ExecSql("CREATE TRIGGER noDespatch BEFORE INSERT ON tblDespatch BEGIN SELECT "
                "RAISE(IGNORE); END");
        before = snapshot();
        boxes.answer(vbOK);
        s = invoiceOrder(40);
        QVERIFY(!SaveInvoiceCommand(s));
        QCOMPARE(boxes.prompts(), QStringList({"An unexpected error occured - The new record "
                                               "could not be created"}));
        QCOMPARE(boxes.shown()[0].title, QStringLiteral("qstk3")); // an empty title
        QCOMPARE(boxes.processingBars(), 1);
        QCOMPARE(snapshot(), before);
        ExecSql("DROP TRIGGER noDespatch");

        // A good invoice (despatch 2, invoice 2), whose change then fails on row 2: rolled back
        // whole, the order header and the despatch header included, with the engine's number
        // and text.
        s = invoiceOrder(40);
        QVERIFY(SaveInvoiceCommand(s));
        boxes.clear();
        CustOrderSheet e = openInvoice(2);
        e.custOrNo = QStringLiteral("CHANGED");
        for (int r = 0; r < 3; ++r)
            type(e, r, OrderCol::InvoiceQty, QStringLiteral("1"));
        SetDelivery(e, QStringLiteral("9.00"));
        before = snapshot();
        Database::FailNextStatementContaining(
            "OrderDetailRowID = " + key2, DbErr::Locked,
            QStringLiteral("Could not update; currently locked."));
        boxes.answer(vbOK);
        QVERIFY(!SaveInvoiceCommand(e));
        QCOMPARE(boxes.prompts(),
                 QStringList({"The invoice could not be saved to the database. The error "
                              "message/text from the Windows database driver is shown "
                              "below\n\n3218 Could not update; currently locked.\n\nNothing was "
                              "done - You can try to save the invoice again"}));
        QCOMPARE(boxes.shown()[0].title, QStringLiteral("qstk3")); // an empty title
        QCOMPARE(boxes.shown()[0].flags, vbOKOnly | vbExclamation);
        QCOMPARE(boxes.processingBars(), 1);
        QCOMPARE(snapshot(), before);
        // The same change goes through once the lock is gone.
        QVERIFY(UpdateSavedInvoice(e));
        QCOMPARE(stock(), QStringList({"1|39", "2|39", "3|39"}));

        // A failure before the rows escapes without a word and leaves everything as it was.
        boxes.clear();
        e = openInvoice(2);
        e.custOrNo = QStringLiteral("AGAIN");
        type(e, 0, OrderCol::InvoiceQty, QStringLiteral("2"));
        before = snapshot();
        Database::FailNextStatementContaining(QStringLiteral("UPDATE tblDespatch"));
        QVERIFY_THROWS_EXCEPTION(DbError, UpdateSavedInvoice(e));
        QCOMPARE(boxes.shown().size(), 0);
        QCOMPARE(snapshot(), before);
    }

    void newOrderSavedAndInvoiced() {
        TestData data;
        ScriptedBoxes boxes;
        const qint32 acme = addCustomer(QStringLiteral("Acme"), 0);
        for (int i = 1; i <= 3; ++i)
            addItem(i, QStringLiteral("P-%1").arg(i), QStringLiteral("Part"), 1);
        addOrder(7, acme, QString(), 0);
        addDespatch(7, 1, 9);

        CustOrderSheet s;
        FormLoadSheet(s, OrderMode::NewOrder, 0);
        s.custID = QString::number(acme);
        s.custOrNo = QStringLiteral("REF`1");
        s.discount = QStringLiteral("5");
        s.tax1Rate = QStringLiteral("17.5");
        s.delivery = QStringLiteral("5.00");

        // An empty order is refused.
        boxes.answer(vbOK);
        QVERIFY(!InvoiceNewOrderCommand(s));
        QCOMPARE(boxes.shown()[0].prompt, QStringLiteral("Can't process an empty invoice"));
        QCOMPARE(boxes.shown()[0].title, QStringLiteral("Order has no items"));
        QCOMPARE(despatches().size(), 1);

        for (const QStringList& r : QList<QStringList>{{"1", "10.00", "9.50", "2"},
                                                       {"2", "4.00", "3.80", "0"},
                                                       {"3", "3.00", "2.85", "1.5"}}) {
            OrderRow row = sheetRow(r[1], r[2], r[3], QStringLiteral("1"));
            row[OrderCol::Item] = QString::number(s.rows.size() + 1);
            row[OrderCol::StockID] = r[0];
            s.rows.append(row);
        }
        RecalcOrderTotals(s);
        QCOMPARE(s.vat, QStringLiteral("4.95")); // (23.275 + 5) x 17.5 % = 4.948125
        QVERIFY(InvoiceNewOrderCommand(s));
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(s.custBasketID, QStringLiteral("0008"));
        QCOMPARE(s.custShipID, QStringLiteral("0008-001"));
        QCOMPARE(s.invoiceNo, QStringLiteral("0010"));
        QCOMPARE(column(s, OrderCol::InvoiceQty), QStringList({"2", "0", "1.5"}));
        QCOMPARE(SqlFirst("SELECT CustID || '|' || SalesRef || '|' || CustOrRef || '|' || "
                          "CustOrDate || '|' || ORDiscount FROM tblCustOrders WHERE "
                          "CustBasketID=8"),
                 QString::number(acme) + QStringLiteral("||REF`1|2026-11-23|5.0"));
        QCOMPARE(orderRows(8), QStringList({"1|2|2|10|9.5", "3|1.5|1.5|3|2.85"}));
        const QStringList keys =
            table(QStringLiteral("SELECT RowID FROM tblCustOrderDetail ORDER BY RowID"));
        QCOMPARE(despatches().value(1),
                 QStringLiteral("2|8|1|POS||2026-11-23|2026-11-23|4.95|5|10|17.5"));
        QCOMPARE(despRows(),
                 QStringList({"2|2|1|" + keys[0] + "|9.5", "2|1.5|3|" + keys[1] + "|2.85"}));
        QCOMPARE(stock(), QStringList({"1|38", "2|40", "3|38.5"}));
        QCOMPARE(history(), QStringList({"1|2026-11-23|SHIP|0||0008-001||2|POS",
                                         "3|2026-11-23|SHIP|0||0008-001||1.5|POS"}));
        // The new invoice opens as a saved one, its order complete.
        QCOMPARE(column(openInvoice(10), OrderCol::InvoiceQty), QStringList({"2.0", "1.5"}));

        // Typed on a comma locale, the numbers go in with a point.
        {
            LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
            CustOrderSheet c = s;
            c.custBasketID = QStringLiteral("0000");
            c.rows = {sheetRow("10,00", "9,50", "2,5")};
            c.rows[0][OrderCol::StockID] = QStringLiteral("2");
            c.vat = QStringLiteral("4,95");
            c.delivery = QStringLiteral("5,25");
            c.tax1Rate = QStringLiteral("17,5");
            QVERIFY(InvoiceNewOrderCommand(c));
            QCOMPARE(despatches().value(2),
                     QStringLiteral("3|9|1|POS||2026-11-23|2026-11-23|4.95|5.25|11|17.5"));
            QCOMPARE(orderRows(9), QStringList({"2|2.5|2.5|10|9.5"}));
        }

        // No transaction: a failure on row 2 leaves what was written before it.
        ExecSql("CREATE TRIGGER noHistory BEFORE INSERT ON tblItemHistory WHEN NEW.StockID = 2 "
                "BEGIN SELECT RAISE(ABORT, 'history refused'); END");
        CustOrderSheet f = s;
        f.custBasketID = QStringLiteral("0000");
        for (OrderRow& row : f.rows)
            row[OrderCol::OrderQty] = QStringLiteral("1");
        const int historyRows = history().size();
        QVERIFY_THROWS_EXCEPTION(DbError, SaveAndInvoiceNewOrder(f));
        QCOMPARE(orderRows(10), QStringList({"1|1|1|10|9.5", "2|1|1|4|3.8"}));
        QCOMPARE(despatches().value(3).section(QLatin1Char('|'), 0, 2), QStringLiteral("4|10|1"));
        QCOMPARE(despRows().size(), 5);
        QCOMPARE(stock(), QStringList({"1|37", "2|36.5", "3|38.5"}));
        QCOMPARE(history().size(), historyRows + 1);
    }
};

QTEST_GUILESS_MAIN(TestInvoicing)
#include "test_invoicing.moc"
