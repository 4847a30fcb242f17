// Helper of test_company: one workstation saving the company details.
//   qs-company-saver DATA_FOLDER NAME first SIGNAL_FILE DONE_FILE
//       just before writing a new tblHome row, creates SIGNAL_FILE and gives the other
//       workstation up to half a second (or until DONE_FILE exists) to act.
//   qs-company-saver DATA_FOLDER NAME second SIGNAL_FILE DONE_FILE
//       waits until SIGNAL_FILE exists, saves, then creates DONE_FILE.
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "maintenance/CompanyDetails.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <cstdio>

namespace {
bool waitFor(const QString& file, int ms) {
    const QDeadlineTimer deadline(ms);
    while (!QFileInfo::exists(file)) {
        if (deadline.hasExpired())
            return false;
        QThread::usleep(200);
    }
    return true;
}

void touch(const QString& file) {
    QFile f(file);
    if (f.open(QIODevice::WriteOnly))
        f.close();
}
} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 6)
        return 2;
    const QString& name = args[2];
    const QString& role = args[3];
    SetDataFolder(args[1]);
    gPcName = QStringLiteral("PC-") + name;
    CompanyDetails d;
    d.home.coName = name;
    for (int i = 1; i <= 8; ++i)
        d.home.addressLines << name + QStringLiteral(" line ") + QString::number(i);
    d.logoFile = QStringLiteral("/logos/") + name + QStringLiteral(".png");

    if (role == QLatin1String("first")) {
        const QString signal = args[4];
        const QString done = args[5];
        Database::BeforeNextStatementContaining(QStringLiteral("INSERT INTO tblHome"),
                                                [signal, done] {
                                                    touch(signal);
                                                    waitFor(done, 500);
                                                });
    } else if (role == QLatin1String("second")) {
        if (!waitFor(args[4], 20000))
            return 3;
    } else {
        return 2;
    }
    try {
        SaveCompanyDetails(d);
    } catch (const DbError& e) {
        std::fprintf(stderr, "%d %s\n", e.Number(), qPrintable(e.Description()));
        return 1;
    }
    if (role == QLatin1String("second"))
        touch(args[5]);
    return 0;
}
