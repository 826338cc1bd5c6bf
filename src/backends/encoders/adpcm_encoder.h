// IMA and Microsoft ADPCM in WAVE, by libavcodec.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <memory>

namespace kestrune {

// Of a format of kind ImaAdpcm, with the usual block size of its rate, or Template with the tag of either
// coding and the template's block size, which Begin refuses if it is none that can be written. The last block
// is filled up with silence; the header tells the length without it.
std::unique_ptr<SampleEncoder> MakeAdpcmEncoder(const OutputFormat& format);
// True for the block sizes that can be written, in bytes: powers of two from 32 to 8,192.
bool IsAdpcmBlock(int blockBytes);

} // namespace kestrune
