// Workstation settings in tblDefaults of usercfg.dqx, per gPcName and program (AppName()).
// A setting shared by every workstation is saved and read under the PcName "GLOBAL_ALL_PC": the
// caller keeps gPcName in a local, sets it to "GLOBAL_ALL_PC", calls SaveDefault or GetDefault and
// sets it back at once.
#pragma once

#include <QString>

inline const char* const kGlobalAllPc = "GLOBAL_ALL_PC";

// Writes the two values of a setting: update first, insert when no row was changed. Each value is
// stored with one trailing blank. Engine errors reach the caller.
void SaveDefault(const QString& paraName, const QString& value1, const QString& value2);

// Fills the two values from the stored row, trimmed. A missing file, table or row, or any engine
// error, leaves them as they were; nothing is ever shown.
void GetDefault(const QString& paraName, QString& value1, QString& value2);
