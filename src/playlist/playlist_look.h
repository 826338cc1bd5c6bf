// Colours of the list and its scroll bar.
#pragma once

#include <QColor>

namespace kestrune::look {

inline constexpr QColor glass(20, 20, 20);
inline constexpr QColor text(0xD7, 0xDA, 0xF5);
inline constexpr QColor secondaryText(0xA9, 0xAE, 0xC2);
inline constexpr QColor mutedText(0x8A, 0x90, 0x9C);
inline constexpr QColor accent(128, 128, 255);
// The accent for text on a selected row, where the plain one is too dark to read.
inline constexpr QColor accentOnSelection(0xB4, 0xB4, 0xFF);

inline QColor WithOpacity(QColor colour, double opacity) {
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

} // namespace kestrune::look
