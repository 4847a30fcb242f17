// qstk3-newdata DIR: writes the three empty data files of the current structure into DIR.
#include "foundation/Schema.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream err(stderr);
    const QStringList args = app.arguments();
    if (args.size() != 2 || args[1].startsWith(QLatin1Char('-'))) {
        err << "usage: qstk3-newdata DIR\n"
               "Writes dbqst.dqx, usercfg.dqx and up.dqx, empty, into DIR. Existing files are "
               "never overwritten.\n";
        return 2;
    }
    QString why;
    if (!CreateDataFiles(args[1], &why)) {
        err << "qstk3-newdata: " << why << "\n";
        return 1;
    }
    return 0;
}
