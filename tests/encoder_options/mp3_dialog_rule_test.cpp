// The MP3 options dialog without its window.
#include "encoder_options/mp3_dialog_rule.h"

#include "encoder_options/encoder_lists.h"
#include "encoder_options/mp3_presets.h"
#include "support/fake_audio_format.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

class Mp3DialogRuleTest : public testing::Test {
protected:
    // Every option unlike its default, and each of the like kind unlike its neighbours.
    static Mp3Options Unusual() {
        Mp3Options options;
        options.maxVbrBitrate = 224;
        options.vbrQuality = 7;
        options.vbrMethod = 4;
        options.abrBitrate = 133;
        options.channelMode = 3;
        options.quality = 2;
        options.writeVbrHeader = false;
        options.bitReservoir = false;
        options.blockTypesDiffer = false;
        options.shortBlocks = false;
        options.deEmphasis = 2;
        options.isoCompliance = true;
        options.enforceMinBitrate = true;
        options.athControl = 3;
        options.lowpassFrequency = 16000;
        options.highpassFrequency = 40;
        options.lowpassWidth = 500;
        options.highpassWidth = 20;
        options.crcProtection = true;
        options.frequency = 32000;
        options.bitrate = 96;
        return options;
    }

    static Mp3Controls ShownFor(Mp3Options options) {
        FakeAudioFormat unused;
        return Mp3DialogRule(options, {unused}).ShowOptions({});
    }

    Mp3Target Converter() {
        return {file, [this](const QString& text) { mp3Texts << text; },
                [this](const QString& text) { mp2Texts << text; }};
    }

    FakeAudioFormat file;
    Mp3Options options;
    QStringList mp3Texts;
    QStringList mp2Texts;
    Mp3DialogRule converter{options, Converter()};
    Mp3DialogRule ripper{options, {file}};
};

TEST_F(Mp3DialogRuleTest, ShowsTheDefaultsOfTheOptions) {
    const Mp3Controls shown = converter.ShowOptions({});
    EXPECT_EQ(SamplingFrequencyAt(shown.cmbFrequency), 44100);
    EXPECT_EQ(BitRateAt(shown.sldrBitrate), 128);
    EXPECT_EQ(channelModeTexts[static_cast<size_t>(shown.cmbChMode)], std::string("Stereo"));
    EXPECT_EQ(vbrMethodTexts[static_cast<size_t>(shown.cmbVBRCodingMethod)], std::string("None"));
    EXPECT_FALSE(shown.chHFilt);
    EXPECT_FALSE(shown.chLFilt);
}

TEST_F(Mp3DialogRuleTest, ShowsEveryOptionInItsControl) {
    const Mp3Controls shown = ShownFor(Unusual());
    EXPECT_EQ(shown.cmbFrequency, 6);
    EXPECT_EQ(shown.sldrBitrate, 7);
    EXPECT_EQ(shown.cmbChMode, 3);
    EXPECT_EQ(shown.sldrQuality, 2);
    EXPECT_TRUE(shown.chHFilt);
    EXPECT_EQ(shown.udHFiltF, 40);
    EXPECT_EQ(shown.udHFiltW, 20);
    EXPECT_TRUE(shown.chLFilt);
    EXPECT_EQ(shown.udLFiltF, 16000);
    EXPECT_EQ(shown.udLFiltW, 500);
    EXPECT_EQ(shown.cmbVBRCodingMethod, 5);
    EXPECT_EQ(shown.udVbrQuality, 7);
    EXPECT_EQ(shown.udAbrBitrate, 133);
    EXPECT_EQ(shown.sldrVbrBitrate, 12);
    EXPECT_FALSE(shown.chWriteVBRHeader);
    EXPECT_TRUE(shown.chStrictlyEnforceMinBitrate);
    EXPECT_EQ(shown.cmbATHControl, 3);
    EXPECT_EQ(shown.cmbEmphasis, 2);
    EXPECT_TRUE(shown.chErrorProtection);
    EXPECT_FALSE(shown.chBlockType);
    EXPECT_FALSE(shown.chBitReservoir);
    EXPECT_FALSE(shown.chShortBlocks);
    EXPECT_TRUE(shown.chStrictlyISOCompliance);
}

