#include "backends/encoders/pcm_encoder.h"

#include "backends/encoders/wave_writer.h"
#include "backends/formats/dither.h"
#include "backends/formats/pcm_coding.h"
#include "backends/formats/wave_header.h"

#include <QIODevice>
#include <QtEndian>

#include <spandsp.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace kestrune {

namespace {

constexpr qint64 pieceSamples = 16384;
constexpr int codes = 256;
constexpr int levels = 65536;
constexpr int lowestLevel = -32768;

std::optional<PcmCoding> CodingOf(const OutputFormat& format) {
    switch (format.kind) {
    case FormatKind::Raw:
        return RawPcmCoding(format);
    case FormatKind::Pcm:
        return IntegerPcmCoding(format.bits);
    default:
        return WavePcmCoding(format.waveTag, format.bits);
    }
}

WaveFormatChunk WaveFormatOf(PcmCoding coding, const OutputFormat& format) {
    constexpr int companded = 8;
    switch (coding) {
    case PcmCoding::ALaw:
        return PlainWaveFormat(WaveTagALaw, format.channels, format.rateHz, companded);
    case PcmCoding::MuLaw:
        return PlainWaveFormat(WaveTagMuLaw, format.channels, format.rateHz, companded);
    case PcmCoding::Float32:
    case PcmCoding::Float64:
        return PlainWaveFormat(WaveTagFloat, format.channels, format.rateHz, format.bits);
    default:
        return PlainWaveFormat(WaveTagPcm, format.channels, format.rateHz, format.bits);
    }
}

bool IsDeep(PcmCoding coding) {
    return coding == PcmCoding::Signed24 || coding == PcmCoding::Signed32 || coding == PcmCoding::Float32 ||
           coding == PcmCoding::Float64;
}

// For each 16-bit sample, from the lowest on, the code whose decoded value is nearest.
std::vector<uint8_t> NearestCodes(PcmCoding coding) {
    struct Step {
        int level;
        uint8_t code;
    };
    std::vector<Step> steps;
    for (int code = 0; code < codes; ++code) {
        const auto byte = static_cast<uint8_t>(code);
        steps.push_back({coding == PcmCoding::ALaw ? alaw_to_linear(byte) : ulaw_to_linear(byte), byte});
    }
    // Of the two codes of zero in mu-law the usual one is the higher.
    std::sort(steps.begin(), steps.end(), [](const Step& one, const Step& other) {
        return one.level != other.level ? one.level < other.level : one.code > other.code;
    });
    const auto same = [](const Step& one, const Step& other) { return one.level == other.level; };
    steps.erase(std::unique(steps.begin(), steps.end(), same), steps.end());
    std::vector<uint8_t> nearest(levels);
    size_t at = 0;
    for (int level = lowestLevel; level < lowestLevel + levels; ++level) {
        while (at + 1 < steps.size() &&
               std::abs(steps[at + 1].level - level) < std::abs(steps[at].level - level)) {
            ++at;
        }
        nearest[static_cast<size_t>(level - lowestLevel)] = steps[at].code;
    }
    return nearest;
}

// 16 bits to 8, as the unsigned bytes of a file.
uint8_t Byte(qint16 sample, quint64 sampleIndex) {
    constexpr int step = 256;
    constexpr int middle = 128;
    if (sample % step == 0) {
        return static_cast<uint8_t>(sample / step + middle);
    }
    const double noisy = static_cast<double>(sample) / step + TriangularNoise(sampleIndex);
    return static_cast<uint8_t>(std::clamp<long>(std::lround(noisy), -middle, middle - 1) + middle);
}

// A float brought to integers of `bits`; what is not a number becomes silence.
qint32 Integer(float sample, int bits) {
    const double full = std::ldexp(1.0, bits - 1);
    const double value = static_cast<double>(sample) * full;
    return std::isnan(value) ? 0 : static_cast<qint32>(std::clamp(std::nearbyint(value), -full, full - 1.0));
}

class PcmEncoder : public SampleEncoder {
public:
    explicit PcmEncoder(const OutputFormat& format) : format_(format), coding_(CodingOf(format)) {}

    EncoderInput Input() const override {
        return {format_.rateHz, format_.channels, coding_ && IsDeep(*coding_)};
    }
    Outcome Begin(QIODevice& out) override;
    Outcome WriteIntegers(const qint16* samples, qint64 frames) override;
    Outcome WriteFloats(const float* samples, qint64 frames) override;
    Outcome Finish() override;

private:
    void PutIntegers(const qint16* samples, qint64 count);
    void PutFloats(const float* samples, qint64 count);
    Outcome WritePiece();

