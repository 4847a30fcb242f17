// The structure of the three data files at the current version, in one place.
#pragma once

#include <QString>
#include <QStringList>

class Database;

QString CurrentDbVersion(); // "32A"
QString RightsPassword();

// CREATE statements, in order, for each file.
QStringList BusinessSchema(); // dbqst.dqx
QStringList UserCfgSchema();  // usercfg.dqx
QStringList RightsSchema();   // up.dqx
// Indexes on key, join and filter columns of dbqst.dqx.
QStringList BusinessIndexes();

// Writes the three empty files of the current structure into `folder`. Refuses (returns false
// with a reason) when any of them exists already.
bool CreateDataFiles(const QString& folder, QString* error = nullptr);
