// The style's controls of several parts: scroll bars, sliders, combo and spin boxes.
#include "skin/skin_colours.h"
#include "skin/skin_style.h"
#include "skin/style_paint.h"

#include <QPainter>

namespace kestrune {

using namespace shapes;

namespace {

constexpr int leastThumb = 24;

// The cap of a slider: a turned metal knob with an accent rim while it is held or meant.
void DrawHandle(QPainter& painter, const QRectF& rect, const Look& look, bool focused) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(look.enabled ? 1 : 0.5);
    const QRectF cap = rect.adjusted(1, 1, -1, -1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 90));
    painter.drawEllipse(cap.translated(0, 1));
    QLinearGradient metal(cap.topLeft(), cap.bottomLeft());
    metal.setColorAt(0, look.pressed ? QColor(0x5A, 0x61, 0x6D) : QColor(0x6E, 0x76, 0x83));
    metal.setColorAt(1, QColor(0x33, 0x37, 0x3F));
    painter.setBrush(metal);
    const bool lit = look.hover || look.pressed || focused;
    painter.setPen(QPen(lit ? colours::accent : QColor(0x0E, 0x0F, 0x12), lit ? 1.4 : 1));
    painter.drawEllipse(cap.adjusted(0.5, 0.5, -0.5, -0.5));
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.enabled ? colours::accent : colours::textDisabled);
    painter.drawEllipse(cap.center(), 2, 2);
    painter.restore();
}

void DrawTicks(QPainter& painter, const QStyleOptionSlider& slider, int handleLength) {
    const int interval = slider.tickInterval > 0 ? slider.tickInterval : std::max(1, slider.pageStep);
    const bool level = slider.orientation == Qt::Horizontal;
    const int length = (level ? slider.rect.width() : slider.rect.height()) - handleLength;
    QColor ink = colours::textMuted;
    if (!slider.state.testFlag(QStyle::State_Enabled)) {
        ink.setAlphaF(0.35F);
    }
    for (int value = slider.minimum; value <= slider.maximum; value += interval) {
        const int at = QStyle::sliderPositionFromValue(slider.minimum, slider.maximum, value, length,
                                                       slider.upsideDown) +
                       handleLength / 2;
        if (slider.tickPosition & QSlider::TicksBelow) {
            painter.fillRect(level ? QRect(at, slider.rect.bottom() - 3, 1, 3)
                                   : QRect(slider.rect.right() - 3, at, 3, 1),
                             ink);
        }
        if (slider.tickPosition & QSlider::TicksAbove) {
            painter.fillRect(level ? QRect(at, slider.rect.top() + 1, 1, 3)
                                   : QRect(slider.rect.left() + 1, at, 3, 1),
                             ink);
        }
    }
}

int GroupTitleHeight(const QStyleOptionGroupBox& box) {
    constexpr int air = 4;
    return std::max(box.fontMetrics.height(), 14) + air;
}

} // namespace

QRect SkinStyle::ScrollBarRect(const QStyleOptionComplex& option, SubControl part) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(&option);
    if (bar == nullptr) {
        return {};
    }
    const bool level = bar->orientation == Qt::Horizontal;
    const int length = level ? bar->rect.width() : bar->rect.height();
    int thumb = length;
    if (bar->maximum > bar->minimum) {
        const qint64 range = static_cast<qint64>(bar->maximum) - bar->minimum;
        thumb = static_cast<int>(static_cast<qint64>(bar->pageStep) * length / (range + bar->pageStep));
        thumb = std::clamp(thumb, std::min(leastThumb, length), length);
    }
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, length - thumb,
                                              bar->upsideDown);
    int from = 0;
    int size = 0;
    switch (part) {
    case SC_ScrollBarGroove:
        size = length;
        break;
    case SC_ScrollBarSlider:
        from = start;
        size = thumb;
        break;
    case SC_ScrollBarSubPage:
        size = start;
        break;
    case SC_ScrollBarAddPage:
        from = start + thumb;
        size = length - from;
        break;
    default:
        return {};
    }
    const QRect rect = level ? QRect(bar->rect.left() + from, bar->rect.top(), size, bar->rect.height())
                             : QRect(bar->rect.left(), bar->rect.top() + from, bar->rect.width(), size);
    return visualRect(bar->direction, bar->rect, rect);
}

void SkinStyle::DrawScrollBar(const QStyleOptionComplex& option, QPainter& painter,
                              const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(&option);
    if (bar == nullptr) {
        return;
    }
    painter.save();
    painter.fillRect(bar->rect, QColor(17, 17, 18));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const bool level = bar->orientation == Qt::Horizontal;
    if (bar->maximum > bar->minimum && bar->state.testFlag(State_Enabled)) {
        const bool over =
            bar->activeSubControls.testFlag(SC_ScrollBarSlider) && bar->state.testFlag(State_MouseOver);
        const bool held =
            bar->activeSubControls.testFlag(SC_ScrollBarSlider) && bar->state.testFlag(State_Sunken);
        QRectF thumb = proxy()->subControlRect(CC_ScrollBar, &option, SC_ScrollBarSlider, widget);
        const qreal inset = over || held ? 2 : 3;
        thumb = level ? thumb.adjusted(2, inset, -2, -inset) : thumb.adjusted(inset, 2, -inset, -2);
        QColor lit = colours::accent;
        lit.setAlphaF(held ? 1.0F : over ? 0.85F : 0.6F);
        painter.setBrush(lit);
        const qreal radius = std::min(thumb.width(), thumb.height()) / 2;
        painter.drawRoundedRect(thumb, radius, radius);
    }
    painter.restore();
}

