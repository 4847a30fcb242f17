// Two workstations invoicing the same order at once. The test binary runs itself twice with
// "--invoice-worker", each run invoicing the order round after round, as a second process on the
// shared file.
#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "sales/CustOrder.h"
#include "sales/Invoicing.h"
#include "tests/sales/SalesFixture.h"
#include "tests/support/TestSupport.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>
#include <cstdio>

using namespace sales_fixture;

namespace {
constexpr int kRounds = 50;
constexpr int kRows = 5;
constexpr qint32 kOrder = 1;

// One workstation: loads the order for invoicing and invoices a few of each row, `rounds` times.
// A round that meets the other's lock past the busy timeout fails as a whole and the next one
// goes on; any other failure ends the run. Prints "done N locked M".
int invoiceWorker(const QString& folder, int rounds, int pattern) {
    UseTestLocale();
    SetDataFolder(folder);
    SetToday(QDate(2026, 11, 23));
    int done = 0;
    int locked = 0;
    for (int round = 0; round < rounds; ++round) {
        try {
            CustOrderSheet sheet;
            FormLoadSheet(sheet, OrderMode::InvoiceOrder, kOrder);
            for (int r = 0; r < sheet.rows.size(); ++r)
                sheet.rows[r][OrderCol::InvoiceQty] =
                    QString::number(1 + (round + r + pattern) % 3);
            if (!InvoiceSavedOrder(sheet))
                return 3;
            ++done;
        } catch (const DbError& e) {
            if (e.Number() != DbErr::Locked) {
                std::fprintf(stderr, "%d %s\n", e.Number(), qPrintable(e.Description()));
                return 2;
            }
            ++locked;
        }
    }
    std::printf("done %d locked %d\n", done, locked);
    return 0;
}

QList<qint64> numbers(const QString& sql) {
    QList<qint64> out;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(sql);
    for (; !rs.Eof(); rs.MoveNext())
        for (int c = 0; c < rs.FieldCount(); ++c)
            out << qRound64(rs.Fields(c).Double() * 100);
    return out;
}
} // namespace

class TestInvoicingWorkstations : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    void twoWorkstationsInvoiceOneOrder() {
        TestData data;
        const qint32 acme = addCustomer(QStringLiteral("Acme"), 0);
        addOrder(kOrder, acme, QString(), 0);
        for (int i = 1; i <= kRows; ++i) {
            addItem(i, QStringLiteral("P-%1").arg(i), QStringLiteral("Part"), 1);
            addOrderRow(kOrder, i, 100000, 0, 1, 1);
        }

        QProcess one, two;
        for (QProcess* p : {&one, &two}) {
            const QString pattern = p == &one ? QStringLiteral("0") : QStringLiteral("1");
            p->start(QCoreApplication::applicationFilePath(),
                     {QStringLiteral("--invoice-worker"), data.folder(), QString::number(kRounds),
                      pattern});
        }
        int done = 0;
        for (QProcess* p : {&one, &two}) {
            QVERIFY(p->waitForFinished(240000));
            const QString out = QString::fromLatin1(p->readAllStandardOutput()).trimmed();
            QVERIFY2(p->exitStatus() == QProcess::NormalExit && p->exitCode() == 0,
                     p->readAllStandardError().constData());
            const QStringList words = out.split(QLatin1Char(' '));
            QCOMPARE(words.size(), 4);
            QCOMPARE(words[1].toInt() + words[3].toInt(), kRounds);
            QVERIFY(words[1].toInt() > 0);
            done += words[1].toInt();
        }

        // Every invoiced round left a despatch row and a history row per order row, whichever
        // despatch they went under and whatever numbers the two workstations shared.
        QCOMPARE(SqlFirst("SELECT COUNT(*) FROM tblDespDetail").toInt(), done * kRows);
        QCOMPARE(SqlFirst("SELECT COUNT(*) FROM tblItemHistory WHERE HistType='SHIP'").toInt(),
                 done * kRows);
        QVERIFY(SqlFirst("SELECT COUNT(*) FROM tblDespatch").toInt() >= done);
        // Per order row, ShippedQty is the sum of its despatch rows.
        const QList<qint64> shipped = numbers(
            "SELECT ShippedQty, (SELECT TOTAL(DespQty) FROM tblDespDetail WHERE "
            "OrderDetailRowID = tblCustOrderDetail.RowID) FROM tblCustOrderDetail ORDER BY RowID");
        QCOMPARE(shipped.size(), 2 * kRows);
        for (int i = 0; i < kRows; ++i) {
            QVERIFY(shipped[2 * i] > 0);
            QCOMPARE(shipped[2 * i], shipped[2 * i + 1]);
        }
        // Per item, the fall of the stock is its "SHIP" total.
        const QList<qint64> stock =
            numbers("SELECT 40 - Qty, (SELECT TOTAL(HistQty) FROM tblItemHistory WHERE "
                    "HistType = 'SHIP' AND StockID = ItemID) FROM tblStockItems ORDER BY ItemID");
        QCOMPARE(stock.size(), 2 * kRows);
        for (int i = 0; i < kRows; ++i)
            QCOMPARE(stock[2 * i], stock[2 * i + 1]);
    }
};

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc == 5 && qstrcmp(argv[1], "--invoice-worker") == 0)
        return invoiceWorker(QString::fromLocal8Bit(argv[2]), QByteArray(argv[3]).toInt(),
                             QByteArray(argv[4]).toInt());
    TestInvoicingWorkstations test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "test_invoicing_workstations.moc"
