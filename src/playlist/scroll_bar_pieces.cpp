#include "playlist/scroll_bar_pieces.h"

#include "playlist/playlist_look.h"

#include <QPainter>

namespace kestrune {

namespace {

constexpr double disabledOpacity = 0.35;
constexpr double gripSpacing = 3;

struct ThumbColours {
    QColor left;
    QColor right;
};

ThumbColours ColoursOf(bool isHeld, bool isHovered) {
    if (isHeld) {
        return {QColor(0xB9, 0xB9, 0xFF), QColor(0x96, 0x96, 0xFF)};
    }
    if (isHovered) {
        return {QColor(0xA6, 0xA6, 0xFF), QColor(0x80, 0x80, 0xFF)};
    }
    return {QColor(0x8C, 0x8C, 0xF4), QColor(0x62, 0x62, 0xC8)};
}

} // namespace

void TrackPiece::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF groove = QRectF(rect()).adjusted(1, 0, -1, 0);
    const double radius = groove.width() / 2;
    painter.setPen(Qt::NoPen);
    // The light from above catches the lower rim of the groove.
    painter.setBrush(look::WithOpacity(Qt::white, 0.08));
    painter.drawRoundedRect(groove.translated(0.5, 0.5), radius, radius);
    QLinearGradient depth(groove.topLeft(), groove.topRight());
    depth.setColorAt(0, QColor(8, 8, 9));
    depth.setColorAt(0.5, look::glass);
    depth.setColorAt(1, QColor(26, 26, 29));
    painter.setBrush(depth);
    painter.drawRoundedRect(groove, radius, radius);
}

ThumbPiece::ThumbPiece(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_Hover);
}

void ThumbPiece::SetLook(bool isHeld, bool isFocused, bool canMove) {
    isHeld_ = isHeld;
    isFocused_ = isFocused;
    canMove_ = canMove;
    update();
}

void ThumbPiece::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!canMove_) {
        painter.setOpacity(disabledOpacity);
    }
    const QRectF body = QRectF(rect()).adjusted(2, 1, -2, -1);
    const double radius = body.width() / 2;
    const ThumbColours colours = ColoursOf(isHeld_, canMove_ && underMouse());
    if (isFocused_) {
        painter.setPen(QPen(look::accentOnSelection, 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius + 1.5, radius + 1.5);
    }
    QLinearGradient light(body.topLeft(), body.topRight());
    light.setColorAt(0, colours.left);
    light.setColorAt(1, colours.right);
    painter.setPen(Qt::NoPen);
    painter.setBrush(light);
    painter.drawRoundedRect(body, radius, radius);
    for (int line = -1; line <= 1; ++line) {
        const double y = body.center().y() + line * gripSpacing - 0.5;
        painter.fillRect(QRectF(body.left() + 1.5, y, body.width() - 3, 1),
                         look::WithOpacity(Qt::black, 0.5));
        painter.fillRect(QRectF(body.left() + 1.5, y + 1, body.width() - 3, 0.5),
                         look::WithOpacity(Qt::white, 0.25));
    }
}

ArrowPiece::ArrowPiece(ScrollArrow arrow, QWidget* parent) : QToolButton(parent), arrow_(arrow) {
    setAutoRepeat(true);
    setFocusPolicy(Qt::NoFocus); // the bar takes the keys
    setAttribute(Qt::WA_Hover);
}

void ArrowPiece::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = rect();
    const bool isLit = isEnabled() && (underMouse() || isDown());
    if (isLit) {
        QRadialGradient halo(area.center(), area.width() / 2);
        halo.setColorAt(0, look::WithOpacity(look::accent, isDown() ? 0.2 : 0.35));
        halo.setColorAt(1, look::WithOpacity(look::accent, 0));
        painter.fillRect(area, halo);
    }
    const QPointF centre = area.center() + QPointF(0, isDown() ? 1 : 0);
    const double rise = arrow_ == ScrollArrow::Up ? -1.5 : 1.5;
    const QPolygonF glyph(
        {centre + QPointF(-3, -rise), centre + QPointF(0, rise), centre + QPointF(3, -rise)});
    const auto draw = [&painter](const QPolygonF& line, const QColor& colour) {
        painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(line);
    };
    painter.setOpacity(isEnabled() ? 1 : disabledOpacity);
    draw(glyph.translated(0, 1), look::WithOpacity(Qt::black, 0.6));
    draw(glyph, isDown() ? QColor(0xC8, 0xC8, 0xFF) : isLit ? look::accent : QColor(0xC3, 0xC8, 0xD2));
}

} // namespace kestrune
