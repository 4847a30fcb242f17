// The table of users and their rights in the rights file (tblRights), as edited on the user tab
// of the utilities window. The table is kept but drives nothing: start-up grants every right to
// whoever is logged on.
#pragma once

#include <QList>
#include <QString>
#include <array>

// The seven stored rights in column order Pm2..Pm8, with the grid key and caption of each.
struct UserRightColumn {
    const char* column; // "Pm2"
    const char* key;    // "Inven"
    const char* caption;
};
const std::array<UserRightColumn, 7>& UserRightColumns();

// One user as the grid shows it: a tick means the right is granted.
struct UserRightsRow {
    QString userName;
    std::array<bool, 7> granted{}; // Pm2..Pm8
};

// Reads every user, ordered by name. A stored value above 0 is a refused right (unticked);
// 0 grants it. Engine errors (a wrong password among them) are not trapped.
QList<UserRightsRow> LoadUserRights();

// Rewrites the whole table from the grid rows. The user at the keyboard (gWinUser) always keeps
// "Utils" and "UAdmin"; whoever has "UAdmin" also gets "Utils".
void SaveUserRights(const QList<UserRightsRow>& rows);
