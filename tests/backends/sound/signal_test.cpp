// The parts of a run that need no player: queue, volume, history.
#include "backends/sound/block_queue.h"
#include "backends/sound/feeder.h"
#include "backends/sound/played_history.h"
#include "backends/sound/run_core.h"
#include "backends/sound/sound_chain.h"

#include <algorithm>
#include <gtest/gtest.h>
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
