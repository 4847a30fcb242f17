// The main window: the button bar, the tool strip, the tabs and one content panel at a time.
#pragma once

#include <QList>
#include <QMainWindow>

class QFrame;
class QLineEdit;
class QTabBar;
class QToolBox;
class QToolButton;

class FormMain : public QMainWindow {
    Q_OBJECT
public:
    explicit FormMain(QWidget* parent = nullptr);

    void Form_Load();
    // Hides every content panel.
    void HideContentPanels();
    void buttons_ButtonClick(int index);

    QToolBox* ButtonBar1 = nullptr;
    QList<QToolButton*> buttons; // buttons_0 .. buttons_7
    QTabBar* TabStrip2 = nullptr;
    QLineEdit* txtCoName = nullptr;
    QList<QLineEdit*> txtCoAddress; // txtCoAddress_0 .. txtCoAddress_7
    QFrame* Frame1 = nullptr;       // the content area
    QFrame* frmContacts = nullptr;
    QFrame* frmNewItem = nullptr;
    QFrame* frmItemDetail = nullptr;
    QFrame* frmViewCustOrders = nullptr;
    QFrame* frmGlobalLinks = nullptr;
    QFrame* frmUnboundView = nullptr;
};
