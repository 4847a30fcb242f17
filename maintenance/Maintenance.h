// Database maintenance: the re-sync of the stored allocated and on-order quantities, the
// compaction of the business file and its backup to a .bkp file, run by one button.
#pragma once

#include <QString>
#include <functional>

// What a run shows while it goes, and how it waits. The window gives its label and progress
// bar; an empty member shows nothing, and an empty pause waits with Pause.
struct RunDisplay {
    std::function<void(const QString&)> label;
    std::function<void(int minimum, int maximum)> range;
    std::function<void(int)> progress;
    std::function<void(int milliseconds)> pause;

    void Label(const QString& text) const;
    void Range(int minimum, int maximum) const;
    void Progress(int value) const;
    void Wait(int milliseconds) const;
};

// The maintenance progress bar runs from 0 to this, in tens.
constexpr int kMaintenanceProgressMax = 100;

// What the maintenance tab holds when its button is pressed.
struct MaintenanceRequest {
    bool reSync = false;  // chkCheckDB
    bool compact = false; // chkCompact
    bool backup = false;  // chkbackupDB
    QString folder;       // Dir1: where the backup goes
    QString fileName;     // txtFname: the backup's name without ".bkp"
};

enum class MaintenanceEnd {
    NothingChosen,   // no task ticked: nothing done
    NoFileName,      // a backup without a name: told so
    DatabaseMissing, // the business file is gone: told so
    Finished,        // through the clear-up, whether every task succeeded or not
    Abandoned,       // a failure the user chose not to retry; the progress is back at 0
};

// Runs the ticked tasks on gDbPath. The re-sync runs alone; compact and backup may run together,
// and a backup alone also compacts. Failures are told by how far the run had come, and the user
// may try again from the start.
MaintenanceEnd RunMaintenance(const MaintenanceRequest& request, const RunDisplay& display = {});

// Recounts tblStockItems.AllocQty from tblAllocDetail and OnOrderQty from tblPODetail, every
// quantity rounded down to a whole number, in one transaction on the file at `dbPath`. Shows the
// re-sync's notice first. Throws DbError on failure, with every figure as it was.
void ReSyncQuantities(const QString& dbPath, const RunDisplay& display = {});

// A file in a folder the way the file lists give them: the folder without its trailing
// separator, "/", the name.
QString PathInFolder(const QString& folder, const QString& name);

// The three working files of a run started at `secondsSinceMidnight`, in the data folder.
struct MaintenanceFiles {
    QString safety;    // the copy to fall back on
    QString working;   // the copy that is compacted
    QString compacted; // the compacted copy
};
MaintenanceFiles MaintenanceFilesFor(int secondsSinceMidnight);
// Deletes the working files of maintenance runs (of any second) left in the data folder.
void RemoveMaintenanceFiles();