void SkinStyle::DrawSlider(const QStyleOptionComplex& option, QPainter& painter,
                           const QWidget* widget) const {
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(&option);
    if (slider == nullptr) {
        return;
    }
    const bool level = slider->orientation == Qt::Horizontal;
    const QRectF handle = proxy()->subControlRect(CC_Slider, &option, SC_SliderHandle, widget);
    const QRectF groove = proxy()->subControlRect(CC_Slider, &option, SC_SliderGroove, widget);
    const Look look(*slider);
    Look still = look;
    still.hover = false;
    const qreal thick = 5;
    const QRectF slot =
        level ? QRectF(groove.left() + 1, handle.center().y() - thick / 2, groove.width() - 2, thick)
              : QRectF(handle.center().x() - thick / 2, groove.top() + 1, thick, groove.height() - 2);
    Field(painter, slot, still, false, thick / 2);
    QRectF filled = slot.adjusted(1, 1, -1, -1);
    // From the end of the least value to the handle; a slider that stands is "upside down" as a rule.
    if (level && slider->upsideDown) {
        filled.setLeft(handle.center().x());
    } else if (level) {
        filled.setRight(handle.center().x());
    } else if (slider->upsideDown) {
        filled.setTop(handle.center().y());
    } else {
        filled.setBottom(handle.center().y());
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.enabled ? colours::accent : colours::textDisabled);
    painter.drawRoundedRect(filled, thick / 2 - 1, thick / 2 - 1);
    painter.restore();
    if (slider->subControls.testFlag(SC_SliderTickmarks) && slider->tickPosition != QSlider::NoTicks) {
        DrawTicks(painter, *slider, static_cast<int>(level ? handle.width() : handle.height()));
    }
    Look held = look;
    held.pressed = look.pressed && slider->activeSubControls.testFlag(SC_SliderHandle);
    held.hover = look.hover && slider->activeSubControls.testFlag(SC_SliderHandle);
    DrawHandle(painter, handle, held, look.focus);
}

void SkinStyle::DrawComboBox(const QStyleOptionComplex& option, QPainter& painter,
                             const QWidget* widget) const {
    const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(&option);
    if (box == nullptr) {
        return;
    }
    const Look look(*box);
    const bool open = look.enabled && box->state.testFlag(State_On);
    const bool focused = look.enabled && box->state.testFlag(State_HasFocus) &&
                         (box->editable || box->state.testFlag(State_KeyboardFocusChange));
    Field(painter, box->rect, look, focused || open);
    const QRect arrow = proxy()->subControlRect(CC_ComboBox, &option, SC_ComboBoxArrow, widget);
    const QColor mark = !look.enabled        ? colours::textDisabled
                        : open || look.hover ? colours::accent
                                             : colours::textMuted;
    Chevron(painter, arrow, open ? Direction::Up : Direction::Down, mark);
}

void SkinStyle::DrawSpinBox(const QStyleOptionComplex& option, QPainter& painter,
                            const QWidget* widget) const {
    const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(&option);
    if (box == nullptr) {
        return;
    }
    const Look look(*box);
    Field(painter, box->rect, look, look.enabled && box->state.testFlag(State_HasFocus));
    if (box->buttonSymbols == QAbstractSpinBox::NoButtons) {
        return;
    }
    const struct {
        SubControl part;
        QAbstractSpinBox::StepEnabledFlag step;
        Direction direction;
    } arrows[] = {{SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled, Direction::Up},
                  {SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled, Direction::Down}};
    for (const auto& arrow : arrows) {
        const QRectF rect = proxy()->subControlRect(CC_SpinBox, &option, arrow.part, widget);
        const bool usable = look.enabled && box->stepEnabled.testFlag(arrow.step);
        const bool active = usable && box->activeSubControls.testFlag(arrow.part);
        if (active && (look.hover || look.pressed)) {
            painter.fillRect(rect.adjusted(0, 1, -1, -1), QColor(255, 255, 255, look.pressed ? 30 : 16));
        }
        const QColor mark = !usable  ? QColor(0x55, 0x5A, 0x64)
                            : active ? colours::accent
                                     : colours::textMuted;
        Chevron(painter, rect, arrow.direction, mark);
    }
}

QRect SkinStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
    if (control == CC_ScrollBar) {
        return ScrollBarRect(*option, part);
    }
    if (control == CC_GroupBox && part == SC_GroupBoxFrame) {
        // The title stands above the panel, not across its edge.
        const auto* box = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
        const bool titled =
            box != nullptr && box->subControls.testAnyFlags(SC_GroupBoxLabel | SC_GroupBoxCheckBox);
        return titled ? option->rect.adjusted(0, GroupTitleHeight(*box), 0, 0) : option->rect;
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

void SkinStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    switch (control) {
    case CC_ScrollBar:
        DrawScrollBar(*option, *painter, widget);
        break;
    case CC_Slider:
        DrawSlider(*option, *painter, widget);
        break;
    case CC_ComboBox:
        DrawComboBox(*option, *painter, widget);
        break;
    case CC_SpinBox:
        DrawSpinBox(*option, *painter, widget);
        break;
    default:
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        break;
    }
}

} // namespace kestrune
