#include "main_window/tool_bar_animation.h"

namespace kestrune {

namespace {

constexpr int ticksPerIdlePhase = 6;
constexpr int lastIdleCount = 32700;

} // namespace

bool ToolBarAnimation::Move(int item) {
    if (item < 0 || item >= toolBarItems || hover_ == item + 1) {
        return false;
    }
    hover_ = item + 1;
    phase_ = 0;
    return true;
}

bool ToolBarAnimation::Leave() {
    const bool wasLit = hover_ > 0;
    hover_ = 0;
    return wasLit;
}

void ToolBarAnimation::Tick() {
    phase_ = (phase_ + 1) % toolBarPhases;
}

bool ToolBarAnimation::IdleTick() {
    idleCount_ = idleCount_ >= lastIdleCount ? 0 : idleCount_ + 1;
    if (idleCount_ % ticksPerIdlePhase != 0) {
        return false;
    }
    idlePhase_ = (idlePhase_ + 1) % toolBarPhases;
    return hover_ == 0;
}

int ToolBarAnimation::Frame(int item) const {
    if (hover_ == item + 1) {
        return phase_;
    }
    return item == 0 && hover_ == 0 ? idlePhase_ : blank;
}

} // namespace kestrune
