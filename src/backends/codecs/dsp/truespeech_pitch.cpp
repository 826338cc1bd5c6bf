#include "backends/codecs/dsp/truespeech_pitch.h"

#include "backends/codecs/dsp/truespeech_tables.h"

#include <algorithm>

namespace kestrune {

namespace {

struct Taps {
    float further = 0;
    float nearer = 0;
};

std::array<Taps, trueSpeechPitchFilters> MakeTaps() {
    constexpr float whole = 16384;
    std::array<Taps, trueSpeechPitchFilters> taps;
    std::transform(trueSpeechPitchFilters25.begin(), trueSpeechPitchFilters25.end(), taps.begin(),
                   [](const PitchFilter& filter) {
                       return Taps{static_cast<float>(filter.further) / whole,
                                   static_cast<float>(filter.nearer) / whole};
                   });
    return taps;
}

const std::array<Taps, trueSpeechPitchFilters>& AllTaps() {
    static const auto taps = MakeTaps();
    return taps;
}

float Product(const SubframeValues& left, const SubframeValues& right) {
    std::array<float, 4> sums = {};
    for (size_t sample = 0; sample < left.size(); sample += sums.size()) {
        for (size_t lane = 0; lane < sums.size(); ++lane) {
            sums[lane] += left[sample + lane] * right[sample + lane];
        }
    }
    return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

} // namespace

void PitchSearch::Prepare(const std::array<qint16, trueSpeechHistory>& excitation,
                          const SubframeValues& response, const SubframeValues& wanted, int firstLag,
                          int lastLag) {
    wanted_ = wanted;
    const int first = firstLag + trueSpeechShortestLag;
    const int last = lastLag + trueSpeechLagSteps + trueSpeechShortestLag;
    SubframeValues& start = delayed_[static_cast<size_t>(first)];
    start.fill(0);
    for (int sample = 0; sample < std::min(first, trueSpeechSubframeSamples); ++sample) {
        const auto entering =
            static_cast<float>(excitation[static_cast<size_t>(trueSpeechHistory - first + sample)]);
        for (size_t after = static_cast<size_t>(sample); after < start.size(); ++after) {
            start[after] += entering * response[after - static_cast<size_t>(sample)];
        }
    }
    PrepareDistance(first);
    for (int distance = first + 1; distance <= last; ++distance) {
        const auto now = static_cast<size_t>(distance);
        const auto entering = static_cast<float>(excitation[trueSpeechHistory - now]);
        delayed_[now][0] = entering * response[0];
        for (size_t sample = 1; sample < wanted.size(); ++sample) {
            delayed_[now][sample] = delayed_[now - 1][sample - 1] + entering * response[sample];
        }
        PrepareDistance(distance);
        nextSums_[now - 1] = Product(repeated_[now], repeated_[now - 1]);
    }
}

void PitchSearch::PrepareDistance(int distance) {
    const auto now = static_cast<size_t>(distance);
    SubframeValues& repeated = repeated_[now];
    repeated = delayed_[now];
    for (size_t sample = now; sample < repeated.size(); ++sample) {
        repeated[sample] += repeated[sample - now];
    }
    wantedSums_[now] = Product(repeated, wanted_);
    ownSums_[now] = Product(repeated, repeated);
}

std::array<float, trueSpeechPitchFilters> PitchSearch::GainedByFilter(int distance) const {
    const auto nearer = static_cast<size_t>(distance);
    const size_t further = nearer + 1;
    std::array<float, trueSpeechPitchFilters> gained;
    std::transform(AllTaps().begin(), AllTaps().end(), gained.begin(), [&](const Taps& taps) {
        return taps.further * (2 * wantedSums_[further] - taps.further * ownSums_[further]) +
               taps.nearer * (2 * wantedSums_[nearer] - taps.nearer * ownSums_[nearer]) -
               2 * taps.further * taps.nearer * nextSums_[nearer];
    });
    return gained;
}

// A lag shorter than the subframe repeats what the filter has just made, so it goes through it once more.
float PitchSearch::GainedExactly(int distance, size_t filter) const {
    const Taps taps = AllTaps()[filter];
    const auto nearer = static_cast<size_t>(distance);
    const size_t further = nearer + 1;
    SubframeValues made;
    for (size_t sample = 0; sample < made.size(); ++sample) {
        made[sample] = taps.further * delayed_[further][sample] + taps.nearer * delayed_[nearer][sample];
    }
    if (nearer < made.size()) {
        made[nearer] += taps.nearer * made[0];
    }
    for (size_t sample = further; sample < made.size(); ++sample) {
        made[sample] += taps.further * made[sample - further] + taps.nearer * made[sample - nearer];
    }
    return 2 * Product(made, wanted_) - Product(made, made);
}

float PitchSearch::GainedAt(int lag) const {
    const auto gained = GainedByFilter(lag + trueSpeechShortestLag);
    return std::max(0.0F, *std::max_element(gained.begin(), gained.end()));
}

std::vector<PitchChoice> PitchSearch::Best(int lag, size_t count) const {
    std::vector<PitchChoice> choices(1);
    for (int step = 0; step < trueSpeechLagSteps; ++step) {
        const int distance = lag + step + trueSpeechShortestLag;
        const auto estimated = GainedByFilter(distance);
        for (size_t filter = 0; filter < estimated.size(); ++filter) {
            const float gained =
                distance < trueSpeechSubframeSamples ? GainedExactly(distance, filter) : estimated[filter];
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
