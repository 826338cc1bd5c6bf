#include "skin/hover_groups.h"

#include <gmock/gmock.h>

using namespace kestrune;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct TwoGroups {
    HoverGroups groups;
    int menu = groups.AddGroup();
    int command = groups.AddGroup();
};

} // namespace

TEST(HoverGroups, NothingIsLitAtTheStart) {
    TwoGroups two;
    EXPECT_EQ(two.groups.GroupCount(), 2);
    EXPECT_EQ(two.groups.HoverIndex(two.menu), 0);
    EXPECT_THAT(two.groups.ReturnButton(), IsEmpty());
}

TEST(HoverGroups, TheIndexPlusOneIsKept) {
    TwoGroups two;
    const HoverMove move = two.groups.Move(two.command, 3);
    EXPECT_THAT(move.toReturn, IsEmpty());
    EXPECT_EQ(move.toLight, (HoverButton{two.command, 3}));
    EXPECT_EQ(two.groups.HoverIndex(two.command), 4);
    EXPECT_EQ(two.groups.HoverIndex(two.menu), 0);
}

TEST(HoverGroups, EveryMoveOverTheSameButtonLightsItAgain) {
    TwoGroups two;
    two.groups.Move(two.menu, 0);
    const HoverMove again = two.groups.Move(two.menu, 0);
    EXPECT_THAT(again.toReturn, IsEmpty());
    EXPECT_EQ(again.toLight, (HoverButton{two.menu, 0}));
}

TEST(HoverGroups, AnotherButtonOfTheGroupClearsTheFirstAtOnce) {
    TwoGroups two;
    two.groups.Move(two.menu, 0);
    const HoverMove next = two.groups.Move(two.menu, 1);
    EXPECT_THAT(next.toReturn, ElementsAre(HoverButton{two.menu, 0}));
    EXPECT_EQ(next.toLight, (HoverButton{two.menu, 1}));
    EXPECT_EQ(two.groups.HoverIndex(two.menu), 2);
}

TEST(HoverGroups, AButtonOfAnotherGroupLeavesTheFirstLitUntilTheNextReturn) {
    TwoGroups two;
    two.groups.Move(two.menu, 2);
    const HoverMove other = two.groups.Move(two.command, 5);
    EXPECT_THAT(other.toReturn, IsEmpty());
    EXPECT_EQ(two.groups.HoverIndex(two.menu), 3);
    EXPECT_THAT(two.groups.ReturnButton(),
                ElementsAre(HoverButton{two.menu, 2}, HoverButton{two.command, 5}));
    EXPECT_EQ(two.groups.HoverIndex(two.menu), 0);
    EXPECT_EQ(two.groups.HoverIndex(two.command), 0);
}

TEST(HoverGroups, AChangeInsideAGroupReturnsTheOtherGroupsToo) {
    TwoGroups two;
    two.groups.Move(two.menu, 2);
    two.groups.Move(two.command, 0);
    const HoverMove next = two.groups.Move(two.command, 1);
    EXPECT_THAT(next.toReturn, ElementsAre(HoverButton{two.menu, 2}, HoverButton{two.command, 0}));
    EXPECT_EQ(two.groups.HoverIndex(two.menu), 0);
    EXPECT_EQ(two.groups.HoverIndex(two.command), 2);
}

TEST(HoverGroups, ReturningTwiceReturnsOnce) {
    TwoGroups two;
    two.groups.Move(two.menu, 1);
    EXPECT_THAT(two.groups.ReturnButton(), ElementsAre(HoverButton{two.menu, 1}));
    EXPECT_THAT(two.groups.ReturnButton(), IsEmpty());
}

TEST(HoverGroups, TheLastIndexThatFitsEightBits) {
    TwoGroups two;
    EXPECT_TRUE(two.groups.Move(two.menu, 254).toLight.has_value());
    EXPECT_EQ(two.groups.HoverIndex(two.menu), 255);
}

TEST(HoverGroups, WhatDoesNotExistLightsNothing) {
    TwoGroups two;
    two.groups.Move(two.menu, 1);
    for (const HoverMove& move : {two.groups.Move(two.menu, -1), two.groups.Move(two.menu, 255),
                                  two.groups.Move(-1, 0), two.groups.Move(2, 0)}) {
        EXPECT_FALSE(move.toLight.has_value());
        EXPECT_THAT(move.toReturn, IsEmpty());
    }
    EXPECT_EQ(two.groups.HoverIndex(two.menu), 2);
    EXPECT_EQ(two.groups.HoverIndex(9), 0);
}
