#include "backends/tags/tagged_file.h"

#include "backends/formats/codec_names.h"
#include "backends/tags/mpeg_length.h"
#include "backends/tags/wave_numbers.h"

#include <taglib/aifffile.h>
#include <taglib/apefile.h>
#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/mp4file.h>
#include <taglib/mpcfile.h>
#include <taglib/mpegfile.h>
#include <taglib/oggflacfile.h>
#include <taglib/oggpageheader.h>
#include <taglib/opusfile.h>
#include <taglib/speexfile.h>
#include <taglib/trueaudiofile.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>
#include <taglib/wavpackfile.h>

#include <algorithm>
#include <array>
#include <limits>

namespace kestrune {

namespace {

template <class File>
std::unique_ptr<TagLib::File> OpenAs(TagLib::IOStream& stream) {
    return std::make_unique<File>(&stream, true, TagLib::AudioProperties::Average);
}

// For kinds whose tags are made of ID3v2 frames.
template <class File>
std::unique_ptr<TagLib::File> OpenWithFrames(TagLib::IOStream& stream) {
    return std::make_unique<File>(&stream, TagLib::ID3v2::FrameFactory::instance(), true,
                                  TagLib::AudioProperties::Average);
}

void SetCoding(AudioFacts& facts, AVCodecID coding, int bits) {
    facts.kind = CodecName(coding);
    facts.formatTag = WaveFormatNumber(coding);
    facts.bitsPerSample = bits > 0 && IsLossless(coding) ? bits : 16;
}

void SetFrames(AudioFacts& facts, qint64 frames) {
    facts.frames = std::clamp<qint64>(frames, 0, mostFrames);
    facts.durationMs = DurationOfFrames(facts.frames, facts.rateHz);
}

int BpsOfKbps(int kbps) {
    return std::clamp(kbps, 0, std::numeric_limits<int>::max() / 1000) * 1000;
}

void SetPlainBitrate(AudioFacts& facts, int bits) {
    const qint64 bps = static_cast<qint64>(facts.rateHz) * facts.channels * bits;
    facts.bitrateBps = static_cast<int>(std::min<qint64>(bps, std::numeric_limits<int>::max()));
}

void SetMpeg(AudioFacts& facts, BoundedFile& file, const MpegFrame& first) {
    SetCoding(facts,
              first.layer == 1   ? AV_CODEC_ID_MP1
              : first.layer == 2 ? AV_CODEC_ID_MP2
                                 : AV_CODEC_ID_MP3,
              0);
    facts.rateHz = first.rateHz;
    facts.channels = first.channels;
    const std::optional<MpegLength> length = MeasureMpeg(file, first);
    facts.bitrateBps = length ? length->bitrateBps : first.bitrateBps;
    SetFrames(facts, length ? length->frames : 0);
}

AVCodecID AsfCoding(const TagLib::ASF::Properties& asf) {
    switch (asf.codec()) {
    case TagLib::ASF::Properties::WMA1:
        return AV_CODEC_ID_WMAV1;
    case TagLib::ASF::Properties::WMA9Pro:
        return AV_CODEC_ID_WMAPRO;
    case TagLib::ASF::Properties::WMA9Lossless:
        return AV_CODEC_ID_WMALOSSLESS;
    default:
        return AV_CODEC_ID_WMAV2;
    }
}

// The place of a page in the samples stands in its header.
void SetOggFrames(AudioFacts& facts, TagLib::Ogg::File& ogg, qint64 skippedFrames) {
    const TagLib::Ogg::PageHeader* first = ogg.firstPageHeader();
    const TagLib::Ogg::PageHeader* last = ogg.lastPageHeader();
    if (first == nullptr || last == nullptr) {
        return;
    }
    // A page where no packet ends has none, which is told by -1; a broken one has any.
    const qint64 begin = std::max<qint64>(first->absoluteGranularPosition(), 0);
    const qint64 end = last->absoluteGranularPosition();
    if (end > begin) {
        SetFrames(facts, end - begin - skippedFrames);
    }
}

qint64 OpusPreSkip(TagLib::Ogg::Opus::File& opus) {
    const TagLib::ByteVector head = opus.packet(0);
    return head.size() >= 12 ? head.toUShort(10U, false) : 0;
}

template <class Properties>
void SetCounted(AudioFacts& facts, const Properties& properties, AVCodecID coding, int bits) {
    SetCoding(facts, coding, bits);
    SetFrames(facts, static_cast<qint64>(properties.sampleFrames()));
}

void SetOgg(AudioFacts& facts, TagLib::File& tagged, FileKind kind) {
    if (kind == FileKind::OggVorbis) {
        SetCoding(facts, AV_CODEC_ID_VORBIS, 0);
        SetOggFrames(facts, dynamic_cast<TagLib::Ogg::File&>(tagged), 0);
    } else if (kind == FileKind::OggOpus) {
        auto& opus = dynamic_cast<TagLib::Ogg::Opus::File&>(tagged);
        SetCoding(facts, AV_CODEC_ID_OPUS, 0);
        facts.rateHz = 48000; // what an Opus stream always decodes to
        SetOggFrames(facts, opus, OpusPreSkip(opus));
    } else if (kind == FileKind::OggSpeex) {
        SetCoding(facts, AV_CODEC_ID_SPEEX, 0);
    } else {
        const auto& flac = dynamic_cast<TagLib::FLAC::Properties&>(*tagged.audioProperties());
        SetCounted(facts, flac, AV_CODEC_ID_FLAC, flac.bitsPerSample());
    }
}

void SetMp4(AudioFacts& facts, const TagLib::MP4::Properties& mp4) {
    const bool lossless = mp4.codec() == TagLib::MP4::Properties::ALAC;
    SetCoding(facts, lossless ? AV_CODEC_ID_ALAC : AV_CODEC_ID_AAC, mp4.bitsPerSample());
}

// Whether its samples need a decoder, of which TagLib has no name.
bool IsCodedAiff(const TagLib::AudioProperties& properties) {
    static constexpr std::array plain = {"NONE", "sowt", "twos", "raw ", "in24",
                                         "in32", "fl32", "FL32", "fl64", "FL64"};
    const auto* const aiff = dynamic_cast<const TagLib::RIFF::AIFF::Properties*>(&properties);
    return aiff != nullptr && aiff->isAiffC() &&
           std::none_of(plain.begin(), plain.end(),
                        [&](const char* type) { return aiff->compressionType() == type; });
}

// What only the kind's own properties tell: coding, and a frame count where it is stored.
void SetByKind(AudioFacts& facts, TagLib::File& tagged, BoundedFile& file, const FoundKind& found) {
    TagLib::AudioProperties& base = *tagged.audioProperties();
    switch (found.kind) {
    case FileKind::Aiff: {
        const auto& aiff = dynamic_cast<TagLib::RIFF::AIFF::Properties&>(base);
        SetCounted(facts, aiff, CodingOfWaveFormat(1, aiff.bitsPerSample()), aiff.bitsPerSample());
        if (!aiff.isAiffC()) {
            SetPlainBitrate(facts, (aiff.bitsPerSample() + 7) / 8 * 8);
        }
        break;
    }
    case FileKind::Flac: {
        const auto& flac = dynamic_cast<TagLib::FLAC::Properties&>(base);
        SetCounted(facts, flac, AV_CODEC_ID_FLAC, flac.bitsPerSample());
        break;
    }
    case FileKind::Musepack: {
        const auto& mpc = dynamic_cast<TagLib::MPC::Properties&>(base);
        SetCounted(facts, mpc, mpc.mpcVersion() >= 8 ? AV_CODEC_ID_MUSEPACK8 : AV_CODEC_ID_MUSEPACK7, 0);
        break;
    }
    case FileKind::MonkeysAudio: {
        const auto& ape = dynamic_cast<TagLib::APE::Properties&>(base);
        SetCounted(facts, ape, AV_CODEC_ID_APE, ape.bitsPerSample());
        break;
    }
    case FileKind::WavPack: {
        const auto& wavPack = dynamic_cast<TagLib::WavPack::Properties&>(base);
        SetCounted(facts, wavPack, AV_CODEC_ID_WAVPACK, wavPack.bitsPerSample());
        break;
    }
    case FileKind::TrueAudio: {
        const auto& tta = dynamic_cast<TagLib::TrueAudio::Properties&>(base);
        SetCounted(facts, tta, AV_CODEC_ID_TTA, tta.bitsPerSample());
        break;
    }
    case FileKind::Asf:
        SetCoding(facts, AsfCoding(dynamic_cast<TagLib::ASF::Properties&>(base)), 0);
        break;
    case FileKind::Mp4:
        SetMp4(facts, dynamic_cast<TagLib::MP4::Properties&>(base));
        break;
    case FileKind::Mpeg:
        SetMpeg(facts, file, *found.mpegFrame);
        break;
    default:
        SetOgg(facts, tagged, found.kind);
        break;
    }
}

} // namespace

std::unique_ptr<TagLib::File> OpenTaggedFile(TagLib::IOStream& stream, FileKind kind) {
    std::unique_ptr<TagLib::File> tagged;
    switch (kind) {
    case FileKind::Wave:
        tagged = OpenAs<TagLib::RIFF::WAV::File>(stream);
        break;
    case FileKind::Aiff:
        tagged = OpenAs<TagLib::RIFF::AIFF::File>(stream);
        break;
    case FileKind::OggVorbis:
        tagged = OpenAs<TagLib::Ogg::Vorbis::File>(stream);
        break;
    case FileKind::OggOpus:
        tagged = OpenAs<TagLib::Ogg::Opus::File>(stream);
        break;
    case FileKind::OggSpeex:
        tagged = OpenAs<TagLib::Ogg::Speex::File>(stream);
        break;
    case FileKind::OggFlac:
        tagged = OpenAs<TagLib::Ogg::FLAC::File>(stream);
        break;
    case FileKind::Flac:
        tagged = OpenWithFrames<TagLib::FLAC::File>(stream);
        break;
    case FileKind::Musepack:
        tagged = OpenAs<TagLib::MPC::File>(stream);
        break;
    case FileKind::MonkeysAudio:
        tagged = OpenAs<TagLib::APE::File>(stream);
        break;
    case FileKind::WavPack:
        tagged = OpenAs<TagLib::WavPack::File>(stream);
        break;
    case FileKind::TrueAudio:
        tagged = OpenWithFrames<TagLib::TrueAudio::File>(stream);
        break;
    case FileKind::Asf:
        tagged = OpenAs<TagLib::ASF::File>(stream);
        break;
    case FileKind::Mp4:
        tagged = OpenAs<TagLib::MP4::File>(stream);
        break;
    case FileKind::Mpeg:
        tagged = OpenWithFrames<TagLib::MPEG::File>(stream);
        break;
    case FileKind::Avi:
    case FileKind::OggOther:
    case FileKind::OtherMarked:
    case FileKind::Unknown:
        break;
    }
    return tagged && tagged->isValid() ? std::move(tagged) : nullptr;
}

std::optional<AudioFacts> TechnicalFacts(TagLib::File& tagged, BoundedFile& file, const FoundKind& found) {
    const TagLib::AudioProperties* properties = tagged.audioProperties();
    if (properties == nullptr || IsCodedAiff(*properties)) {
        return std::nullopt;
    }
    AudioFacts facts;
    facts.rateHz = properties->sampleRate();
    facts.channels = properties->channels();
    facts.bitrateBps = BpsOfKbps(properties->bitrate());
    facts.durationMs = std::max(properties->lengthInMilliseconds(), 0);
    SetByKind(facts, tagged, file, found);
    if (facts.frames == 0) {
        facts.frames = FramesOfDuration(facts.durationMs, facts.rateHz);
    }
    if (facts.rateHz <= 0 || facts.channels <= 0) {
        return std::nullopt;
    }
    return facts;
}

} // namespace kestrune
