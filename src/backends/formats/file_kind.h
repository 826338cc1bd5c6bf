// Tells by content what a file is. Whoever reads a file or its tags goes by this.
#pragma once

#include "backends/formats/byte_source.h"
#include "backends/formats/mpeg_scan.h"

#include <optional>

namespace kestrune {

enum class FileKind {
    Unknown,
    Wave,
    Avi,
    Aiff,
    OggVorbis,
    OggOpus,
    OggSpeex,
    OggFlac,
    OggOther,
    Flac,
    Musepack,
    MonkeysAudio,
    WavPack,
    TrueAudio,
    Asf,
    Mp4,
    Mpeg,        // a bare MPEG audio stream of any layer
    OtherMarked, // begins with the mark of a kind that only libavformat reads
};

struct FileMark {
    FileKind kind = FileKind::Unknown; // never Mpeg, which has no mark
    qint64 start = 0;                  // behind the ID3v2 tags in front

    // Chance is as good as excluded, so the mark overrules an extension that stands for bare samples. A tag
    // in front is a mark too.
    bool IsSure() const { return kind != FileKind::Unknown || start > 0; }
};

// What stands at the start, behind ID3v2 tags.
FileMark FindMark(ByteSource& source);

struct FoundKind {
    FileKind kind = FileKind::Unknown;
    std::optional<MpegFrame> mpegFrame; // of Mpeg
    FileMark mark;
};

// The same, and frames of MPEG audio where there is no mark.
FoundKind FindKind(ByteSource& source);

} // namespace kestrune
