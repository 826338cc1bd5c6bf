// What every KSTAudioDisplay1 promises. A test file instantiates it for each kind that it knows, by a type
// with a member `display`.
#pragma once

#include "components/audio_display.h"

#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

namespace kestrune {

template <typename House>
class AudioDisplayContract : public testing::Test {
protected:
    KSTAudioDisplay1& Display() { return house.display; }

    // Sets a value and expects to read it back as `shown`.
    void ExpectTaken(int number, qint32 value, qint32 shown) {
        EXPECT_EQ(Display().SetProperty(number, value), Outcome::Ok) << number << " = " << value;
        EXPECT_EQ(Display().Property(number), shown) << number << " = " << value;
    }
    void ExpectRefused(int number, qint32 value) {
        const qint32 before = Display().Property(number);
        EXPECT_EQ(Display().SetProperty(number, value), Outcome::NotSupported) << number << " = " << value;
        EXPECT_EQ(Display().Property(number), before) << number << " = " << value;
    }

    House house;
};

TYPED_TEST_SUITE_P(AudioDisplayContract);

TYPED_TEST_P(AudioDisplayContract, StartsLoweredInTheAccentWithTheThirdFftSize) {
    EXPECT_EQ(this->Display().Property(DisplayBorderStyle), BorderLowered);
    EXPECT_EQ(this->Display().Property(DisplayKind), LevelBars);
    EXPECT_EQ(this->Display().Property(DisplayBackColor), 0x141414);
    EXPECT_EQ(this->Display().Property(DisplayLevelsColor), (128 << 16) | (128 << 8) | 255);
    EXPECT_EQ(this->Display().Property(DisplayFftSize), 4096);
    EXPECT_EQ(this->Display().Property(DisplayChannels), 2);
}

TYPED_TEST_P(AudioDisplayContract, TakesEveryValueOfEachRange) {
    for (const qint32 style : {3, 2, 1, 0}) {
        this->ExpectTaken(10, style, style);
    }
    for (const qint32 type : {4, 3, 2, 1, 0}) {
        this->ExpectTaken(11, type, type);
    }
    for (int colour = 12; colour <= 17; ++colour) {
        for (const qint32 value : {0, 0xFFFFFF, 0x010203}) {
            this->ExpectTaken(colour, value, value);
        }
    }
    for (const qint32 size : {64, 256, 1024, 4096, 16384}) {
        this->ExpectTaken(18, size, size);
    }
    for (const qint32 level : {0, 1, 99, 100}) {
        this->ExpectTaken(19, level, level);
    }
    for (const qint32 height : {0, 1, 10}) {
        this->ExpectTaken(20, height, height);
    }
    for (const qint32 channels : {1, 2}) {
        this->ExpectTaken(21, channels, channels);
    }
}

TYPED_TEST_P(AudioDisplayContract, RefusesValuesOutsideARange) {
    const std::vector<std::pair<int, std::vector<qint32>>> outside = {
        {10, {-1, 4}},   {11, {-1, 5}},  {18, {0, 63, 65, 128, 512, 2048, 8192, 16383, 32768, -64}},
        {19, {-1, 101}}, {20, {-1, 11}}, {21, {0, 3, -1}}};
    for (const auto& [number, values] : outside) {
        for (const qint32 value : values) {
            this->ExpectRefused(number, value);
        }
        this->ExpectRefused(number, std::numeric_limits<qint32>::min());
        this->ExpectRefused(number, std::numeric_limits<qint32>::max());
    }
    for (int colour = 12; colour <= 17; ++colour) {
        this->ExpectRefused(colour, 0x1000000);
        this->ExpectRefused(colour, static_cast<qint32>(0xFE000000U));
    }
}

TYPED_TEST_P(AudioDisplayContract, AColourMayBeGivenAsOpaque) {
    this->ExpectTaken(16, static_cast<qint32>(0xFF102030U), 0x102030);
}

TYPED_TEST_P(AudioDisplayContract, AnUnknownNumberIsRefusedAndReadsZero) {
    for (const int number : {-1, 0, 9, 22, 38}) {
        EXPECT_EQ(this->Display().SetProperty(number, 1), Outcome::NotSupported) << number;
        EXPECT_EQ(this->Display().Property(number), 0) << number;
    }
}

TYPED_TEST_P(AudioDisplayContract, OnlyAChangeIsTold) {
    std::vector<std::pair<int, qint32>> told;
    QObject::connect(&this->Display(), &KSTAudioDisplay1::PropertyChanged, &this->Display(),
                     [&told](int number, qint32 value) { told.emplace_back(number, value); });
    this->Display().SetProperty(18, 1024);
    this->Display().SetProperty(18, 1024);
    this->Display().SetProperty(18, 1000);
    this->Display().SetProperty(16, static_cast<qint32>(0xFF8080FFU));
    this->Display().SetProperty(11, 3);
    EXPECT_EQ(told, (std::vector<std::pair<int, qint32>>{{18, 1024}, {11, 3}}));
}

TYPED_TEST_P(AudioDisplayContract, BlocksOfAnyLengthAreDrawnInEveryTypeAndSize) {
    for (qint32 type = 0; type < displayTypeCount; ++type) {
        for (const qint32 size : displayFftSizes) {
            this->Display().SetProperty(11, type);
            this->Display().SetProperty(18, size);
            for (const qsizetype length : {1, 2, 3, 63, 129, 40001}) {
                this->Display().DrawBlock(QList<qint16>(length, -32768));
            }
            this->Display().DrawBlock({});
        }
    }
}

REGISTER_TYPED_TEST_SUITE_P(AudioDisplayContract, StartsLoweredInTheAccentWithTheThirdFftSize,
                            TakesEveryValueOfEachRange, RefusesValuesOutsideARange, AColourMayBeGivenAsOpaque,
                            AnUnknownNumberIsRefusedAndReadsZero, OnlyAChangeIsTold,
                            BlocksOfAnyLengthAreDrawnInEveryTypeAndSize);

} // namespace kestrune
