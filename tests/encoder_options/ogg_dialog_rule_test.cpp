// The Ogg Vorbis options dialog without its window.
#include "encoder_options/ogg_dialog_rule.h"

#include "support/fake_audio_format.h"
#include "support/fake_user_prompts.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

class OggDialogRuleTest : public testing::Test {
protected:
    void ExpectMessage() {
        ASSERT_EQ(prompts.messages.size(), 1);
        EXPECT_EQ(prompts.messages[0].text, QStringLiteral("Incorrect format"));
        EXPECT_EQ(prompts.messages[0].icon, PromptIcon::Critical);
    }

    FakeAudioFormat file;
    FakeUserPrompts prompts;
    QStringList texts;
    OggDialogRule rule{{file, prompts, [this](const QString& text) { texts << text; }}, 44100, 2};
    OggDialogRule ripper{{file, prompts}, 44100, 2};
};

TEST_F(OggDialogRuleTest, StartsFromTheDefaults) {
    EXPECT_EQ(rule.FrequencyIndex(), 7);
    EXPECT_EQ(rule.ChannelIndex(), 1);
    EXPECT_EQ(rule.Bitrate(), 128);
    EXPECT_EQ(rule.MinBitrate(), 128);
    EXPECT_EQ(rule.MaxBitrate(), 128);
    EXPECT_EQ(rule.Quality(), 300);
    EXPECT_FALSE(rule.VbrEnabled());
    EXPECT_FALSE(rule.QualityEnabled());
    EXPECT_TRUE(file.calls.isEmpty());
}

TEST_F(OggDialogRuleTest, StartsWithTheEntriesOfItsOwner) {
    const OggDialogRule mono({file, prompts}, 8000, 1);
    EXPECT_EQ(mono.FrequencyIndex(), 0);
    EXPECT_EQ(mono.ChannelIndex(), 0);
    const OggDialogRule high({file, prompts}, 48000, 2);
    EXPECT_EQ(high.FrequencyIndex(), 8);
    EXPECT_EQ(high.ChannelIndex(), 1);
}

TEST_F(OggDialogRuleTest, AtTheStartOnlyTheNominalRateCanBeSet) {
    OggEnabled expected;
    expected.frmVbr = false;
    expected.sldrMinBitrate = expected.sldrMaxBitrate = false;
    expected.lblMinBitrate = expected.lblMaxBitrate = false;
    expected.frmQuality = expected.sldrQuality = false;
    EXPECT_EQ(rule.Enabled(), expected);
}

TEST_F(OggDialogRuleTest, TickingVbrSwitchesItsFrameOn) {
    rule.TickVbr(true);
    EXPECT_TRUE(rule.Enabled().frmVbr);
    EXPECT_TRUE(rule.Enabled().sldrMinBitrate);
    EXPECT_TRUE(rule.Enabled().sldrMaxBitrate);
    EXPECT_TRUE(rule.Enabled().lblMinBitrate);
    EXPECT_TRUE(rule.Enabled().lblMaxBitrate);
    EXPECT_FALSE(rule.Enabled().frmQuality);
}

TEST_F(OggDialogRuleTest, UntickingVbrSwitchesTheFrameOfTheQualityOffAndItsOwnNot) {
    rule.TickVbr(true);
    rule.TickVbr(false);
    EXPECT_TRUE(rule.Enabled().frmVbr);
    EXPECT_FALSE(rule.Enabled().frmQuality);
    EXPECT_FALSE(rule.Enabled().sldrMinBitrate);
    EXPECT_FALSE(rule.Enabled().sldrMaxBitrate);
    EXPECT_FALSE(rule.Enabled().lblMinBitrate);
    EXPECT_FALSE(rule.Enabled().lblMaxBitrate);
    // Nothing else is touched.
    EXPECT_TRUE(rule.Enabled().chVbr);
    EXPECT_TRUE(rule.Enabled().sldrBitrate);
}

TEST_F(OggDialogRuleTest, TickingQualityLeavesTheQualityAlone) {
    rule.TickVbr(true);
    rule.TickQuality(true);
    OggEnabled expected{false, false, false, false, false, false, false, false, true, true};
    EXPECT_EQ(rule.Enabled(), expected);
}

TEST_F(OggDialogRuleTest, UntickingQualityGoesBackToWhatVbrSays) {
    const OggEnabled before = rule.Enabled();
    rule.TickQuality(true);
    rule.TickQuality(false);
    EXPECT_EQ(rule.Enabled(), before);

    rule.TickVbr(true);
    rule.TickQuality(true);
    rule.TickQuality(false);
    EXPECT_TRUE(rule.Enabled().frmVbr);
    EXPECT_TRUE(rule.Enabled().sldrMinBitrate);
    EXPECT_TRUE(rule.Enabled().chVbr);
    EXPECT_FALSE(rule.Enabled().sldrQuality);
    // Only unticking VBR switches that frame off.
    EXPECT_TRUE(rule.Enabled().frmQuality);
}

