// What the encoders of libsndfile share: mono samples through a device.
#pragma once

#include "backends/codecs/sample_encoder.h"

#include <memory>

struct sf_private_tag;

namespace kestrune {

class SndfileEncoder : public SampleEncoder {
public:
    // `format` is a type and a subtype of the library, such as SF_FORMAT_WAV | SF_FORMAT_GSM610.
    SndfileEncoder(int format, int rateHz, int channels);
    ~SndfileEncoder() override;

    EncoderInput Input() const override { return {rateHz_, channels_, false}; }
    Outcome Begin(QIODevice& out) override;
    Outcome WriteIntegers(const qint16* samples, qint64 frames) override;
    Outcome Finish() override;

private:
    class Target;

    int format_;
    int rateHz_;
    int channels_;
    std::unique_ptr<Target> target_;
    sf_private_tag* file_ = nullptr;
};

} // namespace kestrune
