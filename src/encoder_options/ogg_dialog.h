// The options of the Ogg Vorbis encoder.
#pragma once

#include "encoder_options/encoder_options_dialog.h"
#include "encoder_options/ogg_dialog_rule.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QSlider>

class QGridLayout;

namespace kestrune {

// Object "ConverterfrmOgg" or "RipfrmOgg". Make it, exec() it once, and let it go. Window thread.
class OggDialog : public EncoderOptionsDialog {
    Q_OBJECT
public:
    // The converter's: begins with its sampling rate in Hz and its channels, 1 or 2.
    OggDialog(const OggTarget& target, qint32 sampleRateHz, qint32 channels, QWidget* parent);
    // The ripper's: begins with 44,100 Hz in stereo.
    OggDialog(AudioFormat& formatObject, UserPrompts& prompts, QWidget* parent);

protected:
    bool ApplyControls() override;

private:
    // A bit rate slider with what it stands at.
    struct Rate {
        QSlider* slider = nullptr;
        QLabel* label = nullptr;
    };

    void Load();
    QGroupBox* MakeFrequency();
    QGroupBox* MakeChannels();
    QGroupBox* MakeOption();
    QGroupBox* MakeBitrate();
    QGroupBox* MakeVbr();
    QGroupBox* MakeQuality();
    void AddRate(Rate& rate, QGridLayout* grid, int row, const QString& name, const QString& caption,
                 void (OggDialogRule::*take)(int));
    void ShowQuality();
    void ShowEnabled();

    OggDialogRule rule_;
    QComboBox* cmbFrequency_ = nullptr;
    QComboBox* cmbChMode_ = nullptr;
    QCheckBox* chQuality_ = nullptr;
    QCheckBox* chVbr_ = nullptr;
    QGroupBox* frmBitrate_ = nullptr;
    Rate bitrate_;
    QGroupBox* frmVbr_ = nullptr;
    Rate minBitrate_;
    Rate maxBitrate_;
    QGroupBox* frmQuality_ = nullptr;
    QSlider* sldrQuality_ = nullptr;
    QLabel* quality_ = nullptr;
};

} // namespace kestrune
