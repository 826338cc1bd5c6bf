#include "display/audio_display.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace kestrune {

namespace {

constexpr float fullScale = 32768;
// Frames that the meters look at: a little more than comes by between two ticks of 30 ms at 48,000 Hz.
constexpr size_t meterFrames = 2048;
constexpr double overloadLevel = 0.9886; // -0.1 dB
constexpr double overloadHoldMs = 1000;
constexpr double barHoldMs = 1000;
constexpr double bandHoldMs = 500;
// After a longer gap nothing more would have moved.
constexpr qint64 longestSpanMs = 2000;

bool IsColour(int number) {
    return number >= DisplayBackColor && number <= DisplayMaxLevelColor;
}

bool IsInRange(int number, qint32 value) {
    const auto within = [value](qint32 least, qint32 most) { return value >= least && value <= most; };
    switch (number) {
    case DisplayBorderStyle:
        return within(BorderNone, BorderRaised);
    case DisplayKind:
        return within(LevelBars, displayTypeCount - 1);
    case DisplayFftSize:
        return std::find(displayFftSizes.begin(), displayFftSizes.end(), value) != displayFftSizes.end();
    case DisplayMaxLevel:
        return within(0, 100);
    case DisplayOutLinesHeight:
        return within(0, largestOutLinesHeight);
    case DisplayChannels:
        return within(1, 2);
    default:
        return IsColour(number) && within(0, 0xFFFFFF);
    }
}

size_t IndexOf(int number) {
    return static_cast<size_t>(number - firstDisplayProperty);
}

} // namespace

AudioDisplay::AudioDisplay(Spectrum& spectrum, Clock& clock, QObject* parent)
    : KSTAudioDisplay1(parent),
      spectrum_(spectrum),
      clock_(clock),
      properties_{BorderLowered, LevelBars, 0x141414, 0x3C424C, 0xD7DAF5, 0x646C7C,
                  0x8080FF,      0xFFB040,  4096,     70,       2,        2} {
    LayBands();
}

Outcome AudioDisplay::SetProperty(int number, qint32 value) {
    constexpr quint32 opaque = 0xFF000000U;
    if (IsColour(number) && (static_cast<quint32>(value) & opaque) == opaque) {
        value &= 0xFFFFFF;
    }
    if (!IsInRange(number, value)) {
        return Outcome::NotSupported;
    }
    if (properties_[IndexOf(number)] == value) {
        return Outcome::Ok;
    }
    properties_[IndexOf(number)] = value;
    if (number == DisplayKind || number == DisplayChannels) {
        ClearAll();
    }
    if (number == DisplayFftSize || number == DisplayChannels) {
        LayBands();
    }
    emit PropertyChanged(number, value);
    return Outcome::Ok;
}

qint32 AudioDisplay::Property(int number) const {
    const bool isKnown = number >= firstDisplayProperty && number <= lastDisplayProperty;
    return isKnown ? properties_[IndexOf(number)] : 0;
}

void AudioDisplay::SetBandCount(int count) {
    const int room = std::clamp(count, 2, 512);
    if (room == roomForBands_) {
        return;
    }
    roomForBands_ = room;
    levels_.clear();
    LayBands();
}

void AudioDisplay::LayBands() {
    const int size = Property(DisplayFftSize);
    // Every size of the display is one that a spectrum knows.
    static_cast<void>(spectrum_.SetSize(size));
    bands_.Lay(roomForBands_ / Channels(), size);
    levels_.resize(static_cast<size_t>(bands_.Count()) * static_cast<size_t>(Channels()));
}

void AudioDisplay::DrawBlock(const QList<qint16>& samples) {
    falling_ = false;
    if (samples.isEmpty()) {
        ClearAll();
        emit Cleared();
        return;
    }
    const auto count = static_cast<size_t>(Channels());
    const size_t frames =
        std::min(static_cast<size_t>(samples.size()) / count, static_cast<size_t>(Property(DisplayFftSize)));
    const qint16* from = samples.constData() + (static_cast<size_t>(samples.size()) / count - frames) * count;
    for (size_t channel = 0; channel < count; ++channel) {
        channels_[channel].resize(frames);
        for (size_t i = 0; i < frames; ++i) {
            channels_[channel][i] = static_cast<float>(from[i * count + channel]) / fullScale;
        }
    }
    Move({channels_.data(), count}, TakeSpanMs());
    emit Drawn();
}

