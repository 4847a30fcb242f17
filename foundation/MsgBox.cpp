#include "foundation/MsgBox.h"

#include "foundation/Globals.h"

namespace {

// With no window layer: every box takes its first button, every prompt is cancelled.
class SilentBackend final : public BoxBackend {
public:
    int msgBox(const QString&, int flags, const QString&) override {
        switch (flags & 7) {
        case vbOKCancel:
            return vbOK;
        case vbAbortRetryIgnore:
            return vbAbort;
        case vbYesNoCancel:
        case vbYesNo:
            return vbYes;
        case vbRetryCancel:
            return vbRetry;
        default:
            return vbOK;
        }
    }
    std::optional<QString> inputBox(const QString&, const QString&, const QString&) override {
        return std::nullopt;
    }
    QString fileDialog(const FileDialogRequest&) override { return QString(); }
};

SilentBackend gSilent;
BoxBackend* gBackend = nullptr;

} // namespace

void InstallBoxBackend(BoxBackend* backend) {
    gBackend = backend;
}

BoxBackend* CurrentBoxBackend() {
    return gBackend ? gBackend : &gSilent;
}

int MsgBox(const QString& prompt, int flags, const QString& title) {
    return CurrentBoxBackend()->msgBox(prompt, flags, title.isEmpty() ? AppName() : title);
}

QString InputBox(const QString& prompt, const QString& title, const QString& defaultText) {
    return CurrentBoxBackend()
        ->inputBox(prompt, title.isEmpty() ? AppName() : title, defaultText)
        .value_or(QString());
}

QString ChooseFile(const FileDialogRequest& request) {
    return CurrentBoxBackend()->fileDialog(request);
}

void ShowProcessingBar() {
    CurrentBoxBackend()->processingBar();
}

QString RunTimeErrorText(int number, const QString& description) {
    return QStringLiteral("Run-time error '%1':\n\n%2").arg(number).arg(description);
}
