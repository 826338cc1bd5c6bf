// The colours of the skin.
#pragma once

#include <QColor>

namespace kestrune::colours {

inline constexpr QColor bodyTop(0x35, 0x3A, 0x42);
inline constexpr QColor bodyBottom(0x1D, 0x20, 0x25);
inline constexpr QColor glass(20, 20, 20);
inline constexpr QColor accent(128, 128, 255);
inline constexpr QColor amber(255, 176, 64);
inline constexpr QColor red(255, 90, 79);
inline constexpr QColor textOnGlass(0xD7, 0xDA, 0xF5);
inline constexpr QColor textOnBody(0xC3, 0xC8, 0xD2);
inline constexpr QColor textMuted(0x8A, 0x90, 0x9C);
inline constexpr QColor textMutedOnBody(0xA6, 0xAC,
                                        0xB8); // the muted one is too dark on the body's upper part
inline constexpr QColor textDisabled(0x6C, 0x72, 0x7D);
// How much of the accent lies over the glass in a selected row of any list.
inline constexpr double selectionStrength = 0.28;
inline constexpr QColor accentOnBody(0xA6, 0xA6, 0xFF); // the accent as a text on the body

} // namespace kestrune::colours
