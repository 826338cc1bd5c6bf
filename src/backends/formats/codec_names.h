// Names of codings as users read them.
#pragma once

#include <QString>

extern "C" {
#include <libavcodec/codec_id.h>
}

namespace kestrune {

QString CodecName(AVCodecID codec);

} // namespace kestrune
