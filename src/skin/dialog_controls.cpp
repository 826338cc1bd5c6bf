#include "skin/dialog_controls.h"

#include "skin/skin_colours.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStyleOptionSlider>
#include <QStylePainter>
#include <algorithm>

namespace kestrune {

QGroupBox* MakeFrame(const QString& name, const QString& caption, QWidget* parent) {
    auto* frame = new QGroupBox(caption, parent);
    frame->setObjectName(name);
    return frame;
}

QGridLayout* MakeFrameGrid(QWidget* frame) {
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(sideMargin, rowGap, sideMargin, rowGap);
    grid->setSpacing(rowGap);
    return grid;
}

QLabel* MakeLabel(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel* MakeMutedLabel(const QString& text, QWidget* parent) {
    QLabel* label = MakeLabel({}, text, parent);
    QPalette muted = label->palette();
    muted.setColor(QPalette::Active, QPalette::WindowText, colours::textMutedOnBody);
    muted.setColor(QPalette::Inactive, QPalette::WindowText, colours::textMutedOnBody);
    label->setPalette(muted);
    return label;
}

void AlignWithGroove(QLabel* label) {
    constexpr int ticksHeight = 9;
    label->setContentsMargins(0, 0, 0, ticksHeight);
}

QComboBox* MakeList(const QString& name, const QString& accessibleName, QWidget* parent) {
    auto* list = new QComboBox(parent);
    list->setObjectName(name);
    list->setAccessibleName(accessibleName);
    return list;
}

BoundedSpinBox::BoundedSpinBox(const QString& name, const QString& textName, const QString& accessibleName,
                               const Bounds& bounds, QWidget* parent)
    : QSpinBox(parent) {
    setObjectName(name);
    setAccessibleName(accessibleName);
    lineEdit()->setObjectName(textName);
    lineEdit()->setAccessibleName(accessibleName);
    setRange(bounds.smallest, bounds.largest);
    setSingleStep(bounds.step);
    setAlignment(Qt::AlignRight);
    setFixedHeight(fieldHeight);
}

int BoundedSpinBox::ValueNow() {
    interpretText();
    return value();
}

QValidator::State BoundedSpinBox::validate(QString& input, int& position) const {
    bool isNumber = false;
    input.toLongLong(&isNumber);
    // A number beyond a bound may stand there while it is typed; fixup brings it in.
    const QValidator::State state = QSpinBox::validate(input, position);
    return isNumber && state == QValidator::Invalid ? QValidator::Intermediate : state;
}

void BoundedSpinBox::fixup(QString& input) const {
    bool isNumber = false;
    const qlonglong typed = input.toLongLong(&isNumber);
    if (isNumber) {
        input = QString::number(std::clamp<qlonglong>(typed, minimum(), maximum()));
    } else {
        QSpinBox::fixup(input);
    }
}

BestAtRightSlider::BestAtRightSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setInvertedAppearance(true);
    setInvertedControls(true); // keys and wheel go by what is seen
}

void BestAtRightSlider::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Home || event->key() == Qt::Key_End) {
        triggerAction(event->key() == Qt::Key_Home ? SliderToMaximum : SliderToMinimum);
    } else {
        QSlider::keyPressEvent(event);
    }
}

void BestAtRightSlider::paintEvent(QPaintEvent* /*event*/) {
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QPoint mouse = mapFromGlobal(QCursor::pos());
    const QStyle::SubControl under =
        underMouse() ? style()->hitTestComplexControl(QStyle::CC_Slider, &option, mouse, this)
                     : QStyle::SC_None;
    // Drawn as the slider that has its handle in the same place and its least value at the left.
    option.upsideDown = !option.upsideDown;
    option.sliderPosition = minimum() + maximum() - option.sliderPosition;
    option.sliderValue = option.sliderPosition;
    option.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
    if (tickPosition() != NoTicks) {
        option.subControls |= QStyle::SC_SliderTickmarks;
    }
    option.activeSubControls = isSliderDown() ? QStyle::SC_SliderHandle : under;
    option.state.setFlag(QStyle::State_Sunken, isSliderDown());
    QStylePainter(this).drawComplexControl(QStyle::CC_Slider, option);
}

} // namespace kestrune
