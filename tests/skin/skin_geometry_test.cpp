#include "skin/corner_sizes.h"
#include "skin/picture_clip.h"
#include "skin/window_drag.h"

#include <gmock/gmock.h>

using namespace kestrune;
using testing::Each;
using testing::SizeIs;

TEST(WindowDrag, TheWindowFollowsTheMouse) {
    WindowDrag drag;
    drag.Press({10, 5});
    EXPECT_EQ(drag.Move(Qt::LeftButton, {13, 4}, {100, 200}), QPoint(103, 199));
}

TEST(WindowDrag, TheOriginStaysSinceTheLabelMovesWithTheWindow) {
    WindowDrag drag;
    drag.Press({10, 5});
    QPoint window(100, 200);
    for (int step = 0; step < 3; ++step) {
        window = *drag.Move(Qt::LeftButton, {12, 5}, window);
    }
    EXPECT_EQ(window, QPoint(106, 200));
    EXPECT_EQ(drag.Move(Qt::LeftButton, {10, 5}, window), window);
}

TEST(WindowDrag, OnlyTheLeftButtonAloneDrags) {
    WindowDrag drag;
    drag.Press({10, 5});
    EXPECT_EQ(drag.Move(Qt::RightButton, {30, 30}, {0, 0}), std::nullopt);
    EXPECT_EQ(drag.Move(Qt::MiddleButton, {30, 30}, {0, 0}), std::nullopt);
    EXPECT_EQ(drag.Move(Qt::LeftButton | Qt::RightButton, {30, 30}, {0, 0}), std::nullopt);
    EXPECT_EQ(drag.Move(Qt::NoButton, {30, 30}, {0, 0}), std::nullopt);
    EXPECT_TRUE(drag.IsDragging());
}

TEST(WindowDrag, NothingMovesBeforeThePressAndAfterTheRelease) {
    WindowDrag drag;
    EXPECT_EQ(drag.Move(Qt::LeftButton, {30, 30}, {0, 0}), std::nullopt);
    drag.Press({10, 5});
    drag.Release();
    EXPECT_FALSE(drag.IsDragging());
    EXPECT_EQ(drag.Move(Qt::LeftButton, {30, 30}, {0, 0}), std::nullopt);
}

TEST(WindowDrag, AWindowMayLeaveTheScreen) {
    WindowDrag drag;
    drag.Press({10, 5});
    EXPECT_EQ(drag.Move(Qt::LeftButton, {-40, -40}, {0, 0}), QPoint(-50, -45));
}

TEST(PictureClip, MinusOneLeavesTheImageWhereItIs) {
    const PictureClip clip = GetImageClip(6, 31, QRect(70, 40, 74, 30));
    EXPECT_EQ(clip.strip, QRect(6, 31, 74, 30));
    EXPECT_EQ(clip.geometry, QRect(70, 40, 74, 30));
}

TEST(PictureClip, ZeroMovesTheImageToTheEdge) {
    EXPECT_EQ(GetImageClip(6, 31, QRect(70, 40, 74, 30), 0, 0).geometry, QRect(0, 0, 74, 30));
    EXPECT_EQ(GetImageClip(6, 31, QRect(70, 40, 74, 30), -1, 0).geometry, QRect(70, 0, 74, 30));
    EXPECT_EQ(GetImageClip(6, 31, QRect(70, 40, 74, 30), 9, -1).geometry, QRect(9, 40, 74, 30));
}

TEST(PictureClip, APictureTakesTheSizeOfItsClip) {
    const PictureClip clip = GetPicClip(240, 311, 32, 68, QRect(0, 0, 5, 5), 157, 77);
    EXPECT_EQ(clip.strip, QRect(240, 311, 32, 68));
    EXPECT_EQ(clip.geometry, QRect(157, 77, 32, 68));
}

TEST(Corners, SizesOfTheWindows) {
    EXPECT_EQ(corners::mainWindow, QSize(35, 38));
    EXPECT_EQ(corners::mainWindowResized, QSize(20, 20));
    EXPECT_EQ(corners::ConverterfrmDialog, QSize(20, 20));
    EXPECT_EQ(corners::CDWriterMain, QSize(20, 20));
    EXPECT_EQ(corners::CDfrmWrite, QSize(20, 20));
    EXPECT_EQ(corners::RipfrmMain, QSize(17, 17));
    EXPECT_EQ(corners::frmMp3site, QSize(17, 17));
    EXPECT_EQ(corners::frmInfo, QSize(15, 15));
}

TEST(Corners, TwipsBecomeWholePixels) {
    EXPECT_EQ(PixelsForTwips(5895), 393);
    EXPECT_EQ(PixelsForTwips(6445), 430);
    EXPECT_EQ(PixelsForTwips(3907), 260);
    EXPECT_EQ(PixelsForTwips(3908), 261);
    EXPECT_EQ(PixelsForTwips(3900, 0), 0);
}

TEST(Corners, RowsAreCutAsAnEllipseCutsThem) {
    const std::vector<int> insets = CornerInsets({393, 385}, corners::mainWindow);
    ASSERT_THAT(insets, SizeIs(385));
    // 17.5 * (1 - sqrt(1 - (18.5 / 19)^2)) is 13.51; at the row 18 the ellipse is as wide as the window.
    EXPECT_EQ(insets.front(), 14);
    EXPECT_EQ(insets[18], 0);
    EXPECT_EQ(insets[19], 0);
    for (size_t row = 1; row < 19; ++row) {
        EXPECT_LE(insets[row], insets[row - 1]) << row;
    }
    for (size_t row = 0; row < insets.size(); ++row) {
        EXPECT_EQ(insets[row], insets[insets.size() - 1 - row]) << row;
    }
}

TEST(Corners, AnEllipseNeverLeavesTheWindow) {
    const std::vector<int> insets = CornerInsets({10, 8}, {100, 100});
    ASSERT_THAT(insets, SizeIs(8));
    for (const int inset : insets) {
        EXPECT_LE(inset, 5);
    }
    EXPECT_THAT(CornerInsets({10, 8}, {0, 20}), Each(0));
    EXPECT_THAT(CornerInsets({10, -3}, {4, 4}), SizeIs(0));
}
