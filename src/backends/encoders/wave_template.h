// Writing in the format of a WAVE file that a user chose.
#pragma once

#include "backends/encoders/sample_encoder.h"
#include "backends/formats/output_format.h"

#include <memory>

class QIODevice;

namespace kestrune {

// Reads the format of a WAVE file, as kind Template. NotDecodable for what is no WAVE file, NotSupported for
// a coding, channel count or figure that can't be written; `format` is then left alone. Written are integers
// and floats, A-law, mu-law, IMA and Microsoft ADPCM, GSM 6.10, TrueSpeech and MPEG layer 3 of a constant
// rate, in one or two channels as the coding allows. The new file's header is made anew: figures that do not
// fit each other in the template are mended, and a channel mask is dropped.
Outcome ReadTemplateFormat(QIODevice& wave, OutputFormat& format);
// Of a format that the call above gave.
std::unique_ptr<SampleEncoder> MakeTemplateEncoder(const OutputFormat& format);

} // namespace kestrune
