#include "foundation/UserRights.h"

#include "foundation/DbEngine.h"
#include "foundation/Dialect.h"
#include "foundation/Globals.h"

namespace {
Database OpenRightsFile() {
    return DBEngine::OpenDatabase(QString(), false, false, RightsConnectString());
}
} // namespace

const std::array<UserRightColumn, 7>& UserRightColumns() {
    static const std::array<UserRightColumn, 7> columns = {{
        {"Pm2", "Inven", "Inventory"},
        {"Pm3", "Sales", "Sales"},
        {"Pm4", "Purchasing", "Purchasing"},
        {"Pm5", "Contacts", "Contacts"},
        {"Pm6", "HLinks", "HLinks"},
        {"Pm7", "Utils", "Utils"},
        {"Pm8", "UAdmin", "UAdmin"},
    }};
    return columns;
}

QList<UserRightsRow> LoadUserRights() {
    QList<UserRightsRow> rows;
    Database db = OpenRightsFile();
    Recordset rs =
        db.OpenRecordset(QStringLiteral("SELECT * ") + QStringLiteral(" FROM tblRights") +
                         QStringLiteral(" ORDER BY UserName"));
    const auto& columns = UserRightColumns();
    while (!rs.Eof()) {
        UserRightsRow row;
        row.userName = rs.Fields(QStringLiteral("UserName")).Text();
        for (size_t i = 0; i < columns.size(); ++i)
            row.granted[i] = !(rs.Fields(QLatin1String(columns[i].column)).Double() > 0);
        rows << row;
        rs.MoveNext();
    }
    return rows;
}

void SaveUserRights(const QList<UserRightsRow>& rows) {
    Database db = OpenRightsFile();
    db.Execute(QStringLiteral("DELETE FROM tblRights"));
    for (const UserRightsRow& row : rows) {
        // Bytes 2..8 of the stored row: 0 grants the right, 1 refuses it.
        std::array<int, 9> pm{};
        for (int b = 2; b <= 8; ++b)
            pm[b] = row.granted[b - 2] ? 0 : 1;
        if (row.userName == gWinUser) {
            pm[7] = 0;
            pm[8] = 0;
        }
        if (pm[8] == 0)
            pm[7] = 0;
        QString sql = QStringLiteral("INSERT INTO tblRights ") +
                      QStringLiteral("(UserName, Pm2, Pm3, Pm4, Pm5, Pm6, Pm7, Pm8) VALUES ") +
                      QStringLiteral("(") + SqlText(row.userName) + QStringLiteral(",");
        for (int b = 2; b <= 8; ++b) {
            sql += QString::number(pm[b]);
            if (b < 8)
                sql += QLatin1Char(',');
        }
        sql += QLatin1Char(')');
        db.Execute(sql);
    }
}
