#include "backends/reading/lavf_input.h"

#include "backends/formats/demuxer_choice.h"
#include "backends/formats/lav_settings.h"
#include "backends/formats/leading_tag.h"

#include <algorithm>
#include <limits>

namespace kestrune {

namespace {

constexpr int ioBufferBytes = 32768;
constexpr qint64 probeBytes = 1 << 20;
constexpr qint64 analyzeMicroseconds = 2000000;
constexpr int mostChannels = 64;
constexpr qint64 farBehindBytes = Q_INT64_C(1) << 32;

int ReadFile(void* opaque, uint8_t* buffer, int bytes) {
    auto& window = *static_cast<LavfInput::Window*>(opaque);
    if (!window.file.seek(window.start + window.position)) {
        return AVERROR_EOF;
    }
    const qint64 got = window.file.read(reinterpret_cast<char*>(buffer), bytes);
    window.position += std::max<qint64>(got, 0);
    return got > 0 ? static_cast<int>(got) : AVERROR_EOF;
}

int64_t SeekFile(void* opaque, int64_t offset, int whence) {
    auto& window = *static_cast<LavfInput::Window*>(opaque);
    qint64 target = offset;
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return window.Size();
    case SEEK_CUR:
        target += window.position;
        break;
    case SEEK_END:
        target += window.Size();
        break;
    default:
        break;
    }
    // Broken files point anywhere; places far behind the end are not worth asking the system for.
    if (target < 0 || target > window.Size() + farBehindBytes) {
        return AVERROR(EINVAL);
    }
    window.position = target;
    return target;
}

int RefuseOpening(AVFormatContext*, AVIOContext** io, const char*, int, AVDictionary**) {
    *io = nullptr;
    return AVERROR(EPERM);
}

} // namespace

std::unique_ptr<LavfInput> LavfInput::Open(const QString& path) {
    SetUpLav();
    std::unique_ptr<LavfInput> input(new LavfInput);
    if (!input->OpenContext(path) || !input->ChooseStream()) {
        return nullptr;
    }
    return input;
}

LavfInput::~LavfInput() {
    avformat_close_input(&context_);
    if (io_ != nullptr) {
        av_freep(&io_->buffer);
        avio_context_free(&io_);
    }
}

bool LavfInput::OpenContext(const QString& path) {
    window_.file.setFileName(path);
    if (!window_.file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return false;
    }
    DeviceBytes file(window_.file);
    window_.start = LeadingTagBytes(file);
    auto* const buffer = static_cast<unsigned char*>(av_malloc(ioBufferBytes));
    io_ = avio_alloc_context(buffer, ioBufferBytes, 0, &window_, ReadFile, nullptr, SeekFile);
    context_ = avformat_alloc_context();
    if (io_ == nullptr || context_ == nullptr) {
        return false;
    }
    BytesBehind bytes(file, window_.start);
    const AVInputFormat* const kind = ChooseDemuxer(bytes, path);
    if (kind == nullptr) {
        return false;
    }
    context_->pb = io_;
    context_->io_open = RefuseOpening;
    context_->protocol_whitelist = av_strdup("file");
    context_->probesize = probeBytes;
    context_->max_analyze_duration = analyzeMicroseconds;
    return avformat_open_input(&context_, "", kind, nullptr) >= 0 &&
           avformat_find_stream_info(context_, nullptr) >= 0;
}

bool LavfInput::ChooseStream() {
    for (unsigned index = 0; index < context_->nb_streams; ++index) {
        AVStream* const stream = context_->streams[index];
        if (stream_ == nullptr && stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
            stream_ = stream;
        } else {
            stream->discard = AVDISCARD_ALL;
        }
    }
    if (stream_ == nullptr) {
        return false;
    }
    const AVCodecParameters& parameters = *stream_->codecpar;
    return parameters.sample_rate > 0 && parameters.ch_layout.nb_channels > 0 &&
           parameters.ch_layout.nb_channels <= mostChannels;
}

int LavfInput::ContainerBitrate() const {
    return static_cast<int>(std::clamp<int64_t>(context_->bit_rate, 0, std::numeric_limits<int>::max()));
}

qint64 LavfInput::Duration() const {
    if (stream_->duration > 0) {
        return stream_->duration;
    }
    if (context_->duration <= 0) {
        return 0;
    }
    return av_rescale_q(context_->duration, AVRational{1, AV_TIME_BASE}, stream_->time_base);
}

bool LavfInput::Read(AVPacket& packet) {
    while (av_read_frame(context_, &packet) >= 0) {
        if (packet.stream_index == stream_->index) {
            return true;
        }
        av_packet_unref(&packet);
    }
    return false;
}

bool LavfInput::SeekToByte(qint64 position) {
    return av_seek_frame(context_, stream_->index, position, AVSEEK_FLAG_BYTE) >= 0;
}

bool LavfInput::SeekToTime(qint64 timestamp) {
    return av_seek_frame(context_, stream_->index, timestamp, AVSEEK_FLAG_BACKWARD) >= 0;
}

} // namespace kestrune
