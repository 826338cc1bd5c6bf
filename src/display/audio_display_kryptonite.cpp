// FFT Kryptonite: crystals that grow with their bands and shine from within.
#include "display/audio_display_crystals.h"
#include "display/audio_display_picture.h"

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
    std::vector<QRgb> Shade(const QColor& foot, const QColor& middle, const QColor& tip) const;
    void PlantCrystals();
    void DrawGlow();
    void DrawMark();
    QImage EmptyImage(const QSizeF& size) const;
    QPointF TipOf(const Crystal& crystal) const;
    double HeightOf(const Crystal& crystal) const;
    CrystalShape ShapeOf(const Crystal& crystal) const;
    void PaintGlow(QPainter& painter, const Crystal& crystal) const;
    void PaintMarks(QPainter& painter) const;

    DisplayCanvas canvas_;
    QColor stone_;
    double floor_ = 0;
    double height_ = 1;
    CrystalShades front_;
    CrystalShades behind_;
    QImage glow_;
    QImage mark_;
    QImage image_; // of the field
    ShownBands shown_;
    std::vector<Crystal> crystals_;
};

void KryptonitePicture::Lay(const DisplayCanvas& canvas) {
    canvas_ = canvas;
    stone_ = StoneOf(canvas.colours.levels);
    floor_ = canvas.field.bottom() - floorRoom;
    height_ = std::max(1.0, floor_ - canvas.field.top() - topRoom);
    image_ = EmptyImage(canvas.field.size().expandedTo({1, 1}));
    const QColor& back = canvas.colours.back;
    front_.light =
        Shade(Mixed(stone_, back, 0.55), Mixed(stone_, Qt::white, 0.12), Mixed(stone_, Qt::white, 0.80));
    front_.dark = Shade(Mixed(stone_, back, 0.82), Mixed(stone_, back, 0.45), Mixed(stone_, Qt::white, 0.10));
    front_.gloss = 70;
    behind_.light = Shade(Mixed(stone_, back, 0.80), Mixed(stone_, back, 0.55), Mixed(stone_, back, 0.15));
    behind_.dark = Shade(Mixed(stone_, back, 0.90), Mixed(stone_, back, 0.75), Mixed(stone_, back, 0.45));
    PlantCrystals();
    DrawGlow();
    DrawMark();
}

