// The pictures of the main window. They lie in the program itself.
#pragma once

#include "skin/skin_picture.h"

namespace kestrune {

// They must outlive the window's controls. Window thread.
class MainPictures {
public:
    MainPictures();

    const SkinPicture& Window() const { return window_; }
    const SkinPicture& Off() const { return off_; } // the same with every glyph dimmed
    const SkinPicture& Strip() const { return strip_; }

private:
    SkinPicture window_;
    SkinPicture off_;
    SkinPicture strip_;
};

} // namespace kestrune
