#include "display/audio_display_crystals.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int whole = 256; // a pixel all covered

// x of the line through two corners.
double LineAt(double y, const QPointF& upper, const QPointF& lower) {
    const double height = lower.y() - upper.y();
    return height > 0 ? upper.x() + (lower.x() - upper.x()) * (y - upper.y()) / height : upper.x();
}

double EdgeAt(double y, const QPointF& tip, const QPointF& turn, const QPointF& foot) {
    return y < turn.y() ? LineAt(y, tip, turn) : LineAt(y, turn, foot);
}

// How much of the pixel at x lies between two places, 0 to 256.
int Cover(double from, double to, int x) {
    return static_cast<int>(std::clamp(std::min<double>(to, x + 1) - std::max<double>(from, x), 0.0, 1.0) *
                            whole);
}

QRgb Scaled(QRgb colour, int part) {
    constexpr quint32 odd = 0x00FF00FFU;
    const quint32 low = ((colour & odd) * static_cast<quint32>(part) >> 8U) & odd;
    const quint32 high = ((colour >> 8U) & odd) * static_cast<quint32>(part) & ~odd;
    return low | high;
}

struct Row {
    double left;
    double ridge;
    double right;
    double glossFrom; // to the ridge
    QRgb light;
    QRgb dark;
    QRgb gloss;
};

void PaintRow(QRgb* line, int width, const Row& row) {
    const int first = std::max(0, static_cast<int>(std::floor(row.left)));
    const int end = std::min(width, static_cast<int>(std::ceil(row.right)));
    for (int x = first; x < end; ++x) {
        const int light = Cover(row.left, row.ridge, x);
        const int dark = Cover(row.ridge, row.right, x);
        const QRgb own = Scaled(row.light, light) + Scaled(row.dark, dark);
        line[x] = own + Scaled(line[x], std::max(0, whole - light - dark));
        if (row.glossFrom < row.ridge) {
            const QRgb gloss = Scaled(row.gloss, Cover(row.glossFrom, row.ridge, x));
            line[x] = gloss + Scaled(line[x], whole - qAlpha(gloss));
        }
    }
}

} // namespace

void PaintCrystal(QImage& image, const CrystalShape& shape, const CrystalShades& shades) {
    const int top = std::max(0, static_cast<int>(std::ceil(shape.tip.y() - 0.5)));
    const int end = std::min(image.height(), static_cast<int>(std::ceil(shape.footRidge.y() - 0.5)));
    for (int y = top; y < end; ++y) {
        const double middle = y + 0.5;
        Row row{};
        row.left = EdgeAt(middle, shape.tip, shape.left, shape.footLeft);
        row.ridge = EdgeAt(middle, shape.tip, shape.ridge, shape.footRidge);
        row.right = EdgeAt(middle, shape.tip, shape.right, shape.footRight);
        const bool isSlant = shades.gloss > 0 && middle < shape.ridge.y();
        row.glossFrom = !isSlant                  ? row.ridge
                        : middle < shape.left.y() ? row.left
                                                  : LineAt(middle, shape.left, shape.ridge);
        row.light = shades.light[static_cast<size_t>(y)];
        row.dark = shades.dark[static_cast<size_t>(y)];
        row.gloss = qRgba(shades.gloss, shades.gloss, shades.gloss, shades.gloss);
        PaintRow(reinterpret_cast<QRgb*>(image.scanLine(y)), image.width(), row);
    }
}

} // namespace kestrune
