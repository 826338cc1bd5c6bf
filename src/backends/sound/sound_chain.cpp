#include "backends/sound/sound_chain.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr double rampSeconds = 0.005;

// To the nearest whole number, up to 2^51: the sum has no room for a fraction. Unlike a call of the library
// this is done for several samples at once.
double Rounded(double value) {
    constexpr double noFractions = 6755399441055744.0; // 1.5 * 2^52
    return (value + noFractions) - noFractions;
}

} // namespace

void SoundChain::Start(int sampleRateHz, int newChannels) {
    channels_ = newChannels;
    gain_ = targetGain_;
    rampStep_ = 1.0 / (rampSeconds * sampleRateHz);
    equalizer_.Start(sampleRateHz, newChannels);
    guard_.Start(sampleRateHz, newChannels);
}

void SoundChain::SetVolume(qint32 volume) {
    targetGain_ = std::clamp(volume, 0, fullVolume) / static_cast<double>(fullVolume);
}

void SoundChain::ApplyGain(double* values, qint64 frames) {
    if (gain_ == 1.0 && targetGain_ == 1.0) {
        return;
    }
    for (qint64 frame = 0; frame < frames; ++frame) {
        gain_ += std::clamp(targetGain_ - gain_, -rampStep_, rampStep_);
        for (int channel = 0; channel < channels_; ++channel) {
            *values++ *= gain_;
        }
    }
}

void SoundChain::Process(qint16* samples, qint64 frames) {
    const bool isFlat = equalizer_.IsBypassed() && guard_.IsAtRest();
    if (isFlat && gain_ == 1.0 && targetGain_ == 1.0) {
        return;
    }
    const size_t count = static_cast<size_t>(frames * channels_);
    work_.assign(samples, samples + count);
    if (!isFlat) {
        equalizer_.Process(work_.data(), frames);
    }
    ApplyGain(work_.data(), frames);
    if (!isFlat) {
        guard_.Process(work_.data(), frames);
    }
    for (size_t i = 0; i < count; ++i) {
        samples[i] = static_cast<qint16>(std::clamp(Rounded(work_[i]), -32768.0, 32767.0));
    }
}

} // namespace kestrune
