// WAVE format numbers of codings.
#pragma once

#include <QtGlobal>

extern "C" {
#include <libavcodec/codec_id.h>
}

namespace kestrune {

// The WAVE format number; 0 for a coding that has none.
int WaveFormatNumber(AVCodecID coding);

// The coding of a WAVE format number; AV_CODEC_ID_NONE if unknown.
AVCodecID CodingOfWaveFormat(int formatNumber, int bits);

// Whether samples come back as they went in.
bool IsLossless(AVCodecID coding);

} // namespace kestrune
