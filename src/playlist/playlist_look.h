// Colours of the list and its scroll bar.
#pragma once

#include "skin/skin_colours.h"

#include <QColor>

namespace kestrune::look {

inline constexpr QColor glass = colours::glass;
inline constexpr QColor text = colours::textOnGlass;
inline constexpr QColor secondaryText(0xA9, 0xAE, 0xC2);
inline constexpr QColor mutedText = colours::textMuted;
inline constexpr QColor accent = colours::accent;
// The accent for text on a selected row, where the plain one is too dark to read.
inline constexpr QColor accentOnSelection(0xB4, 0xB4, 0xFF);

inline QColor WithOpacity(QColor colour, double opacity) {
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

} // namespace kestrune::look
