// A prober whose files are values in memory.
#pragma once

#include "components/audio_information.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <algorithm>

namespace kestrune {

// Knows only the paths in `files`. Tags and cues are stored per path, so that what one object call saves, a
// later read gives back; a tag that nobody stored has the title and artist of the probe.
class FakeAudioInformation : public KSTAudioInformation2 {
public:
    struct Probe {
        qint32 bitrateBps = 0;
        qint64 durationMs = 0;
        QString formatString;
        QString title;
        QString artist;
        bool valid = true; // false: there is such a file, but it is not audio
        qint32 sampleRateHz = 44100;
        qint16 channels = 2;
        qint64 fileSizeBytes = 0;
        qint16 bitsPerSample = 16;
        qint32 formatTag = 1;
    };

    QHash<QString, Probe> files;
    QStringList calls; // "OpenInfo /a.mp3", "ReadTagFromFile ...", "SaveTagToFile ...", "SetTagVersion 2",
                       // "AddCue", "DeleteCue"
    Outcome saveOutcome = Outcome::Ok; // what SaveTagToFile comes to for a known file; stores only when Ok

    // The tag that is stored for a file.
    TagFields& StoredTag(const QString& file, TagKind kind) {
        auto& tags = kind == TagKind::Id3v2 ? id3v2_ : id3v1_;
        const auto found = tags.find(file);
        if (found != tags.end()) {
            return *found;
        }
        const Probe probe = files.value(file);
        TagFields fields;
        fields.title = probe.title;
        fields.artist = probe.artist;
        return *tags.insert(file, fields);
    }

    // The cue points that are stored for a file.
    QList<CuePoint>& StoredCues(const QString& file) { return cuesOfFile_[file]; }

    // The kind that SetTagVersion chose last.
    TagKind TagVersion() const { return kind_; }

    Outcome OpenInfo(const QString& file) override {
        calls << QStringLiteral("OpenInfo ") + file;
        const Outcome outcome = Look(file);
        current_ = outcome == Outcome::Ok ? files.value(file) : Probe{0, 0, {}, {}, {}, false, 0, 0, 0, 0, 0};
        return outcome;
    }

    bool IsValid() const override { return current_.valid; }
    qint32 GetBitrate() const override { return current_.bitrateBps; }
    qint64 GetDurationMs() const override { return current_.durationMs; }
    QString GetFormatString() const override { return current_.formatString; }
    QString GetTitle() const override { return current_.title; }
    QString GetArtist() const override { return current_.artist; }

    qint32 Frequency() const override { return current_.sampleRateHz; }
    qint16 Channels() const override { return current_.channels; }
    qint64 Samples() const override { return current_.durationMs * current_.sampleRateHz / 1000; }
    qint64 FileSize() const override { return current_.fileSizeBytes; }
    qint16 BitsPerSample() const override { return current_.bitsPerSample; }
    qint32 FormatTag() const override { return current_.formatTag; }

    void SetTagVersion(TagKind kind) override {
        calls << QStringLiteral("SetTagVersion %1").arg(static_cast<int>(kind));
        kind_ = kind;
    }

    Outcome ReadTagFromFile(const QString& file) override {
        calls << QStringLiteral("ReadTagFromFile ") + file;
        const Outcome outcome = Look(file);
        if (outcome != Outcome::Ok) {
            return outcome;
        }
        current_ = files.value(file);
        tag_ = StoredTag(file, kind_);
        cues_ = StoredCues(file);
        cueIndex_ = cues_.isEmpty() ? 0 : 1;
        return Outcome::Ok;
    }

    Outcome SaveTagToFile(const QString& file) override {
        calls << QStringLiteral("SaveTagToFile ") + file;
        const Outcome outcome = Look(file);
        if (outcome != Outcome::Ok) {
            return outcome;
        }
        if (saveOutcome == Outcome::Ok) {
            StoredTag(file, kind_) = tag_;
            StoredCues(file) = cues_;
        }
        return saveOutcome;
    }

    TagFields& Tag() override { return tag_; }

    // "Genre 17": the names of the real list are the backend's matter.
    QString GenreName(qint16 index) const override {
        return index >= 0 && index <= 147 ? QStringLiteral("Genre %1").arg(index) : QString();
    }

    Outcome AddCue(const CuePoint& cue) override {
        calls << QStringLiteral("AddCue");
        cues_.append(cue);
        cueIndex_ = CueCount();
        return Outcome::Ok;
    }

    Outcome DeleteCue() override {
        calls << QStringLiteral("DeleteCue");
        if (cueIndex_ == 0) {
            return Outcome::NotOpen;
        }
        cues_.removeAt(cueIndex_ - 1);
        cueIndex_ = std::min(cueIndex_, CueCount());
        return Outcome::Ok;
    }

    qint32 CueCount() const override { return static_cast<qint32>(cues_.size()); }
    qint32 CueIndex() const override { return cueIndex_; }

    void SetCueIndex(qint32 index) override {
        cueIndex_ = cues_.isEmpty() ? 0 : std::clamp(index, 1, CueCount());
    }

    CuePoint& Cue() override {
        if (cueIndex_ == 0) {
            noCue_ = CuePoint();
            return noCue_;
        }
        return cues_[cueIndex_ - 1];
    }

private:
    Outcome Look(const QString& file) const {
        const auto found = files.constFind(file);
        if (found == files.constEnd()) {
            return Outcome::NotFound;
        }
        return found->valid ? Outcome::Ok : Outcome::NotDecodable;
    }

    Probe current_{0, 0, {}, {}, {}, false, 0, 0, 0, 0, 0};
    TagKind kind_ = TagKind::Id3v1;
    TagFields tag_;
    QList<CuePoint> cues_;
    qint32 cueIndex_ = 0;
    CuePoint noCue_;
    QHash<QString, TagFields> id3v1_;
    QHash<QString, TagFields> id3v2_;
    QHash<QString, QList<CuePoint>> cuesOfFile_;
};

} // namespace kestrune
