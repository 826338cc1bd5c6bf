#include "backends/sound/equalizer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrune {

namespace {

// Gains move in steps of this many frames, so slowly that no step can be heard by itself.
constexpr qint64 stepFrames = 4;
constexpr double moveDbPerSecond = 100;
// Width of a band: neighbours are log2(15942 / 31) / 11 = 0.819 octaves apart, and Q = sqrt(2^N) / (2^N - 1).
constexpr double bandQ = 1.738;

} // namespace

void Equalizer::Start(int newSampleRateHz, int newChannels) {
    sampleRateHz = newSampleRateHz;
    channels = newChannels;
    for (int band = 0; band < equalizerBands; ++band) {
        bands[band].memory = {};
        SetBandGain(band, TargetDb(band));
    }
}

void Equalizer::SetGains(const EqualizerGains& gainsDb) {
    for (int band = 0; band < equalizerBands; ++band) {
        const float gainDb = std::isfinite(gainsDb[band]) ? gainsDb[band] : 0.0F;
        wantedDb[band] = std::clamp(gainDb, -equalizerMaxGainDb, equalizerMaxGainDb);
    }
}

double Equalizer::TargetDb(int band) const {
    return enabled && IsAudible(band) ? wantedDb[band] : 0.0;
}

// A centre near or above half the rate has no place in the signal.
bool Equalizer::IsAudible(int band) const {
    return equalizerCentresHz[band] < 0.45 * sampleRateHz;
}

bool Equalizer::IsBypassed() const {
    for (int band = 0; band < equalizerBands; ++band) {
        if (bands[band].gainDb != 0.0 || TargetDb(band) != 0.0) {
            return false;
        }
    }
    return true;
}

void Equalizer::SetBandGain(int band, double gainDb) {
    Band& changed = bands[band];
    changed.gainDb = gainDb;
    if (gainDb == 0.0) {
        changed.coefficients = {};
        changed.memory = {};
        return;
    }
    const double amplitude = std::pow(10.0, gainDb / 40.0);
    const double w0 = 2.0 * std::numbers::pi * equalizerCentresHz[band] / sampleRateHz;
    const double alpha = std::sin(w0) / (2.0 * bandQ);
    const double a0 = 1.0 + alpha / amplitude;
    changed.coefficients = {(1.0 + alpha * amplitude) / a0, -2.0 * std::cos(w0) / a0,
                            (1.0 - alpha * amplitude) / a0, -2.0 * std::cos(w0) / a0,
                            (1.0 - alpha / amplitude) / a0};
}

void Equalizer::MoveTowardsTargets(qint64 frames) {
    const double stepDb = moveDbPerSecond * static_cast<double>(frames) / sampleRateHz;
    for (int band = 0; band < equalizerBands; ++band) {
        const double targetDb = TargetDb(band);
        const double gainDb = bands[band].gainDb;
        if (gainDb != targetDb) {
            SetBandGain(band, gainDb + std::clamp(targetDb - gainDb, -stepDb, stepDb));
        }
    }
}

// Transposed direct form II: it stays quiet while the coefficients move.
void Equalizer::Filter(Band& band, double* samples, qint64 frames) const {
    const Coefficients& c = band.coefficients;
    for (int channel = 0; channel < channels; ++channel) {
        Memory memory = band.memory[channel];
        double* sample = samples + channel;
        for (qint64 frame = 0; frame < frames; ++frame, sample += channels) {
            const double in = *sample;
            const double out = c.b0 * in + memory.z1;
            memory.z1 = c.b1 * in - c.a1 * out + memory.z2;
            memory.z2 = c.b2 * in - c.a2 * out;
            *sample = out;
        }
        band.memory[channel] = memory;
    }
}

bool Equalizer::IsMoving() const {
    for (int band = 0; band < equalizerBands; ++band) {
        if (bands[band].gainDb != TargetDb(band)) {
            return true;
        }
    }
    return false;
}

void Equalizer::Process(double* samples, qint64 frames) {
    qint64 count = 0;
    for (qint64 done = 0; done < frames; done += count) {
        count = frames - done;
        if (IsMoving()) {
            count = std::min(stepFrames, count);
            MoveTowardsTargets(count);
        }
        for (Band& band : bands) {
            if (band.gainDb != 0.0) {
                Filter(band, samples + done * channels, count);
            }
        }
    }
}

} // namespace kestrune
