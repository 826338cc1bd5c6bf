// The volume knob on screen: the knob, its dot and its four marks.
#pragma once

#include "playback/volume_knob.h"

#include <QWidget>
#include <array>

namespace kestrune {

// Lies over the whole window's knob place; its children are ImageVolumeButtonB (knob), ImageVolumeButtonA
// (dot) and ImageVol(0..3) (marks). The knob must outlive it. Window thread.
class VolumeKnobView : public QWidget {
    Q_OBJECT
public:
    VolumeKnobView(VolumeKnob& knob, const KnobGeometry& geometry, QWidget* parent = nullptr);
    // Shows what the knob holds.
    void ShowKnob();

signals:
    void VolumeChosen(qint32 volume); // of the knob, 0 to 65535

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Turn(const QPointF& position);
    void Step(qint32 change);
    void Chosen();

    VolumeKnob& knob_;
    KnobGeometry geometry_;
    QWidget* dot_;
    std::array<QWidget*, 4> marks_{};
};

} // namespace kestrune
