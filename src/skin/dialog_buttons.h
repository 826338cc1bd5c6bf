// The row of text keys that closes a tool window's dialog: OK, Cancel, Apply.
#pragma once

#include "skin/image_button.h"
#include "skin/skin_picture.h"

#include <QWidget>
#include <array>

namespace kestrune {

class WindowChrome;

// Objects "ImageCMD(0)" OK, "ImageCMD(1)" Cancel and "ImageCMD(2)" Apply. Takes the size of its picture.
// Window thread.
class DialogButtons : public QWidget {
    Q_OBJECT
public:
    enum Button : int { Ok, Cancel, Apply };
    static constexpr int count = 3;

    // The chrome, which gives the buttons their hover looks, is that of the window the row lies in.
    explicit DialogButtons(WindowChrome& chrome, QWidget* parent);

    ImageButton* ImageCMD(int index) const { return buttons_[static_cast<size_t>(index)]; }

    const SkinPicture& Picture() const { return picture_; } // the row in its normal look
    const SkinPicture& Strip() const { return strip_; }

signals:
    void Clicked(int index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SkinPicture picture_;
    SkinPicture strip_;
    std::array<ImageButton*, count> buttons_{};
};

} // namespace kestrune
