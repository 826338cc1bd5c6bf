// Files that are nothing but samples: known by their extension, measured by their size.
#pragma once

#include "backends/formats/output_format.h"

#include <QString>

namespace kestrune {

struct HeaderlessKind {
    const char* extension;                   // without its dot, in lower case
    OutputFormat HeaderlessFormats::*format; // the usual one is that of HeaderlessFormats{}
    int formatTag;                           // WAVE format number
    qint64 blockBytes;                       // smallest unit of whole frames, in the usual format ...
    qint64 blockFrames;
    bool onlyWholeBlocks; // else a piece of one at the end holds the frames that its bytes complete
};

// What a file of this name holds, if nothing in it tells of another kind. Null if its extension is none of
// these. One for the whole run of the program.
const HeaderlessKind* HeaderlessKindOf(const QString& path);

// Frames of a file of so many bytes, and the bits of a second, in the usual format.
qint64 UsualFrames(const HeaderlessKind& kind, qint64 sizeBytes);
int UsualBitrate(const HeaderlessKind& kind);

} // namespace kestrune
