#include "backends/encoders/wma_encoder.h"

#include "backends/formats/lav_settings.h"

#include <QIODevice>

#include <algorithm>
#include <cmath>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
}

namespace kestrune {

namespace {

constexpr int storedBits = 16;
constexpr int ioBufferBytes = 65536;
// What a decoder leaves out at the start: it gives nothing before it has overlapped two frames, and throws
// the next away, as the encoders that it was made for begin with nothing worth hearing.
constexpr int lostFrames = 2;
// Of the container: the head of a packet that holds several payloads, the head of each of them, and the size
// that a packet should come near.
constexpr int packetHeadBytes = 12;
constexpr int payloadHeadBytes = 17;
constexpr int usualPacketBytes = 3200;

struct CodecCloser {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
struct FrameCloser {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct PacketCloser {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct IoCloser {
    void operator()(AVIOContext* io) const {
        av_freep(&io->buffer);
        avio_context_free(&io);
    }
};
struct FormatCloser {
    void operator()(AVFormatContext* context) const { avformat_free_context(context); }
};

int WriteDevice(void* opaque, uint8_t* buffer, int bytes) {
    auto& device = *static_cast<QIODevice*>(opaque);
    return device.write(reinterpret_cast<const char*>(buffer), bytes) == bytes ? bytes : AVERROR(EIO);
}

int64_t SeekDevice(void* opaque, int64_t offset, int whence) {
    auto& device = *static_cast<QIODevice*>(opaque);
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return device.size();
    case SEEK_SET:
        return device.seek(offset) ? offset : AVERROR(EIO);
    default:
        return AVERROR(EINVAL);
    }
}

using CodecHandle = std::unique_ptr<AVCodecContext, CodecCloser>;

CodecHandle OpenCodec(const OutputFormat& format) {
    SetUpLav();
    const AVCodec* const codec = avcodec_find_encoder(AV_CODEC_ID_WMAV2);
    CodecHandle context(avcodec_alloc_context3(codec));
    if (codec == nullptr || !context) {
        return nullptr;
    }
    context->sample_rate = format.rateHz;
    av_channel_layout_default(&context->ch_layout, format.channels);
    context->sample_fmt = AV_SAMPLE_FMT_FLTP;
    context->bit_rate = format.bitrateBps;
    context->time_base = {1, format.rateHz};
    context->flags |= AV_CODEC_FLAG_GLOBAL_HEADER | AV_CODEC_FLAG_BITEXACT;
    return avcodec_open2(context.get(), codec, nullptr) < 0 ? nullptr : std::move(context);
}

class WmaEncoder : public SampleEncoder {
public:
    explicit WmaEncoder(OutputFormat format) : format_(std::move(format)) {}

    EncoderInput Input() const override { return {format_.rateHz, format_.channels, true}; }
    Outcome Begin(QIODevice& out) override;
    Outcome WriteFloats(const float* samples, qint64 frames) override;
    Outcome Finish() override;

private:
    bool OpenFrame();
    bool OpenContainer(QIODevice& out);
    int PacketBytes() const;
    // Codes what stands in the frame, with silence behind it up to a whole one.
    bool CodeFrame();
    // Takes what the encoder has ready.
    bool TakePackets();
    bool PutPacket(AVPacket& packet);

