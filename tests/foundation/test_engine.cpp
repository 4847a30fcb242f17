#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"
#include "foundation/Schema.h"
#include "tests/support/TestSupport.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTest>

class TestEngine : public QObject {
    Q_OBJECT
private slots:
    void schemaOfNewFiles() {
        TestData data;
        QVERIFY(data.ok());
        Database db = DBEngine::OpenDatabase(gDbPath);
        // Every column of the shared data model under its exact name.
        db.OpenRecordset(QStringLiteral(
            "SELECT POID, POStockID, POSupPNo, POQty, POPrice, POSchedDate, PORecieved, "
            "RowConfirmed, RowComments, GRN_PONo, RowID FROM tblPODetail"));
        db.OpenRecordset(QStringLiteral(
            "SELECT ItemID, MasterPNo, ItemName, ItemDescription, Category, Assy, Location, Qty, "
            "Trigger, SellAt, AllowDiscount, AllocQty, OnOrderQty, BuyNow, UOM1, UOM2, UOM3 "
            "FROM tblStockItems"));
        db.OpenRecordset(QStringLiteral(
            "SELECT DespID, CustOrderID, DespSeqNo, DespNoteText, DespFreeText, DespDate, "
            "Invoiced, TotalTax, Delivery, InvoiceNo, TaxRate FROM tblDespatch"));
        db.OpenRecordset(QStringLiteral("SELECT StockID, HistDate, HistType, HistID, HistID2, "
                                        "HistRef, HistTRN, HistQty, HistText FROM tblItemHistory"));
        db.OpenRecordset(QStringLiteral("SELECT AddID, CoName, Discount FROM tblCusAddresses"));
        db.OpenRecordset(QStringLiteral("SELECT ParaName, f1, f10 FROM tblParameters"));
        Recordset sup =
            db.OpenRecordset(QStringLiteral("SELECT AddID, CoName FROM tblSupAddresses"));
        QVERIFY(!sup.Eof());
        QCOMPARE(sup.Fields(QStringLiteral("AddID")).Long(), 0);
        QCOMPARE(sup.Fields(QStringLiteral("CoName")).Text(), QStringLiteral("No Supplier"));
        sup.MoveNext();
        QVERIFY(sup.Eof());
        Recordset ver = db.OpenRecordset(QStringLiteral("SELECT DB_Ver FROM dbStatus"));
        QCOMPARE(ver.Fields(QStringLiteral("DB_Ver")).Text(), QStringLiteral("32A"));
        // A new supplier gets the next key after the placeholder row.
        db.Execute(QStringLiteral("INSERT INTO tblSupAddresses (CoName) VALUES ('Acme')"));
        Recordset id = db.OpenRecordset(
            QStringLiteral("SELECT AddID FROM tblSupAddresses WHERE CoName = 'ACME'"));
        QCOMPARE(id.Fields(0).Long(), 1);
        // A flag never written reads 0.
        db.Execute(
            QStringLiteral("INSERT INTO tblCustOrders (CustBasketID, CustID) VALUES (1, 1)"));
        QCOMPARE(
            db.OpenRecordset(QStringLiteral("SELECT ORDone FROM tblCustOrders")).Fields(0).Long(),
            0);

        Database cfg = DBEngine::OpenDatabase(gUserCfgPath);
        cfg.OpenRecordset(QStringLiteral(
            "SELECT PcName, AppName, ParaName, ParaVal_1, ParaVal_2 FROM tblDefaults"));
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

        // Text compares and sorts without regard to case.
        QStringList order;
        for (Recordset all = db.OpenRecordset(
                 QStringLiteral("SELECT MasterPNo FROM tblStockItems WHERE MasterPNo > 'AB' "
                                "ORDER BY MasterPNo"));
             !all.Eof(); all.MoveNext())
            order << all.Fields(0).Text();
        QCOMPARE(order, (QStringList{QStringLiteral("AB%1"), QStringLiteral("ab-100"),
                                     QStringLiteral("AB_2"), QStringLiteral("ABX2"),
                                     QStringLiteral("zz")}));

        // A typed % or _ matches itself only.
        auto count = [&](const QString& typed) {
            return db
                .OpenRecordset(
                    QStringLiteral("SELECT COUNT(*) FROM tblStockItems WHERE MasterPNo ") +
                    LikePrefix(typed))
                .Fields(0)
                .Long();
        };
        QCOMPARE(count(QStringLiteral("ab")), 4);
        QCOMPARE(count(QStringLiteral("AB%")), 1);
        QCOMPARE(count(QStringLiteral("ab_")), 1);
        QCOMPARE(count(QStringLiteral("")), 5);

        // Val inside statements follows the helper's rule.
        Recordset v = db.OpenRecordset(QStringLiteral("SELECT Val('12abc'), Val(NULL), Val('x')"));
        QCOMPARE(v.Fields(0).Double(), 12.0);
        QCOMPARE(v.Fields(1).Double(), 0.0);
        QCOMPARE(v.Fields(2).Double(), 0.0);
    }

