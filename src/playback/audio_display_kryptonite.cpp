// FFT Kryptonite: crystals that grow with their bands and shine from within.
#include "playback/audio_display_picture.h"

#include <cmath>
#include <vector>

namespace kestrune {

namespace {

constexpr double pitch = 4.6; // pixels between crystals
constexpr double sideRoom = 5;
constexpr double topRoom = 4;
constexpr double floorRoom = 5;
constexpr double restHeight = 0.07; // of a crystal without sound
constexpr double glowSize = 22;
// From periwinkle to the green of the stone, as a turn of the colour circle.
constexpr double hueTurn = -0.30;

struct Crystal {
    double x = 0;       // middle of the foot
    double width = 4;   // of the foot
    double lean = 0;    // of the tip to the right, for a full height
    double ridge = 0.5; // where the two sides meet, as a part of the width
    double vigour = 1;  // of the height at rest
    bool isBehind = false;
    int level = 0; // in half device pixels
    int mark = 0;
};

QColor StoneOf(const QColor& levels) {
    if (levels.hsvHueF() < 0) {
        return levels;
    }
    const double hue = std::fmod(levels.hsvHueF() + 1 + hueTurn, 1.0);
    return QColor::fromHsvF(static_cast<float>(hue), std::min(1.0F, levels.hsvSaturationF() + 0.32F),
                            levels.valueF());
}

class KryptonitePicture : public DisplayPicture {
public:
    int BandRoom() const override { return static_cast<int>(crystals_.size()); }
    void Lay(const DisplayCanvas& canvas) override;
    void PaintGround(QPainter& painter) override;
    QRegion Follow(const AudioDisplay& display, double part) override;
    void Clear() override { shown_.Clear(); }
    void PaintMoving(QPainter& painter) override;

private:
    void PlantCrystals();
    void DrawGlow();
    QPointF TipOf(const Crystal& crystal) const;
    double HeightOf(const Crystal& crystal) const;
    void PaintCrystal(QPainter& painter, const Crystal& crystal) const;
    void PaintGlow(QPainter& painter, const Crystal& crystal) const;

