// The position bar: elapsed line, track and thumb.
#pragma once

#include <QWidget>

namespace kestrune {

// Its children are PictureStepLine1 (elapsed), PictureStepLine2 (track) and PictureStep (thumb). Window
// thread.
class PositionBar : public QWidget {
    Q_OBJECT
public:
    static constexpr int thumbWidth = 12;

    explicit PositionBar(QWidget* parent = nullptr);

    // Thumb and line to a width of the elapsed line, in pixels.
    void SetLineWidth(double width);
    double LineWidth() const { return lineWidth_; }
    void SetThumbVisible(bool visible);

signals:
    void DragStarted();
    // The thumb was hidden while it was held; its release will not be told.
    void DragCancelled();
    // The thumb was let go, or moved by a key.
    void Sought(double lineWidth);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Place();

    QWidget* line_;
    QWidget* track_;
    QWidget* thumb_;
    double lineWidth_ = 0;
    bool dragging_ = false;
};

} // namespace kestrune
