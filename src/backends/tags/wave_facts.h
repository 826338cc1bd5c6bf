// Facts of WAVE files, by their own header.
#pragma once

#include "backends/tags/audio_facts.h"
#include "backends/tags/bounded_file.h"

#include <optional>

namespace kestrune {

// Facts of a RIFF WAVE file, without title and artist. Samples that a writer left open, or that the file has
// lost, are counted up to the end of the file; a file without samples has length 0. Empty if the header tells
// no rate or channels, or a coding that nothing decodes.
std::optional<AudioFacts> WaveFacts(BoundedFile& file);

} // namespace kestrune
