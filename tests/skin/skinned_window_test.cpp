#include "skin/hand_cursor.h"
#include "skin/image_button.h"
#include "skin/made_strip.h"
#include "skin/skinned_window.h"

#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QTest>
#include <gmock/gmock.h>

using namespace kestrune;

namespace {

class SkinnedWindowTest : public testing::Test {
protected:
    SkinnedWindowTest() {
        window.resize(100, 60);
        window.Chrome().AddTitle(&title);
        title.setGeometry(20, 0, 60, 16);
        window.move(200, 150);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        window.move(200, 150);
    }

    // A mouse event as the screen gives it: the place in the window follows from where the window is.
    void Mouse(QEvent::Type type, const QPoint& screen, Qt::MouseButton button, Qt::MouseButtons held) {
        const QPointF place = title.mapFromGlobal(QPointF(screen));
        QMouseEvent event(type, place, QPointF(screen), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&title, &event);
    }

    MadeStrip made;
    SkinPicture background{made.OffFile()};
    SkinnedWindow window{QSize(20, 20)};
    QLabel title{QStringLiteral("Title"), &window};
};

} // namespace

TEST_F(SkinnedWindowTest, HasNoFrame) {
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(window.isWindow());
}

TEST_F(SkinnedWindowTest, TheTitleDragsTheWindow) {
    Mouse(QEvent::MouseButtonPress, {230, 155}, Qt::LeftButton, Qt::LeftButton);
    Mouse(QEvent::MouseMove, {240, 150}, Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(window.pos(), QPoint(210, 145));
    Mouse(QEvent::MouseMove, {260, 170}, Qt::NoButton, Qt::LeftButton);
    EXPECT_EQ(window.pos(), QPoint(230, 165));
    Mouse(QEvent::MouseButtonRelease, {260, 170}, Qt::LeftButton, Qt::NoButton);
    Mouse(QEvent::MouseMove, {300, 300}, Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(window.pos(), QPoint(230, 165));
}

TEST_F(SkinnedWindowTest, TheRightButtonDoesNotDrag) {
    Mouse(QEvent::MouseButtonPress, {230, 155}, Qt::RightButton, Qt::RightButton);
    Mouse(QEvent::MouseMove, {240, 150}, Qt::NoButton, Qt::RightButton);
    EXPECT_EQ(window.pos(), QPoint(200, 150));
    Mouse(QEvent::MouseButtonRelease, {240, 150}, Qt::RightButton, Qt::NoButton);
}

TEST_F(SkinnedWindowTest, CornersAreTransparentAndSoft) {
    window.Chrome().SetBackground(&background);
    title.hide();
    const QImage image = window.grab().toImage();
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(99, 59).alpha(), 0);
    EXPECT_EQ(image.pixelColor(50, 0), QColor(0x80, 0x80, 0x80));
    EXPECT_EQ(image.pixelColor(0, 30), QColor(0x80, 0x80, 0x80));
    EXPECT_EQ(image.pixelColor(15, 15), QColor(255, 255, 0));
    int soft = 0;
    for (int x = 0; x < 10; ++x) {
        const int alpha = image.pixelColor(x, 1).alpha();
        soft += alpha > 0 && alpha < 255 ? 1 : 0;
    }
    EXPECT_GT(soft, 0);
}

TEST_F(SkinnedWindowTest, WithoutAPictureItIsGraphite) {
    const QImage image = window.grab().toImage();
    const QColor top = image.pixelColor(10, 6);
    const QColor bottom = image.pixelColor(50, 55);
    EXPECT_GT(top.lightness(), bottom.lightness());
    EXPECT_EQ(bottom.alpha(), 255);
}

TEST_F(SkinnedWindowTest, OtherCornersAfterAChange) {
    EXPECT_EQ(window.grab().toImage().pixelColor(1, 3).alpha(), 0);
    window.Chrome().SetCorners({2, 2});
    EXPECT_EQ(window.grab().toImage().pixelColor(1, 3).alpha(), 255);
}

TEST_F(SkinnedWindowTest, ItsButtonsLoseTheirLooksOverTheTitle) {
    const SkinPicture strip(made.StripFile());
    auto* button = new ImageButton(strip, {{0, 0}}, &window);
    button->SetHoverFades(false);
    button->setGeometry(30, 30, 20, 20);
    button->show();
    window.Chrome().Hover().Add(window.Chrome().Hover().AddGroup(), 0, button);
    QCoreApplication::processEvents();
    QTest::mouseMove(window.windowHandle(), {40, 40});
    ASSERT_TRUE(button->IsLit());
    QTest::mouseMove(window.windowHandle(), {40, 8});
    EXPECT_FALSE(button->IsLit());
    delete button;
}

TEST_F(SkinnedWindowTest, ClickablePartsShowTheHand) {
    EXPECT_EQ(title.cursor().shape(), Qt::BitmapCursor);
    EXPECT_EQ(title.cursor().hotSpot(), QPoint(8, 2));
    QLabel late(&window);
    window.Chrome().AddHand(&late);
    EXPECT_EQ(late.cursor().shape(), Qt::BitmapCursor);
}

TEST(HandCursorTest, IsDrawnAtTheScreensScale) {
    for (const qreal ratio : {1.0, 1.5, 2.0}) {
        EXPECT_EQ(HandCursor(ratio).pixmap().size(), QSize(24, 24) * ratio);
    }
}

TEST_F(SkinnedWindowTest, CentresOnItsScreen) {
    window.Chrome().Centre();
    const QRect screen = window.screen()->geometry();
    EXPECT_EQ(window.pos(),
              screen.topLeft() + QPoint((screen.width() - 100) / 2, (screen.height() - 60) / 2));
}

TEST(SkinnedDialogTest, EscapeClosesIt) {
    SkinnedDialog dialog({15, 15});
    dialog.resize(50, 50);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}
