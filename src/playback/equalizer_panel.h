// The equalizer on screen: twelve faders over the curve of what they do to the sound. The list and this panel
// share one place of the window.
#pragma once

#include "playback/band_fader_widget.h"
#include "playback/equalizer_bands.h"
#include "playback/value_bubble_widget.h"

#include <QPixmap>
#include <QPolygonF>
#include <QWidget>
#include <array>

namespace kestrune {

// Objects KSTEqualizer21 (the panel) and its faders "Band(0)" to "Band(11)". 360 x 119. Window thread.
class EqualizerPanel : public QWidget {
    Q_OBJECT
public:
    explicit EqualizerPanel(QWidget* parent = nullptr);

    // The control that the panel shows; it goes with the panel.
    KSTEqualizer21& Control() { return bands_; }
    // Shows gains without raising GainsChanged. Gains beyond the range are cut to it.
    void ShowGains(const EqualizerGains& gainsDb);
    QSize sizeHint() const override;

signals:
    // Someone has moved a band: by hand, by an assistive program, or through the control.
    void GainsChanged(const kestrune::EqualizerGains& gainsDb);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void MakeFaders();
    void ShowControl();
    void Tell(int band);
    void UpdateCurve();
    double YOf(double gainDb) const;
    void DrawGlass();
    void PaintScale(QPainter& painter) const;
    void PaintLabels(QPainter& painter) const;
    void PaintCurve(QPainter& painter) const;

    EqualizerBands bands_;
    std::array<BandFaderWidget*, equalizerBands> faders_{};
    QPolygonF curve_; // of the response in dB, over x of the panel
    QPixmap glass_;   // with the lines of the scale, at the screen's scale
    float shownLargestDb_ = 0;
    ValueBubbleWidget* bubble_;
    int bubbleTimer_ = 0;
    bool isShowing_ = false; // gains are shown, not chosen
};

} // namespace kestrune
