#include "backends/codecs/adpcm_encoder.h"

#include "backends/codecs/lavc_decoder.h"
#include "backends/codecs/wave_header.h"
#include "backends/codecs/wave_writer.h"

#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

extern "C" {
#include <libavutil/opt.h>
}

namespace kestrune {

namespace {

struct ContextDeleter {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
using ContextPtr = std::unique_ptr<AVCodecContext, ContextDeleter>;

constexpr int bitsPerSample = 4;

template <typename Number>
void AppendLittle(QByteArray& bytes, Number value) {
    const Number little = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

// 256 bytes a channel up to 11,025 Hz, and twice that for each doubling of the rate: the sizes of the usual
// writers, which keep a block at some 25 to 45 ms.
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
    bool MakeFrame();
    void Take(const qint16* samples, int count);
    Outcome EncodeBlock();

    quint16 tag_;
    int rateHz_;
    int channels_;
    int blockBytes_;
    std::optional<WaveWriter> wave_;
    ContextPtr coder_;
    FramePtr frame_; // the block that is being filled, a plane a channel
    PacketPtr packet_;
    int filled_ = 0; // frames of the block
    qint64 frames_ = 0;
};

bool AdpcmEncoder::OpenCoder() {
    const AVCodecID id = tag_ == WaveTagImaAdpcm ? AV_CODEC_ID_ADPCM_IMA_WAV : AV_CODEC_ID_ADPCM_MS;
    const AVCodec* const codec = avcodec_find_encoder(id);
    coder_.reset(codec != nullptr ? avcodec_alloc_context3(codec) : nullptr);
    if (!coder_) {
        return false;
    }
    coder_->sample_fmt = codec->sample_fmts[0];
    coder_->sample_rate = rateHz_;
    coder_->time_base = {1, rateHz_};
    av_channel_layout_default(&coder_->ch_layout, channels_);
    const bool known = coder_->sample_fmt == AV_SAMPLE_FMT_S16 || coder_->sample_fmt == AV_SAMPLE_FMT_S16P;
    return known && av_opt_set_int(coder_->priv_data, "block_size", blockBytes_, 0) >= 0 &&
           avcodec_open2(coder_.get(), codec, nullptr) >= 0 &&
           coder_->frame_size == BlockFrames(tag_, blockBytes_, channels_);
}

bool AdpcmEncoder::MakeFrame() {
    frame_.reset(av_frame_alloc());
    packet_.reset(av_packet_alloc());
    if (!frame_ || !packet_) {
        return false;
    }
    frame_->format = coder_->sample_fmt;
    frame_->sample_rate = rateHz_;
    frame_->nb_samples = coder_->frame_size;
    return av_channel_layout_copy(&frame_->ch_layout, &coder_->ch_layout) >= 0 &&
           av_frame_get_buffer(frame_.get(), 0) >= 0;
}

Outcome AdpcmEncoder::Begin(QIODevice& out) {
    const bool known = tag_ == WaveTagImaAdpcm || tag_ == WaveTagMsAdpcm;
    if (!known || channels_ < 1 || channels_ > 2 || rateHz_ < 1 || !IsAdpcmBlock(blockBytes_) ||
        !OpenCoder() || !MakeFrame()) {
        return Outcome::NotSupported;
    }
    const WaveFormatChunk format = AdpcmFormat(tag_, rateHz_, channels_, blockBytes_);
    return FitsWaveHeader(format) ? wave_.emplace(format).Begin(out) : Outcome::NotSupported;
}

// The two coders differ in how they want their channels.
void AdpcmEncoder::Take(const qint16* samples, int count) {
    if (coder_->sample_fmt == AV_SAMPLE_FMT_S16) {
        std::copy_n(samples, count * channels_,
                    reinterpret_cast<qint16*>(frame_->data[0]) + filled_ * channels_);
    } else {
        for (int channel = 0; channel < channels_; ++channel) {
            auto* const plane = reinterpret_cast<qint16*>(frame_->extended_data[channel]) + filled_;
            for (int at = 0; at < count; ++at) {
                plane[at] = samples[at * channels_ + channel];
            }
        }
    }
    filled_ += count;
}

Outcome AdpcmEncoder::EncodeBlock() {
    filled_ = 0;
    const bool coded = avcodec_send_frame(coder_.get(), frame_.get()) >= 0 &&
                       avcodec_receive_packet(coder_.get(), packet_.get()) >= 0;
    if (!coded || av_frame_make_writable(frame_.get()) < 0) {
        return Outcome::WriteFailed;
    }
    const Outcome outcome = wave_->Write(reinterpret_cast<const char*>(packet_->data), packet_->size);
    av_packet_unref(packet_.get());
    return outcome;
}

Outcome AdpcmEncoder::WriteIntegers(const qint16* samples, qint64 frames) {
    if (!wave_) {
        return Outcome::NotOpen;
    }
    for (qint64 at = 0; at < frames;) {
        const int count = static_cast<int>(std::min<qint64>(frames - at, coder_->frame_size - filled_));
        Take(samples + at * channels_, count);
        at += count;
        frames_ += count;
        if (filled_ == coder_->frame_size) {
            if (const Outcome outcome = EncodeBlock(); outcome != Outcome::Ok) {
                return outcome;
            }
        }
    }
    return Outcome::Ok;
}

Outcome AdpcmEncoder::Finish() {
    if (!wave_) {
        return Outcome::NotOpen;
    }
    if (filled_ > 0) {
        const int missing = coder_->frame_size - filled_;
        Take(std::vector<qint16>(static_cast<size_t>(missing * channels_)).data(), missing);
        if (const Outcome outcome = EncodeBlock(); outcome != Outcome::Ok) {
            return outcome;
        }
    }
    return wave_->Finish(frames_);
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
