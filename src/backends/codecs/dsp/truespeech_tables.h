// The figures that TrueSpeech fixes, as published with FFmpeg's decoder of it.
#pragma once

#include "backends/codecs/dsp/truespeech_block.h"

#include <span>

namespace kestrune {

// What the reflection coefficient of each stage may be, times 32768, ascending. A negative one predicts a
// sample of the same sign.
std::span<const qint16> TrueSpeechReflections(int stage);

// Two taps, times 16384: that on the sample one further back than the lag, and that on the lag.
struct PitchFilter {
    int further;
    int nearer;
};
extern const std::array<PitchFilter, trueSpeechPitchFilters> trueSpeechPitchFilters25;

// The pulse of level 1 for each gain. Levels by column are 1, 3, -1 and -3 times it.
extern const std::array<int, 16> trueSpeechPulseUnits;
constexpr std::array<int, 4> trueSpeechPulseLevels = {1, 3, -1, -3};

// Powers of 0.994, 0.55 and 0.75 from the first on, times 32768.
extern const std::array<int, trueSpeechOrder> trueSpeechPredictorDecay;
extern const std::array<int, trueSpeechOrder> trueSpeechZeroDecay;
extern const std::array<int, trueSpeechOrder> trueSpeechPoleDecay;

} // namespace kestrune
