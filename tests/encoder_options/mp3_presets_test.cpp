#include "encoder_options/mp3_presets.h"

#include <gtest/gtest.h>

namespace kestrune {

namespace {

Mp3Options After(const char* commandLine, Mp3Options options = {}) {
    ApplyCommandLine(options, QString::fromLatin1(commandLine));
    return options;
}

struct ExpectedPreset {
    int preset;
    int averageKbps;
    int channels;
    int frequency;
};

class Mp3PresetTest : public testing::TestWithParam<ExpectedPreset> {};

} // namespace

TEST_P(Mp3PresetTest, IsAnAverageRateWithItsChannels) {
    const ExpectedPreset expected = GetParam();
    Mp3Options options;
    options.lowpassFrequency = 3000;
    options.crcProtection = true;
    ApplyPreset(options, expected.preset);
    EXPECT_EQ(options.preset, expected.preset);
    EXPECT_EQ(options.vbrMethod, 4);
    EXPECT_EQ(options.abrBitrate, expected.averageKbps);
    EXPECT_EQ(options.bitrate, expected.averageKbps);
    EXPECT_EQ(options.channels, expected.channels);
    EXPECT_EQ(options.channelMode, expected.channels == 1 ? 0 : 2);
    EXPECT_EQ(options.frequency, expected.frequency);
    EXPECT_EQ(options.lowpassFrequency, -1) << "what was set by hand before";
    EXPECT_FALSE(options.crcProtection);
}

INSTANTIATE_TEST_SUITE_P(AllOfThem, Mp3PresetTest,
                         testing::Values(ExpectedPreset{1, 16, 1, 16000}, ExpectedPreset{2, 24, 1, 16000},
                                         ExpectedPreset{3, 40, 1, 24000}, ExpectedPreset{4, 112, 2, 44100},
                                         ExpectedPreset{5, 56, 1, 32000}, ExpectedPreset{6, 112, 2, 44100},
                                         ExpectedPreset{7, 112, 2, 44100}, ExpectedPreset{8, 160, 2, 44100},
                                         ExpectedPreset{9, 192, 2, 44100},
                                         ExpectedPreset{10, 256, 2, 44100}));

TEST(Mp3PresetsTest, TheEleventhVariesTheRate) {
    Mp3Options options;
    ApplyPreset(options, 11);
    EXPECT_EQ(options.preset, 11);
    EXPECT_EQ(options.vbrMethod, 3);
    EXPECT_EQ(options.vbrQuality, 3);
    EXPECT_EQ(options.channelMode, 2);
}

TEST(Mp3PresetsTest, AlternativesVaryTheRateUpToTheHighestConstantOne) {
    struct Expected {
        qint32 method;
        int quality;
    };
    const std::vector<Expected> expected{{2, 2}, {1, 2}, {2, 0}, {1, 0}};
    for (int preset = 1; preset <= 4; ++preset) {
        Mp3Options options;
        ApplyAltPreset(options, preset);
        const Expected& wanted = expected[static_cast<size_t>(preset) - 1];
        EXPECT_EQ(options.altPreset, preset);
        EXPECT_EQ(options.vbrMethod, wanted.method) << preset;
        EXPECT_EQ(options.vbrQuality, wanted.quality) << preset;
        EXPECT_EQ(options.channelMode, 2);
        EXPECT_EQ(options.channels, 2);
        EXPECT_EQ(options.leastVbrBitrate, 32);
        EXPECT_EQ(options.bitrate, wanted.quality == 2 ? 192 : 256) << "about";
    }
    Mp3Options insane;
    ApplyAltPreset(insane, 5);
    EXPECT_EQ(insane.vbrMethod, -1);
    EXPECT_EQ(insane.bitrate, 320);
}

TEST(Mp3PresetsTest, APresetForMusicKeepsARateForMusic) {
    Mp3Options options;
    options.frequency = 48000;
    ApplyPreset(options, 9);
    EXPECT_EQ(options.frequency, 48000);
    ApplyPreset(options, 1);
    EXPECT_EQ(options.frequency, 16000);
    ApplyAltPreset(options, 2);
    EXPECT_EQ(options.frequency, 44100);
}

TEST(Mp3PresetsTest, ANumberThatNamesNoneChangesNothing) {
    for (const int number : {-1, 0, 12, 100}) {
        Mp3Options options;
        options.bitrate = 96;
        ApplyPreset(options, number);
        ApplyAltPreset(options, number);
        EXPECT_EQ(options.bitrate, 96);
        EXPECT_EQ(options.preset, 0);
        EXPECT_EQ(options.altPreset, 0);
    }
}

TEST(Mp3CommandLineTest, IsKeptAsItStands) {
    EXPECT_EQ(After("  what -is   this ").commandLine, QStringLiteral("  what -is   this "));
}

TEST(Mp3CommandLineTest, RatesAndMethods) {
    EXPECT_EQ(After("-b 192").bitrate, 192);
    EXPECT_EQ(After("-b192").bitrate, 192);
    EXPECT_EQ(After("-b 4000").bitrate, 320);
    EXPECT_EQ(After("-B 224").maxVbrBitrate, 224);
    EXPECT_EQ(After("-V 2").vbrQuality, 2);
    EXPECT_EQ(After("-V2").vbrMethod, 0);
    EXPECT_EQ(After("-v").vbrQuality, 4);
    EXPECT_EQ(After("-v").vbrMethod, 0);
    EXPECT_EQ(After("--vbr-old -V 1").vbrMethod, 1);
    EXPECT_EQ(After("-V 1 --vbr-new").vbrMethod, 2);
    EXPECT_EQ(After("--vbr-mtrh").vbrMethod, 3);
    EXPECT_EQ(After("--abr 150").vbrMethod, 4);
    EXPECT_EQ(After("--abr 150").abrBitrate, 150);
    EXPECT_EQ(After("--abr 150 --cbr").vbrMethod, -1);
    EXPECT_TRUE(After("-F").enforceMinBitrate);
    EXPECT_FALSE(After("-t").writeVbrHeader);
    EXPECT_TRUE(After("-t -T").writeVbrHeader);
}

TEST(Mp3CommandLineTest, AVaryingRateIsNotHeldByTheConstantOne) {
    EXPECT_EQ(After("-V 2").leastVbrBitrate, 32);
    EXPECT_EQ(After("-V 2").bitrate, 192) << "about";
    EXPECT_EQ(After("-V 9").bitrate, 64);
    EXPECT_EQ(After("-V 2 --resample 16").leastVbrBitrate, 8);
    EXPECT_EQ(After("-b 96 -V 2").bitrate, 96) << "the least one, as named";
    EXPECT_EQ(After("-b 96 -V 2").leastVbrBitrate, 0);
    EXPECT_EQ(After("--preset standard -b 96").leastVbrBitrate, 0);
    EXPECT_EQ(After("--vbr-old -b 64").bitrate, 64);
    EXPECT_EQ(After("--abr 100").bitrate, 100) << "which holds nothing";
    EXPECT_EQ(After("-V 2 --abr 100").leastVbrBitrate, 0);
    EXPECT_EQ(After("-V 2 --cbr").bitrate, 128);
    EXPECT_EQ(After("-V 2 --preset 150").bitrate, 150);
    EXPECT_EQ(After("-V 2 --preset cbr 192").bitrate, 192);
}

TEST(Mp3CommandLineTest, ChannelsAndQuality) {
    EXPECT_EQ(After("-m m").channels, 1);
    EXPECT_EQ(After("-mm").channelMode, 0);
    EXPECT_EQ(After("-m s").channelMode, 1);
    EXPECT_EQ(After("-m j").channelMode, 2);
    EXPECT_EQ(After("-m f").channelMode, 3);
    EXPECT_EQ(After("-m d").channelMode, 4);
    EXPECT_EQ(After("-m m -m s").channels, 2);
    EXPECT_EQ(After("-a").channels, 1);
    EXPECT_EQ(After("-m q").channelMode, Mp3Options().channelMode);
    EXPECT_EQ(After("-q 1").quality, 1);
    EXPECT_EQ(After("-h").quality, 2);
    EXPECT_EQ(After("-f").quality, 7);
}

TEST(Mp3CommandLineTest, Filters) {
    const Mp3Options options =
        After("--lowpass 16 --lowpass-width 0.5 --highpass 120 --highpass-width 40.4 --resample 32");
    EXPECT_EQ(options.lowpassFrequency, 16000);
    EXPECT_EQ(options.lowpassWidth, 500);
    EXPECT_EQ(options.highpassFrequency, 120);
    EXPECT_EQ(options.highpassWidth, 40400) << "below 50 it is kilohertz";
    EXPECT_EQ(options.frequency, 32000);
    EXPECT_EQ(After("--resample 44").frequency, 44100);
    EXPECT_EQ(After("--resample 22050").frequency, 22050);
    const Mp3Options all = After("-k", options);
    EXPECT_EQ(all.lowpassFrequency, 48000);
    EXPECT_EQ(all.highpassFrequency, 0);
}

TEST(Mp3CommandLineTest, ExpertOptions) {
    EXPECT_TRUE(After("-p").crcProtection);
    EXPECT_EQ(After("-e 5").deEmphasis, 1);
    EXPECT_EQ(After("-e c").deEmphasis, 2);
    EXPECT_EQ(After("-e c -e n").deEmphasis, 0);
    EXPECT_FALSE(After("--nores").bitReservoir);
    EXPECT_TRUE(After("--strictly-enforce-ISO").isoCompliance);
    EXPECT_FALSE(After("--noshort").shortBlocks);
    EXPECT_EQ(After("--athonly").athControl, 1);
    EXPECT_EQ(After("--noath").athControl, 2);
    EXPECT_EQ(After("--athshort").athControl, 3);
    Mp3Options same;
    same.blockTypesDiffer = false;
    EXPECT_TRUE(After("-d", same).blockTypesDiffer);
}

TEST(Mp3CommandLineTest, LettersMayStandTogether) {
    const Mp3Options options = After("-hpmj -Fb160");
    EXPECT_EQ(options.quality, 2);
    EXPECT_TRUE(options.crcProtection);
    EXPECT_EQ(options.channelMode, 2);
    EXPECT_TRUE(options.enforceMinBitrate);
    EXPECT_EQ(options.bitrate, 160);
}

TEST(Mp3CommandLineTest, Presets) {
    EXPECT_EQ(After("--preset standard").altPreset, 2);
    EXPECT_EQ(After("--alt-preset fast extreme").altPreset, 3);
    EXPECT_EQ(After("--preset insane").bitrate, 320);
    EXPECT_EQ(After("--preset medium").vbrQuality, 4);
    EXPECT_EQ(After("--preset 185").abrBitrate, 185);
    EXPECT_EQ(After("--preset 185").vbrMethod, 4);
    EXPECT_EQ(After("--preset cbr 192").vbrMethod, -1);
    EXPECT_EQ(After("--preset cbr 192").bitrate, 192);
    EXPECT_EQ(After("--preset studio").abrBitrate, 256);
    EXPECT_EQ(After("--preset phon+").preset, 2);
    EXPECT_EQ(After("--r3mix").preset, 11);
    EXPECT_EQ(After("--preset standard -m s").channelMode, 1) << "what follows still counts";
    EXPECT_EQ(After("--preset standard").commandLine, QStringLiteral("--preset standard"));
}

TEST(Mp3CommandLineTest, WhatIsNotUnderstoodChangesNothing) {
    Mp3Options before;
    before.bitrate = 96;
    for (const char* const line : {"",
                                   "-",
                                   "--",
                                   "in.wav out.mp3",
                                   "--nspsytune --allshort",
                                   "-b",
                                   "-b loud",
                                   "-b -1",
                                   "-V",
                                   "-q x",
                                   "--abr",
                                   "--lowpass nan",
                                   "--lowpass -5",
                                   "--resample 0",
                                   "--preset",
                                   "--preset fast",
                                   "--preset what",
                                   "--tt \"-h -p\"",
                                   "--scale -0.5",
                                   "--gain -3",
                                   "\"",
                                   "-e",
                                   "-m"}) {
        Mp3Options after = After(line, before);
        after.commandLine.clear();
        EXPECT_EQ(after.bitrate, 96) << line;
        EXPECT_EQ(after.quality, before.quality) << line;
        EXPECT_EQ(after.vbrMethod, before.vbrMethod) << line;
        EXPECT_EQ(after.vbrQuality, before.vbrQuality) << line;
        EXPECT_EQ(after.channelMode, before.channelMode) << line;
        EXPECT_EQ(after.crcProtection, before.crcProtection) << line;
        EXPECT_EQ(after.lowpassFrequency, before.lowpassFrequency) << line;
        EXPECT_EQ(after.frequency, before.frequency) << line;
        EXPECT_EQ(after.deEmphasis, before.deEmphasis) << line;
    }
}

} // namespace kestrune
