#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "inventory/ItemDetail.h"
#include "inventory/ItemSuppliers.h"
#include "tests/support/TestSupport.h"

#include <QRegularExpression>
#include <QTest>
#include <algorithm>

namespace {

// Every row of a table as "col=value|..." lines, in a stable order.
QStringList rows(const QString& table, const QString& order) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM ") + table +
                                    QStringLiteral(" ORDER BY ") + order);
    QStringList out;
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList cells;
        for (int i = 0; i < rs.FieldCount(); ++i)
            cells << rs.FieldName(i) + QLatin1Char('=') +
                         (rs.Fields(i).IsNull() ? QStringLiteral("<null>") : rs.Fields(i).Text());
        out << cells.join(QLatin1Char('|'));
    }
    return out;
}

QStringList snapshot() {
    return rows(QStringLiteral("tblStockItems"), QStringLiteral("ItemID")) +
           rows(QStringLiteral("tblItemSupplier"), QStringLiteral("ItemID, SupplierID")) +
           rows(QStringLiteral("tblItemComments"), QStringLiteral("StockID")) +
           rows(QStringLiteral("tblItemHistory"), QStringLiteral("StockID")) +
           rows(QStringLiteral("tblUsedIn"), QStringLiteral("ParentID, ChildID"));
}

void fillSuppliers() {
    ExecSql("INSERT INTO tblSupAddresses (AddID, CoName, Add1, Add2, Add3, Add4, PCode, Contact1, "
            "Tel1, Fax1, EMail, ShortNm) VALUES (1, 'Zeta Parts', '1 High St', 'Unit 2', 'Leeds', "
            "'Yorks', 'LS1 1AA', 'Ann Bell', '0113 111', '0113 222', 'ann@zeta.test', 'ZET')");
    ExecSql(
        "INSERT INTO tblSupAddresses (AddID, CoName, ShortNm) VALUES (2, 'Alpha Supply', 'ALP')");
}

// Item 7 with two suppliers (Alpha prime), a comment and a history row.
void fillItem() {
    fillSuppliers();
    ExecSql(
        "INSERT INTO tblStockItems (ItemID, MasterPNo, ItemName, ItemDescription, Category, Assy, "
        "Location, Qty, Trigger, SellAt, AllowDiscount, AllocQty, OnOrderQty, BuyNow) VALUES "
        "(7, 'P-7', '10k', 'Resistor pack', 'RES', 0, 'BIN 4', 12.5, 3, 0.125, 1, 0, 2, 0)");
    ExecSql("INSERT INTO tblItemSupplier VALUES (7, 1, 'Z-77', 100, 0.05, 0)");
    ExecSql("INSERT INTO tblItemSupplier VALUES (7, 2, 'A-77', 50, 0.0425, 1)");
    ExecSql("INSERT INTO tblItemComments VALUES (7, 'old note')");
    ExecSql("INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistQty) VALUES "
            "(7, '2026-01-02', 'RX', 5)");
    // A neighbour that no action on item 7 may touch.
    ExecSql(
        "INSERT INTO tblStockItems (ItemID, MasterPNo, Category, Qty) VALUES (8, 'P-8', 'CAP', 1)");
    ExecSql("INSERT INTO tblItemSupplier VALUES (8, 1, 'Z-88', 1, 1, 1)");
    ExecSql("INSERT INTO tblItemComments VALUES (8, 'keep me')");
}

ItemSaveInput inputFor(qint32 itemId) {
    const std::optional<ItemDetailData> d = LoadItemDetail(itemId);
    ItemSaveInput in;
    if (d) {
        in.itemId = d->itemId;
        in.fields = d->fields;
        in.suppliers = d->suppliers;
    }
    return in;
}

ItemSupplierRow supplierRow(qint32 id, const QString& pno, const QString& qty, const QString& price,
                            bool prime, const QString& code) {
    ItemSupplierRow r;
    r.SupID = id;
    r.SupPNo = pno;
    r.SupOrQty = qty;
    r.SupPrice = price;
    r.SupPrime = prime;
    r.Code = code;
    return r;
}

} // namespace

