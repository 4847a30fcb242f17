// What the maintenance and restore tabs of the utilities window share: each fills its tab's frame,
// picks a backup file with the drive, folder and file lists and a name box, and shows its run on
// a label over a progress bar beside its buttons.
#pragma once

#include <QWidget>
#include <memory>

struct BackupPicker;
struct RunDisplay;
class DirListBox;
class DriveListBox;
class FileListBox;
class QFrame;
class QLabel;
class QLayout;
class QLineEdit;
class QProgressBar;
class QPushButton;

class BackupTab : public QWidget {
    Q_OBJECT
public:
    ~BackupTab() override;

protected:
    // Fills `frame` with the panel `name`, whose label `labelName` and bar `barName` (running from
    // `barMinimum` to `barMaximum`, at its minimum) show the run.
    BackupTab(QFrame* frame, const QString& name, const QString& labelName, const QString& barName,
              int barMinimum, int barMaximum);
    // The lists Drive<index>, Dir<index> and File<index> in `parent`, and the name box `boxName`
    // under the caption `captionName`; they start grey. Returns the name box.
    QLineEdit* MakePicker(QWidget* parent, int index, const QString& caption,
                          const QString& captionName, const QString& boxName);
    // A button of the foot: Enter in a box (a typed folder, say) must not press it.
    QPushButton* AddButton(const QString& text, const QString& name);
    // `body` above the label, then the bar and the buttons.
    void LayOut(QLayout* body);
    RunDisplay Display() const;

    std::unique_ptr<BackupPicker> mPicker;
    QLabel* mLabel;
    QProgressBar* mBar;

private:
    QList<QPushButton*> mButtons;
};
