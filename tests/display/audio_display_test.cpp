#include "display/audio_display.h"

#include "support/audio_display_contract.h"
#include "support/fake_audio_display.h"
#include "support/fake_clock.h"
#include "support/fake_spectrum.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace kestrune {

namespace {

struct FakeHouse {
    FakeAudioDisplay display;
};
struct RuleHouse {
    FakeSpectrum spectrum;
    FakeClock clock;
    AudioDisplay display{spectrum, clock};
};

constexpr double halfScale = 16384;

// Interleaved sines of one amplitude for each channel, 0 to 32767; `bin` counts turns in 4096 frames.
QList<qint16> Sines(std::initializer_list<double> amplitudes, int frames = 4096, double bin = 100.25) {
    QList<qint16> samples;
    for (int i = 0; i < frames; ++i) {
        for (const double amplitude : amplitudes) {
            samples.append(static_cast<qint16>(
                std::lround(amplitude * std::sin(2 * std::numbers::pi * bin * i / 4096))));
        }
    }
    return samples;
}

class AudioDisplayTest : public testing::Test {
protected:
    AudioDisplayTest() {
        QObject::connect(&display, &AudioDisplay::Drawn, &display, [this] { ++drawn; });
        QObject::connect(&display, &AudioDisplay::Cleared, &display, [this] { ++cleared; });
    }
    void DrawAfter(qint64 ms, const QList<qint16>& samples) {
        clock.monotonicMs += ms;
        display.DrawBlock(samples);
    }
    double HighestBand(int channel) const {
        double highest = 0;
        for (int band = 0; band < display.BandCount(); ++band) {
            highest = std::max(highest, display.Band(channel, band).Level());
        }
        return highest;
    }

