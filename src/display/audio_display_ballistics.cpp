#include "display/audio_display_ballistics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace kestrune {

namespace {

constexpr double silenceDb = -160;
constexpr double spectrumRangeDb = 72;
constexpr double referenceDb = -9;
constexpr double referencePlace = 0.70;

// Falls from the top to the foot in 0.9 s and 1.3 s: 2 / t^2.
constexpr double levelGravity = 2.5;
constexpr double peakGravity = 1.2;

// Damping and natural frequency (radians a second) that give the overshoot and the rise of a volume meter.
constexpr double damping = 0.81;
constexpr double naturalFrequency = 13.45;

struct ScalePoint {
    double db;
    double place;
};
constexpr std::array<ScalePoint, 6> meterPoints = {
    {{-60, 0}, {-40, 0.12}, {-30, 0.24}, {-20, 0.44}, {referenceDb, referencePlace}, {0, 1}}};

} // namespace

double DbOfLevel(double level) {
    return level > 0 ? std::max(silenceDb, 20 * std::log10(level)) : silenceDb;
}

double MeterScale(double db) {
    if (db <= meterPoints.front().db) {
        return 0;
    }
    for (size_t i = 1; i < meterPoints.size(); ++i) {
        const ScalePoint& low = meterPoints[i - 1];
        const ScalePoint& high = meterPoints[i];
        if (db <= high.db) {
            return low.place + (db - low.db) / (high.db - low.db) * (high.place - low.place);
        }
    }
    return 1;
}

double SpectrumScale(double db) {
    return std::clamp(1 + db / spectrumRangeDb, 0.0, 1.0);
}

double NeedleScale(double rectifiedAverage) {
    // The rectified average of a sine is 2 / pi of its peak.
    const double sinePeak = rectifiedAverage * std::numbers::pi / 2;
    return std::min(needleStop, sinePeak / std::pow(10, referenceDb / 20) * referencePlace);
}

double NeedleMark(double vu) {
    return std::pow(10, vu / 20) * referencePlace;
}

void FallingLevel::Move(double target, double spanMs, double holdMs) {
    const double span = spanMs / 1000;
    if (target >= level_) {
        level_ = target;
        speed_ = 0;
    } else {
        const double fallen = level_ - speed_ * span - levelGravity * span * span / 2;
        speed_ = fallen > target ? speed_ + levelGravity * span : 0;
        level_ = std::max(fallen, target);
    }
    if (level_ >= peak_) {
        peak_ = level_;
        peakSpeed_ = 0;
        peakAgeMs_ = 0;
        return;
    }
    peakAgeMs_ += spanMs;
    const double falling = std::clamp(peakAgeMs_ - holdMs, 0.0, spanMs) / 1000;
    const double fallen = peak_ - peakSpeed_ * falling - peakGravity * falling * falling / 2;
    peakSpeed_ += peakGravity * falling;
    peak_ = std::max(fallen, level_);
}

void Needle::Move(double target, double spanMs) {
    // The motion of a damped spring under a constant force, solved exactly: any span will do.
    const double span = spanMs / 1000;
    const double dampedFrequency = naturalFrequency * std::sqrt(1 - damping * damping);
    const double decay = std::exp(-damping * naturalFrequency * span);
    const double sine = std::sin(dampedFrequency * span) / dampedFrequency;
    const double cosine = std::cos(dampedFrequency * span);
    const double offset = deflection_ - target;
    const double startSpeed = speed_;
    deflection_ =
        target + decay * (offset * cosine + (startSpeed + damping * naturalFrequency * offset) * sine);
    speed_ = decay * (startSpeed * cosine -
                      naturalFrequency * (naturalFrequency * offset + damping * startSpeed) * sine);
    if (deflection_ < 0 || deflection_ > needleStop) {
        deflection_ = std::clamp(deflection_, 0.0, needleStop);
        speed_ = 0;
    }
}

bool Needle::IsAtRest() const {
    constexpr double unseen = 0.001;
    return deflection_ < unseen && std::abs(speed_) < unseen * naturalFrequency;
}

} // namespace kestrune
