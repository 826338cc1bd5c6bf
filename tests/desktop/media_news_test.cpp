// What the desktop is told, and when.
#include "desktop/media_control_fixture.h"

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using P = MediaProperty;

MediaProperties Set(std::initializer_list<MediaProperty> properties) {
    MediaProperties set;
    for (const MediaProperty property : properties) {
        set |= property;
    }
    return set;
}

class MediaNewsTest : public MediaControlFixture {};

TEST_F(MediaNewsTest, AStartIsToldOnceWithAllThatItChanges) {
    Load(2);
    Play(1);
    EXPECT_THAT(told, IsEmpty()) << "not before the event loop";
    Turn();
    EXPECT_THAT(told, ElementsAre(Set(
                          {P::Status, P::Track, P::CanGoNext, P::CanGoPrevious, P::CanPause, P::CanSeek})));
    EXPECT_EQ(lastTold.status, PlaybackStatus::Playing);
    EXPECT_EQ(lastTold.track.url, QUrl::fromLocalFile(PathOf(QStringLiteral("a.wav"))));
}

TEST_F(MediaNewsTest, NextTellsTheTrackAndNoStop) {
    Load(2);
    Play(1);
    Turn();
    control.Next();
    Turn();
    EXPECT_THAT(told, ElementsAre(Set({P::Track})));
    EXPECT_THAT(seeked, IsEmpty());
}

TEST_F(MediaNewsTest, APauseTellsTheStatusAlone) {
    Load(1);
    Play(1);
    Turn();
    transport.PauseContinue();
    Turn();
    EXPECT_THAT(told, ElementsAre(Set({P::Status})));
    transport.PauseContinue();
    Turn();
    EXPECT_THAT(told, ElementsAre(Set({P::Status})));
}

TEST_F(MediaNewsTest, TheRunningPositionIsNotTold) {
    Load(1);
    Play(1);
    Turn();
    emit player.Timer(2000);
    emit player.Timer(4000);
    Turn();
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(seeked, IsEmpty());
}

TEST_F(MediaNewsTest, ARepeatedTrackIsToldByItsPosition) {
    Load(1);
    CheckMode(PlayMode::Repeat);
    Play(1);
    Turn();
    player.playedBytes = 20000;
    emit player.EndPlay();
    Turn();
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(seeked, ElementsAre(0));
}

TEST_F(MediaNewsTest, AStopAndALaterStartTellNoJump) {
    Load(1);
    Play(1);
    Turn();
    transport.StopPlay();
    Turn();
    EXPECT_THAT(told, ElementsAre(Set({P::Status, P::Track, P::CanPause, P::CanSeek})));
    EXPECT_TRUE(lastTold.canPlay);
    Play(1);
    Turn();
    EXPECT_THAT(seeked, IsEmpty());
}

TEST_F(MediaNewsTest, TheModeIsToldByTheOneThatChanged) {
    Load(1);
    CheckMode(PlayMode::Repeat);
    Turn();
    EXPECT_THAT(told, ElementsAre(Set({P::Loop})));
    CheckMode(PlayMode::Continuous);
    Turn();
    CheckMode(PlayMode::Shuffle);
    Turn();
    EXPECT_THAT(told, ElementsAre(Set({P::Shuffle})));
}

