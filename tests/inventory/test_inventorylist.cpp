// The inventory list: the rows each view mode lists from a prepared file, their masks, the filters
// and first stages; and the list's own ordering, which must give, cell for cell, the walk of the
// list's statement with its ORDER BY as the engine runs it, on data full of ties.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "inventory/InventoryList.h"
#include "tests/inventory/InventoryFixture.h"
#include "tests/support/TestSupport.h"

#include <QRandomGenerator>
#include <QTest>
#include <cmath>
#include <optional>

namespace {
// The part numbers of the kept rows, in list order.
QStringList partNumbers(const UBItemResult& r) {
    QStringList out;
    for (int row = 1; row <= r.rowCount; ++row)
        out << r.data(UBItemColumn(QStringLiteral("PNo")), row).toString();
    return out;
}
QStringList sorted(QStringList l) {
    l.sort();
    return l;
}
int rowOf(const UBItemResult& r, const QString& pno) {
    for (int row = 1; row <= r.rowCount; ++row)
        if (r.data(2, row).toString() == pno)
            return row;
    return 0;
}
QString cell(const UBItemResult& r, const QString& pno, const char* key) {
    return r.data(UBItemColumn(QLatin1String(key)), rowOf(r, pno)).toString();
}
// The cells of a part number's row under `keys`, joined by "|".
QString cells(const UBItemResult& r, const QString& pno, const QStringList& keys) {
    QStringList out;
    for (const QString& key : keys)
        out << r.data(UBItemColumn(key), rowOf(r, pno)).toString();
    return out.join(QLatin1Char('|'));
}
UBItemRequest request(quint8 mode, const UBFilters& f = {}, qint32 supplier = 0,
                      const QString& name = {}, const QString& category = {}) {
    UBItemRequest q;
    q.mode = mode;
    q.filters = f;
    q.supplierID = supplier;
    q.supplierName = name;
    q.category = category;
    return q;
}
UBItemResult load(quint8 mode, const UBFilters& f = {}, qint32 supplier = 0,
                  const QString& name = {}, const QString& category = {}) {
    return LoadUBItems(request(mode, f, supplier, name, category));
}

// The list as the statement with its ORDER BY walks it: the first row of each part number, as
// text, kept; every cell written as the list writes it.
QList<QStringList> walkOfStatement(const UBItemRequest& request) {
    const UBViewSpec view =
        UBViewFor(request.mode, request.supplierID, request.supplierName, request.category);
    UBFilters filters = request.filters;
    if (view.setsCategoryFilter)
        filters.category = request.category;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(UBItemStatement(filters, view.extraWhere));
    const auto masked = [&](const char* name, const char* mask) {
        const Field f = rs.Fields(QLatin1String(name));
        return f.IsNull() ? QString() : FormatNumber(f.Double(), QLatin1String(mask));
    };
    const auto text = [&](const char* name) { return rs.Fields(QLatin1String(name)).Text(); };
    QList<QStringList> rows;
    std::optional<QString> last;
    for (; !rs.Eof(); rs.MoveNext()) {
        const QString pno = text("MasterPNo");
        if (last && *last == pno)
            continue;
        last = pno;
        const Field buyNow = rs.Fields(QStringLiteral("BuyNow"));
        const QString buy =
            buyNow.IsNull() ? QString() : QString::number(qint64(std::floor(buyNow.Double())));
        const QString comment = UBCommentField(text("Comment"));
        rows << (QStringList() << text("ItemID") << pno << text("ItemDescription")
                               << text("ItemName") << text("Category") << text("Location")
                               << masked("Qty", "0.0#") << masked("PriceEach", "0.00###")
                               << masked("SellAt", "0.00###") << ""
                               << "" << masked("OnOrderQty", "0.0#") << "" << text("ShortNm")
                               << text("SupplierPNo") << buy << masked("MinOrQty", "0.0#")
                               << comment);
    }
    return rows;
}

// The first `count` rows of an array (all when -1), cell by cell.
QList<QStringList> rowsOf(const UBArray& a, int count = -1) {
    QList<QStringList> rows;
    for (int row = 1; row <= (count < 0 ? a.Rows() : count); ++row) {
        QStringList cells;
        for (int c = 1; c <= a.Columns(); ++c)
            cells << a(c, row).toString();
        rows << cells;
    }
    return rows;
}
QList<QStringList> rowsOf(const UBItemResult& r) {
    return rowsOf(r.data, r.rowCount);
}
QStringList joined(const QList<QStringList>& rows) {
    QStringList out;
    for (const QStringList& r : rows)
        out << r.join(QLatin1Char('|'));
    return out;
}

void compareWithStatement(const UBItemRequest& request) {
    const QList<QStringList> expected = walkOfStatement(request);
    const UBItemResult result = LoadUBItems(request);
    QVERIFY(result.loaded);
    QCOMPARE(rowsOf(result), expected);
}

// A file of items with every kind of tie: shared part numbers, part numbers that differ only in
// case, none or an empty one, several suppliers with equal marks, unusual marks, no supplier,
// several comments; rows of an item written out of the order of their items.
void fillTies(int items, quint32 seed) {
    QRandomGenerator rng(seed);
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.BeginTrans();
    for (int s = 1; s <= 6; ++s)
        db.Execute(QStringLiteral("INSERT INTO tblSupAddresses (AddID, CoName, ShortNm) VALUES "
                                  "(?, ?, ?)"),
                   {s, QStringLiteral("Supplier %1").arg(s), QStringLiteral("S%1").arg(s)});
    const QStringList stems = {"AB-1", "ab-1", "Ab-1", "AB-10", "AB-2", "b",   "B",
                               "XY",   "xy",   "Z",    "é-1",   "É-1",  "a b", "AB-1 "};
    QList<QVariantList> supplierRows;
    for (int id = 1; id <= items; ++id) {
        QVariant pno;
        const quint32 pick = rng.bounded(40);
        if (pick == 0)
            pno = QVariant(); // no part number
        else if (pick == 1)
            pno = QString();
        else if (pick < 20)
            pno = stems[int(rng.bounded(stems.size()))];
        else
            pno = QStringLiteral("P%1").arg(rng.bounded(500), 4, 10, QLatin1Char('0'));
        db.Execute(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemName, "
                                  "ItemDescription, Category, Location, Qty, Trigger, SellAt, "
                                  "AllocQty, OnOrderQty, BuyNow) "
                                  "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                   {id, pno, QStringLiteral("name %1").arg(id),
                    QStringLiteral("desc %1").arg(rng.bounded(9)),
                    rng.bounded(3) ? QVariant(QStringLiteral("CAT%1").arg(rng.bounded(3)))
                                   : QVariant(QStringLiteral("AS")),
                    QStringLiteral("BIN%1").arg(rng.bounded(5)), double(rng.bounded(20)) - 5.0,
                    double(rng.bounded(8)), rng.bounded(1000) / 7.0, 0.0,
                    rng.bounded(2) ? QVariant(double(rng.bounded(30)) / 4) : QVariant(),
                    rng.bounded(4) ? QVariant(rng.bounded(3)) : QVariant(2.75)});
        const int suppliers = int(rng.bounded(4));
        for (int k = 0; k < suppliers; ++k) {
            const quint32 m = rng.bounded(10);
            const QVariant prime = m < 5   ? QVariant(0)
                                   : m < 8 ? QVariant(1)
                                   : m < 9 ? QVariant()
                                           : QVariant(2);
            supplierRows << QVariantList{id,
                                         int(rng.bounded(7)),
                                         QStringLiteral("SP-%1-%2").arg(id).arg(k),
                                         double(rng.bounded(5)),
                                         rng.bounded(10000) / 100.0,
                                         prime};
        }
        for (int c = int(rng.bounded(5)); c >= 3; --c)
            db.Execute(QStringLiteral("INSERT INTO tblItemComments (StockID, Comment) VALUES "
                                      "(?, ?)"),
                       {id, QStringLiteral("note %1 of item %2 with more than twenty-five "
                                           "characters\r\nsecond line")
                                .arg(c)
                                .arg(id)});
    }
    // Supplier rows reach the file in another order than their items.
    for (int i = supplierRows.size() - 1; i > 0; --i)
        supplierRows.swapItemsAt(i, int(rng.bounded(i + 1)));
    for (const QVariantList& row : supplierRows)
        db.Execute(QStringLiteral("INSERT INTO tblItemSupplier (ItemID, SupplierID, SupplierPNo, "
                                  "MinOrQty, PriceEach, PrimeSupplier) VALUES (?, ?, ?, ?, ?, ?)"),
                   row);
    db.CommitTrans();
}

} // namespace

