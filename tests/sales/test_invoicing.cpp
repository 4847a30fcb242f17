// Invoicing a saved order, changing a saved invoice and the new order invoiced at once: every
// table an invoice touches, after each step and after each failure; and two workstations
// invoicing one order at once, the test binary run twice more with "--invoice-worker".
#include "sales/Invoicing.h"
#include "tests/sales/SalesFixture.h"

#include <QProcess>
#include <cstdio>

using namespace sales_fixture;

namespace {
QStringList despatches() {
    return SqlRows("SELECT * FROM tblDespatch ORDER BY DespID");
}
QStringList despRows() {
    return SqlRows("SELECT * FROM tblDespDetail ORDER BY rowid");
}
QStringList history() {
    return SqlRows("SELECT * FROM tblItemHistory ORDER BY rowid");
}
QString stock() {
    return joined(SqlRows("SELECT Qty FROM tblStockItems ORDER BY ItemID"));
}
// Everything an invoice may touch, the despatch headers left out when asked.
QStringList snapshot(bool headers = true) {
    return SqlRows("SELECT * FROM tblCustOrders") + SqlRows("SELECT * FROM tblCustOrderDetail") +
           (headers ? despatches() : QStringList()) + despRows() + history() + QStringList(stock());
}

// Customer Acme, and items 1 to 3 at 2.50, 4 and 3, 40 of each in stock.
qint32 acmeWithItems() {
    const qint32 acme = addCustomer("Acme", 0);
    addItem(1, "A-1", 2.5);
    addItem(2, "B-2", 4);
    addItem(3, "C-3", 3, true, "unKnown");
    return acme;
}

// The window on a saved order to invoice it (mode 3), or on a saved invoice (mode 4).
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

constexpr int kRounds = 50;
constexpr int kRows = 5;

// One workstation: loads order 1 for invoicing and invoices a few of each row, `rounds` times.
// A round that meets the other's lock past the busy timeout fails as a whole and the next one
// goes on; any other failure ends the run. Prints the rounds done.
int invoiceWorker(const QString& folder, int rounds, int pattern) {
    UseTestLocale();
    SetDataFolder(folder);
    SetToday(QDate(2026, 11, 23));
    int done = 0;
    for (int round = 0; round < rounds; ++round) {
        try {
            CustOrderSheet sheet;
            FormLoadSheet(sheet, OrderMode::InvoiceOrder, 1);
            for (int r = 0; r < sheet.rows.size(); ++r)
                sheet.rows[r][OrderCol::InvoiceQty] =
                    QString::number(1 + (round + r + pattern) % 3);
            if (!InvoiceSavedOrder(sheet))
                return 3;
            ++done;
        } catch (const DbError& e) {
            if (e.Number() != DbErr::Locked) {
                std::fprintf(stderr, "%d %s\n", e.Number(), qPrintable(e.Description()));
                return 2;
            }
        }
    }
    std::printf("%d\n", done);
    return 0;
}
// Boxes during which a second workstation writes: "locked" while a transaction is left open.
struct WritingBoxes : ScriptedBoxes {
    QStringList writes;
    int msgBox(const QString& prompt, int flags, const QString& title) override {
        try {
            ExecSql("UPDATE tblStockItems SET Qty = Qty");
            writes << "written";
        } catch (const DbError&) {
            writes << "locked";
        }
        return ScriptedBoxes::msgBox(prompt, flags, title);
    }
};
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
        const qint32 acme = acmeWithItems();
        addOrder(12, acme, "PO-7");
        const QString row = QString::number(addOrderRow(12, 1, 10, 0, 2.5, 2.5));
        addOrderRow(12, 2, 3, 0, 4, 4);

