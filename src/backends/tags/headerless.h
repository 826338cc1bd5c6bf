// Files that are nothing but samples: known by their extension, measured by their size.
#pragma once

#include "backends/tags/audio_facts.h"

#include <optional>

namespace kestrune {

// Whether files of this extension (".vox", in lower case) hold samples only.
bool IsHeaderlessExtension(const QString& extension);

// The facts of such a file in the default format of its kind. Empty for another extension or an empty file.
std::optional<AudioFacts> HeaderlessFacts(const QString& extension, qint64 sizeBytes);

} // namespace kestrune
