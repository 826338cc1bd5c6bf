#include "backends/tags/general_reader.h"

#include "backends/tags/audio_kind.h"
#include "backends/tags/logging.h"
#include "backends/tags/mpeg_length.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/avstring.h>
#include <libavutil/log.h>
#include <libavutil/mem.h>
}

#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>

namespace kestrune {

namespace {

constexpr int bufferBytes = 32 * 1024;
constexpr int64_t mostProbeBytes = 1024 * 1024;
constexpr int64_t mostAnalyseUs = 2 * AV_TIME_BASE;

struct CloseInput {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
using InputPtr = std::unique_ptr<AVFormatContext, CloseInput>;

struct FreeIo {
    void operator()(AVIOContext* io) const {
        // The library may have replaced the buffer that it was given.
        av_freep(static_cast<void*>(&io->buffer));
        avio_context_free(&io);
    }
};
using IoPtr = std::unique_ptr<AVIOContext, FreeIo>;

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

IoPtr MakeIo(BoundedFile& file) {
    auto* buffer = static_cast<unsigned char*>(av_malloc(bufferBytes));
    if (buffer == nullptr) {
        return nullptr;
    }
    IoPtr io(avio_alloc_context(buffer, bufferBytes, 0, &file, ReadPacket, nullptr, SeekFile));
    if (!io) {
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

InputPtr OpenInput(AVIOContext* io, const AVInputFormat* format) {
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
    InputPtr input(context);
    return avformat_find_stream_info(input.get(), nullptr) < 0 ? nullptr : std::move(input);
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

qint64 DurationMsOf(const AVFormatContext& input, const AVStream& stream) {
    if (stream.duration != AV_NOPTS_VALUE && stream.duration > 0) {
        return av_rescale_q(stream.duration, stream.time_base, AVRational{1, 1000});
    }
    return input.duration != AV_NOPTS_VALUE && input.duration > 0 ? input.duration / (AV_TIME_BASE / 1000)
                                                                  : 0;
}

// The AVI header counts in units that need not be samples; the index has the size of each piece. 0 where that
// does not tell the length.
qint64 FramesOfAviIndex(const AVFormatContext& input, AVStream& stream) {
    const AVCodecParameters& coding = *stream.codecpar;
    const int bits = av_get_exact_bits_per_sample(coding.codec_id) * coding.ch_layout.nb_channels;
    if (bits <= 0 || qstrcmp(input.iformat->name, "avi") != 0) {
        return 0;
    }
    qint64 bytes = 0;
    const int entries = avformat_index_get_entries_count(&stream);
    for (int at = 0; at < entries; ++at) {
        bytes += avformat_index_get_entry(&stream, at)->size;
    }
    return bytes * 8 / bits;
}

QString Metadata(const AVFormatContext& input, const AVStream& stream, const char* key) {
    const AVDictionaryEntry* entry = av_dict_get(input.metadata, key, nullptr, 0);
    if (entry == nullptr) {
        entry = av_dict_get(stream.metadata, key, nullptr, 0);
    }
    return entry != nullptr ? QString::fromUtf8(entry->value) : QString();
}

AudioFacts FactsOf(const AVFormatContext& input, AVStream& stream, qint64 sizeBytes) {
    const AVCodecParameters& coding = *stream.codecpar;
    const int storedBits =
        std::max(coding.bits_per_raw_sample, av_get_exact_bits_per_sample(coding.codec_id));
    AudioFacts facts;
    facts.kind = KindName(coding.codec_id);
    facts.formatTag = WaveFormatNumber(coding.codec_id);
    facts.rateHz = coding.sample_rate;
    facts.channels = coding.ch_layout.nb_channels;
    facts.bitsPerSample = storedBits > 0 && IsLossless(coding.codec_id) ? storedBits : 16;
    facts.durationMs = std::clamp<qint64>(DurationMsOf(input, stream), 0, mostDurationMs);
    facts.frames = FramesOfDuration(facts.durationMs, facts.rateHz);
    if (const qint64 counted = std::min(FramesOfAviIndex(input, stream), mostFrames)) {
        facts.frames = counted;
        facts.durationMs = DurationOfFrames(counted, facts.rateHz);
    }
    int64_t bps = coding.bit_rate;
    if (bps <= 0 && input.nb_streams == 1 && facts.durationMs > 0) {
        bps = sizeBytes * 8000 / facts.durationMs;
    }
    facts.bitrateBps = static_cast<int>(std::clamp<int64_t>(bps, 0, std::numeric_limits<int>::max()));
    facts.title = Metadata(input, stream, "title");
    facts.artist = Metadata(input, stream, "artist");
    return facts;
}

} // namespace

std::optional<AudioFacts> GeneralFacts(BoundedFile& file) {
    av_log_set_level(AV_LOG_QUIET);
    file.RenewBudget();
    file.Seek(0);
    const IoPtr io = MakeIo(file);
    const AVInputFormat* format = io ? DetectFormat(io.get()) : nullptr;
    if (format == nullptr) {
        return std::nullopt;
    }
    const InputPtr input = OpenInput(io.get(), format);
    AVStream* stream = input ? FirstDecodableAudio(*input) : nullptr;
    if (stream == nullptr) {
        qCDebug(logTags) << "no audio in" << file.Path() << "read as" << format->name;
        return std::nullopt;
    }
    AudioFacts facts = FactsOf(*input, *stream, file.SizeBytes());
    if (qstrcmp(format->name, "mp3") == 0) {
        // The library takes all that stands before and between the frames for sound.
        const std::optional<MpegLength> length = FindAndMeasureMpeg(file);
        if (!length) {
            return std::nullopt;
        }
        facts.frames = std::min(length->frames, mostFrames);
        facts.durationMs = DurationOfFrames(facts.frames, facts.rateHz);
        facts.bitrateBps = length->bitrateBps;
    }
    return facts;
}

} // namespace kestrune
