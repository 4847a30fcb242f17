// The hidden start-up form: prepares paths, user, rights, separator and upgrades, then shows the
// main window and goes.
#pragma once

#include <QObject>
#include <QString>
#include <functional>

class QWidget;

class frmStartup : public QObject {
    Q_OBJECT
public:
    // `makeMain` builds the main window once the preparation has succeeded.
    frmStartup(const QString& appFolder, std::function<QWidget*()> makeMain);
    // Runs from the event loop, so an engine error reaches the run-time error box.
    void Form_Load();

private:
    QString mAppFolder;
    std::function<QWidget*()> mMakeMain;
};
