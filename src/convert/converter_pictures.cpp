#include "convert/converter_pictures.h"

// The macro declares a function, which must not lie in a namespace.
static QString RegisterConverterPictures() {
    Q_INIT_RESOURCE(converter_window);
    return QStringLiteral(":/kestrune/skin/");
}

namespace kestrune {

ConverterPictures::ConverterPictures()
    : short_(RegisterConverterPictures() + QStringLiteral("converter_window.svg")),
      long_(RegisterConverterPictures() + QStringLiteral("converter_window_long.svg")),
      off_(RegisterConverterPictures() + QStringLiteral("converter_window_off.svg")),
      strip_(RegisterConverterPictures() + QStringLiteral("converter_strip.svg")),
      signs_{QIcon(RegisterConverterPictures() + QStringLiteral("converter_event_run.svg")),
             QIcon(RegisterConverterPictures() + QStringLiteral("converter_event_settings.svg"))} {}

} // namespace kestrune
