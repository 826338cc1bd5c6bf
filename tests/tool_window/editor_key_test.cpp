// The keys of the editors: their pictures and their looks.
#include "tool_window/editor_key.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

class EditorKeyTest : public testing::TestWithParam<double> {
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

    SkinPicture pictures{QStringLiteral(":/skin/editor_buttons.svg")};
};

TEST_P(EditorKeyTest, AllLooksCoverTheSameAndDiffer) {
    for (int index = 0; index < EditorKey::faceCount; ++index) {
        const auto face = static_cast<KeyFace>(index);
        const EditorKey key(pictures, face, nullptr);
        const QImage normal = Cut(EditorKey::NormalPiece(face));
        ASSERT_GT(Solid(normal), normal.width() * normal.height() * 9 / 10) << index;
        QList<QImage> seen = {normal};
        for (const QRect& piece : {QRect(key.Looks().hover, key.size()),
                                   QRect(*key.Looks().pressed, key.size()), EditorKey::OffPiece(face)}) {
            ASSERT_TRUE(pictures.Contains(piece)) << index;
            const QImage look = Cut(piece);
            EXPECT_EQ(Solid(look), Solid(normal)) << index;
            EXPECT_FALSE(seen.contains(look)) << index;
            seen << look;
        }
    }
}

TEST_P(EditorKeyTest, EachKeyHasAFaceOfItsOwn) {
    QList<QImage> seen;
    for (int index = 0; index < EditorKey::faceCount; ++index) {
        const QImage normal = Cut(EditorKey::NormalPiece(static_cast<KeyFace>(index)));
        EXPECT_FALSE(seen.contains(normal)) << index;
        seen << normal;
    }
}

TEST_P(EditorKeyTest, PaintsWhatItsStateAsksFor) {
    EditorKey key(pictures, KeyFace::Update, nullptr);
    const auto shown = [&key] {
        QImage image(key.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        key.render(&painter, {}, {}, {});
        return image.convertToFormat(QImage::Format_ARGB32);
    };
    const auto expected = [this](const QRect& piece) {
        return pictures.Cut(piece, 1).toImage().convertToFormat(QImage::Format_ARGB32);
    };
    EXPECT_EQ(shown(), expected(EditorKey::NormalPiece(KeyFace::Update)));
    key.setEnabled(false);
    EXPECT_EQ(shown(), expected(EditorKey::OffPiece(KeyFace::Update)));
}

INSTANTIATE_TEST_SUITE_P(Scales, EditorKeyTest, testing::Values(1.0, 1.5, 2.0));

} // namespace
} // namespace kestrune
