#include "backends/formats/output_format.h"

#include "backends/formats/codec_names.h"
#include "backends/formats/format_text.h"
#include "backends/formats/wave_header.h"

namespace kestrune {

namespace {

QString RawKind(qint32 type) {
    switch (type) {
    case RawALaw:
        return CodecName(AV_CODEC_ID_PCM_ALAW);
    case RawMuLaw:
        return CodecName(AV_CODEC_ID_PCM_MULAW);
    default:
        return CodecName(AV_CODEC_ID_PCM_S16LE);
    }
}

QString WaveKind(quint16 tag) {
    switch (tag) {
    case WaveTagPcm:
    case WaveTagFloat:
        return CodecName(AV_CODEC_ID_PCM_S16LE);
    case WaveTagALaw:
        return CodecName(AV_CODEC_ID_PCM_ALAW);
    case WaveTagMuLaw:
        return CodecName(AV_CODEC_ID_PCM_MULAW);
    case WaveTagMsAdpcm:
        return CodecName(AV_CODEC_ID_ADPCM_MS);
    case WaveTagImaAdpcm:
        return CodecName(AV_CODEC_ID_ADPCM_IMA_WAV);
    case WaveTagTrueSpeech:
        return CodecName(AV_CODEC_ID_TRUESPEECH);
    case WaveTagGsm610:
        return CodecName(AV_CODEC_ID_GSM);
    case WaveTagMp3:
        return CodecName(AV_CODEC_ID_MP3);
    default:
        return QStringLiteral("WAVE format %1").arg(tag);
    }
}

} // namespace

QString OutputKindName(const OutputFormat& format) {
    switch (format.kind) {
    case FormatKind::None:
        return {};
    case FormatKind::Pcm:
        return CodecName(AV_CODEC_ID_PCM_S16LE);
    case FormatKind::Template:
        return WaveKind(format.waveTag);
    case FormatKind::Raw:
        return RawKind(format.rawType);
    case FormatKind::ImaAdpcm:
        return CodecName(AV_CODEC_ID_ADPCM_IMA_WAV);
    case FormatKind::Gsm:
        return CodecName(AV_CODEC_ID_GSM);
    case FormatKind::Vox:
        return QStringLiteral("Dialogic VOX");
    case FormatKind::TrueSpeech:
        return CodecName(AV_CODEC_ID_TRUESPEECH);
    case FormatKind::Mp2:
        return CodecName(AV_CODEC_ID_MP2);
    case FormatKind::Mp3:
        return CodecName(AV_CODEC_ID_MP3);
    case FormatKind::Vorbis:
        return CodecName(AV_CODEC_ID_VORBIS);
    case FormatKind::WindowsMedia:
        return CodecName(AV_CODEC_ID_WMAV2);
    case FormatKind::G721:
        return QStringLiteral("G.721");
    case FormatKind::G723:
        return QStringLiteral("G.723");
    case FormatKind::G726:
        return QStringLiteral("G.726");
    }
    return {};
}

int BitrateOf(const OutputFormat& format) {
    switch (format.kind) {
    case FormatKind::Gsm:
        // Blocks of 65 bytes for 320 samples.
        return static_cast<int>(static_cast<qint64>(format.rateHz) * 65 * 8 / 320);
    case FormatKind::Pcm:
    case FormatKind::Raw:
    case FormatKind::ImaAdpcm:
    case FormatKind::Vox:
    case FormatKind::G721:
    case FormatKind::G723:
    case FormatKind::G726:
        return static_cast<int>(static_cast<qint64>(format.rateHz) * format.bits * format.channels);
    default:
        return format.bitrateBps;
    }
}

QString OutputFormatText(const OutputFormat& format) {
    const QString kind = OutputKindName(format);
    if (kind.isEmpty()) {
        return {};
    }
    return FormatText(kind, format.rateHz, BitrateOf(format), format.channels, BitrateUnit::Small);
}

} // namespace kestrune
