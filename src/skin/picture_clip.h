// Which piece of a picture strip a control shows, and where the control then lies.
#pragma once

#include <QRect>

namespace kestrune {

struct PictureClip {
    QRect strip;    // the piece of the strip
    QRect geometry; // of the control in its parent
};

// A piece as large as the control itself. `left` and `top` move the control; below 0 they leave it where it
// is, each for itself.
PictureClip GetImageClip(int clipX, int clipY, const QRect& control, int left = -1, int top = -1);

// The same with a size of its own, which the control takes too.
PictureClip GetPicClip(int clipX, int clipY, int clipWidth, int clipHeight, const QRect& control,
                       int left = -1, int top = -1);

} // namespace kestrune