class TestInventoryList : public QObject {
    Q_OBJECT
private slots:
    void init() {
        mData = std::make_unique<TestData>();
        QVERIFY(mData->ok());
        FillInventoryFixture();
    }

    void eachModeListsItsItems() {
        const UBItemResult all = load(UBMode::AllItems);
        QVERIFY(all.loaded);
        // 19 items, two of them under one part number.
        QCOMPARE(sorted(partNumbers(all)),
                 sorted({"A100", "B200", "C300", "D400", "E500", "F600", "G700", "H800", "H900",
                         "J100", "J200", "J300", "K100", "L100", "X%1", "X_1", "XA1", "XB1"}));
        QCOMPARE(all.caption, "View All Stock Items (18 Items)");

        // A negative quantity with a minimum of 0 is short; a positive one never is.
        const UBItemResult below = load(UBMode::BelowMinimum);
        QCOMPARE(sorted(partNumbers(below)), QStringList({"D400", "F600"}));
        QCOMPARE(below.caption, "View All Stock Items / Shortages (2 Items)");

        QCOMPARE(sorted(partNumbers(load(UBMode::AllocDetail))), QStringList({"J100", "J200"}));
        QCOMPARE(partNumbers(load(UBMode::AllocShortages)), QStringList({"J100"}));

        const UBItemResult bolt = load(UBMode::BySupplier, {}, 2, QStringLiteral("Bolt Brothers"));
        QCOMPARE(partNumbers(bolt), QStringList({"B200", "K100"}));
        QCOMPARE(bolt.caption, "View By Supplier - [Bolt Brothers] (2 Items)");
        QCOMPARE(cell(bolt, "B200", "Vendor"), "BOLT");
        QCOMPARE(cell(bolt, "B200", "Buy"), "1.25");

        // The chosen category replaces whatever the category box held, as a prefix.
        UBFilters typed;
        typed.category = QStringLiteral("ZZZ");
        const UBItemResult jacks = load(UBMode::ByCategory, typed, 0, {}, QStringLiteral("JCK"));
        QCOMPARE(partNumbers(jacks), QStringList({"J100", "J200", "J300"}));
        QVERIFY(jacks.setsCategoryFilter);
        QCOMPARE(jacks.categoryFilter, "JCK");
        QCOMPARE(jacks.caption, "View By Category - [JCK] (3 Items)");
        const UBItemResult assy = load(UBMode::Assemblies, {}, 0, {}, QStringLiteral("AS"));
        QCOMPARE(partNumbers(assy), QStringList({"H800", "H900"}));
        QCOMPARE(assy.caption, "View Assemblies by Part Number (2 Items)");

        // A mode without a view changes nothing.
        QVERIFY(!load(1).loaded);
        QVERIFY(!load(8).loaded);
    }