// Each boolean on its own, so that no two are taken for each other.
TEST_F(Mp3DialogRuleTest, EachTickBelongsToItsOption) {
    const std::pair<bool Mp3Controls::*, bool Mp3Options::*> ticks[] = {
        {&Mp3Controls::chWriteVBRHeader, &Mp3Options::writeVbrHeader},
        {&Mp3Controls::chStrictlyEnforceMinBitrate, &Mp3Options::enforceMinBitrate},
        {&Mp3Controls::chErrorProtection, &Mp3Options::crcProtection},
        {&Mp3Controls::chBlockType, &Mp3Options::blockTypesDiffer},
        {&Mp3Controls::chBitReservoir, &Mp3Options::bitReservoir},
        {&Mp3Controls::chShortBlocks, &Mp3Options::shortBlocks},
        {&Mp3Controls::chStrictlyISOCompliance, &Mp3Options::isoCompliance}};
    for (const auto& [control, option] : ticks) {
        for (const auto& [other, otherOption] : ticks) {
            options.*otherOption = false;
        }
        options.*option = true;
        Mp3Controls shown = converter.ShowOptions({});
        int ticked = 0;
        for (const auto& [other, otherOption] : ticks) {
            ticked += shown.*other ? 1 : 0;
        }
        EXPECT_TRUE(shown.*control);
        EXPECT_EQ(ticked, 1);
        options.*option = false;
        converter.ApplyOptions(Mp3Tab::Expert, shown);
        EXPECT_TRUE(options.*option);
    }
}

TEST_F(Mp3DialogRuleTest, WhatIsShownIsAppliedAgainFromEachOfTheFirstFourTabs) {
    for (const Mp3Tab tab : {Mp3Tab::General, Mp3Tab::Filtering, Mp3Tab::Vbr, Mp3Tab::Expert}) {
        options = {};
        options.quality = Unusual().quality; // goes its own way
        const Mp3Controls shown = ShownFor(Unusual());
        EXPECT_EQ(converter.ApplyOptions(tab, shown), shown);
        EXPECT_EQ(ShownFor(options), shown);
        EXPECT_EQ(options.channels, 2);
    }
}

TEST_F(Mp3DialogRuleTest, ABitRateThatIsNotInTheTableLeavesTheSliders) {
    options.bitrate = 40;
    options.maxVbrBitrate = 80;
    Mp3Controls before;
    before.sldrBitrate = 4;
    before.sldrVbrBitrate = 11;
    const Mp3Controls shown = converter.ShowOptions(before);
    EXPECT_EQ(shown.sldrBitrate, 4);
    EXPECT_EQ(shown.sldrVbrBitrate, 11);
}

TEST_F(Mp3DialogRuleTest, AFrequencyThatIsNotInTheListEndsAtTheLastEntry) {
    options.frequency = 96000;
    EXPECT_EQ(converter.ShowOptions({}).cmbFrequency, 8);
}

TEST_F(Mp3DialogRuleTest, EntriesBeyondAListLeaveWhatIsShown) {
    options.channelMode = 9;
    options.vbrMethod = 8;
    options.athControl = -1;
    options.deEmphasis = 3;
    Mp3Controls before;
    before.cmbChMode = 2;
    before.cmbVBRCodingMethod = 3;
    before.cmbATHControl = 1;
    before.cmbEmphasis = 2;
    const Mp3Controls shown = converter.ShowOptions(before);
    EXPECT_EQ(shown.cmbChMode, 2);
    EXPECT_EQ(shown.cmbVBRCodingMethod, 3);
    EXPECT_EQ(shown.cmbATHControl, 1);
    EXPECT_EQ(shown.cmbEmphasis, 2);
}

TEST_F(Mp3DialogRuleTest, AFilterThatIsOffKeepsItsFrequencyOnScreen) {
    Mp3Controls before;
    before.chHFilt = before.chLFilt = true;
    before.udHFiltF = 120;
    before.udLFiltF = 15000;
    const Mp3Controls shown = converter.ShowOptions(before);
    EXPECT_FALSE(shown.chHFilt);
    EXPECT_FALSE(shown.chLFilt);
    EXPECT_EQ(shown.udHFiltF, 120);
    EXPECT_EQ(shown.udLFiltF, 15000);
}

