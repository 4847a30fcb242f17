// The inventory list puts its rows in order itself: the result must be, cell for cell, the walk
// of the list's statement with its ORDER BY as the engine runs it, on data full of ties.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "inventory/InventoryList.h"
#include "inventory/PartNumberOrder.h"
#include "tests/support/TestSupport.h"

#include <QRandomGenerator>
#include <QTest>
#include <cmath>
#include <optional>

namespace {

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
    QList<QStringList> rows;
    std::optional<QString> last;
    for (; !rs.Eof(); rs.MoveNext()) {
        const QString pno = rs.Fields(QStringLiteral("MasterPNo")).Text();
        if (last && *last == pno)
            continue;
        last = pno;
        const Field buyNow = rs.Fields(QStringLiteral("BuyNow"));
        rows << QStringList{
            rs.Fields(QStringLiteral("ItemID")).Text(),
            pno,
            rs.Fields(QStringLiteral("ItemDescription")).Text(),
            rs.Fields(QStringLiteral("ItemName")).Text(),
            rs.Fields(QStringLiteral("Category")).Text(),
            rs.Fields(QStringLiteral("Location")).Text(),
            masked("Qty", "0.0#"),
            masked("PriceEach", "0.00###"),
            masked("SellAt", "0.00###"),
            QString(),
            QString(),
            masked("OnOrderQty", "0.0#"),
            QString(),
            rs.Fields(QStringLiteral("ShortNm")).Text(),
            rs.Fields(QStringLiteral("SupplierPNo")).Text(),
            buyNow.IsNull() ? QString() : QString::number(qint64(std::floor(buyNow.Double()))),
            masked("MinOrQty", "0.0#"),
            UBCommentField(rs.Fields(QStringLiteral("Comment")).Text()),
        };
    }
    return rows;
}

QList<QStringList> rowsOf(const UBItemResult& r) {
    QList<QStringList> rows;
    for (int row = 1; row <= r.rowCount; ++row) {
        QStringList cells;
        for (int c = 1; c <= r.data.Columns(); ++c)
            cells << r.data(c, row).toString();
        rows << cells;
    }
    return rows;
}

