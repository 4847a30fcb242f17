#include "maintenance/MaintenancePanel.h"

#include "foundation/TextBoxRules.h"
#include "maintenance/FileLists.h"
#include "maintenance/Maintenance.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

MaintenancePanel::MaintenancePanel(QFrame* frame) : QWidget(frame) {
    setObjectName(QStringLiteral("MaintenancePanel"));
    auto* frameLay = new QVBoxLayout(frame);
    frameLay->setContentsMargins(0, 0, 0, 0);
    frameLay->addWidget(this);

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
    txtFname = new QLineEdit(where);
    txtFname->setObjectName(QStringLiteral("txtFname"));
    AttachFileNameRules(txtFname);
    auto* lblName = new QLabel(QStringLiteral("File name (.bkp is added)"), where);
    lblName->setObjectName(QStringLiteral("lblFname"));
    mPicker = std::make_unique<BackupPicker>(where, 1, lblName, txtFname);
    Drive1 = mPicker->drive;
    Dir1 = mPicker->dir;
    File1 = mPicker->files;
    where->setLayout(mPicker->layout);

    auto* top = new QHBoxLayout;
    top->addWidget(tasks);
    top->addWidget(where, 1);

    l1 = new QLabel(this);
    l1->setObjectName(QStringLiteral("l1"));
    pbMaintenance = new QProgressBar(this);
    pbMaintenance->setObjectName(QStringLiteral("pbMaintenance"));
    pbMaintenance->setRange(0, kMaintenanceProgressMax);
    pbMaintenance->setValue(0);
    cmdBackup = new QPushButton(QStringLiteral("Backup"), this);
    cmdBackup->setObjectName(QStringLiteral("cmdBackup"));
    cmdCloseUtilities = new QPushButton(QStringLiteral("Close"), this);
    cmdCloseUtilities->setObjectName(QStringLiteral("cmdCloseUtilities"));
    // Enter in a box (a typed folder, say) must not start a run.
    cmdBackup->setAutoDefault(false);
    cmdCloseUtilities->setAutoDefault(false);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(pbMaintenance, 1);
    bottom->addWidget(cmdBackup);
    bottom->addWidget(cmdCloseUtilities);

    auto* lay = new QVBoxLayout(this);
    lay->addLayout(top, 1);
    lay->addWidget(l1);
    lay->addLayout(bottom);

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

    chkbackupDB_Click(false);
}

MaintenancePanel::~MaintenancePanel() = default;

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
    RunMaintenance(request, ShowRunOn(l1, pbMaintenance));
    File1->Refresh(); // a new backup file shows at once
}
