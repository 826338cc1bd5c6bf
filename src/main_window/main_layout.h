// Where everything of the main window stands: places in the window, and places in its picture strip. Pixels.
// Written by tools/make_skin, which draws the pictures from the same numbers: do not edit.
#pragma once

#include "skin/key_layout.h"

#include <QPoint>
#include <QRect>
#include <QSize>
#include <array>

namespace kestrune::layout {
inline constexpr QSize window(393, 385);
// The sums under the list end here.
inline constexpr int totalsRight = 383;

// --- Title and menus ---
inline constexpr QRect title(0, 0, 339, 26);
inline constexpr QRect caption(14, 4, 60, 20);
inline constexpr std::array<KeyLayout, 2> ImageWin = {
    {{{362, 5, 18, 18}, {420, 150}, {420, 172}}, {{341, 5, 18, 18}, {442, 150}, {442, 172}}}};
inline constexpr int menuTop = 26;
inline constexpr int menuHeight = 19;
inline constexpr int menuLeft = 12;
inline constexpr std::array<int, 8> menuWidths = {{38, 41, 37, 43, 61, 46, 43, 60}};

// --- Tool bar: the idle picture, then the ripper, the writer, the converter and the sites ---
inline constexpr QSize toolCell(28, 24);
inline constexpr std::array<QPoint, 5> ImageToolBar = {{{12, 49}, {46, 49}, {78, 49}, {110, 49}, {142, 49}}};
inline constexpr std::array<int, 3> toolFrameLefts = {{143, 172, 201}};
inline constexpr std::array<int, 5> toolFrameTops = {{10, 116, 146, 176, 296}};
inline constexpr QRect formatLine(188, 52, 189, 18);

// --- Clock, lamps and display ---
inline constexpr QSize bigDigit(11, 18);
inline constexpr QSize smallDigit(8, 13);
inline constexpr std::array<QPoint, 4> ImageData = {{{52, 88}, {64, 88}, {82, 88}, {94, 88}}};
inline constexpr std::array<QPoint, 2> ImageData1 = {{{111, 93}, {120, 93}}};
inline constexpr std::array<QRect, 3> ImageSmall = {{{22, 86, 12, 12}, {22, 105, 12, 12}, {22, 124, 12, 12}}};
inline constexpr std::array<QPoint, 3> ImageSmallLit = {{{4, 350}, {20, 350}, {36, 350}}};
inline constexpr QRect Image44100(50, 121, 24, 12);
inline constexpr QRect ImageKBPS(104, 121, 16, 12);
inline constexpr QRect displayFrame(157, 77, 162, 74);
inline constexpr QPoint displayFrameInStrip(240, 311);
inline constexpr QRect display(162, 82, 152, 64);

// --- Transport, modes and the panels' buttons ---
inline constexpr std::array<KeyLayout, 6> ImagePlayButton = {{{{11, 176, 30, 30}, {230, 50}, {230, 100}},
                                                              {{91, 176, 30, 30}, {267, 50}, {267, 103}},
                                                              {{44, 169, 44, 44}, {303, 50}, {303, 101}},
                                                              {{124, 176, 30, 30}, {350, 50}, {350, 100}},
                                                              {{272, 174, 34, 34}, {389, 50}, {389, 100}},
                                                              {{157, 176, 30, 30}, {426, 50}, {426, 100}}}};
inline constexpr std::array<KeyLayout, 3> ImageRepeatModeBut = {
    {{{326, 77, 57, 22}, {58, 30}, {58, 117}, {58, 117}},
     {{326, 103, 57, 22}, {58, 55}, {58, 146}, {58, 146}},
     {{326, 129, 57, 22}, {58, 80}, {58, 177}, {58, 177}}}};
inline constexpr KeyLayout ImageChgLstBnd = {{314, 177, 32, 28}, {230, 195}, {302, 195}, {374, 195}};
inline constexpr KeyLayout ImageColour = {{351, 177, 32, 28}, {266, 195}, {338, 195}, {410, 195}};

// --- Volume ---
inline constexpr std::array<QRect, 4> ImageVol = {
    {{196, 161, 8, 8}, {246, 165, 8, 8}, {253, 179, 10, 9}, {249, 206, 11, 10}}};
inline constexpr std::array<QPoint, 4> ImageVolLit = {{{142, 441}, {142, 431}, {143, 418}, {143, 404}}};
inline constexpr QPoint volumeDotInStrip(440, 311);

// --- Position ---
inline constexpr QRect positionBar(11, 226, 198, 12);
inline constexpr int positionLineHeight = 6;
inline constexpr QPoint positionLineInStrip(4, 382);
inline constexpr QPoint thumbInStrip(410, 311);
inline constexpr QPoint thumbHeldInStrip(424, 311);

// --- List ---
inline constexpr QRect list(12, 242, 360, 119);
// What takes the place of list and scroll bar.
inline constexpr QRect panel(12, 242, 371, 119);
inline constexpr QRect listScrollBar(373, 242, 10, 119);
inline constexpr QRect PictureSelToal(301, 222, 81, 15);
inline constexpr std::array<KeyLayout, 6> ImageListCmd = {{{{12, 365, 24, 16}, {230, 150}, {230, 170}},
                                                           {{39, 365, 24, 16}, {257, 150}, {257, 170}},
                                                           {{66, 365, 24, 16}, {284, 150}, {284, 170}},
                                                           {{93, 365, 24, 16}, {311, 150}, {311, 170}},
                                                           {{120, 365, 24, 16}, {338, 150}, {338, 170}},
                                                           {{147, 365, 24, 16}, {365, 150}, {365, 170}}}};
inline constexpr int totalsTop = 365;
inline constexpr int totalsHeight = 16;

} // namespace kestrune::layout
