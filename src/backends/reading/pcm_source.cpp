#include "backends/reading/pcm_source.h"

#include "backends/formats/codec_names.h"

#include <spandsp.h>

#include <algorithm>
#include <cstring>

namespace kestrune {

namespace {

constexpr qint64 blockFrames = 4096;

int SampleBytes(PcmCoding coding) {
    switch (coding) {
    case PcmCoding::Unsigned8:
    case PcmCoding::ALaw:
    case PcmCoding::MuLaw:
        return 1;
    case PcmCoding::Signed16:
        return 2;
    case PcmCoding::Signed24:
        return 3;
    case PcmCoding::Signed32:
    case PcmCoding::Float32:
        return 4;
    case PcmCoding::Float64:
        return 8;
    }
    return 1;
}

AVSampleFormat ConverterFormat(PcmCoding coding) {
    switch (coding) {
    case PcmCoding::Unsigned8:
        return AV_SAMPLE_FMT_U8;
    case PcmCoding::Signed24:
    case PcmCoding::Signed32:
        return AV_SAMPLE_FMT_S32;
    case PcmCoding::Float32:
        return AV_SAMPLE_FMT_FLT;
    case PcmCoding::Float64:
        return AV_SAMPLE_FMT_DBL;
    case PcmCoding::Signed16:
    case PcmCoding::ALaw:
    case PcmCoding::MuLaw:
        break;
    }
    return AV_SAMPLE_FMT_S16;
}

QString KindText(PcmCoding coding) {
    switch (coding) {
    case PcmCoding::ALaw:
        return CodecName(AV_CODEC_ID_PCM_ALAW);
    case PcmCoding::MuLaw:
        return CodecName(AV_CODEC_ID_PCM_MULAW);
    default:
        return CodecName(AV_CODEC_ID_PCM_S16LE);
    }
}

QByteArray ExpandLaw(const QByteArray& bytes, PcmCoding coding) {
    QByteArray wide(bytes.size() * 2, Qt::Uninitialized);
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        const auto code = static_cast<uint8_t>(bytes[at]);
        const qint16 sample = coding == PcmCoding::ALaw ? alaw_to_linear(code) : ulaw_to_linear(code);
        std::memcpy(wide.data() + at * 2, &sample, sizeof sample);
    }
    return wide;
}

QByteArray Expand24(const QByteArray& bytes) {
    const qsizetype samples = bytes.size() / 3;
    QByteArray wide(samples * 4, '\0');
    for (qsizetype at = 0; at < samples; ++at) {
        std::memcpy(wide.data() + at * 4 + 1, bytes.constData() + at * 3, 3);
    }
    return wide;
}

QByteArray Expand(const QByteArray& bytes, PcmCoding coding) {
    switch (coding) {
    case PcmCoding::ALaw:
    case PcmCoding::MuLaw:
        return ExpandLaw(bytes, coding);
    case PcmCoding::Signed24:
        return Expand24(bytes);
    default:
        return bytes;
    }
}

} // namespace

PcmSource::PcmSource(std::unique_ptr<QFile> file, const PcmLayout& layout)
    : file_(std::move(file)), layout_(layout), converter_(std::min(layout.channels, 2)) {
    av_channel_layout_from_mask(&speakers_, layout.speakerMask);
    if (speakers_.nb_channels != layout.channels) {
        av_channel_layout_default(&speakers_, layout.channels);
    }
    info_.kind = KindText(layout.coding);
    info_.rateHz = layout.rateHz;
    info_.channels = std::min(layout.channels, 2);
    const qint64 bitrate = FrameBytes() * 8 * layout.rateHz;
    info_.bitrateBps = static_cast<int>(std::min<qint64>(bitrate, std::numeric_limits<int>::max()));
    file_->seek(layout_.dataOffset);
}

PcmSource::~PcmSource() {
    av_channel_layout_uninit(&speakers_);
}

std::optional<PcmLayout> PcmSource::LayoutOf(const WaveHeader& header) {
    // A sample of 12 or 20 bits takes whole bytes.
    const int storedBits = (header.bits + 7) / 8 * 8;
    const std::optional<PcmCoding> coding = WavePcmCoding(header.tag, storedBits);
    if (!coding) {
        return {};
    }
    PcmLayout layout;
    layout.coding = *coding;
    layout.rateHz = header.rateHz;
    layout.channels = header.channels;
    layout.speakerMask = header.speakerMask;
    layout.dataOffset = header.dataOffset;
    layout.dataBytes = header.dataBytes;
    return layout;
}

qint64 PcmSource::FrameBytes() const {
    return static_cast<qint64>(SampleBytes(layout_.coding)) * layout_.channels;
}

bool PcmSource::DecodeNext(std::vector<qint16>& piece) {
    const qint64 frames = std::min(blockFrames, CountFrames() - DecodePosition());
    if (frames <= 0) {
        return false;
    }
    const QByteArray bytes = file_->read(frames * FrameBytes());
    const int got = static_cast<int>(bytes.size() / FrameBytes());
    if (got == 0) {
        return false;
    }
    expanded_ = Expand(bytes, layout_.coding);
    const auto* plane = reinterpret_cast<const uint8_t*>(expanded_.constData());
    const RawFrames raw{&plane, ConverterFormat(layout_.coding), &speakers_, got};
    return converter_.Convert(raw, 0, got, DecodePosition(), piece);
}

bool PcmSource::Rewind() {
    return JumpBefore(0) == 0;
}

qint64 PcmSource::JumpBefore(qint64 frame) {
    const qint64 place = std::min(frame, CountFrames());
    return file_->seek(layout_.dataOffset + place * FrameBytes()) ? place : -1;
}

qint64 PcmSource::CountFrames() {
    return layout_.dataBytes / FrameBytes();
}

} // namespace kestrune
