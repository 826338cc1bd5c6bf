// What each button does in each state.
#include "playback/transport_fixture.h"

namespace kestrune {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::Not;

class ButtonTest : public TransportFixture {};

TEST_F(ButtonTest, PreviousPlaysTheRowBefore) {
    AddTracks(3);
    Play(2);
    buttons.ImagePlayButton_Click(ButtonPrevious);
    EXPECT_EQ(state.CurIndex, 1);
    EXPECT_EQ(Playing(), "a.wav");
}

TEST_F(ButtonTest, PreviousOnRowOnePlaysTheLastRow) {
    AddTracks(3);
    Play(1);
    buttons.ImagePlayButton_Click(ButtonPrevious);
    EXPECT_EQ(Playing(), "c.wav");
}

TEST_F(ButtonTest, NextPlaysTheRowBehind) {
    AddTracks(3);
    Play(1);
    buttons.ImagePlayButton_Click(ButtonNext);
    EXPECT_EQ(state.CurIndex, 2);
    EXPECT_EQ(Playing(), "b.wav");
}

TEST_F(ButtonTest, NextOnTheLastRowPlaysRowOne) {
    AddTracks(3);
    Play(3);
    buttons.ImagePlayButton_Click(ButtonNext);
    EXPECT_EQ(Playing(), "a.wav");
}

TEST_F(ButtonTest, NextGoesByTheRowLastStartedAndNotByTheRowClicked) {
    AddTracks(5);
    Play(2);
    state.CurIndex = 5;
    buttons.ImagePlayButton_Click(ButtonNext);
    EXPECT_EQ(Playing(), "c.wav");
}

TEST_F(ButtonTest, PausePausesAndGoesOn) {
    AddTracks(1);
    Play(1);
    buttons.ImagePlayButton_Click(ButtonPause);
    EXPECT_TRUE(transport.State().IsPaused);
    buttons.ImagePlayButton_Click(ButtonPause);
    EXPECT_FALSE(transport.State().IsPaused);
}

TEST_F(ButtonTest, PlayStartsWhatIsStopped) {
    AddTracks(2);
    state.CurIndex = 2;
    buttons.ImagePlayButton_Click(ButtonPlay);
    EXPECT_EQ(Playing(), "b.wav");
    EXPECT_TRUE(transport.State().IsPlaying);
}

TEST_F(ButtonTest, PlayGoesOnWithWhatIsPaused) {
    AddTracks(2);
    Play(1);
    player.playedBytes = 500;
    transport.PauseContinue();
    state.CurIndex = 2;
    log.clear();
    buttons.ImagePlayButton_Click(ButtonPlay);
    EXPECT_THAT(log, Contains(QStringLiteral("SeekTo 500 3")));
    EXPECT_EQ(Playing(), "a.wav");
    EXPECT_FALSE(transport.State().IsPaused);
}

TEST_F(ButtonTest, PlayDoesNothingWhilePlaying) {
    AddTracks(2);
    Play(1);
    state.CurIndex = 2;
    buttons.ImagePlayButton_Click(ButtonPlay);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(ButtonTest, PlayOnAnEmptyListDoesNothing) {
    buttons.ImagePlayButton_Click(ButtonPlay);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_FALSE(transport.State().IsPlaying);
}

TEST_F(ButtonTest, StopStops) {
    AddTracks(1);
    Play(1);
    buttons.ImagePlayButton_Click(ButtonStop);
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_THAT(log, Contains(QStringLiteral("StopOutput")));
}

TEST_F(ButtonTest, StopClearsThePauseBeforeItStops) {
    AddTracks(1);
    Play(1);
    transport.PauseContinue();
    bool wasPaused = true;
    QObject::connect(&transport, &Transport::DisplayCleared, &transport,
                     [this, &wasPaused] { wasPaused = transport.State().IsPaused; });
    buttons.ImagePlayButton_Click(ButtonStop);
    EXPECT_FALSE(wasPaused);
    EXPECT_FALSE(transport.State().IsPaused);
    EXPECT_EQ(pauseCaption, "Pause");
}

TEST_F(ButtonTest, PlayAfterAStopOfAPausedFileStartsAtItsBeginning) {
    AddTracks(1);
    Play(1);
    player.playedBytes = 500;
    transport.PauseContinue();
    buttons.ImagePlayButton_Click(ButtonStop);
    log.clear();
    buttons.ImagePlayButton_Click(ButtonPlay);
    EXPECT_TRUE(transport.State().IsPlaying);
    EXPECT_EQ(transport.State().PlayPos, 0);
    EXPECT_THAT(log, Contains(QStringLiteral("OpenRead a.wav 0 1")));
}

TEST_F(ButtonTest, NextAndPreviousOnAnEmptyListDoNothing) {
    buttons.ImagePlayButton_Click(ButtonNext);
    buttons.ImagePlayButton_Click(ButtonPrevious);
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(ButtonTest, NumbersOutsideTheSixDoNothing) {
    AddTracks(2);
    Play(1);
    buttons.ImagePlayButton_Click(-1);
    buttons.ImagePlayButton_Click(transportButtonCount);
    EXPECT_THAT(log, IsEmpty());
}

class StateTest : public TransportFixture {
protected:
    void ExpectStopped() {
        EXPECT_FALSE(transport.State().IsPlaying);
        EXPECT_EQ(lamp, 0);
        EXPECT_EQ(pauseCaption, "Pause");
    }
    void ExpectPlaying(const char* name) {
        EXPECT_TRUE(transport.State().IsPlaying);
        EXPECT_EQ(lamp, 1);
        EXPECT_EQ(Playing(), name);
        EXPECT_TRUE(player.isRunning);
        EXPECT_FALSE(transport.IsButtonEnabled(ButtonPlay));
        EXPECT_TRUE(transport.IsButtonEnabled(ButtonStop));
        EXPECT_TRUE(transport.IsButtonEnabled(ButtonPause));
        EXPECT_FALSE(transport.IsButtonEnabled(ButtonRecord));
    }
    void ExpectPaused() {
        EXPECT_TRUE(transport.State().IsPlaying);
        EXPECT_TRUE(transport.State().IsPaused);
        EXPECT_EQ(lamp, 2);
        EXPECT_EQ(pauseCaption, "Continue");
        EXPECT_FALSE(player.isRunning);
        EXPECT_TRUE(transport.IsButtonEnabled(ButtonPlay));
        EXPECT_TRUE(transport.IsButtonEnabled(ButtonStop));
    }
    void Pause(qint64 playedBytes) {
        player.playedBytes = playedBytes;
        buttons.ImagePlayButton_Click(ButtonPause);
        ExpectPaused();
        log.clear();
    }
};

TEST_F(StateTest, StoppedToPlayingByPlay) {
    AddTracks(2);
    state.CurIndex = 2;
    buttons.ImagePlayButton_Click(ButtonPlay);
    ExpectPlaying("b.wav");
}

TEST_F(StateTest, StoppedToPlayingByNext) {
    AddTracks(2);
    state.CurIndex = 1;
    buttons.ImagePlayButton_Click(ButtonNext);
    ExpectPlaying("b.wav");
}

TEST_F(StateTest, StoppedToPlayingByPrevious) {
    AddTracks(2);
    state.CurIndex = 2;
    buttons.ImagePlayButton_Click(ButtonPrevious);
    ExpectPlaying("a.wav");
}

TEST_F(StateTest, StoppedToPlayingByDoubleClick) {
    AddTracks(2);
    buttons.ListViewPlaylist_DblClick(2);
    ExpectPlaying("b.wav");
}

TEST_F(StateTest, StoppedStaysWhereTheFileIsGone) {
    AddRow(QStringLiteral("gone.wav"));
    prompts.answers = {false};
    buttons.ImagePlayButton_Click(ButtonPlay);
    ExpectStopped();
}

TEST_F(StateTest, StoppedStaysWhereTheFileCannotBeDecoded) {
    AddTracks(1);
    file.files[PathOf(QStringLiteral("a.wav"))].formatId = -1;
    buttons.ImagePlayButton_Click(ButtonPlay);
    ExpectStopped();
}

TEST_F(StateTest, StoppedStaysWhereTheOutputFails) {
    AddTracks(1);
    player.deviceCount = 0;
    buttons.ImagePlayButton_Click(ButtonPlay);
    ExpectStopped();
    EXPECT_EQ(log.last(), "CloseFile");
}

TEST_F(StateTest, PlayingToPaused) {
    AddTracks(2);
    Play(1);
    Pause(400);
    EXPECT_EQ(transport.State().PlayPos, 400);
}

TEST_F(StateTest, PausedToPlayingByPause) {
    AddTracks(2);
    Play(1);
    Pause(400);
    buttons.ImagePlayButton_Click(ButtonPause);
    ExpectPlaying("a.wav");
    EXPECT_LT(log.indexOf(QStringLiteral("Prepare")), log.indexOf(QStringLiteral("SeekTo 400 3")));
}

TEST_F(StateTest, PausedToPlayingByPlay) {
    AddTracks(2);
    Play(1);
    Pause(400);
    buttons.ImagePlayButton_Click(ButtonPlay);
    ExpectPlaying("a.wav");
    EXPECT_THAT(log, Contains(QStringLiteral("SeekTo 400 3")));
}

TEST_F(StateTest, PlayingToStopped) {
    AddTracks(2);
    Play(1);
    buttons.ImagePlayButton_Click(ButtonStop);
    ExpectStopped();
}

TEST_F(StateTest, PausedToStopped) {
    AddTracks(2);
    Play(1);
    Pause(400);
    buttons.ImagePlayButton_Click(ButtonStop);
    ExpectStopped();
    EXPECT_FALSE(transport.State().IsPaused);
}

TEST_F(StateTest, PlayingThroughStoppedToPlayingAtTheEndOfAFile) {
    AddTracks(2);
    Play(1);
    emit player.EndPlay();
    EXPECT_LT(log.indexOf(QStringLiteral("Lamp 0")), log.indexOf(QStringLiteral("Lamp 1")));
    EXPECT_THAT(log, Contains(QStringLiteral("Lamp 0")));
    ExpectPlaying("b.wav");
}

TEST_F(StateTest, PlayingThroughStoppedToPlayingByNext) {
    AddTracks(3);
    Play(1);
    buttons.ImagePlayButton_Click(ButtonNext);
    EXPECT_THAT(log, Contains(QStringLiteral("Lamp 0")));
    ExpectPlaying("b.wav");
}

TEST_F(StateTest, PlayingThroughStoppedToPlayingByPrevious) {
    AddTracks(3);
    Play(1);
    buttons.ImagePlayButton_Click(ButtonPrevious);
    EXPECT_THAT(log, Contains(QStringLiteral("Lamp 0")));
    ExpectPlaying("c.wav");
}

TEST_F(StateTest, PlayingThroughStoppedToPlayingByDoubleClickOnAnotherRow) {
    AddTracks(3);
    Play(1);
    buttons.ListViewPlaylist_DblClick(3);
    EXPECT_THAT(log, Contains(QStringLiteral("Lamp 0")));
    ExpectPlaying("c.wav");
}

TEST_F(StateTest, DoubleClickOnTheRowThatPlaysChangesNothing) {
    AddTracks(3);
    Play(2);
    buttons.ListViewPlaylist_DblClick(2);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(StateTest, DoubleClickOnTheRowThatIsPausedChangesNothing) {
    AddTracks(3);
    Play(2);
    Pause(400);
    buttons.ListViewPlaylist_DblClick(2);
    EXPECT_THAT(log, IsEmpty());
    ExpectPaused();
}

class PausedNextTest : public StateTest, public testing::WithParamInterface<TransportButton> {};

// A known oddity that is kept: the new row plays with its pause still noted.
TEST_P(PausedNextTest, PlaysWithThePauseStillNoted) {
    AddTracks(2);
    Play(1);
    Pause(400);
    buttons.ImagePlayButton_Click(GetParam());
    EXPECT_THAT(log, Contains(QStringLiteral("Lamp 0")));
    ExpectPlaying("b.wav");
    EXPECT_TRUE(transport.State().IsPaused);
    EXPECT_EQ(pauseCaption, "Pause");
    EXPECT_EQ(transport.State().PlayPos, 0);
}

TEST_P(PausedNextTest, TheNextPauseClickTakesTheResumingBranch) {
    AddTracks(2);
    Play(1);
    Pause(400);
    buttons.ImagePlayButton_Click(GetParam());
    log.clear();
    player.playedBytes = 900;
    buttons.ImagePlayButton_Click(ButtonPause);
    EXPECT_FALSE(transport.State().IsPaused);
    EXPECT_THAT(log, Contains(QStringLiteral("Prepare")));
    EXPECT_THAT(log, Contains(QStringLiteral("SeekTo 0 3")));
    EXPECT_THAT(log, Not(Contains(QStringLiteral("StopOutput"))));
    ExpectPlaying("b.wav");
}

TEST_P(PausedNextTest, TheClickAfterThatPauses) {
    AddTracks(2);
    Play(1);
    Pause(400);
    buttons.ImagePlayButton_Click(GetParam());
    buttons.ImagePlayButton_Click(ButtonPause);
    player.playedBytes = 900;
    buttons.ImagePlayButton_Click(ButtonPause);
    ExpectPaused();
    EXPECT_EQ(transport.State().PlayPos, 900);
}

INSTANTIATE_TEST_SUITE_P(Buttons, PausedNextTest, testing::Values(ButtonNext, ButtonPrevious));

TEST_F(StateTest, AfterAPausedFileWasLeftForOneThatCannotBeDecodedPlayWaitsForStop) {
    AddTracks(3);
    file.files[PathOf(QStringLiteral("b.wav"))].formatId = -1;
    Play(1);
    Pause(400);
    buttons.ImagePlayButton_Click(ButtonNext);
    ExpectStopped();
    state.CurIndex = 3;
    buttons.ImagePlayButton_Click(ButtonPlay);
    ExpectStopped();
    buttons.ImagePlayButton_Click(ButtonStop);
    buttons.ImagePlayButton_Click(ButtonPlay);
    ExpectPlaying("c.wav");
}

} // namespace
} // namespace kestrune
