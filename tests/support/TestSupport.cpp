#include "tests/support/TestSupport.h"

#include "foundation/Clock.h"
#include "foundation/DbEngine.h"
#include "foundation/Globals.h"
#include "foundation/Printer.h"
#include "foundation/Rights.h"
#include "foundation/Schema.h"
#include "foundation/Startup.h"

#include <QTest>

TestData::TestData() {
    UseTestLocale();
    QString why;
    mOk = mDir.isValid() && CreateDataFiles(mDir.path(), &why);
    if (!mOk)
        qWarning("TestData: %s", qPrintable(why));
    SetDataFolder(mDir.path());
    gWinUser = QStringLiteral("tester");
    gPcName = QStringLiteral("TESTPC");
    GrantAllRights();
    SetToday(QDate(2026, 11, 23));
}

ScriptedBoxes::ScriptedBoxes() : mPrevious(CurrentBoxBackend()) {
    InstallBoxBackend(this);
}

ScriptedBoxes::~ScriptedBoxes() {
    InstallBoxBackend(nullptr);
}

QStringList ScriptedBoxes::prompts(ShownBox::Kind kind) const {
    QStringList out;
    for (const ShownBox& b : mShown)
        if (b.kind == kind)
            out << b.prompt;
    return out;
}

int ScriptedBoxes::processingBars() const {
    int n = 0;
    for (const ShownBox& b : mShown)
        n += b.kind == ShownBox::ProcessingBar;
    return n;
}

int ScriptedBoxes::msgBox(const QString& prompt, int flags, const QString& title) {
    mShown.append({ShownBox::Message, prompt, flags, title});
    if (mAnswers.empty()) {
        QTest::qFail(qPrintable(QStringLiteral("unexpected message box: ") + prompt), __FILE__,
                     __LINE__);
        return vbCancel;
    }
    const int a = mAnswers.front();
    mAnswers.pop_front();
    return a;
}

std::optional<QString> ScriptedBoxes::inputBox(const QString& prompt, const QString& title,
                                               const QString&) {
    mShown.append({ShownBox::Input, prompt, 0, title});
    if (mInputs.empty()) {
        QTest::qFail(qPrintable(QStringLiteral("unexpected input box: ") + prompt), __FILE__,
                     __LINE__);
        return std::nullopt;
    }
    const bool given = mInputs.front().has_value();
    const QString text = given ? *mInputs.front() : QString();
    mInputs.pop_front();
    if (!given)
        return std::nullopt;
    return text;
}

QString ScriptedBoxes::fileDialog(const FileDialogRequest& request) {
    mShown.append({ShownBox::File, request.title, request.save ? 1 : 0, request.title});
    if (mFiles.empty()) {
        QTest::qFail(qPrintable(QStringLiteral("unexpected file dialog: ") + request.title),
                     __FILE__, __LINE__);
        return QString();
    }
    const QString f = mFiles.front();
    mFiles.pop_front();
    return f;
}

void ScriptedBoxes::processingBar() {
    mShown.append({ShownBox::ProcessingBar, {}, 0, {}});
}

LocaleScope::LocaleScope(const QLocale& locale) : mPrevious(QLocale()), mPreviousSep(gDecimalSep) {
    QLocale::setDefault(locale);
    gDecimalSep = ReadDecimalSep();
}

LocaleScope::~LocaleScope() {
    QLocale::setDefault(mPrevious);
    gDecimalSep = mPreviousSep;
}

void UseTestLocale() {
    static bool done = false;
    if (done)
        return;
    done = true;
    const QString name = qEnvironmentVariable("QS_TEST_LOCALE", QStringLiteral("en_GB"));
    QLocale::setDefault(QLocale(name));
    gDecimalSep = ReadDecimalSep();
}

void ExecSql(const QString& sql, const QVariantList& values) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    db.Execute(sql, values);
}

QString SqlFirst(const QString& sql) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    Recordset rs = db.OpenRecordset(sql);
    return rs.Eof() ? QStringLiteral("<none>") : rs.Fields(0).Text();
}

QStringList SqlRows(const QString& sql) {
    Database db = DBEngine::OpenDatabase(gDbPath);
    QStringList out;
    for (Recordset rs = db.OpenRecordset(sql); !rs.Eof(); rs.MoveNext()) {
        QStringList row;
        for (int i = 0; i < rs.FieldCount(); ++i)
            row << rs.Fields(i).Text();
        out << row.join(QLatin1Char('|'));
    }
    return out;
}

QStringList PlacedTexts(const RecordingPrinter& printer, int page) {
    QStringList out;
    for (const PrintCall& c : printer.Calls(PrintCall::Text))
        if (page == 0 || c.page == page)
            out << c.text + QLatin1Char('@') + QString::number(c.x, 'g', 8) + QLatin1Char(',') +
                       QString::number(c.y, 'g', 8);
    return out;
}
