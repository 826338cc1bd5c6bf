// Every check box and option of the encoders' dialogs acts in every way: Apply sends what was chosen.
#include "control_walk.h"
#include "encoder_options/mp3_dialog.h"
#include "encoder_options/mp3_presets.h"
#include "encoder_options/ogg_dialog.h"
#include "support/fake_audio_file.h"
#include "support/fake_user_prompts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QTabWidget>

namespace kestrune {
namespace {

void Apply(const QDialog& dialog) {
    dialog.findChild<QAbstractButton*>(QStringLiteral("ImageCMD(2)"))->click();
}

void Show(QDialog& dialog) {
    dialog.open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
}

// The number of the preset that the options are those of.
template <size_t count>
QString PresetOf(const Mp3Options& options, void (*apply)(Mp3Options&, int)) {
    for (int number = 1; number <= static_cast<int>(count); ++number) {
        Mp3Options preset = options;
        apply(preset, number);
        if (preset == options) {
            return QString::number(number);
        }
    }
    return QStringLiteral("none");
}

TEST(EncoderOptionsPresses, EveryBoxAndOptionOfMp3Acts) {
    FakeAudioFile file;
    Mp3Options options;
    Mp3Dialog dialog(options, {file, {}, {}}, nullptr);
    Show(dialog);
    auto* tabs = dialog.findChild<QTabWidget*>(QStringLiteral("tabMP3"));
    const auto held = [&](const QString& name) -> std::optional<QString> {
        Apply(dialog);
        const std::map<QString, int> flags = {
            {QStringLiteral("chHFilt"), options.highpassFrequency},
            {QStringLiteral("chLFilt"), options.lowpassFrequency},
            {QStringLiteral("chWriteVBRHeader"), options.writeVbrHeader},
            {QStringLiteral("chStrictlyEnforceMinBitrate"), options.enforceMinBitrate},
            {QStringLiteral("chErrorProtection"), options.crcProtection},
            {QStringLiteral("chBlockType"), options.blockTypesDiffer},
            {QStringLiteral("chBitReservoir"), options.bitReservoir},
            {QStringLiteral("chShortBlocks"), options.shortBlocks},
            {QStringLiteral("chStrictlyISOCompliance"), options.isoCompliance}};
        const auto flag = flags.find(name);
        if (flag != flags.end()) {
            return QString::number(flag->second);
        }
        if (name.startsWith(QLatin1String("opPreset("))) {
            return PresetOf<presetTexts.size()>(options, &ApplyPreset);
        }
        if (name.startsWith(QLatin1String("opAltPreset("))) {
            return PresetOf<altPresetTexts.size()>(options, &ApplyAltPreset);
        }
        return std::nullopt;
    };
    const auto prepare = [&](QAbstractButton& button) {
        for (int page = 0; page < tabs->count(); ++page) {
            if (tabs->widget(page)->isAncestorOf(&button)) {
                tabs->setCurrentIndex(page);
            }
        }
        if (!button.isEnabled()) {
            dialog.findChild<QComboBox*>(QStringLiteral("cmbVBRCodingMethod"))->setCurrentIndex(1);
        }
    };
    const QStringList names = ControlWalk({.window = dialog, .held = held, .prepare = prepare}).Run();
    EXPECT_EQ(names.size(), 9 + static_cast<int>(presetTexts.size() + altPresetTexts.size()))
        << names.join(u' ').toStdString();
}

TEST(EncoderOptionsPresses, EveryBoxOfOggActs) {
    FakeAudioFile file;
    FakeUserPrompts prompts;
    OggDialog dialog({file, prompts, {}}, 44100, 2, nullptr);
    Show(dialog);
    const auto held = [&](const QString& /*name*/) {
        Apply(dialog);
        return std::optional(file.calls.last());
    };
    const auto prepare = [&](QAbstractButton& button) {
        if (!button.isEnabled()) {
            dialog.findChild<QCheckBox*>(QStringLiteral("chQuality"))->click();
        }
    };
    const QStringList names = ControlWalk({.window = dialog, .held = held, .prepare = prepare}).Run();
    EXPECT_EQ(names, QStringList({"chQuality", "chVbr"}));
}

} // namespace
} // namespace kestrune
