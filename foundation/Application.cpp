#include "foundation/Application.h"

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/MsgBox.h"

#include <cstdlib>

QuillstockApplication::QuillstockApplication(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName(AppName());
}

bool QuillstockApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const DbError& e) {
        FatalEngineError(e.Number(), e.Description());
    }
}

void QuillstockApplication::FatalEngineError(int number, const QString& description) {
    MsgBox(RunTimeErrorText(number, description), vbCritical);
    std::_Exit(1);
}
