#include "backends/spectrum/tx_spectrum.h"
#include "display/audio_display.h"
#include "support/fake_clock.h"
#include "support/fake_spectrum.h"
#include "support/spectrum_contract.h"

#include <random>

namespace kestrune {

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, SpectrumContract, FakeSpectrum);
INSTANTIATE_TYPED_TEST_SUITE_P(Backend, SpectrumContract, TxSpectrum);

TEST(TxSpectrum, AgreesWithAPlainTransformOnNoise) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> sample(-1, 1);
    for (const int size : {64, 1024, 16384}) {
        std::vector<float> noise(static_cast<size_t>(size));
        for (float& value : noise) {
            value = sample(random);
        }
        TxSpectrum spectrum;
        FakeSpectrum plain;
        spectrum.SetSize(size);
        plain.SetSize(size);
        const std::span<const float> levelsDb = spectrum.LevelsDb(noise);
        const std::span<const float> expectedDb = plain.LevelsDb(noise);
        for (size_t bin = 0; bin < levelsDb.size(); ++bin) {
            // Far below the noise single precision shows.
            if (expectedDb[bin] > -80) {
                EXPECT_NEAR(levelsDb[bin], expectedDb[bin], 0.05) << size << ", bin " << bin;
            }
            // Of what is well above, the decibels themselves are exact.
            if (expectedDb[bin] > -45) {
                EXPECT_NEAR(levelsDb[bin], expectedDb[bin], 0.001) << size << ", bin " << bin;
            }
        }
    }
}

// The display from samples to bands, over the spectrum that the program uses.
class CalibrationTest : public testing::TestWithParam<int> {
protected:
    static constexpr qint16 fullScaleSample = 32767;

    QList<qint16> Sine(double bin) const {
        QList<qint16> samples;
        for (const float value : SineAtBin(bin, GetParam(), fullScaleSample)) {
            samples.append(static_cast<qint16>(std::lround(value)));
        }
        return samples;
    }
    double SpectrumDbOf(double place) const { return (place - 1) / (SpectrumScale(0) - SpectrumScale(-1)); }

    TxSpectrum spectrum;
    FakeClock clock;
};

TEST_P(CalibrationTest, AFullScaleSineShowsZeroInItsBand) {
    const int size = GetParam();
    for (int step = 0; step <= 60; ++step) {
        const double lowest = std::max(4.0, lowestBand * size / 2 * 1.01);
        const double highest = std::min(size / 2.0 - 4, highestBand * size / 2 * 0.99);
        const double bin = lowest * std::pow(highest / lowest, step / 60.0);
        AudioDisplay display(spectrum, clock);
        display.SetProperty(DisplayKind, FftGlass);
        display.SetProperty(DisplayChannels, 1);
        display.SetProperty(DisplayFftSize, size);
        display.DrawBlock(Sine(bin));
        const int band = display.Bands().BandOf(bin / (size / 2.0));
        ASSERT_GE(band, 0);
        EXPECT_NEAR(SpectrumDbOf(display.Band(0, band).Level()), 0, 0.5) << "bin " << bin;
        // No band shows more than the sine has.
        for (int other = 0; other < display.BandCount(); ++other) {
            EXPECT_LE(display.Band(0, other).Level(), display.Band(0, band).Level() + 0.001);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EverySize, CalibrationTest, testing::Values(64, 256, 1024, 4096, 16384));

} // namespace kestrune
