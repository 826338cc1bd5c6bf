#include "playlist/small_digits.h"

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

const QLatin1String digitCharacters("0123456789:/");
// Lefts of the characters above, and where the last one ends.
constexpr std::array<int, 13> digitLefts = {356, 359, 362, 366, 370, 374, 378, 382, 386, 390, 395, 398, 401};

} // namespace

SmallDigits DispSelTotalTime(const QString& text, int pictureWidth) {
    SmallDigits digits;
    for (const QChar character : text) {
        const qsizetype place = digitCharacters.indexOf(character);
        if (place < 0) {
            continue;
        }
        const auto i = static_cast<size_t>(place);
        const DigitCut cut{digitLefts[i], digitLefts[i + 1] - digitLefts[i]};
        digits.cuts.push_back(cut);
        digits.width += cut.width;
    }
    digits.startX = std::max(0, (pictureWidth - digits.width) / 2);
    return digits;
}

} // namespace kestrune
