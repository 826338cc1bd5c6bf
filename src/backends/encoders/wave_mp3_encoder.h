// MPEG layer 3 of a constant bit rate in WAVE.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <memory>

namespace kestrune {

// True if there is an encoder for the rate, channels and bit rate of `format`.
bool IsWaveMp3(const OutputFormat& format);
// Of a format of kind Template with the tag of MPEG layer 3. The header tells the length of the sound; the
// delay of the coding comes on top of it in the data.
std::unique_ptr<SampleEncoder> MakeWaveMp3Encoder(const OutputFormat& format);

} // namespace kestrune
