#include "skin/hover_keeper.h"

#include "skin/image_button.h"

#include <QChildEvent>
#include <QMouseEvent>

namespace kestrune {

namespace {

int KeyOf(const HoverButton& place) {
    return place.group * 256 + place.index;
}

} // namespace

HoverKeeper::HoverKeeper(QObject* parent) : QObject(parent) {}

void HoverKeeper::Add(int group, int index, ImageButton* button) {
    buttons_.insert(KeyOf({group, index}), button);
    button->SetHoverKeeper(this, {group, index});
}

ImageButton* HoverKeeper::ButtonAt(const HoverButton& place) const {
    return buttons_.value(KeyOf(place));
}

void HoverKeeper::Moved(int group, int index) {
    const HoverMove move = groups_.Move(group, index);
    for (const HoverButton& place : move.toReturn) {
        if (ImageButton* button = ButtonAt(place)) {
            button->ShowHover(false, ImageButton::Change::AtOnce);
        }
    }
    if (move.toLight) {
        if (ImageButton* button = ButtonAt(*move.toLight)) {
            button->ShowHover(true, ImageButton::Change::Faded);
        }
    }
}

void HoverKeeper::ReturnButton() {
    for (const HoverButton& place : groups_.ReturnButton()) {
        if (ImageButton* button = ButtonAt(place)) {
            button->ShowHover(false, ImageButton::Change::Faded);
        }
    }
}

void HoverKeeper::Watch(QWidget* widget) {
    // A widget without tracking keeps a move to itself: the window behind it would never hear of it.
    widget->setMouseTracking(true);
    widget->removeEventFilter(this);
    widget->installEventFilter(this);
    for (QObject* child : widget->children()) {
        auto* inside = qobject_cast<QWidget*>(child);
        if (inside != nullptr && !inside->isWindow()) {
            Watch(inside);
        }
    }
}

bool HoverKeeper::IsLetGoElsewhere(const QWidget& held, const QMouseEvent& release) {
    const QPoint at = release.position().toPoint();
    const QWidget* window = held.window();
    return !held.rect().contains(at) && window->rect().contains(held.mapTo(window, at));
}

bool HoverKeeper::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseMove) {
        const auto* button = qobject_cast<ImageButton*>(watched);
        // A disabled button lets the mouse through to the window, which clears the looks.
        if (button == nullptr || !button->isEnabled() || !button->CanBeLit()) {
            ReturnButton();
        }
    } else if (event->type() == QEvent::MouseButtonRelease) {
        const auto* button = qobject_cast<ImageButton*>(watched);
        if (button != nullptr && IsLetGoElsewhere(*button, *static_cast<QMouseEvent*>(event))) {
            ReturnButton();
        }
    } else if (event->type() == QEvent::ChildPolished) {
        auto* child = qobject_cast<QWidget*>(static_cast<QChildEvent*>(event)->child());
        if (child != nullptr && !child->isWindow()) {
            Watch(child);
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace kestrune
