#include "backends/speech/signals.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>

namespace kestrune {

namespace {

constexpr double rateHz = 8000;
constexpr double fullTurn = 2 * std::numbers::pi;

qint16 Whole(double value) {
    return static_cast<qint16>(std::clamp(std::lround(value), -32768L, 32767L));
}

// Numbers from -1 to 1, alike on every machine.
double Random(std::mt19937& random) {
    return 2.0 * random() / std::mt19937::max() - 1;
}

class Resonance {
public:
    void Tune(double hz, double widthHz) {
        const double radius = std::exp(-std::numbers::pi * widthHz / rateHz);
        first_ = 2 * radius * std::cos(fullTurn * hz / rateHz);
        second_ = -radius * radius;
        gain_ = 1 - first_ - second_;
    }
    double Run(double value) {
        const double result = gain_ * value + first_ * last_ + second_ * before_;
        before_ = last_;
        last_ = result;
        return result;
    }

private:
    double first_ = 0;
    double second_ = 0;
    double gain_ = 1;
    double last_ = 0;
    double before_ = 0;
};

using Vowel = std::array<double, 3>;
constexpr std::array<Vowel, 5> vowels = {
    {{730, 1090, 2440}, {270, 2290, 3010}, {300, 870, 2240}, {530, 1840, 2480}, {570, 840, 2410}}};

// The air that passes the vocal folds: a swell, a fast close and a rest, by the share of the period passed.
double Airflow(double phase) {
    constexpr double opens = 0.4;
    constexpr double closed = 0.56;
    if (phase < opens) {
        return 0.5 * (1 - std::cos(std::numbers::pi * phase / opens));
    }
    return phase < closed ? std::cos(std::numbers::pi / 2 * (phase - opens) / (closed - opens)) : 0;
}

class Speaker {
public:
    explicit Speaker(double lowestHz) : lowestHz_(lowestHz) {}
    double Next() {
        constexpr double soundSeconds = 0.22;
        constexpr std::array<double, 3> widthsHz = {60, 90, 120};
        const double seconds = sample_++ / rateHz;
        const double place = seconds / soundSeconds;
        const auto now = static_cast<size_t>(place);
        const double share = std::clamp((place - static_cast<double>(now) - 0.7) / 0.3, 0.0, 1.0);
        for (size_t formant = 0; formant < throat_.size(); ++formant) {
            const double from = vowels[now % vowels.size()][formant];
            const double to = vowels[(now + 1) % vowels.size()][formant];
            throat_[formant].Tune(from + share * (to - from), widthsHz[formant]);
        }
        const double pitchHz = lowestHz_ * (1.25 + 0.25 * std::sin(fullTurn * 0.6 * seconds));
        phase_ = std::fmod(phase_ + pitchHz / rateHz, 1.0);
        const double air = Airflow(phase_);
        double value = air - lastAir_;
        lastAir_ = air;
        for (Resonance& resonance : throat_) {
            value = resonance.Run(value);
        }
        return value;
    }

private:
    double lowestHz_;
    int sample_ = 0;
    double phase_ = 0;
    double lastAir_ = 0;
    std::array<Resonance, 3> throat_;
};

Sound Scaled(const std::vector<double>& values, double peak) {
    const auto [least, most] = std::minmax_element(values.begin(), values.end());
    const double gain = peak / std::max(-*least, *most);
    Sound sound(values.size());
    std::transform(values.begin(), values.end(), sound.begin(),
                   [gain](double value) { return Whole(value * gain); });
    return sound;
}

} // namespace

Sound Sine(double hz, double amplitude, int samples) {
    Sound sound;
    for (int sample = 0; sample < samples; ++sample) {
        sound.push_back(Whole(amplitude * std::sin(fullTurn * hz * sample / rateHz)));
    }
    return sound;
}

Sound Noise(double amplitude, int samples, quint32 seed) {
    std::mt19937 random(seed);
    Sound sound(static_cast<size_t>(samples));
    std::generate(sound.begin(), sound.end(), [&] { return Whole(amplitude * Random(random)); });
    return sound;
}

Sound Square(double hz, int amplitude, int samples) {
    Sound sound;
    for (int sample = 0; sample < samples; ++sample) {
        const bool high = std::fmod(hz * sample / rateHz, 1.0) < 0.5;
        sound.push_back(static_cast<qint16>(high ? amplitude : -amplitude));
    }
    return sound;
}

Sound Voice(double lowestHz, int samples) {
    Speaker speaker(lowestHz);
    std::vector<double> values(static_cast<size_t>(samples));
    std::generate(values.begin(), values.end(), [&] { return speaker.Next(); });
    return Scaled(values, 12000);
}

Sound Talk(double lowestHz, int samples, quint32 seed) {
    constexpr double partSeconds = 0.19;
    std::mt19937 random(seed);
    Sound sound = Voice(lowestHz, samples);
    Resonance teeth;
    teeth.Tune(3200, 700);
    double loudness = 0;
    for (int sample = 0; sample < samples; ++sample) {
        const int part = static_cast<int>(sample / rateHz / partSeconds) % 5;
        const double aim = part < 3 ? 1 : 0;
        loudness += (aim - loudness) / 120;
        const double hiss = part == 3 ? 1500 * teeth.Run(Random(random)) : 0;
        auto& value = sound[static_cast<size_t>(sample)];
        value = Whole(loudness * value + hiss);
    }
    return sound;
}

Sound Music(int samples, quint32 seed) {
    constexpr std::array<double, 6> notesHz = {220, 277.2, 329.6, 440, 554.4, 659.3};
    constexpr int apart = 2000;
    constexpr int lasting = 6000;
    std::mt19937 random(seed);
    std::vector<double> values(static_cast<size_t>(samples));
    for (int start = 0; start < samples; start += apart) {
        const double hz = notesHz[random() % notesHz.size()];
        for (int sample = start; sample < std::min(samples, start + lasting); ++sample) {
            const double seconds = (sample - start) / rateHz;
            for (int overtone = 1; overtone < 5; ++overtone) {
                values[static_cast<size_t>(sample)] +=
                    std::exp(-4 * seconds) * std::sin(fullTurn * hz * overtone * seconds) / overtone;
            }
        }
    }
    return Scaled(values, 12000);
}

double SegmentalSnrDb(const Sound& original, const Sound& decoded) {
    constexpr size_t pieceSamples = 160;
    constexpr double leastPower = 50.0 * 50.0 * pieceSamples;
    double sum = 0;
    int pieces = 0;
    for (size_t start = 0; start + pieceSamples <= std::min(original.size(), decoded.size());
         start += pieceSamples) {
        double power = 0;
        double error = 0;
        for (size_t at = start; at < start + pieceSamples; ++at) {
            power += std::pow(original[at], 2.0);
            error += std::pow(original[at] - decoded[at], 2.0);
        }
        if (power > leastPower) {
            sum += std::clamp(10 * std::log10(power / (error + 1)), -10.0, 35.0);
            ++pieces;
        }
    }
    return pieces > 0 ? sum / pieces : 0;
}

double SnrDb(const Sound& original, const Sound& decoded) {
    double power = 0;
    double error = 1;
    for (size_t at = 0; at < std::min(original.size(), decoded.size()); ++at) {
        power += std::pow(original[at], 2.0);
        error += std::pow(original[at] - decoded[at], 2.0);
    }
    return 10 * std::log10(power / error);
}

} // namespace kestrune
