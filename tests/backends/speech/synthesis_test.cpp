#include "backends/speech/judge.h"
#include "backends/speech/truespeech_synthesis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace kestrune {
namespace {

Sound Synthesised(const std::vector<TrueSpeechBytes>& blocks) {
    TrueSpeechSynthesis synthesis;
    Sound sound;
    for (const TrueSpeechBytes& bytes : blocks) {
        const TrueSpeechBlock block = UnpackTrueSpeech(bytes);
        synthesis.StartBlock(block);
        for (int subframe = 0; subframe < trueSpeechSubframes; ++subframe) {
            const TrueSpeechSubframe& fields = block.subframes[static_cast<size_t>(subframe)];
            const int lag = block.lag[static_cast<size_t>(subframe / 2)];
            const auto samples = synthesis.Decode(subframe, synthesis.Repeated(lag, fields.pitch).samples,
                                                  TrueSpeechSynthesis::Pulses(fields));
            sound.insert(sound.end(), samples.begin(), samples.end());
        }
    }
    return sound;
}

std::vector<TrueSpeechBytes> RandomBlocks(int count, quint32 seed) {
    std::mt19937 random(seed);
    std::vector<TrueSpeechBytes> blocks(static_cast<size_t>(count));
    for (TrueSpeechBytes& bytes : blocks) {
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<uchar>(random()); });
    }
    return blocks;
}

class TrueSpeechSynthesisOfNoise : public testing::TestWithParam<quint32> {};

TEST_P(TrueSpeechSynthesisOfNoise, IsTheJudgesSampleForSample) {
    const auto blocks = RandomBlocks(1000, GetParam());
    const Sound judged = JudgeDecodes(blocks);
    ASSERT_EQ(judged.size(), 240000U);
    EXPECT_TRUE(Synthesised(blocks) == judged);
}

INSTANTIATE_TEST_SUITE_P(Seeds, TrueSpeechSynthesisOfNoise, testing::Range(1U, 21U));

// Blocks of an encoder: quiet enough that the sound is not at its limits all the time.
TEST(TrueSpeechSynthesis, QuietBlocksAreTheJudgesSampleForSample) {
    auto blocks = RandomBlocks(3000, 77);
    std::mt19937 random(78);
    for (TrueSpeechBytes& bytes : blocks) {
        TrueSpeechBlock block = UnpackTrueSpeech(bytes);
        block.reflection = {
            static_cast<int>(8 + random() % 16), static_cast<int>(8 + random() % 16), 9, 6, 8, 3, 5, 3};
        for (TrueSpeechSubframe& subframe : block.subframes) {
            subframe.pulseGain %= 9;
            subframe.pulsePlaces = (random() % 4060) << 15 | random() % 27405;
        }
        bytes = PackTrueSpeech(block);
    }
    const Sound judged = JudgeDecodes(blocks);
    EXPECT_TRUE(Synthesised(blocks) == judged);
    const auto loud =
        std::count_if(judged.begin(), judged.end(), [](int sample) { return std::abs(sample) > 30000; });
    EXPECT_LT(loud, static_cast<std::ptrdiff_t>(judged.size() / 10));
}

TEST(TrueSpeechSynthesis, CopiesGoOnAlone) {
    TrueSpeechSynthesis synthesis;
    TrueSpeechBlock block;
    synthesis.StartBlock(block);
    TrueSpeechSamples pulses = {};
    pulses[0] = 1000;
    TrueSpeechSynthesis copy = synthesis;
    const auto first = synthesis.Decode(0, {}, pulses);
    EXPECT_EQ(copy.Decode(0, {}, pulses), first);
    EXPECT_EQ(copy.Excitation(), synthesis.Excitation());
    EXPECT_EQ(copy.Excitation()[trueSpeechHistory - trueSpeechSubframeSamples], 1000);
}

} // namespace
} // namespace kestrune
