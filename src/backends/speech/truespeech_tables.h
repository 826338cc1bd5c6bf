// The figures that TrueSpeech fixes, as published with FFmpeg's decoder of it.
#pragma once

#include "backends/speech/truespeech_block.h"

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
constexpr std::array<PitchFilter, trueSpeechPitchFilters> trueSpeechPitchTaps = {{
    {-4817, 21049}, {21745, -6999}, {9760, -4546},  {2518, 11328},  {-4171, 11232},
    {16353, 13113}, {17455, -6402}, {17496, -1569}, {-3535, 17371}, {15792, -2299},
    {20347, -261},  {9901, 3292},   {13250, 1849},  {4798, 17314},  {7135, 7998},
    {529, 1942},    {10987, 5695},  {1293, 14904},  {3358, 3448},   {5391, 13126},
    {14500, 2941},  {11613, 8159},  {6583, 10274},  {3481, 7954},   {6476, 3302},
}};

// The pulse of level 1 for each gain. Levels by column are 1, 3, -1 and -3 times it.
extern const std::array<int, 16> trueSpeechPulseUnits;
constexpr std::array<int, 4> trueSpeechPulseLevels = {1, 3, -1, -3};

// Powers of 0.994, 0.55 and 0.75 from the first on, times 32768.
extern const std::array<int, trueSpeechOrder> trueSpeechPredictorDecay;
extern const std::array<int, trueSpeechOrder> trueSpeechZeroDecay;
extern const std::array<int, trueSpeechOrder> trueSpeechPoleDecay;

} // namespace kestrune