class TestItemDetail : public QObject {
    Q_OBJECT
private slots:
    void createItems() {
        TestData data;
        ScriptedBoxes boxes;
        ItemDetailFields f;
        f.pno = QStringLiteral("  ");
        f.description = QStringLiteral("Widget");
        boxes.answer(vbOK);
        QCOMPARE(CreateNewItem(f), 0);
        QCOMPARE(boxes.prompts().last(),
                 QStringLiteral("The new record can not be created unless you enter at least a "
                                "PartNumber and Description text"));

        // Defaults on an empty table: ItemID 1 and the no-supplier row.
        f.pno = QStringLiteral(" W-1 ");
        f.detail = QStringLiteral("Rod's");
        f.sellPrice = QStringLiteral("2.5");
        QCOMPARE(CreateNewItem(f), 1);
        QCOMPARE(gCurrentItemID, 1);
        QCOMPARE(f.category, QStringLiteral("NEW"));
        QCOMPARE(f.location, QStringLiteral("UNKNOWN"));
        QCOMPARE(f.qty, QStringLiteral("0"));
        QCOMPARE(f.sellPrice, QStringLiteral("2.50"));
        QCOMPARE(rows("tblStockItems", "ItemID"),
                 QStringList{"ItemID=1|MasterPNo=W-1|ItemName=Rod`s|ItemDescription=Widget|"
                             "Category=NEW|Assy=0|Location=UNKNOWN|Qty=0|Trigger=0|SellAt=2.5|"
                             "AllowDiscount=0|AllocQty=0|OnOrderQty=0|BuyNow=0|UOM1=<null>|"
                             "UOM2=<null>|UOM3=<null>"});
        QCOMPARE(rows("tblItemSupplier", "ItemID"),
                 QStringList{"ItemID=1|SupplierID=0|SupplierPNo=|MinOrQty=<null>|"
                             "PriceEach=<null>|PrimeSupplier=0"});

        // The next number follows the highest in use; the boxes' values are kept.
        ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo) VALUES (41, 'OLD')");
        ItemDetailFields g;
        g.pno = QStringLiteral("W-2");
        g.description = QStringLiteral("Gear");
        g.category = QStringLiteral("GEA");
        g.location = QStringLiteral("R1");
        g.qty = QStringLiteral("4.25");
        g.minQty = QStringLiteral("2");
        g.sellPrice = QStringLiteral("1.23456");
        QCOMPARE(CreateNewItem(g), 42);
        QCOMPARE(rows("tblStockItems", "ItemID").last(),
                 QStringLiteral("ItemID=42|MasterPNo=W-2|ItemName=|ItemDescription=Gear|"
                                "Category=GEA|Assy=0|Location=R1|Qty=4.25|Trigger=2|"
                                "SellAt=1.23456|AllowDiscount=0|AllocQty=0|OnOrderQty=0|"
                                "BuyNow=0|UOM1=<null>|UOM2=<null>|UOM3=<null>"));

