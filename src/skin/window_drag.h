// Dragging a window by a label of its own.
#pragma once

#include <QPoint>
#include <QPointF>
#include <Qt>
#include <optional>

namespace kestrune {

// Positions are those of the label, in device-independent pixels. The label moves with the window, so the
// place where the mouse went down is the origin until it goes up. Any thread, one at a time.
class WindowDrag {
public:
    // A button went down on the label. Any button does; only the left one alone drags.
    void Press(const QPointF& position);
    // The mouse moved with these buttons held: the window's new top left corner, or nothing if it stays.
    std::optional<QPoint> Move(Qt::MouseButtons buttons, const QPointF& position,
                               const QPoint& windowTopLeft) const;
    // A button went up.
    void Release() { dragging_ = false; }
    bool IsDragging() const { return dragging_; }

private:
    QPointF origin_;
    bool dragging_ = false;
};

} // namespace kestrune
