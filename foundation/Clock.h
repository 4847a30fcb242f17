// The one source of today's date and of the time of day.
#pragma once

#include <QDate>
#include <functional>

QDate Today();
// Tests fix the date; an invalid date returns to the system clock.
void SetToday(const QDate& d);

// Milliseconds since midnight, as the timer of Pause reads it.
int MillisecondsSinceMidnight();
// Tests replace the time-of-day source; an empty function restores the system clock.
void SetTimeOfDaySource(std::function<int()> source);
