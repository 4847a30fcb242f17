// The "Database Maintenance" tab of the utilities window: re-sync, compact and backup.
#pragma once

#include <QWidget>
#include <memory>

struct BackupPicker;
class DirListBox;
class DriveListBox;
class FileListBox;
class QCheckBox;
class QFrame;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

class MaintenancePanel : public QWidget {
    Q_OBJECT
public:
    // Fills `frame`, the tab's frame.
    explicit MaintenancePanel(QFrame* frame);
    ~MaintenancePanel() override;

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
    std::unique_ptr<BackupPicker> mPicker;
};
