#include "maintenance/RestorePanel.h"

#include "foundation/TextBoxRules.h"
#include "maintenance/FileLists.h"
#include "maintenance/Restore.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <tuple>

RestorePanel::RestorePanel(QFrame* frame)
    : BackupTab(frame, QStringLiteral("RestorePanel"), QStringLiteral("l2"),
                QStringLiteral("pbRestore"), 1, 6) {
    l2 = mLabel;
    pbRestore = mBar;
    chkRestoreIsOK = new QCheckBox(
        QStringLiteral("Restore a backed-up database (Overwriting the current database!!!)"), this);
    chkRestoreIsOK->setObjectName(QStringLiteral("chkRestoreIsOK"));
    txtFname2 = MakePicker(this, 2, QStringLiteral("Backup file to restore"),
                           QStringLiteral("lblFname2"), QStringLiteral("txtFname2"));
    AttachTextRules(txtFname2);
    std::tie(Drive2, Dir2, File2) = std::tie(mPicker->drive, mPicker->dir, mPicker->files);
    cmdRestoreDB = AddButton(QStringLiteral("Restore"), QStringLiteral("cmdRestoreDB"));
    auto* body = new QVBoxLayout;
    body->addWidget(chkRestoreIsOK);
    body->addLayout(mPicker->layout, 1);
    LayOut(body);

    connect(chkRestoreIsOK, &QCheckBox::toggled, this,
            [this](bool on) { mPicker->SetEnabled(on); });
    connect(File2, &FileListBox::FileClick, this,
            [this](const QString& name) { txtFname2->setText(name); });
    connect(cmdRestoreDB, &QPushButton::clicked, this, [this] { cmdRestoreDB_Click(); });
}

void RestorePanel::cmdRestoreDB_Click() {
    RestoreRequest request;
    request.folder = Dir2->Path();
    request.fileName = txtFname2->text();
    RestoreDatabase(request, Display());
}
