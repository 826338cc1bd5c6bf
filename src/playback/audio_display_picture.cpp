#include "playback/audio_display_picture.h"

#include <QFont>
#include <algorithm>
#include <cmath>

namespace kestrune {

QColor Mixed(const QColor& from, const QColor& to, double part) {
    const double share = std::clamp(part, 0.0, 1.0);
    const auto mix = [share](double a, double b) { return static_cast<float>(a + (b - a) * share); };
    return QColor::fromRgbF(mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()),
                            mix(from.blueF(), to.blueF()), mix(from.alphaF(), to.alphaF()));
}

QColor Faded(const QColor& colour, double alpha) {
    QColor faded = colour;
    faded.setAlphaF(static_cast<float>(std::clamp(alpha, 0.0, 1.0)));
    return faded;
}

QPixmap EmptyLayer(const QSizeF& size, double pixelRatio) {
    const QSizeF devicePixels = size * pixelRatio;
    QPixmap layer(std::max(1, static_cast<int>(std::ceil(devicePixels.width()))),
                  std::max(1, static_cast<int>(std::ceil(devicePixels.height()))));
    layer.setDevicePixelRatio(pixelRatio);
    layer.fill(Qt::transparent);
    return layer;
}

QFont DisplayFont(double pixelSize, int weight) {
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixelSize))));
    font.setWeight(static_cast<QFont::Weight>(weight));
    font.setHintingPreference(QFont::PreferVerticalHinting);
    return font;
}

double Snapped(double length, double pixelRatio) {
    return std::round(length * pixelRatio) / pixelRatio;
}

int ColumnOfBand(int channel, int band, int bandsOfChannel, int channels) {
    if (channels == 1) {
        return band;
    }
    return channel == 0 ? bandsOfChannel - 1 - band : bandsOfChannel + band;
}

} // namespace kestrune
