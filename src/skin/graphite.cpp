#include "skin/graphite.h"

#include "skin/skin_colours.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>

namespace kestrune {

namespace {

constexpr quint32 grainSeed = 0x6B657374; // any; the grain is the same in every window
constexpr int grainAlpha = 5;

// Brushed from left to right: short strokes, a little lighter or darker than the metal.
void PaintGrain(QPainter& painter, const QSize& size) {
    QRandomGenerator random(grainSeed);
    for (int y = 0; y < size.height(); ++y) {
        int x = -random.bounded(60);
        while (x < size.width()) {
            const int length = 24 + random.bounded(120);
            const int shade = random.bounded(2) == 0 ? 0 : 255;
            painter.fillRect(QRect(x, y, length, 1), QColor(shade, shade, shade, random.bounded(grainAlpha)));
            x += length;
        }
    }
}

} // namespace

void PaintGraphite(QPainter& painter, const QSize& size, const QSize& ellipse) {
    const QRectF whole(QPointF(0, 0), QSizeF(size));
    QLinearGradient shade(whole.topLeft(), whole.bottomLeft());
    shade.setColorAt(0, colours::bodyTop);
    shade.setColorAt(1, colours::bodyBottom);
    painter.fillRect(whole, shade);
    PaintGrain(painter, size);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const qreal radiusX = ellipse.width() / 2.0;
    const qreal radiusY = ellipse.height() / 2.0;
    QLinearGradient edge(whole.topLeft(), whole.bottomLeft());
    edge.setColorAt(0, QColor(255, 255, 255, 34));
    edge.setColorAt(0.5, QColor(255, 255, 255, 10));
    edge.setColorAt(1, QColor(255, 255, 255, 4));
    painter.setPen(QPen(edge, 1));
    painter.drawRoundedRect(whole.adjusted(1.5, 1.5, -1.5, -1.5), radiusX - 1.5, radiusY - 1.5);
    painter.setPen(QPen(QColor(8, 9, 11), 1));
    painter.drawRoundedRect(whole.adjusted(0.5, 0.5, -0.5, -0.5), radiusX - 0.5, radiusY - 0.5);
    painter.restore();
}

} // namespace kestrune
