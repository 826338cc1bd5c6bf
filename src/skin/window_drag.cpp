#include "skin/window_drag.h"

namespace kestrune {

void WindowDrag::Press(const QPointF& position) {
    origin_ = position;
    dragging_ = true;
}

std::optional<QPoint> WindowDrag::Move(Qt::MouseButtons buttons, const QPointF& position,
                                       const QPoint& windowTopLeft) const {
    if (!dragging_ || buttons != Qt::LeftButton) {
        return std::nullopt;
    }
    return (QPointF(windowTopLeft) + position - origin_).toPoint();
}

} // namespace kestrune
