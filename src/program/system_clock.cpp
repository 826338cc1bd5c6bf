#include "program/system_clock.h"

#include <QTime>

namespace kestrune {

qint64 SystemClock::MsSinceMidnight() {
    return QTime::currentTime().msecsSinceStartOfDay();
}

} // namespace kestrune
