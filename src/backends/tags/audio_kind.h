// Codings, by the number libavcodec has for them.
#pragma once

#include <QString>

extern "C" {
#include <libavcodec/codec_id.h>
}

namespace kestrune {

// "MPEG Layer-3", "PCM" and so on; a coding without a name here has the library's in capitals.
QString KindName(AVCodecID coding);

// The WAVE format number; 0 for a coding that has none.
int WaveFormatNumber(AVCodecID coding);

// The coding of a WAVE format number; AV_CODEC_ID_NONE if unknown.
AVCodecID CodingOfWaveFormat(int formatNumber, int bits);

// Whether samples come back as they went in.
bool IsLossless(AVCodecID coding);

} // namespace kestrune
