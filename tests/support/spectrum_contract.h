// What every Spectrum promises. A test file instantiates it for each kind that it knows.
#pragma once

#include "components/spectrum.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <vector>

namespace kestrune {

// Samples of a sine at a place counted in bins of a block of `size`.
inline std::vector<float> SineAtBin(double bin, int size, double amplitude = 1, double phase = 0.3) {
    std::vector<float> samples(static_cast<size_t>(size));
    for (int i = 0; i < size; ++i) {
        samples[static_cast<size_t>(i)] =
            static_cast<float>(amplitude * std::sin(2 * std::numbers::pi * bin * i / size + phase));
    }
    return samples;
}

// Top of the parabola through the highest bin and its neighbours.
inline double TopDb(std::span<const float> levelsDb) {
    const auto highest = std::max_element(levelsDb.begin() + 1, levelsDb.end() - 1);
    const double left = *(highest - 1);
    const double middle = *highest;
    const double right = *(highest + 1);
    const double offset = 0.5 * (left - right) / (left - 2 * middle + right);
    return middle - 0.25 * (left - right) * offset;
}

template <typename Kind>
class SpectrumContract : public testing::Test {
protected:
    Kind spectrum;
    std::vector<float> Levels(const std::vector<float>& samples) {
        const std::span<const float> levelsDb = spectrum.LevelsDb(samples);
        return {levelsDb.begin(), levelsDb.end()};
    }
};

TYPED_TEST_SUITE_P(SpectrumContract);

TYPED_TEST_P(SpectrumContract, StartsAt4096AndTakesPowersOfTwo) {
    EXPECT_EQ(this->spectrum.Size(), 4096);
    for (int size = 64; size <= 16384; size *= 2) {
        EXPECT_EQ(this->spectrum.SetSize(size), Outcome::Ok) << size;
        EXPECT_EQ(this->spectrum.Size(), size);
        EXPECT_EQ(this->Levels(SineAtBin(8, size)).size(), static_cast<size_t>(size) / 2 + 1);
    }
}

TYPED_TEST_P(SpectrumContract, RefusesOtherSizes) {
    this->spectrum.SetSize(256);
    for (const int size : {-64, 0, 1, 32, 63, 65, 100, 3000, 16383, 32768}) {
        EXPECT_EQ(this->spectrum.SetSize(size), Outcome::NotSupported) << size;
        EXPECT_EQ(this->spectrum.Size(), 256);
    }
}

TYPED_TEST_P(SpectrumContract, AFullScaleSineReadsZeroAtEverySizeOnAndBetweenBins) {
    for (int size = 64; size <= 16384; size *= 4) {
        this->spectrum.SetSize(size);
        for (int step = 0; step <= 24; ++step) {
            const double bin = 4.0 + (size / 2.0 - 8.0) * step / 24 + (step % 4) * (step == 24 ? 0 : 0.25);
            EXPECT_NEAR(TopDb(this->Levels(SineAtBin(bin, size))), 0, 0.05) << size << ", bin " << bin;
        }
    }
}

TYPED_TEST_P(SpectrumContract, AQuietSineReadsItsLevel) {
    for (const double db : {-6.0, -20.0, -60.0, -90.0}) {
        const std::vector<float> sine = SineAtBin(300.4, 4096, std::pow(10, db / 20));
        EXPECT_NEAR(TopDb(this->Levels(sine)), db, 0.1);
    }
}

TYPED_TEST_P(SpectrumContract, ASineStaysWithinFourBins) {
    const std::vector<float> levelsDb = this->Levels(SineAtBin(1000.5, 4096));
    for (size_t bin = 0; bin < levelsDb.size(); ++bin) {
        if (std::abs(static_cast<double>(bin) - 1000.5) > 4) {
            EXPECT_LT(levelsDb[bin], -85) << bin;
        }
    }
}

TYPED_TEST_P(SpectrumContract, SilenceAndAConstantReadTheFloor) {
    for (const float value : {0.0F, 1.0F, -0.25F}) {
        for (const float level : this->Levels(std::vector<float>(4096, value))) {
            EXPECT_LE(level, -120) << value;
            EXPECT_GE(level, spectrumFloorDb);
        }
    }
    for (const float level : this->Levels({})) {
        EXPECT_EQ(level, spectrumFloorDb);
    }
}

TYPED_TEST_P(SpectrumContract, OfALongBlockTheEndCountsAndAShortOneIsFollowedBySilence) {
    this->spectrum.SetSize(256);
    std::vector<float> block(1000, 0);
    const std::vector<float> sine = SineAtBin(40, 256);
    block.insert(block.end(), sine.begin(), sine.end());
    EXPECT_NEAR(TopDb(this->Levels(block)), 0, 0.05);

    std::vector<float> half(sine.begin(), sine.begin() + 128);
    std::vector<float> filled = half;
    filled.resize(256, 0);
    const std::vector<float> levelsOfHalf = this->Levels(half);
    const std::vector<float> levelsOfFilled = this->Levels(filled);
    EXPECT_NEAR(TopDb(levelsOfHalf), TopDb(levelsOfFilled), 0.3);
    EXPECT_LT(TopDb(levelsOfHalf), -4);
}

REGISTER_TYPED_TEST_SUITE_P(SpectrumContract, StartsAt4096AndTakesPowersOfTwo, RefusesOtherSizes,
                            AFullScaleSineReadsZeroAtEverySizeOnAndBetweenBins, AQuietSineReadsItsLevel,
                            ASineStaysWithinFourBins, SilenceAndAConstantReadTheFloor,
                            OfALongBlockTheEndCountsAndAShortOneIsFollowedBySilence);

} // namespace kestrune
