#include "foundation/Helpers.h"

#include "foundation/Clock.h"
#include "foundation/Globals.h"

#include <QCoreApplication>
#include <QLocale>
#include <QRegularExpression>
#include <QThread>
#include <cmath>
#include <cstdio>

namespace {

struct Mask {
    int minInt = 0;
    bool grouping = false;
    bool hasPoint = false;
    int minDec = 0;
    int maxDec = 0;
};

Mask parseMask(const QString& mask) {
    Mask m;
    const int dot = mask.indexOf(QLatin1Char('.'));
    const QString intPart = dot < 0 ? mask : mask.left(dot);
    for (QChar c : intPart) {
        if (c == QLatin1Char('0'))
            ++m.minInt;
        else if (c == QLatin1Char(','))
            m.grouping = true;
    }
    if (dot >= 0) {
        m.hasPoint = true;
        for (QChar c : mask.mid(dot + 1)) {
            if (c == QLatin1Char('0')) {
                ++m.minDec;
                ++m.maxDec;
            } else if (c == QLatin1Char('#')) {
                ++m.maxDec;
            }
        }
    }
    return m;
}

bool allZero(const QString& digits) {
    for (QChar c : digits)
        if (c != QLatin1Char('0'))
            return false;
    return true;
}

struct Digits {
    bool negative = false;
    QString intDigits;  // no leading zeros; "" for zero
    QString fracDigits; // exactly maxDec digits
};

// The value as 15 significant decimal digits (as the text of a number reads), rounded at
// `decimals` places with halves away from zero.
Digits roundDecimal(double value, int decimals) {
    Digits r;
    if (!std::isfinite(value))
        value = 0;
    r.negative = value < 0;
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.14e", std::fabs(value));
    // buf: d.dddddddddddddde[+-]XX
    QString mant;
    const char* p = buf;
    for (; *p && *p != 'e'; ++p)
        if (*p >= '0' && *p <= '9')
            mant += QLatin1Char(*p);
    const int exp = *p == 'e' ? std::atoi(p + 1) : 0;
    int pointPos = exp + 1; // number of digits before the decimal point
    // Make room so that the digit string covers every place up to `decimals`.
    if (pointPos < 0) {
        mant = QString(-pointPos, QLatin1Char('0')) + mant;
        pointPos = 0;
    }
    const int keep = pointPos + decimals;
    if (mant.size() < keep + 1)
        mant += QString(keep + 1 - mant.size(), QLatin1Char('0'));
    QString kept = mant.left(keep);
    const bool up = mant.at(keep) >= QLatin1Char('5');
    if (up) {
        int i = kept.size() - 1;
        for (; i >= 0; --i) {
            if (kept[i] == QLatin1Char('9')) {
                kept[i] = QLatin1Char('0');
            } else {
                kept[i] = QChar(kept[i].unicode() + 1);
                break;
            }
        }
        if (i < 0) {
            kept.prepend(QLatin1Char('1'));
            ++pointPos;
        }
    }
    QString intDigits = kept.left(pointPos);
    while (intDigits.startsWith(QLatin1Char('0')))
        intDigits.remove(0, 1);
    r.intDigits = intDigits;
    r.fracDigits = kept.mid(pointPos);
    if (r.intDigits.isEmpty() && allZero(r.fracDigits))
        r.negative = false;
    return r;
}

QString formatWith(double value, const QString& mask, QChar point, QChar group, bool wholeRule) {
    const Mask m = parseMask(mask);
    const Digits d = roundDecimal(value, m.maxDec);
    QString intText = d.intDigits;
    if (intText.size() < m.minInt)
        intText = QString(m.minInt - intText.size(), QLatin1Char('0')) + intText;
    QString frac = d.fracDigits;
    const bool whole = allZero(frac);
    while (frac.size() > m.minDec && frac.endsWith(QLatin1Char('0')))
        frac.chop(1);
    if (wholeRule && m.hasPoint && whole) {
        // A result with no fractional value reads as the whole number.
        frac.clear();
        if (intText.isEmpty())
            intText = QStringLiteral("0");
    }
    if (m.grouping && !group.isNull()) {
        for (int i = intText.size() - 3; i > 0; i -= 3)
            intText.insert(i, group);
    }
    QString out = d.negative ? QStringLiteral("-") : QString();
    out += intText;
    if (!frac.isEmpty())
        out += point + frac;
    return out;
}

QChar groupChar(const QLocale& loc) {
    const QString g = loc.groupSeparator();
    return g.isEmpty() ? QChar() : g.at(0);
}

} // namespace

double ParseLocaleNumber(const QString& input) {
    QString text = input.trimmed();
    if (gDecimalSep == QLatin1Char('.'))
        text.remove(QLatin1Char(','));
    else
        text.remove(QLatin1Char('.'));
    if (text.isEmpty())
        text = QStringLiteral("0");
    QLocale loc;
    loc.setNumberOptions(QLocale::RejectGroupSeparator);
    bool ok = false;
    const double v = loc.toDouble(text, &ok);
    return ok ? v : 0.0;
}

double ParseLocaleNumber(double value) {
    return QString::number(value, 'g', 15).toDouble();
}

double ParseLocaleNumber(const QVariant& value) {
    if (value.isNull() || !value.isValid())
        return 0;
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Long:
    case QMetaType::Short:
        return ParseLocaleNumber(value.toDouble());
    case QMetaType::Bool:
        return value.toBool() ? -1 : 0;
    default:
        return ParseLocaleNumber(value.toString());
    }
}

QString Format(double value, const QString& mask) {
    const QLocale loc;
    return formatWith(value, mask, loc.decimalPoint().at(0), groupChar(loc), false);
}

