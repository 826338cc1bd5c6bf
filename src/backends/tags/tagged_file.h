// A file of one of the kinds that TagLib knows.
#pragma once

#include "backends/formats/file_kind.h"
#include "backends/tags/audio_facts.h"
#include "backends/tags/bounded_file.h"

#include <taglib/tfile.h>

#include <memory>
#include <optional>

namespace kestrune {

// Opens the file as the kind that its content shows. The stream is the caller's and outlives the result. Null
// for a kind that TagLib does not know, or when it finds the content broken.
std::unique_ptr<TagLib::File> OpenTaggedFile(TagLib::IOStream& stream, FileKind kind);

// Figures of a file that OpenTaggedFile gave, WAVE excepted; title and artist are left empty. Empty when
// there is no sample rate or no channel. A length of 0 means that TagLib could not tell.
std::optional<AudioFacts> TechnicalFacts(TagLib::File& tagged, BoundedFile& file, const FoundKind& found);

} // namespace kestrune
