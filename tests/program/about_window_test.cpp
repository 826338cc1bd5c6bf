// The about window and the program's icons.
#include "program/frm_splash.h"
#include "skin/program_icon.h"

#include <QScreen>
#include <QtTest/QtTest>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

class AboutWindowTest : public testing::Test {
protected:
    AboutWindowTest() {
        state.AppVersion = QStringLiteral("V5.4");
        state.BuildNumber = 50410;
    }
    void Open() {
        about.open();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&about));
    }
    std::string Text(const char* label) {
        const auto* found = about.findChild<QLabel*>(QString::fromLatin1(label));
        return found != nullptr ? found->text().toStdString() : "(no label)";
    }

    ProgramState state;
    FrmSplash about{state};
};

TEST_F(AboutWindowTest, ShowsVersionAndBuild) {
    Open();
    EXPECT_EQ(about.objectName(), QStringLiteral("frmSplash"));
    EXPECT_EQ(Text("LabelVer"), "V5.4");
    EXPECT_EQ(Text("LabelBuild"), "Build 50410");
    EXPECT_NE(Text("LabelLicence").find("GPL"), std::string::npos);
}

TEST_F(AboutWindowTest, WritesThemAnewAtEachShowing) {
    Open();
    about.close();
    state.BuildNumber = 50411;
    Open();
    EXPECT_EQ(Text("LabelBuild"), "Build 50411");
}

TEST_F(AboutWindowTest, StandsInTheMiddleOfTheScreen) {
    Open();
    EXPECT_EQ(about.size(), FrmSplash::windowSize);
    const QPoint off = about.geometry().center() - about.screen()->geometry().center();
    EXPECT_LE(off.manhattanLength(), 2);
}

TEST_F(AboutWindowTest, BlocksTheOtherWindowsWhileItIsOpen) {
    Open();
    EXPECT_TRUE(about.isModal());
}

TEST_F(AboutWindowTest, AClickAnywhereClosesIt) {
    for (const QPoint& place : {QPoint(200, 100), QPoint(40, 193), QPoint(360, 193), QPoint(100, 218)}) {
        Open();
        QTest::mouseClick(about.windowHandle(), Qt::LeftButton, {}, place);
        EXPECT_FALSE(about.isVisible()) << place.x() << "," << place.y();
    }
}

TEST_F(AboutWindowTest, AClickThatIsLedOutOfTheWindowLeavesItOpen) {
    Open();
    QTest::mousePress(&about, Qt::LeftButton, {}, {200, 100});
    QTest::mouseRelease(&about, Qt::LeftButton, {}, {200, 400});
    EXPECT_TRUE(about.isVisible());
}

TEST_F(AboutWindowTest, KeysCloseIt) {
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        Open();
        QTest::keyClick(&about, key);
        EXPECT_FALSE(about.isVisible()) << key;
    }
}

TEST_F(AboutWindowTest, OtherKeysLeaveItOpen) {
    Open();
    QTest::keyClick(&about, Qt::Key_A);
    EXPECT_TRUE(about.isVisible());
}

TEST_F(AboutWindowTest, CornersAreRoundAndTheRestIsOpaque) {
    Open();
    const QImage picture = about.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    const int right = picture.width() - 1;
    const int bottom = picture.height() - 1;
    for (const QPoint& corner : {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)}) {
        EXPECT_EQ(qAlpha(picture.pixel(corner)), 0);
    }
    for (const QPoint& place :
         {QPoint(20, 4), QPoint(right / 2, bottom / 2), QPoint(right - 20, bottom - 4)}) {
        EXPECT_EQ(qAlpha(picture.pixel(place)), 255);
    }
}

TEST_F(AboutWindowTest, NoTextIsCutOff) {
    Open();
    for (const QLabel* label : about.findChildren<QLabel*>()) {
        EXPECT_LE(label->sizeHint().width(), label->width()) << label->objectName().toStdString();
        EXPECT_LE(label->fontMetrics().height(), label->height()) << label->objectName().toStdString();
    }
}

class ProgramIconTest : public testing::TestWithParam<int> {};

TEST_P(ProgramIconTest, IsDrawnForItsSize) {
    const int size = GetParam();
    const QIcon icon = ProgramIcon();
    EXPECT_TRUE(icon.availableSizes().contains(QSize(size, size)));
    const QImage picture = icon.pixmap(QSize(size, size), 1.0).toImage();
    ASSERT_EQ(picture.size(), QSize(size, size));
    EXPECT_LT(qAlpha(picture.pixel(0, 0)), 128);
    int tile = 0;
    int feathers = 0;
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const QColor colour = picture.pixelColor(x, y);
            tile += colour.alpha() == 255 ? 1 : 0;
            feathers += colour.alpha() == 255 && colour.blue() > 200 && colour.blue() > colour.red() ? 1 : 0;
        }
    }
    EXPECT_GT(tile, size * size * 8 / 10);
    EXPECT_GT(feathers, size * size / 10);
    EXPECT_LT(feathers, size * size / 2);
}

INSTANTIATE_TEST_SUITE_P(Sizes, ProgramIconTest, testing::Values(16, 22, 24, 32, 48, 64, 128, 256, 512));

TEST(ProgramEmblem, IsSharpAtEachScaleOfTheScreen) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        const QPixmap emblem = ProgramEmblem(64, scale);
        EXPECT_EQ(emblem.width(), static_cast<int>(64 * scale));
        EXPECT_EQ(emblem.devicePixelRatio(), scale);
        EXPECT_FALSE(emblem.toImage().allGray());
    }
}

} // namespace
} // namespace kestrune
