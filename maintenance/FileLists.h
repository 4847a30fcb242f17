// The drive, folder and file lists with which the maintenance and restore tabs pick a backup
// file: a change of drive sets the folder, a change of folder sets the file list.
#pragma once

#include <QComboBox>
#include <QListWidget>
#include <QString>
#include <QWidget>

class QGridLayout;
class QLabel;
class QLineEdit;

// The drives (roots) of the machine.
class DriveListBox : public QComboBox {
    Q_OBJECT
public:
    DriveListBox(const QString& name, QWidget* parent);
    QString Drive() const { return currentText(); }
    // Selects the drive that holds `path`, without a change being told.
    void ShowDriveOf(const QString& path);

signals:
    void Change(const QString& drive);
};

// A folder: its path, which may be typed, and its sub-folders ("[..]" goes up); activating an
// entry opens it.
class DirListBox : public QWidget {
    Q_OBJECT
public:
    DirListBox(const QString& name, QWidget* parent);
    QString Path() const { return mPath; }
    // An existing folder becomes the path; anything else is refused with a message.
    bool SetPath(const QString& path);

    QLineEdit* PathBox() const { return mPathBox; }
    QListWidget* Folders() const { return mFolders; }

signals:
    void Change(const QString& path);

private:
    void fill();
    QString mPath;
    QLineEdit* mPathBox;
    QListWidget* mFolders;
};

// The files of a folder that match a pattern.
class FileListBox : public QListWidget {
    Q_OBJECT
public:
    FileListBox(const QString& name, const QString& pattern, QWidget* parent);
    QString Path() const { return mPath; }
    void SetPath(const QString& path);
    void Refresh();
    QStringList FileNames() const;

signals:
    // A file name clicked.
    void FileClick(const QString& fileName);

private:
    QString mPath;
    QString mPattern;
};

// The drive, folder and file lists of a tab (Drive1, Dir1, File1 or Drive2, Dir2, File2) with the
// name box they fill, laid out in one grid: a change of drive sets the folder, a change of folder
// sets the file list. They start in the data folder.
struct BackupPicker {
    BackupPicker(QWidget* parent, int index, QLabel* caption, QLineEdit* name);
    // Enables the lists and the name box with a white background, or disables them with the
    // system's grey.
    void SetEnabled(bool enabled) const;

    DriveListBox* drive;
    DirListBox* dir;
    FileListBox* files;
    QLineEdit* name;
    QGridLayout* layout;
};
