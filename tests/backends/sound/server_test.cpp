// The player against a real sound server, which plays into a pipe that is read here. Time is what was read,
// not what the clock on the wall says.
#include "backends/sound/alsa_player.h"
#include "backends/sound/feeder.h"
#include "backends/sound/machine_outputs.h"
#include "support/audio_player_contract.h"
#include "support/pace.h"
#include "support/private_sound.h"
#include "support/takes.h"

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <iostream>
#include <tuple>

namespace kestrune {

namespace {

constexpr int rateHz = 44100;
constexpr int stereo = 2;

struct Frames {
    explicit Frames(const QByteArray& bytes)
        : first(reinterpret_cast<const quint32*>(bytes.constData())), count(bytes.size() / 4) {}
    const quint32* first;
    qint64 count;
};

// The capture without any frame of silence.
QByteArray WithoutSilence(const QByteArray& capture) {
    const Frames frames(capture);
    QByteArray sound(frames.count * 4, Qt::Uninitialized);
    auto* out = reinterpret_cast<quint32*>(sound.data());
    qint64 kept = 0;
    for (qint64 i = 0; i < frames.count; ++i) {
        if (frames.first[i] != 0) {
            out[kept++] = frames.first[i];
        }
    }
    sound.truncate(kept * 4);
    return sound;
}

// The longest silence between the first and the last sound, in frames.
qint64 LongestGap(const QByteArray& capture) {
    const Frames frames(capture);
    qint64 longest = 0;
    qint64 lastSound = -1;
    for (qint64 i = 0; i < frames.count; ++i) {
        if (frames.first[i] != 0) {
            if (lastSound >= 0) {
                longest = std::max(longest, i - lastSound - 1);
            }
            lastSound = i;
        }
    }
    return longest;
}

// Equal, and if not, where it first differs and by how many frames.
testing::AssertionResult SamePcm(const QByteArray& heard, const QByteArray& source) {
    if (heard == source) {
        return testing::AssertionSuccess();
    }
    const auto differs = std::mismatch(heard.begin(), heard.end(), source.begin(), source.end());
    return testing::AssertionFailure() << "heard " << heard.size() / 4 << " frames of " << source.size() / 4
                                       << ", first difference at " << (differs.first - heard.begin()) / 4;
}

QByteArray AsStereo(const QByteArray& mono) {
    QByteArray both;
    both.reserve(mono.size() * 2);
    for (qsizetype i = 0; i + 1 < mono.size(); i += 2) {
        both.append(mono.mid(i, 2)).append(mono.mid(i, 2));
    }
    return both;
}

// Lets events come until `isDone` or so much was heard; true when done. Without a server the clock on the
// wall counts.
template <class Condition>
bool HearUntil(const PrivateSound& sound, Condition isDone, int patienceMs) {
    const qint64 endMs = sound.ClockMs() + patienceMs;
    bool isInTime = false;
    ProcessUntil(
        [&] {
            isInTime = isDone();
            return isInTime || sound.ClockMs() > endMs;
        },
        Patience(patienceMs + 5000));
    return isInTime;
}

class SoundServer : public testing::TestWithParam<DefaultOutput> {
protected:
    void SetUp() override {
        ASSERT_TRUE(sound.Start()) << sound.Log().constData();
        player = std::make_unique<AlsaPlayer>(MakeMachineOutputs(GetParam()));
    }
    // For what is wrong also when the machine has no time for the player.
    void Undisturbed(const std::function<void()>& take) {
        TakeUndisturbed(
            take,
            [this] {
                const int times = sound.TimesRanDry();
                return times > 0 ? "the sound ran dry " + std::to_string(times) + " times" : std::string();
            },
            [this] {
                player.reset();
                sound.Kill();
                SetUp();
            });
    }
    template <class Condition>
    bool Until(Condition isDone, int patienceMs) {
        return HearUntil(sound, isDone, patienceMs);
    }
    void Hear(int ms) {
        HearUntil(
            sound, [] { return false; }, ms);
    }
    bool IsExact() const { return GetParam() == DefaultOutput::ServerFirst; }
    void PassBitByBit(int channels);
    void GoOnBetweenTwoFiles();
    void TellPositionAndBlock();

