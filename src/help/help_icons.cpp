#include "help/help_icons.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace kestrune {

namespace {

constexpr int glyphSize = 16;
constexpr double disabledOpacity = 0.35;

QPixmap Glyph(QSvgRenderer& drawing, int pixels, double opacity) {
    QPixmap glyph(pixels, pixels);
    glyph.fill(Qt::transparent);
    QPainter painter(&glyph);
    painter.setOpacity(opacity);
    drawing.render(&painter);
    return glyph;
}

} // namespace

QIcon HelpIcon(const QString& file) {
    QSvgRenderer drawing(file);
    QIcon icon;
    for (const int pixels : {glyphSize, glyphSize * 3 / 2, glyphSize * 2, glyphSize * 3}) {
        icon.addPixmap(Glyph(drawing, pixels, 1), QIcon::Normal);
        icon.addPixmap(Glyph(drawing, pixels, disabledOpacity), QIcon::Disabled);
    }
    return icon;
}

} // namespace kestrune
