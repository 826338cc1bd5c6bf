// FFT Glass: glass tubes that fill with light, over a floor that mirrors them.
#include "display/audio_display_picture.h"

#include <cmath>
#include <vector>

namespace kestrune {

namespace {

constexpr double sideRoom = 4; // pixels
constexpr double topRoom = 4;
constexpr double usualPitch = 5; // of the tubes, and their width, before they meet the pixels of the screen
constexpr double usualWidth = 4;
constexpr double bloom = 4;
constexpr double floorShare = 0.78; // of the height, from the top
constexpr double mirrorShare = 0.20;

// Of one tube, in device pixels.
struct TubeState {
    int level = 0;
    int mark = 0;
    bool operator==(const TubeState&) const = default;
};

class GlassPicture : public DisplayPicture {
public:
    int BandRoom() const override { return columns_; }
    void Lay(const DisplayCanvas& canvas) override;
    void PaintGround(QPainter& painter) override;
    QRegion Follow(const AudioDisplay& display, double part) override;
    void Clear() override { shown_.Clear(); }
    void PaintMoving(QPainter& painter) override;

private:
    double ColumnLeft(int column) const { return left_ + column * pitch_; }
    void DrawLit();
    void DrawMirror();
    void PaintTube(QPainter& painter, int column, const TubeState& state) const;

