#include "backends/writing/rate_converter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace kestrune {

namespace {

constexpr double twoPi = 6.283185307179586;
// The filter's own length, in frames, at either end of a stretch of sound.
constexpr size_t settling = 2000;

std::vector<float> Tone(double toneHz, int rateHz, size_t frames) {
    std::vector<float> samples(frames);
    for (size_t frame = 0; frame < frames; ++frame) {
        samples[frame] = static_cast<float>(std::sin(twoPi * toneHz * static_cast<double>(frame) / rateHz));
    }
    return samples;
}

std::vector<float> Converted(const std::vector<float>& samples, int fromHz, int toHz, int channels,
                             qint64 chunkFrames) {
    const auto converter = RateConverter::Make(fromHz, toHz, channels);
    std::vector<float> all;
    std::vector<float> part;
    const qint64 frames = static_cast<qint64>(samples.size()) / channels;
    for (qint64 done = 0; done < frames; done += chunkFrames) {
        EXPECT_TRUE(
            converter->Convert(samples.data() + done * channels, std::min(chunkFrames, frames - done), part));
        all.insert(all.end(), part.begin(), part.end());
    }
    EXPECT_TRUE(converter->Finish(part));
    all.insert(all.end(), part.begin(), part.end());
    return all;
}

double Decibel(double ratio) {
    return 20.0 * std::log10(std::max(ratio, 1e-12));
}

// A tone as it was found in a run of samples: the parts in step and a quarter turn off, and the root mean
// square of all that is not the tone, as a share of that of a full-scale tone.
struct Found {
    double inStep = 0;
    double quarterOff = 0;
    double rest = 0;
};

Found FindTone(const std::vector<float>& samples, double toneHz, int rateHz) {
    double ss = 0;
    double cc = 0;
    double sc = 0;
    double xs = 0;
    double xc = 0;
    for (size_t at = settling; at + settling < samples.size(); ++at) {
        const double angle = twoPi * toneHz * static_cast<double>(at) / rateHz;
        const double s = std::sin(angle);
        const double c = std::cos(angle);
        ss += s * s;
        cc += c * c;
        sc += s * c;
        xs += samples[at] * s;
        xc += samples[at] * c;
    }
    const double det = ss * cc - sc * sc;
    const Found tone{(xs * cc - xc * sc) / det, (xc * ss - xs * sc) / det, 0};
    double power = 0;
    double count = 0;
    for (size_t at = settling; at + settling < samples.size(); ++at) {
        const double angle = twoPi * toneHz * static_cast<double>(at) / rateHz;
        const double off = samples[at] - tone.inStep * std::sin(angle) - tone.quarterOff * std::cos(angle);
        power += off * off;
        count += 1;
    }
    return {tone.inStep, tone.quarterOff, std::sqrt(2 * power / count)};
}

double Level(const std::vector<float>& samples) {
    double power = 0;
    double count = 0;
    for (size_t at = settling; at + settling < samples.size(); ++at) {
        power += static_cast<double>(samples[at]) * samples[at];
        count += 1;
    }
    return std::sqrt(2 * power / count);
}

struct Ratio {
    int fromHz;
    int toHz;
};

class RateConverterRatio : public testing::TestWithParam<Ratio> {
protected:
    const int from_ = GetParam().fromHz;
    const int to_ = GetParam().toHz;
    const double half_ = std::min(from_, to_) / 2.0;
    const size_t frames_ = static_cast<size_t>(from_) * 2;

    std::vector<float> ConvertedTone(double toneHz) {
        return Converted(Tone(toneHz, from_, frames_), from_, to_, 1, 4096);
    }
};

class RateConverterDown : public RateConverterRatio {};

std::string RatioName(const testing::TestParamInfo<Ratio>& tested) {
    return std::to_string(tested.param.fromHz) + "To" + std::to_string(tested.param.toHz);
}

constexpr Ratio downward[] = {{48000, 44100}, {44100, 8000}, {96000, 44100}, {24000, 22050}};
constexpr Ratio upward[] = {{44100, 48000}, {8000, 44100}, {22050, 24000}};

} // namespace

TEST_P(RateConverterRatio, TonesPassInTimeAndWithoutImages) {
    for (double share = 0.013; share < 0.9; share += 0.08) {
        const double toneHz = share * half_;
        const Found tone = FindTone(ConvertedTone(toneHz), toneHz, to_);
        EXPECT_LT(Decibel(tone.rest), -100) << toneHz;
        EXPECT_NEAR(Decibel(tone.inStep), 0, 0.01) << toneHz;
        // A delay of a thousandth of a frame turns the tone by this much at most.
        EXPECT_LT(std::abs(tone.quarterOff), twoPi * 0.001 * share / 2) << toneHz;
    }
}

TEST_P(RateConverterDown, WhatTheNewRateCannotHoldIsSilent) {
    for (double share = 1.002; share * half_ < from_ / 2.0; share += 0.033) {
        EXPECT_LT(Decibel(Level(ConvertedTone(share * half_))), -100) << share * half_;
    }
}

TEST_P(RateConverterRatio, LengthIsThatOfTheInput) {
    for (const size_t frames : {0U, 1U, 2U, 7U, 441U, 1000U, 4097U, 100003U}) {
        const std::vector<float> out = Converted(std::vector<float>(frames, 0.5F), from_, to_, 1, 999);
        const double exact = static_cast<double>(frames) * to_ / from_;
        EXPECT_EQ(out.size(), static_cast<size_t>(std::floor(exact + 0.5))) << frames;
    }
}

TEST_P(RateConverterRatio, CutsOfTheInputDoNotShow) {
    std::vector<float> samples = Tone(half_ / 3, from_, 20001);
    samples.resize(20000);
    const std::vector<float> whole = Converted(samples, from_, to_, 2, 10000);
    EXPECT_EQ(Converted(samples, from_, to_, 2, 1), whole);
    EXPECT_EQ(Converted(samples, from_, to_, 2, 333), whole);
}

INSTANTIATE_TEST_SUITE_P(Down, RateConverterRatio, testing::ValuesIn(downward), RatioName);
INSTANTIATE_TEST_SUITE_P(Up, RateConverterRatio, testing::ValuesIn(upward), RatioName);
INSTANTIATE_TEST_SUITE_P(Down, RateConverterDown, testing::ValuesIn(downward), RatioName);

TEST(RateConverter, TakesRatiosFarFromOne) {
    EXPECT_EQ(Converted(std::vector<float>(100, 0.5F), 100, 192000, 1, 100).size(), 192000U);
    EXPECT_EQ(Converted(std::vector<float>(1000000, 0.5F), 1000000, 8000, 1, 4096).size(), 8000U);
    EXPECT_EQ(Converted(std::vector<float>(3, 0.5F), 1, 44100, 1, 3).size(), 132300U);
}

TEST(RateConverter, KeepsTheChannelsApart) {
    const std::vector<float> left = Tone(997, 48000, 48000);
    std::vector<float> both;
    for (const float sample : left) {
        both.push_back(sample);
        both.push_back(0);
    }
    const std::vector<float> out = Converted(both, 48000, 44100, 2, 4096);
    const std::vector<float> alone = Converted(left, 48000, 44100, 1, 4096);
    ASSERT_EQ(out.size(), 2 * alone.size());
    for (size_t frame = 0; frame < alone.size(); ++frame) {
        ASSERT_FLOAT_EQ(out[2 * frame], alone[frame]);
        ASSERT_EQ(out[2 * frame + 1], 0);
    }
}

} // namespace kestrune
