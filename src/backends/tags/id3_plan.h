// Saving into files that may hold an ID3v2 tag in front and an ID3v1 block behind: MPEG audio, True Audio.
#pragma once

#include "backends/tags/bounded_file.h"
#include "backends/tags/save_plan.h"
#include "components/audio_information.h"

namespace kestrune {

// Puts the fields into the tag of `kind`; the other one stays as it is, byte for byte. `from` are the fields
// that this tag tells now.
SavePlan PlanId3(BoundedFile& file, TagKind kind, const TagFields& from, const TagFields& to);

// The changed tag, for files that hold one in a chunk; `old` may be empty, and so is the result when no
// frame is left. Nothing for a tag that is not understood.
std::optional<QByteArray> ChangedId3v2(const QByteArray& old, const TagFields& from, const TagFields& to);

} // namespace kestrune
