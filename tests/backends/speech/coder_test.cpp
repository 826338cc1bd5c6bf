#include "backends/speech/judge.h"
#include "backends/speech/truespeech_coder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kestrune {
namespace {

std::vector<TrueSpeechBytes> Coded(Sound sound) {
    const size_t blocks = (sound.size() + trueSpeechBlockSamples - 1) / trueSpeechBlockSamples;
    sound.resize((blocks + 1) * trueSpeechBlockSamples);
    TrueSpeechCoder coder;
    std::vector<TrueSpeechBytes> coded;
    for (size_t block = 0; block < blocks; ++block) {
        const std::span view = std::span(sound).subspan(block * trueSpeechBlockSamples);
        coded.push_back(coder.Encode(view.first<trueSpeechBlockSamples>(),
                                     view.subspan<trueSpeechBlockSamples, trueSpeechBlockSamples>()));
    }
    return coded;
}

constexpr int samples = 8000 * 6;

TEST(TrueSpeechCoder, VoicesOfManyPitchesAreKept) {
    for (const double hz : {70.0, 110.0, 160.0, 240.0}) {
        const Sound voice = Voice(hz, samples);
        const double snr = SegmentalSnrDb(voice, JudgeDecodes(Coded(voice)));
        RecordProperty("snr" + std::to_string(static_cast<int>(hz)), std::to_string(snr));
        EXPECT_GT(snr, 22) << hz;
    }
}

TEST(TrueSpeechCoder, TalkWithHissesAndPausesIsKept) {
    const Sound talk = Talk(120, samples, 4);
    EXPECT_GT(SegmentalSnrDb(talk, JudgeDecodes(Coded(talk))), 17);
}

TEST(TrueSpeechCoder, MusicIsKept) {
    const Sound music = Music(samples, 5);
    EXPECT_GT(SegmentalSnrDb(music, JudgeDecodes(Coded(music))), 17);
}

TEST(TrueSpeechCoder, TonesAreKept) {
    for (const double hz : {100.0, 440.0, 1000.0, 3000.0}) {
        const Sound tone = Sine(hz, 10000, samples);
        EXPECT_GT(SnrDb(tone, JudgeDecodes(Coded(tone))), 24) << hz;
    }
}

TEST(TrueSpeechCoder, NoiseIsBetterThanNothing) {
    const Sound noise = Noise(8000, samples, 6);
    EXPECT_GT(SnrDb(noise, JudgeDecodes(Coded(noise))), 2);
}

// What a decoder holds must never run away: not at full scale, not at a jump from one sound to another.
TEST(TrueSpeechCoder, LoudSoundsAndJumpsStayWithinBounds) {
    Sound sound;
    const auto append = [&sound](const Sound& part) { sound.insert(sound.end(), part.begin(), part.end()); };
    for (const double hz : {50.0, 200.0, 333.0, 1000.0, 2600.0}) {
        append(Square(hz, 32767, 4000));
        append(Sound(500, 0));
        append(Sine(hz, 32767, 4000));
        append(Noise(32767, 2000, 7));
    }
    const Sound decoded = JudgeDecodes(Coded(sound));
    EXPECT_GT(SegmentalSnrDb(sound, decoded), 7);
    for (size_t start = 0; start + 480 <= sound.size(); start += 240) {
        double power = 0;
        double decodedPower = 0;
        for (size_t at = start; at < start + 480; ++at) {
            power += double(sound[at]) * sound[at];
            decodedPower += double(decoded[at]) * decoded[at];
        }
        EXPECT_LT(decodedPower, 4 * power + 480 * 1e6) << start;
    }
}

// A decoder's 16 bits turn over where too much is repeated.
TEST(TrueSpeechCoder, ClicksOfFullHeightDoNotTurnOver) {
    Sound clicks(samples);
    for (size_t at = 0; at < clicks.size(); at += 60) {
        clicks[at] = 32767;
    }
    EXPECT_GT(SegmentalSnrDb(clicks, JudgeDecodes(Coded(clicks))), 5);
}

TEST(TrueSpeechCoder, SilenceStaysAlmostSilent) {
    const Sound decoded = JudgeDecodes(Coded(Sound(4800, 0)));
    EXPECT_TRUE(
        std::all_of(decoded.begin(), decoded.end(), [](int sample) { return std::abs(sample) <= 6; }));
}

// A sound that fades to nothing is followed, and not left ringing.
TEST(TrueSpeechCoder, SilenceBehindASoundComesSoon) {
    Sound sound = Voice(120, 8000);
    sound.resize(16000);
    const Sound decoded = JudgeDecodes(Coded(sound));
    EXPECT_TRUE(std::all_of(decoded.begin() + 9000, decoded.end(),
                            [](int sample) { return std::abs(sample) <= 12; }));
}

TEST(TrueSpeechCoder, TheSameSoundGivesTheSameBlocks) {
    const Sound talk = Talk(140, 8000, 8);
    EXPECT_EQ(Coded(talk), Coded(talk));
}

} // namespace
} // namespace kestrune
