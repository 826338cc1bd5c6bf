#include "display/audio_display_ballistics.h"
#include "display/audio_display_bands.h"

#include <cmath>
#include <gtest/gtest.h>

namespace kestrune {

namespace {

// Plain parabola with its top at a place in bins.
std::vector<float> Hill(double top, double topDb, int bins) {
    std::vector<float> levelsDb;
    for (int bin = 0; bin < bins; ++bin) {
        levelsDb.push_back(static_cast<float>(topDb - 6 * (bin - top) * (bin - top)));
    }
    return levelsDb;
}

} // namespace

TEST(MeterScaleTest, RunsFromSixtyDbBelowFullScaleWithoutAStep) {
    EXPECT_EQ(MeterScale(-160), 0);
    EXPECT_EQ(MeterScale(-60), 0);
    EXPECT_NEAR(MeterScale(-9), 0.70, 1e-9);
    EXPECT_EQ(MeterScale(0), 1);
    EXPECT_EQ(MeterScale(3), 1);
    for (double db = -60; db < 0; db += 0.1) {
        EXPECT_GT(MeterScale(db + 0.1), MeterScale(db));
        EXPECT_LT(MeterScale(db + 0.1) - MeterScale(db), 0.004);
    }
}

TEST(MeterScaleTest, TheSpectrumIsEvenOverSeventyTwoDb) {
    EXPECT_EQ(SpectrumScale(-100), 0);
    EXPECT_NEAR(SpectrumScale(-36), 0.5, 1e-9);
    EXPECT_EQ(SpectrumScale(0), 1);
    EXPECT_EQ(SpectrumScale(1), 1);
}

TEST(MeterScaleTest, SilenceHasALevel) {
    EXPECT_EQ(DbOfLevel(0), -160);
    EXPECT_NEAR(DbOfLevel(0.5), -6.02, 0.01);
}

TEST(MeterScaleTest, TheNeedleScaleIsEvenInVolts) {
    EXPECT_NEAR(NeedleMark(0), 0.70, 1e-9);
    EXPECT_NEAR(NeedleMark(-20), 0.07, 1e-9);
    EXPECT_NEAR(NeedleMark(3), 0.989, 0.001);
    EXPECT_EQ(NeedleScale(0), 0);
    EXPECT_EQ(NeedleScale(1), needleStop);
}

TEST(FallingLevelTest, RisesAtOnceAndFallsFasterAndFaster) {
    FallingLevel level;
    level.Move(0.9, 30, 1000);
    EXPECT_EQ(level.Level(), 0.9);
    double lastStep = 0;
    double last = 0.9;
    while (level.Level() > 0) {
        level.Move(0, 30, 1000);
        const double step = last - level.Level();
        if (level.Level() > 0) {
            EXPECT_GT(step, lastStep);
        }
        lastStep = step;
        last = level.Level();
    }
    EXPECT_EQ(level.Peak(), 0.9);
}

TEST(FallingLevelTest, FallsTheSameWayInStepsOfAnySize) {
    FallingLevel small;
    FallingLevel large;
    small.Move(1, 0, 300);
    large.Move(1, 0, 300);
    for (int i = 0; i < 600; ++i) {
        small.Move(0, 1, 300);
    }
    for (int i = 0; i < 4; ++i) {
        large.Move(0, 150, 300);
    }
    EXPECT_NEAR(small.Level(), large.Level(), 1e-9);
    EXPECT_NEAR(small.Peak(), large.Peak(), 1e-9);
    EXPECT_NEAR(small.Peak(), 1 - 1.2 * 0.3 * 0.3 / 2, 1e-9);
}

TEST(FallingLevelTest, StopsAtTheLevelOfTheSound) {
    FallingLevel level;
    level.Move(1, 30, 100);
    for (int i = 0; i < 100; ++i) {
        level.Move(0.4, 30, 100);
        EXPECT_GE(level.Level(), 0.4);
        EXPECT_GE(level.Peak(), level.Level());
    }
    EXPECT_EQ(level.Level(), 0.4);
    EXPECT_EQ(level.Peak(), 0.4);
}

TEST(FallingLevelTest, ThePeakStaysForItsTime) {
    FallingLevel level;
    level.Move(0.8, 30, 1000);
    for (int ms = 0; ms < 1000; ms += 50) {
        level.Move(0.1, 50, 1000);
        EXPECT_EQ(level.Peak(), 0.8);
    }
    level.Move(0.1, 50, 1000);
    EXPECT_LT(level.Peak(), 0.8);
    level.Move(0.81, 50, 1000);
    EXPECT_EQ(level.Peak(), 0.81);
}

TEST(NeedleTest, ReachesAStepAsAVolumeMeterDoes) {
    Needle needle;
    double highest = 0;
    int reachedMs = 0;
    for (int ms = 1; ms <= 2000; ++ms) {
        needle.Move(0.7, 1);
        if (reachedMs == 0 && needle.Deflection() >= 0.99 * 0.7) {
            reachedMs = ms;
        }
        highest = std::max(highest, needle.Deflection());
    }
    EXPECT_NEAR(reachedMs, 300, 15);
    EXPECT_GE(highest, 0.7 * 1.01);
    EXPECT_LE(highest, 0.7 * 1.015);
    EXPECT_NEAR(needle.Deflection(), 0.7, 1e-6);
}

TEST(NeedleTest, MovesTheSameWayInStepsOfAnySize) {
    Needle small;
    Needle large;
    for (int i = 0; i < 200; ++i) {
        small.Move(0.6, 1);
    }
    large.Move(0.6, 120);
    large.Move(0.6, 80);
    EXPECT_NEAR(small.Deflection(), large.Deflection(), 1e-9);
}

TEST(NeedleTest, IsHeldByItsStops) {
    Needle needle;
    for (int i = 0; i < 100; ++i) {
        needle.Move(needleStop, 20);
        EXPECT_LE(needle.Deflection(), needleStop);
    }
    for (int i = 0; i < 200; ++i) {
        needle.Move(0, 20);
        EXPECT_GE(needle.Deflection(), 0);
    }
    EXPECT_TRUE(needle.IsAtRest());
}

TEST(DisplayBandsTest, CoverTheAxisInEqualPitch) {
    DisplayBands bands;
    bands.Lay(30, 4096);
    EXPECT_EQ(bands.Count(), 30);
    EXPECT_EQ(bands.BandOf(lowestBand * 0.99), -1);
    EXPECT_EQ(bands.BandOf(lowestBand * 1.01), 0);
    EXPECT_EQ(bands.BandOf(std::sqrt(lowestBand * highestBand) * 1.01), 15);
    EXPECT_EQ(bands.BandOf(highestBand * 0.99), 29);
    EXPECT_EQ(bands.BandOf(highestBand * 1.01), -1);
}

TEST(DisplayBandsTest, ATopBetweenBinsCountsInItsBandAlone) {
    DisplayBands bands;
    bands.Lay(30, 4096);
    for (double top = 20; top < 1700; top += 13.37) {
        const std::vector<float> levelsDb = Hill(top, -12, 2049);
        const int band = bands.BandOf(top / 2048);
        ASSERT_GE(band, 0);
        EXPECT_NEAR(bands.LevelDb(levelsDb, band), -12, 0.001) << top;
        for (const int other : {band - 1, band + 1}) {
            if (other >= 0 && other < bands.Count()) {
                EXPECT_LT(bands.LevelDb(levelsDb, other), -12 + 0.001) << top;
            }
        }
    }
}

TEST(DisplayBandsTest, ABandNarrowerThanABinTakesItsPartOfTheCurve) {
    DisplayBands bands;
    bands.Lay(64, 64);
    const std::vector<float> levelsDb = Hill(2.3, 0, 33);
    const int band = bands.BandOf(2.3 / 32);
    EXPECT_NEAR(bands.LevelDb(levelsDb, band), 0, 0.001);
    double last = bands.LevelDb(levelsDb, band);
    for (int lower = band - 1; lower > band - 5; --lower) {
        const double level = bands.LevelDb(levelsDb, lower);
        EXPECT_LT(level, last + 0.001);
        last = level;
    }
}

TEST(DisplayBandsTest, EveryBandHasALevelAtEverySize) {
    for (const int size : {64, 256, 1024, 4096, 16384}) {
        for (const int count : {1, 2, 36, 512}) {
            DisplayBands bands;
            bands.Lay(count, size);
            const std::vector<float> flat(static_cast<size_t>(size) / 2 + 1, -30);
            for (int band = 0; band < count; ++band) {
                EXPECT_NEAR(bands.LevelDb(flat, band), -30, 1e-6);
            }
        }
    }
}

} // namespace kestrune
