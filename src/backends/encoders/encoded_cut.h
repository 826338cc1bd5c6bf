// Shortening of files that our own encoders wrote.
#pragma once

#include "backends/formats/output_format.h"

#include <QtGlobal>

#include <optional>

class QIODevice;

namespace kestrune {

// Makes of a finished file in `format` the file that its encoder would have written of its first `frames`
// sample frames (at the rate of the format), without coding anything again: about as long as reading it
// takes. The length is told exactly where the kind tells one. What is coded in blocks ends with the block
// that holds the last frame; of the samples behind it in that block something may be heard, where plain
// coding would have put silence.
//
// Gives the bytes of the file that are left; the caller takes those behind them off. Nothing when the file is
// not as it should be or could not be written, and its content is undefined then. `file` is open for reading
// and writing.
std::optional<qint64> CutEncoded(QIODevice& file, const OutputFormat& format, qint64 frames);

} // namespace kestrune
