#include "backends/formats/file_kind.h"

#include "backends/formats/leading_tag.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kestrune {

namespace {

constexpr qint64 headBytes = 64;
constexpr qsizetype formAt = 8;

using namespace std::string_view_literals;

struct Mark {
    FileKind kind;
    std::string_view bytes;
    std::string_view form = {}; // what stands behind the size that follows
    qsizetype at = 0;
};

// The first that fits counts.
constexpr std::array marks = {
    Mark{FileKind::Wave, "RIFF", "WAVE"},
    Mark{FileKind::Avi, "RIFF", "AVI "},
    Mark{FileKind::OtherMarked, "RIFF"},
    Mark{FileKind::OtherMarked, "RIFX"},
    Mark{FileKind::OtherMarked, "RF64"},
    Mark{FileKind::OtherMarked, "BW64"},
    Mark{FileKind::Aiff, "FORM", "AIFF"},
    Mark{FileKind::Aiff, "FORM", "AIFC"},
    Mark{FileKind::OtherMarked, "FORM"},
    Mark{FileKind::OggOther, "OggS"},
    Mark{FileKind::Flac, "fLaC"},
    Mark{FileKind::Musepack, "MP+"},
    Mark{FileKind::Musepack, "MPCK"},
    Mark{FileKind::MonkeysAudio, "MAC "},
    Mark{FileKind::WavPack, "wvpk"},
    Mark{FileKind::TrueAudio, "TTA1"},
    // The head object, whole: its first bytes alone come about by chance in bare samples.
    Mark{FileKind::Asf, "\x30\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv},
    Mark{FileKind::Mp4, "ftyp", {}, 4},
    Mark{FileKind::OtherMarked, ".snd"},
    Mark{FileKind::OtherMarked, "caff"},
    Mark{FileKind::OtherMarked, "Creative Voice File"},
    Mark{FileKind::OtherMarked, "\x02"
                                "dss"},
    Mark{FileKind::OtherMarked, "\x03"
                                "dss"},
    // Matroska.
    Mark{FileKind::OtherMarked, "\x1A\x45\xDF\xA3"},
    // Wave64.
    Mark{FileKind::OtherMarked, "riff\x2E\x91\xCF\x11\xA5\xD6\x28\xDB\x04\xC1\x00\x00"sv},
    // An MPEG program stream.
    Mark{FileKind::OtherMarked, "\x00\x00\x01\xBA"sv},
};

bool StandsAt(const QByteArray& head, qsizetype at, std::string_view bytes) {
    return head.mid(at).startsWith(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

FileKind OggKind(const QByteArray& head) {
    // The first packet of a page with one segment stands at byte 28.
    const QByteArray packet = head.mid(28);
    if (packet.startsWith("\x01vorbis")) {
        return FileKind::OggVorbis;
    }
    if (packet.startsWith("OpusHead")) {
        return FileKind::OggOpus;
    }
    if (packet.startsWith("Speex   ")) {
        return FileKind::OggSpeex;
    }
    if (packet.startsWith("\x7F"
                          "FLAC")) {
        return FileKind::OggFlac;
    }
    return FileKind::OggOther;
}

FileKind KindOfHead(const QByteArray& head) {
    const auto* const found = std::find_if(marks.begin(), marks.end(), [&](const Mark& mark) {
        return StandsAt(head, mark.at, mark.bytes) && StandsAt(head, formAt, mark.form);
    });
    if (found == marks.end()) {
        return FileKind::Unknown;
    }
    return found->kind == FileKind::OggOther ? OggKind(head) : found->kind;
}

} // namespace

FileMark FindMark(ByteSource& source) {
    FileMark mark;
    mark.start = LeadingTagBytes(source);
    mark.kind = KindOfHead(source.ReadAt(mark.start, headBytes));
    return mark;
}

FoundKind FindKind(ByteSource& source) {
    FoundKind found;
    found.mark = FindMark(source);
    found.kind = found.mark.kind;
    if (found.kind == FileKind::Unknown) {
        found.mpegFrame = FindMpegFrame(source, found.mark.start);
        found.kind = found.mpegFrame ? FileKind::Mpeg : FileKind::Unknown;
    }
    return found;
}

} // namespace kestrune
