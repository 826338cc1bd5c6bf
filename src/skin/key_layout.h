// The place of a picture button.
#pragma once

#include <QPoint>
#include <QRect>

namespace kestrune {

// A button's place in the window, and where the strip holds its looks. Pixels.
struct KeyLayout {
    QRect place;
    QPoint hover;
    QPoint pressed;
    QPoint lit = {-1, -1}; // while the mode or panel it stands for is on; none below 0
};

} // namespace kestrune
