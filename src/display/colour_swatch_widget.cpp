#include "display/colour_swatch_widget.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace kestrune {

namespace {

constexpr double corner = 4;
constexpr int textPixels = 11;

double Linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

// Of the two, that which has the better contrast on this colour: both meet at a luminance of 0.18.
QColor TextOn(const QColor& colour) {
    const double luminance =
        0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
    return luminance > 0.18 ? QColor(0, 0, 0) : QColor(255, 255, 255);
}

} // namespace

void ColourSwatchWidget::SetColour(const QColor& colour) {
    colour_ = colour;
    update();
}

void ColourSwatchWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area(rect());
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 26)); // the lower edge catches the light
    painter.drawRoundedRect(area, corner, corner);
    const QRectF glass = area.adjusted(0, 0, 0, -1);
    QPainterPath shape;
    shape.addRoundedRect(glass, corner, corner);
    painter.setClipPath(shape);
    painter.fillRect(glass, colour_);
    QLinearGradient reflection(glass.topLeft(), glass.bottomLeft());
    reflection.setColorAt(0, QColor(255, 255, 255, 30));
    reflection.setColorAt(0.5, QColor(255, 255, 255, 6));
    reflection.setColorAt(0.5001, QColor(255, 255, 255, 0));
    painter.fillRect(glass, reflection);
    painter.setBrush(Qt::NoBrush);
    for (int depth = 0; depth < 3; ++depth) {
        painter.setPen(QPen(QColor(0, 0, 0, 100 - depth * 32), 1));
        painter.drawRoundedRect(glass.adjusted(depth + 0.5, depth + 0.5, -depth - 0.5, depth == 0 ? -0.5 : 6),
                                corner, corner);
    }
    QFont textFont = font();
    textFont.setPixelSize(textPixels);
    painter.setFont(textFont);
    painter.setPen(TextOn(colour_));
    painter.drawText(glass, Qt::AlignCenter, colour_.name().toUpper());
}

} // namespace kestrune
