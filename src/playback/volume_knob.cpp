#include "playback/volume_knob.h"

#include "components/audio_player.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace kestrune {

namespace {

constexpr double dotRadius = 18;
constexpr double largestJump = 16;
constexpr double silentBelow = 12;
constexpr qint32 fullCurveFrom = 10000;

struct DotPlace {
    double x;
    double y;
    double value;
};

std::optional<DotPlace> PlaceFor(double half, double x, double y) {
    const double distance = std::hypot(x - half, y - half);
    const bool upper = y < half;
    if (distance == 0 || distance > half || (x == half && upper) || (x <= half && !upper)) {
        return std::nullopt;
    }
    const double dx = (x - half) / distance * dotRadius;
    const double dy = (y - half) / distance * dotRadius;
    const double dotX = half + dx;
    return DotPlace{dotX, half + dy, upper ? dotX : 3 * half - dx};
}

} // namespace

bool VolumeKnob::MoveValumeButton(int button, double xTwips, double yTwips) {
    const double half = geometry_.knobWidth / 2;
    if (button != 1) {
        return false;
    }
    const std::optional<DotPlace> place = PlaceFor(half, xTwips / twipsPerPixel, yTwips / twipsPerPixel);
    if (!place || place->x == 0 || place->y == 0) {
        return false;
    }
    const KnobDot next = {geometry_.knobLeft + place->x - geometry_.dotSize / 2,
                          geometry_.knobTop + place->y - geometry_.dotSize / 2};
    const auto jumps = [](double now, double then) {
        return std::abs(now - then) >= largestJump && then >= 1;
    };
    if (jumps(next.left, dot_.left) || jumps(next.top, dot_.top)) {
        return false;
    }
    dot_ = next;
    volume_ = place->value < silentBelow
                  ? 0
                  : std::min(static_cast<qint32>(place->value * fullVolume / (3 * half)), fullVolume);
    return true;
}

void VolumeKnob::ChooseMark(int mark) {
    if (mark < 0 || mark >= static_cast<int>(knobMarks.size())) {
        return;
    }
    const KnobMark& chosen = knobMarks[static_cast<size_t>(mark)];
    dot_ = {chosen.dotLeft, chosen.dotTop};
    volume_ = chosen.volume;
}

void VolumeKnob::SetVolume(qint32 volume) {
    volume_ = std::clamp(volume, 0, fullVolume);
    const double half = geometry_.knobWidth / 2;
    // The inverse of the rule above: the value runs over the dot's x in the upper half and back in the lower
    // right.
    const double value = std::max(3 * half * volume_ / fullVolume, half - dotRadius);
    const bool upper = value <= half + dotRadius;
    const double dx = std::clamp(upper ? value - half : 3 * half - value, -dotRadius, dotRadius);
    const double dy = std::sqrt(dotRadius * dotRadius - dx * dx) * (upper ? -1 : 1);
    dot_ = {geometry_.knobLeft + half + dx - geometry_.dotSize / 2,
            geometry_.knobTop + half + dy - geometry_.dotSize / 2};
}

qint32 PlayerVolumeFor(qint32 volume) {
    return volume >= fullCurveFrom ? volume : volume / 3;
}

std::array<bool, 4> LitMarks(qint32 volume) {
    return {volume > fullCurveFrom, volume > fullVolume / 4.0, volume > fullVolume / 2.0,
            volume > 196605 / 4.0};
}

} // namespace kestrune
