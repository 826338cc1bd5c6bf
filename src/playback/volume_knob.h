// The volume knob's geometry and its marks. Lengths in pixels unless the name says twips.
#pragma once

#include <QtGlobal>
#include <array>

namespace kestrune {

inline constexpr int twipsPerPixel = 15;

// Where knob and dot stand in the window.
struct KnobGeometry {
    double knobLeft = 195;
    double knobTop = 165;
    double knobWidth = 56;
    double dotSize = 8;
};

struct KnobDot {
    double left = 0;
    double top = 0;
};

struct KnobMark {
    double dotLeft;
    double dotTop;
    qint32 volume;
};

inline constexpr std::array<KnobMark, 4> knobMarks = {{
    {209, 177, 12800},
    {232, 177, 30888},
    {238, 184, 35000},
    {236, 199, 53800},
}};

// Keeps the dot's place and the volume, 0 to 65535. One object for the one knob; window thread.
class VolumeKnob {
public:
    explicit VolumeKnob(const KnobGeometry& geometry) : geometry_(geometry) {}

    // A press or move of the mouse at a place of the knob, in twips from its corner. Only button 1 (left)
    // counts. The lower left, the vertical through the centre in the upper half and all beyond the rim do
    // nothing, nor does a jump of 16 or more pixels. True when the volume was set.
    bool MoveValumeButton(int button, double xTwips, double yTwips);
    // A click on a mark, 0 to 3.
    void ChooseMark(int mark);
    // Sets a volume and puts the dot where it belongs.
    void SetVolume(qint32 volume);

    qint32 Volume() const { return volume_; }
    const KnobDot& Dot() const { return dot_; }

private:
    KnobGeometry geometry_;
    KnobDot dot_;
    qint32 volume_ = 0;
};

// What the player gets for a volume of the knob: a third of it below 10000.
qint32 PlayerVolumeFor(qint32 volume);
// Which of the four marks are lit.
std::array<bool, 4> LitMarks(qint32 volume);

} // namespace kestrune
