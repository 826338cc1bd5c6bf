// What a WAVE header says of the blocks that its samples stand in.
#pragma once

#include "backends/tags/bounded_file.h"

namespace kestrune {

struct WaveBlocks {
    qint64 bytesPerSecond = 0; // as the header tells; writers get it wrong at times
    int blockBytes = 0;
    int framesPerBlock = 0; // sample frames; 0 if the header does not tell
    qint64 dataBytes = 0;   // of the samples, without padding and never beyond the end of the file
};

// What the chunks near the start tell; the rest is 0.
WaveBlocks ReadWaveBlocks(BoundedFile& file);

} // namespace kestrune
