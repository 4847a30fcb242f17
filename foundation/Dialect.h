// The few pieces of statement text that depend on the engine's dialect.
// Procedures build their statements with these instead of writing the fragments themselves.
#pragma once

#include <QDate>
#include <QString>

// A date literal: 'YYYY-MM-DD'. An invalid date gives the no-date literal '2040-01-01'.
QString SqlDateLiteral(const QDate& d);
// The no-date value that stands for an empty date in date columns.
QDate NoDate();
QString NoDateText(); // "2040-01-01"

// "LIKE 'text%' ESCAPE '\'": a prefix match with %, _ and \ of the text matched literally.
QString LikePrefix(const QString& typed);
// "LIKE '%text%' ESCAPE '\'": a contains match, escaped the same way.
QString LikeContains(const QString& typed);
// The escaped pattern body alone (no quotes, no wildcard).
QString LikeEscape(const QString& typed);

// " LIMIT 1": appended to a statement that keeps only its first row.
QString FirstRowOnly();
// The value a flag column holds for True.
QString SqlTrue();
QString SqlFalse();
// A text literal for a statement built by joining: apostrophes become back-quotes, as every
// text box of the system does, and the text is enclosed in apostrophes.
QString SqlText(const QString& text);
