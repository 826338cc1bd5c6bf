// What every KSTAudioPlayer2 keeps to, whatever plays behind it. A harness H gives:
//
//   H::Player()                 the player, set to 44100 Hz stereo, with one usable device of index 0
//   H::PassUntil(isDone, ms)    lets time pass and events come until isDone or ms are over; returns isDone()
//   H::HoldEvents(ms)           time passes, but the window is busy and takes no events
//   H::Vanish()                 the device goes away for good
//
// PlayerCalls holds for a player that plays nothing, too, and needs Player() alone.
#pragma once

#include "components/audio_player.h"

#include <QStringList>
#include <algorithm>
#include <gtest/gtest.h>
#include <utility>

namespace kestrune {

template <class Harness>
class PlayerCalls : public testing::Test {
protected:
    Harness harness;
    KSTAudioPlayer2& player = harness.Player();
};
TYPED_TEST_SUITE_P(PlayerCalls);

TYPED_TEST_P(PlayerCalls, RefusesBlocksOutsideARun) {
    EXPECT_EQ(this->player.WriteBlock(QByteArray(400, '\1')), Outcome::NotOpen);
    ASSERT_EQ(this->player.Prepare(), Outcome::Ok);
    EXPECT_EQ(this->player.WriteBlock(QByteArray(400, '\1')), Outcome::Ok);
    this->player.StopOutput();
    EXPECT_EQ(this->player.WriteBlock(QByteArray(400, '\1')), Outcome::NotOpen);
}

TYPED_TEST_P(PlayerCalls, NamesItsDevices) {
    ASSERT_GE(this->player.DeviceCount(), 1);
    EXPECT_FALSE(this->player.DeviceName(0).isEmpty());
    EXPECT_TRUE(this->player.DeviceName(-1).isEmpty());
    EXPECT_TRUE(this->player.DeviceName(this->player.DeviceCount()).isEmpty());
    EXPECT_TRUE(this->player.IsDeviceUsable());
}

TYPED_TEST_P(PlayerCalls, FailsInPrepareForADeviceThatIsNotThere) {
    this->player.SetDeviceIndex(97);
    EXPECT_EQ(this->player.DeviceIndex(), 97);
    EXPECT_FALSE(this->player.IsDeviceUsable());
    EXPECT_EQ(this->player.Prepare(), Outcome::DeviceFailed);
    EXPECT_LT(this->player.GetStatus(), 0);
    EXPECT_EQ(this->player.WriteBlock(QByteArray(400, '\1')), Outcome::NotOpen);
    this->player.SetDeviceIndex(0);
    EXPECT_EQ(this->player.Prepare(), Outcome::Ok);
    EXPECT_EQ(this->player.GetStatus(), 0);
}

TYPED_TEST_P(PlayerCalls, ConvertsInWholeFrames) {
    EXPECT_EQ(this->player.BytesForMs(2000), 352800);
    EXPECT_EQ(this->player.BytesForMs(1), 176);
    EXPECT_EQ(this->player.MsForBytes(352800), 2000);
    EXPECT_EQ(this->player.SamplesToMilliseconds(44100), 1000);
    this->player.SetFormat(22050, 1);
    EXPECT_EQ(this->player.BytesForMs(2000), 88200);
    EXPECT_EQ(this->player.SamplesToMilliseconds(44100), 2000);
}

TYPED_TEST_P(PlayerCalls, BearsEveryCallOutsideARun) {
    this->player.StopOutput();
    this->player.ClearBlocks();
    this->player.SetTimerInterval(0);
    EXPECT_EQ(this->player.GetPlayedBytes(), 0);
    EXPECT_TRUE(this->player.GetPlayedBlock(64).isEmpty());
    EXPECT_EQ(this->player.GetStatus(), 0);
}

REGISTER_TYPED_TEST_SUITE_P(PlayerCalls, RefusesBlocksOutsideARun, NamesItsDevices,
                            FailsInPrepareForADeviceThatIsNotThere, ConvertsInWholeFrames,
                            BearsEveryCallOutsideARun);

template <class Harness>
class PlayerRuns : public testing::Test {
protected:
    PlayerRuns() {
        using P = KSTAudioPlayer2;
        QObject::connect(&player, &P::RequestOnLoadArray, [this] { Heard("Request"); });
        QObject::connect(&player, &P::EndArrayPlay, [this] { Heard("Ended"); });
        QObject::connect(&player, &P::EndPlay, [this] { Heard("EndPlay"); });
        QObject::connect(&player, &P::Timer, [this](qint64 bytes) { ticks.append(bytes); });
    }

