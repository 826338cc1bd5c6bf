#include "playback/volume_knob_view.h"

#include "components/audio_player.h"
#include "playback/volume_mark_button.h"
#include "skin/skin_colours.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr qint32 keyStep = fullVolume / 32;
constexpr qint32 pageStep = fullVolume / 8;
constexpr int wheelNotch = 120;

int PercentOf(qint32 volume) {
    return static_cast<int>(std::lround(100.0 * volume / fullVolume));
}

} // namespace

VolumeKnobView::VolumeKnobView(VolumeKnob& knob, const KnobGeometry& geometry, const KnobPictures& pictures,
                               QWidget* parent)
    : QWidget(parent),
      knob_(knob),
      geometry_(geometry),
      pictures_(pictures),
      dot_(new PictureLabel(pictures.strip, this)) {
    setObjectName(QStringLiteral("ImageVolumeButtonB"));
    InstallSliderAccess();
    setAccessibleName(tr("Volume"));
    setFocusPolicy(Qt::StrongFocus);
    setGeometry(static_cast<int>(geometry.knobLeft), static_cast<int>(geometry.knobTop),
                static_cast<int>(geometry.knobWidth), static_cast<int>(geometry.knobWidth));
    // The mouse goes through the dot to the knob, whose own coordinates the rule takes.
    dot_->setObjectName(QStringLiteral("ImageVolumeButtonA"));
    const QSize dotSize(static_cast<int>(geometry.dotSize), static_cast<int>(geometry.dotSize));
    dot_->resize(dotSize);
    dot_->SetCut({pictures.dot, dotSize});
    for (size_t i = 0; i < marks_.size(); ++i) {
        auto* mark = new VolumeMarkButton(pictures.strip, pictures.litMarks[i], parent);
        mark->setObjectName(QStringLiteral("ImageVol(%1)").arg(i));
        mark->setAccessibleName(tr("Volume %1 %").arg(PercentOf(knobMarks[i].volume)));
        mark->setGeometry(pictures.markPlaces[i]);
        connect(mark, &QAbstractButton::clicked, this, [this, i] {
            knob_.ChooseMark(static_cast<int>(i));
            Chosen();
        });
        marks_[i] = mark;
    }
}

int VolumeKnobView::Percent() const {
    return PercentOf(knob_.Volume());
}

void VolumeKnobView::ShowKnob() {
    const std::array<bool, volumeMarkCount> lit = LitMarks(knob_.Volume());
    for (size_t i = 0; i < marks_.size(); ++i) {
        static_cast<VolumeMarkButton*>(marks_[i])->SetLit(lit[i]);
    }
    dot_->move(static_cast<int>(std::lround(knob_.Dot().left - geometry_.knobLeft)),
               static_cast<int>(std::lround(knob_.Dot().top - geometry_.knobTop)));
    setToolTip(tr("Volume %1 %").arg(Percent()));
    if (toldPercent_ != Percent()) {
        toldPercent_ = Percent();
        TellSliderValue(this, toldPercent_);
    }
}

void VolumeKnobView::ChooseScaleValue(double value) {
    knob_.SetVolume(static_cast<qint32>(std::lround(value * fullVolume / Scale().highest)));
    Chosen();
}

void VolumeKnobView::Chosen() {
    ShowKnob();
    emit VolumeChosen(knob_.Volume());
}

void VolumeKnobView::Turn(const QPointF& position) {
    if (knob_.MoveValumeButton(1, position.x() * twipsPerPixel, position.y() * twipsPerPixel)) {
        Chosen();
    }
}

void VolumeKnobView::Step(qint32 change) {
    knob_.SetVolume(knob_.Volume() + change);
    Chosen();
}

void VolumeKnobView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        setFocus(Qt::MouseFocusReason);
        Turn(event->position());
    }
}

void VolumeKnobView::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton)) {
        Turn(event->position());
    }
}

void VolumeKnobView::wheelEvent(QWheelEvent* event) {
    Step(event->angleDelta().y() * keyStep / wheelNotch);
}

void VolumeKnobView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Right:
        Step(keyStep);
        break;
    case Qt::Key_Down:
    case Qt::Key_Left:
        Step(-keyStep);
        break;
    case Qt::Key_PageUp:
        Step(pageStep);
        break;
    case Qt::Key_PageDown:
        Step(-pageStep);
        break;
    case Qt::Key_Home:
        Step(-fullVolume);
        break;
    case Qt::Key_End:
        Step(fullVolume);
        break;
    default:
        event->ignore();
        break;
    }
}

void VolumeKnobView::paintEvent(QPaintEvent* /*event*/) {
    if (!hasFocus()) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours::accent, 1));
    painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
}

} // namespace kestrune
