// The order viewer without a window: the order list in each mode, one order's rows, saving them,
// adding a supplier's item, deleting rows and orders, a save that fails part way, and two
// workstations working on one order.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "purchasing/ItemPOrders.h"
#include "purchasing/OrderViewer.h"
#include "tests/purchasing/OrderViewerFixture.h"

#include <QTest>

namespace {

QStringList ListColumn(const OrderArray& list, int column) {
    QStringList out;
    for (int r = 1; r <= list.rowCount; ++r)
        out << list.rows(column, r).toString();
    return out;
}

QStringList Ids(quint8 mode, const QString& po = QString(), const QString& su = QString()) {
    return ListColumn(LoadOrderList(mode, po, su), OListCol::OrID);
}

// Items whose stored on-order quantity differs from a count of their open rows.
QString OnOrderMismatches() {
    return SqlFirst(QStringLiteral(
        "SELECT count(*) FROM tblStockItems s WHERE s.OnOrderQty <> (SELECT coalesce(sum(POQty - "
        "PORecieved), 0) FROM tblPODetail d WHERE d.POStockID = s.ItemID AND POQty <> "
        "PORecieved)"));
}

QString RowValues(int rowId) {
    return SqlFirst(QStringLiteral("SELECT POQty || '|' || POPrice || '|' || POSchedDate || '|' || "
                                   "RowConfirmed FROM tblPODetail WHERE RowID=%1")
                        .arg(rowId));
}

SaveOrderInput Input(const OrderArray& detail, int poid) {
    SaveOrderInput in;
    in.rows = &detail.rows;
    in.rowCount = detail.rowCount;
    in.poidText = QStringLiteral("%1").arg(poid, 4, 10, QLatin1Char('0'));
    return in;
}

void ItemsAndSuppliers() {
    fixture::Supplier(1, QStringLiteral("Acme"));
    fixture::Supplier(2, QStringLiteral("Bolt"));
    for (int i = 10; i <= 14; ++i)
        fixture::Item(i, QStringLiteral("P-%1").arg(i));
}

} // namespace

class TestOrderViewer : public QObject {
    Q_OBJECT
private slots:
    void init() {
        gRemoteMode.clear();
        gCanPurchasing = true;
    }

