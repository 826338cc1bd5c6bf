// The digit clock, the position line and seeking.
#include "playback/position.h"

#include "playback/transport_fixture.h"

#include <limits>

namespace kestrune {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int thumb = 12;

QList<int> Digits(qint64 ms) {
    const ClockDigits digits = DigitsFor(ms);
    QList<int> all(digits.minutesSeconds.begin(), digits.minutesSeconds.end());
    all.append(digits.ticks[0]);
    all.append(digits.ticks[1]);
    return all;
}

TEST(DigitsTest, Zero) {
    EXPECT_THAT(Digits(0), ElementsAre(0, 0, 0, 0, 0, 0));
}

TEST(DigitsTest, MinutesAndSeconds) {
    EXPECT_THAT(Digits(12 * 60000 + 34000), ElementsAre(1, 2, 3, 4, 0, 0));
}

TEST(DigitsTest, TheSmallPairCountsSixtieths) {
    EXPECT_THAT(Digits(500), ElementsAre(0, 0, 0, 0, 3, 0));
    EXPECT_THAT(Digits(999), ElementsAre(0, 0, 0, 0, 5, 9));
    EXPECT_THAT(Digits(16), ElementsAre(0, 0, 0, 0, 0, 0));
    EXPECT_THAT(Digits(17), ElementsAre(0, 0, 0, 0, 0, 1));
    EXPECT_THAT(Digits(250), ElementsAre(0, 0, 0, 0, 1, 5));
}

TEST(DigitsTest, TurnOfASecondAndOfAMinute) {
    EXPECT_THAT(Digits(1000), ElementsAre(0, 0, 0, 1, 0, 0));
    EXPECT_THAT(Digits(59999), ElementsAre(0, 0, 5, 9, 5, 9));
    EXPECT_THAT(Digits(60000), ElementsAre(0, 1, 0, 0, 0, 0));
}

TEST(DigitsTest, MinutesAboveNinetyNineShowTheirLastTwoDigits) {
    EXPECT_THAT(Digits(100LL * 60000), ElementsAre(0, 0, 0, 0, 0, 0));
    EXPECT_THAT(Digits(123LL * 60000 + 45000), ElementsAre(2, 3, 4, 5, 0, 0));
}

TEST(DigitsTest, EachMillisecondOfAnHourGivesDigits) {
    for (qint64 ms = 0; ms < 3600000; ms += 7) {
        const ClockDigits digits = DigitsFor(ms);
        ASSERT_EQ(digits.minutesSeconds[0] * 10 + digits.minutesSeconds[1], ms / 60000);
        ASSERT_EQ(digits.minutesSeconds[2] * 10 + digits.minutesSeconds[3], ms / 1000 % 60);
        ASSERT_EQ(digits.ticks[0] * 10 + digits.ticks[1], ms % 1000 * 60 / 1000);
    }
}

TEST(LineTest, RunsOverTheBarLessTheThumb) {
    EXPECT_DOUBLE_EQ(LineWidthFor(0, 10000, thumb), 0);
    EXPECT_DOUBLE_EQ(LineWidthFor(5000, 10000, thumb), 93);
    EXPECT_DOUBLE_EQ(LineWidthFor(10000, 10000, thumb), 186);
    EXPECT_DOUBLE_EQ(LineWidthFor(1000, 8000, 22), 22);
}

TEST(LineTest, ATotalOfNothingGivesNothing) {
    EXPECT_DOUBLE_EQ(LineWidthFor(5000, 0, thumb), 0);
}

TEST(SeekTargetTest, IsRounded) {
    EXPECT_EQ(SeekTargetMs(93, 10000, thumb), 5000);
    EXPECT_EQ(SeekTargetMs(186, 10000, thumb), 10000);
    EXPECT_EQ(SeekTargetMs(0, 10000, thumb), 0);
    EXPECT_EQ(SeekTargetMs(1, 10000, thumb), 54);   // 53.76
    EXPECT_EQ(SeekTargetMs(10, 10000, thumb), 538); // 537.63
    EXPECT_EQ(SeekTargetMs(4, 10000, thumb), 215);  // 215.05
}

TEST(SeekTargetTest, ATotalOfNothingGivesTheStart) {
    EXPECT_EQ(SeekTargetMs(93, 0, thumb), 0);
}

TEST(SeekTargetTest, IsTheInverseOfTheLine) {
    for (qint64 ms = 0; ms <= 600000; ms += 997) {
        EXPECT_EQ(SeekTargetMs(LineWidthFor(ms, 600000, thumb), 600000, thumb), ms);
    }
}

class TimerTest : public TransportFixture {};

TEST_F(TimerTest, ShowsThePositionOfTheRun) {
    AddTracks(1);
    Play(1);
    emit player.Timer(3000);
    EXPECT_THAT(log, Contains(QStringLiteral("Time 1500 10000")));
}

TEST_F(TimerTest, AddsWhatWasPlayedBeforeTheRun) {
    AddTracks(1);
    Play(1);
    player.playedBytes = 5000;
    transport.PauseContinue();
    transport.PauseContinue();
    log.clear();
    emit player.Timer(600);
    EXPECT_THAT(log, Contains(QStringLiteral("Time 2800 10000")));
}

TEST_F(TimerTest, ShowsNoPositionWhileTheThumbIsDragged) {
    AddTracks(1);
    Play(1);
    state.SeekDragging = true;
    emit player.Timer(3000);
    EXPECT_FALSE(log.contains(QStringLiteral("Time 1500 10000")));
    state.SeekDragging = false;
    emit player.Timer(3000);
    EXPECT_TRUE(log.contains(QStringLiteral("Time 1500 10000")));
}

TEST_F(TimerTest, TheClockGoesOnToTheEnd) {
    AddTracks(1);
    Play(1);
    emit player.Timer(20000);
    EXPECT_THAT(log, Contains(QStringLiteral("Time 10000 10000")));
}

class SeekingTest : public TransportFixture {};

TEST_F(SeekingTest, ClearsSeeksAndFeedsTwoBlocks) {
    AddTracks(1);
    Play(1);
    state.SeekDragging = true;
    transport.SeekToLine(93, thumb);
    EXPECT_THAT(log, ElementsAre("ClearBlocks", "SeekTo 10000 3", "ReadBlock 4000", "WriteBlock 4000",
                                 "ReadBlock 4000", "WriteBlock 4000", "Time 5000 10000", "Sought 5000"));
    EXPECT_EQ(transport.State().PlayPos, 10000);
    EXPECT_FALSE(state.SeekDragging);
    ASSERT_EQ(player.blocks.size(), 2);
    const QByteArray pcm = file.files.value(transport.State().PlayFile).pcm;
    EXPECT_EQ(player.blocks[0] + player.blocks[1], pcm.mid(10000, 8000));
}

TEST_F(SeekingTest, ThePositionIsWhereTheFileCameTo) {
    AddTrack(QStringLiteral("a.wav"), 10000, 1000, 2);
    Play(1);
    transport.SeekToLine(1, thumb); // 54 ms: 216 bytes, a whole frame
    EXPECT_EQ(transport.State().PlayPos, 216);
}

TEST_F(SeekingTest, TheClockGoesOnFromThere) {
    AddTracks(1);
    Play(1);
    player.playedBytes = 3000;
    transport.SeekToLine(93, thumb);
    EXPECT_EQ(player.playedBytes, 0);
    emit player.Timer(400);
    EXPECT_THAT(log, Contains(QStringLiteral("Time 5200 10000")));
}

TEST_F(SeekingTest, ToTheEndFeedsNothing) {
    AddTracks(1);
    Play(1);
    transport.SeekToLine(186, thumb);
    EXPECT_EQ(transport.State().PlayPos, 20000);
    EXPECT_THAT(player.blocks, IsEmpty());
    EXPECT_TRUE(transport.State().IsPlaying);
}

TEST_F(SeekingTest, WhilePausedTheResumeUsesThePlace) {
    AddTracks(1);
    Play(1);
    player.playedBytes = 600;
    transport.PauseContinue();
    transport.SeekToLine(93, thumb);
    EXPECT_EQ(transport.State().PlayPos, 10000);
    EXPECT_TRUE(transport.State().IsPaused);
    EXPECT_THAT(player.blocks, IsEmpty()) << "nothing may sound during a pause";
    log.clear();
    transport.PauseContinue();
    EXPECT_THAT(log, Contains(QStringLiteral("SeekTo 10000 3")));
    ASSERT_EQ(player.blocks.size(), 1);
    EXPECT_EQ(player.blocks.first(), file.files.value(transport.State().PlayFile).pcm.mid(10000, 4000));
}

TEST_F(SeekingTest, TwiceWhilePausedUsesTheSecondPlace) {
    AddTracks(1);
    Play(1);
    transport.PauseContinue();
    transport.SeekToLine(93, thumb);
    transport.SeekToLine(0, thumb);
    log.clear();
    transport.PauseContinue();
    EXPECT_THAT(log, Contains(QStringLiteral("SeekTo 0 3")));
}

TEST_F(SeekingTest, APauseAfterASeekCountsFromThere) {
    AddTracks(1);
    Play(1);
    transport.SeekToLine(93, thumb);
    player.playedBytes = 222;
    transport.PauseContinue();
    EXPECT_EQ(transport.State().PlayPos, 10222);
}

TEST_F(SeekingTest, WhileStoppedOnlyTheDragEnds) {
    AddTracks(1);
    state.SeekDragging = true;
    transport.SeekToLine(93, thumb);
    EXPECT_FALSE(state.SeekDragging);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SeekingTest, ToAMillisecondIsExact) {
    AddTracks(1);
    Play(1);
    transport.SeekToMs(1234);
    EXPECT_THAT(log, ElementsAre("ClearBlocks", "SeekTo 2468 3", "ReadBlock 4000", "WriteBlock 4000",
                                 "ReadBlock 4000", "WriteBlock 4000", "Time 1234 10000", "Sought 1234"));
    EXPECT_EQ(transport.State().PlayPos, 2468);
}

TEST_F(SeekingTest, ToAMillisecondStaysInTheFile) {
    AddTracks(1);
    Play(1);
    transport.SeekToMs(std::numeric_limits<qint64>::max());
    EXPECT_EQ(transport.State().PlayPos, 20000);
    transport.SeekToMs(-5);
    EXPECT_EQ(transport.State().PlayPos, 0);
    EXPECT_EQ(log.last(), "Sought 0");
}

TEST_F(SeekingTest, TheClockFollowsDuringAPause) {
    AddTracks(1);
    Play(1);
    player.playedBytes = 600;
    transport.PauseContinue();
    transport.SeekToMs(7000);
    EXPECT_THAT(log, Contains(QStringLiteral("Time 7000 10000")));
    EXPECT_THAT(player.blocks, IsEmpty());
    EXPECT_TRUE(transport.State().IsPaused);
}

TEST_F(SeekingTest, ByAnotherHandLeavesADragAlone) {
    AddTracks(1);
    Play(1);
    state.SeekDragging = true;
    transport.SeekToMs(7000);
    EXPECT_TRUE(state.SeekDragging);
    EXPECT_FALSE(log.contains(QStringLiteral("Time 7000 10000")));
    EXPECT_EQ(log.last(), "Sought 7000");
}

TEST_F(SeekingTest, ToAMillisecondDoesNothingWhileStopped) {
    AddTracks(1);
    transport.SeekToMs(500);
    EXPECT_THAT(log, IsEmpty());
}

} // namespace
} // namespace kestrune
