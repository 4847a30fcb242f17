#include "foundation/Dialect.h"

#include "foundation/Helpers.h"

QDate NoDate() {
    return QDate(2040, 1, 1);
}
QString NoDateText() {
    return QStringLiteral("2040-01-01");
}

QString SqlDateLiteral(const QDate& d) {
    return QLatin1Char('\'') + (d.isValid() ? SqlDate(d) : NoDateText()) + QLatin1Char('\'');
}

QString LikeEscape(const QString& typed) {
    QString s;
    s.reserve(typed.size() + 4);
    for (QChar c : ApostropheOut(typed)) {
        if (c == QLatin1Char('%') || c == QLatin1Char('_') || c == QLatin1Char('\\'))
            s += QLatin1Char('\\');
        s += c;
    }
    return s;
}

QString LikePrefix(const QString& typed) {
    return QStringLiteral("LIKE '") + LikeEscape(typed) + QStringLiteral("%' ESCAPE '\\'");
}

QString LikeContains(const QString& typed) {
    return QStringLiteral("LIKE '%") + LikeEscape(typed) + QStringLiteral("%' ESCAPE '\\'");
}

QString FirstRowOnly() {
    return QStringLiteral(" LIMIT 1");
}
QString SqlTrue() {
    return QStringLiteral("-1");
}
QString SqlFalse() {
    return QStringLiteral("0");
}

QString SqlText(const QString& text) {
    return QLatin1Char('\'') + ApostropheOut(text) + QLatin1Char('\'');
}
