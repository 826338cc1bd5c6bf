// Samples of one rate turned into samples of another.
#pragma once

#include <QtGlobal>

#include <memory>
#include <vector>

struct SwrContext;

namespace kestrune {

// Band-limited conversion by the soxr engine of libswresample. The output begins where the input begins, and
// its length is the input's length times the ratio of the rates, rounded to a frame. Up to 0.91 of half the
// lower rate passes; images and what would fold back stay below -100 dB. Samples are floats, full scale
// 1.0; peaks between samples come out above it. One thread at a time. Order of calls: any number of Convert,
// one Finish.
class RateConverter {
public:
    // Rates in Hz, above 0; `channels` is 1 or 2. Null if the engine refuses the ratio.
    static std::unique_ptr<RateConverter> Make(int fromHz, int toHz, int channels);
    ~RateConverter();
    RateConverter(const RateConverter&) = delete;
    RateConverter& operator=(const RateConverter&) = delete;

    // Takes interleaved frames and replaces `out` by those that are ready; the engine holds some back. False
    // if the engine failed.
    bool Convert(const float* samples, qint64 frames, std::vector<float>& out);
    // Replaces `out` by all that was held back.
    bool Finish(std::vector<float>& out);

private:
    RateConverter(SwrContext* engine, int fromHz, int toHz, int channels);
    // Frames that the samples taken so far come to.
    qint64 WholeFrames() const;
    bool Run(const float* samples, int frames, std::vector<float>& out, qint64& got);

    SwrContext* engine_; // owned
    int fromHz_;
    int toHz_;
    int channels_;
    qint64 takenFrames_ = 0;
    qint64 givenFrames_ = 0;
};

} // namespace kestrune
