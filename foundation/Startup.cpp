#include "foundation/Startup.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/Rights.h"
#include "foundation/Upgrades.h"

#include <QLocale>
#include <QSysInfo>
#include <QtGlobal>

#ifdef Q_OS_WIN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <lmcons.h>
#include <windows.h>
#else
#include <cerrno>
#include <pwd.h>
#include <unistd.h>
#include <vector>
#endif

namespace {
// The login name of the account the process runs under, as the system keeps it; "" when the
// system cannot tell.
QString accountName() {
#ifdef Q_OS_WIN
    wchar_t buffer[UNLEN + 1];
    DWORD size = UNLEN + 1;
    if (GetUserNameW(buffer, &size) && size > 0)
        return QString::fromWCharArray(buffer, int(size) - 1);
    return QString();
#else
    long size = sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(size_t(size > 0 ? size : 16384));
    passwd entry{};
    passwd* found = nullptr;
    while (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE)
        buffer.resize(buffer.size() * 2);
    return found && found->pw_name ? QString::fromLocal8Bit(found->pw_name) : QString();
#endif
}
} // namespace

QString CutWinUser(const QString& name) {
    // As a buffer of 25 characters (24 and the terminating NUL) holds it.
    QString cut = name;
    const int nul = int(cut.indexOf(QChar(0)));
    if (nul >= 0)
        cut.truncate(nul);
    return cut.left(24);
}

QString ReadWinUser() {
    QString name = accountName();
    // Only when the system has no name for the account: the environment's.
    for (const char* variable : {"USER", "USERNAME", "LOGNAME"})
        if (name.isEmpty())
            name = qEnvironmentVariable(variable);
    return CutWinUser(name);
}

QString ReadPcName() {
    return QSysInfo::machineHostName().trimmed().left(50);
}

QChar ReadDecimalSep() {
    const QString text = QLocale().toString(3.0 / 2.0);
    return text.size() > 1 ? text.at(1) : QLatin1Char('.');
}

bool PrepareStartup(const QString& appFolder) {
    SetDataFolder(appFolder);
    gWinUser = ReadWinUser();
    GrantAllRights();
    gDecimalSep = ReadDecimalSep();
    return RunUpgrades();
}

HomeDetails LoadHomeDetails() {
    HomeDetails h;
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(QStringLiteral("SELECT * FROM tblHome"));
    if (!rs.Eof()) {
        h.coName = rs.Fields(QStringLiteral("CoName")).Text();
        for (const char* f : {"Add1", "Add2", "Add3", "Add4", "Add5", "Add6", "tel1", "fax1"})
            h.addressLines << rs.Fields(QString::fromLatin1(f)).Text();
    }
    return h;
}
