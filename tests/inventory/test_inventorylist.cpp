#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "inventory/InventoryList.h"
#include "tests/inventory/InventoryFixture.h"
#include "tests/support/TestSupport.h"

#include <QTest>

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
UBItemResult load(quint8 mode, const UBFilters& f = {}, qint32 supplier = 0,
                  const QString& name = {}, const QString& category = {}) {
    UBItemRequest q;
    q.mode = mode;
    q.filters = f;
    q.supplierID = supplier;
    q.supplierName = name;
    q.category = category;
    return LoadUBItems(q);
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
        QCOMPARE(all.caption, QStringLiteral("View All Stock Items (18 Items)"));
        QCOMPARE(all.data.Rows(), 18);
        QCOMPARE(all.data.Columns(), 18);
        QCOMPARE(partNumbers(all).first(), QStringLiteral("A100"));

        // A negative quantity with a minimum of 0 is short; a positive one never is.
        const UBItemResult below = load(UBMode::BelowMinimum);
        QCOMPARE(sorted(partNumbers(below)), QStringList({"D400", "F600"}));
        QCOMPARE(below.caption, QStringLiteral("View All Stock Items / Shortages (2 Items)"));

        QCOMPARE(sorted(partNumbers(load(UBMode::AllocDetail))), QStringList({"J100", "J200"}));
        QCOMPARE(partNumbers(load(UBMode::AllocShortages)), QStringList({"J100"}));

        const UBItemResult bolt = load(UBMode::BySupplier, {}, 2, QStringLiteral("Bolt Brothers"));
        QCOMPARE(partNumbers(bolt), QStringList({"B200", "K100"}));
        QCOMPARE(bolt.caption, QStringLiteral("View By Supplier - [Bolt Brothers] (2 Items)"));
        QCOMPARE(cell(bolt, "B200", "Vendor"), QStringLiteral("BOLT"));
        QCOMPARE(cell(bolt, "B200", "Buy"), QStringLiteral("1.25"));

        // The chosen category replaces whatever the category box held, as a prefix.
        UBFilters typed;
        typed.category = QStringLiteral("ZZZ");
        const UBItemResult jacks = load(UBMode::ByCategory, typed, 0, {}, QStringLiteral("JCK"));
        QCOMPARE(partNumbers(jacks), QStringList({"J100", "J200", "J300"}));
        QVERIFY(jacks.setsCategoryFilter);
        QCOMPARE(jacks.categoryFilter, QStringLiteral("JCK"));
        QCOMPARE(jacks.caption, QStringLiteral("View By Category - [JCK] (3 Items)"));
        const UBItemResult assy = load(UBMode::Assemblies, {}, 0, {}, QStringLiteral("AS"));
        QCOMPARE(partNumbers(assy), QStringList({"H800", "H900"}));
        QCOMPARE(assy.caption, QStringLiteral("View Assemblies by Part Number (2 Items)"));

        // A mode without a view changes nothing.
        QVERIFY(!load(1).loaded);
        QVERIFY(!load(8).loaded);
    }

    void rowValuesFollowTheirMasks() {
        const UBItemResult all = load(UBMode::AllItems);
        // No supplier: listed through the joins with empty supplier columns.
        QCOMPARE(cell(all, "A100", "Buy"), QString());
        QCOMPARE(cell(all, "A100", "Vendor"), QString());
        QCOMPARE(cell(all, "A100", "VendorPN"), QString());
        QCOMPARE(cell(all, "A100", "Qty"), QStringLiteral("10"));
        QCOMPARE(cell(all, "A100", "Sell"), QStringLiteral("0.10"));
        QCOMPARE(cell(all, "A100", "Desc"), QStringLiteral("Resistor"));
        QCOMPARE(cell(all, "A100", "Detail"), QStringLiteral("1k"));
        QCOMPARE(cell(all, "A100", "Loc"), QStringLiteral("BIN1"));
        QCOMPARE(all.data(1, rowOf(all, "A100")).toLongLong(), 1);
        // Three suppliers: one row, showing a non-prime supplier (the lowest flag sorts first).
        QCOMPARE(partNumbers(all).count(QStringLiteral("B200")), 1);
        QVERIFY(cell(all, "B200", "Vendor") == QLatin1String("BOLT") ||
                cell(all, "B200", "Vendor") == QLatin1String("ZED"));
        QCOMPARE(cell(all, "B200", "OnOrder"), QStringLiteral("6"));
        QCOMPARE(cell(all, "B200", "BuyNow"), QStringLiteral("1"));
        QCOMPARE(cell(all, "K100", "Buy"), QStringLiteral("2.12346"));
        QCOMPARE(cell(all, "K100", "MOQ"), QStringLiteral("2.5"));
        QCOMPARE(cell(all, "C300", "Qty"), QStringLiteral("2.5"));
        QCOMPARE(cell(all, "D400", "Qty"), QStringLiteral("-2"));
        for (const char* key : {"Alloc", "Avail", "Short"})
            QCOMPARE(cell(all, "J100", key), QString());
        // Comments: 25 characters of the first line; the full text stays in the database.
        QCOMPARE(cell(all, "C300", "Comments"), QStringLiteral("This first line is defini"));
        QCOMPARE(cell(all, "E500", "Comments"), QStringLiteral("Short note"));
        QVERIFY(ItemCommentText(3).endsWith(QStringLiteral("and a second line follows")));
        QCOMPARE(ItemCommentText(1), QStringLiteral("\nThis item has no comments"));
        // Two items with one part number: the first row wins.
        const QString g = cell(all, "G700", "Detail");
        QVERIFY(g == QLatin1String("first") || g == QLatin1String("second"));
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
        QCOMPARE(pnos({}, QStringLiteral("Gas")), QStringList({"G700"}));
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
        QCOMPARE(none.caption, QStringLiteral("View All Stock Items / Shortages (0 Items)"));
    }

    void firstStagesCountTheirItems() {
        const UBArray sups = LoadUBSuppliers();
        QCOMPARE(sups.Columns(), 4);
        QCOMPARE(sups.Rows(), 5);
        QStringList names;
        QList<qint64> counts;
        for (int r = 1; r <= sups.Rows(); ++r) {
            names << sups(2, r).toString();
            counts << sups(4, r).toLongLong();
        }
        QCOMPARE(names, QStringList({"No Supplier", "Acme Components", "Bolt Brothers",
                                     "No Supplier", "Zed Supplies"}));
        // 19 items less the five supplier links, whichever supplier they are on.
        QCOMPARE(counts, QList<qint64>({14, 1, 2, 1, 1}));
        QCOMPARE(sups(1, 1).toInt(), 0);
        QCOMPARE(sups(3, 1).toString(), QStringLiteral("NONE"));
        QCOMPARE(sups(1, 3).toInt(), 2);
        QCOMPARE(sups(3, 3).toString(), QStringLiteral("BOLT"));

        const UBArray cats = LoadUBCategories();
        QCOMPARE(cats.Columns(), 2);
        QStringList catNames;
        QList<qint64> catCounts;
        for (int r = 1; r <= cats.Rows(); ++r) {
            catNames << cats(1, r).toString();
            catCounts << cats(2, r).toLongLong();
        }
        QCOMPARE(catNames, QStringList({"AS", "ASM", "CAP", "CON", "DIO", "ENC", "FUS", "GAS",
                                        "JCK", "KNB", "LMP", "MSC", "RES"}));
        QCOMPARE(catCounts, QList<qint64>({1, 1, 1, 1, 1, 1, 1, 2, 3, 1, 1, 4, 1}));

        // An empty stock table: every supplier at 0, no categories at all.
        Database db = DBEngine::OpenDatabase(gDbPath);
        db.Execute(QStringLiteral("DELETE FROM tblStockItems"));
        db.Execute(QStringLiteral("DELETE FROM tblItemSupplier"));
        QCOMPARE(LoadUBCategories().Rows(), 0);
        QCOMPARE(LoadUBSuppliers()(4, 1).toLongLong(), 0);
    }

    void editedRowsAreCheckedBeforeTheyAreKept() {
        UBItemResult all = load(UBMode::AllItems);
        const int row = rowOf(all, "A100");
        QVector<QVariant> values;
        for (int c = 1; c <= 18; ++c)
            values << all.data(c, row);
        values[UBItemColumn(QStringLiteral("Qty")) - 1] = QStringLiteral("12.5");
        values[UBItemColumn(QStringLiteral("Desc")) - 1] = QStringLiteral("Resistor 1%");
        QVERIFY(UBCopyRowBack(all.data, row, values));
        QCOMPARE(cell(all, "A100", "Qty"), QStringLiteral("12.5"));
        QCOMPARE(cell(all, "A100", "Desc"), QStringLiteral("Resistor 1%"));
        values[UBItemColumn(QStringLiteral("Sell")) - 1] = QStringLiteral("$4.00");
        values[UBItemColumn(QStringLiteral("Qty")) - 1] = QStringLiteral("1");
        QVERIFY(!UBCopyRowBack(all.data, row, values));
        QCOMPARE(cell(all, "A100", "Qty"), QStringLiteral("12.5")); // nothing copied
        QVERIFY(UBEditFailureText().startsWith(
            QStringLiteral("The Database could not be updated. Maybe the data was invalid\n")));
    }

private:
    std::unique_ptr<TestData> mData;
};

QTEST_GUILESS_MAIN(TestInventoryList)
#include "test_inventorylist.moc"
