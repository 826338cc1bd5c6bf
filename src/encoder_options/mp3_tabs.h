// The tabs of the MP3 options dialog.
#pragma once

#include "encoder_options/encoder_controls.h"
#include "encoder_options/mp3_dialog_rule.h"
#include "skin/dialog_controls.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTabWidget>

namespace kestrune {

// Object "tabMP3" with all controls of the dialog. It keeps no settings: it shows what it is given, and keeps
// captions and what can be used in step with its controls. Window thread.
class Mp3Tabs : public QTabWidget {
    Q_OBJECT
public:
    explicit Mp3Tabs(QWidget* parent);

    Mp3Tab TabInFront() const { return static_cast<Mp3Tab>(currentIndex()); }
    // What the controls show; a number that is being typed is taken in first.
    Mp3Controls Shown();
    void Show(const Mp3Controls& shown);

signals:
    void QualityMoved(int quality);
    void PresetChosen(int preset);
    void AltPresetChosen(int altPreset);

private:
    // The controls of one of the two filters.
    struct Filter {
        QCheckBox* use = nullptr;
        BoundedSpinBox* frequency = nullptr;
        QLabel* widthLabel = nullptr;
        BoundedSpinBox* width = nullptr;
    };

    void AddPage(Mp3Tab tab, QWidget* page);
    QWidget* MakeGeneral();
    QWidget* MakeFiltering();
    QGroupBox* MakeFilter(Filter& filter, const QString& letter, const QString& kind, QWidget* page);
    QWidget* MakeVbr();
    QGroupBox* MakeVbrAdvanced(QWidget* page);
    QGroupBox* MakeVbrBitrate(QWidget* page);
    QWidget* MakeExpert();
    QWidget* MakePresets();
    QWidget* MakeAltPresets();
    QWidget* MakeCommandLine();
    void EnableFilter(const Filter& filter);
    void EnableVbr();
    void ShowBitrate();
    void ShowVbrBitrate();

    QGroupBox* frmBitrate_ = nullptr;
    QSlider* sldrBitrate_ = nullptr;
    QComboBox* cmbChMode_ = nullptr;
    QSlider* sldrQuality_ = nullptr;
    QComboBox* cmbFrequency_ = nullptr;
    Filter highpass_;
    Filter lowpass_;
    QComboBox* cmbVBRCodingMethod_ = nullptr;
    QLabel* lblVbrQuality_ = nullptr;
    BoundedSpinBox* udVbrQuality_ = nullptr;
    QLabel* lblAbrBitrate_ = nullptr;
    BoundedSpinBox* udAbrBitrate_ = nullptr;
    QGroupBox* frmVbrBitrate_ = nullptr;
    QSlider* sldrVbrBitrate_ = nullptr;
    QLabel* lblVbrBitrate_ = nullptr;
    QGroupBox* frmVbrAdvanced_ = nullptr;
    QCheckBox* chWriteVBRHeader_ = nullptr;
    QCheckBox* chStrictlyEnforceMinBitrate_ = nullptr;
    QComboBox* cmbATHControl_ = nullptr;
    QComboBox* cmbEmphasis_ = nullptr;
    QCheckBox* chErrorProtection_ = nullptr;
    QCheckBox* chBlockType_ = nullptr;
    QCheckBox* chBitReservoir_ = nullptr;
    QCheckBox* chShortBlocks_ = nullptr;
    QCheckBox* chStrictlyISOCompliance_ = nullptr;
    QLineEdit* txtCommLine_ = nullptr;
};

} // namespace kestrune
