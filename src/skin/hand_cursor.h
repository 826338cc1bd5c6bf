// The hand that all clickable parts of the skin show.
#pragma once

#include <QCursor>

namespace kestrune {

// Drawn for a screen of that scale. Window thread.
QCursor HandCursor(qreal devicePixelRatio);

} // namespace kestrune
