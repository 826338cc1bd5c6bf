// The program's mark as pictures.
#pragma once

#include <QIcon>
#include <QPixmap>

namespace kestrune {

// For window title, task bar and dialogs: 16, 22, 24, 32, 48, 64, 128, 256 and 512 pixels, each drawn for its
// size. Needs a QGuiApplication.
QIcon ProgramIcon();

// The mark alone, without its tile, `size` device-independent pixels wide and high.
QPixmap ProgramEmblem(int size, qreal devicePixelRatio);

} // namespace kestrune
