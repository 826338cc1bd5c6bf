#include "backends/spectrum/tx_spectrum.h"

extern "C" {
#include <libavutil/tx.h>
}

#include <algorithm>
#include <bit>
#include <cmath>
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
    const double sum = std::inner_product(samples.begin(), samples.end(), window_.begin(), 0.0);
    const double weight =
        std::accumulate(window_.begin(), window_.begin() + static_cast<std::ptrdiff_t>(samples.size()), 0.0);
    const auto mean = static_cast<float>(weight > 0 ? sum / weight : 0);
    for (size_t i = 0; i < samples.size(); ++i) {
        input_[i] = (samples[i] - mean) * window_[i];
    }
    std::fill(input_.begin() + static_cast<std::ptrdiff_t>(samples.size()), input_.end(), 0.0F);
    transform_(context_.get(), output_.data(), input_.data(), sizeof(float));
    for (size_t k = 0; k < levelsDb_.size(); ++k) {
        const float real = output_[2 * k];
        const float imaginary = output_[2 * k + 1];
        const float power = real * real + imaginary * imaginary;
        levelsDb_[k] = power > 0 ? std::max(spectrumFloorDb, 10 * std::log10(power)) : spectrumFloorDb;
    }
    return levelsDb_;
}

} // namespace kestrune
