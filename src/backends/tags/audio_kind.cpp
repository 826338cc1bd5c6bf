#include "backends/tags/audio_kind.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <array>

namespace kestrune {

namespace {

struct Name {
    AVCodecID coding;
    const char* text;
};

// The same words that the reader of samples uses.
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

// Codings that a WAVE file may hold under more than one number, or that libavformat's table leaves out.
struct Number {
    AVCodecID coding;
    int formatNumber;
};

constexpr std::array numbers = {
    Number{AV_CODEC_ID_PCM_ALAW, 6},         Number{AV_CODEC_ID_PCM_MULAW, 7},
    Number{AV_CODEC_ID_ADPCM_IMA_OKI, 0x10}, Number{AV_CODEC_ID_GSM, 0x31},
    Number{AV_CODEC_ID_ADPCM_G726, 0x45},    Number{AV_CODEC_ID_ADPCM_G726LE, 0x45},
    Number{AV_CODEC_ID_MP1, 0x50},           Number{AV_CODEC_ID_MP2, 0x50},
    Number{AV_CODEC_ID_OPUS, 0x704F},        Number{AV_CODEC_ID_WAVPACK, 0x5756},
    Number{AV_CODEC_ID_TTA, 0x77A1},
};

bool IsPlainPcm(AVCodecID coding) {
    return coding >= AV_CODEC_ID_PCM_S16LE && coding < AV_CODEC_ID_ADPCM_IMA_QT;
}

bool IsFloatPcm(AVCodecID coding) {
    return coding == AV_CODEC_ID_PCM_F32LE || coding == AV_CODEC_ID_PCM_F32BE ||
           coding == AV_CODEC_ID_PCM_F64LE || coding == AV_CODEC_ID_PCM_F64BE;
}

} // namespace

QString KindName(AVCodecID coding) {
    for (const Name& name : names) {
        if (name.coding == coding) {
            return QString::fromLatin1(name.text);
        }
    }
    return IsPlainPcm(coding) ? QStringLiteral("PCM")
                              : QString::fromLatin1(avcodec_get_name(coding)).toUpper();
}

int WaveFormatNumber(AVCodecID coding) {
    for (const Number& number : numbers) {
        if (number.coding == coding) {
            return number.formatNumber;
        }
    }
    if (IsFloatPcm(coding)) {
        return 3;
    }
    if (IsPlainPcm(coding)) {
        return 1;
    }
    const std::array<const AVCodecTag*, 2> tables = {avformat_get_riff_audio_tags(), nullptr};
    return static_cast<int>(av_codec_get_tag(tables.data(), coding));
}

AVCodecID CodingOfWaveFormat(int formatNumber, int bits) {
    if (formatNumber == 1) {
        return bits > 24   ? AV_CODEC_ID_PCM_S32LE
               : bits > 16 ? AV_CODEC_ID_PCM_S24LE
               : bits > 8  ? AV_CODEC_ID_PCM_S16LE
                           : AV_CODEC_ID_PCM_U8;
    }
    if (formatNumber == 3) {
        return bits > 32 ? AV_CODEC_ID_PCM_F64LE : AV_CODEC_ID_PCM_F32LE;
    }
    const std::array<const AVCodecTag*, 2> tables = {avformat_get_riff_audio_tags(), nullptr};
    return av_codec_get_id(tables.data(), static_cast<unsigned>(formatNumber));
}

bool IsLossless(AVCodecID coding) {
    if (IsPlainPcm(coding)) {
        return coding != AV_CODEC_ID_PCM_ALAW && coding != AV_CODEC_ID_PCM_MULAW;
    }
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get(coding);
    return descriptor != nullptr && (descriptor->props & AV_CODEC_PROP_LOSSLESS) != 0 &&
           (descriptor->props & AV_CODEC_PROP_LOSSY) == 0;
}

} // namespace kestrune
