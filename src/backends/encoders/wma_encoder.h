// Windows Media Audio 2 by libavcodec.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/encoders/wma_profiles.h"
#include "backends/formats/output_format.h"

#include <memory>
#include <optional>

namespace kestrune {

// Of a profile from 0 on. None for a number that there is not.
std::optional<OutputFormat> WmaFormat(qint32 profile);
// Of a format that the call above gave. The file decodes from its first sample on, and to at most two frames
// of the coding (2,048 samples each above 22,050 Hz) behind its last; the header tells the true length.
std::unique_ptr<SampleEncoder> MakeWmaEncoder(const OutputFormat& format);

} // namespace kestrune
