#include "foundation/frmStartup.h"

#include "foundation/Startup.h"

#include <QCoreApplication>
#include <QWidget>
#include <cstdlib>

frmStartup::frmStartup(const QString& appFolder, std::function<QWidget*()> makeMain)
    : mAppFolder(appFolder), mMakeMain(std::move(makeMain)) {
    setObjectName(QStringLiteral("frmStartup"));
}

void frmStartup::Form_Load() {
    if (!PrepareStartup(mAppFolder)) {
        // The structure upgrade failed and the user has been told: the program cannot be used.
        std::_Exit(1);
    }
    QWidget* main = mMakeMain();
    main->setAttribute(Qt::WA_DeleteOnClose);
    main->show();
    deleteLater();
}
