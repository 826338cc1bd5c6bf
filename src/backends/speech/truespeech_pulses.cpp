#include "backends/speech/truespeech_pulses.h"

#include "backends/speech/truespeech_tables.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace kestrune {

namespace {

constexpr size_t halfSamples = trueSpeechSubframeSamples / 2;
constexpr size_t firstHalfPulses = 3;
constexpr int bigLevel = 3;
// A price above all gain.
constexpr float never = 1e30F;
constexpr int mostGainsTried = 6;

int ColumnOf(int level) {
    const auto& levels = trueSpeechPulseLevels;
    return static_cast<int>(std::find(levels.begin(), levels.end(), level) - levels.begin());
}

} // namespace

// Those of the first half stand in the first three slots.
struct PulseSearch::Pulses {
    size_t target = 0;
    int gain = 0;
    float gainedBefore = 0;
    float gained = 0; // in squares of the gain's unit
    std::array<Pulse, trueSpeechPulses> chosen = {};
    Places left;   // of the sums, in units
    Places prices; // the power of a pulse of level 1, or `never` where one stands
};

float PulseSearch::GainedBy(const Pulses& pulses) {
    const auto unit = static_cast<float>(trueSpeechPulseUnits[static_cast<size_t>(pulses.gain)]);
    return pulses.gainedBefore + pulses.gained * unit * unit;
}

PulseSearch::Places PulseSearch::Spread(const SubframeValues& values) {
    constexpr size_t halfBytes = halfSamples * sizeof(float);
    Places places = {};
    std::memcpy(places.data(), values.data(), halfBytes);
    std::memcpy(places.data() + halfGroups, values.data() + halfSamples, halfBytes);
    return places;
}

