// The "Database Maintenance" tab of the utilities window: re-sync, compact and backup.
#pragma once

#include "maintenance/BackupTab.h"

class QCheckBox;

class MaintenancePanel : public BackupTab {
    Q_OBJECT
public:
    // Fills `frame`, the tab's frame.
    explicit MaintenancePanel(QFrame* frame);

    void cmdBackup_Click();

    QCheckBox* chkCheckDB;
    QCheckBox* chkCompact;
    QCheckBox* chkbackupDB;
    QLineEdit* txtFname;
    DriveListBox* Drive1;
    DirListBox* Dir1;
    FileListBox* File1;
    QPushButton* cmdBackup;
    QLabel* l1;
    QProgressBar* pbMaintenance;
    QPushButton* cmdCloseUtilities;

private:
    void chkbackupDB_Click(bool checked);
};
