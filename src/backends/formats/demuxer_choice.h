// Which of libavformat's readers is for a file.
#pragma once

#include "backends/formats/byte_source.h"

#include <QString>

struct AVInputFormat;

namespace kestrune {

// Null where the content is no recorded sound, or where it says too little and the extension does not bear it
// out.
const AVInputFormat* ChooseDemuxer(ByteSource& source, const QString& path);

} // namespace kestrune
