// Text, number and date rules shared by every window and statement.
#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

// Text to number with the locale: group separators are dropped (all "," when the decimal
// separator is ".", otherwise all "."), empty text is 0, text that cannot be read is 0.
double ParseLocaleNumber(const QString& text);
double ParseLocaleNumber(double value);
double ParseLocaleNumber(const QVariant& value);

// A number mask ("0.0#", "#,##0.00", "0000", ...) read once, with the locale's separators, for
// code that writes many values by the same mask. Halves round away from zero.
class NumberMask {
public:
    explicit NumberMask(const QString& mask);
    QString Plain(double value) const;  // as Format
    QString Screen(double value) const; // as FormatNumber
    QString Sql(double value) const;    // as SqlNumber

private:
    QString write(double value, QChar point, QChar group, bool wholeRule) const;
    int mMinInt = 0;
    bool mGrouping = false;
    bool mHasPoint = false;
    int mMinDec = 0;
    int mMaxDec = 0;
    QChar mPoint;
    QChar mGroup;
};

// Format by a mask ("0.0#", "0.00###", "#,##0.00", "0000", ...), rounding halves away from zero,
// with the locale's separators.
QString Format(double value, const QString& mask);
// Text for screens: the value formatted by the mask, shown as a whole number when the formatted
// result has no fractional value (5 with "0.0#" reads "5").
QString FormatNumber(double value, const QString& mask);
QString FormatNumber(const QString& text, const QString& mask);
QString FormatNumber(const QVariant& value, const QString& mask);
// Text for statements: as FormatNumber, always with "." as the decimal point and no grouping.
QString SqlNumber(double value, const QString& mask);
QString SqlNumber(const QString& text, const QString& mask);
QString SqlNumber(const QVariant& value, const QString& mask);

// "YYYY-MM-DD", month and day through "00".
QString SqlDate(const QDate& d);
// The date's text when it is a date with a year above 2000 and below 2040, otherwise "".
QString ShowDate(const QVariant& value);
QString ShowDate(const QDate& d);
// A valid date gives its ISO text, anything else the no-date "2040-01-01".
QString SqlDateOrFar(const QString& text);
// Reads a date typed by the user or held in a date column; invalid when it is not a date.
QDate ParseDateText(const QString& text);
// The locale's short date format with a four-digit year.
QString DateDisplayFormat();

// Every "'" replaced by a back-quote.
QString ApostropheOut(const QString& text);

// Key filters: the key code to accept it, 0 to refuse. Backspace (8) always passes.
int NumericKey(const QString& text, int keyCode);
int AlphaNumericKey(int keyCode, bool upper);

// The leading number of a text, else 0 (VB's Val).
double Val(const QString& text);

// Waits, letting window events run, on the seconds-since-midnight timer. If midnight passes the
// wait starts over.
void Pause(int milliseconds);
