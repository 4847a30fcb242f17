// The message boxes, prompts, file choices and processing bar on Qt's dialogs.
#pragma once

#include "foundation/MsgBox.h"

class QtBoxBackend final : public BoxBackend {
public:
    int msgBox(const QString& prompt, int flags, const QString& title) override;
    std::optional<QString> inputBox(const QString& prompt, const QString& title,
                                    const QString& defaultText) override;
    QString fileDialog(const FileDialogRequest& request) override;
    void processingBar() override;
};

// Installs the Qt back end for the life of the process.
void InstallQtBoxes();
