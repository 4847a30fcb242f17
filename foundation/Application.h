// The application object. An engine error that no procedure trapped ends here: the run-time
// error box shows its number and description and the process ends.
#pragma once

#include <QApplication>

class QuillstockApplication : public QApplication {
    Q_OBJECT
public:
    QuillstockApplication(int& argc, char** argv);
    bool notify(QObject* receiver, QEvent* event) override;

    // Shows the run-time error box and ends the process.
    [[noreturn]] static void FatalEngineError(int number, const QString& description);
};
