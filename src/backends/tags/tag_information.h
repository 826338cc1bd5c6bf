// Looks at audio files on disk.
#pragma once

#include "backends/tags/audio_facts.h"
#include "backends/tags/riff_cues.h"
#include "components/audio_information.h"

#include <QList>

#include <memory>

namespace kestrune {

// Cue points are those of WAVE files; after reading a file of another kind AddCue gives NotSupported. Writing
// replaces the file, and blocks until the new one is on the disk.
class TagInformation : public KSTAudioInformation2 {
public:
    Outcome OpenInfo(const QString& file) override;
    bool IsValid() const override { return valid_; }
    qint32 GetBitrate() const override { return facts_.bitrateBps; }
    qint64 GetDurationMs() const override { return facts_.durationMs; }
    QString GetFormatString() const override;
    QString GetTitle() const override { return facts_.title; }
    QString GetArtist() const override { return facts_.artist; }

    qint32 Frequency() const override { return facts_.rateHz; }
    qint16 Channels() const override { return static_cast<qint16>(facts_.channels); }
    qint64 Samples() const override { return facts_.frames; }
    qint64 FileSize() const override { return sizeBytes_; }
    qint16 BitsPerSample() const override { return static_cast<qint16>(facts_.bitsPerSample); }
    qint32 FormatTag() const override { return facts_.formatTag; }

    void SetTagVersion(TagKind kind) override { kind_ = kind; }
    Outcome ReadTagFromFile(const QString& file) override;
    Outcome SaveTagToFile(const QString& file) override;
    TagFields& Tag() override { return fields_; }
    QString GenreName(qint16 index) const override;

    Outcome AddCue(const CuePoint& cue) override;
    Outcome DeleteCue() override;
    qint32 CueCount() const override { return static_cast<qint32>(cues_.size()); }
    qint32 CueIndex() const override { return cueIndex_; }
    void SetCueIndex(qint32 index) override;
    CuePoint& Cue() override;

private:
    AudioFacts facts_;
    qint64 sizeBytes_ = 0;
    bool valid_ = false;
    TagKind kind_ = TagKind::Id3v1;
    TagFields fields_;
    QList<NumberedCue> cues_;
    quint32 highestCueNumber_ = 0; // so that a new point does not get the number of a deleted one
    bool cuesKnown_ = false;       // a file was read, or a point added: saving stores the list
    bool holdsCues_ = true;        // the file that was read can
    qint32 cueIndex_ = 0;          // 1-based, 0 for none
    CuePoint noCue_;               // what Cue gives when there is none
};

std::unique_ptr<KSTAudioInformation2> MakeAudioInformation();

} // namespace kestrune
