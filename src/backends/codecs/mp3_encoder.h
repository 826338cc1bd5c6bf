// MPEG layer 3 by LAME.
#pragma once

#include "backends/codecs/output_format.h"
#include "backends/codecs/sample_encoder.h"

#include <memory>
#include <optional>

namespace kestrune {

// The options with what their command line, preset and alternative preset say brought into the other fields.
// A preset counts when it is not 0; the command line counts last. What is not understood changes nothing.
Mp3Options WithPresets(const Mp3Options& options);
// None when the encoder refuses the combination.
std::optional<OutputFormat> Mp3Format(const Mp3Options& options);
// Of a format that the call above gave.
std::unique_ptr<SampleEncoder> MakeMp3Encoder(const OutputFormat& format);

} // namespace kestrune
