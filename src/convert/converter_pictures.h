// The pictures of the converter window. They lie in the program itself.
#pragma once

#include "skin/skin_picture.h"

#include <QIcon>
#include <array>

namespace kestrune {

// They must outlive the window's controls. Window thread.
class ConverterPictures {
public:
    ConverterPictures();

    const SkinPicture& Short() const { return short_; }
    const SkinPicture& Long() const { return long_; }
    // The upper part of both with every glyph dimmed.
    const SkinPicture& Off() const { return off_; }
    const SkinPicture& Strip() const { return strip_; }
    // The sign of a line of the events: 1 a step of a run, 2 a change of settings. Any other number is null.
    QIcon EventSign(int number) const;

private:
    SkinPicture short_;
    SkinPicture long_;
    SkinPicture off_;
    SkinPicture strip_;
    std::array<QIcon, 2> signs_;
};

} // namespace kestrune
