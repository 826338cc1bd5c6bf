// Saving into FLAC files.
#pragma once

#include "backends/tags/bounded_file.h"
#include "backends/tags/save_plan.h"
#include "components/audio_information.h"

namespace kestrune {

// True for a file that begins and ends as FLAC does, without tags of other kinds around it.
bool IsPlainFlac(BoundedFile& file);

// Puts the fields into the block of comments; a block of padding gives or takes the room. `from` are the
// fields that the file tells now.
SavePlan PlanFlac(BoundedFile& file, const TagFields& from, const TagFields& to);

} // namespace kestrune
