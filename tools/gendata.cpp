// qstk3-gendata DIR [--items N] [--seed S]: writes the three data files into DIR and fills the
// business file with generated rows at the scale of N items.
#include "tools/GenData.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

namespace {
int usage(QTextStream& err) {
    err << "usage: qstk3-gendata DIR [--items N] [--seed S]\n"
           "Writes dbqst.dqx, usercfg.dqx and up.dqx into DIR and fills dbqst.dqx with generated\n"
           "rows at the scale of N items (default 100000). The same N and S (default 1) give the\n"
           "same rows on the same day. Existing files are never overwritten.\n";
    return 2;
}
} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = app.arguments();
    QString dir;
    GenDataOptions options;
    for (int i = 1; i < args.size(); ++i) {
        const QString& a = args[i];
        bool ok = true;
        if (a == QLatin1String("--items") && i + 1 < args.size()) {
            options.items = args[++i].toInt(&ok);
            ok = ok && options.items > 0;
        } else if (a == QLatin1String("--seed") && i + 1 < args.size()) {
            options.seed = args[++i].toUInt(&ok);
        } else if (!a.startsWith(QLatin1Char('-')) && dir.isEmpty()) {
            dir = a;
        } else {
            ok = false;
        }
        if (!ok)
            return usage(err);
    }
    if (dir.isEmpty())
        return usage(err);

    QElapsedTimer timer;
    timer.start();
    options.progress = [&](const QString& stage) {
        err << QStringLiteral("%1 s  %2\n").arg(timer.elapsed() / 1000.0, 6, 'f', 1).arg(stage);
        err.flush();
    };
    GenDataCounts c;
    QString why;
    if (!GenerateData(dir, options, &c, &why)) {
        err << "qstk3-gendata: " << why << "\n";
        return 1;
    }
    out << "items " << c.items << ", item suppliers " << c.itemSuppliers << ", comments "
        << c.comments << "\n"
        << "suppliers " << c.suppliers << ", customers " << c.customers << ", locations "
        << c.locations << ", other contacts " << c.miscContacts << "\n"
        << "purchase orders " << c.purchaseOrders << " with " << c.purchaseOrderRows
        << " rows, basket rows " << c.basketRows << "\n"
        << "customer orders " << c.customerOrders << " with " << c.customerOrderRows
        << " rows, invoices " << c.invoices << " with " << c.invoiceRows << " rows\n"
        << "history rows " << c.historyRows << ", document links " << c.links
        << ", parts-list rows " << c.usedInRows << ", allocations " << c.allocationRows << "\n"
        << QStringLiteral("written in %1 s\n").arg(timer.elapsed() / 1000.0, 0, 'f', 1);
    return 0;
}
