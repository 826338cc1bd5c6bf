// The sound of a file in memory, as libavformat and libavcodec decode it.
#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QList>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/log.h>
}

#include <algorithm>
#include <array>
#include <cstring>

namespace kestrune::fuzz {

struct DecodedSound {
    QByteArray format;      // the demuxer's name; empty if the content is of no kind that it knows
    QList<QByteArray> sums; // of each decoded frame
};

// Of an ID3v2 tag.
inline qsizetype LeadingTagBytes(const QByteArray& bytes) {
    constexpr qsizetype headBytes = 10;
    if (!bytes.startsWith("ID3") || bytes.size() < headBytes) {
        return 0;
    }
    qsizetype tagBytes = 0;
    for (qsizetype at = 6; at < headBytes; ++at) {
        tagBytes = tagBytes << 7 | (bytes[at] & 0x7F);
    }
    return headBytes + tagBytes;
}

class SoundDecoder {
public:
    // A content that the library is not sure of is taken for one of `otherwise`, the name of a demuxer, as is
    // right for what was made from one: tags in front alone can be what an MPEG stream is known by.
    explicit SoundDecoder(const QByteArray& bytes, const QByteArray& otherwise = {})
        : bytes_(bytes), otherwise_(otherwise) {
        av_log_set_level(AV_LOG_QUIET);
    }
    ~SoundDecoder() {
        avcodec_free_context(&codec_);
        avformat_close_input(&input_);
        if (io_ != nullptr) {
            av_freep(&io_->buffer);
            avio_context_free(&io_);
        }
        av_packet_free(&packet_);
        av_frame_free(&frame_);
    }
    SoundDecoder(const SoundDecoder&) = delete;
    SoundDecoder& operator=(const SoundDecoder&) = delete;

    DecodedSound Decode() {
        if (!Open()) {
            return {};
        }
        DecodedSound sound;
        sound.format = input_->iformat->name;
        int packets = 0;
        while (packets < mostPackets && av_read_frame(input_, packet_) >= 0) {
            ++packets;
            if (packet_->stream_index == stream_->index && avcodec_send_packet(codec_, packet_) >= 0) {
                TakeFrames(sound);
            }
            av_packet_unref(packet_);
        }
        avcodec_send_packet(codec_, nullptr);
        TakeFrames(sound);
        return sound;
    }

private:
    // All of a file: where a place behind the end is looked for, as a broken one asks for, the library comes
    // to rest at the end of a buffer, and with smaller ones that is elsewhere once a tag stands in front.
    static constexpr int bufferBytes = 1 << 16;
    static constexpr int mostPackets = 500;
    static constexpr int mostFrames = 500;

    static int Read(void* opaque, uint8_t* out, int count) {
        auto* self = static_cast<SoundDecoder*>(opaque);
        const auto got = std::min<qint64>(count, self->bytes_.size() - self->at_);
        if (got <= 0) {
            return AVERROR_EOF;
        }
        std::memcpy(out, self->bytes_.constData() + self->at_, static_cast<size_t>(got));
        self->at_ += got;
        return static_cast<int>(got);
    }
    static int64_t Seek(void* opaque, int64_t offset, int whence) {
        auto* self = static_cast<SoundDecoder*>(opaque);
        whence &= ~AVSEEK_FORCE;
        if (whence == AVSEEK_SIZE) {
            return self->bytes_.size();
        }
        const int64_t base = whence == SEEK_CUR ? self->at_ : whence == SEEK_END ? self->bytes_.size() : 0;
        if (base + offset < 0) {
            return AVERROR(EINVAL);
        }
        self->at_ = base + offset;
        return self->at_;
    }
    static int RefuseOpen(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) {
        return AVERROR(EPERM);
    }

    bool Open() {
        io_ = avio_alloc_context(static_cast<unsigned char*>(av_malloc(bufferBytes)), bufferBytes, 0, this,
                                 Read, nullptr, Seek);
        const AVInputFormat* format = nullptr;
        if (av_probe_input_buffer2(io_, &format, "", nullptr, 0, 1 << 16) <= AVPROBE_SCORE_RETRY) {
            format = Unsure();
        }
        if (format == nullptr) {
            return false;
        }
        input_ = avformat_alloc_context();
        input_->pb = io_;
        input_->io_open = RefuseOpen;
        input_->probesize = 1 << 16;
        input_->max_analyze_duration = AV_TIME_BASE / 4;
        if (avformat_open_input(&input_, "", format, nullptr) < 0) {
            return false;
        }
        if (avformat_find_stream_info(input_, nullptr) < 0) {
            return false;
        }
        const int index = av_find_best_stream(input_, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
        if (index < 0) {
            return false;
        }
        stream_ = input_->streams[index];
        return OpenCodec();
    }
    const AVInputFormat* Unsure() const {
        // A file of another kind may hold something like an MPEG frame; then it is not known by that.
        static constexpr std::array otherMarks = {"MP+",  "MPCK", "MAC ", "wvpk", "TTA1",
                                                  "fLaC", "OggS", "RIFF", "FORM"};
        const QByteArray content = bytes_.mid(LeadingTagBytes(bytes_));
        if (std::any_of(otherMarks.begin(), otherMarks.end(),
                        [&](const char* mark) { return content.startsWith(mark); })) {
            return nullptr;
        }
        if (!otherwise_.isEmpty()) {
            return av_find_input_format(otherwise_.constData());
        }
        // A few frames are too little for it to be sure.
        return bytes_.startsWith('\xFF') || bytes_.startsWith("ID3") ? av_find_input_format("mp3") : nullptr;
    }
    bool OpenCodec() {
        const AVCodec* codec = avcodec_find_decoder(stream_->codecpar->codec_id);
        packet_ = av_packet_alloc();
        frame_ = av_frame_alloc();
        codec_ = codec != nullptr ? avcodec_alloc_context3(codec) : nullptr;
        if (codec_ == nullptr || avcodec_parameters_to_context(codec_, stream_->codecpar) < 0) {
            return false;
        }
        codec_->thread_count = 1;
        codec_->flags |= AV_CODEC_FLAG_BITEXACT;
        codec_->max_samples = 1 << 20;
        return avcodec_open2(codec_, codec, nullptr) >= 0;
    }
    void TakeFrames(DecodedSound& sound) {
        while (sound.sums.size() < mostFrames && avcodec_receive_frame(codec_, frame_) >= 0) {
            QCryptographicHash hash(QCryptographicHash::Md4);
            const auto format = static_cast<AVSampleFormat>(frame_->format);
            const bool planar = av_sample_fmt_is_planar(format) != 0;
            const int channels = frame_->ch_layout.nb_channels;
            const qint64 bytes = static_cast<qint64>(frame_->nb_samples) * av_get_bytes_per_sample(format) *
                                 (planar ? 1 : channels);
            for (int plane = 0; plane < (planar ? channels : 1); ++plane) {
                hash.addData(QByteArrayView(frame_->extended_data[plane], bytes));
            }
            sound.sums.append(hash.result() + QByteArray::number(frame_->sample_rate));
            av_frame_unref(frame_);
        }
    }

    const QByteArray& bytes_;
    const QByteArray otherwise_;
    qint64 at_ = 0;
    AVIOContext* io_ = nullptr;
    AVFormatContext* input_ = nullptr;
    AVStream* stream_ = nullptr;
    AVCodecContext* codec_ = nullptr;
    AVPacket* packet_ = nullptr;
    AVFrame* frame_ = nullptr;
};

} // namespace kestrune::fuzz