    DisplayCanvas canvas_;
    int columns_ = 2;
    double pitch_ = usualPitch;
    double tubeWidth_ = usualWidth;
    double left_ = 0;
    double floor_ = 0;  // y of the floor
    double height_ = 1; // of a full tube
    QPixmap lit_;       // a full tube with its bloom to both sides
    QPixmap mirror_;    // its reflection, the foot at the top
    ShownBands shown_;
    std::vector<TubeState> tubes_;
};

void GlassPicture::Lay(const DisplayCanvas& canvas) {
    canvas_ = canvas;
    const QRectF& field = canvas.field;
    const int groups = canvas.channels;
    pitch_ = Snapped(usualPitch, canvas.pixelRatio);
    tubeWidth_ = Snapped(usualWidth, canvas.pixelRatio);
    columns_ = std::max(2, static_cast<int>((field.width() - sideRoom * 2) / pitch_));
    columns_ -= columns_ % groups;
    left_ = Snapped(field.left() + (field.width() - columns_ * pitch_ + pitch_ - tubeWidth_) / 2,
                    canvas.pixelRatio);
    floor_ = Snapped(field.top() + field.height() * floorShare, canvas.pixelRatio);
    height_ = Snapped(std::max(1.0, floor_ - field.top() - topRoom), canvas.pixelRatio);
    tubes_.assign(static_cast<size_t>(columns_), {});
    shown_.Lay(columns_);
    DrawLit();
    DrawMirror();
}

void GlassPicture::DrawLit() {
    const DisplayColours& colours = canvas_.colours;
    lit_ = EmptyLayer(QSizeF(tubeWidth_ + bloom * 2, height_), canvas_.pixelRatio);
    QPainter painter(&lit_);
    painter.setRenderHint(QPainter::Antialiasing);
    // From the foot up: deep, clear, and the colour of high levels at the top.
    QLinearGradient body(0, height_, 0, 0);
    const double high = std::clamp(canvas_.highFrom, 0.02, 0.98);
    body.setColorAt(0, Mixed(colours.levels, colours.back, 0.45));
    body.setColorAt(high * 0.55, colours.levels);
    body.setColorAt(high, Mixed(colours.levels, Qt::white, 0.35));
    body.setColorAt(1, colours.maxLevel);
    const QRectF tube(bloom, 0, tubeWidth_, height_);
    painter.setOpacity(0.09);
    painter.fillRect(tube.adjusted(-bloom, 0, bloom, 0), body);
    painter.setOpacity(1);
    painter.fillRect(tube, body);
    // The light of the room along the left side, the shade along the right.
    QLinearGradient round(tube.topLeft(), tube.topRight());
    round.setColorAt(0, QColor(0, 0, 0, 60));
    round.setColorAt(0.18, QColor(255, 255, 255, 60));
    round.setColorAt(0.36, QColor(255, 255, 255, 175));
    round.setColorAt(0.55, QColor(255, 255, 255, 20));
    round.setColorAt(0.72, QColor(0, 0, 0, 40));
    round.setColorAt(1, QColor(0, 0, 0, 135));
    painter.fillRect(tube, round);
}

void GlassPicture::DrawMirror() {
    const double depth = std::max(1.0, canvas_.field.bottom() - floor_ - 1);
    mirror_ = EmptyLayer(QSizeF(tubeWidth_ + bloom * 2, depth), canvas_.pixelRatio);
    QPainter painter(&mirror_);
    painter.scale(1, -1);
    painter.drawPixmap(QPointF(0, -height_), lit_);
    painter.resetTransform();
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    QLinearGradient fade(0, 0, 0, depth);
    fade.setColorAt(0, QColor(0, 0, 0, 150));
    fade.setColorAt(1, QColor(0, 0, 0, 0));
    // Over the last part of a pixel too.
    painter.fillRect(QRectF(0, 0, tubeWidth_ + bloom * 2 + 1, depth + 1), fade);
}

void GlassPicture::PaintGround(QPainter& painter) {
    const QRectF& field = canvas_.field;
    QLinearGradient wall(field.topLeft(), QPointF(field.left(), floor_));
    wall.setColorAt(0, Faded(canvas_.colours.levels, 0));
    wall.setColorAt(1, Faded(canvas_.colours.levels, 0.13));
    painter.fillRect(QRectF(field.topLeft(), QPointF(field.right(), floor_)), wall);
    QLinearGradient floor(QPointF(0, floor_), field.bottomLeft());
    floor.setColorAt(0, Faded(canvas_.colours.levels, 0.17));
    floor.setColorAt(1, Faded(canvas_.colours.levels, 0.02));
    painter.fillRect(QRectF(QPointF(field.left(), floor_), field.bottomRight()), floor);
    const double line = 1 / canvas_.pixelRatio;
    painter.fillRect(QRectF(field.left(), floor_, field.width(), line),
                     Faded(Mixed(canvas_.colours.scale, Qt::white, 0.3), 0.55));
    for (const double db : {-18.0, -36.0, -54.0}) {
        const double y = Snapped(floor_ - SpectrumScale(db) * height_, canvas_.pixelRatio);
        painter.fillRect(QRectF(field.left(), y, field.width(), line), Faded(canvas_.colours.scale, 0.28));
    }
    for (int column = 0; column < columns_; ++column) {
        const QRectF tube(ColumnLeft(column), floor_ - height_, tubeWidth_, height_);
        QLinearGradient glass(tube.topLeft(), tube.topRight());
        glass.setColorAt(0, QColor(255, 255, 255, 26));
        glass.setColorAt(0.35, QColor(255, 255, 255, 12));
        glass.setColorAt(1, QColor(255, 255, 255, 5));
        painter.fillRect(tube, glass);
        const double foot = std::max(1.0, line);
        painter.fillRect(QRectF(tube.left(), floor_ - foot, tubeWidth_, foot),
                         Faded(canvas_.colours.levels, 0.75));
        QLinearGradient under(QPointF(0, floor_), QPointF(0, floor_ + height_ * mirrorShare));
        under.setColorAt(0, Faded(canvas_.colours.levels, 0.25));
        under.setColorAt(1, Faded(canvas_.colours.levels, 0));
        painter.fillRect(QRectF(tube.left(), floor_ + line, tubeWidth_, height_ * mirrorShare), under);
    }
}

QRegion GlassPicture::Follow(const AudioDisplay& display, double part) {
    shown_.Approach(display, part);
    const double devicePixels = height_ * canvas_.pixelRatio;
    bool changed = false;
    for (int column = 0; column < columns_; ++column) {
        const ShownBands::Column& shown = shown_.At(column);
        const TubeState state = {static_cast<int>(std::lround(shown.level * devicePixels)),
                                 static_cast<int>(std::lround(shown.peak * devicePixels))};
        TubeState& tube = tubes_[static_cast<size_t>(column)];
        changed = changed || !(state == tube);
        tube = state;
    }
    return changed ? QRegion(canvas_.field.toAlignedRect()) : QRegion();
}

void GlassPicture::PaintMoving(QPainter& painter) {
    for (int column = 0; column < columns_; ++column) {
        PaintTube(painter, column, tubes_[static_cast<size_t>(column)]);
    }
    if (canvas_.markHeight == 0) {
        return;
    }
    for (int column = 0; column < columns_; ++column) {
        const int mark = tubes_[static_cast<size_t>(column)].mark;
        if (mark > 0) {
            const double height =
                std::max(1 / canvas_.pixelRatio, Snapped(canvas_.markHeight / 2.0, canvas_.pixelRatio));
            const double y = floor_ - mark / canvas_.pixelRatio;
            painter.fillRect(QRectF(ColumnLeft(column), y - height, tubeWidth_, height),
                             Mixed(canvas_.colours.maxLevel, Qt::white, 0.15));
        }
    }
}

void GlassPicture::PaintTube(QPainter& painter, int column, const TubeState& state) const {
    if (state.level <= 0) {
        return;
    }
    const double ratio = canvas_.pixelRatio;
    const double level = state.level / ratio;
    const double x = ColumnLeft(column) - bloom;
    const double width = tubeWidth_ + bloom * 2;
    painter.drawPixmap(QRectF(x, floor_ - level, width, level), lit_,
                       QRectF(0, (height_ - level) * ratio, width * ratio, level * ratio));
    const double depth = std::min(level, mirror_.height() / ratio);
    painter.drawPixmap(QRectF(x, floor_, width, depth), mirror_, QRectF(0, 0, width * ratio, depth * ratio));
    // The surface of the light in the tube.
    painter.fillRect(QRectF(x + bloom, floor_ - level, tubeWidth_, 1), QColor(255, 255, 255, 120));
}

} // namespace

std::unique_ptr<DisplayPicture> MakeGlassPicture() {
    return std::make_unique<GlassPicture>();
}

} // namespace kestrune