        // A part number in use (any case) is refused and nothing is written.
        const QStringList before = snapshot();
        ItemDetailFields dup;
        dup.pno = QStringLiteral("w-2");
        dup.description = QStringLiteral("Again");
        boxes.answer(vbOK);
        QCOMPARE(CreateNewItem(dup), 0);
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("An item already exists with part number: w-2"));
        QCOMPARE(boxes.shown().last().flags, int(vbInformation));
        QCOMPARE(snapshot(), before);

        // An engine error in the second insert: the first insert stands alone.
        Database::FailNextStatementContaining(QStringLiteral("INSERT INTO tblItemSupplier"));
        ItemDetailFields h;
        h.pno = QStringLiteral("W-3");
        h.description = QStringLiteral("Half");
        boxes.answer(vbOK);
        QCOMPARE(CreateNewItem(h), 0);
        QVERIFY(boxes.prompts().last().startsWith("The new record could not be created."));
        QCOMPARE(rows("tblStockItems", "ItemID").size(), 4);
        QVERIFY(boxes.allAnswersUsed());
    }

    void loadSaveReloadDelete() {
        TestData data;
        fillItem();
        std::optional<ItemDetailData> d = LoadItemDetail(7);
        QVERIFY(d);
        QCOMPARE(d->fields.pno, QStringLiteral("P-7"));
        QCOMPARE(d->fields.detail, QStringLiteral("10k"));
        QCOMPARE(d->fields.description, QStringLiteral("Resistor pack"));
        QCOMPARE(d->fields.category, QStringLiteral("RES"));
        QCOMPARE(d->catNo, QStringLiteral("RES"));
        QCOMPARE(d->fields.isAssy, false);
        QCOMPARE(d->fields.location, QStringLiteral("BIN 4"));
        QCOMPARE(d->fields.qty, QStringLiteral("12.5"));
        QCOMPARE(d->fields.minQty, QStringLiteral("3"));
        QCOMPARE(d->fields.sellPrice, QStringLiteral("0.125"));
        QCOMPARE(d->fields.allowDiscount, true);
        QCOMPARE(d->fields.comments, QStringLiteral("old note"));
        QCOMPARE(d->fields.buyPrice, QStringLiteral("0.0425"));
        QCOMPARE(d->suppliers.size(), 2);
        QCOMPARE(d->suppliers[0].SupName, QStringLiteral("Zeta Parts")); // the prime row last
        QCOMPARE(d->suppliers[1].Code, QStringLiteral("ALP"));
        QCOMPARE(d->suppliers[1].SupOrQty, QStringLiteral("50"));
        QVERIFY(!LoadItemDetail(99));

        ScriptedBoxes boxes;
        ItemSaveInput in = inputFor(7);
        in.fields.pno = QStringLiteral("P-7b");
        in.fields.detail = QStringLiteral("12k");
        in.fields.description = QStringLiteral("Pack o' ten");
        in.fields.category = QStringLiteral("AS");
        in.fields.isAssy = true;
        in.fields.location = QStringLiteral("  Shelf 3  ");
        in.fields.qty = QStringLiteral("20");
        in.fields.minQty = QString();
        in.fields.sellPrice = QStringLiteral("0.1234567");
        in.fields.allowDiscount = false;
        in.fields.comments = QStringLiteral("first line that is rather long\nsecond");
        in.suppliers[0].SupPNo = QStringLiteral("Z'78");
        in.suppliers[0].SupOrQty = QStringLiteral("7.125");
        QList<int> bar;
        const ItemSaveResult r = SaveItemDetail(in, [&bar](int v) { bar << v; });
        QVERIFY(r.saved);
        QCOMPARE(bar, (QList<int>{1, 4, 6, 9}));
        QCOMPARE(rows("tblStockItems", "ItemID").first(),
                 QStringLiteral("ItemID=7|MasterPNo=P-7b|ItemName=12k|ItemDescription=Pack o` "
                                "ten|Category=AS|Assy=-1|Location=Shelf 3 |Qty=20|Trigger=0|"
                                "SellAt=0.12346|AllowDiscount=0|AllocQty=0|OnOrderQty=2|BuyNow=0|"
                                "UOM1=<null>|UOM2=<null>|UOM3=<null>"));
        QCOMPARE(rows("tblItemSupplier", "ItemID, SupplierID"),
                 (QStringList{"ItemID=7|SupplierID=1|SupplierPNo=Z`78|MinOrQty=7.13|"
                              "PriceEach=0.05|PrimeSupplier=0",
                              "ItemID=7|SupplierID=2|SupplierPNo=A-77|MinOrQty=50|"
                              "PriceEach=0.0425|PrimeSupplier=1",
                              "ItemID=8|SupplierID=1|SupplierPNo=Z-88|MinOrQty=1|PriceEach=1|"
                              "PrimeSupplier=1"}));
        QCOMPARE(rows("tblItemComments", "StockID"),
                 (QStringList{"StockID=7|Comment=first line that is rather long\nsecond",
                              "StockID=8|Comment=keep me"}));
        QVERIFY(boxes.shown().isEmpty());

        // What the list row shows now: the prime supplier's values, through the masks.
        const ItemListRow& l = r.listRow;
        QCOMPARE(l.Qty, QStringLiteral("20"));
        QCOMPARE(l.Loc, QStringLiteral("Shelf 3"));
        QCOMPARE(l.Desc, QStringLiteral("Pack o` ten"));
        QCOMPARE(l.PNo, QStringLiteral("P-7b"));
        QCOMPARE(l.Detail, QStringLiteral("12k"));
        QCOMPARE(l.Cat, QStringLiteral("AS"));
        QCOMPARE(l.Comments, QStringLiteral("first line that is rather"));
        QCOMPARE(l.Vendor, QStringLiteral("ALP"));
        QCOMPARE(l.VendorPN, QStringLiteral("A-77"));
        QCOMPARE(l.Buy, QStringLiteral("0.0425"));
        QCOMPARE(l.Sell, QStringLiteral("0.12346"));
        QCOMPARE(l.MOQ, QStringLiteral("50"));
        QCOMPARE(l.ByKey().size(), 12);
        QCOMPARE(l.ByKey().at(9), (QPair<QString, QString>("Buy", "0.0425")));

        // Reload and save again: the location keeps exactly one trailing blank, the assembly box
        // follows the category, and an emptied comment removes its row.
        d = LoadItemDetail(7);
        QCOMPARE(d->fields.location, QStringLiteral("Shelf 3 "));
        QCOMPARE(d->fields.isAssy, true);
        QCOMPARE(d->fields.minQty, QStringLiteral("0"));
        in = inputFor(7);
        in.fields.comments = QStringLiteral("  ");
        QVERIFY(SaveItemDetail(in).saved);
        QVERIFY(rows("tblStockItems", "ItemID").first().contains("|Location=Shelf 3 |Qty="));
        QCOMPARE(rows("tblItemComments", "StockID"), QStringList{"StockID=8|Comment=keep me"});
        // A comment written to an item without one is inserted.
        in.fields.comments = QStringLiteral("new");
        QVERIFY(SaveItemDetail(in).saved);
        QCOMPARE(rows("tblItemComments", "StockID").first(),
                 QStringLiteral("StockID=7|Comment=new"));

        // A negative minimum shows as an empty box.
        ExecSql("UPDATE tblStockItems SET Trigger = -1, Location = NULL WHERE ItemID = 7");
        d = LoadItemDetail(7);
        QCOMPARE(d->fields.minQty, QString());
        QCOMPARE(d->fields.location, QStringLiteral("Unknown"));

        // Delete: every row of the item goes, the neighbour stays.
        ExecSql("INSERT INTO tblUsedIn VALUES (8, 7, 2, 'R1')");
        ExecSql("INSERT INTO tblUsedIn VALUES (8, 9, 1, 'R2')");
        boxes.answer(vbNo);
        QVERIFY(!DeleteCurrentItem(7));
        QCOMPARE(rows("tblStockItems", "ItemID").size(), 2);
        boxes.answer(vbYes);
        boxes.answer(vbNo); // the parts-list question
        QVERIFY(!DeleteCurrentItem(7));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Delete Item"));
        QVERIFY(boxes.shown().last().prompt.startsWith("The Item relates to one or more"));
        QCOMPARE(rows("tblUsedIn", "ChildID").size(), 2);
        boxes.answer(vbYes);
        boxes.answer(vbYes);
        QVERIFY(DeleteCurrentItem(7));
        const QStringList after = snapshot();
        QCOMPARE(after.filter(QRegularExpression("^(ItemID|StockID|ParentID)=7\\|")),
                 QStringList());
        QCOMPARE(after.filter("ChildID=7"), QStringList());
        QCOMPARE(after.size(), 4); // item 8, its supplier, its comment, its other parts-list row
        QVERIFY(boxes.allAnswersUsed());
    }

    void saveFailuresLeaveEverything_data() {
        QTest::addColumn<QString>("fragment");
        QTest::addColumn<qint32>("itemId");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("message");
        const QString notCommitted =
            QStringLiteral(". The whole transaction was not commited, you can try again");
        QTest::newRow("stock row") << "UPDATE tblStockItems" << 7 << "Error2"
                                   << "Error saving to table: Assemblies" + notCommitted;
        QTest::newRow("supplier delete") << "DELETE FROM tblItemSupplier" << 7 << "Error4"
                                         << "Error saving to table: ItemSupplier" + notCommitted;
        QTest::newRow("supplier insert") << "INSERT INTO tblItemSupplier" << 7 << "Error4"
                                         << "Error saving to table: ItemSupplier" + notCommitted;
        QTest::newRow("commit") << "COMMIT" << 7 << "Error9"
                                << "An error occured while commiting changes to the database. The "
                                   "system will try to undo the operation so you can try again";
        QTest::newRow("no such row")
            << "" << 70 << "Error10"
            << "The base stock record was not saved. If you have altered the PartNumber then the "
               "part number may already exist" +
                   notCommitted;
    }
    void saveFailuresLeaveEverything() {
        QFETCH(QString, fragment);
        QFETCH(qint32, itemId);
        QFETCH(QString, title);
        QFETCH(QString, message);
        TestData data;
        fillItem();
        ItemSaveInput in = inputFor(7);
        in.itemId = itemId;
        in.fields.qty = QStringLiteral("99");
        in.fields.comments = QStringLiteral("changed");
        in.suppliers.removeLast();
        const QStringList before = snapshot();
        ScriptedBoxes boxes;
        boxes.answer(vbOK);
        if (!fragment.isEmpty())
            Database::FailNextStatementContaining(fragment);
        const ItemSaveResult r = SaveItemDetail(in);
        QVERIFY(!r.saved);
        QCOMPARE(SaveFailureTitle(r.failure), title);
        QCOMPARE(boxes.shown().size(), 1);
        QCOMPARE(boxes.shown().first().title, title);
        QCOMPARE(boxes.shown().first().flags, int(vbOKOnly));
        QCOMPARE(boxes.shown().first().prompt, message);
        QCOMPARE(snapshot(), before);
        // The file is free again: the next save goes through.
        in.itemId = 7;
        QVERIFY(SaveItemDetail(in).saved);
        QCOMPARE(rows("tblItemSupplier", "ItemID").size(), 2);
    }

    void saveRefusalsAndUntrappedCommentStep() {
        TestData data;
        fillItem();
        const QStringList before = snapshot();
        ScriptedBoxes boxes;
        ItemSaveInput in = inputFor(7);
        in.fields.pno = QStringLiteral(" ");
        boxes.answer(vbOK);
        QVERIFY(!SaveItemDetail(in).saved);
        QCOMPARE(boxes.prompts().last(), QStringLiteral("MasterPartNumber is missing. can't save"));
        in = inputFor(7);
        in.fields.category.clear();
        boxes.answer(vbOK);
        QVERIFY(!SaveItemDetail(in).saved);
        QCOMPARE(boxes.prompts().last(), QStringLiteral("Category is missing. can't save"));

        // The comment step has no trap: the engine error reaches the caller, and closing the
        // file undoes the stock update made before it.
        in = inputFor(7);
        in.fields.qty = QStringLiteral("1");
        Database::FailNextStatementContaining(QStringLiteral("tblItemComments"));
        QVERIFY_THROWS_EXCEPTION(DbError, SaveItemDetail(in));
        QCOMPARE(snapshot(), before);
        QCOMPARE(boxes.shown().size(), 2);
    }

    void primeRules() {
        TestData data;
        fillItem();
        ScriptedBoxes boxes;
        ItemSaveInput in = inputFor(7);
        // Two marks: the first keeps it.
        in.suppliers = {supplierRow(1, "Z1", "1", "3", false, "ZET"),
                        supplierRow(2, "A1", "2", "4", true, "ALP"),
                        supplierRow(9, "", "", "", true, "")};
        ItemSaveResult r = SaveItemDetail(in);
        QVERIFY(r.saved);
        QCOMPARE(r.suppliers[1].SupPrime, true);
        QCOMPARE(r.suppliers[2].SupPrime, false);
        QCOMPARE(rows("tblItemSupplier", "ItemID, SupplierID").mid(0, 3),
                 (QStringList{"ItemID=7|SupplierID=1|SupplierPNo=Z1|MinOrQty=1|PriceEach=3|"
                              "PrimeSupplier=0",
                              "ItemID=7|SupplierID=2|SupplierPNo=A1|MinOrQty=2|PriceEach=4|"
                              "PrimeSupplier=1",
                              "ItemID=7|SupplierID=9|SupplierPNo=|MinOrQty=0|PriceEach=0|"
                              "PrimeSupplier=0"}));
        QCOMPARE(r.listRow.Vendor, QStringLiteral("ALP"));
        QCOMPARE(r.listRow.Buy, QStringLiteral("4"));

        // No mark: row 1 takes it.
        in.suppliers = {supplierRow(1, "Z1", "1", "3", false, "ZET"),
                        supplierRow(2, "A1", "2", "4", false, "ALP")};
        r = SaveItemDetail(in);
        QCOMPARE(r.suppliers[0].SupPrime, true);
        QCOMPARE(rows("tblItemSupplier", "ItemID, SupplierID").mid(0, 2).join(';'),
                 QStringLiteral("ItemID=7|SupplierID=1|SupplierPNo=Z1|MinOrQty=1|PriceEach=3|"
                                "PrimeSupplier=1;ItemID=7|SupplierID=2|SupplierPNo=A1|MinOrQty=2|"
                                "PriceEach=4|PrimeSupplier=0"));
        QCOMPARE(r.listRow.Vendor, QStringLiteral("ZET"));
        QCOMPARE(r.listRow.VendorPN, QStringLiteral("Z1"));
        QCOMPARE(r.listRow.MOQ, QStringLiteral("1"));
        QCOMPARE(r.listRow.Buy, QStringLiteral("3"));
        QCOMPARE(LoadItemDetail(7)->fields.buyPrice, QStringLiteral("3"));

        // No rows at all: the no-supplier row keeps the buy price.
        in.suppliers.clear();
        in.fields.buyPrice = QStringLiteral("2.75");
        r = SaveItemDetail(in);
        QVERIFY(r.saved);
        QCOMPARE(rows("tblItemSupplier", "ItemID, SupplierID").first(),
                 QStringLiteral("ItemID=7|SupplierID=0|SupplierPNo=|MinOrQty=0|PriceEach=2.75|"
                                "PrimeSupplier=1"));
        QCOMPARE(r.listRow.Vendor, QString());
        QCOMPARE(r.listRow.VendorPN, QString());
        QCOMPARE(r.listRow.Buy, QStringLiteral("2.75"));
        const std::optional<ItemDetailData> d = LoadItemDetail(7);
        QCOMPARE(d->suppliers.size(), 1);
        QCOMPARE(d->suppliers[0].SupName, QStringLiteral("No Supplier"));
        QCOMPARE(d->fields.buyPrice, QStringLiteral("2.75"));
    }

    void commaLocale() {
        TestData data;
        fillItem();
        LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
        ScriptedBoxes boxes;
        std::optional<ItemDetailData> d = LoadItemDetail(7);
        QCOMPARE(d->fields.qty, QStringLiteral("12,5"));
        QCOMPARE(d->fields.sellPrice, QStringLiteral("0,125"));
        ItemSaveInput in = inputFor(7);
        in.fields.qty = QStringLiteral("1.234,5");
        in.fields.sellPrice = QStringLiteral("3,5");
        in.suppliers[1].SupPrice = QStringLiteral("0,75");
        const ItemSaveResult r = SaveItemDetail(in);
        QVERIFY(r.saved);
        QCOMPARE(r.listRow.Qty, QStringLiteral("1234,5"));
        QCOMPARE(r.listRow.Buy, QStringLiteral("0,75"));
        QVERIFY(
            rows("tblStockItems", "ItemID").first().contains("|Qty=1234.5|Trigger=3|SellAt=3.5|"));
        QVERIFY(rows("tblItemSupplier", "ItemID, SupplierID").at(1).contains("PriceEach=0.75"));

        ItemDetailFields f;
        f.pno = QStringLiteral("N-1");
        f.description = QStringLiteral("Nut");
        f.sellPrice = QStringLiteral("1,5");
        f.qty = QStringLiteral("2,25");
        QCOMPARE(CreateNewItem(f), 9);
        QCOMPARE(f.sellPrice, QStringLiteral("1,50"));
        QVERIFY(rows("tblStockItems", "ItemID").last().contains("|Qty=2.25|Trigger=0|SellAt=1.5|"));
    }

    void deleteRefusedAfterPurchaseOrder() {
        TestData data;
        fillItem();
        // A complete order row still blocks the delete.
        ExecSql("INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved) VALUES (3, 7, 5, 5)");
        const QStringList before = snapshot();
        ScriptedBoxes boxes;
        boxes.answer(vbYes);
        boxes.answer(vbOK);
        QVERIFY(!DeleteCurrentItem(7));
        QCOMPARE(boxes.shown().last().prompt,
                 QStringLiteral("The item is in Purchase order or purchasing history so can not be "
                                "deleted at the moment."));
        QCOMPARE(boxes.shown().last().title, QStringLiteral("Can't delete"));
        QCOMPARE(snapshot(), before);

        // A failure among the five deletes undoes the ones before it.
        ExecSql("DELETE FROM tblPODetail");
        Database::FailNextStatementContaining(QStringLiteral("DELETE FROM tblItemSupplier"));
        boxes.answer(vbYes);
        boxes.answer(vbOK);
        QVERIFY(!DeleteCurrentItem(7));
        QVERIFY(boxes.prompts().last().startsWith("Some data could not be deleted so nothing was "
                                                  "done."));
        QCOMPARE(snapshot(), before);
        QVERIFY(boxes.allAnswersUsed());
    }

    void suppliersInMemory() {
        TestData data;
        fillItem();
        QList<SupplierChoice> choices = LoadSupplierChoices();
        QCOMPARE(choices.size(), 2);
        QCOMPARE(choices[0].CoName, QStringLiteral("Alpha Supply"));
        QCOMPARE(choices[1].AddID, 1);

        // An item made here has the placeholder; the first supplier added takes it over.
        ItemDetailFields f;
        f.pno = QStringLiteral("N-1");
        f.description = QStringLiteral("Nut");
        ScriptedBoxes boxes;
        const qint32 id = CreateNewItem(f);
        QVector<ItemSupplierRow> sup = LoadItemDetail(id)->suppliers;
        QCOMPARE(sup.size(), 1);
        QCOMPARE(sup[0].SupName, QStringLiteral("No Supplier"));
        QVERIFY(!CanRemoveSupplier(sup));
        QVERIFY(AddSupplierRow(sup, 1));
        QCOMPARE(sup.size(), 1);
        QCOMPARE(sup[0].SupName, QStringLiteral("Zeta Parts"));
        QCOMPARE(sup[0].Code, QStringLiteral("ZET"));
        QCOMPARE(sup[0].SupID, 1);
        QVERIFY(sup[0].SupPrice.isEmpty() && !sup[0].SupPrime);
        QVERIFY(!CanAddSupplier(sup, 1));
        QVERIFY(CanAddSupplier(sup, 2));
        QVERIFY(AddSupplierRow(sup, 2));
        QVERIFY(!AddSupplierRow(sup, 55)); // no such address
        QCOMPARE(sup.size(), 2);
        QVERIFY(CanRemoveSupplier(sup));
        // Nothing of this reached the file.
        QCOMPARE(rows("tblItemSupplier", "ItemID, SupplierID").last(),
                 QStringLiteral("ItemID=9|SupplierID=0|SupplierPNo=|MinOrQty=<null>|"
                                "PriceEach=<null>|PrimeSupplier=0"));
        // Saved without a mark, the first one added is the prime.
        ItemSaveInput in = inputFor(id);
        in.suppliers = sup;
        QVERIFY(SaveItemDetail(in).saved);
        QCOMPARE(rows("tblItemSupplier", "ItemID, SupplierID").filter("ItemID=9|").join(';'),
                 QStringLiteral("ItemID=9|SupplierID=1|SupplierPNo=|MinOrQty=0|PriceEach=0|"
                                "PrimeSupplier=1;ItemID=9|SupplierID=2|SupplierPNo=|MinOrQty=0|"
                                "PriceEach=0|PrimeSupplier=0"));

        RemoveSupplierRow(sup, 0);
        QCOMPARE(sup.size(), 1);
        QCOMPARE(sup[0].SupName, QStringLiteral("Alpha Supply"));

        QCOMPARE(SupplierAddressText(1),
                 QStringLiteral("Zeta Parts\n1 High St\nUnit 2\nLeeds\nYorks\nLS1 1AA\nAnn Bell\n"
                                "Tel: 0113 111\nFax: 0113 222\nann@zeta.test"));
    }

    void categoryList() {
        TestData data;
        QCOMPARE(LoadCategoryList(), QStringList{"AS"});
        ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo, Category) VALUES (1, 'a', 'RES'), "
                "(2, 'b', 'AS'), (3, 'c', ''), (4, 'd', NULL), (5, 'e', 'CAP'), (6, 'f', 'RES'), "
                "(7, 'g', 'ASM')");
        QCOMPARE(LoadCategoryList(), (QStringList{"AS", "ASM", "CAP", "RES"}));
    }
};

QTEST_GUILESS_MAIN(TestItemDetail)
#include "test_itemdetail.moc"
