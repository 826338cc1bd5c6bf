// The machined graphite that every window is made of.
#pragma once

#include <QSize>

class QPainter;

namespace kestrune {

// The body of a window of that size, from 0,0 on: shaded from above, with a fine brushed grain, a light edge
// along the top and a dark one below. `ellipse` is that of the corners, whose edges the light follows.
void PaintGraphite(QPainter& painter, const QSize& size, const QSize& ellipse);

} // namespace kestrune
