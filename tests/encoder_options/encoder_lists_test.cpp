// The tables behind the sliders and lists of the encoder options.
#include "encoder_options/encoder_lists.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

TEST(EncoderListsTest, ABitRateAndItsPositionLeadToEachOther) {
    for (int index = 0; index <= lastBitRateIndex; ++index) {
        EXPECT_EQ(BitRateIndex(BitRateAt(index)), index);
    }
    EXPECT_EQ(BitRateAt(0), 8);
    EXPECT_EQ(BitRateAt(9), 128);
    EXPECT_EQ(BitRateAt(14), 320);
}

TEST(EncoderListsTest, FortyAndEightyAreNotInTheTable) {
    EXPECT_EQ(BitRateIndex(40), std::nullopt);
    EXPECT_EQ(BitRateIndex(80), std::nullopt);
    EXPECT_EQ(BitRateIndex(0), std::nullopt);
    EXPECT_EQ(BitRateIndex(-1), std::nullopt);
}

TEST(EncoderListsTest, PositionsBeyondAnEndAreThatEnd) {
    EXPECT_EQ(BitRateAt(-1), 8);
    EXPECT_EQ(BitRateAt(15), 320);
    EXPECT_EQ(SamplingFrequencyAt(-1), 8000);
    EXPECT_EQ(SamplingFrequencyAt(9), 48000);
}

TEST(EncoderListsTest, AnEntryIsFoundByItsRateAndNotByItsText) {
    for (int index = 0; index <= lastFrequencyIndex; ++index) {
        EXPECT_EQ(SamplingFrequencyIndex(SamplingFrequencyAt(index)), index);
        QString digits = QString::fromLatin1(samplingFrequencies[static_cast<size_t>(index)].text);
        digits.remove(QLatin1String("Hz")).remove(u' ');
        EXPECT_EQ(digits.toInt(), SamplingFrequencyAt(index));
    }
}

TEST(EncoderListsTest, ASearchForNoRateOfTheListStaysAtItsEnd) {
    EXPECT_EQ(SamplingFrequencyIndex(96000), lastFrequencyIndex);
    EXPECT_EQ(SamplingFrequencyIndex(0), lastFrequencyIndex);
}

TEST(EncoderListsTest, AnEntryBeyondAListLeavesTheOneThatIsShown) {
    EXPECT_EQ(IndexInList(2, 3, 1), 2);
    EXPECT_EQ(IndexInList(3, 3, 1), 1);
    EXPECT_EQ(IndexInList(-1, 3, 1), 1);
}

} // namespace
} // namespace kestrune
