#include "foundation/Clock.h"

#include <QTime>

namespace {
QDate gFixedToday;
std::function<int()> gTimeOfDay;
} // namespace

QDate Today() {
    return gFixedToday.isValid() ? gFixedToday : QDate::currentDate();
}

void SetToday(const QDate& d) {
    gFixedToday = d;
}

int MillisecondsSinceMidnight() {
    return gTimeOfDay ? gTimeOfDay() : QTime::currentTime().msecsSinceStartOfDay();
}

void SetTimeOfDaySource(std::function<int()> source) {
    gTimeOfDay = std::move(source);
}
