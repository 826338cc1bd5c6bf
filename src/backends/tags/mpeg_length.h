// How long a bare MPEG audio stream sounds.
#pragma once

#include "backends/formats/mpeg_scan.h"
#include "backends/tags/bounded_file.h"

#include <optional>

namespace kestrune {

struct MpegLength {
    qint64 frames = 0;  // sample frames that a decoder gives
    int bitrateBps = 0; // of the sound: the one of all coded frames, or their mean
};

// Goes by what the first frame tells, or by the size and a constant bit rate, where coded frames at places
// all over the file bear it out. If not (noise or tags before, between or behind the sound, a file that was
// cut or put together, a bit rate that varies without being told) all coded frames are counted, as far as the
// file's budget goes; what lies behind is reckoned from what was seen. Empty if there are none.
std::optional<MpegLength> MeasureMpeg(BoundedFile& file, const MpegFrame& first);
// The same for a stream that may begin anywhere, as far as the file's budget goes.
std::optional<MpegLength> FindAndMeasureMpeg(BoundedFile& file);

} // namespace kestrune
