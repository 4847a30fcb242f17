#include "foundation/TextBoxRules.h"

#include "foundation/Helpers.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace {

// The widget that receives a box's keys and focus changes. An editable combo box keeps the focus
// itself (its line edit's focus goes to it) and hands each typed key to its line edit by calling
// the line edit directly, past any filter on the line edit; a box made of parts sends its focus
// on through its focus proxy. The rules therefore sit on the widget the focus goes to.
QWidget* keyTarget(QWidget* box) {
    QWidget* target = box;
    while (target->focusProxy())
        target = target->focusProxy();
    if (auto* edit = qobject_cast<QLineEdit*>(target))
        if (auto* combo = qobject_cast<QComboBox*>(edit->parentWidget());
            combo && combo->lineEdit() == edit)
            return combo;
    return target;
}

// The line edit whose text a rule reads and writes: the box itself or a combo box's edit.
QLineEdit* lineEditOf(QObject* box) {
    if (auto* le = qobject_cast<QLineEdit*>(box))
        return le;
    if (auto* cb = qobject_cast<QComboBox*>(box))
        return cb->lineEdit();
    return nullptr;
}

QString boxText(QObject* box) {
    if (QLineEdit* le = lineEditOf(box))
        return le->text();
    if (auto* pe = qobject_cast<QPlainTextEdit*>(box))
        return pe->toPlainText();
    if (auto* te = qobject_cast<QTextEdit*>(box))
        return te->toPlainText();
    return {};
}

void setBoxText(QObject* box, const QString& text) {
    if (QLineEdit* le = lineEditOf(box))
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

void replaceApostrophes(QObject* box) {
    if (QLineEdit* le = lineEditOf(box)) {
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

// Types `code` into the box in place of the key pressed, as if that key had been pressed.
void retype(QObject* box, const QKeyEvent* pressed, int code) {
    const QChar c(code);
    // Qt's key codes of these characters are their upper-case code points.
    const int key = c.toUpper().unicode();
    QKeyEvent replaced(QEvent::KeyPress, key, pressed->modifiers(), QString(c),
                       pressed->isAutoRepeat(), ushort(pressed->count()));
    QCoreApplication::sendEvent(box, &replaced);
}

// A key filtered to `accepted`: dropped (0), typed as it is, or typed as another character.
// True when the key event is used up here.
bool takeKey(QObject* box, const QKeyEvent* pressed, int code, int accepted) {
    if (accepted == 0)
        return true;
    if (accepted != code) {
        retype(box, pressed, accepted);
        return true;
    }
    return false;
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
                retype(watched, ke, '`');
                return true;
            }
            if (mUpper && code >= 'a' && code <= 'z') {
                retype(watched, ke, code - 'a' + 'A');
                return true;
            }
            return false;
        case Kind::Number:
        case Kind::PlainNumber: {
            const QLineEdit* le = lineEditOf(watched);
            return NumericKey(le ? le->text() : QString(), code) == 0;
        }
        case Kind::AlphaNumeric:
            return takeKey(watched, ke, code, AlphaNumericKey(code, mUpper));
        case Kind::NoApostrophe:
            return code == '\'';
        case Kind::Digits:
            return !(code == 8 || (code >= '0' && code <= '9'));
        case Kind::Rule:
            return mRule && takeKey(watched, ke, code, mRule(boxText(watched), code));
        case Kind::FileName:
            return !(code == 8 || code == '-' || code == '_' || (code >= '0' && code <= '9') ||
                     (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z'));
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
            QLineEdit* le = lineEditOf(watched);
            if (le && !mMask.isEmpty())
                le->setText(Format(ParseLocaleNumber(le->text()), mMask));
        } else if (mKind == Kind::Number) {
            QLineEdit* le = lineEditOf(watched);
            if (le && !(mBlank == BlankBox::StaysBlank && le->text().trimmed().isEmpty()))
                le->setText(FormatNumber(le->text(), mMask));
        } else if (mKind == Kind::PlainNumber) {
            if (QLineEdit* le = lineEditOf(watched))
                le->setText(Format(ParseLocaleNumber(le->text()), mMask));
        }
    }
    return false;
}

namespace {
// Puts a rule on the widget that receives the box's keys; a combo box's line edit takes it too,
// for keys sent to the line edit itself. Keys the combo box hands on reach the line edit past its
// filters, so no key meets the rule twice.
void attach(QWidget* box, TextRulesFilter* filter) {
    QWidget* target = keyTarget(box);
    filter->setParent(target);
    target->installEventFilter(filter);
    if (auto* combo = qobject_cast<QComboBox*>(target); combo && combo->lineEdit())
        combo->lineEdit()->installEventFilter(filter);
}
} // namespace

void AttachTextRules(QWidget* box, bool upper) {
    attach(box, new TextRulesFilter(TextRulesFilter::Kind::Text, {}, upper, nullptr));
}

void AttachNumberRules(QWidget* box, const QString& mask, BlankBox blank) {
    attach(box, new TextRulesFilter(TextRulesFilter::Kind::Number, mask, false, nullptr, blank));
}

void AttachPlainNumberRules(QWidget* box, const QString& mask) {
    attach(box, new TextRulesFilter(TextRulesFilter::Kind::PlainNumber, mask, false, nullptr));
}

void AttachAlphaNumericRules(QWidget* box, bool upper) {
    attach(box, new TextRulesFilter(TextRulesFilter::Kind::AlphaNumeric, {}, upper, nullptr));
}

void AttachNoApostropheRules(QWidget* box, bool removeOnLeave) {
    auto* filter = new TextRulesFilter(TextRulesFilter::Kind::NoApostrophe, {}, false, nullptr);
    filter->SetRemoveOnLeave(removeOnLeave);
    attach(box, filter);
}

void AttachDigitRules(QWidget* box, const QString& mask) {
    attach(box, new TextRulesFilter(TextRulesFilter::Kind::Digits, mask, false, nullptr));
}

void AttachKeyRule(QWidget* box, KeyRule rule) {
    auto* filter = new TextRulesFilter(TextRulesFilter::Kind::Rule, {}, false, nullptr);
    filter->SetRule(std::move(rule));
    attach(box, filter);
}

void AttachFileNameRules(QWidget* box) {
    attach(box, new TextRulesFilter(TextRulesFilter::Kind::FileName, {}, false, nullptr));
}
