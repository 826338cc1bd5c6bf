#include "playback/band_fader_widget.h"

#include "playback/equalizer_bands.h"
#include "skin/skin_colours.h"

#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr double slotWidth = 3;
constexpr double capWidth = 15;
constexpr double capHeight = 8;
constexpr int wheelNotch = 120;
constexpr int pageStepDb = 3;

const QColor capTop(0x5B, 0x62, 0x6E);
const QColor capBottom(0x2A, 0x2E, 0x35);

void PaintSlot(QPainter& painter, double middleX, double top, double bottom) {
    const QRectF slot(middleX - slotWidth / 2, top, slotWidth, bottom - top);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 26));
    painter.drawRoundedRect(slot.translated(0.5, 0.6), slotWidth / 2, slotWidth / 2);
    painter.setBrush(QColor(6, 6, 8));
    painter.drawRoundedRect(slot, slotWidth / 2, slotWidth / 2);
}

// From the middle of the travel to the cap.
void PaintLight(QPainter& painter, double middleX, double zeroY, double capY, bool isBright) {
    const double length = std::abs(capY - zeroY);
    if (length < 0.5) {
        return;
    }
    const double top = std::min(capY, zeroY);
    QLinearGradient fade(0, zeroY, 0, capY);
    QColor dim = colours::accent;
    dim.setAlpha(90);
    fade.setColorAt(0, dim);
    fade.setColorAt(1, isBright ? colours::accent.lighter(112) : colours::accent);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fade);
    painter.drawRoundedRect(QRectF(middleX - slotWidth / 2 + 0.5, top, slotWidth - 1, length), 1, 1);
}

void PaintCap(QPainter& painter, double middleX, double capY, bool isHovered, bool isDragged) {
    const QRectF cap(middleX - capWidth / 2, capY - capHeight / 2, capWidth, capHeight);
    painter.setPen(Qt::NoPen);
    if (isHovered || isDragged) {
        for (int ring = 3; ring >= 1; --ring) {
            QColor halo = colours::accent;
            halo.setAlpha(isDragged ? 34 : 20);
            painter.setBrush(halo);
            painter.drawRoundedRect(cap.adjusted(-ring, -ring, ring, ring), 2.5 + ring, 2.5 + ring);
        }
    }
    painter.setBrush(QColor(0, 0, 0, 120));
    painter.drawRoundedRect(cap.translated(0, 1.4), 2.5, 2.5);
    QLinearGradient metal(cap.topLeft(), cap.bottomLeft());
    metal.setColorAt(0, isHovered ? capTop.lighter(116) : capTop);
    metal.setColorAt(1, isHovered ? capBottom.lighter(122) : capBottom);
    painter.setBrush(metal);
    painter.setPen(QPen(QColor(10, 11, 13), 0.8));
    painter.drawRoundedRect(cap, 2.5, 2.5);
    painter.setPen(QPen(QColor(255, 255, 255, 46), 0.8));
    painter.drawLine(QPointF(cap.left() + 2.2, cap.top() + 1), QPointF(cap.right() - 2.2, cap.top() + 1));
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDragged   ? QColor(226, 226, 255)
                     : isHovered ? colours::accent.lighter(115)
                                 : colours::accent);
    painter.drawRoundedRect(QRectF(cap.left() + 3, capY - 1, capWidth - 6, 2), 1, 1);
}

} // namespace

BandFaderWidget::BandFaderWidget(int highestY, int lowestY, QWidget* parent)
    : QSlider(Qt::Vertical, parent), highestY_(highestY), lowestY_(lowestY) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSingleStep(1);
    setPageStep(pageStepDb);
    SetLargestGain(equalizerLargestGainDb);
    connect(this, &QSlider::valueChanged, this, [this](int gainDb) {
        gainDb_ = static_cast<float>(gainDb);
        emit GainChosen(gainDb_);
    });
}

void BandFaderWidget::ShowGain(float gainDb) {
    if (gainDb == gainDb_) {
        return;
    }
    const QSignalBlocker quiet(this);
    gainDb_ = gainDb;
    setValue(static_cast<int>(std::lround(gainDb)));
    update();
}

void BandFaderWidget::SetLargestGain(float gainDb) {
    const QSignalBlocker quiet(this);
    largestGainDb_ = gainDb;
    const int wholeDb = static_cast<int>(std::floor(gainDb));
    setRange(-wholeDb, wholeDb);
    update();
}

