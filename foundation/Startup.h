// The preparation that start-up does before the main window opens.
#pragma once

#include <QString>
#include <QStringList>

// The login name of the process's own account from the system (the environment's USER,
// USERNAME or LOGNAME only when the system has none), cut to 24 characters; the host name cut to
// 50.
QString ReadWinUser();
QString ReadPcName();
// A user name as the 25-character buffer of the system call holds it: up to a NUL, at most 24.
QString CutWinUser(const QString& name);
// The decimal separator of the current locale, read from 3 / 2 written as text.
QChar ReadDecimalSep();

// Steps 1 to 5 of start-up: paths from `appFolder`, user, rights, decimal separator, upgrades.
// Returns false when the upgrades failed and the program must end.
bool PrepareStartup(const QString& appFolder);

// The company details for the main window: name, then the address lines.
struct HomeDetails {
    QString coName;
    QStringList addressLines; // Add1..Add6, Tel1, Fax1
};
HomeDetails LoadHomeDetails();
