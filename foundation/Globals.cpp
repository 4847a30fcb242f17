#include "foundation/Globals.h"

#include "foundation/Schema.h"

QString gAppPath;
QString gDbPath;
QString gUserCfgPath;
QString gRightsPath;
QString gWinUser;
QString gPcName;
QChar gDecimalSep = QLatin1Char('.');

bool gCanInventory = false;
bool gCanSales = false;
bool gCanPurchasing = false;
bool gCanContacts = false;
bool gCanLinks = false;
bool gCanUtilities = false;
bool gCanUserAdmin = false;

qint32 gCurrentItemID = 0;
quint8 gActiveGroup = 0;
quint8 gCustOrderMode = 0;
qint32 gCustOrderID = 0;
qint32 gCustInvoiceNo = 0;
int gContactType = 0;
qint32 gContactID = 0;
int gReportType = 0;

QString AppName() {
    return QStringLiteral("qstk3");
}

QString RightsConnectString() {
    return QStringLiteral(";DATABASE=") + gRightsPath + QStringLiteral(";PWD=") + RightsPassword();
}

void SetDataFolder(const QString& folder) {
    gAppPath = folder;
    while (gAppPath.size() > 1 && gAppPath.endsWith(QLatin1Char('/')))
        gAppPath.chop(1);
    gDbPath = gAppPath + QStringLiteral("/dbqst.dqx");
    gUserCfgPath = gAppPath + QStringLiteral("/usercfg.dqx");
    gRightsPath = gAppPath + QStringLiteral("/up.dqx");
}