    DisplayCanvas canvas_;
    QColor stone_;
    double floor_ = 0;
    double height_ = 1;
    QBrush lightSide_;
    QBrush darkSide_;
    QBrush lightSideBehind_;
    QBrush darkSideBehind_;
    QPixmap glow_;
    ShownBands shown_;
    std::vector<Crystal> crystals_;
};

void KryptonitePicture::Lay(const DisplayCanvas& canvas) {
    canvas_ = canvas;
    stone_ = StoneOf(canvas.colours.levels);
    floor_ = canvas.field.bottom() - floorRoom;
    height_ = std::max(1.0, floor_ - canvas.field.top() - topRoom);
    const auto side = [this](const QColor& foot, const QColor& middle, const QColor& tip) {
        QLinearGradient shade(0, floor_, 0, floor_ - height_);
        shade.setColorAt(0, foot);
        shade.setColorAt(0.30, middle);
        shade.setColorAt(1, tip);
        return QBrush(shade);
    };
    const QColor& back = canvas.colours.back;
    lightSide_ =
        side(Mixed(stone_, back, 0.55), Mixed(stone_, Qt::white, 0.12), Mixed(stone_, Qt::white, 0.80));
    darkSide_ = side(Mixed(stone_, back, 0.82), Mixed(stone_, back, 0.45), Mixed(stone_, Qt::white, 0.10));
    lightSideBehind_ = side(Mixed(stone_, back, 0.80), Mixed(stone_, back, 0.55), Mixed(stone_, back, 0.15));
    darkSideBehind_ = side(Mixed(stone_, back, 0.90), Mixed(stone_, back, 0.75), Mixed(stone_, back, 0.45));
    PlantCrystals();
    DrawGlow();
}

void KryptonitePicture::PlantCrystals() {
    int count = std::max(2, static_cast<int>((canvas_.field.width() - sideRoom * 2) / pitch));
    count -= count % canvas_.channels;
    const double left = canvas_.field.center().x() - (count - 1) * pitch / 2;
    crystals_.assign(static_cast<size_t>(count), {});
    shown_.Lay(count);
    for (int i = 0; i < count; ++i) {
        Crystal& crystal = crystals_[static_cast<size_t>(i)];
        // Irregular, and the same each time: the fraction of a multiple of the golden ratio.
        const auto chance = [i](double salt) {
            const double value = (i + 1) * 0.6180339887 + salt;
            return value - std::floor(value);
        };
        crystal.x = left + i * pitch;
        crystal.isBehind = i % 2 == 1;
        crystal.width = pitch * (crystal.isBehind ? 1.45 : 1.25) * (0.85 + 0.35 * chance(0.1));
        crystal.lean = (chance(0.37) - 0.5) * 7;
        crystal.ridge = 0.34 + 0.28 * chance(0.73);
        crystal.vigour = 0.5 + 1.1 * chance(0.51);
    }
}

void KryptonitePicture::DrawGlow() {
    glow_ = EmptyLayer(QSizeF(glowSize, glowSize), canvas_.pixelRatio);
    QPainter painter(&glow_);
    QRadialGradient light(QPointF(glowSize / 2, glowSize / 2), glowSize / 2);
    light.setColorAt(0, Faded(Mixed(stone_, Qt::white, 0.35), 0.42));
    light.setColorAt(0.3, Faded(stone_, 0.20));
    light.setColorAt(1, Faded(stone_, 0));
    painter.fillRect(QRectF(0, 0, glowSize, glowSize), light);
}

void KryptonitePicture::PaintGround(QPainter& painter) {
    const QRectF& field = canvas_.field;
    QRadialGradient haze(QPointF(field.center().x(), floor_), field.width() * 0.55);
    haze.setColorAt(0, Faded(stone_, 0.26));
    haze.setColorAt(0.5, Faded(stone_, 0.10));
    haze.setColorAt(1, Faded(stone_, 0));
    painter.fillRect(field, haze);
    QLinearGradient ground(QPointF(0, floor_ - 2), QPointF(0, field.bottom()));
    ground.setColorAt(0, Faded(Mixed(stone_, canvas_.colours.back, 0.4), 0.55));
    ground.setColorAt(1, Mixed(stone_, canvas_.colours.back, 0.93));
    painter.fillRect(QRectF(QPointF(field.left(), floor_), field.bottomRight()), ground);
}

QRegion KryptonitePicture::Follow(const AudioDisplay& display, double part) {
    shown_.Approach(display, part);
    const double units = height_ * canvas_.pixelRatio * 2;
    bool changed = false;
    for (int column = 0; column < shown_.Count(); ++column) {
        Crystal& crystal = crystals_[static_cast<size_t>(column)];
        const auto level = static_cast<int>(std::lround(shown_.At(column).level * units));
        const auto mark = static_cast<int>(std::lround(shown_.At(column).peak * units));
        changed = changed || level != crystal.level || mark != crystal.mark;
        crystal.level = level;
        crystal.mark = mark;
    }
    return changed ? QRegion(canvas_.field.toAlignedRect()) : QRegion();
}

double KryptonitePicture::HeightOf(const Crystal& crystal) const {
    const double level = crystal.level / (canvas_.pixelRatio * 2);
    const double rest = restHeight * crystal.vigour * height_;
    return rest + level * (1 - rest / height_);
}

QPointF KryptonitePicture::TipOf(const Crystal& crystal) const {
    const double height = HeightOf(crystal);
    return {crystal.x + crystal.lean * height / height_, floor_ - height};
}

void KryptonitePicture::PaintMoving(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (const bool behind : {true, false}) {
        for (const Crystal& crystal : crystals_) {
            if (crystal.isBehind == behind) {
                PaintGlow(painter, crystal);
            }
        }
        for (const Crystal& crystal : crystals_) {
            if (crystal.isBehind == behind) {
                PaintCrystal(painter, crystal);
            }
        }
    }
    if (canvas_.markHeight == 0) {
        return;
    }
    painter.setBrush(Mixed(canvas_.colours.maxLevel, Qt::white, 0.3));
    for (const Crystal& crystal : crystals_) {
        const double mark = crystal.mark / (canvas_.pixelRatio * 2);
        if (mark > HeightOf(crystal) + 1.5) {
            const double size = 0.5 + canvas_.markHeight / 2.5;
            const QPointF at(crystal.x + crystal.lean * mark / height_, floor_ - mark);
            painter.drawConvexPolygon(QPolygonF({at + QPointF(0, -size * 1.3), at + QPointF(size * 0.8, 0),
                                                 at + QPointF(0, size * 1.3), at + QPointF(-size * 0.8, 0)}));
        }
    }
}

void KryptonitePicture::PaintGlow(QPainter& painter, const Crystal& crystal) const {
    const double strength = crystal.level / (height_ * canvas_.pixelRatio * 2);
    if (strength < 0.05) {
        return;
    }
    const QPointF tip = TipOf(crystal);
    painter.setOpacity(std::min(1.0, strength * 1.2));
    painter.drawPixmap(tip - QPointF(glowSize / 2, glowSize / 2 - 3), glow_);
    painter.setOpacity(1);
}

// Two sides of a column that ends in a point, and the slant of the point.
void KryptonitePicture::PaintCrystal(QPainter& painter, const Crystal& crystal) const {
    const double height = HeightOf(crystal);
    const QPointF tip = TipOf(crystal);
    const double slant = std::min(height * 0.5, crystal.width * 1.15);
    const double part = 1 - slant / height;
    const double shift = (tip.x() - crystal.x) * part;
    // Growing, a crystal gets stouter; at rest it is a splinter.
    const double width = crystal.width * (0.62 + 0.38 * std::min(1.0, height / height_ * 2.2));
    const QPointF footLeft(crystal.x - width / 2, floor_ + 1);
    const QPointF footRight(crystal.x + width / 2, floor_ + 1);
    const QPointF footRidge(footLeft.x() + width * crystal.ridge, floor_ + 2);
    const double shoulder = floor_ - height + slant;
    const QPointF left(footLeft.x() + shift, shoulder);
    const QPointF right(footRight.x() + shift, shoulder + slant * 0.25);
    const QPointF ridge(footRidge.x() + shift, shoulder + slant * 0.35);
    painter.setBrush(crystal.isBehind ? lightSideBehind_ : lightSide_);
    painter.drawConvexPolygon(QPolygonF({footLeft, left, tip, ridge, footRidge}));
    painter.setBrush(crystal.isBehind ? darkSideBehind_ : darkSide_);
    painter.drawConvexPolygon(QPolygonF({footRidge, ridge, tip, right, footRight}));
    if (!crystal.isBehind) {
        painter.setBrush(QColor(255, 255, 255, 70));
        painter.drawConvexPolygon(QPolygonF({left, tip, ridge}));
    }
}

} // namespace

std::unique_ptr<DisplayPicture> MakeKryptonitePicture() {
    return std::make_unique<KryptonitePicture>();
}

} // namespace kestrune
