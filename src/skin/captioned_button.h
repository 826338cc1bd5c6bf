// A picture button that has words beside its picture.
#pragma once

#include "skin/image_button.h"

namespace kestrune {

// The words are the button's text; they end where the button's right padding begins, and light up and sink
// with the picture. Window thread.
class CaptionedButton : public ImageButton {
    Q_OBJECT
public:
    // `captionLeft`: where the words begin, in pixels from the button's left edge.
    CaptionedButton(const SkinPicture& strip, const ButtonLooks& looks, int captionLeft, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor Ink() const;

    int captionLeft_;
};

} // namespace kestrune
