// What the buttons do beside the player: recording, and the rows of the list.
#include "support/fake_recording.h"
#include "transport_fixture.h"

namespace kestrune {
namespace {

using testing::IsEmpty;

class PlayButtonsTest : public TransportFixture {
protected:
    FakeRecording recording;
    PlayButtons buttons{{state, rows, options, clock, transport, recording}};
};

TEST_F(PlayButtonsTest, RecordStartsARecording) {
    buttons.ImagePlayButton_Click(ButtonRecord);
    EXPECT_EQ(recording.starts, 1);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(PlayButtonsTest, StopEndsTheRecordingAndLeavesThePlayerAlone) {
    recording.isOn = true;
    buttons.ImagePlayButton_Click(ButtonStop);
    EXPECT_EQ(recording.stops, 1);
    EXPECT_THAT(log, IsEmpty());
    buttons.ImagePlayButton_Click(ButtonStop);
    EXPECT_EQ(recording.stops, 1);
    EXPECT_THAT(log, testing::Contains(QStringLiteral("StopOutput")));
}

TEST_F(PlayButtonsTest, TheStopOfARecordingForgetsAPauseFirst) {
    AddTracks(2);
    file.files[PathOf(QStringLiteral("b.wav"))].formatId = -1;
    Play(1);
    buttons.Pause();
    buttons.Next();
    ASSERT_FALSE(transport.State().IsPlaying);
    ASSERT_TRUE(transport.State().IsPaused);
    recording.isOn = true;
    buttons.Stop();
    EXPECT_FALSE(transport.State().IsPaused);
    state.CurIndex = 1;
    buttons.Play();
    EXPECT_TRUE(transport.State().IsPlaying);
}

TEST_F(PlayButtonsTest, NoOtherButtonTouchesTheRecording) {
    AddTracks(2);
    recording.isOn = true;
    for (const int button : {ButtonPrevious, ButtonPause, ButtonPlay, ButtonNext}) {
        buttons.ImagePlayButton_Click(button);
    }
    EXPECT_TRUE(recording.isOn);
    EXPECT_EQ(recording.starts + recording.stops, 0);
}

TEST_F(PlayButtonsTest, ANumberOfNoButtonDoesNothing) {
    AddTracks(2);
    buttons.ImagePlayButton_Click(-1);
    buttons.ImagePlayButton_Click(transportButtonCount);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(recording.starts + recording.stops, 0);
}

TEST_F(PlayButtonsTest, StartPlaysTheCurrentRowDuringAPauseOfAnother) {
    AddTracks(2);
    Play(1);
    buttons.Pause();
    state.CurIndex = 2;
    buttons.Start();
    EXPECT_EQ(Playing(), "b.wav");
    EXPECT_EQ(lamp, 1);
}

TEST_F(PlayButtonsTest, AClickMakesTheRowCurrentAndPlaysNothing) {
    AddTracks(2);
    buttons.ListViewPlaylist_Click(2);
    EXPECT_EQ(state.CurIndex, 2);
    EXPECT_EQ(state.ClickedIndex, 2);
    EXPECT_FALSE(transport.State().IsPlaying);
    buttons.ListViewPlaylist_Click(0);
    EXPECT_EQ(state.CurIndex, 2) << "below the rows";
}

TEST_F(PlayButtonsTest, ADoubleClickPlaysItsRow) {
    AddTracks(2);
    buttons.ListViewPlaylist_DblClick(2);
    EXPECT_EQ(state.ClickedIndex, 2);
    EXPECT_EQ(Playing(), "b.wav");
}

class TransportStateTest : public TransportFixture {};

TEST_F(TransportStateTest, TellsWhatPlaysAndWhatWasHeard) {
    AddTracks(3);
    EXPECT_EQ(transport.State().lamp, Lamp::Stopped);
    EXPECT_EQ(transport.HeardBytes(), 0);
    EXPECT_EQ(transport.PlayingRow(), 0);
    Play(2);
    player.playedBytes = 600;
    EXPECT_EQ(transport.State().lamp, Lamp::Playing);
    EXPECT_EQ(transport.State().PlayFile, PathOf(QStringLiteral("b.wav")));
    EXPECT_EQ(transport.HeardBytes(), 600);
    EXPECT_EQ(transport.PlayingRow(), 2);
    buttons.Pause();
    EXPECT_EQ(transport.State().lamp, Lamp::Paused);
    EXPECT_EQ(transport.HeardBytes(), 600) << "what was heard does not count twice";
    rows.Remove(1);
    EXPECT_EQ(transport.PlayingRow(), 1);
    rows.Remove(1);
    EXPECT_EQ(transport.PlayingRow(), 0) << "its row has gone";
    buttons.Stop();
    EXPECT_EQ(transport.HeardBytes(), 0);
}

// Another file is started during the pause: the pause is noted on, and the lamp tells that it plays.
TEST_F(TransportStateTest, TheLampTellsMoreThanTheNotedPause) {
    AddTracks(2);
    Play(1);
    player.playedBytes = 400;
    buttons.Pause();
    buttons.Next();
    EXPECT_TRUE(transport.State().IsPaused);
    EXPECT_EQ(transport.State().lamp, Lamp::Playing);
    player.playedBytes = 200;
    EXPECT_EQ(transport.HeardBytes(), 200);
    transport.ForgetPause();
    buttons.Pause();
    EXPECT_EQ(transport.State().lamp, Lamp::Paused);
}

class ListLoadedTest : public TransportFixture {};

TEST_F(ListLoadedTest, PlayIsOnWithRowsWhileNothingPlays) {
    transport.ListLoaded();
    EXPECT_FALSE(transport.IsButtonEnabled(ButtonPlay)) << "no rows";
    AddTracks(1);
    transport.ListLoaded();
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonPlay));
    Play(1);
    transport.ListLoaded();
    EXPECT_FALSE(transport.IsButtonEnabled(ButtonPlay)) << "it plays";
}

TEST_F(ListLoadedTest, PlayStaysOnDuringAPauseWhateverTheListHolds) {
    AddTracks(2);
    Play(1);
    buttons.Pause();
    transport.ListLoaded();
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonPlay));
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonNext));
    rows.Clear();
    transport.ListLoaded();
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonPlay)) << "the file can go on without its row";
    EXPECT_FALSE(transport.IsButtonEnabled(ButtonNext));
}

} // namespace
} // namespace kestrune
