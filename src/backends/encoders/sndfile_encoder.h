// What the encoders of libsndfile share: mono samples through a device.
#pragma once

#include "backends/encoders/sample_encoder.h"

#include <memory>
#include <vector>

struct sf_private_tag;

namespace kestrune {

class SndfileEncoder : public SampleEncoder {
public:
    // `format` is a type and a subtype of the library, such as SF_FORMAT_WAV | SF_FORMAT_GSM610. The library
    // is given whole groups of `groupSamples` only, since some of its coders fill up each call on its own;
    // the last group is filled up with silence.
    SndfileEncoder(int format, int rateHz, int channels, int groupSamples = 1);
    ~SndfileEncoder() override;

    EncoderInput Input() const override { return {rateHz_, channels_, false}; }
    Outcome Begin(QIODevice& out) override;
    Outcome WriteIntegers(const qint16* samples, qint64 frames) override;
    Outcome Finish() override;

private:
    class Target;

    bool Put(const qint16* samples, qint64 count);

    int format_;
    int rateHz_;
    int channels_;
    size_t groupSamples_;
    std::vector<qint16> held_; // fewer than a group
    std::unique_ptr<Target> target_;
    sf_private_tag* file_ = nullptr;
};

} // namespace kestrune
