// The volume knob: where the dot goes, what volume comes of it, and where nothing happens.
#include "playback/volume_knob.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

constexpr double half = 28;
constexpr double radius = 18;
constexpr int left = 1;

class KnobTest : public testing::Test {
protected:
    // Pixels from the corner of the knob.
    bool Move(double x, double y, int button = left) {
        return knob.MoveValumeButton(button, x * twipsPerPixel, y * twipsPerPixel);
    }
    // A place on a ray from the centre; 0 degrees is right, 90 up.
    bool MoveTo(double degrees, double distance = 20) {
        const double angle = degrees * M_PI / 180;
        return Move(half + std::cos(angle) * distance, half - std::sin(angle) * distance);
    }
    double DotX() const { return knob.Dot().left - geometry.knobLeft + geometry.dotSize / 2; }
    double DotY() const { return knob.Dot().top - geometry.knobTop + geometry.dotSize / 2; }
    static qint32 VolumeOf(double value) { return static_cast<qint32>(value * 65535 / (3 * half)); }

    KnobGeometry geometry;
    VolumeKnob knob{geometry};
};

TEST_F(KnobTest, UpperLeft) {
    ASSERT_TRUE(Move(half - 6, half - 8)); // 10 pixels from the centre
    EXPECT_DOUBLE_EQ(DotX(), half - 0.6 * radius);
    EXPECT_DOUBLE_EQ(DotY(), half - 0.8 * radius);
    EXPECT_EQ(knob.Volume(), VolumeOf(half - 0.6 * radius));
}

TEST_F(KnobTest, UpperRight) {
    ASSERT_TRUE(Move(half + 6, half - 8));
    EXPECT_DOUBLE_EQ(DotX(), half + 0.6 * radius);
    EXPECT_DOUBLE_EQ(DotY(), half - 0.8 * radius);
    EXPECT_EQ(knob.Volume(), VolumeOf(half + 0.6 * radius));
}

TEST_F(KnobTest, LowerRight) {
    ASSERT_TRUE(Move(half + 6, half + 8));
    EXPECT_DOUBLE_EQ(DotX(), half + 0.6 * radius);
    EXPECT_DOUBLE_EQ(DotY(), half + 0.8 * radius);
    EXPECT_EQ(knob.Volume(), VolumeOf(3 * half - 0.6 * radius));
}

TEST_F(KnobTest, StraightRightBelongsToTheLowerRight) {
    ASSERT_TRUE(Move(half + 10, half));
    EXPECT_EQ(knob.Volume(), VolumeOf(3 * half - radius));
}

TEST_F(KnobTest, LowerLeftIsDead) {
    EXPECT_FALSE(Move(half - 6, half + 8));
    EXPECT_FALSE(Move(half - 10, half));
    EXPECT_EQ(knob.Volume(), 0);
    EXPECT_DOUBLE_EQ(knob.Dot().left, 0);
}

TEST_F(KnobTest, StraightUpIsDead) {
    EXPECT_FALSE(Move(half, half - 10));
}

TEST_F(KnobTest, StraightDownIsDead) {
    EXPECT_FALSE(Move(half, half + 10));
}

TEST_F(KnobTest, TheCentreIsDead) {
    EXPECT_FALSE(Move(half, half));
}

TEST_F(KnobTest, BeyondTheRimIsDead) {
    EXPECT_TRUE(Move(half + 27.9, half));
    EXPECT_FALSE(Move(half + 28.1, half));
}

TEST_F(KnobTest, TheRimItselfCounts) {
    EXPECT_TRUE(Move(half + 28, half));
}

TEST_F(KnobTest, OnlyTheLeftButtonCounts) {
    EXPECT_FALSE(Move(half + 6, half - 8, 2));
    EXPECT_FALSE(Move(half + 6, half - 8, 0));
    EXPECT_FALSE(Move(half + 6, half - 8, 3));
    EXPECT_TRUE(Move(half + 6, half - 8, 1));
}

