// The position bar: elapsed line, track and thumb.
#pragma once

#include "playback/position.h"
#include "skin/picture_label.h"
#include "skin/skin_picture.h"
#include "skin/slider_access.h"

#include <QPoint>
#include <QTimer>
#include <QWidget>

namespace kestrune {

// Where the strip holds the bar's pictures. The track is part of the window's own picture.
struct PositionPictures {
    const SkinPicture& strip;
    QPoint line;    // the whole lit line, positionBarWidth wide
    int lineHeight; // pixels
    QPoint thumb;
    QPoint thumbHeld; // while the mouse is on it
};

// The widths are those of the elapsed line, in pixels from 0 to positionBarWidth - thumbWidth. Window thread.
class PositionBar : public QWidget, public SliderControl {
    Q_OBJECT
public:
    static constexpr int thumbWidth = 12;

    explicit PositionBar(const PositionPictures& pictures, QWidget* parent = nullptr);

    void SetLineWidth(double width);
    // Moves thumb and line back to the start in a quick glide.
    void WalkToStart();
    // Hiding the thumb ends a drag without a seek.
    void SetThumbVisible(bool visible);

    // Per cent of the file. Can be chosen while the thumb is there.
    SliderScale Scale() const override { return {}; }
    double ScaleValue() const override;
    void ChooseScaleValue(double value) override;
    bool CanChoose() const override { return !thumb_->isHidden() && !dragging_; }

signals:
    void DragStarted();
    void DragCancelled();
    // The thumb was let go, or moved by a key.
    void Sought(double lineWidth);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void Place();
    void DragTo(double mouseX);
    void SeekBy(double change);
    void ShowThumb();
    void TellValue();

    PositionPictures pictures_;
    QWidget* track_;
    PictureLabel* line_;
    PictureLabel* thumb_;
    QTimer walk_;
    double lineWidth_ = 0;
    double toldPercent_ = 0;
    bool dragging_ = false;
};

} // namespace kestrune