    void rowValuesFollowTheirMasks() {
        const UBItemResult all = load(UBMode::AllItems);
        // No supplier: listed through the joins with empty supplier columns.
        const QStringList keys = {"ItemID", "Desc",    "Detail", "Cat",     "Loc",
                                  "Qty",    "Buy",     "Sell",   "Vendor",  "VendorPN",
                                  "MOQ",    "OnOrder", "BuyNow", "Comments"};
        QCOMPARE(cells(all, "A100", keys), "1|Resistor|1k|RES|BIN1|10||0.10||||0|0|");
        QCOMPARE(cells(all, "K100", keys), "14|Knob||KNB|BIN9|7|2.12346|2|BOLT|BB-K1|2.5|0|0|");
        // Three suppliers: one row, showing a non-prime supplier (the lowest flag sorts first).
        QCOMPARE(partNumbers(all).count(QStringLiteral("B200")), 1);
        QVERIFY(cell(all, "B200", "Vendor") != QLatin1String("ACME"));
        QCOMPARE(cells(all, "B200", {"OnOrder", "BuyNow"}), "6|1");
        QCOMPARE(cell(all, "C300", "Qty"), "2.5");
        QCOMPARE(cell(all, "D400", "Qty"), "-2");
        for (const char* key : {"Alloc", "Avail", "Short"})
            QCOMPARE(cell(all, "J100", key), QString());
        // Comments: 25 characters of the first line; the full text stays in the database.
        QCOMPARE(cell(all, "C300", "Comments"), "This first line is defini");
        QCOMPARE(cell(all, "E500", "Comments"), "Short note");
        QVERIFY(ItemCommentText(3).endsWith(QStringLiteral("and a second line follows")));
        QCOMPARE(ItemCommentText(1), "\nThis item has no comments");
    }

