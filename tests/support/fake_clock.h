// A clock that stands where the test puts it, and chance from a list.
#pragma once

#include "components/clock.h"

#include <QList>

namespace kestrune {

class FakeClock : public Clock {
public:
    qint64 msSinceMidnight = 0;
    qint64 monotonicMs = 0;
    QList<quint32> seeds;  // all that were given
    QList<double> randoms; // taken from the front; 0 when it is empty

    qint64 MsSinceMidnight() override { return msSinceMidnight; }
    qint64 MonotonicMs() override { return monotonicMs; }
    void Seed(quint32 seed) override { seeds.append(seed); }
    double Random() override { return randoms.isEmpty() ? 0.0 : randoms.takeFirst(); }
};

} // namespace kestrune