TEST_F(Mp3DialogRuleTest, AFilterAtZeroIsOn) {
    options.highpassFrequency = 0;
    Mp3Controls before;
    before.udHFiltF = 120;
    const Mp3Controls shown = converter.ShowOptions(before);
    EXPECT_TRUE(shown.chHFilt);
    EXPECT_EQ(shown.udHFiltF, 0);
}

TEST_F(Mp3DialogRuleTest, AFilterIsMinusOneWithoutItsTickWhateverItsSpinnerSays) {
    Mp3Controls shown;
    shown.udHFiltF = 100;
    shown.udLFiltF = 17000;
    shown.udHFiltW = 30;
    shown.udLFiltW = 700;
    converter.ApplyOptions(Mp3Tab::Filtering, shown);
    EXPECT_EQ(options.highpassFrequency, -1);
    EXPECT_EQ(options.lowpassFrequency, -1);
    EXPECT_EQ(options.highpassWidth, 30);
    EXPECT_EQ(options.lowpassWidth, 700);
    shown.chHFilt = true;
    converter.ApplyOptions(Mp3Tab::Filtering, shown);
    EXPECT_EQ(options.highpassFrequency, 100);
    EXPECT_EQ(options.lowpassFrequency, -1);
    shown.chLFilt = true;
    converter.ApplyOptions(Mp3Tab::Filtering, shown);
    EXPECT_EQ(options.lowpassFrequency, 17000);
}

TEST_F(Mp3DialogRuleTest, QualityIsTakenAtOnceAndNotByApply) {
    Mp3Controls shown = converter.ShowOptions({});
    converter.ChooseQuality(1);
    EXPECT_EQ(options.quality, 1);
    EXPECT_TRUE(file.calls.isEmpty());
    shown.sldrQuality = 8;
    converter.ApplyOptions(Mp3Tab::General, shown);
    EXPECT_EQ(options.quality, 1);
}

TEST_F(Mp3DialogRuleTest, AnAverageBitRateOutsideItsBoundsIsBroughtIntoThem) {
    Mp3Controls shown;
    shown.udAbrBitrate = 3;
    converter.ApplyOptions(Mp3Tab::Vbr, shown);
    EXPECT_EQ(options.abrBitrate, 4);
    shown.udAbrBitrate = 321;
    converter.ApplyOptions(Mp3Tab::Vbr, shown);
    EXPECT_EQ(options.abrBitrate, 320);
    shown.udAbrBitrate = 137;
    converter.ApplyOptions(Mp3Tab::Vbr, shown);
    EXPECT_EQ(options.abrBitrate, 137);
}

TEST_F(Mp3DialogRuleTest, TheFirstPresetIsChosenAtTheStart) {
    Mp3Options expected;
    ApplyPreset(expected, 1);
    converter.ApplyOptions(Mp3Tab::Preset, {});
    EXPECT_EQ(ShownFor(options), ShownFor(expected));
    EXPECT_EQ(options.preset, 1);
    EXPECT_EQ(options.altPreset, 0);

    options = {};
    ApplyAltPreset(expected = {}, 1);
    converter.ApplyOptions(Mp3Tab::AltPreset, {});
    EXPECT_EQ(ShownFor(options), ShownFor(expected));
    EXPECT_EQ(options.preset, 0);
    EXPECT_EQ(options.altPreset, 1);
}

TEST_F(Mp3DialogRuleTest, APresetIsOnlyNotedUntilItIsApplied) {
    converter.ChoosePreset(9);
    converter.ChooseAltPreset(5);
    EXPECT_EQ(options.preset, 0);
    EXPECT_EQ(options.altPreset, 0);
    EXPECT_TRUE(file.calls.isEmpty());
}

