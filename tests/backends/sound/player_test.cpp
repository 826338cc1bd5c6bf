// The players without a sound server: the contract, the simulation, the writer thread under stress.
#include "backends/sound/alsa_player.h"
#include "backends/sound/clocked_output.h"
#include "backends/sound/feeder.h"
#include "support/audio_player_contract.h"
#include "support/fake_audio_player.h"
#include "support/simulated_player.h"

#include <gtest/gtest.h>
#include <random>

namespace kestrune {

namespace {

constexpr int rateHz = 44100;

struct FakeHarness {
    KSTAudioPlayer2& Player() { return player; }
    FakeAudioPlayer player;
};

struct SimulatedHarness {
    KSTAudioPlayer2& Player() { return player; }
    template <class Condition>
    bool PassUntil(Condition isDone, int ms) {
        for (int passed = 0; passed < ms && !isDone(); ++passed) {
            player.Advance(1);
        }
        return isDone();
    }
    void HoldEvents(int ms) {
        player.deliversEvents = false;
        player.Advance(ms);
        player.deliversEvents = true;
    }
    void Vanish() { player.Vanish(); }
    SimulatedPlayer player;
};

struct ThreadedHarness {
    KSTAudioPlayer2& Player() { return player; }
    template <class Condition>
    bool PassUntil(Condition isDone, int ms) {
        return ProcessUntil(isDone, ms);
    }
    void HoldEvents(int ms) { QThread::msleep(static_cast<unsigned long>(ms)); }
    void Vanish() { state->hasGone = true; }
    std::shared_ptr<ClockedOutputState> state = std::make_shared<ClockedOutputState>();
    AlsaPlayer player{std::make_unique<ClockedOutputs>(state)};
};

using AllPlayers = testing::Types<FakeHarness, SimulatedHarness, ThreadedHarness>;
using SoundingPlayers = testing::Types<SimulatedHarness, ThreadedHarness>;
INSTANTIATE_TYPED_TEST_SUITE_P(Local, PlayerCalls, AllPlayers);
INSTANTIATE_TYPED_TEST_SUITE_P(Local, PlayerRuns, SoundingPlayers);

QByteArray Bytes(const std::vector<qint16>& samples) {
    return {reinterpret_cast<const char*>(samples.data()), static_cast<qsizetype>(samples.size() * 2)};
}

// --- Simulation ---

TEST(SimulatedPlayer, PlaysEverySampleOnce) {
    SimulatedPlayer player;
    const QByteArray noise = SeededNoise(rateHz * 2 * 5, 1);
    Feeder feeder(player, noise);
    ASSERT_EQ(player.Prepare(), Outcome::Ok);
    feeder.Feed();
    const qint64 passedMs = player.RunUntilIdle();
    EXPECT_EQ(feeder.ends, 1);
    EXPECT_TRUE(player.heard == noise);
    EXPECT_GE(passedMs, 5000);
    EXPECT_LE(passedMs, 5005);
}

TEST(SimulatedPlayer, ResumesAtTheVeryFrame) {
    SimulatedPlayer player;
    const QByteArray noise = SeededNoise(rateHz * 2 * 4, 2);
    Feeder feeder(player, noise);
    std::mt19937 random(3);
    qint64 position = 0;
    for (int i = 0; i < 10; ++i) {
        ASSERT_EQ(player.Prepare(), Outcome::Ok);
        feeder.position = position;
        feeder.Feed();
        player.Advance(1 + random() % 300);
        player.StopOutput();
        position += player.GetPlayedBytes();
    }
    ASSERT_EQ(player.Prepare(), Outcome::Ok);
    feeder.position = position;
    feeder.Feed();
    player.RunUntilIdle();
    EXPECT_TRUE(player.heard == noise);
}

TEST(SimulatedPlayer, PlaysAThousandTracks) {
    SimulatedPlayer player;
    player.keepsHeard = false;
    Feeder feeder(player, SeededNoise(rateHz * 2, 4));
    feeder.onEnd = [&] {
        player.StopOutput();
        if (feeder.ends < 1000) {
            ASSERT_EQ(player.Prepare(), Outcome::Ok);
            feeder.position = 0;
            feeder.Feed();
        }
    };
    ASSERT_EQ(player.Prepare(), Outcome::Ok);
    feeder.Feed();
    const qint64 passedMs = player.RunUntilIdle();
    EXPECT_EQ(feeder.ends, 1000);
    EXPECT_EQ(player.heardFramesTotal, 1000LL * rateHz);
    EXPECT_NEAR(passedMs, 1000 * 1000, 5 * 1000);
}

TEST(SimulatedPlayer, CountsTheSilenceOfALateWindow) {
    SimulatedPlayer player;
    Feeder feeder(player, SeededNoise(rateHz * 2 * 3, 5), 1000);
    ASSERT_EQ(player.Prepare(), Outcome::Ok);
    feeder.Feed();
    player.deliversEvents = false;
    player.Advance(4000);
    EXPECT_NEAR(player.silentMs, 3000, 2);
    player.deliversEvents = true;
    player.RunUntilIdle();
    EXPECT_EQ(feeder.ends, 1);
    EXPECT_EQ(player.heardFramesTotal, 3LL * rateHz);
}

TEST(SimulatedPlayer, FailsAsItIsTold) {
    SimulatedPlayer player;
    player.prepareResult = Outcome::DeviceFailed;
    EXPECT_EQ(player.Prepare(), Outcome::DeviceFailed);
    EXPECT_LT(player.GetStatus(), 0);
    player.prepareResult = Outcome::Ok;
    player.Vanish();
    EXPECT_EQ(player.DeviceCount(), 0);
    EXPECT_EQ(player.Prepare(), Outcome::DeviceFailed);
    player.Return();
    EXPECT_EQ(player.Prepare(), Outcome::Ok);
}

TEST(SimulatedPlayer, TellsLevels) {
    SimulatedPlayer player;
    QByteArray frames(rateHz * 4, '\0');
    auto* samples = reinterpret_cast<qint16*>(frames.data());
    for (int i = 0; i < rateHz; ++i) {
        samples[2 * i] = i % 2 == 0 ? qint16{-32768} : qint16{0};
    }
    QList<std::pair<int, int>> levels;
    QObject::connect(&player, &KSTAudioPlayer2::LevelTimer, [&](qint64, int left, int right) {
        levels.append({left, right});
    });
    ASSERT_EQ(player.Prepare(), Outcome::Ok);
    player.WriteBlock(frames);
    player.Advance(100);
    ASSERT_EQ(levels.size(), 3);
    EXPECT_EQ(levels.last(), std::pair(96, 0));
}

// --- Writer thread ---

TEST(ThreadedPlayer, PlaysEverySampleOnceAndKeepsTheDeviceOpen) {
    ThreadedHarness harness;
    const QByteArray noise = SeededNoise(rateHz * 2 * 2, 6);
    Feeder feeder(harness.player, noise, 300);
    feeder.onEnd = [&] {
        if (feeder.ends == 1) {
            ASSERT_EQ(harness.player.Prepare(), Outcome::Ok);
            feeder.position = 0;
            feeder.Feed();
        }
    };
    ASSERT_EQ(harness.player.Prepare(), Outcome::Ok);
    feeder.Feed();
    ASSERT_TRUE(ProcessUntil([&] { return feeder.ends == 2; }, 8000));
    EXPECT_EQ(harness.state->opened, 1);
    const std::lock_guard lock(harness.state->mutex);
    EXPECT_TRUE(Bytes(harness.state->heard) == noise + noise);
}

void ResumeTenTimes(ThreadedHarness& harness) {
    const QByteArray noise = SeededNoise(rateHz * 2 * 4, 7);
    Feeder feeder(harness.player, noise, 300);
    std::mt19937 random(8);
    qint64 position = 0;
    for (int i = 0; i < 10; ++i) {
        ASSERT_EQ(harness.player.Prepare(), Outcome::Ok);
        feeder.position = position;
        feeder.Feed();
        ProcessFor(static_cast<int>(5 + random() % 60));
        harness.player.StopOutput();
        position += harness.player.GetPlayedBytes();
    }
    ASSERT_EQ(harness.player.Prepare(), Outcome::Ok);
    feeder.position = position;
    feeder.Feed();
    ASSERT_TRUE(ProcessUntil([&] { return feeder.ends == 1; }, 8000));
    const std::lock_guard lock(harness.state->mutex);
    EXPECT_TRUE(Bytes(harness.state->heard) == noise);
}

TEST(ThreadedPlayer, ResumesAtTheVeryFrame) {
    ThreadedHarness harness;
    ResumeTenTimes(harness);
}

TEST(ThreadedPlayer, ResumesAtTheVeryFrameOfASlowCardToo) {
    ThreadedHarness harness;
    harness.state->clockIsAheadFrames = rateHz;
    ResumeTenTimes(harness);
}

TEST(ThreadedPlayer, BearsAnyOrderOfCalls) {
    ThreadedHarness harness;
    AlsaPlayer& player = harness.player;
    Feeder feeder(player, SeededNoise(rateHz * 2 * 10, 9), 50);
    player.SetTimerInterval(1);
    std::mt19937 random(10);
    const std::vector<std::function<void()>> calls = {
        [&] { player.Prepare(); },
        [&] { player.StopOutput(); },
        [&] { player.ClearBlocks(); },
        [&] { feeder.Feed(); },
        [&] { player.SetVolume(static_cast<qint32>(random() % 65536)); },
        [&] { player.EnableEqualizer(random() % 2 == 0); },
        [&] {
            player.SetEqualizer({static_cast<float>(random() % 12), -3.0F});
        },
        [&] { player.SetFormat(random() % 2 == 0 ? rateHz : 22050, 1 + static_cast<int>(random() % 2)); },
        [&] { player.GetPlayedBlock(4096); },
        [&] { EXPECT_LE(player.GetPlayedBytes(), 10 * rateHz * 4); },
        [&] { QCoreApplication::processEvents(); },
        [&] { QThread::usleep(random() % 3000); }};
    for (int i = 0; i < 3000; ++i) {
        feeder.position = random() % 50 == 0 ? 0 : feeder.position;
        calls[random() % calls.size()]();
    }
    player.StopOutput();
    const int ends = feeder.ends;
    ProcessFor(100);
    EXPECT_EQ(feeder.ends, ends);
}

TEST(ThreadedPlayer, ClosesTheDeviceAfterAWhile) {
    ThreadedHarness harness;
    ASSERT_EQ(harness.player.Prepare(), Outcome::Ok);
    harness.player.StopOutput();
    EXPECT_EQ(harness.state->open, 1) << "the next file comes at once";
    EXPECT_TRUE(ProcessUntil([&] { return harness.state->open == 0; }, 10000));
    EXPECT_EQ(harness.player.Prepare(), Outcome::Ok);
    EXPECT_EQ(harness.state->opened, 2);
}

TEST(ThreadedPlayer, CanGoAwayInTheMiddleOfARun) {
    const auto state = std::make_shared<ClockedOutputState>();
    for (int i = 0; i < 20; ++i) {
        AlsaPlayer player(std::make_unique<ClockedOutputs>(state));
        ASSERT_EQ(player.Prepare(), Outcome::Ok);
        player.WriteBlock(SeededNoise(rateHz, 11));
        ProcessFor(i % 4);
    }
    EXPECT_EQ(state->opened, 20);
    EXPECT_EQ(state->open, 0);
}

} // namespace

} // namespace kestrune
