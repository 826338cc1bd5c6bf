// The style's controls that are drawn in one piece: menus, tabs, headers, bars of progress.
#include "skin/skin_colours.h"
#include "skin/skin_style.h"
#include "skin/style_paint.h"

#include <QPainter>
#include <QPainterPath>

namespace kestrune {

using namespace shapes;

namespace {

constexpr int menuMarkWidth = 26;
constexpr int menuPadding = 10;
constexpr int menuArrowWidth = 18;
constexpr int menuInset = 4;

const QColor brightText(0xF2, 0xF3, 0xFA);

void DrawSeparator(QPainter& painter, const QRect& rect) {
    const int y = rect.center().y();
    painter.fillRect(QRect(rect.left() + menuPadding, y, rect.width() - 2 * menuPadding, 1),
                     QColor(0, 0, 0, 120));
    painter.fillRect(QRect(rect.left() + menuPadding, y + 1, rect.width() - 2 * menuPadding, 1),
                     QColor(255, 255, 255, 18));
}

void DrawMenuMark(const QStyleOptionMenuItem& item, QPainter& painter, bool enabled) {
    const QRectF mark(item.rect.left() + 8, item.rect.center().y() - 6.5, 14, 14);
    const QColor colour = enabled ? colours::accentOnBody : colours::textDisabled;
    if (item.checkType == QStyleOptionMenuItem::Exclusive) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawEllipse(mark.center(), 3, 3);
        painter.restore();
    } else {
        Tick(painter, mark, colour);
    }
}

void DrawGlow(QPainter& painter, const QRectF& rect, qreal radius) {
    QLinearGradient lit(rect.topLeft(), rect.bottomLeft());
    lit.setColorAt(0, QColor(0x9C, 0x9C, 0xFF));
    lit.setColorAt(1, QColor(0x66, 0x66, 0xE6));
    painter.setPen(Qt::NoPen);
    painter.setBrush(lit);
    painter.drawRoundedRect(rect, radius, radius);
}

void DrawDots(QPainter& painter, const QStyleOption& option, std::initializer_list<QPointF> places) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(option.state.testFlag(QStyle::State_MouseOver) ? colours::accent
                                                                    : QColor(255, 255, 255, 60));
    for (const QPointF& place : places) {
        painter.drawEllipse(QRectF(option.rect).center() + place, 1.1, 1.1);
    }
    painter.restore();
}

void DrawSplitter(const QStyleOption& option, QPainter& painter) {
    if (option.state.testFlag(QStyle::State_Horizontal)) {
        DrawDots(painter, option, {{0, -5}, {0, 0}, {0, 5}});
    } else {
        DrawDots(painter, option, {{-5, 0}, {0, 0}, {5, 0}});
    }
}

void DrawSizeGrip(const QStyleOption& option, QPainter& painter) {
    DrawDots(painter, option, {{4, -4}, {0, 0}, {4, 0}, {-4, 4}, {0, 4}, {4, 4}});
}

} // namespace

void SkinStyle::DrawMenuItem(const QStyleOption& option, QPainter& painter, const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(&option);
    if (item == nullptr) {
        return;
    }
    if (item->menuItemType == QStyleOptionMenuItem::Separator) {
        DrawSeparator(painter, item->rect);
        return;
    }
    const bool enabled = item->state.testFlag(State_Enabled);
    const bool selected = enabled && item->state.testFlag(State_Selected);
    if (selected) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        QColor lit = colours::accent;
        lit.setAlphaF(0.34F);
        painter.setPen(Qt::NoPen);
        painter.setBrush(lit);
        painter.drawRoundedRect(QRectF(item->rect).adjusted(menuInset, 0.5, -menuInset, -0.5), 4, 4);
        painter.restore();
    }
    if (item->checkType != QStyleOptionMenuItem::NotCheckable && item->checked) {
        DrawMenuMark(*item, painter, enabled);
    } else if (!item->icon.isNull()) {
        const QRect place(item->rect.left() + 7, item->rect.center().y() - 7, 16, 16);
        item->icon.paint(&painter, place, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
    }
    const QColor text = !enabled ? colours::textDisabled : selected ? brightText : colours::textOnBody;
    const QRect textRect = item->rect.adjusted(menuMarkWidth, 0, -menuArrowWidth, 0);
    const qsizetype tab = item->text.indexOf(u'\t');
    painter.setFont(item->font);
    painter.setPen(text);
    const int flags =
        Qt::AlignVCenter | Qt::TextSingleLine |
        (proxy()->styleHint(SH_UnderlineShortcut, item, widget, nullptr) != 0 ? Qt::TextShowMnemonic
                                                                              : Qt::TextHideMnemonic);
    painter.drawText(textRect, flags | Qt::AlignLeft, item->text.left(tab));
    if (tab >= 0) {
        painter.setPen(enabled ? (selected ? text : colours::textMutedOnBody) : colours::textDisabled);
        painter.drawText(textRect, Qt::AlignVCenter | Qt::AlignRight | Qt::TextSingleLine,
                         item->text.mid(tab + 1));
    }
    if (item->menuItemType == QStyleOptionMenuItem::SubMenu) {
        const QRectF arrow(item->rect.right() - menuArrowWidth, item->rect.top(), menuArrowWidth - 2,
                           item->rect.height());
        Chevron(painter, arrow, Direction::Right, text);
    }
}

