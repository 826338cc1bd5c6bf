#include "skin/picture_clip.h"

namespace kestrune {

PictureClip GetImageClip(int clipX, int clipY, const QRect& control, int left, int top) {
    return GetPicClip(clipX, clipY, control.width(), control.height(), control, left, top);
}

PictureClip GetPicClip(int clipX, int clipY, int clipWidth, int clipHeight, const QRect& control, int left,
                       int top) {
    const QPoint place(left >= 0 ? left : control.left(), top >= 0 ? top : control.top());
    const QSize size(clipWidth, clipHeight);
    return {QRect(QPoint(clipX, clipY), size), QRect(place, size)};
}

} // namespace kestrune
