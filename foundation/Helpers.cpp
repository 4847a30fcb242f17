#include "foundation/Helpers.h"

#include "foundation/Clock.h"
#include "foundation/Globals.h"

#include <QCoreApplication>
#include <QLocale>
#include <QRegularExpression>
#include <QThread>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

QChar groupChar(const QLocale& loc) {
    const QString g = loc.groupSeparator();
    return g.isEmpty() ? QChar() : g.at(0);
}

QChar pointChar(const QLocale& loc) {
    const QString p = loc.decimalPoint();
    return p.isEmpty() ? QLatin1Char('.') : p.at(0);
}

// The separators of the default locale, read again only when the default locale changes.
struct LocaleSeparators {
    QLocale locale;
    QChar point;
    QChar group;
};

const LocaleSeparators& currentSeparators() {
    static LocaleSeparators cache{QLocale(), pointChar(QLocale()), groupChar(QLocale())};
    const QLocale now;
    if (!(now == cache.locale))
        cache = {now, pointChar(now), groupChar(now)};
    return cache;
}

} // namespace

NumberMask::NumberMask(const QString& mask) {
    const LocaleSeparators& sep = currentSeparators();
    mPoint = sep.point;
    mGroup = sep.group;
    bool afterPoint = false;
    for (QChar c : mask) {
        if (c == QLatin1Char('.')) {
            afterPoint = true;
            mHasPoint = true;
        } else if (!afterPoint) {
            if (c == QLatin1Char('0'))
                ++mMinInt;
            else if (c == QLatin1Char(','))
                mGrouping = true;
        } else if (c == QLatin1Char('0')) {
            ++mMinDec;
            ++mMaxDec;
        } else if (c == QLatin1Char('#')) {
            ++mMaxDec;
        }
    }
}

// The value is taken as 15 significant decimal digits (as the text of a number reads), rounded
// at the mask's last place with halves away from zero, then laid out by the mask.
QString NumberMask::write(double value, QChar point, QChar group, bool wholeRule) const {
    if (!std::isfinite(value))
        value = 0;
    bool negative = value < 0;
    char buf[40];
    // "%.14e", exactly as printf writes it, at a fraction of printf's cost.
    const auto written = std::to_chars(buf, buf + sizeof buf - 1, std::fabs(value),
                                       std::chars_format::scientific, 14);
    *written.ptr = '\0';
    // Digit string with room for leading zeros of tiny values and places of huge ones.
    char digits[720];
    int n = 0;
    const char* p = buf;
    for (; *p && *p != 'e'; ++p)
        if (*p >= '0' && *p <= '9')
            digits[n++] = *p;
    const int exp = *p == 'e' ? std::atoi(p + 1) : 0;
    int pointPos = exp + 1; // digits before the decimal point
    if (pointPos < 0) {
        const int shift = std::min(-pointPos, 340);
        std::memmove(digits + shift, digits, size_t(n));
        std::memset(digits, '0', size_t(shift));
        n += shift;
        pointPos = 0;
    }
    const int maxDec = std::min(mMaxDec, 30);
    const int keep = pointPos + maxDec;
    while (n < keep + 1)
        digits[n++] = '0';
    // kept[0] takes a carry; kept[1..keep] are the digits kept.
    char kept[720];
    kept[0] = '0';
    std::memcpy(kept + 1, digits, size_t(keep));
    if (digits[keep] >= '5') {
        int i = keep;
        for (; i >= 1; --i) {
            if (kept[i] == '9') {
                kept[i] = '0';
            } else {
                ++kept[i];
                break;
            }
        }
        if (i < 1)
            kept[0] = '1';
    }
    const char* intBegin = kept;
    const char* intEnd = kept + 1 + pointPos;
    while (intBegin < intEnd && *intBegin == '0')
        ++intBegin;
    const char* frac = intEnd;
    int fracLen = maxDec;
    bool fracZero = true;
    for (int i = 0; i < fracLen && fracZero; ++i)
        fracZero = frac[i] == '0';
    if (intBegin == intEnd && fracZero)
        negative = false;
    const int intLen = int(intEnd - intBegin);
    if (wholeRule && mHasPoint && fracZero) {
        // A result with no fractional value reads as the whole number.
        fracLen = 0;
    } else {
        while (fracLen > mMinDec && frac[fracLen - 1] == '0')
            --fracLen;
    }
    const int intDigits = std::max(intLen, std::max(mMinInt, wholeRule && fracLen == 0 ? 1 : 0));
    const bool grouped = mGrouping && !group.isNull();
    QString out;
    out.reserve(1 + intDigits + intDigits / 3 + 1 + fracLen);
    if (negative)
        out += QLatin1Char('-');
    for (int i = 0; i < intDigits; ++i) {
        const int fromEnd = intDigits - i;
        out += QLatin1Char(i < intDigits - intLen ? '0' : intBegin[i - (intDigits - intLen)]);
        if (grouped && fromEnd > 1 && (fromEnd - 1) % 3 == 0)
            out += group;
    }
    if (fracLen > 0) {
        out += point;
        out += QLatin1String(frac, fracLen);
    }
    return out;
}

QString NumberMask::Plain(double value) const {
    return write(value, mPoint, mGroup, false);
}
QString NumberMask::Screen(double value) const {
    return write(value, mPoint, mGroup, true);
}
QString NumberMask::Sql(double value) const {
    return write(value, QLatin1Char('.'), QChar(), true);
}

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
    return NumberMask(mask).Plain(value);
}

QString FormatNumber(double value, const QString& mask) {
    return NumberMask(mask).Screen(value);
}
QString FormatNumber(const QString& text, const QString& mask) {
    return FormatNumber(ParseLocaleNumber(text), mask);
}
QString FormatNumber(const QVariant& value, const QString& mask) {
    return FormatNumber(ParseLocaleNumber(value), mask);
}

QString SqlNumber(double value, const QString& mask) {
    return NumberMask(mask).Sql(value);
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