TEST_F(Mp3DialogRuleTest, WithThePresetsInFrontTheOtherTabsAreIgnored) {
    Mp3Controls shown = converter.ShowOptions({});
    shown.cmbFrequency = 8;
    shown.chErrorProtection = true;
    shown.chHFilt = true;
    shown.udHFiltF = 100;
    shown.txtCommLine = QStringLiteral("-V 0");
    converter.ChoosePreset(9);
    const Mp3Controls after = converter.ApplyOptions(Mp3Tab::Preset, shown);
    EXPECT_EQ(options.preset, 9);
    EXPECT_EQ(options.frequency, 44100);
    EXPECT_FALSE(options.crcProtection);
    EXPECT_EQ(options.highpassFrequency, -1);
    EXPECT_TRUE(options.commandLine.isEmpty());
    // The screen follows the preset.
    EXPECT_FALSE(after.chErrorProtection);
    EXPECT_FALSE(after.chHFilt);
    EXPECT_EQ(BitRateAt(after.sldrBitrate), 192);
    EXPECT_EQ(after.cmbVBRCodingMethod, vbrMethodAbr);
    EXPECT_EQ(after.txtCommLine, QStringLiteral("-V 0"));
}

TEST_F(Mp3DialogRuleTest, APresetWithABitRateOutsideTheTableLeavesTheSliderAlone) {
    converter.ChoosePreset(3);
    const Mp3Controls after = converter.ApplyOptions(Mp3Tab::Preset, converter.ShowOptions({}));
    EXPECT_EQ(options.bitrate, 40);
    EXPECT_EQ(BitRateAt(after.sldrBitrate), 128);
}

// The least rate of a varying one is nothing that layer 2 could be written with.
TEST_F(Mp3DialogRuleTest, PresetsOfVaryingRateGiveLayerTwoARateForMusic) {
    converter.ChoosePreset(11);
    Mp3Controls after = converter.ApplyOptions(Mp3Tab::Preset, converter.ShowOptions({}));
    EXPECT_EQ(file.calls.last(), QStringLiteral("SetFormatMP2 44100 160 3"));
    EXPECT_EQ(BitRateAt(after.sldrBitrate), 160);
    EXPECT_EQ(options.leastVbrBitrate, 32);
    for (int preset = 1; preset <= 5; ++preset) {
        constexpr int kbps[] = {192, 192, 256, 256, 320};
        converter.ChooseAltPreset(preset);
        after = converter.ApplyOptions(Mp3Tab::AltPreset, after);
        EXPECT_EQ(file.calls.last(), QStringLiteral("SetFormatMP2 44100 %1 3").arg(kbps[preset - 1]));
        EXPECT_EQ(BitRateAt(after.sldrBitrate), kbps[preset - 1]);
    }
}

TEST_F(Mp3DialogRuleTest, TheLeastRateOfAPresetCountsUntilABitRateIsChosen) {
    converter.ChooseAltPreset(2);
    Mp3Controls shown = converter.ApplyOptions(Mp3Tab::AltPreset, converter.ShowOptions({}));
    shown.sldrQuality = 2;
    shown.chErrorProtection = true;
    converter.ApplyOptions(Mp3Tab::Expert, shown);
    EXPECT_EQ(options.leastVbrBitrate, 32);
    shown.sldrBitrate = 9;
    converter.ApplyOptions(Mp3Tab::General, shown);
    EXPECT_EQ(options.bitrate, 128);
    EXPECT_EQ(options.leastVbrBitrate, 0);
    options.leastVbrBitrate = 32;
    shown.cmbVBRCodingMethod = 0;
    converter.ApplyOptions(Mp3Tab::Vbr, shown);
    EXPECT_EQ(options.leastVbrBitrate, 0);
}

TEST_F(Mp3DialogRuleTest, TheCommandLineGoesToTheOptionsAsItStands) {
    const QString line = QStringLiteral("  -b 160  --frobnicate ");
    Mp3Controls shown = converter.ShowOptions({});
    shown.txtCommLine = line;
    shown.cmbFrequency = 0;
    const Mp3Controls after = converter.ApplyOptions(Mp3Tab::CommandLine, shown);
    EXPECT_EQ(options.commandLine, line);
    EXPECT_EQ(after.txtCommLine, line);
    EXPECT_EQ(options.frequency, 44100);
    EXPECT_EQ(after.cmbFrequency, 7);
    EXPECT_EQ(BitRateAt(after.sldrBitrate), 160);
}

