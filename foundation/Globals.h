// Process-wide state shared by every window. Set during start-up or by the windows named.
#pragma once

#include <QString>
#include <QtGlobal>

extern QString gAppPath;     // folder of the executable, no trailing separator
extern QString gDbPath;      // gAppPath + "/dbqst.dqx"
extern QString gUserCfgPath; // gAppPath + "/usercfg.dqx"
extern QString gRightsPath;  // gAppPath + "/up.dqx"
extern QString gWinUser;     // login name, at most 24 characters
extern QString gPcName;      // host name, at most 50 characters
extern QChar gDecimalSep;    // decimal separator of the locale

extern bool gCanInventory;
extern bool gCanSales;
extern bool gCanPurchasing;
extern bool gCanContacts;
extern bool gCanLinks;
extern bool gCanUtilities;
extern bool gCanUserAdmin;

extern qint32 gCurrentItemID;
// Which button bar group is showing: 1 Inventory, 2 Addresses, 4 Purchasing, 7 Customer Orders,
// 8 Shortages, 10 Works Orders, 0 unknown.
extern quint8 gActiveGroup;
// Mode of the customer order window: 1 new, 2 edit, 3 invoice a saved order, 4 view an invoice.
extern quint8 gCustOrderMode;
extern qint32 gCustOrderID;
extern qint32 gCustInvoiceNo; // the InvoiceNo the customer order window opens in mode 4
extern int gContactType;
extern qint32 gContactID;
extern int gReportType;

// The application name under which settings are stored.
QString AppName();
// The password of the rights file and its connect string.
QString RightsConnectString();

// Sets gAppPath and the three file paths from a folder.
void SetDataFolder(const QString& folder);