TEST_F(KnobTest, TheDistanceFromTheCentreDoesNotMatter) {
    ASSERT_TRUE(MoveTo(30, 5));
    const qint32 near = knob.Volume();
    ASSERT_TRUE(MoveTo(30, 27));
    EXPECT_EQ(knob.Volume(), near);
}

TEST_F(KnobTest, AJumpAcrossTheDeadZoneIsIgnored) {
    ASSERT_TRUE(MoveTo(170));
    const qint32 before = knob.Volume();
    EXPECT_FALSE(MoveTo(-80));
    EXPECT_EQ(knob.Volume(), before);
}

TEST_F(KnobTest, AJumpOfTwentyPixelsIsIgnored) {
    ASSERT_TRUE(Move(30, half - 20)); // dot 1.8 pixels right of the centre
    const KnobDot before = knob.Dot();
    const qint32 volumeBefore = knob.Volume();
    EXPECT_FALSE(Move(half - 20, half - 1)); // and 18 left of it
    EXPECT_DOUBLE_EQ(knob.Dot().left, before.left);
    EXPECT_DOUBLE_EQ(knob.Dot().top, before.top);
    EXPECT_EQ(knob.Volume(), volumeBefore);
}

TEST_F(KnobTest, AJumpIsMeasuredByTheDot) {
    const double start = 60;
    ASSERT_TRUE(MoveTo(start));
    const double startX = radius * std::cos(start * M_PI / 180);
    const double justBelow = std::acos((startX - 15.9) / radius) * 180 / M_PI;
    EXPECT_TRUE(MoveTo(justBelow));
    knob = VolumeKnob(geometry);
    ASSERT_TRUE(MoveTo(start));
    const double justAbove = std::acos((startX - 16.1) / radius) * 180 / M_PI;
    EXPECT_FALSE(MoveTo(justAbove));
}

TEST_F(KnobTest, AJumpDownwardsIsIgnoredToo) {
    ASSERT_TRUE(MoveTo(45));
    const qint32 before = knob.Volume();
    EXPECT_FALSE(MoveTo(-15));
    EXPECT_EQ(knob.Volume(), before);
}

TEST_F(KnobTest, TheFirstMoveMayGoAnywhere) {
    EXPECT_TRUE(MoveTo(-80));
}

TEST_F(KnobTest, TheLeftEndIsSilent) {
    ASSERT_TRUE(MoveTo(175)); // value 28 - 18 * cos 5 = 10.07
    EXPECT_EQ(knob.Volume(), 0);
    ASSERT_TRUE(MoveTo(155)); // 11.69
    EXPECT_EQ(knob.Volume(), 0);
    ASSERT_TRUE(MoveTo(150)); // 12.41
    EXPECT_EQ(knob.Volume(), VolumeOf(half - radius * std::cos(M_PI / 6)));
}

TEST_F(KnobTest, JustRightOfStraightDownIsNearlyFull) {
    ASSERT_TRUE(MoveTo(-89.9));
    EXPECT_GT(knob.Volume(), 65500);
    EXPECT_LE(knob.Volume(), 65535);
}

TEST_F(KnobTest, VolumeNeverFallsOnTheWayRound) {
    qint32 before = -1;
    for (int degrees = 179; degrees > -90; --degrees) {
        if (degrees == 90) {
            continue;
        }
        ASSERT_TRUE(MoveTo(degrees)) << degrees;
        EXPECT_GE(knob.Volume(), before) << degrees;
        before = knob.Volume();
    }
}

TEST_F(KnobTest, TheStartPlace) {
    ASSERT_TRUE(knob.MoveValumeButton(left, 640, 330));
    const double dx = 640.0 / 15 - half;
    const double dy = 330.0 / 15 - half;
    EXPECT_EQ(knob.Volume(), VolumeOf(half + dx / std::hypot(dx, dy) * radius));
}

struct MarkCase {
    int mark;
    double dotLeft;
    double dotTop;
    qint32 volume;
};

