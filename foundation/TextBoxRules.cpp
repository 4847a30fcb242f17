#include "foundation/TextBoxRules.h"

#include "foundation/Helpers.h"

#include <QComboBox>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace {

void insertText(QObject* box, const QString& text) {
    if (auto* le = qobject_cast<QLineEdit*>(box))
        le->insert(text);
    else if (auto* pe = qobject_cast<QPlainTextEdit*>(box))
        pe->insertPlainText(text);
    else if (auto* te = qobject_cast<QTextEdit*>(box))
        te->insertPlainText(text);
    else if (auto* cb = qobject_cast<QComboBox*>(box); cb && cb->lineEdit())
        cb->lineEdit()->insert(text);
}

void replaceApostrophes(QObject* box) {
    if (auto* cb = qobject_cast<QComboBox*>(box))
        box = cb->lineEdit();
    if (auto* le = qobject_cast<QLineEdit*>(box)) {
        if (le->text().contains(QLatin1Char('\'')))
            le->setText(ApostropheOut(le->text()));
    } else if (auto* pe = qobject_cast<QPlainTextEdit*>(box)) {
        if (pe->toPlainText().contains(QLatin1Char('\'')))
            pe->setPlainText(ApostropheOut(pe->toPlainText()));
    } else if (auto* te = qobject_cast<QTextEdit*>(box)) {
        if (te->toPlainText().contains(QLatin1Char('\'')))
            te->setPlainText(ApostropheOut(te->toPlainText()));
    }
}

} // namespace

TextRulesFilter::TextRulesFilter(Kind kind, const QString& mask, bool upper, QObject* parent,
                                 BlankBox blank)
    : QObject(parent), mKind(kind), mMask(mask), mUpper(upper), mBlank(blank) {}

bool TextRulesFilter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* ke = static_cast<QKeyEvent*>(event);
        const QString t = ke->text();
        // Only character keys reach the rules; arrows, Delete, Tab and Enter pass untouched.
        if (t.size() != 1 || (t[0].unicode() < 32 && t[0].unicode() != 8) ||
            (ke->modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
            return false;
        const int code = t[0].unicode();
        switch (mKind) {
        case Kind::Text:
            if (code == '\'') {
                insertText(watched, QStringLiteral("`"));
                return true;
            }
            return false;
        case Kind::Number: {
            auto* le = qobject_cast<QLineEdit*>(watched);
            return NumericKey(le ? le->text() : QString(), code) == 0;
        }
        case Kind::AlphaNumeric: {
            const int accepted = AlphaNumericKey(code, mUpper);
            if (accepted == 0)
                return true;
            if (accepted != code) {
                insertText(watched, QString(QChar(accepted)));
                return true;
            }
            return false;
        }
        case Kind::FileName:
            return !(code == 8 || code == '-' || code == '_' || (code >= '0' && code <= '9') ||
                     (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z'));
        }
    } else if (event->type() == QEvent::FocusOut) {
        if (mKind == Kind::Text) {
            replaceApostrophes(watched);
        } else if (mKind == Kind::Number) {
            auto* le = qobject_cast<QLineEdit*>(watched);
            if (le && !(mBlank == BlankBox::StaysBlank && le->text().trimmed().isEmpty()))
                le->setText(FormatNumber(le->text(), mMask));
        }
    }
    return false;
}

void AttachTextRules(QWidget* box) {
    QObject* target = box;
    if (auto* cb = qobject_cast<QComboBox*>(box); cb && cb->lineEdit())
        target = cb->lineEdit();
    target->installEventFilter(new TextRulesFilter(TextRulesFilter::Kind::Text, {}, false, box));
}

void AttachNumberRules(QLineEdit* box, const QString& mask, BlankBox blank) {
    box->installEventFilter(
        new TextRulesFilter(TextRulesFilter::Kind::Number, mask, false, box, blank));
}

void AttachAlphaNumericRules(QLineEdit* box, bool upper) {
    box->installEventFilter(
        new TextRulesFilter(TextRulesFilter::Kind::AlphaNumeric, {}, upper, box));
}

void AttachFileNameRules(QLineEdit* box) {
    box->installEventFilter(new TextRulesFilter(TextRulesFilter::Kind::FileName, {}, false, box));
}
