#include "skin/window_chrome.h"

#include "skin/compositor.h"
#include "skin/corner_sizes.h"
#include "skin/graphite.h"
#include "skin/hand_cursor.h"
#include "skin/skin_picture.h"

#include <QAbstractButton>
#include <QGuiApplication>
#include <QLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QRegion>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <algorithm>

namespace kestrune {

namespace {

// The compositor places the windows of its clients; they can only ask it to begin a move.
bool WindowsMoveThemselves() {
    return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

QRegion CornerRegion(const QSize& size, const QSize& ellipse) {
    QRegion region;
    const std::vector<int> insets = CornerInsets(size, ellipse);
    for (size_t row = 0; row < insets.size(); ++row) {
        region += QRect(insets[row], static_cast<int>(row), size.width() - 2 * insets[row], 1);
    }
    return region;
}

} // namespace

WindowChrome::WindowChrome(QWidget* window, const QSize& ellipse)
    : QObject(window), window_(window), ellipse_(ellipse) {
    window->setWindowFlags(window->windowFlags() | Qt::Window | Qt::FramelessWindowHint);
    window->setAttribute(Qt::WA_TranslucentBackground);
    window->installEventFilter(this);
    hover_.Watch(window);
}

void WindowChrome::SetBackground(const SkinPicture* background) {
    background_ = background;
    body_ = {};
    window_->update();
}

void WindowChrome::SetCorners(const QSize& ellipse) {
    ellipse_ = ellipse;
    body_ = {};
    ApplyCorners();
    window_->update();
}

void WindowChrome::AddTitle(QWidget* title) {
    titles_.append(title);
    title->installEventFilter(this);
    AddHand(title);
}

void WindowChrome::AddHand(QWidget* part) {
    hands_.append(part);
    if (handRatio_ > 0) {
        part->setCursor(HandCursor(handRatio_));
    }
}

void WindowChrome::ApplyHands() {
    const qreal ratio = window_->devicePixelRatioF();
    if (qFuzzyCompare(ratio, handRatio_)) {
        return;
    }
    handRatio_ = ratio;
    const QCursor hand = HandCursor(ratio);
    for (const QPointer<QWidget>& part : std::as_const(hands_)) {
        if (part != nullptr) {
            part->setCursor(hand);
        }
    }
}

void WindowChrome::AddHandToButtons() {
    for (QAbstractButton* button : window_->findChildren<QAbstractButton*>()) {
        AddHand(button);
    }
}

void WindowChrome::CentreOn(const QRect& ground) {
    // Before its first layout a window has a size that has nothing to do with what is in it.
    if (window_->layout() != nullptr && !window_->isVisible()) {
        window_->adjustSize();
    }
    window_->move(ground.left() + (ground.width() - window_->width()) / 2,
                  ground.top() + (ground.height() - window_->height()) / 2);
}

void WindowChrome::Centre() {
    CentreOn(window_->screen()->geometry());
}

void WindowChrome::CentreOver(const QWidget& owner) {
    CentreOn(owner.window()->geometry());
    const QRect screen = owner.screen()->availableGeometry();
    const QPoint room(screen.width() - window_->width(), screen.height() - window_->height());
    const QPoint place = window_->pos() - screen.topLeft();
    window_->move(screen.topLeft() + QPoint(std::clamp(place.x(), 0, std::max(0, room.x())),
                                            std::clamp(place.y(), 0, std::max(0, room.y()))));
}

void WindowChrome::ApplyCorners() {
    const bool transparent = HasCompositor();
    if (transparent != transparent_) {
        transparent_ = transparent;
        body_ = {};
    }
    if (transparent) {
        window_->clearMask();
    } else {
        window_->setMask(CornerRegion(window_->size(), ellipse_));
    }
}

QPixmap WindowChrome::Body() const {
    const qreal ratio = window_->devicePixelRatioF();
    QPixmap body((QSizeF(window_->size()) * ratio).toSize());
    body.setDevicePixelRatio(ratio);
    body.fill(Qt::transparent);
    QPainter painter(&body);
    if (background_ != nullptr && background_->IsValid()) {
        background_->PaintWhole(painter);
    } else {
        PaintGraphite(painter, window_->size(), ellipse_);
    }
    if (transparent_) {
        QPixmap shape(body.size());
        shape.setDevicePixelRatio(ratio);
        shape.fill(Qt::transparent);
        QPainter cutter(&shape);
        cutter.setRenderHint(QPainter::Antialiasing);
        cutter.setPen(Qt::NoPen);
        cutter.setBrush(Qt::black);
        cutter.drawRoundedRect(QRectF(QPointF(), QSizeF(window_->size())), ellipse_.width() / 2.0,
                               ellipse_.height() / 2.0);
        cutter.end();
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.drawPixmap(0, 0, shape);
    }
    return body;
}

void WindowChrome::PaintBody() {
    const qreal ratio = window_->devicePixelRatioF();
    if (body_.isNull() || body_.size() != (QSizeF(window_->size()) * ratio).toSize() ||
        !qFuzzyCompare(body_.devicePixelRatio(), ratio)) {
        body_ = Body();
    }
    QPainter painter(window_);
    painter.drawPixmap(0, 0, body_);
}

bool WindowChrome::TitleEvent(QWidget* title, QEvent* event) {
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseMove &&
        event->type() != QEvent::MouseButtonRelease) {
        return false;
    }
    const auto* mouse = static_cast<QMouseEvent*>(event);
    // Taken from where the window is now: a move that waited in the queue was made before the window's last
    // one.
    const QPointF place = title->mapFromGlobal(mouse->globalPosition());
    if (event->type() == QEvent::MouseButtonPress) {
        if (WindowsMoveThemselves()) {
            drag_.Press(place);
        } else if (mouse->button() == Qt::LeftButton && window_->windowHandle() != nullptr) {
            window_->windowHandle()->startSystemMove();
        }
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        drag_.Release();
        return true;
    }
    const std::optional<QPoint> moved = drag_.Move(mouse->buttons(), place, window_->pos());
    if (moved) {
        window_->move(*moved);
    }
    return moved.has_value();
}

bool WindowChrome::eventFilter(QObject* watched, QEvent* event) {
    if (watched != window_) {
        auto* title = qobject_cast<QWidget*>(watched);
        return title != nullptr && titles_.contains(title) && TitleEvent(title, event);
    }
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Resize:
        ApplyCorners();
        ApplyHands();
        break;
    case QEvent::Paint:
        ApplyHands();
        PaintBody();
        break;
    case QEvent::ScreenChangeInternal:
        window_->update();
        break;
    default:
        break;
    }
    return false;
}

} // namespace kestrune
