#include "backends/reading/packet_timeline.h"

#include <QtEndian>

#include <algorithm>

namespace kestrune {

namespace {

// More than a packet of any coding here holds; a damaged header may claim more.
constexpr int64_t longestPacketFrames = 1 << 20;

struct Padding {
    int front = 0;
    int back = 0;
};

// The demuxer's note of padding: 32-bit counts of frames at the packet's start and end, little-endian.
Padding PaddingOf(const AVPacket& packet) {
    size_t bytes = 0;
    const uint8_t* const note = av_packet_get_side_data(&packet, AV_PKT_DATA_SKIP_SAMPLES, &bytes);
    if (note == nullptr || bytes < 8) {
        return {};
    }
    return {std::max(qFromLittleEndian<qint32>(note), 0), std::max(qFromLittleEndian<qint32>(note + 4), 0)};
}

// ISO/IEC 11172-3 and 13818-3: a frame of layer I is 384 samples, of layer II 1152, of layer III 1152, or 576
// at the halved rates.
int MpegFrames(const AVPacket& packet) {
    if (packet.size < 4) {
        return 0;
    }
    const bool fullRate = (packet.data[1] >> 3 & 3) == 3;
    switch (packet.data[1] >> 1 & 3) {
    case 3:
        return 384;
    case 2:
        return 1152;
    case 1:
        return fullRate ? 1152 : 576;
    default:
        return 0;
    }
}

bool IsPcm(AVCodecID codec) {
    return codec >= AV_CODEC_ID_FIRST_AUDIO && codec < AV_CODEC_ID_ADPCM_IMA_QT &&
           av_get_exact_bits_per_sample(codec) > 0;
}

} // namespace

PacketTimeline::PacketTimeline(const AVCodecParameters& parameters) : parameters_(parameters) {
    if (parameters.codec_id == AV_CODEC_ID_VORBIS) {
        vorbis_ = av_vorbis_parse_init(parameters.extradata, parameters.extradata_size);
    }
}

PacketTimeline::~PacketTimeline() {
    av_vorbis_parse_free(&vorbis_);
}

bool PacketTimeline::Covers(const AVCodecParameters& parameters, AVRational timeBase) {
    switch (parameters.codec_id) {
    case AV_CODEC_ID_MP1:
    case AV_CODEC_ID_MP2:
    case AV_CODEC_ID_MP3:
    case AV_CODEC_ID_VORBIS:
    case AV_CODEC_ID_ADPCM_IMA_WAV:
    case AV_CODEC_ID_ADPCM_MS:
        return true;
    case AV_CODEC_ID_FLAC:
    case AV_CODEC_ID_ALAC:
    case AV_CODEC_ID_TTA:
    case AV_CODEC_ID_WAVPACK:
        // Durations tell, where the container counts in samples.
        return timeBase.num == 1 && timeBase.den == parameters.sample_rate;
    default:
        return IsPcm(parameters.codec_id);
    }
}

int PacketTimeline::LeadPackets(AVCodecID codec) {
    switch (codec) {
    case AV_CODEC_ID_MP1:
    case AV_CODEC_ID_MP2:
    case AV_CODEC_ID_MP3:
        // The bit reservoir reaches back 511 bytes, which low bit rates spread over many frames; then the
        // overlap and the filter bank have to fill.
        return 40;
    case AV_CODEC_ID_VORBIS:
        // A window overlaps the one before only.
        return 3;
    default:
        return 0;
    }
}

// Of `bytes` of blocks, the last of which may be cut.
int PacketTimeline::BlockFrames(int bytes) const {
    const int channels = parameters_.ch_layout.nb_channels;
    const bool microsoft = parameters_.codec_id == AV_CODEC_ID_ADPCM_MS;
    const auto framesOf = [channels, microsoft](int blockBytes) {
        const int body = blockBytes - (microsoft ? 7 : 4) * channels;
        if (body < 0) {
            return 0;
        }
        return microsoft ? 2 + body * 2 / channels : 1 + body / (4 * channels) * 8;
    };
    const int block = parameters_.block_align;
    if (block <= 0) {
        return framesOf(bytes);
    }
    return bytes / block * framesOf(block) + framesOf(bytes % block);
}

int PacketTimeline::DecodedFrames(const AVPacket& packet) {
    switch (parameters_.codec_id) {
    case AV_CODEC_ID_MP1:
    case AV_CODEC_ID_MP2:
    case AV_CODEC_ID_MP3:
        return MpegFrames(packet);
    case AV_CODEC_ID_VORBIS: {
        const int frames = vorbis_ == nullptr ? 0 : av_vorbis_parse_frame(vorbis_, packet.data, packet.size);
        // The first packet only fills the overlap.
        return first_ ? 0 : std::max(frames, 0);
    }
    case AV_CODEC_ID_FLAC:
    case AV_CODEC_ID_ALAC:
    case AV_CODEC_ID_TTA:
    case AV_CODEC_ID_WAVPACK:
        return static_cast<int>(std::clamp<int64_t>(packet.duration, 0, longestPacketFrames));
    case AV_CODEC_ID_ADPCM_IMA_WAV:
    case AV_CODEC_ID_ADPCM_MS:
        return BlockFrames(packet.size);
    default: {
        const int frameBits =
            av_get_exact_bits_per_sample(parameters_.codec_id) * parameters_.ch_layout.nb_channels;
        return static_cast<int>(packet.size * 8LL / frameBits);
    }
    }
}

PacketSpan PacketTimeline::Place(const AVPacket& packet) {
    const int decoded = DecodedFrames(packet);
    first_ = false;
    const Padding padding = PaddingOf(packet);
    if (position_ == 0) {
        padding_ = std::max(padding_, padding.front);
    }
    PacketSpan span;
    span.start = position_;
    span.front = std::min(padding_, decoded);
    span.count = std::max(decoded - span.front - padding.back, 0);
    padding_ -= span.front;
    position_ += span.count;
    return span;
}

void PacketTimeline::Restart() {
    position_ = 0;
    padding_ = 0;
    first_ = true;
    if (vorbis_ != nullptr) {
        av_vorbis_parse_reset(vorbis_);
    }
}

void PacketTimeline::MoveTo(qint64 frame) {
    Restart();
    position_ = frame;
    first_ = false;
}

} // namespace kestrune
