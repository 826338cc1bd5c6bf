#include "skin/captioned_button.h"

#include "skin/skin_colours.h"

#include <QPainter>

namespace kestrune {

namespace {

constexpr int fontPixels = 11;
const QColor engraving(0, 0, 0, 150);
const QColor pressedInk(0xF2, 0xF3, 0xFF);

} // namespace

CaptionedButton::CaptionedButton(const SkinPicture& strip, const ButtonLooks& looks, int captionLeft,
                                 QWidget* parent)
    : ImageButton(strip, looks, parent), captionLeft_(captionLeft) {
    QFont face = font();
    face.setPixelSize(fontPixels);
    face.setWeight(QFont::Medium);
    setFont(face);
}

QColor CaptionedButton::Ink() const {
    if (!isEnabled()) {
        return colours::textDisabled;
    }
    if (isDown()) {
        return pressedInk;
    }
    return IsLit() || isChecked() ? colours::textOnGlass : colours::textOnBody;
}

void CaptionedButton::paintEvent(QPaintEvent* event) {
    ImageButton::paintEvent(event);
    QPainter painter(this);
    const int sunk = isDown() || isChecked() ? 1 : 0;
    const QRect place = rect().adjusted(captionLeft_, sunk, 0, sunk);
    painter.setPen(engraving);
    painter.drawText(place.translated(0, -1), Qt::AlignLeft | Qt::AlignVCenter, text());
    painter.setPen(Ink());
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, text());
}

} // namespace kestrune
