// The volume knob on screen, with its dot and the marks round it.
#pragma once

#include "playback/volume_knob.h"
#include "skin/picture_label.h"
#include "skin/skin_picture.h"
#include "skin/slider_access.h"

#include <QAbstractButton>
#include <QRect>
#include <QWidget>
#include <array>

namespace kestrune {

inline constexpr int volumeMarkCount = 4;

// The knob itself is part of the window's picture.
struct KnobPictures {
    const SkinPicture& strip;
    QPoint dot;
    std::array<QRect, volumeMarkCount> markPlaces; // in the window
    std::array<QPoint, volumeMarkCount> litMarks;  // in the strip
};

// Wheel and keys change the volume in steps. Knob and strip must outlive the view. Window thread.
class VolumeKnobView : public QWidget, public SliderControl {
    Q_OBJECT
public:
    // The marks become children of the parent, since they stand outside the knob.
    VolumeKnobView(VolumeKnob& knob, const KnobGeometry& geometry, const KnobPictures& pictures,
                   QWidget* parent);

    // After the rule was changed by somebody else.
    void ShowKnob();
    // 0 to 100.
    int Percent() const;

    SliderScale Scale() const override { return {}; }
    double ScaleValue() const override { return Percent(); }
    void ChooseScaleValue(double value) override;

signals:
    void VolumeChosen(qint32 volume);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Turn(const QPointF& position);
    void Step(qint32 change);
    void Chosen();

    VolumeKnob& knob_;
    KnobGeometry geometry_;
    KnobPictures pictures_;
    PictureLabel* dot_;
    std::array<QAbstractButton*, volumeMarkCount> marks_{};
    int toldPercent_ = 0;
};

} // namespace kestrune
