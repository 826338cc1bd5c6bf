// What the equalizer costs on the way to the device, a frame of two samples at a time: flat, all twelve bands
// at work, and with a gain that moves all the while.
#include "backends/sound/sound_chain.h"

#include <benchmark/benchmark.h>
#include <random>
#include <vector>

namespace {

using namespace kestrune;

constexpr int rateHz = 44100;
// What the writer thread hands on at a time, every 40 ms.
constexpr qint64 blockFrames = 1764;

std::vector<qint16> Noise(int channels) {
    std::mt19937 random(1);
    std::vector<qint16> noise(static_cast<size_t>(blockFrames * channels));
    for (qint16& sample : noise) {
        sample = static_cast<qint16>(static_cast<int>(random() % 20001) - 10000);
    }
    return noise;
}

EqualizerGains Uneven() {
    return {6, -3, 9, -12, 3, 1, -7, 4, 12, -5, 2, 8};
}

void Run(benchmark::State& run, const EqualizerGains& gainsDb, int channels, bool isMoving) {
    const std::vector<qint16> noise = Noise(channels);
    SoundChain chain;
    chain.SetEqualizer(gainsDb);
    chain.EnableEqualizer(true);
    chain.Start(rateHz, channels);
    std::vector<qint16> block;
    bool isOther = false;
    for (auto _ : run) {
        if (isMoving) {
            EqualizerGains moved = gainsDb;
            moved[5] = isOther ? -6.0F : 6.0F;
            isOther = !isOther;
            chain.SetEqualizer(moved);
        }
        block = noise;
        chain.Process(block.data(), blockFrames);
        benchmark::DoNotOptimize(block.data());
    }
    run.SetItemsProcessed(run.iterations() * blockFrames * channels);
    run.counters["a_frame"] = benchmark::Counter(static_cast<double>(run.iterations() * blockFrames),
                                                 benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

BENCHMARK_CAPTURE(Run, flat_stereo, EqualizerGains{}, 2, false);
BENCHMARK_CAPTURE(Run, twelve_bands_stereo, Uneven(), 2, false);
BENCHMARK_CAPTURE(Run, twelve_bands_mono, Uneven(), 1, false);
BENCHMARK_CAPTURE(Run, moving_stereo, Uneven(), 2, true);

} // namespace

BENCHMARK_MAIN();
