#include "backends/codecs/dsp/truespeech_pulses.h"

#include "backends/codecs/dsp/truespeech_tables.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kestrune {

namespace {

constexpr size_t halfSamples = trueSpeechSubframeSamples / 2;
constexpr size_t firstHalfPulses = 3;
constexpr int bigLevel = 3;
constexpr float never = 1e30F;

size_t HalfStart(size_t slot) {
    return slot < firstHalfPulses ? 0 : halfSamples;
}

int ColumnOf(int level) {
    const auto& levels = trueSpeechPulseLevels;
    return static_cast<int>(std::find(levels.begin(), levels.end(), level) - levels.begin());
}

} // namespace

struct PulseSearch::Place {
    size_t position = 0;
    int level = 0;
};

// Those of the first half stand in the first three slots.
struct PulseSearch::Pulses {
    int gain = 0;
    float unit = 0;
    float gained = 0;
    std::array<size_t, trueSpeechPulses> positions = {};
    std::array<int, trueSpeechPulses> levels = {};
    alignas(16) SubframeValues left = {};    // of what is wanted, as Choose takes it
    alignas(16) SubframeValues blocked = {}; // a price above all gain where a pulse stands
};

void PulseSearch::SetResponse(const SubframeValues& response) {
    constexpr size_t last = trueSpeechSubframeSamples - 1;
    response_ = response;
    SubframeValues reversed;
    std::reverse_copy(response.begin(), response.end(), reversed.begin());
    for (size_t row = trueSpeechSubframeSamples; row-- > 0;) {
        SubframeValues& products = products_[row];
        for (size_t column = 0; column <= last; ++column) {
            products[column] = reversed[row] * reversed[column];
        }
        if (row < last) {
            for (size_t column = 0; column < last; ++column) {
                products[column] += products_[row + 1][column + 1];
            }
        }
        powers_[row] = products[row];
    }
}

SubframeValues PulseSearch::Sums(const SubframeValues& wanted) const {
    SubframeValues sums = {};
    for (size_t after = 0; after < wanted.size(); ++after) {
        for (size_t place = 0; place + after < wanted.size(); ++place) {
            sums[place] += response_[after] * wanted[place + after];
        }
    }
    return sums;
}

SubframeValues PulseSearch::Without(const SubframeValues& sums,
                                    const std::array<qint16, trueSpeechSubframeSamples>& excitation) const {
    SubframeValues left = sums;
    for (size_t place = 0; place < left.size(); ++place) {
        const auto height = static_cast<float>(excitation[place]);
        for (size_t other = 0; other < left.size(); ++other) {
            left[other] -= height * products_[place][other];
        }
    }
    return left;
}

void PulseSearch::Add(Pulses& pulses, size_t place, int level) const {
    const float height = static_cast<float>(level) * pulses.unit;
    pulses.gained += height * (2 * pulses.left[place] - height * powers_[place]);
    const SubframeValues& products = products_[place];
    for (size_t sample = 0; sample < products.size(); ++sample) {
        pulses.left[sample] -= height * products[sample];
    }
}

PulseSearch::Place PulseSearch::BestPlace(const Pulses& pulses, size_t first, size_t last) const {
    const float small = pulses.unit;
    const float big = bigLevel * pulses.unit;
    alignas(16) SubframeValues gains;
    for (size_t place = first; place < last; ++place) {
        const float left = 2 * std::abs(pulses.left[place]);
        const float bySmall = small * (left - small * powers_[place]);
        const float byBig = big * (left - big * powers_[place]);
        gains[place] = std::max(bySmall, byBig) - pulses.blocked[place];
    }
    const auto best = std::max_element(gains.begin() + static_cast<std::ptrdiff_t>(first),
                                       gains.begin() + static_cast<std::ptrdiff_t>(last));
    const auto place = static_cast<size_t>(best - gains.begin());
    const float left = pulses.left[place];
    // The big one is better where what is left exceeds the middle between the two.
    const int level = std::abs(left) > 2 * small * powers_[place] ? bigLevel : 1;
    return {place, left < 0 ? -level : level};
}

PulseSearch::Pulses PulseSearch::PlaceOneByOne(const SubframeValues& sums, int gain) const {
    Pulses pulses;
    pulses.gain = gain;
    pulses.unit = static_cast<float>(trueSpeechPulseUnits[static_cast<size_t>(gain)]);
    pulses.left = sums;
    size_t early = 0;
    size_t late = firstHalfPulses;
    while (early < firstHalfPulses || late < trueSpeechPulses) {
        const Place place = BestPlace(pulses, early < firstHalfPulses ? 0 : halfSamples,
                                      late < trueSpeechPulses ? sums.size() : halfSamples);
        size_t& slot = place.position < halfSamples ? early : late;
        Add(pulses, place.position, place.level);
        pulses.positions[slot] = place.position;
        pulses.levels[slot] = place.level;
        pulses.blocked[place.position] = never;
        ++slot;
    }
    return pulses;
}

void PulseSearch::Improve(Pulses& pulses) const {
    constexpr int mostRounds = 4;
    bool changed = true;
    for (int round = 0; round < mostRounds && changed; ++round) {
        changed = false;
        for (size_t slot = 0; slot < trueSpeechPulses; ++slot) {
            const Place before = {pulses.positions[slot], pulses.levels[slot]};
            Add(pulses, before.position, -before.level);
            pulses.blocked[before.position] = 0;
            const size_t half = HalfStart(slot);
            const Place better = BestPlace(pulses, half, half + halfSamples);
            Add(pulses, better.position, better.level);
            pulses.blocked[better.position] = never;
            pulses.positions[slot] = better.position;
            pulses.levels[slot] = better.level;
            changed = changed || better.position != before.position || better.level != before.level;
        }
    }
}

PulseChoice PulseSearch::Choose(const SubframeValues& sums) const {
    constexpr float closest = 1.3F; // the steps of the gain are about 1.6 apart
    float highest = 0;
    float mostGained = 0;
    for (size_t place = 0; place < sums.size(); ++place) {
        const float gained = sums[place] * sums[place] / powers_[place];
        if (gained > mostGained) {
            mostGained = gained;
            highest = std::abs(sums[place]) / powers_[place];
        }
    }
    const auto& units = trueSpeechPulseUnits;
    const auto rowBelow = [&units](float unit) {
        const auto above = std::lower_bound(units.begin(), units.end(), unit);
        return std::max<int>(0, static_cast<int>(above - units.begin()) - 1);
    };
    const int first = rowBelow(highest / (bigLevel * closest * closest));
    const int last = rowBelow(highest * closest);
    Pulses best;
    best.gained = -std::numeric_limits<float>::infinity();
    for (int gain = first; gain <= last; ++gain) {
        Pulses pulses = PlaceOneByOne(sums, gain);
        Improve(pulses);
        if (pulses.gained > best.gained) {
            best = pulses;
        }
    }
    PulseChoice choice;
    choice.gain = best.gain;
    choice.gained = best.gained;
    std::array<size_t, trueSpeechPulses> order = {0, 1, 2, 3, 4, 5, 6};
    std::sort(order.begin(), order.end(),
              [&best](size_t left, size_t right) { return best.positions[left] < best.positions[right]; });
    PulsePositions positions;
    for (size_t pulse = 0; pulse < order.size(); ++pulse) {
        positions[pulse] = static_cast<int>(best.positions[order[pulse]]);
        choice.sizes = choice.sizes << 2 | ColumnOf(best.levels[order[pulse]]);
    }
    choice.places = PulsePlaces(positions);
    return choice;
}

} // namespace kestrune
