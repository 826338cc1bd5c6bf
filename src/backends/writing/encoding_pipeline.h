// From the blocks of a writer to the samples that an encoder wants.
#pragma once

#include "backends/encoders/sample_encoder.h"

#include <QByteArray>

#include <memory>
#include <vector>

class QIODevice;

namespace kestrune {

class RateConverter;

// What the blocks of a writer hold.
struct SampleShape {
    int rateHz = 0; // 0 and below: that of the encoder
    int channels = 0;
    bool operator==(const SampleShape&) const = default;
};

// Blocks of 16-bit samples -> channels mixed -> rate converted -> encoder. Stereo becomes mono by the mean of
// both, mono becomes stereo by doubling. An encoder of integers gets the very samples where the rate is
// its own, and dithered ones (TPDF) where it is not; the mean of two integers is rounded toward zero. Order
// of calls: Begin, SetSource, any number of Write, Finish. After a call that is not Ok the others give the
// same outcome and do nothing. One thread at a time, which may change from call to call.
class EncodingPipeline {
public:
    explicit EncodingPipeline(std::unique_ptr<SampleEncoder> encoder); // not null
    ~EncodingPipeline();

    // As SampleEncoder::Begin.
    Outcome Begin(QIODevice& out);
    // Counts until the first block. Channels other than 1 and 2 are taken as the encoder's.
    void SetSource(const SampleShape& source);
    // A block need not end with a whole frame. NotSupported if the rate can't be converted.
    Outcome Write(const QByteArray& block);
    // Drops a frame that is not whole and brings the encoder to its end.
    Outcome Finish();

private:
    Outcome Start();
    Outcome WriteSlice(const qint16* samples, qint64 frames);
    Outcome WriteIntegers(const qint16* samples, qint64 frames);
    Outcome WriteConverted(const std::vector<float>& samples);
    void ToFloats(const qint16* samples, qint64 frames);
    void Dither(const std::vector<float>& samples, int copies);

    std::unique_ptr<SampleEncoder> encoder_;
    EncoderInput wanted_;
    SampleShape source_;
    Outcome outcome_ = Outcome::Ok;
    bool started_ = false;
    int middleChannels_ = 0;                   // of the samples while their rate is converted
    std::unique_ptr<RateConverter> converter_; // only between different rates
    quint64 ditheredSamples_ = 0;
    QByteArray carry_; // the beginning of a frame
    // Room that is used again from block to block.
    std::vector<float> floats_;
    std::vector<float> converted_;
    std::vector<float> doubled_;
    std::vector<qint16> integers_;
};

} // namespace kestrune
