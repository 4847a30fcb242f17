// The read-only comment panel of the inventory list's context menu.
#pragma once

#include <QFrame>

class QLabel;
class QPlainTextEdit;
class QPushButton;

class frmCommentInfo : public QFrame {
    Q_OBJECT
public:
    explicit frmCommentInfo(QWidget* parent = nullptr);

    // Reads the item's comment and shows the panel in the middle of its parent.
    void ShowFor(qint32 itemID, const QString& partNo);

    QLabel* lblCommentTitle;
    QPlainTextEdit* txtCommentView;
    QLabel* lblCommentReadOnly;
    QPushButton* cmdCommentInfoClose;
};
