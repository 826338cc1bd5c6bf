// Saving of tag fields and cue points.
#pragma once

#include "backends/tags/riff_cues.h"
#include "components/audio_information.h"

#include <QList>

#include <optional>

namespace kestrune {

// Writes the fields into the tag of the file, of `kind` where it may hold two, and the cue points if they are
// given and the file can hold any. A file that tells all that already is not touched. Ok; NotFound or
// NotDecodable as in probing; NotSupported for a file that can hold no tag, whose tag is not understood, or
// whose sound would be another then; WriteFailed. Whatever the outcome but Ok, the file is as it was. Blocks
// until the new file is on the disk.
Outcome SaveTag(const QString& path, TagKind kind, const TagFields& fields,
                const std::optional<QList<NumberedCue>>& cues);

} // namespace kestrune
