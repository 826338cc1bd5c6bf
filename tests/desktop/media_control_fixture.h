// What the desktop sees of a program over fakes.
#pragma once

#include "playback/transport_fixture.h"

#include <QCoreApplication>

namespace kestrune {

class MediaControlFixture : public TransportFixture {
protected:
    MediaControlFixture() {
        QObject::connect(&control, &MediaControl::Changed, &control,
                         [this](const MediaState& now, MediaProperties which) {
                             told.append(which);
                             lastTold = now;
                         });
        QObject::connect(&control, &MediaControl::Seeked, &control, [this](qint64 us) { seeked.append(us); });
        // As the window does it.
        QObject::connect(&control, &MediaControl::VolumeRequested, &control,
                         [this](qint32 volume) { knob.SetVolume(volume); });
        control.Watch();
    }

    // Tracks known to the prober too, and the buttons as after a load of the list.
    void Load(int count) {
        AddTracks(count);
        for (int row = 1; row <= count; ++row) {
            Know(rows.FullPath(row));
        }
        transport.SetPlayButtonTrueFalse(ButtonPlay, count > 0);
        Turn();
        told.clear();
        log.clear();
    }
    void Know(const QString& path) {
        FakeAudioInformation::Probe probe;
        probe.durationMs = 10000;
        probe.bitrateBps = 128000;
        prober.files.insert(path, probe);
        audioInfo.files.insert(path, probe);
    }
    // A track of 10 seconds that is on disk and not in the list. Returns its address.
    QString MakeLoose(const QString& name) {
        AddTrack(name);
        rows.Remove(rows.Count());
        Know(PathOf(name));
        return QUrl::fromLocalFile(PathOf(name)).toString(QUrl::FullyEncoded);
    }
    // One turn of the event loop, after which earlier news are forgotten.
    void Turn() {
        told.clear();
        seeked.clear();
        QCoreApplication::sendPostedEvents(&control, 0);
    }
    PlaybackStatus Status() { return control.State().status; }

    FakeAudioInformation& prober = *house.components.information[0];    // of the list
    FakeAudioInformation& audioInfo = *house.components.information[1]; // of what plays
    Admission& admission = house.program.admission;
    PlaylistFiles& files = house.program.files;
    VolumeKnob& knob = house.program.knob;
    bool& blocked = house.tools.isUserKeptAway;
    MediaControl& control = house.program.media;
    QList<MediaProperties> told;
    MediaState lastTold;
    QList<qint64> seeked;
};

} // namespace kestrune
