#include "skin/hover_groups.h"

#include <limits>

namespace kestrune {

int HoverGroups::AddGroup() {
    lit_.push_back(0);
    return GroupCount() - 1;
}

HoverMove HoverGroups::Move(int group, int index) {
    constexpr int largestIndex = std::numeric_limits<quint8>::max() - 1;
    HoverMove move;
    if (group < 0 || group >= GroupCount() || index < 0 || index > largestIndex) {
        return move;
    }
    const auto mark = static_cast<quint8>(index + 1);
    if (HoverIndex(group) != 0 && HoverIndex(group) != mark) {
        move.toReturn = ReturnButton();
    }
    lit_[static_cast<size_t>(group)] = mark;
    move.toLight = HoverButton{group, index};
    return move;
}

std::vector<HoverButton> HoverGroups::ReturnButton() {
    std::vector<HoverButton> returned;
    for (int group = 0; group < GroupCount(); ++group) {
        quint8& mark = lit_[static_cast<size_t>(group)];
        if (mark != 0) {
            returned.push_back({group, mark - 1});
            mark = 0;
        }
    }
    return returned;
}

quint8 HoverGroups::HoverIndex(int group) const {
    return group < 0 || group >= GroupCount() ? quint8{0} : lit_[static_cast<size_t>(group)];
}

} // namespace kestrune
