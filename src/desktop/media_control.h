// What the desktop may see of the player and may ask of it, for media keys and player controls.
#pragma once

#include "app/options.h"
#include "components/audio_file.h"
#include "components/audio_information.h"
#include "desktop/media_state.h"
#include "playback/play_buttons.h"
#include "playback/transport.h"
#include "playback/volume_knob.h"
#include "playlist/admission.h"
#include "playlist/playlist_files.h"
#include "playlist/playlist_rows.h"

#include <QObject>
#include <QString>
#include <functional>

namespace kestrune {

// All of it must outlive the control.
struct MediaControlParts {
    Options& options;
    PlaylistRows& rows;
    Admission& admission;
    PlaylistFiles& files;
    Transport& transport;
    PlayButtons& buttons;
    const VolumeKnob& knob;
    KSTAudioFile2& audioFile;
    // Reads the tags of what plays. Used by nobody else, since reading forgets the file before.
    KSTAudioInformation2& audioInfo;
    // True while a box or a tool window keeps the user from the main window.
    std::function<bool()> isBlocked;
};

// The commands do what the buttons do, and nothing where the button is disabled or cannot be reached. They
// may open a box and then return only when it is answered. Window thread.
class MediaControl : public QObject {
    Q_OBJECT
public:
    explicit MediaControl(MediaControlParts parts, QObject* parent = nullptr);

    // From now on changes are told.
    void Watch();

    // --- What there is ---
    MediaState State();
    qint64 PositionUs(); // 0 while stopped

    // --- Commands ---
    void Play();
    void Pause();
    void PlayPause();
    void Stop();
    void Next();
    void Previous();
    // On or back by a span. Behind the end the next track is played.
    void SeekBy(qint64 us);
    // Passed over when the track is no longer the one that plays, and outside of its length.
    void SetPosition(const QString& trackId, qint64 us);
    // True for the address of an audio file or a playlist that exists on this machine.
    bool CanOpen(const QString& uri);
    // Adds what CanOpen accepts to the list and plays it; does nothing for anything else.
    void Open(const QString& uri);
    void SetLoop(LoopStatus loop);
    void SetShuffle(bool shuffle);
    void SetVolume(double fraction);
    void Raise() { emit RaiseRequested(); }
    void Quit();

public slots:
    // To be called when the volume knob was turned; all other changes are noticed.
    void Refresh();

signals:
    // What has changed since the last time, once in a turn of the event loop.
    void Changed(const kestrune::MediaState& now, kestrune::MediaProperties which);
    void Seeked(qint64 positionUs);      // the position has jumped
    void VolumeRequested(qint32 volume); // of the knob, 0 to 65535
    void RaiseRequested();
    void QuitRequested();

private:
    PlaybackStatus Status() const;
    MediaTrack Track();
    QString LocalFile(const QString& uri);
    // The window can be reached, and in it this button.
    bool CanPress(TransportButton button) const;
    void LampShown(Lamp lamp);
    void TellChanges();

    MediaControlParts parts_;
    MediaTrack tags_; // of the file that plays, read once for each start; its id is empty until then
    bool watching_ = false;
    bool telling_ = false;   // TellChanges is on its way
    bool restarted_ = false; // a stop lies between what was told and what is
    MediaState told_;
};

} // namespace kestrune
