// How a file becomes a row.
#pragma once

#include "components/audio_information.h"
#include "components/user_prompts.h"
#include "playlist/playlist_rows.h"

#include <QObject>
#include <QString>

namespace kestrune {

// What a probe tells of a file. An empty time means that it is no audio file.
struct MusicInfo {
    QString Time;
    QString Formats;
    qint64 SizeKB = 0; // estimated from bit rate and duration, not the size of the file
    QString Title;
};

// Adds the entries of a playlist file to the rows.
class ListReader {
public:
    virtual ~ListReader() = default;
    virtual void AppendList(const QString& path) = 0;
};

// True for the endings of the playlist formats, in any case.
bool IsPlaylistFile(const QString& name);

// Window thread. What is passed in must outlive the object. The files that are admitted are probed at once;
// this takes about a millisecond each and runs no events.
class Admission : public QObject {
    Q_OBJECT
public:
    Admission(PlaylistRows& rows, KSTAudioInformation2& audioInfo, UserPrompts& prompts,
              QObject* parent = nullptr);
    // Must be called before the first playlist file is admitted.
    void SetListReader(ListReader* reader) { listReader_ = reader; }

    // Probes one file and adds it, or adds the entries of a playlist. `path` ends in a separator. A file that
    // does not exist, and a folder, is passed over; one that is not audio gets the only message.
    void AddFiletoList(const QString& path, const QString& fileName);
    // Adds an entry of a playlist unprobed. With 0 bytes the file's own length counts.
    void AddFiletoListfromList(const QString& path, const QString& fileName, const QString& title,
                               qint16 seconds, qint32 bytes);
    MusicInfo GetMusicInfo(const QString& file);

signals:
    void WaitCursor(bool on);
    void RowShown(int row);
    void TotalsChanged(); // GetFileLong

private:
    void AddRow(const QString& path, const QString& fileName, const QString& title, const QString& time,
                qint64 kilobytes, const QString& formats);

    PlaylistRows& rows_;
    KSTAudioInformation2& audioInfo_;
    UserPrompts& prompts_;
    ListReader* listReader_ = nullptr;
};

} // namespace kestrune
