#include "encoder_options/mp3_dialog.h"

#include "encoder_options/mp3_tabs.h"

namespace kestrune {

Mp3Dialog::Mp3Dialog(Mp3Options& options, const Mp3Target& target, QWidget* parent)
    : EncoderOptionsDialog(QStringLiteral("ConverterfrmMP3"), tr("MP3 Lame 3.91 Encoder Option"), parent),
      rule_(options, target),
      tabMP3_(new Mp3Tabs(this)) {
    Load();
}

Mp3Dialog::Mp3Dialog(AudioFormat& formatObject, QWidget* parent)
    : EncoderOptionsDialog(QStringLiteral("RipfrmMP3"), tr("MP3 Lame 3.91 Encoder Option"), parent),
      rule_(own_, {formatObject}),
      tabMP3_(new Mp3Tabs(this)) {
    Load();
}

void Mp3Dialog::Load() {
    Body().addWidget(tabMP3_);
    tabMP3_->Show(rule_.ShowOptions(tabMP3_->Shown()));
    connect(tabMP3_, &Mp3Tabs::QualityMoved, this, [this](int quality) { rule_.ChooseQuality(quality); });
    connect(tabMP3_, &Mp3Tabs::PresetChosen, this, [this](int preset) { rule_.ChoosePreset(preset); });
    connect(tabMP3_, &Mp3Tabs::AltPresetChosen, this,
            [this](int altPreset) { rule_.ChooseAltPreset(altPreset); });
    Finish();
    tabMP3_->tabBar()->setFocus();
}

bool Mp3Dialog::ApplyControls() {
    tabMP3_->Show(rule_.ApplyOptions(tabMP3_->TabInFront(), tabMP3_->Shown()));
    return true;
}

} // namespace kestrune
