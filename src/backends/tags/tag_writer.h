// Tag fields into a file that TagLib has open for writing.
#pragma once

#include "components/audio_information.h"

#include <taglib/tfile.h>

namespace kestrune {

// Puts the fields that differ from `from`, which the file tells now, into its tag, and saves that. For Ogg,
// FLAC, Windows Media, and the kinds that hold APE tags: Musepack, Monkey's Audio, WavPack. NotSupported
// for others, WriteFailed if TagLib saw a failure.
Outcome WriteFields(TagLib::File& tagged, const TagFields& from, const TagFields& to);

} // namespace kestrune
