// The output formats and their parameters.
#include "converter_fixture.h"

namespace kestrune::convert {
namespace {

const Texts refreshCalls = {"SetFormatADPCM 44100 2", "SetFormatGSM 44100",        "SetFormatDSP",
                            "SetFormatVOX 44100",     "SetFormatRaw 2 44100 2 16", "SetFormatMP2 44100 192 2",
                            "SetFormatG723 44100 5",  "SetFormatG726 44100 4"};

class OutputSettingsTest : public ConverterTest {
protected:
    OutputSettings& settings = converter.Settings;
    std::string Text(FormatBox box) const { return Utf8(settings.FormatText(box)); }
    EventIcon LastIcon() const { return converter.Events.Icon(converter.Events.Count()); }
};

TEST_F(OutputSettingsTest, LoadMakesItsCallsInOrder) {
    settings.Load();
    Texts expected = refreshCalls;
    expected.emplace_back("#Set G.726 Format parameters ");
    expected.insert(expected.end(), refreshCalls.begin(), refreshCalls.end());
    expected.emplace_back("#Set G.723 Format parameters ");
    for (const char* call : {"SetFlag -1", "SetFormatOggVorbis 44100 2 128 0 0 -1",
                             "SetFormatMP3 44100 128 2", "SetFormatWMA 39"}) {
        expected.emplace_back(call);
    }
    expected.insert(expected.end(), refreshCalls.begin(), refreshCalls.end());
    EXPECT_EQ(ToTexts(output.calls), expected);
    EXPECT_THAT(ToTexts(input.calls),
                ElementsAre("#Set G.726 Format parameters ", "#Set G.723 Format parameters ", "SetFlag -1"));
}

TEST_F(OutputSettingsTest, LoadSetsTheDefaults) {
    converter.State.Converting = true;
    converter.State.BackwardTransform = 0;
    converter.Load();
    const ConverterState& state = converter.State;
    EXPECT_EQ(state.SampleRate, 44100);
    EXPECT_EQ(state.Channels, 2);
    EXPECT_EQ(state.G726Bits, 4);
    EXPECT_EQ(state.G723Bits, 5);
    EXPECT_EQ(state.BackwardTransform, 1);
    EXPECT_EQ(state.udWMAProfile, 39);
    EXPECT_TRUE(state.AcmTemplatePath.isEmpty());
    EXPECT_FALSE(state.Converting);
    EXPECT_FALSE(state.Loading);
    EXPECT_FALSE(state.StopBatch);
    EXPECT_EQ(settings.opFreq(), 6);
    EXPECT_EQ(settings.opChannels(), 2);
    EXPECT_EQ(settings.cmbG723Bits(), 1);
    EXPECT_EQ(settings.cmbG726Bits(), 2);
}

TEST_F(OutputSettingsTest, LoadFillsTheTextsAndTheLog) {
    settings.Load();
    EXPECT_EQ(Text(FormatBox::txtOGGFormatString), "SetFormatOggVorbis 44100 2 128 0 0 -1");
    EXPECT_EQ(Text(FormatBox::txtMP3FormatString), "SetFormatMP3 44100 128 2");
    EXPECT_EQ(Text(FormatBox::txtWMAFormatString), "SetFormatWMA 39");
    EXPECT_EQ(Text(FormatBox::txtADPCMFormatString), "SetFormatADPCM 44100 2");
    EXPECT_EQ(Text(FormatBox::txtGSMFormatString), "SetFormatGSM 44100");
    EXPECT_EQ(Text(FormatBox::txtDSPFormatString), "SetFormatDSP");
    EXPECT_EQ(Text(FormatBox::txtVOXFormatString), "SetFormatVOX 44100");
    EXPECT_EQ(Text(FormatBox::txtMP2FormatString), "SetFormatMP2 44100 192 2");
    EXPECT_EQ(Text(FormatBox::txtG723FormatString), "SetFormatG723 44100 5");
    EXPECT_EQ(Text(FormatBox::txtG726FormatString), "SetFormatG726 44100 4");
    EXPECT_EQ(Text(FormatBox::Text1), "");
    EXPECT_THAT(Log(), ElementsAre("Set G.726 Format parameters ", "Set G.723 Format parameters "));
    EXPECT_EQ(LastIcon(), EventIcon::SettingsChange);
}

TEST_F(OutputSettingsTest, ALawTextShowsTheTypeThatTheStageUses) {
    settings.Load();
    EXPECT_EQ(Text(FormatBox::txtULAWFormatString), "SetFormatRaw 2 44100 2 16");
}

TEST_F(OutputSettingsTest, NoOutputFormatIsTickedAtTheStart) {
    converter.Load();
    for (int i = 0; i < outputBoxCount; ++i) {
        EXPECT_EQ(Utf8(settings.CheckOutTag(i)), "0");
    }
}

TEST_F(OutputSettingsTest, EachFrequencySetsItsRate) {
    Open();
    const std::array<int, 8> rates = {8000, 11025, 16000, 22050, 24000, 32000, 44100, 48000};
    for (size_t i = 0; i < rates.size(); ++i) {
        settings.opFreq_Click(static_cast<int>(i));
        EXPECT_EQ(converter.State.SampleRate, rates.at(i));
        EXPECT_EQ(settings.opFreq(), static_cast<int>(i));
        EXPECT_EQ(Log().back(), "Set Frequency: " + std::to_string(rates.at(i)) + " Hz");
        EXPECT_EQ(LastIcon(), EventIcon::SettingsChange);
    }
    settings.opFreq_Click(8);
    EXPECT_EQ(converter.State.SampleRate, 48000);
}

TEST_F(OutputSettingsTest, TheFrequencyIsLoggedBeforeTheTextsAreSet) {
    Open();
    settings.opFreq_Click(0);
    EXPECT_THAT(ToTexts(output.calls),
                ElementsAre("#Set Frequency: 8000 Hz", "SetFormatADPCM 8000 2", "SetFormatGSM 8000",
                            "SetFormatDSP", "SetFormatVOX 8000", "SetFormatRaw 2 8000 2 16",
                            "SetFormatMP2 8000 192 2", "SetFormatG723 8000 5", "SetFormatG726 8000 4"));
    EXPECT_EQ(Text(FormatBox::txtGSMFormatString), "SetFormatGSM 8000");
    EXPECT_EQ(Text(FormatBox::txtVOXFormatString), "SetFormatVOX 8000");
}

TEST_F(OutputSettingsTest, ChannelsAreTheIndexOfTheirOption) {
    Open();
    settings.opChannels_Click(1);
    EXPECT_EQ(converter.State.Channels, 1);
    EXPECT_EQ(Text(FormatBox::txtADPCMFormatString), "SetFormatADPCM 44100 1");
    EXPECT_EQ(Text(FormatBox::txtMP2FormatString), "SetFormatMP2 44100 192 1");
    settings.opChannels_Click(2);
    EXPECT_EQ(converter.State.Channels, 2);
    settings.opChannels_Click(0);
    EXPECT_EQ(converter.State.Channels, 2);
    EXPECT_THAT(Log(), ElementsAre("Set Mono", "Set Stereo"));
    EXPECT_EQ(Utf8(output.calls.first()), "#Set Mono");
}

TEST_F(OutputSettingsTest, G723HasThreeOrFiveBitsAndLogsBehindTheRefresh) {
    Open();
    settings.cmbG723Bits_Click(0);
    EXPECT_EQ(converter.State.G723Bits, 3);
    EXPECT_EQ(Utf8(output.calls.last()), "#Set G.723 Format parameters ");
    EXPECT_EQ(Text(FormatBox::txtG723FormatString), "SetFormatG723 44100 3");
    settings.cmbG723Bits_Click(1);
    EXPECT_EQ(converter.State.G723Bits, 5);
    settings.cmbG723Bits_Click(2);
    settings.cmbG723Bits_Click(-1);
    EXPECT_EQ(converter.State.G723Bits, 5);
}

TEST_F(OutputSettingsTest, G726HasItsListIndexAndTwoBits) {
    Open();
    for (int index = 0; index < 4; ++index) {
        settings.cmbG726Bits_Click(index);
        EXPECT_EQ(converter.State.G726Bits, index + 2);
        EXPECT_EQ(Utf8(output.calls.last()), "#Set G.726 Format parameters ");
        EXPECT_EQ(Text(FormatBox::txtG726FormatString),
                  "SetFormatG726 44100 " + std::to_string(converter.State.G726Bits));
    }
    settings.cmbG726Bits_Click(4);
    EXPECT_EQ(converter.State.G726Bits, 5);
}

TEST_F(OutputSettingsTest, TheProfileIsSetThenLoggedAndRefreshesNothingElse) {
    Open();
    settings.udWMAProfile_Change(7);
    EXPECT_THAT(ToTexts(output.calls), ElementsAre("SetFormatWMA 7", "#Set WMA Format parameters "));
    EXPECT_EQ(Text(FormatBox::txtWMAFormatString), "SetFormatWMA 7");
    EXPECT_EQ(LastIcon(), EventIcon::SettingsChange);
    settings.udWMAProfile_Change(7);
    EXPECT_EQ(output.calls.size(), 2);
}

TEST_F(OutputSettingsTest, TheProfileStaysInTheBoundsOfItsSpinner) {
    Open();
    settings.udWMAProfile_Change(48);
    EXPECT_EQ(converter.State.udWMAProfile, 47);
    settings.udWMAProfile_Change(-1);
    EXPECT_EQ(converter.State.udWMAProfile, 0);
}

TEST_F(OutputSettingsTest, AnEncoderDialogIsLoggedWhenItHasClosed) {
    Open();
    settings.EncoderDialogClosed(EncoderDialog::Mp3);
    settings.EncoderDialogClosed(EncoderDialog::Ogg);
    EXPECT_THAT(Log(), ElementsAre("Set MP3 Format parameters ", "Set Ogg Vorbis Format parameters "));
    EXPECT_EQ(LastIcon(), EventIcon::SettingsChange);
}

TEST_F(OutputSettingsTest, TextOfAnEncoderDialogStandsUntilTheNextRefresh) {
    Open();
    settings.SetFormatText(FormatBox::txtMP2FormatString, QStringLiteral("from the dialog"));
    EXPECT_EQ(Text(FormatBox::txtMP2FormatString), "from the dialog");
    settings.opChannels_Click(2);
    EXPECT_EQ(Text(FormatBox::txtMP2FormatString), "SetFormatMP2 44100 192 2");
}

TEST_F(OutputSettingsTest, ATemplateIsTakenShownAndLogged) {
    Open();
    prompts.filesToChoose << QStringList(QStringLiteral("/t/speech.wav"));
    settings.ChooseTemplate();
    EXPECT_EQ(Utf8(converter.State.AcmTemplatePath), "/t/speech.wav");
    EXPECT_EQ(Text(FormatBox::Text1), "SetFormatFromFile /t/speech.wav");
    EXPECT_THAT(ToTexts(output.calls),
                ElementsAre("SetFormatFromFile /t/speech.wav", "#Set ACM Format parameters "));
    ASSERT_EQ(prompts.choices.size(), 1);
    EXPECT_EQ(Utf8(prompts.choices[0].filter), "Wav files (*.wav)|*.wav");
    EXPECT_FALSE(prompts.choices[0].multiple);
    EXPECT_FALSE(prompts.choices[0].save);
}

TEST_F(OutputSettingsTest, ACancelledTemplateLogsNothingAndKeepsTheEarlierOne) {
    Open();
    prompts.filesToChoose << QStringList(QStringLiteral("/t/speech.wav"));
    settings.ChooseTemplate();
    Forget();
    settings.ChooseTemplate();
    EXPECT_EQ(Utf8(converter.State.AcmTemplatePath), "/t/speech.wav");
    EXPECT_EQ(Text(FormatBox::Text1), "SetFormatFromFile /t/speech.wav");
    EXPECT_THAT(Log(), IsEmpty());
    EXPECT_TRUE(output.calls.isEmpty());
}

TEST_F(OutputSettingsTest, AFormatThatIsNotOfferedShowsNoText) {
    output.refusedFormats << QStringLiteral("SetFormatMP2");
    Open();
    EXPECT_EQ(Text(FormatBox::txtMP2FormatString), "");
    EXPECT_EQ(Text(FormatBox::txtG723FormatString), "SetFormatG723 44100 5");
    EXPECT_THAT(Messages(), IsEmpty());
}

TEST_F(OutputSettingsTest, ATickOfAFormatChangesNothingElse) {
    Open();
    settings.OutputBox_Click(static_cast<int>(OutputBox::chMP3), true);
    EXPECT_TRUE(settings.IsTicked(OutputBox::chMP3));
    EXPECT_EQ(Utf8(settings.CheckOutTag(1)), "1");
    settings.OutputBox_Click(12, true);
    EXPECT_THAT(Log(), IsEmpty());
    EXPECT_TRUE(output.calls.isEmpty());
}

TEST_F(OutputSettingsTest, PictureBoxesInvertTheirTags) {
    Open();
    QStringList shown;
    QObject::connect(&settings, &OutputSettings::CheckOutShown, [&](int index, bool ticked) {
        shown << QStringLiteral("%1 %2").arg(index).arg(static_cast<int>(ticked));
    });
    settings.SetCheckOut(3, CheckAction::Click);
    EXPECT_TRUE(settings.IsTicked(OutputBox::chADPCM));
    settings.SetCheckOut(3, CheckAction::Show);
    EXPECT_TRUE(settings.IsTicked(OutputBox::chADPCM));
    settings.SetCheckOut(3, CheckAction::Click);
    EXPECT_EQ(Utf8(settings.CheckOutTag(3)), "0");
    settings.SetCheckOut(-1, CheckAction::Click);
    EXPECT_THAT(ToTexts(shown), ElementsAre("3 1", "3 1", "3 0"));
}

TEST_F(OutputSettingsTest, EachOpeningStartsFromTheDefaults) {
    Open();
    settings.opFreq_Click(0);
    Tick(OutputBox::chGSM);
    ConverterTool opened(components, program, playlist);
    ConverterRules& again = opened.rules;
    again.Load();
    EXPECT_EQ(again.State.SampleRate, 44100);
    EXPECT_FALSE(again.Settings.IsTicked(OutputBox::chGSM));
    EXPECT_EQ(again.State.Mp3Options.frequency, 44100);
    EXPECT_EQ(again.State.Mp3Options.bitrate, 128);
    EXPECT_EQ(again.State.Mp3Options.channels, 2);
}

} // namespace
} // namespace kestrune::convert
