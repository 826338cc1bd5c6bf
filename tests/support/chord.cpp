#include "support/chord.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <random>

namespace kestrune {

namespace {

constexpr double twoPi = 6.283185307179586;
constexpr double lowestHz = 80.0;
constexpr int partialCount = 60;
constexpr double fullScale = 32768.0;
constexpr double sumOfLevels = 1.6;

// The sine of an angle that grows by the same step from call to call.
class Turn {
public:
    // Turns a step, and the angle at the start.
    Turn(double step, double angle) : now_(std::polar(1.0, angle)), factor_(std::polar(1.0, twoPi * step)) {}
    double Next() {
        const double sine = now_.imag();
        now_ = {now_.real() * factor_.real() - now_.imag() * factor_.imag(),
                now_.real() * factor_.imag() + now_.imag() * factor_.real()};
        return sine;
    }

private:
    std::complex<double> now_;
    std::complex<double> factor_;
};

} // namespace

Chord::Chord(quint32 seed, double highestHz) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    double sum = 0.0;
    for (int at = 0; at < partialCount; ++at) {
        Partial partial = {};
        partial.hz = lowestHz * std::pow(highestHz / lowestHz, unit(random));
        partial.phase = twoPi * unit(random);
        partial.swellHz = 0.5 + unit(random);
        partial.level = (0.2 + unit(random)) * std::sqrt(lowestHz / partial.hz);
        const bool shared = at % 2 == 0;
        partial.left = shared || at % 4 == 1 ? 1.0 : 0.0;
        partial.right = shared || at % 4 == 3 ? 1.0 : 0.0;
        sum += partial.level;
        partials_.push_back(partial);
    }
    for (Partial& partial : partials_) {
        partial.level *= sumOfLevels / sum;
    }
}

std::vector<qint16> Chord::Samples(int frames, int channels, int rateHz) const {
    std::vector<double> sound(static_cast<size_t>(frames) * static_cast<size_t>(channels));
    for (const Partial& partial : partials_) {
        Turn tone(partial.hz / rateHz, partial.phase);
        Turn swell(partial.swellHz / rateHz, 0.0);
        for (int frame = 0; frame < frames; ++frame) {
            const double value = partial.level * (0.6 + 0.4 * swell.Next()) * tone.Next();
            const auto at = static_cast<size_t>(frame) * static_cast<size_t>(channels);
            if (channels == 1) {
                sound[at] += value * (partial.left + partial.right) / 2;
            } else {
                sound[at] += value * partial.left;
                sound[at + 1] += value * partial.right;
            }
        }
    }
    std::vector<qint16> samples;
    samples.reserve(sound.size());
    for (const double value : sound) {
        const double level = std::clamp(value * fullScale, -fullScale, fullScale - 1.0);
        samples.push_back(static_cast<qint16>(std::lround(level)));
    }
    return samples;
}

} // namespace kestrune
