#include "backends/tags/tag_saving.h"

#include "app/failure_log.h"
#include "backends/tags/audio_probe.h"
#include "backends/tags/bounded_file.h"
#include "backends/tags/chunked_plan.h"
#include "app/file_replacement.h"
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

bool HoldsPair(Container container) {
    return container == Container::Mpeg || container == Container::TrueAudio;
}

// Files whose changes are made here, piece by piece.
std::optional<SavePlan> PlanFor(BoundedFile& file, Container container, TagKind kind, const TagFields& from,
                                const TagFields& to, const std::optional<QList<NumberedCue>>& cues) {
    if (HoldsPair(container)) {
        return PlanId3(file, kind, from, to);
    }
    if (container == Container::Wave) {
        return PlanWave(file, from, to, cues);
    }
    if (container == Container::Aiff) {
        return PlanAiff(file, from, to);
    }
    if (container == Container::Flac && IsPlainFlac(file)) {
        return PlanFlac(file, from, to);
    }
    if (container == Container::Mp4) {
        return PlanMp4(file, from, to);
    }
    return std::nullopt;
}

bool HasTagsBehind(Container container) {
    return container == Container::Musepack || container == Container::MonkeysAudio ||
           container == Container::WavPack;
}

struct Saved {
    Container container;
    TagKind kind;
};

// How much of the sound is looked at. Where it is taken over as one piece of bytes, that is the start, in
// case that it is found by what stands in front of it. An ID3v1 tag can stand where the rest of a frame would
// that was cut off.
qint64 BytesToCheck(const Saved& saved) {
    constexpr qint64 startBytes = 1024 * 1024;
    const bool inOnePiece = (HoldsPair(saved.container) && saved.kind == TagKind::Id3v2) ||
                            saved.container == Container::Wave || saved.container == Container::Aiff ||
                            saved.container == Container::Flac;
    return inOnePiece ? startBytes : std::numeric_limits<qint64>::max();
}

bool HoldsId3v1(const QString& path) {
    BoundedFile file(path);
    return file.Open() == Outcome::Ok &&
           ParseId3v1(file.ReadAt(file.SizeBytes() - id3v1Bytes, id3v1Bytes)).has_value();
}

// What is odd in a file can let a new tag harm the sound, or what is read as sound.
bool KeepsSound(const QString& path, const QString& changed, const Saved& saved) {
    if (HasTagsBehind(saved.container) && !DiffersOnlyInTagsBehind(path, changed)) {
        return false;
    }
    // The last packet of Monkey's Audio is read on to the end of the file, with the tag.
    if (saved.container == Container::MonkeysAudio) {
        return HoldsWholeMonkeysSound(path);
    }
    const bool inOldPlace = HoldsPair(saved.container) && saved.kind == TagKind::Id3v1 && HoldsId3v1(path);
    return inOldPlace || HoldsSameSound(path, changed, BytesToCheck(saved));
}

Outcome Checked(const FileReplacement& replacement, const QString& path, const Saved& saved) {
    if (KeepsSound(path, replacement.PathOfNew(), saved)) {
        return Outcome::Ok;
    }
    qCDebug(logTags) << "saving would change the sound of" << path;
    return Outcome::NotSupported;
}

Outcome Replace(const QString& path, Container container, TagKind kind, const FilePieces& pieces) {
    FileReplacement replacement(path);
    Outcome outcome = replacement.Begin();
    if (outcome == Outcome::Ok) {
        outcome = replacement.Fill(pieces);
    }
    if (outcome == Outcome::Ok) {
        outcome = Checked(replacement, path, {container, kind});
    }
    return outcome == Outcome::Ok ? replacement.Commit() : outcome;
}

// True when the copy is still what it was, as TagLib sees it.
bool OpensAgain(WritableStream& stream, Container container) {
    stream.seek(0, TagLib::IOStream::Beginning);
    return OpenTaggedFile(stream, container) != nullptr;
}

// Files whose changes TagLib makes, in a copy.
Outcome ReplaceByTagLib(const QString& path, Container container, const TagFields& from,
                        const TagFields& to) {
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
        const std::unique_ptr<TagLib::File> tagged = OpenTaggedFile(stream, container);
        outcome = tagged ? WriteFields(*tagged, from, to) : Outcome::NotSupported;
    }
    if (outcome == Outcome::Ok && (stream.Failed() || !OpensAgain(stream, container))) {
        outcome = Outcome::WriteFailed;
    }
    if (outcome == Outcome::Ok) {
        outcome = Checked(replacement, path, {container, TagKind::Id3v2});
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
    const bool oneGenre = !(HoldsPair(old.container) && kind == TagKind::Id3v1);
    const TagFields to = Settled(old.fields, fields, oneGenre);
    BoundedFile file(path);
    const Outcome opened = file.Open();
    if (opened != Outcome::Ok) {
        return opened;
    }
    if (const auto plan = PlanFor(file, old.container, kind, old.fields, to, cues)) {
        return plan->outcome == Outcome::Ok && plan->pieces
                   ? Replace(path, old.container, kind, *plan->pieces)
                   : plan->outcome;
    }
    return SameFields(old.fields, to) ? Outcome::Ok : ReplaceByTagLib(path, old.container, old.fields, to);
}

} // namespace kestrune
