// Twelve sliders for the gains of the equalizer. The list and this panel share one place of the window.
#pragma once

#include "components/audio_player.h"

#include <QSlider>
#include <QWidget>
#include <array>

namespace kestrune {

// Objects KSTEqualizer21 (the panel) and its sliders "Band(0)" to "Band(11)", in dB. Window thread.
class EqualizerPanel : public QWidget {
    Q_OBJECT
public:
    static constexpr int largestGainDb = 15;

    explicit EqualizerPanel(QWidget* parent = nullptr);
    // Shows gains without raising GainsChanged. Gains beyond 15 dB show at the end of their slider.
    void ShowGains(const EqualizerGains& gainsDb);

signals:
    void GainsChanged(const kestrune::EqualizerGains& gainsDb);

private:
    std::array<QSlider*, equalizerBands> sliders_{};
    EqualizerGains gainsDb_{};
};

} // namespace kestrune