        CustOrderSheet first = invoiceOrder(12);
        QCOMPARE(joined({first.invoiceNo, first.custShipID}), "0001|0012-001");
        type(first, 0, OrderCol::InvoiceQty, "4");
        type(first, 1, OrderCol::InvoiceQty, "0"); // leaves no trace
        QVERIFY(SaveInvoiceCommand(first));
        QCOMPARE(orderRows(12), QStringList({"1|10|4|2.5|2.5", "2|3|0|4|4"}));
        QCOMPARE(despatches(), QStringList({"1|12|1|POS||2026-11-23|2026-11-23|2.63|5|1|17.5"}));
        QCOMPARE(despRows(), QStringList({"1|4|1|" + row + "|2.5"}));
        QCOMPARE(stock(), "36|40|40");
        QCOMPARE(history(), QStringList({"1|2026-11-23|SHIP|0||0012-001||4|POS"}));

        // The rest, on a second invoice. A number typed below the next free one is replaced.
        SetToday(QDate(2026, 11, 24));
        CustOrderSheet second = invoiceOrder(12);
        QCOMPARE(joined({second.custShipID, second.invoiceNo, column(second, OrderCol::Done),
                         column(second, OrderCol::InvoiceQty)}),
                 "0012-002|0002|4|0|6|3");
        type(second, 1, OrderCol::InvoiceQty, "0");
        second.invoiceNo = "0001";
        QVERIFY(SaveInvoiceCommand(second));
        QCOMPARE(second.invoiceNo, "0002");
        QCOMPARE(orderRows(12), QStringList({"1|10|10|2.5|2.5", "2|3|0|4|4"}));
        QCOMPARE(despatches().value(1), "2|12|2|POS||2026-11-24|2026-11-24|3.5|5|2|17.5");
        QCOMPARE(despRows().value(1), "2|6|1|" + row + "|2.5");
        QCOMPARE(stock(), "30|40|40");
        QCOMPARE(history().value(1), "1|2026-11-24|SHIP|0||0012-002||6|POS");

        // Reopened after the default rate went up: its own rate, date, and Done for the 4 on
        // the first invoice.
        salesDefaults("20");
        CustOrderSheet edit = openInvoice(2);
        QCOMPARE(
            joined({edit.custOrNo, edit.custShipID, edit.invoiceNo, edit.invoiceDate, edit.tax1Rate,
                    edit.delivery, edit.vat, QString::number(edit.rows.size())}),
            joined({"PO-7", "0012-002", "0002", ShowDate(QDate(2026, 11, 24)), "17.5", "5.00",
                    "3.50", "1"}));
        QCOMPARE(cells(edit.rows[0]),
                 "1|A-1|Part A-1|2.50|2.50|10.0|4.0|6.0|6.0|15.00|1|" + row + "|A1");

