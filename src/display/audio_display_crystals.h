// Crystals drawn straight into pixels: a display of them is painted many times a second.
#pragma once

#include <QImage>
#include <QPointF>
#include <array>
#include <vector>

namespace kestrune {

// A column with two sides that ends in a point. In device pixels of the image; the tip is the highest corner
// and each foot lies below the corner over it.
struct CrystalShape {
    QPointF tip;
    QPointF left; // where the left edge turns from the point to the column; likewise the others
    QPointF ridge;
    QPointF right;
    QPointF footLeft;
    QPointF footRidge;
    QPointF footRight;
};

// What the two sides look like in each row of the image, opaque.
struct CrystalShades {
    std::vector<QRgb> light; // left of the ridge
    std::vector<QRgb> dark;
    int gloss = 0; // white on the slant of the point, 0 to 255
};

// Edges are smooth from left to right. The image is Format_ARGB32_Premultiplied and as high as the shades.
void PaintCrystal(QImage& image, const CrystalShape& shape, const CrystalShades& shades);

} // namespace kestrune
