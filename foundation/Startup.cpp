#include "foundation/Startup.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/Rights.h"
#include "foundation/Upgrades.h"

#include <QLocale>
#include <QSysInfo>
#include <QtGlobal>

QString ReadWinUser() {
    // The login name, as a buffer of 25 characters (24 and the terminating NUL) holds it.
    QString name = qEnvironmentVariable("USER");
    if (name.isEmpty())
        name = qEnvironmentVariable("USERNAME");
    if (name.isEmpty())
        name = qEnvironmentVariable("LOGNAME");
    const int nul = int(name.indexOf(QChar(0)));
    if (nul >= 0)
        name.truncate(nul);
    return name.left(24);
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
