// The data generator: the same scale and seed give the same rows, counts follow the scale, and
// the rows agree with each other the way the program's own writers leave them.
#include "foundation/DbEngine.h"
#include "tests/support/TestSupport.h"
#include "tools/GenData.h"

#include <QCryptographicHash>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace {
const QDate kToday(2026, 11, 23);

QString dbFile(const QTemporaryDir& dir) {
    return QDir(dir.path()).filePath("dbqst.dqx");
}

bool generate(const QTemporaryDir& dir, int items, quint32 seed, GenDataCounts* counts = nullptr) {
    GenDataOptions o;
    o.items = items;
    o.seed = seed;
    o.today = kToday;
    QString why;
    const bool ok = GenerateData(dir.path(), o, counts, &why);
    if (!ok)
        qWarning("%s", qPrintable(why));
    return ok;
}

// A digest of every row of every table, in row order, with the type of each value.
QByteArray contentDigest(const QString& path) {
    Database db = DBEngine::OpenDatabase(path);
    QStringList tables;
    {
        Recordset rs = db.OpenRecordset(
            "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite%' "
            "ORDER BY name");
        for (; !rs.Eof(); rs.MoveNext())
            tables << rs.Fields(0).Text();
    }
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString& t : tables) {
        hash.addData(t.toUtf8());
        Recordset rs = db.OpenRecordset("SELECT * FROM " + t + " ORDER BY rowid");
        for (; !rs.Eof(); rs.MoveNext()) {
            for (int i = 0; i < rs.FieldCount(); ++i) {
                const QVariant v = rs.Fields(i).Value();
                hash.addData(QByteArray::number(v.typeId()));
                hash.addData(v.toString().toUtf8());
                hash.addData(QByteArrayView("|"));
            }
        }
    }
    return hash.result();
}

qint64 scalar(Database& db, const QString& sql) {
    Recordset rs = db.OpenRecordset(sql);
    return rs.Eof() ? -1 : rs.Fields(0).Long();
}
} // namespace

