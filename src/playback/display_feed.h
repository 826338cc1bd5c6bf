// Shows on the display what is being heard.
#pragma once

#include "components/audio_display.h"
#include "components/audio_file.h"
#include "components/audio_player.h"
#include "components/audio_transform.h"
#include "components/pending_events.h"
#include "playback/transport.h"

#include <QObject>

namespace kestrune {

// What the feed works with. All of it must outlive the feed.
struct DisplayFeedParts {
    Transport& transport;
    KSTAudioFile2& audioFile;
    KSTAudioPlayer2& audioPlayer;
    KSTAudioTransform2& transform;
    KSTAudioDisplay1& display;
    PendingEvents& pending;
};

// Listens to the ticks of the player, so it is to be made after the transport, whose clock goes first. Errors
// are passed over. Window thread.
class DisplayFeed : public QObject {
    Q_OBJECT
public:
    explicit DisplayFeed(const DisplayFeedParts& parts, QObject* parent = nullptr);

signals:
    // Playback was interrupted and may go on: no ticks come, and no end was told.
    void Paused();

private:
    void AudioPlayer_Timer(qint64 playedBytes);
    QList<qint16> HeardBlock(int frames);

    DisplayFeedParts parts_;
    bool isYielding_ = false;
};

} // namespace kestrune
