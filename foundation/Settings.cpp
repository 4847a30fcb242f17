#include "foundation/Settings.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"

#include <exception>

void SaveDefault(const QString& paraName, const QString& value1, const QString& value2) {
    const QString pc = ApostropheOut(gPcName);
    const QString app = ApostropheOut(AppName());
    const QString name = ApostropheOut(paraName);
    const QString v1 = ApostropheOut(value1);
    const QString v2 = ApostropheOut(value2);

    Database db = DBEngine::OpenDatabase(gUserCfgPath);
    // Each value is written with a blank before its closing quote; GetDefault trims it away.
    db.Execute(QStringLiteral("UPDATE tbldefaults") + QStringLiteral(" SET ParaVal_1='") + v1 +
               QStringLiteral(" ',") + QStringLiteral(" ParaVal_2='") + v2 + QStringLiteral(" '") +
               QStringLiteral(" WHERE PcName='") + pc + QStringLiteral("'") +
               QStringLiteral(" AND AppName='") + app + QStringLiteral("'") +
               QStringLiteral(" AND ParaName='") + name + QStringLiteral("'"));
    if (db.RecordsAffected() < 1) {
        db.Execute(QStringLiteral("INSERT INTO tbldefaults") +
                   QStringLiteral(" (Pcname, AppName, ParaName, ParaVal_1, ParaVal_2)") +
                   QStringLiteral(" VALUES ") + QStringLiteral(" ('") + pc + QStringLiteral("','") +
                   app + QStringLiteral("','") + name + QStringLiteral("','") + v1 +
                   QStringLiteral(" ','") + v2 + QStringLiteral(" ')"));
    }
    db.Close();
}

void GetDefault(const QString& paraName, QString& value1, QString& value2) {
    try {
        Database db = DBEngine::OpenDatabase(gUserCfgPath);
        Recordset rs = db.OpenRecordset(
            QStringLiteral("SELECT * FROM tblDefaults") + QStringLiteral(" WHERE PcName='") +
            ApostropheOut(gPcName) + QStringLiteral("' AND AppName='") + ApostropheOut(AppName()) +
            QStringLiteral("' AND ParaName='") + ApostropheOut(paraName) + QStringLiteral("'"));
        if (!rs.Eof()) {
            const QString v1 = rs.Fields(QStringLiteral("ParaVal_1")).Text().trimmed();
            const QString v2 = rs.Fields(QStringLiteral("ParaVal_2")).Text().trimmed();
            value1 = v1;
            value2 = v2;
        }
    } catch (const std::exception&) {
        // A missing or unreadable store leaves the caller's defaults in place.
    }
}

SharedSettingsScope::SharedSettingsScope() : mSavedPcName(gPcName) {
    gPcName = QString::fromLatin1(kGlobalAllPc);
}

SharedSettingsScope::~SharedSettingsScope() {
    gPcName = mSavedPcName;
}

QString ReadSharedLogoPath() {
    QString first = QStringLiteral("0");
    QString second;
    {
        SharedSettingsScope shared;
        GetDefault(QStringLiteral("Image_1"), first, second);
    }
    if (first == QLatin1String("0"))
        first.clear();
    return first + second;
}
