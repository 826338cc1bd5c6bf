// Codes sound as TrueSpeech, block by block: of the ways that the format offers it looks for the one whose
// decoded sound comes nearest to the original.
#pragma once

#include "backends/speech/truespeech_pitch.h"
#include "backends/speech/truespeech_weight.h"

namespace kestrune {

class TrueSpeechCoder {
public:
    using BlockSamples = std::span<const qint16, trueSpeechBlockSamples>;

    // Blocks in order. `next` is the block that follows, silence behind the last.
    TrueSpeechBytes Encode(BlockSamples block, BlockSamples next);

private:
    // What all trials of a subframe share.
    struct Setting {
        PredictorTaps taps = {};
        SubframeValues response = {};
        PulseSearch pulses;
        SubframeValues original = {};
        SubframeValues weighted = {}; // the original, weighted by itself
    };
    // A way to code the subframes so far, and what the decoder and the ear remember of it.
    struct Trial {
        TrueSpeechSynthesis synthesis;
        ErrorWeight weight;
        TrueSpeechBlock block;
        float error = 0;
    };

    void ChoosePredictor(BlockSamples block, BlockSamples next);
    void SetSubframes(BlockSamples block);
    void EncodeHalf(int half);
    std::vector<int> LagsWorthTrying(const PitchSearch& search, int half) const;
    std::array<float, trueSpeechLags + trueSpeechLagSteps - 1> GainedLater(int half) const;
    SubframeValues WantedFrom(const Trial& trial, int subframe) const;
    void EncodeSubframe(Trial& trial, int subframe, const SubframeValues& wanted,
                        const PitchSearch& search) const;

    std::array<Setting, trueSpeechSubframes> settings_;
    Trial best_;
    PitchSearch pitch_;
    PitchSearch laterPitch_;
    ErrorWeight originalWeight_;
    std::array<float, trueSpeechOrder> past_ = {}; // the last samples of the block before
    std::array<float, trueSpeechHistory> weightedPast_ = {};
};

} // namespace kestrune
