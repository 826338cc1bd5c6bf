// Names of codings as users read them. Whoever tells one, for reading, writing or probing, takes it from
// here.
#pragma once

#include <QString>

extern "C" {
#include <libavcodec/codec_id.h>
}

namespace kestrune {

// "MPEG Layer-3", "PCM" and so on; a coding without a name here has the library's in capitals.
QString CodecName(AVCodecID codec);

// Whether it is plain samples, companded ones among them.
bool IsPcm(AVCodecID codec);

} // namespace kestrune
