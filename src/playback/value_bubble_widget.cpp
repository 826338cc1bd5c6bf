#include "playback/value_bubble_widget.h"

#include "skin/skin_colours.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int plateHeight = 18;
constexpr int padding = 7;
constexpr int tip = 4; // of the plate, towards the thing
constexpr int textPixels = 11;

QFont TextFont(QFont font) {
    font.setPixelSize(textPixels);
    font.setWeight(QFont::DemiBold);
    return font;
}

} // namespace

ValueBubbleWidget::ValueBubbleWidget(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setVisible(false);
}

void ValueBubbleWidget::ShowBeside(const QPointF& at, int gap, const QString& text) {
    text_ = text;
    const int textWidth = QFontMetrics(TextFont(font())).horizontalAdvance(text);
    const int bubbleWidth = textWidth + 2 * padding + tip;
    const QSize room = parentWidget()->size();
    const int right = static_cast<int>(std::lround(at.x())) + gap;
    isOnTheLeft_ = right + bubbleWidth > room.width();
    const int left = isOnTheLeft_ ? static_cast<int>(std::lround(at.x())) - gap - bubbleWidth : right;
    const int top = std::clamp(static_cast<int>(std::lround(at.y())) - plateHeight / 2, 1,
                               room.height() - plateHeight - 1);
    setGeometry(left, top, bubbleWidth, plateHeight);
    setVisible(true);
    raise();
    update();
}

void ValueBubbleWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF plate =
        QRectF(rect()).adjusted(isOnTheLeft_ ? 0.5 : tip + 0.5, 0.5, isOnTheLeft_ ? -tip - 0.5 : -0.5, -0.5);
    const double middle = plate.center().y();
    const double root = isOnTheLeft_ ? plate.right() : plate.left();
    const double end = isOnTheLeft_ ? width() - 0.5 : 0.5;
    QPainterPath plateShape;
    plateShape.addRoundedRect(plate, 4, 4);
    QPainterPath tipShape;
    tipShape.addPolygon(QPolygonF({{root, middle - tip}, {end, middle}, {root, middle + tip}}));
    tipShape.closeSubpath();
    QLinearGradient body(plate.topLeft(), plate.bottomLeft());
    body.setColorAt(0, QColor(0x45, 0x4B, 0x56));
    body.setColorAt(1, QColor(0x24, 0x28, 0x2F));
    painter.setPen(QPen(colours::accent, 1));
    painter.setBrush(body);
    painter.drawPath(plateShape.united(tipShape));
    painter.setFont(TextFont(font()));
    painter.setPen(QColor(0xED, 0xEE, 0xFC));
    painter.drawText(plate, Qt::AlignCenter, text_);
}

} // namespace kestrune
