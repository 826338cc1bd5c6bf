// The keys of the dialogs: their pictures, their looks and their words.
#include "skin/body_key.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

class BodyKeyTest : public testing::TestWithParam<double> {
protected:
    QImage Cut(const QRect& piece) const {
        return pictures.Cut(piece, GetParam()).toImage().convertToFormat(QImage::Format_ARGB32);
    }
    static int Solid(const QImage& image) {
        int solid = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                solid += qAlpha(image.pixel(x, y)) > 100 ? 1 : 0;
            }
        }
        return solid;
    }

    BodyKeyPictures pictures;
};

TEST_P(BodyKeyTest, AllLooksCoverTheSameAndDiffer) {
    for (int index = 0; index < BodyKey::faceCount; ++index) {
        const auto face = static_cast<BodyKey::Face>(index);
        const BodyKey key(pictures, face, QString(), nullptr);
        const QImage normal = Cut(BodyKey::NormalPiece(face));
        ASSERT_GT(Solid(normal), normal.width() * normal.height() * 9 / 10) << index;
        QList<QImage> seen = {normal};
        for (const QRect& piece : {QRect(key.Looks().hover, key.size()),
                                   QRect(*key.Looks().pressed, key.size()), BodyKey::OffPiece(face)}) {
            ASSERT_TRUE(pictures.Contains(piece)) << index;
            const QImage look = Cut(piece);
            EXPECT_EQ(Solid(look), Solid(normal)) << index;
            // A blank key that is disabled differs by its word alone.
            const bool isBlankOff = face == BodyKey::Face::Word && piece == BodyKey::OffPiece(face);
            EXPECT_TRUE(isBlankOff || !seen.contains(look)) << index;
            seen << look;
        }
    }
}

// What a key shows as it stands.
QImage Shown(BodyKey& key) {
    QImage image(key.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    key.render(&painter, {}, {}, {});
    return image.convertToFormat(QImage::Format_ARGB32);
}

TEST_P(BodyKeyTest, PaintsTheFaceThatItsStateAsksFor) {
    BodyKey key(pictures, BodyKey::Face::Folder, QStringLiteral("Open"), nullptr);
    const auto expected = [this](const QRect& piece) {
        return pictures.Cut(piece, 1).toImage().convertToFormat(QImage::Format_ARGB32);
    };
    EXPECT_EQ(Shown(key), expected(BodyKey::NormalPiece(BodyKey::Face::Folder)));
    key.setEnabled(false);
    EXPECT_EQ(Shown(key), expected(BodyKey::OffPiece(BodyKey::Face::Folder)));
}

// Brightest and leftmost spots of what differs between a key with a word and one without.
struct Ink {
    int brightest = 0;
    int left = 1000;
    int right = -1;
    int bottom = -1;
};

Ink InkOf(BodyKey& key, BodyKey& blank) {
    const QImage with = Shown(key);
    const QImage without = Shown(blank);
    Ink ink;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            if (with.pixel(x, y) == without.pixel(x, y)) {
                continue;
            }
            ink.brightest = std::max(ink.brightest, qGray(with.pixel(x, y)));
            ink.left = std::min(ink.left, x);
            ink.right = std::max(ink.right, x);
            ink.bottom = std::max(ink.bottom, y);
        }
    }
    return ink;
}

TEST_P(BodyKeyTest, TheWordStandsInTheMiddleAndSinksWithTheKey) {
    BodyKey key(pictures, QStringLiteral("Update"), nullptr);
    BodyKey blank(pictures, QString(), nullptr);
    EXPECT_EQ(key.accessibleName(), QStringLiteral("Update"));
    const Ink normal = InkOf(key, blank);
    EXPECT_NEAR((normal.left + normal.right) / 2.0, key.width() / 2.0, 1.5);
    key.SetPressedLook(true);
    blank.SetPressedLook(true);
    const Ink pressed = InkOf(key, blank);
    EXPECT_GT(pressed.brightest, normal.brightest);
    key.SetPressedLook(false);
    blank.SetPressedLook(false);
    key.setEnabled(false);
    blank.setEnabled(false);
    EXPECT_LT(InkOf(key, blank).brightest, normal.brightest * 3 / 4);
}

TEST_P(BodyKeyTest, AWordThatIsTooLongEndsInTheKey) {
    BodyKey key(pictures, QStringLiteral("Donaudampfschifffahrt"), nullptr);
    BodyKey blank(pictures, QString(), nullptr);
    const Ink ink = InkOf(key, blank);
    EXPECT_GE(ink.left, 3);
    EXPECT_LE(ink.right, key.width() - 4);
}

INSTANTIATE_TEST_SUITE_P(Scales, BodyKeyTest, testing::Values(1.0, 1.5, 2.0));

} // namespace
} // namespace kestrune
