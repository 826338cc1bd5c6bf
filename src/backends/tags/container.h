// Tells by content what a file is.
#pragma once

#include "backends/tags/bounded_file.h"
#include "backends/tags/mpeg_scan.h"

#include <optional>

namespace kestrune {

enum class Container {
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
    Mpeg, // a bare MPEG audio stream of any layer
};

struct ContainerFound {
    Container container = Container::Unknown;
    std::optional<MpegFrame> mpegFrame; // of Mpeg
    bool signature = false;             // the start of the file names the kind; chance is as good as excluded
};

// The position behind the ID3v2 tags at the start.
qint64 SkipLeadingTags(BoundedFile& file);

// Looks behind ID3v2 tags that stand in front.
ContainerFound DetectContainer(BoundedFile& file);

} // namespace kestrune
