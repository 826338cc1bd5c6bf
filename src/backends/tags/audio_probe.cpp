#include "backends/tags/audio_probe.h"

#include "app/failure_log.h"
#include "backends/tags/bounded_file.h"
#include "backends/tags/container.h"
#include "backends/tags/general_reader.h"
#include "backends/tags/headerless.h"
#include "backends/tags/tag_reader.h"
#include "backends/tags/tagged_file.h"
#include "backends/tags/taglib_stream.h"
#include "backends/tags/wave_facts.h"

#include <QFileInfo>

#include <optional>

namespace kestrune {

namespace {

QString ExtensionOf(const QString& path) {
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix.isEmpty() ? QString() : QLatin1Char('.') + suffix;
}

// A WAVE file may be a header and no samples; of every other kind a file without length is broken.
bool MayBeEmpty(const ContainerFound& found) {
    return found.container == Container::Wave;
}

std::optional<AudioFacts> FindFacts(TagLib::File* tagged, BoundedFile& file, const ContainerFound& found) {
    if (found.container == Container::Wave) {
        file.RenewBudget();
        return WaveFacts(file);
    }
    const std::optional<AudioFacts> facts =
        tagged != nullptr ? TechnicalFacts(*tagged, file, found) : std::nullopt;
    return facts && facts->durationMs > 0 ? facts : GeneralFacts(file);
}

void Describe(ProbeResult& result, BoundedFile& file, const ContainerFound& found,
              std::optional<TagKind> kind) {
    TagLibStream stream(file);
    file.Seek(0);
    file.RenewBudgetForTag();
    const std::unique_ptr<TagLib::File> tagged = OpenTaggedFile(stream, found.container);
    const std::optional<AudioFacts> facts = FindFacts(tagged.get(), file, found);
    if (!facts || (facts->durationMs == 0 && !MayBeEmpty(found))) {
        return;
    }
    result.outcome = Outcome::Ok;
    result.facts = *facts;
    result.container = found.container;
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
    const QString extension = ExtensionOf(path);
    const ContainerFound found = DetectContainer(file);
    if (IsHeaderlessExtension(extension) && !found.signature) {
        if (const std::optional<AudioFacts> facts = HeaderlessFacts(extension, file.SizeBytes())) {
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
