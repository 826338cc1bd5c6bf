#include "backends/tags/tag_saving.h"

#include "backends/tags/audio_probe.h"
#include "backends/tags/bounded_file.h"
#include "backends/tags/chunked_plan.h"
#include "backends/tags/file_replacement.h"
#include "backends/tags/flac_plan.h"
#include "backends/tags/id3_plan.h"
#include "backends/tags/logging.h"
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

// Files whose sound is taken over as one piece of bytes: it is looked at from the start, in case that it is
// found by what stands in front of it.
bool StaysInOnePiece(Container container) {
    return HoldsPair(container) || container == Container::Wave || container == Container::Aiff ||
           container == Container::Flac;
}

// What is odd in a file can let a new tag harm the sound, or what is read as sound.
bool KeepsSound(const QString& path, const QString& changed, Container container) {
    constexpr qint64 startBytes = 1024 * 1024;
    if (HasTagsBehind(container) && !DiffersOnlyInTagsBehind(path, changed)) {
        return false;
    }
    // The last packet of Monkey's Audio is read on to the end of the file, with the tag.
    if (container == Container::MonkeysAudio) {
        return HoldsWholeMonkeysSound(path);
    }
    const qint64 mostBytes = StaysInOnePiece(container) ? startBytes : std::numeric_limits<qint64>::max();
    return HoldsSameSound(path, changed, mostBytes);
}

Outcome Checked(const FileReplacement& replacement, const QString& path, Container container) {
    if (KeepsSound(path, replacement.PathOfNew(), container)) {
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
    // Behind the sound ID3v1 changes nothing but the rest of a frame that was cut off.
    const bool behind = HoldsPair(container) && kind == TagKind::Id3v1;
    if (outcome == Outcome::Ok && !behind) {
        outcome = Checked(replacement, path, container);
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
        outcome = Checked(replacement, path, container);
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