TEST_F(MediaNewsTest, TheVolumeIsToldWhoeverSetIt) {
    control.SetVolume(0.25);
    EXPECT_EQ(knob.Volume(), 16384);
    Turn();
    EXPECT_THAT(told, ElementsAre(Set({P::Volume})));
    knob.SetVolume(1000);
    control.Refresh();
    Turn();
    EXPECT_THAT(told, ElementsAre(Set({P::Volume})));
    EXPECT_EQ(lastTold.volume, 1000);
    control.SetVolume(FractionOfVolume(1000));
    Turn();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(MediaNewsTest, ANeighbourThatComesOrGoesIsTold) {
    Load(1);
    Play(1);
    Turn();
    AddTrack(QStringLiteral("z.wav"));
    transport.SetPreNextButton();
    Turn();
    EXPECT_THAT(told, ElementsAre(Set({P::CanGoNext, P::CanGoPrevious})));
    EXPECT_TRUE(lastTold.canGoNext);
}

class UnwatchedMediaTest : public TransportFixture {};

TEST_F(UnwatchedMediaTest, NothingIsToldBeforeSomebodyWatches) {
    MediaControl& unwatched = house.program.media;
    bool heard = false;
    QObject::connect(&unwatched, &MediaControl::Changed, &unwatched, [&] { heard = true; });
    AddTracks(1);
    Play(1);
    transport.PauseContinue();
    QCoreApplication::sendPostedEvents(&unwatched, 0);
    EXPECT_FALSE(heard);
    EXPECT_EQ(unwatched.State().status, PlaybackStatus::Paused) << "asked, it knows all the same";
}

class MediaTrackTest : public MediaControlFixture {
protected:
    MediaTrack Track() { return control.State().track; }
};

TEST_F(MediaTrackTest, NoTrackWhileStopped) {
    Load(1);
    EXPECT_EQ(Track(), MediaTrack());
}

TEST_F(MediaTrackTest, RowAndFileMakeTheTrack) {
    Load(2);
    Play(2);
    const MediaTrack track = Track();
    EXPECT_EQ(track.id, TrackIdOf(PathOf(QStringLiteral("b.wav"))));
    EXPECT_EQ(track.lengthUs, 10000000);
    EXPECT_EQ(track.title, "b.wav");
    EXPECT_EQ(track.url, QUrl::fromLocalFile(PathOf(QStringLiteral("b.wav"))));
    EXPECT_EQ(track.artist, "");
}

TEST_F(MediaTrackTest, TheTitleFollowsItsRowThroughTheList) {
    Load(3);
    Play(2);
    Turn();
    rows.SetField(2, RowText, QStringLiteral("2.Other name"));
    Turn();
    EXPECT_THAT(told, ElementsAre(Set({P::Track})));
    EXPECT_EQ(lastTold.track.title, "Other name");
    rows.Remove(1);
    EXPECT_EQ(Track().title, "Other name");
    rows.Remove(1);
    EXPECT_EQ(Track().title, "b.wav") << "the file goes on without its row";
}

TEST_F(MediaTrackTest, TagsAreReadOnceForEachStart) {
    Load(2);
    const QString path = PathOf(QStringLiteral("a.wav"));
    audioInfo.files[path].artist = QStringLiteral("Someone");
    TagFields& newer = audioInfo.StoredTag(path, TagKind::Id3v2);
    newer.album = QStringLiteral("Album");
    newer.genreText = QStringLiteral("Chant");
    TagFields& older = audioInfo.StoredTag(path, TagKind::Id3v1);
    older.album = QStringLiteral("Alb");
    older.composer = QStringLiteral("Composer");
    older.track = 7;
    rows.SetField(1, RowText, QStringLiteral("1.Someone - Title - Part"));
    Play(1);
    audioInfo.calls.clear();
    MediaTrack track = Track();
    track = Track();
    EXPECT_EQ(audioInfo.calls.count(QStringLiteral("OpenInfo ") + path), 1);
    EXPECT_EQ(track.artist, "Someone");
    EXPECT_EQ(track.title, "Title - Part");
    EXPECT_EQ(track.album, "Album");
    EXPECT_EQ(track.genre, "Chant");
    EXPECT_EQ(track.composer, "Composer");
    EXPECT_EQ(track.trackNumber, 7);
    control.Next();
    EXPECT_EQ(Track().album, "");
    audioInfo.StoredTag(path, TagKind::Id3v2).album = QStringLiteral("New album");
    control.Previous();
    EXPECT_EQ(Track().album, "New album");
    audioInfo.StoredTag(path, TagKind::Id3v2).album = QStringLiteral("Newest album");
    control.Stop();
    control.Play();
    EXPECT_EQ(Track().album, "Newest album");
}

TEST_F(MediaTrackTest, ATitleOfNothingButTheArtistIsKept) {
    Load(1);
    audioInfo.files[PathOf(QStringLiteral("a.wav"))].artist = QStringLiteral("Someone");
    rows.SetField(1, RowText, QStringLiteral("1.Someone - "));
    Play(1);
    EXPECT_EQ(Track().title, "Someone -");
}

TEST_F(MediaTrackTest, AFileOfUnknownLengthCannotBeSought) {
    AddTrack(QStringLiteral("empty.wav"), 0);
    Play(1);
    EXPECT_EQ(Track().lengthUs, 0);
    EXPECT_FALSE(control.State().canSeek);
    control.SeekBy(1000000);
    EXPECT_THAT(log, IsEmpty());
}

} // namespace
} // namespace kestrune