void AudioDisplay::FallToRest() {
    falling_ = !IsAtRest();
    if (falling_) {
        emit Drawn();
    }
}

void AudioDisplay::Advance() {
    if (!falling_) {
        return;
    }
    const std::array<Channel, 2> silence;
    Move({silence.data(), static_cast<size_t>(Channels())}, TakeSpanMs());
    falling_ = !IsAtRest();
    emit Drawn();
}

double AudioDisplay::TakeSpanMs() {
    const qint64 now = clock_.MonotonicMs();
    const qint64 span = lastMoveMs_ < 0 ? 0 : std::clamp<qint64>(now - lastMoveMs_, 0, longestSpanMs);
    lastMoveMs_ = now;
    return static_cast<double>(span);
}

void AudioDisplay::ClearAll() {
    bars_ = {};
    needles_ = {};
    overloadMs_ = {};
    std::fill(levels_.begin(), levels_.end(), FallingLevel());
    falling_ = false;
    lastMoveMs_ = -1;
}

void AudioDisplay::Move(std::span<const Channel> channels, double spanMs) {
    const qint32 type = Property(DisplayKind);
    for (size_t channel = 0; channel < channels.size(); ++channel) {
        const std::span<const float> block(channels[channel]);
        const std::span<const float> latest = block.last(std::min(block.size(), meterFrames));
        if (type == LevelBars) {
            MoveBar(channel, latest, spanMs);
        } else if (type == AnalogMeters) {
            MoveNeedle(channel, latest, spanMs);
        } else {
            MoveBands(channel, block, spanMs);
        }
    }
}

void AudioDisplay::MoveBar(size_t channel, std::span<const float> latest, double spanMs) {
    float highest = 0;
    for (const float sample : latest) {
        highest = std::max(highest, std::abs(sample));
    }
    overloadMs_[channel] = highest >= overloadLevel ? overloadHoldMs : overloadMs_[channel] - spanMs;
    bars_[channel].Move(MeterScale(DbOfLevel(highest)), spanMs, barHoldMs);
}

void AudioDisplay::MoveNeedle(size_t channel, std::span<const float> latest, double spanMs) {
    float highest = 0;
    double sum = 0;
    for (const float sample : latest) {
        highest = std::max(highest, std::abs(sample));
        sum += std::abs(sample);
    }
    overloadMs_[channel] = highest >= overloadLevel ? overloadHoldMs : overloadMs_[channel] - spanMs;
    const double average = latest.empty() ? 0 : sum / static_cast<double>(latest.size());
    needles_[channel].Move(NeedleScale(average), spanMs);
}

void AudioDisplay::MoveBands(size_t channel, std::span<const float> block, double spanMs) {
    const std::span<const float> levelsDb = block.empty() ? block : spectrum_.LevelsDb(block);
    for (int band = 0; band < bands_.Count(); ++band) {
        const double place = levelsDb.empty() ? 0 : SpectrumScale(bands_.LevelDb(levelsDb, band));
        levels_[channel * static_cast<size_t>(bands_.Count()) + static_cast<size_t>(band)].Move(place, spanMs,
                                                                                                bandHoldMs);
    }
}

bool AudioDisplay::IsAtRest() const {
    const auto isAtRest = [](const auto& part) { return part.IsAtRest(); };
    return std::all_of(bars_.begin(), bars_.end(), isAtRest) &&
           std::all_of(needles_.begin(), needles_.end(), isAtRest) &&
           std::all_of(levels_.begin(), levels_.end(), isAtRest) &&
           std::all_of(overloadMs_.begin(), overloadMs_.end(), [](double ms) { return ms <= 0; });
}

} // namespace kestrune
