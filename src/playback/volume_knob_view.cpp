#include "playback/volume_knob_view.h"

#include "components/audio_player.h"

#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <cmath>

namespace kestrune {

namespace {

constexpr qint32 keyStep = fullVolume / 32;
constexpr int markSize = 8;
constexpr int wheelNotch = 120;
const QColor accent(128, 128, 255);

} // namespace

VolumeKnobView::VolumeKnobView(VolumeKnob& knob, const KnobGeometry& geometry, QWidget* parent)
    : QWidget(parent), knob_(knob), geometry_(geometry), dot_(new QWidget(this)) {
    setObjectName(QStringLiteral("ImageVolumeButtonB"));
    setAccessibleName(tr("Volume"));
    setFocusPolicy(Qt::StrongFocus);
    setGeometry(static_cast<int>(geometry.knobLeft), static_cast<int>(geometry.knobTop),
                static_cast<int>(geometry.knobWidth), static_cast<int>(geometry.knobWidth));
    // The mouse goes through the dot to the knob, whose own coordinates the rule takes.
    dot_->setObjectName(QStringLiteral("ImageVolumeButtonA"));
    dot_->setAttribute(Qt::WA_TransparentForMouseEvents);
    dot_->setStyleSheet(QStringLiteral("background:#8080ff;border-radius:4px"));
    for (size_t i = 0; i < marks_.size(); ++i) {
        auto* mark = new QToolButton(parent);
        mark->setObjectName(QStringLiteral("ImageVol(%1)").arg(i));
        mark->setAccessibleName(tr("Volume mark %1").arg(i + 1));
        mark->setAutoRaise(true);
        // The marks stand outside the rim, on the line from the centre through the place of their dot.
        const double centreX = geometry.knobLeft + geometry.knobWidth / 2;
        const double centreY = geometry.knobTop + geometry.knobWidth / 2;
        const double dx = knobMarks[i].dotLeft + geometry.dotSize / 2 - centreX;
        const double dy = knobMarks[i].dotTop + geometry.dotSize / 2 - centreY;
        const double scale = (geometry.knobWidth / 2 + markSize) / std::max(1.0, std::hypot(dx, dy));
        mark->setGeometry(static_cast<int>(std::lround(centreX + dx * scale)) - markSize / 2,
                          static_cast<int>(std::lround(centreY + dy * scale)) - markSize / 2, markSize,
                          markSize);
        connect(mark, &QToolButton::clicked, this, [this, i] {
            knob_.ChooseMark(static_cast<int>(i));
            Chosen();
        });
        marks_[i] = mark;
    }
}

void VolumeKnobView::ShowKnob() {
    const std::array<bool, 4> lit = LitMarks(knob_.Volume());
    for (size_t i = 0; i < marks_.size(); ++i) {
        marks_[i]->setStyleSheet(lit[i] ? QStringLiteral("background:#8080ff;border-radius:3px")
                                        : QStringLiteral("background:#141414;border-radius:3px"));
    }
    dot_->setGeometry(static_cast<int>(std::lround(knob_.Dot().left - geometry_.knobLeft)),
                      static_cast<int>(std::lround(knob_.Dot().top - geometry_.knobTop)),
                      static_cast<int>(geometry_.dotSize), static_cast<int>(geometry_.dotSize));
    update();
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
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? QPen(accent, 1) : QPen(QColor(20, 20, 20), 1));
    painter.setBrush(QColor(0x2A, 0x2E, 0x35));
    painter.drawEllipse(rect().adjusted(1, 1, -1, -1));
}

} // namespace kestrune
