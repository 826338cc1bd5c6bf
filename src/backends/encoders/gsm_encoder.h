// GSM 6.10 in WAVE, by libsndfile.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <memory>

namespace kestrune {

// Of a format of kind Gsm, or Template with the tag of GSM 6.10. Mono at any rate; Begin refuses two
// channels. Blocks hold 320 samples, the last one is filled up with silence.
std::unique_ptr<SampleEncoder> MakeGsmEncoder(const OutputFormat& format);

} // namespace kestrune
