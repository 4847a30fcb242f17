// The "Restore" tab of the utilities window: a backup put back over the live file.
#pragma once

#include "maintenance/BackupTab.h"

class QCheckBox;

class RestorePanel : public BackupTab {
    Q_OBJECT
public:
    // Fills `frame`, the tab's frame.
    explicit RestorePanel(QFrame* frame);

    void cmdRestoreDB_Click();

    QCheckBox* chkRestoreIsOK;
    DriveListBox* Drive2;
    DirListBox* Dir2;
    FileListBox* File2;
    QLineEdit* txtFname2;
    QPushButton* cmdRestoreDB;
    QLabel* l2;
    QProgressBar* pbRestore;
};
