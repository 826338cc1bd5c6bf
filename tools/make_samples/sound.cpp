#include "sound.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace kestrune {

namespace {

constexpr double fadeInSeconds = 0.003;
constexpr double lowestHz = 25;

// First-order high-pass: y[n] = a (y[n-1] + x[n] - x[n-1]).
void CutBelow(std::vector<double>& samples, int rateHz, double cornerHz) {
    const double a = 1 / (1 + 2 * std::numbers::pi * cornerHz / rateHz);
    double lastIn = 0;
    double lastOut = 0;
    for (double& sample : samples) {
        const double in = sample;
        lastOut = a * (lastOut + in - lastIn);
        lastIn = in;
        sample = lastOut;
    }
}

// A half cosine at both ends.
void Fade(std::vector<double>& samples, std::size_t fadeIn, std::size_t fadeOut) {
    const std::size_t count = samples.size();
    const auto curve = [](std::size_t at, std::size_t length) {
        return 0.5 - 0.5 * std::cos(std::numbers::pi * static_cast<double>(at) / static_cast<double>(length));
    };
    for (std::size_t at = 0; at < std::min(fadeIn, count); ++at) {
        samples[at] *= curve(at, fadeIn);
    }
    for (std::size_t at = 0; at < std::min(fadeOut, count); ++at) {
        samples[count - 1 - at] *= curve(at, fadeOut);
    }
}

double PeakOf(const Sound& sound) {
    double peak = 0;
    for (const auto* channel : {&sound.left, &sound.right}) {
        for (const double sample : *channel) {
            peak = std::max(peak, std::abs(sample));
        }
    }
    return peak;
}

double ToDb(double amplitude) {
    return 20 * std::log10(std::max(amplitude, 1e-9));
}

} // namespace

Sound SilentSound(int rateHz, double seconds) {
    const auto frames = static_cast<std::size_t>(std::lround(seconds * rateHz));
    return {rateHz, std::vector<double>(frames, 0.0), std::vector<double>(frames, 0.0)};
}

void AddRoom(Sound& sound, double amount) {
    // Lengths without a common measure, so that the echoes do not ring on one tone.
    constexpr std::array echoSeconds = {0.0297, 0.0411, 0.0533, 0.0671};
    const Sound dry = sound;
    for (const double seconds : echoSeconds) {
        const auto delay = static_cast<std::size_t>(std::lround(seconds * sound.rateHz));
        std::vector<double> left(dry.left.size(), 0.0);
        std::vector<double> right(dry.right.size(), 0.0);
        for (std::size_t at = delay; at < left.size(); ++at) {
            left[at] = dry.right[at - delay] + 0.72 * right[at - delay];
            right[at] = dry.left[at - delay] + 0.72 * left[at - delay];
            sound.left[at] += amount * left[at];
            sound.right[at] += amount * right[at];
        }
    }
}

void Finish(Sound& sound, double fadeOutSeconds, double peakDb) {
    for (auto* channel : {&sound.left, &sound.right}) {
        CutBelow(*channel, sound.rateHz, lowestHz);
        Fade(*channel, static_cast<std::size_t>(fadeInSeconds * sound.rateHz),
             static_cast<std::size_t>(fadeOutSeconds * sound.rateHz));
    }
    const double peak = PeakOf(sound);
    const double gain = peak > 0 ? std::pow(10.0, peakDb / 20) / peak : 0;
    for (auto* channel : {&sound.left, &sound.right}) {
        for (double& sample : *channel) {
            sample *= gain;
        }
    }
}

Level Measure(const Sound& sound) {
    Level level;
    double sum = 0;
    double squares = 0;
    for (const auto* channel : {&sound.left, &sound.right}) {
        for (const double sample : *channel) {
            sum += sample;
            squares += sample * sample;
        }
        level.edge = std::max({level.edge, std::abs(channel->front()), std::abs(channel->back())});
    }
    const auto count = static_cast<double>(sound.left.size() + sound.right.size());
    level.peakDb = ToDb(PeakOf(sound));
    level.rmsDb = ToDb(std::sqrt(squares / count));
    level.dc = sum / count;
    return level;
}

} // namespace kestrune
