#include "backends/tags/audio_probe.h"

#include "app/failure_log.h"
#include "backends/formats/file_kind.h"
#include "backends/formats/headerless_kind.h"
#include "backends/tags/bounded_file.h"
#include "backends/tags/general_reader.h"
#include "backends/tags/tag_reader.h"
#include "backends/tags/tagged_file.h"
#include "backends/tags/taglib_stream.h"
#include "backends/tags/wave_facts.h"

#include <optional>

namespace kestrune {

namespace {

// In the usual format of the kind. Empty for an empty file.
std::optional<AudioFacts> HeaderlessFacts(const HeaderlessKind& kind, qint64 sizeBytes) {
    if (sizeBytes <= 0) {
        return std::nullopt;
    }
    const OutputFormat format = HeaderlessFormats().*kind.format;
    AudioFacts facts;
    facts.kind = OutputKindName(format);
    facts.formatTag = kind.formatTag;
    facts.rateHz = format.rateHz;
    facts.channels = format.channels;
    facts.bitsPerSample = 16;
    facts.bitrateBps = UsualBitrate(kind);
    facts.frames = UsualFrames(kind, sizeBytes);
    facts.durationMs = DurationOfFrames(facts.frames, facts.rateHz);
    return facts;
}

// Kinds made of chunks, which their own readers expect at the very start, are for the general reader if a tag
// stands in front.
FoundKind FindKindForTags(BoundedFile& file) {
    FoundKind found = FindKind(file);
    const bool chunked =
        found.kind == FileKind::Wave || found.kind == FileKind::Aiff || found.kind == FileKind::Mp4;
    if (chunked && found.mark.start > 0) {
        found.kind = FileKind::OtherMarked;
    }
    return found;
}

// A WAVE file may be a header and no samples; of every other kind a file without length is broken.
bool MayBeEmpty(const FoundKind& found) {
    return found.kind == FileKind::Wave;
}

std::optional<AudioFacts> FindFacts(TagLib::File* tagged, BoundedFile& file, const FoundKind& found) {
    if (found.kind == FileKind::Wave) {
        file.RenewBudget();
        return WaveFacts(file);
    }
    const std::optional<AudioFacts> facts =
        tagged != nullptr ? TechnicalFacts(*tagged, file, found) : std::nullopt;
    return facts && facts->durationMs > 0 ? facts : GeneralFacts(file);
}

void Describe(ProbeResult& result, BoundedFile& file, const FoundKind& found, std::optional<TagKind> kind) {
    TagLibStream stream(file);
    file.Seek(0);
    file.RenewBudgetForTag();
    const std::unique_ptr<TagLib::File> tagged = OpenTaggedFile(stream, found.kind);
    const std::optional<AudioFacts> facts = FindFacts(tagged.get(), file, found);
    if (!facts || (facts->durationMs == 0 && !MayBeEmpty(found))) {
        return;
    }
    result.outcome = Outcome::Ok;
    result.facts = *facts;
    result.fileKind = found.kind;
    result.holdsTag = tagged != nullptr;
    if (tagged) {
        file.RenewBudgetForTag();
        const Naming naming = NamingOf(*tagged, file);
        result.facts.title = naming.title;
        result.facts.artist = naming.artist;
        if (kind) {
            result.fields = ReadFields(*tagged, file, *kind);
        }
    } else {
        result.fields.title = result.facts.title;
        result.fields.artist = result.facts.artist;
    }
}

ProbeResult Probe(const QString& path, std::optional<TagKind> kind) {
    ProbeResult result;
    BoundedFile file(path);
    result.outcome = file.Open();
    if (result.outcome != Outcome::Ok) {
        qCDebug(logTags) << "cannot open" << path;
        return result;
    }
    result.outcome = Outcome::NotDecodable;
    result.sizeBytes = file.SizeBytes();
    const FoundKind found = FindKindForTags(file);
    const HeaderlessKind* headerless = HeaderlessKindOf(path);
    if (headerless != nullptr && !found.mark.IsSure()) {
        if (const std::optional<AudioFacts> facts = HeaderlessFacts(*headerless, file.SizeBytes())) {
            result.outcome = Outcome::Ok;
            result.facts = *facts;
        }
        return result;
    }
    Describe(result, file, found, kind);
    if (result.outcome != Outcome::Ok) {
        qCDebug(logTags) << "no audio known in" << path;
    }
    return result;
}

} // namespace

ProbeResult ProbeAudio(const QString& path) {
    return Probe(path, std::nullopt);
}

ProbeResult ProbeAudioWithFields(const QString& path, TagKind kind) {
    return Probe(path, kind);
}

} // namespace kestrune
