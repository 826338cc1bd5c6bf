#include "backends/tags/wave_numbers.h"

#include "backends/formats/codec_names.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <array>

namespace kestrune {

namespace {

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

bool IsFloatPcm(AVCodecID coding) {
    return coding == AV_CODEC_ID_PCM_F32LE || coding == AV_CODEC_ID_PCM_F32BE ||
           coding == AV_CODEC_ID_PCM_F64LE || coding == AV_CODEC_ID_PCM_F64BE;
}

} // namespace

int WaveFormatNumber(AVCodecID coding) {
    for (const Number& number : numbers) {
        if (number.coding == coding) {
            return number.formatNumber;
        }
    }
    if (IsFloatPcm(coding)) {
        return 3;
    }
    if (IsPcm(coding)) {
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
    if (IsPcm(coding)) {
        return coding != AV_CODEC_ID_PCM_ALAW && coding != AV_CODEC_ID_PCM_MULAW;
    }
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get(coding);
    return descriptor != nullptr && (descriptor->props & AV_CODEC_PROP_LOSSLESS) != 0 &&
           (descriptor->props & AV_CODEC_PROP_LOSSY) == 0;
}

} // namespace kestrune
