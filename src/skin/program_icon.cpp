#include "skin/program_icon.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QtMath>
#include <array>

// The macro declares a function, which must not lie in a namespace.
static void RegisterIcons() {
    Q_INIT_RESOURCE(kestrune_icons);
}

namespace kestrune {

namespace {

constexpr std::array<int, 9> iconSizes = {16, 22, 24, 32, 48, 64, 128, 256, 512};

QPixmap Drawn(const QString& file, int pixels) {
    QPixmap picture(pixels, pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(file).render(&painter);
    return picture;
}

// Small icons have drawings of their own, with feathers on whole pixels.
QString IconFile(int pixels) {
    return pixels < 32 ? QStringLiteral(":/kestrune/icons/kestrune-%1.svg").arg(pixels)
                       : QStringLiteral(":/kestrune/icons/kestrune.svg");
}

} // namespace

QIcon ProgramIcon() {
    RegisterIcons();
    QIcon icon;
    for (const int pixels : iconSizes) {
        icon.addPixmap(Drawn(IconFile(pixels), pixels));
    }
    return icon;
}

QPixmap ProgramEmblem(int size, qreal devicePixelRatio) {
    RegisterIcons();
    QPixmap emblem = Drawn(QStringLiteral(":/kestrune/icons/emblem.svg"), qCeil(size * devicePixelRatio));
    emblem.setDevicePixelRatio(devicePixelRatio);
    return emblem;
}

} // namespace kestrune
