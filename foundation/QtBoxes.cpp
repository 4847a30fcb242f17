#include "foundation/QtBoxes.h"

#include "foundation/frmPBar.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace {

// "CSV (*.csv)|*.csv|All (*.*)|*.*" -> "CSV (*.csv);;All (*.*)";
// "Pictures (*.jpg;*.gif)|*.jpg;*.gif" -> "Pictures (*.jpg *.gif)"
QString qtFilter(const QString& vbFilter) {
    const QStringList parts = vbFilter.split(QLatin1Char('|'));
    QStringList out;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        const QString label = parts[i];
        const QString pattern = QString(parts[i + 1]).replace(QLatin1Char(';'), QLatin1Char(' '));
        // Qt reads the patterns in a label's brackets separated by blanks, not by ";".
        out << (label.contains(QLatin1Char('('))
                    ? QString(label).replace(QLatin1Char(';'), QLatin1Char(' '))
                    : label + QStringLiteral(" (") + pattern + QStringLiteral(")"));
    }
    return out.join(QStringLiteral(";;"));
}

} // namespace

int QtBoxBackend::msgBox(const QString& prompt, int flags, const QString& title) {
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(title);
    box.setText(prompt);
    switch (flags & 0x70) {
    case vbCritical:
        box.setIcon(QMessageBox::Critical);
        break;
    case vbQuestion:
        box.setIcon(QMessageBox::Question);
        break;
    case vbExclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case vbInformation:
        box.setIcon(QMessageBox::Information);
        break;
    default:
        break;
    }
    struct Choice {
        QMessageBox::StandardButton button;
        int answer;
    };
    QList<Choice> choices;
    switch (flags & 7) {
    case vbOKCancel:
        choices = {{QMessageBox::Ok, vbOK}, {QMessageBox::Cancel, vbCancel}};
        break;
    case vbAbortRetryIgnore:
        choices = {{QMessageBox::Abort, vbAbort},
                   {QMessageBox::Retry, vbRetry},
                   {QMessageBox::Ignore, vbIgnore}};
        break;
    case vbYesNoCancel:
        choices = {
            {QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}, {QMessageBox::Cancel, vbCancel}};
        break;
    case vbYesNo:
        choices = {{QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}};
        break;
    case vbRetryCancel:
        choices = {{QMessageBox::Retry, vbRetry}, {QMessageBox::Cancel, vbCancel}};
        break;
    default:
        choices = {{QMessageBox::Ok, vbOK}};
        break;
    }
    QMessageBox::StandardButtons buttons;
    for (const Choice& c : choices)
        buttons |= c.button;
    box.setStandardButtons(buttons);
    const int def = (flags & vbDefaultButton3) ? 2 : (flags & vbDefaultButton2) ? 1 : 0;
    if (def < choices.size())
        box.setDefaultButton(choices[def].button);
    const auto pressed = static_cast<QMessageBox::StandardButton>(box.exec());
    for (const Choice& c : choices)
        if (c.button == pressed)
            return c.answer;
    // Closed from the frame: Cancel where there is one, else the only button.
    for (const Choice& c : choices)
        if (c.answer == vbCancel)
            return vbCancel;
    return choices.size() == 1 ? choices[0].answer : vbCancel;
}

std::optional<QString> QtBoxBackend::inputBox(const QString& prompt, const QString& title,
                                              const QString& defaultText) {
    bool ok = false;
    const QString text = QInputDialog::getText(QApplication::activeWindow(), title, prompt,
                                               QLineEdit::Normal, defaultText, &ok);
    if (!ok)
        return std::nullopt;
    return text;
}

QString QtBoxBackend::fileDialog(const FileDialogRequest& r) {
    QFileDialog dlg(QApplication::activeWindow(), r.title, r.initialDir, qtFilter(r.filter));
    dlg.setAcceptMode(r.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dlg.setFileMode(r.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (!r.defaultExt.isEmpty())
        dlg.setDefaultSuffix(r.defaultExt);
    if (!r.fileName.isEmpty())
        dlg.selectFile(r.fileName);
    if (dlg.exec() != QDialog::Accepted || dlg.selectedFiles().isEmpty())
        return QString();
    return dlg.selectedFiles().constFirst();
}

void QtBoxBackend::processingBar() {
    frmPBar bar(QApplication::activeWindow());
    bar.exec();
}

void InstallQtBoxes() {
    static QtBoxBackend backend;
    InstallBoxBackend(&backend);
}