        // Over Order less Done is refused; 6 to 5 gives one back to stock and writes no history.
        type(edit, 0, OrderCol::InvoiceQty, "7");
        boxes.answer(vbOK);
        QVERIFY(!SaveInvoiceCommand(edit));
        QVERIFY(lastBox(boxes).endsWith("\nThe maximum Invoice Qty of row 1 is 6"));
        type(edit, 0, OrderCol::InvoiceQty, "5");
        SetDelivery(edit, "7.50");
        edit.tax1Rate = "15";
        RecalcOrderTotals(edit);
        edit.custOrNo = "PO-8";
        QVERIFY(SaveInvoiceCommand(edit));
        QCOMPARE(orderRows(12), QStringList({"1|10|9|2.5|2.5", "2|3|0|4|4"}));
        QCOMPARE(despatches().value(1), "2|12|2|POS||2026-11-24|2026-11-24|3|7.5|2|15");
        QCOMPARE(despRows().value(1), "2|5|1|" + row + "|2.5");
        QCOMPARE(stock() + '|' + QString::number(history().size()), "31|40|40|2");
        QCOMPARE(orderHeader(12), QString::number(acme) + "||PO-8|2026-03-04|0");
    }

    void quantityChecksAndEmptyInvoices() {
        TestData data;
        ScriptedBoxes boxes;
        addOrder(20, acmeWithItems());
        addOrderRow(20, 1, 10, 4, 1, 1); // To Do 6
        addOrderRow(20, 2, 2, 0, 1, 1);  // To Do 2
        addOrderRow(20, 3, 5, 1, 1, 1);  // To Do 4

        // Over To Do by any amount: the whole invoice is refused, a line per row. Equal passes.
        CustOrderSheet s = invoiceOrder(20);
        const QStringList before = snapshot();
        type(s, 0, OrderCol::InvoiceQty, "6.01");
        type(s, 2, OrderCol::InvoiceQty, "5");
        boxes.answer(vbOK);
        QVERIFY(!SaveInvoiceCommand(s));
        QCOMPARE(lastBox(boxes),
                 "Can't save|The invoice could not be saved. Total Invoice quantities, including "
                 "any from previous invoices, would exceed the original Order Qty\n\n\nThe "
                 "maximum Invoice Qty of row 1 is 6\nThe maximum Invoice Qty of row 3 is 4");
        QCOMPARE(boxes.processingBars(), 0);
        QCOMPARE(snapshot(), before);

        // A negative quantity passes and writes nothing; with every row at 0 or below the
        // invoice is still made, without rows, and uses up a number.
        boxes.clear();
        type(s, 0, OrderCol::InvoiceQty, "-2");
        type(s, 1, OrderCol::InvoiceQty, "0");
        type(s, 2, OrderCol::InvoiceQty, "0");
        QVERIFY(SaveInvoiceCommand(s));
        QCOMPARE(snapshot(false), before);
        QCOMPARE(QString::number(despatches().size()) + QString::number(NextInvoiceNo()), "12");

        // Opened later it says it is empty, and saving it is refused as an empty invoice.
        boxes.answer(vbOK);
        CustOrderSheet empty = openInvoice(1);
        QCOMPARE(lastBox(boxes), "qstk3|This invoice doesn't seem to have any item/rows - It's "
                                 "empty");
        boxes.answer(vbOK);
        QVERIFY(!SaveInvoiceCommand(empty));
        QCOMPARE(lastBox(boxes), "Order has no items|Can't process an empty Invoice");
        QVERIFY(boxes.allAnswersUsed());
    }

    void savedInvoiceChanges() {
        TestData data;
        ScriptedBoxes boxes;
        salesDefaults();
        const qint32 acme = acmeWithItems();
        addOrder(30, acme);
        addOrderRow(30, 1, 10, 0, 2.5, 2.5);
        addOrderRow(30, 2, 5, 0, 4, 4);
        addOrderRow(30, 3, 3, 0, 3, 3);
        CustOrderSheet s = invoiceOrder(30);
        type(s, 0, OrderCol::InvoiceQty, "4");
        type(s, 2, OrderCol::InvoiceQty, "2");
        QVERIFY(SaveInvoiceCommand(s)); // despatch 1 is invoice 1

        // A price alone: the despatch rows take the prices, nothing else moves.
        CustOrderSheet e = openInvoice(1);
        type(e, 0, OrderCol::SellAt, "2.755556");
        QVERIFY(UpdateSavedInvoice(e));
        QCOMPARE(despRows(), QStringList({"1|4|1|1|2.75556", "1|5|2|2|4", "1|2|3|3|3"}));
        QCOMPARE(orderRows(30), QStringList({"1|10|4|2.5|2.5", "2|5|5|4|4", "3|3|2|3|3"}));
        QCOMPARE(stock(), "36|35|38");

        // Up to Order less Done takes more stock; down to 0 gives it back, and the row no longer
        // loads. No history either way.
        e = openInvoice(1);
        type(e, 0, OrderCol::InvoiceQty, "10");
        type(e, 2, OrderCol::InvoiceQty, "0");
        QVERIFY(SaveInvoiceCommand(e));
        QCOMPARE(despRows(), QStringList({"1|10|1|1|2.75556", "1|5|2|2|4", "1|0|3|3|3"}));
        QCOMPARE(orderRows(30), QStringList({"1|10|10|2.5|2.5", "2|5|5|4|4", "3|3|0|3|3"}));
        QCOMPARE(joined({stock(), QString::number(history().size())}), "30|35|40|3");

        // Despatch 2 as invoice 50: its rows are matched on the invoice number, hit nothing and
        // keep their quantity and price, while ShippedQty and the stock move.
        addOrder(31, acme);
        const QString r31 = QString::number(addOrderRow(31, 2, 6, 0, 4, 4));
        CustOrderSheet f = invoiceOrder(31);
        f.invoiceNo = "50";
        type(f, 0, OrderCol::InvoiceQty, "3");
        QVERIFY(SaveInvoiceCommand(f));
        QCOMPARE(joined({f.invoiceNo, QString::number(NextInvoiceNo())}), "50|51"); // taken
        CustOrderSheet g = openInvoice(50);
        type(g, 0, OrderCol::InvoiceQty, "1");
        type(g, 0, OrderCol::SellAt, "9");
        QVERIFY(SaveInvoiceCommand(g));
        QCOMPARE(despRows().value(3), "2|3|2|" + r31 + "|4");
        QCOMPARE(orderRows(31), QStringList({"2|6|1|4|4"}));
        QCOMPARE(stock(), "30|34|40");

        // An older invoice: no rate of its own (the default stays), a row without its own price
        // (the order's shows), rows in the order they were written, a row at 0 left out.
        addOrder(32, acme);
        const QString a = QString::number(addOrderRow(32, 1, 8, 5, 2.5, 2.25));
        const QString b = QString::number(addOrderRow(32, 2, 4, 4, 4, 3.5));
        const QString d = QString::number(
            insert("INSERT INTO tblDespatch (CustOrderID, DespSeqNo, DespNoteText, DespFreeText, "
                   "DespDate, Invoiced, TotalTax, Delivery, InvoiceNo) VALUES (32, 1, 'POS', '', "
                   "'1999-02-03', '2019-02-04', 1.5, 0, 60)"));
        ExecSql("INSERT INTO tblDespDetail (DespID, DespQty, DespStockID, OrderDetailRowID, "
                "SellAtPrice) VALUES (" +
                d + ", 4, 2, " + b + ", 3.4), (" + d + ", 3, 1, " + a + ", NULL), (" + d +
                ", 0, 3, " + a + ", 1)");
        salesDefaults("20");
        CustOrderSheet old = openInvoice(60);
        QCOMPARE(joined({old.tax1Rate, old.invoiceDate, column(old, OrderCol::PartNo),
                         column(old, OrderCol::SellAt), column(old, OrderCol::Done)}),
                 "20.0||B-2|A-1|3.40|2.25|0.0|2.0");
        QCOMPARE(joined({old.net, old.vat}), "20.35|4.07"); // worked out again, not the stored 1.50
    }

    // Two users change one invoice, each from the figures they loaded: both differences land,
    // and the despatch row keeps the second one's quantity.
    void twoSavesOfOneInvoice() {
        TestData data;
        ScriptedBoxes boxes;
        addOrder(12, acmeWithItems());
        addOrderRow(12, 1, 10, 0, 2.5, 2.5);
        CustOrderSheet s = invoiceOrder(12);
        type(s, 0, OrderCol::InvoiceQty, "6");
        QVERIFY(SaveInvoiceCommand(s));
        CustOrderSheet one = openInvoice(1);
        CustOrderSheet two = openInvoice(1);
        type(one, 0, OrderCol::InvoiceQty, "5");
        type(two, 0, OrderCol::InvoiceQty, "4");
        QVERIFY(SaveInvoiceCommand(one) && SaveInvoiceCommand(two));
        QCOMPARE(orderRows(12), QStringList({"1|10|3|2.5|2.5"}));
        QCOMPARE(despRows(), QStringList({"1|4|1|1|2.5"}));
        QCOMPARE(stock(), "37|40|40");
    }

    void failures() {
        TestData data;
        WritingBoxes boxes;
        addOrder(40, acmeWithItems(), "REF");
        addOrderRow(40, 1, 5, 0, 1, 1);
        const QString key2 = QString::number(addOrderRow(40, 2, 5, 0, 1, 1));
        addOrderRow(40, 3, 5, 0, 1, 1);

        // Row 3's history fails: the error escapes, the despatch header stands and the rows
        // before it are undone with the transaction.
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
        QCOMPARE(lastBox(boxes),
                 "qstk3|An unexpected error occured - The new record could not be created");
        QCOMPARE(snapshot(), before);
        ExecSql("DROP TRIGGER noDespatch");

        // A good invoice (despatch 2, invoice 2), whose change then fails on row 2: rolled back
        // whole, the headers included, with the engine's number and text.
        s = invoiceOrder(40);
        QVERIFY(SaveInvoiceCommand(s));
        CustOrderSheet e = openInvoice(2);
        e.custOrNo = "CHANGED";
        for (int r = 0; r < 3; ++r)
            type(e, r, OrderCol::InvoiceQty, "1");
        SetDelivery(e, "9.00");
        before = snapshot();
        Database::FailNextStatementContaining("OrderDetailRowID = " + key2, DbErr::Locked,
                                              "Could not update; currently locked.");
        boxes.answer(vbOK);
        QVERIFY(!UpdateSavedInvoice(e));
        QCOMPARE(lastBox(boxes), "qstk3|The invoice could not be saved to the database. The error "
                                 "message/text from the Windows database driver is shown below"
                                 "\n\n3218 Could not update; currently locked.\n\nNothing was "
                                 "done - You can try to save the invoice again");
        QCOMPARE(snapshot(), before);
        QCOMPARE(boxes.writes, QStringList({"written", "written"})); // the lock gone with the box

        // A failure before the rows escapes without a word and leaves everything as it was.
        boxes.clear();
        type(e, 0, OrderCol::InvoiceQty, "2");
        before = snapshot();
        Database::FailNextStatementContaining("UPDATE tblDespatch");
        QVERIFY_THROWS_EXCEPTION(DbError, UpdateSavedInvoice(e));
        QCOMPARE(snapshot(), before);
    }

    void newOrderSavedAndInvoiced() {
        TestData data;
        ScriptedBoxes boxes;
        const qint32 acme = acmeWithItems();
        addOrder(7, acme);
        addDespatch(7, 1, 9);
        CustOrderSheet s;
        FormLoadSheet(s, OrderMode::NewOrder, 0);
        s.custID = QString::number(acme);
        s.custOrNo = "REF`1";
        s.discount = "5";
        s.tax1Rate = "17,5";
        s.delivery = "5,25";
        boxes.answer(vbOK);
        QVERIFY(!InvoiceNewOrderCommand(s));
        QCOMPARE(lastBox(boxes), "Order has no items|Can't process an empty invoice");

        // On a comma locale: every number written with ".".
        s.rows = {sheetRow("1", "10,00", "9,50", "2"), sheetRow("2", "4,00", "3,80", "0"),
                  sheetRow("3", "3,00", "2,85", "1,5")};
        for (OrderRow& r : s.rows)
            r[OrderCol::InvoiceQty] = "1";
        {
            LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
            RecalcOrderTotals(s);
            QVERIFY(InvoiceNewOrderCommand(s));
        }
        QCOMPARE(joined({s.custBasketID, s.custShipID, s.invoiceNo, s.vat,
                         column(s, OrderCol::InvoiceQty)}),
                 "0008|0008-001|0010|4,99|2|0|1,5"); // (23.275 + 5.25) x 17.5 %
        QCOMPARE(orderHeader(8), QString::number(acme) + "||REF`1|2026-11-23|5");
        QCOMPARE(orderRows(8), QStringList({"1|2|2|10|9.5", "3|1.5|1.5|3|2.85"}));
        const QStringList keys = SqlRows("SELECT RowID FROM tblCustOrderDetail ORDER BY RowID");
        QCOMPARE(despatches().value(1), "2|8|1|POS||2026-11-23|2026-11-23|4.99|5.25|10|17.5");
        QCOMPARE(despRows(),
                 QStringList({"2|2|1|" + keys[0] + "|9.5", "2|1.5|3|" + keys[1] + "|2.85"}));
        QCOMPARE(stock(), "38|40|38.5");
        QCOMPARE(history(), QStringList({"1|2026-11-23|SHIP|0||0008-001||2|POS",
                                         "3|2026-11-23|SHIP|0||0008-001||1.5|POS"}));

        // No transaction: a failure on row 2 leaves what was written before it.
        ExecSql("CREATE TRIGGER noHistory BEFORE INSERT ON tblItemHistory WHEN NEW.StockID = 3 "
                "BEGIN SELECT RAISE(ABORT, 'history refused'); END");
        s.custBasketID = "0000";
        s.rows = {sheetRow("1", "10.00", "9.50", "1"), sheetRow("3", "4.00", "3.80", "1")};
        QVERIFY_THROWS_EXCEPTION(DbError, SaveAndInvoiceNewOrder(s));
        QCOMPARE(orderRows(9), QStringList({"1|1|1|10|9.5", "3|1|1|4|3.8"}));
        QCOMPARE(despatches().value(2).section('|', 0, 2), "3|9|1");
        QCOMPARE(joined({stock(), QString::number(despRows().size()),
                         QString::number(history().size())}),
                 "37|40|37.5|4|3"); // the first row's history too
    }

    // Two workstations: per order row ShippedQty is the sum of its despatch rows, per item the
    // fall of the stock its "SHIP" total, whatever numbers the two shared.
    void twoWorkstationsInvoiceOneOrder() {
        TestData data;
        addOrder(1, addCustomer("Acme", 0));
        for (int i = 1; i <= kRows; ++i) {
            addItem(i, QStringLiteral("P-%1").arg(i), 1);
            addOrderRow(1, i, 100000, 0, 1, 1);
        }
        QProcess one, two;
        for (QProcess* p : {&one, &two})
            p->start(QCoreApplication::applicationFilePath(),
                     {"--invoice-worker", data.folder(), QString::number(kRounds),
                      p == &one ? "0" : "1"});
        int done = 0;
        for (QProcess* p : {&one, &two}) {
            QVERIFY(p->waitForFinished(240000));
            QVERIFY2(p->exitStatus() == QProcess::NormalExit && p->exitCode() == 0,
                     p->readAllStandardError().constData());
            const int rounds = p->readAllStandardOutput().trimmed().toInt();
            QVERIFY(rounds > 0);
            done += rounds;
        }

        // Every round left a despatch row and a history row per order row, whichever despatch
        // they went under and whatever numbers the two shared; per order row ShippedQty is the
        // sum of its despatch rows, per item the fall of the stock its "SHIP" total.
        QCOMPARE(SqlRows("SELECT (SELECT COUNT(*) FROM tblDespDetail), (SELECT COUNT(*) FROM "
                         "tblItemHistory WHERE HistType='SHIP'), (SELECT COUNT(*) FROM "
                         "tblCustOrderDetail WHERE ShippedQty > 0 AND ShippedQty = (SELECT "
                         "TOTAL(DespQty) FROM tblDespDetail WHERE OrderDetailRowID = "
                         "tblCustOrderDetail.RowID)), (SELECT COUNT(*) FROM tblStockItems WHERE "
                         "40 - Qty = (SELECT TOTAL(HistQty) FROM tblItemHistory WHERE HistType = "
                         "'SHIP' AND StockID = ItemID))"),
                 QStringList(QStringLiteral("%1|%1|%2|%2").arg(done * kRows).arg(kRows)));
    }
};

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc == 5 && qstrcmp(argv[1], "--invoice-worker") == 0)
        return invoiceWorker(QString::fromLocal8Bit(argv[2]), QByteArray(argv[3]).toInt(),
                             QByteArray(argv[4]).toInt());
    TestInvoicing test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "test_invoicing.moc"
