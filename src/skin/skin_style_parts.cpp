// The style's primitives: grounds, frames, marks.
#include "skin/skin_colours.h"
#include "skin/skin_style.h"
#include "skin/style_paint.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QPainter>

namespace kestrune {

using namespace shapes;

namespace {

constexpr QColor floatingEdge(0x45, 0x49, 0x5C); // of glass above the windows
constexpr qreal menuRadius = 8;
constexpr qreal tipRadius = 5;

QColor MarkColour(const Look& look) {
    return look.enabled ? colours::accent : colours::textDisabled;
}

void DrawCheckBox(const QStyleOption& option, QPainter& painter) {
    const Look look(option);
    const QRectF box = option.rect;
    SwitchGround(painter, box, look, false);
    if (look.partly) {
        painter.fillRect(QRectF(box.center().x() - 3.5, box.center().y() - 1, 7, 2), MarkColour(look));
    } else if (look.on) {
        Tick(painter, box, MarkColour(look));
    }
}

void DrawRadioButton(const QStyleOption& option, QPainter& painter) {
    const Look look(option);
    SwitchGround(painter, option.rect, look, true);
    if (look.on) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(MarkColour(look));
        painter.drawEllipse(QRectF(option.rect).center(), 3, 3);
        painter.restore();
    }
}

void DrawToolPanel(const QStyleOption& option, QPainter& painter) {
    const Look look(option);
    const bool raised = !option.state.testFlag(QStyle::State_AutoRaise);
    if (raised) {
        Key(painter, option.rect, look, false);
        return;
    }
    if (look.pressed || look.on || look.hover) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(look.pressed || look.on ? QColor(0, 0, 0, 90) : QColor(255, 255, 255, 20));
        painter.drawRoundedRect(QRectF(option.rect).adjusted(1, 1, -1, -1), 4, 4);
        painter.restore();
    }
    if (look.focus) {
        FocusRing(painter, QRectF(option.rect).adjusted(1, 1, -1, -1));
    }
}

// The frame of a list, a text or any other sunken panel: glass with a soft edge.
void DrawFrame(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    if (widget != nullptr && widget->inherits("QComboBoxPrivateContainer")) {
        painter.setPen(QPen(floatingEdge, 1));
        painter.drawRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5));
        return;
    }
    const Look look(option);
    // A list with a current row shows the focus there.
    const auto* view = qobject_cast<const QAbstractItemView*>(widget);
    const bool focused = look.focus && (view == nullptr || !view->currentIndex().isValid());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const QRectF edge = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    QLinearGradient lip(edge.topLeft(), edge.bottomLeft());
    lip.setColorAt(0, QColor(0, 0, 0, 170));
    lip.setColorAt(1, QColor(255, 255, 255, 30));
    painter.setPen(focused ? QPen(colours::accent, 1) : QPen(lip, 1));
    painter.drawRoundedRect(edge, 2, 2);
    painter.restore();
}

void DrawGroupFrame(const QStyleOption& option, QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF body = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    QLinearGradient edge(body.topLeft(), body.bottomLeft());
    edge.setColorAt(0, QColor(0, 0, 0, 110));
    edge.setColorAt(1, QColor(255, 255, 255, 22));
    painter.setPen(QPen(edge, 1));
    painter.setBrush(QColor(0, 0, 0, 38));
    painter.drawRoundedRect(body, 6, 6);
    painter.restore();
}

void DrawTip(const QStyleOption& option, QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF body = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(QPen(floatingEdge, 1));
    painter.setBrush(colours::glass);
    painter.drawRoundedRect(body, tipRadius, tipRadius);
    QLinearGradient shine(body.topLeft(), body.center());
    shine.setColorAt(0, QColor(255, 255, 255, 16));
    shine.setColorAt(1, QColor(255, 255, 255, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(shine);
    painter.drawRoundedRect(body.adjusted(1, 1, -1, -1), tipRadius - 1, tipRadius - 1);
    painter.restore();
}

void DrawBranch(const QStyleOption& option, QPainter& painter) {
    if (option.state.testFlag(QStyle::State_Children)) {
        const bool open = option.state.testFlag(QStyle::State_Open);
        const bool hover = option.state.testFlag(QStyle::State_MouseOver);
        Chevron(painter, option.rect, open ? Direction::Down : Direction::Right,
                hover ? colours::accent : colours::textMuted);
    }
}

} // namespace

bool SkinStyle::DrawButtonPart(PrimitiveElement element, const QStyleOption& option,
                               QPainter& painter) const {
    const Look look(option);
    switch (element) {
    case PE_PanelButtonCommand: {
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
        const bool isDefault =
            button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton);
        const bool flat = button != nullptr && button->features.testFlag(QStyleOptionButton::Flat);
        if (!flat || look.pressed || look.on || look.hover) {
            Key(painter, option.rect, look, isDefault);
        } else if (look.focus) {
            FocusRing(painter, QRectF(option.rect).adjusted(1, 1, -1, -1), 5);
        }
        return true;
    }
    case PE_FrameDefaultButton:
        return true;
    case PE_PanelButtonTool:
        DrawToolPanel(option, painter);
        return true;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        DrawCheckBox(option, painter);
        return true;
    case PE_IndicatorRadioButton:
        DrawRadioButton(option, painter);
        return true;
    case PE_IndicatorArrowUp:
        Chevron(painter, option.rect, Direction::Up, BodyText(look));
        return true;
    case PE_IndicatorArrowDown:
    case PE_IndicatorButtonDropDown:
        Chevron(painter, option.rect, Direction::Down, BodyText(look));
        return true;
    case PE_IndicatorArrowLeft:
        Chevron(painter, option.rect, Direction::Left, BodyText(look));
        return true;
    case PE_IndicatorArrowRight:
        Chevron(painter, option.rect, Direction::Right, BodyText(look));
        return true;
    default:
        return false;
    }
}

