#include "foundation/Application.h"
#include "foundation/PrinterQt.h"
#include "foundation/QtBoxes.h"
#include "foundation/frmStartup.h"
#include "inventory/FormMain.h"

#include <QTimer>

int main(int argc, char** argv) {
    QuillstockApplication app(argc, argv);
    InstallQtBoxes();
    InstallQtPrinters();
    auto* startup = new frmStartup(QCoreApplication::applicationDirPath(), [] {
        auto* w = new FormMain;
        w->Form_Load();
        return w;
    });
    QTimer::singleShot(0, startup, &frmStartup::Form_Load);
    return app.exec();
}
