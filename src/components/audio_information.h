// Probing of audio files, their tags and their cue points.
#pragma once

#include "components/outcome.h"

#include <QString>
#include <QtGlobal>

namespace kestrune {

// Which tag of a file that may hold two is read and written.
enum class TagKind { Id3v1 = 1, Id3v2 = 2 };

// Tag fields, as they are read from and written to a file. A number that is not there is 0.
struct TagFields {
    QString album;
    QString artist;
    QString comment;
    QString copyright;
    qint16 genre = 255; // number of the genre list, 0 to 147; 255 for none
    QString title;
    qint32 year = 0;
    QString url;
    qint16 track = 0;
    QString encodedBy;
    QString composer;
    QString genreText;
    QString originalArtist;
};

// A marked place in a file.
struct CuePoint {
    qint32 position = 0; // sample frames from the start of the audio
    qint32 length = 0;   // sample frames, 0 for a mere point
    QString label;
    QString note;
    QString text;
};

// One object looks at one file at a time. Call order: OpenInfo or ReadTagFromFile first; all reads refer to
// that file. After a failed OpenInfo they give empty or 0; after a failed ReadTagFromFile they keep what they
// held. Thread: all calls from one thread. Calls block for the time of the file access and run no events.
class KSTAudioInformation2 {
public:
    virtual ~KSTAudioInformation2() = default;

    // --- Probing ---

    // Looks at a file. Ok, NotFound, or NotDecodable; after a failure the reads below give empty or 0.
    virtual Outcome OpenInfo(const QString& file) = 0;
    // True when the last OpenInfo succeeded.
    virtual bool IsValid() const = 0;
    virtual qint32 GetBitrate() const = 0;    // bits per second, 0 if unknown
    virtual qint64 GetDurationMs() const = 0; // milliseconds
    // Text such as "MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo"; the sample rate has a comma at the thousands.
    virtual QString GetFormatString() const = 0;
    virtual QString GetTitle() const = 0;
    virtual QString GetArtist() const = 0;

    // --- Technical data, after OpenInfo or ReadTagFromFile ---

    virtual qint32 Frequency() const = 0; // Hz
    virtual qint16 Channels() const = 0;
    virtual qint64 Samples() const = 0; // sample frames
    virtual qint64 FileSize() const = 0;
    virtual qint16 BitsPerSample() const = 0; // 16 for lossy kinds
    virtual qint32 FormatTag() const = 0; // the WAVE format number of the kind (1 PCM, 85 MPEG layer 3, ...)

    // --- Tags ---

    // The tag kind for the following reads and writes; Id3v1 at the start. Formats with one kind ignore it.
    virtual void SetTagVersion(TagKind kind) = 0;
    // Reads tag, technical data and cue points, of which the first becomes current. On failure the object
    // keeps what it held.
    virtual Outcome ReadTagFromFile(const QString& file) = 0;
    // Writes the fields of Tag() into the file, which is left whole if the write fails.
    // NotFound, NotDecodable, NotSupported for formats that carry no tag, or WriteFailed. Properties that the
    // tag has no place for are passed over, as the copyright is by ID3v1. Without a ReadTagFromFile before it
    // a file's cue points stay, unless some were added.
    virtual Outcome SaveTagToFile(const QString& file) = 0;
    virtual TagFields& Tag() = 0;
    // Name of a genre number, 0 to 147; empty outside.
    virtual QString GenreName(qint16 index) const = 0;

    // --- Cue points, after ReadTagFromFile; SaveTagToFile stores them ---

    // Puts it behind the last one, and makes it current. NotSupported after reading a file of a kind that
    // holds none.
    virtual Outcome AddCue(const CuePoint& cue) = 0;
    // Removes the current cue; the one behind it becomes current. NotOpen when there is none.
    virtual Outcome DeleteCue() = 0;
    virtual qint32 CueCount() const = 0;
    virtual qint32 CueIndex() const = 0; // 1-based, 0 when there is none
    // Values outside 1 to CueCount are brought into it.
    virtual void SetCueIndex(qint32 index) = 0;
    // The current cue. With none, an empty one that is not stored.
    virtual CuePoint& Cue() = 0;
};

} // namespace kestrune
