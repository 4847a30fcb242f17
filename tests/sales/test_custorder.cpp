#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "sales/CustOrder.h"
#include "sales/SalesDefaults.h"
#include "tests/sales/SalesFixture.h"
#include "tests/support/TestSupport.h"

#include <QTest>

using namespace sales_fixture;

namespace {
// The two rows of the worked example: 2 x 10.125 and 1 x 3.00, delivery 5.00 at 17.5 %.
CustOrderSheet workedExample() {
    CustOrderSheet s;
    SetupOrderGrid(s);
    s.tax1Rate = QStringLiteral("17.5");
    s.delivery = QStringLiteral("5.00");
    s.rows = {sheetRow("10.125", "10.125", "2"), sheetRow("3.00", "3.00", "1")};
    return s;
}

qint64 parameterRows(const QString& name) {
    return SqlFirst(QStringLiteral("SELECT COUNT(*) FROM tblParameters WHERE ParaName='") + name +
                    QStringLiteral("'"))
        .toLongLong();
}
} // namespace

class TestCustOrder : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    // ------------------------------------------------------------------ arithmetic

    void totalsOfTheWorkedExample() {
        CustOrderSheet s = workedExample();
        RecalcOrderTotals(s);
        QCOMPARE(column(s, OrderCol::Total), QStringList({"20.25", "3.00"}));
        QCOMPARE(s.net, QStringLiteral("23.25"));
        QCOMPARE(s.vat, QStringLiteral("4.94")); // 4.94375 on net and delivery
        QCOMPARE(s.total, QStringLiteral("33.19"));
        QCOMPARE(s.text3, QStringLiteral("17.5% "));

        // Without tax on delivery the charge counts in the total only.
        s.taxOnDel = false;
        RecalcOrderTotals(s);
        QCOMPARE(s.vat, QStringLiteral("4.07"));
        QCOMPARE(s.total, QStringLiteral("32.32"));

        // The net sums the unrounded products; only the line cells are rounded.
        s.rows = {sheetRow("0.33333", "0.33333", "3"), sheetRow("0.33333", "0.33333", "3")};
        s.tax1Rate = QStringLiteral("0");
        RecalcOrderTotals(s);
        QCOMPARE(column(s, OrderCol::Total), QStringList({"0.99999", "0.99999"}));
        QCOMPARE(s.net, QStringLiteral("1.99998"));
        QCOMPARE(s.total, QStringLiteral("7.00"));
    }

    void discountRepricesEveryRow() {
        CustOrderSheet s = workedExample();
        s.taxOnDel = false;
        QCOMPARE(SellAtFromGross(9.0075, 1), QStringLiteral("8.91743"));

        SetDiscount(s, QStringLiteral("100"));
        QCOMPARE(column(s, OrderCol::SellAt), QStringList({"0.00", "0.00"}));
        QCOMPARE(s.net, QStringLiteral("0.00"));
        QCOMPARE(s.total, QStringLiteral("5.00"));

        SetDiscount(s, QStringLiteral("120")); // negative prices are accepted
        QCOMPARE(column(s, OrderCol::SellAt), QStringList({"-2.025", "-0.60"}));
        QCOMPARE(s.net, QStringLiteral("-4.65"));
        QCOMPARE(s.vat, QStringLiteral("-0.81"));
        QCOMPARE(s.total, QStringLiteral("-0.46"));

        // A price typed through fgedit is lost at the next change of the discount.
        SetDiscount(s, QStringLiteral("10"));
        s.editRow = 0;
        s.editCol = OrderCol::SellAt;
        EditCell(s, QStringLiteral("12"));
        QCOMPARE(s.rows[0][OrderCol::SellAt], QStringLiteral("12.00"));
        QCOMPARE(s.rows[0][OrderCol::Total], QStringLiteral("24.00"));
        SetDiscount(s, QStringLiteral("1"));
        QCOMPARE(s.rows[0][OrderCol::SellAt], QStringLiteral("10.02375"));

        // Leaving the box writes its numeric value and reprices, even when the text stays.
        s.discount = QStringLiteral("5x");
        LeaveDiscount(s);
        QCOMPARE(s.discount, QStringLiteral("5"));
        QCOMPARE(s.rows[0][OrderCol::SellAt], QStringLiteral("9.61875"));
        s.rows[0][OrderCol::SellAt] = QStringLiteral("1.00");
        LeaveDiscount(s);
        QCOMPARE(s.rows[0][OrderCol::SellAt], QStringLiteral("9.61875"));
        s.discount.clear();
        LeaveDiscount(s);
        QCOMPARE(s.discount, QStringLiteral("0"));
        QCOMPARE(s.rows[0][OrderCol::SellAt], QStringLiteral("10.125"));
    }

    void cellEditsAndQuantityColumnByMode() {
        CustOrderSheet s = workedExample();
        s.editRow = 1;
        s.editCol = OrderCol::OrderQty;
        EditCell(s, QStringLiteral("4"));
        QCOMPARE(s.rows[1][OrderCol::OrderQty], QStringLiteral("4")); // FormatNumber: no ".0"
        QCOMPARE(s.net, QStringLiteral("32.25"));
        EditCell(s, QStringLiteral("2.555"));
        QCOMPARE(s.rows[1][OrderCol::OrderQty], QStringLiteral("2.56"));
        EditCell(s, QStringLiteral("-"));
        QCOMPARE(s.rows[1][OrderCol::OrderQty], QStringLiteral("0"));
        QCOMPARE(OrderCellKey(OrderCol::OrderQty, QString(), '-'), int('-'));
        QCOMPARE(OrderCellKey(OrderCol::OrderQty, QStringLiteral("1.5"), '.'), 0);
        QCOMPARE(OrderCellKey(OrderCol::Desc, QString(), '7'), 0);

        // Modes 3 and 4 total the invoice quantity, not the order quantity.
        for (quint8 mode : {OrderMode::InvoiceOrder, OrderMode::SavedInvoice}) {
            CustOrderSheet inv = workedExample();
            inv.mode = mode;
            inv.rows[0][OrderCol::InvoiceQty] = QStringLiteral("1");
            inv.rows[1][OrderCol::InvoiceQty] = QStringLiteral("0");
            RecalcOrderTotals(inv);
            QCOMPARE(inv.net, QStringLiteral("10.125"));
            QCOMPARE(column(inv, OrderCol::Total), QStringList({"10.125", "0.00"}));
            PaintEditableCells(inv);
            QVERIFY(inv.rows[0].IsEditable(OrderCol::InvoiceQty));
            QVERIFY(!inv.rows[0].IsEditable(OrderCol::OrderQty));
        }

        // No rows: discount and delivery leave the totals alone; off, the totals wait.
        CustOrderSheet empty;
        empty.net = QStringLiteral("1.00");
        empty.total = QStringLiteral("2.00");
        SetDiscount(empty, QStringLiteral("50"));
        SetDelivery(empty, QStringLiteral("9.00"));
        QCOMPARE(empty.net, QStringLiteral("1.00"));
        QCOMPARE(empty.vat, QStringLiteral("0.00"));
        QCOMPARE(empty.total, QStringLiteral("2.00"));
        CustOrderSheet off = workedExample();
        off.recalcEnabled = false;
        RecalcOrderTotals(off);
        QCOMPARE(off.net, QStringLiteral("0.00"));
    }

    void commaLocaleArithmetic() {
        LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
        CustOrderSheet s;
        SetupOrderGrid(s);
        s.tax1Rate = QStringLiteral("17,5");
        s.delivery = QStringLiteral("5,00");
        s.rows = {sheetRow("10,125", "10,125", "2"), sheetRow("3,00", "3,00", "1")};
        RecalcOrderTotals(s);
        QCOMPARE(s.net, QStringLiteral("23,25"));
        QCOMPARE(s.vat, QStringLiteral("4,94"));
        QCOMPARE(s.total, QStringLiteral("33,19"));
        SetDiscount(s, QStringLiteral("1"));
        QCOMPARE(s.rows[0][OrderCol::SellAt], QStringLiteral("10,02375"));
    }

    // ------------------------------------------------------------------ loading

    void savedOrderKeepsItsPricesAndDiscount() {
        TestData data;
        ScriptedBoxes boxes;
        // The customer's discount changed since the order was taken at 5 %, with a typed price.
        const qint32 acme = addCustomer(QStringLiteral("Acme"), 12);
        addItem(1, QStringLiteral("A-1"), QStringLiteral("Widget"), 10, true,
                QStringLiteral("unknown"));
        addItem(2, QStringLiteral("B-2"), QStringLiteral("Gadget"), 4, true,
                QStringLiteral("Bin 4"));
        addOrder(12, acme, QStringLiteral("PO-7"), 5);
        const qint64 row1 = addOrderRow(12, 1, 10, 3.3, 10, 7.5);
        addOrderRow(12, 2, 2, 0, 4, 3.8);

        CustOrderSheet s;
        FormLoadSheet(s, OrderMode::SavedOrder, 12);
        QCOMPARE(boxes.shown().size(), 0);
        QCOMPARE(s.custListText, QStringLiteral("Acme"));
        QCOMPARE(s.custID, QString::number(acme));
        QCOMPARE(s.custAdd1, QStringLiteral("1 High St"));
        QCOMPARE(s.custPO, QStringLiteral("AB1 2CD"));
        QCOMPARE(s.discount, QStringLiteral("5"));
        QCOMPARE(s.custOrNo, QStringLiteral("PO-7"));
        QCOMPARE(s.orDate, ShowDate(QDate(2026, 3, 4)));
        QCOMPARE(s.custBasketID, QStringLiteral("0012"));
        QCOMPARE(s.custShipID, QStringLiteral("0012-001"));
        QCOMPARE(column(s, OrderCol::Item), QStringList({"1", "2"}));
        QCOMPARE(column(s, OrderCol::PartNo), QStringList({"A-1", "B-2"}));
        QCOMPARE(column(s, OrderCol::Price), QStringList({"10.00", "4.00"}));
        QCOMPARE(column(s, OrderCol::SellAt), QStringList({"7.50", "3.80"}));
        QCOMPARE(column(s, OrderCol::OrderQty), QStringList({"10.0", "2.0"}));
        QCOMPARE(column(s, OrderCol::Done), QStringList({"3.3", "0"}));
        QCOMPARE(column(s, OrderCol::ToDo), QStringList({"6.7", "2"}));
        QCOMPARE(column(s, OrderCol::InvoiceQty), QStringList({"6.7", "2"}));
        QCOMPARE(column(s, OrderCol::Total), QStringList({"75.00", "7.60"}));
        QCOMPARE(column(s, OrderCol::StockID), QStringList({"1", "2"}));
        QCOMPARE(s.rows[0][OrderCol::RowID], QString::number(row1));
        QCOMPARE(column(s, OrderCol::Location), QStringList({"", "Bin 4"}));
        QCOMPARE(s.net, QStringLiteral("82.60"));
        QVERIFY(s.rows[1].IsEditable(OrderCol::SellAt) && s.rows[1].IsEditable(OrderCol::OrderQty));
        QCOMPARE(s.colWidth[OrderCol::InvoiceQty], 0);
        QCOMPARE(s.colWidth[OrderCol::Done], 600);

        // Invoicing it: the next delivery and invoice numbers, the invoice quantity totals.
        addDespatch(12, 1, 41);
        CustOrderSheet inv;
        FormLoadSheet(inv, OrderMode::InvoiceOrder, 12);
        QCOMPARE(inv.custShipID, QStringLiteral("0012-002"));
        QCOMPARE(inv.invoiceNo, QStringLiteral("0042"));
        QCOMPARE(inv.invoiceDate, ShowDate(Today()));
        QCOMPARE(inv.net, QStringLiteral("57.85"));
        QCOMPARE(inv.colWidth[OrderCol::ToDo], 0);
        QCOMPARE(inv.colWidth[OrderCol::InvoiceQty], 850);

        // A number no order has leaves the sheet empty, without a word.
        CustOrderSheet none;
        FormLoadSheet(none, OrderMode::SavedOrder, 99);
        QVERIFY(none.rows.isEmpty());
        QVERIFY(none.custID.isEmpty());
        QCOMPARE(boxes.shown().size(), 0);
    }

    void emptyOrderSaysSoAndTakesItems() {
        TestData data;
        ScriptedBoxes boxes;
        const qint32 acme = addCustomer(QStringLiteral("Acme"), 0);
        addItem(3, QStringLiteral("C-3"), QStringLiteral("Cog"), 20, false);
        addOrder(13, acme, QStringLiteral("R1"), 25);
        boxes.answer(vbOK);
        CustOrderSheet s;
        FormLoadSheet(s, OrderMode::SavedOrder, 13);
        QCOMPARE(boxes.prompts(), QStringList({"This Customer Order appears to be empty. You can "
                                               "add items to it now if you wish"}));
        QCOMPARE(s.custBasketID, QStringLiteral("0013"));
        QCOMPARE(s.discount, QStringLiteral("25"));
        QVERIFY(s.rows.isEmpty());

        // The item does not allow discount: the list shows its plain price, the row the
        // discounted one all the same.
        const UBArray parts = LoadPartsForOrder({}, s.discount);
        QCOMPARE(parts.Rows(), 1);
        QCOMPARE(parts(6, 1).toString(), QStringLiteral("20.00"));
        QVERIFY(AddPartToOrder(s, parts, 1));
        QCOMPARE(s.rows.size(), 1);
        QCOMPARE(s.rows[0][OrderCol::SellAt], QStringLiteral("15.00"));
        QCOMPARE(s.net, QStringLiteral("15.00"));
    }

    void customersAndTheItemsList() {
        TestData data;
        ScriptedBoxes boxes;
        addCustomer(QStringLiteral("Zed Supplies"), 0, QStringLiteral("NON"));
        addCustomer(QStringLiteral("Beta"), 10);
        addCustomer(QStringLiteral("Acme"), 0);
        addCustomer(QStringLiteral("Acme"), 0); // same name, another customer
        QCOMPARE(LoadCustomerCombo(), QStringList({"Create NEW Customer", "Acme", "Acme", "Beta"}));

        addItem(1, QStringLiteral("10%RES"), QStringLiteral("Resistor 10%"), 12.5, true,
                QStringLiteral("UnKnown"));
        addItem(2, QStringLiteral("10ARES"), QStringLiteral("Resistor A"), 9.0075, false);
        addItem(3, QStringLiteral("X_Y"), QStringLiteral("Cable"), 1, true, QStringLiteral("A1"),
                QStringLiteral("CAB"));
        addItem(4, QStringLiteral("XZY"), QStringLiteral("Cable"), 1, true, QStringLiteral("A1"),
                QStringLiteral("CAB"));
        addItem(5, QStringLiteral("NOCAT"), QStringLiteral("Loose"), 1, true, QStringLiteral("A1"),
                QVariant()); // no category: no filter matches it

        auto partNos = [](const UBArray& a) {
            QStringList out;
            for (int r = 1; r <= a.Rows(); ++r)
                out << a(2, r).toString();
            return out;
        };
        QCOMPARE(partNos(LoadPartsForOrder({}, QStringLiteral("10"))),
                 QStringList({"10%RES", "10ARES", "X_Y", "XZY"}));
        QCOMPARE(partNos(LoadPartsForOrder({QStringLiteral("0%R"), {}, {}}, {})),
                 QStringList({"10%RES"}));
        QCOMPARE(partNos(LoadPartsForOrder({QStringLiteral("X_"), {}, {}}, {})),
                 QStringList({"X_Y"}));
        QCOMPARE(partNos(LoadPartsForOrder(
                     {QStringLiteral("1'0"), QStringLiteral("sist"), QStringLiteral("ES")}, {})),
                 QStringList({"10%RES", "10ARES"}));

        const UBArray parts = LoadPartsForOrder({}, QStringLiteral("10"));
        QCOMPARE(parts(5, 1).toString(), QStringLiteral("12.50"));
        QCOMPARE(parts(6, 1).toString(), QStringLiteral("11.25")); // allows discount
        QCOMPARE(parts(6, 2).toString(), QStringLiteral("9.0075"));

        // No customer: the message, and no row.
        CustOrderSheet s;
        SetupOrderGrid(s);
        boxes.answer(vbOK);
        QVERIFY(!AddPartToOrder(s, parts, 1));
        QCOMPARE(boxes.prompts(), QStringList({"You must select a customer before adding items "
                                               "to the customer's order"}));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Customer?"));
        QCOMPARE(boxes.shown().last().flags, int(vbInformation));
        QVERIFY(s.rows.isEmpty());

        QVERIFY(!ShowCustomerDetails(s, QStringLiteral("Nobody")));
        QVERIFY(s.custID.isEmpty());
        QVERIFY(ShowCustomerDetails(s, QStringLiteral("Beta")));
        QCOMPARE(s.custName, QStringLiteral("Beta"));
        QCOMPARE(s.discount, QStringLiteral("10"));
        QVERIFY(AddPartToOrder(s, parts, 1));
        QVERIFY(AddPartToOrder(s, parts, 1)); // the same item twice: two rows
        QVERIFY(!AddPartToOrder(s, parts, 9));
        QCOMPARE(s.rows.size(), 2);
        const OrderRow& r = s.rows[1];
        QCOMPARE(r[OrderCol::Item], QStringLiteral("2"));
        QCOMPARE(r[OrderCol::PartNo], QStringLiteral("10%RES"));
        QCOMPARE(r[OrderCol::Price], QStringLiteral("12.50"));
        QCOMPARE(r[OrderCol::SellAt], QStringLiteral("11.25"));
        QCOMPARE(r[OrderCol::OrderQty], QStringLiteral("1"));
        QCOMPARE(r[OrderCol::Done], QStringLiteral("0"));
        QCOMPARE(r[OrderCol::ToDo], QStringLiteral("1"));
        QCOMPARE(r[OrderCol::StockID], QStringLiteral("1"));
        QVERIFY(r[OrderCol::RowID].isEmpty());
        QVERIFY(r[OrderCol::Location].isEmpty()); // "UnKnown"
        QCOMPARE(s.net, QStringLiteral("22.50"));

        // While the add-items panel is open the totals wait.
        s.recalcEnabled = false;
        QVERIFY(AddPartToOrder(s, parts, 2));
        QVERIFY(s.rows[2][OrderCol::Total].isEmpty());
        QCOMPARE(s.net, QStringLiteral("22.50"));
        QVERIFY(s.rows[2].IsEditable(OrderCol::OrderQty));
    }

    // ------------------------------------------------------------------ defaults

    void defaultsFromAnEmptyTableAndFromRows() {
        TestData data;
        ScriptedBoxes boxes;
        CustOrderSheet s;
        FormLoadSheet(s, OrderMode::NewOrder, 0);
        QCOMPARE(s.tax1Rate, QStringLiteral("0"));
        QCOMPARE(s.deliveryText, QStringLiteral("Delivery   "));
        QCOMPARE(s.vatText, QStringLiteral("Sales Tax (VAT)   "));
        QCOMPARE(s.totalText, QStringLiteral("Total   "));
        QVERIFY(s.taxOnDel);
        QVERIFY(s.notes.isEmpty());
        QCOMPARE(s.invoiceNo, QStringLiteral("0001"));
        QCOMPARE(s.orDate, ShowDate(Today()));

        ExecSql("INSERT INTO tblParameters (ParaName, f1, f2, f3, f4) VALUES "
                "('ShippingPars', 'Carriage', '7.5', 'N', ''), "
                "('TaxRates', '20', '', '', 'VAT'), ('InvTerms', 'Net 30 days', '', '', '')");
        CustOrderSheet d;
        FormLoadSheet(d, OrderMode::NewOrder, 0);
        QCOMPARE(d.shipChgsName, QStringLiteral("Carriage"));
        QCOMPARE(d.deliveryText, QStringLiteral("Carriage  "));
        QCOMPARE(d.deliveryCost, QStringLiteral("7.50"));
        QCOMPARE(d.delivery, QStringLiteral("7.50"));
        QVERIFY(!d.taxOnDel);
        QCOMPARE(d.tax1Rate, QStringLiteral("20.0"));
        QCOMPARE(d.text3, QStringLiteral("20.0% "));
        QCOMPARE(d.tax1Name, QStringLiteral("VAT"));
        QCOMPARE(d.vatText, QStringLiteral("VAT  "));
        QCOMPARE(d.notes, QStringLiteral("Net 30 days"));

        // Only "N" clears the tick; a blank tax name keeps the label.
        for (const char* flag : {"Y", "", "n"}) {
            ExecSql(QStringLiteral("UPDATE tblParameters SET f3='%1', f4='  ' WHERE ParaName IN "
                                   "('ShippingPars', 'TaxRates')")
                        .arg(QLatin1String(flag)));
            CustOrderSheet t;
            LoadSalesDefaults(t);
            QVERIFY2(t.taxOnDel, flag);
            QCOMPARE(t.vatText, QStringLiteral("Sales Tax (VAT)   "));
        }

        // A file without the table: tax and delivery keep their boxes, the notes fail.
        ExecSql("DROP TABLE tblParameters");
        CustOrderSheet gone;
        gone.tax1Rate = QStringLiteral("8");
        LoadShippingPars(gone);
        LoadTaxRates(gone);
        QCOMPARE(gone.tax1Rate, QStringLiteral("8"));
        QVERIFY_THROWS_EXCEPTION(DbError, LoadInvTerms(gone));
    }

    void taxPanelAndDeliveryPanel() {
        TestData data;
        ScriptedBoxes boxes;
        CustOrderSheet s = workedExample();
        RecalcOrderTotals(s);
        s.tax1Name = QStringLiteral("GST");
        s.tax1Rate = QStringLiteral("10");
        // No: the open document follows all the same, its total waits.
        boxes.answer(vbNo);
        SaveSalesTaxDefaults(s);
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Save"));
        QCOMPARE(boxes.shown().last().flags, int(vbYesNo | vbQuestion));
        QCOMPARE(s.vatText, QStringLiteral("GST"));
        QCOMPARE(s.text3, QStringLiteral("10% "));
        QCOMPARE(s.vat, QStringLiteral("2.83"));
        QCOMPARE(s.total, QStringLiteral("33.19"));
        QCOMPARE(parameterRows(QStringLiteral("TaxRates")), 0);
        boxes.answer(vbYes);
        SaveSalesTaxDefaults(s);
        boxes.answer(vbYes);
        SaveSalesTaxDefaults(s);
        QCOMPARE(parameterRows(QStringLiteral("TaxRates")), 1);
        QCOMPARE(SqlFirst("SELECT f1 || '|' || f2 || '|' || f4 || '|' || f10 FROM tblParameters "
                          "WHERE ParaName='TaxRates'"),
                 QStringLiteral("10||GST|"));

        // Delivery: No keeps everything (the panel stays open).
        s.shipChgsName = QStringLiteral("Courier");
        s.deliveryCost = QStringLiteral("12.5");
        s.taxOnDel = false;
        boxes.answer(vbNo);
        QVERIFY(!SaveDeliveryDefaults(s));
        QCOMPARE(s.delivery, QStringLiteral("5.00"));
        QCOMPARE(parameterRows(QStringLiteral("ShippingPars")), 0);
        boxes.answer(vbYes);
        QVERIFY(SaveDeliveryDefaults(s));
        QCOMPARE(s.deliveryText, QStringLiteral("Courier")); // no blanks, as typed
        QCOMPARE(s.delivery, QStringLiteral("12.5"));
        QCOMPARE(s.total, QStringLiteral("38.08")); // 23.25 + 2.33 + 12.5
        QCOMPARE(SqlFirst("SELECT f1 || '|' || f2 || '|' || f3 FROM tblParameters WHERE "
                          "ParaName='ShippingPars'"),
                 QStringLiteral("Courier|12.50|N"));

        // Notes: kept by update, inserted once.
        boxes.answer(vbNo);
        SaveNotesDefault(QStringLiteral("ignored"));
        QCOMPARE(parameterRows(QStringLiteral("InvTerms")), 0);
        boxes.answer(vbYes);
        SaveNotesDefault(QStringLiteral("Thank you"));
        boxes.answer(vbYes);
        SaveNotesDefault(QStringLiteral("Thank you\nPay in 30 days"));
        QCOMPARE(parameterRows(QStringLiteral("InvTerms")), 1);
        CustOrderSheet t;
        LoadInvTerms(t);
        QCOMPARE(t.notes, QStringLiteral("Thank you\nPay in 30 days"));
    }

    void defaultsRoundTripOnACommaLocaleAndAFailedInsert() {
        TestData data;
        ScriptedBoxes boxes;
        {
            LocaleScope de{QLocale(QLocale::German, QLocale::Germany)};
            CustOrderSheet s;
            s.shipChgsName = QStringLiteral("Spedition");
            s.deliveryCost = QStringLiteral("5,5");
            s.tax1Rate = QStringLiteral("17,5");
            boxes.answer(vbYes);
            QVERIFY(SaveDeliveryDefaults(s));
            boxes.answer(vbYes);
            SaveSalesTaxDefaults(s);
            CustOrderSheet t;
            LoadSalesDefaults(t);
            QCOMPARE(t.deliveryCost, QStringLiteral("5,50"));
            QCOMPARE(t.delivery, QStringLiteral("5,50"));
            QCOMPARE(t.tax1Rate, QStringLiteral("17,5"));
        }

        // The insert after the delete fails: the row is gone and the next window starts from
        // its initial values.
        CustOrderSheet s;
        s.deliveryCost = QStringLiteral("3");
        boxes.answer(vbYes);
        Database::FailNextStatementContaining(QStringLiteral("INSERT INTO tblParameters"));
        QVERIFY_THROWS_EXCEPTION(DbError, SaveDeliveryDefaults(s));
        QCOMPARE(parameterRows(QStringLiteral("ShippingPars")), 0);
        CustOrderSheet next;
        FormLoadSheet(next, OrderMode::NewOrder, 0);
        QCOMPARE(next.deliveryText, QStringLiteral("Delivery   "));
        QCOMPARE(next.delivery, QStringLiteral("0.00"));
        QVERIFY(next.taxOnDel);
    }

    void nextNumbers() {
        TestData data;
        QCOMPARE(NextCustBasketID(), 1);
        QCOMPARE(NextInvoiceNo(), 1);
        QCOMPARE(NextDespSeqNo(7), 1);
        const qint32 c = addCustomer(QStringLiteral("Acme"), 0);
        addOrder(7, c, {}, 0);
        addOrder(500, c, {}, 0);
        addDespatch(7, 1, 30);
        addDespatch(7, 3, 12);
        addDespatch(500, 1, 4);
        QCOMPARE(NextCustBasketID(), 501);
        QCOMPARE(NextInvoiceNo(), 31);
        QCOMPARE(NextDespSeqNo(7), 4);
        QCOMPARE(NextDespSeqNo(8), 1);
    }
};

QTEST_GUILESS_MAIN(TestCustOrder)
#include "test_custorder.moc"
