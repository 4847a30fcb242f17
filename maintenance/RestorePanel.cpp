#include "maintenance/RestorePanel.h"

#include "foundation/Globals.h"
#include "foundation/TextBoxRules.h"
#include "maintenance/FileLists.h"
#include "maintenance/Restore.h"

#include <QCheckBox>
#include <QFrame>
#include <QGridLayout>
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
    Drive2 = new DriveListBox(QStringLiteral("Drive2"), this);
    Dir2 = new DirListBox(QStringLiteral("Dir2"), this);
    File2 = new FileListBox(QStringLiteral("File2"), QStringLiteral("*.bkp"), this);
    txtFname2 = new QLineEdit(this);
    txtFname2->setObjectName(QStringLiteral("txtFname2"));
    AttachTextRules(txtFname2);
    auto* lblName = new QLabel(QStringLiteral("Backup file to restore"), this);
    lblName->setObjectName(QStringLiteral("lblFname2"));
    lblName->setBuddy(txtFname2);

    auto* pick = new QGridLayout;
    pick->addWidget(lblName, 0, 0);
    pick->addWidget(txtFname2, 1, 0);
    pick->addWidget(File2, 2, 0, 2, 1);
    pick->addWidget(Drive2, 0, 1);
    pick->addWidget(Dir2, 1, 1, 3, 1);
    pick->setRowStretch(3, 1);
    pick->setColumnStretch(0, 1);
    pick->setColumnStretch(1, 1);

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
    lay->addLayout(pick, 1);
    lay->addWidget(l2);
    lay->addLayout(bottom);

    connect(chkRestoreIsOK, &QCheckBox::toggled, this,
            [this](bool on) { chkRestoreIsOK_Click(on); });
    connect(Drive2, &DriveListBox::Change, this, [this](const QString& d) { Dir2->SetPath(d); });
    connect(Dir2, &DirListBox::Change, this, [this](const QString& p) {
        File2->SetPath(p);
        Drive2->ShowDriveOf(p);
    });
    connect(File2, &FileListBox::FileClick, this,
            [this](const QString& name) { txtFname2->setText(name); });
    connect(cmdRestoreDB, &QPushButton::clicked, this, [this] { cmdRestoreDB_Click(); });

    Dir2->SetPath(gAppPath);
    chkRestoreIsOK_Click(false);
}

void RestorePanel::chkRestoreIsOK_Click(bool checked) {
    for (QWidget* w : {static_cast<QWidget*>(Drive2), static_cast<QWidget*>(Dir2),
                       static_cast<QWidget*>(File2), static_cast<QWidget*>(txtFname2)})
        SetPickerEnabled(w, checked);
}

void RestorePanel::cmdRestoreDB_Click() {
    RestoreRequest request;
    request.folder = Dir2->Path();
    request.fileName = txtFname2->text();
    RunDisplay display;
    display.label = [this](const QString& text) { l2->setText(text); };
    display.range = [this](int minimum, int maximum) { pbRestore->setRange(minimum, maximum); };
    display.progress = [this](int value) { pbRestore->setValue(value); };
    RestoreDatabase(request, display);
}
