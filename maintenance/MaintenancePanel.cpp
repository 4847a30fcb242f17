#include "maintenance/MaintenancePanel.h"

#include "foundation/TextBoxRules.h"
#include "maintenance/FileLists.h"
#include "maintenance/Maintenance.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <tuple>

MaintenancePanel::MaintenancePanel(QFrame* frame)
    : BackupTab(frame, QStringLiteral("MaintenancePanel"), QStringLiteral("l1"),
                QStringLiteral("pbMaintenance"), 0, kMaintenanceProgressMax) {
    l1 = mLabel;
    pbMaintenance = mBar;
    auto* tasks = new QGroupBox(QStringLiteral("Tasks"), this);
    tasks->setObjectName(QStringLiteral("fraTasks"));
    chkCheckDB = new QCheckBox(QStringLiteral("Re-Sync"), tasks);
    chkCheckDB->setObjectName(QStringLiteral("chkCheckDB"));
    chkCompact = new QCheckBox(QStringLiteral("Compact/Compress"), tasks);
    chkCompact->setObjectName(QStringLiteral("chkCompact"));
    chkbackupDB = new QCheckBox(QStringLiteral("Backup"), tasks);
    chkbackupDB->setObjectName(QStringLiteral("chkbackupDB"));
    auto* tasksLay = new QVBoxLayout(tasks);
    tasksLay->addWidget(chkCheckDB);
    tasksLay->addWidget(chkCompact);
    tasksLay->addWidget(chkbackupDB);
    tasksLay->addStretch(1);

    auto* where = new QGroupBox(QStringLiteral("Backup file"), this);
    where->setObjectName(QStringLiteral("fraBackupFile"));
    txtFname = MakePicker(where, 1, QStringLiteral("File name (.bkp is added)"),
                          QStringLiteral("lblFname"), QStringLiteral("txtFname"));
    AttachFileNameRules(txtFname);
    std::tie(Drive1, Dir1, File1) = std::tie(mPicker->drive, mPicker->dir, mPicker->files);
    where->setLayout(mPicker->layout);

    cmdBackup = AddButton(QStringLiteral("Backup"), QStringLiteral("cmdBackup"));
    cmdCloseUtilities = AddButton(QStringLiteral("Close"), QStringLiteral("cmdCloseUtilities"));
    auto* top = new QHBoxLayout;
    top->addWidget(tasks);
    top->addWidget(where, 1);
    LayOut(top);

    // Re-Sync always runs alone; Compact and Backup may run together.
    connect(chkCheckDB, &QCheckBox::toggled, this, [this](bool on) {
        if (on) {
            chkCompact->setChecked(false);
            chkbackupDB->setChecked(false);
        }
    });
    connect(chkCompact, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            chkCheckDB->setChecked(false);
    });
    connect(chkbackupDB, &QCheckBox::toggled, this, [this](bool on) { chkbackupDB_Click(on); });
    // Only the base name: the run adds ".bkp" itself.
    connect(File1, &FileListBox::FileClick, this,
            [this](const QString& name) { txtFname->setText(QFileInfo(name).completeBaseName()); });
    connect(cmdBackup, &QPushButton::clicked, this, [this] { cmdBackup_Click(); });
    connect(cmdCloseUtilities, &QPushButton::clicked, this, [this] { window()->close(); });
}

void MaintenancePanel::chkbackupDB_Click(bool checked) {
    if (checked)
        chkCheckDB->setChecked(false);
    mPicker->SetEnabled(checked);
}

void MaintenancePanel::cmdBackup_Click() {
    MaintenanceRequest request;
    request.reSync = chkCheckDB->isChecked();
    request.compact = chkCompact->isChecked();
    request.backup = chkbackupDB->isChecked();
    request.folder = Dir1->Path();
    request.fileName = txtFname->text();
    RunMaintenance(request, Display());
    File1->Refresh(); // a new backup file shows at once
}
