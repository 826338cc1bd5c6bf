#include "backends/tags/tag_information.h"

#include "backends/codecs/format_text.h"
#include "backends/tags/audio_probe.h"
#include "backends/tags/genre_names.h"

#include <algorithm>

namespace kestrune {

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
    cues_.clear();
    cueIndex_ = 0;
    return Outcome::Ok;
}

Outcome TagInformation::SaveTagToFile(const QString& /*file*/) {
    return Outcome::NotSupported;
}

QString TagInformation::GenreName(qint16 index) const {
    return NameOfGenre(index);
}

Outcome TagInformation::AddCue(const CuePoint& cue) {
    cues_.append(cue);
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
    return cues_[cueIndex_ - 1];
}

std::unique_ptr<KSTAudioInformation2> MakeAudioInformation() {
    return std::make_unique<TagInformation>();
}

} // namespace kestrune
