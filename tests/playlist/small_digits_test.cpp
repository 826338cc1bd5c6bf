// The cuts of the small digits below the list.
#include "playlist/small_digits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrune {
namespace {

using testing::ElementsAre;

std::vector<int> Lefts(const SmallDigits& digits) {
    std::vector<int> lefts;
    for (const DigitCut& cut : digits.cuts) {
        lefts.push_back(cut.left);
    }
    return lefts;
}

std::vector<int> Widths(const SmallDigits& digits) {
    std::vector<int> widths;
    for (const DigitCut& cut : digits.cuts) {
        widths.push_back(cut.width);
    }
    return widths;
}

TEST(SmallDigits, EveryCharacterHasItsCut) {
    const SmallDigits digits = DispSelTotalTime(QStringLiteral("0123456789:/"), 0);
    EXPECT_THAT(Lefts(digits), ElementsAre(356, 359, 362, 366, 370, 374, 378, 382, 386, 390, 395, 398));
    EXPECT_THAT(Widths(digits), ElementsAre(3, 3, 4, 4, 4, 4, 4, 4, 4, 5, 3, 3));
    EXPECT_EQ(digits.width, 45);
    EXPECT_EQ(smallDigitTop, 10);
    EXPECT_EQ(smallDigitHeight, 7);
    EXPECT_EQ(smallDigitsY, 4);
}

TEST(SmallDigits, TheStripStandsInTheMiddle) {
    const SmallDigits digits = DispSelTotalTime(QStringLiteral("00:30/00:10"), 92);
    EXPECT_THAT(Lefts(digits), ElementsAre(356, 356, 395, 366, 356, 398, 356, 356, 395, 359, 356));
    EXPECT_EQ(digits.width, 34);
    EXPECT_EQ(digits.startX, 29);
}

TEST(SmallDigits, AStripWiderThanThePictureStartsAtItsLeft) {
    EXPECT_EQ(DispSelTotalTime(QStringLiteral("999:59/999:59"), 40).startX, 0);
    EXPECT_EQ(DispSelTotalTime(QStringLiteral("999:59/999:59"), 40).width, 57);
}

TEST(SmallDigits, AnEmptyTextHasNoCuts) {
    const SmallDigits digits = DispSelTotalTime(QString(), 92);
    EXPECT_TRUE(digits.cuts.empty());
    EXPECT_EQ(digits.width, 0);
    EXPECT_EQ(digits.startX, 46);
}

TEST(SmallDigits, OtherCharactersTakeNoPlace) {
    const SmallDigits digits = DispSelTotalTime(QStringLiteral(" 1-x2\u0665"), 20);
    EXPECT_THAT(Lefts(digits), ElementsAre(359, 362));
    EXPECT_EQ(digits.width, 7);
}

} // namespace
} // namespace kestrune
