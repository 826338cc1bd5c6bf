#include "main_window/tool_bar_animation.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

TEST(ToolBarAnimation, ALitItemGoesThroughItsPhases) {
    ToolBarAnimation animation;
    EXPECT_TRUE(animation.Move(4));
    EXPECT_FALSE(animation.Move(4));
    EXPECT_EQ(animation.Frame(4), 0);
    animation.Tick();
    EXPECT_EQ(animation.Frame(4), 1);
    animation.Tick();
    EXPECT_EQ(animation.Frame(4), 2);
    animation.Tick();
    EXPECT_EQ(animation.Frame(4), 0);
}

TEST(ToolBarAnimation, MovingOnBlanksTheFormerItem) {
    ToolBarAnimation animation;
    animation.Move(1);
    EXPECT_TRUE(animation.Move(2));
    EXPECT_EQ(animation.Frame(1), ToolBarAnimation::blank);
    EXPECT_EQ(animation.Frame(2), 0);
    EXPECT_TRUE(animation.Leave());
    EXPECT_FALSE(animation.Leave());
    EXPECT_EQ(animation.Frame(2), ToolBarAnimation::blank);
}

TEST(ToolBarAnimation, TheIdlePictureMovesWithEachSixthTick) {
    ToolBarAnimation animation;
    for (int tick = 1; tick <= 5; ++tick) {
        EXPECT_FALSE(animation.IdleTick());
    }
    EXPECT_TRUE(animation.IdleTick());
    EXPECT_EQ(animation.Frame(0), 1);
}

TEST(ToolBarAnimation, TheIdlePictureRestsWhileAnItemIsLit) {
    ToolBarAnimation animation;
    animation.Move(3);
    for (int tick = 1; tick <= 6; ++tick) {
        EXPECT_FALSE(animation.IdleTick());
    }
    EXPECT_EQ(animation.Frame(0), ToolBarAnimation::blank);
    animation.Leave();
    EXPECT_EQ(animation.Frame(0), 1);
}

TEST(ToolBarAnimation, TheIdleCounterWraps) {
    ToolBarAnimation animation;
    int changes = 0;
    for (int tick = 0; tick < 32701; ++tick) {
        changes += animation.IdleTick() ? 1 : 0;
    }
    // 5,450 sixth ticks up to 32,700, and the wrap to 0, which counts as one.
    EXPECT_EQ(changes, 5451);
}

TEST(ToolBarAnimation, ItemsThatDoNotExistAreNotLit) {
    ToolBarAnimation animation;
    EXPECT_FALSE(animation.Move(-1));
    EXPECT_FALSE(animation.Move(5));
    EXPECT_FALSE(animation.IsLit());
}

} // namespace
} // namespace kestrune
