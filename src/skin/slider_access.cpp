#include "skin/slider_access.h"

#include <QAccessibleWidget>
#include <QWidget>
#include <algorithm>

namespace kestrune {

namespace {

class SliderAccess : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit SliderAccess(QWidget* control) : QAccessibleWidget(control, QAccessible::Slider) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        const SliderControl* control = Control();
        state.readOnly = control == nullptr || !control->CanChoose();
        return state;
    }

    // What such a control is put together from is only its picture.
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

    // The platform makes the actions of stepping up and down from these.
    QVariant currentValue() const override {
        const SliderControl* control = Control();
        return control != nullptr ? control->ScaleValue() : 0.0;
    }
    void setCurrentValue(const QVariant& value) override {
        SliderControl* control = Control();
        bool isNumber = false;
        const double number = value.toDouble(&isNumber);
        if (control != nullptr && isNumber && control->CanChoose()) {
            control->ChooseScaleValue(std::clamp(number, control->Scale().lowest, control->Scale().highest));
        }
    }
    QVariant maximumValue() const override { return Scale().highest; }
    QVariant minimumValue() const override { return Scale().lowest; }
    QVariant minimumStepSize() const override { return Scale().step; }

private:
    // None while the widget is being taken down.
    SliderControl* Control() const { return dynamic_cast<SliderControl*>(widget()); }
    SliderScale Scale() const {
        const SliderControl* control = Control();
        return control != nullptr ? control->Scale() : SliderScale{};
    }
};

QAccessibleInterface* MakeAccess(const QString& /*className*/, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    return dynamic_cast<SliderControl*>(widget) != nullptr ? new SliderAccess(widget) : nullptr;
}

} // namespace

void InstallSliderAccess() {
    QAccessible::installFactory(MakeAccess);
}

void TellSliderValue(QWidget* control, double value) {
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent changed(control, value);
        QAccessible::updateAccessibility(&changed);
    }
}

} // namespace kestrune
