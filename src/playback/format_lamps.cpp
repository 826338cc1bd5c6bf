#include "playback/format_lamps.h"

#include <array>

namespace kestrune {

namespace {

struct RatePiece {
    const char* text;
    LampCut cut;
};

constexpr std::array<RatePiece, 6> ratePieces = {{
    {"64 KBPS", {55, 9}},
    {"80 KBPS", {69, 9}},
    {"112 KBPS", {83, 12}},
    {"128 KBPS", {97, 12}},
    {"192 KBPS", {111, 12}},
    {"256 KBPS", {126, 12}},
}};
constexpr LampCut otherRate = {142, 16};
constexpr int rateWidth = 24;

} // namespace

LampCut SampleRateLamp(const QString& formatText) {
    return {formatText.contains(QLatin1String("44,100")) ? 3 : 28, rateWidth};
}

LampCut BitRateLamp(const QString& formatText) {
    const QString upper = formatText.toUpper();
    for (const RatePiece& piece : ratePieces) {
        if (upper.contains(QLatin1String(piece.text))) {
            return piece.cut;
        }
    }
    return otherRate;
}

} // namespace kestrune
