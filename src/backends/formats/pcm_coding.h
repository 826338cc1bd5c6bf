// The codings of uncompressed and companded samples. All of several bytes are little-endian.
#pragma once

#include "backends/formats/output_format.h"

#include <QtGlobal>

#include <optional>

namespace kestrune {

enum class PcmCoding { Unsigned8, Signed16, Signed24, Signed32, Float32, Float64, ALaw, MuLaw };

// Each gives nothing for what there is no coding of. `bits` are those of a sample as it is stored.
std::optional<PcmCoding> IntegerPcmCoding(int bits);
std::optional<PcmCoding> FloatPcmCoding(int bits);
// Of headerless data.
std::optional<PcmCoding> RawPcmCoding(const OutputFormat& format);
// Of a WAVE file with this tag.
std::optional<PcmCoding> WavePcmCoding(quint16 tag, int bits);

} // namespace kestrune
