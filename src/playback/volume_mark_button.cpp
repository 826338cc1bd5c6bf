#include "playback/volume_mark_button.h"

#include "skin/skin_colours.h"

#include <QPainter>

namespace kestrune {

VolumeMarkButton::VolumeMarkButton(const SkinPicture& strip, const QPoint& litInStrip, QWidget* parent)
    : QAbstractButton(parent), strip_(strip), litInStrip_(litInStrip) {
    setFocusPolicy(Qt::TabFocus);
}

void VolumeMarkButton::SetLit(bool lit) {
    if (lit_ != lit) {
        lit_ = lit;
        update();
    }
}

void VolumeMarkButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (lit_) {
        strip_.Paint(painter, {}, {litInStrip_, size()});
    }
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colours::accent, 1));
        painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    }
}

} // namespace kestrune
