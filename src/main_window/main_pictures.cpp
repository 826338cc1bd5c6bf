#include "main_window/main_pictures.h"

// The macro declares a function, which must not lie in a namespace.
static QString RegisterMainPictures() {
    Q_INIT_RESOURCE(main_window);
    return QStringLiteral(":/kestrune/skin/");
}

namespace kestrune {

MainPictures::MainPictures()
    : window_(RegisterMainPictures() + QStringLiteral("main_window.svg")),
      off_(RegisterMainPictures() + QStringLiteral("main_window_off.svg")),
      strip_(RegisterMainPictures() + QStringLiteral("main_strip.svg")) {}

} // namespace kestrune
