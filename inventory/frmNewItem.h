// The small panel shown under the item boxes while a new item is entered: its Create button
// makes the item from what the boxes of the detail panel hold.
#pragma once

#include <QFrame>

class QLabel;
class QPushButton;
class frmItemDetail;

class frmNewItem : public QFrame {
    Q_OBJECT
public:
    explicit frmNewItem(frmItemDetail* detail, QWidget* parent = nullptr);

    QLabel* lblNewItem;
    QPushButton* btnItemMakeNew;

signals:
    void ItemCreated(qint32 itemId);

private:
    void btnItemMakeNew_Click();
    frmItemDetail* mDetail;
};
