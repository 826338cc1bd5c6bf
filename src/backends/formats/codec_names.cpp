#include "backends/formats/codec_names.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

#include <algorithm>
#include <array>

namespace kestrune {

namespace {

struct Name {
    AVCodecID codec;
    const char* text;
};

constexpr std::array names = {
    Name{AV_CODEC_ID_MP1, "MPEG Layer-1"},
    Name{AV_CODEC_ID_MP2, "MPEG Layer-2"},
    Name{AV_CODEC_ID_MP3, "MPEG Layer-3"},
    Name{AV_CODEC_ID_VORBIS, "Ogg Vorbis"},
    Name{AV_CODEC_ID_WMAV1, "Windows Media Audio"},
    Name{AV_CODEC_ID_WMAV2, "Windows Media Audio"},
    Name{AV_CODEC_ID_WMAPRO, "Windows Media Audio"},
    Name{AV_CODEC_ID_WMALOSSLESS, "Windows Media Audio"},
    Name{AV_CODEC_ID_WMAVOICE, "Windows Media Audio"},
    Name{AV_CODEC_ID_ADPCM_IMA_WAV, "IMA ADPCM"},
    Name{AV_CODEC_ID_ADPCM_MS, "Microsoft ADPCM"},
    Name{AV_CODEC_ID_GSM, "GSM 6.10"},
    Name{AV_CODEC_ID_GSM_MS, "GSM 6.10"},
    Name{AV_CODEC_ID_TRUESPEECH, "TrueSpeech"},
    Name{AV_CODEC_ID_DSS_SP, "DSS"},
    Name{AV_CODEC_ID_MUSEPACK7, "Musepack SV7"},
    Name{AV_CODEC_ID_MUSEPACK8, "Musepack SV8"},
    Name{AV_CODEC_ID_PCM_ALAW, "A-Law"},
    Name{AV_CODEC_ID_PCM_MULAW, "mu-Law"},
};

} // namespace

QString CodecName(AVCodecID codec) {
    const auto* const found =
        std::find_if(names.begin(), names.end(), [&](const Name& name) { return name.codec == codec; });
    if (found != names.end()) {
        return QString::fromLatin1(found->text);
    }
    return IsPcm(codec) ? QStringLiteral("PCM") : QString::fromLatin1(avcodec_get_name(codec)).toUpper();
}

bool IsPcm(AVCodecID codec) {
    return codec >= AV_CODEC_ID_PCM_S16LE && codec < AV_CODEC_ID_ADPCM_IMA_QT;
}

} // namespace kestrune
