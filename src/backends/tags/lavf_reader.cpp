#include "backends/tags/lavf_reader.h"

#include "app/failure_log.h"
#include "backends/formats/lav_settings.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/avstring.h>
#include <libavutil/mem.h>
}

namespace kestrune {

namespace {

constexpr int bufferBytes = 32 * 1024;
constexpr int64_t mostProbeBytes = 1024 * 1024;
constexpr int64_t mostAnalyseUs = 2 * AV_TIME_BASE;

int ReadPacket(void* opaque, uint8_t* out, int bytes) {
    const qint64 got = static_cast<BoundedFile*>(opaque)->Read(reinterpret_cast<char*>(out), bytes);
    return got > 0 ? static_cast<int>(got) : AVERROR_EOF;
}

int64_t SeekFile(void* opaque, int64_t offset, int whence) {
    auto* file = static_cast<BoundedFile*>(opaque);
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return file->SizeBytes();
    case SEEK_SET:
        break;
    case SEEK_CUR:
        offset += file->Position();
        break;
    case SEEK_END:
        offset += file->SizeBytes();
        break;
    default:
        return AVERROR(EINVAL);
    }
    if (offset < 0) {
        return AVERROR(EINVAL);
    }
    file->Seek(offset);
    return offset;
}

// Content that names further files, as playlists and stream descriptions do, gets none of them.
int RefuseOpen(AVFormatContext* /*context*/, AVIOContext** /*io*/, const char* /*url*/, int /*flags*/,
               AVDictionary** /*options*/) {
    return AVERROR(EPERM);
}

AVIOContext* MakeIo(BoundedFile& file) {
    auto* buffer = static_cast<unsigned char*>(av_malloc(bufferBytes));
    if (buffer == nullptr) {
        return nullptr;
    }
    AVIOContext* io = avio_alloc_context(buffer, bufferBytes, 0, &file, ReadPacket, nullptr, SeekFile);
    if (io == nullptr) {
        av_free(buffer);
    }
    return io;
}

// Readers of recorded sound. The library has others that take their data from the network, from devices or
// from further files, and open them by ways of their own.
constexpr const char* trustedFormats = "aac,ac3,act,aea,aiff,amr,amrnb,amrwb,ape,asf,au,avi,avr,caf,dsf,dss,"
                                       "dts,eac3,flac,flv,g729,gsm,iff,ircam,"
                                       "matroska,webm,mov,mp4,m4a,3gp,3g2,mj2,mp3,mpc,mpc8,mpeg,mpegts,nist,"
                                       "nsv,nut,ogg,oma,paf,rm,sds,shn,sox,tak,truehd,"
                                       "tta,voc,w64,wav,wv";

// The demuxer that the content asks for, if it does so with some certainty and is a trusted one.
const AVInputFormat* DetectFormat(AVIOContext* io) {
    const AVInputFormat* format = nullptr;
    const int score = av_probe_input_buffer2(io, &format, "", nullptr, 0, mostProbeBytes);
    const bool trusted = format != nullptr && av_match_list(format->name, trustedFormats, ',') > 0;
    return trusted && score > AVPROBE_SCORE_RETRY ? format : nullptr;
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

LavfReader::LavfReader(BoundedFile& file) : file_(file) {
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

bool LavfReader::Open(const char* unsure) {
    file_.Seek(0);
    io_ = MakeIo(file_);
    const AVInputFormat* format = io_ != nullptr ? DetectFormat(io_) : nullptr;
    if (format == nullptr && io_ != nullptr && unsure != nullptr) {
        format = av_find_input_format(unsure);
    }
    if (format == nullptr) {
        return false;
    }
    context_ = OpenInput(io_, format);
    sound_ = context_ != nullptr ? FirstDecodableAudio(*context_) : nullptr;
    if (sound_ == nullptr) {
        qCDebug(logTags) << "no audio in" << file_.Path() << "read as" << format->name;
    }
    return sound_ != nullptr;
}

} // namespace kestrune
