// Saving into MP4 files.
#pragma once

#include "backends/tags/bounded_file.h"
#include "backends/tags/save_plan.h"
#include "components/audio_information.h"

namespace kestrune {

// The fields go into the list of items, which takes its room of the padding behind it; where that is too
// small, the places of the sound that the file tells are told anew, in fragments too.
SavePlan PlanMp4(BoundedFile& file, const TagFields& from, const TagFields& to);

// The number of the genre where the file tells it by number and not by name; noGenre else.
qint16 Mp4GenreNumber(BoundedFile& file);

} // namespace kestrune