void PulseSearch::SetResponse(const SubframeValues& response) {
    constexpr size_t last = trueSpeechSubframeSamples - 1;
    response_ = response;
    SubframeValues reversed;
    std::reverse_copy(response.begin(), response.end(), reversed.begin());
    SubframeValues powers;
    SubframeValues products = {};
    for (size_t row = trueSpeechSubframeSamples; row-- > 0;) {
        for (size_t column = 0; column < last; ++column) {
            products[column] = products[column + 1] + reversed[row] * reversed[column];
        }
        products[last] = reversed[row] * reversed[last];
        powers[row] = products[row];
        products_[row < halfSamples ? row : row - halfSamples + halfPlaces] = Spread(products);
    }
    powers_ = Spread(powers);
    for (const size_t unused : {halfSamples, halfSamples + 1}) {
        powers_[unused / laneCount][unused % laneCount] = never;
        powers_[(unused + halfPlaces) / laneCount][unused % laneCount] = never;
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
    Places left = Spread(sums);
    for (size_t sample = 0; sample < excitation.size(); ++sample) {
        const size_t place = sample < halfSamples ? sample : sample - halfSamples + halfPlaces;
        const auto height = static_cast<float>(excitation[sample]);
        for (size_t group = 0; group < left.size(); ++group) {
            left[group] -= height * products_[place][group];
        }
    }
    SubframeValues values;
    for (size_t sample = 0; sample < values.size(); ++sample) {
        const size_t place = sample < halfSamples ? sample : sample - halfSamples + halfPlaces;
        values[sample] = left[place / laneCount][place % laneCount];
    }
    return values;
}

void PulseSearch::Add(Pulses& pulses, Pulse pulse) const {
    const auto level = static_cast<float>(pulse.level);
    const size_t group = pulse.place / laneCount;
    const size_t lane = pulse.place % laneCount;
    pulses.gained += level * (2 * pulses.left[group][lane] - level * powers_[group][lane]);
    pulses.prices[group][lane] = never;
    const Places& products = products_[pulse.place];
    for (size_t other = 0; other < products.size(); ++other) {
        pulses.left[other] -= level * products[other];
    }
}

void PulseSearch::Remove(Pulses& pulses, Pulse pulse) const {
    Add(pulses, {pulse.place, -pulse.level});
    const size_t group = pulse.place / laneCount;
    pulses.prices[group][pulse.place % laneCount] = powers_[group][pulse.place % laneCount];
}

namespace {

// The best pulse among groups of lanes, found lane by lane.
template <typename Lanes, typename LaneNumbers>
class BestPulse {
public:
    void Try(const Lanes& left, const Lanes& prices, qint32 group) {
        const Lanes positive = left > -left ? left : -left;
        const Lanes twice = positive + positive;
        const Lanes bySmall = twice - prices;
        const Lanes byBig = bigLevel * (twice - bigLevel * prices);
        const Lanes better = bySmall > byBig ? bySmall : byBig;
        const LaneNumbers here = {group, group, group, group};
        const LaneNumbers exceeds = better > gained_;
        groups_ = exceeds ? here : groups_;
        gained_ = exceeds ? better : gained_;
    }
    size_t Place() const {
        constexpr size_t lanes = 4;
        size_t best = 0;
        for (size_t lane = 1; lane < lanes; ++lane) {
            best = gained_[lane] > gained_[best] ? lane : best;
        }
        return static_cast<size_t>(groups_[best]) * lanes + best;
    }

private:
    static constexpr float least = -std::numeric_limits<float>::infinity();
    Lanes gained_ = {least, least, least, least};
    LaneNumbers groups_ = {};
};

// The level that leaves less of a sum, in units.
int LevelFor(float left, float power) {
    const int level = std::abs(left) > 2 * power ? bigLevel : 1;
    return left < 0 ? -level : level;
}

} // namespace

void PulseSearch::PlaceOneByOne(const Places& sums, Pulses& pulses) const {
    pulses.prices = powers_;
    const float unit = static_cast<float>(trueSpeechPulseUnits[static_cast<size_t>(pulses.gain)]);
    std::transform(sums.begin(), sums.end(), pulses.left.begin(),
                   [unit](const Lanes& lanes) { return lanes / unit; });
    size_t early = 0;
    size_t late = firstHalfPulses;
    while (early < firstHalfPulses || late < trueSpeechPulses) {
        const size_t first = early < firstHalfPulses ? 0 : halfGroups;
        const size_t last = late < trueSpeechPulses ? 2 * halfGroups : halfGroups;
        BestPulse<Lanes, LaneNumbers> best;
        for (size_t group = first; group < last; ++group) {
            best.Try(pulses.left[group], pulses.prices[group], static_cast<qint32>(group));
        }
        const size_t place = best.Place();
        const size_t lane = place % laneCount;
        const Pulse pulse = {
            place, LevelFor(pulses.left[place / laneCount][lane], powers_[place / laneCount][lane])};
        Add(pulses, pulse);
        size_t& slot = place < halfPlaces ? early : late;
        pulses.chosen[slot++] = pulse;
    }
}

// Where a pulse would stand if it were placed last of all.
PulseSearch::Pulse PulseSearch::BetterPulse(const Pulses& pulses, Pulse old) const {
    const auto level = static_cast<float>(old.level);
    const Places& products = products_[old.place];
    const size_t first = old.place / halfPlaces * halfGroups;
    const size_t oldGroup = old.place / laneCount;
    std::array<Lanes, halfGroups> left;
    BestPulse<Lanes, LaneNumbers> best;
    for (size_t group = 0; group < halfGroups; ++group) {
        left[group] = pulses.left[first + group] + level * products[first + group];
        Lanes prices = pulses.prices[first + group];
        if (first + group == oldGroup) {
            prices[old.place % laneCount] = powers_[oldGroup][old.place % laneCount];
        }
        best.Try(left[group], prices, static_cast<qint32>(group));
    }
    const size_t place = best.Place();
    const size_t lane = place % laneCount;
    const size_t group = place / laneCount;
    return {first * laneCount + place, LevelFor(left[group][lane], powers_[first + group][lane])};
}

void PulseSearch::Improve(Pulses& pulses) const {
    constexpr size_t mostTries = 4 * trueSpeechPulses;
    size_t unchanged = 0;
    for (size_t tried = 0; tried < mostTries && unchanged < trueSpeechPulses; ++tried) {
        Pulse& pulse = pulses.chosen[tried % trueSpeechPulses];
        const Pulse better = BetterPulse(pulses, pulse);
        ++unchanged;
        if (better.place != pulse.place || better.level != pulse.level) {
            Remove(pulses, pulse);
            Add(pulses, better);
            pulse = better;
            unchanged = 0;
        }
    }
}

// The first and the last gain that may suit the pulse that gains most on its own.
std::array<int, 2> PulseSearch::GainsWorthTrying(const Places& sums) const {
    constexpr float closest = 1.3F; // the steps of the gain are about 1.6 apart
    float highest = 0;
    float mostGained = 0;
    for (size_t place = 0; place < 2 * halfPlaces; ++place) {
        const float sum = sums[place / laneCount][place % laneCount];
        const float power = powers_[place / laneCount][place % laneCount];
        if (sum * sum > mostGained * power) {
            mostGained = sum * sum / power;
            highest = std::abs(sum) / power;
        }
    }
    const auto rowBelow = [](float unit) {
        const auto& units = trueSpeechPulseUnits;
        const auto above = std::lower_bound(units.begin(), units.end(), unit);
        return std::max<int>(0, static_cast<int>(above - units.begin()) - 1);
    };
    const int first = rowBelow(highest / (bigLevel * closest * closest));
    return {first, std::min(rowBelow(highest * closest), first + mostGainsTried - 1)};
}

// Pulses for the gains around that which suits a target best: from the middle on towards the better side, as
// long as it gets better.
void PulseSearch::Draft(const PulseTarget& target, size_t number, std::vector<Pulses>& drafts) const {
    const Places sums = Spread(target.sums);
    const auto [first, last] = GainsWorthTrying(sums);
    const auto gained = [&](int gain) {
        Pulses& pulses = drafts.emplace_back();
        pulses.target = number;
        pulses.gain = gain;
        pulses.gainedBefore = target.gained;
        PlaceOneByOne(sums, pulses);
        return GainedBy(pulses);
    };
    const int middle = (first + last) / 2;
    float most = gained(middle);
    for (const int step : {1, -1}) {
        const float before = most;
        for (int gain = middle + step; gain >= first && gain <= last; gain += step) {
            const float now = gained(gain);
            if (now < most) {
                break;
            }
            most = now;
        }
        if (most > before) {
            break;
        }
    }
}

PulseChoice PulseSearch::Choose(std::span<const PulseTarget> targets) const {
    constexpr std::ptrdiff_t mostImproved = 3;
    std::vector<Pulses> drafts;
    drafts.reserve(targets.size() * mostGainsTried);
    for (size_t target = 0; target < targets.size(); ++target) {
        Draft(targets[target], target, drafts);
    }
    std::vector<Pulses*> ordered;
    ordered.reserve(drafts.size());
    for (Pulses& pulses : drafts) {
        ordered.push_back(&pulses);
    }
    const auto gainsMore = [](const Pulses* left, const Pulses* right) {
        return GainedBy(*left) > GainedBy(*right);
    };
    const auto improved =
        ordered.begin() + std::min(mostImproved, static_cast<std::ptrdiff_t>(ordered.size()));
    std::partial_sort(ordered.begin(), improved, ordered.end(), gainsMore);
    std::for_each(ordered.begin(), improved, [this](Pulses* pulses) { Improve(*pulses); });
    return ChoiceOf(**std::min_element(ordered.begin(), improved, gainsMore));
}

PulseChoice PulseSearch::ChoiceOf(const Pulses& pulses) {
    PulseChoice choice;
    choice.target = pulses.target;
    choice.gain = pulses.gain;
    choice.gained = GainedBy(pulses);
    auto ordered = pulses.chosen;
    std::sort(ordered.begin(), ordered.end(),
              [](const Pulse& left, const Pulse& right) { return left.place < right.place; });
    PulsePositions positions;
    for (size_t pulse = 0; pulse < ordered.size(); ++pulse) {
        const size_t place = ordered[pulse].place;
        positions[pulse] = static_cast<int>(place < halfPlaces ? place : place - halfPlaces + halfSamples);
        choice.sizes = choice.sizes << 2 | ColumnOf(ordered[pulse].level);
    }
    choice.places = PulsePlaces(positions);
    return choice;
}

} // namespace kestrune
