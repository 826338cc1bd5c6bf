// Starting, feeding, stopping and pausing, with the order of what is done to file, player and window.
#include "playback/transport_fixture.h"

#include <QDir>

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QString goneQuestion =
    QStringLiteral("The selected file no longer exists. Would you like to delete it from your playlist?");

class StartingTest : public TransportFixture {};

TEST_F(StartingTest, EmptyListDoesNothing) {
    transport.PlayCurrentItem();
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_THAT(prompts.questions, IsEmpty());
}

TEST_F(StartingTest, NoCurrentRowStartsRowOne) {
    AddTracks(3);
    transport.PlayCurrentItem();
    EXPECT_TRUE(transport.State().IsPlaying);
    EXPECT_EQ(state.CurIndex, 1);
    EXPECT_EQ(Playing(), "a.wav");
}

TEST_F(StartingTest, NoCurrentRowWithOneSelectedRowStartsRowOne) {
    AddTracks(4);
    Select({4});
    state.LastIndex = 2;
    transport.PlayCurrentItem();
    EXPECT_EQ(Playing(), "a.wav");
    EXPECT_THAT(Selected(), ElementsAre(4));
}

TEST_F(StartingTest, NoCurrentRowWithSeveralSelectedStartsTheSelectedRowBehindTheLast) {
    AddTracks(5);
    Select({1, 3, 5});
    state.LastIndex = 3;
    transport.PlayCurrentItem();
    EXPECT_EQ(state.CurIndex, 5);
    EXPECT_EQ(Playing(), "e.wav");
    EXPECT_THAT(Selected(), ElementsAre(1, 3, 5));
}

TEST_F(StartingTest, NoCurrentRowWithSeveralSelectedAndNoLastRowStartsTheFirstSelected) {
    AddTracks(4);
    Select({2, 4});
    transport.PlayCurrentItem();
    EXPECT_EQ(Playing(), "b.wav");
}

TEST_F(StartingTest, CurrentRowBehindTheListStartsRowOne) {
    AddTracks(2);
    state.CurIndex = 7;
    transport.PlayCurrentItem();
    EXPECT_EQ(state.CurIndex, 1);
    EXPECT_EQ(Playing(), "a.wav");
}

TEST_F(StartingTest, RowWithoutPathStartsRowOne) {
    AddTracks(1);
    rows.Append(PlaylistRow{});
    state.CurIndex = 2;
    transport.PlayCurrentItem();
    EXPECT_EQ(state.CurIndex, 1);
    EXPECT_EQ(Playing(), "a.wav");
}

TEST_F(StartingTest, DoesItsStepsInOrder) {
    AddTracks(2);
    state.CurIndex = 2;
    transport.PlayCurrentItem();
    EXPECT_THAT(Steps(),
                ElementsAre("Row 2", "OpenRead b.wav 0 1", "Name b.wav", "SetFormat 1000 1", "Prepare",
                            "ChangeColor 0", "ReadBlock 4000", "WriteBlock 4000", "Thumb 1", "PositionReset",
                            "Row 2", "PlayPressed", "Lamp 1", "Khz 1 PCM, 1,000 Hz, 16 KBPS, Mono"));
    EXPECT_EQ(state.LastIndex, 2);
    EXPECT_THAT(Bold(), ElementsAre(2));
    EXPECT_FALSE(transport.IsButtonEnabled(ButtonPlay));
}

TEST_F(StartingTest, SetsItsFigures) {
    AddTrack(QStringLiteral("a.wav"), 3000, 44100, 2);
    Play(AddTrack(QStringLiteral("b.wav")));
    transport.SeekToMs(1000);
    ASSERT_GT(transport.State().PlayPos, 0);
    state.CurIndex = 1;
    transport.PlayCurrentItem();
    EXPECT_EQ(transport.State().PlayPos, 0);
    EXPECT_EQ(transport.State().PlayTotal, 3 * 176400);
    EXPECT_EQ(transport.State().PlayBlock, 2 * 176400);
    EXPECT_EQ(transport.State().PlayFile, PathOf(QStringLiteral("a.wav")));
    EXPECT_FALSE(transport.State().IsStopping);
    EXPECT_FALSE(transport.State().IsPaused);
    ASSERT_EQ(player.blocks.size(), 1);
    EXPECT_EQ(player.blocks.first(), file.files.value(transport.State().PlayFile).pcm.left(2 * 176400));
}

