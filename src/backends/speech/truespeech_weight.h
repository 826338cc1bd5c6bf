// How the decoder of TrueSpeech sounds a pulse, and how far an error of its sound is heard: errors hide where
// the sound itself is strong.
#pragma once

#include "backends/speech/truespeech_pulses.h"
#include "backends/speech/truespeech_synthesis.h"

namespace kestrune {

using PredictorTaps = std::array<float, trueSpeechOrder>; // the first is on the sample before

// Of the predictor of a subframe as the decoder has it.
PredictorTaps TapsOf(const std::array<qint16, trueSpeechOrder>& predictor);

// The last values on one side of a filter, oldest first.
using FilterPast = std::array<float, trueSpeechOrder>;

// Runs an error through A(z/0.92)/A(z/0.7), with A the predictor's inverse filter. A value: copies go on from
// the same past on their own.
class ErrorWeight {
public:
    SubframeValues Run(const PredictorTaps& taps, const SubframeValues& errors);

private:
    FilterPast errors_ = {};
    FilterPast weighted_ = {};
};

// The weighted sound of a pulse of height 1 at the first sample, with no past. `tilt` as the synthesis has
// it.
SubframeValues WeightedResponse(const PredictorTaps& taps, float tilt);

} // namespace kestrune
