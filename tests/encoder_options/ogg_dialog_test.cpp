// The Ogg Vorbis options dialog by mouse and keys.
#include "encoder_options/ogg_dialog.h"

#include "dialog_fixture.h"
#include "support/fake_audio_format.h"
#include "support/fake_user_prompts.h"

namespace kestrune {
namespace {

class OggDialogTest : public DialogTest {
protected:
    FakeAudioFormat file;
    FakeUserPrompts prompts;
    QString text;
    OggDialog converter{{file, prompts, [this](const QString& shown) { text = shown; }}, 22050, 1, nullptr};
};

TEST_F(OggDialogTest, BeginsWithTheConvertersRateAndChannels) {
    Show(converter);
    EXPECT_EQ(converter.objectName(), QStringLiteral("ConverterfrmOgg"));
    EXPECT_EQ(converter.windowTitle(), QStringLiteral("Ogg Vorbis Option"));
    EXPECT_EQ(Find<QComboBox>("cmbFrequency")->currentData().toInt(), 22050);
    EXPECT_EQ(Find<QComboBox>("cmbChMode")->currentText(), QStringLiteral("Mono"));
    Click(Ok);
    EXPECT_FALSE(converter.isVisible());
    EXPECT_EQ(text, QStringLiteral("SetFormatOggVorbis 22050 1 128 0 0 -1"));
}

TEST_F(OggDialogTest, TheRippersBeginsWithStereoAt44100) {
    OggDialog ripper(file, prompts, nullptr);
    Show(ripper);
    EXPECT_EQ(ripper.objectName(), QStringLiteral("RipfrmOgg"));
    EXPECT_EQ(Find<QComboBox>("cmbFrequency")->currentIndex(), 7);
    EXPECT_EQ(Find<QComboBox>("cmbChMode")->currentIndex(), 1);
    Click(Ok);
    EXPECT_EQ(file.calls.last(), QStringLiteral("SetFormatOggVorbis 44100 2 128 0 0 -1"));
    EXPECT_TRUE(text.isEmpty());
}

TEST_F(OggDialogTest, TextsAndBounds) {
    Show(converter);
    EXPECT_EQ(Find<QGroupBox>("frmFrequency")->title(), QStringLiteral("Sampling Frequency"));
    EXPECT_EQ(Find<QGroupBox>("frmChMode")->title(), QStringLiteral("Channels Mode"));
    EXPECT_EQ(Find<QGroupBox>("frmQuality")->title(), QStringLiteral("Quality (Compression)"));
    EXPECT_EQ(Find<QGroupBox>("frmOption")->title(), QStringLiteral("Option"));
    EXPECT_EQ(Find<QCheckBox>("chVbr")->text(), QStringLiteral("VBR Enabled"));
    EXPECT_EQ(Find<QCheckBox>("chQuality")->text(), QStringLiteral("Quality Enabled"));
    EXPECT_EQ(Entries("cmbChMode"), QStringList({"Mono", "Stereo"}));
    EXPECT_EQ(Entries("cmbFrequency").size(), 9);
    EXPECT_EQ(Entries("cmbFrequency").first(), QStringLiteral("  8 000 Hz"));
    for (const char* name : {"sldrBitrate", "sldrMinBitrate", "sldrMaxBitrate"}) {
        EXPECT_EQ(Find<QSlider>(name)->minimum(), 0);
        EXPECT_EQ(Find<QSlider>(name)->maximum(), 14);
        EXPECT_EQ(Find<QSlider>(name)->value(), 9);
        EXPECT_FALSE(Find<QSlider>(name)->accessibleName().isEmpty());
    }
    EXPECT_EQ(Find<QSlider>("sldrQuality")->maximum(), 1000);
    EXPECT_EQ(Find<QSlider>("sldrQuality")->tickInterval(), 100);
}

TEST_F(OggDialogTest, EachSliderSetsItsOwnRate) {
    Show(converter);
    ClickMark(QStringLiteral("chVbr"));
    EXPECT_EQ(Text("lblBitrate"), "128 kbit");
    Find<QSlider>("sldrBitrate")->setValue(4);
    Find<QSlider>("sldrMinBitrate")->setValue(3);
    Find<QSlider>("sldrMaxBitrate")->setValue(5);
    EXPECT_EQ(Text("lblBitrate"), "48 kbit");
    EXPECT_EQ(Text("lblMinBitrate"), "32 kbit");
    EXPECT_EQ(Text("lblMaxBitrate"), "56 kbit");
    Click(Apply);
    EXPECT_TRUE(converter.isVisible());
    EXPECT_EQ(text, QStringLiteral("SetFormatOggVorbis 22050 1 48 32 56 -1"));
}

TEST_F(OggDialogTest, TheToolTipOfTheQualityIsAHundredthOfItsValue) {
    Show(converter);
    auto* quality = Find<QSlider>("sldrQuality");
    EXPECT_EQ(quality->value(), 300);
    EXPECT_EQ(quality->toolTip(), QStringLiteral("3"));
    ClickMark(QStringLiteral("chQuality"));
    QTest::keyClick(quality, Qt::Key_Right);
    EXPECT_EQ(quality->toolTip(), QStringLiteral("3.1"));
    QTest::keyClick(quality, Qt::Key_PageUp);
    EXPECT_EQ(quality->toolTip(), QStringLiteral("4.1"));
    Click(Ok);
    EXPECT_EQ(text, QStringLiteral("SetFormatOggVorbis 22050 1 128 0 0 410"));
}

TEST_F(OggDialogTest, TheBoxesSwitchTheFrames) {
    Show(converter);
    const QList<const char*> vbr = {"frmVbr", "sldrMinBitrate", "sldrMaxBitrate", "lblMinBitrate",
                                    "lblMaxBitrate"};
    const QList<const char*> bitrate = {"chVbr", "sldrBitrate", "lblBitrate"};
    const auto expect = [&](bool vbrOn, bool bitrateOn, bool qualityOn) {
        for (const char* name : vbr) {
            EXPECT_EQ(IsEnabled(name), vbrOn) << name;
        }
        for (const char* name : bitrate) {
            EXPECT_EQ(IsEnabled(name), bitrateOn) << name;
        }
        EXPECT_EQ(IsEnabled("sldrQuality"), qualityOn);
    };
    expect(false, true, false);
    ClickMark(QStringLiteral("chVbr"));
    expect(true, true, false);
    ClickMark(QStringLiteral("chQuality"));
    expect(false, false, true);
    EXPECT_TRUE(IsEnabled("frmQuality"));
    ClickMark(QStringLiteral("chQuality"));
    expect(true, true, false);
    // Switching VBR off takes the frame of the quality with it, not its own.
    EXPECT_TRUE(IsEnabled("frmQuality"));
    ClickMark(QStringLiteral("chVbr"));
    EXPECT_FALSE(IsEnabled("frmQuality"));
    EXPECT_TRUE(IsEnabled("frmVbr"));
    EXPECT_FALSE(IsEnabled("sldrMinBitrate"));
}

TEST_F(OggDialogTest, OkStaysOpenOverAFormatThatIsNotOffered) {
    file.refusedFormats = {QStringLiteral("IsAvailableFormatOggVorbis")};
    Show(converter);
    Click(Ok);
    EXPECT_TRUE(converter.isVisible());
    QTest::keyClick(&converter, Qt::Key_Return);
    EXPECT_TRUE(converter.isVisible());
    Click(Apply);
    EXPECT_EQ(prompts.messages.size(), 3);
    EXPECT_EQ(prompts.messages[0].text, QStringLiteral("Incorrect format"));
    EXPECT_TRUE(text.isEmpty());
    Click(Cancel);
    EXPECT_FALSE(converter.isVisible());
}

TEST_F(OggDialogTest, CancelSetsNothing) {
    Show(converter);
    QTest::keyClick(&converter, Qt::Key_Escape);
    EXPECT_FALSE(converter.isVisible());
    EXPECT_TRUE(file.calls.isEmpty());
}

TEST_F(OggDialogTest, TabComesToWhatCanBeUsed) {
    Show(converter);
    EXPECT_EQ(TabRound(), QStringList({"cmbFrequency", "cmbChMode", "chQuality", "chVbr", "sldrBitrate",
                                       "ImageCMD(0)", "ImageCMD(1)", "ImageCMD(2)", "ImageQuit"}));
}

} // namespace
} // namespace kestrune