TEST_F(StartingTest, UnknownLengthKeepsTheTotalOfTheFileBefore) {
    AddTrack(QStringLiteral("a.wav"), 5000);
    AddTrack(QStringLiteral("empty.wav"), 0);
    Play(1);
    state.CurIndex = 2;
    transport.PlayCurrentItem();
    EXPECT_EQ(transport.State().PlayTotal, 10000);
}

TEST_F(StartingTest, FileThatPlaysAlreadyChangesNothing) {
    AddTracks(2);
    Play(1);
    state.CurIndex = 1;
    transport.PlayCurrentItem();
    EXPECT_THAT(log, IsEmpty());
    EXPECT_TRUE(transport.State().IsPlaying);
}

TEST_F(StartingTest, SameFileInAnotherRowChangesNothing) {
    AddTracks(1);
    AddRow(QStringLiteral("a.wav"));
    Play(1);
    state.CurIndex = 2;
    transport.PlayCurrentItem();
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(state.LastIndex, 1);
    EXPECT_THAT(Bold(), ElementsAre(1));
}

TEST_F(StartingTest, FileStartsAgainAfterAStop) {
    AddTracks(1);
    Play(1);
    transport.StopPlay();
    log.clear();
    transport.PlayCurrentItem();
    EXPECT_TRUE(transport.State().IsPlaying);
    EXPECT_THAT(log, testing::Contains(QStringLiteral("OpenRead a.wav 0 1")));
}

TEST_F(StartingTest, AnotherFileIsStoppedFirst) {
    AddTracks(2);
    Play(1);
    state.CurIndex = 2;
    transport.PlayCurrentItem();
    const auto stopped = log.indexOf(QStringLiteral("StopOutput"));
    const auto closed = log.indexOf(QStringLiteral("CloseFile"));
    const auto opened = log.indexOf(QStringLiteral("OpenRead b.wav 0 1"));
    ASSERT_GE(stopped, 0);
    EXPECT_LT(stopped, closed);
    EXPECT_LT(closed, opened);
    EXPECT_THAT(Bold(), ElementsAre(2));
    EXPECT_EQ(transport.State().PlayFile, PathOf(QStringLiteral("b.wav")));
}

class GoneFileTest : public TransportFixture {
protected:
    GoneFileTest() {
        AddTracks(2);
        AddRow(QStringLiteral("gone.wav"));
    }
    void ExpectQuestion() {
        ASSERT_EQ(prompts.questions.size(), 1);
        EXPECT_EQ(prompts.questions.first().text, goneQuestion);
        EXPECT_EQ(prompts.questions.first().icon, PromptIcon::Information);
        EXPECT_FALSE(transport.State().IsPlaying);
        EXPECT_FALSE(log.contains(QStringLiteral("OpenRead gone.wav 0 1")));
    }
};

