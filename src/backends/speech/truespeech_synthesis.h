// TrueSpeech played back, sample for sample as every decoder of it has to. The encoder hears itself through
// it, so that what it assumes of the past is what a listener gets.
#pragma once

#include "backends/speech/truespeech_block.h"

namespace kestrune {

using TrueSpeechSamples = std::array<qint16, trueSpeechSubframeSamples>;

// How far back an excitation can be repeated from.
constexpr int trueSpeechHistory = 146;
// The shortest lag that a half of a block can ask for.
constexpr int trueSpeechShortestLag = 18;

struct Repetition {
    TrueSpeechSamples samples = {};
    int peak = 0; // beyond 32767 the samples have turned over
};

// The predictor of a block as decoders compute it: times 4096, the first tap on the sample before.
using TrueSpeechPredictor = std::array<qint16, trueSpeechOrder>;
TrueSpeechPredictor PredictorOf(const std::array<int, trueSpeechOrder>& reflectionEntries);

// A value: copies go on from the same past on their own.
class TrueSpeechSynthesis {
public:
    // Takes over the predictor of a block, before its first subframe; once a block. Only `reflection` and
    // `blended` count.
    void StartBlock(const TrueSpeechBlock& block);
    // That of a subframe of the started block.
    const TrueSpeechPredictor& Predictor(int subframe) const {
        return predictors_[static_cast<size_t>(subframe)];
    }
    // Share of the sample before that is added to each at the end.
    float Tilt() const;

    // The excitation of the past, oldest first; the last is the sample before the subframe that comes.
    const std::array<qint16, trueSpeechHistory>& Excitation() const { return excitation_; }
    // What a subframe repeats of it. `lag` is that of its half.
    Repetition Repeated(int lag, int pitch) const;
    static TrueSpeechSamples Pulses(const TrueSpeechSubframe& subframe);

    // The samples of one subframe. The four of a block come in order.
    TrueSpeechSamples Decode(int subframe, const TrueSpeechSamples& repeated,
                             const TrueSpeechSamples& pulses);

private:
    using Memory = std::array<qint16, trueSpeechOrder>; // oldest sample first

    void Predict(int subframe, TrueSpeechSamples& samples);
    void TakeFormants(int subframe, TrueSpeechSamples& samples);
    void GiveFormants(int subframe, TrueSpeechSamples& samples);

    std::array<TrueSpeechPredictor, trueSpeechSubframes> predictors_ = {};
    TrueSpeechPredictor lastPredictor_ = {}; // of the latest block
    int firstReflection_ = 0;
    std::array<qint16, trueSpeechHistory> excitation_ = {};
    Memory predicted_ = {};
    Memory taken_ = {};
    Memory given_ = {};
};

} // namespace kestrune
