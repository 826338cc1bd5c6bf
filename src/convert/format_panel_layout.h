// Where everything of the panel of formats stands: the panel in the window and in the strip, its parts in the
// panel. Pixels. Written by tools/make_skin, which draws the pictures from the same numbers: do not edit.
#pragma once

#include "skin/key_layout.h"

#include <QPoint>
#include <QRect>
#include <QSize>
#include <array>

namespace kestrune::format_panel_layout {
// In the window.
inline constexpr QPoint corner(2, 25);
// In the strip.
inline constexpr QRect ground(4, 4, 370, 317);
inline constexpr QRect caption(12, 4, 240, 18);
inline constexpr KeyLayout ImageSetdown = {{344, 4, 18, 18}, {384, 240}, {406, 240}};

// --- Rates and channels ---
// The first one.
inline constexpr QRect opFreq(18, 28, 64, 19);
inline constexpr int freqColumns = 4;
inline constexpr int freqStep = 64;
inline constexpr int freqRowStep = 19;
inline constexpr std::array<QRect, 2> opChannels = {{{288, 28, 70, 19}, {288, 47, 70, 19}}};

// --- The table of formats: twelve lines of name, text and control ---
inline constexpr int firstLine = 73;
inline constexpr int lineStep = 20;
inline constexpr int nameLeft = 10;
inline constexpr int nameWidth = 43;
inline constexpr int textLeft = 55;
inline constexpr int textWidth = 250;
inline constexpr int controlLeft = 310;
inline constexpr int controlWidth = 52;
inline constexpr int controlHeight = 18;
inline constexpr QPoint ImageSetHover(384, 216);
inline constexpr QPoint ImageSetPressed(460, 216);

constexpr QRect Name(int line) {
    return {nameLeft, firstLine + line * lineStep, nameWidth, lineStep};
}
constexpr QRect Text(int line) {
    return {textLeft, firstLine + line * lineStep, textWidth, lineStep};
}
constexpr QRect Control(int line) {
    return {controlLeft, firstLine + line * lineStep + 1, controlWidth, controlHeight};
}
constexpr KeyLayout ImageSet(int line) {
    return {Control(line), ImageSetHover, ImageSetPressed};
}

} // namespace kestrune::format_panel_layout
