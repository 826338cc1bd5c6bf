#include "backends/spectrum/tx_spectrum.h"

extern "C" {
#include <libavutil/tx.h>
}

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <numeric>

namespace kestrune {

namespace {

constexpr int startSize = 4096;

// Four-term Blackman-Harris window with side lobes below -92 dB (F. J. Harris, "On the use of windows for
// harmonic analysis with the discrete Fourier transform", 1978). It falls off before its side lobes would
// show on a scale of 72 dB, and its main lobe is close to a parabola in dB.
double BlackmanHarris(int i, int size) {
    const double phase = 2 * std::numbers::pi * i / size;
    return 0.35875 - 0.48829 * std::cos(phase) + 0.14128 * std::cos(2 * phase) -
           0.01168 * std::cos(3 * phase);
}

// 10 log10 of a positive power, within 0.0003 dB; far below the floor for 0. The exponent of the number
// counts the octaves; the polynomial meets log2(1 + t) at six Chebyshev nodes between 0 and 1, the last of
// them moved to 1, so that octaves join without a step. Without branches, so that the compiler does several
// at once.
float DbOfPower(float power) {
    constexpr float dbOfOctave = 3.01029996F;
    constexpr std::uint32_t mantissa = 0x007FFFFFU;
    constexpr std::uint32_t one = 0x3F800000U;
    const auto bits = std::bit_cast<std::uint32_t>(power);
    const auto octaves = static_cast<float>(static_cast<std::int32_t>(bits >> 23U) - 127);
    const float t = std::bit_cast<float>((bits & mantissa) | one) - 1;
    const float part =
        t *
        (1.44268040F +
         t * (-0.72029882F + t * (0.46812545F + t * (-0.29999267F + t * (0.14241794F + t * -0.03293230F)))));
    return dbOfOctave * (octaves + part);
}

// The sum of products, in several sums side by side: one alone waits for each addition.
double WeightedSum(std::span<const float> samples, const float* weights) {
    constexpr size_t lanes = 16;
    std::array<float, lanes> sums{};
    const size_t whole = samples.size() - samples.size() % lanes;
    for (size_t i = 0; i < whole; i += lanes) {
        for (size_t lane = 0; lane < lanes; ++lane) {
            sums[lane] += samples[i + lane] * weights[i + lane];
        }
    }
    const double rest = std::inner_product(samples.begin() + static_cast<std::ptrdiff_t>(whole),
                                           samples.end(), weights + whole, 0.0);
    return std::accumulate(sums.begin(), sums.end(), rest);
}

// Scaled so that a full-scale sine on a bin comes out as 1.
std::vector<float> ScaledWindow(int size) {
    std::vector<double> window(static_cast<size_t>(size));
    for (int i = 0; i < size; ++i) {
        window[static_cast<size_t>(i)] = BlackmanHarris(i, size);
    }
    const double scale = 2 / std::accumulate(window.begin(), window.end(), 0.0);
    std::vector<float> scaled(window.size());
    std::transform(window.begin(), window.end(), scaled.begin(),
                   [scale](double value) { return static_cast<float>(value * scale); });
    return scaled;
}

} // namespace

void TxSpectrum::FreeContext::operator()(AVTXContext* context) const {
    av_tx_uninit(&context);
}

TxSpectrum::TxSpectrum() {
    SetSize(startSize);
}

TxSpectrum::~TxSpectrum() = default;

Outcome TxSpectrum::SetSize(int samples) {
    if (samples < leastSpectrumSize || samples > largestSpectrumSize ||
        !std::has_single_bit(static_cast<unsigned>(samples))) {
        return Outcome::NotSupported;
    }
    if (samples == size_) {
        return Outcome::Ok;
    }
    AVTXContext* context = nullptr;
    Transform transform = nullptr;
    const float scale = 1;
    // The vectors' own alignment is all that it gets.
    if (av_tx_init(&context, &transform, AV_TX_FLOAT_RDFT, 0, samples, &scale, AV_TX_UNALIGNED) < 0) {
        return Outcome::NotSupported;
    }
    context_.reset(context);
    transform_ = transform;
    size_ = samples;
    window_ = ScaledWindow(samples);
    windowSum_ = std::accumulate(window_.begin(), window_.end(), 0.0);
    input_.assign(static_cast<size_t>(samples), 0);
    output_.assign(static_cast<size_t>(samples) + 2, 0);
    levelsDb_.assign(static_cast<size_t>(samples) / 2 + 1, spectrumFloorDb);
    return Outcome::Ok;
}

std::span<const float> TxSpectrum::LevelsDb(std::span<const float> samples) {
    if (samples.size() > input_.size()) {
        samples = samples.last(input_.size());
    }
    if (samples.empty() || !context_) {
        std::fill(levelsDb_.begin(), levelsDb_.end(), spectrumFloorDb);
        return levelsDb_;
    }
    // Weighted by the window: a plain mean of a sine that does not end on a whole period would put its own
    // trace into the lowest bins.
    const double sum = WeightedSum(samples, window_.data());
    const double weight =
        samples.size() == window_.size()
            ? windowSum_
            : std::accumulate(window_.begin(), window_.begin() + static_cast<std::ptrdiff_t>(samples.size()),
                              0.0);
    const auto mean = static_cast<float>(weight > 0 ? sum / weight : 0);
    for (size_t i = 0; i < samples.size(); ++i) {
        input_[i] = (samples[i] - mean) * window_[i];
    }
    std::fill(input_.begin() + static_cast<std::ptrdiff_t>(samples.size()), input_.end(), 0.0F);
    transform_(context_.get(), output_.data(), input_.data(), sizeof(float));
    for (size_t k = 0; k < levelsDb_.size(); ++k) {
        const float real = output_[2 * k];
        const float imaginary = output_[2 * k + 1];
        const float level = DbOfPower(real * real + imaginary * imaginary);
        levelsDb_[k] = level > spectrumFloorDb ? level : spectrumFloorDb;
    }
    return levelsDb_;
}

} // namespace kestrune