class TestGenData : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { UseTestLocale(); }

    void sameSeedSameRowsOtherSeedOtherRows() {
        QTemporaryDir a, b, c;
        QVERIFY(generate(a, 200, 7));
        QVERIFY(generate(b, 200, 7));
        QVERIFY(generate(c, 200, 8));
        const QByteArray da = contentDigest(dbFile(a));
        QCOMPARE(contentDigest(dbFile(b)), da);
        QVERIFY(contentDigest(dbFile(c)) != da);
    }

    void countsFollowTheScale() {
        // The reference scale of the benchmarks.
        const GenDataScale ref = ScaleFor(100000);
        QCOMPARE(ref.suppliers, 500);
        QCOMPARE(ref.customers, 2000);
        QCOMPARE(ref.purchaseOrders, 20000);
        QCOMPARE(ref.purchaseOrderRows, 100000);
        QCOMPARE(ref.historyRows, 1000000);
        QCOMPARE(ref.customerOrders, 30000);
        QCOMPARE(ref.links, 20000);
        QCOMPARE(ref.usedInRows, 50000);

        QTemporaryDir small, large;
        GenDataCounts cs, cl;
        QVERIFY(generate(small, 200, 1, &cs));
        QVERIFY(generate(large, 400, 1, &cl));
        for (const auto& [dir, counts, n] :
             {std::tuple{&small, &cs, 200}, std::tuple{&large, &cl, 400}}) {
            const GenDataScale s = ScaleFor(n);
            Database db = DBEngine::OpenDatabase(dbFile(*dir));
            QCOMPARE(scalar(db, "SELECT count(*) FROM tblStockItems"), qint64(n));
            QCOMPARE(scalar(db, "SELECT count(*) FROM tblPOrders"), qint64(s.purchaseOrders));
            QCOMPARE(scalar(db, "SELECT count(*) FROM tblPODetail"), qint64(s.purchaseOrderRows));
            QCOMPARE(scalar(db, "SELECT count(*) FROM tblItemHistory"), qint64(s.historyRows));
            QCOMPARE(scalar(db, "SELECT count(*) FROM tblCustOrders"), qint64(s.customerOrders));
            QCOMPARE(scalar(db, "SELECT count(*) FROM tblCusAddresses"), qint64(s.customers));
            QCOMPARE(scalar(db, "SELECT count(*) FROM tblAllocDetail"), qint64(s.allocationRows));
            // The real suppliers, "No Supplier" and the non-stock supplier.
            QCOMPARE(scalar(db, "SELECT count(*) FROM tblSupAddresses"), qint64(s.suppliers + 2));
            QCOMPARE(scalar(db, "SELECT count(*) FROM tblDespatch"), counts->invoices);
            QCOMPARE(scalar(db, "SELECT count(*) FROM tblItemSupplier"), counts->itemSuppliers);
            QCOMPARE(scalar(db, "SELECT count(*) FROM tblHyperLinks"), qint64(s.links));
            QCOMPARE(scalar(db, "SELECT count(*) FROM tblUsedIn"), qint64(s.usedInRows));
            // Most orders are invoiced; some in two parts.
            QVERIFY(counts->invoices > s.customerOrders / 2);
            QVERIFY(scalar(db, "SELECT count(*) FROM tblDespatch WHERE DespSeqNo = 2") > 0);
        }
        QCOMPARE(cl.purchaseOrderRows, 2 * cs.purchaseOrderRows);
        QCOMPARE(cl.historyRows, 2 * cs.historyRows);
        QCOMPARE(cl.customerOrders, 2 * cs.customerOrders);
    }

    void rowsAgreeWithEachOther() {
        QTemporaryDir dir;
        QVERIFY(generate(dir, 200, 3));
        Database db = DBEngine::OpenDatabase(dbFile(dir));

        // Suppliers: every item has rows; one prime among real suppliers, no supplier twice;
        // an item without one has the no-supplier row only.
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblStockItems WHERE ItemID NOT IN "
                            "(SELECT ItemID FROM tblItemSupplier)"),
                 0);
        QCOMPARE(scalar(db,
                        "SELECT count(*) FROM (SELECT ItemID FROM tblItemSupplier "
                        "WHERE ItemID IN (SELECT ItemID FROM tblItemSupplier WHERE SupplierID > 0) "
                        "GROUP BY ItemID HAVING sum(PrimeSupplier = 1) <> 1 "
                        "OR sum(SupplierID = 0) > 0 OR count(DISTINCT SupplierID) <> count(*))"),
                 0);
        QVERIFY(scalar(db, "SELECT count(*) FROM tblItemSupplier WHERE SupplierID = 0") > 0);
        QVERIFY(scalar(db, "SELECT count(DISTINCT ItemID) FROM tblItemSupplier "
                           "WHERE SupplierID > 0 GROUP BY ItemID HAVING count(*) = 3") > 0);
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblItemSupplier WHERE SupplierID NOT IN "
                            "(SELECT AddID FROM tblSupAddresses WHERE ShortNm <> 'NON')"),
                 0);

        // On order: the stored figure is the outstanding sum of the rows that differ.
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblStockItems s WHERE abs(OnOrderQty - "
                            "(SELECT coalesce(sum(POQty - PORecieved), 0) FROM tblPODetail "
                            "WHERE POStockID = s.ItemID AND POQty <> PORecieved)) > 0.005"),
                 0);
        QVERIFY(scalar(db, "SELECT count(*) FROM tblStockItems WHERE OnOrderQty > 0") > 0);
        QVERIFY(scalar(db, "SELECT count(*) FROM tblPODetail WHERE PORecieved = POQty") > 0);
        QVERIFY(scalar(db, "SELECT count(*) FROM tblPODetail "
                           "WHERE PORecieved > 0 AND PORecieved < POQty") > 0);

        // Receipts: each "RX" row names its order row, the same item, the order's reference;
        // together they make up what the row has received.
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblItemHistory h "
                            "LEFT JOIN tblPODetail d ON d.RowID = h.HistID2 "
                            "LEFT JOIN tblPOrders o ON o.POID = d.POID "
                            "WHERE h.HistType = 'RX' AND (d.RowID IS NULL "
                            "OR d.POStockID <> h.StockID "
                            "OR h.HistText <> 'Purchase Order: ' || o.PONumber "
                            "OR h.HistID IS NOT NULL OR h.HistDate < o.PODate)"),
                 0);
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblPODetail d WHERE PORecieved <> "
                            "(SELECT coalesce(sum(HistQty), 0) FROM tblItemHistory "
                            "WHERE HistType = 'RX' AND HistID2 = d.RowID)"),
                 0);

        // Invoices: numbered, one "SHIP" row per invoice row, shipped quantities add up.
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblDespatch WHERE InvoiceNo IS NULL "
                            "OR DespNoteText <> 'POS' OR Invoiced <> DespDate OR TaxRate IS NULL"),
                 0);
        QCOMPARE(scalar(db, "SELECT count(*) - count(DISTINCT InvoiceNo) FROM tblDespatch"), 0);
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblItemHistory WHERE HistType = 'SHIP'"),
                 scalar(db, "SELECT count(*) FROM tblDespDetail"));
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblCustOrderDetail r WHERE ShippedQty <> "
                            "(SELECT coalesce(sum(DespQty), 0) FROM tblDespDetail "
                            "WHERE OrderDetailRowID = r.RowID) OR ShippedQty > OrderedQty"),
                 0);
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblDespDetail dd "
                            "JOIN tblCustOrderDetail r ON r.RowID = dd.OrderDetailRowID "
                            "WHERE r.StockID <> dd.DespStockID"),
                 0);
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblItemHistory h WHERE HistType = 'SHIP' AND "
                            "NOT EXISTS (SELECT 1 FROM tblDespatch d WHERE h.HistRef = "
                            "substr('0000' || d.CustOrderID, -4) || '-' || "
                            "substr('000' || d.DespSeqNo, -3) AND d.DespDate = h.HistDate)"),
                 0);

        // Stock: what the history adds up to (invoices write the shipped quantity unsigned).
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblStockItems s WHERE abs(Qty - "
                            "(SELECT coalesce(sum(CASE WHEN HistType = 'SHIP' THEN -HistQty "
                            "ELSE HistQty END), 0) FROM tblItemHistory WHERE StockID = s.ItemID)) "
                            "> 0.005"),
                 0);
        for (const char* type : {"ISSUE", "RETURN", "ADJ(+)", "ADJ(-)"})
            QVERIFY2(scalar(db, QString("SELECT count(*) FROM tblItemHistory WHERE HistType = '") +
                                    type + "'") > 0,
                     type);
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblItemHistory WHERE "
                            "(HistType IN ('ISSUE', 'ADJ(-)') AND HistQty >= 0) OR "
                            "(HistType IN ('RETURN', 'ADJ(+)', 'RX', 'SHIP') AND HistQty < 0)"),
                 0);

        // Dates: ISO text within the ten years; the no-date value where a date may be missing.
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblItemHistory WHERE HistDate NOT BETWEEN "
                            "'2016-11-23' AND '2026-11-23' OR date(HistDate) IS NOT HistDate"),
                 0);
        QVERIFY(scalar(db, "SELECT count(*) FROM tblPODetail WHERE POSchedDate = '2040-01-01'") >
                0);
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblPODetail WHERE date(POSchedDate) IS NOT "
                            "POSchedDate"),
                 0);

        // Parts lists: assemblies made of parts that are not assemblies themselves.
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblUsedIn u JOIN tblStockItems p "
                            "ON p.ItemID = u.ParentID JOIN tblStockItems c ON c.ItemID = u.ChildID "
                            "WHERE p.Category = 'AS' AND c.Category <> 'AS' AND u.QtyPer > 0"),
                 scalar(db, "SELECT count(*) FROM tblUsedIn"));

        // Addresses and settings.
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblSupAddresses WHERE AddID = 0 "
                            "AND CoName = 'No Supplier'"),
                 1);
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblSupAddresses WHERE ShortNm = 'NON'"), 1);
        QVERIFY(scalar(db, "SELECT count(*) FROM tblLocAddresses") > 0);
        QVERIFY(scalar(db, "SELECT count(*) FROM tblMisAddresses") > 0);
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblHome"), 1);
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblParameters WHERE "
                            "(ParaName = 'TaxRates' AND f1 = '20') OR "
                            "(ParaName = 'ShippingPars' AND f3 = 'Y') OR ParaName = 'InvTerms'"),
                 3);
        QVERIFY(scalar(db, "SELECT count(*) FROM tblBaskets") > 0);
        QVERIFY(scalar(db, "SELECT count(*) FROM tblItemComments WHERE Comment LIKE '%' || "
                           "char(10) || '%'") > 0);
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblItemComments c JOIN tblStockItems s "
                            "ON s.ItemID = c.StockID"),
                 scalar(db, "SELECT count(*) FROM tblItemComments"));
        QCOMPARE(scalar(db, "SELECT (SELECT count(*) FROM tblStockItems WHERE MasterPNo LIKE "
                            "'%''%' OR ItemDescription LIKE '%''%') + (SELECT count(*) FROM "
                            "tblCusAddresses WHERE CoName LIKE '%''%') + (SELECT count(*) FROM "
                            "tblItemHistory WHERE HistText LIKE '%''%')"),
                 0);
        QCOMPARE(scalar(db, "SELECT count(*) - count(DISTINCT MasterPNo) FROM tblStockItems"), 0);
        // The indexes of the schema are back once the rows are in.
        QVERIFY(scalar(db, "SELECT count(*) FROM sqlite_master WHERE type = 'index' "
                           "AND name = 'ixHistID2'") == 1);
    }

    void refusesAnExistingFolder() {
        QTemporaryDir dir;
        QVERIFY(generate(dir, 50, 1));
        GenDataOptions o;
        o.items = 50;
        o.today = kToday;
        QString why;
        QVERIFY(!GenerateData(dir.path(), o, nullptr, &why));
        QVERIFY(why.contains("exists already"));
        Database db = DBEngine::OpenDatabase(dbFile(dir));
        QCOMPARE(scalar(db, "SELECT count(*) FROM tblStockItems"), 50);
    }
};

QTEST_GUILESS_MAIN(TestGenData)
#include "test_gendata.moc"
