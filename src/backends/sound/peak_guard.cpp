#include "backends/sound/peak_guard.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr double highest = 32767.0;
constexpr double fallSeconds = 0.01; // from full level to nothing
constexpr double riseSeconds = 1.0;
// How long before a peak its level is reached: a quarter of a period of 50 Hz. A gain that still fell while a
// deep tone rises towards its peak would draw the top flat.
constexpr double holdSeconds = 0.005;
// The most that the gain falls from frame to frame where the peak was not seen ahead.
constexpr double steepestFall = 0.1;

} // namespace

void PeakGuard::Start(int sampleRateHz, int newChannels) {
    channels_ = newChannels;
    gain_ = 1.0;
    fallStep_ = 1.0 / (fallSeconds * sampleRateHz);
    riseStep_ = 1.0 / (riseSeconds * sampleRateHz);
    holdFrames_ = static_cast<int>(holdSeconds * sampleRateHz);
}

double PeakGuard::Size(const double* frame) const {
    return std::max(std::abs(frame[0]), std::abs(frame[channels_ - 1]));
}

// From the end of the block to its beginning: the gain that each frame needs for itself and for what follows.
void PeakGuard::LookAhead(const double* values, qint64 frames) {
    gains_.resize(static_cast<size_t>(frames));
    double next = 1.0;
    int held = 0;
    for (size_t frame = gains_.size(); frame-- > 0;) {
        const double size = Size(values + frame * static_cast<size_t>(channels_));
        const double needed = size > highest ? highest / size : 1.0;
        if (needed < next) {
            next = needed;
            held = holdFrames_;
        } else if (held > 0) {
            --held;
        } else {
            next = std::min(needed, next + fallStep_);
        }
        gains_[frame] = next;
    }
}

void PeakGuard::Process(double* values, qint64 frames) {
    const auto count = static_cast<size_t>(frames * channels_);
    double peak = 0;
    for (size_t i = 0; i < count; ++i) {
        peak = std::max(peak, std::abs(values[i]));
    }
    if (peak <= highest && IsAtRest()) {
        return;
    }
    LookAhead(values, frames);
    const auto step = static_cast<size_t>(channels_);
    for (size_t frame = 0; frame < gains_.size(); ++frame) {
        double* value = values + frame * step;
        const double size = Size(value);
        gain_ = std::clamp(gains_[frame], gain_ - steepestFall, gain_ + riseStep_);
        if (size * gain_ > highest) {
            gain_ = highest / size;
        }
        for (size_t channel = 0; channel < step; ++channel) {
            value[channel] *= gain_;
        }
    }
}

} // namespace kestrune
