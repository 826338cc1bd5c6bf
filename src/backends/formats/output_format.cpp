#include "backends/formats/output_format.h"

#include "backends/formats/format_text.h"
#include "backends/formats/wave_header.h"

namespace kestrune {

namespace {

QString RawKind(qint32 type) {
    switch (type) {
    case RawALaw:
        return QStringLiteral("A-Law");
    case RawMuLaw:
        return QStringLiteral("mu-Law");
    default:
        return QStringLiteral("PCM");
    }
}

QString WaveKind(quint16 tag) {
    switch (tag) {
    case WaveTagPcm:
    case WaveTagFloat:
        return QStringLiteral("PCM");
    case WaveTagALaw:
        return QStringLiteral("A-Law");
    case WaveTagMuLaw:
        return QStringLiteral("mu-Law");
    case WaveTagMsAdpcm:
        return QStringLiteral("Microsoft ADPCM");
    case WaveTagImaAdpcm:
        return QStringLiteral("IMA ADPCM");
    case WaveTagTrueSpeech:
        return QStringLiteral("TrueSpeech");
    case WaveTagGsm610:
        return QStringLiteral("GSM 6.10");
    case WaveTagMp3:
        return QStringLiteral("MPEG Layer-3");
    default:
        return QStringLiteral("WAVE format %1").arg(tag);
    }
}

QString KindText(const OutputFormat& format) {
    switch (format.kind) {
    case FormatKind::None:
        return {};
    case FormatKind::Pcm:
        return QStringLiteral("PCM");
    case FormatKind::Template:
        return WaveKind(format.waveTag);
    case FormatKind::Raw:
        return RawKind(format.rawType);
    case FormatKind::ImaAdpcm:
        return QStringLiteral("IMA ADPCM");
    case FormatKind::Gsm:
        return QStringLiteral("GSM 6.10");
    case FormatKind::Vox:
        return QStringLiteral("Dialogic VOX");
    case FormatKind::TrueSpeech:
        return QStringLiteral("TrueSpeech");
    case FormatKind::Mp2:
        return QStringLiteral("MPEG Layer-2");
    case FormatKind::Mp3:
        return QStringLiteral("MPEG Layer-3");
    case FormatKind::Vorbis:
        return QStringLiteral("Ogg Vorbis");
    case FormatKind::WindowsMedia:
        return QStringLiteral("Windows Media Audio");
    case FormatKind::G721:
        return QStringLiteral("G.721");
    case FormatKind::G723:
        return QStringLiteral("G.723");
    case FormatKind::G726:
        return QStringLiteral("G.726");
    }
    return {};
}

} // namespace

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
    const QString kind = KindText(format);
    if (kind.isEmpty()) {
        return {};
    }
    return FormatText(kind, format.rateHz, BitrateOf(format), format.channels, BitrateUnit::Small);
}

} // namespace kestrune
