// The entry rules of text boxes, written once as event filters and attached to each box.
#pragma once

#include <QObject>
#include <QString>

class QWidget;

// Each rule is attached to the box the user types into: a QLineEdit, QPlainTextEdit, QTextEdit or
// an editable QComboBox (its line edit may be given instead), or a box made of parts through its
// focus proxy. The rules sit where the box's keys and focus changes arrive, which for a combo box
// is the combo box itself, not its line edit.

// Free text: "'" typed becomes a back-quote; on leaving, any "'" left (pasted text) is replaced
// and the text written back.
void AttachTextRules(QWidget* box);
// Number boxes: NumericKey on each key; on leaving, the text is formatted with the mask (a blank
// box then reads 0, unless it is to stay blank).
enum class BlankBox { ReadsZero, StaysBlank };
void AttachNumberRules(QWidget* box, const QString& mask, BlankBox blank = BlankBox::ReadsZero);
// Code boxes: AlphaNumericKey on each key, lower case turned to upper when `upper` is set.
void AttachAlphaNumericRules(QWidget* box, bool upper);

class TextRulesFilter : public QObject {
    Q_OBJECT
public:
    enum class Kind { Text, Number, AlphaNumeric };
    TextRulesFilter(Kind kind, const QString& mask, bool upper, QObject* parent,
                    BlankBox blank = BlankBox::ReadsZero);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Kind mKind;
    QString mMask;
    bool mUpper;
    BlankBox mBlank;
};
