// Saving into files made of chunks: WAVE and AIFF.
#pragma once

#include "backends/tags/bounded_file.h"
#include "backends/tags/riff_cues.h"
#include "backends/tags/save_plan.h"
#include "components/audio_information.h"

#include <QList>

#include <optional>

namespace kestrune {

// The list of texts that other programs show; empty fields without one.
TagFields WaveInfoFields(BoundedFile& file);

QList<NumberedCue> WaveCues(BoundedFile& file);

// The texts go into the list of texts, and, where there is one, into the ID3v2 chunk too; `from` are the
// fields that the two tell together. The cue points are left alone without `cues`.
SavePlan PlanWave(BoundedFile& file, const TagFields& from, const TagFields& to,
                  const std::optional<QList<NumberedCue>>& cues);

// The fields go into the ID3v2 chunk.
SavePlan PlanAiff(BoundedFile& file, const TagFields& from, const TagFields& to);

} // namespace kestrune
