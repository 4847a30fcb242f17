#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Schema.h"
#include "tests/support/TestSupport.h"

#include <QFile>
#include <QTest>

class TestEngine : public QObject {
    Q_OBJECT
private slots:
    void schemaOfNewFiles() {
        TestData data;
        QVERIFY(data.ok());
        Database db = DBEngine::OpenDatabase(gDbPath);
        // Columns the later structures added, under their exact names.
        db.OpenRecordset(QStringLiteral("SELECT PORecieved, RowConfirmed, GRN_PONo, RowID "
                                        "FROM tblPODetail"));
        db.OpenRecordset(QStringLiteral("SELECT UOM1, UOM2, UOM3 FROM tblStockItems"));
        db.OpenRecordset(QStringLiteral("SELECT Invoiced, TotalTax, Delivery, InvoiceNo, TaxRate "
                                        "FROM tblDespatch"));
        db.OpenRecordset(QStringLiteral("SELECT HistID2 FROM tblItemHistory"));
        db.OpenRecordset(QStringLiteral("SELECT ParaName, f1, f10 FROM tblParameters"));
        QCOMPARE(SqlRows(QStringLiteral("SELECT AddID, CoName FROM tblSupAddresses")),
                 QStringList{"0|No Supplier"});
        QCOMPARE(SqlRows(QStringLiteral("SELECT DB_Ver FROM dbStatus")), QStringList{"32A"});
        // A new supplier gets the next key after the placeholder row; a flag never written is 0.
        ExecSql(QStringLiteral("INSERT INTO tblSupAddresses (CoName) VALUES ('Acme')"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT AddID FROM tblSupAddresses WHERE CoName = "
                                         "'ACME'")),
                 QStringLiteral("1"));
        ExecSql(QStringLiteral("INSERT INTO tblCustOrders (CustBasketID, CustID) VALUES (1, 1)"));
        QCOMPARE(SqlFirst(QStringLiteral("SELECT ORDone FROM tblCustOrders")), QStringLiteral("0"));
        Database cfg = DBEngine::OpenDatabase(gUserCfgPath);
        cfg.OpenRecordset(QStringLiteral("SELECT PcName, AppName, ParaName, ParaVal_1, ParaVal_2 "
                                         "FROM tblDefaults"));
        cfg.OpenRecordset(
            QStringLiteral("SELECT PcName, AppName, GridName, ColName, ColWidth FROM ColStat"));
        // The tool never overwrites.
        QString why;
        QVERIFY(!CreateDataFiles(data.folder(), &why));
        QVERIFY(why.contains(QStringLiteral("dbqst.dqx")));
    }

    void statementsAndValues() {
        TestData data;
        Database db = DBEngine::OpenDatabase(gDbPath);
        db.Execute(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, ItemName, Qty) "
                                  "VALUES (?, ?, ?, ?)"),
                   {1, QStringLiteral("ab-100"), QVariant(), 2.5});
        db.Execute(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, Qty) VALUES "
                                  "(2, 'AB%1', 1), (3, 'AB_2', 1), (4, 'ABX2', 1), (5, 'zz', 1)"));
        db.Execute(
            QStringLiteral("UPDATE tblStockItems SET Qty = Qty + 1 WHERE MasterPNo LIKE 'ab%'"));
        QCOMPARE(db.RecordsAffected(), 4);
        db.Execute(QStringLiteral("UPDATE tblStockItems SET Qty = 0 WHERE ItemID = 99"));
        QCOMPARE(db.RecordsAffected(), 0);

        Recordset rs = db.OpenRecordset(
            QStringLiteral("SELECT ItemName, Qty, SellAt FROM tblStockItems WHERE MasterPNo = ?"),
            {QStringLiteral("AB-100")});
        QVERIFY(!rs.Eof());
        QCOMPARE(rs.Fields(QStringLiteral("ItemName")).Text(), QString());
        QVERIFY(rs.Fields(QStringLiteral("ItemName")).IsNull());
        QCOMPARE(rs.Fields(QStringLiteral("qty")).Double(), 3.5);
        QCOMPARE(rs.Fields(QStringLiteral("SellAt")).Double(), 0.0);
        // Fields by a name built at run time.
        QCOMPARE(rs.Fields(QStringLiteral("Q%1").arg(QStringLiteral("TY"))).Double(), 3.5);

        // Text compares and sorts without regard to case; a typed % or _ matches itself only.
        QCOMPARE(SqlRows(QStringLiteral("SELECT MasterPNo FROM tblStockItems WHERE MasterPNo > "
                                        "'AB' ORDER BY MasterPNo")),
                 QStringList({"AB%1", "ab-100", "AB_2", "ABX2", "zz"}));
        const auto count = [](const QString& typed) {
            return SqlFirst(QStringLiteral("SELECT COUNT(*) FROM tblStockItems WHERE MasterPNo ") +
                            LikePrefix(typed));
        };
        QCOMPARE(count(QStringLiteral("ab")), QStringLiteral("4"));
        QCOMPARE(count(QStringLiteral("AB%")), QStringLiteral("1"));
        QCOMPARE(count(QStringLiteral("ab_")), QStringLiteral("1"));
        // Val inside statements follows the helper's rule.
        QCOMPARE(SqlRows(QStringLiteral("SELECT Val('12abc'), Val(NULL), Val('x')")),
                 QStringList{"12|0|0"});
    }

    void recordsetWalkAndEdits() {
        TestData data;
        Database db = DBEngine::OpenDatabase(gDbPath);
        {
            Recordset empty = db.OpenRecordset(QStringLiteral("SELECT * FROM tblHome"));
            QVERIFY(empty.Eof());
            QCOMPARE(empty.RecordCount(), 0);
        }
        // The same statement after a column is added names the new column (as an upgrade step
        // probes, alters and reads again on one connection).
        db.Execute(QStringLiteral("ALTER TABLE tblHome ADD COLUMN Extra TEXT"));
        db.Execute(QStringLiteral("INSERT INTO tblHome (CoName, Extra) VALUES ('A', 'x')"));
        QCOMPARE(db.OpenRecordset(QStringLiteral("SELECT * FROM tblHome"))
                     .Fields(QStringLiteral("Extra"))
                     .Text(),
                 QStringLiteral("x"));
        db.Execute(QStringLiteral("DELETE FROM tblHome"));
        for (int i = 1; i <= 5; ++i)
            db.Execute(QStringLiteral("INSERT INTO tblBaskets (StockID, ReqQty) VALUES (?, 0)"),
                       {i});
        Recordset rs =
            db.OpenRecordset(QStringLiteral("SELECT StockID FROM tblBaskets ORDER BY StockID"));
        rs.MoveLast();
        QCOMPARE(rs.RecordCount(), 5);
        QCOMPARE(rs.Fields(0).Long(), 5);
        rs.MoveFirst();
        QCOMPARE(rs.Fields(0).Long(), 1);
        // The same text open twice at once: two walks that do not disturb each other.
        Recordset second =
            db.OpenRecordset(QStringLiteral("SELECT StockID FROM tblBaskets ORDER BY StockID"));
        second.MoveNext();
        QCOMPARE(rs.Fields(0).Long(), 1);
        QCOMPARE(second.Fields(0).Long(), 2);
        int n = 0;
        for (; !rs.Eof(); rs.MoveNext())
            ++n;
        QCOMPARE(n, 5);
        QVERIFY_THROWS_EXCEPTION(DbError, rs.MoveNext());
        QVERIFY_THROWS_EXCEPTION(DbError, second.Fields(QStringLiteral("NoSuchField")));

        // New and changed records through the record set.
        db.Execute(QStringLiteral("DELETE FROM dbStatus"));
        Recordset st = db.OpenRecordset(QStringLiteral("SELECT DB_Ver FROM dbStatus"));
        st.AddNew();
        st.SetField(QStringLiteral("DB_Ver"), QStringLiteral("30B"));
        st.Update();
        Recordset st2 = db.OpenRecordset(QStringLiteral("SELECT DB_Ver FROM dbStatus"));
        st2.Edit();
        st2.SetField(QStringLiteral("DB_Ver"), QStringLiteral("31A"));
        st2.Update();
        QCOMPARE(SqlRows(QStringLiteral("SELECT DB_Ver FROM dbStatus")), QStringList{"31A"});

        // By the key: a value changed since the edit began does not lose the record.
        db.Execute(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo, Qty) VALUES "
                                  "(1, 'A', 1), (2, 'B', 2)"));
        Recordset item =
            db.OpenRecordset(QStringLiteral("SELECT * FROM tblStockItems WHERE MasterPNo = 'B'"));
        item.Edit();
        db.Execute(QStringLiteral("UPDATE tblStockItems SET Qty = 5 WHERE ItemID = 2"));
        item.SetField(QStringLiteral("Location"), QStringLiteral("Shelf"));
        item.Update();
        QCOMPARE(db.RecordsAffected(), 1);
        item.Close();
        QCOMPARE(SqlRows(QStringLiteral("SELECT Location, Qty FROM tblStockItems ORDER BY ItemID")),
                 QStringList({"|1", "Shelf|5"}));
        // Without a key: the first of two equal rows only; an edit setting nothing writes nothing.
        db.Execute(QStringLiteral("INSERT INTO tblItemSupplier (ItemID, SupplierID, PriceEach) "
                                  "VALUES (1, 0, 1), (1, 0, 1)"));
        Recordset sup =
            db.OpenRecordset(QStringLiteral("SELECT * FROM tblItemSupplier WHERE ItemID = 1"));
        sup.Edit();
        sup.SetField(QStringLiteral("PriceEach"), 2.5);
        sup.Update();
        sup.Edit();
        sup.Update();
        QCOMPARE(SqlRows(QStringLiteral("SELECT PriceEach FROM tblItemSupplier ORDER BY 1")),
                 QStringList({"1", "2.5"}));

        // A record set may outlive its file's connection.
        Recordset left = db.OpenRecordset(QStringLiteral("SELECT StockID FROM tblBaskets"));
        db.Close();
        QCOMPARE(left.Fields(0).Long(), 1);
    }

    void errorsTransactionsAndSavepoints() {
        TestData data;
        Database db = DBEngine::OpenDatabase(gDbPath);
        try {
            db.Execute(QStringLiteral("SELEC nonsense"));
            QFAIL("no error");
        } catch (const DbError& e) {
            QCOMPARE(e.Number(), int(DbErr::Syntax));
            QVERIFY(e.Description().contains(QStringLiteral("syntax error")));
        }
        QVERIFY_THROWS_EXCEPTION(DbError,
                                 db.OpenRecordset(QStringLiteral("SELECT NoColumn FROM tblHome")));

        const QString insert = QStringLiteral("INSERT INTO tblHome (CoName, Add1) VALUES (?, ?)");
        db.BeginTrans();
        db.Execute(insert, {QStringLiteral("gone"), QStringLiteral("x")});
        db.Rollback();
        db.Rollback(); // a second rollback is harmless
        db.BeginTrans();
        db.Savepoint(QStringLiteral("one"));
        db.Execute(insert, {QStringLiteral("kept"), QStringLiteral("x")});
        db.ReleaseSavepoint(QStringLiteral("one"));
        db.Savepoint(QStringLiteral("one"));
        db.Execute(insert, {QStringLiteral("undone"), QStringLiteral("x")});
        db.RollbackToSavepoint(QStringLiteral("one"));
        QVERIFY(db.InTransaction());
        db.Execute(insert, {QStringLiteral("after"), QVariant()}); // no value left from before
        db.CommitTrans();
        QCOMPARE(SqlRows(QStringLiteral("SELECT CoName, ifnull(Add1, 'null') FROM tblHome "
                                        "ORDER BY 1")),
                 QStringList({"after|null", "kept|x"}));
        db.RollbackToSavepoint(QStringLiteral("one")); // outside a transaction: nothing
        QVERIFY(!db.InTransaction());
        // A changed table is seen by the statements after it.
        db.Execute(QStringLiteral("ALTER TABLE tblHome ADD COLUMN Extra TEXT"));
        db.Execute(QStringLiteral("UPDATE tblHome SET Extra = CoName || '!'"));
        QCOMPARE(db.OpenRecordset(QStringLiteral("SELECT * FROM tblHome ORDER BY CoName"))
                     .Fields(QStringLiteral("Extra"))
                     .Text(),
                 QStringLiteral("after!"));

        // A second workstation holding the write lock: the statement fails as locked.
        Database other = DBEngine::OpenDatabase(gDbPath);
        other.BeginTrans();
        try {
            db.Execute(QStringLiteral("UPDATE tblHome SET CoName = 'X'"));
            QFAIL("no lock error");
        } catch (const DbError& e) {
            QCOMPARE(e.Number(), int(DbErr::Locked));
        }
        other.Rollback();
        db.Execute(QStringLiteral("UPDATE tblHome SET CoName = 'X'"));

        // The test seam fails one statement, once.
        Database::FailNextStatementContaining(QStringLiteral("tblHome"));
        QVERIFY_THROWS_EXCEPTION(DbError, db.Execute(QStringLiteral("DELETE FROM tblHome")));
        db.Execute(QStringLiteral("DELETE FROM tblHome"));
        QCOMPARE(db.RecordsAffected(), 2);
    }

    void filesPasswordAndCompact() {
        TestData data;
        try {
            DBEngine::OpenDatabase(data.path(QStringLiteral("missing.dqx")));
            QFAIL("opened a missing file");
        } catch (const DbError& e) {
            QCOMPARE(e.Number(), int(DbErr::FileNotFound));
            QVERIFY(e.Description().contains(QStringLiteral("missing.dqx")));
        }
        {
            Database rights =
                DBEngine::OpenDatabase(QString(), false, false, RightsConnectString());
            rights.Execute(QStringLiteral("INSERT INTO tblRights (UserName, Pm2) VALUES ('a', 0)"));
        }
        try {
            DBEngine::OpenDatabase(QString(), false, false,
                                   QStringLiteral(";DATABASE=") + gRightsPath +
                                       QStringLiteral(";PWD=wrong"));
            QFAIL("opened with a wrong password");
        } catch (const DbError& e) {
            QCOMPARE(e.Number(), int(DbErr::NotValidPassword));
            QCOMPARE(e.Description(), QStringLiteral("Not a valid password."));
        }
        QVERIFY_THROWS_EXCEPTION(
            DbError, DBEngine::OpenDatabase(QString(), false, false,
                                            QStringLiteral(";DATABASE=") + gRightsPath));

        ExecSql(QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo) VALUES (7, 'P7')"));
        const QString copy = data.path(QStringLiteral("copy.bkp"));
        DBEngine::CompactDatabase(gDbPath, copy);
        Database c = DBEngine::OpenDatabase(copy);
        QCOMPARE(
            c.OpenRecordset(QStringLiteral("SELECT MasterPNo FROM tblStockItems")).Fields(0).Text(),
            QStringLiteral("P7"));
        QVERIFY_THROWS_EXCEPTION(DbError, DBEngine::CompactDatabase(gDbPath, copy));
        // Not a database at all.
        QFile junk(data.path(QStringLiteral("junk.dqx")));
        QVERIFY(junk.open(QIODevice::WriteOnly));
        junk.write(QByteArray(4096, 'x'));
        junk.close();
        QVERIFY_THROWS_EXCEPTION(DbError, DBEngine::OpenDatabase(junk.fileName()));
    }
};

QTEST_GUILESS_MAIN(TestEngine)
#include "test_engine.moc"