TEST_F(OggDialogRuleTest, TheSlidersTakeTheRatesOfTheTable) {
    rule.MoveBitrate(11);
    rule.MoveMinBitrate(0);
    rule.MoveMaxBitrate(14);
    EXPECT_EQ(rule.Bitrate(), 192);
    EXPECT_EQ(rule.MinBitrate(), 8);
    EXPECT_EQ(rule.MaxBitrate(), 320);
    EXPECT_EQ(OggBitrateText(9), QStringLiteral("128 kbit"));
}

TEST_F(OggDialogRuleTest, TheQualityIsAHundredthOfItsSlider) {
    EXPECT_EQ(OggQualityText(300), QStringLiteral("3"));
    EXPECT_EQ(OggQualityText(255), QStringLiteral("2.55"));
    EXPECT_EQ(OggQualityText(0), QStringLiteral("0"));
    EXPECT_EQ(OggQualityText(1000), QStringLiteral("10"));
    rule.MoveQuality(1001);
    EXPECT_EQ(rule.Quality(), 1000);
    rule.MoveQuality(-1);
    EXPECT_EQ(rule.Quality(), 0);
}

TEST_F(OggDialogRuleTest, ANominalRateIsTestedAndSetAlone) {
    rule.MoveMinBitrate(0);
    rule.MoveMaxBitrate(14);
    EXPECT_TRUE(rule.ApplyOgg());
    const QStringList calls = {QStringLiteral("IsAvailableFormatOggVorbis 44100 2 128 0 0"),
                               QStringLiteral("SetFormatOggVorbis 44100 2 128 0 0 -1")};
    EXPECT_EQ(file.calls, calls);
    EXPECT_EQ(texts, QStringList(calls[1]));
    EXPECT_TRUE(prompts.messages.isEmpty());
}

TEST_F(OggDialogRuleTest, VariableRatesAreTestedAndSet) {
    rule.TickVbr(true);
    rule.ChooseFrequency(0);
    rule.ChooseChannels(0);
    rule.MoveBitrate(2);
    rule.MoveMinBitrate(1);
    rule.MoveMaxBitrate(3);
    EXPECT_TRUE(rule.ApplyOgg());
    const QStringList calls = {QStringLiteral("IsAvailableFormatOggVorbis 8000 1 24 16 32"),
                               QStringLiteral("SetFormatOggVorbis 8000 1 24 16 32 -1")};
    EXPECT_EQ(file.calls, calls);
}

// The dialog has no opinion of its own.
TEST_F(OggDialogRuleTest, AMinimumAboveTheMaximumIsWhatTheTestSays) {
    rule.TickVbr(true);
    rule.MoveMinBitrate(14);
    rule.MoveMaxBitrate(0);
    EXPECT_TRUE(rule.ApplyOgg());
    EXPECT_EQ(file.calls.last(), QStringLiteral("SetFormatOggVorbis 44100 2 128 320 8 -1"));
    file.refusedFormats = {QStringLiteral("IsAvailableFormatOggVorbis")};
    EXPECT_FALSE(rule.ApplyOgg());
    EXPECT_EQ(file.calls.last(), QStringLiteral("IsAvailableFormatOggVorbis 44100 2 128 320 8"));
}

TEST_F(OggDialogRuleTest, AQualityGoesStraightToTheEncoder) {
    file.refusedFormats = {QStringLiteral("IsAvailableFormatOggVorbis")};
    rule.ChooseFrequency(0);
    rule.MoveBitrate(14);
    rule.TickQuality(true);
    rule.MoveQuality(450);
    EXPECT_TRUE(rule.ApplyOgg());
    EXPECT_EQ(file.calls, QStringList(QStringLiteral("SetFormatOggVorbis 8000 2 128 0 0 450")));
    EXPECT_EQ(texts, file.calls);
}

TEST_F(OggDialogRuleTest, WithBothTickedTheQualityApplies) {
    rule.TickVbr(true);
    rule.TickQuality(true);
    EXPECT_TRUE(rule.VbrEnabled());
    EXPECT_TRUE(rule.ApplyOgg());
    EXPECT_EQ(file.calls, QStringList(QStringLiteral("SetFormatOggVorbis 44100 2 128 0 0 300")));
}

TEST_F(OggDialogRuleTest, WhatIsNotOfferedSetsNothing) {
    file.refusedFormats = {QStringLiteral("IsAvailableFormatOggVorbis")};
    EXPECT_FALSE(rule.ApplyOgg());
    EXPECT_EQ(file.calls, QStringList(QStringLiteral("IsAvailableFormatOggVorbis 44100 2 128 0 0")));
    EXPECT_TRUE(texts.isEmpty());
    ExpectMessage();
}

TEST_F(OggDialogRuleTest, TheRipperShowsNoText) {
    EXPECT_TRUE(ripper.ApplyOgg());
    EXPECT_EQ(file.calls.last(), QStringLiteral("SetFormatOggVorbis 44100 2 128 0 0 -1"));
    EXPECT_TRUE(texts.isEmpty());
}

TEST_F(OggDialogRuleTest, TheRipperIsToldToo) {
    file.refusedFormats = {QStringLiteral("IsAvailableFormatOggVorbis")};
    EXPECT_FALSE(ripper.ApplyOgg());
    ExpectMessage();
}

} // namespace
} // namespace kestrune
