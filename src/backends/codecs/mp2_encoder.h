// MPEG layer 2 by twolame.
#pragma once

#include "backends/codecs/output_format.h"
#include "backends/codecs/sample_encoder.h"

#include <memory>
#include <optional>

namespace kestrune {

// `channels`: 1 mono, 2 stereo, 3 joint, 4 forced joint, 5 dual. None when the encoder refuses the
// combination.
std::optional<OutputFormat> Mp2Format(qint32 rateHz, qint32 bitrateKbps, qint32 channels);
// Of a format that the call above gave.
std::unique_ptr<SampleEncoder> MakeMp2Encoder(const OutputFormat& format);

} // namespace kestrune
