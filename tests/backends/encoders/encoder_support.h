// Encoders run without a file.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <QByteArray>
#include <QIODevice>

#include <functional>
#include <memory>
#include <vector>

namespace kestrune {

using EncoderMaker = std::function<std::unique_ptr<SampleEncoder>(const OutputFormat&)>;

// One encoder with a format that it takes.
struct EncoderCase {
    const char* name;
    EncoderMaker make;
    OutputFormat format;
};
// All of the encoders that need no other module.
std::vector<EncoderCase> SimpleEncoders();

OutputFormat FormatFor(FormatKind kind, int rateHz, int channels, int bits);
OutputFormat RawFormat(qint32 type, int rateHz, int channels, int bits);

// All that an encoder writes of 16-bit samples, handed over as it wants them, in pieces of `pieceFrames`;
// 0 for pieces of odd sizes.
QByteArray Encoded(SampleEncoder& encoder, const std::vector<qint16>& samples, qint64 pieceFrames = 4096);

// Takes all and keeps nothing, up to `room` bytes; then it refuses.
class SwallowingDevice : public QIODevice {
public:
    explicit SwallowingDevice(qint64 room);
    qint64 size() const override { return size_; }
    qint64 Written() const { return written_; }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 count) override;

private:
    qint64 room_;
    qint64 size_ = 0;
    qint64 written_ = 0;
};

} // namespace kestrune