    void filtersArePrefixMatchesTakenLiterally() {
        auto pnos = [](const QString& pno, const QString& desc = {}, const QString& cat = {}) {
            UBFilters f;
            f.partNo = pno;
            f.description = desc;
            f.category = cat;
            return sorted(partNumbers(load(UBMode::AllItems, f)));
        };
        QCOMPARE(pnos(QStringLiteral("X%")), QStringList({"X%1"}));
        QCOMPARE(pnos(QStringLiteral("X_")), QStringList({"X_1"}));
        QCOMPARE(pnos(QStringLiteral("x")), sorted({"X%1", "X_1", "XA1", "XB1"}));
        QCOMPARE(pnos(QStringLiteral("1")), QStringList()); // prefix, not contains
        QCOMPARE(pnos({}, QStringLiteral("100%")), QStringList({"XB1"}));
        QCOMPARE(pnos({}, {}, QStringLiteral("J")), QStringList({"J100", "J200", "J300"}));
        QCOMPARE(pnos(QStringLiteral("J2"), {}, QStringLiteral("JCK")), QStringList({"J200"}));
        QCOMPARE(pnos(QStringLiteral("O'Neil")), QStringList());
        // Filters combine with the view's own condition.
        UBFilters f;
        f.partNo = QStringLiteral("F");
        QCOMPARE(partNumbers(load(UBMode::BelowMinimum, f)), QStringList({"F600"}));
        f.partNo = QStringLiteral("nothing");
        const UBItemResult none = load(UBMode::BelowMinimum, f);
        QCOMPARE(none.rowCount, 0);
        QCOMPARE(none.caption, "View All Stock Items / Shortages (0 Items)");
    }

    void firstStagesCountTheirItems() {
        // 19 items less the five supplier links, whichever supplier they are on.
        QCOMPARE(
            joined(rowsOf(LoadUBSuppliers())),
            QStringList({"0|No Supplier|NONE|14", "1|Acme Components|ACME|1",
                         "2|Bolt Brothers|BOLT|2", "0|No Supplier||1", "3|Zed Supplies|ZED|1"}));
        QCOMPARE(joined(rowsOf(LoadUBCategories())),
                 QStringList({"AS|1", "ASM|1", "CAP|1", "CON|1", "DIO|1", "ENC|1", "FUS|1", "GAS|2",
                              "JCK|3", "KNB|1", "LMP|1", "MSC|4", "RES|1"}));
        // An empty stock table: every supplier at 0, no categories at all.
        ExecSql("DELETE FROM tblStockItems");
        ExecSql("DELETE FROM tblItemSupplier");
        QCOMPARE(LoadUBCategories().Rows(), 0);
        QCOMPARE(LoadUBSuppliers()(4, 1).toLongLong(), 0);
    }

    void listMatchesTheOrderedStatementOnTies() {
        for (quint32 seed : {1u, 2u, 3u}) {
            TestData data;
            QVERIFY(data.ok());
            fillTies(400, seed);
            UBFilters ab;
            ab.partNo = QStringLiteral("ab");
            for (const UBItemRequest& r :
                 {request(UBMode::AllItems), request(UBMode::BelowMinimum),
                  request(UBMode::AllItems, ab), request(UBMode::ByCategory, {}, 0, {}, "CAT1"),
                  request(UBMode::Assemblies, {}, 0, {}, "AS")})
                compareWithStatement(r);
            for (int sup = 0; sup <= 6; ++sup)
                compareWithStatement(request(UBMode::BySupplier, {}, sup));
        }
    }

    void sharedAndCaseVariantPartNumbers() {
        TestData data;
        QVERIFY(data.ok());
        // Item 3 "abc" with a non-prime and a prime supplier, item 5 "ABC" with one non-prime
        // supplier, item 7 "abc" again: the rows interleave by prime mark, and each change of
        // the text keeps a row.
        ExecSql("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemDescription, "
                "Category) VALUES (7, 'abc', 'seven', 'C'), (3, 'abc', 'three', "
                "'C'), (5, 'ABC', 'five', 'C'), (9, 'abd', 'nine', 'C')");
        ExecSql("INSERT INTO tblItemSupplier (ItemID, SupplierID, SupplierPNo, PrimeSupplier) "
                "VALUES (3, 0, 'p3', 1), (5, 0, 'n5', 0), (3, 0, 'n3', 0), (7, 0, 'p7', 1)");
        const UBItemResult r = LoadUBItems(request(UBMode::AllItems));
        QStringList seen;
        for (int row = 1; row <= r.rowCount; ++row)
            seen << r.data(1, row).toString() + QLatin1Char(':') + r.data(15, row).toString();
        QCOMPARE(seen, QStringList({"3:n3", "5:n5", "3:p3", "9:"}));
        compareWithStatement(request(UBMode::AllItems));
    }

private:
    std::unique_ptr<TestData> mData;
};

QTEST_GUILESS_MAIN(TestInventoryList)
#include "test_inventorylist.moc"
