#include "playback/display_feed.h"

namespace kestrune {

DisplayFeed::DisplayFeed(const DisplayFeedParts& parts, QObject* parent) : QObject(parent), parts_(parts) {
    connect(&parts_.audioPlayer, &KSTAudioPlayer2::Timer, this, &DisplayFeed::AudioPlayer_Timer);
    connect(&parts_.transport, &Transport::DisplayCleared, this, [this] { parts_.display.DrawBlock({}); });
    connect(&parts_.transport, &Transport::LampShown, this, [this](Lamp lamp) {
        if (lamp == Lamp::Paused) {
            emit Paused();
        }
    });
}

void DisplayFeed::AudioPlayer_Timer(qint64 playedBytes) {
    const qint32 frames = parts_.display.Property(DisplayFftSize);
    // The display stands still over the end of a file, where no whole block can be had.
    const TransportState playing = parts_.transport.State();
    if (playing.PlayPos + playedBytes + frames > playing.PlayTotal) {
        return;
    }
    parts_.display.DrawBlock(HeardBlock(frames));
    // A tick that comes in here while another one yields is drawn, and leaves the yielding to the first: on a
    // slow screen ticks would otherwise pile up inside each other.
    if (!isYielding_) {
        isYielding_ = true;
        parts_.pending.Run();
        isYielding_ = false;
    }
}

QList<qint16> DisplayFeed::HeardBlock(int frames) {
    QList<qint16> samples = parts_.audioPlayer.GetPlayedBlock(frames);
    const bool isStereo = parts_.audioFile.GetChannels() == 2;
    const bool isStereoShown = parts_.display.Property(DisplayChannels) == 2;
    if (isStereo && !isStereoShown) {
        parts_.transform.StereoToMono(samples);
    } else if (!isStereo && isStereoShown) {
        // One channel is heard on both sides.
        QList<qint16> both;
        both.reserve(samples.size() * 2);
        for (const qint16 sample : samples) {
            both << sample << sample;
        }
        return both;
    }
    return samples;
}

} // namespace kestrune
