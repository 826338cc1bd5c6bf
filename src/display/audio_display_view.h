// The display on screen.
#pragma once

#include "display/audio_display.h"
#include "display/audio_display_picture.h"

#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <memory>

namespace kestrune {

// KSTAudioDisplay1, of any size. Paints what stands still once for each size and scale of the screen, and of
// the rest only what has changed. While the display falls to its rest it keeps it falling, and a block of a
// spectrum is shown in two steps; otherwise nothing runs here. customContextMenuRequested tells a right
// click, the Menu key and Shift+F10. Window thread.
class AudioDisplayView : public QWidget {
    Q_OBJECT
public:
    // The display must outlive the view.
    explicit AudioDisplayView(AudioDisplay& display, QWidget* parent = nullptr);
    ~AudioDisplayView() override;

    QSize sizeHint() const override { return {150, 62}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void TakeType();
    void Relay();
    void LayIfNeeded();
    void TakeDrawn();
    void Follow(double part);
    DisplayCanvas Canvas() const;
    QRectF Field() const;
    void PaintGlass(QPainter& painter) const;
    void PaintBorder(QPainter& painter) const;

    AudioDisplay& display_;
    std::unique_ptr<DisplayPicture> picture_;
    QPixmap ground_;
    QPixmap sheen_; // the reflection on the glass, over all that moves
    double laidRatio_ = 0;
    QTimer fallTimer_;
    QTimer secondStep_;
};

} // namespace kestrune
