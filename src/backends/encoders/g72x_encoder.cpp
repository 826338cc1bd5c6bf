#include "backends/encoders/g72x_encoder.h"

#include "backends/encoders/lavc_block_coder.h"

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

int SamplesToFillByte(int openBits, int bits) {
    return openBits == 0 ? 0 : (bitsPerByte - openBits + bits - 1) / bits;
}

// Up to 4 bits a sample, by libavcodec, which is the faster one.
class NarrowEncoder : public SampleEncoder {
public:
    explicit NarrowEncoder(const OutputFormat& format)
        : rateHz_(format.rateHz), channels_(format.channels), bits_(BitsOf(format)) {}

    EncoderInput Input() const override { return {rateHz_, channels_, false}; }
    Outcome Begin(QIODevice& out) override;
    Outcome WriteIntegers(const qint16* samples, qint64 frames) override;
    Outcome Finish() override;

private:
    LavcBlockCoder::Sink Sink() {
        return [this](const char* bytes, qint64 count) {
            return out_->write(bytes, count) == count ? Outcome::Ok : Outcome::WriteFailed;
        };
    }

    int rateHz_;
    int channels_;
    int bits_;
    QIODevice* out_ = nullptr;
    LavcBlockCoder coder_;
};

Outcome NarrowEncoder::Begin(QIODevice& out) {
    if (bits_ == 0 || rateHz_ < 1 || channels_ != 1) {
        return Outcome::NotSupported;
    }
    LavcBlockCoder::Setup setup;
    setup.codec = AV_CODEC_ID_ADPCM_G726;
    setup.rateHz = rateHz_;
    setup.channels = channels_;
    setup.bitrateBps = static_cast<qint64>(rateHz_) * bits_;
    setup.option = "code_size";
    setup.value = bits_;
    if (!coder_.Open(setup)) {
        return Outcome::NotSupported;
    }
    out_ = &out;
    return Outcome::Ok;
}

Outcome NarrowEncoder::WriteIntegers(const qint16* samples, qint64 frames) {
    return out_ != nullptr ? coder_.Write(samples, frames, Sink()) : Outcome::NotOpen;
}

Outcome NarrowEncoder::Finish() {
    if (out_ == nullptr) {
        return Outcome::NotOpen;
    }
    // The silence that fills up the last byte may reach into another one, which is left out.
    const int held = coder_.HeldFrames();
    const qint64 wholeBytes = (held * bits_ + bitsPerByte - 1) / bitsPerByte;
    const int frames = held + SamplesToFillByte(held * bits_ % bitsPerByte, bits_);
    return coder_.Flush(
        frames, [&](const char* bytes, qint64 count) { return Sink()(bytes, std::min(count, wholeBytes)); });
}

// 5 bits a sample, by libspandsp: what libavcodec writes at this depth, nobody else can read.
class WideEncoder : public SampleEncoder {
public:
    explicit WideEncoder(const OutputFormat& format)
        : rateHz_(format.rateHz), channels_(format.channels), bits_(BitsOf(format)) {}
    ~WideEncoder() override {
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

Outcome WideEncoder::Begin(QIODevice& out) {
    if (bits_ == 0 || rateHz_ < 1 || channels_ != 1) {
        return Outcome::NotSupported;
    }
    coder_ = g726_init(nullptr, standardRateHz * bits_, G726_ENCODING_LINEAR, G726_PACKING_LEFT);
    out_ = &out;
    return coder_ != nullptr ? Outcome::Ok : Outcome::NotSupported;
}

Outcome WideEncoder::Encode(const qint16* samples, int count) {
    // The coder may bring a byte whose first bits came with the piece before.
    coded_.resize(count * bits_ / bitsPerByte + 1);
    const int bytes = g726_encode(coder_, reinterpret_cast<uint8_t*>(coded_.data()), samples, count);
    openBits_ = (openBits_ + count * bits_) % bitsPerByte;
    return out_->write(coded_.constData(), bytes) == bytes ? Outcome::Ok : Outcome::WriteFailed;
}

Outcome WideEncoder::WriteIntegers(const qint16* samples, qint64 frames) {
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

Outcome WideEncoder::Finish() {
    if (coder_ == nullptr) {
        return Outcome::NotOpen;
    }
    // Bits beyond the byte stay in the coder.
    constexpr std::array<qint16, bitsPerByte> silence = {};
    return Encode(silence.data(), SamplesToFillByte(openBits_, bits_));
}

} // namespace

std::unique_ptr<SampleEncoder> MakeG72xEncoder(const OutputFormat& format) {
    constexpr int wideBits = 5;
    if (BitsOf(format) == wideBits) {
        return std::make_unique<WideEncoder>(format);
    }
    return std::make_unique<NarrowEncoder>(format);
}

} // namespace kestrune
