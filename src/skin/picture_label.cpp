#include "skin/picture_label.h"

#include "skin/picture_clip.h"
#include "skin/skin_picture.h"

#include <QPainter>

namespace kestrune {

PictureLabel::PictureLabel(const SkinPicture& strip, QWidget* parent) : QWidget(parent), strip_(strip) {
    setAttribute(Qt::WA_NoSystemBackground);
    setMouseTracking(true);
}

void PictureLabel::SetCut(const QRect& piece) {
    if (piece != piece_) {
        piece_ = piece;
        update();
    }
}

void PictureLabel::GetPicClip(int clipX, int clipY, int clipWidth, int clipHeight, int left, int top) {
    const PictureClip clip = kestrune::GetPicClip(clipX, clipY, clipWidth, clipHeight, geometry(), left, top);
    setGeometry(clip.geometry);
    SetCut(clip.strip);
}

void PictureLabel::GetImageClip(int clipX, int clipY, int left, int top) {
    GetPicClip(clipX, clipY, width(), height(), left, top);
}

void PictureLabel::paintEvent(QPaintEvent* /*event*/) {
    if (!piece_.isEmpty()) {
        QPainter painter(this);
        strip_.Paint(painter, {}, piece_);
    }
}

} // namespace kestrune
