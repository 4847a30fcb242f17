// The "Restore" tab of the utilities window: a backup put back over the live file.
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

class RestorePanel : public QWidget {
    Q_OBJECT
public:
    // Fills `frame`, the tab's frame.
    explicit RestorePanel(QFrame* frame);
    ~RestorePanel() override;

    void cmdRestoreDB_Click();

    QCheckBox* chkRestoreIsOK;
    DriveListBox* Drive2;
    DirListBox* Dir2;
    FileListBox* File2;
    QLineEdit* txtFname2;
    QPushButton* cmdRestoreDB;
    QLabel* l2;
    QProgressBar* pbRestore;

private:
    void chkRestoreIsOK_Click(bool checked);
    std::unique_ptr<BackupPicker> mPicker;
};