    void listModesFiltersAndEta() {
        TestData data;
        ScriptedBoxes boxes;
        ItemsAndSuppliers();
        // Order 1: a complete row met first, then an open one.
        fixture::OrderHeader(1, 1, QStringLiteral("2026-09-30"));
        fixture::OrderRow(1, 10, QStringLiteral("5"), QStringLiteral("5"),
                          QStringLiteral("2026-12-24"));
        fixture::OrderRow(1, 11, QStringLiteral("3"), QStringLiteral("0"),
                          QStringLiteral("2026-11-02"));
        fixture::OrderHeader(10, 2);
        fixture::OrderRow(10, 12, QStringLiteral("2"), QStringLiteral("1"),
                          QStringLiteral("1999-03-03"));
        fixture::OrderHeader(12, 1);
        fixture::OrderRow(12, 10, QStringLiteral("4"), QStringLiteral("4"));
        fixture::OrderHeader(19, 2);
        fixture::OrderRow(19, 13, QStringLiteral("1"), QStringLiteral("0"));
        fixture::OrderHeader(25, 2);
        fixture::OrderRow(25, 13, QStringLiteral("1"), QStringLiteral("0"));
        fixture::OrderHeader(2, 1); // no rows: never listed
        fixture::OrderHeader(3, 7); // its supplier's record is gone: never listed
        fixture::OrderRow(3, 10, QStringLiteral("9"), QStringLiteral("0"));

        // Grouped by supplier name, then by number; one line per order.
        QCOMPARE(Ids(OrderViewMode::All), QStringList({"0001", "0012", "0010", "0019", "0025"}));
        QCOMPARE(Ids(OrderViewMode::NotCompleted), QStringList({"0001", "0010", "0019", "0025"}));
        QCOMPARE(Ids(OrderViewMode::Completed), QStringList({"0001", "0012"}));

        // The columns of a line; eta is the date of the first row met in the mode.
        const OrderArray all = LoadOrderList(OrderViewMode::All, QString(), QString());
        QCOMPARE(all.rowCount, 5);
        QCOMPARE(all.rows.Columns(), OListCol::Count);
        QStringList first;
        for (int c = 1; c <= OListCol::Count; ++c)
            first << all.rows(c, 1).toString();
        QCOMPARE(first, QStringList({"0001", "REF-1", "Acme", "30/09/2026", "24/12/2026", "xxxx",
                                     "1", "false", "-Stock-"}));
        QCOMPARE(ListColumn(all, OListCol::Eta), QStringList({"24/12/2026", "", "", "", ""}));
        QCOMPARE(ListColumn(LoadOrderList(OrderViewMode::NotCompleted, QString(), QString()),
                            OListCol::Eta)
                     .first(),
                 QStringLiteral("02/11/2026"));

        // "1" finds 1 and 10 to 19, not 2 or 25; the supplier filter is a prefix, any case.
        QCOMPARE(Ids(OrderViewMode::All, QStringLiteral("1")),
                 QStringList({"0001", "0012", "0010", "0019"}));
        QCOMPARE(Ids(OrderViewMode::All, QString(), QStringLiteral("bo")),
                 QStringList({"0010", "0019", "0025"}));
        QCOMPARE(Ids(OrderViewMode::NotCompleted, QStringLiteral("1"), QStringLiteral("Acme")),
                 QStringList({"0001"}));
        QVERIFY(Ids(OrderViewMode::All, QStringLiteral("%")).isEmpty());

        // The server search: dormant while gRemoteMode is empty, refused with both filters empty
        // once it is a number.
        QVERIFY(!RefuseEmptyRemoteSearch(QString(), QString()));
        gRemoteMode = QStringLiteral("1");
        bool stopped = false;
        QCOMPARE(LoadOrderList(OrderViewMode::All, QString(), QString(), &stopped).rowCount, 0);
        QVERIFY(stopped);
        QCOMPARE(
            LoadOrderList(OrderViewMode::All, QStringLiteral("2"), QString(), &stopped).rowCount,
            1);
        QVERIFY(!stopped);
        boxes.answer(vbOK);
        QVERIFY(RefuseEmptyRemoteSearch(QString(), QString()));
        QVERIFY(boxes.prompts().first().startsWith(
            QStringLiteral("You must enter at least one character into the search criteria")));
        QVERIFY(boxes.prompts().first().contains(QStringLiteral("connection.\n\nIt is suggested")));
        QVERIFY(!RefuseEmptyRemoteSearch(QString(), QStringLiteral("A")));
        gRemoteMode.clear();

        // A tick in the list runs the confirm statement, which names PONumberID and so confirms
        // nothing; the list's copy takes the tick.
        OrderArray list = LoadOrderList(OrderViewMode::All, QString(), QString());
        QVector<QVariant> values;
        for (int c = 1; c <= OListCol::Count; ++c)
            values << list.rows(c, 2);
        values[OListCol::Chk - 1] = true;
        ConfirmOrder(list.rows, list.rowCount, 2, values);
        QCOMPARE(list.rows(OListCol::Chk, 2), QVariant(true));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT sum(POConfirmed) || '/' || count(PONumberID) "
                                         "FROM tblPOrders")),
                 QStringLiteral("0/0"));
    }

    void detailRowsAndCommit() {
        TestData data;
        ScriptedBoxes boxes;
        ItemsAndSuppliers();
        ExecSql(QStringLiteral("UPDATE tblStockItems SET ItemName='Ten', ItemDescription='Tenth' "
                               "WHERE ItemID=10"));
        fixture::OrderHeader(5, 1);
        const int a = fixture::OrderRow(5, 11, QStringLiteral("2.5"), QStringLiteral("1"),
                                        QStringLiteral("2026-12-01"), QStringLiteral("0.125"));
        const int b = fixture::OrderRow(5, 10, QStringLiteral("12"), QStringLiteral("0"),
                                        QStringLiteral("2026-12-01"), QStringLiteral("2"));
        const int c = fixture::OrderRow(5, 12, QStringLiteral("1"), QStringLiteral("0"),
                                        QStringLiteral("2026-11-30"), QStringLiteral("3.1"));
        ExecSql(QStringLiteral("UPDATE tblPODetail SET RowConfirmed=-1 WHERE RowID=%1").arg(b));
        fixture::OrderHeader(6, 1); // no rows

        // By schedule date, then by item.
        OrderArray d = LoadOrderDetail(5);
        QVERIFY(boxes.shown().isEmpty());
        QCOMPARE(d.rowCount, 3);
        QCOMPARE(ListColumn(d, PODetailCol::RowID),
                 QStringList({QString::number(c), QString::number(b), QString::number(a)}));
        QStringList second;
        for (int col = 1; col <= PODetailCol::Count; ++col)
            second << d.rows(col, 2).toString();
        QCOMPARE(second, QStringList({QString::number(b), "P-10", "Ten", "Tenth", "S-10",
                                      "01/12/2026", "-1", "12", "0", "2.00", "24.00", "10"}));
        QCOMPARE(ListColumn(d, PODetailCol::POQty), QStringList({"1", "12", "2.5"}));
        QCOMPARE(ListColumn(d, PODetailCol::RowPrice), QStringList({"3.10", "24.00", "0.3125"}));

        // A commit takes the row as typed and works the total out again; nothing is written.
        QVector<QVariant> values;
        for (int col = 1; col <= PODetailCol::Count; ++col)
            values << d.rows(col, 3);
        values[PODetailCol::POQty - 1] = QStringLiteral("7.5");
        values[PODetailCol::DelDate - 1] = QStringLiteral("05/01/2027");
        CommitDetailRow(d.rows, d.rowCount, 3, values);
        QCOMPARE(d.rows(PODetailCol::RowPrice, 3).toString(), QStringLiteral("0.9375"));
        QCOMPARE(d.rows(PODetailCol::DelDate, 3).toString(), QStringLiteral("05/01/2027"));
        QCOMPARE(RowValues(a), QStringLiteral("2.5|0.125|2026-12-01|0"));

        // An order without rows says so.
        boxes.answer(vbOK);
        QCOMPARE(LoadOrderDetail(6).rowCount, 0);
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown().first().title, QStringLiteral("Empty Purchase Order"));
        QCOMPARE(boxes.shown().first().prompt,
                 QStringLiteral("This Purchase Order has No Items attached. You may add items "
                                "now if you wish"));
        QCOMPARE(boxes.shown().first().flags, int(vbInformation));
    }

    void saveRows() {
        TestData data;
        ScriptedBoxes boxes;
        ItemsAndSuppliers();
        fixture::OrderHeader(5, 1);
        const int lowered = fixture::OrderRow(5, 10, QStringLiteral("10"), QStringLiteral("6"));
        const int closed = fixture::OrderRow(5, 11, QStringLiteral("10"), QStringLiteral("6"));
        const int kept =
            fixture::OrderRow(5, 12, QStringLiteral("2"), QStringLiteral("0"),
                              QStringLiteral("1999-05-05"), QStringLiteral("1.123456789"));
        fixture::OrderHeader(7, 2); // another order of item 10, open by 3
        fixture::OrderRow(7, 10, QStringLiteral("3"), QStringLiteral("0"));
        ExecSql(QStringLiteral("UPDATE tblPOrders SET POComplete=5"));
        ExecSql(QStringLiteral("UPDATE tblStockItems SET OnOrderQty = 99")); // stale

        OrderArray d = LoadOrderDetail(5);
        QCOMPARE(ListColumn(d, PODetailCol::RowID),
                 QStringList(
                     {QString::number(kept), QString::number(lowered), QString::number(closed)}));
        // Item 10's row set below what came in, item 11's set to it.
        d.rows(PODetailCol::POQty, 2) = QStringLiteral("4");
        d.rows(PODetailCol::POQty, 3) = QStringLiteral("6");
        d.rows(PODetailCol::Chk, 3) = true;
        SaveOrderRows(Input(d, 5));
        QVERIFY(boxes.shown().isEmpty());

        // Below received stays outstanding, by a negative figure that lowers the item's total.
        QCOMPARE(RowValues(lowered), QStringLiteral("4.0|1.0|2040-01-01|0"));
        QCOMPARE(fixture::OnOrder(10), QStringLiteral("1")); // 3 open elsewhere, -2 here
        // Set to received: the row is complete and counts no more.
        QCOMPARE(RowValues(closed), QStringLiteral("6.0|1.0|2040-01-01|-1"));
        QCOMPARE(fixture::OnOrder(11), QStringLiteral("0"));
        // The unchanged row is rewritten all the same: the price to five places, the 1999 date
        // (shown blank) as no date.
        QCOMPARE(RowValues(kept), QStringLiteral("2.0|1.12346|2040-01-01|0"));
        QCOMPARE(fixture::OnOrder(12), QStringLiteral("2"));
        // Only the saved order's header is written, and with 0; items of no row stay as they were.
        QCOMPARE(SqlFirst(QStringLiteral("SELECT group_concat(POComplete) FROM (SELECT POComplete "
                                         "FROM tblPOrders ORDER BY POID)")),
                 QStringLiteral("0,5"));
        QCOMPARE(fixture::OnOrder(13), QStringLiteral("99"));

        // Quantities round to their mask. With no date left, item 12's row now comes last.
        d = LoadOrderDetail(5);
        QCOMPARE(d.rows(PODetailCol::RowID, 3).toInt(), kept);
        d.rows(PODetailCol::POQty, 3) = QStringLiteral("2.3456");
        SaveOrderRows(Input(d, 5));
        QCOMPARE(RowValues(kept), QStringLiteral("2.35|1.12346|2040-01-01|0"));
    }

    void saveInCommaLocale() {
        TestData data;
        ScriptedBoxes boxes;
        LocaleScope german(QLocale(QLocale::German, QLocale::Germany));
        ItemsAndSuppliers();
        fixture::OrderHeader(5, 1);
        const int r = fixture::OrderRow(5, 10, QStringLiteral("2.5"), QStringLiteral("0"),
                                        QStringLiteral("2026-12-24"), QStringLiteral("1.25"));
        OrderArray d = LoadOrderDetail(5);
        QCOMPARE(d.rows(PODetailCol::POQty, 1).toString(), QStringLiteral("2,5"));
        QCOMPARE(d.rows(PODetailCol::AtPrice, 1).toString(), QStringLiteral("1,25"));
        QCOMPARE(d.rows(PODetailCol::RowPrice, 1).toString(), QStringLiteral("3,125"));
        const QString shown = d.rows(PODetailCol::DelDate, 1).toString();
        QCOMPARE(ParseDateText(shown), QDate(2026, 12, 24));

        // Unchanged, the row comes back as it was; typed in the locale, it is read in it.
        SaveOrderRows(Input(d, 5));
        QCOMPARE(RowValues(r), QStringLiteral("2.5|1.25|2026-12-24|0"));
        QVector<QVariant> values;
        for (int c = 1; c <= PODetailCol::Count; ++c)
            values << d.rows(c, 1);
        values[PODetailCol::POQty - 1] = QStringLiteral("3,75");
        values[PODetailCol::DelDate - 1] = ShowDate(QDate(2027, 1, 31));
        CommitDetailRow(d.rows, d.rowCount, 1, values);
        QCOMPARE(d.rows(PODetailCol::RowPrice, 1).toString(), QStringLiteral("4,6875"));
        SaveOrderRows(Input(d, 5));
        QCOMPARE(RowValues(r), QStringLiteral("3.75|1.25|2027-01-31|0"));
        QCOMPARE(fixture::OnOrder(10), QStringLiteral("3.75"));
    }

    void saveFailingPartWay() {
        TestData data;
        ScriptedBoxes boxes;
        ItemsAndSuppliers();
        fixture::OrderHeader(5, 1);
        QList<int> rows;
        for (int i = 0; i < 5; ++i)
            rows << fixture::OrderRow(5, 10 + i, QStringLiteral("1"), QStringLiteral("0"));
        ExecSql(QStringLiteral("UPDATE tblPOrders SET POComplete=5"));
        ExecSql(QStringLiteral("UPDATE tblStockItems SET OnOrderQty = 99"));
        ExecSql(QStringLiteral("CREATE TRIGGER failThird BEFORE UPDATE ON tblPODetail WHEN "
                               "NEW.RowID=%1 BEGIN SELECT RAISE(ABORT, 'row locked'); END")
                    .arg(rows[2]));

        OrderArray d = LoadOrderDetail(5);
        QCOMPARE(d.rowCount, 5);
        for (int r = 1; r <= 5; ++r)
            d.rows(PODetailCol::POQty, r) = QStringLiteral("8");
        bool raised = false;
        try {
            SaveOrderRows(Input(d, 5));
        } catch (const DbError& e) {
            raised = true;
            QVERIFY(e.Description().contains(QStringLiteral("row locked")));
        }
        QVERIFY(raised);
        // Each statement stood alone: the first two rows are written, the rest, the on-order
        // figures and the header are as they were.
        QStringList qty;
        for (int id : rows)
            qty << SqlFirst(QStringLiteral("SELECT POQty FROM tblPODetail WHERE RowID=%1").arg(id));
        QCOMPARE(qty, QStringList({"8", "8", "1", "1", "1"}));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT group_concat(DISTINCT OnOrderQty) FROM "
                                         "tblStockItems")),
                 QStringLiteral("99.0"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT POComplete FROM tblPOrders")),
                 QStringLiteral("5"));
    }

    void partsAndAddedRow() {
        TestData data;
        ScriptedBoxes boxes;
        LocaleScope german(QLocale(QLocale::German, QLocale::Germany));
        ItemsAndSuppliers();
        fixture::Link(10, 1, QStringLiteral("1.234567"), QStringLiteral("A-10"),
                      QStringLiteral("5"));
        fixture::Link(11, 1, QStringLiteral("2"), QStringLiteral("A-11"));
        fixture::Link(12, 2, QStringLiteral("3"), QStringLiteral("B-12"));
        fixture::OrderHeader(5, 1);
        fixture::OrderRow(5, 11, QStringLiteral("4"), QStringLiteral("0"));
        ExecSql(QStringLiteral("UPDATE tblStockItems SET OnOrderQty = 42"));

        // The supplier's parts, as the basket lists them but without the minimum quantity.
        const OrderArray parts = ShowOrderParts(1, QStringLiteral("P-1"));
        QCOMPARE(parts.rowCount, 2);
        QCOMPARE(parts.rows.Columns(), POPartCol::Count);
        QStringList first;
        for (int c = 1; c <= POPartCol::Count; ++c)
            first << parts.rows(c, 1).toString();
        QCOMPARE(first,
                 QStringList({"10", "P-10", "Value 10", "CAT", "Item 10", "1,23457", "A-10"}));
        QCOMPARE(ShowOrderParts(1, QStringLiteral("P-11")).rowCount, 1);

        // Item 12 is not sold by supplier 1.
        boxes.answer(vbOK);
        QVERIFY(!AddOrderRow(12, 5, 1));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Incorrect Supplier"));
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("You can't add this item to the current Order because the item "
                                "is not available from that supplier"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT count(*) FROM tblPODetail")), QStringLiteral("1"));

        // The added row: the supplier's number and price (as numbers, whatever the locale),
        // nothing ordered, nothing received, no date; the on-order figure is left alone.
        QVERIFY(AddOrderRow(10, 5, 1));
        QCOMPARE(SqlFirst(QStringLiteral(
                     "SELECT POID || '|' || POStockID || '|' || POSupPNo || '|' || POQty || '|' || "
                     "typeof(POPrice) || ':' || POPrice || '|' || POSchedDate || '|' || "
                     "PORecieved || '|' || RowConfirmed FROM tblPODetail WHERE POStockID=10")),
                 QStringLiteral("5|10|A-10|0.0|real:1.23457|2040-01-01|0.0|0"));
        QCOMPARE(fixture::OnOrder(10), QStringLiteral("42"));
        // It lists with the order's rows as a zero line.
        const OrderArray d = LoadOrderDetail(5);
        QCOMPARE(ListColumn(d, PODetailCol::POQty), QStringList({"0", "4"}));
        QCOMPARE(ListColumn(d, PODetailCol::RowPrice), QStringList({"0,00", "4,00"}));
    }

    void deleteRowsAndOrders() {
        TestData data;
        ScriptedBoxes boxes;
        ItemsAndSuppliers();
        fixture::OrderHeader(5, 1);
        const int received = fixture::OrderRow(5, 10, QStringLiteral("5"), QStringLiteral("5"));
        const int open = fixture::OrderRow(5, 11, QStringLiteral("4"), QStringLiteral("1"));
        fixture::OrderHeader(6, 2);
        fixture::OrderRow(6, 10, QStringLiteral("3"), QStringLiteral("0"));
        fixture::OrderRow(6, 12, QStringLiteral("2"), QStringLiteral("0"));
        fixture::OrderHeader(7, 2);
        fixture::OrderRow(7, 12, QStringLiteral("6"), QStringLiteral("0"));
        ExecSql(QStringLiteral("UPDATE tblStockItems SET Qty = 5, OnOrderQty = 0"));
        ExecSql(QStringLiteral("INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistID2, "
                               "HistQty) VALUES (10, '2026-11-01', 'RX', %1, 5)")
                    .arg(received));

        // Without the right: refused before any question.
        gCanPurchasing = false;
        boxes.answer(vbOK);
        QCOMPARE(DeleteOrderRow(open), DeleteOutcome::Refused);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Access Restricted"));
        QCOMPARE(boxes.shown().size(), 1);
        gCanPurchasing = true;

        // No is the default answer, and No deletes nothing.
        boxes.answer(vbNo);
        QCOMPARE(DeleteOrderRow(open), DeleteOutcome::Declined);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Delete Row?"));
        QCOMPARE(boxes.shown().last().flags, int(vbYesNo + vbQuestion + vbDefaultButton2));
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("Are you sure you want to delete this Row from the order?\n\nIf "
                                "you select 'Yes' the row will be deleted immediately"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT count(*) FROM tblPODetail")), QStringLiteral("5"));

        boxes.answer(vbYes);
        QCOMPARE(DeleteOrderRow(open), DeleteOutcome::Deleted);
        QCOMPARE(fixture::OnOrder(11), QStringLiteral("0"));
        // A received row goes all the same: stock and history stay as booked.
        boxes.answer(vbYes);
        QCOMPARE(DeleteOrderRow(received), DeleteOutcome::Deleted);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT Qty || '/' || OnOrderQty FROM tblStockItems "
                                         "WHERE ItemID=10")),
                 QStringLiteral("5.0/3.0"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT count(*) FROM tblItemHistory WHERE HistID2=%1")
                              .arg(received)),
                 QStringLiteral("1"));
        // The last row gone: the header stays, says it is empty, and never lists again.
        QCOMPARE(SqlFirst(QStringLiteral("SELECT count(*) FROM tblPOrders WHERE POID=5")),
                 QStringLiteral("1"));
        boxes.answer(vbOK);
        QCOMPARE(LoadOrderDetail(5).rowCount, 0);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Empty Purchase Order"));
        QCOMPARE(Ids(OrderViewMode::All), QStringList({"0006", "0007"}));

        // A whole order: its rows, the on-order figure of each item, then the header.
        boxes.answer(vbNo);
        QCOMPARE(DeleteOrder(6), DeleteOutcome::Declined);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Delete Order?"));
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("Are you sure you want to delete this PurchaseOrder Entirely?"));
        QCOMPARE(boxes.shown().last().flags, int(vbYesNo + vbQuestion + vbDefaultButton2));
        boxes.answer(vbYes);
        QCOMPARE(DeleteOrder(6), DeleteOutcome::Deleted);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT count(*) FROM tblPODetail WHERE POID=6")),
                 QStringLiteral("0"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT group_concat(POID) FROM tblPOrders")),
                 QStringLiteral("5,7"));
        QCOMPARE(fixture::OnOrder(10), QStringLiteral("0"));
        QCOMPARE(fixture::OnOrder(12), QStringLiteral("6"));
        QCOMPARE(OnOrderMismatches(), QStringLiteral("0"));
        QVERIFY(boxes.allAnswersUsed());
    }

    void twoWorkstationsOnOneOrder() {
        TestData data;
        ScriptedBoxes boxes;
        ItemsAndSuppliers();
        fixture::OrderHeader(5, 1);
        QList<int> rows;
        for (int i = 0; i < 4; ++i)
            rows << fixture::OrderRow(5, 10 + i, QStringLiteral("%1").arg(i + 2),
                                      QStringLiteral("1"));
        fixture::OrderHeader(6, 1);
        fixture::OrderRow(6, 10, QStringLiteral("7"), QStringLiteral("0"));
        fixture::OrderRow(6, 11, QStringLiteral("3"), QStringLiteral("0"));
        ExecSql(QStringLiteral("UPDATE tblStockItems SET OnOrderQty = 0"));

        // Workstation A saves new quantities; between its second and third row B deletes the
        // third row, and B deletes the fourth just before A counts the items again.
        OrderArray a = LoadOrderDetail(5);
        for (int r = 1; r <= a.rowCount; ++r)
            a.rows(PODetailCol::POQty, r) = QStringLiteral("9");
        boxes.answer(vbYes);
        boxes.answer(vbYes);
        Database::BeforeNextStatementContaining(QStringLiteral("WHERE RowID=%1").arg(rows[2]), [&] {
            QCOMPARE(DeleteOrderRow(rows[2]), DeleteOutcome::Deleted);
            Database::BeforeNextStatementContaining(
                QStringLiteral(" SELECT * FROM tblPODetail WHERE POStockID=10"),
                [&] { QCOMPARE(DeleteOrderRow(rows[3]), DeleteOutcome::Deleted); });
        });
        SaveOrderRows(Input(a, 5));
        QCOMPARE(
            SqlFirst(QStringLiteral("SELECT group_concat(POQty) FROM tblPODetail WHERE POID=5")),
            QStringLiteral("9.0,9.0"));
        QCOMPARE(OnOrderMismatches(), QStringLiteral("0"));

        // A deletes order 5 while B saves its rows as B last read them: once between A's row
        // delete and its header delete, once before A's rows go.
        OrderArray b = LoadOrderDetail(5);
        for (int r = 1; r <= b.rowCount; ++r)
            b.rows(PODetailCol::POQty, r) = QStringLiteral("20");
        boxes.answer(vbYes);
        Database::BeforeNextStatementContaining(QStringLiteral("DELETE FROM tblPODetail"),
                                                [&] { SaveOrderRows(Input(b, 5)); });
        QCOMPARE(DeleteOrder(5), DeleteOutcome::Deleted);
        QCOMPARE(OnOrderMismatches(), QStringLiteral("0"));

        b = LoadOrderDetail(6);
        for (int r = 1; r <= b.rowCount; ++r)
            b.rows(PODetailCol::POQty, r) = QStringLiteral("0.5");
        boxes.answer(vbYes);
        Database::BeforeNextStatementContaining(QStringLiteral("DELETE FROM tblPOrders"),
                                                [&] { SaveOrderRows(Input(b, 6)); });
        QCOMPARE(DeleteOrder(6), DeleteOutcome::Deleted);
        QCOMPARE(SqlFirst(QStringLiteral("SELECT count(*) FROM tblPODetail")), QStringLiteral("0"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT sum(abs(OnOrderQty)) FROM tblStockItems")),
                 QStringLiteral("0"));
        QCOMPARE(OnOrderMismatches(), QStringLiteral("0"));
        QVERIFY(boxes.allAnswersUsed());
    }

    void itemPurchaseOrders() {
        TestData data;
        ItemsAndSuppliers();
        fixture::OrderHeader(5, 1, QStringLiteral("2026-10-01"));
        fixture::OrderHeader(9, 2, QStringLiteral("2026-11-15"));
        fixture::OrderHeader(3, 7, QStringLiteral("2026-11-15")); // its supplier is gone
        fixture::OrderRow(5, 10, QStringLiteral("2"), QStringLiteral("2"),
                          QStringLiteral("2026-10-20"), QStringLiteral("1.5"));
        const int confirmed =
            fixture::OrderRow(9, 10, QStringLiteral("12.5"), QStringLiteral("0"),
                              QStringLiteral("2040-01-01"), QStringLiteral("0.12345"));
        ExecSql(QStringLiteral("UPDATE tblPODetail SET RowConfirmed=-1, RowComments='late' WHERE "
                               "RowID=%1")
                    .arg(confirmed));
        fixture::OrderRow(3, 10, QStringLiteral("1"), QStringLiteral("0"));
        fixture::OrderRow(9, 11, QStringLiteral("1"), QStringLiteral("0"));
        ExecSql(
            QStringLiteral("INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved) VALUES "
                           "(77, 10, 1, 0)")); // its header is gone

        const ItemPOrders list = LoadItemPOrders(10);
        QCOMPARE(list.rowCount, 4);
        QStringList lines;
        for (int r = 1; r <= list.rowCount; ++r) {
            QStringList cells;
            for (int c = 1; c <= ItemPOCol::Count; ++c)
                cells << list.rows(c, r).toString();
            lines << cells.join(QLatin1Char('|'));
        }
        QCOMPARE(lines, QStringList({"0009|15/11/2026|Bolt|12.5|0||0.12345|Yes|late",
                                     "0003|15/11/2026||1|0||1.00|No|",
                                     "0005|01/10/2026|Acme|2|2|20/10/2026|1.50|No|",
                                     "0077|||1|0||0.00|No|"}));
        QCOMPARE(LoadItemPOrders(14).rowCount, 0);
    }
};

QTEST_GUILESS_MAIN(TestOrderViewer)
#include "test_orderviewer.moc"