void SkinStyle::DrawTab(const QStyleOption& option, QPainter& painter) const {
    const Look look(option);
    const bool selected = option.state.testFlag(State_Selected);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF tab = QRectF(option.rect).adjusted(0.5, 2.5, -0.5, 4);
    painter.setClipRect(option.rect);
    if (selected || look.hover) {
        QLinearGradient shade(tab.topLeft(), tab.bottomLeft());
        shade.setColorAt(0, selected ? QColor(0x43, 0x49, 0x53) : QColor(255, 255, 255, 16));
        shade.setColorAt(1, selected ? QColor(0x2A, 0x2E, 0x35) : QColor(255, 255, 255, 4));
        painter.setPen(selected ? QPen(QColor(0x0E, 0x0F, 0x12), 1) : QPen(Qt::NoPen));
        painter.setBrush(shade);
        painter.drawRoundedRect(tab, 5, 5);
    }
    if (selected) {
        const QRectF line(option.rect.left() + 8, option.rect.bottom() - 1, option.rect.width() - 16, 2);
        painter.setPen(Qt::NoPen);
        painter.setBrush(look.enabled ? colours::accent : colours::textDisabled);
        painter.drawRoundedRect(line, 1, 1);
    }
    if (look.focus) {
        painter.setClipping(false);
        FocusRing(painter, QRectF(option.rect).adjusted(2, 3, -2, -3));
    }
    painter.restore();
}

void SkinStyle::DrawHeaderSection(const QStyleOption& option, QPainter& painter) const {
    const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(&option);
    const Look look(option);
    const QRectF rect(option.rect);
    const QColor light(0x39, 0x3E, 0x46);
    const QColor dark(0x2A, 0x2E, 0x34);
    if (header != nullptr && header->orientation == Qt::Vertical) {
        painter.fillRect(rect, look.hover ? light : dark);
        painter.fillRect(QRectF(rect.left(), rect.bottom() - 1, rect.width(), 1), QColor(0, 0, 0, 90));
        painter.fillRect(QRectF(rect.right() - 1, rect.top(), 1, rect.height()), QColor(0, 0, 0, 130));
        return;
    }
    QLinearGradient shade(rect.topLeft(), rect.bottomLeft());
    shade.setColorAt(0, look.hover ? light.lighter(120) : light);
    shade.setColorAt(1, look.pressed ? dark.darker(125) : dark);
    painter.fillRect(rect, shade);
    painter.fillRect(QRectF(rect.left(), rect.bottom() - 1, rect.width(), 1), QColor(0, 0, 0, 150));
    painter.fillRect(QRectF(rect.left(), rect.top(), rect.width(), 1), QColor(255, 255, 255, 20));
    if (header != nullptr) {
        painter.fillRect(QRectF(rect.right() - 1, rect.top() + 4, 1, rect.height() - 8),
                         QColor(0, 0, 0, 130));
    }
}

