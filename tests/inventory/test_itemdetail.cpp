#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "inventory/ItemDetail.h"
#include "inventory/ItemSuppliers.h"
#include "tests/inventory/InventoryFixture.h"
#include "tests/support/TestSupport.h"

#include <QRegularExpression>
#include <QTest>

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

// The boxes of the detail as one line, in the order of the window.
QString shownFields(const ItemDetailFields& f) {
    return QStringList{
        f.pno,      f.detail,  f.description, f.category,  f.isAssy ? "assy" : "-",
        f.location, f.qty,     f.minQty,      f.sellPrice, f.allowDiscount ? "discount" : "-",
        f.comments, f.buyPrice}
        .join(QLatin1Char('|'));
}

// The list row as "key=value" pairs.
QString listRow(const ItemListRow& row) {
    QStringList out;
    for (const auto& [key, value] : row.ByKey())
        out << key + QLatin1Char('=') + value;
    return out.join(QLatin1Char('|'));
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

ItemDetailFields newFields(const QString& pno, const QString& description) {
    ItemDetailFields f;
    f.pno = pno;
    f.description = description;
    return f;
}

} // namespace

class TestItemDetail : public QObject {
    Q_OBJECT
    std::unique_ptr<TestData> mData;
private slots:
    void init() {
        mData = std::make_unique<TestData>();
        QVERIFY(mData->ok());
        FillItemFixture();
    }

    void createItems() {
        ExecSql("DELETE FROM tblStockItems");
        ExecSql("DELETE FROM tblItemSupplier");
        ScriptedBoxes boxes;
        ItemDetailFields f = newFields(QStringLiteral("  "), QStringLiteral("Widget"));
        boxes.answer(vbOK);
        QCOMPARE(CreateNewItem(f), 0);
        QCOMPARE(boxes.prompts().last(),
                 "The new record can not be created unless you enter at least a "
                 "PartNumber and Description text");

        // Defaults on an empty table: ItemID 1 and the no-supplier row.
        f.pno = QStringLiteral(" W-1 ");
        f.detail = QStringLiteral("Rod's");
        f.sellPrice = QStringLiteral("2.5");
        QCOMPARE(CreateNewItem(f), 1);
        QCOMPARE(gCurrentItemID, 1);
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
        ItemDetailFields g = newFields(QStringLiteral("W-2"), QStringLiteral("Gear"));
        g.category = QStringLiteral("GEA");
        g.location = QStringLiteral("R1");
        g.qty = QStringLiteral("4.25");
        g.minQty = QStringLiteral("2");
        g.sellPrice = QStringLiteral("1.23456");
        QCOMPARE(CreateNewItem(g), 42);
        QCOMPARE(SqlRows("SELECT ItemID, ItemDescription, Category, Location, Qty, Trigger, SellAt "
                         "FROM tblStockItems WHERE MasterPNo = 'W-2'"),
                 QStringList({"42|Gear|GEA|R1|4.25|2|1.23456"}));

        // A part number in use (any case) is refused and nothing is written.
        const QStringList before = snapshot();
        ItemDetailFields dup = newFields(QStringLiteral("w-2"), QStringLiteral("Again"));
        boxes.answer(vbOK);
        QCOMPARE(CreateNewItem(dup), 0);
        QCOMPARE(boxes.shown().last().prompt, "An item already exists with part number: w-2");
        QCOMPARE(boxes.shown().last().flags, int(vbInformation));
        QCOMPARE(snapshot(), before);

        // An engine error in the second insert: the first insert stands alone.
        Database::FailNextStatementContaining(QStringLiteral("INSERT INTO tblItemSupplier"));
        ItemDetailFields h = newFields(QStringLiteral("W-3"), QStringLiteral("Half"));
        boxes.answer(vbOK);
        QCOMPARE(CreateNewItem(h), 0);
        QVERIFY(boxes.prompts().last().startsWith("The new record could not be created."));
        QCOMPARE(rows("tblStockItems", "ItemID").size(), 4);
        QVERIFY(boxes.allAnswersUsed());
    }

