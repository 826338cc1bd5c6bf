// Which letter of the menus a key stands for, on every layout.
#pragma once

#include <QKeyEvent>

namespace kestrune {

// The code of a Latin capital, 65 to 90; 0 for a key that is none. On a layout without Latin letters, where
// Alt with a letter would find nothing, the key counts by its place.
int LetterOf(const QKeyEvent& key);

} // namespace kestrune
