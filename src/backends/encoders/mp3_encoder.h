// MPEG layer 3 by LAME.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <memory>
#include <optional>

namespace kestrune {

// None when the encoder refuses the combination. The preset fields and the command line are not read.
std::optional<OutputFormat> Mp3Format(const Mp3Options& options);
// Of a format that the call above gave. With the options' header the file decodes to exactly as many samples
// as it was given, at every bit rate; without it a decoder gives the coder's delay and padding too.
std::unique_ptr<SampleEncoder> MakeMp3Encoder(const OutputFormat& format);

} // namespace kestrune
