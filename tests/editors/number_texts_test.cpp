// Numbers out of what was typed.
#include "editors/number_texts.h"

#include <gtest/gtest.h>
#include <limits>

namespace kestrune {
namespace {

constexpr qint64 smallest = std::numeric_limits<qint16>::min();
constexpr qint64 largest = std::numeric_limits<qint16>::max();

std::optional<qint64> Whole(const char* text) {
    return NumberOfText(QLatin1String(text), smallest, largest);
}

qint32 Prefix(const char* text) {
    return NumberPrefix(QLatin1String(text));
}

TEST(NumberOfTextTest, TheWholeTextHasToBeTheNumber) {
    EXPECT_EQ(Whole("12"), 12);
    EXPECT_EQ(Whole(" 12 "), 12);
    EXPECT_EQ(Whole("-12"), -12);
    EXPECT_EQ(Whole("+3"), 3);
    EXPECT_EQ(Whole("007"), 7);
    EXPECT_EQ(Whole("2e3"), 2000);
    for (const char* text : {"", " ", "x", "12x", "1 2", "3/12", ".", "-", "1e", "nan", "inf", "0x10"}) {
        EXPECT_EQ(Whole(text), std::nullopt) << text;
    }
}

TEST(NumberOfTextTest, HalvesGoToTheEvenNumber) {
    EXPECT_EQ(Whole("0.5"), 0);
    EXPECT_EQ(Whole("1.5"), 2);
    EXPECT_EQ(Whole("2.5"), 2);
    EXPECT_EQ(Whole("-2.5"), -2);
    EXPECT_EQ(Whole("2.51"), 3);
    EXPECT_EQ(Whole(".9"), 1);
}

TEST(NumberOfTextTest, BoundsAreKept) {
    EXPECT_EQ(Whole("32767"), 32767);
    EXPECT_EQ(Whole("32768"), std::nullopt);
    EXPECT_EQ(Whole("-32768"), -32768);
    EXPECT_EQ(Whole("-32769"), std::nullopt);
    EXPECT_EQ(Whole("1e300"), std::nullopt);
    EXPECT_EQ(Whole("1e999"), std::nullopt);
}

TEST(NumberPrefixTest, WhatATextBeginsWith) {
    EXPECT_EQ(Prefix("44100"), 44100);
    EXPECT_EQ(Prefix("  12 frames"), 12);
    EXPECT_EQ(Prefix("-5x"), -5);
    EXPECT_EQ(Prefix("1.5.5"), 2);
    EXPECT_EQ(Prefix("3,000"), 3);
    EXPECT_EQ(Prefix("7e"), 7);
    for (const char* text : {"", "x12", "-", ".", "frames 12"}) {
        EXPECT_EQ(Prefix(text), 0) << text;
    }
}

TEST(NumberPrefixTest, WhatDoesNotFitIsNothing) {
    EXPECT_EQ(Prefix("2147483647"), 2147483647);
    EXPECT_EQ(Prefix("2147483648"), 0);
    EXPECT_EQ(Prefix("-2147483648"), std::numeric_limits<qint32>::min());
    EXPECT_EQ(Prefix("99999999999999999999"), 0);
}

} // namespace
} // namespace kestrune
