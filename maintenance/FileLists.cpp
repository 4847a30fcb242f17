#include "maintenance/FileLists.h"

#include "foundation/Globals.h"
#include "foundation/MsgBox.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QVBoxLayout>

namespace {
const QString kUp = QStringLiteral("[..]");

QString cleanFolder(const QString& path) {
    return QDir::cleanPath(QDir(path).absolutePath());
}
} // namespace

DriveListBox::DriveListBox(const QString& name, QWidget* parent) : QComboBox(parent) {
    setObjectName(name);
    for (const QFileInfo& drive : QDir::drives())
        addItem(QDir::toNativeSeparators(drive.absoluteFilePath()));
    connect(this, &QComboBox::textActivated, this, [this](const QString& d) { emit Change(d); });
}

void DriveListBox::ShowDriveOf(const QString& path) {
    const QString native = QDir::toNativeSeparators(cleanFolder(path));
    for (int i = 0; i < count(); ++i) {
        if (native.startsWith(itemText(i), Qt::CaseInsensitive)) {
            const QSignalBlocker quiet(this);
            setCurrentIndex(i);
            return;
        }
    }
}

DirListBox::DirListBox(const QString& name, QWidget* parent) : QWidget(parent) {
    setObjectName(name);
    mPathBox = new QLineEdit(this);
    mPathBox->setObjectName(name + QStringLiteral("_Path"));
    mFolders = new QListWidget(this);
    mFolders->setObjectName(name + QStringLiteral("_Folders"));
    auto* lay = new QVBoxLayout(this);
    lay->setContentsMargins(0, 0, 0, 0);
    lay->setSpacing(2);
    lay->addWidget(mPathBox);
    lay->addWidget(mFolders, 1);
    setFocusProxy(mPathBox);
    connect(mPathBox, &QLineEdit::editingFinished, this, [this] {
        // The refusal's box takes the focus, which finishes the editing once more.
        static bool applying = false;
        const QString typed = mPathBox->text().trimmed();
        if (applying || typed == QDir::toNativeSeparators(mPath))
            return;
        applying = true;
        if (!SetPath(typed))
            mPathBox->setText(QDir::toNativeSeparators(mPath));
        applying = false;
    });
    connect(mFolders, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        SetPath(item->text() == kUp ? QFileInfo(mPath).absolutePath()
                                    : QDir(mPath).filePath(item->text()));
    });
}

bool DirListBox::SetPath(const QString& path) {
    if (path.isEmpty() || !QFileInfo(path).isDir()) {
        MsgBox(QStringLiteral("Path not found: ") + path, vbExclamation);
        return false;
    }
    const QString clean = cleanFolder(path);
    const bool changed = clean != mPath;
    mPath = clean;
    mPathBox->setText(QDir::toNativeSeparators(mPath));
    fill();
    if (changed)
        emit Change(mPath);
    return true;
}

void DirListBox::fill() {
    mFolders->clear();
    if (!QDir(mPath).isRoot())
        mFolders->addItem(kUp);
    mFolders->addItems(
        QDir(mPath).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase));
}

FileListBox::FileListBox(const QString& name, const QString& pattern, QWidget* parent)
    : QListWidget(parent), mPattern(pattern) {
    setObjectName(name);
    connect(this, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { emit FileClick(item->text()); });
}

void FileListBox::SetPath(const QString& path) {
    mPath = path;
    Refresh();
}

void FileListBox::Refresh() {
    clear();
    if (!mPath.isEmpty())
        addItems(QDir(mPath).entryList({mPattern}, QDir::Files, QDir::Name | QDir::IgnoreCase));
}

QStringList FileListBox::FileNames() const {
    QStringList names;
    for (int i = 0; i < count(); ++i)
        names << item(i)->text();
    return names;
}

BackupPicker::BackupPicker(QWidget* parent, int index, QLabel* caption, QLineEdit* nameBox)
    : drive(new DriveListBox(QStringLiteral("Drive%1").arg(index), parent)),
      dir(new DirListBox(QStringLiteral("Dir%1").arg(index), parent)),
      files(new FileListBox(QStringLiteral("File%1").arg(index), QStringLiteral("*.bkp"), parent)),
      name(nameBox), layout(new QGridLayout) {
    caption->setBuddy(name);
    layout->addWidget(caption, 0, 0);
    layout->addWidget(name, 1, 0);
    layout->addWidget(files, 2, 0, 2, 1);
    layout->addWidget(drive, 0, 1);
    layout->addWidget(dir, 1, 1, 3, 1);
    layout->setRowStretch(3, 1);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(1, 1);
    DirListBox* folder = dir;
    FileListBox* list = files;
    DriveListBox* drives = drive;
    QObject::connect(drive, &DriveListBox::Change, dir,
                     [folder](const QString& d) { folder->SetPath(d); });
    QObject::connect(dir, &DirListBox::Change, files, [list, drives](const QString& path) {
        list->SetPath(path);
        drives->ShowDriveOf(path);
    });
    dir->SetPath(gAppPath);
}

void BackupPicker::SetEnabled(bool enabled) const {
    const QColor back = enabled ? QColor(Qt::white)
                                : QApplication::palette().color(QPalette::Active, QPalette::Window);
    for (QWidget* box : {static_cast<QWidget*>(drive), static_cast<QWidget*>(dir),
                         static_cast<QWidget*>(files), static_cast<QWidget*>(name)}) {
        box->setEnabled(enabled);
        QPalette p = box->palette();
        for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            p.setColor(group, QPalette::Base, back);
        box->setPalette(p);
    }
}
