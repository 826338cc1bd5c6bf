#include "backends/formats/codec_names.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace kestrune {

QString CodecName(AVCodecID codec) {
    switch (codec) {
    case AV_CODEC_ID_MP1:
        return QStringLiteral("MPEG Layer-1");
    case AV_CODEC_ID_MP2:
        return QStringLiteral("MPEG Layer-2");
    case AV_CODEC_ID_MP3:
        return QStringLiteral("MPEG Layer-3");
    case AV_CODEC_ID_VORBIS:
        return QStringLiteral("Ogg Vorbis");
    case AV_CODEC_ID_WMAV1:
    case AV_CODEC_ID_WMAV2:
    case AV_CODEC_ID_WMAPRO:
    case AV_CODEC_ID_WMALOSSLESS:
    case AV_CODEC_ID_WMAVOICE:
        return QStringLiteral("Windows Media Audio");
    case AV_CODEC_ID_ADPCM_IMA_WAV:
        return QStringLiteral("IMA ADPCM");
    case AV_CODEC_ID_ADPCM_MS:
        return QStringLiteral("Microsoft ADPCM");
    case AV_CODEC_ID_GSM:
    case AV_CODEC_ID_GSM_MS:
        return QStringLiteral("GSM 6.10");
    case AV_CODEC_ID_TRUESPEECH:
        return QStringLiteral("TrueSpeech");
    case AV_CODEC_ID_DSS_SP:
        return QStringLiteral("DSS");
    case AV_CODEC_ID_PCM_ALAW:
        return QStringLiteral("A-Law");
    case AV_CODEC_ID_PCM_MULAW:
        return QStringLiteral("mu-Law");
    default:
        break;
    }
    const QString name = QString::fromLatin1(avcodec_get_name(codec));
    return name.startsWith(QLatin1String("pcm_")) ? QStringLiteral("PCM") : name.toUpper();
}

} // namespace kestrune
