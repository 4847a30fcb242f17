#include "maintenance/DatabaseStatistics.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"

#include <QFileInfo>
#include <exception>

QString DatabaseSizeText(const QString& path) {
    const QFileInfo file(path);
    if (!file.exists())
        return QStringLiteral("<1 MBytes");
    const double megabytes = double(file.size()) / 1024.0 / 1024.0;
    return Format(megabytes, QStringLiteral("0.00")) + QStringLiteral(" MBytes");
}

qint64 CountHistoryRecords() {
    qint64 count = 0;
    try {
        Database db = DBEngine::OpenDatabase(gDbPath);
        Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM History"));
        if (rs.RecordCount() != 0) {
            rs.MoveLast();
            count = rs.RecordCount();
        }
    } catch (const std::exception&) {
        // No file or no History table: the count stays 0 and nothing is said.
    }
    return count;
}

QString PurgeHistoryMessage() {
    return QStringLiteral(
        "This utility simply purges old or unused history data from the database to free up "
        "some space. However, the database has not reached a critical size so nothing needs to "
        "be deleted yet.");
}
