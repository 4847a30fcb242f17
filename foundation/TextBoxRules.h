// The entry rules of text boxes, written once as event filters and attached to each box.
#pragma once

#include <QObject>
#include <QString>
#include <functional>

class QWidget;

// Each rule is attached to the box the user types into: a QLineEdit, QPlainTextEdit, QTextEdit or
// an editable QComboBox (its line edit may be given instead), or a box made of parts through its
// focus proxy. The rules sit where the box's keys and focus changes arrive, which for a combo box
// is the combo box itself, not its line edit.

// Free text: "'" typed becomes a back-quote; on leaving, any "'" left (pasted text) is replaced
// and the text written back. With `upper` set, the letters a to z are also turned into capitals
// as they are typed.
void AttachTextRules(QWidget* box, bool upper = false);
// Number boxes: NumericKey on each key; on leaving, the text is formatted with the mask (a blank
// box then reads 0, unless it is to stay blank).
enum class BlankBox { ReadsZero, StaysBlank };
void AttachNumberRules(QWidget* box, const QString& mask, BlankBox blank = BlankBox::ReadsZero);
// Money boxes rewritten through their mask as it stands (7 with "0.00" reads "7.00"), with
// NumericKey on each key.
void AttachPlainNumberRules(QWidget* box, const QString& mask);
// Code boxes: AlphaNumericKey on each key, lower case turned to upper when `upper` is set.
void AttachAlphaNumericRules(QWidget* box, bool upper);
// Free text that refuses "'" outright; with `removeOnLeave`, any "'" left (pasted text) is taken
// out of the text on leaving.
void AttachNoApostropheRules(QWidget* box, bool removeOnLeave);
// Boxes that take the digits 0 to 9 and backspace only; on leaving, a pasted "'" becomes "`" and
// the text is formatted with `mask` when one is given.
void AttachDigitRules(QWidget* box, const QString& mask = QString());
// A box whose keys follow a rule of its own: the text so far and the key code typed (backspace
// is 8) in, the code to accept or 0 to drop the key out.
using KeyRule = std::function<int(const QString& text, int keyCode)>;
void AttachKeyRule(QWidget* box, KeyRule rule);
// File-name boxes: only the letters A to Z and a to z, the digits, "-", "_" and backspace can be
// typed; every other character key is swallowed.
void AttachFileNameRules(QWidget* box);

class TextRulesFilter : public QObject {
    Q_OBJECT
public:
    enum class Kind {
        Text,
        Number,
        PlainNumber,
        AlphaNumeric,
        NoApostrophe,
        Digits,
        Rule,
        FileName
    };
    TextRulesFilter(Kind kind, const QString& mask, bool upper, QObject* parent,
                    BlankBox blank = BlankBox::ReadsZero);
    bool eventFilter(QObject* watched, QEvent* event) override;
    // Kind::NoApostrophe: take "'" out on leaving. Kind::Rule: the rule applied to each key.
    void SetRemoveOnLeave(bool on) { mRemoveOnLeave = on; }
    void SetRule(KeyRule rule) { mRule = std::move(rule); }

private:
    Kind mKind;
    QString mMask;
    bool mUpper;
    BlankBox mBlank;
    bool mRemoveOnLeave = false;
    KeyRule mRule;
};
