// The pulses of a TrueSpeech subframe: the seven that bring the decoder's sound nearest to what is wanted.
#pragma once

#include "backends/codecs/dsp/truespeech_block.h"

namespace kestrune {

// One value for each sample of a subframe.
using SubframeValues = std::array<float, trueSpeechSubframeSamples>;

struct PulseChoice {
    int gain = 0;
    int sizes = 0;
    quint32 places = 0;
    float gained = 0; // by how much the sum of squares that is left falls; may be below 0
};

// Finds pulses for one subframe. The response is that of all that lies between a pulse and the ear.
class PulseSearch {
public:
    // `response[n]` is what a pulse of height 1 gives n samples later. Once a subframe.
    void SetResponse(const SubframeValues& response);
    // For each place the sum of products of the wanted signal and the response to a pulse there.
    SubframeValues Sums(const SubframeValues& wanted) const;
    // The same sums for what is left to want beside an excitation.
    SubframeValues Without(const SubframeValues& sums,
                           const std::array<qint16, trueSpeechSubframeSamples>& excitation) const;
    // Finds pulses by those sums.
    PulseChoice Choose(const SubframeValues& sums) const;

private:
    struct Pulses;
    struct Place;

    Pulses PlaceOneByOne(const SubframeValues& sums, int gain) const;
    void Improve(Pulses& pulses) const;
    Place BestPlace(const Pulses& pulses, size_t first, size_t last) const;
    // Adds `level` units at a place, or takes them away again with the sign turned.
    void Add(Pulses& pulses, size_t place, int level) const;

    SubframeValues response_ = {};
    // Sums of products of the responses of two places, and of each with itself.
    alignas(16) std::array<SubframeValues, trueSpeechSubframeSamples> products_ = {};
    alignas(16) SubframeValues powers_ = {};
};

} // namespace kestrune
