// The pictures of the converter window. They lie in the program itself.
#pragma once

#include "skin/skin_picture.h"

#include <QIcon>
#include <QList>

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
    // The signs of the lines of the events: a step of a run, a change of settings.
    const QList<QIcon>& EventSigns() const { return signs_; }

private:
    SkinPicture short_;
    SkinPicture long_;
    SkinPicture off_;
    SkinPicture strip_;
    QList<QIcon> signs_;
};

} // namespace kestrune
