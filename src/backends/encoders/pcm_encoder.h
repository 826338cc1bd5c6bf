// Samples that are stored one by one: plain integers and floats, A-law and mu-law.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <memory>

namespace kestrune {

// Of a format of kind Pcm (a WAVE file of 8, 16, 24 or 32 bits), Raw (no header; the same bits, or companded)
// or Template (a WAVE file with the tag of integers, floats, A-law or mu-law). What it can't store is refused
// by Begin.
//
// 16-bit samples are stored as they are. 8-bit ones are dithered (TPDF), except where the sample is one of
// the 8-bit scale already, so that silence stays silence and an 8-bit source stays what it was. More bits and
// floats are taken from floats, of which a 16-bit sample divided by 32,768 comes back bit for bit.
std::unique_ptr<SampleEncoder> MakePcmEncoder(const OutputFormat& format);

} // namespace kestrune
