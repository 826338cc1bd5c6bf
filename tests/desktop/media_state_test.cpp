// What is told when something changes, and how a volume is told.
#include "desktop/media_state.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace kestrune {
namespace {

TEST(ChangedPropertiesTest, EqualStatesTellNothing) {
    EXPECT_FALSE(ChangedProperties({}, {}));
}

TEST(ChangedPropertiesTest, EachFieldTellsItselfAndNothingElse) {
    const auto changedBy = [](auto change) {
        MediaState after;
        change(after);
        return ChangedProperties({}, after);
    };
    using P = MediaProperty;
    EXPECT_EQ(changedBy([](MediaState& s) { s.status = PlaybackStatus::Paused; }), P::Status);
    EXPECT_EQ(changedBy([](MediaState& s) { s.loop = LoopStatus::Track; }), P::Loop);
    EXPECT_EQ(changedBy([](MediaState& s) { s.shuffle = true; }), P::Shuffle);
    EXPECT_EQ(changedBy([](MediaState& s) { s.volume = 1; }), P::Volume);
    EXPECT_EQ(changedBy([](MediaState& s) { s.canGoNext = true; }), P::CanGoNext);
    EXPECT_EQ(changedBy([](MediaState& s) { s.canGoPrevious = true; }), P::CanGoPrevious);
    EXPECT_EQ(changedBy([](MediaState& s) { s.canPlay = true; }), P::CanPlay);
    EXPECT_EQ(changedBy([](MediaState& s) { s.canPause = true; }), P::CanPause);
    EXPECT_EQ(changedBy([](MediaState& s) { s.canSeek = true; }), P::CanSeek);
    for (const auto& text : {&MediaTrack::id, &MediaTrack::title, &MediaTrack::artist, &MediaTrack::album,
                             &MediaTrack::composer, &MediaTrack::genre}) {
        EXPECT_EQ(changedBy([&](MediaState& s) { s.track.*text = QStringLiteral("x"); }), P::Track);
    }
    EXPECT_EQ(changedBy([](MediaState& s) { s.track.lengthUs = 1; }), P::Track);
    EXPECT_EQ(changedBy([](MediaState& s) { s.track.trackNumber = 1; }), P::Track);
}

TEST(ChangedPropertiesTest, SeveralFieldsAreToldTogether) {
    MediaState after;
    after.volume = 5;
    after.canSeek = true;
    EXPECT_EQ(ChangedProperties({}, after), MediaProperties(MediaProperty::Volume) | MediaProperty::CanSeek);
}

TEST(TrackIdTest, IsAnObjectPathOfTheFile) {
    const QString id = TrackIdOf(QStringLiteral("/music/\u00e4 b.wav"));
    EXPECT_THAT(id.toStdString(), testing::MatchesRegex("(/[A-Za-z0-9_]+)+"));
    EXPECT_EQ(id, TrackIdOf(QStringLiteral("/music/\u00e4 b.wav")));
    EXPECT_NE(id, TrackIdOf(QStringLiteral("/music/a b.wav")));
    EXPECT_FALSE(id.startsWith(QLatin1String("/org/mpris"))) << "kept for the interface itself";
}

TEST(VolumeFractionTest, EndsAndMiddle) {
    EXPECT_EQ(VolumeOfFraction(0.0), 0);
    EXPECT_EQ(VolumeOfFraction(0.5), 32768);
    EXPECT_EQ(VolumeOfFraction(1.0), 65535);
    EXPECT_EQ(FractionOfVolume(0), 0.0);
    EXPECT_EQ(FractionOfVolume(65535), 1.0);
}

TEST(VolumeFractionTest, WhatLiesOutsideIsBroughtInside) {
    EXPECT_EQ(VolumeOfFraction(-0.1), 0);
    EXPECT_EQ(VolumeOfFraction(1.5), 65535);
    EXPECT_EQ(VolumeOfFraction(std::numeric_limits<double>::infinity()), 65535);
    EXPECT_EQ(VolumeOfFraction(std::nan("")), 0);
    EXPECT_EQ(FractionOfVolume(70000), 1.0);
}

TEST(VolumeFractionTest, EachVolumeSurvivesTheWayThereAndBack) {
    for (qint32 volume = 0; volume <= 65535; ++volume) {
        ASSERT_EQ(VolumeOfFraction(FractionOfVolume(volume)), volume);
    }
}

} // namespace
} // namespace kestrune