QString FormatNumber(double value, const QString& mask) {
    const QLocale loc;
    return formatWith(ParseLocaleNumber(value), mask, loc.decimalPoint().at(0), groupChar(loc),
                      true);
}
QString FormatNumber(const QString& text, const QString& mask) {
    return FormatNumber(ParseLocaleNumber(text), mask);
}
QString FormatNumber(const QVariant& value, const QString& mask) {
    return FormatNumber(ParseLocaleNumber(value), mask);
}

QString SqlNumber(double value, const QString& mask) {
    return formatWith(ParseLocaleNumber(value), mask, QLatin1Char('.'), QChar(), true);
}
QString SqlNumber(const QString& text, const QString& mask) {
    return SqlNumber(ParseLocaleNumber(text), mask);
}
QString SqlNumber(const QVariant& value, const QString& mask) {
    return SqlNumber(ParseLocaleNumber(value), mask);
}

QString SqlDate(const QDate& d) {
    if (!d.isValid())
        return QString();
    return QStringLiteral("%1-%2-%3")
        .arg(d.year())
        .arg(d.month(), 2, 10, QLatin1Char('0'))
        .arg(d.day(), 2, 10, QLatin1Char('0'));
}

QString DateDisplayFormat() {
    QString f = QLocale().dateFormat(QLocale::ShortFormat);
    if (!f.contains(QStringLiteral("yyyy")))
        f.replace(QStringLiteral("yy"), QStringLiteral("yyyy"));
    return f;
}

QDate ParseDateText(const QString& input) {
    const QString text = input.trimmed();
    if (text.isEmpty())
        return {};
    // Date columns hold ISO text; a time part may follow.
    static const QRegularExpression iso(QStringLiteral("^(\\d{4})-(\\d{1,2})-(\\d{1,2})"));
    if (const auto m = iso.match(text); m.hasMatch())
        return QDate(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    const QLocale loc;
    for (const QString& f :
         {DateDisplayFormat(), loc.dateFormat(QLocale::ShortFormat), QStringLiteral("d/M/yyyy"),
          QStringLiteral("d.M.yyyy"), QStringLiteral("d-M-yyyy"), QStringLiteral("d/M/yy"),
          QStringLiteral("d.M.yy")}) {
        QDate d = loc.toDate(text, f);
        if (d.isValid()) {
            if (d.year() < 1930 && !f.contains(QStringLiteral("yyyy")))
                d = d.addYears(100);
            return d;
        }
    }
    return {};
}

QString ShowDate(const QDate& d) {
    if (!d.isValid() || d.year() <= 2000 || d.year() >= 2040)
        return QString();
    return QLocale().toString(d, DateDisplayFormat());
}

QString ShowDate(const QVariant& value) {
    if (value.typeId() == QMetaType::QDate)
        return ShowDate(value.toDate());
    if (value.typeId() == QMetaType::QDateTime)
        return ShowDate(value.toDateTime().date());
    return ShowDate(ParseDateText(value.toString()));
}

QString SqlDateOrFar(const QString& text) {
    const QDate d = ParseDateText(text);
    return d.isValid() ? SqlDate(d) : QStringLiteral("2040-01-01");
}

QString ApostropheOut(const QString& text) {
    QString s = text;
    s.replace(QLatin1Char('\''), QLatin1Char('`'));
    return s;
}

int NumericKey(const QString& text, int keyCode) {
    if (keyCode == 8)
        return keyCode;
    if (keyCode == gDecimalSep.unicode())
        return text.contains(gDecimalSep) ? 0 : keyCode;
    if (keyCode >= '0' && keyCode <= '9')
        return keyCode;
    return 0;
}

int AlphaNumericKey(int keyCode, bool upper) {
    if (keyCode == 8)
        return keyCode;
    if (keyCode >= 'a' && keyCode <= 'z')
        return upper ? keyCode - 'a' + 'A' : keyCode;
    if ((keyCode >= 'A' && keyCode <= 'Z') || (keyCode >= '0' && keyCode <= '9'))
        return keyCode;
    return 0;
}

double Val(const QString& text) {
    QString num;
    bool digits = false, point = false, exponent = false;
    int i = 0;
    const int n = int(text.size());
    auto blank = [](QChar c) {
        return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\n') ||
               c == QLatin1Char('\r');
    };
    while (i < n && blank(text[i]))
        ++i;
    if (i < n && (text[i] == QLatin1Char('-') || text[i] == QLatin1Char('+')))
        num += text[i++];
    for (; i < n; ++i) {
        const QChar c = text[i];
        if (blank(c))
            continue;
        if (c.isDigit() && c.unicode() < 128) {
            num += c;
            digits = true;
        } else if (c == QLatin1Char('.') && !point && !exponent) {
            num += c;
            point = true;
        } else if ((c == QLatin1Char('e') || c == QLatin1Char('E') || c == QLatin1Char('d') ||
                    c == QLatin1Char('D')) &&
                   digits && !exponent) {
            // An exponent counts only when digits follow it.
            int j = i + 1;
            QString ex = QStringLiteral("e");
            if (j < n && (text[j] == QLatin1Char('-') || text[j] == QLatin1Char('+')))
                ex += text[j++];
            if (j < n && text[j].isDigit()) {
                num += ex;
                exponent = true;
                i = j - 1;
            } else {
                break;
            }
        } else {
            break;
        }
    }
    if (!digits)
        return 0;
    bool ok = false;
    const double v = num.toDouble(&ok);
    return ok ? v : 0;
}

void Pause(int milliseconds) {
    int start = MillisecondsSinceMidnight();
    for (;;) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        const int now = MillisecondsSinceMidnight();
        if (now < start)
            start = now; // midnight passed: the wait starts over
        if (now - start >= milliseconds)
            return;
        QThread::msleep(std::min(5, milliseconds));
    }
}