    void Heard(const char* name) {
        events.append(QString::fromLatin1(name));
        if (blocksToCome > 0 && events.last() != QLatin1String("EndPlay")) {
            --blocksToCome;
            WriteBlock();
        }
    }
    void WriteBlock() {
        EXPECT_EQ(player.WriteBlock(QByteArray(player.BytesForMs(blockMs), '\1')), Outcome::Ok);
    }
    bool SeesEnd(int patienceMs = 5000) {
        return harness.PassUntil([this] { return events.contains(QStringLiteral("EndPlay")); }, patienceMs);
    }
    void Pass(int ms) {
        harness.PassUntil([] { return false; }, ms);
    }

    static constexpr int blockMs = 100;
    Harness harness;
    KSTAudioPlayer2& player = harness.Player();
    int blocksToCome = 0; // that the handler writes when it is asked
    QStringList events;
    QList<qint64> ticks;
};
TYPED_TEST_SUITE_P(PlayerRuns);

TYPED_TEST_P(PlayerRuns, PullsBlocksUntilNoneComes) {
    this->blocksToCome = 4;
    ASSERT_EQ(this->player.Prepare(), Outcome::Ok);
    this->WriteBlock();
    EXPECT_TRUE(this->events.isEmpty()) << "raised from within a call";
    ASSERT_TRUE(this->SeesEnd());
    EXPECT_EQ(this->events, QStringList({"Request", "Ended", "Ended", "Ended", "Ended", "Ended", "EndPlay"}));
    EXPECT_EQ(this->player.GetPlayedBytes(), 5 * this->player.BytesForMs(this->blockMs));
    EXPECT_EQ(this->player.GetStatus(), 0);
    EXPECT_EQ(this->player.WriteBlock(QByteArray(400, '\1')), Outcome::NotOpen);
    this->Pass(200);
    EXPECT_EQ(this->events.count("EndPlay"), 1);
}

TYPED_TEST_P(PlayerRuns, WaitsForAWindowThatIsLate) {
    this->blocksToCome = 3;
    ASSERT_EQ(this->player.Prepare(), Outcome::Ok);
    this->WriteBlock();
    this->harness.HoldEvents(600); // far more than a block: the queue runs empty
    EXPECT_TRUE(this->events.isEmpty());
    ASSERT_TRUE(this->SeesEnd());
    EXPECT_EQ(this->blocksToCome, 0);
    EXPECT_EQ(this->player.GetPlayedBytes(), 4 * this->player.BytesForMs(this->blockMs));
}

TYPED_TEST_P(PlayerRuns, EndsARunThatIsGivenNothing) {
    ASSERT_EQ(this->player.Prepare(), Outcome::Ok);
    ASSERT_TRUE(this->SeesEnd());
    EXPECT_EQ(this->events, QStringList({"Request", "EndPlay"}));
    EXPECT_EQ(this->player.GetPlayedBytes(), 0);
}

TYPED_TEST_P(PlayerRuns, TakesLessThanAFrameForNothing) {
    ASSERT_EQ(this->player.Prepare(), Outcome::Ok);
    EXPECT_EQ(this->player.WriteBlock(QByteArray(3, '\1')), Outcome::Ok);
    ASSERT_TRUE(this->SeesEnd());
}

TYPED_TEST_P(PlayerRuns, GoesOnAfterAClear) {
    ASSERT_EQ(this->player.Prepare(), Outcome::Ok);
    for (int i = 0; i < 20; ++i) {
        this->WriteBlock();
    }
    ASSERT_TRUE(this->harness.PassUntil([this] { return this->player.GetPlayedBytes() > 0; }, 3000));
    this->player.ClearBlocks();
    this->events.clear();
    EXPECT_EQ(this->player.GetPlayedBytes(), 0);
    this->WriteBlock();
    this->WriteBlock();
    ASSERT_TRUE(this->SeesEnd());
    EXPECT_EQ(this->events, QStringList({"Ended", "Ended", "EndPlay"}));
    EXPECT_EQ(this->player.GetPlayedBytes(), 2 * this->player.BytesForMs(this->blockMs));
}

TYPED_TEST_P(PlayerRuns, EndsWhenNothingFollowsAClear) {
    ASSERT_EQ(this->player.Prepare(), Outcome::Ok);
    this->WriteBlock();
    this->player.ClearBlocks();
    ASSERT_TRUE(this->SeesEnd());
    EXPECT_EQ(this->events, QStringList({"Request", "EndPlay"}));
}

TYPED_TEST_P(PlayerRuns, IsSilentAfterAStop) {
    ASSERT_EQ(this->player.Prepare(), Outcome::Ok);
    this->WriteBlock();
    this->WriteBlock();
    this->harness.HoldEvents(100); // events are under way now
    this->player.StopOutput();
    const qint64 playedBytes = this->player.GetPlayedBytes();
    const qsizetype ticksSoFar = this->ticks.size();
    this->Pass(300);
    EXPECT_TRUE(this->events.isEmpty());
    EXPECT_EQ(this->ticks.size(), ticksSoFar);
    EXPECT_EQ(this->player.GetPlayedBytes(), playedBytes);
    EXPECT_LE(playedBytes, 2 * this->player.BytesForMs(this->blockMs));
}

TYPED_TEST_P(PlayerRuns, CountsWhatIsHeardWithoutGoingBack) {
    this->blocksToCome = 6;
    this->player.SetTimerInterval(10);
    ASSERT_EQ(this->player.Prepare(), Outcome::Ok);
    this->WriteBlock();
    ASSERT_TRUE(this->SeesEnd());
    ASSERT_GT(this->ticks.size(), 3);
    EXPECT_TRUE(std::is_sorted(this->ticks.cbegin(), this->ticks.cend()));
    EXPECT_LE(this->ticks.last(), 7 * this->player.BytesForMs(this->blockMs));
    EXPECT_EQ(this->player.GetPlayedBlock(100), QList<qint16>(200, 0x0101));
}

TYPED_TEST_P(PlayerRuns, StartsAgainFromWithinEndPlay) {
    int starts = 1;
    QObject::connect(&this->player, &KSTAudioPlayer2::EndPlay, [&] {
        if (starts < 3) {
            ++starts;
            this->player.StopOutput();
            ASSERT_EQ(this->player.Prepare(), Outcome::Ok);
            this->WriteBlock();
        }
    });
    ASSERT_EQ(this->player.Prepare(), Outcome::Ok);
    this->WriteBlock();
    ASSERT_TRUE(this->harness.PassUntil([this] { return this->events.count("EndPlay") == 3; }, 8000));
    EXPECT_EQ(this->events.count("Request"), 3);
}

TYPED_TEST_P(PlayerRuns, RefusesFormatsThatCannotBePlayed) {
    for (const auto& [rateHz, channels] : {std::pair{0, 2}, {44100, 0}, {44100, 3}, {-1, 1}}) {
        this->player.SetFormat(rateHz, channels);
        EXPECT_EQ(this->player.Prepare(), Outcome::NotSupported) << rateHz << ' ' << channels;
        EXPECT_LT(this->player.GetStatus(), 0);
    }
}

TYPED_TEST_P(PlayerRuns, EndsWhenTheDeviceVanishes) {
    this->blocksToCome = 1000;
    ASSERT_EQ(this->player.Prepare(), Outcome::Ok);
    this->WriteBlock();
    ASSERT_TRUE(this->harness.PassUntil([this] { return this->player.GetPlayedBytes() > 0; }, 3000));
    this->harness.Vanish();
    ASSERT_TRUE(this->SeesEnd(1000));
    EXPECT_LT(this->player.GetStatus(), 0);
    EXPECT_EQ(this->player.WriteBlock(QByteArray(400, '\1')), Outcome::NotOpen);
    EXPECT_EQ(this->player.Prepare(), Outcome::DeviceFailed);
}

REGISTER_TYPED_TEST_SUITE_P(PlayerRuns, PullsBlocksUntilNoneComes, WaitsForAWindowThatIsLate,
                            EndsARunThatIsGivenNothing, TakesLessThanAFrameForNothing, GoesOnAfterAClear,
                            EndsWhenNothingFollowsAClear, IsSilentAfterAStop,
                            CountsWhatIsHeardWithoutGoingBack, StartsAgainFromWithinEndPlay,
                            RefusesFormatsThatCannotBePlayed, EndsWhenTheDeviceVanishes);

} // namespace kestrune
