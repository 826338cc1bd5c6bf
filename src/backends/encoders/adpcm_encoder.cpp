#include "backends/encoders/adpcm_encoder.h"

#include "backends/encoders/lavc_block_coder.h"
#include "backends/encoders/wave_writer.h"
#include "backends/formats/wave_header.h"

#include <QIODevice>
#include <QtEndian>

#include <array>
#include <optional>

namespace kestrune {

namespace {

constexpr int bitsPerSample = 4;

template <typename Number>
void AppendLittle(QByteArray& bytes, Number value) {
    const Number little = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

// 256 bytes a channel up to 11,025 Hz, and twice that for each doubling of the rate, as is usual: at the
// usual rates a block then lasts 42 to 63 ms.
int UsualBlockBytes(int rateHz, int channels) {
    constexpr int lowRateHz = 11025;
    constexpr int lowRateBytes = 256;
    constexpr int mostDoublings = 2;
    int doublings = 0;
    while (doublings < mostDoublings && rateHz > (lowRateHz << doublings)) {
        ++doublings;
    }
    return (lowRateBytes << doublings) * channels;
}

int BlockFrames(quint16 tag, int blockBytes, int channels) {
    if (tag == WaveTagImaAdpcm) {
        constexpr int headBytes = 4;
        return (blockBytes - headBytes * channels) * 2 / channels + 1;
    }
    constexpr int headBytes = 7;
    return (blockBytes - headBytes * channels) * 2 / channels + 2;
}

// The coefficients that every file of the Microsoft coding has to tell, although they are always these.
QByteArray MsCoefficients() {
    constexpr std::array<qint16, 14> pairs = {256, 0, 512, -256, 0, 0, 192, 64, 240, 0, 460, -208, 392, -232};
    QByteArray bytes;
    AppendLittle<quint16>(bytes, pairs.size() / 2);
    for (const qint16 value : pairs) {
        AppendLittle(bytes, value);
    }
    return bytes;
}

WaveFormatChunk AdpcmFormat(quint16 tag, int rateHz, int channels, int blockBytes) {
    const int blockFrames = BlockFrames(tag, blockBytes, channels);
    WaveFormatChunk format;
    format.tag = tag;
    format.channels = channels;
    format.rateHz = rateHz;
    format.bytesPerSecond = static_cast<quint32>(static_cast<qint64>(rateHz) * blockBytes / blockFrames);
    format.blockBytes = blockBytes;
    format.bits = bitsPerSample;
    AppendLittle(format.extra, static_cast<quint16>(blockFrames));
    if (tag == WaveTagMsAdpcm) {
        format.extra += MsCoefficients();
    }
    return format;
}

class AdpcmEncoder : public SampleEncoder {
public:
    AdpcmEncoder(quint16 tag, int rateHz, int channels, int blockBytes)
        : tag_(tag), rateHz_(rateHz), channels_(channels), blockBytes_(blockBytes) {}

    EncoderInput Input() const override { return {rateHz_, channels_, false}; }
    Outcome Begin(QIODevice& out) override;
    Outcome WriteIntegers(const qint16* samples, qint64 frames) override;
    Outcome Finish() override;

private:
    bool OpenCoder();
    // Blocks on their way to the file.
    LavcBlockCoder::Sink Sink() {
        return [this](const char* bytes, qint64 count) { return wave_->Write(bytes, count); };
    }

    quint16 tag_;
    int rateHz_;
    int channels_;
    int blockBytes_;
    LavcBlockCoder coder_;
    std::optional<WaveWriter> wave_;
    qint64 frames_ = 0;
};

bool AdpcmEncoder::OpenCoder() {
    LavcBlockCoder::Setup setup;
    setup.codec = tag_ == WaveTagImaAdpcm ? AV_CODEC_ID_ADPCM_IMA_WAV : AV_CODEC_ID_ADPCM_MS;
    setup.rateHz = rateHz_;
    setup.channels = channels_;
    setup.option = "block_size";
    setup.value = blockBytes_;
    return coder_.Open(setup) && coder_.BlockFrames() == BlockFrames(tag_, blockBytes_, channels_);
}

Outcome AdpcmEncoder::Begin(QIODevice& out) {
    const bool known = tag_ == WaveTagImaAdpcm || tag_ == WaveTagMsAdpcm;
    if (!known || channels_ < 1 || channels_ > 2 || rateHz_ < 1 || !IsAdpcmBlock(blockBytes_) ||
        !OpenCoder()) {
        return Outcome::NotSupported;
    }
    const WaveFormatChunk format = AdpcmFormat(tag_, rateHz_, channels_, blockBytes_);
    return FitsWaveHeader(format) ? wave_.emplace(format).Begin(out) : Outcome::NotSupported;
}

Outcome AdpcmEncoder::WriteIntegers(const qint16* samples, qint64 frames) {
    if (!wave_) {
        return Outcome::NotOpen;
    }
    frames_ += frames;
    return coder_.Write(samples, frames, Sink());
}

Outcome AdpcmEncoder::Finish() {
    if (!wave_) {
        return Outcome::NotOpen;
    }
    const Outcome outcome = coder_.Flush(coder_.BlockFrames(), Sink());
    return outcome == Outcome::Ok ? wave_->Finish(frames_) : outcome;
}

// Of the "fmt " chunk of a template; 0 if it is too short to tell.
int TemplateBlockBytes(const QByteArray& chunk) {
    constexpr qsizetype at = 12;
    return chunk.size() >= at + 2 ? qFromLittleEndian<quint16>(chunk.constData() + at) : 0;
}

} // namespace

// The limits of the coder.
bool IsAdpcmBlock(int blockBytes) {
    constexpr int leastBytes = 32;
    constexpr int mostBytes = 8192;
    return blockBytes >= leastBytes && blockBytes <= mostBytes && (blockBytes & (blockBytes - 1)) == 0;
}

std::unique_ptr<SampleEncoder> MakeAdpcmEncoder(const OutputFormat& format) {
    const bool chosen = format.kind == FormatKind::Template;
    const quint16 tag = chosen ? format.waveTag : quint16{WaveTagImaAdpcm};
    const int blockBytes =
        chosen ? TemplateBlockBytes(format.waveFormat) : UsualBlockBytes(format.rateHz, format.channels);
    return std::make_unique<AdpcmEncoder>(tag, format.rateHz, format.channels, blockBytes);
}

} // namespace kestrune
