#include "backends/reading/length_scan.h"

#include <QtEndian>

#include <algorithm>
#include <string_view>

namespace kestrune {

namespace {

// MPEG audio beyond this size, hours of it, is not read through for its length alone.
constexpr qint64 longScanBytes = Q_INT64_C(256) << 20;

bool IsPlainSamples(AVCodecID codec) {
    return codec < AV_CODEC_ID_ADPCM_IMA_QT && av_get_exact_bits_per_sample(codec) >= 8;
}

// Counts the samples that the packets of one stream stand for.
class DurationCounter {
public:
    DurationCounter(const LavfInput& input, int rateHz)
        : stream_(input.Audio()),
          rateHz_(rateHz),
          durationsAreTrimmed_(input.Audio().codecpar->codec_id == AV_CODEC_ID_OPUS &&
                               std::string_view(input.ContainerName()) == "ogg") {}

    void Add(const AVPacket& packet) {
        const qint64 frames = FramesOf(packet);
        known_ = known_ && frames >= 0;
        frames_ += frames;
        size_t bytes = 0;
        const uint8_t* const note = av_packet_get_side_data(&packet, AV_PKT_DATA_SKIP_SAMPLES, &bytes);
        if (note != nullptr && bytes >= 8) {
            frames_ -= qFromLittleEndian<quint32>(note);
            frames_ -= durationsAreTrimmed_ ? 0 : qFromLittleEndian<quint32>(note + 4);
        }
        first_ = false;
    }
    // -1 if a packet did not tell.
    qint64 Frames() const {
        if (!known_) {
            return -1;
        }
        // The decoder of Windows Media leaves out its first two frames and gives one more at the end.
        const qint64 lost = IsWindowsMedia() ? WindowsMediaFrameLength() : 0;
        return std::max<qint64>(frames_ - lost, 0);
    }

private:
    bool IsWindowsMedia() const {
        const AVCodecID codec = stream_.codecpar->codec_id;
        return codec == AV_CODEC_ID_WMAV1 || codec == AV_CODEC_ID_WMAV2;
    }

    // 512 samples up to 16 kHz, 1024 to 22.05 kHz (version 1: to 32 kHz), else 2048.
    int WindowsMediaFrameLength() const {
        const AVCodecParameters& parameters = *stream_.codecpar;
        const bool versionOne = parameters.codec_id == AV_CODEC_ID_WMAV1;
        const int rate = parameters.sample_rate;
        if (rate <= 16000) {
            return 512;
        }
        return rate <= 22050 || (versionOne && rate <= 32000) ? 1024 : 2048;
    }

    // With a bit reservoir, which bit 1 of the flags in the codec's data switches on, a packet begins with a
    // counter and then the number of frames that end in it, in four bits each; the first of those belongs to
    // the packet before.
    qint64 WindowsMediaFrames(const AVPacket& packet) const {
        const AVCodecParameters& parameters = *stream_.codecpar;
        const bool versionOne = parameters.codec_id == AV_CODEC_ID_WMAV1;
        const int frameLength = WindowsMediaFrameLength();
        const int flagsAt = versionOne ? 2 : 4;
        const bool reservoir =
            parameters.extradata_size >= flagsAt + 2 && (parameters.extradata[flagsAt] & 2) != 0;
        if (!reservoir || packet.size == 0) {
            return frameLength;
        }
        const int ending = packet.data[0] & 15;
        return static_cast<qint64>(std::max(ending - (first_ ? 1 : 0), 0)) * frameLength;
    }

    qint64 FramesOf(const AVPacket& packet) const {
        if (IsWindowsMedia()) {
            return WindowsMediaFrames(packet);
        }
        AVCodecParameters& parameters = *stream_.codecpar;
        const AVRational samples{1, rateHz_};
        // The last packet of AAC in MP4 tells a duration that its decoding does not keep to.
        const bool coarse = av_cmp_q(stream_.time_base, samples) > 0;
        const int nominal = av_get_audio_frame_duration2(&parameters, packet.size);
        if (nominal > 0 && (coarse || packet.duration <= 0 || parameters.codec_id == AV_CODEC_ID_AAC)) {
            return av_rescale(nominal, rateHz_, std::max(parameters.sample_rate, 1));
        }
        return packet.duration > 0 && !coarse ? av_rescale_q(packet.duration, stream_.time_base, samples)
                                              : -1;
    }

    const AVStream& stream_;
    int rateHz_;
    bool durationsAreTrimmed_;
    qint64 frames_ = 0;
    bool known_ = true;
    bool first_ = true;
};

} // namespace

bool HasHeaderLength(const LavfInput& input) {
    const AVCodecID codec = input.Audio().codecpar->codec_id;
    const std::string_view container = input.ContainerName();
    if (IsPlainSamples(codec)) {
        // AVI counts the audio by chunks, Matroska in milliseconds.
        const AVRational& base = input.Audio().time_base;
        const bool countsSamples = base.num == 1 && base.den == input.Audio().codecpar->sample_rate;
        return input.Duration() > 0 && countsSamples && container != "avi";
    }
    if (container == "mp3" && input.FileBytes() > longScanBytes) {
        return input.Duration() > 0;
    }
    const bool counted = (codec == AV_CODEC_ID_FLAC && container == "flac") ||
                         (codec == AV_CODEC_ID_VORBIS && container == "ogg");
    return counted && input.Audio().duration > 0;
}

qint64 HeaderLength(const LavfInput& input) {
    const AVStream& stream = input.Audio();
    const AVCodecParameters& parameters = *stream.codecpar;
    const qint64 frames =
        av_rescale_q(input.Duration(), stream.time_base, AVRational{1, parameters.sample_rate});
    if (!IsPlainSamples(parameters.codec_id)) {
        return frames;
    }
    const qint64 frameBits = static_cast<qint64>(av_get_exact_bits_per_sample(parameters.codec_id)) *
                             parameters.ch_layout.nb_channels;
    return std::min(frames, input.FileBytes() * 8 / frameBits);
}

qint64 ScanLength(const QString& path, int rateHz) {
    const std::unique_ptr<LavfInput> input = LavfInput::Open(path);
    if (!input) {
        return 0;
    }
    DurationCounter counter(*input, rateHz);
    const PacketPtr packet(av_packet_alloc());
    while (input->Read(*packet)) {
        counter.Add(*packet);
        av_packet_unref(packet.get());
    }
    const qint64 counted = counter.Frames();
    if (counted >= 0) {
        return counted;
    }
    return av_rescale_q(input->Duration(), input->Audio().time_base, AVRational{1, rateHz});
}

} // namespace kestrune
