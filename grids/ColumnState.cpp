#include "grids/ColumnState.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"

#include <exception>

// The texts go into these statements as they are: a quote in a key or computer name makes the
// statement fail, and the failure is swallowed like any other.

QList<QPair<QString, int>> ReadColumnState(const QString& gridName) {
    QList<QPair<QString, int>> widths;
    try {
        Database db = DBEngine::OpenDatabase(gUserCfgPath);
        Recordset rs =
            db.OpenRecordset(QStringLiteral("SELECT * FROM ColStat WHERE PcName='") + gPcName +
                             QStringLiteral("' AND AppName='") + AppName() +
                             QStringLiteral("' AND GridName='") + gridName + QStringLiteral("' "));
        while (!rs.Eof()) {
            // A bad row is passed over; the others still count.
            try {
                widths.append({rs.Fields(QStringLiteral("ColName")).Text(),
                               int(rs.Fields(QStringLiteral("ColWidth")).Long())});
            } catch (const std::exception&) {
            }
            rs.MoveNext();
        }
    } catch (const std::exception&) {
    }
    return widths;
}

void SaveColumnState(const QString& gridName, const QString& colName, int newWidth) {
    try {
        Database db = DBEngine::OpenDatabase(gUserCfgPath);
        bool updated = false;
        try {
            db.Execute(QStringLiteral("UPDATE ColStat SET ColWidth=") + QString::number(newWidth) +
                       QStringLiteral(" WHERE PcName='") + gPcName +
                       QStringLiteral("' AND AppName='") + AppName() +
                       QStringLiteral("' AND Gridname='") + gridName +
                       QStringLiteral("' AND ColName='") + colName + QStringLiteral("'"));
            updated = db.RecordsAffected() >= 1;
        } catch (const std::exception&) {
            // Resume next: RecordsAffected stays below 1 and the insert is tried.
        }
        if (!updated) {
            db.Execute(QStringLiteral("INSERT INTO ColStat (PcName, AppName, Gridname, ColName, "
                                      "ColWidth) VALUES  ( '") +
                       gPcName + QStringLiteral("','") + AppName() + QStringLiteral("','") +
                       gridName + QStringLiteral("','") + colName + QStringLiteral("',") +
                       QString::number(newWidth) + QStringLiteral(")"));
        }
        db.Close();
    } catch (const std::exception&) {
        // The width is simply not remembered.
    }
}
