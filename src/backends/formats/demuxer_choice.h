// Which of libavformat's readers is for a file.
#pragma once

#include "backends/formats/byte_source.h"

#include <QString>

struct AVIOContext;
struct AVInputFormat;

namespace kestrune {

// Reads from the start of `io` on, and leaves it there; `source` gives the same bytes. Null where the content
// is no recorded sound, or where it says too little and the extension does not bear it out.
const AVInputFormat* ChooseDemuxer(AVIOContext& io, ByteSource& source, const QString& path);

} // namespace kestrune
