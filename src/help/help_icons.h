// Glyphs of the help window's buttons, sharp at every scale of the screen.
#pragma once

#include <QIcon>
#include <QString>

namespace kestrune {

// `file` is an SVG of 16 by 16. The icon holds it for scales of 1, 1.5 and 2, and dimmed for a disabled
// button.
QIcon HelpIcon(const QString& file);

} // namespace kestrune
