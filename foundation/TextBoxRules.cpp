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

QString boxText(QObject* box) {
    if (auto* cb = qobject_cast<QComboBox*>(box); cb && cb->lineEdit())
        box = cb->lineEdit();
    if (auto* le = qobject_cast<QLineEdit*>(box))
        return le->text();
    if (auto* pe = qobject_cast<QPlainTextEdit*>(box))
        return pe->toPlainText();
    if (auto* te = qobject_cast<QTextEdit*>(box))
        return te->toPlainText();
    return {};
}

void setBoxText(QObject* box, const QString& text) {
    if (auto* cb = qobject_cast<QComboBox*>(box); cb && cb->lineEdit())
        box = cb->lineEdit();
    if (auto* le = qobject_cast<QLineEdit*>(box))
        le->setText(text);
    else if (auto* pe = qobject_cast<QPlainTextEdit*>(box))
        pe->setPlainText(text);
    else if (auto* te = qobject_cast<QTextEdit*>(box))
        te->setPlainText(text);
}

void removeApostrophes(QObject* box) {
    QString text = boxText(box);
    if (text.contains(QLatin1Char('\'')))
        setBoxText(box, text.remove(QLatin1Char('\'')));
}

// A key filtered to `accepted`: dropped (0), typed as it is, or typed as another character.
// True when the key event is used up here.
bool takeKey(QObject* box, int code, int accepted) {
    if (accepted == 0)
        return true;
    if (accepted != code) {
        insertText(box, QString(QChar(accepted)));
        return true;
    }
    return false;
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
            if (mUpper && code >= 'a' && code <= 'z') {
                insertText(watched, QString(QChar(code - 'a' + 'A')));
                return true;
            }
            return false;
        case Kind::Number: {
            auto* le = qobject_cast<QLineEdit*>(watched);
            return NumericKey(le ? le->text() : QString(), code) == 0;
        }
        case Kind::AlphaNumeric:
            return takeKey(watched, code, AlphaNumericKey(code, mUpper));
        case Kind::NoApostrophe:
            return code == '\'';
        case Kind::Digits:
            return !(code == 8 || (code >= '0' && code <= '9'));
        case Kind::Rule:
            return mRule && takeKey(watched, code, mRule(boxText(watched), code));
        }
    } else if (event->type() == QEvent::FocusOut) {
        if (mKind == Kind::Text) {
            replaceApostrophes(watched);
        } else if (mKind == Kind::NoApostrophe) {
            if (mRemoveOnLeave)
                removeApostrophes(watched);
        } else if (mKind == Kind::Digits) {
            // Pasted text may still hold an apostrophe; typed keys never do.
            replaceApostrophes(watched);
            auto* le = qobject_cast<QLineEdit*>(watched);
            if (le && !mMask.isEmpty())
                le->setText(Format(ParseLocaleNumber(le->text()), mMask));
        } else if (mKind == Kind::Number) {
            auto* le = qobject_cast<QLineEdit*>(watched);
            if (le && !(mBlank == BlankBox::StaysBlank && le->text().trimmed().isEmpty()))
                le->setText(FormatNumber(le->text(), mMask));
        }
    }
    return false;
}

void AttachTextRules(QWidget* box, bool upper) {
    QObject* target = box;
    if (auto* cb = qobject_cast<QComboBox*>(box); cb && cb->lineEdit())
        target = cb->lineEdit();
    target->installEventFilter(new TextRulesFilter(TextRulesFilter::Kind::Text, {}, upper, box));
}

void AttachNumberRules(QLineEdit* box, const QString& mask, BlankBox blank) {
    box->installEventFilter(
        new TextRulesFilter(TextRulesFilter::Kind::Number, mask, false, box, blank));
}

void AttachAlphaNumericRules(QLineEdit* box, bool upper) {
    box->installEventFilter(
        new TextRulesFilter(TextRulesFilter::Kind::AlphaNumeric, {}, upper, box));
}

void AttachNoApostropheRules(QWidget* box, bool removeOnLeave) {
    QObject* target = box;
    if (auto* cb = qobject_cast<QComboBox*>(box); cb && cb->lineEdit())
        target = cb->lineEdit();
    auto* filter = new TextRulesFilter(TextRulesFilter::Kind::NoApostrophe, {}, false, box);
    filter->SetRemoveOnLeave(removeOnLeave);
    target->installEventFilter(filter);
}

void AttachDigitRules(QLineEdit* box, const QString& mask) {
    box->installEventFilter(new TextRulesFilter(TextRulesFilter::Kind::Digits, mask, false, box));
}

void AttachKeyRule(QLineEdit* box, KeyRule rule) {
    auto* filter = new TextRulesFilter(TextRulesFilter::Kind::Rule, {}, false, box);
    filter->SetRule(std::move(rule));
    box->installEventFilter(filter);
}
