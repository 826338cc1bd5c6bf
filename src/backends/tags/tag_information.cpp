#include "backends/tags/tag_information.h"

#include "backends/formats/format_text.h"
#include "backends/tags/audio_probe.h"
#include "backends/tags/bounded_file.h"
#include "backends/tags/chunked_plan.h"
#include "backends/tags/genre_names.h"
#include "backends/tags/tag_saving.h"

#include <algorithm>

namespace kestrune {

namespace {

QList<NumberedCue> CuesOf(const QString& path) {
    BoundedFile file(path);
    return file.Open() == Outcome::Ok ? WaveCues(file) : QList<NumberedCue>();
}

bool HasNumber(const QList<NumberedCue>& cues, quint32 number) {
    return std::any_of(cues.begin(), cues.end(),
                       [number](const NumberedCue& cue) { return cue.number == number; });
}

} // namespace

Outcome TagInformation::OpenInfo(const QString& file) {
    const ProbeResult result = ProbeAudio(file);
    valid_ = result.outcome == Outcome::Ok;
    facts_ = valid_ ? result.facts : AudioFacts();
    sizeBytes_ = valid_ ? result.sizeBytes : 0;
    return result.outcome;
}

QString TagInformation::GetFormatString() const {
    return facts_.rateHz > 0 ? FormatText(facts_.kind, facts_.rateHz, facts_.bitrateBps, facts_.channels)
                             : QString();
}

Outcome TagInformation::ReadTagFromFile(const QString& file) {
    const ProbeResult result = ProbeAudioWithFields(file, kind_);
    if (result.outcome != Outcome::Ok) {
        return result.outcome;
    }
    facts_ = result.facts;
    sizeBytes_ = result.sizeBytes;
    fields_ = result.fields;
    holdsCues_ = result.fileKind == FileKind::Wave;
    cues_ = holdsCues_ ? CuesOf(file) : QList<NumberedCue>();
    cuesKnown_ = true;
    highestCueNumber_ = 0;
    for (const NumberedCue& cue : cues_) {
        highestCueNumber_ = std::max(highestCueNumber_, cue.number);
    }
    cueIndex_ = cues_.isEmpty() ? 0 : 1;
    return Outcome::Ok;
}

Outcome TagInformation::SaveTagToFile(const QString& file) {
    return SaveTag(file, kind_, fields_, cuesKnown_ ? std::make_optional(cues_) : std::nullopt);
}

QString TagInformation::GenreName(qint16 index) const {
    return NameOfGenre(index);
}

Outcome TagInformation::AddCue(const CuePoint& cue) {
    if (!holdsCues_) {
        return Outcome::NotSupported;
    }
    quint32 number = highestCueNumber_ + 1;
    while (number == 0 || HasNumber(cues_, number)) {
        ++number; // only behind the highest number that there is
    }
    highestCueNumber_ = std::max(highestCueNumber_, number);
    cues_.append({number, cue});
    cuesKnown_ = true;
    cueIndex_ = CueCount();
    return Outcome::Ok;
}

Outcome TagInformation::DeleteCue() {
    if (cueIndex_ == 0) {
        return Outcome::NotOpen;
    }
    cues_.removeAt(cueIndex_ - 1);
    cueIndex_ = std::min(cueIndex_, CueCount());
    return Outcome::Ok;
}

void TagInformation::SetCueIndex(qint32 index) {
    cueIndex_ = cues_.isEmpty() ? 0 : std::clamp(index, 1, CueCount());
}

CuePoint& TagInformation::Cue() {
    if (cueIndex_ == 0) {
        noCue_ = CuePoint();
        return noCue_;
    }
    return cues_[cueIndex_ - 1].point;
}

std::unique_ptr<KSTAudioInformation2> MakeAudioInformation() {
    return std::make_unique<TagInformation>();
}

} // namespace kestrune
