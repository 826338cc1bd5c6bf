// The row of text keys that closes a tool window's dialog: OK, Cancel, Apply.
#pragma once

#include "skin/body_key.h"

#include <QWidget>
#include <array>

namespace kestrune {

class WindowChrome;

// Objects "ImageCMD(0)" OK, "ImageCMD(1)" Cancel and "ImageCMD(2)" Apply. Takes the size of its keys. Window
// thread.
class DialogButtons : public QWidget {
    Q_OBJECT
public:
    enum Button : int { Ok, Cancel, Apply };
    static constexpr int count = 3;

    // The chrome, which gives the buttons their hover looks, is that of the window the row lies in.
    explicit DialogButtons(WindowChrome& chrome, QWidget* parent);

    BodyKey* ImageCMD(int index) const { return buttons_[static_cast<size_t>(index)]; }

signals:
    void Clicked(int index);

private:
    BodyKeyPictures pictures_;
    std::array<BodyKey*, count> buttons_{};
};

} // namespace kestrune
