#include "maintenance/CompanyDetails.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Helpers.h"
#include "foundation/Settings.h"

CompanyDetails LoadCompanyDetails() {
    CompanyDetails d;
    d.home = LoadHomeDetails();
    d.logoFile = ReadSharedLogoPath();
    return d;
}

void SaveCompanyDetails(const CompanyDetails& details) {
    QVariantList values{ApostropheOut(details.home.coName)};
    for (int i = 0; i < 8; ++i)
        values << ApostropheOut(details.home.addressLines.value(i));

    {
        Database db = DBEngine::OpenDatabase(gDbPath);
        // Taken at once, so that two workstations saving onto an empty table queue here and the
        // second one updates the row the first inserted.
        db.BeginTrans();
        try {
            // No WHERE: the table holds the one row of the firm.
            db.Execute(QStringLiteral("UPDATE tblHome SET CoName=?, Add1=?, Add2=?, Add3=?, "
                                      "Add4=?, Add5=?, Add6=?, Tel1=?, Fax1=?"),
                       values);
            if (db.RecordsAffected() == 0)
                db.Execute(QStringLiteral("INSERT INTO tblHome (CoName, Add1, Add2, Add3, Add4, "
                                          "Add5, Add6, Tel1, Fax1) VALUES (?,?,?,?,?,?,?,?,?)"),
                           values);
            db.CommitTrans();
        } catch (...) {
            db.Rollback();
            throw;
        }
    }

    const QString& path = details.logoFile;
    SharedSettingsScope shared;
    if (path.size() > kLogoPathSplit)
        SaveDefault(QStringLiteral("Image_1"), path.left(kLogoPathSplit), path.mid(kLogoPathSplit));
    else
        SaveDefault(QStringLiteral("Image_1"), path, QString());
}
