// Crystals drawn into pixels.
#include "display/audio_display_crystals.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

constexpr QRgb light = 0xFF40FF80;
constexpr QRgb dark = 0xFF104020;

class CrystalTest : public testing::Test {
protected:
    CrystalTest() {
        image.fill(Qt::transparent);
        shades.light.assign(static_cast<size_t>(image.height()), light);
        shades.dark.assign(static_cast<size_t>(image.height()), dark);
    }
    // A point of 4 rows on a column from x = left to left + 8, its ridge in the middle.
    static CrystalShape Upright(double left, double tip = 2) {
        return {{left + 4, tip}, {left, tip + 4}, {left + 4, tip + 4}, {left + 8, tip + 4},
                {left, 20},      {left + 4, 20},  {left + 8, 20}};
    }

    QImage image{20, 16, QImage::Format_ARGB32_Premultiplied};
    CrystalShades shades;
};

TEST_F(CrystalTest, HasALightAndADarkSide) {
    PaintCrystal(image, Upright(6), shades);
    for (int x = 0; x < image.width(); ++x) {
        const QRgb wanted = x >= 6 && x < 10 ? light : x >= 10 && x < 14 ? dark : 0;
        EXPECT_EQ(image.pixel(x, 12), wanted) << x;
    }
}

TEST_F(CrystalTest, EndsInAPoint) {
    PaintCrystal(image, Upright(6), shades);
    const auto covered = [this](int y) {
        int alpha = 0;
        for (int x = 0; x < image.width(); ++x) {
            alpha += qAlpha(image.pixel(x, y));
        }
        return alpha / 255.0;
    };
    EXPECT_EQ(covered(1), 0);
    // The middle of a row counts: 1 wide in the first of the point, 7 in the last, 8 below.
    EXPECT_NEAR(covered(2), 1, 0.05);
    EXPECT_NEAR(covered(5), 7, 0.05);
    EXPECT_NEAR(covered(6), 8, 0.05);
}

TEST_F(CrystalTest, ItsEdgesAreSmoothOverWhatLiesBehind) {
    image.fill(QColor(0, 0, 200));
    PaintCrystal(image, Upright(6.5), shades);
    const QRgb edge = image.pixel(6, 12);
    EXPECT_NEAR(qAlpha(edge), 255, 2);
    EXPECT_NEAR(qBlue(edge), (200 + 0x80) / 2, 2);
    EXPECT_NEAR(qGreen(edge), 0xFF / 2, 2);
    const QRgb ridge = image.pixel(10, 12);
    EXPECT_NEAR(qGreen(ridge), (0xFF + 0x40) / 2, 2);
}

TEST_F(CrystalTest, TheGlossLiesOnTheLightSlantOnly) {
    shades.gloss = 70;
    PaintCrystal(image, Upright(6), shades);
    EXPECT_GT(qRed(image.pixel(8, 5)), qRed(light));
    EXPECT_EQ(image.pixel(11, 5), dark);
    EXPECT_EQ(image.pixel(8, 12), light);
}

TEST_F(CrystalTest, WhatReachesBeyondTheImageIsLeftOut) {
    PaintCrystal(image, Upright(-4, -6), shades);
    PaintCrystal(image, Upright(17), shades);
    PaintCrystal(image, Upright(40), shades);
    EXPECT_EQ(image.pixel(0, 0), dark);
    EXPECT_EQ(image.pixel(19, 15), light);
}

} // namespace
} // namespace kestrune
