// G.721, G.723 and G.726 without a header, by libavcodec and, at 5 bits a sample, by libspandsp.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <memory>

namespace kestrune {

// Of a format of kind G721 (4 bits a sample), G723 (3 or 5) or G726 (2 to 5): mono at any rate, packed as
// g72x_source.h reads. The last byte is filled up with silence.
std::unique_ptr<SampleEncoder> MakeG72xEncoder(const OutputFormat& format);

} // namespace kestrune