    void loadSaveReloadDelete() {
        std::optional<ItemDetailData> d = LoadItemDetail(7);
        QVERIFY(d);
        // The assembly box follows the category, not the stored flag.
        QCOMPARE(shownFields(d->fields), "P-7|10k|Resistor pack|RES|-|BIN 4|12.5|3|0.125|"
                                         "discount|old note|0.0425");
        QCOMPARE(d->suppliers.size(), 2);
        QCOMPARE(d->suppliers[0].SupName, "Zeta Parts"); // the prime row last
        QCOMPARE(d->suppliers[1].Code + '|' + d->suppliers[1].SupOrQty, "ALP|50");

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
        const ItemSaveResult r = SaveItemDetail(in);
        QVERIFY(r.saved);
        QCOMPARE(rows("tblStockItems", "ItemID").first(),
                 "ItemID=7|MasterPNo=P-7b|ItemName=12k|ItemDescription=Pack o` "
                 "ten|Category=AS|Assy=-1|Location=Shelf 3 |Qty=20|Trigger=0|"
                 "SellAt=0.12346|AllowDiscount=0|AllocQty=0|OnOrderQty=2|BuyNow=0|"
                 "UOM1=<null>|UOM2=<null>|UOM3=<null>");
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

        // Reload and save again: the location keeps exactly one trailing blank, the assembly box
        // follows the category, and an emptied comment removes its row.
        d = LoadItemDetail(7);
        QVERIFY(d->fields.location == "Shelf 3 " && d->fields.isAssy && d->fields.minQty == "0");
        in = inputFor(7);
        in.fields.comments = QStringLiteral("  ");
        QVERIFY(SaveItemDetail(in).saved);
        QVERIFY(rows("tblStockItems", "ItemID").first().contains("|Location=Shelf 3 |Qty="));
        QCOMPARE(rows("tblItemComments", "StockID"), QStringList{"StockID=8|Comment=keep me"});
        // A comment written to an item without one is inserted.
        in.fields.comments = QStringLiteral("new");
        QVERIFY(SaveItemDetail(in).saved);
        QCOMPARE(rows("tblItemComments", "StockID").first(), "StockID=7|Comment=new");
        // A negative minimum shows as an empty box.
        ExecSql("UPDATE tblStockItems SET Trigger = -1, Location = NULL WHERE ItemID = 7");
        d = LoadItemDetail(7);
        QCOMPARE(d->fields.minQty + '|' + d->fields.location, "|Unknown");

        // Delete: every row of the item goes, the neighbour stays.
        ExecSql("INSERT INTO tblUsedIn VALUES (8, 7, 2, 'R1')");
        ExecSql("INSERT INTO tblUsedIn VALUES (8, 9, 1, 'R2')");
        boxes.answer(vbNo);
        QVERIFY(!DeleteCurrentItem(7));
        QCOMPARE(rows("tblStockItems", "ItemID").size(), 2);
        boxes.answer(vbYes);
        boxes.answer(vbNo); // the parts-list question
        QVERIFY(!DeleteCurrentItem(7));
        QCOMPARE(boxes.shown().last().title, "Delete Item");
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
        const QStringList before = snapshot();
        ScriptedBoxes boxes;
        ItemSaveInput in = inputFor(7);
        in.fields.pno = QStringLiteral(" ");
        boxes.answer(vbOK);
        QVERIFY(!SaveItemDetail(in).saved);
        in = inputFor(7);
        in.fields.category.clear();
        boxes.answer(vbOK);
        QVERIFY(!SaveItemDetail(in).saved);
        QCOMPARE(boxes.prompts(), QStringList({"MasterPartNumber is missing. can't save",
                                               "Category is missing. can't save"}));
        // The comment step has no trap: the engine error reaches the caller, and closing the
        // file undoes the stock update made before it.
        in = inputFor(7);
        in.fields.qty = QStringLiteral("1");
        Database::FailNextStatementContaining(QStringLiteral("tblItemComments"));
        QVERIFY_THROWS_EXCEPTION(DbError, SaveItemDetail(in));
        QCOMPARE(snapshot(), before);
    }

    void primeRules() {
        ScriptedBoxes boxes;
        const auto written = [] {
            return SqlRows("SELECT SupplierID, SupplierPNo, MinOrQty, PriceEach, PrimeSupplier "
                           "FROM tblItemSupplier WHERE ItemID = 7 ORDER BY SupplierID");
        };
        ItemSaveInput in = inputFor(7);
        // Two marks: the first keeps it.
        in.suppliers = {supplierRow(1, "Z1", "1", "3", false, "ZET"),
                        supplierRow(2, "A1", "2", "4", true, "ALP"),
                        supplierRow(9, "", "", "", true, "")};
        ItemSaveResult r = SaveItemDetail(in);
        QVERIFY(r.saved && r.suppliers[1].SupPrime && !r.suppliers[2].SupPrime);
        QCOMPARE(written(), QStringList({"1|Z1|1|3|0", "2|A1|2|4|1", "9||0|0|0"}));
        QCOMPARE(r.listRow.Vendor + QLatin1Char('|') + r.listRow.Buy, "ALP|4");

        // No mark: row 1 takes it.
        in.suppliers = {supplierRow(1, "Z1", "1", "3", false, "ZET"),
                        supplierRow(2, "A1", "2", "4", false, "ALP")};
        r = SaveItemDetail(in);
        QVERIFY(r.suppliers[0].SupPrime);
        QCOMPARE(written(), QStringList({"1|Z1|1|3|1", "2|A1|2|4|0"}));
        QVERIFY(listRow(r.listRow).endsWith("|Vendor=ZET|VendorPN=Z1|Buy=3|Sell=0.125|MOQ=1"));
        QCOMPARE(LoadItemDetail(7)->fields.buyPrice, "3");
        in.suppliers = {supplierRow(2, "A1", "2", "4", false, "ALP")}; // a lone row too
        QVERIFY(SaveItemDetail(in).saved);
        QCOMPARE(written(), QStringList({"2|A1|2|4|1"}));

        // No rows at all: the no-supplier row keeps the buy price.
        in.suppliers.clear();
        in.fields.buyPrice = QStringLiteral("2.75");
        r = SaveItemDetail(in);
        QCOMPARE(written(), QStringList({"0||0|2.75|1"}));
        QVERIFY(listRow(r.listRow).contains("|Vendor=|VendorPN=|Buy=2.75|"));
        const std::optional<ItemDetailData> d = LoadItemDetail(7);
        QCOMPARE(d->suppliers.size(), 1);
        QCOMPARE(d->suppliers[0].SupName + '|' + d->fields.buyPrice, "No Supplier|2.75");
        QCOMPARE(SqlFirst("SELECT SupplierPNo FROM tblItemSupplier WHERE ItemID = 8"), "Z-88");
    }

