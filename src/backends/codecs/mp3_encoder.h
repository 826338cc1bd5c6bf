// MPEG layer 3 by LAME.
#pragma once

#include "backends/codecs/output_format.h"
#include "backends/codecs/sample_encoder.h"

#include <memory>
#include <optional>

namespace kestrune {

// None when the encoder refuses the combination. The preset fields and the command line are not read.
std::optional<OutputFormat> Mp3Format(const Mp3Options& options);
// Of a format that the call above gave.
std::unique_ptr<SampleEncoder> MakeMp3Encoder(const OutputFormat& format);

} // namespace kestrune
