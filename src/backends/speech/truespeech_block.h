// One block of TrueSpeech as its fields, and as the 32 bytes that a file holds.
#pragma once

#include <QtGlobal>

#include <array>
#include <span>

namespace kestrune {

constexpr int trueSpeechRateHz = 8000;
constexpr int trueSpeechBlockBytes = 32;
constexpr int trueSpeechBlockSamples = 240;
constexpr int trueSpeechSubframes = 4; // of a block, of 60 samples each
constexpr int trueSpeechSubframeSamples = 60;
constexpr int trueSpeechOrder = 8;  // of the predictor
constexpr int trueSpeechPulses = 7; // of a subframe: 3 in its first half, 4 in its second
constexpr int trueSpeechPitchFilters = 25;
// A subframe that repeats nothing of the excitation before it.
constexpr int trueSpeechNoPitch = 127;

struct TrueSpeechSubframe {
    int pitch = trueSpeechNoPitch; // 25 times what is added to the half's lag, plus the filter; 7 bits
    int pulseGain = 0;             // row of trueSpeechPulseLevels; 4 bits
    int pulseSizes = 0;            // column of each pulse, the first pulse in the topmost of 7 pairs of bits
    quint32 pulsePlaces = 0;       // PulsePlaces() of the positions; 27 bits
};

struct TrueSpeechBlock {
    std::array<int, trueSpeechOrder> reflection =
        {};               // entries of the predictor's tables; 5,5,4,4,4,3,3,3 bits
    bool blended = false; // the first two subframes mix this predictor with the one before, else keep that
    std::array<int, 2> lag = {}; // of each half of the block, less 18 samples; 8 bits
    std::array<TrueSpeechSubframe, trueSpeechSubframes> subframes = {};
};

using TrueSpeechBytes = std::array<uchar, trueSpeechBlockBytes>;

// Fields are cut to their bits.
TrueSpeechBytes PackTrueSpeech(const TrueSpeechBlock& block);
// Any 32 bytes are a block.
TrueSpeechBlock UnpackTrueSpeech(const TrueSpeechBytes& bytes);

using PulsePositions = std::array<int, trueSpeechPulses>;

// The places of the pulses as one number. `positions` ascend, the first three below 30, the others 30 to 59.
quint32 PulsePlaces(const PulsePositions& positions);
// The way back. A number that stands for no set of places gives -1 for the pulses that have none.
PulsePositions PulsePositionsOf(quint32 places);

} // namespace kestrune
