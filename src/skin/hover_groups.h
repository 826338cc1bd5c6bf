// Which picture button of a window wears its hover look. No control reports that the mouse has left it: a
// look ends when the mouse moves over something else of the window.
#pragma once

#include <QtGlobal>
#include <optional>
#include <vector>

namespace kestrune {

// A button by its place: the group's number, and its own index in that group, 0 to 254.
struct HoverButton {
    int group = 0;
    int index = 0;
    friend bool operator==(const HoverButton&, const HoverButton&) = default;
};

// What a mouse move over a button asks for: looks to take off first, in the order of the groups, then the
// look to put on, which is put on again with every move.
struct HoverMove {
    std::vector<HoverButton> toReturn;
    std::optional<HoverButton> toLight;
};

// Any thread, one at a time; never blocks.
class HoverGroups {
public:
    // A group of its own index; returns its number, from 0 on.
    int AddGroup();
    int GroupCount() const { return static_cast<int>(lit_.size()); }
    // The mouse moved over a button. All looks are taken off if the group's lit button is another one; a lit
    // button of another group alone stays lit. A group or an index that does not exist asks for nothing.
    HoverMove Move(int group, int index);
    // The mouse moved over something else: every lit button, which is no longer lit.
    std::vector<HoverButton> ReturnButton();
    // Index plus 1 of the lit button, 0 for none and for a group that does not exist.
    quint8 HoverIndex(int group) const;

private:
    std::vector<quint8> lit_;
};

} // namespace kestrune
