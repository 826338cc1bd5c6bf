#include "tool_window/path_label.h"

#include "skin/skin_colours.h"
#include "skin/style_paint.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace kestrune {

namespace {

constexpr int padding = 8;
constexpr qreal radius = 4;
constexpr float hoverEdge = 0.45F;

} // namespace

PathLabel::PathLabel(QWidget* parent) : ElidedLabel({}, parent) {
    SetElideMode(Qt::ElideMiddle);
    setContentsMargins(padding, 0, padding, 0);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

void PathLabel::paintEvent(QPaintEvent* event) {
    ElidedLabel::paintEvent(event);
    QPainter painter(this);
    if (hasFocus()) {
        shapes::FocusRing(painter, rect(), radius);
    } else if (isEnabled() && underMouse()) {
        QColor edge = colours::accent;
        edge.setAlphaF(hoverEdge);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(edge, 1));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    }
}

void PathLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        emit Clicked();
    }
}

void PathLabel::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
        emit Clicked();
        break;
    default:
        ElidedLabel::keyPressEvent(event);
        break;
    }
}

} // namespace kestrune