bool SkinStyle::DrawFramePart(PrimitiveElement element, const QStyleOption& option, QPainter& painter,
                              const QWidget* widget) const {
    switch (element) {
    case PE_PanelLineEdit: {
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
        const auto* box =
            widget != nullptr ? qobject_cast<const QComboBox*>(widget->parentWidget()) : nullptr;
        // Inside a combo box or a spin box the box itself is the field.
        if (box == nullptr && (frame == nullptr || frame->lineWidth > 0)) {
            const Look look(option);
            Field(painter, option.rect, look, look.enabled && option.state.testFlag(State_HasFocus));
        }
        return true;
    }
    case PE_FrameLineEdit:
    case PE_FrameMenu:
    case PE_FrameButtonBevel:
    case PE_PanelScrollAreaCorner:
    case PE_FrameStatusBarItem:
        return true;
    case PE_Frame:
        DrawFrame(option, painter, widget);
        return true;
    case PE_FrameGroupBox:
    case PE_FrameTabWidget:
        DrawGroupFrame(option, painter);
        return true;
    case PE_FrameTabBarBase:
        return true;
    case PE_PanelMenu:
        Panel(painter, option.rect, menuRadius);
        return true;
    case PE_PanelTipLabel:
        DrawTip(option, painter);
        return true;
    case PE_FrameFocusRect:
        // The row of an open combo box is lit already.
        if (widget != nullptr && widget->parentWidget() != nullptr &&
            widget->parentWidget()->inherits("QComboBoxPrivateContainer")) {
            return true;
        }
        // A click on a box or an option needs no ring: the eye is there already.
        if (qobject_cast<const QAbstractButton*>(widget) != nullptr &&
            !option.state.testFlag(State_KeyboardFocusChange)) {
            return true;
        }
        FocusRing(painter, option.rect, 3);
        return true;
    default:
        return false;
    }
}

bool SkinStyle::DrawItemPart(PrimitiveElement element, const QStyleOption& option, QPainter& painter,
                             const QWidget* /*widget*/) const {
    switch (element) {
    case PE_PanelItemViewRow: {
        const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(&option);
        if (item != nullptr && item->features.testFlag(QStyleOptionViewItem::Alternate)) {
            painter.fillRect(option.rect, option.palette.alternateBase());
        }
        return true;
    }
    case PE_PanelItemViewItem: {
        const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(&option);
        if (item != nullptr && item->backgroundBrush.style() != Qt::NoBrush) {
            painter.fillRect(option.rect, item->backgroundBrush);
        }
        if (option.state.testFlag(State_Selected)) {
            painter.fillRect(option.rect, option.palette.highlight());
        } else if (option.state.testFlag(State_MouseOver) && option.state.testFlag(State_Enabled)) {
            painter.fillRect(option.rect, QColor(255, 255, 255, 10));
        }
        return true;
    }
    case PE_IndicatorBranch:
        DrawBranch(option, painter);
        return true;
    case PE_IndicatorHeaderArrow: {
        const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(&option);
        // Rising order points up, though the toolkit calls it down.
        const bool up = header != nullptr && header->sortIndicator == QStyleOptionHeader::SortDown;
        Chevron(painter, option.rect, up ? Direction::Up : Direction::Down, colours::accent);
        return true;
    }
    default:
        return false;
    }
}

void SkinStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    if (!DrawButtonPart(element, *option, *painter) && !DrawFramePart(element, *option, *painter, widget) &&
        !DrawItemPart(element, *option, *painter, widget)) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

} // namespace kestrune
