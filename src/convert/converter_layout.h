// Where everything of the converter window stands: places in the window, and places in its picture strip.
// Pixels. Written by tools/make_skin, which draws the pictures from the same numbers: do not edit.
#pragma once

#include "skin/key_layout.h"

#include <QPoint>
#include <QRect>
#include <QSize>
#include <array>

namespace kestrune::converter_layout {
inline constexpr int width = 616;
// 5250 twips: without the events
inline constexpr int shortHeight = 350;
// 9800 twips
inline constexpr int longHeight = 653;
// The mouse over this band leaves the text boxes of the two paths as they are. The last row is part of it.
inline constexpr int pathBandTop = 40;
inline constexpr int pathBandBottom = 66;

// --- Title ---
inline constexpr QRect title(0, 0, 580, 26);
inline constexpr QRect caption(14, 4, 64, 20);
inline constexpr QRect subject(78, 4, 300, 20);
inline constexpr KeyLayout ImageQuit = {{586, 5, 18, 18}, {384, 4}, {406, 4}};
// What the panel of formats covers while it is open.
inline constexpr QRect inputSide(0, 26, 370, 324);

// --- Paths: the input's, then the output's ---
inline constexpr std::array<QRect, 2> pathCaption = {{{12, 26, 324, 14}, {376, 26, 200, 14}}};
inline constexpr std::array<QRect, 2> path = {{{12, 41, 324, 24}, {376, 41, 200, 24}}};
inline constexpr std::array<KeyLayout, 2> folder = {
    {{{340, 41, 24, 24}, {432, 4}, {460, 4}}, {{580, 41, 24, 24}, {432, 4}, {460, 4}}}};

// --- Left: input types and the list of files ---
inline constexpr std::array<int, 6> CheckinLeft = {{20, 75, 139, 194, 250, 309}};
inline constexpr std::array<int, 2> CheckinTop = {{74, 94}};
inline constexpr QSize Checkin(57, 20);
// Within its glass.
inline constexpr QRect ListViewInput(14, 126, 348, 190);
inline constexpr std::array<int, 3> listColumns = {{162, 86, 100}};
inline constexpr std::array<KeyLayout, 2> ImageAllClear = {
    {{{12, 326, 24, 16}, {492, 4}, {520, 4}}, {{39, 326, 24, 16}, {548, 4}, {576, 4}}}};
inline constexpr QRect statusLine(72, 324, 292, 20);

// --- Right: output formats, progress, the keys of the run ---
// The first one.
inline constexpr QRect format(386, 80, 68, 22);
inline constexpr int formatColumns = 3;
inline constexpr int formatStep = 73;
inline constexpr int formatRowStep = 22;
inline constexpr QRect currentFile(384, 191, 212, 18);
inline constexpr QRect stage(384, 210, 212, 18);
inline constexpr std::array<QRect, 2> barCaption = {{{384, 236, 32, 16}, {384, 260, 32, 16}}};
inline constexpr std::array<QRect, 2> bar = {{{416, 238, 180, 12}, {416, 262, 180, 12}}};
inline constexpr KeyLayout Image1 = {{376, 297, 44, 44}, {384, 36}, {432, 36}};
inline constexpr KeyLayout Image2 = {{376, 297, 44, 44}, {528, 36}, {576, 36}};
inline constexpr QPoint Image2Normal(480, 36);
inline constexpr KeyLayout ImageOptions = {{432, 305, 92, 28}, {384, 88}, {480, 88}, {384, 120}};
inline constexpr KeyLayout ImageUpdown = {{532, 305, 72, 28}, {384, 152}, {460, 152}};
inline constexpr KeyLayout ImageUpdownLong = {{532, 305, 72, 28}, {536, 152}, {384, 184}};

// --- Events, in the long form alone ---
inline constexpr QRect frmEvent(0, 350, 616, 303);
// In frmEvent; the list within its glass.
inline constexpr QRect eventsCaption(12, 6, 200, 16);
inline constexpr QRect viewEvent(14, 26, 588, 263);
inline constexpr std::array<int, 2> eventColumns = {{32, 72}};

} // namespace kestrune::converter_layout
