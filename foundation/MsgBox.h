// Every message box, prompt and file choice of the program goes through these calls. The window
// layer installs a back end on Qt's dialogs; tests install a scripted one.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// Buttons, icons and default buttons (VB values).
enum : int {
    vbOKOnly = 0,
    vbOKCancel = 1,
    vbAbortRetryIgnore = 2,
    vbYesNoCancel = 3,
    vbYesNo = 4,
    vbRetryCancel = 5,
    vbCritical = 16,
    vbQuestion = 32,
    vbExclamation = 48,
    vbInformation = 64,
    vbDefaultButton1 = 0,
    vbDefaultButton2 = 256,
    vbDefaultButton3 = 512,
};
// Answers.
enum : int { vbOK = 1, vbCancel = 2, vbAbort = 3, vbRetry = 4, vbIgnore = 5, vbYes = 6, vbNo = 7 };

// A file choice: open or save, with VB CommonDialog's filter text ("CSV (*.csv)|*.csv").
struct FileDialogRequest {
    bool save = false;
    QString title;
    QString filter;
    QString initialDir;
    QString fileName; // proposed name
    QString defaultExt;
};

class BoxBackend {
public:
    virtual ~BoxBackend() = default;
    virtual int msgBox(const QString& prompt, int flags, const QString& title) = 0;
    // nullopt when the user cancels.
    virtual std::optional<QString> inputBox(const QString& prompt, const QString& title,
                                            const QString& defaultText) = 0;
    // "" when the user cancels.
    virtual QString fileDialog(const FileDialogRequest& request) = 0;
    virtual void processingBar() {}
};

// Installs a back end (not owned); nullptr restores the silent default, which answers the
// first button of every box, cancels every prompt and file choice.
void InstallBoxBackend(BoxBackend* backend);
BoxBackend* CurrentBoxBackend();

// Title "" gives the application's name, as VB does.
int MsgBox(const QString& prompt, int flags = vbOKOnly, const QString& title = QString());
// The typed text, or "" when cancelled (VB's InputBox).
QString InputBox(const QString& prompt, const QString& title = QString(),
                 const QString& defaultText = QString());
QString ChooseFile(const FileDialogRequest& request);

// Shows frmPBar modally: the bar runs to its end, reads "Done", waits and closes.
void ShowProcessingBar();

// The run-time error box of an engine error nobody trapped.
QString RunTimeErrorText(int number, const QString& description);
