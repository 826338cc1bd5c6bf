// The thumb of the playlist's scroll bar, both ways.
#include "playlist/scroll_thumb.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

// A track of 100 between the arrows, in which the thumb has a way of 80.
constexpr ThumbGeometry track{10, 110, 20};

TEST(ScrollThumb, TheFirstRowStandsOneBelowTheUpperArrow) {
    EXPECT_EQ(MoveScrollBar(1, 100, track), 11);
    EXPECT_EQ(MoveScrollBar(1, 8, track), 11);
}

TEST(ScrollThumb, TheEndStandsOnTheLowerArrow) {
    EXPECT_EQ(MoveScrollBar(94, 100, track), 90);
    EXPECT_EQ(MoveScrollBar(93, 100, track), 90);
    EXPECT_EQ(MoveScrollBar(2, 8, track), 90);
    EXPECT_EQ(MoveScrollBar(500, 100, track), 90);
}

TEST(ScrollThumb, FewerThanEightRowsStandAtTheUpperArrow) {
    for (const int count : {0, 1, 7}) {
        EXPECT_EQ(MoveScrollBar(1, count, track), 10) << count;
    }
    EXPECT_EQ(MoveScrollBar(0, 0, track), 10);
}

TEST(ScrollThumb, BetweenTheEndsThePlaceIsProportional) {
    EXPECT_DOUBLE_EQ(MoveScrollBar(92, 100, track), 10 + 92 * 80.0 / 93);
    EXPECT_DOUBLE_EQ(MoveScrollBar(2, 100, track), 10 + 2 * 80.0 / 93);
    EXPECT_DOUBLE_EQ(MoveScrollBar(50, 107, track), 50);
}

TEST(ScrollThumb, DraggingReversesEveryPlace) {
    for (const int count : {8, 9, 20, 100, 1000}) {
        for (int row = 1; row <= count - 8; ++row) {
            // The first unit of the way is that of row 1, whose thumb stands there.
            const double top = MoveScrollBar(row, count, track);
            EXPECT_EQ(FirstRowForThumb(top, count, track), top <= 11 ? 1 : row) << row << " of " << count;
        }
        EXPECT_EQ(FirstRowForThumb(90, count, track), count - 6);
    }
}

TEST(ScrollThumb, DraggingToTheUpperArrowShowsTheFirstRow) {
    EXPECT_EQ(FirstRowForThumb(10, 100, track), 1);
    EXPECT_EQ(FirstRowForThumb(11, 1000, track), 1);
    EXPECT_EQ(FirstRowForThumb(-50, 100, track), 1);
    EXPECT_EQ(FirstRowForThumb(10, 32000, track), 1);
}

TEST(ScrollThumb, DraggingBeyondTheLowerArrowShowsTheLastRow) {
    EXPECT_EQ(FirstRowForThumb(90, 32000, track), 31994);
    EXPECT_EQ(FirstRowForThumb(900, 32000, track), 31994);
}

TEST(ScrollThumb, AShortListDoesNotScroll) {
    EXPECT_EQ(FirstRowForThumb(90, 7, track), 1);
    EXPECT_EQ(FirstRowForThumb(90, 0, track), 1);
}

TEST(ScrollThumb, ATrackWithoutRoomGivesTheLastPlace) {
    constexpr ThumbGeometry tight{10, 30, 20};
    EXPECT_EQ(FirstRowForThumb(10, 100, tight), 94);
    EXPECT_EQ(ThumbInTrack(50, tight), 10);
    constexpr ThumbGeometry tooTight{10, 15, 20};
    EXPECT_EQ(ThumbInTrack(0, tooTight), 10);
    EXPECT_EQ(FirstRowForThumb(10, 100, tooTight), 94);
}

TEST(ScrollThumb, AClickOnTheTrackCentresTheThumb) {
    EXPECT_EQ(ThumbTopForClick(60, track), 50);
    EXPECT_EQ(ThumbTopForClick(11, track), 10);
    EXPECT_EQ(ThumbTopForClick(109, track), 90);
}

TEST(ScrollThumb, TheLowerArrowGoesEightRowsOn) {
    EXPECT_EQ(RowForArrow(ScrollArrow::Down, 1, 100), 9);
    EXPECT_EQ(RowForArrow(ScrollArrow::Down, 90, 100), 98);
    EXPECT_EQ(RowForArrow(ScrollArrow::Down, 94, 100), 100);
    EXPECT_EQ(RowForArrow(ScrollArrow::Down, 1, 3), 3);
}

TEST(ScrollThumb, TheUpperArrowGoesOneRowBack) {
    EXPECT_EQ(RowForArrow(ScrollArrow::Up, 5, 100), 4);
    EXPECT_EQ(RowForArrow(ScrollArrow::Up, 1, 100), 1);
}

TEST(ScrollThumb, AnEmptyListHasNoRowToShow) {
    EXPECT_EQ(RowForArrow(ScrollArrow::Up, 1, 0), 0);
    EXPECT_EQ(RowForArrow(ScrollArrow::Down, 1, 0), 0);
}

} // namespace
} // namespace kestrune
