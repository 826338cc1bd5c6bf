// Facts of the files that only a general media reader understands.
#pragma once

#include "backends/tags/audio_facts.h"
#include "backends/tags/bounded_file.h"

#include <optional>

namespace kestrune {

// Facts of the first audio stream, by libavformat: AVI, DSS, AU, Matroska and all else it can decode. The
// kind is told by content alone, no other file or address is opened whatever the content names, and reading
// is bounded. Empty when there is no audio that could be decoded.
std::optional<AudioFacts> GeneralFacts(BoundedFile& file);

} // namespace kestrune
