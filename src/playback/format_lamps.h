// The lamps for sample rate and bit rate: which piece of the skin they show for a file. Pure; any thread.
#pragma once

#include <QString>

namespace kestrune {

// Left edge and width in the skin, in pixels; the top is the same for all.
struct LampCut {
    int left;
    int width;
};

inline constexpr int lampTop = 272;
inline constexpr int lampHeight = 12;

// From the file's format text: one piece for 44,100 Hz and one for every other rate.
LampCut SampleRateLamp(const QString& formatText);
// The first bit rate of the skin that the text holds, in either case of its letters; else the piece for all
// others.
LampCut BitRateLamp(const QString& formatText);

} // namespace kestrune