// A colour for each row of the image, from the top.
std::vector<QRgb> KryptonitePicture::Shade(const QColor& foot, const QColor& middle,
                                           const QColor& tip) const {
    constexpr double middleAt = 0.30;
    std::vector<QRgb> rows;
    for (int y = 0; y < image_.height(); ++y) {
        const double place = canvas_.field.top() + (y + 0.5) / canvas_.pixelRatio;
        const double up = (floor_ - place) / height_;
        rows.push_back((up < middleAt ? Mixed(foot, middle, up / middleAt)
                                      : Mixed(middle, tip, (up - middleAt) / (1 - middleAt)))
                           .rgb());
    }
    return rows;
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

// Transparent, of a size in device-independent pixels.
QImage KryptonitePicture::EmptyImage(const QSizeF& size) const {
    QImage image((size * canvas_.pixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(canvas_.pixelRatio);
    image.fill(Qt::transparent);
    return image;
}

void KryptonitePicture::DrawGlow() {
    glow_ = EmptyImage(QSizeF(glowSize, glowSize));
    QPainter painter(&glow_);
    QRadialGradient light(QPointF(glowSize / 2, glowSize / 2), glowSize / 2);
    light.setColorAt(0, Faded(Mixed(stone_, Qt::white, 0.35), 0.42));
    light.setColorAt(0.3, Faded(stone_, 0.20));
    light.setColorAt(1, Faded(stone_, 0));
    painter.fillRect(QRectF(0, 0, glowSize, glowSize), light);
}

void KryptonitePicture::DrawMark() {
    const double size = 0.5 + canvas_.markHeight / 2.5;
    // Odd in pixels, so that its middle is one: it stays sharp.
    const double room = std::ceil(size * 1.3 * canvas_.pixelRatio) - 0.5;
    mark_ = EmptyImage(QSizeF(room, room) * 2 / canvas_.pixelRatio);
    QPainter painter(&mark_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Mixed(canvas_.colours.maxLevel, Qt::white, 0.3));
    const QPointF middle = QPointF(room, room) / canvas_.pixelRatio;
    painter.drawConvexPolygon(QPolygonF({middle + QPointF(0, -size * 1.3), middle + QPointF(size * 0.8, 0),
                                         middle + QPointF(0, size * 1.3), middle + QPointF(-size * 0.8, 0)}));
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
    image_.fill(Qt::transparent);
    for (const bool behind : {true, false}) {
        QPainter glow(&image_);
        for (const Crystal& crystal : crystals_) {
            if (crystal.isBehind == behind) {
                PaintGlow(glow, crystal);
            }
        }
        glow.end();
        for (const Crystal& crystal : crystals_) {
            if (crystal.isBehind == behind) {
                PaintCrystal(image_, ShapeOf(crystal), behind ? behind_ : front_);
            }
        }
    }
    painter.drawImage(canvas_.field.topLeft(), image_);
    if (canvas_.markHeight > 0) {
        PaintMarks(painter);
    }
}

void KryptonitePicture::PaintGlow(QPainter& painter, const Crystal& crystal) const {
    const double strength = crystal.level / (height_ * canvas_.pixelRatio * 2);
    if (strength < 0.05) {
        return;
    }
    const QPointF tip = TipOf(crystal) - canvas_.field.topLeft();
    painter.setOpacity(std::min(1.0, strength * 1.2));
    painter.drawImage(tip - QPointF(glowSize / 2, glowSize / 2 - 3), glow_);
}

void KryptonitePicture::PaintMarks(QPainter& painter) const {
    const QSizeF size = mark_.deviceIndependentSize();
    const auto snapped = [this](double place) { return Snapped(place, canvas_.pixelRatio); };
    for (const Crystal& crystal : crystals_) {
        const double mark = crystal.mark / (canvas_.pixelRatio * 2);
        if (mark > HeightOf(crystal) + 1.5) {
            const QPointF at(crystal.x + crystal.lean * mark / height_, floor_ - mark);
            painter.drawImage(
                QPointF(snapped(at.x() - size.width() / 2), snapped(at.y() - size.height() / 2)), mark_);
        }
    }
}

CrystalShape KryptonitePicture::ShapeOf(const Crystal& crystal) const {
    const double height = HeightOf(crystal);
    const QPointF tip = TipOf(crystal);
    const double slant = std::min(height * 0.5, crystal.width * 1.15);
    const double part = 1 - slant / height;
    const double shift = (tip.x() - crystal.x) * part;
    // Growing, a crystal gets stouter; at rest it is a splinter.
    const double width = crystal.width * (0.62 + 0.38 * std::min(1.0, height / height_ * 2.2));
    const double foot = crystal.x - width / 2;
    const double shoulder = floor_ - height + slant;
    const auto pixel = [this](double x, double y) {
        return QPointF(x - canvas_.field.left(), y - canvas_.field.top()) * canvas_.pixelRatio;
    };
    CrystalShape shape;
    shape.tip = pixel(tip.x(), tip.y());
    shape.left = pixel(foot + shift, shoulder);
    shape.ridge = pixel(foot + width * crystal.ridge + shift, shoulder + slant * 0.35);
    shape.right = pixel(foot + width + shift, shoulder + slant * 0.25);
    shape.footLeft = pixel(foot, floor_ + 1);
    shape.footRidge = pixel(foot + width * crystal.ridge, floor_ + 2);
    shape.footRight = pixel(foot + width, floor_ + 1);
    return shape;
}

} // namespace

std::unique_ptr<DisplayPicture> MakeKryptonitePicture() {
    return std::make_unique<KryptonitePicture>();
}

} // namespace kestrune
