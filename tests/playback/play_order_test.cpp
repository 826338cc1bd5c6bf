// The rules for the next row and the row before.
#include "playback/play_order.h"

#include "support/fake_clock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PlayOrderTest : public testing::Test {
protected:
    void SetRows(int count, std::initializer_list<int> selected = {}) {
        rows.Clear();
        for (int i = 0; i < count; ++i) {
            rows.Append(PlaylistRow{});
        }
        for (const int row : selected) {
            rows.SetSelected(row, true);
        }
    }
    QList<int> Selected() const {
        QList<int> selected;
        for (int row = 1; row <= rows.Count(); ++row) {
            if (rows.IsSelected(row)) {
                selected.append(row);
            }
        }
        return selected;
    }
    int Next(int last) {
        state.LastIndex = last;
        return FindNextSel(state, rows, options, clock);
    }
    int Previous(int last) {
        state.LastIndex = last;
        return FindLastSel(state, rows, options, clock);
    }
    // Walks as the transport does: the result becomes the row last started.
    QList<int> WalkNext(int last, int steps) {
        QList<int> walk;
        for (int i = 0; i < steps; ++i) {
            last = Next(last);
            walk.append(last);
        }
        return walk;
    }
    QList<int> WalkPrevious(int last, int steps) {
        QList<int> walk;
        for (int i = 0; i < steps; ++i) {
            last = Previous(last);
            walk.append(last);
        }
        return walk;
    }
    void Shuffle() { options.mOptions_Click(4); }

    ProgramState state;
    Options options{state};
    PlaylistRows rows;
    FakeClock clock;
};

TEST_F(PlayOrderTest, CountsTheSelectedRows) {
    SetRows(5);
    EXPECT_EQ(FindSel(rows), 0);
    rows.SetSelected(2, true);
    rows.SetSelected(5, true);
    EXPECT_EQ(FindSel(rows), 2);
}

TEST_F(PlayOrderTest, NextIsTheRowBehindTheLast) {
    SetRows(5, {2});
    EXPECT_EQ(Next(2), 3);
    EXPECT_THAT(Selected(), ElementsAre(3));
}

TEST_F(PlayOrderTest, NextOfTheLastRowIsRowOne) {
    SetRows(5, {5});
    EXPECT_EQ(Next(5), 1);
    EXPECT_THAT(Selected(), ElementsAre(1));
}

