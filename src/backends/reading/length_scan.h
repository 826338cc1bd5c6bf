// Lengths of files without decoding them.
#pragma once

#include "backends/reading/lavf_input.h"

#include <QString>

namespace kestrune {

// True if the header or the last page of the file tells the length that a decode gives, so that its packets
// need not be read: plain samples, FLAC, and Vorbis in Ogg. A FLAC file that was cut still tells its old
// length.
bool HasHeaderLength(const LavfInput& input);
// That length, in frames.
qint64 HeaderLength(const LavfInput& input);

// Frames of a file by the packets' own durations, at a rate in Hz. Exact for Windows Media 1 and 2, for GSM
// and where durations count samples (Opus, AAC in MP4 or alone); an estimate, mostly within a frame of the
// coding, for others and for containers that count milliseconds (Matroska).
qint64 ScanLength(const QString& path, int rateHz);

} // namespace kestrune