    PrivateSound sound;
    std::unique_ptr<AlsaPlayer> player;
    Capture capture{sound};
};

void SoundServer::PassBitByBit(int channels) {
    capture.Start();
    const QByteArray noise = SeededNoise(static_cast<qint64>(rateHz) * channels * 2, 7);
    player->SetFormat(rateHz, channels);
    Feeder feeder(*player, noise, 700);
    ASSERT_EQ(player->Prepare(), Outcome::Ok);
    feeder.Feed();
    ASSERT_TRUE(Until([&] { return feeder.ends == 1; }, 8000));
    EXPECT_EQ(player->GetPlayedBytes(), noise.size());
    EXPECT_EQ(feeder.endedBlocks, 3);
    const QByteArray heard = capture.Stop();
    EXPECT_EQ(LongestGap(heard), 0);
    EXPECT_TRUE(SamePcm(WithoutSilence(heard), channels == stereo ? noise : AsStereo(noise)))
        << channels << " channels";
}

TEST_P(SoundServer, PassesSamplesBitByBit) {
    for (const int channels : {stereo, 1}) {
        Undisturbed([&] { PassBitByBit(channels); });
    }
}

void SoundServer::GoOnBetweenTwoFiles() {
    capture.Start();
    const QByteArray noise = SeededNoise(rateHz * stereo, 8);
    player->SetFormat(rateHz, stereo);
    Feeder feeder(*player, noise);
    feeder.onEnd = [&] {
        player->StopOutput();
        if (feeder.ends < 3) {
            player->Prepare();
            feeder.position = 0;
            feeder.Feed();
        }
    };
    ASSERT_EQ(player->Prepare(), Outcome::Ok);
    feeder.Feed();
    ASSERT_TRUE(Until([&] { return feeder.ends == 3; }, 8000));
    const QByteArray heard = capture.Stop();
    EXPECT_TRUE(SamePcm(WithoutSilence(heard), noise + noise + noise));
    const double gapMs = LongestGap(heard) * 1000.0 / rateHz;
    std::cout << "longest gap " << gapMs << " ms\n";
    EXPECT_LT(gapMs, 100 * Slowness());
}

TEST_P(SoundServer, GoesOnBetweenTwoFilesWithHardlyAGap) {
    Undisturbed([this] { GoOnBetweenTwoFiles(); });
}

TEST_P(SoundServer, SurvivesAWindowThatIsLate) {
    capture.Start();
    const QByteArray noise = SeededNoise(static_cast<qint64>(rateHz) * stereo * 2, 9);
    player->SetFormat(rateHz, stereo);
    Feeder feeder(*player, noise, 400);
    ASSERT_EQ(player->Prepare(), Outcome::Ok);
    feeder.Feed();
    ASSERT_TRUE(Until([&] { return feeder.endedBlocks == 1; }, 4000));
    for (const qint64 endMs = sound.ClockMs() + 1500; sound.ClockMs() < endMs;) {
        QThread::msleep(20); // without taking events
    }
    EXPECT_EQ(feeder.ends, 0);
    ASSERT_TRUE(Until([&] { return feeder.ends == 1; }, 8000));
    EXPECT_EQ(player->GetPlayedBytes(), noise.size());
    const QByteArray heard = capture.Stop();
    EXPECT_TRUE(SamePcm(WithoutSilence(heard), noise));
    EXPECT_GT(LongestGap(heard), rateHz / 10) << "the queue did not run empty: nothing was tested";
}

TEST_P(SoundServer, ResumesAfterPauseWithoutLossOrRepeat) {
    capture.Start();
    constexpr int pauses = 10;
    const QByteArray noise = SeededNoise(static_cast<qint64>(rateHz) * stereo * 6, 10);
    player->SetFormat(rateHz, stereo);
    Feeder feeder(*player, noise);
    ASSERT_EQ(player->Prepare(), Outcome::Ok);
    feeder.Feed();
    std::mt19937 random(11);
    qint64 resumedAt = 0;
    QList<qint64> cuts;
    for (int i = 0; i < pauses; ++i) {
        Hear(static_cast<int>(150 + random() % 350));
        player->StopOutput();
        resumedAt += player->GetPlayedBytes();
        cuts.append(resumedAt / 4);
        Hear(static_cast<int>(60 + random() % 100));
        ASSERT_EQ(player->Prepare(), Outcome::Ok);
        feeder.position = resumedAt;
        feeder.Feed();
    }
    ASSERT_TRUE(Until([&] { return feeder.ends == 1; }, 10000));
    const QByteArray heard = WithoutSilence(capture.Stop());
    if (IsExact()) {
        EXPECT_TRUE(SamePcm(heard, noise));
    } else {
        // libasound knows only a time: what the server and the pipe hold at each pause may be heard twice.
        std::cout << "frames too many: " << (heard.size() - noise.size()) / 4 << '\n';
        EXPECT_LE(std::abs(heard.size() - noise.size()) / 4, pauses * rateHz * 60 / 1000);
    }
}

TEST_P(SoundServer, ClearDropsWhatWasQueuedAndGoesOn) {
    capture.Start();
    const QByteArray before = SeededNoise(static_cast<qint64>(rateHz) * stereo * 3, 12);
    const QByteArray after = SeededNoise(rateHz * stereo, 13);
    player->SetFormat(rateHz, stereo);
    Feeder feeder(*player, before);
    ASSERT_EQ(player->Prepare(), Outcome::Ok);
    feeder.Feed();
    Hear(600);
    const qint64 heardFrames = player->GetPlayedBytes() / 4;
    QElapsedTimer since;
    since.start();
    player->ClearBlocks();
    const qint64 clearUs = since.nsecsElapsed() / 1000;
    EXPECT_EQ(player->GetPlayedBytes(), 0);
    feeder.position = before.size();
    player->WriteBlock(after.left(after.size() / 2 / 4 * 4));
    player->WriteBlock(after.mid(after.size() / 2 / 4 * 4));
    ASSERT_TRUE(Until([&] { return feeder.ends == 1; }, 8000));
    EXPECT_EQ(player->GetPlayedBytes(), after.size());
    EXPECT_EQ(feeder.requests, 1);
    const QByteArray heard = WithoutSilence(capture.Stop());
    const qint64 oldFrames = (heard.size() - after.size()) / 4;
    std::cout << "clear took " << clearUs << " us, " << oldFrames - heardFrames << " frames heard after it\n";
    EXPECT_TRUE(heard.endsWith(after));
    EXPECT_TRUE(before.startsWith(heard.left(oldFrames * 4)));
    EXPECT_LT(oldFrames - heardFrames, rateHz * 80 / 1000 * Slowness());
    EXPECT_LT(clearUs, Patience(50) * 1000);
}

TEST_P(SoundServer, EndsTheRunWhenTheServerGoes) {
    player->SetFormat(rateHz, stereo);
    Feeder feeder(*player, SeededNoise(static_cast<qint64>(rateHz) * stereo * 4, 14));
    const int deviceCount = player->DeviceCount();
    EXPECT_GE(deviceCount, 1);
    ASSERT_EQ(player->Prepare(), Outcome::Ok);
    feeder.Feed();
    Hear(300);
    QElapsedTimer since;
    sound.Kill();
    since.start();
    ASSERT_TRUE(Until([&] { return feeder.ends == 1; }, 3000));
    EXPECT_LT(since.elapsed(), Patience(1000));
    EXPECT_LT(player->GetStatus(), 0);
    EXPECT_EQ(player->WriteBlock(QByteArray(400, '\1')), Outcome::NotOpen);
    EXPECT_EQ(player->Prepare(), Outcome::DeviceFailed);
    EXPECT_LT(player->GetStatus(), 0);
    EXPECT_LT(player->DeviceCount(), deviceCount);
    EXPECT_FALSE(player->IsDeviceUsable());

    ASSERT_TRUE(sound.Start()) << sound.Log().constData();
    EXPECT_EQ(player->DeviceCount(), deviceCount);
    ASSERT_EQ(player->Prepare(), Outcome::Ok);
    EXPECT_EQ(player->GetStatus(), 0);
    feeder.position = 0;
    feeder.Feed();
    EXPECT_TRUE(Until([&] { return player->GetPlayedBytes() > player->BytesForMs(200); }, 3000));
    player->StopOutput();
}

void SoundServer::TellPositionAndBlock() {
    const QByteArray noise = SeededNoise(static_cast<qint64>(rateHz) * stereo * 2, 15);
    player->SetFormat(rateHz, stereo);
    Feeder feeder(*player, noise);
    const int deviceCount = player->DeviceCount();
    QList<qint64> ticks;
    QObject::connect(player.get(), &KSTAudioPlayer2::Timer, [&](qint64 bytes) { ticks.append(bytes); });
    ASSERT_EQ(player->Prepare(), Outcome::Ok);
    feeder.Feed();
    ASSERT_TRUE(Until([&] { return player->GetPlayedBytes() > player->BytesForMs(300); }, 2000));
    // Between a look at the clock and one at the position a busy machine may do something else.
    const auto look = [&] {
        const qint64 beforeMs = sound.ClockMs();
        const qint64 bytes = player->GetPlayedBytes();
        return std::tuple(beforeMs, bytes, sound.ClockMs());
    };
    const auto [beginMs, beginBytes, begunMs] = look();
    Hear(1000);
    const auto [endMs, endBytes, endedMs] = look();
    const double playedMs = static_cast<double>(endBytes - beginBytes) / 4.0 * 1000.0 / rateHz;
    const double toleranceMs = 50 * Slowness();
    EXPECT_GE(playedMs, endMs - begunMs - toleranceMs);
    EXPECT_LE(playedMs, endedMs - beginMs + toleranceMs);
    const qint64 earlierBytes = player->GetPlayedBytes();
    const QList<qint16> block = player->GetPlayedBlock(512);
    const qint64 laterBytes = player->GetPlayedBytes();
    ASSERT_EQ(block.size(), 512 * stereo);
    const qint64 at =
        noise.indexOf(QByteArray(reinterpret_cast<const char*>(block.constData()), block.size() * 2));
    const qint64 blockEndBytes = at + block.size() * 2;
    EXPECT_GE(at, 0);
    EXPECT_GE(blockEndBytes, earlierBytes - player->BytesForMs(30));
    EXPECT_LE(blockEndBytes, laterBytes + player->BytesForMs(30));
    EXPECT_TRUE(std::is_sorted(ticks.begin(), ticks.end()));
    EXPECT_GT(ticks.size(), 15);
    EXPECT_EQ(player->DeviceCount(), deviceCount) << "a device in use is a device";
    EXPECT_TRUE(player->IsDeviceUsable());
    player->StopOutput();
}

TEST_P(SoundServer, TellsTheHeardPositionAndBlock) {
    Undisturbed([this] { TellPositionAndBlock(); });
}

TEST_P(SoundServer, PlaysEveryCommonRateToItsEnd) {
    for (const auto& [sampleRateHz, channels] :
         {std::pair{8000, 1}, {11025, 2}, {22050, 1}, {48000, 2}, {96000, 2}}) {
        capture.Start();
        const QByteArray noise = SeededNoise(static_cast<qint64>(sampleRateHz) / 2 * channels, 16);
        player->SetFormat(sampleRateHz, channels);
        Feeder feeder(*player, noise, 200);
        ASSERT_EQ(player->Prepare(), Outcome::Ok) << sampleRateHz;
        feeder.Feed();
        ASSERT_TRUE(Until([&] { return feeder.ends == 1; }, 3000)) << sampleRateHz;
        EXPECT_EQ(player->GetPlayedBytes(), noise.size());
        const qint64 heardFrames = WithoutSilence(capture.Stop()).size() / 4;
        EXPECT_NEAR(heardFrames * 1000.0 / rateHz, 500, 10) << sampleRateHz << ' ' << channels;
    }
}

// libasound has no such limit of its own.
class HangingSoundServer : public SoundServer {};

TEST_P(HangingSoundServer, DoesNotHangWithAServerThatDoes) {
    player->SetFormat(rateHz, stereo);
    ASSERT_EQ(player->Prepare(), Outcome::Ok);
    player->WriteBlock(SeededNoise(rateHz * stereo, 17));
    Hear(300);
    const auto serverId = static_cast<pid_t>(sound.ProcessId());
    ASSERT_EQ(::kill(serverId, SIGSTOP), 0);
    QElapsedTimer since;
    since.start();
    player->StopOutput();
    EXPECT_EQ(player->Prepare(), Outcome::DeviceFailed);
    EXPECT_LT(since.elapsed(), Patience(4000));
    ::kill(serverId, SIGCONT);
    EXPECT_TRUE(Until([&] { return player->Prepare() == Outcome::Ok; }, 5000));
}

INSTANTIATE_TEST_SUITE_P(Ways, HangingSoundServer, testing::Values(DefaultOutput::ServerFirst));
INSTANTIATE_TEST_SUITE_P(Ways, SoundServer,
                         testing::Values(DefaultOutput::ServerFirst, DefaultOutput::AlsaOnly),
                         [](const auto& way) {
                             return way.param == DefaultOutput::ServerFirst ? "ServerFirst" : "AlsaOnly";
                         });

template <DefaultOutput way>
struct ServerHarness {
    ServerHarness() { EXPECT_TRUE(sound.Start()) << sound.Log().constData(); }
    KSTAudioPlayer2& Player() { return player; }
    template <class Condition>
    bool PassUntil(Condition isDone, int ms) {
        return HearUntil(sound, isDone, ms);
    }
    void HoldEvents(int ms) { QThread::msleep(static_cast<unsigned long>(ms)); }
    void Vanish() { sound.Kill(); }
    PrivateSound sound;
    AlsaPlayer player{MakeMachineOutputs(way)};
};

using ServerHarnesses =
    testing::Types<ServerHarness<DefaultOutput::ServerFirst>, ServerHarness<DefaultOutput::AlsaOnly>>;
INSTANTIATE_TYPED_TEST_SUITE_P(Server, PlayerCalls, ServerHarnesses);
INSTANTIATE_TYPED_TEST_SUITE_P(Server, PlayerRuns, ServerHarnesses);

TEST(NoSoundServer, IsQuietAndCountsOnlyCards) {
    const PrivateSound neverStarted;
    testing::internal::CaptureStderr();
    const std::unique_ptr<KSTAudioPlayer2> player = MakeAudioPlayer();
    const bool canPlay = player->DeviceCount() > 0;
    const Outcome outcome = player->Prepare();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    if (!canPlay) {
        EXPECT_EQ(outcome, Outcome::DeviceFailed);
        EXPECT_LT(player->GetStatus(), 0);
        EXPECT_EQ(player->DeviceName(0), QString());
    }
}

} // namespace

} // namespace kestrune
