// The few shapes that all controls of the style are put together from.
#pragma once

#include <QColor>
#include <QRectF>
#include <QStyleOption>

class QPainter;

namespace kestrune::shapes {

enum class Direction { Up, Down, Left, Right };

// What of a control's state the eye sees.
struct Look {
    explicit Look(const QStyleOption& option);
    bool enabled;
    bool hover;
    bool pressed;
    bool on;
    bool partly; // neither on nor off
    bool focus;  // and the keyboard was used last
};

// One colour over another; amount 0 to 1 of the upper one.
QColor Mixed(const QColor& under, const QColor& over, qreal amount);

// Text on the body and on glass by the state of its control.
QColor BodyText(const Look& look);

// A raised key of the body.
void Key(QPainter& painter, const QRectF& rect, const Look& look, bool isDefault);
// A field let into the body: glass, its edge in the accent while it has the focus.
void Field(QPainter& painter, const QRectF& rect, const Look& look, bool focused, qreal radius = 4);
void Chevron(QPainter& painter, const QRectF& rect, Direction direction, const QColor& colour);
void Tick(QPainter& painter, const QRectF& rect, const QColor& colour);
void FocusRing(QPainter& painter, const QRectF& rect, qreal radius = 4);
// A panel that floats above the windows: menus and the lists of combo boxes.
void Panel(QPainter& painter, const QRectF& rect, qreal radius);

// The ground of a control that is switched, 14 px square or round.
void SwitchGround(QPainter& painter, const QRectF& rect, const Look& look, bool round);

} // namespace kestrune::shapes
