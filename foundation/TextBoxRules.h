// The entry rules of text boxes, written once as event filters and attached to each box.
#pragma once

#include <QObject>
#include <QString>

class QWidget;
class QLineEdit;

// Free text (QLineEdit, QPlainTextEdit, QTextEdit, editable QComboBox): "'" typed becomes a
// back-quote; on leaving, any "'" left (pasted text) is replaced and the text written back.
void AttachTextRules(QWidget* box);
// Number boxes: NumericKey on each key; on leaving, the text is formatted with the mask (a blank
// box then reads 0, unless it is to stay blank).
enum class BlankBox { ReadsZero, StaysBlank };
void AttachNumberRules(QLineEdit* box, const QString& mask, BlankBox blank = BlankBox::ReadsZero);
// Code boxes: AlphaNumericKey on each key, lower case turned to upper when `upper` is set.
void AttachAlphaNumericRules(QLineEdit* box, bool upper);
// File-name boxes: only the letters A to Z and a to z, the digits, "-", "_" and backspace can be
// typed; every other character key is swallowed.
void AttachFileNameRules(QLineEdit* box);

class TextRulesFilter : public QObject {
    Q_OBJECT
public:
    enum class Kind { Text, Number, AlphaNumeric, FileName };
    TextRulesFilter(Kind kind, const QString& mask, bool upper, QObject* parent,
                    BlankBox blank = BlankBox::ReadsZero);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Kind mKind;
    QString mMask;
    bool mUpper;
    BlankBox mBlank;
};
