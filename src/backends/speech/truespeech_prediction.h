// The predictor of a TrueSpeech block: what its samples ask for, in the steps that the format has.
#pragma once

#include "backends/speech/truespeech_synthesis.h"

namespace kestrune {

// The predictor is fitted to samples around the middle of the block's second half, where it holds alone.
constexpr int trueSpeechWindowSamples = 300;
constexpr int trueSpeechWindowOffset = 60; // of the window's first sample from the block's first

using TrueSpeechReflectionEntries = std::array<int, trueSpeechOrder>;

// The entries whose predictor leaves least of the windowed samples, of those that decoders can run. Silence
// gives a predictor near none.
TrueSpeechReflectionEntries ChooseReflections(std::span<const float, trueSpeechWindowSamples> samples);

// Whether the sound of a predictor dies away: not every mix of two that do is such a one.
bool DiesAway(const TrueSpeechPredictor& predictor);

} // namespace kestrune
