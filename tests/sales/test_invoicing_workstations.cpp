// Two workstations invoicing the same order at once. The test binary runs itself twice with
// "--invoice-worker", each run invoicing the order round after round, as a second process on the
// shared file.
#include "sales/Invoicing.h"
#include "tests/sales/SalesFixture.h"

#include <QCoreApplication>
#include <QProcess>
#include <cstdio>

using namespace sales_fixture;

namespace {
constexpr int kRounds = 50;
constexpr int kRows = 5;

// One workstation: loads order 1 for invoicing and invoices a few of each row, `rounds` times.
// A round that meets the other's lock past the busy timeout fails as a whole and the next one
// goes on; any other failure ends the run. Prints the rounds done.
int invoiceWorker(const QString& folder, int rounds, int pattern) {
    UseTestLocale();
    SetDataFolder(folder);
    SetToday(QDate(2026, 11, 23));
    int done = 0;
    for (int round = 0; round < rounds; ++round) {
        try {
            CustOrderSheet sheet;
            FormLoadSheet(sheet, OrderMode::InvoiceOrder, 1);
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
        }
    }
    std::printf("%d\n", done);
    return 0;
}
} // namespace

class TestInvoicingWorkstations : public QObject {
    Q_OBJECT
private slots:
    void init() { UseTestLocale(); }

    void twoWorkstationsInvoiceOneOrder() {
        TestData data;
        addOrder(1, addCustomer("Acme", 0));
        for (int i = 1; i <= kRows; ++i) {
            addItem(i, QStringLiteral("P-%1").arg(i), 1);
            addOrderRow(1, i, 100000, 0, 1, 1);
        }
        QProcess one, two;
        for (QProcess* p : {&one, &two})
            p->start(QCoreApplication::applicationFilePath(),
                     {"--invoice-worker", data.folder(), QString::number(kRounds),
                      p == &one ? "0" : "1"});
        int done = 0;
        for (QProcess* p : {&one, &two}) {
            QVERIFY(p->waitForFinished(240000));
            QVERIFY2(p->exitStatus() == QProcess::NormalExit && p->exitCode() == 0,
                     p->readAllStandardError().constData());
            const int rounds = p->readAllStandardOutput().trimmed().toInt();
            QVERIFY(rounds > 0);
            done += rounds;
        }

        // Every round left a despatch row and a history row per order row, whichever despatch
        // they went under and whatever numbers the two shared; per order row ShippedQty is the
        // sum of its despatch rows, per item the fall of the stock its "SHIP" total.
        QCOMPARE(SqlRows("SELECT (SELECT COUNT(*) FROM tblDespDetail), (SELECT COUNT(*) FROM "
                         "tblItemHistory WHERE HistType='SHIP'), (SELECT COUNT(*) FROM "
                         "tblCustOrderDetail WHERE ShippedQty > 0 AND ShippedQty = (SELECT "
                         "TOTAL(DespQty) FROM tblDespDetail WHERE OrderDetailRowID = "
                         "tblCustOrderDetail.RowID)), (SELECT COUNT(*) FROM tblStockItems WHERE "
                         "40 - Qty = (SELECT TOTAL(HistQty) FROM tblItemHistory WHERE HistType = "
                         "'SHIP' AND StockID = ItemID))"),
                 QStringList(QStringLiteral("%1|%1|%2|%2").arg(done * kRows).arg(kRows)));
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
