// Shortening of MPEG audio that our own encoders wrote.
#pragma once

#include <QtGlobal>

#include <optional>

class QIODevice;

namespace kestrune {

// Both look at coded frames of layer 2 or 3 that follow each other without a gap from `start` to the end of
// the file, and give the bytes of the file that hold the first `frames` sample frames of what was coded,
// with the delay of coding and decoding. Nothing when the frames are not as they should be.
//
// Without a first frame that tells the length: `delay` is that of the coder, in sample frames.
std::optional<qint64> MpegCut(QIODevice& file, qint64 start, qint64 frames, int delay);
// With such a frame at the start, or without. It is brought in line with what is left. The file is open for
// reading and writing.
std::optional<qint64> Mp3Cut(QIODevice& file, qint64 frames);

} // namespace kestrune
