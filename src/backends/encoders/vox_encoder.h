// Dialogic (OKI) ADPCM without a header, by libsndfile.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <memory>

namespace kestrune {

// Of a format of kind Vox: mono at any rate, two samples a byte; an odd last sample gets a silent companion.
std::unique_ptr<SampleEncoder> MakeVoxEncoder(const OutputFormat& format);

} // namespace kestrune
