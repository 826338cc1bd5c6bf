#include "backends/speech/signals.h"
#include "backends/speech/truespeech_prediction.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace kestrune {
namespace {

using Window = std::array<float, trueSpeechWindowSamples>;

// What a predictor leaves of the power of the samples behind the first few.
double ShareLeft(const Window& samples, const TrueSpeechPredictor& predictor) {
    double power = 0;
    double left = 0;
    for (size_t at = trueSpeechOrder; at < samples.size(); ++at) {
        double rest = samples[at];
        for (size_t tap = 0; tap < predictor.size(); ++tap) {
            rest -= predictor[tap] / 4096.0 * samples[at - 1 - tap];
        }
        power += static_cast<double>(samples[at]) * samples[at];
        left += rest * rest;
    }
    return left / power;
}

Window WindowOf(const Sound& sound) {
    Window window;
    std::copy_n(sound.begin(), window.size(), window.begin());
    return window;
}

TEST(TrueSpeechPrediction, AVowelIsPredicted) {
    for (const double hz : {90.0, 140.0, 220.0}) {
        const Window window = WindowOf(Voice(hz, 1000));
        EXPECT_LT(ShareLeft(window, PredictorOf(ChooseReflections(window))), 0.02) << hz;
    }
}

TEST(TrueSpeechPrediction, ToneAndNoiseDieAwayAndAreNeverMadeWorse) {
    for (const double hz : {30.0, 60.0, 100.0, 440.0, 1000.0, 2000.0, 3000.0, 3900.0}) {
        const Window window = WindowOf(Sine(hz, 20000, trueSpeechWindowSamples));
        const TrueSpeechPredictor predictor = PredictorOf(ChooseReflections(window));
        EXPECT_TRUE(DiesAway(predictor)) << hz;
        EXPECT_LT(ShareLeft(window, predictor), 0.05) << hz;
    }
    for (const quint32 seed : {1U, 2U, 3U}) {
        const Window window = WindowOf(Noise(8000, trueSpeechWindowSamples, seed));
        const TrueSpeechPredictor predictor = PredictorOf(ChooseReflections(window));
        EXPECT_TRUE(DiesAway(predictor));
        EXPECT_LT(ShareLeft(window, predictor), 1.1);
    }
}

TEST(TrueSpeechPrediction, SilenceHasAPredictorNearNone) {
    const TrueSpeechPredictor predictor = PredictorOf(ChooseReflections(Window{}));
    for (const qint16 tap : predictor) {
        EXPECT_LT(std::abs(tap), 1500);
    }
}

TEST(TrueSpeechPrediction, KnowsWhatDoesNotDieAway) {
    EXPECT_TRUE(DiesAway({4000, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_FALSE(DiesAway({4100, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_TRUE(DiesAway({7900, -3900, 0, 0, 0, 0, 0, 0}));
    EXPECT_FALSE(DiesAway({7900, -4200, 0, 0, 0, 0, 0, 0}));
    EXPECT_FALSE(DiesAway({0, 0, 0, 0, 0, 0, 0, -4096}));
}

} // namespace
} // namespace kestrune
