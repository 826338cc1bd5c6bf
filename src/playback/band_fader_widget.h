// One fader of the equalizer on screen.
#pragma once

#include <QSlider>

namespace kestrune {

// A vertical fader in dB over the whole height of its column. To the system it is a slider whose value is the
// gain in whole dB; the hand may also stop at half a dB.
//
// Mouse: drag from anywhere in the column, click beside the cap moves it there, double click is 0. Wheel and
// Up/Down 1 dB, PageUp/PageDown 3 dB, Home highest, End lowest, Delete or 0 zero; Left and Right go to the
// fader beside it. Window thread.
class BandFaderWidget : public QSlider {
    Q_OBJECT
public:
    // Where the cap stands for the largest gain and for its opposite, from the top of the widget.
    BandFaderWidget(int highestY, int lowestY, QWidget* parent);

    float GainDb() const { return gainDb_; }
    // Without raising GainChosen.
    void ShowGain(float gainDb);
    void SetLargestGain(float gainDb);
    bool IsDragged() const { return isDragged_; }
    double CapY() const;

signals:
    void GainChosen(float gainDb); // by the hand, or by an assistive program through the slider's value
    void DragChanged(bool isDragged);
    void ActiveChanged();           // the mouse or the focus came or went
    void NeighbourWanted(int step); // -1 left, 1 right

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void Choose(float gainDb);
    void EndDrag();
    float GainAt(double y) const;
    double YOf(double gainDb) const;

    int highestY_;
    int lowestY_;
    float largestGainDb_ = 15;
    float gainDb_ = 0;
    double grabOffset_ = 0; // from the cap's middle to the mouse
    int wheelRest_ = 0;     // of a notch, in eighths of a degree
    bool isDragged_ = false;
    bool isRingShown_ = true; // not while the hand is at work
};

} // namespace kestrune