class MarkTest : public testing::TestWithParam<MarkCase> {};

TEST_P(MarkTest, AClickSetsDotAndVolume) {
    VolumeKnob knob{KnobGeometry{}};
    knob.ChooseMark(GetParam().mark);
    EXPECT_DOUBLE_EQ(knob.Dot().left, GetParam().dotLeft);
    EXPECT_DOUBLE_EQ(knob.Dot().top, GetParam().dotTop);
    EXPECT_EQ(knob.Volume(), GetParam().volume);
}

INSTANTIATE_TEST_SUITE_P(Marks, MarkTest,
                         testing::Values(MarkCase{0, 209, 177, 12800}, MarkCase{1, 232, 177, 30888},
                                         MarkCase{2, 238, 184, 35000}, MarkCase{3, 236, 199, 53800}));

TEST_F(KnobTest, AMarkThatDoesNotExistChangesNothing) {
    knob.ChooseMark(1);
    knob.ChooseMark(4);
    knob.ChooseMark(-1);
    EXPECT_EQ(knob.Volume(), 30888);
}

TEST_F(KnobTest, AMarkIsNoJump) {
    knob.ChooseMark(0);
    knob.ChooseMark(3);
    EXPECT_EQ(knob.Volume(), 53800);
}

TEST_F(KnobTest, AVolumeThatIsSetPutsTheDotWhereAMoveWould) {
    for (qint32 volume = 9400; volume <= 65535; volume += 97) {
        VolumeKnob set(geometry);
        set.SetVolume(volume);
        EXPECT_EQ(set.Volume(), volume);
        const double x = set.Dot().left + geometry.dotSize / 2 - geometry.knobLeft;
        const double y = set.Dot().top + geometry.dotSize / 2 - geometry.knobTop;
        EXPECT_NEAR(std::hypot(x - half, y - half), radius, 1e-6) << volume;
        VolumeKnob moved(geometry);
        // Between the upper and the lower half lies a gap of the scale that no place of the dot stands for.
        const double value = 3 * half * volume / 65535;
        if ((value < half + radius || value > 3 * half - radius) &&
            moved.MoveValumeButton(left, x * twipsPerPixel, y * twipsPerPixel)) {
            EXPECT_NEAR(moved.Volume(), volume, 2) << volume;
        }
    }
}

TEST_F(KnobTest, AVolumeThatIsSetIsBroughtIntoItsRange) {
    knob.SetVolume(-5);
    EXPECT_EQ(knob.Volume(), 0);
    knob.SetVolume(70000);
    EXPECT_EQ(knob.Volume(), 65535);
}

TEST(PlayerVolumeTest, BelowTenThousandAThirdIsSent) {
    EXPECT_EQ(PlayerVolumeFor(0), 0);
    EXPECT_EQ(PlayerVolumeFor(2), 0);
    EXPECT_EQ(PlayerVolumeFor(9999), 3333);
    EXPECT_EQ(PlayerVolumeFor(10000), 10000);
    EXPECT_EQ(PlayerVolumeFor(65535), 65535);
}

struct LitCase {
    qint32 volume;
    std::array<bool, 4> lit;
};

class LitTest : public testing::TestWithParam<LitCase> {};

TEST_P(LitTest, EachMarkByItsOwnTest) {
    EXPECT_EQ(LitMarks(GetParam().volume), GetParam().lit);
}

INSTANTIATE_TEST_SUITE_P(
    Volumes, LitTest,
    testing::Values(LitCase{0, {false, false, false, false}}, LitCase{10000, {false, false, false, false}},
                    LitCase{10001, {true, false, false, false}}, LitCase{16383, {true, false, false, false}},
                    LitCase{16384, {true, true, false, false}}, LitCase{32767, {true, true, false, false}},
                    LitCase{32768, {true, true, true, false}}, LitCase{49151, {true, true, true, false}},
                    LitCase{49152, {true, true, true, true}}, LitCase{65535, {true, true, true, true}}));

} // namespace
} // namespace kestrune
