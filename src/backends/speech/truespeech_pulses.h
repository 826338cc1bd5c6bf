// The pulses of a TrueSpeech subframe: the seven that bring the decoder's sound nearest to what is wanted.
#pragma once

#include "backends/speech/truespeech_block.h"

#include <vector>

namespace kestrune {

// One value for each sample of a subframe.
using SubframeValues = std::array<float, trueSpeechSubframeSamples>;

// What pulses are wanted for: for each place the sum of products of the wanted signal and the response to a
// pulse there, and by how much the sum of squares has fallen by other means.
struct PulseTarget {
    SubframeValues sums = {};
    float gained = 0;
};

struct PulseChoice {
    size_t target = 0; // that was met best
    int gain = 0;
    int sizes = 0;
    quint32 places = 0;
    float gained = 0; // by how much the sum of squares falls in all; may be below 0
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
    // Of one target or more.
    PulseChoice Choose(std::span<const PulseTarget> targets) const;

private:
    // Four values that are worked on at once.
    using Lanes __attribute__((vector_size(16))) = float;
    using LaneNumbers __attribute__((vector_size(16))) = qint32;
    static constexpr size_t laneCount = 4;
    // A half of a subframe is filled up to whole lanes by two places that are never used.
    static constexpr size_t halfGroups = 8;
    static constexpr size_t halfPlaces = halfGroups * laneCount;
    using Places = std::array<Lanes, 2 * halfGroups>;

    struct Pulses;
    struct Pulse {
        size_t place = 0; // counted with those that fill up
        int level = 0;
    };

    static float GainedBy(const Pulses& pulses);
    static Places Spread(const SubframeValues& values);
    std::array<int, 2> GainsWorthTrying(const Places& sums) const;
    void Draft(const PulseTarget& target, size_t number, std::vector<Pulses>& drafts) const;
    void PlaceOneByOne(const Places& sums, Pulses& pulses) const;
    void Improve(Pulses& pulses) const;
    Pulse BetterPulse(const Pulses& pulses, Pulse old) const;
    void Add(Pulses& pulses, Pulse pulse) const;
    void Remove(Pulses& pulses, Pulse pulse) const;
    static PulseChoice ChoiceOf(const Pulses& pulses);

    SubframeValues response_ = {};
    // Sums of products of the responses of two places, and of each with itself.
    std::array<Places, 2 * halfPlaces> products_ = {};
    Places powers_ = {};
};

} // namespace kestrune
