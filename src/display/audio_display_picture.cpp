#include "display/audio_display_picture.h"

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

void ShownBands::Approach(const AudioDisplay& display, double part) {
    constexpr double unseen = 0.0005;
    const auto approach = [part](double& shown, double target) {
        shown += (target - shown) * part;
        shown = std::abs(shown - target) < unseen ? target : shown;
    };
    const int bands = display.BandCount();
    const int channels = display.Channels();
    for (int channel = 0; channel < channels; ++channel) {
        for (int band = 0; band < bands; ++band) {
            const int fromMiddle = channel == 0 ? bands - 1 - band : bands + band;
            const auto column = static_cast<size_t>(channels == 1 ? band : fromMiddle);
            if (column < columns_.size()) {
                approach(columns_[column].level, display.Band(channel, band).Level());
                approach(columns_[column].peak, display.Band(channel, band).Peak());
            }
        }
    }
}

bool ShownBands::AreAtRest() const {
    return std::all_of(columns_.begin(), columns_.end(),
                       [](const Column& column) { return column.level <= 0 && column.peak <= 0; });
}

} // namespace kestrune