    void commaLocale() {
        LocaleScope de(QLocale(QLocale::German, QLocale::Germany));
        ScriptedBoxes boxes;
        std::optional<ItemDetailData> d = LoadItemDetail(7);
        QCOMPARE(d->fields.qty, "12,5");
        QCOMPARE(d->fields.sellPrice, "0,125");
        ItemSaveInput in = inputFor(7);
        in.fields.qty = QStringLiteral("1.234,5");
        in.fields.sellPrice = QStringLiteral("3,5");
        in.suppliers[1].SupPrice = QStringLiteral("0,75");
        const ItemSaveResult r = SaveItemDetail(in);
        QVERIFY(r.saved);
        QCOMPARE(r.listRow.Qty, "1234,5");
        QCOMPARE(r.listRow.Buy, "0,75");
        QVERIFY(
            rows("tblStockItems", "ItemID").first().contains("|Qty=1234.5|Trigger=3|SellAt=3.5|"));
        QVERIFY(rows("tblItemSupplier", "ItemID, SupplierID").at(1).contains("PriceEach=0.75"));
    }

    void deleteRefusedAfterPurchaseOrder() {
        // A complete order row still blocks the delete.
        ExecSql("INSERT INTO tblPODetail (POID, POStockID, POQty, PORecieved) VALUES (3, 7, 5, 5)");
        const QStringList before = snapshot();
        ScriptedBoxes boxes;
        boxes.answer(vbYes);
        boxes.answer(vbOK);
        QVERIFY(!DeleteCurrentItem(7));
        QCOMPARE(boxes.shown().last().prompt,
                 "The item is in Purchase order or purchasing history so can not be "
                 "deleted at the moment.");
        QCOMPARE(boxes.shown().last().title, "Can't delete");
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

    void suppliersInMemoryAndCategories() {
        // An item made here has the placeholder; the first supplier added takes it over.
        ItemDetailFields f = newFields(QStringLiteral("N-1"), QStringLiteral("Nut"));
        ScriptedBoxes boxes;
        const qint32 id = CreateNewItem(f);
        QVector<ItemSupplierRow> sup = LoadItemDetail(id)->suppliers;
        QCOMPARE(sup.size(), 1);
        QCOMPARE(sup[0].SupName, "No Supplier");
        QVERIFY(AddSupplierRow(sup, 1));
        QCOMPARE(sup.size(), 1);
        QCOMPARE(sup[0].SupName + sup[0].Code + QString::number(sup[0].SupID), "Zeta PartsZET1");
        QVERIFY(AddSupplierRow(sup, 2));
        // Nothing of this reached the file; saved without a mark, the first one added is prime.
        const QString written = QStringLiteral("SELECT SupplierID, SupplierPNo, MinOrQty, "
                                               "PriceEach, PrimeSupplier FROM tblItemSupplier "
                                               "WHERE ItemID = 9 ORDER BY SupplierID");
        QCOMPARE(SqlRows(written), QStringList({"0||||0"}));
        ItemSaveInput in = inputFor(id);
        in.suppliers = sup;
        QVERIFY(SaveItemDetail(in).saved);
        QCOMPARE(SqlRows(written), QStringList({"1||0|0|1", "2||0|0|0"}));
        QCOMPARE(SupplierAddressText(1),
                 "Zeta Parts\n1 High St\nUnit 2\nLeeds\nYorks\nLS1 1AA\nAnn Bell\n"
                 "Tel: 0113 111\nFax: 0113 222\nann@zeta.test");

        // Categories in use, once each, in order; "AS" always.
        ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo, Category) VALUES (11, 'a', 'RES'), "
                "(12, 'c', ''), (13, 'd', NULL), (14, 'g', 'ASM')");
        QCOMPARE(LoadCategoryList(), (QStringList{"AS", "ASM", "CAP", "NEW", "RES"}));
    }
};

QTEST_GUILESS_MAIN(TestItemDetail)
#include "test_itemdetail.moc"
