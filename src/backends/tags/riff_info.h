// The editor's fields in the list of texts of a WAVE file.
#pragma once

#include "backends/tags/riff_list.h"
#include "components/audio_information.h"

namespace kestrune {

TagFields InfoFields(const RiffList& info);

// Puts the fields that differ from `from`, which the file tells now, into the list; all other items stay as
// they are.
void EditInfo(RiffList& info, const TagFields& from, const TagFields& to);

} // namespace kestrune
