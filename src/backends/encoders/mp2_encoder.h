// MPEG layer 2 by twolame.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <memory>
#include <optional>

namespace kestrune {

// `channels`: 1 mono, 2 stereo, 3 joint, 4 forced joint, 5 dual. A bit rate that does not go with the rate
// and the channels becomes the next one below that does, or the least one. None for another sample rate.
std::optional<OutputFormat> Mp2Format(qint32 rateHz, qint32 bitrateKbps, qint32 channels);
// Of a format that the call above gave. A decoder gives 481 samples of silence first, then the whole input,
// and fills up the last frame: layer 2 has no place to tell of that.
std::unique_ptr<SampleEncoder> MakeMp2Encoder(const OutputFormat& format);

} // namespace kestrune
