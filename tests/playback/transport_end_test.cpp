// What follows the end of a file.
#include "playback/transport_fixture.h"

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QString goneQuestion =
    QStringLiteral("The selected file no longer exists. Would you like to delete it from your playlist?");

class EndOfFileTest : public TransportFixture {};

TEST_F(EndOfFileTest, StopsBeforeTheSelectionMovesToTheNextRow) {
    AddTracks(3);
    Select({1});
    Play(1);
    QObject::connect(&rows, &PlaylistRows::dataChanged, &transport, [this](const QModelIndex& index) {
        log.append(QStringLiteral("Changed %1").arg(index.row() + 1));
    });
    emit player.EndPlay();
    const auto stopped = log.indexOf(QStringLiteral("Khz 0 "));
    const auto selected = log.indexOf(QStringLiteral("Changed 2"));
    const auto opened = log.indexOf(QStringLiteral("OpenRead b.wav 0 1"));
    ASSERT_GE(stopped, 0);
    EXPECT_LT(stopped, selected);
    EXPECT_LT(selected, opened);
    EXPECT_EQ(state.CurIndex, 2);
    EXPECT_TRUE(transport.State().IsPlaying);
    EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(EndOfFileTest, ContinuousWrapsFromTheLastRowToTheFirst) {
    AddTracks(3);
    Play(3);
    emit player.EndPlay();
    EXPECT_EQ(Playing(), "a.wav");
    EXPECT_EQ(lamp, 1);
}

TEST_F(EndOfFileTest, ContinuousGoesOnForEver) {
    AddTracks(3);
    Play(1);
    for (int end = 0; end < 300; ++end) {
        emit player.EndPlay();
        ASSERT_TRUE(transport.State().IsPlaying);
        ASSERT_EQ(state.LastIndex, (end + 1) % 3 + 1);
    }
}

TEST_F(EndOfFileTest, RepeatRestartsTheRow) {
    AddTracks(3);
    CheckMode(PlayMode::Repeat);
    Select({2});
    Play(2);
    emit player.EndPlay();
    EXPECT_EQ(Playing(), "b.wav");
    EXPECT_THAT(log, testing::Contains(QStringLiteral("OpenRead b.wav 0 1")));
    EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(EndOfFileTest, RepeatGoesToTheRowThatWasClickedMeanwhile) {
    AddTracks(3);
    CheckMode(PlayMode::Repeat);
    Play(1);
    state.CurIndex = 3; // as a click leaves it
    emit player.EndPlay();
    EXPECT_EQ(Playing(), "c.wav");
}

TEST_F(EndOfFileTest, RepeatWithSeveralSelectedRowsStaysOnItsRow) {
    AddTracks(4);
    CheckMode(PlayMode::Repeat);
    Select({1, 2, 4});
    Play(2);
    emit player.EndPlay();
    EXPECT_EQ(Playing(), "b.wav");
    EXPECT_THAT(Selected(), ElementsAre(1, 2, 4));
}

class OneRowTest : public TransportFixture, public testing::WithParamInterface<PlayMode> {};

TEST_P(OneRowTest, RepeatsInEveryMode) {
    AddTracks(1);
    CheckMode(GetParam());
    Play(1);
    emit player.EndPlay();
    EXPECT_TRUE(transport.State().IsPlaying);
    EXPECT_THAT(log, testing::Contains(QStringLiteral("OpenRead a.wav 0 1")));
    EXPECT_THAT(Bold(), ElementsAre(1));
}

INSTANTIATE_TEST_SUITE_P(Modes, OneRowTest,
                         testing::Values(PlayMode::Continuous, PlayMode::Shuffle, PlayMode::Repeat));

class EndByGoneFileTest : public TransportFixture, public testing::WithParamInterface<bool> {};

TEST_P(EndByGoneFileTest, AsksAndPlaybackEndsThere) {
    AddTracks(1);
    AddRow(QStringLiteral("gone.wav"));
    AddTrack(QStringLiteral("c.wav"));
    Play(1);
    prompts.answers = {GetParam()};
    emit player.EndPlay();
    ASSERT_EQ(prompts.questions.size(), 1);
    EXPECT_EQ(prompts.questions.first().text, goneQuestion);
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_EQ(lamp, 0);
    EXPECT_EQ(rows.Count(), GetParam() ? 2 : 3);
}

INSTANTIATE_TEST_SUITE_P(Answers, EndByGoneFileTest, testing::Bool());

TEST_F(EndOfFileTest, AFileThatCannotBeDecodedEndsPlayback) {
    AddTracks(3);
    file.files[PathOf(QStringLiteral("b.wav"))].formatId = -1;
    Play(1);
    emit player.EndPlay();
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_EQ(lamp, 0);
    EXPECT_EQ(state.CurIndex, 2);
}

TEST_F(EndOfFileTest, AnOutputThatFailsEndsPlayback) {
    AddTracks(3);
    Play(1);
    player.prepareResult = Outcome::DeviceFailed;
    emit player.EndPlay();
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_EQ(lamp, 0);
}

TEST_F(EndOfFileTest, AnEmptyListEndsPlayback) {
    AddTracks(1);
    Play(1);
    rows.Clear();
    emit player.EndPlay();
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_THAT(prompts.questions, IsEmpty());
}

TEST_F(EndOfFileTest, AFileWithoutSamplesIsOpenedAndWritesNothing) {
    AddTrack(QStringLiteral("empty.wav"), 0);
    state.CurIndex = 1;
    transport.PlayCurrentItem();
    EXPECT_TRUE(transport.State().IsPlaying);
    EXPECT_THAT(player.blocks, IsEmpty());
}

} // namespace
} // namespace kestrune
