#include "backends/tags/general_reader.h"

#include "app/failure_log.h"
#include "backends/formats/codec_names.h"
#include "backends/tags/lavf_reader.h"
#include "backends/tags/mpeg_length.h"
#include "backends/tags/wave_numbers.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <algorithm>
#include <limits>

namespace kestrune {

namespace {

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
    facts.kind = CodecName(coding.codec_id);
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
    file.RenewBudget();
    LavfReader input(file);
    if (!input.Open()) {
        return std::nullopt;
    }
    AudioFacts facts = FactsOf(input.Context(), *input.Sound(), file.SizeBytes());
    if (qstrcmp(input.Context().iformat->name, "mp3") == 0) {
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