    FakeSpectrum spectrum;
    FakeClock clock;
    AudioDisplay display{spectrum, clock};
    int drawn = 0;
    int cleared = 0;
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, AudioDisplayContract, FakeHouse);
INSTANTIATE_TYPED_TEST_SUITE_P(Rule, AudioDisplayContract, RuleHouse);

TEST_F(AudioDisplayTest, EachChannelHasItsOwnBar) {
    DrawAfter(30, Sines({halfScale, halfScale / 10}));
    EXPECT_NEAR(display.Bar(0).Level(), MeterScale(-6.02), 0.001);
    EXPECT_NEAR(display.Bar(1).Level(), MeterScale(-26.02), 0.002);
    EXPECT_EQ(drawn, 1);
}

TEST_F(AudioDisplayTest, OneChannelTakesEverySample) {
    display.SetProperty(DisplayChannels, 1);
    DrawAfter(30, {0, 0, 0, -16384, 0});
    EXPECT_NEAR(display.Bar(0).Level(), MeterScale(-6.02), 0.001);
    EXPECT_EQ(display.Bar(1).Level(), 0);
}

TEST_F(AudioDisplayTest, ASampleWithoutItsPartnerIsDropped) {
    DrawAfter(30, {0, 0, 0, 0, 32767});
    EXPECT_EQ(display.Bar(0).Level(), 0);
    EXPECT_EQ(display.Bar(1).Level(), 0);
}

TEST_F(AudioDisplayTest, TheLeastSampleCountsAsFullScale) {
    DrawAfter(30, QList<qint16>(2048, -32768));
    EXPECT_EQ(display.Bar(0).Level(), 1);
    EXPECT_TRUE(display.IsOverloaded(0));
}

TEST_F(AudioDisplayTest, MetersLookAtTheEndOfALongBlock) {
    display.SetProperty(DisplayFftSize, 16384);
    display.SetProperty(DisplayChannels, 1);
    QList<qint16> block(16384, 0);
    block[16384 - 2049] = 32767;
    DrawAfter(30, block);
    EXPECT_EQ(display.Bar(0).Level(), 0);
    block[16384 - 2048] = 32767;
    DrawAfter(30, block);
    EXPECT_NEAR(display.Bar(0).Level(), 1, 0.001);
}

TEST_F(AudioDisplayTest, OfMoreFramesThanTheFftSizeTheLatestCount) {
    display.SetProperty(DisplayFftSize, 64);
    QList<qint16> block(400, 32767);
    block.append(QList<qint16>(128, 0));
    DrawAfter(30, block);
    EXPECT_EQ(display.Bar(0).Level(), 0);
    block.append(QList<qint16>(126, 0));
    block.append({0, 16384});
    DrawAfter(30, block);
    EXPECT_EQ(display.Bar(0).Level(), 0);
    EXPECT_NEAR(display.Bar(1).Level(), MeterScale(-6.02), 0.001);
}

TEST_F(AudioDisplayTest, BarsFallByTheClockAndNotByTheCountOfBlocks) {
    const QList<qint16> silence(4096, 0);
    DrawAfter(30, QList<qint16>(4096, 32767));
    DrawAfter(0, silence);
    DrawAfter(0, silence);
    EXPECT_NEAR(display.Bar(0).Level(), 1, 0.001);
    DrawAfter(300, silence);
    EXPECT_NEAR(display.Bar(0).Level(), 1 - 2.5 * 0.3 * 0.3 / 2, 0.001);
    DrawAfter(700, silence);
    EXPECT_EQ(display.Bar(0).Level(), 0);
    EXPECT_GT(display.Bar(0).Peak(), 0.9);
}

TEST_F(AudioDisplayTest, AClockThatStandsOrGoesBackDoesNoHarm) {
    DrawAfter(30, QList<qint16>(4096, 32767));
    DrawAfter(-500, QList<qint16>(4096, 0));
    EXPECT_NEAR(display.Bar(0).Level(), 1, 0.001);
}

TEST_F(AudioDisplayTest, AnOverloadIsShownForASecond) {
    DrawAfter(30, Sines({32767, halfScale}));
    EXPECT_TRUE(display.IsOverloaded(0));
    EXPECT_FALSE(display.IsOverloaded(1));
    DrawAfter(900, Sines({100, 100}));
    EXPECT_TRUE(display.IsOverloaded(0));
    DrawAfter(200, Sines({100, 100}));
    EXPECT_FALSE(display.IsOverloaded(0));
}

TEST_F(AudioDisplayTest, TheNeedleComesToTheLevelOfASine) {
    display.SetProperty(DisplayKind, AnalogMeters);
    const double amplitude = 32768 * std::pow(10, -9.0 / 20);
    for (int i = 0; i < 40; ++i) {
        DrawAfter(30, Sines({amplitude, amplitude / 2}));
    }
    EXPECT_NEAR(display.NeedleDeflection(0), NeedleMark(0), 0.01);
    EXPECT_NEAR(display.NeedleDeflection(1), NeedleMark(-6.02), 0.01);
    EXPECT_EQ(display.Bar(0).Level(), 0);
}

TEST_F(AudioDisplayTest, ASpectrumShowsEachChannelInHalfTheBands) {
    display.SetProperty(DisplayKind, FftGlass);
    EXPECT_EQ(display.BandCount(), 18);
    DrawAfter(80, Sines({32767, 0}));
    const int band = display.Bands().BandOf(100.25 / 2048);
    EXPECT_NEAR(display.Band(0, band).Level(), 1, 0.01);
    EXPECT_EQ(HighestBand(1), 0);

    display.SetProperty(DisplayChannels, 1);
    EXPECT_EQ(display.BandCount(), 36);
    EXPECT_EQ(HighestBand(0), 0);
}

TEST_F(AudioDisplayTest, BandsFallAndTheirPeaksStayLonger) {
    display.SetProperty(DisplayKind, FftFire);
    DrawAfter(80, Sines({32767, 32767}));
    const int band = display.Bands().BandOf(100.25 / 2048);
    DrawAfter(400, QList<qint16>(8192, 0));
    EXPECT_LT(display.Band(0, band).Level(), 0.85);
    EXPECT_GT(display.Band(0, band).Peak(), 0.98);
    DrawAfter(2000, QList<qint16>(8192, 0));
    EXPECT_EQ(display.Band(0, band).Peak(), 0);
}

TEST_F(AudioDisplayTest, AShortBlockAtTheStartOfARunIsShown) {
    display.SetProperty(DisplayKind, FftKryptonite);
    DrawAfter(80, Sines({32767, 32767}, 3000));
    EXPECT_GT(HighestBand(0), 0.8);
}

TEST_F(AudioDisplayTest, TheFftSizeReachesTheSpectrum) {
    for (const qint32 size : {64, 256, 1024, 4096, 16384}) {
        display.SetProperty(DisplayFftSize, size);
        EXPECT_EQ(spectrum.Size(), size);
    }
}

TEST_F(AudioDisplayTest, MetersAskForNoSpectrum) {
    for (const qint32 type : {LevelBars, AnalogMeters}) {
        display.SetProperty(DisplayKind, type);
        DrawAfter(30, Sines({1000, 1000}));
    }
    EXPECT_EQ(spectrum.analysed, 0);
}

TEST_F(AudioDisplayTest, AnEmptyBlockClearsAtOnceInEveryType) {
    for (qint32 type = 0; type < displayTypeCount; ++type) {
        display.SetProperty(DisplayKind, type);
        cleared = 0;
        for (int i = 0; i < 10; ++i) {
            DrawAfter(30, Sines({32767, 32767}));
        }
        EXPECT_GT(display.Bar(0).Level() + display.NeedleDeflection(0) + HighestBand(0), 0.5) << type;
        display.DrawBlock({});
        EXPECT_EQ(cleared, 1) << type;
        EXPECT_EQ(display.Bar(0).Peak() + display.NeedleDeflection(0) + HighestBand(0), 0) << type;
        EXPECT_FALSE(display.IsOverloaded(0));
        EXPECT_FALSE(display.IsFalling());
    }
}

TEST_F(AudioDisplayTest, AnotherTypeStartsEmpty) {
    DrawAfter(30, Sines({32767, 32767}));
    display.SetProperty(DisplayKind, FftGlass);
    display.SetProperty(DisplayKind, LevelBars);
    EXPECT_EQ(display.Bar(0).Peak(), 0);
}

TEST_F(AudioDisplayTest, WithoutBlocksItStandsStill) {
    DrawAfter(30, Sines({32767, 32767}));
    clock.monotonicMs += 5000;
    display.Advance();
    EXPECT_EQ(drawn, 1);
    EXPECT_GT(display.Bar(0).Level(), 0.99);
}

TEST_F(AudioDisplayTest, LeftToFallItComesToRestInEveryType) {
    for (qint32 type = 0; type < displayTypeCount; ++type) {
        display.SetProperty(DisplayKind, type);
        for (int i = 0; i < 10; ++i) {
            DrawAfter(30, Sines({32767, 32767}));
        }
        display.FallToRest();
        EXPECT_TRUE(display.IsFalling()) << type;
        int steps = 0;
        double last = 1.05;
        while (display.IsFalling() && steps < 1000) {
            clock.monotonicMs += 30;
            display.Advance();
            ++steps;
            const double now = display.Bar(0).Level() + display.NeedleDeflection(0) + HighestBand(0);
            EXPECT_LE(now, last) << type;
            EXPECT_GT(now, last - 0.2) << "a jump in type " << type;
            last = now;
        }
        EXPECT_GT(steps, 10) << type;
        EXPECT_LT(steps, 150) << type;
        display.FallToRest();
        EXPECT_FALSE(display.IsFalling()) << type;
    }
}

TEST_F(AudioDisplayTest, ABlockEndsTheFall) {
    DrawAfter(30, Sines({32767, 32767}));
    display.FallToRest();
    DrawAfter(30, Sines({halfScale, halfScale}));
    EXPECT_FALSE(display.IsFalling());
}

TEST_F(AudioDisplayTest, TheRoomForBandsIsKeptInRange) {
    display.SetProperty(DisplayChannels, 1);
    display.SetBandCount(0);
    EXPECT_EQ(display.BandCount(), 2);
    display.SetBandCount(100000);
    EXPECT_EQ(display.BandCount(), 512);
    display.SetProperty(DisplayChannels, 2);
    display.SetBandCount(41);
    EXPECT_EQ(display.BandCount(), 20);
}

} // namespace kestrune
