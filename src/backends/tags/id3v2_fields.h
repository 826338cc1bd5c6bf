// The editor's fields in the frames of an ID3v2 tag.
#pragma once

#include "backends/tags/id3v2_frames.h"
#include "components/audio_information.h"

#include <QString>

namespace kestrune {

// Puts the fields that differ from `from`, which the tag tells now, into their frames. All other frames stay
// as they are, also a second comment or link with another description. The version stays: texts are UTF-8 in
// 2.4; in 2.2 and 2.3 Latin-1 where that is enough, else UTF-16.
void EditId3v2(Id3v2Block& block, const TagFields& from, const TagFields& to);

// The original artist, which TagLib does not know of in version 2.2.
QString OriginalArtistIn(const Id3v2Block& block);

} // namespace kestrune