// The slider's own signal is quiet here, since it knows no halves.
void BandFaderWidget::Choose(float gainDb) {
    const float cutDb = std::clamp(gainDb, -largestGainDb_, largestGainDb_);
    if (cutDb != gainDb_) {
        ShowGain(cutDb);
        emit GainChosen(cutDb);
    }
}

double BandFaderWidget::YOf(double gainDb) const {
    const double middle = (highestY_ + lowestY_) / 2.0;
    return middle - gainDb / largestGainDb_ * (middle - highestY_);
}

double BandFaderWidget::CapY() const {
    return YOf(gainDb_);
}

float BandFaderWidget::GainAt(double y) const {
    const double middle = (highestY_ + lowestY_) / 2.0;
    const double gainDb = (middle - y) / (middle - highestY_) * largestGainDb_;
    return static_cast<float>(std::round(gainDb * 2) / 2);
}

void BandFaderWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const double offset = event->position().y() - CapY();
    grabOffset_ = std::abs(offset) <= capHeight / 2 + 1 ? offset : 0;
    isDragged_ = true;
    isRingShown_ = false;
    emit DragChanged(true);
    Choose(GainAt(event->position().y() - grabOffset_));
    update();
}

void BandFaderWidget::mouseMoveEvent(QMouseEvent* event) {
    if (isDragged_) {
        Choose(GainAt(event->position().y() - grabOffset_));
    }
}

void BandFaderWidget::EndDrag() {
    if (isDragged_) {
        isDragged_ = false;
        emit DragChanged(false);
        update();
    }
}

void BandFaderWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        EndDrag();
    }
}

void BandFaderWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        EndDrag();
        Choose(0);
    }
}

void BandFaderWidget::wheelEvent(QWheelEvent* event) {
    wheelRest_ += event->angleDelta().y();
    const int notches = wheelRest_ / wheelNotch;
    wheelRest_ -= notches * wheelNotch;
    Choose(StepGain(gainDb_, notches));
    event->accept();
}

void BandFaderWidget::keyPressEvent(QKeyEvent* event) {
    isRingShown_ = true;
    update();
    switch (event->key()) {
    case Qt::Key_Up:
        Choose(StepGain(gainDb_, 1));
        break;
    case Qt::Key_Down:
        Choose(StepGain(gainDb_, -1));
        break;
    case Qt::Key_PageUp:
        Choose(StepGain(gainDb_, pageStepDb));
        break;
    case Qt::Key_PageDown:
        Choose(StepGain(gainDb_, -pageStepDb));
        break;
    case Qt::Key_Home:
        Choose(largestGainDb_);
        break;
    case Qt::Key_End:
        Choose(-largestGainDb_);
        break;
    case Qt::Key_Delete:
    case Qt::Key_0:
        Choose(0);
        break;
    case Qt::Key_Left:
        emit NeighbourWanted(-1);
        break;
    case Qt::Key_Right:
        emit NeighbourWanted(1);
        break;
    default:
        event->ignore();
        break;
    }
}

void BandFaderWidget::focusInEvent(QFocusEvent* event) {
    isRingShown_ = event->reason() != Qt::MouseFocusReason;
    QSlider::focusInEvent(event);
    emit ActiveChanged();
}

void BandFaderWidget::focusOutEvent(QFocusEvent* event) {
    QSlider::focusOutEvent(event);
    emit ActiveChanged();
}

void BandFaderWidget::enterEvent(QEnterEvent* event) {
    QSlider::enterEvent(event);
    emit ActiveChanged();
}

void BandFaderWidget::leaveEvent(QEvent* event) {
    QSlider::leaveEvent(event);
    emit ActiveChanged();
}

void BandFaderWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1.0 : 0.35);
    const double middleX = width() / 2.0;
    const bool isHovered = isEnabled() && underMouse();
    PaintSlot(painter, middleX, highestY_ - 2, lowestY_ + 2);
    // On a whole pixel of the screen, so that its edges are sharp.
    const double capY = std::round(CapY() * devicePixelRatioF()) / devicePixelRatioF();
    PaintLight(painter, middleX, YOf(0), capY, isHovered || isDragged_);
    PaintCap(painter, middleX, capY, isHovered, isDragged_);
    if (hasFocus() && isRingShown_) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(colours::accent, 1));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), 4, 4);
    }
}

} // namespace kestrune
