#include "backends/speech/truespeech_block.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace kestrune {
namespace {

TEST(TrueSpeechBlock, AnyBytesComeBackFromTheirFields) {
    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round) {
        TrueSpeechBytes bytes;
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<uchar>(random()); });
        EXPECT_EQ(PackTrueSpeech(UnpackTrueSpeech(bytes)), bytes);
    }
}

TEST(TrueSpeechBlock, FieldsComeInTheirOrderFromTheTopOfEachWord) {
    TrueSpeechBlock block;
    for (TrueSpeechSubframe& subframe : block.subframes) {
        subframe.pitch = 0;
    }
    block.reflection[7] = 5;
    EXPECT_EQ(PackTrueSpeech(block)[3], 0xA0);
    block.reflection[7] = 0;
    block.blended = true;
    EXPECT_EQ(PackTrueSpeech(block)[0], 0x01);
    block.blended = false;
    block.subframes[3].pulseGain = 9;
    EXPECT_EQ(PackTrueSpeech(block)[28], 0x09);
}

// All sets of places of one half have numbers of their own, without a gap.
TEST(TrueSpeechBlock, PlacesAreNumberedWithoutGaps) {
    std::set<quint32> firstHalf;
    for (int a = 0; a < 30; ++a) {
        for (int b = a + 1; b < 30; ++b) {
            for (int c = b + 1; c < 30; ++c) {
                const PulsePositions positions = {a, b, c, 30, 31, 32, 33};
                const quint32 places = PulsePlaces(positions);
                EXPECT_EQ(PulsePositionsOf(places), positions);
                firstHalf.insert(places >> 15);
            }
        }
    }
    EXPECT_EQ(firstHalf.size(), 4060U);
    EXPECT_EQ(*firstHalf.rbegin(), 4059U);
    std::set<quint32> secondHalf;
    for (quint32 rank = 0; rank < 27405; ++rank) {
        const PulsePositions positions = PulsePositionsOf(rank);
        EXPECT_GE(positions[3], 30);
        EXPECT_LT(positions[6], 60);
        EXPECT_EQ(PulsePlaces(positions), rank);
    }
    EXPECT_EQ(PulsePlaces({0, 1, 2, 56, 57, 58, 59}), 27404U);
}

TEST(TrueSpeechBlock, NumbersBeyondThePlacesHaveNoPulses) {
    const PulsePositions positions = PulsePositionsOf(0x7FFFFFF);
    EXPECT_EQ(positions, (PulsePositions{-1, -1, -1, -1, -1, -1, -1}));
}

} // namespace
} // namespace kestrune
