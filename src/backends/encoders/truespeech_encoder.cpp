#include "backends/encoders/truespeech_encoder.h"

#include "backends/formats/wave_header.h"
#include "backends/speech/truespeech_coder.h"

#include <QByteArray>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <limits>

namespace kestrune {

namespace {

constexpr int bitsPerSecond = 8500;
// 32 bytes for 240 samples, rounded up.
constexpr quint32 bytesPerSecond = 1067;
constexpr quint32 formatBytes = 50;
constexpr quint32 factBytes = 4;

template <typename Number>
void Append(QByteArray& bytes, Number number) {
    std::array<char, sizeof(Number)> little;
    qToLittleEndian(number, little.data());
    bytes.append(little.data(), static_cast<qsizetype>(little.size()));
}

// All that stands before the blocks.
QByteArray Header(qint64 samples, qint64 blocks) {
    constexpr qint64 most = std::numeric_limits<quint32>::max();
    constexpr quint32 chunkHead = 8;
    constexpr quint32 behindRiff = 4 + 3 * chunkHead + formatBytes + factBytes;
    const auto dataBytes =
        static_cast<quint32>(std::min<qint64>(blocks * trueSpeechBlockBytes, most - behindRiff));
    QByteArray header("RIFF");
    Append<quint32>(header, behindRiff + dataBytes);
    header += "WAVEfmt ";
    Append<quint32>(header, formatBytes);
    Append<quint16>(header, WaveTagTrueSpeech);
    Append<quint16>(header, 1); // channel
    Append<quint32>(header, trueSpeechRateHz);
    Append<quint32>(header, bytesPerSecond);
    Append<quint16>(header, trueSpeechBlockBytes);
    Append<quint16>(header, 1);  // bits of a sample: less than two
    Append<quint16>(header, 32); // bytes that follow: version, samples of a block, and room
    Append<quint16>(header, 1);
    Append<quint16>(header, trueSpeechBlockSamples);
    header += QByteArray(28, '\0');
    header += "fact";
    Append<quint32>(header, factBytes);
    Append<quint32>(header, static_cast<quint32>(std::min(samples, most)));
    header += "data";
    Append<quint32>(header, dataBytes);
    return header;
}

class TrueSpeechEncoder : public SampleEncoder {
public:
    EncoderInput Input() const override { return {trueSpeechRateHz, 1, false}; }
    Outcome Begin(QIODevice& out) override;
    Outcome WriteIntegers(const qint16* samples, qint64 frames) override;
    Outcome Finish() override;

private:
    Outcome Write(const QByteArray& bytes);

    QIODevice* out_ = nullptr;
    TrueSpeechCoder coder_;
    // A block is coded with the one behind it in view.
    std::array<qint16, 2 * trueSpeechBlockSamples> waiting_ = {};
    size_t waitingSamples_ = 0;
    qint64 samples_ = 0;
    qint64 blocks_ = 0;

    TrueSpeechBytes EncodeFirstWaiting();
};

Outcome TrueSpeechEncoder::Write(const QByteArray& bytes) {
    return out_->write(bytes) == bytes.size() ? Outcome::Ok : Outcome::WriteFailed;
}

Outcome TrueSpeechEncoder::Begin(QIODevice& out) {
    out_ = &out;
    return Write(Header(0, 0));
}

TrueSpeechBytes TrueSpeechEncoder::EncodeFirstWaiting() {
    const std::span waiting(waiting_);
    const auto bytes =
        coder_.Encode(waiting.first<trueSpeechBlockSamples>(), waiting.last<trueSpeechBlockSamples>());
    const auto second = waiting_.begin() + trueSpeechBlockSamples;
    std::fill(std::copy(second, waiting_.end(), waiting_.begin()), waiting_.end(), qint16(0));
    waitingSamples_ -= std::min<size_t>(waitingSamples_, trueSpeechBlockSamples);
    ++blocks_;
    return bytes;
}

Outcome TrueSpeechEncoder::WriteIntegers(const qint16* samples, qint64 frames) {
    QByteArray coded;
    samples_ += frames;
    while (frames > 0) {
        const auto taken = std::min<qint64>(frames, static_cast<qint64>(waiting_.size() - waitingSamples_));
        std::copy_n(samples, taken, waiting_.begin() + static_cast<std::ptrdiff_t>(waitingSamples_));
        waitingSamples_ += static_cast<size_t>(taken);
        samples += taken;
        frames -= taken;
        if (waitingSamples_ == waiting_.size()) {
            const auto bytes = EncodeFirstWaiting();
            coded.append(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
        }
    }
    return Write(coded);
}

Outcome TrueSpeechEncoder::Finish() {
    QByteArray coded;
    while (waitingSamples_ > 0) {
        const auto bytes = EncodeFirstWaiting();
        coded.append(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    }
    const Outcome written = Write(coded);
    if (written != Outcome::Ok) {
        return written;
    }
    const qint64 end = out_->pos();
    return out_->seek(0) && Write(Header(samples_, blocks_)) == Outcome::Ok && out_->seek(end)
               ? Outcome::Ok
               : Outcome::WriteFailed;
}

} // namespace

OutputFormat TrueSpeechFormat() {
    return {FormatKind::TrueSpeech, trueSpeechRateHz, 1, 1, bitsPerSecond, RawPcm, WaveTagTrueSpeech};
}

std::unique_ptr<SampleEncoder> MakeTrueSpeechEncoder(const OutputFormat& /*format*/) {
    return std::make_unique<TrueSpeechEncoder>();
}

} // namespace kestrune
