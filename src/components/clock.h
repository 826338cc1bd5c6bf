// Time and chance, so that a test can set both.
#pragma once

#include <QtGlobal>

namespace kestrune {

class Clock {
public:
    virtual ~Clock() = default;
    // Milliseconds since local midnight, 0 to 86,399,999.
    virtual qint64 MsSinceMidnight() = 0;
    // Milliseconds of a clock that never goes back; only differences mean something.
    virtual qint64 MonotonicMs() = 0;
    // Seeds the generator behind Random. The same seed gives the same numbers.
    virtual void Seed(quint32 seed) = 0;
    // A number from 0 up to, but not including, 1.
    virtual double Random() = 0;
};

} // namespace kestrune
