// The clock of the running program.
#pragma once

#include "components/clock.h"

#include <QElapsedTimer>
#include <random>

namespace kestrune {

class SystemClock : public Clock {
public:
    SystemClock() { running_.start(); }
    qint64 MsSinceMidnight() override;
    qint64 MonotonicMs() override { return running_.elapsed(); }
    void Seed(quint32 seed) override { generator_.seed(seed); }
    double Random() override { return std::uniform_real_distribution<double>(0.0, 1.0)(generator_); }

private:
    QElapsedTimer running_;
    std::mt19937 generator_;
};

} // namespace kestrune
