// The total and the selected time below the list, laid out in the skin's small digits. Pure; any thread.
#pragma once

#include <QString>
#include <vector>

namespace kestrune {

inline constexpr int smallDigitTop = 10;   // of every cut in the skin, pixels
inline constexpr int smallDigitHeight = 7; // pixels
inline constexpr int smallDigitsY = 4;     // of the painted strip in its picture, pixels

// A piece of the skin, in its pixels; top and height are the same for all.
struct DigitCut {
    int left = 0;
    int width = 0;
};

struct SmallDigits {
    std::vector<DigitCut> cuts; // laid side by side, from the left
    int width = 0;              // of all cuts together
    int startX = 0;             // of the first one in its picture: centred, at least 0
};

// The text holds digits, colons and slashes; any other character has no cut and takes no place. A cut reaches
// up to the next one in the skin, so it carries its own gap; the slash, the last one, is 3 pixels wide.
SmallDigits DispSelTotalTime(const QString& text, int pictureWidth);

} // namespace kestrune
