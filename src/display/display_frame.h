// The pieces of the skin that frame the display.
#pragma once

#include <QPoint>
#include <QRect>
#include <array>

namespace kestrune {

struct FramePiece {
    QRect strip;   // pixels of the strip
    QPoint window; // its corner in the window
};

inline constexpr int framePieceCount = 5;

// The same frame stands round every type of display. The first four pieces overlap; the fifth closes the
// lower right corner.
inline constexpr std::array<FramePiece, framePieceCount> displayFramePieces = {{
    {{240, 311, 32, 68}, {157, 77}},
    {{250, 311, 152, 28}, {167, 77}},
    {{372, 311, 26, 65}, {289, 77}},
    {{250, 350, 128, 35}, {167, 116}},
    {{378, 351, 24, 34}, {295, 117}},
}};

// Behind the display, 0xRRGGBB, by its type: level bars stand on the skin's glass, all others on black.
constexpr qint32 DisplayGround(int type) {
    return type == 0 ? 0x141414 : 0x000000;
}

} // namespace kestrune
