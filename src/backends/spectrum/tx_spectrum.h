// The spectrum by the Fourier transform of libavutil.
#pragma once

#include "components/spectrum.h"

#include <memory>
#include <vector>

struct AVTXContext;

namespace kestrune {

class TxSpectrum : public Spectrum {
public:
    TxSpectrum();
    ~TxSpectrum() override;
    TxSpectrum(const TxSpectrum&) = delete;
    TxSpectrum& operator=(const TxSpectrum&) = delete;

    Outcome SetSize(int samples) override;
    int Size() const override { return size_; }
    std::span<const float> LevelsDb(std::span<const float> samples) override;

private:
    using Transform = void (*)(AVTXContext*, void*, void*, std::ptrdiff_t);
    struct FreeContext {
        void operator()(AVTXContext* context) const;
    };

    int size_ = 0;
    std::unique_ptr<AVTXContext, FreeContext> context_;
    Transform transform_ = nullptr;
    std::vector<float> window_;
    double windowSum_ = 0;
    std::vector<float> input_;
    std::vector<float> output_; // real and imaginary parts in turn
    std::vector<float> levelsDb_;
};

} // namespace kestrune
