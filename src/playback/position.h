// The digit clock, the position bar and seeking, as numbers. Pure functions; any thread.
#pragma once

#include <QtGlobal>
#include <array>

namespace kestrune {

// Width of the position bar in pixels, the thumb's included.
inline constexpr int positionBarWidth = 198;

struct ClockDigits {
    std::array<int, 4> minutesSeconds{}; // minutes tens, minutes, seconds tens, seconds
    std::array<int, 2> ticks{};          // sixtieths of a second, tens and ones
};

// Minutes above 99 show their last two digits.
ClockDigits DigitsFor(qint64 ms);

// Width of the elapsed line in pixels; 0 for a total of 0.
double LineWidthFor(qint64 ms, qint64 totalMs, int thumbWidth);

// Milliseconds that a width of the elapsed line stands for, rounded.
qint64 SeekTargetMs(double lineWidth, qint64 totalMs, int thumbWidth);

} // namespace kestrune
