// Ogg Vorbis by libvorbis.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <memory>
#include <optional>

namespace kestrune {

// None when the encoder refuses the combination.
std::optional<OutputFormat> VorbisFormat(qint32 rateHz, qint32 channels, const VorbisRates& rates);
// Of a format that the call above gave.
std::unique_ptr<SampleEncoder> MakeVorbisEncoder(const OutputFormat& format);

} // namespace kestrune