    const OutputFormat format_;
    CodecHandle codec_;
    std::unique_ptr<AVFrame, FrameCloser> frame_;
    std::unique_ptr<AVPacket, PacketCloser> packet_;
    std::unique_ptr<AVIOContext, IoCloser> io_;
    std::unique_ptr<AVFormatContext, FormatCloser> container_;
    AVStream* stream_ = nullptr;
    int filled_ = 0;         // samples of a channel in the frame
    qint64 taken_ = 0;       // samples of a channel that came in
    qint64 packetCount_ = 0; // that were written
    bool isComplete_ = false;
};

Outcome WmaEncoder::Begin(QIODevice& out) {
    codec_ = OpenCodec(format_);
    if (!codec_ || !OpenFrame() || !OpenContainer(out)) {
        return Outcome::NotSupported;
    }
    if (avformat_write_header(container_.get(), nullptr) < 0) {
        return Outcome::WriteFailed;
    }
    // The frame of silence that is thrown away.
    return CodeFrame() ? Outcome::Ok : Outcome::WriteFailed;
}

bool WmaEncoder::OpenFrame() {
    frame_.reset(av_frame_alloc());
    packet_.reset(av_packet_alloc());
    if (!frame_ || !packet_) {
        return false;
    }
    frame_->nb_samples = codec_->frame_size;
    frame_->format = codec_->sample_fmt;
    frame_->sample_rate = codec_->sample_rate;
    return av_channel_layout_copy(&frame_->ch_layout, &codec_->ch_layout) >= 0 &&
           av_frame_get_buffer(frame_.get(), 0) >= 0;
}

bool WmaEncoder::OpenContainer(QIODevice& out) {
    AVFormatContext* context = nullptr;
    if (avformat_alloc_output_context2(&context, nullptr, "asf", nullptr) < 0) {
        return false;
    }
    container_.reset(context);
    auto* const buffer = static_cast<unsigned char*>(av_malloc(ioBufferBytes));
    io_.reset(avio_alloc_context(buffer, ioBufferBytes, 1, &out, nullptr, WriteDevice, SeekDevice));
    stream_ = avformat_new_stream(context, nullptr);
    if (!io_ || stream_ == nullptr) {
        return false;
    }
    context->pb = io_.get();
    // No dates, and the first two packets stand before the time 0.
    context->flags |= AVFMT_FLAG_BITEXACT;
    context->avoid_negative_ts = 0;
    stream_->time_base = codec_->time_base;
    return avcodec_parameters_from_context(stream_->codecpar, codec_.get()) >= 0 &&
           av_opt_set_int(context->priv_data, "packet_size", PacketBytes(), 0) >= 0;
}

// The packets have one size all through the file, and a payload is not carried on from one to the next: what
// a whole number of them does not fill is lost.
int WmaEncoder::PacketBytes() const {
    const int payload = codec_->block_align + payloadHeadBytes;
    const int payloads = std::max((usualPacketBytes + payload / 2) / payload, 1);
    return packetHeadBytes + payloads * payload;
}

Outcome WmaEncoder::WriteFloats(const float* samples, qint64 frames) {
    const int channels = format_.channels;
    for (qint64 done = 0; done < frames;) {
        const auto count = static_cast<int>(std::min<qint64>(frames - done, codec_->frame_size - filled_));
        for (int channel = 0; channel < channels; ++channel) {
            const float* from = samples + done * channels + channel;
            auto* const to = reinterpret_cast<float*>(frame_->data[channel]) + filled_;
            for (int at = 0; at < count; ++at) {
                // The coding's figures have an upper end.
                to[at] = std::clamp(from[static_cast<qint64>(at) * channels], -1.0F, 1.0F);
            }
        }
        filled_ += count;
        done += count;
        taken_ += count;
        if (filled_ == codec_->frame_size && !CodeFrame()) {
            return Outcome::WriteFailed;
        }
    }
    return Outcome::Ok;
}

Outcome WmaEncoder::Finish() {
    isComplete_ = true;
    const bool coded = filled_ == 0 || CodeFrame();
    // A frame of silence, which the last one is overlapped with.
    const bool finished = coded && CodeFrame() && avcodec_send_frame(codec_.get(), nullptr) >= 0 &&
                          TakePackets() && av_write_trailer(container_.get()) >= 0;
    avio_flush(io_.get());
    return finished && io_->error >= 0 ? Outcome::Ok : Outcome::WriteFailed;
}

bool WmaEncoder::CodeFrame() {
    for (int channel = 0; channel < format_.channels; ++channel) {
        auto* const plane = reinterpret_cast<float*>(frame_->data[channel]);
        std::fill(plane + filled_, plane + codec_->frame_size, 0.0F);
    }
    filled_ = 0;
    return avcodec_send_frame(codec_.get(), frame_.get()) >= 0 && TakePackets() &&
           av_frame_make_writable(frame_.get()) >= 0;
}

bool WmaEncoder::TakePackets() {
    while (true) {
        const int result = avcodec_receive_packet(codec_.get(), packet_.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) {
            return true;
        }
        if (result < 0 || !PutPacket(*packet_)) {
            return false;
        }
    }
}

bool WmaEncoder::PutPacket(AVPacket& packet) {
    const qint64 frameSize = codec_->frame_size;
    packet.pts = (packetCount_ - lostFrames) * frameSize;
    // The header's length is the end of the last packet.
    packet.duration = isComplete_ ? std::clamp<qint64>(taken_ - packet.pts, 0, frameSize) : frameSize;
    packet.dts = packet.pts;
    packet.stream_index = stream_->index;
    ++packetCount_;
    av_packet_rescale_ts(&packet, codec_->time_base, stream_->time_base);
    return av_write_frame(container_.get(), &packet) >= 0 && io_->error >= 0;
}

} // namespace

std::optional<OutputFormat> WmaFormat(qint32 profile) {
    if (profile < 0 || profile >= wmaProfileCount) {
        return std::nullopt;
    }
    const WmaProfile& chosen = wmaProfiles[static_cast<size_t>(profile)];
    OutputFormat format;
    format.kind = FormatKind::WindowsMedia;
    format.rateHz = chosen.rateHz;
    format.channels = chosen.channels;
    format.bits = storedBits;
    format.bitrateBps = chosen.bitrateBps;
    format.wmaProfile = profile;
    return format;
}

std::unique_ptr<SampleEncoder> MakeWmaEncoder(const OutputFormat& format) {
    return std::make_unique<WmaEncoder>(format);
}

} // namespace kestrune
