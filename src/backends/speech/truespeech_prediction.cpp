#include "backends/speech/truespeech_prediction.h"

#include "backends/speech/truespeech_tables.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace kestrune {

namespace {

constexpr int lags = trueSpeechOrder + 1;
using Correlations = std::array<double, lags>;
using Predictor = std::array<double, trueSpeechOrder>;

// A sum of squares that stands for silence, far below one step of a sample.
constexpr double silence = 1e-3;
// A floor of noise 30 dB below, and lines blurred by 80 Hz. The decoder's last filters raise the peaks of the
// predictor once more, so that one less sharp comes nearer to the sound: by half a decibel on speech.
constexpr double noiseShare = 1e-3;
constexpr double blurHz = 80;
// By how much the floor is raised as long as no predictor that the format has room for comes of it.
constexpr double noiseStep = 10;

std::array<float, trueSpeechWindowSamples> MakeWindow() {
    std::array<float, trueSpeechWindowSamples> window;
    for (size_t at = 0; at < window.size(); ++at) {
        const double phase = 2 * std::numbers::pi * (static_cast<double>(at) + 0.5) / window.size();
        window[at] = static_cast<float>(0.54 - 0.46 * std::cos(phase));
    }
    return window;
}

Correlations Correlate(std::span<const float, trueSpeechWindowSamples> samples) {
    static const auto window = MakeWindow();
    std::array<float, trueSpeechWindowSamples> shaped;
    std::transform(samples.begin(), samples.end(), window.begin(), shaped.begin(), std::multiplies());
    Correlations sums = {};
    for (size_t lag = 0; lag < sums.size(); ++lag) {
        for (size_t at = lag; at < shaped.size(); ++at) {
            sums[lag] += static_cast<double>(shaped[at]) * static_cast<double>(shaped[at - lag]);
        }
        const double spread = 2 * std::numbers::pi * blurHz * static_cast<double>(lag) / trueSpeechRateHz;
        sums[lag] *= std::exp(-0.5 * spread * spread);
    }
    sums[0] += silence;
    return sums;
}

// A predictor of the first stages, and what the next stage needs of it.
struct Path {
    Predictor taps = {};
    TrueSpeechReflectionEntries entries = {};
    double left = 0; // power that it does not predict
};

// What the error of a predictor of `stage` taps has in common with the sample before its reach.
double NextShare(const Path& path, int stage, const Correlations& sums) {
    const auto correlation = [&sums](int lag) { return sums[static_cast<size_t>(std::abs(lag))]; };
    double common = correlation(stage + 1);
    for (int tap = 0; tap < stage; ++tap) {
        const double weight = path.taps[static_cast<size_t>(tap)];
        common -= 2 * weight * correlation(stage - tap);
        for (int other = 0; other < stage; ++other) {
            common += weight * path.taps[static_cast<size_t>(other)] * correlation(stage - 1 - tap - other);
        }
    }
    return common;
}

Path Extended(const Path& path, int stage, int entry, double common) {
    constexpr double whole = 32768;
    const double reflection = -TrueSpeechReflections(stage)[static_cast<size_t>(entry)] / whole;
    Path longer = path;
    for (int tap = 0; tap < stage; ++tap) {
        longer.taps[static_cast<size_t>(tap)] -= reflection * path.taps[static_cast<size_t>(stage - tap - 1)];
    }
    longer.taps[static_cast<size_t>(stage)] = reflection;
    longer.entries[static_cast<size_t>(stage)] = entry;
    longer.left = path.left * (1 + reflection * reflection) - 2 * reflection * common;
    return longer;
}

// The entries on both sides of the wanted value, and one more on each where they are.
void Extend(const Path& path, int stage, const Correlations& sums, std::vector<Path>& longer) {
    constexpr double whole = 32768;
    const double common = NextShare(path, stage, sums);
    const auto values = TrueSpeechReflections(stage);
    const double wanted = -common / path.left * whole;
    const auto above = std::lower_bound(values.begin(), values.end(), wanted) - values.begin();
    const auto count = static_cast<std::ptrdiff_t>(values.size());
    const auto first = std::clamp<std::ptrdiff_t>(above - 2, 0, count - 1);
    const auto last = std::clamp<std::ptrdiff_t>(above + 1, 0, count - 1);
    for (auto entry = first; entry <= last; ++entry) {
        longer.push_back(Extended(path, stage, static_cast<int>(entry), common));
    }
}

// Decoders hold a tap in 16 bits of which 12 stand behind the point, and steps on the way must fit as well.
bool Fits(const Path& path) {
    constexpr double most = 7.99;
    return std::all_of(path.taps.begin(), path.taps.end(), [](double tap) { return std::abs(tap) < most; });
}

// Paths through all stages, best first.
std::vector<Path> FollowPaths(const Correlations& sums) {
    constexpr size_t keptPaths = 8;
    std::vector<Path> paths(1);
    paths[0].left = sums[0];
    std::vector<Path> longer;
    for (int stage = 0; stage < trueSpeechOrder; ++stage) {
        longer.clear();
        for (const Path& path : paths) {
            Extend(path, stage, sums, longer);
        }
        longer.erase(
            std::remove_if(longer.begin(), longer.end(), [](const Path& path) { return !Fits(path); }),
            longer.end());
        std::sort(longer.begin(), longer.end(),
                  [](const Path& left, const Path& right) { return left.left < right.left; });
        longer.resize(std::min(longer.size(), keptPaths));
        paths.swap(longer);
    }
    return paths;
}

} // namespace

bool DiesAway(const TrueSpeechPredictor& predictor) {
    constexpr double whole = 4096;
    constexpr double most = 0.9995;
    Predictor taps;
    std::transform(predictor.begin(), predictor.end(), taps.begin(), [](qint16 tap) { return tap / whole; });
    for (size_t stage = taps.size(); stage-- > 0;) {
        const double reflection = taps[stage];
        if (std::abs(reflection) >= most) {
            return false;
        }
        const Predictor longer = taps;
        for (size_t tap = 0; tap < stage; ++tap) {
            taps[tap] = (longer[tap] + reflection * longer[stage - tap - 1]) / (1 - reflection * reflection);
        }
    }
    return true;
}

TrueSpeechReflectionEntries ChooseReflections(std::span<const float, trueSpeechWindowSamples> samples) {
    const Correlations sums = Correlate(samples);
    // Noise alone has a predictor near none, so this ends.
    for (double noise = noiseShare;; noise *= noiseStep) {
        Correlations noisy = sums;
        noisy[0] += noise * sums[0];
        for (const Path& path : FollowPaths(noisy)) {
            if (DiesAway(PredictorOf(path.entries))) {
                return path.entries;
            }
        }
    }
}

} // namespace kestrune
