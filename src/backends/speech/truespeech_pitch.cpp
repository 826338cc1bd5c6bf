#include "backends/speech/truespeech_pitch.h"

#include "backends/speech/truespeech_tables.h"

#include <algorithm>

namespace kestrune {

namespace {

struct Taps {
    float further = 0;
    float nearer = 0;
};

Taps TapsOf(size_t filter) {
    constexpr float whole = 16384;
    const PitchFilter& taps = trueSpeechPitchTaps[filter];
    return {static_cast<float>(taps.further) / whole, static_cast<float>(taps.nearer) / whole};
}

} // namespace

void PitchSearch::Prepare(const std::array<qint16, trueSpeechHistory>& excitation,
                          const SubframeValues& response, const SubframeValues& wanted, int firstLag,
                          int lastLag) {
    wanted_ = wanted;
    const size_t first = static_cast<size_t>(firstLag) + trueSpeechShortestLag;
    const size_t last = static_cast<size_t>(lastLag) + trueSpeechLagSteps + trueSpeechShortestLag;
    SubframeValues& start = delayed_[first];
    start.fill(0);
    for (size_t sample = 0; sample < std::min(first, start.size()); ++sample) {
        const auto entering = static_cast<float>(excitation[trueSpeechHistory - first + sample]);
        for (size_t after = sample; after < start.size(); ++after) {
            start[after] += entering * response[after - sample];
        }
    }
    PrepareDistance(first);
    for (size_t distance = first + 1; distance <= last; ++distance) {
        const SubframeValues& nearer = delayed_[distance - 1];
        SubframeValues& delayed = delayed_[distance];
        const auto entering = static_cast<float>(excitation[trueSpeechHistory - distance]);
        delayed[0] = entering * response[0];
        for (size_t sample = 1; sample < delayed.size(); ++sample) {
            delayed[sample] = nearer[sample - 1] + entering * response[sample];
        }
        PrepareDistance(distance);
        nextSums_[distance - 1] = Product(repeated_[distance], repeated_[distance - 1]);
    }
}

void PitchSearch::PrepareDistance(size_t distance) {
    SubframeValues& repeated = repeated_[distance];
    repeated = delayed_[distance];
    for (size_t sample = distance; sample < repeated.size(); ++sample) {
        repeated[sample] += repeated[sample - distance];
    }
    wantedSums_[distance] = Product(repeated, wanted_);
    ownSums_[distance] = Product(repeated, repeated);
}

// A lag shorter than the subframe repeats what the filter has just made, so it goes through it once more.
float PitchSearch::GainedExactly(size_t distance, float furtherTap, float nearerTap) const {
    const size_t nearer = distance;
    const size_t further = nearer + 1;
    SubframeValues made;
    for (size_t sample = 0; sample < made.size(); ++sample) {
        made[sample] = furtherTap * delayed_[further][sample] + nearerTap * delayed_[nearer][sample];
    }
    if (nearer < made.size()) {
        made[nearer] += nearerTap * made[0];
    }
    for (size_t sample = further; sample < made.size(); ++sample) {
        made[sample] += furtherTap * made[sample - further] + nearerTap * made[sample - nearer];
    }
    return 2 * Product(made, wanted_) - Product(made, made);
}

std::array<float, trueSpeechLags + trueSpeechLagSteps - 1> PitchSearch::GainedByLag() const {
    std::array<float, trueSpeechLags + trueSpeechLagSteps - 1> best = {};
    for (size_t filter = 0; filter < trueSpeechPitchFilters; ++filter) {
        const Taps taps = TapsOf(filter);
        for (size_t lag = 0; lag < best.size(); ++lag) {
            const float gained = Gained(lag + trueSpeechShortestLag, taps.further, taps.nearer);
            best[lag] = best[lag] < gained ? gained : best[lag];
        }
    }
    return best;
}

std::vector<PitchChoice> PitchSearch::Best(int lag, size_t count) const {
    std::vector<PitchChoice> choices(1);
    choices.reserve(1 + trueSpeechLagSteps * trueSpeechPitchFilters);
    for (int step = 0; step < trueSpeechLagSteps; ++step) {
        const auto distance = static_cast<size_t>(lag) + static_cast<size_t>(step) + trueSpeechShortestLag;
        for (size_t filter = 0; filter < trueSpeechPitchFilters; ++filter) {
            const Taps taps = TapsOf(filter);
            const float gained = distance < trueSpeechSubframeSamples
                                     ? GainedExactly(distance, taps.further, taps.nearer)
                                     : Gained(distance, taps.further, taps.nearer);
            choices.push_back({step * trueSpeechPitchFilters + static_cast<int>(filter), gained});
        }
    }
    const auto kept = choices.begin() + static_cast<std::ptrdiff_t>(std::min(count, choices.size()));
    std::partial_sort(
        choices.begin(), kept, choices.end(),
        [](const PitchChoice& left, const PitchChoice& right) { return left.gained > right.gained; });
    choices.erase(kept, choices.end());
    return choices;
}

} // namespace kestrune
