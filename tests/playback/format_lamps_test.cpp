#include "playback/format_lamps.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

TEST(FormatLamps, TheRateOfADiscHasItsOwnPiece) {
    EXPECT_EQ(SampleRateLamp(QStringLiteral("PCM, 44,100 Hz, 16 bit, Stereo")).left, 3);
    EXPECT_EQ(SampleRateLamp(QStringLiteral("PCM, 48,000 Hz, 16 bit, Stereo")).left, 28);
    EXPECT_EQ(SampleRateLamp(QString()).left, 28);
}

struct Rate {
    const char* text;
    int left;
    int width;
};

class BitRateLampTest : public testing::TestWithParam<Rate> {};

TEST_P(BitRateLampTest, Cut) {
    const LampCut cut = BitRateLamp(QString::fromLatin1(GetParam().text));
    EXPECT_EQ(cut.left, GetParam().left);
    EXPECT_EQ(cut.width, GetParam().width);
}

INSTANTIATE_TEST_SUITE_P(All, BitRateLampTest,
                         testing::Values(Rate{"MP3, 64 kbps", 55, 9}, Rate{"80 kbps", 69, 9},
                                         Rate{"112 kbps", 83, 12},
                                         Rate{"MP3, 44,100 Hz, 128 kbps, Stereo", 97, 12},
                                         Rate{"192 KBPS", 111, 12}, Rate{"256 Kbps", 126, 12},
                                         Rate{"320 kbps", 142, 16}, Rate{"", 142, 16},
                                         Rate{"128kbps", 142, 16},
                                         // The first piece that fits, though the rate is another one.
                                         Rate{"164 kbps", 55, 9}));

} // namespace
} // namespace kestrune
