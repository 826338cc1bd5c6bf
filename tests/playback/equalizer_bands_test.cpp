// The equalizer control by its numbers, and how gains are told and stepped.
#include "playback/equalizer_bands.h"

#include "display/display_colours.h"
#include "support/rule_support.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace kestrune {
namespace {

using rules::Utf8;
using testing::ElementsAre;

class EqualizerBandsTest : public testing::Test {
protected:
    EqualizerBandsTest() {
        QObject::connect(&bands, &KSTEqualizer21::Changed, &bands, [this] { ++changes; });
    }
    EqualizerBands bands;
    int changes = 0;
};

TEST_F(EqualizerBandsTest, StartsFlatWithARangeOfThirty) {
    EXPECT_EQ(bands.Gains(), EqualizerGains{});
    EXPECT_EQ(bands.Property(38), 30);
    EXPECT_EQ(bands.LargestGainDb(), 15);
}

TEST_F(EqualizerBandsTest, HasItsTwelveGainsUnderSeventeenToTwentyEight) {
    for (int number = 17; number <= 28; ++number) {
        EXPECT_EQ(bands.SetProperty(number, static_cast<float>(number - 20)), Outcome::Ok);
    }
    EXPECT_THAT(bands.Gains(), ElementsAre(-3, -2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8));
    EXPECT_EQ(bands.Property(17), -3);
    EXPECT_EQ(bands.Property(28), 8);
}

TEST_F(EqualizerBandsTest, RefusesOtherNumbers) {
    for (const int number : {-1, 0, 16, 29, 37, 39}) {
        EXPECT_EQ(bands.SetProperty(number, 3), Outcome::NotSupported) << number;
        EXPECT_EQ(bands.Property(number), 0) << number;
    }
    EXPECT_EQ(changes, 0);
}

TEST_F(EqualizerBandsTest, TellsEachChangeOnce) {
    bands.SetProperty(20, 4);
    EXPECT_EQ(changes, 1);
    bands.SetProperty(20, 4);
    EXPECT_EQ(changes, 1) << "nothing has changed";
    bands.SetGains({1, 2, 3});
    EXPECT_EQ(changes, 2);
    bands.SetGains({1, 2, 3});
    EXPECT_EQ(changes, 2);
    bands.SetProperty(38, 20);
    EXPECT_EQ(changes, 3);
    bands.SetProperty(38, 20);
    EXPECT_EQ(changes, 3);
}

TEST_F(EqualizerBandsTest, CutsGainsToHalfTheRange) {
    bands.SetGains({100, -100, 15, -15, 14.5F});
    EXPECT_THAT(bands.Gains(), ElementsAre(15, -15, 15, -15, 14.5F, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_EQ(bands.SetProperty(38, 12), Outcome::Ok);
    EXPECT_THAT(bands.Gains(), ElementsAre(6, -6, 6, -6, 6, 0, 0, 0, 0, 0, 0, 0));
    bands.SetProperty(17, 7);
    EXPECT_EQ(bands.Property(17), 6);
}

TEST_F(EqualizerBandsTest, CutsTheRangeToWhatThePlayerCanDo) {
    bands.SetProperty(38, 80);
    EXPECT_EQ(bands.Property(38), 30);
    bands.SetProperty(38, -5);
    EXPECT_EQ(bands.Property(38), 2);
    EXPECT_EQ(bands.SetProperty(38, std::numeric_limits<float>::quiet_NaN()), Outcome::NotSupported);
    EXPECT_EQ(bands.Property(38), 2);
}

TEST_F(EqualizerBandsTest, TakesWhatIsNoNumberForFlat) {
    bands.SetGains({3, 3, 3});
    bands.SetProperty(17, std::numeric_limits<float>::quiet_NaN());
    bands.SetProperty(18, std::numeric_limits<float>::infinity());
    EXPECT_THAT(bands.Gains(), ElementsAre(0, 0, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST(EqualizerTexts, StepsToWholeDecibelsAndNeverOverZero) {
    EXPECT_EQ(StepGain(0, 1), 1);
    EXPECT_EQ(StepGain(0, -3), -3);
    EXPECT_EQ(StepGain(0.5F, 1), 1);
    EXPECT_EQ(StepGain(0.5F, -1), 0);
    EXPECT_EQ(StepGain(-0.5F, 1), 0);
    EXPECT_EQ(StepGain(-0.5F, -1), -1);
    EXPECT_EQ(StepGain(2.5F, 3), 5);
    EXPECT_EQ(StepGain(2.5F, 0), 2.5F);
}

TEST(EqualizerTexts, NamesBandsAndGains) {
    EXPECT_EQ(Utf8(BandLabel(0)), "31");
    EXPECT_EQ(Utf8(BandLabel(6)), "940");
    EXPECT_EQ(Utf8(BandLabel(7)), "1.6k");
    EXPECT_EQ(Utf8(BandLabel(11)), "16k");
    EXPECT_EQ(Utf8(BandFrequency(0)), "31 Hz");
    EXPECT_EQ(Utf8(BandFrequency(7)), "1,600 Hz");
    EXPECT_EQ(Utf8(GainText(0)), "0 dB");
    EXPECT_EQ(Utf8(GainText(-0.1F)), "0 dB");
    EXPECT_EQ(Utf8(GainText(6)), "+6 dB");
    EXPECT_EQ(Utf8(GainText(1.5F)), "+1.5 dB");
    EXPECT_EQ(Utf8(GainText(-12)), "\u221212 dB");
}

TEST(DisplayColours, StandInTheOrderOfTheList) {
    std::vector<std::string> names;
    std::vector<int> properties;
    for (const DisplayColour& colour : displayColours) {
        names.emplace_back(colour.name);
        properties.push_back(colour.property);
    }
    EXPECT_THAT(names, ElementsAre("BackColor", "BorderColor", "InscriptionsColor", "LevelsColor",
                                   "MaxLevelColor", "ScaleColor"));
    EXPECT_THAT(properties, ElementsAre(12, 13, 14, 16, 17, 15));
}

} // namespace
} // namespace kestrune
