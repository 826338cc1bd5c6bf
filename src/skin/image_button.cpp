#include "skin/image_button.h"

#include "skin/hover_keeper.h"
#include "skin/image_button_access.h"
#include "skin/skin_colours.h"
#include "skin/skin_picture.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

namespace kestrune {

namespace {

constexpr int fadeMs = 120;
constexpr qreal focusRadius = 3;

bool IsEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool IsKeyboardReason(Qt::FocusReason reason) {
    return reason != Qt::MouseFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::ActiveWindowFocusReason;
}

} // namespace

ImageButton::ImageButton(const SkinPicture& strip, const ButtonLooks& looks, QWidget* parent)
    : QAbstractButton(parent), strip_(strip), looks_(looks) {
    InstallImageButtonAccess();
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_NoSystemBackground);
    connect(&fade_, &QVariantAnimation::valueChanged, this, [this](const QVariant& opacity) {
        hoverOpacity_ = opacity.toReal();
        update();
    });
}

void ImageButton::SetLooks(const ButtonLooks& looks) {
    looks_ = looks;
    update();
}

void ImageButton::SetOffPicture(const SkinPicture* background) {
    off_ = background;
    update();
}

void ImageButton::SetPressedLook(bool pressed) {
    if (pressed != pressedLook_) {
        pressedLook_ = pressed;
        update();
    }
}

void ImageButton::SetHoverKeeper(HoverKeeper* keeper, const HoverButton& place) {
    keeper_ = keeper;
    place_ = place;
}

void ImageButton::ShowHover(bool shown, Change change) {
    hovered_ = shown;
    const qreal target = shown ? 1 : 0;
    const bool running = fade_.state() == QAbstractAnimation::Running;
    if (running ? qFuzzyCompare(1 + fade_.endValue().toReal(), 1 + target)
                : qFuzzyCompare(1 + hoverOpacity_, 1 + target)) {
        return;
    }
    fade_.stop();
    const bool fades = hoverFades_ && change == Change::Faded && isVisible() &&
                       style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0;
    if (!fades) {
        hoverOpacity_ = target;
        update();
        return;
    }
    fade_.setStartValue(hoverOpacity_);
    fade_.setEndValue(target);
    fade_.setDuration(fadeMs);
    fade_.start();
}

std::optional<QPoint> ImageButton::PressedPlace() const {
    if (!isDown() && !pressedLook_) {
        return std::nullopt;
    }
    return looks_.pressed.value_or(looks_.hover);
}

std::optional<QRect> ImageButton::ShownPiece() const {
    if (!isEnabled() && !pressedLook_) {
        return std::nullopt;
    }
    if (const auto pressed = PressedPlace()) {
        return PieceAt(*pressed);
    }
    if (isChecked() && looks_.lit) {
        return PieceAt(hovered_ ? looks_.litHover.value_or(*looks_.lit) : *looks_.lit);
    }
    return hovered_ ? std::optional(PieceAt(looks_.hover)) : std::nullopt;
}

void ImageButton::PaintOff(QPainter& painter) const {
    if (off_ != nullptr) {
        off_->Paint(painter, {}, PieceAt(mapTo(window(), QPoint())));
    }
}

void ImageButton::PaintLooks(QPainter& painter) const {
    if (const auto pressed = PressedPlace()) {
        strip_.Paint(painter, {}, PieceAt(*pressed));
        return;
    }
    const bool on = isChecked() && looks_.lit;
    if (on) {
        strip_.Paint(painter, {}, PieceAt(*looks_.lit));
    }
    const std::optional<QPoint> hover = on ? looks_.litHover : std::optional(looks_.hover);
    if (hover && hoverOpacity_ > 0) {
        painter.setOpacity(hoverOpacity_);
        strip_.Paint(painter, {}, PieceAt(*hover));
        painter.setOpacity(1);
    }
}

void ImageButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (!isEnabled() && !pressedLook_) {
        PaintOff(painter);
        return;
    }
    PaintLooks(painter);
    if (hasFocus() && showsFocus_) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colours::accent, 1));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), focusRadius, focusRadius);
    }
}

void ImageButton::ReportMouse() {
    if (isEnabled() && keeper_ != nullptr) {
        keeper_->Moved(place_.group, place_.index);
    }
}

void ImageButton::enterEvent(QEnterEvent* event) {
    ReportMouse();
    QAbstractButton::enterEvent(event);
}

void ImageButton::mouseMoveEvent(QMouseEvent* event) {
    // While the button is held the mouse reports here from wherever it is.
    if (rect().contains(event->position().toPoint())) {
        ReportMouse();
    }
    QAbstractButton::mouseMoveEvent(event);
    // Passed on, the move would reach the window, which takes the look off.
    event->accept();
}

void ImageButton::keyPressEvent(QKeyEvent* event) {
    if (!showsFocus_) {
        showsFocus_ = true;
        update();
    }
    if (!IsEnter(*event)) {
        QAbstractButton::keyPressEvent(event);
        return;
    }
    if (!event->isAutoRepeat()) {
        enterHeld_ = true;
        setDown(true);
    }
}

void ImageButton::keyReleaseEvent(QKeyEvent* event) {
    if (!IsEnter(*event) || !enterHeld_) {
        QAbstractButton::keyReleaseEvent(event);
        return;
    }
    if (!event->isAutoRepeat()) {
        enterHeld_ = false;
        setDown(false);
        click();
    }
}

void ImageButton::focusInEvent(QFocusEvent* event) {
    showsFocus_ = showsFocus_ || IsKeyboardReason(event->reason());
    QAbstractButton::focusInEvent(event);
}

void ImageButton::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) {
        showsFocus_ = false;
    }
    if (enterHeld_) {
        enterHeld_ = false;
        setDown(false);
    }
    QAbstractButton::focusOutEvent(event);
}

void ImageButton::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange && !isEnabled() && hovered_) {
        // The keeper clears its index with the next move over the window, as it does for every button.
        ShowHover(false, Change::AtOnce);
    }
    QAbstractButton::changeEvent(event);
}

} // namespace kestrune
