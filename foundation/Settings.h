// Workstation settings in tblDefaults of usercfg.dqx, per gPcName and program (AppName()).
// A setting shared by every workstation is saved and read under the PcName "GLOBAL_ALL_PC": a
// SharedSettingsScope sets gPcName to that name for the call and puts the workstation's name back
// however the scope ends.
#pragma once

#include <QString>

inline const char* const kGlobalAllPc = "GLOBAL_ALL_PC";

// Writes the two values of a setting: update first, insert when no row was changed. Each value is
// stored with one trailing blank. Engine errors reach the caller.
void SaveDefault(const QString& paraName, const QString& value1, const QString& value2);

// Fills the two values from the stored row, trimmed. A missing file, table or row, or any engine
// error, leaves them as they were; nothing is ever shown.
void GetDefault(const QString& paraName, QString& value1, QString& value2);

// While it lives, settings are read and written under "GLOBAL_ALL_PC".
class SharedSettingsScope {
public:
    SharedSettingsScope();
    ~SharedSettingsScope();
    SharedSettingsScope(const SharedSettingsScope&) = delete;
    SharedSettingsScope& operator=(const SharedSettingsScope&) = delete;

private:
    QString mSavedPcName;
};

// The logo path every workstation shares ("Image_1" under "GLOBAL_ALL_PC"): the first value
// followed by the second; a first value of "0", or no setting, reads as an empty path.
QString ReadSharedLogoPath();
