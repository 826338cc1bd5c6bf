// Picks what writes a format.
#pragma once

#include "backends/codecs/output_format.h"
#include "backends/codecs/sample_encoder.h"

#include <memory>

namespace kestrune {

// Null for a format of no kind.
std::unique_ptr<SampleEncoder> MakeEncoder(const OutputFormat& format);

} // namespace kestrune
