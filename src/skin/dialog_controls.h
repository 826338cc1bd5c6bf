// The controls that the dialogs of the tools are put together from, and their measures.
#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QSlider>
#include <QSpinBox>

class QGridLayout;

namespace kestrune {

// Pixels; everything stands on a grid of 8.
inline constexpr int windowMargin = 16;
inline constexpr int rowGap = 8;
inline constexpr int sideMargin = 12; // of a frame and of a page
inline constexpr int fieldHeight = 24;

// Makers of named controls. The parent owns them.
QGroupBox* MakeFrame(const QString& name, const QString& caption, QWidget* parent);
// The grid of a frame, with the margins that all of them have.
QGridLayout* MakeFrameGrid(QWidget* frame);
QLabel* MakeLabel(const QString& name, const QString& text, QWidget* parent);
// A caption of less weight: the ends of a slider, what a choice means.
QLabel* MakeMutedLabel(const QString& text, QWidget* parent);
// Lifts a label to the groove of the slider beside it, which stands above its ticks.
void AlignWithGroove(QLabel* label);
QComboBox* MakeList(const QString& name, const QString& accessibleName, QWidget* parent);

// A number with a spinner. What is typed beyond a bound becomes that bound, when it is done with or asked
// for.
class BoundedSpinBox : public QSpinBox {
    Q_OBJECT
public:
    struct Bounds {
        int smallest;
        int largest;
        int step;
    };
    // The spinner has one name, the text in it the other.
    BoundedSpinBox(const QString& name, const QString& textName, const QString& accessibleName,
                   const Bounds& bounds, QWidget* parent);
    // With what is being typed taken in.
    int ValueNow();

protected:
    QValidator::State validate(QString& input, int& position) const override;
    void fixup(QString& input) const override;
};

// A level slider whose least value, the best one, is at the right end; it fills from the left all the same.
class BestAtRightSlider : public QSlider {
    Q_OBJECT
public:
    explicit BestAtRightSlider(QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kestrune
