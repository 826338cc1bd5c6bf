#include "backends/sound/sound_chain.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr double rampSeconds = 0.005;

} // namespace

void SoundChain::Start(int sampleRateHz, int newChannels) {
    channels = newChannels;
    gain = targetGain;
    rampStep = 1.0 / (rampSeconds * sampleRateHz);
    equalizer.Start(sampleRateHz, newChannels);
}

void SoundChain::SetVolume(qint32 volume) {
    targetGain = std::clamp(volume, 0, fullVolume) / static_cast<double>(fullVolume);
}

void SoundChain::ApplyGain(double* values, qint64 frames) {
    for (qint64 frame = 0; frame < frames; ++frame) {
        gain += std::clamp(targetGain - gain, -rampStep, rampStep);
        for (int channel = 0; channel < channels; ++channel) {
            *values++ *= gain;
        }
    }
}

void SoundChain::Process(qint16* samples, qint64 frames) {
    const bool isFlat = equalizer.IsBypassed();
    if (isFlat && gain == 1.0 && targetGain == 1.0) {
        return;
    }
    const size_t count = static_cast<size_t>(frames * channels);
    work.assign(samples, samples + count);
    if (!isFlat) {
        equalizer.Process(work.data(), frames);
    }
    ApplyGain(work.data(), frames);
    for (size_t i = 0; i < count; ++i) {
        samples[i] = static_cast<qint16>(std::clamp(std::nearbyint(work[i]), -32768.0, 32767.0));
    }
}

} // namespace kestrune