    void recordsetWalkAndEdit() {
        TestData data;
        Database db = DBEngine::OpenDatabase(gDbPath);
        Recordset empty = db.OpenRecordset(QStringLiteral("SELECT * FROM tblHome"));
        QVERIFY(empty.Eof());
        QCOMPARE(empty.RecordCount(), 0);
        for (int i = 1; i <= 5; ++i)
            db.Execute(QStringLiteral("INSERT INTO tblBaskets (StockID, ReqQty) VALUES (?, 0)"),
                       {i});
        Recordset rs =
            db.OpenRecordset(QStringLiteral("SELECT StockID FROM tblBaskets ORDER BY StockID"));
        QVERIFY(rs.RecordCount() > 0);
        rs.MoveLast();
        QCOMPARE(rs.RecordCount(), 5);
        QCOMPARE(rs.Fields(0).Long(), 5);
        rs.MoveFirst();
        QCOMPARE(rs.Fields(0).Long(), 1);
        int n = 0;
        for (; !rs.Eof(); rs.MoveNext())
            ++n;
        QCOMPARE(n, 5);
        QVERIFY_THROWS_EXCEPTION(DbError, rs.MoveNext());
        QVERIFY_THROWS_EXCEPTION(DbError, rs.Fields(QStringLiteral("NoSuchField")));

        // Fields by name: any case, names built at run time as well as literals.
        db.Execute(QStringLiteral("INSERT INTO tblHome (Add1, Add2, Add3) VALUES ('a', 'b', 'c')"));
        Recordset home = db.OpenRecordset(QStringLiteral("SELECT * FROM tblHome"));
        for (int round = 0; round < 2; ++round) {
            for (int i = 1; i <= 3; ++i) {
                const QString name = QStringLiteral("ADD%1").arg(i);
                QCOMPARE(home.Fields(name).Text(), QString(QChar('a' + i - 1)));
            }
            QCOMPARE(home.Fields(QStringLiteral("add2")).Text(), QStringLiteral("b"));
            QCOMPARE(home.Fields(QStringLiteral("Add3")).Text(), QStringLiteral("c"));
        }

        // Editing through the record set.
        db.Execute(QStringLiteral("DELETE FROM dbStatus"));
        Recordset st = db.OpenRecordset(QStringLiteral("SELECT DB_Ver FROM dbStatus"));
        st.AddNew();
        st.SetField(QStringLiteral("DB_Ver"), QStringLiteral("30B"));
        st.Update();
        Recordset st2 = db.OpenRecordset(QStringLiteral("SELECT DB_Ver FROM dbStatus"));
        st2.Edit();
        st2.SetField(QStringLiteral("DB_Ver"), QStringLiteral("31A"));
        st2.Update();
        Recordset check = db.OpenRecordset(QStringLiteral("SELECT DB_Ver FROM dbStatus"));
        QCOMPARE(check.Fields(0).Text(), QStringLiteral("31A"));
        check.MoveNext();
        QVERIFY(check.Eof());
    }

    void errorsAndTransactions() {
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

        db.BeginTrans();
        db.Execute(QStringLiteral("INSERT INTO tblHome (CoName) VALUES ('Gone')"));
        db.Rollback();
        db.Rollback(); // a second rollback is harmless
        QVERIFY(db.OpenRecordset(QStringLiteral("SELECT * FROM tblHome")).Eof());
        db.BeginTrans();
        db.Execute(QStringLiteral("INSERT INTO tblHome (CoName) VALUES ('Kept')"));
        db.CommitTrans();
        QCOMPARE(db.OpenRecordset(QStringLiteral("SELECT CoName FROM tblHome")).Fields(0).Text(),
                 QStringLiteral("Kept"));

        // A second workstation holding the write lock: the statement waits, then fails.
        Database other = DBEngine::OpenDatabase(gDbPath);
        other.BeginTrans();
        QElapsedTimer t;
        t.start();
        try {
            db.Execute(QStringLiteral("UPDATE tblHome SET CoName = 'X'"));
            QFAIL("no lock error");
        } catch (const DbError& e) {
            QCOMPARE(e.Number(), int(DbErr::Locked));
        }
        QVERIFY(t.elapsed() >= DBEngine::BusyTimeoutMs() - 100);
        other.Rollback();
        db.Execute(QStringLiteral("UPDATE tblHome SET CoName = 'X'"));

        // The test seam fails one statement, once.
        Database::FailNextStatementContaining(QStringLiteral("tblHome"));
        QVERIFY_THROWS_EXCEPTION(DbError, db.Execute(QStringLiteral("DELETE FROM tblHome")));
        db.Execute(QStringLiteral("DELETE FROM tblHome"));
        QCOMPARE(db.RecordsAffected(), 1);
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

        {
            Database db = DBEngine::OpenDatabase(gDbPath);
            db.Execute(
                QStringLiteral("INSERT INTO tblStockItems (ItemID, MasterPNo) VALUES (7, 'P7')"));
        }
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
