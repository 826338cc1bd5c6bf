// The keys OK, Cancel and Apply: their pictures and their looks.
#include "skin/dialog_buttons.h"

#include "skin/skinned_window.h"

#include <QImage>
#include <QSignalSpy>
#include <QtTest/QtTest>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

class DialogButtonsTest : public testing::TestWithParam<double> {
protected:
    DialogButtonsTest() {
        window.resize(300, 60);
        buttons->move(20, 20);
    }
    QImage Cut(const SkinPicture& picture, const QRect& piece) const {
        return picture.Cut(piece, GetParam()).toImage().convertToFormat(QImage::Format_ARGB32);
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

    SkinnedDialog window{QSize(15, 15)};
    DialogButtons* buttons = new DialogButtons(window.Chrome(), &window);
};

TEST_P(DialogButtonsTest, EveryLookCoversTheNormalOneAndDiffersFromIt) {
    for (int index = 0; index < DialogButtons::count; ++index) {
        const ImageButton* button = buttons->ImageCMD(index);
        const QImage normal = Cut(buttons->Picture(), button->geometry());
        ASSERT_GT(Solid(normal), normal.width() * normal.height() * 9 / 10);
        for (const QPoint& look : {button->Looks().hover, *button->Looks().pressed}) {
            const QRect piece(look, button->size());
            ASSERT_TRUE(buttons->Strip().Contains(piece)) << index;
            const QImage shown = Cut(buttons->Strip(), piece);
            EXPECT_EQ(Solid(shown), Solid(normal)) << index;
            EXPECT_NE(shown, normal) << index;
        }
        EXPECT_NE(Cut(buttons->Strip(), {button->Looks().hover, button->size()}),
                  Cut(buttons->Strip(), {*button->Looks().pressed, button->size()}));
    }
}

// The words are drawn by the machine's own faces.
TEST_P(DialogButtonsTest, EachKeyBearsAWordOfItsOwn) {
    for (int index = 0; index + 1 < DialogButtons::count; ++index) {
        EXPECT_NE(Cut(buttons->Picture(), buttons->ImageCMD(index)->geometry()),
                  Cut(buttons->Picture(), buttons->ImageCMD(index + 1)->geometry()));
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, DialogButtonsTest, testing::Values(1.0, 1.5, 2.0));

class DialogButtonsMouseTest : public testing::Test {
protected:
    DialogButtonsMouseTest() {
        window.resize(300, 60);
        buttons->move(20, 20);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    SkinnedDialog window{QSize(15, 15)};
    DialogButtons* buttons = new DialogButtons(window.Chrome(), &window);
};

TEST_F(DialogButtonsMouseTest, TheKeyUnderTheMouseIsLit) {
    QTest::mouseMove(window.windowHandle(), {60, 33});
    EXPECT_TRUE(buttons->ImageCMD(0)->IsLit());
    QTest::mouseMove(window.windowHandle(), {148, 33});
    EXPECT_FALSE(buttons->ImageCMD(0)->IsLit());
    EXPECT_TRUE(buttons->ImageCMD(1)->IsLit());
    QTest::mouseMove(window.windowHandle(), {148, 5});
    EXPECT_FALSE(buttons->ImageCMD(1)->IsLit());
}

TEST_F(DialogButtonsMouseTest, AClickTellsWhichKeyItWas) {
    QSignalSpy clicks(buttons, &DialogButtons::Clicked);
    for (int index = 0; index < DialogButtons::count; ++index) {
        QTest::mouseClick(buttons->ImageCMD(index), Qt::LeftButton);
        QTest::keyClick(buttons->ImageCMD(index), Qt::Key_Space);
        ASSERT_EQ(clicks.size(), 2);
        EXPECT_EQ(clicks[0][0].toInt(), index);
        EXPECT_EQ(clicks[1][0].toInt(), index);
        clicks.clear();
    }
}

TEST_F(DialogButtonsMouseTest, KeysHaveNames) {
    EXPECT_EQ(buttons->ImageCMD(0)->accessibleName(), QStringLiteral("OK"));
    EXPECT_EQ(buttons->ImageCMD(1)->accessibleName(), QStringLiteral("Cancel"));
    EXPECT_EQ(buttons->ImageCMD(2)->accessibleName(), QStringLiteral("Apply"));
    EXPECT_EQ(buttons->ImageCMD(2)->objectName(), QStringLiteral("ImageCMD(2)"));
}

} // namespace
} // namespace kestrune
