#include "foundation/frmStartup.h"

#include "foundation/Startup.h"

#include <QGuiApplication>
#include <QWidget>
#include <cstdlib>

frmStartup::frmStartup(const QString& appFolder, std::function<QWidget*()> makeMain)
    : mAppFolder(appFolder), mMakeMain(std::move(makeMain)) {
    setObjectName(QStringLiteral("frmStartup"));
}

namespace {
// Until the main window is up, the windows start-up shows (the upgrade's message box, the
// processing bar) are the only ones on screen: closing the last of them must not end the program.
class QuitOnLastWindowHeld {
public:
    QuitOnLastWindowHeld() : mWas(QGuiApplication::quitOnLastWindowClosed()) {
        QGuiApplication::setQuitOnLastWindowClosed(false);
    }
    ~QuitOnLastWindowHeld() { QGuiApplication::setQuitOnLastWindowClosed(mWas); }
    QuitOnLastWindowHeld(const QuitOnLastWindowHeld&) = delete;
    QuitOnLastWindowHeld& operator=(const QuitOnLastWindowHeld&) = delete;

private:
    bool mWas;
};
} // namespace

void frmStartup::Form_Load() {
    QuitOnLastWindowHeld held;
    if (!PrepareStartup(mAppFolder)) {
        // The structure upgrade failed and the user has been told: the program cannot be used.
        std::_Exit(1);
    }
    QWidget* main = mMakeMain();
    main->setAttribute(Qt::WA_DeleteOnClose);
    main->show();
    deleteLater();
}
