// Names and texts of the MP3 options dialog.
#include "dialog_fixture.h"
#include "encoder_options/mp3_dialog.h"
#include "encoder_options/mp3_presets.h"
#include "support/fake_audio_format.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>

namespace kestrune {
namespace {

class Mp3DialogTextTest : public DialogTest {
protected:
    Mp3DialogTextTest() { dialog = &converter; }

    FakeAudioFormat file;
    Mp3Options options;
    Mp3Dialog converter{options, {file}, nullptr};
};

TEST_F(Mp3DialogTextTest, HasItsTitleAndTabs) {
    EXPECT_EQ(converter.objectName(), QStringLiteral("ConverterfrmMP3"));
    EXPECT_EQ(converter.windowTitle(), QStringLiteral("MP3 Lame 3.91 Encoder Option"));
    const auto* tabs = Find<QTabWidget>("tabMP3");
    const QStringList texts = {"General", "Filtering",  "VBR",         "Expert",
                               "Preset",  "Alt-Preset", "Command Line"};
    ASSERT_EQ(tabs->count(), texts.size());
    for (int tab = 0; tab < tabs->count(); ++tab) {
        EXPECT_EQ(tabs->tabText(tab), texts[tab]);
    }
    EXPECT_EQ(tabs->currentIndex(), 0);
}

TEST_F(Mp3DialogTextTest, ListsHaveTheirEntries) {
    EXPECT_EQ(Entries("cmbFrequency"),
              QStringList({"  8 000 Hz", "11 025 Hz", "12 000 Hz ", "16 000 Hz", "22 050 Hz", "24 000 Hz",
                           "32 000 Hz", "44 100 Hz", "48 000 Hz"}));
    const QList<int> rates = {8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000};
    for (int index = 0; index < rates.size(); ++index) {
        EXPECT_EQ(Find<QComboBox>("cmbFrequency")->itemData(index).toInt(), rates[index]);
    }
    EXPECT_EQ(Entries("cmbChMode"),
              QStringList({"Mono", "Stereo", "Joint Stereo", "Forced Joint Stereo", "Dual Channels"}));
    EXPECT_EQ(Entries("cmbVBRCodingMethod"), QStringList({"None", "Default", "Old", "New", "MTRH", "ABR"}));
    EXPECT_EQ(Entries("cmbATHControl"),
              QStringList({"default", "only", "disabled", "only for short blocks"}));
    EXPECT_EQ(Entries("cmbEmphasis"), QStringList({"default", "0/15 microseconds", "citt j.17"}));
}

TEST_F(Mp3DialogTextTest, FramesAndLabelsHaveTheirTexts) {
    const std::pair<const char*, const char*> frames[] = {
        {"frmChMode", "Channels Mode"},         {"frmQuality", "Encoder Quality"},
        {"frmFrequency", "Sampling Frequency"}, {"frmHFilt", "HighPass Filter"},
        {"frmLFilt", "LowPass Filter"},         {"frmVbrBitrate", "Maximum VBR Bitrate"},
        {"frmVbrAdvanced", "Advanced"}};
    for (const auto& [name, text] : frames) {
        EXPECT_EQ(Find<QGroupBox>(name)->title(), QLatin1String(text));
    }
    EXPECT_EQ(Text("lblHFiltW"), "Width of Highpass filter (in Hz):");
    EXPECT_EQ(Text("lblLFiltW"), "Width of Lowpass filter (in Hz):");
    EXPECT_EQ(Text("lblVbrQuality"), "VBR Quality:");
    EXPECT_EQ(Text("lblAbrBitrate"), "Targed bitrate for ABR:");
    QStringList labels;
    for (const QLabel* label : converter.findChildren<QLabel*>()) {
        labels << label->text();
    }
    for (const char* text :
         {"poor", "good", "faster", "better", "Coding Method:", "ATH Control:", "De-emphasis :"}) {
        EXPECT_TRUE(labels.contains(QLatin1String(text))) << text;
    }
}

TEST_F(Mp3DialogTextTest, CheckBoxesAndOptionsHaveTheirTexts) {
    const std::pair<const char*, const char*> boxes[] = {
        {"chHFilt", "Highpass filtering frequency (in Hz):"},
        {"chLFilt", "Lowpass filtering frequency (in Hz):"},
        {"chWriteVBRHeader", "Write VBR Header"},
        {"chStrictlyEnforceMinBitrate", "Strictly enforce minimum bitrate"},
        {"chErrorProtection", "include CRC -Checksums"},
        {"chBlockType", "allow block types to differ between channels"},
        {"chBitReservoir", "bit reservoir"},
        {"chShortBlocks", "short blocks"},
        {"chStrictlyISOCompliance", "comply as much as possible to ISO MPEG spec"}};
    for (const auto& [name, text] : boxes) {
        EXPECT_EQ(Find<QCheckBox>(name)->text(), QLatin1String(text));
    }
    const QStringList presets = {"Phone", "SW",   "AM", "FM",     "Voice", "Radio",
                                 "Tape",  "HiFi", "CD", "Studio", "R3Mix"};
    for (int number = 1; number <= 11; ++number) {
        EXPECT_EQ(Find<QAbstractButton>(QStringLiteral("opPreset(%1)").arg(number))->text(),
                  presets[number - 1]);
    }
    const QStringList altPresets = {"Fast Standard", "Standard", "Fast Extreme", "Extrene", "Insane"};
    for (int number = 1; number <= 5; ++number) {
        EXPECT_EQ(Find<QAbstractButton>(QStringLiteral("opAltPreset(%1)").arg(number))->text(),
                  altPresets[number - 1]);
    }
}

TEST_F(Mp3DialogTextTest, NumbersHaveTheirBounds) {
    for (const char* name : {"udHFiltF", "udHFiltW", "udLFiltF", "udLFiltW"}) {
        const auto* spinner = Find<QSpinBox>(name);
        EXPECT_EQ(spinner->minimum(), 0);
        EXPECT_EQ(spinner->maximum(), 48000);
        EXPECT_EQ(spinner->singleStep(), 10);
    }
    EXPECT_EQ(Find<QSpinBox>("udAbrBitrate")->minimum(), 4);
    EXPECT_EQ(Find<QSpinBox>("udAbrBitrate")->maximum(), 320);
    EXPECT_EQ(Find<QSpinBox>("udAbrBitrate")->singleStep(), 1);
    EXPECT_EQ(Find<QSpinBox>("udVbrQuality")->minimum(), 0);
    EXPECT_EQ(Find<QSpinBox>("udVbrQuality")->maximum(), 9);
    for (const char* name : {"sldrBitrate", "sldrVbrBitrate"}) {
        EXPECT_EQ(Find<QSlider>(name)->minimum(), 0);
        EXPECT_EQ(Find<QSlider>(name)->maximum(), 14);
    }
    EXPECT_EQ(Find<QSlider>("sldrQuality")->minimum(), 0);
    EXPECT_EQ(Find<QSlider>("sldrQuality")->maximum(), 9);
}

// Beside each preset stands what it sets.
TEST_F(Mp3DialogTextTest, APresetSaysWhatItComesTo) {
    EXPECT_EQ(Find<QWidget>("opPreset(1)")->accessibleDescription(), QStringLiteral("16 kbit average, Mono"));
    EXPECT_EQ(Find<QWidget>("opPreset(11)")->accessibleDescription(),
              QStringLiteral("VBR quality 3, MTRH, Joint Stereo"));
    EXPECT_EQ(Find<QWidget>("opAltPreset(5)")->accessibleDescription(),
              QStringLiteral("320 kbit, Joint Stereo"));
}

// An example that does nothing would teach something wrong.
TEST_F(Mp3DialogTextTest, EveryExampleOfACommandLineChangesSomething) {
    const auto same = [](const Mp3Options& a, const Mp3Options& b) {
        return a.bitrate == b.bitrate && a.vbrMethod == b.vbrMethod && a.vbrQuality == b.vbrQuality &&
               a.maxVbrBitrate == b.maxVbrBitrate && a.abrBitrate == b.abrBitrate &&
               a.channelMode == b.channelMode && a.quality == b.quality &&
               a.crcProtection == b.crcProtection && a.frequency == b.frequency &&
               a.lowpassFrequency == b.lowpassFrequency;
    };
    for (const CommandLineExample& example : commandLineExamples) {
        Mp3Options changed;
        ApplyCommandLine(changed, QLatin1String(example.option));
        EXPECT_FALSE(same(changed, {})) << example.option;
    }
}

TEST_F(Mp3DialogTextTest, EveryControlThatTakesKeysHasAName) {
    int controls = 0;
    for (const QWidget* control : converter.findChildren<QWidget*>()) {
        const auto* button = qobject_cast<const QAbstractButton*>(control);
        if ((control->focusPolicy() & Qt::TabFocus) == 0 || control->focusProxy() != nullptr ||
            qobject_cast<const QLineEdit*>(control) != nullptr ||
            control->objectName().startsWith(QLatin1String("qt_"))) {
            continue;
        }
        ++controls;
        EXPECT_FALSE(control->objectName().isEmpty()) << control->metaObject()->className();
        EXPECT_TRUE(!control->accessibleName().isEmpty() || (button != nullptr && !button->text().isEmpty()))
            << control->objectName().toStdString();
    }
    EXPECT_GE(controls, 40);
    EXPECT_FALSE(Find<QWidget>("txtCommLine")->accessibleName().isEmpty());
}

} // namespace
} // namespace kestrune
