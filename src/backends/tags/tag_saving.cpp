#include "backends/tags/tag_saving.h"

#include "app/failure_log.h"
#include "app/file_replacement.h"
#include "backends/tags/audio_probe.h"
#include "backends/tags/bounded_file.h"
#include "backends/tags/chunked_plan.h"
#include "backends/tags/flac_plan.h"
#include "backends/tags/id3_plan.h"
#include "backends/tags/id3v1_block.h"
#include "backends/tags/mp4_plan.h"
#include "backends/tags/sound_check.h"
#include "backends/tags/tag_changes.h"
#include "backends/tags/tag_writer.h"
#include "backends/tags/tagged_file.h"
#include "backends/tags/writable_stream.h"

#include <limits>

namespace kestrune {

namespace {

bool HoldsPair(FileKind fileKind) {
    return fileKind == FileKind::Mpeg || fileKind == FileKind::TrueAudio;
}

// Files whose changes are made here, piece by piece.
std::optional<SavePlan> PlanFor(BoundedFile& file, FileKind fileKind, TagKind kind, const TagFields& from,
                                const TagFields& to, const std::optional<QList<NumberedCue>>& cues) {
    if (HoldsPair(fileKind)) {
        return PlanId3(file, kind, from, to);
    }
    if (fileKind == FileKind::Wave) {
        return PlanWave(file, from, to, cues);
    }
    if (fileKind == FileKind::Aiff) {
        return PlanAiff(file, from, to);
    }
    if (fileKind == FileKind::Flac && IsPlainFlac(file)) {
        return PlanFlac(file, from, to);
    }
    if (fileKind == FileKind::Mp4) {
        return PlanMp4(file, from, to);
    }
    return std::nullopt;
}

bool HasTagsBehind(FileKind fileKind) {
    return fileKind == FileKind::Musepack || fileKind == FileKind::MonkeysAudio ||
           fileKind == FileKind::WavPack;
}

struct Saved {
    FileKind fileKind;
    TagKind kind;
};

// How much of the sound is looked at. Where it is taken over as one piece of bytes, that is the start, in
// case that it is found by what stands in front of it. An ID3v1 tag can stand where the rest of a frame would
// that was cut off.
qint64 BytesToCheck(const Saved& saved) {
    constexpr qint64 startBytes = 1024 * 1024;
    const bool inOnePiece = (HoldsPair(saved.fileKind) && saved.kind == TagKind::Id3v2) ||
                            saved.fileKind == FileKind::Wave || saved.fileKind == FileKind::Aiff ||
                            saved.fileKind == FileKind::Flac;
    return inOnePiece ? startBytes : std::numeric_limits<qint64>::max();
}

bool HoldsId3v1(const QString& path) {
    BoundedFile file(path);
    return file.Open() == Outcome::Ok &&
           ParseId3v1(file.ReadAt(file.SizeBytes() - id3v1Bytes, id3v1Bytes)).has_value();
}

// What is odd in a file can let a new tag harm the sound, or what is read as sound.
bool KeepsSound(const QString& path, const QString& changed, const Saved& saved) {
    if (HasTagsBehind(saved.fileKind) && !DiffersOnlyInTagsBehind(path, changed)) {
        return false;
    }
    // The last packet of Monkey's Audio is read on to the end of the file, with the tag.
    if (saved.fileKind == FileKind::MonkeysAudio) {
        return HoldsWholeMonkeysSound(path);
    }
    const bool inOldPlace = HoldsPair(saved.fileKind) && saved.kind == TagKind::Id3v1 && HoldsId3v1(path);
    return inOldPlace || HoldsSameSound(path, changed, BytesToCheck(saved));
}

Outcome Checked(const FileReplacement& replacement, const QString& path, const Saved& saved) {
    if (KeepsSound(path, replacement.PathOfNew(), saved)) {
        return Outcome::Ok;
    }
    qCDebug(logTags) << "saving would change the sound of" << path;
    return Outcome::NotSupported;
}

Outcome Replace(const QString& path, FileKind fileKind, TagKind kind, const FilePieces& pieces) {
    FileReplacement replacement(path);
    Outcome outcome = replacement.Begin();
    if (outcome == Outcome::Ok) {
        outcome = replacement.Fill(pieces);
    }
    if (outcome == Outcome::Ok) {
        outcome = Checked(replacement, path, {fileKind, kind});
    }
    return outcome == Outcome::Ok ? replacement.Commit() : outcome;
}

// True when the copy is still what it was, as TagLib sees it.
bool OpensAgain(WritableStream& stream, FileKind fileKind) {
    stream.seek(0, TagLib::IOStream::Beginning);
    return OpenTaggedFile(stream, fileKind) != nullptr;
}

// Files whose changes TagLib makes, in a copy.
Outcome ReplaceByTagLib(const QString& path, FileKind fileKind, const TagFields& from, const TagFields& to) {
    FileReplacement replacement(path);
    Outcome outcome = replacement.Begin();
    if (outcome != Outcome::Ok) {
        return outcome;
    }
    FilePieces whole;
    whole.AddRange(0, replacement.OldSizeBytes());
    outcome = replacement.Fill(whole);
    if (outcome != Outcome::Ok) {
        return outcome;
    }
    WritableStream stream(replacement.Descriptor());
    {
        const std::unique_ptr<TagLib::File> tagged = OpenTaggedFile(stream, fileKind);
        outcome = tagged ? WriteFields(*tagged, from, to) : Outcome::NotSupported;
    }
    if (outcome == Outcome::Ok && (stream.Failed() || !OpensAgain(stream, fileKind))) {
        outcome = Outcome::WriteFailed;
    }
    if (outcome == Outcome::Ok) {
        outcome = Checked(replacement, path, {fileKind, TagKind::Id3v2});
    }
    return outcome == Outcome::Ok ? replacement.Commit() : outcome;
}

} // namespace

Outcome SaveTag(const QString& path, TagKind kind, const TagFields& fields,
                const std::optional<QList<NumberedCue>>& cues) {
    const ProbeResult old = ProbeAudioWithFields(path, kind);
    if (old.outcome != Outcome::Ok) {
        return old.outcome;
    }
    if (!old.holdsTag) {
        return Outcome::NotSupported;
    }
    const bool oneGenre = !(HoldsPair(old.fileKind) && kind == TagKind::Id3v1);
    const TagFields to = Settled(old.fields, fields, oneGenre);
    BoundedFile file(path);
    const Outcome opened = file.Open();
    if (opened != Outcome::Ok) {
        return opened;
    }
    if (const auto plan = PlanFor(file, old.fileKind, kind, old.fields, to, cues)) {
        return plan->outcome == Outcome::Ok && plan->pieces ? Replace(path, old.fileKind, kind, *plan->pieces)
                                                            : plan->outcome;
    }
    return SameFields(old.fields, to) ? Outcome::Ok : ReplaceByTagLib(path, old.fileKind, old.fields, to);
}

} // namespace kestrune
