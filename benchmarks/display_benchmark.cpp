// Times one step of the display, from samples to painted pixels, for each type at its usual period:
// DrawBlock, then what is pending, as each tick of the player does it. QT_SCALE_FACTOR=2 gives the figures of
// a fine screen.
#include "backends/spectrum/tx_spectrum.h"
#include "display/audio_display_view.h"
#include "support/fake_clock.h"

#include <QApplication>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <random>
#include <vector>

namespace {

using namespace kestrune;

constexpr double rateHz = 44100;
constexpr int meterPeriodMs = 30;
constexpr int spectrumPeriodMs = 80;
constexpr int blockCount = 64;

// Music of a kind: a moving chord over noise.
std::vector<QList<qint16>> MakeBlocks(int frames) {
    std::mt19937 random(3);
    std::normal_distribution<double> noise(0, 600);
    std::vector<QList<qint16>> blocks;
    for (int number = 0; number < blockCount; ++number) {
        QList<qint16> block;
        const double beat = 0.3 + 0.7 * std::exp(-(number % 8) / 3.0);
        for (int i = 0; i < frames; ++i) {
            double sample = noise(random);
            for (const double frequencyHz : {55.0, 220.0, 277.2, 440.0, 1760.0, 5274.0}) {
                sample += 4000 * beat *
                          std::sin(2 * std::numbers::pi * frequencyHz * (1 + number / 200.0) * i / rateHz);
            }
            const auto left = static_cast<qint16>(std::clamp(sample, -32768.0, 32767.0));
            block << left << static_cast<qint16>(left / 2);
        }
        blocks.push_back(block);
    }
    return blocks;
}

// Type, FFT size.
void DrawAndPaint(benchmark::State& run) {
    const auto type = static_cast<qint32>(run.range(0));
    const auto fftSize = static_cast<qint32>(run.range(1));
    const int periodMs = type < FftFire ? meterPeriodMs : spectrumPeriodMs;
    const std::vector<QList<qint16>> blocks = MakeBlocks(fftSize);
    TxSpectrum spectrum;
    FakeClock clock;
    AudioDisplay display(spectrum, clock);
    display.SetProperty(DisplayKind, type);
    display.SetProperty(DisplayFftSize, fftSize);
    AudioDisplayView view(display);
    view.resize(150, 62);
    view.show();
    QApplication::processEvents();
    size_t next = 0;
    for (auto step : run) {
        static_cast<void>(step);
        clock.monotonicMs += periodMs;
        display.DrawBlock(blocks[next++ % blocks.size()]);
        QApplication::processEvents();
    }
    // Seconds of a core for each second of playing. A block of a spectrum is painted twice, the second time
    // without its analysis; this counts two whole steps, so it errs on the high side.
    const int stepsOfBlock = type < FftFire ? 1 : 2;
    run.counters["share_of_a_core"] =
        benchmark::Counter(static_cast<double>(run.iterations()) * periodMs / 1000 / stepsOfBlock,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(DrawAndPaint)
    ->ArgNames({"type", "fft"})
    ->ArgsProduct({{0, 1, 2, 3, 4}, {4096}})
    ->Args({4, 16384})
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
