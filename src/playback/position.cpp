#include "playback/position.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

ClockDigits DigitsFor(qint64 ms) {
    const qint64 position = std::max<qint64>(ms, 0);
    const auto minutes = static_cast<int>(position / 60000 % 100);
    const auto seconds = static_cast<int>(position / 1000 % 60);
    const auto ticks = static_cast<int>(position % 1000 * 60 / 1000);
    ClockDigits digits;
    digits.minutesSeconds = {minutes / 10, minutes % 10, seconds / 10, seconds % 10};
    digits.ticks = {ticks / 10, ticks % 10};
    return digits;
}

double LineWidthFor(qint64 ms, qint64 totalMs, int thumbWidth) {
    if (totalMs <= 0) {
        return 0;
    }
    const double part = std::clamp(static_cast<double>(ms) / static_cast<double>(totalMs), 0.0, 1.0);
    return part * (positionBarWidth - thumbWidth);
}

qint64 SeekTargetMs(double lineWidth, qint64 totalMs, int thumbWidth) {
    const double target = lineWidth * static_cast<double>(totalMs) / (positionBarWidth - thumbWidth);
    return std::clamp<qint64>(std::llround(target), 0, std::max<qint64>(totalMs, 0));
}

} // namespace kestrune
