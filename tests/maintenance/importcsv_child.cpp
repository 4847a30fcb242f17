// A second workstation for the import tests: imports one file into the data folder it is given,
// once a start file appears, and prints each row's status on a line of its own.
// importcsv_child DATAFOLDER CSVFILE STARTFILE BATCHMS
#include "foundation/Globals.h"
#include "tests/maintenance/ImportCsvFixture.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>
#include <QThread>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 5)
        return 2;
    SetDataFolder(args[1]);
    FlexCells grid;
    if (!ReadCsv(args[2], grid))
        return 3;
    for (int waited = 0; !QFileInfo::exists(args[3]); waited += 2) {
        if (waited > 20000)
            return 4;
        QThread::msleep(2);
    }
    ImportCsvInput in = AllColumns();
    in.batchMs = args[4].toInt();
    try {
        ImportCsv(in, grid); // the closing box is answered by the silent default
    } catch (const DbError& e) {
        QTextStream(stderr) << e.Description() << '\n';
        return 5;
    }
    QTextStream out(stdout);
    for (int r = 1; r < grid.Rows(); ++r)
        out << grid.TextMatrix(r, 0) << '\n';
    return 0;
}
