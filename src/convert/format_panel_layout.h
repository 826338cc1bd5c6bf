// Where everything of the panel of formats stands: the panel in the window, its parts in the panel. Pixels.
// See converter_layout.h for the pictures.
#pragma once

#include "convert/converter_layout.h"

namespace kestrune::format_panel_layout {

using converter_layout::Key;

inline constexpr QPoint corner(2, 25);         // in the window
inline constexpr QRect ground(4, 4, 370, 317); // in the strip
inline constexpr QRect caption(12, 4, 240, 18);
inline constexpr Key ImageSetdown = {{344, 4, 18, 18}, {384, 240}, {406, 240}};

inline constexpr QRect opFreq(18, 28, 64, 19); // the first one
inline constexpr int freqColumns = 4;
inline constexpr int freqStep = 64;
inline constexpr int freqRowStep = 19;
inline constexpr std::array<QRect, 2> opChannels = {{{288, 28, 70, 19}, {288, 47, 70, 19}}};

// One line of the table of formats.
inline constexpr int firstLine = 73;
inline constexpr int lineStep = 20;
inline constexpr int nameLeft = 10;
inline constexpr int nameWidth = 43;
inline constexpr int textLeft = 55;
inline constexpr int textWidth = 250;
inline constexpr int controlLeft = 310;
inline constexpr int controlWidth = 52;
inline constexpr int controlHeight = 18;

constexpr QRect Name(int line) {
    return {nameLeft, firstLine + line * lineStep, nameWidth, lineStep};
}
constexpr QRect Text(int line) {
    return {textLeft, firstLine + line * lineStep, textWidth, lineStep};
}
constexpr QRect Control(int line) {
    return {controlLeft, firstLine + line * lineStep + 1, controlWidth, controlHeight};
}

constexpr Key ImageSet(int line) {
    return {Control(line), {384, 216}, {460, 216}};
}

} // namespace kestrune::format_panel_layout
