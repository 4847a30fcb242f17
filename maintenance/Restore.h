// Restore: a .bkp file put back over the live business file, after which the program starts
// itself afresh and ends, since it cannot go on with the old data in memory.
#pragma once

#include "maintenance/Maintenance.h"

#include <QString>
#include <functional>

// What the restore tab holds when its button is pressed.
struct RestoreRequest {
    QString folder;   // Dir2
    QString fileName; // txtFname2: the backup's name with its extension
};

enum class RestoreEnd {
    NoFileName,      // nothing chosen: told so
    NotADatabase,    // the file is no business database: told so, the live file untouched
    CouldNotRestore, // the copy over the live file failed: told so
    Restarted,       // restored; a new program started and this one ended
};

// Checks the backup named in a connect text (";DATABASE=<path>;") by opening it as the business
// database. Throws DbError when it is not one.
void CheckBackupFile(const QString& connect);

// The progress bar runs from 1 to 6. On success this does not return unless the program's end
// has been replaced (SetRestartHooks).
RestoreEnd RestoreDatabase(const RestoreRequest& request, const RunDisplay& display = {});

// How the program starts itself again, and how it ends at once. Empty members restore the
// defaults: a detached start of ProgramPath() and an end without any clean-up.
struct RestartHooks {
    std::function<void(const QString& program)> start;
    std::function<void()> end;
};
void SetRestartHooks(const RestartHooks& hooks);

// The program file beside the data files.
QString ProgramPath();
