#include "backends/speech/signals.h"
#include "backends/speech/truespeech_pitch.h"
#include "backends/speech/truespeech_weight.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace kestrune {
namespace {

SubframeValues Convolved(const SubframeValues& response, const TrueSpeechSamples& excitation) {
    SubframeValues sound = {};
    for (size_t from = 0; from < sound.size(); ++from) {
        for (size_t to = from; to < sound.size(); ++to) {
            sound[to] += static_cast<float>(excitation[from]) * response[to - from];
        }
    }
    return sound;
}

float Power(const SubframeValues& values) {
    float power = 0;
    for (const float value : values) {
        power += value * value;
    }
    return power;
}

SubframeValues Minus(SubframeValues left, const SubframeValues& right) {
    for (size_t at = 0; at < left.size(); ++at) {
        left[at] -= right[at];
    }
    return left;
}

SubframeValues SomeResponse() {
    return WeightedResponse({1.2F, -0.5F, 0.1F, 0, 0, 0, 0, 0}, -0.2F);
}

TEST(TrueSpeechPulses, FindsPulsesThatWereThere) {
    PulseSearch search;
    search.SetResponse(SomeResponse());
    std::mt19937 random(5);
    int found = 0;
    constexpr int rounds = 200;
    for (int round = 0; round < rounds; ++round) {
        TrueSpeechSubframe there;
        there.pulseGain = static_cast<int>(random() % 16);
        there.pulseSizes = static_cast<int>(random() % 0x4000);
        there.pulsePlaces = (random() % 4060) << 15 | random() % 27405;
        const SubframeValues wanted = Convolved(SomeResponse(), TrueSpeechSynthesis::Pulses(there));
        const PulseTarget target = {search.Sums(wanted), 0};
        const PulseChoice choice = search.Choose(std::span(&target, 1));
        TrueSpeechSubframe chosen;
        chosen.pulseGain = choice.gain;
        chosen.pulseSizes = choice.sizes;
        chosen.pulsePlaces = choice.places;
        const float left =
            Power(Minus(wanted, Convolved(SomeResponse(), TrueSpeechSynthesis::Pulses(chosen))));
        // It tells truly by how much the rest has fallen.
        EXPECT_NEAR(Power(wanted) - left, choice.gained, 0.001F * Power(wanted));
        EXPECT_LT(left, 0.5F * Power(wanted));
        found += left < 0.05F * Power(wanted) ? 1 : 0;
    }
    // A search that looks everywhere would find all; this one gives up few for its speed.
    EXPECT_GT(found, rounds * 3 / 5);
}

TEST(TrueSpeechPulses, SilenceGetsTheSmallest) {
    PulseSearch search;
    search.SetResponse(SomeResponse());
    const PulseTarget nothing;
    EXPECT_EQ(search.Choose(std::span(&nothing, 1)).gain, 0);
}

TEST(TrueSpeechPulses, TheTargetThatIsMetBestIsTold) {
    PulseSearch search;
    search.SetResponse(SomeResponse());
    TrueSpeechSubframe there;
    there.pulseGain = 8;
    const SubframeValues wanted = Convolved(SomeResponse(), TrueSpeechSynthesis::Pulses(there));
    std::array<PulseTarget, 3> targets;
    targets[1].sums = search.Sums(wanted);
    EXPECT_EQ(search.Choose(targets).target, 1U);
    targets[2].gained = 2 * Power(wanted);
    EXPECT_EQ(search.Choose(targets).target, 2U);
    // A target is not changed by the ones beside it.
    EXPECT_EQ(search.Choose(std::span(targets).subspan(1, 1)).places, there.pulsePlaces);
}

TEST(TrueSpeechPulses, WhatAnExcitationGivesIsTakenOff) {
    PulseSearch search;
    search.SetResponse(SomeResponse());
    TrueSpeechSamples excitation;
    std::mt19937 random(6);
    std::generate(excitation.begin(), excitation.end(), [&] { return static_cast<qint16>(random() % 1000); });
    const auto left = search.Without(search.Sums(Convolved(SomeResponse(), excitation)), excitation);
    const auto most = std::max_element(left.begin(), left.end());
    EXPECT_LT(*most, 10);
    EXPECT_GT(*std::min_element(left.begin(), left.end()), -10);
}

TEST(TrueSpeechPitch, TellsTrulyWhatEachWayGains) {
    std::mt19937 random(9);
    for (const int lag : {0, 7, 30, 41, 42, 80, trueSpeechLags - 1}) {
        TrueSpeechSynthesis synthesis;
        TrueSpeechBlock block;
        synthesis.StartBlock(block);
        for (int subframe = 0; subframe < trueSpeechSubframes; ++subframe) {
            TrueSpeechSamples pulses;
            for (qint16& pulse : pulses) {
                pulse = static_cast<qint16>(random() % 4000 - 2000);
            }
            synthesis.Decode(subframe, {}, pulses);
        }
        SubframeValues wanted;
        for (float& value : wanted) {
            value = static_cast<float>(random() % 20000) - 10000;
        }
        PitchSearch search;
        search.Prepare(synthesis.Excitation(), SomeResponse(), wanted, lag, lag);
        for (const PitchChoice& choice : search.Best(lag, 126)) {
            const auto sound = Convolved(SomeResponse(), synthesis.Repeated(lag, choice.pitch).samples);
            const float gained = Power(wanted) - Power(Minus(wanted, sound));
            EXPECT_NEAR(gained, choice.gained, 0.002F * Power(wanted)) << lag << " " << choice.pitch;
        }
    }
}

TEST(TrueSpeechPitch, FindsThePeriod) {
    TrueSpeechSynthesis synthesis;
    synthesis.StartBlock({});
    for (int subframe = 0; subframe < trueSpeechSubframes; ++subframe) {
        TrueSpeechSamples pulses = {};
        for (int at = subframe * trueSpeechSubframeSamples; at < (subframe + 1) * trueSpeechSubframeSamples;
             ++at) {
            pulses[static_cast<size_t>(at % trueSpeechSubframeSamples)] = at % 73 == 0 ? 2000 : 0;
        }
        synthesis.Decode(subframe, {}, pulses);
    }
    TrueSpeechSamples next = {};
    next[292 - 240] = 2000;
    PitchSearch search;
    search.Prepare(synthesis.Excitation(), SomeResponse(), Convolved(SomeResponse(), next), 0,
                   trueSpeechLags - 1);
    const auto gained = search.GainedByLag();
    const auto best = std::max_element(gained.begin(), gained.end()) - gained.begin();
    // Of the two taps one is on the sample before.
    EXPECT_NEAR(static_cast<double>(best) + trueSpeechShortestLag, 73, 1);
}

} // namespace
} // namespace kestrune
