// What a WAVE header says of a coding in blocks.
#pragma once

#include "backends/tags/bounded_file.h"

namespace kestrune {

struct WaveBlocks {
    qint64 bytesPerSecond = 0; // as the header tells; writers get it wrong at times
    int blockBytes = 0;
    int framesPerBlock = 0; // sample frames; 0 if the header does not tell
};

// All 0 if there is no format chunk near the start.
WaveBlocks ReadWaveBlocks(BoundedFile& file);

} // namespace kestrune
