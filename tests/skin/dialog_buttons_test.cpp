// The keys OK, Cancel and Apply: what they are called and what they tell.
#include "skin/dialog_buttons.h"

#include "skin/skinned_window.h"

#include <QSignalSpy>
#include <QtTest/QtTest>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

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
    EXPECT_EQ(buttons->ImageCMD(0)->text(), QStringLiteral("OK"));
    EXPECT_EQ(buttons->ImageCMD(0)->accessibleName(), QStringLiteral("OK"));
    EXPECT_EQ(buttons->ImageCMD(1)->accessibleName(), QStringLiteral("Cancel"));
    EXPECT_EQ(buttons->ImageCMD(2)->accessibleName(), QStringLiteral("Apply"));
    EXPECT_EQ(buttons->ImageCMD(2)->objectName(), QStringLiteral("ImageCMD(2)"));
}

} // namespace
} // namespace kestrune
