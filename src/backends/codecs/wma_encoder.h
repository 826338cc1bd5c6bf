// Windows Media Audio 2 by libavcodec.
#pragma once

#include "backends/codecs/output_format.h"
#include "backends/codecs/sample_encoder.h"

#include <memory>
#include <optional>

namespace kestrune {

constexpr qint32 wmaProfileCount = 48;
// Profiles 0 to 47, ordered by sample rate, channels and bit rate. None for another number.
std::optional<OutputFormat> WmaFormat(qint32 profile);
// Of a format that the call above gave.
std::unique_ptr<SampleEncoder> MakeWmaEncoder(const OutputFormat& format);

} // namespace kestrune
