// The context menu of the inventory list: a small framed panel of clickable entries shown beside
// the pointer inside the list panel.
#pragma once

#include <QFrame>
#include <QVector>

class QLabel;
class QPushButton;

class frmBubbleMenu1 : public QFrame {
    Q_OBJECT
public:
    explicit frmBubbleMenu1(QWidget* parent = nullptr);

    // Shows the menu with its top left near `at` (a point of the parent), kept inside the parent.
    void ShowAt(const QPoint& at);

    // lblBubbleMenu1_1 .. lblBubbleMenu1_5 at indexes 1..5; index 0 is unused.
    QVector<QLabel*> lblBubbleMenu1;
    QPushButton* cmdBubbleMenu1Close;

signals:
    // An entry was clicked (1..5); the menu has closed itself.
    void Chosen(int index);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