void compareWithStatement(const UBItemRequest& request) {
    const QList<QStringList> expected = walkOfStatement(request);
    const UBItemResult result = LoadUBItems(request);
    QVERIFY(result.loaded);
    const QList<QStringList> actual = rowsOf(result);
    QCOMPARE(actual.size(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
        QCOMPARE(actual[i], expected[i]);
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
        db.Execute(QStringLiteral("INSERT INTO tblItemSupplier (ItemID, SupplierID, "
                                  "SupplierPNo, MinOrQty, PriceEach, PrimeSupplier) "
                                  "VALUES (?, ?, ?, ?, ?, ?)"),
                   row);
    db.CommitTrans();
}

UBItemRequest request(quint8 mode) {
    UBItemRequest r;
    r.mode = mode;
    return r;
}

} // namespace

class TestListOrder : public QObject {
    Q_OBJECT
private slots:
    void listMatchesTheOrderedStatementOnTies() {
        for (quint32 seed : {1u, 2u, 3u}) {
            TestData data;
            QVERIFY(data.ok());
            fillTies(400, seed);
            compareWithStatement(request(UBMode::AllItems));
            compareWithStatement(request(UBMode::BelowMinimum));
            UBItemRequest typed = request(UBMode::AllItems);
            typed.filters.partNo = QStringLiteral("ab");
            compareWithStatement(typed);
            UBItemRequest cat = request(UBMode::ByCategory);
            cat.category = QStringLiteral("CAT1");
            compareWithStatement(cat);
            UBItemRequest assy = request(UBMode::Assemblies);
            assy.category = QStringLiteral("AS");
            compareWithStatement(assy);
            for (int sup = 0; sup <= 6; ++sup) {
                UBItemRequest bySup = request(UBMode::BySupplier);
                bySup.supplierID = sup;
                compareWithStatement(bySup);
            }
        }
    }

    void sharedAndCaseVariantPartNumbers() {
        TestData data;
        QVERIFY(data.ok());
        // Item 3 "abc" with a non-prime and a prime supplier, item 5 "ABC" with one non-prime
        // supplier, item 7 "abc" again: the rows interleave by prime mark, and each change of
        // the text keeps a row.
        ExecSql(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemDescription, "
                               "Category) VALUES (7, 'abc', 'seven', 'C'), (3, 'abc', 'three', "
                               "'C'), (5, 'ABC', 'five', 'C'), (9, 'abd', 'nine', 'C')"));
        ExecSql(QStringLiteral("INSERT INTO tblItemSupplier (ItemID, SupplierID, SupplierPNo, "
                               "PrimeSupplier) VALUES (3, 0, 'p3', 1), (5, 0, 'n5', 0), "
                               "(3, 0, 'n3', 0), (7, 0, 'p7', 1)"));
        const UBItemResult r = LoadUBItems(request(UBMode::AllItems));
        QStringList seen;
        for (int row = 1; row <= r.rowCount; ++row)
            seen << r.data(1, row).toString() + QLatin1Char(':') + r.data(15, row).toString();
        QCOMPARE(seen, QStringList({"3:n3", "5:n5", "3:p3", "9:"}));
        compareWithStatement(request(UBMode::AllItems));
    }

    void editsOfALoadedListAreKept() {
        TestData data;
        QVERIFY(data.ok());
        fillTies(60, 7);
        const QList<QStringList> expected = walkOfStatement(request(UBMode::AllItems));
        UBItemResult r = LoadUBItems(request(UBMode::AllItems));
        QVERIFY(r.rowCount > 3);
        QVector<QVariant> values;
        for (int c = 1; c <= r.data.Columns(); ++c)
            values << std::as_const(r.data)(c, 2);
        values[UBItemColumn(QStringLiteral("Qty")) - 1] = QStringLiteral("12.5");
        values[UBItemColumn(QStringLiteral("Desc")) - 1] = QStringLiteral("changed");
        QVERIFY(UBCopyRowBack(r.data, 2, values));
        QCOMPARE(std::as_const(r.data)(UBItemColumn(QStringLiteral("Qty")), 2).toString(),
                 QStringLiteral("12.5"));
        QCOMPARE(std::as_const(r.data)(UBItemColumn(QStringLiteral("Desc")), 2).toString(),
                 QStringLiteral("changed"));
        QCOMPARE(std::as_const(r.data)(UBItemColumn(QStringLiteral("PNo")), 2).toString(),
                 expected[1][1]);
        // A refused edit leaves the row as it was; the other rows never changed.
        values[UBItemColumn(QStringLiteral("Qty")) - 1] = QStringLiteral("12,5 EUR");
        QVERIFY(!UBCopyRowBack(r.data, 2, values));
        QCOMPARE(std::as_const(r.data)(UBItemColumn(QStringLiteral("Qty")), 2).toString(),
                 QStringLiteral("12.5"));
        QList<QStringList> rows = rowsOf(r);
        rows.removeAt(1);
        QList<QStringList> others = expected;
        others.removeAt(1);
        QCOMPARE(rows, others);
    }

    void firstRowWalkTakesEachChangeOfText() {
        FirstRowPerPartNumber walk;
        QVERIFY(walk.Take(QStringLiteral("A")));
        QVERIFY(!walk.Take(QStringLiteral("A")));
        QVERIFY(walk.Take(QStringLiteral("a")));
        QVERIFY(walk.Take(QString()));
        QVERIFY(!walk.Take(QByteArrayView()));
        QVERIFY(walk.Take(QStringLiteral("A")));
    }
};

QTEST_GUILESS_MAIN(TestListOrder)
#include "test_listorder.moc"
