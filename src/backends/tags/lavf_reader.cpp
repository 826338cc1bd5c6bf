#include "backends/tags/lavf_reader.h"

#include "app/failure_log.h"
#include "backends/formats/demuxer_choice.h"
#include "backends/formats/lav_settings.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/mem.h>
}

namespace kestrune {

namespace {

constexpr int bufferBytes = 32 * 1024;
// Each jump out of the buffer fills it anew, and in MPEG audio behind noise the library jumps to and fro
// until it has a frame.
constexpr int mpegBufferBytes = 1024 * 1024;
constexpr int64_t mostProbeBytes = 1024 * 1024;
constexpr int64_t mostAnalyseUs = 2 * AV_TIME_BASE;

int ReadPacket(void* opaque, uint8_t* out, int bytes) {
    auto& reading = *static_cast<LavfReader::Reading*>(opaque);
    reading.file.Seek(reading.position);
    const qint64 got = reading.file.Read(reinterpret_cast<char*>(out), bytes);
    reading.position += got;
    return got > 0 ? static_cast<int>(got) : AVERROR_EOF;
}

int64_t SeekFile(void* opaque, int64_t offset, int whence) {
    auto& reading = *static_cast<LavfReader::Reading*>(opaque);
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return reading.file.SizeBytes();
    case SEEK_SET:
        break;
    case SEEK_CUR:
        offset += reading.position;
        break;
    case SEEK_END:
        offset += reading.file.SizeBytes();
        break;
    default:
        return AVERROR(EINVAL);
    }
    if (offset < 0) {
        return AVERROR(EINVAL);
    }
    reading.position = offset;
    return offset;
}

// Content that names further files, as playlists and stream descriptions do, gets none of them.
int RefuseOpen(AVFormatContext* /*context*/, AVIOContext** /*io*/, const char* /*url*/, int /*flags*/,
               AVDictionary** /*options*/) {
    return AVERROR(EPERM);
}

AVIOContext* MakeIo(LavfReader::Reading& reading, int bytes) {
    auto* buffer = static_cast<unsigned char*>(av_malloc(static_cast<size_t>(bytes)));
    if (buffer == nullptr) {
        return nullptr;
    }
    AVIOContext* io = avio_alloc_context(buffer, bytes, 0, &reading, ReadPacket, nullptr, SeekFile);
    if (io == nullptr) {
        av_free(buffer);
    }
    return io;
}

AVFormatContext* OpenInput(AVIOContext* io, const AVInputFormat* format) {
    AVFormatContext* context = avformat_alloc_context();
    if (context == nullptr) {
        return nullptr;
    }
    context->pb = io;
    context->io_open = RefuseOpen;
    context->protocol_whitelist = av_strdup("none");
    context->probesize = mostProbeBytes;
    context->max_analyze_duration = mostAnalyseUs;
    // A failing open frees the context.
    if (avformat_open_input(&context, "", format, nullptr) < 0) {
        return nullptr;
    }
    if (avformat_find_stream_info(context, nullptr) < 0) {
        avformat_close_input(&context);
    }
    return context;
}

AVStream* FirstDecodableAudio(const AVFormatContext& input) {
    for (unsigned at = 0; at < input.nb_streams; ++at) {
        AVStream* stream = input.streams[at];
        const AVCodecParameters& coding = *stream->codecpar;
        if (coding.codec_type == AVMEDIA_TYPE_AUDIO && coding.sample_rate > 0 &&
            coding.ch_layout.nb_channels > 0 && avcodec_find_decoder(coding.codec_id) != nullptr) {
            return stream;
        }
    }
    return nullptr;
}

} // namespace

LavfReader::LavfReader(BoundedFile& file) : reading_{file} {
    SetUpLav();
}

LavfReader::~LavfReader() {
    avformat_close_input(&context_);
    if (io_ != nullptr) {
        // The library may have replaced the buffer that it was given.
        av_freep(static_cast<void*>(&io_->buffer));
        avio_context_free(&io_);
    }
}

bool LavfReader::Open() {
    const AVInputFormat* format = ChooseDemuxer(reading_.file, reading_.file.Path());
    if (format == nullptr) {
        return false;
    }
    io_ = MakeIo(reading_, qstrcmp(format->name, "mp3") == 0 ? mpegBufferBytes : bufferBytes);
    context_ = io_ != nullptr ? OpenInput(io_, format) : nullptr;
    sound_ = context_ != nullptr ? FirstDecodableAudio(*context_) : nullptr;
    if (sound_ == nullptr) {
        qCDebug(logTags) << "no audio in" << reading_.file.Path() << "read as" << format->name;
    }
    return sound_ != nullptr;
}

} // namespace kestrune
