#include "main_window/menu_label.h"

#include "skin/skin_colours.h"

#include <QPainter>

namespace kestrune {

namespace {

constexpr int fontPixels = 11;
constexpr qreal haloStrength = 0.30;

} // namespace

MenuLabel::MenuLabel(const QString& text, QWidget* parent) : QAbstractButton(parent) {
    setText(text);
    // The window opens the menus itself, at another place than a click does.
    setShortcut({});
    QFont face = font();
    face.setPixelSize(fontPixels);
    face.setWeight(QFont::Medium);
    setFont(face);
    setFocusPolicy(Qt::TabFocus);
}

void MenuLabel::ShowLetter(bool shown) {
    if (letterShown_ != shown) {
        letterShown_ = shown;
        update();
    }
}

void MenuLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF plate = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    if (lit_ || isDown()) {
        QRadialGradient halo(plate.center(), plate.width() * 0.55);
        QColor glow = colours::accent;
        glow.setAlphaF(isDown() ? haloStrength * 1.5 : haloStrength);
        halo.setColorAt(0, glow);
        glow.setAlphaF(0);
        halo.setColorAt(1, glow);
        painter.setPen(Qt::NoPen);
        painter.setBrush(halo);
        painter.drawRoundedRect(plate, 4, 4);
    }
    if (hasFocus()) {
        painter.setPen(QPen(colours::accent, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(plate, 4, 4);
    }
    painter.setPen(lit_ || isDown() ? colours::textOnGlass : colours::textOnBody);
    painter.drawText(rect(), Qt::AlignCenter | (letterShown_ ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                     text());
}

void MenuLabel::enterEvent(QEnterEvent* event) {
    lit_ = true;
    update();
    QAbstractButton::enterEvent(event);
}

void MenuLabel::leaveEvent(QEvent* event) {
    lit_ = false;
    update();
    QAbstractButton::leaveEvent(event);
}

} // namespace kestrune
