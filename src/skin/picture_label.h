// Shows one piece of a strip: a lamp, a digit, a part of a frame.
#pragma once

#include <QRect>
#include <QWidget>

namespace kestrune {

class SkinPicture;

// Transparent where it shows nothing; the mouse goes on to the window. The strip must outlive it. Window
// thread.
class PictureLabel : public QWidget {
    Q_OBJECT
public:
    explicit PictureLabel(const SkinPicture& strip, QWidget* parent = nullptr);

    // Shows this piece at the label's corner. Repaints only if it is another one.
    void SetCut(const QRect& piece);
    void Clear() { SetCut({}); }
    // The piece shown, empty for none.
    QRect CurrentCut() const { return piece_; }
    // Shows a piece of that size, takes the size, and moves to left and top unless they are below 0.
    void GetPicClip(int clipX, int clipY, int clipWidth, int clipHeight, int left = -1, int top = -1);
    // The same in the label's own size.
    void GetImageClip(int clipX, int clipY, int left = -1, int top = -1);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const SkinPicture& strip_;
    QRect piece_;
};

} // namespace kestrune
