// The moving pictures of the tool bar: which frame each item shows.
#pragma once

#include <array>

namespace kestrune {

inline constexpr int toolBarItems = 5; // 0 is the idle picture, 1 to 4 are buttons
inline constexpr int toolBarPhases = 3;
inline constexpr int toolBarTickMs = 200; // while the mouse is on an item
inline constexpr int idleTickMs = 100;    // of the idle picture's own timer

// Window thread.
class ToolBarAnimation {
public:
    static constexpr int blank = -1; // the item shows the window's own picture

    // The mouse moved over an item. True if it is another one than before: the former is blank then, and the
    // tool bar's timer is to run.
    bool Move(int item);
    // The mouse moved over something else. True if an item was lit.
    bool Leave();
    // The tool bar's timer. Moves the lit item through its phases.
    void Tick();
    // The timer of the idle picture. Each sixth tick moves its phase; true when the picture changes, which it
    // does not while the mouse is on an item.
    bool IdleTick();

    bool IsLit() const { return hover_ > 0; }
    // The frame that an item shows, 0 to 2, or `blank`.
    int Frame(int item) const;

private:
    int hover_ = 0; // the item the mouse is on, plus 1
    int phase_ = 0;
    int idleCount_ = 0;
    int idlePhase_ = 0;
};

} // namespace kestrune
