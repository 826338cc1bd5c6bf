#include "playback/position_bar_widget.h"

#include "skin/skin_colours.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int barHeight = 12;
constexpr double keyStep = 4;
constexpr double pageStep = 24;
constexpr double wheelStep = 4;
constexpr int wheelNotch = 120;
constexpr int walkPeriodMs = 10;
constexpr double walkShare = 0.3; // of the way that is left, with each step
constexpr double lineEnd = positionBarWidth - PositionBar::thumbWidth;

} // namespace

PositionBar::PositionBar(const PositionPictures& pictures, QWidget* parent)
    : QWidget(parent),
      pictures_(pictures),
      track_(new QWidget(this)),
      line_(new PictureLabel(pictures.strip, this)),
      thumb_(new PictureLabel(pictures.strip, this)) {
    track_->setObjectName(QStringLiteral("PictureStepLine2"));
    line_->setObjectName(QStringLiteral("PictureStepLine1"));
    thumb_->setObjectName(QStringLiteral("PictureStep"));
    track_->setAttribute(Qt::WA_TransparentForMouseEvents);
    InstallSliderAccess();
    setFixedSize(positionBarWidth, barHeight);
    setFocusPolicy(Qt::StrongFocus);
    track_->setGeometry(0, (barHeight - pictures.lineHeight) / 2, positionBarWidth, pictures.lineHeight);
    thumb_->resize(thumbWidth, barHeight);
    thumb_->setVisible(false);
    walk_.setInterval(walkPeriodMs);
    connect(&walk_, &QTimer::timeout, this, [this] {
        lineWidth_ = lineWidth_ < 1 ? 0 : lineWidth_ * (1 - walkShare);
        if (lineWidth_ == 0) {
            walk_.stop();
        }
        Place();
    });
    ShowThumb();
    Place();
}

void PositionBar::SetLineWidth(double width) {
    walk_.stop();
    lineWidth_ = std::clamp(width, 0.0, lineEnd);
    Place();
}

void PositionBar::WalkToStart() {
    if (!isVisible() || lineWidth_ == 0) {
        SetLineWidth(0);
        return;
    }
    walk_.start();
}

void PositionBar::SetThumbVisible(bool visible) {
    thumb_->setVisible(visible);
    if (!visible && dragging_) {
        dragging_ = false;
        ShowThumb();
        emit DragCancelled();
    }
}

void PositionBar::Place() {
    const auto left = static_cast<int>(std::lround(lineWidth_));
    line_->setGeometry(0, (barHeight - pictures_.lineHeight) / 2, left, pictures_.lineHeight);
    line_->SetCut({pictures_.line, line_->size()});
    thumb_->move(left, 0);
    TellValue();
}

double PositionBar::ScaleValue() const {
    return std::round(lineWidth_ / lineEnd * Scale().highest);
}

void PositionBar::ChooseScaleValue(double value) {
    SetLineWidth(value / Scale().highest * lineEnd);
    emit Sought(std::round(lineWidth_));
}

void PositionBar::TellValue() {
    const double percent = ScaleValue();
    if (percent != toldPercent_) {
        toldPercent_ = percent;
        TellSliderValue(this, percent);
    }
}

void PositionBar::ShowThumb() {
    thumb_->SetCut({dragging_ || hasFocus() ? pictures_.thumbHeld : pictures_.thumb, thumb_->size()});
}

void PositionBar::DragTo(double mouseX) {
    const double left = mouseX - thumbWidth / 2.0;
    if (left < lineEnd) {
        SetLineWidth(left);
    }
}

void PositionBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || thumb_->isHidden()) {
        event->ignore();
        return;
    }
    dragging_ = true;
    ShowThumb();
    emit DragStarted();
    if (!thumb_->geometry().contains(event->position().toPoint())) {
        DragTo(std::min(event->position().x(), lineEnd + thumbWidth / 2.0 - 1));
    }
}

void PositionBar::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_ && event->buttons().testFlag(Qt::LeftButton)) {
        DragTo(event->position().x());
    }
}

void PositionBar::mouseReleaseEvent(QMouseEvent* event) {
    if (dragging_ && event->button() == Qt::LeftButton) {
        dragging_ = false;
        ShowThumb();
        emit Sought(std::round(lineWidth_));
    }
}

void PositionBar::SeekBy(double change) {
    SetLineWidth(lineWidth_ + change);
    emit Sought(std::round(lineWidth_));
}

void PositionBar::wheelEvent(QWheelEvent* event) {
    if (!CanChoose()) {
        event->ignore();
        return;
    }
    SeekBy(event->angleDelta().y() * wheelStep / wheelNotch);
}

void PositionBar::keyPressEvent(QKeyEvent* event) {
    if (!CanChoose()) {
        event->ignore();
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Down:
        SeekBy(-keyStep);
        break;
    case Qt::Key_Right:
    case Qt::Key_Up:
        SeekBy(keyStep);
        break;
    case Qt::Key_PageDown:
        SeekBy(-pageStep);
        break;
    case Qt::Key_PageUp:
        SeekBy(pageStep);
        break;
    case Qt::Key_Home:
        SeekBy(-lineEnd);
        break;
    case Qt::Key_End:
        SeekBy(lineEnd);
        break;
    default:
        event->ignore();
        break;
    }
}

void PositionBar::paintEvent(QPaintEvent* /*event*/) {
    if (!hasFocus()) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours::accent, 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), barHeight / 2.0, barHeight / 2.0);
}

void PositionBar::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    ShowThumb();
}

void PositionBar::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    ShowThumb();
}

} // namespace kestrune
