#include "maintenance/RestorePanel.h"

#include "foundation/TextBoxRules.h"
#include "maintenance/FileLists.h"
#include "maintenance/Restore.h"

#include <QCheckBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

RestorePanel::RestorePanel(QFrame* frame) : QWidget(frame) {
    setObjectName(QStringLiteral("RestorePanel"));
    auto* frameLay = new QVBoxLayout(frame);
    frameLay->setContentsMargins(0, 0, 0, 0);
    frameLay->addWidget(this);

    chkRestoreIsOK = new QCheckBox(
        QStringLiteral("Restore a backed-up database (Overwriting the current database!!!)"), this);
    chkRestoreIsOK->setObjectName(QStringLiteral("chkRestoreIsOK"));
    txtFname2 = new QLineEdit(this);
    txtFname2->setObjectName(QStringLiteral("txtFname2"));
    AttachTextRules(txtFname2);
    auto* lblName = new QLabel(QStringLiteral("Backup file to restore"), this);
    lblName->setObjectName(QStringLiteral("lblFname2"));
    mPicker = std::make_unique<BackupPicker>(this, 2, lblName, txtFname2);
    Drive2 = mPicker->drive;
    Dir2 = mPicker->dir;
    File2 = mPicker->files;

    l2 = new QLabel(this);
    l2->setObjectName(QStringLiteral("l2"));
    pbRestore = new QProgressBar(this);
    pbRestore->setObjectName(QStringLiteral("pbRestore"));
    pbRestore->setRange(1, 6);
    pbRestore->setValue(1);
    cmdRestoreDB = new QPushButton(QStringLiteral("Restore"), this);
    cmdRestoreDB->setObjectName(QStringLiteral("cmdRestoreDB"));
    cmdRestoreDB->setAutoDefault(false); // Enter in a box must not start a restore
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(pbRestore, 1);
    bottom->addWidget(cmdRestoreDB);

    auto* lay = new QVBoxLayout(this);
    lay->addWidget(chkRestoreIsOK);
    lay->addLayout(mPicker->layout, 1);
    lay->addWidget(l2);
    lay->addLayout(bottom);

    connect(chkRestoreIsOK, &QCheckBox::toggled, this,
            [this](bool on) { chkRestoreIsOK_Click(on); });
    connect(File2, &FileListBox::FileClick, this,
            [this](const QString& name) { txtFname2->setText(name); });
    connect(cmdRestoreDB, &QPushButton::clicked, this, [this] { cmdRestoreDB_Click(); });

    chkRestoreIsOK_Click(false);
}

RestorePanel::~RestorePanel() = default;

void RestorePanel::chkRestoreIsOK_Click(bool checked) {
    mPicker->SetEnabled(checked);
}

void RestorePanel::cmdRestoreDB_Click() {
    RestoreRequest request;
    request.folder = Dir2->Path();
    request.fileName = txtFname2->text();
    RestoreDatabase(request, ShowRunOn(l2, pbRestore));
}
