// Shared by every test suite: a fresh data folder per test, scripted boxes, locale switching.
#pragma once

#include "foundation/MsgBox.h"

#include <QList>
#include <QLocale>
#include <QString>
#include <QTemporaryDir>
#include <QVariantList>
#include <deque>
#include <memory>

// A temporary folder holding three new empty data files, made by the same code as
// qstk3-newdata, and the globals pointed at it. Restores nothing on purpose: each test makes
// its own.
class TestData {
public:
    TestData();
    QString folder() const { return mDir.path(); }
    QString path(const QString& file) const { return mDir.filePath(file); }
    bool ok() const { return mOk; }

private:
    QTemporaryDir mDir;
    bool mOk = false;
};

// One box as it was shown.
struct ShownBox {
    enum Kind { Message, Input, File, ProcessingBar } kind;
    QString prompt;
    int flags = 0;
    QString title;
};

// Answers boxes from a queue and records every box shown. A message, prompt or file choice with
// no answer queued fails the running test. Installed for its lifetime.
class ScriptedBoxes : public BoxBackend {
public:
    ScriptedBoxes();
    ~ScriptedBoxes() override;

    void answer(int vbAnswer) { mAnswers.push_back(vbAnswer); }
    void answerInput(const QString& text) { mInputs.push_back(text); }
    void cancelInput() { mInputs.push_back(std::nullopt); }
    void answerFile(const QString& path) { mFiles.push_back(path); }

    const QList<ShownBox>& shown() const { return mShown; }
    QStringList prompts(ShownBox::Kind kind = ShownBox::Message) const;
    int processingBars() const;
    bool allAnswersUsed() const { return mAnswers.empty() && mInputs.empty() && mFiles.empty(); }
    void clear() { mShown.clear(); }

    int msgBox(const QString& prompt, int flags, const QString& title) override;
    std::optional<QString> inputBox(const QString& prompt, const QString& title,
                                    const QString& defaultText) override;
    QString fileDialog(const FileDialogRequest& request) override;
    void processingBar() override;

private:
    BoxBackend* mPrevious;
    std::deque<int> mAnswers;
    std::deque<std::optional<QString>> mInputs;
    std::deque<QString> mFiles;
    QList<ShownBox> mShown;
};

// Runs one statement on the business file, with its bound values.
void ExecSql(const QString& sql, const QVariantList& values = {});
// The first column of the first row of a query on the business file as text, "<none>" for no row.
QString SqlFirst(const QString& sql);
// Every row of a query on the business file, its fields as text joined by "|".
QStringList SqlRows(const QString& sql);

class RecordingPrinter;
// The texts a recording printer drew, each as "text@x,y", on sheet `page` only when one is given.
QStringList PlacedTexts(const RecordingPrinter& printer, int page = 0);

// Sets the default locale (and gDecimalSep from it) for its lifetime.
class LocaleScope {
public:
    explicit LocaleScope(const QLocale& locale);
    ~LocaleScope();

private:
    QLocale mPrevious;
    QChar mPreviousSep;
};

// The fixed locale of the test run (QS_TEST_LOCALE, en_GB when unset), set once per process.
void UseTestLocale();
