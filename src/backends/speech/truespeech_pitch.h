// What a TrueSpeech subframe repeats of the excitation before it: how far back, and through which filter.
#pragma once

#include "backends/speech/truespeech_pulses.h"
#include "backends/speech/truespeech_synthesis.h"

#include <vector>

namespace kestrune {

// Lags that a half of a block can begin with, less the shortest. With the most that a subframe adds they stay
// within the history.
constexpr int trueSpeechLags = 124;
// What a subframe can add to the lag of its half: 0 to 4.
constexpr int trueSpeechLagSteps = 5;

// Sum of products, in an order that is worked on in fours.
inline float Product(std::span<const float, trueSpeechSubframeSamples> left,
                     std::span<const float, trueSpeechSubframeSamples> right) {
    std::array<float, 4> sums = {};
    for (size_t sample = 0; sample < left.size(); sample += sums.size()) {
        for (size_t lane = 0; lane < sums.size(); ++lane) {
            sums[lane] += left[sample + lane] * right[sample + lane];
        }
    }
    return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

struct PitchChoice {
    int pitch = trueSpeechNoPitch; // field of the subframe
    float gained = 0;              // by how much the sum of squares that is left falls
};

class PitchSearch {
public:
    // For one subframe: the excitation before it, the response of all that lies between excitation and ear,
    // and the signal that is wanted there. Serves the lags of a half from the first to the last. Keeps no
    // reference.
    void Prepare(const std::array<qint16, trueSpeechHistory>& excitation, const SubframeValues& response,
                 const SubframeValues& wanted, int firstLag, int lastLag);
    // For each lag of a half, from that many and the shortest lag samples ago, what the best filter gains; an
    // estimate where that is less than a subframe. Behind the lags come those that steps lead to. All lags
    // must be prepared.
    std::array<float, trueSpeechLags + trueSpeechLagSteps - 1> GainedByLag() const;
    // The `count` best ways of one lag, best first, that of repeating nothing among them.
    std::vector<PitchChoice> Best(int lag, size_t count) const;

private:
    static constexpr int distances = trueSpeechHistory + 1;

    void PrepareDistance(size_t distance);
    // What a filter gains, with what it has made itself left out.
    float Gained(size_t distance, float furtherTap, float nearerTap) const {
        const size_t further = distance + 1;
        return furtherTap * (2 * wantedSums_[further] - furtherTap * ownSums_[further]) +
               nearerTap * (2 * wantedSums_[distance] - nearerTap * ownSums_[distance]) -
               2 * furtherTap * nearerTap * nextSums_[distance];
    }
    float GainedExactly(size_t distance, float furtherTap, float nearerTap) const;

    SubframeValues wanted_ = {};
    // The response to the excitation of so many samples ago, as far as it is known, ...
    std::array<SubframeValues, distances> delayed_ = {};
    // ... and to it repeated with that period.
    std::array<SubframeValues, distances> repeated_ = {};
    // Sums of products of the latter: with what is wanted, with itself and with that of one sample more.
    std::array<float, distances> wantedSums_ = {};
    std::array<float, distances> ownSums_ = {};
    std::array<float, distances> nextSums_ = {};
};

} // namespace kestrune
