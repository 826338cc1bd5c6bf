// Commands of the desktop: what each does in each state of the transport.
#include "desktop/media_control_fixture.h"

#include <limits>

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr qint64 second = 1000000; // in microseconds

class MediaCommandTest : public MediaControlFixture {};

TEST_F(MediaCommandTest, PlayStartsTheCurrentRow) {
    Load(3);
    state.CurIndex = 2;
    control.Play();
    EXPECT_EQ(Playing(), "b.wav");
    EXPECT_EQ(Status(), PlaybackStatus::Playing);
}

TEST_F(MediaCommandTest, PlayWhilePlayingDoesNothing) {
    Load(1);
    Play(1);
    control.Play();
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(MediaCommandTest, PlayGoesOnAfterAPause) {
    Load(1);
    Play(1);
    player.playedBytes = 1000;
    control.Pause();
    EXPECT_EQ(Status(), PlaybackStatus::Paused);
    control.Play();
    EXPECT_EQ(Status(), PlaybackStatus::Playing);
    EXPECT_EQ(transport.State().PlayPos, 1000);
    EXPECT_THAT(log, testing::Contains(QStringLiteral("SeekTo 1000 3")));
}

TEST_F(MediaCommandTest, PlayWithAnEmptyListDoesNothing) {
    control.Play();
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(Status(), PlaybackStatus::Stopped);
}

TEST_F(MediaCommandTest, PauseCountsOnlyWhilePlaying) {
    Load(1);
    control.Pause();
    EXPECT_FALSE(transport.State().IsPaused);
    Play(1);
    control.Pause();
    log.clear();
    control.Pause();
    EXPECT_THAT(log, IsEmpty()) << "a second one must not go on";
    EXPECT_EQ(Status(), PlaybackStatus::Paused);
}

TEST_F(MediaCommandTest, PlayPauseTurnsAround) {
    Load(1);
    control.PlayPause();
    EXPECT_EQ(Status(), PlaybackStatus::Playing);
    control.PlayPause();
    EXPECT_EQ(Status(), PlaybackStatus::Paused);
    control.PlayPause();
    EXPECT_EQ(Status(), PlaybackStatus::Playing);
}

TEST_F(MediaCommandTest, StopEndsPlayingAndPause) {
    Load(1);
    Play(1);
    control.Stop();
    EXPECT_EQ(Status(), PlaybackStatus::Stopped);
    Play(1);
    control.Pause();
    control.Stop();
    EXPECT_EQ(Status(), PlaybackStatus::Stopped);
    EXPECT_FALSE(transport.State().IsPaused);
    log.clear();
    control.Stop();
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(MediaCommandTest, NextAndPreviousGoAlongTheList) {
    Load(3);
    Play(1);
    control.Next();
    EXPECT_EQ(Playing(), "b.wav");
    control.Previous();
    control.Previous();
    EXPECT_EQ(Playing(), "c.wav");
}

TEST_F(MediaCommandTest, NextAndPreviousNeedAnEnabledButton) {
    Load(3);
    control.Next();
    control.Previous();
    EXPECT_FALSE(transport.State().IsPlaying) << "stopped";
    rows.Remove(3);
    rows.Remove(2);
    Play(1);
    control.Next();
    EXPECT_THAT(log, IsEmpty()) << "a list of one row";
}

// The transport keeps the pause in mind when another file is started in it.
TEST_F(MediaCommandTest, AfterNextInAPausePausePauses) {
    Load(2);
    Play(1);
    control.Pause();
    control.Next();
    ASSERT_EQ(Status(), PlaybackStatus::Playing);
    player.playedBytes = 600;
    control.Pause();
    EXPECT_EQ(Status(), PlaybackStatus::Paused);
    EXPECT_EQ(transport.State().PlayPos, 600);
}

TEST_F(MediaCommandTest, AfterAFailedNextInAPausePlayStarts) {
    Load(2);
    file.files[PathOf(QStringLiteral("b.wav"))].formatId = -1;
    Play(1);
    control.Pause();
    control.Next();
    ASSERT_EQ(Status(), PlaybackStatus::Stopped);
    state.CurIndex = 1;
    control.Play();
    EXPECT_EQ(Status(), PlaybackStatus::Playing);
}

TEST_F(MediaCommandTest, NothingIsDoneWhileABoxIsOpen) {
    Load(3);
    const QString loose = MakeLoose(QStringLiteral("loose.wav"));
    Play(1);
    blocked = true;
    QObject::connect(&control, &MediaControl::QuitRequested, &control,
                     [this] { log << QStringLiteral("Quit"); });
    control.Pause();
    control.PlayPause();
    control.Stop();
    control.Next();
    control.Previous();
    control.SeekBy(second);
    control.SetPosition(TrackIdOf(transport.State().PlayFile), second);
    control.Open(loose);
    control.Quit();
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(rows.Count(), 3);
    transport.StopPlay();
    log.clear();
    control.Play();
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(MediaCommandTest, QuitAndRaiseAreHandedOn) {
    QStringList asked;
    QObject::connect(&control, &MediaControl::QuitRequested, &control, [&] { asked << "Quit"; });
    QObject::connect(&control, &MediaControl::RaiseRequested, &control, [&] { asked << "Raise"; });
    control.Raise();
    control.Quit();
    EXPECT_THAT(asked, ElementsAre("Raise", "Quit"));
}

class MediaSeekTest : public MediaControlFixture {};

TEST_F(MediaSeekTest, OnAndBackFromWhatIsHeard) {
    Load(1);
    Play(1);
    player.playedBytes = 4000; // 2 s
    EXPECT_EQ(control.PositionUs(), 2 * second);
    control.SeekBy(3 * second);
    EXPECT_EQ(control.PositionUs(), 5 * second);
    control.SeekBy(-second / 2);
    EXPECT_EQ(control.PositionUs(), 4500000);
    EXPECT_THAT(seeked, ElementsAre(5 * second, 4500000));
}

TEST_F(MediaSeekTest, InFrontOfTheStartLeadsToTheStart) {
    Load(1);
    Play(1);
    player.playedBytes = 4000;
    control.SeekBy(std::numeric_limits<qint64>::min());
    EXPECT_EQ(control.PositionUs(), 0);
}

TEST_F(MediaSeekTest, BehindTheEndIsTheNextTrack) {
    Load(2);
    Play(1);
    control.SeekBy(std::numeric_limits<qint64>::max());
    EXPECT_EQ(Playing(), "b.wav");
    EXPECT_EQ(control.PositionUs(), 0);
}

TEST_F(MediaSeekTest, BehindTheEndOfTheOnlyTrackIsItsEnd) {
    Load(1);
    Play(1);
    control.SeekBy(11 * second);
    EXPECT_EQ(control.PositionUs(), 10 * second);
}

TEST_F(MediaSeekTest, ToTheVeryEndStaysInTheTrack) {
    Load(2);
    Play(1);
    control.SeekBy(10 * second);
    EXPECT_EQ(Playing(), "a.wav");
    EXPECT_EQ(control.PositionUs(), 10 * second);
}

TEST_F(MediaSeekTest, WhilePausedThePlaceIsKept) {
    Load(1);
    Play(1);
    player.playedBytes = 2000;
    control.Pause();
    EXPECT_EQ(control.PositionUs(), second);
    control.SeekBy(2 * second);
    EXPECT_EQ(control.PositionUs(), 3 * second);
    EXPECT_EQ(Status(), PlaybackStatus::Paused);
    EXPECT_THAT(player.blocks, IsEmpty());
}

TEST_F(MediaSeekTest, WhileStoppedNothingHappens) {
    Load(1);
    control.SeekBy(second);
    control.SetPosition(TrackIdOf(PathOf(QStringLiteral("a.wav"))), second);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(control.PositionUs(), 0);
}

TEST_F(MediaSeekTest, SetPositionIsExact) {
    Load(1);
    Play(1);
    control.SetPosition(control.State().track.id, 1234000);
    EXPECT_EQ(control.PositionUs(), 1234000);
    EXPECT_THAT(seeked, ElementsAre(1234000));
}

TEST_F(MediaSeekTest, SetPositionOfAnotherTrackOrOutsideIsPassedOver) {
    Load(2);
    Play(2);
    const QString id = control.State().track.id;
    control.SetPosition(TrackIdOf(PathOf(QStringLiteral("a.wav"))), second);
    control.SetPosition(id, -1);
    control.SetPosition(id, 10 * second + 1);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_THAT(seeked, IsEmpty());
    control.SetPosition(id, 10 * second);
    EXPECT_THAT(seeked, ElementsAre(10 * second));
}

TEST_F(MediaSeekTest, ASeekByThePositionBarIsToldToo) {
    Load(1);
    Play(1);
    transport.SeekToLine(93, 12);
    EXPECT_THAT(seeked, ElementsAre(5 * second));
}

TEST_F(MediaSeekTest, ThePositionDoesNotPassTheEnd) {
    Load(1);
    Play(1);
    player.playedBytes = 20100;
    EXPECT_EQ(control.PositionUs(), 10 * second);
}

class MediaOpenTest : public MediaControlFixture {};

TEST_F(MediaOpenTest, AddsTheFileAndPlaysIt) {
    Load(2);
    Play(1);
    const QString uri = MakeLoose(QStringLiteral("loose one.wav"));
    EXPECT_TRUE(uri.contains(QLatin1String("%20")));
    ASSERT_TRUE(control.CanOpen(uri));
    control.Open(uri);
    EXPECT_EQ(rows.Count(), 3);
    EXPECT_EQ(Playing(), "loose one.wav");
    EXPECT_EQ(state.LastIndex, 3);
    EXPECT_THAT(Bold(), ElementsAre(3));
}

TEST_F(MediaOpenTest, AFileThatPlaysAlreadyGoesOnAndItsNeighbourCanBeReached) {
    Load(1);
    Play(1);
    ASSERT_FALSE(transport.IsButtonEnabled(ButtonNext));
    control.Open(QUrl::fromLocalFile(PathOf(QStringLiteral("a.wav"))).toString());
    EXPECT_EQ(rows.Count(), 2);
    EXPECT_EQ(state.LastIndex, 1);
    EXPECT_TRUE(transport.IsButtonEnabled(ButtonNext));
}

TEST_F(MediaOpenTest, ARowThatIsSortedInIsFound) {
    Load(2);
    rows.SetField(1, RowText, QStringLiteral("5.a.wav"));
    rows.SetField(2, RowText, QStringLiteral("6.b.wav"));
    control.Open(MakeLoose(QStringLiteral("loose.wav")));
    ASSERT_EQ(rows.Field(1, SubFileName), "loose.wav");
    EXPECT_EQ(Playing(), "loose.wav");
    EXPECT_THAT(Bold(), ElementsAre(1));
}

TEST_F(MediaOpenTest, APlaylistIsReadAndItsFirstEntryPlayed) {
    Load(1);
    MakeLoose(QStringLiteral("x.wav"));
    MakeLoose(QStringLiteral("y.wav"));
    QFile list(PathOf(QStringLiteral("two.m3u")));
    ASSERT_TRUE(list.open(QIODevice::WriteOnly));
    list.write("#EXTM3U\n#EXTINF:10,X\nx.wav\n#EXTINF:10,Y\ny.wav\n");
    list.close();
    admission.SetListReader(&files);
    control.Open(QUrl::fromLocalFile(list.fileName()).toString());
    EXPECT_EQ(rows.Count(), 3);
    EXPECT_EQ(Playing(), "x.wav");
}

TEST_F(MediaOpenTest, WhatIsNoSoundFileOfThisMachineIsRefusedWithoutABox) {
    Load(1);
    QFile text(PathOf(QStringLiteral("text.wav")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    const QString real = MakeLoose(QStringLiteral("real.wav"));
    QString onAnotherHost = real;
    onAnotherHost.replace(QLatin1String("file:///"), QLatin1String("file://elsewhere/"));
    QString overTheNet = real;
    overTheNet.replace(QLatin1String("file:"), QLatin1String("http:"));
    for (const QString& uri :
         {QUrl::fromLocalFile(text.fileName()).toString(), QUrl::fromLocalFile(folder.path()).toString(),
          QStringLiteral("file:///nowhere/at/all.wav"), PathOf(QStringLiteral("real.wav")), onAnotherHost,
          overTheNet, QStringLiteral("file:"), QString()}) {
        EXPECT_FALSE(control.CanOpen(uri)) << uri.toStdString();
        control.Open(uri);
    }
    EXPECT_EQ(rows.Count(), 1);
    EXPECT_THAT(prompts.messages, IsEmpty());
    EXPECT_TRUE(control.CanOpen(real));
}

class MediaModeTest : public MediaControlFixture {};

TEST_F(MediaModeTest, TheThreeModesAsLoopAndShuffle) {
    CheckMode(PlayMode::Continuous);
    EXPECT_EQ(control.State().loop, LoopStatus::Playlist);
    EXPECT_FALSE(control.State().shuffle);
    CheckMode(PlayMode::Shuffle);
    EXPECT_EQ(control.State().loop, LoopStatus::Playlist);
    EXPECT_TRUE(control.State().shuffle);
    CheckMode(PlayMode::Repeat);
    EXPECT_EQ(control.State().loop, LoopStatus::Track);
    EXPECT_FALSE(control.State().shuffle);
}

TEST_F(MediaModeTest, LoopOfTheTrackIsRepeat) {
    control.SetLoop(LoopStatus::Track);
    EXPECT_TRUE(options.IsModeChecked(PlayMode::Repeat));
    control.SetLoop(LoopStatus::Playlist);
    EXPECT_TRUE(options.IsModeChecked(PlayMode::Continuous));
}

TEST_F(MediaModeTest, NoLoopAtLeastEndsTheRepeat) {
    control.SetLoop(LoopStatus::Track);
    control.SetLoop(LoopStatus::None);
    EXPECT_TRUE(options.IsModeChecked(PlayMode::Continuous));
}

TEST_F(MediaModeTest, ALoopOfTheListLeavesShuffleOn) {
    control.SetShuffle(true);
    control.SetLoop(LoopStatus::Playlist);
    EXPECT_TRUE(options.IsModeChecked(PlayMode::Shuffle));
}

TEST_F(MediaModeTest, ShuffleOffLeavesRepeatOn) {
    control.SetLoop(LoopStatus::Track);
    control.SetShuffle(false);
    EXPECT_TRUE(options.IsModeChecked(PlayMode::Repeat));
    control.SetShuffle(true);
    EXPECT_TRUE(options.IsModeChecked(PlayMode::Shuffle));
    control.SetShuffle(false);
    EXPECT_TRUE(options.IsModeChecked(PlayMode::Continuous));
}

} // namespace
} // namespace kestrune