TEST_F(GoneFileTest, NoKeepsTheRow) {
    prompts.answers = {false};
    state.CurIndex = 3;
    transport.PlayCurrentItem();
    ExpectQuestion();
    EXPECT_EQ(rows.Count(), 3);
    EXPECT_EQ(state.CurIndex, 3);
    EXPECT_EQ(state.LastIndex, 0);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(GoneFileTest, YesRemovesTheLastRowAndMovesToTheNewLast) {
    prompts.answers = {true};
    state.CurIndex = 3;
    transport.PlayCurrentItem();
    ExpectQuestion();
    EXPECT_EQ(rows.Count(), 2);
    EXPECT_EQ(state.CurIndex, 2);
}

TEST_F(GoneFileTest, YesTellsThatTheRowsChangedOnceTheRowIsGone) {
    prompts.answers = {true};
    state.CurIndex = 3;
    QList<int> counts;
    QObject::connect(&transport, &Transport::RowsChanged, &transport,
                     [&] { counts << rows.Count() << state.CurIndex; });
    transport.PlayCurrentItem();
    EXPECT_THAT(counts, ElementsAre(2, 2));
}

TEST_F(GoneFileTest, YesInTheMiddleKeepsTheCurrentNumber) {
    AddTrack(QStringLiteral("d.wav"));
    state.CurIndex = 3;
    transport.PlayCurrentItem();
    ExpectQuestion();
    EXPECT_EQ(state.CurIndex, 3);
    EXPECT_EQ(rows.Field(3, SubFileName), "d.wav");
}

TEST_F(GoneFileTest, YesOnTheOnlyRowLeavesNoCurrentRow) {
    rows.Remove(1);
    rows.Remove(1);
    state.CurIndex = 1;
    transport.PlayCurrentItem();
    ExpectQuestion();
    EXPECT_EQ(rows.Count(), 0);
    EXPECT_EQ(state.CurIndex, 0);
}

TEST_F(GoneFileTest, WhatPlaysIsStoppedBeforeTheQuestion) {
    Play(1);
    prompts.answers = {false};
    state.CurIndex = 3;
    transport.PlayCurrentItem();
    ExpectQuestion();
    EXPECT_THAT(log, testing::Contains(QStringLiteral("StopOutput")));
    EXPECT_EQ(state.LastIndex, 1);
    EXPECT_EQ(Playing(), "gone.wav");
}

TEST_F(GoneFileTest, FolderIsNoFile) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("gone.wav")));
    prompts.answers = {false};
    state.CurIndex = 3;
    transport.PlayCurrentItem();
    ExpectQuestion();
}

class FailingStartTest : public TransportFixture {};

TEST_F(FailingStartTest, FileThatCannotBeDecodedStopsInSilence) {
    AddTracks(2);
    file.files[PathOf(QStringLiteral("b.wav"))].formatId = -1;
    state.CurIndex = 2;
    transport.PlayCurrentItem();
    EXPECT_THAT(log, ElementsAre("Row 2", "OpenRead b.wav 0 1", "Name b.wav"));
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_EQ(state.LastIndex, 2);
    EXPECT_EQ(lamp, 0);
    EXPECT_THAT(prompts.messages, IsEmpty());
    EXPECT_THAT(prompts.questions, IsEmpty());
}

TEST_F(FailingStartTest, OutputThatCannotBeOpenedClosesTheFileInSilence) {
    AddTracks(1);
    player.prepareResult = Outcome::DeviceFailed;
    state.CurIndex = 1;
    transport.PlayCurrentItem();
    EXPECT_THAT(log, ElementsAre("Row 1", "OpenRead a.wav 0 1", "Name a.wav", "SetFormat 1000 1", "Prepare",
                                 "CloseFile"));
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_THAT(prompts.messages, IsEmpty());
    EXPECT_THAT(prompts.questions, IsEmpty());
}

