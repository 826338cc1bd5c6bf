#include "tool_window/glass_panel.h"

#include "skin/skin_colours.h"

#include <QLinearGradient>
#include <QPainter>

namespace kestrune {

namespace {

constexpr qreal radius = 5;
constexpr int shadowSteps = 4;
constexpr qreal reflectionHeight = 26;

QLinearGradient Down(const QRectF& rect, const QColor& top, const QColor& bottom) {
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    return gradient;
}

} // namespace

GlassPanel::GlassPanel(QWidget* parent) : QWidget(parent) {
    QPalette bright = palette();
    bright.setColor(QPalette::WindowText, colours::textOnGlass);
    setPalette(bright);
}

void GlassPanel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF all = rect();
    painter.setBrush(Down(all, QColor(10, 11, 13, 190), QColor(255, 255, 255, 33)));
    painter.drawRoundedRect(all, radius + 1, radius + 1);
    const QRectF pane = all.adjusted(1, 1, -1, -1.4);
    painter.setBrush(colours::glass);
    painter.drawRoundedRect(pane, radius, radius);
    painter.setBrush(Qt::NoBrush);
    for (int step = 0; step < shadowSteps; ++step) {
        const qreal inset = 0.5 + step;
        painter.setPen(QPen(QColor(0, 0, 0, 107 - 25 * step), 1));
        painter.drawRoundedRect(pane.adjusted(inset, inset, -inset, -inset), radius - step, radius - step);
    }
    QRectF shine = pane.adjusted(1.5, 1.2, -1.5, 0);
    shine.setHeight(reflectionHeight);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Down(shine, QColor(255, 255, 255, 18), QColor(255, 255, 255, 2)));
    painter.drawRoundedRect(shine, radius - 1.5, radius - 1.5);
}

} // namespace kestrune
