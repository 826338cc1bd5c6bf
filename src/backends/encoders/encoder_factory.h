// Picks what writes a format.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <memory>

namespace kestrune {

// Null for a format of no kind.
std::unique_ptr<SampleEncoder> MakeEncoder(const OutputFormat& format);

} // namespace kestrune
