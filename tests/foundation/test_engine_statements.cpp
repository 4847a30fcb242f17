// Compiled statements kept for reuse, savepoints and record-set edits of the engine.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "tests/support/TestSupport.h"

#include <QTest>

namespace {
QStringList column(Database& db, const QString& sql) {
    QStringList out;
    Recordset rs = db.OpenRecordset(sql);
    for (; !rs.Eof(); rs.MoveNext())
        out << rs.Fields(0).Text();
    return out;
}
} // namespace

class TestEngineStatements : public QObject {
    Q_OBJECT
private slots:
    void statementsRunAgainGiveFreshResults() {
        TestData data;
        Database db = DBEngine::OpenDatabase(gDbPath);
        const QString insert = QStringLiteral("INSERT INTO tblHome (CoName, Add1) VALUES (?, ?)");
        db.Execute(insert, {QStringLiteral("b"), QStringLiteral("x")});
        db.Execute(insert, {QStringLiteral("a"), QVariant()}); // no value left from the last run
        const QString sql = QStringLiteral("SELECT CoName, Add1 FROM tblHome ORDER BY CoName");
        // The same text open twice at once: two walks that do not disturb each other.
        Recordset first = db.OpenRecordset(sql);
        Recordset second = db.OpenRecordset(sql);
        second.MoveNext();
        QCOMPARE(first.Fields(0).Text(), QStringLiteral("a"));
        QVERIFY(first.Fields(1).IsNull());
        QCOMPARE(second.Fields(0).Text(), QStringLiteral("b"));
        first.Close();
        second.Close();
        QCOMPARE(column(db, sql), QStringList({"a", "b"}));
        // A changed table is seen by a statement run again.
        db.Execute(QStringLiteral("ALTER TABLE tblHome ADD COLUMN Extra TEXT"));
        db.Execute(QStringLiteral("UPDATE tblHome SET Extra = CoName || '!'"));
        Recordset all = db.OpenRecordset(QStringLiteral("SELECT * FROM tblHome ORDER BY CoName"));
        QCOMPARE(all.Fields(QStringLiteral("Extra")).Text(), QStringLiteral("a!"));
        all.Close();

        // A record set may outlive its file's connection.
        Recordset left = db.OpenRecordset(sql);
        db.Close();
        QCOMPARE(left.Fields(0).Text(), QStringLiteral("a"));
        left.Close();
        {
            Database other = DBEngine::OpenDatabase(gDbPath);
            left = other.OpenRecordset(sql);
        }
        QVERIFY(!left.Eof());
    }

    void savepointsUndoOnePieceOfATransaction() {
        TestData data;
        Database db = DBEngine::OpenDatabase(gDbPath);
        const QString insert = QStringLiteral("INSERT INTO tblHome (CoName) VALUES (?)");
        db.BeginTrans();
        db.Savepoint(QStringLiteral("one"));
        db.Execute(insert, {QStringLiteral("kept")});
        db.ReleaseSavepoint(QStringLiteral("one"));
        db.Savepoint(QStringLiteral("one"));
        db.Execute(insert, {QStringLiteral("undone")});
        db.RollbackToSavepoint(QStringLiteral("one"));
        QVERIFY(db.InTransaction());
        db.Execute(insert, {QStringLiteral("after")});
        db.CommitTrans();
        QCOMPARE(column(db, QStringLiteral("SELECT CoName FROM tblHome ORDER BY CoName")),
                 QStringList({"after", "kept"}));
        // Outside a transaction it does nothing.
        db.RollbackToSavepoint(QStringLiteral("one"));
        QVERIFY(!db.InTransaction());
    }

    void editsWriteTheCurrentRecord() {
        TestData data;
        Database db = DBEngine::OpenDatabase(gDbPath);
        db.Execute(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, Qty) VALUES "
                                  "(1, 'A', 1), (2, 'B', 2)"));
        // By the key: a value changed since the edit began does not lose the record.
        Recordset rs =
            db.OpenRecordset(QStringLiteral("SELECT * FROM tblStockItems WHERE MasterPNo = 'B'"));
        rs.Edit();
        db.Execute(QStringLiteral("UPDATE tblStockItems SET Qty = 5 WHERE ItemID = 2"));
        rs.SetField(QStringLiteral("Location"), QStringLiteral("Shelf"));
        rs.Update();
        QCOMPARE(db.RecordsAffected(), 1);
        rs.Close();
        QCOMPARE(column(db, QStringLiteral(
                                "SELECT ifnull(Location, '') || '/' || Qty FROM tblStockItems "
                                "ORDER BY ItemID")),
                 QStringList({"/1.0", "Shelf/5.0"}));

        // Without a key: the first of two equal rows only.
        db.Execute(QStringLiteral("INSERT INTO tblItemSupplier (ItemID, SupplierID, PriceEach) "
                                  "VALUES (1, 0, 1), (1, 0, 1)"));
        Recordset sup =
            db.OpenRecordset(QStringLiteral("SELECT * FROM tblItemSupplier WHERE ItemID = 1"));
        sup.Edit();
        sup.SetField(QStringLiteral("PriceEach"), 2.5);
        sup.Update();
        QCOMPARE(column(db, QStringLiteral("SELECT PriceEach FROM tblItemSupplier ORDER BY "
                                           "PriceEach")),
                 QStringList({"1", "2.5"}));
        // An edit that sets nothing writes nothing.
        sup.Edit();
        sup.Update();
        QCOMPARE(column(db, QStringLiteral("SELECT count(*) FROM tblItemSupplier")),
                 QStringList({"2"}));
    }
};

QTEST_GUILESS_MAIN(TestEngineStatements)
#include "test_engine_statements.moc"
