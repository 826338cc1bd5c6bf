// Every piece that the converter window cuts from its pictures: there, inside, and in the place of the normal
// look.
#include "convert/converter_layout.h"
#include "convert/converter_pictures.h"
#include "convert/format_panel_layout.h"

#include <QImage>
#include <gtest/gtest.h>
#include <vector>

namespace kestrune {
namespace {

namespace at = converter_layout;
namespace panel = format_panel_layout;

struct Look {
    const char* name;
    QRect normal; // in `ground`
    QPoint strip;
    const SkinPicture& ground;
};

QRect InStrip(const Look& look) {
    return {look.strip, look.normal.size()};
}

// A key of the panel, whose normal look the strip itself has.
QRect OnPanel(const QRect& place) {
    return place.translated(panel::ground.topLeft());
}

std::vector<Look> KeyLooks(const ConverterPictures& pictures) {
    std::vector<Look> looks;
    const auto add = [&looks](const char* name, const QRect& normal, const KeyLayout& key,
                              const SkinPicture& ground) {
        looks.push_back({name, normal, key.hover, ground});
        looks.push_back({name, normal, key.pressed, ground});
        if (key.lit.x() >= 0) {
            looks.push_back({name, normal, key.lit, ground});
        }
    };
    const auto addKey = [&](const char* name, const KeyLayout& key) {
        add(name, key.place, key, pictures.Short());
    };
    for (const KeyLayout& key : at::folder) {
        addKey("folder", key);
    }
    for (const KeyLayout& key : at::ImageAllClear) {
        addKey("ImageAllClear", key);
    }
    addKey("Image1", at::Image1);
    addKey("Image2", at::Image2);
    looks.push_back({"Image2 normal", at::Image2.place, at::Image2Normal, pictures.Short()});
    addKey("ImageOptions", at::ImageOptions);
    addKey("ImageUpdown", at::ImageUpdown);
    add("ImageUpdown long", at::ImageUpdownLong.place, at::ImageUpdownLong, pictures.Long());
    for (const int line : {1, 2, 11}) {
        const KeyLayout key = panel::ImageSet(line);
        add("ImageSet", OnPanel(key.place), key, pictures.Strip());
    }
    return looks;
}

QImage Cut(const SkinPicture& picture, const QRect& piece, qreal scale) {
    return picture.Cut(piece, scale).toImage().convertToFormat(QImage::Format_ARGB32);
}

int PaintedPixels(const QImage& image) {
    int painted = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            painted += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
        }
    }
    return painted;
}

// Where the dark well of a key begins in its middle row.
int FirstDark(const QImage& image) {
    const int row = image.height() / 2;
    for (int x = 0; x < image.width(); ++x) {
        if (qAlpha(image.pixel(x, row)) > 100 && qGray(image.pixel(x, row)) < 36) {
            return x;
        }
    }
    return -1;
}

class ConverterCutsTest : public testing::TestWithParam<double> {
protected:
    ConverterPictures pictures;
};

TEST_P(ConverterCutsTest, PicturesHaveTheSizesOfTheWindow) {
    EXPECT_EQ(pictures.Short().Size(), QSize(at::width, at::shortHeight));
    EXPECT_EQ(pictures.Long().Size(), QSize(at::width, at::longHeight));
    EXPECT_EQ(pictures.Off().Size(), QSize(at::width, at::shortHeight));
    EXPECT_TRUE(pictures.Strip().Contains(panel::ground));
    ASSERT_EQ(pictures.EventSigns().size(), 2);
    EXPECT_FALSE(pictures.EventSigns().at(0).isNull());
    EXPECT_FALSE(pictures.EventSigns().at(1).isNull());
}

TEST_P(ConverterCutsTest, EveryLookLiesInThePlaceOfTheNormalOne) {
    for (const Look& look : KeyLooks(pictures)) {
        ASSERT_TRUE(pictures.Strip().Contains(InStrip(look))) << look.name;
        const QImage shown = Cut(pictures.Strip(), InStrip(look), GetParam());
        EXPECT_GT(PaintedPixels(shown), shown.width() * shown.height() * 7 / 10) << look.name;
        const QImage normal = Cut(look.ground, look.normal, GetParam());
        ASSERT_EQ(shown.size(), normal.size()) << look.name;
        ASSERT_GE(FirstDark(shown), 0) << look.name;
        EXPECT_NEAR(FirstDark(shown), FirstDark(normal), 1) << look.name;
    }
}

TEST_P(ConverterCutsTest, TheLooksOfAKeyDifferFromEachOtherAndFromTheNormalOne) {
    const std::vector<Look> looks = KeyLooks(pictures);
    for (size_t i = 0; i < looks.size(); ++i) {
        const QImage shown = Cut(pictures.Strip(), InStrip(looks[i]), GetParam());
        EXPECT_NE(shown, Cut(looks[i].ground, looks[i].normal, GetParam())) << looks[i].name;
        for (size_t other = i + 1; other < looks.size() && looks[other].normal == looks[i].normal &&
                                   &looks[other].ground == &looks[i].ground;
             ++other) {
            EXPECT_NE(shown, Cut(pictures.Strip(), InStrip(looks[other]), GetParam())) << looks[i].name;
        }
    }
}

// Title keys have no plate of their own in the normal look.
TEST_P(ConverterCutsTest, TheCrossesAreThereInBothLooks) {
    for (const KeyLayout& key : {at::ImageQuit, panel::ImageSetdown}) {
        const QImage hover = Cut(pictures.Strip(), {key.hover, key.place.size()}, GetParam());
        const QImage pressed = Cut(pictures.Strip(), {key.pressed, key.place.size()}, GetParam());
        EXPECT_GT(PaintedPixels(hover), hover.width() * hover.height() / 2);
        EXPECT_NE(hover, pressed);
    }
}

TEST_P(ConverterCutsTest, ADisabledKeyDiffersFromTheNormalOneInItsGlyphAlone) {
    for (const KeyLayout& key : {at::folder[0], at::folder[1]}) {
        const QImage normal = Cut(pictures.Short(), key.place, GetParam());
        const QImage off = Cut(pictures.Off(), key.place, GetParam());
        EXPECT_NE(normal, off);
        EXPECT_EQ(normal.copy(0, 0, normal.width(), 4), off.copy(0, 0, normal.width(), 4));
        EXPECT_EQ(normal.copy(0, 0, 4, normal.height()), off.copy(0, 0, 4, normal.height()));
    }
    EXPECT_NE(Cut(pictures.Short(), at::ImageQuit.place, GetParam()),
              Cut(pictures.Off(), at::ImageQuit.place, GetParam()));
}

// The window grows at its lower end: nothing else moves or changes its shade.
TEST_P(ConverterCutsTest, BothHeightsHaveTheSameUpperPart) {
    const QRect title(20, 8, at::width - 40, at::ImageUpdown.place.top() - 10);
    EXPECT_EQ(Cut(pictures.Short(), title, GetParam()), Cut(pictures.Long(), title, GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Scales, ConverterCutsTest, testing::Values(1.0, 1.5, 2.0));

} // namespace
} // namespace kestrune
