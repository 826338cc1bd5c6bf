// ID3v2 tags in front of the audio, of any kind of file.
#pragma once

#include "backends/formats/byte_source.h"

namespace kestrune {

// Bytes of all ID3v2 tags at the start; 0 without one, and never beyond the end.
qint64 LeadingTagBytes(ByteSource& bytes);

} // namespace kestrune