    OutputFormat format_;
    std::optional<PcmCoding> coding_;
    std::optional<WaveWriter> wave_; // unless headerless
    QIODevice* out_ = nullptr;
    std::vector<uint8_t> nearestCodes_;
    QByteArray piece_; // as it is stored
    quint64 samples_ = 0;
};

Outcome PcmEncoder::Begin(QIODevice& out) {
    if (!coding_) {
        return Outcome::NotSupported;
    }
    const WaveFormatChunk wave = WaveFormatOf(*coding_, format_);
    if (!FitsWaveHeader(wave)) {
        return Outcome::NotSupported;
    }
    if (*coding_ == PcmCoding::ALaw || *coding_ == PcmCoding::MuLaw) {
        nearestCodes_ = NearestCodes(*coding_);
    }
    out_ = &out;
    if (format_.kind == FormatKind::Raw) {
        return Outcome::Ok;
    }
    return wave_.emplace(wave).Begin(out);
}

Outcome PcmEncoder::WritePiece() {
    if (wave_) {
        return wave_->Write(piece_.constData(), piece_.size());
    }
    return out_->write(piece_) == piece_.size() ? Outcome::Ok : Outcome::WriteFailed;
}

void PcmEncoder::PutIntegers(const qint16* samples, qint64 count) {
    if (*coding_ == PcmCoding::Signed16) {
        piece_.resize(count * static_cast<qint64>(sizeof(qint16)));
        qToLittleEndian<qint16>(samples, count, piece_.data());
        return;
    }
    piece_.resize(count);
    auto* const bytes = reinterpret_cast<uint8_t*>(piece_.data());
    for (qint64 at = 0; at < count; ++at) {
        bytes[at] = *coding_ == PcmCoding::Unsigned8
                        ? Byte(samples[at], samples_ + static_cast<quint64>(at))
                        : nearestCodes_[static_cast<size_t>(samples[at] - lowestLevel)];
    }
}

void PcmEncoder::PutFloats(const float* samples, qint64 count) {
    const int bytes = format_.bits / 8;
    piece_.resize(count * bytes);
    char* out = piece_.data();
    for (qint64 at = 0; at < count; ++at, out += bytes) {
        if (*coding_ == PcmCoding::Float32) {
            qToLittleEndian(samples[at], out);
        } else if (*coding_ == PcmCoding::Float64) {
            qToLittleEndian(static_cast<double>(samples[at]), out);
        } else if (*coding_ == PcmCoding::Signed32) {
            qToLittleEndian(Integer(samples[at], 32), out);
        } else {
            const qint32 little = qToLittleEndian(Integer(samples[at], 24));
            std::memcpy(out, &little, 3);
        }
    }
}

Outcome PcmEncoder::WriteIntegers(const qint16* samples, qint64 frames) {
    if (out_ == nullptr || IsDeep(*coding_)) {
        return Outcome::NotOpen;
    }
    const qint64 count = frames * format_.channels;
    for (qint64 at = 0; at < count; at += pieceSamples) {
        const qint64 part = std::min(pieceSamples, count - at);
        PutIntegers(samples + at, part);
        if (const Outcome outcome = WritePiece(); outcome != Outcome::Ok) {
            return outcome;
        }
        samples_ += static_cast<quint64>(part);
    }
    return Outcome::Ok;
}

Outcome PcmEncoder::WriteFloats(const float* samples, qint64 frames) {
    if (out_ == nullptr || !IsDeep(*coding_)) {
        return Outcome::NotOpen;
    }
    const qint64 count = frames * format_.channels;
    for (qint64 at = 0; at < count; at += pieceSamples) {
        const qint64 part = std::min(pieceSamples, count - at);
        PutFloats(samples + at, part);
        if (const Outcome outcome = WritePiece(); outcome != Outcome::Ok) {
            return outcome;
        }
        samples_ += static_cast<quint64>(part);
    }
    return Outcome::Ok;
}

Outcome PcmEncoder::Finish() {
    if (out_ == nullptr) {
        return Outcome::NotOpen;
    }
    const qint64 frames = static_cast<qint64>(samples_) / format_.channels;
    return wave_ ? wave_->Finish(frames) : Outcome::Ok;
}

} // namespace

std::unique_ptr<SampleEncoder> MakePcmEncoder(const OutputFormat& format) {
    return std::make_unique<PcmEncoder>(format);
}

} // namespace kestrune
