// TrueSpeech in WAVE, 8,000 Hz mono at 8.5 kbit/s.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <memory>

namespace kestrune {

OutputFormat TrueSpeechFormat();
// Of a format that the call above gave.
std::unique_ptr<SampleEncoder> MakeTrueSpeechEncoder(const OutputFormat& format);

} // namespace kestrune
