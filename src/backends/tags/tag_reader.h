// Tag fields out of a file that TagLib has open.
#pragma once

#include "backends/tags/bounded_file.h"
#include "components/audio_information.h"

#include <taglib/tfile.h>

namespace kestrune {

// The fields of the tag. In MPEG files and their like, which may hold two, `kind` says of which one; a tag
// that is not there gives empty fields. Others have one tag, or several that count as one.
TagFields ReadFields(TagLib::File& tagged, BoundedFile& file, TagKind kind);

struct Naming {
    QString title;
    QString artist;
};

// Title and artist, each of the best tag that has it: ID3v2, then ID3v1, then any other.
Naming NamingOf(TagLib::File& tagged, BoundedFile& file);

} // namespace kestrune
