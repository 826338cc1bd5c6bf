#include "convert/input_types.h"
#include "support/rule_support.h"

#include <gtest/gtest.h>

namespace kestrune::convert {
namespace {

using rules::Utf8;

struct Expected {
    const char* caption;
    const char* extension;
    bool ticked;
};

TEST(InputTypes, AreElevenWithTheirStartingTicks) {
    const std::vector<Expected> expected = {
        {"WMA", ".WMA", true}, {"WAV", ".WAV", true}, {"AVI", ".AVI", false},  {"OGG", ".OGG", true},
        {"MP3", ".MP3", true}, {"MP2", ".MP2", true}, {"MP1", ".MP1", true},   {"MPEG", ".MPEG", true},
        {"MPC", ".MPC", true}, {"MP+", ".MP+", true}, {"G.721", ".g721", true}};
    const InputTypes types;
    ASSERT_EQ(inputTypeCount, static_cast<int>(expected.size()));
    for (int i = 0; i < inputTypeCount; ++i) {
        const Expected& type = expected[static_cast<size_t>(i)];
        EXPECT_EQ(Utf8(InputTypes::Caption(i)), type.caption);
        EXPECT_EQ(Utf8(InputTypes::Extension(i)), type.extension);
        EXPECT_EQ(types.IsTicked(i), type.ticked) << type.caption;
    }
}

TEST(InputTypes, MatchIgnoresCase) {
    EXPECT_TRUE(InputTypes::Matches(4, QStringLiteral("a.MP3")));
    EXPECT_TRUE(InputTypes::Matches(4, QStringLiteral("a.mp3")));
    EXPECT_TRUE(InputTypes::Matches(10, QStringLiteral("a.G721")));
    EXPECT_FALSE(InputTypes::Matches(10, QStringLiteral("a.G.721")));
}

TEST(InputTypes, MatchLooksAtTheRightEndAlone) {
    const InputTypes types;
    EXPECT_FALSE(InputTypes::Matches(1, QStringLiteral("x.wav.mp3")));
    EXPECT_TRUE(InputTypes::Matches(4, QStringLiteral("x.wav.mp3")));
    EXPECT_EQ(types.RowsFor(QStringLiteral("x.wav.mp3")), 1);
    EXPECT_TRUE(InputTypes::Matches(4, QStringLiteral(".mp3")));
    EXPECT_FALSE(InputTypes::Matches(4, QStringLiteral("mp3")));
    EXPECT_FALSE(InputTypes::Matches(4, QString()));
}

TEST(InputTypes, OnlyTickedEndingsGiveRows) {
    InputTypes types;
    EXPECT_EQ(types.RowsFor(QStringLiteral("film.avi")), 0);
    types.SetTicked(2, true);
    EXPECT_EQ(types.RowsFor(QStringLiteral("film.avi")), 1);
    types.SetTicked(4, false);
    EXPECT_EQ(types.RowsFor(QStringLiteral("song.mp3")), 0);
    EXPECT_EQ(types.RowsFor(QStringLiteral("notes.txt")), 0);
}

TEST(InputTypes, AnIndexOutsideTheTableIsPassedOver) {
    InputTypes types;
    types.SetTicked(-1, true);
    types.SetTicked(11, true);
    EXPECT_FALSE(types.IsTicked(-1));
    EXPECT_FALSE(types.IsTicked(11));
    EXPECT_FALSE(InputTypes::Matches(11, QStringLiteral("a")));
    EXPECT_TRUE(InputTypes::Extension(11).isEmpty());
}

} // namespace
} // namespace kestrune::convert