TEST_F(FailingStartTest, AStartThatFailsLeavesPauseWithoutEffectWhereSomethingPlayedBefore) {
    AddTracks(2);
    file.files[PathOf(QStringLiteral("b.wav"))].formatId = -1;
    Play(1);
    state.CurIndex = 2;
    transport.PlayCurrentItem();
    ASSERT_FALSE(transport.State().IsPlaying);
    log.clear();
    transport.PauseContinue();
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(FailingStartTest, TheNextPlayTriesAgain) {
    AddTracks(1);
    player.prepareResult = Outcome::DeviceFailed;
    transport.PlayCurrentItem();
    player.prepareResult = Outcome::Ok;
    transport.PlayCurrentItem();
    EXPECT_TRUE(transport.State().IsPlaying);
}

class FeedingTest : public TransportFixture {};

TEST_F(FeedingTest, OneBlockIsReadAndHandedOver) {
    AddTracks(1);
    Play(1);
    transport.FeedBlock();
    EXPECT_THAT(log, ElementsAre("ReadBlock 4000", "WriteBlock 4000"));
    ASSERT_EQ(player.blocks.size(), 2);
    EXPECT_EQ(player.blocks[1], file.files.value(transport.State().PlayFile).pcm.mid(4000, 4000));
}

TEST_F(FeedingTest, TheRequestOfThePlayerFeedsOneBlock) {
    AddTracks(1);
    Play(1);
    emit player.RequestOnLoadArray();
    EXPECT_THAT(log, ElementsAre("ReadBlock 4000", "WriteBlock 4000"));
}

TEST_F(FeedingTest, TheEndOfABlockFeedsOneBlock) {
    AddTracks(1);
    Play(1);
    emit player.EndArrayPlay();
    EXPECT_THAT(log, ElementsAre("ReadBlock 4000", "WriteBlock 4000"));
}

TEST_F(FeedingTest, TheLastBlockIsShort) {
    AddTrack(QStringLiteral("a.wav"), 3000);
    Play(1);
    transport.FeedBlock();
    EXPECT_THAT(log, ElementsAre("ReadBlock 4000", "WriteBlock 2000"));
}

TEST_F(FeedingTest, ABlockOfOneSampleIsHandedOver) {
    AddTrack(QStringLiteral("a.wav"), 2001);
    Play(1);
    transport.FeedBlock();
    EXPECT_THAT(log, ElementsAre("ReadBlock 4000", "WriteBlock 2"));
}

TEST_F(FeedingTest, TheEndOfTheFileWritesNothingAndChangesNoState) {
    AddTrack(QStringLiteral("a.wav"), 2000);
    Play(1);
    transport.FeedBlock();
    EXPECT_THAT(log, ElementsAre("ReadBlock 4000"));
    EXPECT_TRUE(transport.State().IsPlaying);
    EXPECT_FALSE(transport.State().IsStopping);
    EXPECT_EQ(transport.State().PlayPos, 0);
}

class StoppingTest : public TransportFixture {};

TEST_F(StoppingTest, DoesItsStepsInOrder) {
    AddTracks(2);
    Play(2);
    transport.StopPlay();
    EXPECT_THAT(Steps(), ElementsAre("StopOutput", "CloseFile", "ChangeColor 1", "Caption Pause",
                                     "DisplayCleared", "PositionReset", "Thumb 0", "ButtonsReturned",
                                     "Lamp 0", "ClockCleared", "Khz 0 "));
    EXPECT_TRUE(transport.State().IsStopping);
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_THAT(Bold(), IsEmpty());
    EXPECT_THAT(Buttons(), ElementsAre(false, false, true, false, true, false));
}

TEST_F(StoppingTest, PlayIsEnabledAfterTheOtherButtonsWereSet) {
    AddTracks(2);
    Play(1);
    transport.StopPlay();
    EXPECT_GT(log.lastIndexOf(QStringLiteral("Button 2 1")), log.lastIndexOf(QStringLiteral("Button 2 0")));
    EXPECT_GT(log.indexOf(QStringLiteral("PositionReset")), log.lastIndexOf(QStringLiteral("Button 2 1")));
}

TEST_F(StoppingTest, APauseClickInTheMiddleOfAStopDoesNothing) {
    AddTracks(1);
    Play(1);
    int clicks = 0;
    QObject::connect(&transport, &Transport::DisplayCleared, &transport, [this, &clicks] {
        ++clicks;
        transport.PauseContinue();
    });
    transport.StopPlay();
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(transport.State().IsPaused);
    EXPECT_EQ(pauseCaption, "Pause");
    EXPECT_EQ(lamp, 0);
}

TEST_F(StoppingTest, AStopOfAPausedFileResetsTheCaption) {
    AddTracks(1);
    Play(1);
    transport.PauseContinue();
    ASSERT_EQ(pauseCaption, "Continue");
    transport.StopPlay();
    EXPECT_EQ(pauseCaption, "Pause");
}

class PausingTest : public TransportFixture {};

// The output stops before the position is read, so that nothing is heard behind that position.
TEST_F(PausingTest, PausingDoesItsStepsInOrder) {
    AddTracks(1);
    Play(1);
    player.playedBytes = 1234;
    transport.PauseContinue();
    EXPECT_THAT(log, ElementsAre("Caption Continue", "StopOutput", "ChangeColor 1", "PausePressed 1",
                                 "Lamp 2", "Button 2 1"));
    EXPECT_EQ(transport.State().PlayPos, 1234);
    EXPECT_TRUE(transport.State().IsPaused);
    EXPECT_TRUE(transport.State().IsPlaying);
}

TEST_F(PausingTest, ResumingDoesItsStepsInOrder) {
    AddTracks(1);
    Play(1);
    player.playedBytes = 1234;
    transport.PauseContinue();
    log.clear();
    transport.PauseContinue();
    EXPECT_THAT(log,
                ElementsAre("Caption Pause", "Prepare", "SeekTo 1234 3", "ChangeColor 0", "ReadBlock 4000",
                            "WriteBlock 4000", "PausePressed 0", "Lamp 1", "Button 2 0"));
    EXPECT_FALSE(transport.State().IsPaused);
    EXPECT_TRUE(transport.State().IsPlaying);
    ASSERT_EQ(player.blocks.size(), 1);
    EXPECT_EQ(player.blocks.first(), file.files.value(transport.State().PlayFile).pcm.mid(1234, 4000));
}

TEST_F(PausingTest, EachPauseAddsWhatItsRunPlayed) {
    AddTracks(1);
    Play(1);
    qint64 expectedBytes = 0;
    for (const qint64 playedBytes : {1000, 20, 6, 4000}) {
        player.playedBytes = playedBytes;
        transport.PauseContinue();
        expectedBytes += playedBytes;
        EXPECT_EQ(transport.State().PlayPos, expectedBytes);
        transport.PauseContinue();
    }
}

// The device was pulled out during the pause.
TEST_F(PausingTest, AResumeWithoutAnOutputEndsStopped) {
    AddTracks(2);
    Play(1);
    player.playedBytes = 1234;
    transport.PauseContinue();
    player.prepareResult = Outcome::DeviceFailed;
    log.clear();
    transport.PauseContinue();
    EXPECT_THAT(Steps().first(2), ElementsAre("Caption Pause", "Prepare"));
    EXPECT_FALSE(Steps().contains(QStringLiteral("Lamp 1")));
    EXPECT_FALSE(Steps().contains(QStringLiteral("ReadBlock 4000")));
    EXPECT_FALSE(transport.State().IsPlaying);
    EXPECT_FALSE(transport.State().IsPaused);
    EXPECT_EQ(lamp, 0);
    EXPECT_EQ(pauseCaption, "Pause");
    EXPECT_THAT(Buttons(), ElementsAre(false, false, true, false, true, false));
    EXPECT_LT(file.GetFormatId(), 0) << "the file is closed";
    EXPECT_THAT(Bold(), IsEmpty());
    EXPECT_THAT(prompts.messages, IsEmpty());
    EXPECT_THAT(prompts.questions, IsEmpty());
}

TEST_F(PausingTest, AfterAResumeWithoutAnOutputPlayStartsOnceOneIsThere) {
    AddTracks(1);
    Play(1);
    transport.PauseContinue();
    player.prepareResult = Outcome::DeviceFailed;
    buttons.ImagePlayButton_Click(ButtonPlay);
    ASSERT_FALSE(transport.State().IsPlaying);
    buttons.ImagePlayButton_Click(ButtonPlay);
    ASSERT_FALSE(transport.State().IsPlaying);
    player.prepareResult = Outcome::Ok;
    buttons.ImagePlayButton_Click(ButtonPlay);
    EXPECT_TRUE(transport.State().IsPlaying);
    EXPECT_EQ(lamp, 1);
}

TEST_F(PausingTest, AfterAStopItDoesNothing) {
    AddTracks(1);
    Play(1);
    transport.StopPlay();
    log.clear();
    transport.PauseContinue();
    EXPECT_THAT(log, IsEmpty());
    EXPECT_FALSE(transport.State().IsPaused);
}

} // namespace
} // namespace kestrune