TEST_F(PlayOrderTest, NextWithNothingSelectedSelectsTheResult) {
    SetRows(3);
    EXPECT_EQ(Next(1), 2);
    EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(PlayOrderTest, NextDeselectsTheRowLastStartedAndNoOther) {
    SetRows(5, {5});
    EXPECT_EQ(Next(1), 2);
    EXPECT_THAT(Selected(), ElementsAre(2, 5));
}

TEST_F(PlayOrderTest, ASingleSelectionFollows) {
    SetRows(4, {1});
    EXPECT_THAT(WalkNext(1, 6), ElementsAre(2, 3, 4, 1, 2, 3));
    EXPECT_THAT(Selected(), ElementsAre(3));
}

TEST_F(PlayOrderTest, NextWithoutARowLastStartedGoesByTheCurrentRow) {
    SetRows(5);
    state.CurIndex = 3;
    EXPECT_EQ(Next(0), 4);
    EXPECT_EQ(state.LastIndex, 3);
}

TEST_F(PlayOrderTest, NextWithNeitherIsRowOne) {
    SetRows(5);
    EXPECT_EQ(Next(0), 1);
}

TEST_F(PlayOrderTest, NextWithARowLastStartedDoesNotLookAtTheCurrentRow) {
    SetRows(5);
    state.CurIndex = 5;
    EXPECT_EQ(Next(2), 3);
    EXPECT_EQ(state.LastIndex, 2);
}

TEST_F(PlayOrderTest, NextWalksOnlyTheSelectionAndLeavesIt) {
    SetRows(6, {2, 4, 5});
    EXPECT_THAT(WalkNext(2, 5), ElementsAre(4, 5, 2, 4, 5));
    EXPECT_THAT(Selected(), ElementsAre(2, 4, 5));
}

TEST_F(PlayOrderTest, NextFromOutsideTheSelectionTakesTheFirstBehind) {
    SetRows(6, {2, 5});
    EXPECT_EQ(Next(3), 5);
    EXPECT_EQ(Next(6), 2);
    EXPECT_EQ(Next(1), 2);
}

TEST_F(PlayOrderTest, NextInAOneRowListIsThatRow) {
    SetRows(1, {1});
    EXPECT_EQ(Next(1), 1);
    EXPECT_THAT(Selected(), ElementsAre(1));
}

TEST_F(PlayOrderTest, NextOfAnEmptyListIsNoRow) {
    EXPECT_EQ(Next(1), 0);
}

TEST_F(PlayOrderTest, NextOfARowThatIsGoneIsRowOne) {
    SetRows(3);
    EXPECT_EQ(Next(9), 1);
}

TEST_F(PlayOrderTest, PreviousIsTheRowBeforeTheLast) {
    SetRows(5, {3});
    EXPECT_EQ(Previous(3), 2);
    EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(PlayOrderTest, PreviousOfRowOneIsTheLastRow) {
    SetRows(5, {1});
    EXPECT_EQ(Previous(1), 5);
    EXPECT_THAT(Selected(), ElementsAre(5));
}

TEST_F(PlayOrderTest, PreviousWithoutARowLastStartedGoesByTheCurrentRow) {
    SetRows(5);
    state.CurIndex = 3;
    EXPECT_EQ(Previous(0), 2);
    EXPECT_EQ(state.LastIndex, 3);
}

TEST_F(PlayOrderTest, PreviousWithNeitherIsTheLastRow) {
    SetRows(5);
    EXPECT_EQ(Previous(0), 5);
}

TEST_F(PlayOrderTest, PreviousLetsASingleSelectionFollow) {
    SetRows(3, {1});
    EXPECT_THAT(WalkPrevious(1, 4), ElementsAre(3, 2, 1, 3));
    EXPECT_THAT(Selected(), ElementsAre(3));
}

TEST_F(PlayOrderTest, PreviousWalksOnlyTheSelectionAndLeavesIt) {
    SetRows(6, {2, 4, 5});
    EXPECT_THAT(WalkPrevious(4, 5), ElementsAre(2, 5, 4, 2, 5));
    EXPECT_THAT(Selected(), ElementsAre(2, 4, 5));
}

TEST_F(PlayOrderTest, PreviousFromOutsideTheSelectionTakesTheFirstBefore) {
    SetRows(6, {2, 5});
    EXPECT_EQ(Previous(4), 2);
    EXPECT_EQ(Previous(1), 5);
    EXPECT_EQ(Previous(6), 5);
}

TEST_F(PlayOrderTest, PreviousOfAnEmptyListIsNoRow) {
    EXPECT_EQ(Previous(1), 0);
}

class ShuffleTest : public PlayOrderTest {
protected:
    ShuffleTest() { Shuffle(); }
};

TEST_F(ShuffleTest, NextTakesARandomRowOfAll) {
    SetRows(10);
    clock.randoms = {0.0, 0.05, 0.1, 0.55, 0.999999};
    EXPECT_THAT(WalkNext(1, 5), ElementsAre(1, 1, 2, 6, 10));
}

TEST_F(ShuffleTest, PreviousIsRandomToo) {
    SetRows(10);
    clock.randoms = {0.75};
    EXPECT_EQ(Previous(2), 8);
}

TEST_F(ShuffleTest, ASingleSelectionMovesToTheRandomRow) {
    SetRows(10, {4});
    clock.randoms = {0.85};
    EXPECT_EQ(Next(4), 9);
    EXPECT_THAT(Selected(), ElementsAre(9));
}

TEST_F(ShuffleTest, TheSameRowMayComeTwiceAndStaysSelected) {
    SetRows(10, {4});
    clock.randoms = {0.35, 0.35};
    EXPECT_THAT(WalkNext(4, 2), ElementsAre(4, 4));
    EXPECT_THAT(Selected(), ElementsAre(4));
}

TEST_F(ShuffleTest, OfSeveralSelectedOneIsTakenAndTheSelectionStays) {
    SetRows(10, {2, 5, 9});
    clock.randoms = {0.0, 0.34, 0.999999, 0.32};
    EXPECT_THAT(WalkNext(1, 4), ElementsAre(2, 5, 9, 2));
    EXPECT_THAT(Selected(), ElementsAre(2, 5, 9));
}

TEST_F(ShuffleTest, TwoSelectedRowsAreSeveral) {
    SetRows(10, {3, 8});
    clock.randoms = {0.6, 0.4};
    EXPECT_THAT(WalkNext(5, 2), ElementsAre(8, 3));
    EXPECT_THAT(Selected(), ElementsAre(3, 8));
}

TEST_F(ShuffleTest, EachChoiceSeedsFromTheWholeSecondsSinceMidnight) {
    SetRows(10);
    clock.msSinceMidnight = 3661999;
    Next(1);
    clock.msSinceMidnight = 86399999;
    Previous(1);
    clock.msSinceMidnight = 0;
    Next(1);
    EXPECT_THAT(clock.seeds, ElementsAre(3661, 86399, 0));
}

TEST_F(ShuffleTest, ALastRowOfNoneBecomesTheCurrentRow) {
    SetRows(10, {3});
    state.CurIndex = 3;
    clock.randoms = {0.6};
    EXPECT_EQ(Next(0), 7);
    EXPECT_THAT(Selected(), ElementsAre(7));
}

TEST_F(ShuffleTest, AnEmptyListHasNoRow) {
    EXPECT_EQ(Next(1), 0);
    EXPECT_EQ(Previous(1), 0);
}

TEST_F(ShuffleTest, AnyRandomNumberGivesARowOfTheList) {
    SetRows(7);
    std::mt19937 generator(20261121);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    std::map<int, int> hits;
    constexpr int tries = 7000;
    int last = 1;
    for (int i = 0; i < tries; ++i) {
        clock.randoms = {unit(generator)};
        last = Next(last);
        ++hits[last];
        ASSERT_THAT(Selected(), ElementsAre(last));
    }
    ASSERT_EQ(hits.size(), 7U);
    EXPECT_EQ(hits.begin()->first, 1);
    EXPECT_EQ(hits.rbegin()->first, 7);
    for (const auto& [row, count] : hits) {
        EXPECT_GT(count, tries / 7 * 8 / 10) << row;
        EXPECT_LT(count, tries / 7 * 12 / 10) << row;
    }
}

TEST_F(PlayOrderTest, OtherModesTakeNoRandomNumber) {
    SetRows(4);
    Next(1);
    Previous(1);
    options.mOptions_Click(5);
    Next(1);
    EXPECT_THAT(clock.seeds, IsEmpty());
}

} // namespace
} // namespace kestrune