void SkinStyle::DrawProgress(const QStyleOption& option, QPainter& painter) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(&option);
    if (bar == nullptr) {
        return;
    }
    const bool level = bar->state.testFlag(State_Horizontal);
    const QRectF inside = QRectF(bar->rect).adjusted(2, 2, -2, -2);
    const qreal length = level ? inside.width() : inside.height();
    qreal first = 0;
    qreal last = length;
    if (bar->maximum > bar->minimum) {
        const qreal part = (static_cast<qreal>(bar->progress) - bar->minimum) /
                           (static_cast<qreal>(bar->maximum) - bar->minimum);
        last = length * std::clamp(part, 0.0, 1.0);
    } else {
        const qreal phase = BusyPhase(bar->styleObject);
        const qreal band = length * 0.3;
        first = (length + band) * phase - band;
        last = std::min(length, first + band);
        first = std::max(0.0, first);
    }
    if (last - first < 1) {
        return;
    }
    const bool reversed =
        level ? (bar->direction == Qt::RightToLeft) != bar->invertedAppearance : !bar->invertedAppearance;
    if (reversed) {
        const qreal end = length - first;
        first = length - last;
        last = end;
    }
    const QRectF filled = level ? QRectF(inside.left() + first, inside.top(), last - first, inside.height())
                                : QRectF(inside.left(), inside.top() + first, inside.width(), last - first);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(bar->state.testFlag(State_Enabled) ? 1 : 0.35);
    DrawGlow(painter, filled, 2.5);
    painter.restore();
}

bool SkinStyle::DrawLabelled(ControlElement element, const QStyleOption& option, QPainter& painter,
                             const QWidget* widget) const {
    const Look look(option);
    if (element == CE_PushButtonLabel) {
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option)) {
            QStyleOptionButton coloured = *button;
            const bool lit = look.on && look.enabled;
            coloured.palette.setColor(QPalette::ButtonText, lit ? colours::accentOnBody : BodyText(look));
            QProxyStyle::drawControl(element, &coloured, &painter, widget);
            return true;
        }
    } else if (element == CE_TabBarTabLabel) {
        if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(&option)) {
            QStyleOptionTab coloured = *tab;
            const QColor text = !look.enabled                         ? colours::textDisabled
                                : tab->state.testFlag(State_Selected) ? brightText
                                : look.hover                          ? colours::textOnBody
                                                                      : colours::textMutedOnBody;
            coloured.palette.setColor(QPalette::WindowText, text);
            // The tab's own shape shows the focus.
            coloured.state.setFlag(State_HasFocus, false);
            QProxyStyle::drawControl(element, &coloured, &painter, widget);
            return true;
        }
    } else if (element == CE_ProgressBarLabel) {
        if (const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(&option)) {
            if (!bar->textVisible) {
                return true;
            }
            // Readable on the lit part and on the glass alike.
            QPainterPath outline;
            const QFontMetricsF metrics(painter.font());
            const QPointF at(bar->rect.center().x() + 0.5 - metrics.horizontalAdvance(bar->text) / 2,
                             bar->rect.center().y() + 0.5 + metrics.capHeight() / 2);
            outline.addText(at, painter.font(), bar->text);
            painter.save();
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QPen(QColor(10, 10, 20, 190), 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.drawPath(outline);
            painter.fillPath(outline, look.enabled ? QColor(Qt::white) : colours::textDisabled);
            painter.restore();
            return true;
        }
    }
    return false;
}

void SkinStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    switch (element) {
    case CE_MenuItem:
        DrawMenuItem(*option, *painter, widget);
        return;
    case CE_MenuEmptyArea:
    case CE_MenuTearoff:
    case CE_MenuHMargin:
    case CE_MenuVMargin:
        return;
    case CE_TabBarTabShape:
        DrawTab(*option, *painter);
        return;
    case CE_HeaderSection:
    case CE_HeaderEmptyArea:
        DrawHeaderSection(*option, *painter);
        return;
    case CE_ProgressBarGroove:
        Field(*painter, option->rect, Look(*option), false, 3.5);
        return;
    case CE_ProgressBarContents:
        DrawProgress(*option, *painter);
        return;
    case CE_Splitter:
        DrawSplitter(*option, *painter);
        return;
    case CE_SizeGrip:
        DrawSizeGrip(*option, *painter);
        return;
    default:
        if (!DrawLabelled(element, *option, *painter, widget)) {
            QProxyStyle::drawControl(element, option, painter, widget);
        }
    }
}

} // namespace kestrune
