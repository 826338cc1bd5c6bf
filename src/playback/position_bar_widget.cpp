#include "playback/position_bar_widget.h"

#include "playback/position.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int barHeight = 12;
constexpr int lineHeight = 4;
constexpr double keyStep = 4;

QWidget* Piece(QWidget* parent, const QString& name, const QString& colour) {
    auto* piece = new QWidget(parent);
    piece->setObjectName(name);
    piece->setAutoFillBackground(true);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(colour));
    piece->setPalette(palette);
    return piece;
}

} // namespace

PositionBar::PositionBar(QWidget* parent)
    : QWidget(parent),
      line_(nullptr),
      track_(Piece(this, QStringLiteral("PictureStepLine2"), QStringLiteral("#141414"))),
      thumb_(nullptr) {
    line_ = Piece(this, QStringLiteral("PictureStepLine1"), QStringLiteral("#8080ff"));
    thumb_ = Piece(this, QStringLiteral("PictureStep"), QStringLiteral("#d7daf5"));
    setFixedSize(positionBarWidth, barHeight);
    setFocusPolicy(Qt::StrongFocus);
    track_->setGeometry(0, (barHeight - lineHeight) / 2, positionBarWidth, lineHeight);
    thumb_->installEventFilter(this);
    thumb_->setVisible(false);
    Place();
}

void PositionBar::SetLineWidth(double width) {
    lineWidth_ = std::clamp(width, 0.0, static_cast<double>(positionBarWidth - thumbWidth));
    Place();
}

void PositionBar::SetThumbVisible(bool visible) {
    thumb_->setVisible(visible);
    if (!visible && dragging_) {
        dragging_ = false;
        emit DragCancelled();
    }
}

void PositionBar::Place() {
    const auto left = static_cast<int>(std::lround(lineWidth_));
    line_->setGeometry(0, (barHeight - lineHeight) / 2, left, lineHeight);
    thumb_->setGeometry(left, 0, thumbWidth, barHeight);
}

bool PositionBar::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
            dragging_ = true;
            emit DragStarted();
        }
        return true;
    case QEvent::MouseMove:
        if (dragging_) {
            const double x = static_cast<QMouseEvent*>(event)->position().x();
            const double left = thumb_->x() + x - thumbWidth / 2.0;
            if (left < positionBarWidth - thumbWidth) {
                SetLineWidth(left);
            }
        }
        return true;
    case QEvent::MouseButtonRelease:
        if (dragging_ && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
            dragging_ = false;
            emit Sought(line_->width());
        }
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

void PositionBar::keyPressEvent(QKeyEvent* event) {
    const bool back = event->key() == Qt::Key_Left;
    if (!thumb_->isVisible() || (!back && event->key() != Qt::Key_Right)) {
        event->ignore();
        return;
    }
    SetLineWidth(lineWidth_ + (back ? -keyStep : keyStep));
    emit Sought(line_->width());
}

} // namespace kestrune
