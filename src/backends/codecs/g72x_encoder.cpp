#include "backends/codecs/g72x_encoder.h"

#include <QByteArray>
#include <QIODevice>

#include <spandsp.h>

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

// The coder counts its bit rate at the rate that the standard is made for, whatever rate the data has.
constexpr int standardRateHz = 8000;
constexpr qint64 pieceSamples = 16384;
constexpr int bitsPerByte = 8;

// 0 for what is none of the three kinds.
int BitsOf(const OutputFormat& format) {
    constexpr int g721Bits = 4;
    switch (format.kind) {
    case FormatKind::G721:
        return g721Bits;
    case FormatKind::G723:
        return format.bits == 3 || format.bits == 5 ? format.bits : 0;
    case FormatKind::G726:
        return format.bits >= 2 && format.bits <= 5 ? format.bits : 0;
    default:
        return 0;
    }
}

class G72xEncoder : public SampleEncoder {
public:
    explicit G72xEncoder(const OutputFormat& format)
        : rateHz_(format.rateHz), channels_(format.channels), bits_(BitsOf(format)) {}
    ~G72xEncoder() override {
        if (coder_ != nullptr) {
            g726_free(coder_);
        }
    }

    EncoderInput Input() const override { return {rateHz_, channels_, false}; }
    Outcome Begin(QIODevice& out) override;
    Outcome WriteIntegers(const qint16* samples, qint64 frames) override;
    Outcome Finish() override;

private:
    Outcome Encode(const qint16* samples, int count);

    int rateHz_;
    int channels_;
    int bits_;
    QIODevice* out_ = nullptr;
    g726_state_t* coder_ = nullptr;
    QByteArray coded_;
    int openBits_ = 0; // of the last byte, which the coder still holds
};

Outcome G72xEncoder::Begin(QIODevice& out) {
    if (bits_ == 0 || rateHz_ < 1 || channels_ != 1) {
        return Outcome::NotSupported;
    }
    coder_ = g726_init(nullptr, standardRateHz * bits_, G726_ENCODING_LINEAR, G726_PACKING_LEFT);
    out_ = &out;
    return coder_ != nullptr ? Outcome::Ok : Outcome::NotSupported;
}

Outcome G72xEncoder::Encode(const qint16* samples, int count) {
    // The coder may bring a byte whose first bits came with the piece before.
    coded_.resize(count * bits_ / bitsPerByte + 1);
    const int bytes = g726_encode(coder_, reinterpret_cast<uint8_t*>(coded_.data()), samples, count);
    openBits_ = (openBits_ + count * bits_) % bitsPerByte;
    return out_->write(coded_.constData(), bytes) == bytes ? Outcome::Ok : Outcome::WriteFailed;
}

Outcome G72xEncoder::WriteIntegers(const qint16* samples, qint64 frames) {
    if (coder_ == nullptr) {
        return Outcome::NotOpen;
    }
    for (qint64 at = 0; at < frames; at += pieceSamples) {
        const int count = static_cast<int>(std::min(pieceSamples, frames - at));
        if (const Outcome outcome = Encode(samples + at, count); outcome != Outcome::Ok) {
            return outcome;
        }
    }
    return Outcome::Ok;
}

Outcome G72xEncoder::Finish() {
    if (coder_ == nullptr) {
        return Outcome::NotOpen;
    }
    if (openBits_ == 0) {
        return Outcome::Ok;
    }
    // Enough to fill the byte; bits beyond it stay in the coder.
    constexpr std::array<qint16, bitsPerByte> silence = {};
    return Encode(silence.data(), (bitsPerByte - openBits_ + bits_ - 1) / bits_);
}

} // namespace

std::unique_ptr<SampleEncoder> MakeG72xEncoder(const OutputFormat& format) {
    return std::make_unique<G72xEncoder>(format);
}

} // namespace kestrune
