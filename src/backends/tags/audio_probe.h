// One look at one file: facts, and the tag fields if they are wanted.
#pragma once

#include "backends/formats/file_kind.h"
#include "backends/tags/audio_facts.h"
#include "components/audio_information.h"

namespace kestrune {

struct ProbeResult {
    Outcome outcome = Outcome::NotDecodable;
    AudioFacts facts;
    qint64 sizeBytes = 0;
    FileKind fileKind = FileKind::Unknown;
    bool holdsTag = false; // whether fields can be read and written
    TagFields fields;      // only if asked for
};

// Ok, NotFound or NotDecodable. The content decides what the file is; only a file without any known
// beginning, of an extension that stands for bare samples, goes by that. Reads a limited amount, however
// large the file. Any thread.
ProbeResult ProbeAudio(const QString& path);

// The same with the tag fields of `kind`.
ProbeResult ProbeAudioWithFields(const QString& path, TagKind kind);

} // namespace kestrune
