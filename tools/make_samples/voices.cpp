#include "voices.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>

namespace kestrune {

namespace {

constexpr double turn = 2 * std::numbers::pi;
constexpr double dampSeconds = 0.06;

double HzOf(int key) {
    return 440 * std::pow(2.0, (key - 69) / 12.0);
}

// Adds wave(t), t in seconds from the start of the note, with a short release at its end.
template <class Wave>
void AddWave(Sound& sound, const Note& note, Wave wave) {
    const double angle = (note.pan + 1) * std::numbers::pi / 4;
    const double leftGain = std::cos(angle) * note.loudness;
    const double rightGain = std::sin(angle) * note.loudness;
    const auto start = static_cast<std::size_t>(std::lround(note.startSeconds * sound.rateHz));
    const auto length = static_cast<std::size_t>(std::lround((note.seconds + dampSeconds) * sound.rateHz));
    const std::size_t end = std::min(start + length, sound.left.size());
    for (std::size_t at = start; at < end; ++at) {
        const double t = static_cast<double>(at - start) / sound.rateHz;
        const double release = std::clamp((note.seconds + dampSeconds - t) / dampSeconds, 0.0, 1.0);
        const double sample = wave(t) * release;
        sound.left[at] += sample * leftGain;
        sound.right[at] += sample * rightGain;
    }
}

// What a soft thumb does to a string: noise, smoothed, without a mean, of one loudness whatever its length.
std::vector<double> SoftNoise(std::size_t length, unsigned seed) {
    std::vector<double> noise(length);
    std::minstd_rand random(seed);
    double soft = 0;
    double softer = 0;
    double sum = 0;
    for (double& value : noise) {
        const double raw = static_cast<double>(random()) / std::minstd_rand::max() * 2 - 1;
        soft += 0.4 * (raw - soft);
        softer += 0.4 * (soft - softer);
        value = softer;
        sum += softer;
    }
    double squares = 0;
    for (double& value : noise) {
        value -= sum / static_cast<double>(length);
        squares += value * value;
    }
    const double gain = 0.35 / std::sqrt(squares / static_cast<double>(length) + 1e-12);
    for (double& value : noise) {
        value *= gain;
    }
    return noise;
}

} // namespace

void AddPluck(Sound& sound, const Note& note) {
    const double hz = HzOf(note.key);
    // The dulling below delays by half a sample; the fraction that is left is made up by a first-order
    // all-pass.
    const double period = sound.rateHz / hz - 0.5;
    const auto whole = static_cast<std::size_t>(period - 0.2);
    const double fraction = period - static_cast<double>(whole);
    const double allPass = (1 - fraction) / (1 + fraction);
    std::vector<double> line =
        SoftNoise(whole, static_cast<unsigned>(note.key * 1009 + std::lround(note.startSeconds * 1000)));
    const double loss = std::pow(0.001, 1 / (hz * 3.2)); // 60 dB in 3.2 s, less what the dulling takes
    std::size_t at = 0;
    double last = 0;
    double allPassIn = 0;
    double allPassOut = 0;
    AddWave(sound, note, [&](double t) {
        const double out = line[at];
        const double dulled = loss * 0.5 * (out + last);
        last = out;
        allPassOut = allPass * (dulled - allPassOut) + allPassIn;
        allPassIn = dulled;
        line[at] = allPassOut;
        at = (at + 1) % line.size();
        return std::min(t / 0.003, 1.0) * out;
    });
}

void AddBell(Sound& sound, const Note& note) {
    const double hz = HzOf(note.key);
    // Near half the sample rate the side tones would fold back.
    const double room = std::clamp((sound.rateHz / 2.0 - hz) / (hz * 3.01) - 1, 0.0, 2.2);
    AddWave(sound, note, [=](double t) {
        const double bend = room * std::exp(-t * 5.5);
        const double tone = std::sin(turn * hz * t + bend * std::sin(turn * hz * 3.01 * t));
        const double attack = std::min(t / 0.002, 1.0);
        return 0.55 * attack * tone * std::exp(-t * 1.9);
    });
}

void AddPad(Sound& sound, const Note& note) {
    struct Partial {
        double ratio;
        double gain;
        double detune;
    };
    constexpr std::array partials = {Partial{1, 0.5, 0.0011}, Partial{2, 0.22, -0.0008},
                                     Partial{3, 0.1, 0.0006}, Partial{4, 0.05, -0.0005}};
    const double hz = HzOf(note.key);
    AddWave(sound, note, [&](double t) {
        double sum = 0;
        for (const Partial& partial : partials) {
            const double low = turn * hz * partial.ratio * (1 - partial.detune) * t;
            const double high = turn * hz * partial.ratio * (1 + partial.detune) * t;
            sum += partial.gain * 0.5 * (std::sin(low) + std::sin(high));
        }
        const double swell = 1 - std::exp(-t * 5);
        const double fall = std::min((note.seconds - t) / (0.4 * note.seconds), 1.0);
        return 0.35 * swell * std::max(fall, 0.0) * sum;
    });
}

void AddBass(Sound& sound, const Note& note) {
    const double hz = HzOf(note.key);
    AddWave(sound, note, [=](double t) {
        const double attack = std::min(t / 0.008, 1.0);
        const double tone = std::sin(turn * hz * t) + 0.35 * std::sin(turn * hz * 2 * t) * std::exp(-t * 4) +
                            0.12 * std::sin(turn * hz * 3 * t) * std::exp(-t * 7);
        return 0.5 * attack * tone * std::exp(-t * 1.4);
    });
}

} // namespace kestrune
