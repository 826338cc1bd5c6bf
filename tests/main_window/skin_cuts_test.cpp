// Every piece that the main window cuts from its pictures: there, inside, and in the place of the normal
// look.
#include "display/display_frame.h"
#include "main_window/main_layout.h"
#include "main_window/main_pictures.h"
#include "playback/format_lamps.h"
#include "playlist/small_digits.h"

#include <QImage>
#include <gtest/gtest.h>
#include <vector>

namespace kestrune {
namespace {

struct Piece {
    QString name;
    QRect strip;
};

struct Look {
    QString name;
    QRect place; // in the window
    QPoint strip;
};

QString Named(const char* name, size_t index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

template <size_t count>
void AddKeys(std::vector<Look>& looks, const char* name, const std::array<KeyLayout, count>& keys) {
    for (size_t i = 0; i < count; ++i) {
        looks.push_back({Named(name, i) + QStringLiteral(" hover"), keys[i].place, keys[i].hover});
        looks.push_back({Named(name, i) + QStringLiteral(" pressed"), keys[i].place, keys[i].pressed});
        if (keys[i].lit.x() >= 0) {
            looks.push_back({Named(name, i) + QStringLiteral(" lit"), keys[i].place, keys[i].lit});
        }
    }
}

std::vector<Look> KeyLooks() {
    std::vector<Look> looks;
    AddKeys(looks, "ImagePlayButton", layout::ImagePlayButton);
    AddKeys(looks, "ImageRepeatModeBut", layout::ImageRepeatModeBut);
    AddKeys(looks, "ImageListCmd", layout::ImageListCmd);
    AddKeys(looks, "ImageChgLstBnd", std::array<KeyLayout, 1>{layout::ImageChgLstBnd});
    AddKeys(looks, "ImageColour", std::array<KeyLayout, 1>{layout::ImageColour});
    return looks;
}

std::vector<Piece> OtherPieces() {
    std::vector<Piece> pieces;
    const auto add = [&pieces](const QString& name, const QPoint& corner, const QSize& size) {
        pieces.push_back({name, {corner, size}});
    };
    for (size_t i = 0; i < layout::ImageWin.size(); ++i) {
        add(Named("ImageWin hover", i), layout::ImageWin[i].hover, layout::ImageWin[i].place.size());
        add(Named("ImageWin pressed", i), layout::ImageWin[i].pressed, layout::ImageWin[i].place.size());
    }
    for (size_t item = 0; item < layout::toolFrameTops.size(); ++item) {
        for (const int left : layout::toolFrameLefts) {
            add(Named("tool frame", item), {left, layout::toolFrameTops[item]}, layout::toolCell);
        }
    }
    for (int digit = 0; digit < 10; ++digit) {
        add(Named("clock", static_cast<size_t>(digit)), {digit * 12 + 4, 238}, layout::bigDigit);
        add(Named("clock mask", static_cast<size_t>(digit)), {digit * 12 + 4, 294}, layout::bigDigit);
        add(Named("sixtieths", static_cast<size_t>(digit)), {digit * 9 + 4, 257}, layout::smallDigit);
        add(Named("sixtieths mask", static_cast<size_t>(digit)), {digit * 9 + 4, 313}, layout::smallDigit);
    }
    for (size_t i = 0; i < layout::ImageSmall.size(); ++i) {
        add(Named("lamp", i), layout::ImageSmallLit[i], layout::ImageSmall[i].size());
    }
    for (const char* text : {"44,100", "48,000"}) {
        const LampCut cut = SampleRateLamp(QLatin1String(text));
        add(QLatin1String(text), {cut.left, lampTop}, {cut.width, lampHeight});
    }
    for (const char* text :
         {"64 KBPS", "80 KBPS", "112 KBPS", "128 KBPS", "192 KBPS", "256 KBPS", "320 KBPS"}) {
        const LampCut cut = BitRateLamp(QLatin1String(text));
        add(QLatin1String(text), {cut.left, lampTop}, {cut.width, lampHeight});
    }
    for (size_t i = 0; i < layout::ImageVol.size(); ++i) {
        add(Named("volume mark", i), layout::ImageVolLit[i], layout::ImageVol[i].size());
    }
    for (const DigitCut& cut : DispSelTotalTime(QStringLiteral("0123456789:/"), 100).cuts) {
        add(Named("small digit", static_cast<size_t>(cut.left)), {cut.left, smallDigitTop},
            {cut.width, smallDigitHeight});
    }
    for (size_t i = 0; i < displayFramePieces.size(); ++i) {
        pieces.push_back({Named("frame", i), displayFramePieces[i].strip});
    }
    add(QStringLiteral("line"), layout::positionLineInStrip,
        {layout::positionBar.width(), layout::positionLineHeight});
    add(QStringLiteral("thumb"), layout::thumbInStrip, {12, 12});
    add(QStringLiteral("held thumb"), layout::thumbHeldInStrip, {12, 12});
    add(QStringLiteral("volume dot"), layout::volumeDotInStrip, {8, 8});
    return pieces;
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

class SkinCutsTest : public testing::TestWithParam<double> {
protected:
    MainPictures pictures;
};

TEST_P(SkinCutsTest, EveryPieceIsInItsStripAndNotEmpty) {
    for (const Piece& piece : OtherPieces()) {
        ASSERT_TRUE(pictures.Strip().Contains(piece.strip)) << piece.name.toStdString();
        EXPECT_GT(PaintedPixels(Cut(pictures.Strip(), piece.strip, GetParam())), 0)
            << piece.name.toStdString();
    }
}

// The key of every look covers the key of the normal look: the same outline, to the pixel.
TEST_P(SkinCutsTest, EveryLookLiesInThePlaceOfTheNormalOne) {
    for (const Look& look : KeyLooks()) {
        const QRect inStrip(look.strip, look.place.size());
        ASSERT_TRUE(pictures.Strip().Contains(inStrip)) << look.name.toStdString();
        const QImage shown = Cut(pictures.Strip(), inStrip, GetParam());
        EXPECT_GT(PaintedPixels(shown), shown.width() * shown.height() * 7 / 10) << look.name.toStdString();
        // Laid over the body, nothing of the normal key's rim is seen beside the look's own: the rim's dark
        // well differs from the body in the same pixels.
        const QImage normal = Cut(pictures.Window(), look.place, GetParam());
        ASSERT_EQ(shown.size(), normal.size()) << look.name.toStdString();
        const int middle = normal.height() / 2;
        const auto firstDark = [](const QImage& image, int row) {
            for (int x = 0; x < image.width(); ++x) {
                if (qAlpha(image.pixel(x, row)) > 100 && qGray(image.pixel(x, row)) < 32) {
                    return x;
                }
            }
            return -1;
        };
        EXPECT_NEAR(firstDark(shown, middle), firstDark(normal, middle), 1) << look.name.toStdString();
    }
}

TEST_P(SkinCutsTest, ADisabledKeyDiffersFromTheNormalOneInItsGlyphAlone) {
    for (const KeyLayout& key : layout::ImagePlayButton) {
        const QImage normal = Cut(pictures.Window(), key.place, GetParam());
        const QImage off = Cut(pictures.Off(), key.place, GetParam());
        EXPECT_NE(normal, off);
        EXPECT_EQ(normal.copy(0, 0, 4, 4), off.copy(0, 0, 4, 4));
        EXPECT_EQ(normal.copy(0, normal.height() / 2, 4, 4), off.copy(0, normal.height() / 2, 4, 4));
    }
}

TEST_P(SkinCutsTest, TheLooksOfAKeyDifferFromEachOther) {
    std::vector<Look> looks = KeyLooks();
    for (size_t i = 0; i + 1 < looks.size(); ++i) {
        if (looks[i].strip == looks[i + 1].strip || looks[i].place != looks[i + 1].place) {
            continue;
        }
        EXPECT_NE(Cut(pictures.Strip(), {looks[i].strip, looks[i].place.size()}, GetParam()),
                  Cut(pictures.Strip(), {looks[i + 1].strip, looks[i + 1].place.size()}, GetParam()))
            << looks[i].name.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, SkinCutsTest, testing::Values(1.0, 1.5, 2.0));

} // namespace
} // namespace kestrune
