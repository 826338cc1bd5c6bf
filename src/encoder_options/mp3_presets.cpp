#include "encoder_options/mp3_presets.h"

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

constexpr qint16 presetQuality = 3;
constexpr int leastRateOfMpeg1 = 32000;
constexpr int leastKbps = 8;
constexpr int leastKbpsOfMpeg1 = 32;
constexpr int largestKbps = 320;
// By quality of a variable rate: about what LAME makes of music, as rates that every list of them has.
constexpr std::array<qint32, 10> usualKbps{256, 224, 192, 160, 160, 128, 112, 96, 96, 64};

// Everything as at the start, but what tells where the settings come from, and the sample rate.
Mp3Options FreshFrom(const Mp3Options& options) {
    Mp3Options fresh;
    fresh.commandLine = options.commandLine;
    fresh.preset = options.preset;
    fresh.altPreset = options.altPreset;
    fresh.frequency = options.frequency;
    fresh.quality = presetQuality;
    return fresh;
}

void BecomeMusic(Mp3Options& options) {
    options = FreshFrom(options);
    // The low sample rate that a preset for speech left is undone.
    if (options.frequency < leastRateOfMpeg1) {
        options.frequency = 44100;
    }
    SetMp3ChannelMode(options, Mp3Joint);
}

struct AverageRatePreset {
    int kbps;
    qint32 channelMode;
    int frequencyHz; // 0: as it is, if it is one for music
};

// By preset number less 1.
constexpr std::array<AverageRatePreset, mp3PresetCount - 1> averageRatePresets{{
    {16, Mp3Mono, 16000},
    {24, Mp3Mono, 16000},
    {40, Mp3Mono, 24000},
    {112, Mp3Joint, 0},
    {56, Mp3Mono, 32000},
    {112, Mp3Joint, 0},
    {112, Mp3Joint, 0},
    {160, Mp3Joint, 0},
    {192, Mp3Joint, 0},
    {256, Mp3Joint, 0},
}};

} // namespace

void SetMp3ChannelMode(Mp3Options& options, qint32 mode) {
    options.channelMode = mode;
    options.channels = mode == Mp3Mono ? 1 : 2;
}

int LeastMp3Kbps(const Mp3Options& options) {
    return options.frequency < leastRateOfMpeg1 ? leastKbps : leastKbpsOfMpeg1;
}

void ApplyAverageRate(Mp3Options& options, int kbps) {
    BecomeMusic(options);
    options.vbrMethod = Mp3AverageRate;
    options.abrBitrate = static_cast<qint16>(kbps);
    options.bitrate = kbps;
}

void ApplyVariableRate(Mp3Options& options, qint32 vbrMethod, int vbrQuality) {
    BecomeMusic(options);
    options.vbrMethod = vbrMethod;
    options.vbrQuality = static_cast<qint16>(vbrQuality);
    FreeVariableRate(options);
}

void FreeVariableRate(Mp3Options& options) {
    const size_t quality = std::clamp<size_t>(options.vbrQuality, 0, usualKbps.size() - 1);
    options.bitrate = usualKbps[quality];
    options.leastVbrBitrate = LeastMp3Kbps(options);
}

void ApplyPreset(Mp3Options& options, int preset) {
    if (preset < 1 || preset > mp3PresetCount) {
        return;
    }
    options.preset = static_cast<qint16>(preset);
    if (preset == mp3PresetCount) { // R3Mix
        ApplyVariableRate(options, Mp3Mtrh, 3);
        return;
    }
    const AverageRatePreset& chosen = averageRatePresets[static_cast<size_t>(preset) - 1];
    ApplyAverageRate(options, chosen.kbps);
    SetMp3ChannelMode(options, chosen.channelMode);
    if (chosen.frequencyHz != 0) {
        options.frequency = chosen.frequencyHz;
    }
}

void ApplyAltPreset(Mp3Options& options, int preset) {
    if (preset < 1 || preset > mp3AltPresetCount) {
        return;
    }
    options.altPreset = static_cast<qint16>(preset);
    if (preset == mp3AltPresetCount) { // insane
        BecomeMusic(options);
        options.bitrate = largestKbps;
        return;
    }
    const bool isFast = preset % 2 == 1;
    ApplyVariableRate(options, isFast ? Mp3NewVbr : Mp3OldVbr, preset <= 2 ? 2 : 0);
}

} // namespace kestrune
