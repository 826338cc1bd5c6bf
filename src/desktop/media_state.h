// What the desktop's player controls show of the program, as values. Pure functions; any thread.
#pragma once

#include <QFlags>
#include <QString>
#include <QUrl>

namespace kestrune {

enum class PlaybackStatus { Stopped, Playing, Paused };
// What follows the last track. The list never ends by itself, so None is asked for at most.
enum class LoopStatus { None, Track, Playlist };

// The track that plays or is paused. Texts that are not known are empty, numbers 0.
struct MediaTrack {
    QString id; // a D-Bus object path that stays the same for one file; empty when there is no track
    qint64 lengthUs = 0;
    QString title;
    QUrl url;
    QString artist;
    QString album;
    QString composer;
    QString genre;
    int trackNumber = 0;

    bool operator==(const MediaTrack&) const = default;
};

// All that is told when it changes. The position is not among it: it moves by itself.
struct MediaState {
    PlaybackStatus status = PlaybackStatus::Stopped;
    LoopStatus loop = LoopStatus::Playlist;
    bool shuffle = false;
    qint32 volume = 0; // of the knob, 0 to 65535
    MediaTrack track;
    bool canGoNext = false;
    bool canGoPrevious = false;
    bool canPlay = false;
    bool canPause = false;
    bool canSeek = false;

    bool operator==(const MediaState&) const = default;
};

enum class MediaProperty : quint16 {
    Status = 0x001,
    Loop = 0x002,
    Shuffle = 0x004,
    Volume = 0x008,
    Track = 0x010,
    CanGoNext = 0x020,
    CanGoPrevious = 0x040,
    CanPlay = 0x080,
    CanPause = 0x100,
    CanSeek = 0x200,
};
Q_DECLARE_FLAGS(MediaProperties, MediaProperty)
Q_DECLARE_OPERATORS_FOR_FLAGS(MediaProperties)

MediaProperties ChangedProperties(const MediaState& before, const MediaState& after);

// An object path made from a file's full path; one for each file.
QString TrackIdOf(const QString& path);

// 0 to 65535 of the knob as 0.0 to 1.0 and back. What lies outside is brought inside; no number gives 0.
double FractionOfVolume(qint32 volume);
qint32 VolumeOfFraction(double fraction);

} // namespace kestrune