TEST_F(Mp3DialogRuleTest, TheCommandLineIsTakenFromItsOwnTabOnly) {
    Mp3Controls shown = converter.ShowOptions({});
    shown.txtCommLine = QStringLiteral("-b 160");
    for (const Mp3Tab tab : {Mp3Tab::General, Mp3Tab::Filtering, Mp3Tab::Vbr, Mp3Tab::Expert, Mp3Tab::Preset,
                             Mp3Tab::AltPreset}) {
        converter.ApplyOptions(tab, shown);
        EXPECT_TRUE(options.commandLine.isEmpty());
    }
}

TEST_F(Mp3DialogRuleTest, TheConverterSetsBothLayersInOrderAndShowsTheirTexts) {
    Mp3Controls shown = converter.ShowOptions({});
    shown.sldrBitrate = 10;
    converter.ApplyOptions(Mp3Tab::General, shown);
    const QStringList calls = {QStringLiteral("SetFormatMP3Options 44100 160 2"),
                               QStringLiteral("SetFormatMP2 44100 160 2")};
    EXPECT_EQ(file.calls, calls);
    EXPECT_EQ(mp3Texts, QStringList(calls[0]));
    EXPECT_EQ(mp2Texts, QStringList(calls[1]));
    EXPECT_EQ(file.lastMp3Options.bitrate, 160);
}

TEST_F(Mp3DialogRuleTest, EveryTabSetsTheFormat) {
    for (int tab = 0; tab < static_cast<int>(mp3TabTexts.size()); ++tab) {
        file.calls.clear();
        converter.ApplyOptions(static_cast<Mp3Tab>(tab), converter.ShowOptions({}));
        EXPECT_EQ(file.calls.size(), 2) << tab;
    }
}

TEST_F(Mp3DialogRuleTest, TheRipperSetsLayerThreeAlone) {
    ripper.ApplyOptions(Mp3Tab::General, ripper.ShowOptions({}));
    EXPECT_EQ(file.calls, QStringList(QStringLiteral("SetFormatMP3Options 44100 128 2")));
    EXPECT_TRUE(mp3Texts.isEmpty());
    EXPECT_TRUE(mp2Texts.isEmpty());
}

TEST_F(Mp3DialogRuleTest, ARefusedFormatShowsAnEmptyText) {
    file.refusedFormats = {QStringLiteral("SetFormatMP2")};
    converter.ApplyOptions(Mp3Tab::General, converter.ShowOptions({}));
    EXPECT_EQ(mp2Texts, QStringList(QString()));
    EXPECT_FALSE(mp3Texts[0].isEmpty());
}

TEST_F(Mp3DialogRuleTest, TheChannelCodeOfLayerTwoFollowsTheChannelMode) {
    const int codes[] = {1, 2, 3, 4, 5};
    for (int mode = 0; mode < 5; ++mode) {
        file.calls.clear();
        Mp3Controls shown = converter.ShowOptions({});
        shown.cmbChMode = mode;
        converter.ApplyOptions(Mp3Tab::General, shown);
        EXPECT_EQ(file.calls.last(), QStringLiteral("SetFormatMP2 44100 128 %1").arg(codes[mode]));
        EXPECT_EQ(options.channels, mode == 0 ? 1 : 2);
    }
}

TEST_F(Mp3DialogRuleTest, OneChannelIsMonoForLayerTwoWhateverTheChannelMode) {
    for (int mode = 0; mode < 5; ++mode) {
        options.channels = 1;
        options.channelMode = mode;
        EXPECT_EQ(Mp2ChannelCode(options), 1);
    }
}

TEST_F(Mp3DialogRuleTest, TheCodingMethodSaysWhatCanBeUsed) {
    EXPECT_EQ(VbrControlsEnabled(0), (Mp3VbrEnabled{false, false, false}));
    for (const int method : {1, 2, 3, 4}) {
        EXPECT_EQ(VbrControlsEnabled(method), (Mp3VbrEnabled{true, false, true})) << method;
    }
    EXPECT_EQ(VbrControlsEnabled(5), (Mp3VbrEnabled{false, true, true}));
}

TEST_F(Mp3DialogRuleTest, TheTextOverASliderNamesItsRate) {
    EXPECT_EQ(CurrentBitrateText(0), QStringLiteral("Current bitrate: 8 kbit"));
    EXPECT_EQ(CurrentBitrateText(14), QStringLiteral("Current bitrate: 320 kbit"));
}

} // namespace
} // namespace kestrune
