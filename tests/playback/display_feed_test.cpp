#include "playback/display_feed.h"

#include "playback/transport_fixture.h"
#include "support/fake_audio_display.h"
#include "support/fake_audio_transform.h"
#include "support/fake_pending_events.h"

#include <memory>

namespace kestrune {

namespace {

class DisplayFeedTest : public TransportFixture {
protected:
    DisplayFeedTest() {
        display.SetProperty(DisplayFftSize, 256);
        player.playedBlock = {1, 3, 5, 7};
    }
    // A file of 10 seconds that plays.
    void Start(int channels) {
        Play(AddTrack(QStringLiteral("a.wav"), 10000, trackRateHz, channels));
        player.channels = channels;
        display.blocks.clear();
    }
    void Tick(qint64 playedBytes) { emit player.Timer(playedBytes); }

    FakeAudioDisplay display;
    FakeAudioTransform transform;
    FakePendingEvents pending;
    std::unique_ptr<DisplayFeed> feed =
        std::make_unique<DisplayFeed>(DisplayFeedParts{transport, file, player, transform, display, pending});
};

} // namespace

TEST_F(DisplayFeedTest, ATickDrawsWhatIsHeardAndYieldsOnce) {
    Start(2);
    Tick(1000);
    EXPECT_EQ(display.blocks, (QList<QList<qint16>>{{1, 3, 5, 7}}));
    EXPECT_EQ(pending.runs, 1);
    EXPECT_TRUE(transform.given.isEmpty());
}

TEST_F(DisplayFeedTest, TheClockGoesBeforeTheDisplay) {
    Start(2);
    pending.onRun = [this] { log.append(QStringLiteral("yield")); };
    log.clear();
    Tick(1000);
    ASSERT_EQ(log.size(), 2);
    EXPECT_TRUE(log[0].startsWith(QStringLiteral("Time")));
    EXPECT_EQ(log[1], QStringLiteral("yield"));
}

TEST_F(DisplayFeedTest, AsksForAsManyFramesAsTheDisplayAnalyses) {
    Start(2);
    player.playedBlock = QList<qint16>(40000, 9);
    Tick(0);
    display.SetProperty(DisplayFftSize, 64);
    Tick(0);
    ASSERT_EQ(display.blocks.size(), 2);
    EXPECT_EQ(display.blocks[0].size(), 512);
    EXPECT_EQ(display.blocks[1].size(), 128);
}

TEST_F(DisplayFeedTest, StereoIsFoldedForADisplayOfOneChannel) {
    Start(2);
    display.SetProperty(DisplayChannels, 1);
    Tick(0);
    EXPECT_EQ(transform.given, (QList<QList<qint16>>{{1, 3, 5, 7}}));
    EXPECT_EQ(display.blocks, (QList<QList<qint16>>{{2, 6}}));
}

TEST_F(DisplayFeedTest, AFileOfOneChannelIsNotFolded) {
    Start(1);
    display.SetProperty(DisplayChannels, 1);
    Tick(0);
    EXPECT_TRUE(transform.given.isEmpty());
    EXPECT_EQ(display.blocks, (QList<QList<qint16>>{{1, 3, 5, 7}}));
}

TEST_F(DisplayFeedTest, AFileOfOneChannelShowsOnBothSidesOfAStereoDisplay) {
    Start(1);
    Tick(0);
    EXPECT_EQ(display.blocks, (QList<QList<qint16>>{{1, 1, 3, 3, 5, 5, 7, 7}}));
}

TEST_F(DisplayFeedTest, StandsStillOverTheEndOfAFile) {
    Start(2);
    const qint64 last = transport.State().PlayTotal - 256;
    Tick(last);
    EXPECT_EQ(display.blocks.size(), 1);
    log.clear();
    Tick(last + 1);
    Tick(transport.State().PlayTotal);
    EXPECT_EQ(display.blocks.size(), 1);
    EXPECT_EQ(pending.runs, 1);
    EXPECT_EQ(log.size(), 2) << "the clock goes on";
}

TEST_F(DisplayFeedTest, WhatWasPlayedBeforeTheRunCountsToo) {
    Start(2);
    player.playedBytes = transport.State().PlayTotal - 256 - 100;
    transport.PauseContinue();
    transport.PauseContinue();
    display.blocks.clear();
    Tick(100);
    EXPECT_EQ(display.blocks.size(), 1);
    Tick(101);
    EXPECT_EQ(display.blocks.size(), 1);
}

TEST_F(DisplayFeedTest, AFileShorterThanOneBlockShowsNothing) {
    Play(AddTrack(QStringLiteral("short.wav"), 50, trackRateHz, 2));
    display.blocks.clear();
    Tick(0);
    EXPECT_TRUE(display.blocks.isEmpty());
}

TEST_F(DisplayFeedTest, TheDisplayMovesWhileTheThumbIsDragged) {
    Start(2);
    state.SeekDragging = true;
    log.clear();
    Tick(0);
    EXPECT_EQ(display.blocks.size(), 1);
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(DisplayFeedTest, StopClearsTheDisplay) {
    Start(2);
    Tick(0);
    transport.StopPlay();
    ASSERT_EQ(display.blocks.size(), 2);
    EXPECT_TRUE(display.blocks.last().isEmpty());
}

TEST_F(DisplayFeedTest, StopMayBePressedWhileATickYields) {
    Start(2);
    pending.onRun = [this] { transport.StopPlay(); };
    Tick(0);
    EXPECT_FALSE(transport.State().IsPlaying);
    ASSERT_FALSE(display.blocks.isEmpty());
    EXPECT_TRUE(display.blocks.last().isEmpty());
}

TEST_F(DisplayFeedTest, TicksDoNotPileUpInsideOneAnother) {
    Start(2);
    pending.onRun = [this] {
        if (pending.runs < 100) {
            Tick(0);
        }
    };
    Tick(0);
    EXPECT_EQ(pending.runs, 1);
    EXPECT_EQ(display.blocks.size(), 2);
    pending.onRun = nullptr;
    Tick(0);
    EXPECT_EQ(pending.runs, 2);
}

TEST_F(DisplayFeedTest, APauseIsToldAndAResumeIsNot) {
    Start(2);
    int paused = 0;
    QObject::connect(feed.get(), &DisplayFeed::Paused, feed.get(), [&paused] { ++paused; });
    transport.PauseContinue();
    EXPECT_EQ(paused, 1);
    transport.PauseContinue();
    EXPECT_EQ(paused, 1);
}

} // namespace kestrune
