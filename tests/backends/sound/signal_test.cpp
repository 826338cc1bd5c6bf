// The parts of a run that need no player: queue, volume, equalizer, history.
#include "backends/sound/block_queue.h"
#include "backends/sound/feeder.h"
#include "backends/sound/played_history.h"
#include "backends/sound/run_core.h"
#include "backends/sound/sound_chain.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <vector>

namespace kestrune {

namespace {

constexpr int rateHz = 44100;

// --- Queue ---

TEST(BlockQueue, ReadsAcrossBlocksAndCountsThem) {
    BlockQueue queue;
    queue.Reset(true);
    queue.Push("abcdefgh", 4);
    queue.Push("ijklmnopq", 4); // the q is no whole frame
    EXPECT_TRUE(queue.TakeFirstRequest());
    EXPECT_FALSE(queue.TakeFirstRequest());
    QByteArray out(32, '\0');
    EXPECT_EQ(queue.Read(out.data(), 12), 12);
    EXPECT_EQ(out.left(12), "abcdefghijkl");
    EXPECT_TRUE(queue.TakeEndedBlock());
    EXPECT_FALSE(queue.TakeEndedBlock());
    EXPECT_EQ(queue.Read(out.data(), 32), 4);
    EXPECT_EQ(out.left(4), "mnop");
    EXPECT_TRUE(queue.IsEmpty());
}

TEST(BlockQueue, IsExhaustedOnlyByAnAnswerWithoutABlock) {
    BlockQueue queue;
    queue.Reset(true);
    EXPECT_FALSE(queue.IsExhausted());
    queue.Push("abcd", 4);
    char out[4];
    queue.Read(out, 4);
    EXPECT_FALSE(queue.IsExhausted()) << "a block has ended and nobody was asked";
    EXPECT_TRUE(queue.TakeEndedBlock());
    queue.NoteRequest();
    EXPECT_FALSE(queue.IsExhausted()) << "asked, not answered";
    queue.NoteRequest();
    queue.NoteAnswer(false);
    EXPECT_FALSE(queue.IsExhausted()) << "one answer is still to come";
    queue.NoteAnswer(false);
    EXPECT_TRUE(queue.IsExhausted());
    queue.Push("abcd", 4);
    EXPECT_FALSE(queue.IsExhausted()) << "a block came after all";
}

TEST(BlockQueue, AsksForNothingAfterAClear) {
    BlockQueue queue;
    queue.Reset(true);
    queue.Push("abcd", 4);
    queue.Reset(false);
    EXPECT_FALSE(queue.TakeFirstRequest());
    queue.Push("abcd", 4);
    EXPECT_FALSE(queue.TakeFirstRequest());
}

// --- Volume ---

std::vector<qint16> Samples(const QByteArray& bytes) {
    const auto* first = reinterpret_cast<const qint16*>(bytes.constData());
    return {first, first + bytes.size() / 2};
}

TEST(SoundChain, PassesEverySampleAtFullVolume) {
    const std::vector<qint16> source = Samples(SeededNoise(20000, 1));
    SoundChain chain;
    chain.SetVolume(fullVolume);
    chain.EnableEqualizer(true); // flat
    chain.Start(rateHz, 2);
    std::vector<qint16> out = source;
    chain.Process(out.data(), 10000);
    EXPECT_EQ(out, source);
}

TEST(SoundChain, ScalesLinearlyAndRounds) {
    for (const int volume : {0, 1, 16384, 32768, 65534}) {
        SoundChain chain;
        chain.SetVolume(volume);
        chain.Start(rateHz, 1);
        std::vector<qint16> all(65536);
        for (int i = 0; i < 65536; ++i) {
            all[i] = static_cast<qint16>(i - 32768);
        }
        chain.Process(all.data(), 65536);
        for (int i = 0; i < 65536; ++i) {
            ASSERT_NEAR(all[i], (i - 32768) * (volume / 65535.0), 0.5000001) << volume << ' ' << i - 32768;
        }
    }
}

TEST(SoundChain, ChangesVolumeWithoutAStep) {
    SoundChain chain;
    chain.Start(rateHz, 1);
    std::vector<qint16> level(rateHz / 10, 30000);
    chain.Process(level.data(), 1000);
    EXPECT_EQ(level[999], 30000);
    chain.SetVolume(0);
    chain.Process(level.data() + 1000, static_cast<qint64>(level.size()) - 1000);
    for (size_t i = 1000; i < level.size(); ++i) {
        ASSERT_LE(level[i - 1] - level[i], 30000 / (0.005 * rateHz) + 1) << i;
        ASSERT_LE(level[i], level[i - 1]);
    }
    EXPECT_GT(level[1000 + rateHz / 1000 * 4], 0);
    EXPECT_EQ(level[1000 + rateHz / 1000 * 6], 0);
}

// --- Equalizer ---

std::vector<qint16> Sine(double hz, double amplitude, int sampleRateHz, int frames) {
    std::vector<qint16> sine(static_cast<size_t>(frames));
    for (int i = 0; i < frames; ++i) {
        sine[i] = static_cast<qint16>(
            std::lround(amplitude * std::sin(2 * std::numbers::pi * hz * i / sampleRateHz)));
    }
    return sine;
}

double Power(const std::vector<qint16>& samples, size_t from) {
    double sum = 0;
    for (size_t i = from; i < samples.size(); ++i) {
        sum += static_cast<double>(samples[i]) * samples[i];
    }
    return sum / static_cast<double>(samples.size() - from);
}

double ResponseDb(const EqualizerGains& gainsDb, double hz, int sampleRateHz) {
    SoundChain chain;
    chain.SetEqualizer(gainsDb);
    chain.EnableEqualizer(true);
    chain.Start(sampleRateHz, 1);
    std::vector<qint16> out = Sine(hz, 4000, sampleRateHz, sampleRateHz * 2);
    const double before = Power(out, static_cast<size_t>(sampleRateHz));
    chain.Process(out.data(), static_cast<qint64>(out.size()));
    return 10 * std::log10(Power(out, static_cast<size_t>(sampleRateHz)) / before);
}

TEST(Equalizer, HasItsGainAtEachCentre) {
    for (const int sampleRateHz : {44100, 48000}) {
        for (int band = 0; band < equalizerBands; ++band) {
            for (const float gainDb : {-12.0F, 6.0F, 12.0F}) {
                EqualizerGains gainsDb{};
                gainsDb[band] = gainDb;
                EXPECT_NEAR(ResponseDb(gainsDb, equalizerCentresHz[band], sampleRateHz), gainDb, 0.5)
                    << "band " << band << " at " << sampleRateHz;
            }
        }
    }
}

TEST(Equalizer, LeavesTheDistanceAlone) {
    EqualizerGains gainsDb{};
    gainsDb[5] = 12; // 531 Hz
    EXPECT_NEAR(ResponseDb(gainsDb, 31, rateHz), 0, 0.5);
    EXPECT_NEAR(ResponseDb(gainsDb, 9042, rateHz), 0, 0.5);
}

TEST(Equalizer, SkipsBandsAboveTheSignal) {
    EqualizerGains gainsDb{};
    gainsDb[equalizerBands - 1] = 12; // 15942 Hz
    EXPECT_NEAR(ResponseDb(gainsDb, 3000, 8000), 0, 0.01);
}

TEST(Equalizer, SaturatesAndDoesNotWrap) {
    SoundChain chain;
    EqualizerGains gainsDb{};
    gainsDb[6] = 12; // 936 Hz
    chain.SetEqualizer(gainsDb);
    chain.EnableEqualizer(true);
    chain.Start(rateHz, 1);
    std::vector<qint16> out = Sine(936, 32000, rateHz, rateHz);
    const std::vector<qint16> in = out;
    chain.Process(out.data(), rateHz);
    int atTop = 0;
    for (int i = rateHz / 2; i < rateHz; ++i) {
        atTop += out[i] == 32767 ? 1 : 0;
        if (std::abs(in[i]) > 16000) {
            ASSERT_GT(static_cast<int>(out[i]) * in[i], 0) << "sign turned at " << i;
        }
    }
    EXPECT_GT(atTop, 1000);
}

TEST(Equalizer, SwitchesWithoutAClick) {
    SoundChain chain;
    EqualizerGains gainsDb{};
    gainsDb.fill(6);
    chain.Start(rateHz, 1);
    std::vector<qint16> out = Sine(300, 2000, rateHz, rateHz);
    chain.SetEqualizer(gainsDb);
    chain.Process(out.data(), rateHz / 4);
    chain.EnableEqualizer(true);
    chain.Process(out.data() + rateHz / 4, rateHz / 4);
    chain.EnableEqualizer(false);
    chain.Process(out.data() + rateHz / 2, rateHz / 2);
    // A click is a bend that the loudest tone itself does not have.
    int sharpest = 0;
    int sharpestSteady = 0;
    for (int i = 2; i < rateHz; ++i) {
        const int bend = std::abs(out[i] - 2 * out[i - 1] + out[i - 2]);
        const bool isSteady = i > rateHz * 2 / 5 && i < rateHz / 2;
        (isSteady ? sharpestSteady : sharpest) = std::max(isSteady ? sharpestSteady : sharpest, bend);
    }
    EXPECT_GT(sharpestSteady, 10);
    EXPECT_LT(sharpest, 2 * sharpestSteady);
    const std::vector<qint16> untouched = Sine(300, 2000, rateHz, rateHz);
    EXPECT_TRUE(std::equal(out.end() - 1000, out.end(), untouched.end() - 1000)) << "off, yet not untouched";
}

// --- History and levels ---

TEST(PlayedHistory, FindsFramesByPosition) {
    PlayedHistory history;
    history.Start(100, 2);
    std::vector<qint16> frames;
    for (qint16 i = 0; i < 250; ++i) {
        frames.insert(frames.end(), {i, static_cast<qint16>(-i)});
    }
    history.Append(frames.data(), 30);
    EXPECT_EQ(history.Before(3, 10), QList<qint16>({0, 0, 1, -1, 2, -2}));
    history.Append(frames.data() + 60, 220);
    EXPECT_EQ(history.Before(152, 2), QList<qint16>({150, -150, 151, -151}));
    EXPECT_TRUE(history.Before(150, 2).isEmpty()) << "forgotten";
    EXPECT_EQ(history.Before(1000, 1), QList<qint16>({249, -249}));
    EXPECT_EQ(history.Peaks(160, 170), (std::array<int, 2>{169, 169}));
}

TEST(RunCore, KeepsAllThatTheDisplayAsksFor) {
    RunCore core;
    core.Start(rateHz, 2);
    const QByteArray noise = SeededNoise(rateHz * 2, 2);
    core.Push(noise);
    std::vector<qint16> out(rateHz * 2);
    ASSERT_EQ(core.Pull(out.data(), rateHz), rateHz);
    const qint64 unheard = rateHz * deviceBufferMs / 1000;
    core.SetUnheard(unheard);
    const QList<qint16> block = core.PlayedBlock(16384);
    ASSERT_EQ(block.size(), 16384 * 2);
    EXPECT_TRUE(std::equal(block.begin(), block.end(), out.end() - (unheard + 16384) * 2));
    core.SetUnheard(unheard + 1000);
    EXPECT_EQ(core.HeardFrames(), rateHz - unheard) << "never back";
}

} // namespace

} // namespace kestrune
