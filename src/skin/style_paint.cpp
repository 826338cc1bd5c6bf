#include "skin/style_paint.h"

#include "skin/skin_colours.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace kestrune::shapes {

namespace {

constexpr QColor keyTop(0x43, 0x49, 0x53);
constexpr QColor keyBottom(0x2C, 0x30, 0x37);
constexpr QColor darkEdge(0x0E, 0x0F, 0x12);
constexpr QColor switchEdge(0x6A, 0x71, 0x7E);
constexpr qreal keyRadius = 5;

QLinearGradient Shade(const QRectF& rect, const QColor& top, const QColor& bottom) {
    QLinearGradient shade(rect.topLeft(), rect.bottomLeft());
    shade.setColorAt(0, top);
    shade.setColorAt(1, bottom);
    return shade;
}

} // namespace

Look::Look(const QStyleOption& option)
    : enabled(option.state.testFlag(QStyle::State_Enabled)),
      hover(enabled && option.state.testFlag(QStyle::State_MouseOver)),
      pressed(enabled && option.state.testFlag(QStyle::State_Sunken)),
      on(option.state.testFlag(QStyle::State_On)),
      partly(option.state.testFlag(QStyle::State_NoChange)),
      focus(enabled && option.state.testFlag(QStyle::State_HasFocus) &&
            option.state.testFlag(QStyle::State_KeyboardFocusChange)) {}

QColor Mixed(const QColor& under, const QColor& over, qreal amount) {
    return QColor::fromRgbF(static_cast<float>(under.redF() + (over.redF() - under.redF()) * amount),
                            static_cast<float>(under.greenF() + (over.greenF() - under.greenF()) * amount),
                            static_cast<float>(under.blueF() + (over.blueF() - under.blueF()) * amount));
}

QColor BodyText(const Look& look) {
    if (!look.enabled) {
        return colours::textDisabled;
    }
    return look.hover || look.pressed ? QColor(0xF2, 0xF3, 0xFA) : colours::textOnBody;
}

void Key(QPainter& painter, const QRectF& rect, const Look& look, bool isDefault) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF body = rect.adjusted(1.5, 1.5, -1.5, -1.5);
    const bool down = look.pressed || look.on;
    QColor top = down ? keyBottom.darker(135) : keyTop;
    QColor bottom = down ? keyBottom.darker(108) : keyBottom;
    if (look.hover && !down) {
        top = top.lighter(112);
        bottom = bottom.lighter(112);
    }
    painter.setOpacity(look.enabled ? 1 : 0.55);
    painter.setPen(QPen(darkEdge, 1));
    painter.setBrush(Shade(body, top, bottom));
    painter.drawRoundedRect(body, keyRadius, keyRadius);
    painter.setBrush(Qt::NoBrush);
    const QColor light = down ? QColor(0, 0, 0, 70) : QColor(255, 255, 255, 30);
    painter.setPen(QPen(Shade(body, light, QColor(255, 255, 255, 0)), 1));
    painter.drawRoundedRect(body.adjusted(1, 1, -1, -1), keyRadius - 1, keyRadius - 1);
    QColor edge = colours::accent;
    edge.setAlphaF(look.focus ? 1.0F : look.hover ? 0.65F : isDefault ? 0.5F : 0.0F);
    if (edge.alpha() > 0 && look.enabled) {
        painter.setPen(QPen(edge, 1));
        painter.drawRoundedRect(body, keyRadius, keyRadius);
        edge.setAlphaF(edge.alphaF() * 0.28F);
        painter.setPen(QPen(edge, 1));
        painter.drawRoundedRect(body.adjusted(-1, -1, 1, 1), keyRadius + 1, keyRadius + 1);
    }
    painter.restore();
}

void Field(QPainter& painter, const QRectF& rect, const Look& look, bool focused, qreal radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF body = rect.adjusted(0.5, 0.5, -0.5, -0.5);
    // The light falls on the lower lip of what is let in.
    painter.setPen(QPen(Shade(body, QColor(0, 0, 0, 120), QColor(255, 255, 255, look.enabled ? 34 : 16)), 1));
    painter.setBrush(look.enabled ? colours::glass : Mixed(colours::glass, colours::bodyTop, 0.35));
    painter.drawRoundedRect(body, radius, radius);
    painter.setBrush(Qt::NoBrush);
    if (focused || look.hover) {
        QColor edge = colours::accent;
        edge.setAlphaF(focused ? 1.0F : 0.45F);
        painter.setPen(QPen(edge, 1));
        painter.drawRoundedRect(body, radius, radius);
    } else if (look.enabled) {
        painter.setPen(QPen(QColor(0, 0, 0, 110), 1));
        painter.drawLine(body.topLeft() + QPointF(radius, 1), body.topRight() + QPointF(-radius, 1));
    }
    painter.restore();
}

void Chevron(QPainter& painter, const QRectF& rect, Direction direction, const QColor& colour) {
    constexpr qreal half = 3.25;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect.center());
    constexpr int turns[] = {180, 0, 90, -90};
    painter.rotate(turns[static_cast<int>(direction)]);
    QPainterPath path(QPointF(-half, -half / 2));
    path.lineTo(0, half / 2);
    path.lineTo(half, -half / 2);
    painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
    painter.restore();
}

void Tick(QPainter& painter, const QRectF& rect, const QColor& colour) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal unit = rect.width() / 14;
    QPainterPath path(rect.topLeft() + QPointF(3.4, 7.2) * unit);
    path.lineTo(rect.topLeft() + QPointF(6, 9.9) * unit);
    path.lineTo(rect.topLeft() + QPointF(10.7, 4.3) * unit);
    painter.setPen(QPen(colour, 1.9 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
    painter.restore();
}

void FocusRing(QPainter& painter, const QRectF& rect, qreal radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colours::accent, 1));
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.restore();
}

void Panel(QPainter& painter, const QRectF& rect, qreal radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF body = rect.adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(QPen(darkEdge, 1));
    painter.setBrush(Shade(body, QColor(0x31, 0x36, 0x3E), QColor(0x23, 0x26, 0x2C)));
    painter.drawRoundedRect(body, radius, radius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Shade(body, QColor(255, 255, 255, 36), QColor(255, 255, 255, 8)), 1));
    painter.drawRoundedRect(body.adjusted(1, 1, -1, -1), radius - 1, radius - 1);
    painter.restore();
}

void SwitchGround(QPainter& painter, const QRectF& rect, const Look& look, bool round) {
    const QRectF body = rect.adjusted(0.5, 0.5, -0.5, -0.5);
    const qreal radius = round ? body.width() / 2 : 3.5;
    const bool lit = look.enabled && (look.on || look.partly);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QColor edge = switchEdge;
    if (look.focus || look.hover) {
        edge = colours::accent;
    } else if (lit) {
        edge = Mixed(switchEdge, colours::accent, 0.45);
    } else if (!look.enabled) {
        edge = Mixed(colours::bodyBottom, switchEdge, 0.4);
    }
    QColor ground = look.enabled ? colours::glass : Mixed(colours::glass, colours::bodyTop, 0.35);
    if (lit || look.pressed) {
        ground = Mixed(ground, colours::accent, look.pressed ? 0.34 : 0.22);
    }
    painter.setPen(QPen(edge, 1));
    painter.setBrush(ground);
    painter.drawRoundedRect(body, radius, radius);
    painter.restore();
}

} // namespace kestrune::shapes
