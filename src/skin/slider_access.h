// Tells screen readers that a control of our own painting is a slider, and lets them set it.
#pragma once

class QWidget;

namespace kestrune {

struct SliderScale {
    double lowest = 0;
    double highest = 100;
    double step = 1;
};

// A base beside QWidget of a control that has a value. Window thread.
class SliderControl {
public:
    SliderControl() = default;
    SliderControl(const SliderControl&) = delete;
    SliderControl& operator=(const SliderControl&) = delete;
    virtual ~SliderControl() = default;

    virtual SliderScale Scale() const = 0;
    virtual double ScaleValue() const = 0;
    // By an assistive program, to the same effect as by the hand. Values beyond an end go to that end.
    virtual void ChooseScaleValue(double value) = 0;
    virtual bool CanChoose() const { return true; }
};

// To be called before the first SliderControl is shown; may be called any number of times. Window thread.
void InstallSliderAccess();

// The control's value is another one now.
void TellSliderValue(QWidget* control, double value);

} // namespace kestrune
